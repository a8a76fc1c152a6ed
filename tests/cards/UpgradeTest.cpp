#include "CardTestSupport.h"
#include "cards/CardCompaction.h"
#include "cards/DaoProperties.h"

using namespace Qt::Literals::StringLiterals;
using Bramlet::CardDatabase;
using Dao::DataType;
using Runtime::Variant;

namespace {

// A card file as the schema before 350 made it: field labels on the table definition,
// single URL and Resource columns, no layout or type properties, no QBVersion.
void MakeOldCardFile(Dao::DBEngine& engine, const QString& path)
{
    auto database = engine.DefaultWorkspace()->CreateDatabase(path);
    auto card = database->CreateTableDef(u"Quorbin_Card"_s);
    auto name = card->CreateField(u"CardName"_s, DataType::Text, 30);
    name->SetRequired(true);
    card->Fields().Append(name);
    card->Fields().Append(card->CreateField(u"FreeText"_s, DataType::Memo));
    card->Fields().Append(card->CreateField(u"Picture"_s, DataType::LongBinary));
    for (int i = 1; i <= 6; ++i)
        card->Fields().Append(card->CreateField(u"Keyword"_s + QString::number(i), DataType::Long));
    card->Fields().Append(card->CreateField(u"Field1"_s, DataType::Text, 50));
    card->Fields().Append(card->CreateField(u"Field2"_s, DataType::Long));
    card->Fields().Append(card->CreateField(u"Field3"_s, DataType::Double));
    card->Fields().Append(card->CreateField(u"Field4"_s, DataType::Currency));
    card->Fields().Append(card->CreateField(u"Field5"_s, DataType::Text, 50));
    card->Fields().Append(card->CreateField(u"URL"_s, DataType::Text, 255));
    card->Fields().Append(card->CreateField(u"Resource"_s, DataType::Text, 255));
    auto index = card->CreateIndex(u"CardID"_s);
    index->SetPrimary(true);
    index->Fields().Append(index->CreateField(u"CardName"_s));
    card->Indexes().Append(index);
    database->TableDefs().Append(card);
    const QString labels[] = { u"Name of pet"_s, u"Age"_s, u"Weight"_s, u"Cost"_s };
    for (int i = 0; i < 4; ++i) {
        card->Properties().Append(card->CreateProperty(
            u"FieldLabel"_s + QString::number(i + 1), DataType::Text, labels[i]));
    }
    auto keywords = database->CreateTableDef(u"KeyWords"_s);
    auto keyId = keywords->CreateField(u"KeyID"_s, DataType::Long);
    keyId->SetAttributes(Dao::AutoIncrementField);
    keywords->Fields().Append(keyId);
    keywords->Fields().Append(keywords->CreateField(u"KeyText"_s, DataType::Text, 20));
    keywords->Fields().Append(keywords->CreateField(u"KeyPicture"_s, DataType::LongBinary));
    database->TableDefs().Append(keywords);
    auto cards = database->OpenRecordset(u"Quorbin_Card"_s);
    for (const QString& pet : { u"Rex"_s, u"Tiddles"_s }) {
        cards->AddNew();
        cards->Fields(u"CardName"_s)->SetValue(pet);
        cards->Fields(u"Field3"_s)->SetValue(4.5);
        cards->Update();
    }
    database->Close();
}

class UpgradeTest : public CardTest::CardTestBase
{
protected:
    void SetUp() override
    {
        CardTestBase::SetUp();
        m_path = path(u"old.qnd"_s);
        MakeOldCardFile(m_engine, m_path);
    }

    // Opens the old file, recording the compaction the upgrade asks for and doing it.
    void openUpgraded(CardDatabase*& cards)
    {
        m_cards = std::make_unique<CardDatabase>(m_engine, [this](const QString& file) {
            m_compacted.append(file);
            Bramlet::CompactCardDatabase(m_engine, file, path(u"Quorbin.tmp"_s));
        });
        m_cards->OpenCardDatabase(m_path);
        cards = m_cards.get();
    }

    Variant property(const QString& field, const QString& name)
    {
        return Bramlet::GetDaoProperty(*m_cards->MainTableDef()->Fields(field), name);
    }

