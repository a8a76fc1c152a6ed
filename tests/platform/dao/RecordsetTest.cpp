#include "DaoTestSupport.h"
#include "platform/dao/Database.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Dao::DaoError;
using DaoTest::ErrorNumber;
using Runtime::Variant;

namespace {

class RecordsetTest : public DaoTest::DaoTestBase
{
protected:
    void SetUp() override
    {
        DaoTestBase::SetUp();
        m_database = m_workspace->CreateDatabase(path(u"pets.qnd"_s));
        DaoTest::MakePets(*m_database);
    }

    std::shared_ptr<Dao::Recordset> cardSet()
    {
        return m_database->OpenRecordset(
            u"SELECT * FROM Pets ORDER BY [CardName]"_s, Dao::RecordsetType::Dynaset);
    }
    QString currentName(Dao::Recordset& recordset)
    {
        return recordset.Fields(u"CardName"_s)->Value().text();
    }

    std::shared_ptr<Dao::Database> m_database;
};

TEST_F(RecordsetTest, OpensOnTheFirstRowWithEveryRowCounted)
{
    auto cards = cardSet();
    EXPECT_EQ(cards->RecordCount(), 6);
    EXPECT_EQ(cards->AbsolutePosition(), 0);
    EXPECT_FALSE(cards->IsBOF());
    EXPECT_EQ(currentName(*cards), u"Bobcat"_s);
    cards->MoveLast();
    EXPECT_EQ(currentName(*cards), u"Tiddles"_s);
    EXPECT_EQ(cards->AbsolutePosition(), 5);
}

TEST_F(RecordsetTest, EmptySetIsAtBothEnds)
{
    auto none = m_database->OpenRecordset(u"SELECT * FROM Pets WHERE Field4 > 100"_s);
    EXPECT_TRUE(none->IsBOF());
    EXPECT_TRUE(none->IsEOF());
    EXPECT_EQ(none->RecordCount(), 0);
    EXPECT_EQ(none->AbsolutePosition(), -1);
    EXPECT_EQ(ErrorNumber([&] { none->MoveFirst(); }), DaoError::NoCurrentRecord);
    EXPECT_EQ(
        ErrorNumber([&] { none->Fields(u"CardName"_s)->Value(); }), DaoError::NoCurrentRecord);
}

TEST_F(RecordsetTest, MovingPastEitherEndFails)
{
    auto cards = cardSet();
    cards->MovePrevious();
    EXPECT_TRUE(cards->IsBOF());
    EXPECT_EQ(ErrorNumber([&] { cards->MovePrevious(); }), DaoError::NoCurrentRecord);
    EXPECT_EQ(ErrorNumber([&] { cards->Fields(0)->Value(); }), DaoError::NoCurrentRecord);
    cards->MoveLast();
    cards->MoveNext();
    EXPECT_TRUE(cards->IsEOF());
    EXPECT_EQ(ErrorNumber([&] { cards->MoveNext(); }), DaoError::NoCurrentRecord);
    cards->Move(-2);
    EXPECT_EQ(currentName(*cards), u"Rex"_s);
    cards->SetAbsolutePosition(1);
    EXPECT_EQ(currentName(*cards), u"Bubbles"_s);
    EXPECT_EQ(ErrorNumber([&] { cards->SetAbsolutePosition(6); }), DaoError::InvalidArgument);
}

TEST_F(RecordsetTest, AddedRowGoesToTheEndAndTheEndStaysCurrent)
{
    auto cards = cardSet();
    cards->MoveLast();
    cards->MoveNext(); // past the last card: the card window adds a new one here
    cards->AddNew();
    EXPECT_EQ(cards->EditMode(), Dao::EditMode::Add);
    cards->Fields(u"CardName"_s)->SetValue(u"Aardvark"_s);
    cards->Update();
    EXPECT_EQ(cards->EditMode(), Dao::EditMode::None);
    EXPECT_TRUE(cards->IsEOF());
    EXPECT_EQ(cards->RecordCount(), 7);
    cards->MovePrevious();
    EXPECT_EQ(currentName(*cards), u"Aardvark"_s); // at the end, not in name order
    cards->SetBookmark(cards->LastModified());
    EXPECT_EQ(cards->AbsolutePosition(), 6);
    cards->Requery();
    EXPECT_EQ(currentName(*cards), u"Aardvark"_s); // in name order now
}

TEST_F(RecordsetTest, AddNewKeepsTheRowThatWasCurrent)
{
    auto cards = cardSet();
    cards->SetAbsolutePosition(2);
    cards->AddNew();
    cards->Fields(u"CardName"_s)->SetValue(u"Zebra"_s);
    cards->Update();
    EXPECT_EQ(currentName(*cards), u"Cat[1]"_s);
}

TEST_F(RecordsetTest, EditAndUpdateWriteOnlyTheChangedValues)
{
    auto cards = cardSet();
    cards->FindFirst(u"CardName = 'Rex'"_s);
    cards->Edit();
    EXPECT_EQ(cards->EditMode(), Dao::EditMode::InProgress);
    cards->Fields(u"Field4"_s)->SetValue(u"4"_s);
    EXPECT_EQ(cards->Fields(u"Field4"_s)->Value(), Variant(qint64(4)));
    cards->Update();
    auto again
        = m_database->OpenRecordset(u"SELECT Field4, Field1 FROM Pets WHERE CardName = 'Rex'"_s);
    EXPECT_EQ(again->Fields(u"Field4"_s)->Value(), Variant(qint64(4)));
    EXPECT_EQ(again->Fields(u"Field1"_s)->Value(), Variant(u"Dog"_s));
}

TEST_F(RecordsetTest, CancelAndMovingOffDiscardTheEdit)
{
    auto cards = cardSet();
    cards->Edit();
    cards->Fields(u"Field1"_s)->SetValue(u"Lynx"_s);
    cards->CancelUpdate();
    EXPECT_EQ(cards->Fields(u"Field1"_s)->Value(), Variant(u"Wild cat"_s));
    cards->Edit();
    cards->Fields(u"Field1"_s)->SetValue(u"Lynx"_s);
    cards->MoveNext();
    cards->MovePrevious();
    EXPECT_EQ(cards->Fields(u"Field1"_s)->Value(), Variant(u"Wild cat"_s));
    EXPECT_EQ(ErrorNumber([&] { cards->Update(); }), DaoError::UpdateWithoutEdit);
    EXPECT_EQ(ErrorNumber([&] { cards->Fields(u"Field1"_s)->SetValue(u"x"_s); }),
        DaoError::UpdateWithoutEdit);
}

TEST_F(RecordsetTest, DeletingMovesTheNextRowIntoPlace)
{
    auto cards = cardSet();
    cards->SetAbsolutePosition(2); // Cat[1]
    cards->Delete();
    EXPECT_EQ(cards->RecordCount(), 5);
    EXPECT_EQ(ErrorNumber([&] { cards->Fields(u"CardName"_s)->Value(); }), DaoError::RecordDeleted);
    cards->MoveNext();
    EXPECT_EQ(currentName(*cards), u"R2D2"_s);
    cards->MoveLast();
    cards->Delete();
    cards->MoveNext();
    EXPECT_TRUE(cards->IsEOF());
    cards->MovePrevious();
    EXPECT_EQ(currentName(*cards), u"Rex"_s);
    auto table = m_database->TableDefs(u"Pets"_s);
    EXPECT_EQ(table->RecordCount(), 4);
}

// What Update refuses, with the engine's numbers, and that the row is not written.
TEST_F(RecordsetTest, UpdateRefusesDuplicateEmptyAndMissingNames)
{
    struct Case
    {
        const char* name;
        Variant value;
        int number;
    };
    const Case cases[] = {
        { "duplicateWithoutCase", u"REX"_s, DaoError::DuplicateValue },
        { "zeroLength", u""_s, DaoError::ZeroLengthNotAllowed },
        { "null", Variant::null(), DaoError::RequiredFieldNull },
    };
    auto cards = cardSet();
    for (const Case& check : cases) {
        cards->AddNew();
        cards->Fields(u"CardName"_s)->SetValue(check.value);
        EXPECT_EQ(ErrorNumber([&] { cards->Update(); }), check.number) << check.name;
        // A refused save keeps the edit, as the card window expects.
        EXPECT_EQ(cards->EditMode(), Dao::EditMode::Add) << check.name;
        cards->CancelUpdate();
    }
    EXPECT_EQ(m_database->TableDefs(u"Pets"_s)->RecordCount(), 6);
}

TEST_F(RecordsetTest, ErrorsNameTheField)
{
    auto cards = cardSet();
    cards->Edit();
    cards->Fields(u"CardName"_s)->SetValue(u""_s);
    try {
        cards->Update();
        FAIL();
    } catch (const DaoError& error) {
        EXPECT_EQ(error.description(), u"Field 'Pets.CardName' cannot be a zero-length string."_s);
    }
}

TEST_F(RecordsetTest, AssignmentsThatWouldLoseDataFail)
{
    auto cards = cardSet();
    cards->Edit();
    EXPECT_EQ(ErrorNumber([&] { cards->Fields(u"CardName"_s)->SetValue(QString(31, u'x')); }),
        DaoError::FieldTooSmall);
    EXPECT_EQ(ErrorNumber([&] { cards->Fields(u"Field4"_s)->SetValue(1e12); }),
        DaoError::NumericOverflow);
    cards->CancelUpdate();
}

TEST_F(RecordsetTest, BookmarksReturnToTheirRow)
{
    auto cards = cardSet();
    cards->SetAbsolutePosition(4);
    const QByteArray mark = cards->Bookmark();
    cards->MoveFirst();
    cards->SetBookmark(mark);
    EXPECT_EQ(currentName(*cards), u"Rex"_s);
    EXPECT_EQ(
        ErrorNumber([&] { cards->SetBookmark(QByteArray("junk")); }), DaoError::NotAValidBookmark);
}

TEST_F(RecordsetTest, FindNextContinuesAfterTheCurrentRow)
{
    // The card window's search: from the current card onwards, then from the start.
    const QString criterion = u"CardName Like '*b*'  OR CardName Like '*x*'"_s;
    auto cards = cardSet();
    cards->SetAbsolutePosition(2);
    cards->FindNext(criterion);
    EXPECT_EQ(currentName(*cards), u"Rex"_s);
    cards->FindNext(criterion);
    EXPECT_TRUE(cards->NoMatch());
    EXPECT_EQ(currentName(*cards), u"Rex"_s); // a failed search leaves the row as it was
    cards->FindFirst(criterion);
    EXPECT_EQ(currentName(*cards), u"Bobcat"_s);
    cards->FindLast(criterion);
    EXPECT_EQ(currentName(*cards), u"Rex"_s);
    cards->FindPrevious(criterion);
    EXPECT_EQ(currentName(*cards), u"Bubbles"_s);
}

TEST_F(RecordsetTest, FindInAStaticResult)
{
    auto counts = m_database->OpenRecordset(
        u"SELECT Field1, Count(*) AS [Cards] FROM Pets GROUP BY Field1 ORDER BY Field1"_s);
    counts->FindFirst(u"Field1 LIKE 'w*'"_s);
    EXPECT_FALSE(counts->NoMatch());
    EXPECT_EQ(counts->Fields(u"Field1"_s)->Value(), Variant(u"Wild cat"_s));
}

TEST_F(RecordsetTest, RowsAddedInOneTransactionKeepTheirOwnFieldsPastARefusedOne)
{
    // An import adds row after row in one transaction: a refused row takes nothing else
    // with it, and each row gets the fields set for it, not those of the row before.
    auto cards = cardSet();
    const auto add = [&](const QString& name, const QString& kind) {
        cards->AddNew();
        cards->Fields(u"CardName"_s)->SetValue(name);
        if (!kind.isEmpty())
            cards->Fields(u"Field1"_s)->SetValue(kind);
        cards->Update();
    };
    m_workspace->BeginTrans();
    add(u"Ant"_s, {});
    EXPECT_EQ(ErrorNumber([&] { add(u"ANT"_s, {}); }), DaoError::DuplicateValue);
    cards->CancelUpdate();
    add(u"Bee"_s, u"insect"_s);
    m_workspace->CommitTrans();
    EXPECT_EQ(m_database->TableDefs(u"Pets"_s)->RecordCount(), 8);
    cards->Requery();
    cards->FindFirst(u"CardName = 'Ant'"_s);
    EXPECT_TRUE(cards->Fields(u"Field1"_s)->Value().isNull());
    cards->FindFirst(u"CardName = 'Bee'"_s);
    EXPECT_EQ(cards->Fields(u"Field1"_s)->Value().text(), u"insect"_s);
}

TEST_F(RecordsetTest, WorkspaceTransactionsKeepOrDropRowsTogether)
{
    auto cards = cardSet();
    m_workspace->BeginTrans();
    for (const QString& name : { u"Ant"_s, u"Bee"_s }) {
        cards->AddNew();
        cards->Fields(u"CardName"_s)->SetValue(name);
        cards->Update();
    }
    m_workspace->Rollback();
    EXPECT_EQ(m_database->TableDefs(u"Pets"_s)->RecordCount(), 6);
    m_workspace->BeginTrans();
    m_workspace->BeginTrans();
    cards->AddNew();
    cards->Fields(u"CardName"_s)->SetValue(u"Cow"_s);
    cards->Update();
    m_workspace->CommitTrans();
    m_workspace->CommitTrans();
    auto other
        = m_engine.CreateWorkspace(u"Quorbin"_s, u"Admin"_s)->OpenDatabase(m_database->Name());
    EXPECT_EQ(other->TableDefs(u"Pets"_s)->RecordCount(), 7);
    EXPECT_EQ(ErrorNumber([&] { m_workspace->CommitTrans(); }), DaoError::InvalidOperation);
}

class KeywordTableTest : public DaoTest::DaoTestBase
{
protected:
    void SetUp() override
    {
        DaoTestBase::SetUp();
        m_database = m_workspace->CreateDatabase(path(u"words.qnd"_s));
        DaoTest::MakeKeywordTable(*m_database);
        m_keywords = m_database->OpenRecordset(u"KeyWords"_s);
    }

