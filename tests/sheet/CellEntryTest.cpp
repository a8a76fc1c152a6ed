#include "sheet/CellEntry.h"

#include "platform/runtime/Dates.h"
#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

struct EntryRow
{
    const char* name;
    QString typed;
    QString formatBefore; // the cell's NumberFormat before the entry
    qint32 kind;
    double value;
    QString format;
    QString shown;
};

void PrintTo(const EntryRow& row, std::ostream* stream)
{
    *stream << row.name << ": " << row.typed.toStdString();
}

class Entries : public SheetTest, public testing::WithParamInterface<EntryRow>
{
};

// Classification and what the cell then shows, in one row per kind of entry.
TEST_P(Entries, AreClassifiedAndShown)
{
    const EntryRow& row = GetParam();
    sheet.record(2, 2).NumberFormat = row.formatBefore;
    EnterCell(sheet, 2, 2, row.typed);
    EXPECT_EQ(record("B2").Kind, row.kind);
    EXPECT_DOUBLE_EQ(record("B2").Value, row.value);
    EXPECT_EQ(record("B2").NumberFormat, row.format);
    EXPECT_EQ(shown("B2"), row.shown);
}

const double March12th2004 = Runtime::DateSerial(2004, 3, 12);

INSTANTIATE_TEST_SUITE_P(Rows, Entries,
    testing::Values(EntryRow { "whole", u"42"_s, QString(), NumberCell, 42, QString(), u"42"_s },
        EntryRow { "negative", u"-5"_s, QString(), NumberCell, -5, QString(), u"-5"_s },
        EntryRow { "fractionShowsFourPlaces", u"3.14159"_s, QString(), NumberCell, 3.14159,
            QString(), u"3.1416"_s },
        EntryRow { "blanksTrimmed", u"  7  "_s, QString(), NumberCell, 7, QString(), u"7"_s },
        EntryRow { "percent", u"50%"_s, QString(), NumberCell, 0.5, u"#0.##%"_s, u"50%"_s },
        EntryRow { "unit", u"5kg"_s, QString(), NumberCell, 5, u"#0.##kg"_s, u"5kg"_s },
        EntryRow { "currency", u"£3"_s, QString(), NumberCell, 3, u"Currency"_s, u"£3.00"_s },
        EntryRow { "currencyWithPence", u"£1,234.5"_s, QString(), NumberCell, 1234.5, u"Currency"_s,
            u"£1,234.50"_s },
        EntryRow { "date", u"12/3/2004"_s, QString(), NumberCell, March12th2004, u"General Date"_s,
            u"12/03/2004"_s },
        EntryRow { "dateKeepsCellFormat", u"12/3/2004"_s, u"Long Date"_s, NumberCell, March12th2004,
            u"Long Date"_s, u"Friday, 12 March 2004"_s },
        EntryRow {
            "numberKeepsCellFormat", u"2"_s, u"0.00"_s, NumberCell, 2, u"0.00"_s, u"2.00"_s },
        EntryRow {
            "leadingNumberIsLenient", u"1,000"_s, QString(), NumberCell, 1, QString(), u"1"_s },
        EntryRow {
            "largeWhole", u"5000000000"_s, QString(), NumberCell, 5e9, QString(), u"5000000000"_s },
        EntryRow { "text", u"Rainfall"_s, QString(), TextCell, 0, QString(), u"Rainfall"_s },
        EntryRow { "numberWithBlankIsText", u"3 apples"_s, QString(), TextCell, 0, QString(),
            u"3 apples"_s },
        EntryRow { "zeroWithUnitIsText", u"0kg"_s, QString(), TextCell, 0, QString(), u"0kg"_s },
        EntryRow { "cellNameIsText", u"$A$1"_s, QString(), TextCell, 0, QString(), u"$A$1"_s },
        EntryRow { "emptyClears", u"   "_s, u"0.00"_s, EmptyCell, 0, u"0.00"_s, QString() },
        EntryRow { "formula", u"=6*7"_s, QString(), FormulaCell, 42, QString(), u"42"_s },
        EntryRow { "formulaKeepsCellFormat", u"=1/8"_s, u"0.00"_s, FormulaCell, 0.125, u"0.00"_s,
            u"0.13"_s }),
    [](const testing::TestParamInfo<EntryRow>& info) { return info.param.name; });

class Entering : public SheetTest
{
};

TEST_F(Entering, StoresAlignmentByKind)
{
    enter("A1", u"Rain"_s);
    enter("A2", u"12"_s);
    enter("A3", u"=A2*2"_s);
    EXPECT_EQ(sheet.display(1, 1).Alignment, AlignLeftCentre);
    EXPECT_EQ(sheet.display(2, 1).Alignment, AlignRightCentre);
    EXPECT_EQ(sheet.display(3, 1).Alignment, AlignRightCentre);
    enter("A2", QString());
    EXPECT_EQ(sheet.display(2, 1).Alignment, AlignRightCentre); // emptying keeps it
}

TEST_F(Entering, FormulaKeepsItsTextAsTyped)
{
    enter("A1", u"  =sum(B1:B2) * 2 "_s);
    EXPECT_EQ(record("A1").Formula, u"=sum(B1:B2) * 2"_s);
}

