#include "DaoTestSupport.h"
#include "platform/dao/Database.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using Dao::DaoError;
using DaoTest::ErrorNumber;
using Runtime::Variant;

namespace {

QByteArray Contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// Files that are not card databases: each open fails with its number and leaves the file
// exactly as it was, whether asked for writing or only for reading.
struct BadFileRow
{
    const char* name;
    QByteArray bytes;
    int number;
};

class BadFileTest : public DaoTest::DaoTestBase, public testing::WithParamInterface<BadFileRow>
{
};

TEST_P(BadFileTest, IsRefusedAndLeftAsItWas)
{
    const BadFileRow& row = GetParam();
    const QString file = path(u"class.qnd"_s);
    Write(file, row.bytes);
    for (const bool readOnly : { false, true }) {
        EXPECT_EQ(
            ErrorNumber([&] { m_workspace->OpenDatabase(file, false, readOnly); }), row.number)
            << "read-only " << readOnly;
        EXPECT_EQ(Contents(file), row.bytes);
    }
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList { u"class.qnd"_s });
}

QByteArray DamagedDatabase()
{
    // A real header followed by pages of nonsense.
    QByteArray bytes("SQLite format 3\0", 16);
    bytes
        += QByteArray::fromHex("1000010100402020000000010000000200000000000000000000000000000004");
    bytes += QByteArray(4096 * 2 - bytes.size(), '\x5a');
    return bytes;
}

INSTANTIATE_TEST_SUITE_P(Files, BadFileTest,
    testing::Values(BadFileRow { "zeroBytes", QByteArray(), DaoError::UnrecognizedFormat },
        BadFileRow {
            "textFile", "Name,Age\r\nRex,3\r\nTiddles,7\r\n", DaoError::UnrecognizedFormat },
        BadFileRow { "oneByte", "x", DaoError::UnrecognizedFormat },
        BadFileRow { "damagedPages", DamagedDatabase(), DaoError::CorruptFile }),
    [](const testing::TestParamInfo<BadFileRow>& info) { return std::string(info.param.name); });

class FileTest : public DaoTest::DaoTestBase
{
};

TEST_F(FileTest, MissingFileAndFolderFail)
{
    EXPECT_EQ(ErrorNumber([&] { m_workspace->OpenDatabase(path(u"none.qnd"_s)); }),
        DaoError::FileNotFound);
    EXPECT_EQ(
        ErrorNumber([&] { m_workspace->OpenDatabase(m_folder.path()); }), DaoError::InvalidPath);
    EXPECT_FALSE(QFile::exists(path(u"none.qnd"_s)));
}

TEST_F(FileTest, NewDatabaseNeverOverwritesAFile)
{
    const QString file = path(u"class.qnd"_s);
    Write(file, "keep me");
    EXPECT_EQ(ErrorNumber([&] { m_workspace->CreateDatabase(file); }), DaoError::DatabaseExists);
    EXPECT_EQ(Contents(file), QByteArray("keep me"));
    EXPECT_EQ(ErrorNumber([&] { m_workspace->CreateDatabase(path(u"no/such/folder.qnd"_s)); }),
        DaoError::InvalidPath);
}

TEST_F(FileTest, NewDatabaseIsADatabaseAtOnce)
{
    // Even with nothing in it, the file must open again: an empty file would not.
    const QString file = path(u"new.qnd"_s);
    m_workspace->CreateDatabase(file)->Close();
    EXPECT_GT(QFileInfo(file).size(), 0);
    auto database = m_workspace->OpenDatabase(file);
    EXPECT_EQ(database->TableDefs().Count(), 0);
}

TEST_F(FileTest, WriteProtectedFileOpensOnlyForReading)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "the superuser may write any file";
    const QString file = path(u"class.qnd"_s);
    auto database = m_workspace->CreateDatabase(file);
    DaoTest::MakePets(*database);
    database->Close();
    QFile::setPermissions(file, QFileDevice::ReadOwner);
    EXPECT_EQ(ErrorNumber([&] { m_workspace->OpenDatabase(file); }), DaoError::PermissionDenied);
    // The card window's retry.
    auto readOnly = m_workspace->OpenDatabase(file, false, true);
    EXPECT_FALSE(readOnly->Updatable());
    auto cards = readOnly->OpenRecordset(u"SELECT CardName FROM Pets ORDER BY CardName"_s);
    EXPECT_EQ(cards->RecordCount(), 6);
    readOnly->Close();
    QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST_F(FileTest, FileOfAnotherSqliteProgramOpens)
{
    // The engine reads any SQLite file: its tables are table definitions like any other.
    const QString file = path(u"other.db"_s);
    auto database = m_workspace->CreateDatabase(file);
    database->Execute(u"CREATE TABLE Scores (Name TEXT(20), Points LONG)"_s);
    database->Execute(u"INSERT INTO Scores (Name, Points) VALUES ('Ann', '12')"_s);
    database->Execute(u"INSERT INTO Scores VALUES ('Bob', 'lots')"_s);
    EXPECT_EQ(database->RecordsAffected(), 1);
    auto scores = database->OpenRecordset(u"SELECT * FROM Scores ORDER BY Name"_s);
    EXPECT_EQ(scores->Fields(u"Points"_s)->Value(), Variant(qint64(12)));
    scores->MoveNext();
    EXPECT_EQ(scores->Fields(u"Points"_s)->Value(), Variant::null());
}

} // namespace
