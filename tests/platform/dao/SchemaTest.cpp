#include "DaoTestSupport.h"
#include "RowFile.h"
#include "platform/dao/Database.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Dao::DataType;
using Runtime::Variant;

namespace {

// Builds the card file's two tables as a new card database is built: fields appended to a
// new table definition, an index, then the table appended, then properties.
void MakeCardTables(Dao::Database& database)
{
    auto card = database.CreateTableDef(u"Quorbin_Card"_s);
    auto name = card->CreateField(u"CardName"_s, DataType::Text, 30);
    name->SetRequired(true);
    card->Fields().Append(name);
    card->Fields().Append(card->CreateField(u"FreeText"_s, DataType::Memo));
    card->Fields().Append(card->CreateField(u"Picture"_s, DataType::LongBinary));
    for (int i = 1; i <= 6; ++i)
        card->Fields().Append(card->CreateField(u"Keyword"_s + QString::number(i), DataType::Long));
    for (int i = 1; i <= 6; ++i) {
        auto field = card->CreateField(u"Field"_s + QString::number(i), DataType::Text, 50);
        field->SetAllowZeroLength(true);
        card->Fields().Append(field);
    }
    auto cardId = card->CreateIndex(u"CardID"_s);
    cardId->SetPrimary(true);
    cardId->SetUnique(true);
    cardId->SetRequired(true);
    cardId->Fields().Append(cardId->CreateField(u"CardName"_s));
    card->Indexes().Append(cardId);
    database.TableDefs().Append(card);
    card->Properties().Append(card->CreateProperty(u"FormWidth"_s, DataType::Integer, 8190));
    card->Properties().Append(card->CreateProperty(u"FormHeight"_s, DataType::Integer, 6600));
    auto type = card->Fields(u"CardName"_s)->CreateProperty(u"FieldType"_s, DataType::Long, 0);
    card->Fields(u"CardName"_s)->Properties().Append(type);

    DaoTest::MakeKeywordTable(database);

    database.Properties().Append(database.CreateProperty(u"QBVersion"_s, DataType::Integer, 350));
}

class SchemaTest : public DaoTest::DaoTestBase
{
protected:
    void SetUp() override
    {
        DaoTestBase::SetUp();
        m_path = path(u"class.qnd"_s);
        auto database = m_workspace->CreateDatabase(m_path, u";LANGID=0x0409;CP=1252;COUNTRY=0"_s);
        MakeCardTables(*database);
        database->Close();
        m_database = m_workspace->OpenDatabase(m_path);
    }

    QString m_path;
    std::shared_ptr<Dao::Database> m_database;
};

class FieldSchemaTest : public RowFile::RowTest<SchemaTest>
{
};

TEST_P(FieldSchemaTest, DescribesTheField)
{
    const auto field = m_database->TableDefs(row().text("table"))->Fields(row().text("field"));
    EXPECT_EQ(Dao::DataTypeName(field->Type()), row().text("type"));
    EXPECT_EQ(field->Size(), row().whole("size"));
    EXPECT_EQ(field->Required(), row().flag("required"));
    EXPECT_EQ(field->AllowZeroLength(), row().flag("allowZeroLength"));
    EXPECT_EQ(field->OrdinalPosition(), row().whole("ordinal"));
    EXPECT_EQ((field->Attributes() & Dao::AutoIncrementField) != 0, row().flag("autoIncrement"));
}

INSTANTIATE_TEST_SUITE_P(
    CardFile, FieldSchemaTest, RowFile::In("platform/dao/cardFileFields.rows"), RowFile::Named());

TEST_F(SchemaTest, RecordsetFieldsShowTheColumnsProperties)
{
    auto cards = m_database->OpenRecordset(u"SELECT * FROM Quorbin_Card ORDER BY [CardName]"_s);
    const auto name = cards->Fields(u"CardName"_s);
    EXPECT_EQ(name->Properties()(u"FieldType"_s)->Value(), Variant(qint64(0)));
    name->Properties()(u"FieldType"_s)->SetValue(u"14"_s);
    EXPECT_EQ(m_database->TableDefs(u"Quorbin_Card"_s)
                  ->Fields(u"CardName"_s)
                  ->Properties()(u"FieldType"_s)
                  ->Value(),
        Variant(qint64(14)));
}

TEST_F(SchemaTest, MissingPropertyAndBadValuesFailWithTheEngineNumbers)
{
    const auto card = m_database->TableDefs(u"Quorbin_Card"_s);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { card->Properties()(u"FieldLabel"_s); }),
        Dao::DaoError::PropertyNotFound);
    EXPECT_EQ(DaoTest::ErrorNumber([&] {
        card->Properties().Append(card->CreateProperty(u"formwidth"_s, DataType::Long, 1));
    }),
        Dao::DaoError::NameExistsInCollection);
    EXPECT_EQ(
        DaoTest::ErrorNumber([&] { card->Properties()(u"FormWidth"_s)->SetValue(u"wide"_s); }),
        Dao::DaoError::ConversionError);
    EXPECT_EQ(
        DaoTest::ErrorNumber([&] { card->Properties()(u"FormWidth"_s)->SetValue(qint64(70000)); }),
        Dao::DaoError::NumericOverflow);
    EXPECT_EQ(card->Properties()(u"FormWidth"_s)->Value(), Variant(qint64(8190)));
}

