#include "VerbTestSupport.h"
#include "sheet/CellEntry.h"
#include "sheet/Sheet.h"
#include "sheet/SheetFile.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using CliTest::RunCli;

namespace {

// ---- Verbs that answer on standard output ------------------------------------------------

struct AnswerRow
{
    const char* name;
    QStringList arguments;
    int status;
    QString out;
    QString err = {};
};

class Answers : public CliTest::VerbTest, public testing::WithParamInterface<AnswerRow>
{
};

TEST_P(Answers, PrintTheValueOrTheMessage)
{
    const CliTest::Outcome outcome = RunCli(GetParam().arguments);
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_EQ(outcome.out, GetParam().out);
    EXPECT_EQ(outcome.err, GetParam().err);
}

// The typed value decides how the format reads it: numbers as numbers, day/month/year texts
// as dates, anything else as text. eval's own statuses are the evaluator's error codes.
INSTANTIATE_TEST_SUITE_P(Verbs, Answers,
    testing::Values(
        AnswerRow { "formatNumber", { u"format"_s, u"0.5"_s, u"0.00"_s }, 0, u"0.50\n"_s },
        AnswerRow { "formatHalfAwayFromZero", { u"format"_s, u"2.5"_s, u"0"_s }, 0, u"3\n"_s },
        AnswerRow { "formatPercentOptionalDigits", { u"format"_s, u"0.125"_s, u"#0.##%"_s }, 0,
            u"12.5%\n"_s },
        AnswerRow {
            "formatThousands", { u"format"_s, u"1234567"_s, u"##,##0"_s }, 0, u"1,234,567\n"_s },
        AnswerRow { "formatLeapDayAsWeekday", { u"format"_s, u"29/02/2024"_s, u"dddd"_s }, 0,
            u"Thursday\n"_s },
        AnswerRow { "formatDayMonthYearIsEnglish",
            { u"format"_s, u"12/3/2004"_s, u"dd MMM yyyy"_s }, 0, u"12 Mar 2004\n"_s },
        AnswerRow { "formatDateAndTime", { u"format"_s, u"31/12/1899 14:05"_s, u"HH:mm"_s }, 0,
            u"14:05\n"_s },
        AnswerRow {
            "formatTextUnchanged", { u"format"_s, u"apples"_s, u"0.00"_s }, 0, u"apples\n"_s },
        AnswerRow { "valUnits", { u"val"_s, u"  12kg"_s }, 0, u"12\n"_s },
        AnswerRow { "valHex", { u"val"_s, u"&H1F"_s }, 0, u"31\n"_s },
        AnswerRow { "valNothingNumeric", { u"val"_s, u"abc"_s }, 0, u"0\n"_s },
        AnswerRow { "valTooLarge", { u"val"_s, u"1E400"_s }, 1, QString(),
            u"quorbin-cli val: Overflow\n"_s },
        AnswerRow { "valHexTooLarge", { u"val"_s, u"&H100000000"_s }, 1, QString(),
            u"quorbin-cli val: Overflow\n"_s },
        AnswerRow { "strPositiveFraction", { u"str"_s, u"0.5"_s }, 0, u" .5\n"_s },
        AnswerRow { "strNegative", { u"str"_s, u"-2.5"_s }, 0, u"-2.5\n"_s },
        AnswerRow { "strLarge", { u"str"_s, u"1E+20"_s }, 0, u" 1E+20\n"_s },
        AnswerRow { "strSmall", { u"str"_s, u"0.00001"_s }, 0, u" 1E-05\n"_s },
        AnswerRow { "evalWhole", { u"eval"_s, u"2+3*4"_s }, 0, u"14\n"_s },
        AnswerRow { "evalFraction", { u"eval"_s, u"1/4"_s }, 0, u"0.25\n"_s },
        AnswerRow { "evalNegative", { u"eval"_s, u"-2^2"_s }, 0, u"-4\n"_s },
        AnswerRow { "evalLarge", { u"eval"_s, u"10^20"_s }, 0, u"1E+20\n"_s },
        AnswerRow { "evalWordsJoined", { u"eval"_s, u"1"_s, u"+"_s, u"2"_s }, 0, u"3\n"_s },
        AnswerRow { "evalTrailingText", { u"eval"_s, u"1 2"_s }, 1, QString(),
            u"syntax error, token = '2'\n"_s },
        AnswerRow { "evalMissingOperand", { u"eval"_s, u"*3"_s }, 2, QString(),
            u"syntax error, token = '*'\n"_s },
        AnswerRow { "evalUnknownFunction", { u"eval"_s, u"foo(1)"_s }, 3, QString(),
            u"Undefined function 'foo'\n"_s },
        AnswerRow {
            "evalDivisionByZero", { u"eval"_s, u"1/0"_s }, 4, QString(), u"Division by zero\n"_s }),
    [](const testing::TestParamInfo<AnswerRow>& info) { return std::string(info.param.name); });

// ---- Refusals: a status, a message, no output, and no file changed -----------------------

struct RefusalRow
{
    const char* name;
    QStringList arguments; // "@" stands for the folder
    int status;
    QString errStart;
};

// One folder of inputs, good and bad, for every verb.
class Refusals : public CliTest::VerbTest, public testing::WithParamInterface<RefusalRow>
{
protected:
    void SetUp() override
    {
        VerbTest::SetUp();
        write(u"ok.csv"_s, "a,1\n");
        write(u"empty.csv"_s, "\n\n");
        write(u"bad.qnp"_s, "[Ormsey Data File]\nRow1 = \"a\",\"1\",\"2\",\"3\",\"4\",\"5\"\n");
        write(u"damaged.qnc"_s, "\x01\x00\x00\x00\x02\x00\x36\x01\x02\x00"_ba);
        write(u"text.qnd"_s, "Name,Kind\r\nRex,Dog\r\n");
        write(u"dup.csv"_s, "Name\r\nTiddles\r\nrex\r\n");
        Tillane::Sheet sheet;
        Tillane::EnterCell(sheet, 1, 1, u"4"_s);
        Tillane::EnterCell(sheet, 1, 2, u"=A1*2"_s);
        Tillane::EnterCell(sheet, 1, 3, u"=1/A1"_s);
        ASSERT_EQ(Tillane::SaveSheetFile(sheet, path(u"sheet.qnc"_s)), QString());
        sheet.record(1, 1).Locked = true;
        ASSERT_EQ(Tillane::SaveSheetFile(sheet, path(u"locked.qnc"_s)), QString());
        write(u"class.qnd"_s, s_cardFile);
    }

