#include "cards/CardDocument.h"

#include "CardTestSupport.h"
#include "RowFile.h"
#include "TableRows.h"
#include "cards/CardFields.h"
#include "cards/DaoProperties.h"
#include "frame/support/ScriptedPrompts.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/RuntimeRows.h"

#include <QFile>
#include <QLocale>

using namespace Qt::Literals::StringLiterals;
using Bramlet::CardDocument;
using Frame::MessageAnswer;
using Frame::MessageIcon;
using Runtime::Variant;
using TestRows::PrintTo;

namespace {

const QString DuplicateText = u"There is already a record with this name.\n"
                              u"You cannot have two records with the same name."_s;
const QString EmptyNameText = u"You cannot have an empty name field"_s;
const QString ConflictText
    = u"These changes cannot be made as another user has since updated the record.\n"
      u"The updated details will now be displayed."_s;
const QString NoSuchCardText = u"There is no card with that number."_s;

// A class file in the Sprondle view with a field of every kind the window shows, and three
// pets: Polly, Rex and Tiddles in the card set's order.
class CardDocumentTest : public CardTest::CardTestBase
{
protected:
    void SetUp() override
    {
        CardTestBase::SetUp();
        m_path = path(u"class.qnd"_s);
        Bramlet::CardDatabase cards(m_engine);
        cards.CreateCardDatabase(m_path, 4);
        cards.OpenCardDatabase(m_path);
        auto& database = *cards.DataBase();
        const auto column = [&](const QString& name, const QString& sql, int type,
                                const QString& label, const QString& choices = {}) {
            database.Execute(u"ALTER TABLE [Quorbin_Card] ADD COLUMN "_s + name + u' ' + sql);
            auto field = database.TableDefs(u"Quorbin_Card"_s)->Fields(name);
            Bramlet::SetDefaultFieldLayout(*field, 0);
            Bramlet::SetFieldType(*field, type);
            Bramlet::SetFieldLabel(*field, label);
            Bramlet::SetFieldFormat(*field, Bramlet::DefaultFieldFormat(type));
            if (!choices.isEmpty())
                Bramlet::SetFieldChoices(*field, choices);
        };
        Bramlet::SetFieldLabel(
            *database.TableDefs(u"Quorbin_Card"_s)->Fields(u"Field1"_s), u"Animal"_s);
        column(u"Field7"_s, u"LONG"_s, Bramlet::WholeNumberField, u"Legs"_s);
        column(u"Field8"_s, u"DOUBLE"_s, Bramlet::DecimalNumberField, u"Weight"_s);
        column(u"Field9"_s, u"CURRENCY"_s, Bramlet::CurrencyField, u"Cost"_s);
        column(u"Field10"_s, u"DATETIME"_s, Bramlet::DateField, u"Born"_s);
        column(u"Field11"_s, u"BOOLEAN"_s, Bramlet::OnOffField, u"Vaccinated"_s);
        column(u"Field12"_s, u"TEXT"_s, Bramlet::DropDownField, u"Size"_s, u"Small, Large,"_s);
        cards.OpenMainRecordSet();
        CardTest::AddCard(cards, u"Rex"_s, { { u"Field7"_s, qint64(4) } });
        CardTest::AddCard(cards, u"Tiddles"_s);
        CardTest::AddCard(cards, u"Polly"_s,
            { { u"Field1"_s, u"Parrot"_s }, { u"Field8"_s, 2.0 },
                { u"Field9"_s, Variant::currency(3) }, { u"Field10"_s, Variant::date(45000) },
                { u"Field12"_s, u"Large"_s } });
        cards.Close();
        m_document = std::make_unique<CardDocument>(nullptr, &m_engine);
        ASSERT_TRUE(m_document->Open(m_path));
    }

