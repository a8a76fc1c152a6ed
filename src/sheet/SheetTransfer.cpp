#include "sheet/SheetTransfer.h"

#include "platform/io/SafeFileWriter.h"
#include "platform/text/DelimitedFile.h"
#include "sheet/CellEntry.h"
#include "sheet/CellReferences.h"
#include "sheet/Sheet.h"
#include "sheet/SheetError.h"

#include <QFile>
#include <QIODevice>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

ImportResult ImportDelimitedText(Sheet& sheet, const QString& path, const QString& separator)
{
    ImportResult result;
    Text::DelimitedFile file;
    file.setSeparator(separator);
    if (!file.OpenFile(path)) {
        QFile probe(path);
        probe.open(QIODevice::ReadOnly);
        result.error = u"Cannot open \"%1\": %2"_s.arg(path, probe.errorString());
        return result;
    }
    QStringList fields;
    int row = 0;
    while (file.GetRecords(fields)) {
        ++row;
        if (row > SheetRows) {
            result.fieldsLeftOut += static_cast<int>(fields.size());
            continue;
        }
        for (int index = 0; index < fields.size(); ++index) {
            const int column = index + 1;
            if (column > SheetColumns) {
                result.fieldsLeftOut += static_cast<int>(fields.size()) - index;
                break;
            }
            try {
                EnterCell(sheet, row, column, fields[index]);
            } catch (const SheetError& error) {
                result.refusedEntries.append(CellName(row, column) + u": "_s + error.description());
            }
        }
    }
    return result;
}

QString DelimitedText(const Sheet& sheet, const QString& separator)
{
    QString text;
    for (int row = 1; row <= sheet.usedRows(); ++row) {
        for (int column = 1; column <= sheet.usedColumns(); ++column) {
            if (column > 1)
                text += separator;
            text += sheet.display(row, column).Text;
        }
        text += u"\r\n"_s;
    }
    return text;
}

QString ExportDelimitedText(const Sheet& sheet, const QString& path, const QString& separator)
{
    const QByteArray bytes = DelimitedText(sheet, separator).toUtf8();
    return Io::SafeFileWriter::writeFile(
        path, [&](QIODevice& device) { return device.write(bytes) == bytes.size(); });
}

} // namespace Tillane
