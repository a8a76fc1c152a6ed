#include "sheet/SheetFileEntry.h"

#include "sheet/CellEntry.h"
#include "sheet/Sheet.h"
#include "sheet/SheetError.h"
#include "sheet/SheetFile.h"

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

QString EnterCellInFile(const QString& path, CellAddress cell, const QString& text)
{
    Sheet sheet;
    const SheetReadResult read = LoadSheetFile(path, sheet);
    if (!read.isComplete())
        return read.message;
    try {
        if (!EnterCell(sheet, cell.Row, cell.Column, text))
            return u"Cell %1 is locked."_s.arg(CellName(cell));
    } catch (const SheetError& error) {
        return error.description();
    }
    return SaveSheetFile(sheet, path);
}

} // namespace Tillane
