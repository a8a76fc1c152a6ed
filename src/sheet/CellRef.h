#pragma once

#include <QtGlobal>

namespace Tillane {

// The fixed size of every sheet: the grid is created at this size and never resized.
inline constexpr int SheetRows = 256;
inline constexpr int SheetColumns = 26;
inline constexpr int SheetCellCount = SheetRows * SheetColumns;

// One element of a cell's Precedents or Dependents list; exactly 5 packed bytes in the file.
// In Precedents, Kind 1 is a single cell and Kind 2 marks a range, written as two consecutive
// Kind 2 elements (top-left corner, then bottom-right corner). In Dependents, Kind 0 is a
// formula cell that reads this cell and Kind 1-4 the graph slot whose ranges include it
// (such an element has Row 0 and Column 0).
struct CellRef
{
    quint8 Kind = 0;
    qint16 Row = 0;
    qint16 Column = 0;

    friend bool operator==(const CellRef&, const CellRef&) = default;
};

enum CellRefKind : quint8 {
    FormulaDependent = 0,
    SingleCellPrecedent = 1,
    RangeCornerPrecedent = 2,
};

// A cell of the sheet, rows 1-256 and columns 1-26 (A-Z).
struct CellAddress
{
    int Row = 0;
    int Column = 0;

    bool isValid() const
    {
        return Row >= 1 && Row <= SheetRows && Column >= 1 && Column <= SheetColumns;
    }
    friend bool operator==(const CellAddress&, const CellAddress&) = default;
};

} // namespace Tillane
