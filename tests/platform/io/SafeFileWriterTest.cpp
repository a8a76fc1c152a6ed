#include "platform/io/SafeFileWriter.h"

#include "platform/io/SaveFaults.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using Io::SafeFileWriter;
using Io::SaveFaults;

namespace {

const QByteArray oldBytes = "old graph file\r\n";

class SafeFileWriterTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_folder.isValid()); }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    static void writeBytes(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    static QByteArray readBytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }

    // Everything in the folder, hidden files included, so that a stray temporary file shows.
    QStringList folderEntries() const
    {
        return QDir(m_folder.path())
            .entryList(
                QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    QTemporaryDir m_folder;
    SaveFaults::Scope m_faults;
};

// Writes five pieces and, like a careless writer, never looks at what write() returned.
bool writeFivePieces(QIODevice& device)
{
    for (int piece = 1; piece <= 5; ++piece)
        device.write("new piece " + QByteArray::number(piece) + "\r\n");
    return true;
}

// ---- A failed save keeps the old file ------------------------------------------------------

struct FaultRow
{
    std::string name;
    std::function<void()> arm;
    QString reasonPart; // of the message, or of the writer's own exception
    std::function<bool(QIODevice&)> writer = writeFivePieces;
};

void PrintTo(const FaultRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class FaultPoint : public SafeFileWriterTest, public testing::WithParamInterface<FaultRow>
{
};

TEST_P(FaultPoint, KeepsOldBytesAndLeavesNoTemporaryFile)
{
    const QString target = path(u"Pets.qnp"_s);
    writeBytes(target, oldBytes);
    GetParam().arm();

    QString error;
    try {
        error = SafeFileWriter::writeFile(target, GetParam().writer);
        EXPECT_TRUE(error.contains(u"Pets.qnp"_s)) << error.toStdString();
    } catch (const std::runtime_error& thrown) {
        error = QString::fromUtf8(thrown.what()); // passed on to the caller, as it should be
    }

    EXPECT_TRUE(error.contains(GetParam().reasonPart)) << error.toStdString();
    EXPECT_EQ(readBytes(target), oldBytes);
    EXPECT_EQ(folderEntries(), QStringList { u"Pets.qnp"_s });
}

INSTANTIATE_TEST_SUITE_P(SafeFileWriter, FaultPoint,
    testing::Values(FaultRow { "open", [] { SaveFaults::failAtOpen(); }, u"create"_s },
        FaultRow { "firstWrite", [] { SaveFaults::failAtWrite(1); }, u"writing failed"_s },
        FaultRow { "middleWrite", [] { SaveFaults::failAtWrite(3); }, u"writing failed"_s },
        FaultRow { "lastWrite", [] { SaveFaults::failAtWrite(5); }, u"writing failed"_s },
        FaultRow { "rename", [] { SaveFaults::failAtCommit(); }, u"replace"_s },
        FaultRow { "writerStopsEarly", [] {}, u"abandoned"_s,
            [](QIODevice& device) {
                device.write("half a file");
                return false;
            } },
        FaultRow { "exceptionInWriter", [] {}, u"no memory"_s,
            [](QIODevice& device) -> bool {
                device.write("half a file");
                throw std::runtime_error("no memory");
            } }),
    [](const auto& info) { return info.param.name; });

TEST_F(SafeFileWriterTest, EveryWriteOfAStreamedSaveCanFailSafely)
{
    const QString target = path(u"Class.qnc"_s);
    writeBytes(target, oldBytes);
    const auto save = [&] {
        return SafeFileWriter::writeFile(target, [](QIODevice& device) {
            QDataStream stream(&device);
            stream.setByteOrder(QDataStream::LittleEndian);
            for (qint32 tag = 1; tag <= 12; ++tag)
                stream << tag << qint16(310);
            return stream.status() == QDataStream::Ok;
        });
    };
    SaveFaults::reset();
    ASSERT_EQ(save(), QString());
    const QByteArray newBytes = readBytes(target);
    const int writes = SaveFaults::writesSeen();
    ASSERT_GT(writes, 1);

    for (int failing = 1; failing <= writes; ++failing) {
        writeBytes(target, oldBytes);
        SaveFaults::reset();
        SaveFaults::failAtWrite(failing);
        EXPECT_FALSE(save().isEmpty()) << "write " << failing;
        EXPECT_EQ(readBytes(target), oldBytes) << "write " << failing;
        EXPECT_EQ(folderEntries(), QStringList { u"Class.qnc"_s }) << "write " << failing;
    }
    SaveFaults::reset();
    EXPECT_EQ(save(), QString());
    EXPECT_EQ(readBytes(target), newBytes);
}

TEST_F(SafeFileWriterTest, UncommittedWriterLeavesTargetAlone)
{
    const QString target = path(u"Pets.qnp"_s);
    writeBytes(target, oldBytes);
    {
        SafeFileWriter writer(target);
        ASSERT_TRUE(writer.open());
        writer.device().write("never committed");
    }
    EXPECT_EQ(readBytes(target), oldBytes);
    EXPECT_EQ(folderEntries(), QStringList { u"Pets.qnp"_s });
}

TEST_F(SafeFileWriterTest, FailedFirstSaveCreatesNoFile)
{
    SaveFaults::failAtWrite(2);

    EXPECT_FALSE(SafeFileWriter::writeFile(path(u"New.qnp"_s), writeFivePieces).isEmpty());

    EXPECT_EQ(folderEntries(), QStringList());
}

// ---- Places that cannot be written ---------------------------------------------------------

TEST_F(SafeFileWriterTest, MissingFolderFailsWithMessage)
{
    const QString target = path(u"Nowhere/Pets.qnp"_s);

    const QString error = SafeFileWriter::writeFile(target, writeFivePieces);

    EXPECT_TRUE(error.contains(u"does not exist"_s)) << error.toStdString();
    EXPECT_TRUE(error.contains(u"Nowhere"_s)) << error.toStdString();
    EXPECT_EQ(folderEntries(), QStringList());
}

TEST_F(SafeFileWriterTest, ReadOnlyFolderFailsWithMessage)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root writes into read-only folders, so this save cannot fail as root";
    const QString folder = path(u"Locked"_s);
    ASSERT_TRUE(QDir().mkdir(folder));
    const QString target = folder + u"/Pets.qnp"_s;
    writeBytes(target, oldBytes);
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));

    const QString error = SafeFileWriter::writeFile(target, writeFivePieces);

    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(error.contains(u"cannot create"_s)) << error.toStdString();
    EXPECT_EQ(readBytes(target), oldBytes);
}

