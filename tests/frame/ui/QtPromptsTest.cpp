#include "frame/ui/QtPrompts.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::MessageAnswer;
using Frame::MessageButtons;
using Frame::MessageIcon;

namespace {

// Acts on the modal dialog once its event loop runs. If the dialog is not of the expected
// kind the test fails and the dialog is closed, so a test never waits on a dialog.
template <typename Dialog> void WhenShown(std::function<void(Dialog*)> act, int attemptsLeft = 1000)
{
    QTimer::singleShot(0, [act, attemptsLeft] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr && attemptsLeft > 0) {
            WhenShown<Dialog>(act, attemptsLeft - 1);
            return;
        }
        auto* dialog = qobject_cast<Dialog*>(modal);
        if (dialog == nullptr) {
            ADD_FAILURE() << "the expected dialog did not show";
            if (modal != nullptr)
                modal->close();
            return;
        }
        act(dialog);
    });
}

struct BoxRow
{
    const char* name;
    MessageIcon icon;
    MessageButtons buttons;
    QMessageBox::Icon expectedIcon;
    QMessageBox::StandardButtons expectedButtons;
    QMessageBox::StandardButton pressed;
    MessageAnswer expected;
    bool untitled = false; // shown with the program's name as its title
};

class QtMessageBox : public testing::TestWithParam<BoxRow>
{
};

TEST_P(QtMessageBox, ShowsTheButtonsAndReturnsThePressedOne)
{
    const BoxRow& row = GetParam();
    QMessageBox::StandardButtons shown;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QString text;
    QString title;
    WhenShown<QMessageBox>([&](QMessageBox* box) {
        shown = box->standardButtons();
        icon = box->icon();
        text = box->text();
        title = box->windowTitle();
        box->button(row.pressed)->click();
    });
    Frame::QtPrompts prompts;
    EXPECT_EQ(prompts.message(
                  u"No Printers"_s, row.untitled ? QString() : u"Print"_s, row.icon, row.buttons),
        row.expected);
    EXPECT_EQ(shown, row.expectedButtons);
    EXPECT_EQ(icon, row.expectedIcon);
    EXPECT_EQ(text, u"No Printers"_s);
    EXPECT_EQ(title, row.untitled ? QGuiApplication::applicationDisplayName() : u"Print"_s);
}

INSTANTIATE_TEST_SUITE_P(Rows, QtMessageBox,
    testing::Values(
        BoxRow { "ok_information", MessageIcon::Information, MessageButtons::Ok,
            QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok, MessageAnswer::Ok },
        BoxRow { "ok_cancel_exclamation", MessageIcon::Exclamation, MessageButtons::OkCancel,
            QMessageBox::Warning, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel,
            MessageAnswer::Cancel },
        BoxRow { "yes_no_question", MessageIcon::Question, MessageButtons::YesNo,
            QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
            MessageAnswer::No },
        BoxRow { "yes_no_cancel_critical", MessageIcon::Critical, MessageButtons::YesNoCancel,
            QMessageBox::Critical, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
            QMessageBox::Yes, MessageAnswer::Yes },
        BoxRow { "retry_cancel_no_icon", MessageIcon::None, MessageButtons::RetryCancel,
            QMessageBox::NoIcon, QMessageBox::Retry | QMessageBox::Cancel, QMessageBox::Retry,
            MessageAnswer::Retry },
        BoxRow { "untitled_shows_the_program_name", MessageIcon::None, MessageButtons::Ok,
            QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok, MessageAnswer::Ok, true }),
    [](const testing::TestParamInfo<BoxRow>& info) { return std::string(info.param.name); });

TEST(QtInputBox, ReturnsTheTypedText)
{
    QString shownDefault;
    QString label;
    WhenShown<QInputDialog>([&](QInputDialog* dialog) {
        shownDefault = dialog->textValue();
        label = dialog->labelText();
        dialog->setTextValue(u"Rabbits"_s);
        dialog->accept();
    });
    EXPECT_EQ(
        Frame::QtPrompts().input(u"Query name:"_s, u"Save Query"_s, u"Query1"_s), u"Rabbits"_s);
    EXPECT_EQ(shownDefault, u"Query1"_s);
    EXPECT_EQ(label, u"Query name:"_s);
}

TEST(QtInputBox, CancelGivesNothing)
{
    WhenShown<QInputDialog>([](QInputDialog* dialog) { dialog->reject(); });
    EXPECT_FALSE(Frame::QtPrompts().input(u"Name:"_s, QString(), u"x"_s));
}

class QtFileDialog : public testing::Test
{
protected:
    Frame::FileDialogRequest request(int filterIndex)
    {
        Frame::FileDialogRequest request;
        request.title = u"Open"_s;
        request.filter = u"All Quorbin Files|*.qnp;*.qnd;*.qnc|Ormsey Files|*.qnp|"
                         "DataBase Files|*.qnd|Tillane Files|*.qnc"_s;
        request.filterIndex = filterIndex;
        request.folder = m_folder.path();
        return request;
    }
    QTemporaryDir m_folder;
};

TEST_F(QtFileDialog, OpenShowsTheFiltersAndReturnsTheChosenFile)
{
    const QString path = m_folder.filePath(u"Pets.qnd"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    QStringList filters;
    QString selectedFilter;
    QString title;
    WhenShown<QFileDialog>([&](QFileDialog* dialog) {
        filters = dialog->nameFilters();
        selectedFilter = dialog->selectedNameFilter();
        title = dialog->windowTitle();
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->accept(); // QFileDialog hides accept()
    });
    const auto choice = Frame::QtPrompts().openFile(request(3));
    ASSERT_TRUE(choice);
    EXPECT_EQ(QDir(choice->path).canonicalPath(), QDir(path).canonicalPath());
    EXPECT_EQ(choice->filterIndex, 3);
    EXPECT_EQ(filters.size(), 4);
    EXPECT_EQ(selectedFilter, u"DataBase Files (*.qnd)"_s);
    EXPECT_EQ(title, u"Open"_s);
}

TEST_F(QtFileDialog, SaveAddsTheExtensionOfTheChosenFilter)
{
    Frame::FileDialogRequest save = request(2);
    save.title = u"Save As"_s;
    WhenShown<QFileDialog>([&](QFileDialog* dialog) {
        dialog->selectNameFilter(u"Tillane Files (*.qnc)"_s);
        emit dialog->filterSelected(u"Tillane Files (*.qnc)"_s);
        dialog->selectFile(u"pets"_s);
        static_cast<QDialog*>(dialog)->accept();
    });
    const auto choice = Frame::QtPrompts().saveFile(save);
    ASSERT_TRUE(choice);
    EXPECT_EQ(QFileInfo(choice->path).fileName(), u"pets.qnc"_s);
    EXPECT_EQ(choice->filterIndex, 4);
}

TEST_F(QtFileDialog, CancelGivesNothing)
{
    WhenShown<QFileDialog>([](QFileDialog* dialog) { dialog->reject(); });
    EXPECT_FALSE(Frame::QtPrompts().openFile(request(1)));
}

TEST(QtColourDialog, StartsFromTheProgramsColourAndReturnsOne)
{
    QColor shown;
    WhenShown<QColorDialog>([&](QColorDialog* dialog) {
        shown = dialog->currentColor();
        dialog->setCurrentColor(QColor(0, 0, 255));
        dialog->accept();
    });
    EXPECT_EQ(Frame::QtPrompts().colour(0x0000FF), 0xFF0000);
    EXPECT_EQ(shown, QColor(255, 0, 0));
}

} // namespace