TEST_F(Entering, UsedAreaOnlyGrows)
{
    EXPECT_EQ(sheet.usedRows(), 1);
    EXPECT_EQ(sheet.usedColumns(), 1);
    enter("C7", u"1"_s);
    enter("B2", u"1"_s);
    enter("C7", QString());
    EXPECT_EQ(sheet.usedRows(), 7);
    EXPECT_EQ(sheet.usedColumns(), 3);
}

TEST_F(Entering, MarksTheSheetChanged)
{
    QSignalSpy spy(&sheet, &Sheet::modifiedChanged);
    enter("A1", u"1"_s);
    EXPECT_TRUE(sheet.isModified());
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(Entering, LockedCellIsLeftAlone)
{
    enter("A1", u"5"_s);
    sheet.record(1, 1).Locked = true;
    EXPECT_FALSE(EnterCell(sheet, 1, 1, u"6"_s));
    EXPECT_EQ(value("A1"), 5);
    EXPECT_EQ(shown("A1"), u"5"_s);
}

TEST_F(Entering, NumberTooLargeIsAnOverflow)
{
    try {
        enter("A1", u"1e999"_s);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.description(), u"Overflow"_s);
    }
    EXPECT_EQ(record("A1").Kind, EmptyCell);
}

struct CircularRow
{
    const char* name;
    QList<std::pair<const char*, QString>> before;
    const char* cell;
    QString formula;
};

void PrintTo(const CircularRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class CircularFormulas : public SheetTest, public testing::WithParamInterface<CircularRow>
{
};

TEST_P(CircularFormulas, AreRefused)
{
    for (const auto& [cell, text] : GetParam().before)
        enter(cell, text);
    try {
        enter(GetParam().cell, GetParam().formula);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::CircularReference);
        EXPECT_EQ(error.description(), u"Circular cell reference"_s);
    }
    EXPECT_EQ(record(GetParam().cell).Kind, EmptyCell);
    EXPECT_TRUE(record(GetParam().cell).Formula.isEmpty());
    EXPECT_FALSE(record(GetParam().cell).HasPrecedents);
    EXPECT_TRUE(shown(GetParam().cell).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, CircularFormulas,
    testing::Values(CircularRow { "ownCellHoldingANumber", { { "A1", u"4"_s } }, "A1", u"=A1+1"_s },
        CircularRow { "throughFirstPrecedent", { { "A1", u"=B1+C1"_s } }, "B1", u"=A1"_s },
        CircularRow { "throughSecondPrecedent", { { "A1", u"=B1+C1"_s } }, "C1", u"=A1"_s },
        CircularRow {
            "throughChain", { { "A1", u"=B1"_s }, { "B1", u"=C1*2"_s } }, "C1", u"=A1+1"_s },
        CircularRow { "ownCellInRange", {}, "A2", u"=sum(A1:A3)"_s },
        CircularRow { "rangeOfAPrecedent", { { "B5", u"=mean(C1:C9)"_s } }, "C4", u"=B5"_s }),
    [](const testing::TestParamInfo<CircularRow>& info) { return info.param.name; });

TEST_F(Entering, RefusedFormulaLeavesOldLinksRemoved)
{
    enter("A1", u"1"_s);
    enter("B1", u"=A1*2"_s);
    EXPECT_THROW(enter("B1", u"=B1"_s), SheetError);
    EXPECT_FALSE(record("A1").HasDependents);
    // A1 no longer drives B1, which keeps its old value but no formula.
    enter("A1", u"5"_s);
    EXPECT_EQ(record("B1").Kind, EmptyCell);
    EXPECT_EQ(value("B1"), 2);
}

TEST_F(Entering, DivisionByZeroInADependentKeepsBothValues)
{
    enter("A1", u"4"_s);
    enter("B1", u"=1/A1"_s);
    try {
        enter("A1", u"0"_s);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.description(), u"Division by zero"_s);
        EXPECT_FALSE(error.isUserError());
    }
    EXPECT_EQ(value("A1"), 0);
    EXPECT_EQ(shown("A1"), u"0"_s);
    EXPECT_EQ(value("B1"), 0.25);
    EXPECT_EQ(shown("B1"), u"0.25"_s);
}

TEST_F(Entering, FaultStopsTheRestOfTheRecalculation)
{
    enter("A1", u"4"_s);
    enter("B1", u"=A1+1"_s);
    enter("C1", u"=1/(A1-9)"_s);
    enter("D1", u"=A1*2"_s);
    EXPECT_THROW(enter("A1", u"9"_s), SheetError);
    EXPECT_EQ(value("B1"), 10); // before the fault: updated
    EXPECT_EQ(value("D1"), 8); // after it: not reached
}

TEST_F(Entering, FormulaReplacingAFormulaDropsItsOldLinks)
{
    enter("B1", u"=A1+A2"_s);
    enter("B1", u"=A3"_s);
    EXPECT_FALSE(record("A1").HasDependents);
    EXPECT_FALSE(record("A2").HasDependents);
    EXPECT_EQ(record("A3").Dependents, (QList<CellRef> { { 0, 1, 2 } }));
}

TEST(EntryCurrency, FollowsTheHostLocale)
{
    Runtime::ScopedHostLocale euro(QLocale(QLocale::French, QLocale::France));
    const CellEntry entry = ClassifyEntry(u"€3"_s, QString(), u"€"_s);
    EXPECT_EQ(entry.Kind, NumberCell);
    EXPECT_EQ(entry.NumberFormat, u"Currency"_s);
    EXPECT_EQ(entry.Value, 3);
}

} // namespace
