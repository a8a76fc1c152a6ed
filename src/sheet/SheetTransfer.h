#pragma once

#include <QString>
#include <QStringList>

// Exchanging a sheet with other programs as delimited text (.csv comma-separated, .txt
// tab-separated).
namespace Tillane {

class Sheet;

struct ImportResult
{
    // Why the file could not be read at all; empty when it was read.
    QString error;
    // Entries the sheet refused, as "B3: Circular cell reference", in the order met. The
    // other fields are entered all the same.
    QStringList refusedEntries;
    // Lines beyond row 256 and fields beyond column Z have no cell; they are counted here and
    // otherwise left out.
    int fieldsLeftOut = 0;
};

// Line n goes to row n and its fields to columns A, B, ... in order, each entered into its
// cell exactly as if typed (numbers, dates, percentages, formulas are recognised and the used
// area grows). A formula may read cells of later lines: it is recalculated when they arrive.
ImportResult ImportDelimitedText(Sheet& sheet, const QString& path, const QString& separator);

// One line per row of the used area: the shown texts of its columns joined by the separator,
// unquoted (a formula contributes its shown value; a text holding the separator adds a
// field), UTF-8, CRLF line ends. Written through a temporary file. Returns the empty string
// on success, else why the file was not written.
QString ExportDelimitedText(const Sheet& sheet, const QString& path, const QString& separator);

// The text ExportDelimitedText writes.
QString DelimitedText(const Sheet& sheet, const QString& separator);

} // namespace Tillane
