#include "cards/CardFields.h"

#include "TableRows.h"
#include "cards/DaoProperties.h"
#include "platform/dao/DBEngine.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace {

// What the field editor writes and stores for each type code.
struct TypeRow
{
    const char* name;
    int code;
    QString typeWord;
    QString format;
};

class FieldTypeCodeTest : public testing::TestWithParam<TypeRow>
{
};

TEST_P(FieldTypeCodeTest, GivesTheTypeWordAndFormat)
{
    const TypeRow& row = GetParam();
    EXPECT_EQ(Bramlet::SqlTypeWord(row.code), row.typeWord);
    EXPECT_EQ(Bramlet::DefaultFieldFormat(row.code), row.format);
}

INSTANTIATE_TEST_SUITE_P(Codes, FieldTypeCodeTest,
    testing::Values(TypeRow { "text", 3, u"TEXT"_s, {} },
        TypeRow { "wholeNumber", 4, u"LONG"_s, u"General Number"_s },
        TypeRow { "decimal", 5, u"DOUBLE"_s, u"Fixed"_s },
        TypeRow { "currency", 6, u"CURRENCY"_s, u"Currency"_s },
        TypeRow { "date", 7, u"DATETIME"_s, u"dd MMM yyyy"_s },
        TypeRow { "dateAndTime", 9, u"DATETIME"_s, u"dd MMM yyyy HH:mm"_s },
        TypeRow { "dropDown", 11, u"TEXT"_s, {} }, TypeRow { "keyword", 14, QString(), {} }),
    TestRows::Named());

struct CounterRow
{
    const char* name;
    QStringList columns;
    int fields;
    int urls;
    int resources;
};

class ColumnCounterTest : public testing::TestWithParam<CounterRow>
{
};

TEST_P(ColumnCounterTest, FindsTheHighestNumbers)
{
    const CounterRow& row = GetParam();
    const Bramlet::ColumnCounters counters = Bramlet::CountColumns(row.columns);
    EXPECT_EQ(counters.FieldCounter, row.fields);
    EXPECT_EQ(counters.UrlCounter, row.urls);
    EXPECT_EQ(counters.ResourceCounter, row.resources);
}

INSTANTIATE_TEST_SUITE_P(Names, ColumnCounterTest,
    testing::Values(
        CounterRow { "newFile",
            { u"CardName"_s, u"FreeText"_s, u"Picture"_s, u"Keyword1"_s, u"Field1"_s, u"Field6"_s },
            6, 0, 0 },
        CounterRow {
            "gapsAndOrder", { u"Field12"_s, u"Field3"_s, u"URL2"_s, u"URL10"_s }, 12, 10, 0 },
        CounterRow { "withoutRegardToCase", { u"field7"_s, u"url1"_s, u"RESOURCE4"_s }, 7, 1, 4 },
        CounterRow { "oldSingleColumns", { u"URL"_s, u"Resource"_s }, 0, 0, 0 },
        CounterRow { "alterTempFieldIsNoField", { u"AlterTempField"_s, u"Field2"_s }, 2, 0, 0 }),
    TestRows::Named());

struct PropertyTypeRow
{
    const char* name;
    Variant value;
    Dao::DataType type;
};

class PropertyTypeTest : public testing::TestWithParam<PropertyTypeRow>
{
};

TEST_P(PropertyTypeTest, FollowsTheFirstValue)
{
    EXPECT_EQ(Bramlet::PropertyTypeFor(GetParam().value), GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Values, PropertyTypeTest,
    testing::Values(PropertyTypeRow { "sixteenBits", qint64(8190), Dao::DataType::Integer },
        PropertyTypeRow { "beyondSixteenBits", qint64(32768), Dao::DataType::Long },
        PropertyTypeRow { "real", 0.5, Dao::DataType::Double },
        PropertyTypeRow { "text", u"Field Label"_s, Dao::DataType::Text },
        PropertyTypeRow { "picture", QByteArray("x"), Dao::DataType::LongBinary }),
    TestRows::Named());

class DaoPropertyTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        m_database = m_engine.DefaultWorkspace()->CreateDatabase(m_folder.filePath(u"f.qnd"_s));
        auto table = m_database->CreateTableDef(u"T"_s);
        table->Fields().Append(table->CreateField(u"Field1"_s, Dao::DataType::Text, 50));
        m_database->TableDefs().Append(table);
        m_field = m_database->TableDefs(u"T"_s)->Fields(u"Field1"_s);
    }

    QTemporaryDir m_folder;
    Dao::DBEngine m_engine;
    std::shared_ptr<Dao::Database> m_database;
    std::shared_ptr<Dao::Field> m_field;
};

TEST_F(DaoPropertyTest, MissingPropertyReadsEmptyAndEmptyTextCreatesNone)
{
    EXPECT_TRUE(Bramlet::GetDaoProperty(*m_field, u"FieldLabel"_s).isEmpty());
    EXPECT_EQ(Bramlet::FieldType(*m_field), 0);
    Bramlet::SetDaoProperty(*m_field, u"FieldFormat"_s, u""_s);
    EXPECT_EQ(m_field->Properties().Count(), 0);
    Bramlet::SetFieldFormat(*m_field, u"Fixed"_s);
    Bramlet::SetFieldFormat(*m_field, u""_s); // an existing one takes the empty text
    EXPECT_EQ(Bramlet::FieldFormat(*m_field), QString());
    EXPECT_EQ(m_field->Properties().Count(), 1);
}

TEST_F(DaoPropertyTest, PropertyKeepsTheTypeOfItsFirstValue)
{
    Bramlet::SetDaoProperty(*m_field, u"FieldTop"_s, qint64(3720));
    Bramlet::SetDaoProperty(*m_field, u"FieldTop"_s, 4200.4);
    const auto property = m_field->Properties()(u"FieldTop"_s);
    EXPECT_EQ(property->Type(), Dao::DataType::Integer);
    EXPECT_EQ(property->Value(), Variant(qint64(4200)));
}

TEST_F(DaoPropertyTest, FieldTypeIsALong)
{
    Bramlet::SetFieldType(*m_field, Bramlet::DropDownField);
    EXPECT_EQ(m_field->Properties()(u"FieldType"_s)->Type(), Dao::DataType::Long);
    EXPECT_EQ(Bramlet::FieldType(*m_field), 11);
    Bramlet::SetFieldChoices(*m_field, u"Red,Green,Blue"_s);
    EXPECT_EQ(Bramlet::FieldChoices(*m_field), u"Red,Green,Blue"_s);
}

TEST_F(DaoPropertyTest, DefaultLayoutPlacesTheField)
{
    Bramlet::SetDefaultFieldLayout(*m_field, 2);
    const std::pair<QString, Variant> expected[] = {
        { u"FieldLabel"_s, u"Field Label"_s },
        { u"FieldType"_s, qint64(3) },
        { u"LabelLeft"_s, qint64(120) },
        { u"LabelTop"_s, qint64(3780 + 960) },
        { u"LabelWidth"_s, qint64(2655) },
        { u"LabelHeight"_s, qint64(255) },
        { u"FieldLeft"_s, qint64(2880) },
        { u"FieldTop"_s, qint64(3720 + 960) },
        { u"FieldWidth"_s, qint64(4935) },
        { u"FieldHeight"_s, qint64(375) },
        { u"FieldVisible"_s, true },
    };
    for (const auto& [name, value] : expected)
        EXPECT_EQ(Bramlet::GetDaoProperty(*m_field, name), value) << name.toStdString();
}

} // namespace
