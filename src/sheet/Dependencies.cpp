#include "sheet/Dependencies.h"

#include "sheet/Formulas.h"
#include "sheet/Sheet.h"
#include "sheet/SheetError.h"

#include <vector>

namespace Tillane {

namespace {

CellRef dependentElement(CellAddress dependent, int kind)
{
    return CellRef { static_cast<quint8>(kind), static_cast<qint16>(dependent.Row),
        static_cast<qint16>(dependent.Column) };
}

} // namespace

void AddDependent(Sheet& sheet, CellAddress dependent, CellAddress target, int kind)
{
    CellRecord& cell = sheet.record(target);
    const CellRef element = dependentElement(dependent, kind);
    if (cell.HasDependents && cell.Dependents.contains(element))
        return;
    if (!cell.HasDependents)
        cell.Dependents.clear();
    cell.Dependents.append(element);
    cell.HasDependents = true;
}

void RemoveDependent(Sheet& sheet, CellAddress dependent, CellAddress target, int kind)
{
    CellRecord& cell = sheet.record(target);
    if (!cell.HasDependents)
        return;
    const qsizetype index = cell.Dependents.indexOf(dependentElement(dependent, kind));
    if (index < 0)
        return;
    cell.Dependents.removeAt(index);
    if (cell.Dependents.isEmpty())
        cell.HasDependents = false;
}

void ClearCell(Sheet& sheet, int row, int column)
{
    CellRecord& cell = sheet.record(row, column);
    if (cell.Locked)
        return;
    if (cell.Kind == FormulaCell && cell.HasPrecedents) {
        for (const CellAddress& target : PrecedentCells(cell.Precedents))
            RemoveDependent(sheet, { row, column }, target, FormulaDependent);
    }
    cell.Kind = EmptyCell;
    cell.Formula.clear();
    cell.Precedents.clear();
    cell.HasPrecedents = false;
    sheet.display(row, column).Text.clear();
    sheet.notifyCellChanged(row, column);
}

void RecalcDependents(Sheet& sheet, int row, int column)
{
    // An explicit stack rather than recursion: a chain of formulas down a whole column is
    // thousands of cells deep.
    struct Step
    {
        CellAddress cell;
        qsizetype next = 0; // the next element of its Dependents to follow
    };
    std::vector<Step> path { { { row, column }, 0 } };
    while (!path.empty()) {
        const CellAddress cell = path.back().cell;
        const CellRecord& record = sheet.record(cell);
        const qsizetype index = path.back().next;
        if (!record.HasDependents || index >= record.Dependents.size()) {
            path.pop_back();
            continue;
        }
        ++path.back().next;
        const CellRef element = record.Dependents[index];
        if (element.Kind >= 1 && element.Kind <= GraphSlotCount) {
            sheet.requestGraphRedraw(element.Kind);
            continue;
        }
        const CellAddress dependent { element.Row, element.Column };
        if (element.Kind != FormulaDependent || !dependent.isValid())
            continue;
        CellRecord& target = sheet.record(dependent);
        if (target.Kind != FormulaCell)
            continue;
        const double value
            = EvaluateFormula(sheet, target.Formula, false, dependent.Row, dependent.Column);
        if (value == target.Value)
            continue;
        target.Value = value;
        sheet.showNumber(dependent.Row, dependent.Column);
        // No chain of distinct cells is longer than the sheet; a longer one goes round a loop.
        if (path.size() > static_cast<std::size_t>(SheetCellCount))
            throw SheetError::user(SheetError::CircularReference);
        path.push_back({ dependent, 0 });
    }
}

} // namespace Tillane
