#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>

// The sheet file (.qnc): a little-endian stream of records, each a 32-bit tag followed by a
// tagged value (a 16-bit type code and its payload) or by raw fields. In order: the format
// version (tag 1, 310), grid colour and sheet font (3-9), the used area (10), the sheet's
// number format (11), one width per column for at least six columns (12), the height of each
// row the user sized (14), each graph slot in use with its graph's own file bytes (13), then
// for every cell of the used area, empty ones included, a tag 2 naming it and the records of
// what it holds and shows (101-110, 200-206), each only when it differs from the default.
namespace Tillane {

class Sheet;

inline constexpr qint16 SheetFileVersion = 310;

struct SheetReadResult
{
    enum Status {
        Complete,
        NewerVersion, // refused at the version record: nothing after it was applied
        Damaged, // stopped at a broken or truncated record; what came before it is kept
        NotASheetFile, // does not start with a version record; nothing was applied
        Unreadable, // the file could not be opened or read
    };
    Status status = Complete;
    // What to tell the user; empty when Complete. NewerVersion is string 1275, to be shown
    // with the critical icon.
    QString message;

    bool isComplete() const { return status == Complete; }
};

// Progress of a load or save in per cent, 0..100.
using SheetProgress = std::function<void(int percent)>;

// Reads a sheet file's bytes into a new sheet. Never reads past the end: a record that is cut
// off or names something impossible stops the reading with a message, keeping what was read.
// Unknown tags are passed over (the next four bytes are taken as the next tag). Numeric cells
// are shown again with their formats at the end; nothing is recalculated.
SheetReadResult ReadSheet(QByteArrayView bytes, Sheet& sheet, const SheetProgress& progress = {});

// The file's bytes, written piece by piece (the header and graphs, then one piece per row)
// to `write`, which returns false to stop.
bool WriteSheet(const Sheet& sheet, const std::function<bool(const QByteArray& piece)>& write,
    const SheetProgress& progress = {});
QByteArray SheetFileBytes(const Sheet& sheet);

// Loads the file into a new sheet. Only a complete load makes `path` the sheet's file name
// and leaves it unchanged; a sheet kept from a damaged or refused file stays untitled, so
// that saving it cannot overwrite the file it came from with a part of it.
SheetReadResult LoadSheetFile(
    const QString& path, Sheet& sheet, const SheetProgress& progress = {});

// Saves through a temporary file that replaces `path` only when complete, so a failure keeps
// the previous file. On success `path` becomes the sheet's file name and the sheet is
// unchanged. Returns the empty string on success, else why the file was not saved.
QString SaveSheetFile(Sheet& sheet, const QString& path, const SheetProgress& progress = {});

} // namespace Tillane
