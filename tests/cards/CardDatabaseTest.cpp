#include "CardTestSupport.h"
#include "cards/DaoProperties.h"

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;
using Bramlet::CardDatabase;
using CardTest::ErrorNumber;
using Runtime::Variant;

namespace {

// The table definitions as the sqlite3 shell's .schema shows them.
QStringList TableSql(const QString& path)
{
    sqlite3* handle = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &handle, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(handle,
        "SELECT sql FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'QSys%' "
        "ORDER BY rowid",
        -1, &statement, nullptr);
    QStringList tables;
    while (sqlite3_step(statement) == SQLITE_ROW)
        tables.append(
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))));
    sqlite3_finalize(statement);
    sqlite3_close(handle);
    return tables;
}

class CardDatabaseTest : public CardTest::CardTestBase
{
protected:
    void SetUp() override
    {
        CardTestBase::SetUp();
        m_path = path(u"class.qnd"_s);
        CardDatabase(m_engine).CreateCardDatabase(m_path, 4);
    }

    QString m_path;
};

TEST_F(CardDatabaseTest, NewFileHasTheDocumentedTablesAndColumnsInOrder)
{
    EXPECT_EQ(TableSql(m_path),
        (QStringList {
            u"CREATE TABLE \"Quorbin_Card\" (\"CardName\" TEXT(30) NOT NULL COLLATE NOCASE "
            u"CHECK (\"CardName\" <> ''), \"FreeText\" LONGTEXT COLLATE NOCASE CHECK "
            u"(\"FreeText\" <> ''), \"Picture\" LONGBINARY, \"Keyword1\" LONG, \"Keyword2\" "
            u"LONG, \"Keyword3\" LONG, \"Keyword4\" LONG, \"Keyword5\" LONG, \"Keyword6\" LONG, "
            u"\"Field1\" TEXT(50) COLLATE NOCASE, \"Field2\" TEXT(50) COLLATE NOCASE, "
            u"\"Field3\" TEXT(50) COLLATE NOCASE, \"Field4\" TEXT(50) COLLATE NOCASE, "
            u"\"Field5\" TEXT(50) COLLATE NOCASE, \"Field6\" TEXT(50) COLLATE NOCASE)"_s,
            u"CREATE TABLE \"KeyWords\" (\"KeyID\" COUNTER, \"KeyText\" TEXT(20) COLLATE NOCASE "
            u"CHECK (\"KeyText\" <> ''), \"KeyPicture\" LONGBINARY)"_s }));
}

TEST_F(CardDatabaseTest, NewFileHasTheDocumentedPropertiesAndIndexes)
{
    CardDatabase cards(m_engine);
    cards.OpenCardDatabase(m_path);
    EXPECT_EQ(cards.Version(), 350);
    EXPECT_EQ(cards.DataBase()->Properties()(u"QBVersion"_s)->Type(), Dao::DataType::Integer);
    auto& card = *cards.MainTableDef();
    EXPECT_EQ(Bramlet::GetDaoProperty(card, u"FormWidth"_s), Variant(qint64(8190)));
    EXPECT_EQ(Bramlet::GetDaoProperty(card, u"FormHeight"_s), Variant(qint64(6600)));
    EXPECT_EQ(card.Properties()(u"ViewType"_s)->Type(), Dao::DataType::Integer);
    EXPECT_EQ(cards.ViewType(), 4);
    const std::pair<QString, int> types[]
        = { { u"CardName"_s, 0 }, { u"FreeText"_s, 1 }, { u"Picture"_s, 2 }, { u"Keyword1"_s, 14 },
              { u"Keyword6"_s, 14 }, { u"Field1"_s, 3 }, { u"Field6"_s, 3 } };
    for (const auto& [name, code] : types)
        EXPECT_EQ(Bramlet::FieldType(*card.Fields(name)), code) << name.toStdString();
    EXPECT_EQ(Bramlet::GetDaoProperty(*card.Fields(u"Field6"_s), u"FieldTop"_s),
        Variant(qint64(3720 + 480 * 5)));
    EXPECT_EQ(card.Fields(u"CardName"_s)->Properties().Count(), 1); // FieldType only
    EXPECT_TRUE(card.Fields(u"Field1"_s)->AllowZeroLength());
    const auto cardId = card.Indexes()(u"CardID"_s);
    EXPECT_TRUE(cardId->Primary() && cardId->Unique() && cardId->Required());
    const auto keywords = cards.DataBase()->TableDefs(u"KeyWords"_s);
    EXPECT_EQ(keywords->Fields(u"KeyID"_s)->Attributes() & Dao::AutoIncrementField,
        Dao::AutoIncrementField);
    const auto keyText = keywords->Indexes()(u"KeyText"_s);
    EXPECT_TRUE(!keyText->Primary() && keyText->Unique() && keyText->Required());
    EXPECT_EQ(cards.DataBase()->TableDefs().Count(), 2);
    EXPECT_EQ(cards.KeywordTable()->Type(), Dao::RecordsetType::Table);
    EXPECT_EQ(cards.MainTable()->RecordCount(), 0);
}

TEST_F(CardDatabaseTest, ExistingFileIsNeverOverwritten)
{
    EXPECT_EQ(ErrorNumber([&] { CardDatabase(m_engine).CreateCardDatabase(m_path, 3); }),
        Dao::DaoError::DatabaseExists);
}

