#include "cards/CardImport.h"

#include "CardTestSupport.h"
#include "cards/DaoProperties.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using Bramlet::CardDatabase;
using CardTest::ErrorNumber;
using Runtime::Variant;

namespace {

class CardImportTest : public CardTest::CardTestBase
{
protected:
    void SetUp() override
    {
        CardTestBase::SetUp();
        const QString file = path(u"class.qnd"_s);
        CardDatabase(m_engine).CreateCardDatabase(file, 4);
        {
            Dao::DBEngine engine;
            auto database = engine.DefaultWorkspace()->OpenDatabase(file);
            database->Execute(u"ALTER TABLE [Quorbin_Card] ADD COLUMN Field7 LONG"_s);
            auto table = database->TableDefs(u"Quorbin_Card"_s);
            Bramlet::SetFieldLabel(*table->Fields(u"Field1"_s), u"Kind"_s);
            Bramlet::SetFieldLabel(*table->Fields(u"Field7"_s), u"Age"_s);
        }
        m_cards = std::make_unique<CardDatabase>(m_engine);
        m_cards->OpenCardDatabase(file);
    }

    QString write(const QString& name, const QByteArray& text)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    Variant value(const QString& card, const QString& field)
    {
        const auto& set = m_cards->MainTable();
        set->FindFirst(u"CardName = '"_s + card + u"'"_s);
        return set->NoMatch() ? Variant() : set->Fields(field)->Value();
    }

    std::unique_ptr<CardDatabase> m_cards;
};

TEST_F(CardImportTest, ValuesGoToTheFieldsOfTheirLabels)
{
    const QString csv = write(u"pets.csv"_s,
        "Name,kind,Colour,AGE\r\nRex,Dog,brown,3\r\nTiddles,Cat,,abc\r\n\"Bob, Jr\",,grey,\r\n");
    EXPECT_EQ(Bramlet::ImportDelimitedFile(*m_cards, csv), 3);
    EXPECT_EQ(
        CardTest::CardNames(*m_cards), (QStringList { u"Bob, Jr"_s, u"Rex"_s, u"Tiddles"_s }));
    EXPECT_EQ(value(u"Rex"_s, u"Field1"_s), Variant(u"Dog"_s));
    EXPECT_EQ(value(u"Rex"_s, u"Field7"_s), Variant(qint64(3)));
    EXPECT_EQ(value(u"Tiddles"_s, u"Field7"_s), Variant::null()); // "abc" is no number
    EXPECT_EQ(value(u"Bob, Jr"_s, u"Field1"_s), Variant::null()); // empty values are skipped
    // A column without a heading goes nowhere: it once overwrote the card's name.
    const QString text = write(u"more.txt"_s, "Name\t\tKind\n Emu \tsecret\tBird, flightless\n");
    EXPECT_EQ(Bramlet::ImportDelimitedFile(*m_cards, text), 1);
    EXPECT_EQ(value(u"Emu"_s, u"Field1"_s), Variant(u"Bird, flightless"_s));
}

TEST_F(CardImportTest, BlankLinesAreNoCards)
{
    // As a spreadsheet saves a list: blank lines between, and empty cells on the last lines.
    const QString csv
        = write(u"class.csv"_s, "Name,Kind\r\nRex,Dog\r\n\r\nTib,Cat\r\n,\r\n \t, \r\n\r\n");
    EXPECT_EQ(Bramlet::ImportDelimitedFile(*m_cards, csv), 2);
    EXPECT_EQ(CardTest::CardNames(*m_cards), (QStringList { u"Rex"_s, u"Tib"_s }));
}

TEST_F(CardImportTest, NamelessCardWithValuesIsStillRefused)
{
    const QString csv = write(u"class.csv"_s, "Name,Kind\r\nRex,Dog\r\n,Cat\r\n");
    EXPECT_EQ(ErrorNumber([&] { Bramlet::ImportDelimitedFile(*m_cards, csv); }),
        Dao::DaoError::ZeroLengthNotAllowed);
    EXPECT_TRUE(CardTest::CardNames(*m_cards).isEmpty());
}

TEST_F(CardImportTest, DuplicateNameAddsNothing)
{
    CardTest::AddCard(*m_cards, u"Rex"_s);
    const QString csv = write(u"pets.csv"_s, "Name,Kind\r\nTiddles,Cat\r\nREX,Dog\r\n");
    try {
        Bramlet::ImportDelimitedFile(*m_cards, csv);
        FAIL() << "imported";
    } catch (const Dao::DaoError& error) {
        EXPECT_EQ(error.number(), Dao::DaoError::DuplicateValue);
        EXPECT_TRUE(error.description().startsWith(u"Line 3 of "_s));
    }
    EXPECT_EQ(CardTest::CardNames(*m_cards), QStringList { u"Rex"_s });
}

TEST_F(CardImportTest, MissingFileFails)
{
    EXPECT_EQ(ErrorNumber([&] { Bramlet::ImportDelimitedFile(*m_cards, path(u"none.csv"_s)); }),
        Dao::DaoError::FileNotFound);
}

} // namespace
