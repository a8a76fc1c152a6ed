#include "VerbTestSupport.h"
#include "sheet/Sheet.h"
#include "sheet/SheetFile.h"

using namespace Qt::Literals::StringLiterals;
using CliTest::RunCli;

namespace {

class SheetVerbs : public CliTest::VerbTest
{
protected:
    // The line `sheet get` prints for the cell.
    QString get(const QString& file, const QString& cell)
    {
        const CliTest::Outcome outcome = RunCli({ u"sheet"_s, u"get"_s, file, cell });
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        return outcome.out;
    }
};

// The whole path: a CSV of numbers and formulas becomes a sheet, one entry recalculates every
// dependent cell, the saved file reloads to the same cells, and a copy keeps every byte.
TEST_F(SheetVerbs, SetOnAConvertedSheetRecalculatesAndSaves)
{
    const QString csv
        = write(u"marks.csv"_s, "Mark,Double,Total\r\n4,=A2*2,=sum(B2:B3)\r\n6,=A3*2,=C2+A2\r\n");
    const QString qnc = path(u"marks.qnc"_s);
    ASSERT_EQ(RunCli({ u"sheet"_s, u"convert"_s, csv, qnc }).status, 0);
    EXPECT_EQ(get(qnc, u"C2"_s), u"20\t3\t20\t=sum(B2:B3)\n"_s);

    const CliTest::Outcome set = RunCli({ u"sheet"_s, u"set"_s, qnc, u"a2"_s, u"10"_s });
    EXPECT_EQ(set.status, 0) << set.err.toStdString();
    EXPECT_EQ(get(qnc, u"A2"_s), u"10\t2\t10\t\n"_s);
    EXPECT_EQ(get(qnc, u"B2"_s), u"20\t3\t20\t=A2*2\n"_s);
    EXPECT_EQ(get(qnc, u"C2"_s), u"32\t3\t32\t=sum(B2:B3)\n"_s);
    EXPECT_EQ(get(qnc, u"C3"_s), u"42\t3\t42\t=C2+A2\n"_s);

    Tillane::Sheet reloaded;
    ASSERT_TRUE(Tillane::LoadSheetFile(qnc, reloaded).isComplete());
    EXPECT_EQ(Tillane::SheetFileBytes(reloaded), read(qnc));
    ASSERT_EQ(RunCli({ u"sheet"_s, u"convert"_s, qnc, path(u"copy.QNC"_s) }).status, 0);
    EXPECT_EQ(read(path(u"copy.QNC"_s)), read(qnc));
}

struct ConvertRow
{
    const char* name;
    QString input;
    QByteArray bytes;
    QString output;
    QByteArray written;
    QString err = {};
};

class SheetConversions : public SheetVerbs, public testing::WithParamInterface<ConvertRow>
{
};

// Text in is entered as typed; text out is the shown texts, unquoted, so a text holding the
// separator gains a field.
TEST_P(SheetConversions, WriteTheShownTexts)
{
    const ConvertRow& row = GetParam();
    const CliTest::Outcome outcome
        = RunCli({ u"sheet"_s, u"convert"_s, write(row.input, row.bytes), path(row.output) });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, row.err);
    EXPECT_EQ(read(path(row.output)), row.written);
}

INSTANTIATE_TEST_SUITE_P(Rows, SheetConversions,
    testing::Values(ConvertRow { "csvToTabs", u"in.csv"_s, "50%,=A1*2,\"x,y\"\n", u"out.txt"_s,
                        "50%\t1\tx,y\r\n" },
        ConvertRow { "tabsToCsv", u"in.txt"_s, "50%\t1\tx,y\r\n", u"out.csv"_s, "50%,1,x,y\r\n" },
        ConvertRow { "refusedEntryIsToldAndTheRestKept", u"in.csv"_s, "=A1,7\n", u"out.csv"_s,
            ",7\r\n", u"A1: Circular cell reference\n"_s }),
    [](const testing::TestParamInfo<ConvertRow>& info) { return std::string(info.param.name); });

} // namespace
