#include "DaoTestSupport.h"
#include "platform/dao/Database.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Dao::DataType;
using Runtime::Variant;

namespace {

// A text column of the pets holding what pupils type: the values a change of the column's
// type must convert.
class FieldTypeChangeTest : public DaoTest::DaoTestBase
{
protected:
    void SetUp() override
    {
        DaoTestBase::SetUp();
        m_path = path(u"pets.qnd"_s);
        auto database = m_workspace->CreateDatabase(m_path);
        DaoTest::MakePets(*database);
        const QList<std::pair<QString, QString>> typed = {
            { u"Rex"_s, u"12"_s },
            { u"Tiddles"_s, u"abc"_s },
            { u"Bubbles"_s, u"007"_s },
            { u"Bobcat"_s, u""_s },
            { u"Cat[1]"_s, u"2.5"_s },
        };
        for (const auto& [name, text] : typed) {
            database->Execute(
                u"UPDATE Pets SET Field1 = '"_s + text + u"' WHERE CardName = '"_s + name + u"'"_s);
        }
        database->Execute(u"UPDATE Pets SET Field1 = Null WHERE CardName = 'R2D2'"_s);
        const auto field = database->TableDefs(u"Pets"_s)->Fields(u"Field1"_s);
        field->Properties().Append(
            field->CreateProperty(u"FieldLabel"_s, DataType::Text, u"Age"_s));
        field->Properties().Append(field->CreateProperty(u"FieldType"_s, DataType::Long, 3));
        database->Close();
    }

    // Values of a column by card, in name order.
    QList<Variant> values(Dao::Database& database, const QString& column)
    {
        QList<Variant> result;
        auto pets = database.OpenRecordset(u"SELECT * FROM Pets ORDER BY CardName"_s);
        while (!pets->IsEOF()) {
            result.append(pets->Fields(column)->Value());
            pets->MoveNext();
        }
        return result;
    }

    QString m_path;
};

TEST_F(FieldTypeChangeTest, TextToWholeNumberKeepsLabelPlaceAndConvertibleValues)
{
    // The field editor's change of type, with the file held exclusively.
    auto database = m_workspace->OpenDatabase(m_path, true);
    const int place = database->TableDefs(u"Pets"_s)->Fields(u"Field1"_s)->OrdinalPosition();
    auto temporary = database->CreateQueryDef(QString(), u"SELECT * FROM Pets"_s);
    temporary->SetSQL(u"ALTER TABLE [Pets] ADD COLUMN AlterTempField LONG"_s);
    temporary->Execute();
    temporary->SetSQL(u"UPDATE DISTINCTROW [Pets] SET AlterTempField = [Field1]"_s);
    temporary->Execute();
    EXPECT_EQ(temporary->RecordsAffected(), 6);
    database->Close();
    database = m_workspace->OpenDatabase(m_path, true);
    const auto table = database->TableDefs(u"Pets"_s);
    const auto old = table->Fields(u"Field1"_s);
    const auto added = table->Fields(u"AlterTempField"_s);
    for (const auto& property : old->Properties().items())
        added->Properties().Append(
            added->CreateProperty(property->Name(), property->Type(), property->Value()));
    added->Properties()(u"FieldType"_s)->SetValue(qint64(4));
    table->Fields().Delete(u"Field1"_s);
    added->SetName(u"Field1"_s);
    added->SetOrdinalPosition(place);
    database->Close();

    database = m_workspace->OpenDatabase(m_path);
    const auto changed = database->TableDefs(u"Pets"_s)->Fields(u"Field1"_s);
    EXPECT_EQ(changed->Type(), DataType::Long);
    EXPECT_EQ(changed->OrdinalPosition(), place);
    EXPECT_EQ(changed->Properties()(u"FieldLabel"_s)->Value(), Variant(u"Age"_s));
    EXPECT_EQ(changed->Properties()(u"FieldType"_s)->Value(), Variant(qint64(4)));
    // Bobcat "", Bubbles "007", Cat[1] "2.5", R2D2 Null, Rex "12", Tiddles "abc".
    EXPECT_EQ(values(*database, u"Field1"_s),
        (QList<Variant> {
            Variant::null(), qint64(7), qint64(2), Variant::null(), qint64(12), Variant::null() }));
    EXPECT_EQ(database->TableDefs(u"Pets"_s)->Fields().Count(), 8);
}

// An UPDATE writing the text column's values into a new column of each type.
struct UpdateRow
{
    const char* name;
    QString typeWord;
    DataType type;
    QList<Variant> stored; // Bobcat, Bubbles, Cat[1], R2D2, Rex, Tiddles
};

class UpdateConversionTest : public FieldTypeChangeTest,
                             public testing::WithParamInterface<UpdateRow>
{
};

TEST_P(UpdateConversionTest, ValuesTakeTheNewColumnsType)
{
    const UpdateRow& row = GetParam();
    auto database = m_workspace->OpenDatabase(m_path);
    database->Execute(u"ALTER TABLE Pets ADD COLUMN Converted "_s + row.typeWord);
    database->Execute(u"UPDATE Pets SET Converted = Field1"_s);
    EXPECT_EQ(database->TableDefs(u"Pets"_s)->Fields(u"Converted"_s)->Type(), row.type);
    EXPECT_EQ(values(*database, u"Converted"_s), row.stored);
}

const Variant Null = Variant::null();

INSTANTIATE_TEST_SUITE_P(Types, UpdateConversionTest,
    testing::Values(
        UpdateRow { "real", u"DOUBLE"_s, DataType::Double, { Null, 7.0, 2.5, Null, 12.0, Null } },
        UpdateRow { "currency", u"CURRENCY"_s, DataType::Currency,
            { Null, Variant::currency(7), Variant::currency(2.5), Null, Variant::currency(12),
                Null } },
        UpdateRow { "date", u"DATETIME"_s, DataType::Date,
            { Null, Variant::date(7), Variant::date(2.5), Null, Variant::date(12), Null } },
        UpdateRow {
            "onOff", u"BOOLEAN"_s, DataType::Boolean, { Null, true, true, Null, true, Null } },
        UpdateRow {
            "shortText", u"TEXT(2)"_s, DataType::Text, { Null, Null, Null, Null, u"12"_s, Null } },
        UpdateRow { "memoKeepsText", u"LONGTEXT"_s, DataType::Memo,
            { Null, u"007"_s, u"2.5"_s, Null, u"12"_s, u"abc"_s } }),
    [](const testing::TestParamInfo<UpdateRow>& info) { return std::string(info.param.name); });

} // namespace
