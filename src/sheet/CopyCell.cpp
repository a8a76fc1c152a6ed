#include "sheet/CopyCell.h"

#include "sheet/CellReferences.h"
#include "sheet/Dependencies.h"
#include "sheet/Formulas.h"
#include "sheet/Sheet.h"

namespace Tillane {

void CopyCell(Sheet& sheet, CellAddress source, CellAddress first, CellAddress last)
{
    // Taken before the loop: clearing a target that is the source itself must not lose what
    // is being copied.
    const CellRecord original = sheet.record(source);
    const CellDisplay originalDisplay = sheet.display(source.Row, source.Column);

    for (int row = first.Row; row <= last.Row; ++row) {
        for (int column = first.Column; column <= last.Column; ++column) {
            if (sheet.record(row, column).Locked)
                continue;
            sheet.display(row, column).Alignment = originalDisplay.Alignment;
            ClearCell(sheet, row, column);
            CellRecord& target = sheet.record(row, column);
            target.NumberFormat = original.NumberFormat;
            switch (original.Kind) {
            case TextCell:
                target.Kind = TextCell;
                target.Value = 0.0;
                sheet.display(row, column).Text = originalDisplay.Text;
                sheet.notifyCellChanged(row, column);
                break;
            case NumberCell:
                target.Kind = NumberCell;
                target.Value = original.Value;
                sheet.showNumber(row, column);
                break;
            case FormulaCell: {
                const QString formula = ShiftFormulaReferences(
                    original.Formula, row - source.Row, column - source.Column);
                target.Value = EvaluateFormula(sheet, formula, true, row, column);
                target.Formula = formula;
                target.Kind = FormulaCell;
                sheet.showNumber(row, column);
                break;
            }
            default:
                target.Kind = EmptyCell;
                target.Value = 0.0;
                sheet.notifyCellChanged(row, column);
                break;
            }
            sheet.noteEntry(row, column);
            sheet.setModified(true);
            RecalcDependents(sheet, row, column);
        }
    }
}

} // namespace Tillane