    // The keyword dictionary's add: seek the word, add it when missing, return its id.
    qint64 addKeyword(const QString& text)
    {
        m_keywords->SetIndex(u"KeyText"_s);
        m_keywords->Seek(u"="_s, Variant(text));
        if (m_keywords->NoMatch()) {
            m_keywords->AddNew();
            m_keywords->Fields(u"KeyText"_s)->SetValue(text);
            m_keywords->Update();
            m_engine.Idle(Dao::DBEngine::RefreshCache);
            m_keywords->Seek(u"="_s, Variant(text));
        }
        return m_keywords->Fields(u"KeyID"_s)->Value().whole();
    }

    std::shared_ptr<Dao::Database> m_database;
    std::shared_ptr<Dao::Recordset> m_keywords;
};

TEST_F(KeywordTableTest, SeekFindsWordsWithoutRegardToCase)
{
    EXPECT_EQ(addKeyword(u"Cat"_s), 1);
    EXPECT_EQ(addKeyword(u"Dog"_s), 2);
    EXPECT_EQ(addKeyword(u"cat"_s), 1);
    EXPECT_EQ(m_keywords->RecordCount(), 2);
}

TEST_F(KeywordTableTest, CounterKeepsCountingAndCannotBeWritten)
{
    addKeyword(u"Cat"_s);
    addKeyword(u"Dog"_s);
    m_keywords->Delete();
    // Dog's number is never given again: cards that still carry it must not take the new word.
    EXPECT_EQ(addKeyword(u"Emu"_s), 3);
    m_keywords->Edit();
    EXPECT_EQ(ErrorNumber([&] { m_keywords->Fields(u"KeyID"_s)->SetValue(qint64(9)); }),
        DaoError::FieldNotUpdatable);
    m_keywords->CancelUpdate();
}

TEST_F(KeywordTableTest, NumbersFreedBySqlAreNotGivenAgainEvenAfterReopening)
{
    addKeyword(u"Cat"_s);
    addKeyword(u"Dog"_s);
    addKeyword(u"Emu"_s);
    m_database->Execute(u"DELETE FROM KeyWords WHERE KeyID >= 2"_s);
    // Only Cat (1) is left: the numbers 2 and 3 must be remembered by the file itself.
    m_keywords->Close();
    m_database->Close();
    m_database = m_workspace->OpenDatabase(path(u"words.qnd"_s));
    m_keywords = m_database->OpenRecordset(u"KeyWords"_s);
    m_database->Execute(u"INSERT INTO KeyWords (KeyText) VALUES ('Fox')"_s);
    EXPECT_EQ(addKeyword(u"Fox"_s), 4);
    EXPECT_EQ(addKeyword(u"Gnu"_s), 5);
    // The engine's own bookkeeping is no table of the file's.
    for (const auto& table : m_database->TableDefs().items())
        EXPECT_FALSE(table->Name().startsWith(u"QSys"_s)) << table->Name().toStdString();
}

TEST_F(KeywordTableTest, TableMadeAgainCountsFromOne)
{
    addKeyword(u"Cat"_s);
    addKeyword(u"Dog"_s);
    m_keywords->Delete();
    m_keywords->Close();
    m_database->Execute(u"DROP TABLE KeyWords"_s);
    m_database->Execute(u"CREATE TABLE KeyWords (KeyID COUNTER, KeyText TEXT(20))"_s);
    m_database->Execute(u"INSERT INTO KeyWords (KeyText) VALUES ('Ant')"_s);
    auto words = m_database->OpenRecordset(u"SELECT KeyID FROM KeyWords"_s);
    EXPECT_EQ(words->Fields(u"KeyID"_s)->Value().whole(), 1);
}

TEST_F(KeywordTableTest, SeekComparisonsFollowTheIndexOrder)
{
    for (const QString& word : { u"Ant"_s, u"bee"_s, u"Cat"_s, u"dog"_s })
        addKeyword(word);
    m_keywords->Seek(u">="_s, Variant(u"BEA"_s));
    EXPECT_EQ(m_keywords->Fields(u"KeyText"_s)->Value(), Variant(u"bee"_s));
    m_keywords->Seek(u"<"_s, Variant(u"cat"_s));
    EXPECT_EQ(m_keywords->Fields(u"KeyText"_s)->Value(), Variant(u"bee"_s));
    m_keywords->Seek(u">"_s, Variant(u"dog"_s));
    EXPECT_TRUE(m_keywords->NoMatch());
    m_keywords->MoveFirst();
    EXPECT_EQ(DaoTest::Names(*m_keywords, u"KeyText"_s),
        (QStringList { u"Ant"_s, u"bee"_s, u"Cat"_s, u"dog"_s }));
    m_keywords->SetIndex(u"KeyID"_s);
    m_keywords->Seek(u"="_s, Variant(qint64(3)));
    EXPECT_EQ(m_keywords->Fields(u"KeyText"_s)->Value(), Variant(u"Cat"_s));
}

TEST_F(KeywordTableTest, SeekNeedsATableAndAnIndex)
{
    EXPECT_EQ(
        ErrorNumber([&] { m_keywords->Seek(u"="_s, Variant(u"x"_s)); }), DaoError::NoCurrentIndex);
    EXPECT_EQ(ErrorNumber([&] { m_keywords->SetIndex(u"PrimaryKey"_s); }), DaoError::NotAnIndex);
    auto dynaset = m_database->OpenRecordset(u"SELECT * FROM KeyWords"_s);
    EXPECT_EQ(ErrorNumber([&] { dynaset->Seek(u"="_s, Variant(u"x"_s)); }),
        DaoError::OperationNotSupported);
}

TEST_F(KeywordTableTest, RequiredIndexRefusesANullWord)
{
    m_keywords->AddNew();
    EXPECT_EQ(ErrorNumber([&] { m_keywords->Update(); }), DaoError::IndexRequiresValue);
}

TEST_F(KeywordTableTest, PictureIsStoredInChunksAndReadBackFromOffsetSix)
{
    // A key picture: the file's extension as three UTF-16 characters, then the file's bytes.
    QByteArray file(300000, Qt::Uninitialized);
    for (qsizetype i = 0; i < file.size(); ++i)
        file[i] = static_cast<char>(i * 7 % 251);
    addKeyword(u"Cat"_s);
    m_keywords->Edit();
    const auto picture = m_keywords->Fields(u"KeyPicture"_s);
    picture->AppendChunk(u"jpg"_s);
    for (qsizetype offset = 0; offset < file.size(); offset += 262144)
        picture->AppendChunk(file.mid(offset, 262144));
    m_keywords->Update();
    m_keywords->Seek(u"="_s, Variant(u"cat"_s));
    EXPECT_EQ(picture->FieldSize(), file.size() + 6);
    EXPECT_EQ(picture->GetChunk(0, 6), QByteArray("j\0p\0g\0", 6));
    QByteArray read;
    for (qint64 offset = 6; offset < picture->FieldSize(); offset += 262144)
        read += picture->GetChunk(offset, 262144);
    EXPECT_EQ(read, file);
}

TEST_F(KeywordTableTest, ClosedDatabaseLeavesItsObjectsUnusable)
{
    const auto field = m_keywords->Fields(u"KeyText"_s);
    m_database->Close();
    EXPECT_FALSE(m_keywords->IsOpen());
    EXPECT_EQ(ErrorNumber([&] { field->Value(); }), DaoError::ObjectClosed);
    EXPECT_EQ(ErrorNumber([&] { m_database->TableDefs().Count(); }), DaoError::ObjectClosed);
}

} // namespace