TEST_F(SafeFileWriterTest, FolderInTheWayFailsWithMessage)
{
    const QString target = path(u"Pets.qnp"_s);
    ASSERT_TRUE(QDir().mkdir(target));

    const QString error = SafeFileWriter::writeFile(target, writeFivePieces);

    EXPECT_TRUE(error.contains(u"folder"_s)) << error.toStdString();
    EXPECT_TRUE(QFileInfo(target).isDir());
}

// ---- Places written to ----------------------------------------------------------------------

const QByteArray fivePieces
    = "new piece 1\r\nnew piece 2\r\nnew piece 3\r\nnew piece 4\r\nnew piece 5\r\n";

struct PlaceRow
{
    std::string name;
    // Makes the place in the folder and returns the name to save to.
    std::function<QString(const QString& folder)> make;
    // Where the saved bytes are to be found afterwards, relative to the folder.
    QString holder;
    // What the folder holds afterwards, each entry with its kind: 'f' a file, 'l' a link,
    // 'p' a FIFO.
    QStringList entries;
    // What the holder holds before the saved bytes.
    QByteArray before = {};
};

void PrintTo(const PlaceRow& row, std::ostream* stream)
{
    *stream << row.name;
}

char kindOf(const QString& path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return '?';
    return S_ISLNK(status.st_mode) ? 'l'
        : S_ISFIFO(status.st_mode) ? 'p'
        : S_ISREG(status.st_mode)  ? 'f'
                                   : 'o';
}

