#include "sheet/CellReferences.h"

#include "RowFile.h"
#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

using RowFile::In;
using RowFile::Named;

class FindingReferences : public RowFile::RowTest<>
{
};

TEST_P(FindingReferences, TakesTheFirstLetterFollowedByDollarOrDigit)
{
    const QString text = row().text("text");
    qsizetype position = row().whole("from");
    const CellReferenceMatch match = FindNextReference(text, position);
    ASSERT_EQ(match.Found, !row().text("reference").isEmpty());
    if (!match.Found) {
        EXPECT_EQ(position, text.size());
        return;
    }
    EXPECT_EQ(text.mid(match.Start, match.Length), row().text("reference"));
    EXPECT_EQ(position, match.Start + match.Length);
    EXPECT_EQ(match.Cell, (CellAddress { int(row().whole("row")), int(row().whole("column")) }));
    EXPECT_EQ(match.ColumnFixed, row().flag("columnFixed"));
    EXPECT_EQ(match.RowFixed, row().flag("rowFixed"));
}

INSTANTIATE_TEST_SUITE_P(Rows, FindingReferences, In("sheet/references/find.rows"), Named());

void ExpectNoSuchCell(const QString& text)
{
    qsizetype position = 0;
    try {
        FindNextReference(text, position);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::NoSuchCell);
        EXPECT_EQ(error.description(), u"No such cell"_s);
    }
}

class ReferencesOutsideTheSheet : public RowFile::RowTest<>
{
};

TEST_P(ReferencesOutsideTheSheet, AreNoSuchCell)
{
    ExpectNoSuchCell(row().text("text"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ReferencesOutsideTheSheet, In("sheet/references/outsideTheSheet.rows"), Named());

TEST(ReferenceOutsideTheSheet, RowTooLongToReadIsNoSuchCell)
{
    ExpectNoSuchCell(u"=A"_s + QString(400, u'9'));
}

TEST(ParsingReferences, ReadColumnLetterAndRow)
{
    EXPECT_EQ(ParseCellReference(u"$b$7"), (CellAddress { 7, 2 }));
    EXPECT_EQ(ParseCellReference(u"Z256"), (CellAddress { 256, 26 }));
    // A row of 32768 does not fit 16 bits: no cell.
    EXPECT_EQ(ParseCellReference(u"A32768").Row, 0);
    EXPECT_EQ(ParseCellReference(u"17"), (CellAddress {}));
}

class CellsFromNames : public RowFile::RowTest<>
{
};

TEST_P(CellsFromNames, AcceptOnlyAWholeReference)
{
    const std::optional<CellAddress> expected = row().text("row") == u"none"
        ? std::nullopt
        : std::optional(CellAddress { int(row().whole("row")), int(row().whole("column")) });
    EXPECT_EQ(CellFromName(row().text("text")), expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, CellsFromNames, In("sheet/references/names.rows"), Named());

class ShiftingReferences : public RowFile::RowTest<>
{
};

TEST_P(ShiftingReferences, MoveAllButTheFixedParts)
{
    const QString formula = row().text("formula");
    const int rows = int(row().whole("rows"));
    const int columns = int(row().whole("columns"));
    if (row().text("shifted") != u"out of range") {
        EXPECT_EQ(ShiftFormulaReferences(formula, rows, columns), row().text("shifted"));
        return;
    }
    try {
        ShiftFormulaReferences(formula, rows, columns);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::CopyOutOfRange);
        EXPECT_EQ(
            error.description(), u"Unable to copy cells as cell references go out of range"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, ShiftingReferences, In("sheet/references/shift.rows"), Named());

} // namespace
