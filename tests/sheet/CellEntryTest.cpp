#include "sheet/CellEntry.h"

#include "RowFile.h"
#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

using RowFile::In;
using RowFile::Named;

// A kind of cell as the rows name it; the names are in the order of the kinds' numbers.
qint32 KindNamed(const QString& name)
{
    return qint32(QStringList { u"empty"_s, u"text"_s, u"number"_s, u"formula"_s }.indexOf(name));
}

class Entries : public RowFile::RowTest<SheetTest>
{
};

// Classification and what the cell then shows, in one row per kind of entry.
TEST_P(Entries, AreClassifiedAndShown)
{
    sheet.record(2, 2).NumberFormat = row().text("formatBefore");
    EnterCell(sheet, 2, 2, row().text("typed"));
    EXPECT_EQ(record("B2").Kind, KindNamed(row().text("kind")));
    EXPECT_DOUBLE_EQ(record("B2").Value, row().number("value"));
    EXPECT_EQ(record("B2").NumberFormat, row().text("format"));
    EXPECT_EQ(shown("B2"), row().text("shown"));
}

INSTANTIATE_TEST_SUITE_P(Rows, Entries, In("sheet/entry/entries.rows"), Named());

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

class CircularFormulas : public RowFile::RowTest<SheetTest>
{
};

TEST_P(CircularFormulas, AreRefused)
{
    enterAll(row().list("entered", u"; "_s));
    const QByteArray cell = row().text("cell").toLatin1();
    try {
        enter(cell.constData(), row().text("formula"));
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::CircularReference);
        EXPECT_EQ(error.description(), u"Circular cell reference"_s);
    }
    EXPECT_EQ(record(cell.constData()).Kind, EmptyCell);
    EXPECT_TRUE(record(cell.constData()).Formula.isEmpty());
    EXPECT_FALSE(record(cell.constData()).HasPrecedents);
    EXPECT_TRUE(shown(cell.constData()).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, CircularFormulas, In("sheet/entry/circularFormulas.rows"), Named());

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
