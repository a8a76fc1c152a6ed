#include "platform/io/SafeFileWriter.h"

#include "platform/io/SaveFaults.h"
#include "platform/io/StandardStreams.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace Io {

namespace {

// Copies run in pieces so that a large database never has to fit in memory at once.
constexpr qint64 copyChunkSize = 262144;

// As many links as the system itself follows before it gives up on a loop.
constexpr int maximumLinks = 40;

QString shown(const QString& path)
{
    return IsStandardStream(path) ? u"standard output"_s : QDir::toNativeSeparators(path);
}

// A QSaveFile or a QFile that lets SaveFaults fail any write and notes why the first write
// failed, so that a caller that ignores the results of its writes still cannot commit a
// short file.
template <class Base> class RecordingDevice : public Base
{
public:
    RecordingDevice(const QString& path, QString& failure)
        : Base(path)
        , m_failure(failure)
    { }

protected:
    qint64 writeData(const char* data, qint64 length) override
    {
        if (SaveFaults::takeWriteFault()) {
            note(u"simulated write failure"_s);
            return -1;
        }
        errno = 0;
        const qint64 written = Base::writeData(data, length);
        if (written != length) {
            // When the disk fills part way through, Qt may return a short count with no error
            // or only "Unknown error"; the system's reason is still in errno.
            const int systemError = errno;
            note(systemError != 0
                    ? QString::fromStdString(std::generic_category().message(systemError))
                    : this->errorString());
        }
        return written;
    }

private:
    void note(const QString& reason)
    {
        if (m_failure.isEmpty())
            m_failure = reason;
    }

    QString& m_failure;
};

// Where the bytes for a target name go.
struct Destination
{
    enum Kind {
        File, // a regular file, or none yet: replaced through a temporary file
        Stream, // a FIFO or a device: opened and written through
        Descriptor, // a descriptor the program has open: written at its place
        Loop, // links that never end
    };
    Kind kind = File;
    QString path;
    int descriptor = -1;
};

std::optional<int> descriptorNamed(const QString& path)
{
    if (IsStandardStream(path) || path == u"/dev/stdout")
        return 1;
    if (path == u"/dev/stderr")
        return 2;
    for (const QString& folder : { u"/dev/fd/"_s, u"/proc/self/fd/"_s }) {
        if (!path.startsWith(folder))
            continue;
        bool number = false;
        const int descriptor = path.sliced(folder.size()).toInt(&number);
        if (number && descriptor >= 0)
            return descriptor;
    }
    return std::nullopt;
}

// Follows the links one at a time, so that a descriptor's name met on the way is taken as
// the descriptor and not as the file it stands for.
Destination resolve(const QString& target)
{
    QString path = target;
    for (int links = 0; links <= maximumLinks; ++links) {
        if (const std::optional<int> descriptor = descriptorNamed(path))
            return { Destination::Descriptor, path, *descriptor };
        const QFileInfo info(path);
        if (!info.isSymLink()) {
            struct stat status = {};
            const bool special = ::stat(QFile::encodeName(path).constData(), &status) == 0
                && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
            return { special ? Destination::Stream : Destination::File, path };
        }
        path = info.symLinkTarget();
    }
    return { Destination::Loop, target };
}

} // namespace

SafeFileWriter::SafeFileWriter(const QString& targetPath)
    : m_targetPath(targetPath)
{ }

// QSaveFile drops an uncommitted temporary file; a stream is closed.
SafeFileWriter::~SafeFileWriter() = default;

bool SafeFileWriter::fail(const QString& reason)
{
    m_file.reset();
    if (m_error.isEmpty())
        m_error = u"Cannot save \"%1\": %2"_s.arg(shown(m_targetPath), reason);
    return false;
}