class Places : public SafeFileWriterTest, public testing::WithParamInterface<PlaceRow>
{
};

// A regular file is replaced whole, or made; a link stays a link and its target takes the
// bytes; a FIFO stays a FIFO and its reader gets them; nothing else is left in the folder.
TEST_P(Places, AreWrittenThroughAndKept)
{
    const QString folder = m_folder.path();
    const QString target = GetParam().make(folder);
    ASSERT_FALSE(target.isEmpty());
    // The reader is there before the writer, as a pipe's reader is; opened without waiting,
    // so that a writer that never comes cannot hang the test.
    const int reader = kindOf(target) == 'p'
        ? ::open(QFile::encodeName(target).constData(), O_RDONLY | O_NONBLOCK)
        : -1;
    EXPECT_EQ(SafeFileWriter::writeFile(target, writeFivePieces), QString());

    if (reader >= 0) {
        char buffer[4096];
        const ssize_t count = ::read(reader, buffer, sizeof buffer);
        ::close(reader);
        EXPECT_EQ(QByteArray(buffer, std::max<ssize_t>(count, 0)), fivePieces);
    } else
        EXPECT_EQ(readBytes(path(GetParam().holder)), GetParam().before + fivePieces);
    if (target.startsWith(u"/dev/fd/"_s))
        ::close(target.sliced(8).toInt());
    QStringList entries;
    for (const QString& entry : folderEntries())
        entries << entry + u':' + QLatin1Char(kindOf(path(entry)));
    EXPECT_EQ(entries, GetParam().entries);
}

QString link(const QString& folder, const QString& name, const QString& to)
{
    return QFile::link(to, folder + u'/' + name) ? folder + u'/' + name : QString();
}

