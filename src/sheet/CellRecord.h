#pragma once

#include "sheet/CellRef.h"

#include <QList>
#include <QString>

namespace Tillane {

enum CellKind : qint32 {
    EmptyCell = 0,
    TextCell = 1,
    NumberCell = 2,
    FormulaCell = 3,
};

// What the formula machinery knows of one cell; the display half is CellDisplay.
struct CellRecord
{
    // EmptyCell, TextCell, NumberCell or FormulaCell. Bit value 2 (numbers and formulas)
    // means Value holds a number.
    qint32 Kind = EmptyCell;
    // The number entered, or the formula's last result; dates as their day serial.
    double Value = 0.0;
    // The formula as typed, with its leading "=" (formula cells only).
    QString Formula;
    // The cells and ranges the formula reads (formula cells only).
    QList<CellRef> Precedents;
    bool HasPrecedents = false;
    // Formula cells and graph slots that read this cell, each listed once.
    QList<CellRef> Dependents;
    bool HasDependents = false;
    // This cell's display format; empty means that the sheet's format applies.
    QString NumberFormat;
    // Cannot be changed or cleared.
    bool Locked = false;

    bool holdsNumber() const { return (Kind & 2) != 0; }

    friend bool operator==(const CellRecord&, const CellRecord&) = default;
};

} // namespace Tillane
