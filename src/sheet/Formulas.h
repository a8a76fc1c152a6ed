#pragma once

#include "sheet/CellRef.h"

#include <QList>
#include <QString>

// Formulas are evaluated by rewriting: range functions and cell references in the text are
// replaced by numbers (FormulaNumberText), and the arithmetic that is left goes to the
// expression evaluator.
namespace Tillane {

class Sheet;

// The range functions, searched in the formula in this order of names (not of position):
// "sum(", "average(", "mean(", "mode(", "median(".
enum RangeFunction {
    SumFunction = 1,
    MeanFunction = 2, // average( and mean(
    MedianFunction = 3,
    ModeFunction = 4,
};

// The value of a range function over the rectangle from `first` to `second`, row by row.
// Every cell adds its Value (0 for text); only number and formula cells count.
// - sum: the sum.
// - mean: the sum over the count, or the sum itself when nothing counts.
// - median: the middle of the counted values in order; for an even count the mean of the
//   two middle ones; 0 when nothing counts.
// - mode: the counted value that occurs most often; of several equally frequent ones the
//   smallest (so a range of all different values gives its smallest); 0 when nothing counts.
// A range given bottom-up or right-to-left holds no cells and gives 0.
double RangeValue(
    const Sheet& sheet, RangeFunction function, CellAddress first, CellAddress second);

// The value of a formula ("=..." as typed) for the cell at (row, column). With recordRefs the
// cell's Precedents are rebuilt from the formula, the formula is refused when it would lead
// back to its own cell, and the cell is registered as a dependent of every cell it reads.
// A formula with text left over after a complete expression is worth 0 and records nothing.
// Throws SheetError: NoSuchCell, UnclosedFunction, MissingReference, EvaluationFailed
// ("Syntax Error", "Undefined Function"), CircularReference, or an arithmetic fault.
double EvaluateFormula(Sheet& sheet, const QString& formula, bool recordRefs, int row, int column);

// The cells a Precedents list reads: each single cell, and every cell of each range's
// rectangle, in list order. Elements naming no cell of the sheet, and an unpaired range
// corner (only in damaged files), are left out.
QList<CellAddress> PrecedentCells(const QList<CellRef>& precedents);

// The same cells handed one by one to `visit`, which returns false to stop early; returns
// false when it was stopped. For the searches that run on every entry, without building a
// list.
template <typename Visit> bool VisitPrecedentCells(const QList<CellRef>& precedents, Visit visit)
{
    for (qsizetype i = 0; i < precedents.size(); ++i) {
        const CellRef& element = precedents[i];
        if (element.Kind == SingleCellPrecedent) {
            const CellAddress cell { element.Row, element.Column };
            if (cell.isValid() && !visit(cell))
                return false;
        } else if (element.Kind == RangeCornerPrecedent && i + 1 < precedents.size()
            && precedents[i + 1].Kind == RangeCornerPrecedent) {
            const CellRef& corner = precedents[i + 1];
            const int top = element.Row < 1 ? 1 : element.Row;
            const int bottom = corner.Row > SheetRows ? SheetRows : corner.Row;
            const int left = element.Column < 1 ? 1 : element.Column;
            const int right = corner.Column > SheetColumns ? SheetColumns : corner.Column;
            for (int row = top; row <= bottom; ++row) {
                for (int column = left; column <= right; ++column) {
                    if (!visit(CellAddress { row, column }))
                        return false;
                }
            }
            ++i;
        }
    }
    return true;
}

// Whether the cell's formula leads back to the cell itself through the precedents of the
// cells it reads. Each cell is searched once, so damaged files with cycles elsewhere cannot
// make the search run away.
bool LeadsBackTo(const Sheet& sheet, CellAddress origin);

} // namespace Tillane
