#include "cards/CardExport.h"

#include "CardTestSupport.h"
#include "cards/DaoProperties.h"

using namespace Qt::Literals::StringLiterals;
using Bramlet::CardDatabase;
using Runtime::Variant;

namespace {

class CardExportTest : public CardTest::CardTestBase
{
protected:
    void SetUp() override
    {
        CardTestBase::SetUp();
        const QString file = path(u"class.qnd"_s);
        CardDatabase(m_engine).CreateCardDatabase(file, 4);
        {
            // A date field with its display format, and labels on two text fields.
            Dao::DBEngine engine;
            auto database = engine.DefaultWorkspace()->OpenDatabase(file);
            database->Execute(u"ALTER TABLE [Quorbin_Card] ADD COLUMN Field7 DATETIME"_s);
            auto table = database->TableDefs(u"Quorbin_Card"_s);
            auto born = table->Fields(u"Field7"_s);
            Bramlet::SetFieldType(*born, Bramlet::DateField);
            Bramlet::SetFieldLabel(*born, u"Born"_s);
            Bramlet::SetFieldFormat(*born, u"dd MMM yyyy"_s);
            Bramlet::SetFieldLabel(*table->Fields(u"Field1"_s), u"Kind"_s);
        }
        m_cards = std::make_unique<CardDatabase>(m_engine);
        m_cards->OpenCardDatabase(file);
        auto keywords = m_cards->KeywordTable();
        for (const QString& word : { u"dog"_s, u"brown"_s }) {
            keywords->AddNew();
            keywords->Fields(u"KeyText"_s)->SetValue(word);
            keywords->Update();
        }
        CardTest::AddCard(*m_cards, u"Rex"_s,
            { { u"Field1"_s, u"Dog"_s }, { u"Field7"_s, Variant::date(38051) },
                { u"Keyword1"_s, qint64(1) }, { u"Keyword2"_s, qint64(2) } });
        CardTest::AddCard(*m_cards, u"Bubbles"_s, { { u"Keyword3"_s, qint64(2) } });
        m_cards->OpenMainRecordSet();
    }

    std::unique_ptr<CardDatabase> m_cards;
};

TEST_F(CardExportTest, FieldViewWritesEveryUserFieldInItsFormat)
{
    EXPECT_EQ(Bramlet::ExportCards(*m_cards, 4),
        u"\"Card Name\",\"Kind\",\"Field Label\",\"Field Label\",\"Field Label\",\"Field "
        u"Label\",\"Field Label\",\"Born\"\r\n"
        u"\"Bubbles\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n"
        u"\"Rex\",\"Dog\",\"\",\"\",\"\",\"\",\"\",\"05 Mar 2004\""_s);
}

TEST_F(CardExportTest, KeywordViewWritesSixKeywordCells)
{
    EXPECT_EQ(Bramlet::ExportCards(*m_cards, 3),
        u"\"Card Name\",\"Keywords\"\r\n"
        u"\"Bubbles\",\"\",\"\",\"brown\",\"\",\"\",\"\"\r\n"
        u"\"Rex\",\"dog\",\"brown\",\"\",\"\",\"\",\"\""_s);
    EXPECT_TRUE(
        Bramlet::ExportCards(*m_cards, 2).startsWith(u"\"Card Name\",\"Key Pictures\"\r\n"_s));
}

TEST_F(CardExportTest, CurrentCardIsCurrentAgain)
{
    const auto& set = m_cards->MainTable();
    set->MoveFirst();
    Bramlet::ExportCards(*m_cards, 4);
    EXPECT_EQ(set->Fields(u"CardName"_s)->Value(), Variant(u"Bubbles"_s));
    set->MoveLast();
    Bramlet::ExportCards(*m_cards, 4);
    EXPECT_EQ(set->Fields(u"CardName"_s)->Value(), Variant(u"Rex"_s));
}

TEST_F(CardExportTest, EveryItemDeselectedWritesTheNamesOnly)
{
    EXPECT_EQ(Bramlet::ExportCards(*m_cards, std::vector<Bramlet::ExportItem> {}),
        u"\"Card Name\"\r\n\"Bubbles\"\r\n\"Rex\""_s);
}

TEST_F(CardExportTest, OnlyTheChosenFieldsAreWritten)
{
    const auto items = Bramlet::ExportItems(*m_cards, 4);
    EXPECT_EQ(Bramlet::ExportCards(*m_cards, { items.front(), items.back() }),
        u"\"Card Name\",\"Kind\",\"Born\"\r\n"
        u"\"Bubbles\",\"\",\"\"\r\n"
        u"\"Rex\",\"Dog\",\"05 Mar 2004\""_s);
}

TEST_F(CardExportTest, EmptyCardSetGivesTheHeadingOnly)
{
    m_cards->AddQuery(u"None"_s, u"CardName = 'Emu'"_s, 3);
    EXPECT_EQ(Bramlet::ExportCards(*m_cards, 3), u"\"Card Name\",\"Keywords\""_s);
}

} // namespace
