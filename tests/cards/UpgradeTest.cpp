#include "CardTestSupport.h"
#include "cards/CardCompaction.h"
#include "cards/DaoProperties.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using Bramlet::CardDatabase;
using CardTest::MakeOldCardFile;
using Dao::DataType;
using Runtime::Variant;

namespace {

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

// A version that no write can bring to 350 (a text, an on/off value) once made the open
// upgrade, compact and open again without end. Such a file is damaged and opens nothing.
TEST_F(UpgradeTest, VersionOfAnotherKindIsADamagedFileNotAnEndlessUpgrade)
{
    const std::pair<DataType, Variant> versions[]
        = { { DataType::Text, Variant(u"300"_s) }, { DataType::Boolean, Variant(true) } };
    for (const auto& [type, value] : versions) {
        {
            auto database = m_engine.DefaultWorkspace()->OpenDatabase(m_path);
            database->Properties().Append(database->CreateProperty(u"QBVersion"_s, type, value));
            database->Close();
        }
        CardDatabase cards(m_engine, [this](const QString& file) { m_compacted.append(file); });
        EXPECT_EQ(CardTest::ErrorNumber([&] { cards.OpenCardDatabase(m_path); }),
            Dao::DaoError::CorruptFile);
        EXPECT_EQ(cards.DataBase(), nullptr);
        EXPECT_TRUE(m_compacted.isEmpty());
        auto database = m_engine.DefaultWorkspace()->OpenDatabase(m_path);
        database->Properties().Delete(u"QBVersion"_s);
        database->Close();
    }
}

TEST_F(UpgradeTest, OldFileThatMayOnlyBeReadIsUpgradedInACopy)
{
    QFile file(m_path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    const CardTest::WriteProtection protection(m_path);
    if (!protection.active())
        GTEST_SKIP() << "the file cannot be write-protected here";
    CardDatabase* cards = nullptr;
    openUpgraded(cards);
    EXPECT_TRUE(cards->ReadOnly());
    EXPECT_EQ(cards->Version(), 350);
    EXPECT_EQ(Bramlet::FieldType(*cards->MainTable()->Fields(u"Field3"_s)), 5);
    EXPECT_EQ(Bramlet::FieldLabel(*cards->MainTable()->Fields(u"Field3"_s)), u"Weight"_s);
    EXPECT_EQ(CardTest::CardNames(*cards), (QStringList { u"Rex"_s, u"Tiddles"_s }));
    EXPECT_TRUE(m_compacted.isEmpty());
    m_cards.reset();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

} // namespace
