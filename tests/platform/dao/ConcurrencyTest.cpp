#include "DaoTestSupport.h"
#include "platform/dao/Database.h"

#include <QProcess>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;
using Dao::DaoError;
using DaoTest::ErrorNumber;
using Runtime::Variant;

namespace {

// Two copies of the program on one file: two workspaces of their own, as two card windows
// (or two machines) would have.
class ConcurrencyTest : public DaoTest::DaoTestBase
{
protected:
    void SetUp() override
    {
        DaoTestBase::SetUp();
        m_path = path(u"shared.qnd"_s);
        auto database = m_workspace->CreateDatabase(m_path);
        DaoTest::MakePets(*database);
        database->Close();
        m_other = m_engine.CreateWorkspace(u"Quorbin"_s, u"Admin"_s);
        m_engine.Workspaces().Append(m_other);
    }

    std::shared_ptr<Dao::Recordset> rex(Dao::Database& database)
    {
        auto cards = database.OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
        cards->FindFirst(u"CardName = 'Rex'"_s);
        return cards;
    }

    // Whether the file is whole, as SQLite checks it.
    bool fileIsWhole()
    {
        sqlite3* handle = nullptr;
        sqlite3_open_v2(m_path.toUtf8().constData(), &handle, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_stmt* check = nullptr;
        sqlite3_prepare_v2(handle, "PRAGMA integrity_check", -1, &check, nullptr);
        const bool whole = sqlite3_step(check) == SQLITE_ROW
            && QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(check, 0))) == "ok";
        sqlite3_finalize(check);
        sqlite3_close(handle);
        return whole;
    }

    QString m_path;
    std::shared_ptr<Dao::Workspace> m_other;
};

TEST_F(ConcurrencyTest, SavedCardsAreSeenByTheOtherAfterARequery)
{
    auto first = m_workspace->OpenDatabase(m_path);
    auto second = m_other->OpenDatabase(m_path);
    auto theirs = second->OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
    auto mine = first->OpenRecordset(u"Pets"_s, Dao::RecordsetType::Dynaset);
    mine->AddNew();
    mine->Fields(u"CardName"_s)->SetValue(u"Aardvark"_s);
    mine->Update();
    m_engine.Idle(Dao::DBEngine::RefreshCache);
    EXPECT_EQ(theirs->RecordCount(), 6);
    theirs->Requery();
    EXPECT_EQ(theirs->RecordCount(), 7);
    EXPECT_EQ(theirs->Fields(u"CardName"_s)->Value(), Variant(u"Aardvark"_s));
}

TEST_F(ConcurrencyTest, ChangedRowsShowWhenVisitedAgain)
{
    auto first = m_workspace->OpenDatabase(m_path);
    auto second = m_other->OpenDatabase(m_path);
    auto theirs = rex(*second);
    auto mine = rex(*first);
    mine->Edit();
    mine->Fields(u"Field1"_s)->SetValue(u"Puppy"_s);
    mine->Update();
    theirs->Move(0); // read the current row again
    EXPECT_EQ(theirs->Fields(u"Field1"_s)->Value(), Variant(u"Puppy"_s));
}

TEST_F(ConcurrencyTest, ConflictingOptimisticEditGives3197)
{
    auto first = m_workspace->OpenDatabase(m_path);
    auto second = m_other->OpenDatabase(m_path);
    auto mine = rex(*first);
    auto theirs = rex(*second);
    mine->SetLockEdits(false);
    theirs->SetLockEdits(false);
    mine->Edit();
    theirs->Edit();
    theirs->Fields(u"Field1"_s)->SetValue(u"Wolf"_s);
    theirs->Update();
    mine->Fields(u"Field1"_s)->SetValue(u"Puppy"_s);
    EXPECT_EQ(ErrorNumber([&] { mine->Update(); }), DaoError::ChangedByAnotherUser);
    // The card window cancels and shows the stored card again.
    mine->CancelUpdate();
    mine->Move(0);
    EXPECT_EQ(mine->Fields(u"Field1"_s)->Value(), Variant(u"Wolf"_s));
    EXPECT_TRUE(fileIsWhole());
}