    // A card file holding one card, made once: the engine syncs every write to the disk.
    static void SetUpTestSuite()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(u"class.qnd"_s);
        const QString csv = folder.filePath(u"one.csv"_s);
        QFile list(csv);
        ASSERT_TRUE(list.open(QIODevice::WriteOnly));
        list.write("Name\r\nRex\r\n");
        list.close();
        ASSERT_EQ(RunCli({ u"cards"_s, u"new"_s, file }).status, 0);
        ASSERT_EQ(RunCli({ u"cards"_s, u"import"_s, file, csv }).status, 0);
        s_cardFile = read(file);
    }

    static QByteArray s_cardFile;
};

QByteArray Refusals::s_cardFile;

TEST_P(Refusals, SayWhyAndChangeNothing)
{
    const QMap<QString, QByteArray> before = snapshot();
    const CliTest::Outcome outcome = RunCli(inFolder(GetParam().arguments));
    EXPECT_EQ(outcome.status, GetParam().status);
    const QString errStart = inFolder({ GetParam().errStart }).front();
    EXPECT_TRUE(outcome.err.startsWith(errStart)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.endsWith(u'\n'));
    EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.toStdString();
    EXPECT_EQ(snapshot(), before);
}

const QString sheetUsage = u"usage: quorbin-cli sheet "_s;
const QString graphUsage = u"usage: quorbin-cli graph convert IN OUT"_s;
const QString cardsUsage = u"usage: quorbin-cli cards new FILE.qnd"_s;

