#include "RowFile.h"
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

class SheetConversions : public RowFile::RowTest<SheetVerbs>
{
};

TEST_P(SheetConversions, WriteTheShownTexts)
{
    const QString input = write(row().text("input"), row().bytes("bytes"));
    const CliTest::Outcome outcome
        = RunCli({ u"sheet"_s, u"convert"_s, input, path(row().text("output")) });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, row().text("err"));
    EXPECT_EQ(read(path(row().text("output"))), row().bytes("written"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SheetConversions, RowFile::In("app/sheetConversions.rows"), RowFile::Named());

} // namespace
