#include "sheet/ui/frmTillane.h"

#include "RowFile.h"
#include "frame/DocumentHost.h"
#include "frame/DocumentKinds.h"
#include "frame/FrameSettings.h"
#include "frame/support/ScriptedPrompts.h"
#include "frame/ui/ImageList.h"
#include "platform/runtime/HostLocale.h"
#include "sheet/CellReferences.h"
#include "sheet/Sheet.h"
#include "sheet/SheetDocument.h"
#include "sheet/SheetTestSupport.h"
#include "sheet/ui/FillHandle.h"
#include "sheet/ui/RegisterSheetWindow.h"
#include "sheet/ui/SheetGrid.h"
#include "sheet/ui/SheetGridModel.h"
#include "sheet/ui/frmCellStyle.h"
#include "sheet/ui/frmCopyCell.h"
#include "sheet/ui/frmFormula.h"
#include "sheet/ui/frmNumberFormat.h"

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;
using Frame::MessageAnswer;

namespace {

class Host : public Frame::DocumentHost
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

CellAddress At(const char* name)
{
    return *CellFromName(QString::fromLatin1(name));
}

class SheetWindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR));
        window = std::make_unique<frmTillane>(&host);
        window->resize(900, 600);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void TearDown() override
    {
        window.reset();
        QApplication::processEvents();
    }

    SheetDocument& document() { return window->Document(); }
    const Sheet& sheet() { return document().SheetObject(); }
    SheetGrid* grid() { return window->DataGrid; }
    QString Shown(const char* name)
    {
        const CellAddress cell = At(name);
        return sheet().display(cell.Row, cell.Column).Text;
    }
    void Put(const char* name, const QString& text)
    {
        ASSERT_TRUE(document().EnterCell(At(name), text)) << name;
    }
    QPoint Centre(const char* name) { return grid()->CellRect(At(name)).center(); }
    void Click(const char* name, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, modifiers, Centre(name));
    }
    // Press, one move with the button held, release: a drag as the widget sees it.
    static void Drag(QWidget* widget, QPoint from, QPoint to)
    {
        QTest::mousePress(widget, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), widget->mapToGlobal(QPointF(to)),
            Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
        QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
    }
    void Type(const QString& keys) { QTest::keyClicks(grid(), keys); }
    // Runs `answer` on the modal dialog of that type once `open` has shown it.
    template <typename Dialog>
    void AnswerDialog(QAction* open, const std::function<void(Dialog&)>& answer)
    {
        bool seen = false;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            seen = true;
            answer(*dialog);
        });
        open->trigger();
        EXPECT_TRUE(seen);
    }

    Runtime::ScopedHostLocale locale { QLocale(QLocale::English, QLocale::UnitedKingdom) };
    ScriptedPrompts prompts;
    Host host;
    QTemporaryDir folder;
    std::unique_ptr<frmTillane> window;
};