INSTANTIATE_TEST_SUITE_P(Verbs, Refusals,
    testing::Values(RefusalRow { "noVerb", {}, 2, u"usage: quorbin-cli VERB"_s },
        RefusalRow { "unknownVerb", { u"draw"_s }, 2, u"quorbin-cli: unknown verb \"draw\""_s },
        RefusalRow { "formatWithoutPattern", { u"format"_s, u"1"_s }, 2,
            u"usage: quorbin-cli format VALUE FORMAT"_s },
        RefusalRow {
            "valWithTwoTexts", { u"val"_s, u"1"_s, u"2"_s }, 2, u"usage: quorbin-cli val TEXT"_s },
        RefusalRow {
            "strOfText", { u"str"_s, u"twelve"_s }, 2, u"quorbin-cli str: not a number"_s },
        RefusalRow {
            "evalWithoutExpression", { u"eval"_s }, 64, u"usage: quorbin-cli eval EXPR"_s },
        RefusalRow {
            "sheetUnknownWord", { u"sheet"_s, u"print"_s }, 64, u"usage: quorbin-cli eval"_s },
        RefusalRow { "sheetConvertOneFile", { u"sheet"_s, u"convert"_s, u"@/ok.csv"_s }, 64,
            sheetUsage + u"convert"_s },
        RefusalRow { "sheetConvertUnknownKind",
            { u"sheet"_s, u"convert"_s, u"@/ok.csv"_s, u"@/a.xls"_s }, 64,
            sheetUsage + u"convert"_s },
        RefusalRow { "sheetConvertMissingInput",
            { u"sheet"_s, u"convert"_s, u"@/none.csv"_s, u"@/a.qnc"_s }, 1, u"Cannot open"_s },
        RefusalRow { "sheetConvertDamagedInput",
            { u"sheet"_s, u"convert"_s, u"@/damaged.qnc"_s, u"@/a.csv"_s }, 1,
            u"This file is damaged"_s },
        RefusalRow { "sheetConvertIntoMissingFolder",
            { u"sheet"_s, u"convert"_s, u"@/sheet.qnc"_s, u"@/no/such/out.csv"_s }, 1,
            u"Cannot save"_s },
        RefusalRow { "sheetGetBadCell", { u"sheet"_s, u"get"_s, u"@/sheet.qnc"_s, u"AA1"_s }, 64,
            u"\"AA1\" names no cell"_s },
        RefusalRow { "sheetGetMissingFile", { u"sheet"_s, u"get"_s, u"@/none.qnc"_s, u"A1"_s }, 1,
            u"Cannot open"_s },
        RefusalRow { "sheetSetWithoutText", { u"sheet"_s, u"set"_s, u"@/sheet.qnc"_s, u"A1"_s }, 64,
            sheetUsage + u"set"_s },
        RefusalRow { "sheetSetDamagedFile",
            { u"sheet"_s, u"set"_s, u"@/damaged.qnc"_s, u"A1"_s, u"1"_s }, 1,
            u"This file is damaged"_s },
        RefusalRow { "sheetSetCircular",
            { u"sheet"_s, u"set"_s, u"@/sheet.qnc"_s, u"A1"_s, u"=B1"_s }, 1,
            u"Circular cell reference\n"_s },
        RefusalRow { "sheetSetFaultWhileRecalculating",
            { u"sheet"_s, u"set"_s, u"@/sheet.qnc"_s, u"A1"_s, u"0"_s }, 1,
            u"Division by zero\n"_s },
        RefusalRow { "sheetSetLockedCell",
            { u"sheet"_s, u"set"_s, u"@/locked.qnc"_s, u"A1"_s, u"6"_s }, 1,
            u"Cell A1 is locked.\n"_s },
        RefusalRow { "graphUnknownWord", { u"graph"_s, u"draw"_s }, 64, graphUsage },
        RefusalRow { "graphOneFile", { u"graph"_s, u"convert"_s, u"@/ok.csv"_s }, 64, graphUsage },
        RefusalRow { "graphUnknownOutputKind",
            { u"graph"_s, u"convert"_s, u"@/ok.csv"_s, u"@/out.doc"_s }, 64, graphUsage },
        RefusalRow { "graphUnknownType",
            { u"graph"_s, u"convert"_s, u"@/ok.csv"_s, u"@/o.qnp"_s, u"--type"_s, u"donut"_s }, 64,
            graphUsage },
        RefusalRow { "graphWidthNotANumber",
            { u"graph"_s, u"convert"_s, u"@/ok.csv"_s, u"@/o.png"_s, u"--width"_s, u"x"_s }, 64,
            graphUsage },
        RefusalRow { "graphWidthWithoutValue",
            { u"graph"_s, u"convert"_s, u"@/ok.csv"_s, u"@/o.png"_s, u"--width"_s }, 64,
            graphUsage },
        RefusalRow { "graphUnknownFormat",
            { u"graph"_s, u"convert"_s, u"@/ok.csv"_s, u"-"_s, u"--format"_s, u"gif"_s }, 64,
            graphUsage },
        RefusalRow { "graphUnknownOption",
            { u"graph"_s, u"convert"_s, u"@/ok.csv"_s, u"@/o.qnp"_s, u"--fast"_s }, 64,
            graphUsage },
        RefusalRow { "graphMissingInput",
            { u"graph"_s, u"convert"_s, u"@/none.csv"_s, u"@/out.qnp"_s }, 1, u"Cannot read "_s },
        RefusalRow { "graphMissingGraphFile",
            { u"graph"_s, u"convert"_s, u"@/none.qnp"_s, u"@/out.qnp"_s }, 1, u"Cannot read "_s },
        RefusalRow { "graphDamagedGraphFile",
            { u"graph"_s, u"convert"_s, u"@/bad.qnp"_s, u"@/out.qnp"_s }, 1, u"@/bad.qnp"_s },
        RefusalRow { "graphEmptyCsv",
            { u"graph"_s, u"convert"_s, u"@/empty.csv"_s, u"@/out.qnp"_s }, 1,
            u"@/empty.csv holds no rows.\n"_s },
        RefusalRow { "graphUnknownInputKind",
            { u"graph"_s, u"convert"_s, u"@/ok.txt"_s, u"@/out.qnp"_s }, 1,
            u"@/ok.txt is neither a graph file"_s },
        RefusalRow { "graphIntoMissingFolder",
            { u"graph"_s, u"convert"_s, u"@/ok.csv"_s, u"@/no/such/folder/out.qnp"_s }, 1,
            u"Cannot write "_s },
        RefusalRow { "cardsWithoutFile", { u"cards"_s, u"info"_s }, 64, cardsUsage },
        RefusalRow {
            "cardsUnknownWord", { u"cards"_s, u"frobnicate"_s, u"@/x.qnd"_s }, 64, cardsUsage },
        RefusalRow { "cardsNewWithoutFile", { u"cards"_s, u"new"_s }, 64, cardsUsage },
        RefusalRow { "cardsNewViewOutOfRange",
            { u"cards"_s, u"new"_s, u"@/x.qnd"_s, u"--view"_s, u"5"_s }, 64, cardsUsage },
        RefusalRow { "cardsNewSevenLabels",
            { u"cards"_s, u"new"_s, u"@/x.qnd"_s, u"--labels"_s, u"a,b,c,d,e,f,g"_s }, 64,
            cardsUsage },
        RefusalRow { "cardsLabelsOnAnotherVerb",
            { u"cards"_s, u"info"_s, u"@/class.qnd"_s, u"--labels"_s, u"a"_s }, 64, cardsUsage },
        RefusalRow { "cardsWhereWithoutCondition",
            { u"cards"_s, u"export"_s, u"@/class.qnd"_s, u"@/out.csv"_s, u"--where"_s }, 64,
            cardsUsage },
        RefusalRow { "cardsExportUnknownItem",
            { u"cards"_s, u"export"_s, u"@/class.qnd"_s, u"@/out.csv"_s, u"--fields"_s, u"Legs"_s },
            64, u"quorbin-cli cards export: no item \"Legs\" to export\n"_s },
        RefusalRow { "cardsTextFileAsDatabase", { u"cards"_s, u"info"_s, u"@/text.qnd"_s }, 1,
            u"Error 3343: "_s },
        RefusalRow { "cardsMissingFile", { u"cards"_s, u"find"_s, u"@/none.qnd"_s, u"True"_s }, 1,
            u"Error 3024: "_s },
        RefusalRow { "cardsBadCondition",
            { u"cards"_s, u"find"_s, u"@/class.qnd"_s, u"CardName = 'o'brien'"_s }, 1,
            u"Error 3075: "_s },
        RefusalRow { "cardsUnknownField",
            { u"cards"_s, u"find"_s, u"@/class.qnd"_s, u"Colour = 'red'"_s }, 1,
            u"Error 3061: "_s },
        RefusalRow { "cardsDuplicateName",
            { u"cards"_s, u"import"_s, u"@/class.qnd"_s, u"@/dup.csv"_s }, 1,
            u"Error 3022: Line 3 of "_s },
        RefusalRow { "cardsNewOverExisting", { u"cards"_s, u"new"_s, u"@/class.qnd"_s }, 1,
            u"Error 3204: "_s }),
    [](const testing::TestParamInfo<RefusalRow>& info) { return std::string(info.param.name); });

TEST(CommandLine, HelpListsEveryVerb)
{
    const CliTest::Outcome outcome = RunCli({ u"--help"_s });
    EXPECT_EQ(outcome.status, 0);
    for (const QString& verb : { u"format VALUE FORMAT"_s, u"val TEXT"_s, u"str NUMBER"_s,
             u"eval EXPR"_s, u"sheet convert"_s, u"sheet get"_s, u"sheet set"_s, u"graph convert"_s,
             u"cards new"_s, u"cards import"_s, u"cards export"_s, u"cards find"_s, u"cards info"_s,
             u"cards compact"_s })
        EXPECT_TRUE(outcome.out.contains(verb)) << verb.toStdString();
}

} // namespace