TEST_F(ConcurrencyTest, OptimisticEditOfAnotherRowGoesThrough)
{
    auto first = m_workspace->OpenDatabase(m_path);
    auto second = m_other->OpenDatabase(m_path);
    auto mine = rex(*first);
    auto theirs = second->OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
    mine->SetLockEdits(false);
    theirs->SetLockEdits(false);
    mine->Edit();
    theirs->Edit(); // Bobcat
    theirs->Fields(u"Field4"_s)->SetValue(qint64(10));
    theirs->Update();
    mine->Fields(u"Field4"_s)->SetValue(qint64(4));
    mine->Update();
    auto check = first->OpenRecordset(u"SELECT Sum(Field4) AS Total FROM Pets"_s);
    EXPECT_EQ(check->Fields(0)->Value(), Variant(qint64(1 + 2 + 4 + 7 + 10)));
}

TEST_F(ConcurrencyTest, RowDeletedByTheOtherCannotBeEdited)
{
    auto first = m_workspace->OpenDatabase(m_path);
    auto second = m_other->OpenDatabase(m_path);
    auto mine = rex(*first);
    auto theirs = rex(*second);
    theirs->Delete();
    EXPECT_EQ(ErrorNumber([&] { mine->Edit(); }), DaoError::RecordDeleted);
    EXPECT_EQ(ErrorNumber([&] { mine->Fields(u"CardName"_s)->Value(); }), DaoError::RecordDeleted);
}

TEST_F(ConcurrencyTest, PessimisticEditLocksOutTheOthersWritesUntilUpdate)
{
    auto first = m_workspace->OpenDatabase(m_path);
    auto second = m_other->OpenDatabase(m_path);
    auto mine = rex(*first);
    auto theirs = second->OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
    mine->Edit(); // LockEdits is True unless set otherwise
    // Another session of this program holds the lock: 3188.
    EXPECT_EQ(ErrorNumber([&] { theirs->Edit(); }), DaoError::LockedBySession);
    theirs->SetLockEdits(false);
    theirs->Edit();
    theirs->Fields(u"Field4"_s)->SetValue(qint64(10));
    EXPECT_EQ(ErrorNumber([&] { theirs->Update(); }), DaoError::LockedBySession);
    // Reading is not held up.
    EXPECT_EQ(theirs->Fields(u"CardName"_s)->Value(), Variant(u"Bobcat"_s));
    mine->Fields(u"Field1"_s)->SetValue(u"Puppy"_s);
    mine->Update();
    theirs->Update(); // the lock is free again
    EXPECT_TRUE(fileIsWhole());
}

TEST_F(ConcurrencyTest, BusyFileWaitsThenFailsCleanly)
{
    auto database = m_workspace->OpenDatabase(m_path);
    auto cards = rex(*database);
    // Another program holds the file's write lock.
    sqlite3* other = nullptr;
    sqlite3_open_v2(m_path.toUtf8().constData(), &other, SQLITE_OPEN_READWRITE, nullptr);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    cards->SetLockEdits(false);
    cards->Edit();
    cards->Fields(u"Field1"_s)->SetValue(u"Puppy"_s);
    EXPECT_EQ(ErrorNumber([&] { cards->Update(); }), DaoError::LockedByUser);
    EXPECT_EQ(cards->EditMode(), Dao::EditMode::InProgress);
    sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    cards->Update();
    cards->Move(0);
    EXPECT_EQ(cards->Fields(u"Field1"_s)->Value(), Variant(u"Puppy"_s));
    EXPECT_TRUE(fileIsWhole());
}

