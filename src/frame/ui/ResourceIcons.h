#pragma once

#include <QIcon>
#include <QList>
#include <QString>

// The program's icons by their resource numbers, drawn from the SVG artwork compiled in under
// ":/icons/".
namespace Frame {

// The icon with that resource number; a null icon for a number without artwork.
QIcon ResourceIcon(int resourceNumber);
// ":/icons/open.svg" for 127; empty for a number without artwork.
QString ResourceIconPath(int resourceNumber);

// The 24 shared toolbar icons in the order of the main window's image list (index 1 first).
const QList<int>& ToolbarIconNumbers();

} // namespace Frame