bool SafeFileWriter::open()
{
    m_error.clear();
    m_writeFailure.clear();
    m_file.reset();
    m_stream = false;
    if (m_targetPath.isEmpty())
        return fail(u"no file name was given"_s);
    const Destination destination = resolve(m_targetPath);
    if (destination.kind == Destination::Loop)
        return fail(u"its symbolic links lead round in a loop"_s);
    if (destination.kind != Destination::File)
        return openStream(destination.path, destination.descriptor);

    const QFileInfo target(destination.path);
    if (!target.absoluteDir().exists())
        return fail(u"the folder \"%1\" does not exist"_s.arg(shown(target.absolutePath())));
    if (target.isDir())
        return fail(u"a folder of that name is in the way"_s);
    if (SaveFaults::takeOpenFault())
        return fail(u"cannot create a file in its folder (simulated failure)"_s);

    auto file = std::make_unique<RecordingDevice<QSaveFile>>(destination.path, m_writeFailure);
    // Writing straight into the target when no temporary file can be made would put the old
    // file at risk; refuse instead (QSaveFile's default, stated for the reader).
    file->setDirectWriteFallback(false);
    if (!file->open(QIODevice::WriteOnly))
        return fail(u"cannot create a file in its folder (%1)"_s.arg(file->errorString()));
    m_file = std::move(file);
    return true;
}

bool SafeFileWriter::openStream(const QString& path, int descriptor)
{
    if (SaveFaults::takeOpenFault())
        return fail(u"cannot open it for writing (simulated failure)"_s);
    // Unbuffered, so that each write reaches the stream (and fails) at once.
    constexpr QIODevice::OpenMode writeThrough = QIODevice::WriteOnly | QIODevice::Unbuffered;
    auto stream = std::make_unique<RecordingDevice<QFile>>(QString(), m_writeFailure);
    bool opened = false;
    if (descriptor >= 0) {
        // Our own copy of the descriptor, closed when done, leaves the program's one open.
        // Whatever the C library holds for standard output goes out first.
        if (descriptor == 1)
            std::fflush(stdout);
        const int copy = ::dup(descriptor);
        if (copy < 0)
            return fail(u"descriptor %1 is not open"_s.arg(descriptor));
        opened = stream->open(copy, writeThrough, QFileDevice::AutoCloseHandle);
        if (!opened)
            ::close(copy);
    } else {
        stream->setFileName(path);
        opened = stream->open(writeThrough);
    }
    if (!opened)
        return fail(u"cannot open it for writing (%1)"_s.arg(stream->errorString()));
    m_file = std::move(stream);
    m_stream = true;
    return true;
}

QIODevice& SafeFileWriter::device()
{
    Q_ASSERT(m_file);
    return *m_file;
}

bool SafeFileWriter::commit()
{
    if (!m_file)
        return fail(u"the file was not open"_s);
    if (!m_writeFailure.isEmpty())
        return fail(u"writing failed (%1)"_s.arg(m_writeFailure));
    if (m_stream) {
        if (SaveFaults::takeCommitFault())
            return fail(u"cannot finish writing (simulated failure)"_s);
        m_file.reset(); // closes our copy; every write went straight through
        return true;
    }
    if (SaveFaults::takeCommitFault())
        return fail(u"cannot replace the old file (simulated failure)"_s);
    // commit() flushes, syncs and renames; on failure it removes the temporary file itself.
    auto& file = static_cast<QSaveFile&>(*m_file);
    if (!file.commit())
        return fail(u"cannot replace the old file (%1)"_s.arg(file.errorString()));
    m_file.reset();
    return true;
}

void SafeFileWriter::abandon()
{
    fail(u"writing was abandoned before the end"_s);
}

QString SafeFileWriter::writeFile(const QString& targetPath, const WriteFunction& writeContent)
{
    SafeFileWriter writer(targetPath);
    if (!writer.open())
        return writer.errorString();
    // A write that failed explains a false result better than the result itself: commit()
    // reports it. Otherwise the function stopped of its own accord.
    if (!writeContent(writer.device()) && writer.m_writeFailure.isEmpty())
        writer.abandon();
    writer.commit();
    return writer.errorString();
}

QString SafeFileWriter::copyFile(const QString& sourcePath, const QString& targetPath)
{
    QFile source(sourcePath);
    if (!source.open(QIODevice::ReadOnly))
        return u"Cannot copy \"%1\": %2"_s.arg(shown(sourcePath), source.errorString());

    QString readError;
    const QString error = writeFile(targetPath, [&](QIODevice& device) {
        while (!source.atEnd()) {
            const QByteArray chunk = source.read(copyChunkSize);
            if (chunk.isEmpty()) {
                readError
                    = u"Cannot copy \"%1\": %2"_s.arg(shown(sourcePath), source.errorString());
                return false;
            }
            if (device.write(chunk) != chunk.size())
                return false;
        }
        return true;
    });
    return readError.isEmpty() ? error : readError;
}

} // namespace Io
