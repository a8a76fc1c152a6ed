#include "frame/ui/WidgetHelpers.h"

#include "RowFile.h"
#include "frame/FrameSettings.h"
#include "frame/ui/PrinterList.h"
#include "resources/StringTable.h"

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// ---- Menu captions --------------------------------------------------------------------------

TEST(SetMenuCaptions, TakesConsecutiveStringsAndMarksSeparators)
{
    QMenuBar bar;
    QMenu* fileMenu = bar.addMenu(u"x"_s);
    QList<QAction*> items;
    for (int index = 0; index < 4; ++index)
        items.append(fileMenu->addAction(u"x"_s));

    Frame::SetMenuCaptions({ fileMenu->menuAction() }, 400);
    Frame::SetMenuCaptions(items, 401);

    EXPECT_EQ(fileMenu->title(), u"&File"_s);
    // The separator's "-" marks it in the string table and is not shown.
    const QStringList expected { u"&New..."_s, u"&Open..."_s, QString(), u"E&xit"_s };
    for (qsizetype index = 0; index < items.size(); ++index) {
        EXPECT_EQ(items[index]->text(), expected[index]) << index;
        EXPECT_EQ(items[index]->isSeparator(), index == 2) << index;
    }
    // A number missing from the table shows as "ERROR"; a gap in the list skips its number.
    QAction first;
    QAction missing;
    Frame::SetMenuCaptions({ &first, nullptr, &missing }, 411);
    EXPECT_EQ(first.text(), u"&Compact Database..."_s);
    EXPECT_EQ(missing.text(), u"ERROR"_s);
}

// ---- Control captions from their tags -------------------------------------------------------

template <typename Widget> Widget* Tagged(Widget* widget, const QVariant& tag, QLayout* layout)
{
    widget->setProperty("Tag", tag);
    layout->addWidget(widget);
    return widget;
}

// A print dialog laid out as its form file would have it, every caption still a placeholder.
TEST(LocaliseControls, CaptionsEveryTaggedControlOfAPrintDialog)
{
    QDialog dialog;
    dialog.setProperty("Tag", u"2"_s); // a document slot, not a caption
    dialog.setWindowTitle(u"Print"_s);
    auto* layout = new QVBoxLayout(&dialog);
    auto* printers = Tagged(new QLabel(u"?"_s), 1015, layout);
    auto* orientation = Tagged(new QGroupBox(u"?"_s), 1012, layout);
    auto* landscape = Tagged(new QRadioButton(u"?"_s), u" 1014 "_s, new QVBoxLayout(orientation));
    auto* tabs = Tagged(new QTabWidget, QVariant(), layout);
    auto* rangePage = new QWidget;
    rangePage->setProperty("Tag", 911);
    tabs->addTab(rangePage, u"?"_s);
    auto* ok = Tagged(new QPushButton(u"?"_s), 1000, layout);
    auto* wordTag = Tagged(new QLabel(u"keep"_s), u"picture"_s, layout);
    auto* noTag = Tagged(new QLabel(u"keep"_s), QVariant(), layout);
    auto* missingText = Tagged(new QLabel(u"?"_s), 99999, layout);

    Frame::LocaliseControls(&dialog);
    EXPECT_EQ(printers->text(), u"Printer:"_s);
    EXPECT_EQ(orientation->title(), u"&Orientation"_s);
    EXPECT_EQ(landscape->text(), u"&Landscape"_s);
    EXPECT_EQ(rangePage->windowTitle(), u"Range"_s);
    EXPECT_EQ(ok->text(), u"OK"_s);
    EXPECT_EQ(missingText->text(), u"ERROR"_s);
    // Untagged controls, tags that are no number and the window's own title stay.
    EXPECT_EQ(wordTag->text(), u"keep"_s);
    EXPECT_EQ(noTag->text(), u"keep"_s);
    EXPECT_EQ(dialog.windowTitle(), u"Print"_s);
    Frame::LocaliseControls(nullptr);
}

// ---- Option buttons -------------------------------------------------------------------------

struct OptionRow
{
    const char* name;
    QList<int> checked;
    bool withGap; // the first button missing from the list
    bool exclusive;
    int expected;
};

class SelectedOption : public testing::TestWithParam<OptionRow>
{
};