TEST_F(SheetWindowTest, GridShowsWhatTheSheetHolds)
{
    QAbstractItemModelTester tester(
        window->GridModel, QAbstractItemModelTester::FailureReportingMode::Fatal);
    Put("A1", u"Rain"_s);
    Put("A2", u"4"_s);
    Put("B2", u"=A2*2"_s);
    document().SetCellStyle(CellBlock::Single(At("A1")), 0x0000FF, false);
    document().SetColumnWidth(2, 2400);
    SheetGridModel* model = window->GridModel;
    const auto data
        = [&](const char* name, int role) { return model->IndexOf(At(name)).data(role); };
    EXPECT_EQ(model->rowCount(), 256);
    EXPECT_EQ(model->columnCount(), 26);
    EXPECT_EQ(model->headerData(25, Qt::Horizontal).toString(), u"Z"_s);
    EXPECT_EQ(
        data("A2", Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight, Qt::AlignRight);
    EXPECT_EQ(
        data("A1", Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignLeft, Qt::AlignLeft);
    EXPECT_EQ(data("A1", Qt::BackgroundRole).value<QBrush>().color(), QColor(Qt::red));
    EXPECT_EQ(grid()->font().family(), u"Arial"_s); // the sheet font, for cells without their own
    EXPECT_EQ(grid()->columnWidth(1), grid()->TwipsToPixels(2400));
    // The formula shows while its cell is current, its value once left.
    Click("B2");
    EXPECT_EQ(data("B2", Qt::DisplayRole).toString(), u"=A2*2"_s);
    Click("C2");
    EXPECT_EQ(data("B2", Qt::DisplayRole).toString(), u"8"_s);
}

using SheetWindowKeys = RowFile::RowTest<SheetWindowTest>;

TEST_P(SheetWindowKeys, KeysOnTheGridAndInTheEditBox)
{
    Put("A1", u"12"_s);
    if (row().flag("locked"))
        document().SetCellStyle(CellBlock::Single(At("A1")), 0xFFFFFF, true);
    Click("A1");
    if (row().text("typed") == u"\b"_s)
        QTest::keyClick(grid(), Qt::Key_Backspace);
    else
        Type(row().text("typed"));
    if (row().text("finish") != u"none"_s)
        QTest::keyClick(window->txtEdit, Qt::Key(QKeySequence(row().text("finish"))[0].key()));
    EXPECT_EQ(window->Editing(), !row().text("boxText").isEmpty());
    if (window->Editing()) {
        EXPECT_EQ(window->txtEdit->text(), row().text("boxText"));
    }
    EXPECT_EQ(Shown("A1"), row().text("a1"));
    EXPECT_EQ(grid()->CurrentCell(), At(row().text("current").toLatin1().constData()));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SheetWindowKeys, RowFile::In("sheet/window/keys.rows"), RowFile::Named());

TEST_F(SheetWindowTest, ClickOnACellWhileTypingAFormula)
{
    Put("A1", u"2"_s);
    Put("C3", u"5"_s);
    const auto typeInD1ThenClickC3 = [&](const QString& formula) {
        Click("D1");
        Type(u"x"_s);
        window->txtEdit->selectAll();
        QTest::keyClicks(window->txtEdit, formula);
        Click("C3");
    };
    typeInD1ThenClickC3(u"=A1+"_s); // waiting for an operand: the click names the cell
    ASSERT_TRUE(window->Editing());
    EXPECT_EQ(window->txtEdit->text(), u"=A1+C3"_s);
    EXPECT_EQ(window->EditCell(), At("D1"));
    QTest::keyClick(window->txtEdit, Qt::Key_Return);
    EXPECT_EQ(Shown("D1"), u"7"_s);
    EXPECT_EQ(grid()->CurrentCell(), At("D1"));
    typeInD1ThenClickC3(u"=A1"_s); // complete: entered, and the click moves on
    EXPECT_FALSE(window->Editing());
    EXPECT_EQ(sheet().record(At("D1")).Formula, u"=A1"_s);
    EXPECT_EQ(grid()->CurrentCell(), At("C3"));
}

TEST_F(SheetWindowTest, RefusedEntryIsShownAndTheBoxStaysOpen)
{
    Click("A1");
    Type(u"x"_s);
    window->txtEdit->selectAll();
    QTest::keyClicks(window->txtEdit, u"=A1+1"_s);
    prompts.answerMessage(MessageAnswer::Ok);
    QTest::keyClick(window->txtEdit, Qt::Key_Return);
    EXPECT_EQ(prompts.messages(), QStringList { u"Circular cell reference"_s });
    EXPECT_EQ(prompts.calls().at(0).icon, Frame::MessageIcon::Exclamation);
    EXPECT_TRUE(window->Editing());
    EXPECT_TRUE(window->txtEdit->isVisible());
    EXPECT_EQ(window->txtEdit->text(), u"=A1+1"_s);
}

// From the current cell (where the drag began) to the selection's end: a selection made upwards
// clears nothing.
TEST_F(SheetWindowTest, DeleteClearsFromTheCurrentCellToTheSelectionsEnd)
{
    for (const char* name : { "A1", "A2", "A3" })
        Put(name, QString::fromLatin1(name));
    const auto dragAndDelete = [&](const char* pressed, const char* released) {
        Drag(grid()->viewport(), Centre(pressed), Centre(released));
        QTest::keyClick(grid(), Qt::Key_Delete);
        return QStringList { Shown("A1"), Shown("A2"), Shown("A3") };
    };
    EXPECT_EQ(dragAndDelete("A3", "A1"), (QStringList { u"A1"_s, u"A2"_s, u"A3"_s }));
    EXPECT_EQ(dragAndDelete("A1", "A3"), QStringList(3, QString()));
}

TEST_F(SheetWindowTest, CancelAtTheClosePromptKeepsTheSheet)
{
    Click("B2");
    Type(u"7"_s);
    prompts.answerMessage(MessageAnswer::Cancel);
    EXPECT_FALSE(window->queryClose());
    ASSERT_EQ(prompts.calls().size(), 1);
    const ScriptedPrompts::Call& asked = prompts.calls()[0];
    EXPECT_EQ(asked.text,
        u"This spreadsheet has not been saved.\nDo you wish to save this spreadsheet?"_s);
    EXPECT_EQ(asked.title, u"Quorbin"_s);
    EXPECT_EQ(asked.buttons, Frame::MessageButtons::YesNoCancel);
    EXPECT_EQ(Shown("B2"), u"7"_s); // the open box was entered before asking
    EXPECT_TRUE(document().IsChanged());
    EXPECT_TRUE(host.Changed);
}

TEST_F(SheetWindowTest, FormulaBuilderPutsASumTogetherFromClicks)
{
    for (int row = 1; row <= 5; ++row)
        Put(qPrintable(u"A%1"_s.arg(row)), QString::number(row));
    Click("A7");
    Type(u"="_s);
    frmFormula* builder = window->FormulaBuilder();
    ASSERT_NE(builder, nullptr);
    EXPECT_TRUE(window->Action(SheetToolbar::CreateFormula)->isChecked());
    QTest::mouseClick(builder->cmdFunction[0], Qt::LeftButton);
    EXPECT_EQ(builder->txtFormula->text(), u"=SUM(:)"_s);
    EXPECT_FALSE(builder->cmdOK->isEnabled());
    Click("A1");
    Click("A5");
    EXPECT_EQ(builder->txtFormula->text(), u"=SUM(A1:A5)"_s);
    EXPECT_TRUE(builder->cmdOK->isEnabled());
    EXPECT_TRUE(builder->cmdOperand[0]->isEnabled());
    EXPECT_FALSE(builder->cmdFunction[0]->isEnabled());
    QTest::mouseClick(builder->cmdOK, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(window->FormulaBuilder(), nullptr);
    EXPECT_FALSE(window->Action(SheetToolbar::CreateFormula)->isChecked());
    ASSERT_TRUE(window->Editing());
    EXPECT_EQ(window->EditCell(), At("A7"));
    QTest::keyClick(window->txtEdit, Qt::Key_Return);
    EXPECT_EQ(Shown("A7"), u"15"_s);
}

TEST_F(SheetWindowTest, FillHandleCopiesAFormulaDownFiveRows)
{
    for (int row = 1; row <= 6; ++row)
        Put(qPrintable(u"A%1"_s.arg(row)), QString::number(row * 10));
    Put("B1", u"=A1*2"_s);
    Click("B1");
    FillHandle* handle = window->imgFill;
    ASSERT_TRUE(handle->isVisible());
    const QPoint target = handle->mapFrom(grid()->viewport(), Centre("B6") + QPoint(3, 0));
    Drag(handle, handle->rect().center(), target);
    for (int row = 2; row <= 6; ++row)
        EXPECT_EQ(sheet().record(row, 2).Formula, u"=A%1*2"_s.arg(row)) << row;
    EXPECT_EQ(Shown("B7"), QString());
    document().Undo();
    EXPECT_EQ(Shown("B6"), QString());

    // Upwards from row 1 a reference would leave the sheet: the copy stops with the message.
    Put("B2", u"=A1*2"_s);
    Click("B2");
    prompts.answerMessage(MessageAnswer::Ok);
    const QPoint straightUp(handle->geometry().center().x(), Centre("B1").y());
    Drag(handle, handle->rect().center(), handle->mapFrom(grid()->viewport(), straightUp));
    EXPECT_EQ(prompts.messages(),
        QStringList { u"Unable to copy cells as cell references go out of range"_s });
    EXPECT_EQ(sheet().record(At("B1")).Kind, EmptyCell);
}

TEST_F(SheetWindowTest, CopyCellTakesTwoClicksInOneRowOrColumn)
{
    Put("A1", u"3"_s);
    Put("A2", u"4"_s);
    Put("B1", u"=A1*2"_s);
    Click("B1");
    window->Action(SheetMenu::CopyCell)->trigger();
    frmCopyCell* dialog = window->CopyCellDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(window->Action(SheetToolbar::CopyCell)->isChecked());
    Click("B2");
    prompts.answerMessage(MessageAnswer::Ok);
    Click("C3");
    EXPECT_EQ(prompts.messages(),
        QStringList { u"You can only copy cells down a column or across a row."_s });
    EXPECT_FALSE(dialog->cmdOK->isEnabled());
    Click("B3");
    EXPECT_EQ(dialog->lblCell[1]->text(), u"B3"_s);
    QTest::mouseClick(dialog->cmdOK, Qt::LeftButton);
    EXPECT_EQ(sheet().record(At("B2")).Formula, u"=A2*2"_s);
    EXPECT_EQ(sheet().record(At("B3")).Formula, u"=A3*2"_s);
}

TEST_F(SheetWindowTest, NumberFormatOnASelectionIsSaved)
{
    Put("A1", u"1.5"_s);
    Put("A2", u"2"_s);
    Put("A3", u"7"_s);
    Click("A1");
    Click("A2", Qt::ShiftModifier);
    AnswerDialog<frmNumberFormat>(window->Action(SheetMenu::NumberFormat), [](frmNumberFormat& d) {
        EXPECT_EQ(d.cmbFormat->currentText(), u"General"_s);
        d.cmbFormat->setCurrentText(u"0.00"_s);
        QTest::mouseClick(d.cmdOK, Qt::LeftButton);
    });
    EXPECT_EQ(Shown("A1"), u"1.50"_s);
    EXPECT_EQ(Shown("A2"), u"2.00"_s);
    EXPECT_EQ(Shown("A3"), u"7"_s);
    prompts.answerSaveFile(Frame::FileChoice { folder.filePath(u"formats.qnc"_s), 1 });
    window->Action(SheetToolbar::Save)->trigger();
    EXPECT_EQ(window->windowTitle(), u"Tillane - formats"_s);
}

TEST_F(SheetWindowTest, CellStyleColoursAndLocksTheSelection)
{
    Put("B2", u"5"_s);
    Click("B2");
    AnswerDialog<frmCellStyle>(window->Action(SheetToolbar::CellStyle), [this](frmCellStyle& d) {
        prompts.answerColour(0x000000);
        QTest::mouseClick(d.cmdColour, Qt::LeftButton);
        d.chkLock->setChecked(true);
        QTest::mouseClick(d.cmdOK, Qt::LeftButton);
    });
    EXPECT_EQ(prompts.calls().at(0).initialColour, 0xFFFFFF);
    EXPECT_EQ(document().CellBackColour(At("B2")), 0x000000);
    EXPECT_TRUE(sheet().record(2, 2).Locked);
    window->Action(SheetMenu::Undo)->trigger();
    EXPECT_FALSE(sheet().record(2, 2).Locked);
    window->Action(SheetMenu::Redo)->trigger();
    EXPECT_TRUE(sheet().record(2, 2).Locked);
}

TEST_F(SheetWindowTest, CornerSelectsTheWholeSheetForTheGridsColour)
{
    Put("C3", u"5"_s);
    auto* corner = grid()->findChild<QAbstractButton*>();
    ASSERT_NE(corner, nullptr);
    QTest::mouseClick(corner, Qt::LeftButton);
    AnswerDialog<frmCellStyle>(window->Action(SheetMenu::CellStyle), [this](frmCellStyle& d) {
        prompts.answerColour(0x00FFFF);
        QTest::mouseClick(d.cmdColour, Qt::LeftButton);
        QTest::mouseClick(d.cmdOK, Qt::LeftButton);
    });
    EXPECT_EQ(sheet().backgroundColour(), 0x00FFFF);
    EXPECT_EQ(grid()->palette().color(QPalette::Base), QColor(Qt::yellow));
}

TEST_F(SheetWindowTest, TextStyleSetsFontAndColourAndTheRowGrows)
{
    Put("A2", u"Big"_s);
    Click("A2");
    const int height = grid()->rowHeight(1);
    QFont chosen(u"Liberation Serif"_s);
    chosen.setPointSizeF(20);
    chosen.setBold(true);
    prompts.answerFont(chosen).answerColour(0x0000FF);
    window->Action(SheetMenu::TextStyle)->trigger();
    const QFont shown = window->GridModel->CellFont(At("A2"));
    EXPECT_EQ(shown.family(), u"Liberation Serif"_s);
    EXPECT_EQ(shown.pointSizeF(), 20.0);
    EXPECT_TRUE(shown.bold());
    EXPECT_EQ(sheet().display(2, 1).ForeColour, 0x0000FF);
    EXPECT_GT(grid()->rowHeight(1), height);
}

TEST_F(SheetWindowTest, DraggedColumnBorderIsKeptInTheSheet)
{
    grid()->horizontalHeader()->resizeSection(2, 150);
    EXPECT_EQ(sheet().columnWidth(3), grid()->PixelsToTwips(150));
    document().Undo();
    EXPECT_EQ(grid()->columnWidth(2), grid()->TwipsToPixels(DesignedColumnWidth));
}

TEST_F(SheetWindowTest, RegisteredForSheetFiles)
{
    RegisterSheetWindow();
    const Frame::DocumentKind* kind = Frame::FindDocumentKind(Frame::SheetDocumentType);
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind->Extension, u"qnc"_s);
    EXPECT_EQ(kind->CaptionWord, u"Tillane"_s);
    std::unique_ptr<QObject> made(kind->CreateWindow(host));
    EXPECT_NE(qobject_cast<frmTillane*>(made.get()), nullptr);
    Frame::UnregisterDocumentKind(Frame::SheetDocumentType);
}

} // namespace