TEST_F(CardDatabaseTest, CardSetFollowsQueriesAndSort)
{
    CardDatabase cards(m_engine);
    cards.OpenCardDatabase(m_path);
    CardTest::AddCard(cards, u"Tiddles"_s, { { u"Field1"_s, u"cat"_s }, { u"Field2"_s, u"b"_s } });
    CardTest::AddCard(cards, u"Rex"_s, { { u"Field1"_s, u"dog"_s }, { u"Field2"_s, u"c"_s } });
    CardTest::AddCard(
        cards, u"Bobcat"_s, { { u"Field1"_s, u"Wild Cat"_s }, { u"Field2"_s, u"a"_s } });
    EXPECT_TRUE(cards.OpenMainRecordSet());
    EXPECT_EQ(CardTest::CardNames(cards), (QStringList { u"Bobcat"_s, u"Rex"_s, u"Tiddles"_s }));
    EXPECT_TRUE(cards.AddQuery(u"Cats"_s, u"Field1 LIKE '*cat*'"_s, 4));
    cards.SetSortField(u"Field2"_s);
    cards.SetSortOrder(CardDatabase::SortDescending);
    cards.OpenMainRecordSet();
    EXPECT_EQ(CardTest::CardNames(cards), (QStringList { u"Tiddles"_s, u"Bobcat"_s }));
    EXPECT_FALSE(cards.AddQuery(u"None"_s, u"Field1 = 'emu'"_s, 4)); // no card matches
    EXPECT_EQ(cards.MainTable()->RecordCount(), 0);
    EXPECT_TRUE(cards.QueryNameExists(u"CATS"_s));
    EXPECT_EQ(cards.SelectedField(), u"Field1"_s);
}

TEST_F(CardDatabaseTest, SavedQueriesComeBackUnapplied)
{
    {
        CardDatabase cards(m_engine);
        cards.OpenCardDatabase(m_path);
        cards.AddQuery(u"Dogs"_s, u"Field1 = 'x'"_s, 4);
        cards.AddQuery(u"Keyword"_s,
            u"(Keyword1 = 12 OR Keyword2 = 12 OR Keyword3 = 12 OR Keyword4 = 12 OR Keyword5 = "
            u"12 OR Keyword6 = 12)"_s,
            3);
        EXPECT_TRUE(cards.SaveQueries());
    }
    CardDatabase cards(m_engine);
    cards.OpenCardDatabase(m_path);
    ASSERT_EQ(cards.Queries().size(), 2u);
    EXPECT_EQ(cards.Queries()[0].SQLQuery, u"Field1 = 'x'"_s);
    EXPECT_EQ(cards.Queries()[0].QueryName, u"Dogs"_s);
    EXPECT_FALSE(cards.Queries()[0].Applied);
    EXPECT_EQ(cards.Queries()[0].QueryType, 0);
    EXPECT_TRUE(cards.Queries()[1].SQLQuery.startsWith(u"(Keyword1 = 12 OR"_s));
    EXPECT_EQ(cards.MainRecordSetSql(), u"SELECT * FROM Quorbin_Card ORDER BY [CardName]"_s);
}

TEST_F(CardDatabaseTest, FieldWithLabelIgnoresCase)
{
    CardDatabase cards(m_engine);
    cards.OpenCardDatabase(m_path);
    Bramlet::SetFieldLabel(*cards.MainTableDef()->Fields(u"Field3"_s), u"Colour"_s);
    cards.OpenMainRecordSet();
    const auto field = cards.FieldWithLabel(u"COLOUR"_s);
    ASSERT_TRUE(field);
    EXPECT_EQ(field->Name(), u"Field3"_s);
    EXPECT_FALSE(cards.FieldWithLabel(u"Size"_s));
    EXPECT_EQ(cards.Counters().FieldCounter, 6);
}

TEST_F(CardDatabaseTest, DuplicateNamesCollideWithoutRegardToCase)
{
    CardDatabase cards(m_engine);
    cards.OpenCardDatabase(m_path);
    CardTest::AddCard(cards, u"Rex"_s);
    EXPECT_EQ(
        ErrorNumber([&] { CardTest::AddCard(cards, u"REX"_s); }), Dao::DaoError::DuplicateValue);
    cards.MainTable()->CancelUpdate();
    EXPECT_EQ(
        ErrorNumber([&] { CardTest::AddCard(cards, u""_s); }), Dao::DaoError::ZeroLengthNotAllowed);
}

TEST_F(CardDatabaseTest, FileHeldExclusivelyElsewhereIsNotOpened)
{
    Dao::DBEngine other;
    other.SetBusyTimeout(50);
    auto holder = other.DefaultWorkspace()->OpenDatabase(m_path, true);
    CardDatabase cards(m_engine);
    EXPECT_EQ(ErrorNumber([&] { cards.OpenCardDatabase(m_path); }), Dao::DaoError::FileInUse);
    EXPECT_FALSE(cards.DataBase());
}

TEST_F(CardDatabaseTest, NewerVersionOpensUnchanged)
{
    {
        Dao::DBEngine engine;
        auto database = engine.DefaultWorkspace()->OpenDatabase(m_path);
        database->Properties()(u"QBVersion"_s)->SetValue(qint64(351));
        database->TableDefs(u"Quorbin_Card"_s)
            ->Properties()(u"FormWidth"_s)
            ->SetValue(qint64(9000));
    }
    CardDatabase cards(m_engine);
    cards.OpenCardDatabase(m_path);
    EXPECT_EQ(cards.Version(), 351);
    EXPECT_EQ(
        Bramlet::GetDaoProperty(*cards.MainTableDef(), u"FormWidth"_s), Variant(qint64(9000)));
}

} // namespace