TEST_F(SchemaTest, PropertyOfEveryTypeReadsBackAsWritten)
{
    struct Case
    {
        QString name;
        DataType type;
        Variant value;
        Variant read;
    };
    const Case cases[] = {
        { u"LabelLeft"_s, DataType::Integer, qint64(120), qint64(120) },
        { u"FieldTop"_s, DataType::Long, 3720.0, qint64(3720) },
        { u"Ratio"_s, DataType::Single, 0.5, 0.5 },
        { u"Scale"_s, DataType::Double, 0.1, 0.1 },
        { u"FieldLabel"_s, DataType::Text, u"Field Label"_s, u"Field Label"_s },
        { u"FieldVisible"_s, DataType::Boolean, true, true },
        { u"Stamp"_s, DataType::Date, Variant::date(38051.5), Variant::date(38051.5) },
        { u"Fee"_s, DataType::Currency, 1.23456, Variant::currency(1.2346) },
        { u"Blob"_s, DataType::LongBinary, QByteArray("\0\1\2", 3), QByteArray("\0\1\2", 3) },
    };
    const auto field = m_database->TableDefs(u"Quorbin_Card"_s)->Fields(u"Field1"_s);
    for (const Case& check : cases)
        field->Properties().Append(field->CreateProperty(check.name, check.type, check.value));
    m_database->Close();
    m_database = m_workspace->OpenDatabase(m_path);
    const auto reopened = m_database->TableDefs(u"Quorbin_Card"_s)->Fields(u"Field1"_s);
    ASSERT_EQ(reopened->Properties().Count(), static_cast<int>(std::size(cases)));
    for (const Case& check : cases) {
        const auto property = reopened->Properties()(check.name);
        EXPECT_EQ(property->Type(), check.type) << check.name.toStdString();
        EXPECT_EQ(property->Value(), check.read) << check.name.toStdString();
    }
}

TEST_F(SchemaTest, RenamingAFieldKeepsItsPropertiesAndValues)
{
    const auto card = m_database->TableDefs(u"Quorbin_Card"_s);
    const auto field = card->Fields(u"Field2"_s);
    field->Properties().Append(field->CreateProperty(u"FieldLabel"_s, DataType::Text, u"Age"_s));
    auto cards = m_database->OpenRecordset(u"Quorbin_Card"_s);
    cards->AddNew();
    cards->Fields(u"CardName"_s)->SetValue(u"Rex"_s);
    cards->Fields(u"Field2"_s)->SetValue(u"3"_s);
    cards->Update();
    cards->Close();
    field->SetName(u"Field9"_s);
    const auto renamed = card->Fields(u"Field9"_s);
    EXPECT_EQ(renamed->OrdinalPosition(), 10);
    EXPECT_EQ(renamed->Properties()(u"FieldLabel"_s)->Value(), Variant(u"Age"_s));
    EXPECT_FALSE(card->Fields().Contains(u"Field2"_s));
    auto reread = m_database->OpenRecordset(u"SELECT Field9 FROM Quorbin_Card"_s);
    EXPECT_EQ(reread->Fields(0)->Value(), Variant(u"3"_s));
}