    int control(const QString& label) const
    {
        return label == u"Name"_s ? m_document->ControlOfKind(Bramlet::ControlKind::Name)
                                  : m_document->ControlWithLabel(label);
    }
    const Bramlet::CardControl& shown(const QString& label) const
    {
        return m_document->Controls().at(static_cast<size_t>(control(label)));
    }
    bool type(const QString& label, const QString& text)
    {
        return m_document->SetControlText(control(label), text);
    }
    // The value a card holds in the file, read afresh.
    Variant stored(const QString& card, const QString& field)
    {
        Bramlet::CardDatabase cards(m_engine);
        cards.OpenCardDatabase(m_path);
        cards.MainTable()->FindFirst(u"CardName = '"_s + card + u"'"_s);
        return cards.MainTable()->NoMatch() ? Variant() : cards.MainTable()->Fields(field)->Value();
    }

    Runtime::ScopedHostLocale m_locale { QLocale(QLocale::English, QLocale::UnitedKingdom) };
    ScriptedPrompts m_prompts;
    QString m_path;
    std::unique_ptr<CardDocument> m_document;
};

TEST_F(CardDocumentTest, ShowsTheFirstCardWithEachFieldFormatted)
{
    EXPECT_EQ(m_document->Caption(), u"Sprondle - class"_s);
    EXPECT_EQ(m_document->RecordNumberText(), u"1"_s);
    EXPECT_EQ(m_document->RecordCountText(), u"/3"_s);
    EXPECT_EQ(m_document->CardLines(),
        (QStringList { u"Name\tPolly"_s, u"Animal\tParrot"_s, u"Field Label\t"_s,
            u"Field Label\t"_s, u"Field Label\t"_s, u"Field Label\t"_s, u"Field Label\t"_s,
            u"Legs\t"_s, u"Weight\t2.00"_s, u"Cost\t£3.00"_s, u"Born\t15 Mar 2023"_s,
            u"Vaccinated\t0"_s, u"Size\tLarge"_s }));
    EXPECT_EQ(shown(u"Size"_s).Choices, (QStringList { u"Small"_s, u"Large"_s }));
    EXPECT_EQ(shown(u"Born"_s).ArrayName, u"DTPicker"_s);
    EXPECT_EQ(shown(u"Cost"_s).ArrayIndex, 9); // txtField(1) is Field1
}

using SaveCardConversion = RowFile::RowTest<CardDocumentTest>;

TEST_P(SaveCardConversion, StoresTheTypedText)
{
    ASSERT_TRUE(type(row().text("label"), row().text("typed")));
    EXPECT_TRUE(m_document->IsChanged());
    ASSERT_TRUE(m_document->SaveCard());
    EXPECT_EQ(stored(u"Polly"_s, row().text("column")), RuntimeRows::Value(row(), "stored"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SaveCardConversion, RowFile::In("cards/savedValues.rows"), RowFile::Named());

TEST_F(CardDocumentTest, DatePickersAndCheckBoxesSaveTheirState)
{
    const int born = control(u"Born"_s);
    ASSERT_TRUE(m_document->SetControlDate(born, true, 0));
    ASSERT_TRUE(m_document->SetControlChecked(control(u"Vaccinated"_s), true));
    ASSERT_TRUE(m_document->SaveCard());
    EXPECT_EQ(stored(u"Polly"_s, u"Field10"_s), Variant::null());
    EXPECT_EQ(stored(u"Polly"_s, u"Field11"_s), Variant(true));
    ASSERT_TRUE(m_document->SetControlDate(born, false, 45001.5));
    ASSERT_TRUE(m_document->SaveCard());
    EXPECT_EQ(stored(u"Polly"_s, u"Field10"_s), Variant::date(45001.5));
}

using SaveCardRefusal = RowFile::RowTest<CardDocumentTest>;

TEST_P(SaveCardRefusal, IsToldAndKeepsTheTypedCard)
{
    const QHash<QString, QString> texts { { u"duplicate"_s, DuplicateText },
        { u"emptyName"_s, EmptyNameText } };
    const QStringList icons { u"None"_s, u"Information"_s, u"Exclamation"_s };
    m_prompts.answerMessage(MessageAnswer::Ok);
    m_document->AddCard();
    ASSERT_TRUE(type(u"Name"_s, row().text("cardName")));
    ASSERT_TRUE(type(row().text("label"), row().text("typed")));
    EXPECT_FALSE(m_document->SaveCard());
    ASSERT_EQ(m_prompts.calls().size(), 1);
    EXPECT_EQ(m_prompts.calls()[0].text, texts.value(row().text("message"), row().text("message")));
    EXPECT_EQ(m_prompts.calls()[0].icon, MessageIcon(icons.indexOf(row().text("icon"))));
    EXPECT_EQ(m_document->RecordCountText(), u"/3"_s);
    EXPECT_TRUE(m_document->IsChanged());
    EXPECT_EQ(shown(row().text("label")).Text, row().text("typed"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SaveCardRefusal, RowFile::In("cards/refusedSaves.rows"), RowFile::Named());

using Navigation = RowFile::RowTest<CardDocumentTest>;

TEST_P(Navigation, ShowsTheCardItReaches)
{
    const QHash<QString, QString> texts { { u"emptyName"_s, EmptyNameText },
        { u"noSuchCard"_s, NoSuchCardText } };
    QStringList messages;
    for (const QString& message : row().list("messages")) {
        messages << texts.value(message, message);
        m_prompts.answerMessage(MessageAnswer::Ok);
    }
    const QHash<QString, int> moves { { u"first"_s, Bramlet::FirstCard },
        { u"previous"_s, Bramlet::PreviousCard }, { u"next"_s, Bramlet::NextCard },
        { u"last"_s, Bramlet::LastCard } };
    for (const QString& step : row().list("steps")) {
        if (moves.contains(step))
            m_document->GoToCard(moves[step]);
        else if (step == u"add"_s)
            m_document->AddCard();
        else if (step == u"refresh"_s)
            m_document->RefreshDatabase();
        else
            m_document->GoToNumber(step);
    }
    EXPECT_EQ(m_document->RecordNumberText(), row().text("record"));
    EXPECT_EQ(m_document->RecordCountText(), u"/3"_s);
    EXPECT_EQ(shown(u"Name"_s).Text, row().text("cardName"));
    EXPECT_EQ(m_document->CanMoveBack(), row().flag("canMoveBack"));
    EXPECT_EQ(m_prompts.messages(), messages);
}

INSTANTIATE_TEST_SUITE_P(Rows, Navigation, RowFile::In("cards/navigation.rows"), RowFile::Named());

TEST_F(CardDocumentTest, NewCardIsSavedWhenLeftAndSortedByRefresh)
{
    m_document->AddCard();
    ASSERT_TRUE(type(u"Name"_s, u"Bubbles"_s));
    ASSERT_TRUE(type(u"Legs"_s, u"0"_s));
    m_document->GoToCard(Bramlet::NextCard);
    EXPECT_EQ(m_document->RecordNumberText(), u"--"_s);
    EXPECT_EQ(m_document->RecordCountText(), u"/4"_s);
    EXPECT_EQ(stored(u"Bubbles"_s, u"Field7"_s), Variant(qint64(0)));
    m_document->GoToNumber(u"1"_s);
    m_document->RefreshDatabase();
    EXPECT_EQ(shown(u"Name"_s).Text, u"Bubbles"_s);
}

// Deleting the card at a position: Yes deletes and shows the card now there (the new last
// when the last went), No keeps everything.
struct DeleteRow
{
    const char* name;
    QString position;
    MessageAnswer answer;
    QString count;
    QString record;
    QString cardName;
};

class DeleteCard : public CardDocumentTest, public testing::WithParamInterface<DeleteRow>
{
};

TEST_P(DeleteCard, AsksThenShowsTheNextCard)
{
    const DeleteRow& row = GetParam();
    m_document->GoToNumber(row.position);
    m_prompts.answerMessage(row.answer);
    EXPECT_EQ(m_document->DeleteCard(), row.answer == MessageAnswer::Yes);
    EXPECT_EQ(m_prompts.calls().at(0).text, u"Are you sure you want to delete this record?"_s);
    EXPECT_EQ(m_document->RecordCountText(), row.count);
    EXPECT_EQ(m_document->RecordNumberText(), row.record);
    EXPECT_EQ(shown(u"Name"_s).Text, row.cardName);
}

INSTANTIATE_TEST_SUITE_P(Rows, DeleteCard,
    testing::Values(
        DeleteRow { "middle", u"2"_s, MessageAnswer::Yes, u"/2"_s, u"2"_s, u"Tiddles"_s },
        DeleteRow { "last", u"3"_s, MessageAnswer::Yes, u"/2"_s, u"2"_s, u"Rex"_s },
        DeleteRow { "answeredNo", u"2"_s, MessageAnswer::No, u"/3"_s, u"2"_s, u"Rex"_s }),
    TestRows::Named());

TEST_F(CardDocumentTest, DeletingTheLastCardStartsABlankOne)
{
    for (int index = 0; index < 3; ++index) {
        m_prompts.answerMessage(MessageAnswer::Yes);
        ASSERT_TRUE(m_document->DeleteCard());
    }
    EXPECT_EQ(m_document->RecordNumberText(), u"--"_s);
    EXPECT_EQ(m_document->RecordCountText(), u"/0"_s);
    EXPECT_FALSE(m_document->DeleteCard()); // nothing to delete, nothing asked
}

TEST_F(CardDocumentTest, ClosingAsksAboutAChangedCardOnly)
{
    EXPECT_TRUE(m_document->AskToSaveCard());
    ASSERT_TRUE(type(u"Animal"_s, u"Macaw"_s));
    m_prompts.answerMessage(MessageAnswer::No);
    EXPECT_TRUE(m_document->AskToSaveCard());
    EXPECT_EQ(stored(u"Polly"_s, u"Field1"_s), Variant(u"Parrot"_s));
    ASSERT_TRUE(type(u"Animal"_s, u"Macaw"_s));
    m_prompts.answerMessage(MessageAnswer::Yes);
    EXPECT_TRUE(m_document->AskToSaveCard());
    EXPECT_EQ(stored(u"Polly"_s, u"Field1"_s), Variant(u"Macaw"_s));
    // Yes with a refused save keeps the window open.
    ASSERT_TRUE(type(u"Name"_s, u"Rex"_s));
    m_prompts.answerMessage(MessageAnswer::Yes).answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(m_document->AskToSaveCard());
    EXPECT_EQ(m_prompts.messages().value(3), DuplicateText);
}

// Two copies of the program on one file, each with its own engine.
TEST_F(CardDocumentTest, SecondSaverOfACardIsToldAndSeesTheFirstOnesCard)
{
    Dao::DBEngine otherEngine;
    CardDocument other(nullptr, &otherEngine);
    ASSERT_TRUE(other.Open(m_path));
    ASSERT_TRUE(type(u"Animal"_s, u"Budgie"_s));
    ASSERT_TRUE(other.SetControlText(other.ControlWithLabel(u"Animal"_s), u"Macaw"_s));
    ASSERT_TRUE(other.SaveCard());
    m_prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(m_document->SaveCard());
    EXPECT_EQ(m_prompts.messages(), QStringList { ConflictText });
    EXPECT_EQ(m_prompts.calls()[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(shown(u"Animal"_s).Text, u"Macaw"_s);
    EXPECT_FALSE(m_document->IsChanged());
    EXPECT_EQ(stored(u"Polly"_s, u"Field1"_s), Variant(u"Macaw"_s));
}

TEST_F(CardDocumentTest, SaveWhileAnotherCopyHoldsTheFileIsAConflictAndRetryWorks)
{
    Dao::DBEngine otherEngine;
    auto holder = otherEngine.DefaultWorkspace()->OpenDatabase(m_path);
    otherEngine.DefaultWorkspace()->BeginTrans();
    holder->Execute(u"UPDATE Quorbin_Card SET Field2 = 'held' WHERE CardName = 'Rex'"_s);
    ASSERT_TRUE(type(u"Animal"_s, u"Budgie"_s));
    m_prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(m_document->SaveCard());
    EXPECT_EQ(m_prompts.messages(), QStringList { ConflictText });
    otherEngine.DefaultWorkspace()->CommitTrans();
    ASSERT_TRUE(type(u"Animal"_s, u"Budgie"_s));
    EXPECT_TRUE(m_document->SaveCard());
    EXPECT_EQ(stored(u"Polly"_s, u"Field1"_s), Variant(u"Budgie"_s));
}

TEST_F(CardDocumentTest, ImportKeepsEveryRowButThoseNamedAlready)
{
    QFile list(path(u"pets.csv"_s));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write("Name,,Legs,animal\r\nRex,Ghost,3,Dog\r\nBubbles,Ghost,0,Fish\r\n"
               "polly,,2,Bird\r\nSlinky,,0,Snake\r\n");
    list.close();
    m_prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_TRUE(m_document->ImportCards(list.fileName()));
    EXPECT_EQ(m_prompts.messages(),
        QStringList { u"2 cards were not imported because cards with those names are already "
                      u"in the file."_s });
    EXPECT_EQ(m_document->RecordCountText(), u"/5"_s);
    // The column without a heading is skipped: it once overwrote the card's name.
    EXPECT_EQ(stored(u"Bubbles"_s, u"Field1"_s), Variant(u"Fish"_s));
    EXPECT_EQ(stored(u"Slinky"_s, u"Field7"_s), Variant(qint64(0)));
    EXPECT_EQ(stored(u"Rex"_s, u"Field7"_s), Variant(qint64(4)));
}

TEST_F(CardDocumentTest, NewDatabaseRefusesAnExistingFileAndStartsABlankCard)
{
    const QString fresh = path(u"fresh"_s);
    m_prompts.answerSaveFile(Frame::FileChoice { m_path, 1 })
        .answerMessage(MessageAnswer::Ok)
        .answerSaveFile(Frame::FileChoice { fresh, 1 });
    CardDocument document(nullptr, &m_engine);
    ASSERT_TRUE(document.CreateWithDialog(Bramlet::VelkinView));
    EXPECT_EQ(m_prompts.calls()[0].file.title, u"Save As"_s);
    EXPECT_EQ(m_prompts.calls()[0].file.filter, u"Quorbin DataBase Files (*.qnd)|*.qnd"_s);
    EXPECT_EQ(m_prompts.calls()[1].text,
        u"You cannot overwrite an existing file,\nchoose another file name."_s);
    EXPECT_EQ(document.FileName(), fresh + u".qnd"_s);
    EXPECT_EQ(document.Caption(), u"Velkin - fresh"_s);
    EXPECT_EQ(document.RecordNumberText(), u"--"_s);
    EXPECT_EQ(document.RecordCountText(), u"/0"_s);
    EXPECT_EQ(document.Cards()->ViewType(), Bramlet::VelkinView);
}

TEST_F(CardDocumentTest, FailedCreationLeavesNoFile)
{
    m_prompts.answerSaveFile(std::nullopt);
    CardDocument document(nullptr, &m_engine);
    EXPECT_FALSE(document.CreateWithDialog(Bramlet::BramletView));
    // A view code the file's property cannot hold fails after the tables are written.
    const QString broken = path(u"broken.qnd"_s);
    m_prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(document.Create(broken, 70000));
    EXPECT_TRUE(m_prompts.messages().value(0).startsWith(u"Error "_s));
    EXPECT_FALSE(QFile::exists(broken));
    EXPECT_FALSE(document.IsOpen());
}

// Files that are no card files: one message, nothing opened, nothing crashes or loops.
struct DamagedRow
{
    const char* name;
    std::function<void(const QString& path)> damage;
};

class DamagedFile : public CardDocumentTest, public testing::WithParamInterface<DamagedRow>
{
};

void SetVersion(const QString& path, Dao::DataType type, const Variant& value)
{
    Dao::DBEngine engine;
    auto database = engine.DefaultWorkspace()->OpenDatabase(path);
    database->Properties().Delete(u"QBVersion"_s);
    database->Properties().Append(database->CreateProperty(u"QBVersion"_s, type, value));
    database->Close();
}

void Rewrite(const QString& path, const std::function<QByteArray(QByteArray)>& change)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    const QByteArray bytes = change(file.readAll());
    file.close();
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.write(bytes);
}

TEST_P(DamagedFile, GivesOneMessageAndOpensNothing)
{
    GetParam().damage(m_path);
    m_prompts.answerMessage(MessageAnswer::Ok);
    CardDocument document(nullptr, &m_engine);
    EXPECT_FALSE(document.Open(m_path));
    EXPECT_EQ(m_prompts.messages(),
        QStringList { u"Cannot open database '"_s + m_path
            + u"'. It may not be a database that this program recognizes, or the file may be "
              u"damaged."_s });
    EXPECT_FALSE(document.IsOpen());
}

INSTANTIATE_TEST_SUITE_P(Rows, DamagedFile,
    testing::Values(
        DamagedRow { "versionAsText",
            [](const QString& path) { SetVersion(path, Dao::DataType::Text, u"350"_s); } },
        DamagedRow { "versionAsBoolean",
            [](const QString& path) { SetVersion(path, Dao::DataType::Boolean, true); } },
        DamagedRow { "truncated",
            [](const QString& path) {
                Rewrite(path, [](const QByteArray& bytes) { return bytes.left(5000); });
            } },
        DamagedRow { "notSqlite",
            [](const QString& path) {
                Rewrite(
                    path, [](const QByteArray&) { return QByteArray("Name,Legs\r\nRex,4\r\n"); });
            } },
        DamagedRow { "empty",
            [](const QString& path) {
                Rewrite(path, [](const QByteArray&) { return QByteArray(); });
            } },
        DamagedRow { "noCardTable",
            [](const QString& path) {
                Dao::DBEngine engine;
                engine.DefaultWorkspace()->OpenDatabase(path)->Execute(
                    u"DROP TABLE Quorbin_Card"_s);
            } }),
    TestRows::Named());

TEST_F(CardDocumentTest, FileThatMayOnlyBeReadRefusesEveryEdit)
{
    m_document.reset();
    const CardTest::WriteProtection protection(m_path);
    if (!protection.active())
        GTEST_SKIP() << "the file cannot be write-protected here";
    CardDocument document(nullptr, &m_engine);
    ASSERT_TRUE(document.Open(m_path));
    EXPECT_TRUE(document.ReadOnly());
    EXPECT_EQ(document.Caption(), u"Sprondle - class [Read Only]"_s);
    const int animal = document.ControlWithLabel(u"Animal"_s);
    EXPECT_FALSE(document.SetControlText(animal, u"Budgie"_s));
    EXPECT_EQ(document.Controls()[static_cast<size_t>(animal)].Text, u"Parrot"_s);
    EXPECT_FALSE(document.DeleteCard());
    document.GoToCard(Bramlet::LastCard);
    document.GoToCard(Bramlet::NextCard); // no new card in a file that may only be read
    EXPECT_EQ(document.RecordNumberText(), u"3"_s);
}

} // namespace
