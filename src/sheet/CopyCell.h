#pragma once

#include "sheet/CellRef.h"

namespace Tillane {

class Sheet;

// Copies the source cell into every cell from `first` to `last` (a range given bottom-up or
// right-to-left is empty), as the copy-cell dialog and the fill handle do. Each target takes
// the source's kind, number format and alignment; text and numbers are copied as shown; a
// formula has every reference moved by the target's distance from the source, except the
// parts fixed with "$", and is then evaluated with its links recorded. Each target's
// dependents are recalculated. A source inside the range is rewritten from itself. Locked
// targets are passed over: they cannot be changed.
//
// Throws SheetError: CopyOutOfRange (a reference would leave the sheet) or any error of the
// formula's evaluation. The copy stops there: targets already done stay copied and the target
// being processed is left cleared.
void CopyCell(Sheet& sheet, CellAddress source, CellAddress first, CellAddress last);

} // namespace Tillane
