#pragma once

#include <QString>

namespace Tillane {

class Sheet;

// What a typed text becomes before it is stored: its kind, its number and the cell's number
// format afterwards. Formulas are evaluated later, by EnterCell.
struct CellEntry
{
    qint32 Kind = 0; // CellKind
    double Value = 0.0;
    QString NumberFormat;
    QString Text; // trimmed of blanks
};

// Classifies a typed text for a cell whose NumberFormat is `numberFormat`. Blanks at both ends
// are dropped. The text is a number when its leading number, rounded to a whole number, is
// not 0 and it holds no blank, or when it is a date, or when it is a number in the host
// locale's sense. Then:
// - with "." or when it is not a date: text starting with the currency symbol is its currency
//   amount in format "Currency" ("£3" is 3); otherwise the leading number, divided by 100
//   when the text ends in "%", and the characters after the last digit make the format
//   "#0.##" followed by them ("12%" is 0.12 shown as 12%, "5kg" is 5 shown as 5kg); a text
//   ending in a digit keeps the cell's format;
// - a date without ".": its day serial, in format "General Date" if the cell had none.
// Other texts are formulas when they start with "=", text when not empty, else empty.
// Throws SheetError for a number too large to hold (Overflow).
CellEntry ClassifyEntry(
    const QString& text, const QString& numberFormat, const QString& currencySymbol);

// The user commits `text` into a cell, as if typed: the cell's old formula and links are
// dropped, the text is classified and stored (a formula with its links and value), the used
// area grows, the sheet is marked changed and everything that depends on the cell is
// recalculated. Returns false, changing nothing, for a locked cell.
//
// Throws SheetError. Then the cell stays as the failure left it: cleared of its old formula,
// not holding the new one (a refused formula leaves it empty); an arithmetic fault during the
// recalculation leaves the cell entered and the cells already recalculated updated.
bool EnterCell(Sheet& sheet, int row, int column, const QString& text);

// The currency symbol entries are checked against: the frame's (the host locale's).
QString EntryCurrencySymbol();

} // namespace Tillane
