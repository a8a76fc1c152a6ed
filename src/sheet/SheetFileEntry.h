#pragma once

#include "sheet/CellReferences.h"

#include <QString>

namespace Tillane {

// Enters `text` into `cell` of the sheet file at `path` as if typed, recalculates and saves
// the file in place: a batch edit without a window. Only a complete file is edited; a
// damaged, newer or unreadable one, a locked cell, a refused entry ("Circular cell
// reference") or a fault while recalculating ("Division by zero") leaves the file as it was.
// Returns the empty string on success, else the message for the user.
QString EnterCellInFile(const QString& path, CellAddress cell, const QString& text);

} // namespace Tillane
