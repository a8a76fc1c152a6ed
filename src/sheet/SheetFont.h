#pragma once

#include <QString>

class QFont;

namespace Tillane {

// The sheet's font: what every cell shows unless it has its own attribute.
struct SheetFont
{
    QString Name = QStringLiteral("Arial");
    double Size = 10.0; // points; the file keeps it as a currency amount
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool Strikethrough = false;

    friend bool operator==(const SheetFont&, const SheetFont&) = default;
};

// The font as the screen and the font dialog know it, and back; a size of 0 or less is the
// default 10 points either way.
QFont QtFontOf(const SheetFont& font);
SheetFont SheetFontOf(const QFont& font);

} // namespace Tillane
