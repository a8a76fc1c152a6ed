#include "platform/io/SafeFileWriter.h"

#include "platform/io/SaveFaults.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
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
    QString reasonPart;
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

    const QString error = SafeFileWriter::writeFile(target, writeFivePieces);

    EXPECT_TRUE(error.contains(GetParam().reasonPart)) << error.toStdString();
    EXPECT_TRUE(error.contains(u"Pets.qnp"_s)) << error.toStdString();
    EXPECT_EQ(readBytes(target), oldBytes);
    EXPECT_EQ(folderEntries(), QStringList { u"Pets.qnp"_s });
}

INSTANTIATE_TEST_SUITE_P(SafeFileWriter, FaultPoint,
    testing::Values(FaultRow { "open", [] { SaveFaults::failAtOpen(); }, u"create"_s },
        FaultRow { "firstWrite", [] { SaveFaults::failAtWrite(1); }, u"writing failed"_s },
        FaultRow { "middleWrite", [] { SaveFaults::failAtWrite(3); }, u"writing failed"_s },
        FaultRow { "lastWrite", [] { SaveFaults::failAtWrite(5); }, u"writing failed"_s },
        FaultRow { "rename", [] { SaveFaults::failAtCommit(); }, u"replace"_s }),
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

TEST_F(SafeFileWriterTest, WriterThatStopsEarlyKeepsOldFile)
{
    const QString target = path(u"Pets.qnp"_s);
    writeBytes(target, oldBytes);

    const QString error = SafeFileWriter::writeFile(target, [](QIODevice& device) {
        device.write("half a file");
        return false;
    });

    EXPECT_TRUE(error.contains(u"abandoned"_s)) << error.toStdString();
    EXPECT_EQ(readBytes(target), oldBytes);
    EXPECT_EQ(folderEntries(), QStringList { u"Pets.qnp"_s });
}

TEST_F(SafeFileWriterTest, ExceptionInWriterKeepsOldFile)
{
    const QString target = path(u"Pets.qnp"_s);
    writeBytes(target, oldBytes);

    EXPECT_THROW(SafeFileWriter::writeFile(target,
                     [](QIODevice& device) -> bool {
                         device.write("half a file");
                         throw std::runtime_error("no memory");
                     }),
        std::runtime_error);

    EXPECT_EQ(readBytes(target), oldBytes);
    EXPECT_EQ(folderEntries(), QStringList { u"Pets.qnp"_s });
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

TEST_F(SafeFileWriterTest, FaultFiresOnceThenSavesWork)
{
    const QString target = path(u"Pets.qnp"_s);
    writeBytes(target, oldBytes);
    SaveFaults::failAtCommit();
    ASSERT_FALSE(SafeFileWriter::writeFile(target, writeFivePieces).isEmpty());

    EXPECT_EQ(SafeFileWriter::writeFile(target, writeFivePieces), QString());
    EXPECT_TRUE(readBytes(target).startsWith("new piece 1"));
}

TEST_F(SafeFileWriterTest, ScopeDisarmsFaults)
{
    const QString target = path(u"Pets.qnp"_s);
    {
        SaveFaults::Scope inner;
        SaveFaults::failAtOpen();
        SaveFaults::failAtWrite(1);
        SaveFaults::failAtCommit();
    }
    EXPECT_EQ(SafeFileWriter::writeFile(target, writeFivePieces), QString());
    EXPECT_EQ(SaveFaults::writesSeen(), 5);
}

// ---- Successful saves ----------------------------------------------------------------------

TEST_F(SafeFileWriterTest, SaveReplacesOldContent)
{
    const QString target = path(u"Pets.qnp"_s);
    writeBytes(target, QByteArray(10000, 'x')); // longer than the new content

    EXPECT_EQ(SafeFileWriter::writeFile(target, writeFivePieces), QString());

    EXPECT_EQ(readBytes(target),
        "new piece 1\r\nnew piece 2\r\nnew piece 3\r\nnew piece 4\r\nnew piece 5\r\n");
    EXPECT_EQ(folderEntries(), QStringList { u"Pets.qnp"_s });
}

TEST_F(SafeFileWriterTest, SaveCreatesMissingFile)
{
    const QString target = path(u"New.qnp"_s);

    EXPECT_EQ(SafeFileWriter::writeFile(target, writeFivePieces), QString());

    EXPECT_TRUE(readBytes(target).endsWith("new piece 5\r\n"));
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
