#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

namespace Tillane {

// Grid alignment codes, as stored in the sheet file.
enum CellAlignment : qint16 {
    AlignLeftCentre = 1, // text
    AlignCentreCentre = 4, // headings
    AlignRightCentre = 7, // numbers and formulas
    AlignGeneral = 9,
};

// What the grid shows for one cell. Kept in the model so that nothing about a cell lives only
// in a widget: the window's item model reads it, the sheet file stores it. A font attribute
// or fore colour without a value follows the sheet's.
struct CellDisplay
{
    QString Text;
    // 0 means the grid background; 1 stands for black, because 0 is taken.
    qint32 BackColour = 0;
    std::optional<qint32> ForeColour;
    std::optional<QString> FontName;
    std::optional<float> FontSize;
    std::optional<bool> Bold;
    std::optional<bool> Italic;
    std::optional<bool> Underline;
    std::optional<bool> Strikethrough;
    qint16 Alignment = AlignGeneral;

    friend bool operator==(const CellDisplay&, const CellDisplay&) = default;
};

} // namespace Tillane
