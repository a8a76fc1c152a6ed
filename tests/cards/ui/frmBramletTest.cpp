#include "cards/ui/frmBramlet.h"

#include "../CardTestSupport.h"
#include "TableRows.h"
#include "cards/CardDocument.h"
#include "cards/CardFields.h"
#include "cards/DaoProperties.h"
#include "cards/ui/CardArea.h"
#include "cards/ui/RegisterCardWindow.h"
#include "cards/ui/frmBramletPrint.h"
#include "frame/DocumentHost.h"
#include "frame/DocumentKinds.h"
#include "frame/FrameSettings.h"
#include "frame/Helpers.h"
#include "frame/support/ScriptedPrompts.h"
#include "frame/ui/ImageList.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPdfDocument>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;
using Bramlet::CardDocument;
using Bramlet::frmBramlet;
using Frame::MessageAnswer;
using TestRows::PrintTo;
namespace Menu = Bramlet::CardMenu;
namespace Toolbar = Bramlet::CardToolbar;

namespace {

class NoHost : public Frame::DocumentHost
{
public:
    void NewFile() override { }
    void OpenFile(int) override { }
    void ShowAbout() override { }
    void Exit() override { }
    QString DialogFolder() const override { return {}; }
    void RememberDialogFolder(const QString&) override { }
    QString Caption() const override { return u"Quorbin"_s; }
    const Frame::ImageList& ToolbarImages() const override { return m_images; }
    void SetDocumentChanged(const QObject*, bool changed) override { Changed = changed; }
    bool Changed = false;

private:
    Frame::ImageList m_images;
};

class CardWindowTest : public CardTest::CardTestBase
{
protected:
    void SetUp() override
    {
        CardTestBase::SetUp();
        Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR));
        m_path = path(u"pets.qnd"_s);
        Bramlet::CardDatabase cards(m_engine);
        cards.CreateCardDatabase(m_path, Bramlet::SprondleView);
        cards.OpenCardDatabase(m_path);
        Bramlet::LabelStartingFields(cards, { u"Animal"_s, u"Hidden"_s });
        cards.DataBase()->Execute(u"ALTER TABLE [Quorbin_Card] ADD COLUMN Field7 LONG"_s);
        auto legs = cards.MainTableDef()->Fields(u"Field7"_s);
        Bramlet::SetDefaultFieldLayout(*legs, 2);
        Bramlet::SetFieldType(*legs, Bramlet::WholeNumberField);
        Bramlet::SetFieldLabel(*legs, u"Legs"_s);
        Bramlet::SetDaoProperty(
            *cards.MainTableDef()->Fields(u"Field2"_s), u"FieldVisible"_s, false);
        cards.OpenMainRecordSet();
        for (const QString& name : { u"Rex"_s, u"Polly"_s, u"Tiddles"_s })
            CardTest::AddCard(cards, name, { { u"Field1"_s, name + u" the pet"_s } });
        cards.Close();
    }

    void open(const QString& file)
    {
        window = std::make_unique<frmBramlet>(&host, Frame::CardDocumentType, &m_engine);
        window->show();
        window->setFileName(file);
    }
    QWidget* widget(const QString& name) const { return window->findChild<QWidget*>(name); }
    QLineEdit* box(const QString& name) const { return window->findChild<QLineEdit*>(name); }
    QSize pixels(int width, int height) const
    {
        const int dpi = window->picCard->logicalDpiX();
        return { Frame::TwipsToPixels(width, dpi), Frame::TwipsToPixels(height, dpi) };
    }

    ScriptedPrompts prompts;
    NoHost host;
    QString m_path;
    std::unique_ptr<frmBramlet> window;
};

TEST_F(CardWindowTest, TypedCardsAreSavedAndReachedWithTheToolbarKeysAndRecordBox)
{
    open(m_path);
    EXPECT_EQ(window->windowTitle(), u"Sprondle - pets"_s);
    EXPECT_EQ(window->txtName->text(), u"Polly"_s);
    EXPECT_FALSE(window->Action(Toolbar::Key + Toolbar::PreviousRecord)->isEnabled());
    window->Action(Menu::AddRecord)->trigger();
    EXPECT_EQ(window->txtRecordNo->text(), u"--"_s);
    QTest::keyClicks(window->txtName, u"Bubbles"_s);
    QTest::keyClicks(box(u"txtField(7)"_s), u"1x-2."_s); // whole numbers only
    EXPECT_EQ(box(u"txtField(7)"_s)->text(), u"1-2"_s);
    EXPECT_TRUE(host.Changed);
    box(u"txtField(7)"_s)->clear();
    QTest::keyClicks(box(u"txtField(7)"_s), u"007"_s);
    window->Action(Toolbar::Key + Toolbar::NextRecord)->trigger();
    EXPECT_EQ(window->lblNoOfRecords->text(), u"/4"_s);
    EXPECT_EQ(window->txtRecordNo->text(), u"--"_s);
    EXPECT_FALSE(host.Changed);

    window->txtRecordNo->setFocus();
    window->txtRecordNo->selectAll();
    QTest::keyClicks(window->txtRecordNo, u"x4"_s);
    QTest::keyClick(window->txtRecordNo, Qt::Key_Return);
    EXPECT_EQ(window->txtName->text(), u"Bubbles"_s);
    EXPECT_EQ(box(u"txtField(7)"_s)->text(), u"7"_s);
    window->Action(Menu::FirstRecord)->trigger();
    QApplication::setActiveWindow(window.get());
    QTest::keyClick(window->txtName, Qt::Key_PageDown);
    EXPECT_EQ(window->txtName->text(), u"Rex"_s);
    EXPECT_EQ(window->txtRecordNo->text(), u"2"_s);
    EXPECT_TRUE(window->Action(Toolbar::Key + Toolbar::PreviousRecord)->isEnabled());
    EXPECT_TRUE(prompts.calls().isEmpty());
}