TEST_P(SelectedOption, IsThePositionOfTheFirstCheckedButton)
{
    const OptionRow& row = GetParam();
    QWidget group;
    QList<QAbstractButton*> buttons;
    for (int index = 0; index < 3; ++index) {
        buttons.append(new QRadioButton(&group));
        buttons.back()->setAutoExclusive(row.exclusive);
    }
    for (const int index : row.checked)
        buttons[index]->setChecked(true);
    if (row.withGap)
        buttons[0] = nullptr;
    EXPECT_EQ(Frame::SelectedOptionIndex(buttons), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, SelectedOption,
    testing::Values(OptionRow { "none_checked", {}, false, true, -1 },
        OptionRow { "first", { 0 }, false, true, 0 }, OptionRow { "last", { 2 }, false, true, 2 },
        OptionRow { "missing_button_skipped", { 1 }, true, true, 1 },
        OptionRow { "non_exclusive_gives_the_first", { 1, 2 }, false, false, 1 }),
    [](const testing::TestParamInfo<OptionRow>& info) { return std::string(info.param.name); });

// ---- Window sizes ---------------------------------------------------------------------------

struct SizeRow
{
    const char* name;
    int width;
    int height;
};

class ClientSize : public testing::TestWithParam<SizeRow>
{
};

TEST_P(ClientSize, MainWindowCentralAreaTakesTheSize)
{
    QMainWindow window;
    window.setMenuBar(new QMenuBar);
    window.menuBar()->addMenu(u"&File"_s);
    window.addToolBar(u"Tools"_s)->addAction(u"Open"_s);
    window.statusBar()->showMessage(u"Ready"_s);
    window.setCentralWidget(new QWidget);
    window.resize(500, 400);

    Frame::SetClientHeight(&window, GetParam().height);
    Frame::SetClientWidth(&window, GetParam().width);
    window.show();
    EXPECT_EQ(window.centralWidget()->height(), GetParam().height);
    EXPECT_EQ(window.centralWidget()->width(), GetParam().width);
    EXPECT_GT(window.height(), GetParam().height); // menu, tool and status bars around it
}

TEST_P(ClientSize, PlainWindowIsItsOwnInnerArea)
{
    QDialog window;
    window.resize(500, 400);
    Frame::SetClientHeight(&window, GetParam().height);
    Frame::SetClientWidth(&window, GetParam().width);
    EXPECT_EQ(window.height(), GetParam().height);
    EXPECT_EQ(window.width(), GetParam().width);
}

INSTANTIATE_TEST_SUITE_P(Rows, ClientSize,
    testing::Values(SizeRow { "grows", 640, 480 }, SizeRow { "shrinks", 320, 200 }),
    [](const testing::TestParamInfo<SizeRow>& info) { return std::string(info.param.name); });

// ---- Printer list ---------------------------------------------------------------------------

class PrinterListTest : public testing::Test
{
protected:
    void SetUp() override
    {
        combo.addItems({ u"old 1"_s, u"old 2"_s });
        combo.setEnabled(true);
        ok.setEnabled(true);
    }
    void TearDown() override { Frame::Settings() = {}; }

    QComboBox combo;
    QPushButton ok;
};

class PrinterListRows : public RowFile::RowTest<PrinterListTest>
{
};

// Every list ends with "PDF File", so that a machine without a printer still prints.
TEST_P(PrinterListRows, ListsThePrintersThenThePdfFileWithTheChoiceSelected)
{
    const QStringList printers = row().list("printers");
    Frame::FillPrinterList(&combo, &ok, printers, row().text("current"), row().flag("pdfChosen"));
    ASSERT_EQ(combo.count(), printers.size() + 1);
    for (qsizetype index = 0; index < printers.size(); ++index)
        EXPECT_EQ(combo.itemText(int(index)), printers[index]);
    EXPECT_EQ(combo.itemText(combo.count() - 1), u"PDF File"_s);
    EXPECT_EQ(combo.currentIndex(), row().whole("selected"));
    EXPECT_TRUE(combo.isEnabled());
    EXPECT_TRUE(ok.isEnabled());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PrinterListRows, RowFile::In("frame/ui/printerList.rows"), RowFile::Named());

TEST_F(PrinterListTest, ChoosingThePdfFileAndBackAgain)
{
    const int pdfEntry = int(QPrinterInfo::availablePrinterNames().size());
    Frame::Settings().CurrentPrinter = u"Room 4"_s;
    Frame::ChoosePrinter(pdfEntry + 1); // outside the list: nothing changes
    Frame::ChoosePrinter(-1);
    EXPECT_FALSE(Frame::Settings().PrintToPdfFile);
    EXPECT_EQ(Frame::CurrentPrinterName(), u"Room 4"_s);
    Frame::ChoosePrinter(pdfEntry);
    EXPECT_TRUE(Frame::Settings().PrintToPdfFile);
    EXPECT_EQ(Frame::CurrentPrinterName(), QString());
    Frame::Settings() = {};
    EXPECT_EQ(Frame::CurrentPrinterName(), QPrinterInfo::defaultPrinterName());
}

} // namespace
