#include "sheet/Dependencies.h"

#include "RowFile.h"
#include "sheet/Formulas.h"
#include "sheet/SheetError.h"
#include "sheet/SheetFile.h"
#include "sheet/SheetTestSupport.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

class Links : public SheetTest
{
protected:
    QList<CellRef> dependentsOf(const char* cell) const
    {
        return record(cell).HasDependents ? record(cell).Dependents : QList<CellRef> {};
    }
};

// The list order is the order of recalculation, so removing keeps the others in place.
TEST_F(Links, DependentListTakesEachOnceAndRemovesInPlace)
{
    for (int column = 2; column <= 4; ++column)
        AddDependent(sheet, { 1, column }, { 1, 1 }, 0);
    AddDependent(sheet, { 1, 2 }, { 1, 1 }, 0);
    AddDependent(sheet, { 0, 0 }, { 1, 1 }, 2);
    AddDependent(sheet, { 0, 0 }, { 1, 1 }, 2);
    RemoveDependent(sheet, { 1, 3 }, { 1, 1 }, 0);
    RemoveDependent(sheet, { 1, 2 }, { 1, 1 }, 3); // same cell, other kind
    RemoveDependent(sheet, { 1, 2 }, { 5, 5 }, 0); // a cell without dependents
    EXPECT_EQ(dependentsOf("A1"), (QList<CellRef> { { 0, 1, 2 }, { 0, 1, 4 }, { 2, 0, 0 } }));
    for (const CellAddress cell : { CellAddress { 1, 2 }, CellAddress { 1, 4 } })
        RemoveDependent(sheet, cell, { 1, 1 }, 0);
    RemoveDependent(sheet, { 0, 0 }, { 1, 1 }, 2);
    EXPECT_FALSE(record("A1").HasDependents);
    EXPECT_TRUE(record("A1").Dependents.isEmpty());
}

TEST_F(Links, ClearingForgetsFormulaAndLinksButKeepsTheRest)
{
    enter("A1", u"3"_s);
    enter("A2", u"4"_s);
    enter("B1", u"=sum(A1:A2)"_s);
    enter("C1", u"=B1"_s);
    enter("B2", u"=A1+1"_s);
    sheet.record(1, 2).NumberFormat = u"0.00"_s;
    sheet.display(1, 2).BackColour = 0xFF;
    sheet.record(2, 2).Locked = true;
    ClearCell(sheet, 1, 2);
    ClearCell(sheet, 2, 2); // locked: left as it is
    EXPECT_EQ(record("B1").Kind, EmptyCell);
    EXPECT_TRUE(record("B1").Formula.isEmpty());
    EXPECT_FALSE(record("B1").HasPrecedents);
    EXPECT_TRUE(record("B1").Precedents.isEmpty());
    EXPECT_TRUE(shown("B1").isEmpty());
    EXPECT_EQ(value("B1"), 7);
    EXPECT_EQ(record("B1").NumberFormat, u"0.00"_s);
    EXPECT_EQ(sheet.display(1, 2).BackColour, 0xFF);
    EXPECT_EQ(dependentsOf("B1"), (QList<CellRef> { { 0, 1, 3 } }));
    EXPECT_EQ(record("B2").Kind, FormulaCell);
    EXPECT_EQ(dependentsOf("A1"), (QList<CellRef> { { 0, 2, 2 } })); // the locked B2's only
    EXPECT_TRUE(dependentsOf("A2").isEmpty());
}

TEST_F(Links, GraphOfAChangedCellOrFormulaRedrawsOnce)
{
    AddDependent(sheet, { 0, 0 }, at("B3"), 2);
    enter("B1", u"=A1*2"_s);
    AddDependent(sheet, { 0, 0 }, at("B1"), 4);
    QSignalSpy redraws(&sheet, &Sheet::graphRedrawRequested);
    enter("B3", u"12"_s);
    enter("B4", u"12"_s);
    enter("A1", u"5"_s);
    ASSERT_EQ(redraws.count(), 2);
    EXPECT_EQ(redraws.at(0).at(0).toInt(), 2);
    EXPECT_EQ(redraws.at(1).at(0).toInt(), 4);
}

TEST_F(Links, LinkToACellThatLostItsFormulaIsPassedOver)
{
    // A stale link, as a damaged file may hold: B1 is listed but holds text.
    enter("B1", u"text"_s);
    AddDependent(sheet, at("B1"), at("A1"), 0);
    EXPECT_NO_THROW(enter("A1", u"3"_s));
    EXPECT_EQ(record("B1").Kind, TextCell);
}

TEST_F(Links, DamagedCycleOfDependentsIsStopped)
{
    // Two formulas that feed each other, as only a damaged file can link them.
    enter("B1", u"=C1+1"_s);
    enter("C1", u"=A1+1"_s);
    sheet.record(1, 3).Formula = u"=B1+1"_s;
    AddDependent(sheet, at("C1"), at("B1"), 0);
    try {
        enter("A1", u"1"_s);
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::CircularReference);
    }
}

