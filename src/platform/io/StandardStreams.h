#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringView>
#include <memory>

// "-" in place of a file name means standard input when reading and standard output when
// writing (SafeFileWriter), as Unix tools take it, so that quorbin-cli works in a pipe.
namespace Io {

bool IsStandardStream(QStringView path);

// Opens a file, or standard input for "-", for reading. Standard input is read to its end
// first, so that readers may count lines and go back to the start as with a file; it can be
// read once per run. Returns nullptr, with the reason in `error`, when it cannot be opened.
std::unique_ptr<QIODevice> OpenForReading(const QString& path, QString& error);

// The whole of a file, or of standard input for "-". Returns the empty string on success,
// else "Cannot read <path>: <reason>".
QString ReadWhole(const QString& path, QByteArray& bytes);

} // namespace Io
