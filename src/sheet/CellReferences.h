#pragma once

#include "sheet/CellRef.h"

#include <QString>
#include <QStringView>
#include <optional>

// Cell references in formula text: A1, $A1, A$1, $A$1 (the letter in either case). The "$"
// marks change nothing in evaluation; they keep a part of the reference fixed when a formula
// is copied (ShiftFormulaReferences).
namespace Tillane {

struct CellReferenceMatch
{
    bool Found = false;
    qsizetype Start = 0; // where the reference's text starts, with its leading "$"
    qsizetype Length = 0;
    CellAddress Cell;
    bool ColumnFixed = false; // written with "$" before the letter
    bool RowFixed = false; // written with "$" before the row number
};

// The next reference at or after `position`: the first letter directly followed by "$" or a
// digit starts it (with the "$" before the letter, if any), and it runs to the first
// non-digit after the letter's successor. So any letter followed by a digit is a reference:
// in "=1e5" it is E5. `position` is left after the reference, or at the end of the text when
// there is none. Throws SheetError NoSuchCell for a row outside 1-256 (A0, A257, A$).
CellReferenceMatch FindNextReference(QStringView text, qsizetype& position);

// The cell a reference's text names: an optional "$", the letter (column = its place in the
// alphabet), an optional "$", the row number read leniently. A row that does not fit a
// 16-bit integer reads as 0, which no cell has; so does a text without a letter.
CellAddress ParseCellReference(QStringView text);

// "B7" for row 7, column 2.
QString CellName(int row, int column);
QString CellName(CellAddress cell);

// A cell named exactly as the user writes it in a command ("b7", "$B$7"); no value when the
// text is not a reference or names no cell of the sheet.
std::optional<CellAddress> CellFromName(QStringView name);

// The formula with every reference moved by the given rows and columns, except the parts
// fixed with "$", each written again in upper case ("=a1*$b$2" moved one row: "=A2*$B$2").
// Throws SheetError CopyOutOfRange when a reference would leave rows 1-256 or columns A-Z,
// and NoSuchCell for a reference the formula already had wrong.
QString ShiftFormulaReferences(QStringView formula, int rowShift, int columnShift);

} // namespace Tillane