TEST_F(SchemaTest, MovingAFieldKeepsEveryRow)
{
    auto cards = m_database->OpenRecordset(u"Quorbin_Card"_s);
    for (const QString& name : { u"Rex"_s, u"Tiddles"_s }) {
        cards->AddNew();
        cards->Fields(u"CardName"_s)->SetValue(name);
        cards->Fields(u"Field6"_s)->SetValue(name + u"!"_s);
        cards->Update();
    }
    cards->Close();
    const auto card = m_database->TableDefs(u"Quorbin_Card"_s);
    card->Fields(u"Field6"_s)->SetOrdinalPosition(3);
    QStringList order;
    for (const auto& field : card->Fields().items())
        order.append(field->Name());
    EXPECT_EQ(order.mid(2, 3), (QStringList { u"Picture"_s, u"Field6"_s, u"Keyword1"_s }));
    EXPECT_EQ(order.size(), 15);
    auto reread = m_database->OpenRecordset(u"SELECT * FROM Quorbin_Card ORDER BY CardName"_s);
    EXPECT_EQ(DaoTest::Names(*reread, u"Field6"_s), (QStringList { u"Rex!"_s, u"Tiddles!"_s }));
    EXPECT_EQ(reread->Fields(3)->Name(), u"Field6"_s);
    // The primary key still holds after the table was written again.
    auto again = m_database->OpenRecordset(u"Quorbin_Card"_s);
    again->AddNew();
    again->Fields(u"CardName"_s)->SetValue(u"REX"_s);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { again->Update(); }), Dao::DaoError::DuplicateValue);
}

TEST_F(SchemaTest, AllowZeroLengthAndRequiredCanBeChangedLater)
{
    const auto field = m_database->TableDefs(u"Quorbin_Card"_s)->Fields(u"FreeText"_s);
    field->SetAllowZeroLength(true);
    field->SetRequired(true);
    EXPECT_TRUE(field->AllowZeroLength());
    EXPECT_TRUE(field->Required());
    auto cards = m_database->OpenRecordset(u"Quorbin_Card"_s);
    cards->AddNew();
    cards->Fields(u"CardName"_s)->SetValue(u"Rex"_s);
    cards->Fields(u"FreeText"_s)->SetValue(u""_s);
    cards->Update();
    cards->AddNew();
    cards->Fields(u"CardName"_s)->SetValue(u"Tiddles"_s);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { cards->Update(); }), Dao::DaoError::RequiredFieldNull);
}

TEST_F(SchemaTest, TypeOfAFieldInTheFileCannotChange)
{
    const auto field = m_database->TableDefs(u"Quorbin_Card"_s)->Fields(u"Field1"_s);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { field->SetType(DataType::Long); }),
        Dao::DaoError::InvalidOperation);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { field->SetSize(10); }), Dao::DaoError::InvalidOperation);
}

TEST_F(SchemaTest, FieldsAddedAndDeletedChangeTheFile)
{
    const auto card = m_database->TableDefs(u"Quorbin_Card"_s);
    auto url = card->CreateField(u"URL1"_s, DataType::Text, 0);
    url->Properties().Append(url->CreateProperty(u"FieldType"_s, DataType::Long, 12));
    card->Fields().Append(url);
    EXPECT_EQ(card->Fields(u"URL1"_s)->Size(), 255);
    EXPECT_EQ(card->Fields(u"URL1"_s)->Properties()(u"FieldType"_s)->Value(), Variant(qint64(12)));
    EXPECT_EQ(card->Fields().Count(), 16);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { card->Fields().Append(url); }),
        Dao::DaoError::NameExistsInCollection);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { card->Fields().Delete(u"CardName"_s); }),
        Dao::DaoError::FieldInIndex);
    card->Fields().Delete(u"URL1"_s);
    EXPECT_EQ(card->Fields().Count(), 15);
    // A new column of that name starts without the old one's properties.
    card->Fields().Append(card->CreateField(u"URL1"_s, DataType::Text, 0));
    EXPECT_EQ(card->Fields(u"URL1"_s)->Properties().Count(), 0);
}

