#include "frame/ui/QtPrompts.h"

#include "RowFile.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QMetaEnum>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
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

// A value of one of the program's prompt enums by its name, in the enum's order.
template <typename Enum> Enum Named(const QString& name, const QStringList& names)
{
    return Enum(names.indexOf(name));
}

// A Qt message box value by its name ("Ok|Cancel" for several buttons).
template <typename Enum> int QtNamed(const QString& names)
{
    return QMetaEnum::fromType<Enum>().keysToValue(names.toLatin1().constData());
}

class QtMessageBox : public RowFile::RowTest<>
{
};

TEST_P(QtMessageBox, ShowsTheButtonsAndReturnsThePressedOne)
{
    const bool untitled = row().flag("untitled");
    const auto pressed
        = QMessageBox::StandardButton(QtNamed<QMessageBox::StandardButtons>(row().text("pressed")));
    int shown = 0;
    int icon = -1;
    QString text;
    QString title;
    WhenShown<QMessageBox>([&](QMessageBox* box) {
        shown = int(box->standardButtons());
        icon = box->icon();
        text = box->text();
        title = box->windowTitle();
        box->button(pressed)->click();
    });
    const QStringList answers { u"Ok"_s, u"Cancel"_s, u"Yes"_s, u"No"_s, u"Retry"_s };
    EXPECT_EQ(
        Frame::QtPrompts().message(u"No Printers"_s, untitled ? QString() : u"Print"_s,
            Named<MessageIcon>(row().text("icon"),
                { u"None"_s, u"Information"_s, u"Exclamation"_s, u"Question"_s, u"Critical"_s }),
            Named<MessageButtons>(row().text("buttons"),
                { u"Ok"_s, u"OkCancel"_s, u"YesNo"_s, u"YesNoDefaultNo"_s, u"YesNoCancel"_s,
                    u"RetryCancel"_s })),
        Named<MessageAnswer>(row().text("answer"), answers));
    EXPECT_EQ(shown, QtNamed<QMessageBox::StandardButtons>(row().text("shownButtons")));
    EXPECT_EQ(icon, QtNamed<QMessageBox::Icon>(row().text("shownIcon")));
    EXPECT_EQ(text, u"No Printers"_s);
    EXPECT_EQ(title, untitled ? QGuiApplication::applicationDisplayName() : u"Print"_s);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, QtMessageBox, RowFile::In("frame/ui/messageBoxes.rows"), RowFile::Named());

// A question whose Yes destroys something answers No to a pupil who just presses Enter.
TEST(QtMessageBox, EnterOnADestructiveQuestionAnswersNo)
{
    WhenShown<QMessageBox>([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); });
    EXPECT_EQ(Frame::QtPrompts().message(
                  u"Delete?"_s, QString(), MessageIcon::Question, MessageButtons::YesNoDefaultNo),
        MessageAnswer::No);
}

TEST(QtInputBox, ReturnsTheTypedTextOrNothingOnCancel)
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
    // Cancel gives nothing.
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
