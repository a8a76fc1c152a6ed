#include "app/cli/CommandLine.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Outcome
{
    int status = -1;
    QString out;
    QString err;
};

Outcome run(const QStringList& arguments)
{
    Outcome outcome;
    QTextStream out(&outcome.out);
    QTextStream err(&outcome.err);
    outcome.status = Cli::RunCommandLine(arguments, out, err);
    out.flush();
    err.flush();
    return outcome;
}

struct PrintRow
{
    const char* name;
    QStringList arguments;
    QString printed;
};

class PrintsTest : public testing::TestWithParam<PrintRow>
{
};

TEST_P(PrintsTest, PrintsOneLine)
{
    const PrintRow& row = GetParam();
    const Outcome outcome = run(row.arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, row.printed + u'\n');
    EXPECT_TRUE(outcome.err.isEmpty());
}

// The typed value decides how the format reads it: numbers as numbers, day/month/year texts
// as dates (the test locale is the string table's, en-GB), anything else as text.
INSTANTIATE_TEST_SUITE_P(Verbs, PrintsTest,
    testing::Values(PrintRow { "FormatNumber", { u"format"_s, u"0.5"_s, u"0.00"_s }, u"0.50"_s },
        PrintRow { "FormatHalfAwayFromZero", { u"format"_s, u"2.5"_s, u"0"_s }, u"3"_s },
        PrintRow {
            "FormatPercentOptionalDigits", { u"format"_s, u"0.125"_s, u"#0.##%"_s }, u"12.5%"_s },
        PrintRow { "FormatThousands", { u"format"_s, u"1234567"_s, u"##,##0"_s }, u"1,234,567"_s },
        PrintRow {
            "FormatLeapDayAsWeekday", { u"format"_s, u"29/02/2024"_s, u"dddd"_s }, u"Thursday"_s },
        PrintRow { "FormatDayMonthYearIsEnglish", { u"format"_s, u"12/3/2004"_s, u"dd MMM yyyy"_s },
            u"12 Mar 2004"_s },
        PrintRow {
            "FormatDateAndTime", { u"format"_s, u"31/12/1899 14:05"_s, u"HH:mm"_s }, u"14:05"_s },
        PrintRow { "FormatTextUnchanged", { u"format"_s, u"apples"_s, u"0.00"_s }, u"apples"_s },
        PrintRow { "ValUnits", { u"val"_s, u"  12kg"_s }, u"12"_s },
        PrintRow { "ValHex", { u"val"_s, u"&H1F"_s }, u"31"_s },
        PrintRow { "ValNothingNumeric", { u"val"_s, u"abc"_s }, u"0"_s },
        PrintRow { "StrPositiveFraction", { u"str"_s, u"0.5"_s }, u" .5"_s },
        PrintRow { "StrNegative", { u"str"_s, u"-2.5"_s }, u"-2.5"_s },
        PrintRow { "StrLarge", { u"str"_s, u"1E+20"_s }, u" 1E+20"_s },
        PrintRow { "StrSmall", { u"str"_s, u"0.00001"_s }, u" 1E-05"_s },
        PrintRow { "EvalReachesTheSheetVerbs", { u"eval"_s, u"2+3*4"_s }, u"14"_s }),
    [](const testing::TestParamInfo<PrintRow>& info) { return std::string(info.param.name); });

struct UsageRow
{
    const char* name;
    QStringList arguments;
    int status;
    QString messageStart = u"usage: quorbin-cli "_s;
};

class UsageTest : public testing::TestWithParam<UsageRow>
{
};

TEST_P(UsageTest, RefusesWithAMessageAndNoOutput)
{
    const UsageRow& row = GetParam();
    const Outcome outcome = run(row.arguments);
    EXPECT_EQ(outcome.status, row.status);
    EXPECT_TRUE(outcome.out.isEmpty());
    EXPECT_TRUE(outcome.err.startsWith(row.messageStart)) << outcome.err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Verbs, UsageTest,
    testing::Values(UsageRow { "NoVerb", {}, 2, u"usage: quorbin-cli VERB"_s },
        UsageRow { "UnknownVerb", { u"draw"_s }, 2, u"quorbin-cli: unknown verb \"draw\""_s },
        UsageRow { "FormatWithoutPattern", { u"format"_s, u"1"_s }, 2 },
        UsageRow { "ValWithTwoTexts", { u"val"_s, u"1"_s, u"2"_s }, 2 },
        UsageRow { "StrOfText", { u"str"_s, u"twelve"_s }, 2, u"quorbin-cli str: not a number"_s },
        UsageRow { "ValTooLarge", { u"val"_s, u"1E400"_s }, 1, u"quorbin-cli val: Overflow"_s },
        UsageRow {
            "ValHexTooLarge", { u"val"_s, u"&H100000000"_s }, 1, u"quorbin-cli val: Overflow"_s },
        UsageRow { "SheetWithoutFiles", { u"sheet"_s, u"convert"_s }, 64 },
        UsageRow { "CardsWithoutFile", { u"cards"_s, u"info"_s }, 64 },
        UsageRow { "GraphWithoutOutput", { u"graph"_s, u"convert"_s, u"in.csv"_s }, 64 }),
    [](const testing::TestParamInfo<UsageRow>& info) { return std::string(info.param.name); });

TEST(CommandLineTest, HelpListsEveryVerb)
{
    const Outcome outcome = run({ u"--help"_s });
    EXPECT_EQ(outcome.status, 0);
    for (const QString& verb :
        { u"format VALUE FORMAT"_s, u"val TEXT"_s, u"str NUMBER"_s, u"eval EXPR"_s,
            u"sheet convert"_s, u"sheet get"_s, u"sheet set"_s, u"cards new"_s, u"cards import"_s,
            u"cards export"_s, u"cards find"_s, u"cards info"_s, u"cards compact"_s })
        EXPECT_TRUE(outcome.out.contains(verb)) << verb.toStdString();
}

// A whole teacher's path through the dispatcher: a sheet made from typed entries reads back.
TEST(CommandLineTest, SheetMadeFromCsvReadsBackThroughGet)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const QString csv = folder.filePath(u"in.csv"_s);
    {
        QFile file(csv);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("3,4,=A1*B1\n");
    }
    const QString sheet = folder.filePath(u"out.qnc"_s);
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, csv, sheet }).status, 0);
    const Outcome got = run({ u"sheet"_s, u"get"_s, sheet, u"C1"_s });
    EXPECT_EQ(got.status, 0) << got.err.toStdString();
    EXPECT_TRUE(got.out.startsWith(u"12\t"_s)) << got.out.toStdString();
}

} // namespace
