#include "sheet/DelimitedFile.h"

#include "sheet/SheetTestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

struct SplitRow
{
    const char* name;
    QString line;
    QString separator;
    QStringList fields;
};

void PrintTo(const SplitRow& row, std::ostream* stream)
{
    *stream << row.name << ": " << row.line.toStdString();
}

class SplittingLines : public testing::TestWithParam<SplitRow>
{
};

TEST_P(SplittingLines, GiveTheFieldsWithoutQuotes)
{
    EXPECT_EQ(SplitDelimitedLine(GetParam().line, GetParam().separator), GetParam().fields);
}

INSTANTIATE_TEST_SUITE_P(Rows, SplittingLines,
    testing::Values(SplitRow { "plain", u"a,b,c"_s, u","_s, { u"a"_s, u"b"_s, u"c"_s } },
        SplitRow { "quotedHoldsSeparator", u"a,\"b,c\",d"_s, u","_s, { u"a"_s, u"b,c"_s, u"d"_s } },
        SplitRow { "quotedLast", u"a,\"b,c\""_s, u","_s, { u"a"_s, u"b,c"_s } },
        SplitRow { "unclosedQuoteRunsToEnd", u"a,\"b,c"_s, u","_s, { u"a"_s, u"b,c"_s } },
        SplitRow { "textAfterClosingQuoteDropped", u"\"ab\"cd,e"_s, u","_s, { u"ab"_s, u"e"_s } },
        SplitRow { "quoteInsideFieldIsText", u"5\"x,y"_s, u","_s, { u"5\"x"_s, u"y"_s } },
        SplitRow { "emptyFields", u",,"_s, u","_s, { QString(), QString(), QString() } },
        SplitRow { "emptyLine", QString(), u","_s, { QString() } },
        SplitRow { "trailingSeparator", u"a,"_s, u","_s, { u"a"_s, QString() } },
        SplitRow { "tabs", u"a\tb,c\td"_s, u"\t"_s, { u"a"_s, u"b,c"_s, u"d"_s } },
        SplitRow { "blanksKept", u" a , b "_s, u","_s, { u" a "_s, u" b "_s } }),
    [](const testing::TestParamInfo<SplitRow>& info) { return info.param.name; });

TEST(SeparatorsOfFiles, TabForTextFiles)
{
    EXPECT_EQ(SeparatorForFile(u"/a/b.txt"_s), u"\t"_s);
    EXPECT_EQ(SeparatorForFile(u"/a/b.TXT"_s), u"\t"_s);
    EXPECT_EQ(SeparatorForFile(u"/a/b.csv"_s), u","_s);
}

class DelimitedFiles : public testing::Test
{
protected:
    QString write(const QByteArray& bytes)
    {
        const QString path = m_folder.filePath(u"data.csv"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QTemporaryDir m_folder;
    DelimitedFile file;
};

TEST_F(DelimitedFiles, CountsRecordsWithAndWithoutLabels)
{
    ASSERT_TRUE(file.OpenFile(write("Name,Age\r\nAnn,9\r\nBen,10\r\n")));
    EXPECT_EQ(file.NumberOfRecords(), 3);
    file.setFirstRowIsLabels(true);
    EXPECT_EQ(file.NumberOfRecords(), 2);
}

TEST_F(DelimitedFiles, LastLineWithoutLineEndCounts)
{
    ASSERT_TRUE(file.OpenFile(write("a\nb\nc")));
    EXPECT_EQ(file.NumberOfRecords(), 3);
}

TEST_F(DelimitedFiles, FirstLineGivesFieldsAndLabels)
{
    ASSERT_TRUE(file.OpenFile(write("Name,\"Age, years\",Pet\nAnn,9,cat\n")));
    EXPECT_EQ(file.NumberOfFields(), 3);
    EXPECT_EQ(file.FieldLabel(1), u"Age, years"_s);
    EXPECT_TRUE(file.FieldLabel(3).isEmpty());
    EXPECT_TRUE(file.FieldLabel(-1).isEmpty());
}

TEST_F(DelimitedFiles, RecordsInOrderThenEnd)
{
    ASSERT_TRUE(file.OpenFile(write("Name,Age\r\nAnn,9\r\nBen,10\r\n")));
    QStringList fields;
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, (QStringList { u"Name"_s, u"Age"_s }));
    ASSERT_TRUE(file.GetRecords(fields));
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, (QStringList { u"Ben"_s, u"10"_s }));
    EXPECT_FALSE(file.GetRecords(fields));
}

TEST_F(DelimitedFiles, LabelsLineIsPassedOver)
{
    file.setFirstRowIsLabels(true);
    ASSERT_TRUE(file.OpenFile(write("Name,Age\nAnn,9\n")));
    QStringList fields;
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, (QStringList { u"Ann"_s, u"9"_s }));
    EXPECT_FALSE(file.GetRecords(fields));
}

TEST_F(DelimitedFiles, TabSeparated)
{
    file.setSeparator(u"\t"_s);
    ASSERT_TRUE(file.OpenFile(write("a,b\tc\n")));
    EXPECT_EQ(file.FieldLabel(0), u"a,b"_s);
    EXPECT_EQ(file.NumberOfFields(), 2);
}

TEST_F(DelimitedFiles, Windows1252LinesAndUtf8Lines)
{
    ASSERT_TRUE(file.OpenFile(write("\xEF\xBB\xBF"
                                    "caf\xC3\xA9\n\xA3"
                                    "5\n")));
    QStringList fields;
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, QStringList { u"café"_s });
    ASSERT_TRUE(file.GetRecords(fields));
    EXPECT_EQ(fields, QStringList { u"£5"_s });
}

TEST_F(DelimitedFiles, ClosingResetsTheCounts)
{
    ASSERT_TRUE(file.OpenFile(write("a,b\nc,d\n")));
    file.CloseFile();
    EXPECT_EQ(file.NumberOfRecords(), 0);
    EXPECT_EQ(file.NumberOfFields(), 0);
    QStringList fields;
    EXPECT_FALSE(file.GetRecords(fields));
}

TEST_F(DelimitedFiles, MissingFileIsNotOpened)
{
    EXPECT_FALSE(file.OpenFile(m_folder.filePath(u"none.csv"_s)));
    EXPECT_EQ(file.NumberOfRecords(), 0);
}

TEST_F(DelimitedFiles, EmptyFileHasNothing)
{
    ASSERT_TRUE(file.OpenFile(write("")));
    EXPECT_EQ(file.NumberOfRecords(), 0);
    EXPECT_EQ(file.NumberOfFields(), 0);
}

} // namespace