    QString m_path;
    QStringList m_compacted;
    std::unique_ptr<CardDatabase> m_cards;
};

TEST_F(UpgradeTest, MissingVersionIsUpgradedCompactedAndOpened)
{
    CardDatabase* cards = nullptr;
    openUpgraded(cards);
    EXPECT_EQ(cards->Version(), 350);
    EXPECT_EQ(m_compacted, QStringList { m_path });
    EXPECT_EQ(CardTest::CardNames(*cards), (QStringList { u"Rex"_s, u"Tiddles"_s }));
    EXPECT_EQ(cards->DataBase()->Properties()(u"QBVersion"_s)->Value(), Variant(qint64(350)));
    EXPECT_EQ(
        Bramlet::GetDaoProperty(*cards->MainTableDef(), u"FormWidth"_s), Variant(qint64(8190)));
    EXPECT_FALSE(QFile::exists(path(u"Quorbin.tmp"_s)));
}

// Each column after the upgrade: its type code, label and where the layout put it.
struct UpgradedRow
{
    const char* name;
    QString field;
    int type;
    Variant label;
    Variant left;
    Variant top;
};

class UpgradedColumnTest : public UpgradeTest, public testing::WithParamInterface<UpgradedRow>
{
};

TEST_P(UpgradedColumnTest, CarriesItsTypeLabelAndPlace)
{
    const UpgradedRow& row = GetParam();
    CardDatabase* cards = nullptr;
    openUpgraded(cards);
    EXPECT_EQ(Bramlet::FieldType(*cards->MainTableDef()->Fields(row.field)), row.type);
    EXPECT_EQ(property(row.field, u"FieldLabel"_s), row.label);
    EXPECT_EQ(property(row.field, u"FieldLeft"_s), row.left);
    EXPECT_EQ(property(row.field, u"FieldTop"_s), row.top);
}

const Variant None;

INSTANTIATE_TEST_SUITE_P(Columns, UpgradedColumnTest,
    testing::Values(UpgradedRow { "cardName", u"CardName"_s, 0, None, None, None },
        UpgradedRow { "keyword", u"Keyword4"_s, 14, None, None, None },
        UpgradedRow { "text", u"Field1"_s, 3, u"Name of pet"_s, qint64(2880), qint64(3720) },
        UpgradedRow { "long", u"Field2"_s, 4, u"Age"_s, qint64(2880), qint64(4200) },
        UpgradedRow { "double", u"Field3"_s, 5, u"Weight"_s, qint64(2880), qint64(4680) },
        UpgradedRow { "currency", u"Field4"_s, 6, u"Cost"_s, qint64(2880), qint64(5160) },
        UpgradedRow {
            "withoutOldLabel", u"Field5"_s, 3, u"Field Label"_s, qint64(2880), qint64(5640) },
        UpgradedRow { "url", u"URL"_s, 12, None, qint64(6480), qint64(720) },
        UpgradedRow { "resource", u"Resource"_s, 13, None, qint64(7200), qint64(720) }),
    [](const testing::TestParamInfo<UpgradedRow>& info) { return std::string(info.param.name); });

TEST_F(UpgradeTest, OldLabelsLeaveTheTableDefinition)
{
    CardDatabase* cards = nullptr;
    openUpgraded(cards);
    QStringList names;
    for (const auto& property : cards->MainTableDef()->Properties().items())
        names.append(property->Name());
    EXPECT_EQ(names, (QStringList { u"FormWidth"_s, u"FormHeight"_s }));
    EXPECT_EQ(property(u"Field4"_s, u"FieldFormat"_s), Variant(u"Currency"_s));
    EXPECT_EQ(property(u"URL"_s, u"FieldVisible"_s), Variant(true));
    EXPECT_EQ(property(u"Resource"_s, u"FieldWidth"_s), Variant(qint64(570)));
}

TEST_F(UpgradeTest, SecondOpenFindsNothingToUpgrade)
{
    CardDatabase* cards = nullptr;
    openUpgraded(cards);
    m_cards->OpenCardDatabase(m_path);
    EXPECT_EQ(m_compacted.size(), 1);
}

} // namespace