TEST_F(SchemaTest, AppendingTablesAndIndexesTwiceFails)
{
    auto again = m_database->CreateTableDef(u"quorbin_card"_s);
    again->Fields().Append(again->CreateField(u"X"_s, DataType::Long));
    EXPECT_EQ(DaoTest::ErrorNumber([&] { m_database->TableDefs().Append(again); }),
        Dao::DaoError::NameExistsInCollection);
    auto empty = m_database->CreateTableDef(u"Empty"_s);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { m_database->TableDefs().Append(empty); }),
        Dao::DaoError::NoFieldsDefined);
    const auto keywords = m_database->TableDefs(u"KeyWords"_s);
    auto second = keywords->CreateIndex(u"Other"_s);
    second->SetPrimary(true);
    second->Fields().Append(second->CreateField(u"KeyText"_s));
    EXPECT_EQ(DaoTest::ErrorNumber([&] { keywords->Indexes().Append(second); }),
        Dao::DaoError::PrimaryKeyExists);
}

TEST_F(SchemaTest, QueryDefinitionsReadBackWithSemicolonAndLineBreak)
{
    m_database->CreateQueryDef(u"Dogs"_s, u"SELECT * FROM Quorbin_Card WHERE Field1 = 'x'"_s);
    m_database->CreateQueryDef(u"Cats"_s, u"SELECT * FROM Quorbin_Card WHERE Field1 = 'y';"_s);
    EXPECT_EQ(DaoTest::ErrorNumber(
                  [&] { m_database->CreateQueryDef(u"DOGS"_s, u"SELECT * FROM Quorbin_Card"_s); }),
        Dao::DaoError::ObjectExists);
    EXPECT_EQ(DaoTest::ErrorNumber([&] { m_database->CreateQueryDef(u"Bad"_s, u"SHOW Cards"_s); }),
        Dao::DaoError::InvalidStatement);
    m_database->Close();
    m_database = m_workspace->OpenDatabase(m_path);
    const auto queries = m_database->QueryDefs().items();
    ASSERT_EQ(queries.size(), 2u);
    EXPECT_EQ(queries[0]->Name(), u"Dogs"_s);
    EXPECT_EQ(queries[0]->SQL(), u"SELECT * FROM Quorbin_Card WHERE Field1 = 'x';\r\n"_s);
    EXPECT_EQ(queries[1]->SQL(), u"SELECT * FROM Quorbin_Card WHERE Field1 = 'y';\r\n"_s);
    while (m_database->QueryDefs().Count() > 0)
        m_database->QueryDefs().Delete(m_database->QueryDefs()(0)->Name());
    EXPECT_EQ(m_database->QueryDefs().Count(), 0);
}

TEST_F(SchemaTest, SavedQueryOpensByName)
{
    auto cards = m_database->OpenRecordset(u"Quorbin_Card"_s);
    for (const QString& name : { u"Rex"_s, u"Tiddles"_s }) {
        cards->AddNew();
        cards->Fields(u"CardName"_s)->SetValue(name);
        cards->Update();
    }
    m_database->CreateQueryDef(
        u"T cards"_s, u"SELECT * FROM Quorbin_Card WHERE CardName LIKE 't*'"_s);
    auto found = m_database->OpenRecordset(u"T cards"_s);
    EXPECT_EQ(DaoTest::Names(*found), QStringList { u"Tiddles"_s });
}

} // namespace