TEST_F(CardWindowTest, SprondleShowsVisibleFieldsAndEveryLabel)
{
    open(m_path);
    const QString names[] = { u"txtField(1)"_s, u"txtField(2)"_s, u"lblFieldLabel(2)"_s };
    const bool shown[] = { true, false, true };
    for (int index = 0; index < 3; ++index)
        EXPECT_EQ(widget(names[index])->isVisible(), shown[index]) << names[index].toStdString();
    EXPECT_EQ(box(u"txtField(1)"_s)->text(), u"Polly the pet"_s);
    EXPECT_EQ(box(u"txtField(1)"_s)->accessibleName(), u"Animal"_s);
    EXPECT_FALSE(window->txtKeyWord[0]->isVisible());
    window->SetView(Bramlet::BramletView);
    EXPECT_FALSE(widget(u"lblFieldLabel(1)"_s)->isVisible());
    EXPECT_TRUE(window->txtKeyWord[0]->isVisible());
    EXPECT_EQ(window->windowTitle(), u"Bramlet - pets"_s);
}

// Each view's card area, and whether a resize springs back.
struct ViewRow
{
    const char* name;
    int view;
    int height;
    QString caption;
    bool resizable;
};

class CardWindowView : public CardWindowTest, public testing::WithParamInterface<ViewRow>
{
};

// A new database from the chooser's button of each view: the save dialog, then a blank card.
TEST_P(CardWindowView, NewDatabaseStartsInItsViewAtItsSize)
{
    const ViewRow& row = GetParam();
    Bramlet::RegisterCardWindow();
    const Frame::DocumentKind* kind = Frame::FindDocumentKind(row.view);
    ASSERT_NE(kind, nullptr);
    prompts.answerSaveFile(Frame::FileChoice { path(u"new"_s), 1 });
    std::unique_ptr<QObject> made(kind->CreateWindow(host));
    auto* card = qobject_cast<frmBramlet*>(made.get());
    ASSERT_NE(card, nullptr);
    card->show();
    card->setFileName(QString());
    EXPECT_EQ(card->windowTitle(), row.caption);
    EXPECT_EQ(card->txtRecordNo->text(), u"--"_s);
    EXPECT_EQ(card->lblNoOfRecords->text(), u"/0"_s);
    const int dpi = card->picCard->logicalDpiX();
    const QSize size(Frame::TwipsToPixels(8190, dpi), Frame::TwipsToPixels(row.height, dpi));
    EXPECT_EQ(card->centralWidget()->size(), size);
    card->resize(card->size() + QSize(120, 90));
    QApplication::processEvents();
    EXPECT_EQ(card->centralWidget()->size(), row.resizable ? size + QSize(120, 90) : size);
    for (const int type : { 2, 3, 4 })
        Frame::UnregisterDocumentKind(type);
}

INSTANTIATE_TEST_SUITE_P(Rows, CardWindowView,
    testing::Values(ViewRow { "velkin", 2, 6105, u"Velkin - new"_s, false },
        ViewRow { "bramlet", 3, 4680, u"Bramlet - new"_s, false },
        ViewRow { "sprondle", 4, 6600, u"Sprondle - new"_s, true }),
    TestRows::Named());

TEST_F(CardWindowTest, RegistrationOpensCardFilesByExtension)
{
    Bramlet::RegisterCardWindow();
    EXPECT_EQ(Frame::DocTypeForFileName(u"/class/PETS.QND"), Frame::CardDocumentType);
    EXPECT_EQ(Frame::FindDocumentKind(Frame::VelkinDocumentType)->CaptionWord, u"Velkin"_s);
    EXPECT_EQ(Frame::FindDocumentKind(Frame::SprondleDocumentType)->Extension, QString());
    for (const int type : { 2, 3, 4 })
        Frame::UnregisterDocumentKind(type);
}