// The oracle: every formula evaluated again, sweep after sweep until nothing changes, on a
// copy of the sheet read back from its file. Cells whose incremental value differs from the
// full recomputation are returned. Formulas cannot loop, so the sweeps reach the one set of
// values that satisfies every formula, whatever values they start from.
QList<CellAddress> cellsDifferingFromFullRecalculation(const Sheet& sheet)
{
    Sheet copy;
    EXPECT_TRUE(ReadSheet(SheetFileBytes(sheet), copy).isComplete());
    // A cleared cell keeps its Value for the formulas that read it, but the file stores
    // values of numbers and formulas only: carry the others over by hand.
    for (int row = 1; row <= sheet.usedRows(); ++row) {
        for (int column = 1; column <= sheet.usedColumns(); ++column)
            copy.record(row, column).Value = sheet.record(row, column).Value;
    }
    for (int sweep = 0; sweep < SheetCellCount; ++sweep) {
        bool changed = false;
        for (int row = 1; row <= copy.usedRows(); ++row) {
            for (int column = 1; column <= copy.usedColumns(); ++column) {
                CellRecord& cell = copy.record(row, column);
                if (cell.Kind != FormulaCell)
                    continue;
                const double value = EvaluateFormula(copy, cell.Formula, false, row, column);
                if (value != cell.Value) {
                    cell.Value = value;
                    changed = true;
                }
            }
        }
        if (!changed)
            break;
    }
    QList<CellAddress> differing;
    for (int row = 1; row <= sheet.usedRows(); ++row) {
        for (int column = 1; column <= sheet.usedColumns(); ++column) {
            if (sheet.record(row, column).Value != copy.record(row, column).Value)
                differing.append({ row, column });
        }
    }
    return differing;
}

QString randomEntry(QRandomGenerator& random)
{
    // The cells are drawn before the entry is built, in one order whatever the compiler's
    // order of evaluating arguments, so every build tries the same entries.
    const int kind = random.bounded(6);
    QStringList cells;
    for (int index = 0; index < 3; ++index)
        cells << CellName(1 + random.bounded(8), 1 + random.bounded(5));
    switch (kind) {
    case 0:
        return QString::number(random.bounded(100));
    case 1:
        return u"text"_s;
    case 2:
        return QString();
    case 3:
        return u"=sum(%1:%2)/4"_s.arg(cells[0], cells[1]);
    case 4:
        return u"=mean(%1:%2)+%3"_s.arg(cells[0], cells[1], cells[2]);
    default:
        return u"=%1+%2*0.5-1"_s.arg(cells[0], cells[1]);
    }
}

TEST_F(Links, IncrementalRecalculationEqualsFullRecalculation)
{
    QRandomGenerator random(20240229);
    int accepted = 0;
    for (int change = 0; change < 400; ++change) {
        const int row = 1 + random.bounded(8);
        const int column = 1 + random.bounded(5);
        const QString entry = randomEntry(random);
        try {
            EnterCell(sheet, row, column, entry);
            ++accepted;
        } catch (const SheetError& error) {
            ASSERT_EQ(error.offset(), SheetError::CircularReference) << entry.toStdString();
        }
        const QList<CellAddress> differing = cellsDifferingFromFullRecalculation(sheet);
        ASSERT_TRUE(differing.isEmpty())
            << "after " << CellName(row, column).toStdString() << " " << entry.toStdString() << ": "
            << CellName(differing.value(0)).toStdString();
    }
    EXPECT_GT(accepted, 200); // most changes were real entries, not refusals
}

using RecalculationOrder = RowFile::RowTest<Links>;

TEST_P(RecalculationOrder, ShowsTheCellsInTheOrderOfTheDependentLists)
{
    enterAll(row().list("entered", u"; "_s));
    QStringList shown;
    QObject::connect(&sheet, &Sheet::cellChanged, [&](int row, int column) {
        if (shown.isEmpty() || shown.back() != CellName(row, column))
            shown.append(CellName(row, column));
    });
    enterAll({ row().text("change") });
    EXPECT_EQ(shown.join(u", ").toStdString(), row().text("shown").toStdString());
    EXPECT_TRUE(cellsDifferingFromFullRecalculation(sheet).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RecalculationOrder, RowFile::In("sheet/recalculation/shownOrder.rows"), RowFile::Named());

TEST_F(Links, ARefusedFormulaLeavesNoFormulaCountingTheEmptiedCell)
{
    enter("A1", u"4"_s);
    enter("A2", u"5"_s);
    enter("B1", u"=mean(A1:A2)"_s); // 4.5
    try {
        enter("A2", u"=B1+1"_s); // refused: B1 reads A2
        ADD_FAILURE() << "no error";
    } catch (const SheetError& error) {
        EXPECT_EQ(error.offset(), SheetError::CircularReference);
    }
    EXPECT_EQ(record("A2").Kind, EmptyCell);
    // An emptied cell keeps its value for the sums but is no longer counted: 9 / 1.
    EXPECT_EQ(record("B1").Value, 9);
    EXPECT_TRUE(cellsDifferingFromFullRecalculation(sheet).isEmpty());
}

TEST_F(Links, OracleCatchesAMissedUpdate)
{
    enter("A1", u"2"_s);
    enter("B1", u"=A1*3"_s);
    ASSERT_TRUE(cellsDifferingFromFullRecalculation(sheet).isEmpty());
    // A planted fault: A1 changes without its dependents being recalculated.
    sheet.record(1, 1).Value = 5;
    EXPECT_EQ(cellsDifferingFromFullRecalculation(sheet), (QList<CellAddress> { { 1, 2 } }));
}

} // namespace
