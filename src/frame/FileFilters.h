#pragma once

#include <QStringList>
#include <QStringView>

namespace Frame {

// The program writes dialog filters as "Description|*.x;*.y|Description 2|*.z"; Qt's file
// dialog wants one "Description (*.x *.y)" entry per pair. Entry i of the result is pair
// i + 1 of the program's string. A trailing description without a pattern is dropped;
// blanks around patterns are dropped.
QStringList QtNameFilters(QStringView programFilter);

} // namespace Frame