TEST_F(CardWindowTest, ClosingAsksToSaveAChangedCard)
{
    open(m_path);
    QTest::keyClicks(box(u"txtField(1)"_s), u"!"_s);
    prompts.answerMessage(MessageAnswer::Yes);
    EXPECT_TRUE(window->queryClose());
    EXPECT_EQ(prompts.messages(), QStringList { u"Do you wish to save this record?"_s });
    Bramlet::CardDatabase cards(m_engine);
    cards.OpenCardDatabase(m_path);
    EXPECT_EQ(cards.FieldWithLabel(u"Animal"_s)->Value(), Runtime::Variant(u"Polly the pet!"_s));
}

TEST_F(CardWindowTest, DamagedFileClosesTheWindowAfterOneMessage)
{
    QFile file(m_path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("not a card file");
    file.close();
    prompts.answerMessage(MessageAnswer::Ok);
    open(m_path);
    QApplication::processEvents();
    EXPECT_EQ(prompts.messages().size(), 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(CardWindowTest, FileThatMayOnlyBeReadTakesNoTyping)
{
    const CardTest::WriteProtection protection(m_path);
    if (!protection.active())
        GTEST_SKIP() << "the file cannot be write-protected here";
    open(m_path);
    EXPECT_TRUE(window->windowTitle().endsWith(u" [Read Only]"_s));
    QTest::keyClicks(window->txtName, u"x"_s);
    EXPECT_EQ(window->txtName->text(), u"Polly"_s);
    EXPECT_FALSE(window->Action(Menu::AddRecord)->isEnabled());
    EXPECT_FALSE(window->Action(Menu::DeleteRecord)->isEnabled());
    window.reset();
}

TEST_F(CardWindowTest, FieldEditingSnapsADroppedFieldToTheGrid)
{
    open(m_path);
    window->SetFieldEditing(true);
    EXPECT_FALSE(window->mnuRecord->menuAction()->isEnabled());
    EXPECT_FALSE(window->dbToolbar->isEnabled());
    EXPECT_EQ(window->txtRecordNo->text(), u"--"_s);
    QWidget* field = widget(u"txtField(1)"_s);
    QTest::mousePress(field, Qt::LeftButton, {}, QPoint(0, 0));
    const int dpi = window->picCard->logicalDpiX();
    const QPoint drop(Frame::TwipsToPixels(1000, dpi), Frame::TwipsToPixels(1310, dpi));
    QTest::mouseRelease(field, Qt::LeftButton, {}, field->mapFrom(window->picCard, drop));
    EXPECT_FALSE(window->picCard->selection().isEmpty());
    const Bramlet::CardControl& moved
        = window->Document()
              .Controls()[static_cast<size_t>(window->Document().ControlWithLabel(u"Animal"_s))];
    EXPECT_EQ(moved.FieldRect.topLeft(), QPoint(960, 1200));
    EXPECT_EQ(moved.LabelRect.topLeft(), QPoint(960 - 2655 - 105, 1260));
    window->SetFieldEditing(false);
    EXPECT_TRUE(window->dbToolbar->isEnabled());
    EXPECT_EQ(window->txtRecordNo->text(), u"3"_s);
}

TEST_F(CardWindowTest, PrintsTheChosenCardsToAPdfFileOneToAPage)
{
    open(m_path);
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<Bramlet::frmBramletPrint*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->txtRange[0]->text(), u"1"_s);
        dialog->cmbPrinters->setCurrentIndex(dialog->cmbPrinters->count() - 1);
        dialog->optRange[1]->click();
        EXPECT_EQ(dialog->txtRange[1]->text(), u"3"_s);
        QTest::keyClicks(dialog->txtRange[0], u"-a"_s);
        EXPECT_EQ(dialog->txtRange[0]->text(), u"1"_s);
        dialog->txtRange[0]->setText(u"2"_s);
        QTest::mouseClick(dialog->cmdOK, Qt::LeftButton);
    });
    const QString pdf = path(u"cards.pdf"_s);
    prompts.answerSaveFile(Frame::FileChoice { pdf, 1 });
    window->Action(Menu::Print)->trigger();
    QPdfDocument document;
    ASSERT_EQ(document.load(pdf), QPdfDocument::Error::None);
    ASSERT_EQ(document.pageCount(), 2);
    const QString names[] = { u"Rex"_s, u"Tiddles"_s };
    for (int page = 0; page < 2; ++page) {
        QString text = document.getAllText(page).text();
        text.removeIf([](QChar character) { return !character.isLetterOrNumber(); });
        EXPECT_TRUE(text.contains(names[page] + u"thepet"_s)) << text.toStdString();
    }
    EXPECT_EQ(window->txtName->text(), u"Polly"_s);
    Frame::Settings().PrintToPdfFile = false;
}

} // namespace
