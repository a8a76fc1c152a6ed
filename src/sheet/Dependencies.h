#pragma once

#include "sheet/CellRef.h"

// The links between cells: every formula cell lists what it reads (Precedents), every cell
// lists the formula cells and graph slots that read it (Dependents). Links are rebuilt only
// when a formula is entered; recalculation follows them and never changes them.
namespace Tillane {

class Sheet;

// Adds (kind, dependent) to the target's Dependents unless that element is already there.
// Formula cells register with kind 0; graph slots with their slot number 1-4 and the
// dependent (0, 0).
void AddDependent(Sheet& sheet, CellAddress dependent, CellAddress target, int kind);

// Removes the first element equal to (kind, dependent) from the target's Dependents; the
// list is dropped when it becomes empty. Nothing happens when there is no such element.
void RemoveDependent(Sheet& sheet, CellAddress dependent, CellAddress target, int kind);

// Forgets the cell's formula and its links to the cells it read: Kind 0, no Formula, no
// Precedents, no shown text. Value, NumberFormat, Dependents and display attributes stay.
// A locked cell is left alone.
void ClearCell(Sheet& sheet, int row, int column);

// Re-evaluates everything that depends on the cell, depth first in the order of the
// Dependents lists: a graph slot is asked to redraw; a formula cell whose value changes is
// stored, shown and followed in turn, while an unchanged value ends its branch. A cell
// reached along several paths is evaluated once per path. Links to cells that no longer hold
// a formula are passed over. An error (an arithmetic fault, or a chain longer than the sheet
// has cells, which only a damaged file's cycle can make: CircularReference) stops the
// recalculation; cells already updated keep their new values.
void RecalcDependents(Sheet& sheet, int row, int column);

} // namespace Tillane
