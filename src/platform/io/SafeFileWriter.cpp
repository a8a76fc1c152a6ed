#include "platform/io/SafeFileWriter.h"

#include "platform/io/SaveFaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace Io {

namespace {

// Copies run in pieces so that a large database never has to fit in memory at once.
constexpr qint64 copyChunkSize = 262144;

QString shown(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

// A QSaveFile that lets SaveFaults fail any write and remembers why the first write failed,
// so that a caller that ignores the results of its writes still cannot commit a short file.
class SafeFileWriter::Device : public QSaveFile
{
public:
    using QSaveFile::QSaveFile;

    // Why the first failed write failed; empty while none has.
    const QString& writeFailure() const { return m_writeFailure; }

protected:
    qint64 writeData(const char* data, qint64 length) override
    {
        if (SaveFaults::takeWriteFault()) {
            noteFailure(u"simulated write failure"_s);
            return -1;
        }
        errno = 0;
        const qint64 written = QSaveFile::writeData(data, length);
        if (written != length) {
            // When the disk fills part way through, Qt may return a short count with no error
            // or only "Unknown error"; the system's reason is still in errno.
            const int systemError = errno;
            noteFailure(systemError != 0
                    ? QString::fromStdString(std::generic_category().message(systemError))
                    : errorString());
        }
        return written;
    }

private:
    void noteFailure(const QString& reason)
    {
        if (m_writeFailure.isEmpty())
            m_writeFailure = reason;
    }

    QString m_writeFailure;
};

SafeFileWriter::SafeFileWriter(const QString& targetPath)
    : m_targetPath(targetPath)
{ }

SafeFileWriter::~SafeFileWriter() = default; // QSaveFile drops an uncommitted temporary file

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
    m_file.reset();
    const QFileInfo target(m_targetPath);
    if (m_targetPath.isEmpty())
        return fail(u"no file name was given"_s);
    if (!target.absoluteDir().exists())
        return fail(u"the folder \"%1\" does not exist"_s.arg(shown(target.absolutePath())));
    if (target.isDir())
        return fail(u"a folder of that name is in the way"_s);
    if (SaveFaults::takeOpenFault())
        return fail(u"cannot create a file in its folder (simulated failure)"_s);

    m_file = std::make_unique<Device>(m_targetPath);
    // Writing straight into the target when no temporary file can be made would put the old
    // file at risk; refuse instead (QSaveFile's default, stated for the reader).
    m_file->setDirectWriteFallback(false);
    if (!m_file->open(QIODevice::WriteOnly))
        return fail(u"cannot create a file in its folder (%1)"_s.arg(m_file->errorString()));
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
    if (!m_file->writeFailure().isEmpty())
        return fail(u"writing failed (%1)"_s.arg(m_file->writeFailure()));
    if (SaveFaults::takeCommitFault())
        return fail(u"cannot replace the old file (simulated failure)"_s);
    // commit() flushes, syncs and renames; on failure it removes the temporary file itself.
    if (!m_file->commit())
        return fail(u"cannot replace the old file (%1)"_s.arg(m_file->errorString()));
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
    if (!writeContent(writer.device()) && writer.m_file->writeFailure().isEmpty())
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