QString fileWith(const QString& folder, const QString& name, const QByteArray& bytes)
{
    QFile file(folder + u'/' + name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName()
                                                                                : QString();
}

INSTANTIATE_TEST_SUITE_P(SafeFileWriter, Places,
    testing::Values(PlaceRow { "longerFileIsReplaced",
                        [](const QString& folder) {
                            return fileWith(folder, u"Pets.qnp"_s, QByteArray(10000, 'x'));
                        },
                        u"Pets.qnp"_s, { u"Pets.qnp:f"_s } },
        PlaceRow { "missingFileIsMade",
            [](const QString& folder) { return folder + u"/New.qnp"_s; }, u"New.qnp"_s,
            { u"New.qnp:f"_s } },
        PlaceRow { "fifoWithItsReader",
            [](const QString& folder) {
                const QString fifo = folder + u"/pipe"_s;
                return ::mkfifo(QFile::encodeName(fifo).constData(), 0600) == 0 ? fifo : QString();
            },
            {}, { u"pipe:p"_s } },
        PlaceRow { "symbolicLinkToAFile",
            [](const QString& folder) {
                fileWith(folder, u"Pets.qnp"_s, oldBytes);
                return link(folder, u"link.qnp"_s, u"Pets.qnp"_s);
            },
            u"Pets.qnp"_s, { u"Pets.qnp:f"_s, u"link.qnp:l"_s } },
        PlaceRow { "chainOfLinks",
            [](const QString& folder) {
                fileWith(folder, u"Pets.qnp"_s, oldBytes);
                link(folder, u"second.qnp"_s, folder + u"/Pets.qnp"_s);
                return link(folder, u"first.qnp"_s, u"second.qnp"_s);
            },
            u"Pets.qnp"_s, { u"Pets.qnp:f"_s, u"first.qnp:l"_s, u"second.qnp:l"_s } },
        PlaceRow { "danglingLinkMakesItsTarget",
            [](const QString& folder) { return link(folder, u"link.qnp"_s, u"New.qnp"_s); },
            u"New.qnp"_s, { u"New.qnp:f"_s, u"link.qnp:l"_s } },
        PlaceRow { "openDescriptorOfAFileGoesOnFromItsPlace",
            [](const QString& folder) {
                // Open before and after the save, as a shell's redirection would be.
                const int descriptor
                    = ::open(QFile::encodeName(folder + u"/shell.txt"_s).constData(),
                        O_WRONLY | O_CREAT, 0600);
                if (descriptor < 0 || ::write(descriptor, "head\n", 5) != 5)
                    return QString();
                return u"/dev/fd/%1"_s.arg(descriptor);
            },
            u"shell.txt"_s, { u"shell.txt:f"_s }, "head\n" }),
    [](const auto& info) { return info.param.name; });

TEST_F(SafeFileWriterTest, DeviceIsWrittenThroughAndFailuresAreTold)
{
    EXPECT_EQ(SafeFileWriter::writeFile(u"/dev/null"_s, writeFivePieces), QString());
    EXPECT_EQ(kindOf(u"/dev/null"_s), 'o');
    SaveFaults::failAtWrite(2);
    EXPECT_TRUE(
        SafeFileWriter::writeFile(u"/dev/null"_s, writeFivePieces).contains(u"writing failed"_s));
}

TEST_F(SafeFileWriterTest, LinksInALoopAreRefused)
{
    link(m_folder.path(), u"a"_s, u"b"_s);
    link(m_folder.path(), u"b"_s, u"a"_s);
    EXPECT_TRUE(SafeFileWriter::writeFile(path(u"a"_s), writeFivePieces).contains(u"loop"_s));
    EXPECT_EQ(folderEntries(), (QStringList { u"a"_s, u"b"_s }));
}

// ---- Copying a file over another -----------------------------------------------------------

QByteArray bigContent()
{
    QByteArray bytes;
    for (int i = 0; bytes.size() < 600000; ++i)
        bytes += QByteArray::number(i) + ',';
    return bytes;
}

TEST_F(SafeFileWriterTest, CopyReplacesTargetWithEveryByte)
{
    const QString source = path(u"Quorbin.tmp"_s);
    const QString target = path(u"Class.qnd"_s);
    writeBytes(source, bigContent());
    writeBytes(target, oldBytes);

    EXPECT_EQ(SafeFileWriter::copyFile(source, target), QString());

    EXPECT_EQ(readBytes(target), bigContent());
    EXPECT_EQ(readBytes(source), bigContent());
    EXPECT_EQ(folderEntries(), (QStringList { u"Class.qnd"_s, u"Quorbin.tmp"_s }));
}

TEST_F(SafeFileWriterTest, CopyFailingMidwayKeepsTarget)
{
    const QString source = path(u"Quorbin.tmp"_s);
    const QString target = path(u"Class.qnd"_s);
    writeBytes(source, bigContent());
    writeBytes(target, oldBytes);
    SaveFaults::failAtWrite(2);

    EXPECT_FALSE(SafeFileWriter::copyFile(source, target).isEmpty());

    EXPECT_EQ(readBytes(target), oldBytes);
    EXPECT_EQ(folderEntries(), (QStringList { u"Class.qnd"_s, u"Quorbin.tmp"_s }));
}

TEST_F(SafeFileWriterTest, CopyOfMissingSourceKeepsTarget)
{
    const QString target = path(u"Class.qnd"_s);
    writeBytes(target, oldBytes);

    const QString error = SafeFileWriter::copyFile(path(u"Quorbin.tmp"_s), target);

    EXPECT_TRUE(error.contains(u"Quorbin.tmp"_s)) << error.toStdString();
    EXPECT_EQ(readBytes(target), oldBytes);
    EXPECT_EQ(folderEntries(), QStringList { u"Class.qnd"_s });
}

} // namespace
