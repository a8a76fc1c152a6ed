#include "platform/text/DelimitedText.h"

#include <gtest/gtest.h>
#include <ostream>

using namespace Qt::Literals::StringLiterals;
using Text::Dialect;

namespace {

struct ReadRow
{
    const char* name;
    Dialect dialect;
    QString text;
    QList<QStringList> records;
    QChar separator = u',';
};

void PrintTo(const ReadRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class Reading : public testing::TestWithParam<ReadRow>
{
};

TEST_P(Reading, GivesTheRecordsOfTheDialect)
{
    const ReadRow& row = GetParam();
    EXPECT_EQ(Text::ReadDelimitedText(row.text, row.separator, row.dialect), row.records);
}

constexpr Dialect classic = Dialect::Classic;
constexpr Dialect quoted = Dialect::Quoted;

// The two dialects differ at quotes, line breaks inside quotes, CR and blank lines.
INSTANTIATE_TEST_SUITE_P(Rows, Reading,
    testing::Values(ReadRow { "plain", classic, u"a,b,c"_s, { { u"a"_s, u"b"_s, u"c"_s } } },
        ReadRow {
            "quotedHoldsSeparator", classic, u"a,\"b,c\",d"_s, { { u"a"_s, u"b,c"_s, u"d"_s } } },
        ReadRow { "quotedLast", classic, u"a,\"b,c\""_s, { { u"a"_s, u"b,c"_s } } },
        ReadRow { "unclosedQuoteRunsToTheLineEnd", classic, u"a,\"b,c\nd"_s,
            { { u"a"_s, u"b,c"_s }, { u"d"_s } } },
        ReadRow {
            "textAfterClosingQuoteDropped", classic, u"\"ab\"cd,e"_s, { { u"ab"_s, u"e"_s } } },
        ReadRow { "doubledQuoteIsNoEscape", classic, u"\"a\"\"b\",c"_s, { { u"a"_s, u"c"_s } } },
        ReadRow { "quoteInsideFieldIsText", classic, u"5\"x,y"_s, { { u"5\"x"_s, u"y"_s } } },
        ReadRow { "emptyFields", classic, u",,"_s, { { QString(), QString(), QString() } } },
        ReadRow { "emptyLineIsOneEmptyField", classic, u"a\n\nb"_s,
            { { u"a"_s }, { QString() }, { u"b"_s } } },
        ReadRow { "trailingSeparator", classic, u"a,"_s, { { u"a"_s, QString() } } },
        ReadRow { "tabs", classic, u"a\tb,c\td"_s, { { u"a"_s, u"b,c"_s, u"d"_s } }, u'\t' },
        ReadRow { "blanksKept", classic, u" a , b "_s, { { u" a "_s, u" b "_s } } },
        ReadRow { "lineEndsLfOrCrLf", classic, u"a,b\r\nc\nd\r"_s,
            { { u"a"_s, u"b"_s }, { u"c"_s }, { u"d"_s } } },
        ReadRow { "nothingIsNoRecord", classic, QString(), {} },
        ReadRow { "quotedPlain", quoted, u"a,b\r\nc,d\r\n"_s,
            { { u"a"_s, u"b"_s }, { u"c"_s, u"d"_s } } },
        ReadRow { "doubledQuoteIsOneQuote", quoted, u"\"say \"\"hi\"\"\",x"_s,
            { { u"say \"hi\""_s, u"x"_s } } },
        ReadRow { "lineBreakInsideQuotes", quoted, u"\"two\r\nlines\",5\nx"_s,
            { { u"two\r\nlines"_s, u"5"_s }, { u"x"_s } } },
        ReadRow { "quoteInsideFieldOpensQuoting", quoted, u"ab\"c,d\"e,f"_s,
            { { u"abc,de"_s, u"f"_s } } },
        ReadRow { "textAfterClosingQuoteKept", quoted, u"\"ab\"cd,e"_s, { { u"abcd"_s, u"e"_s } } },
        ReadRow {
            "blankLinesAreNoRecords", quoted, u"a\n  \n\r\n\nb"_s, { { u"a"_s }, { u"b"_s } } },
        ReadRow { "emptyQuotesAreARecord", quoted, u"\"\"\n"_s, { { QString() } } },
        ReadRow { "crOutsideQuotesDropped", quoted, u"a\rb,c\r\n"_s, { { u"ab"_s, u"c"_s } } },
        ReadRow { "unclosedQuoteRunsToTheEnd", quoted, u"a,\"b\nc"_s, { { u"a"_s, u"b\nc"_s } } },
        ReadRow { "quotedTabs", quoted, u"\"a\tb\"\tc"_s, { { u"a\tb"_s, u"c"_s } }, u'\t' }),
    [](const testing::TestParamInfo<ReadRow>& info) { return info.param.name; });

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