TEST_F(ConcurrencyTest, ExclusiveOpenKeepsTheOthersOut)
{
    auto exclusive = m_workspace->OpenDatabase(m_path, true);
    EXPECT_TRUE(exclusive->Exclusive());
    EXPECT_EQ(ErrorNumber([&] { m_other->OpenDatabase(m_path); }), DaoError::FileInUse);
    EXPECT_EQ(
        ErrorNumber([&] { m_other->OpenDatabase(m_path, false, true); }), DaoError::FileInUse);
    EXPECT_EQ(ErrorNumber([&] { m_other->OpenDatabase(m_path, true); }), DaoError::FileInUse);
    // Another program cannot read it either.
    sqlite3* other = nullptr;
    sqlite3_open_v2(m_path.toUtf8().constData(), &other, SQLITE_OPEN_READONLY, nullptr);
    EXPECT_EQ(
        sqlite3_exec(other, "SELECT count(*) FROM Pets", nullptr, nullptr, nullptr), SQLITE_BUSY);
    sqlite3_close(other);
    // The holder changes columns freely.
    exclusive->Execute(u"ALTER TABLE [Pets] ADD COLUMN URL1 TEXT"_s);
    exclusive->Close();
    auto shared = m_other->OpenDatabase(m_path);
    EXPECT_TRUE(shared->TableDefs(u"Pets"_s)->Fields().Contains(u"URL1"_s));
}

TEST_F(ConcurrencyTest, ReadOnlyOpenRefusesEveryWrite)
{
    auto database = m_workspace->OpenDatabase(m_path, false, true);
    EXPECT_FALSE(database->Updatable());
    auto cards = rex(*database);
    EXPECT_FALSE(cards->Updatable());
    EXPECT_EQ(ErrorNumber([&] { cards->Edit(); }), DaoError::ReadOnly);
    EXPECT_EQ(ErrorNumber([&] { cards->AddNew(); }), DaoError::ReadOnly);
    EXPECT_EQ(ErrorNumber([&] { database->Execute(u"DELETE FROM Pets"_s); }), DaoError::ReadOnly);
    EXPECT_EQ(ErrorNumber([&] {
        database->Properties().Append(
            database->CreateProperty(u"QBVersion"_s, Dao::DataType::Integer, 350));
    }),
        DaoError::ReadOnly);
    EXPECT_EQ(cards->Fields(u"Field1"_s)->Value(), Variant(u"Dog"_s));
}

// The file shared with another process: another copy of the program on the same machine.
class OtherProcessTest : public ConcurrencyTest
{
protected:
    // The number the other copy's open failed with, 0 when it opened.
    int openInOtherCopy(const QString& mode)
    {
        QProcess other;
        other.start(QStringLiteral(QUORBIN_DAO_OTHER_COPY), { m_path, mode });
        if (!other.waitForFinished(30000))
            return -1;
        return QString::fromUtf8(other.readAllStandardOutput()).trimmed().toInt();
    }
};

TEST_F(OtherProcessTest, ExclusiveHolderKeepsAnotherCopyOut)
{
    auto exclusive = m_workspace->OpenDatabase(m_path, true);
    EXPECT_EQ(openInOtherCopy(u"shared"_s), DaoError::FileInUse);
    EXPECT_EQ(openInOtherCopy(u"exclusive"_s), DaoError::FileInUse);
    exclusive->Close();
    EXPECT_EQ(openInOtherCopy(u"shared"_s), 0);
}

TEST_F(OtherProcessTest, AnotherCopyHavingTheFileStopsAnExclusiveOpen)
{
    QProcess other;
    other.start(QStringLiteral(QUORBIN_DAO_OTHER_COPY), { m_path, u"hold"_s });
    ASSERT_TRUE(other.waitForReadyRead(30000));
    ASSERT_EQ(other.readLine().trimmed(), QByteArray("0"));
    EXPECT_EQ(ErrorNumber([&] { m_workspace->OpenDatabase(m_path, true); }), DaoError::FileInUse);
    // Shared opens live side by side.
    auto shared = m_workspace->OpenDatabase(m_path);
    EXPECT_TRUE(shared->IsOpen());
    other.write("\n");
    other.closeWriteChannel();
    ASSERT_TRUE(other.waitForFinished(30000));
    shared->Close();
    auto exclusive = m_workspace->OpenDatabase(m_path, true);
    EXPECT_TRUE(exclusive->IsOpen());
}

} // namespace
