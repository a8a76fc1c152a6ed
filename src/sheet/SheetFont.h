#pragma once

#include <QString>

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

} // namespace Tillane
