#include "platform/text/DelimitedText.h"

#include "RowFile.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Text::Dialect;

namespace {

using Reading = RowFile::RowTest<>;

// The two dialects differ at quotes, line breaks inside quotes, CR and blank lines.
TEST_P(Reading, GivesTheRecordsOfTheDialect)
{
    const Dialect dialect = row().text("dialect") == u"quoted" ? Dialect::Quoted : Dialect::Classic;
    // The records written as the rows write them: [a|b][c].
    QString records;
    for (const QStringList& record :
        Text::ReadDelimitedText(row().text("text"), row().text("separator").front(), dialect))
        records += u'[' + record.join(u'|') + u']';
    EXPECT_EQ(records.toStdString(), row().text("records").toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Reading, RowFile::In("platform/text/delimitedText.rows"), RowFile::Named());

TEST(DelimitedLines, EmptyLineIsOneEmptyFieldAndNoSeparatorKeepsTheLine)
{
    EXPECT_EQ(Text::SplitDelimitedLine(QString(), u","), QStringList { QString() });
    EXPECT_EQ(Text::SplitDelimitedLine(u"a,b", QString()), QStringList { u"a,b"_s });
}

TEST(DelimitedLines, TabSeparatesTextFiles)
{
    EXPECT_EQ(Text::SeparatorForFile(u"/a/b.txt"_s), u"\t"_s);
    EXPECT_EQ(Text::SeparatorForFile(u"/a/b.TXT"_s), u"\t"_s);
    EXPECT_EQ(Text::SeparatorForFile(u"/a/b.csv"_s), u","_s);
    EXPECT_EQ(Text::SeparatorForFile(u"-"_s), u","_s);
}

} // namespace
