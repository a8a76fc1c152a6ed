#pragma once

#include <QString>
#include <functional>
#include <memory>

class QFileDevice;
class QIODevice;

namespace Io {

// The one way the program writes a file (graphs, sheets, exports, compacted databases): the
// bytes go to a temporary file in the target's own folder, which replaces the target only
// once every byte is written and flushed to disk. Whatever fails (a write, a full disk, the
// rename, an exception in the caller, a crash), the previous file stays as it was and no
// temporary file is left behind. Built on QSaveFile; SaveFaults makes any step fail in tests.
//
// Only a regular file, or a new one, is replaced that way. A symbolic link is followed (link
// by link) and its target replaced, so the link stays. A FIFO, a terminal or another device
// is written through, as is "-" (standard output) and a name of an open descriptor
// (/dev/stdout, /dev/stderr, /dev/fd/N, /proc/self/fd/N), which is written at its current
// place, as a shell's redirection would: replacing the file behind it would lose what the
// shell wrote there. What went through such a stream cannot be taken back when a later step
// fails.
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

    // Creates the temporary file (or opens the stream). False, with errorString() set, when
    // that is impossible.
    bool open();
    // The temporary file or the stream; only between a successful open() and commit() or
    // abandon().
    QIODevice& device();
    // Puts the written file in place of the target (or flushes the stream). False, with
    // errorString() set, when any write failed or the file could not be replaced; a file is
    // then untouched.
    bool commit();
    // Drops the temporary file and leaves the target as it was.
    void abandon();

    const QString& targetPath() const { return m_targetPath; }
    // Why the save failed; empty while nothing has failed.
    const QString& errorString() const { return m_error; }

private:
    bool fail(const QString& reason);
    bool openStream(const QString& path, int descriptor);

    QString m_targetPath;
    QString m_error;
    // Why the first write failed; empty while none has.
    QString m_writeFailure;
    // A QSaveFile for a regular file, else a QFile straight onto the stream.
    std::unique_ptr<QFileDevice> m_file;
    bool m_stream = false;
};

} // namespace Io
