#include "DaoTestSupport.h"

#include "platform/runtime/Variant.h"

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace DaoTest {

void MakePets(Dao::Database& database)
{
    auto table = database.CreateTableDef(u"Pets"_s);
    auto name = table->CreateField(u"CardName"_s, Dao::DataType::Text, 30);
    name->SetRequired(true);
    table->Fields().Append(name);
    auto kind = table->CreateField(u"Field1"_s, Dao::DataType::Text, 50);
    kind->SetAllowZeroLength(true);
    table->Fields().Append(kind);
    table->Fields().Append(table->CreateField(u"Field4"_s, Dao::DataType::Long));
    table->Fields().Append(table->CreateField(u"Field5"_s, Dao::DataType::Date));
    table->Fields().Append(table->CreateField(u"Field6"_s, Dao::DataType::Currency));
    table->Fields().Append(table->CreateField(u"Field7"_s, Dao::DataType::Boolean));
    table->Fields().Append(table->CreateField(u"Keyword1"_s, Dao::DataType::Long));
    table->Fields().Append(table->CreateField(u"Picture"_s, Dao::DataType::LongBinary));
    auto index = table->CreateIndex(u"CardID"_s);
    index->SetPrimary(true);
    index->SetUnique(true);
    index->SetRequired(true);
    index->Fields().Append(index->CreateField(u"CardName"_s));
    table->Indexes().Append(index);
    database.TableDefs().Append(table);

    struct Pet
    {
        QString name;
        Variant kind;
        Variant age;
        Variant born;
        Variant cost;
        Variant vaccinated;
        Variant keyword;
    };
    const Variant null = Variant::null();
    const Pet pets[] = {
        { u"Rex"_s, u"Dog"_s, 3, Variant::date(38051), Variant::currency(12.5), true, 12 },
        { u"Tiddles"_s, u"cat"_s, 7, Variant::date(36525), Variant::currency(3.25), false, 15 },
        { u"Bubbles"_s, u"Goldfish"_s, 1, Variant::date(32874), Variant::currency(0), null, null },
        { u"Bobcat"_s, u"Wild cat"_s, 9, Variant::date(38052), Variant::currency(100), false, 12 },
        { u"R2D2"_s, u"Robot"_s, null, null, null, true, null },
        { u"Cat[1]"_s, null, 2, Variant::date(38051.75), Variant::currency(1.5), true, 15 },
    };
    auto recordset = database.OpenRecordset(u"Pets"_s);
    for (const Pet& pet : pets) {
        recordset->AddNew();
        recordset->Fields(u"CardName"_s)->SetValue(pet.name);
        recordset->Fields(u"Field1"_s)->SetValue(pet.kind);
        recordset->Fields(u"Field4"_s)->SetValue(pet.age);
        recordset->Fields(u"Field5"_s)->SetValue(pet.born);
        recordset->Fields(u"Field6"_s)->SetValue(pet.cost);
        recordset->Fields(u"Field7"_s)->SetValue(pet.vaccinated);
        recordset->Fields(u"Keyword1"_s)->SetValue(pet.keyword);
        recordset->Update();
    }
    recordset->Close();
}

void MakeKeywordTable(Dao::Database& database)
{
    auto keywords = database.CreateTableDef(u"KeyWords"_s);
    auto keyId = keywords->CreateField(u"KeyID"_s, Dao::DataType::Long);
    keyId->SetAttributes(Dao::AutoIncrementField);
    keywords->Fields().Append(keyId);
    keywords->Fields().Append(keywords->CreateField(u"KeyText"_s, Dao::DataType::Text, 20));
    keywords->Fields().Append(keywords->CreateField(u"KeyPicture"_s, Dao::DataType::LongBinary));
    auto byId = keywords->CreateIndex(u"KeyID"_s);
    byId->SetPrimary(true);
    byId->Fields().Append(byId->CreateField(u"KeyID"_s));
    keywords->Indexes().Append(byId);
    auto byText = keywords->CreateIndex(u"KeyText"_s);
    byText->SetUnique(true);
    byText->SetRequired(true);
    byText->Fields().Append(byText->CreateField(u"KeyText"_s));
    keywords->Indexes().Append(byText);
    database.TableDefs().Append(keywords);
}

QStringList Names(Dao::Recordset& recordset, const QString& field)
{
    QStringList names;
    if (recordset.RecordCount() == 0)
        return names;
    recordset.MoveFirst();
    while (!recordset.IsEOF()) {
        names.append(recordset.Fields(field)->Value().text());
        recordset.MoveNext();
    }
    return names;
}

} // namespace DaoTest
