#include "sheet/SheetFont.h"

#include <QFont>

namespace Tillane {

QFont QtFontOf(const SheetFont& font)
{
    QFont shown(font.Name);
    shown.setPointSizeF(font.Size > 0 ? font.Size : 10.0);
    shown.setBold(font.Bold);
    shown.setItalic(font.Italic);
    shown.setUnderline(font.Underline);
    shown.setStrikeOut(font.Strikethrough);
    return shown;
}

SheetFont SheetFontOf(const QFont& font)
{
    SheetFont chosen;
    chosen.Name = font.family();
    chosen.Size = font.pointSizeF() > 0 ? font.pointSizeF() : 10.0;
    chosen.Bold = font.bold();
    chosen.Italic = font.italic();
    chosen.Underline = font.underline();
    chosen.Strikethrough = font.strikeOut();
    return chosen;
}

} // namespace Tillane
