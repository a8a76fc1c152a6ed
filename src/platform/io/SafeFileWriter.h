#pragma once

#include <QString>
#include <functional>
#include <memory>

class QIODevice;

namespace Io {

// The one way the program writes a file (graphs, sheets, exports, compacted databases): the
// bytes go to a temporary file in the target's own folder, which replaces the target only
// once every byte is written and flushed to disk. Whatever fails (a write, a full disk, the
// rename, an exception in the caller, a crash), the previous file stays as it was and no
// temporary file is left behind. Built on QSaveFile; SaveFaults makes any step fail in tests.
//
//     const QString error = Io::SafeFileWriter::writeFile(path, [&](QIODevice& device) {
//         return device.write(bytes) == bytes.size();
//     });
//     if (!error.isEmpty()) ... // show or pass on the reason; the old file is intact
class SafeFileWriter
{
public:
    using WriteFunction = std::function<bool(QIODevice& device)>;

    // Runs `writeContent` on a fresh temporary file and puts it in place of `targetPath`
    // when the function returns true and no write failed. Returns the empty string on
    // success, else the reason the file was not saved.
    static QString writeFile(const QString& targetPath, const WriteFunction& writeContent);

    // Copies a file over another through a temporary file in the target's folder (used to put
    // a compacted database in place). Returns the empty string on success, else the reason.
    static QString copyFile(const QString& sourcePath, const QString& targetPath);

    explicit SafeFileWriter(const QString& targetPath);
    // An open writer that was not committed is abandoned: the target is left untouched.
    ~SafeFileWriter();
    SafeFileWriter(const SafeFileWriter&) = delete;
    SafeFileWriter& operator=(const SafeFileWriter&) = delete;

    // Creates the temporary file. False, with errorString() set, when that is impossible.
    bool open();
    // The temporary file; only between a successful open() and commit() or abandon().
    QIODevice& device();
    // Puts the written file in place of the target. False, with errorString() set, when any
    // write failed or the file could not be replaced; the target is then untouched.
    bool commit();
    // Drops the temporary file and leaves the target as it was.
    void abandon();

    const QString& targetPath() const { return m_targetPath; }
    // Why the save failed; empty while nothing has failed.
    const QString& errorString() const { return m_error; }

private:
    class Device;

    bool fail(const QString& reason);

    QString m_targetPath;
    QString m_error;
    std::unique_ptr<Device> m_file;
};

} // namespace Io
