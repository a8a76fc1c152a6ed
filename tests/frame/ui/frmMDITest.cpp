#include "frame/ui/frmMDI.h"

#include "RowFile.h"
#include "TableRows.h"
#include "TestDocument.h"
#include "frame/DatabaseCompaction.h"
#include "frame/DocumentKinds.h"
#include "frame/FrameSettings.h"
#include "frame/support/ScriptedPrompts.h"
#include "frame/ui/DocumentSubWindow.h"
#include "frame/ui/frmNewFile.h"
#include "resources/StringTable.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using Frame::MessageAnswer;
using Frame::MessageButtons;
using Frame::MessageIcon;

namespace {

using TestRows::PrintTo;

// Deletes the windows that closed with WA_DeleteOnClose.
void DeleteClosedWindows()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Runs `act` on the modal dialog once the event loop of the next exec() is running.
void WhenModalShows(std::function<void(QWidget*)> act)
{
    QTimer::singleShot(0, [act] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        act(modal);
    });
}

class MainWindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::InitialiseFrame(QDir::currentPath());
        TestDocument::Made().clear();
        TestDocument::RegisterAllKinds();
        window = std::make_unique<Frame::frmMDI>();
    }

    void TearDown() override
    {
        window.reset();
        DeleteClosedWindows();
        TestDocument::UnregisterAllKinds();
        Frame::RegisterDatabaseCompaction({});
    }

    TestDocument* documentAt(int slot) const
    {
        return qobject_cast<TestDocument*>(window->DocumentWindowAt(slot));
    }

    QStringList captions() const
    {
        QStringList titles;
        for (QMdiSubWindow* subWindow : window->mdiArea->subWindowList())
            titles.append(subWindow->windowTitle());
        return titles;
    }

    void closeDocument(int slot)
    {
        QWidget* document = window->DocumentWindowAt(slot);
        ASSERT_NE(document, nullptr);
        ASSERT_TRUE(document->parentWidget()->close());
        DeleteClosedWindows();
    }

    ScriptedPrompts prompts;
    std::unique_ptr<Frame::frmMDI> window;
};

// ---- Document table: slots, tags, captions ---------------------------------------------------

TEST_F(MainWindowTest, SecondDocumentTakesSlotOneAndAFreedSlotIsReused)
{
    EXPECT_EQ(window->OpenDocumentWindow(5, QString()), 0);
    EXPECT_EQ(window->OpenDocumentWindow(1, QString()), 1);
    EXPECT_EQ(captions(), (QStringList { u"Tillane- Untitled:1"_s, u"Ormsey- Untitled:2"_s }));

    closeDocument(0);
    ASSERT_EQ(window->OpenDocumentWindow(3, QString()), 0);
    EXPECT_EQ(documentAt(0)->windowTitle(), u"Bramlet- Untitled:1"_s);
}

TEST_F(MainWindowTest, FileNameIsSetLastOnAShownCaptionedWindow)
{
    window->show();
    const int slot = window->OpenDocumentWindow(3, u"/home/class/Pets.qnd"_s);
    ASSERT_EQ(TestDocument::Made().size(), 1);
    const TestDocument* document = TestDocument::Made()[0];
    ASSERT_EQ(document->Arrivals.size(), 1);
    const TestDocument::Arrival& arrival = document->Arrivals[0];
    EXPECT_EQ(arrival.fileName, u"/home/class/Pets.qnd"_s);
    EXPECT_EQ(arrival.tag, QString::number(slot));
    EXPECT_EQ(arrival.caption, u"Bramlet- Untitled:1"_s);
    EXPECT_TRUE(arrival.visible);
}

TEST_F(MainWindowTest, KindWithoutWindowMakesNoWindowAndTakesNoSlot)
{
    Frame::UnregisterDocumentKind(4);
    EXPECT_EQ(window->OpenDocumentWindow(4, QString()), -1);
    EXPECT_EQ(window->OpenDocumentWindow(99, QString()), -1);
    EXPECT_TRUE(window->mdiArea->subWindowList().isEmpty());
}

TEST_F(MainWindowTest, WindowsGetTheMainWindowAsHostAndItsDialogFolder)
{
    window->OpenDocumentWindow(5, QString());
    Frame::DocumentHost* host = documentAt(0)->Host;
    ASSERT_EQ(host, static_cast<Frame::DocumentHost*>(window.get()));
    host->RememberDialogFolder(u"/home/class/maths/Heights.qnp"_s);
    EXPECT_EQ(host->DialogFolder(), u"/home/class/maths"_s);
}

TEST_F(MainWindowTest, DestroyedDocumentGivesItsSlotBack)
{
    window->OpenDocumentWindow(5, QString());
    delete TestDocument::Made()[0].data();
    EXPECT_EQ(window->OpenDocumentWindow(5, QString()), 0);
}

TEST_F(MainWindowTest, ClosingADocumentAsksItsCloseQuery)
{
    window->OpenDocumentWindow(5, QString());
    TestDocument* document = documentAt(0);
    document->AllowClose = false;
    EXPECT_FALSE(document->parentWidget()->close());
    DeleteClosedWindows();
    EXPECT_EQ(document->Queries, 1);
    EXPECT_EQ(window->mdiArea->subWindowList().size(), 1);
}

// ---- Opening by file name ----------------------------------------------------------------------

struct OpenRow
{
    const char* name;
    QString fileName;
    QString caption; // empty: no window
};

class OpenDocumentFileTest : public MainWindowTest, public testing::WithParamInterface<OpenRow>
{
};

TEST_P(OpenDocumentFileTest, RoutesByExtension)
{
    const OpenRow& row = GetParam();
    window->OpenDocumentFile(row.fileName);
    if (row.caption.isEmpty()) {
        EXPECT_TRUE(captions().isEmpty());
        EXPECT_TRUE(TestDocument::Made().isEmpty());
        return;
    }
    EXPECT_EQ(captions(), QStringList { row.caption });
    ASSERT_EQ(TestDocument::Made().size(), 1);
    EXPECT_EQ(TestDocument::Made()[0]->fileName(), row.fileName);
}

INSTANTIATE_TEST_SUITE_P(Rows, OpenDocumentFileTest,
    testing::Values(OpenRow { "CardsInCapitals", u"/work/Report.QND"_s, u"Bramlet- Untitled:1"_s },
        OpenRow { "TextFile", u"/work/notes.txt"_s, QString() }),
    TestRows::Named());

TEST_F(MainWindowTest, FileOpenShowsTheProgramsFilterAndOpensTheChoice)
{
    prompts.answerOpenFile(Frame::FileChoice { u"/tmp/class/Pets.qnd"_s, 3 });
    window->FileOpen(3);
    ASSERT_EQ(prompts.calls().size(), 1);
    const Frame::FileDialogRequest& request = prompts.calls()[0].file;
    EXPECT_EQ(request.title, u"Open"_s);
    EXPECT_EQ(request.filter,
        u"All Quorbin Files|*.qnp;*.qnd;*.qnc|Ormsey Files|*.qnp|DataBase Files|*.qnd|"
        u"Tillane Files|*.qnc"_s);
    EXPECT_EQ(request.filterIndex, 3);
    EXPECT_EQ(request.folder, QDir::currentPath());
    EXPECT_TRUE(request.fileName.isEmpty());
    ASSERT_EQ(TestDocument::Made().size(), 1);
    EXPECT_EQ(TestDocument::Made()[0]->fileName(), u"/tmp/class/Pets.qnd"_s);
}

TEST_F(MainWindowTest, FileOpenCancelledOrTextFileDoesNothing)
{
    prompts.answerOpenFile(std::nullopt)
        .answerOpenFile(Frame::FileChoice { u"/tmp/notes.txt"_s, 1 });
    window->FileOpen(1);
    window->FileOpen(1);
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_TRUE(TestDocument::Made().isEmpty());
}

// ---- The shell's execute string ----------------------------------------------------------------

struct ExecuteRow
{
    const char* name;
    QString executeString;
    QStringList opened; // file names given to new windows
    bool cancel;
    QStringList messages;
};

class LinkExecuteTest : public MainWindowTest, public testing::WithParamInterface<ExecuteRow>
{
};

TEST_P(LinkExecuteTest, OpensOnlyTheFirstBracketedCommand)
{
    const ExecuteRow& row = GetParam();
    for (qsizetype index = 0; index < row.messages.size(); ++index)
        prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_EQ(window->LinkExecute(row.executeString), row.cancel);
    QStringList opened;
    for (const QPointer<TestDocument>& document : TestDocument::Made())
        opened.append(document->fileName());
    EXPECT_EQ(opened, row.opened);
    EXPECT_EQ(prompts.messages(), row.messages);
}

INSTANTIATE_TEST_SUITE_P(Rows, LinkExecuteTest,
    // The scan's own rules are the parser's table, and routing by extension OpenDocumentFile's;
    // these rows are what the window makes of a scan: one file opened, or the message.
    testing::Values(ExecuteRow { "TwoCommands", uR"([open(C:\A.qnd)][open(C:\B.qnd)])"_s,
                        { uR"(C:\A.qnd)"_s }, true, {} },
        ExecuteRow {
            "NoRoomForArgument", u"[open(]"_s, {}, false, { u"An unknown error occured: 5"_s } }),
    TestRows::Named());

TEST_F(MainWindowTest, ExecuteWhileADialogShowsIsRefusedWithMessage450)
{
    QDialog dialog(window.get());
    dialog.setModal(true);
    dialog.show();
    prompts.answerMessage(MessageAnswer::Ok);
    window->LinkExecute(u"[open(/home/class/Pets.qnd)]"_s);
    dialog.hide();
    EXPECT_TRUE(TestDocument::Made().isEmpty());
    ASSERT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(
        prompts.calls()[0].text, u"You must close any dialog boxes before opening another file"_s);
    EXPECT_EQ(prompts.calls()[0].icon, MessageIcon::Information);
}

TEST_F(MainWindowTest, ExecuteHidesTheNewFileChooserAndOpensTheFile)
{
    QTimer::singleShot(
        0, window.get(), [this] { window->LinkExecute(u"[open(/home/class/Pets.qnd)]"_s); });
    window->ShowNewFile();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(captions(), QStringList { u"Bramlet- Untitled:1"_s });
    ASSERT_EQ(TestDocument::Made().size(), 1);
    ASSERT_EQ(TestDocument::Made()[0]->Arrivals.size(), 1);
    EXPECT_FALSE(TestDocument::Made()[0]->Arrivals[0].dialogShowing);
    EXPECT_TRUE(prompts.messages().isEmpty());
}

// ---- Menus and images --------------------------------------------------------------------------

TEST_F(MainWindowTest, CompactDatabaseIsOfferedOnlyWhenACompactionIsWiredIn)
{
    Frame::frmMDI without;
    EXPECT_FALSE(without.SubUtilitiesMenu[0]->isEnabled());
    Frame::RegisterDatabaseCompaction([](const QString&, const QString&) {});
    Frame::frmMDI with;
    EXPECT_TRUE(with.SubUtilitiesMenu[0]->isEnabled());
}

// ---- New-file chooser --------------------------------------------------------------------------

TEST_F(MainWindowTest, ChooserDisablesKindsWithoutWindows)
{
    Frame::UnregisterDocumentKind(2);
    Frame::frmNewFile chooser(window.get());
    ASSERT_EQ(chooser.Command1.size(), 6);
    for (int index = 0; index < 6; ++index)
        EXPECT_EQ(chooser.Command1[index]->isEnabled(), index != 3) << index;
}

class ChooserTest : public RowFile::RowTest<MainWindowTest>
{
};

TEST_P(ChooserTest, ButtonClosesTheChooserThenOpensANewDocument)
{
    WhenModalShows([button = row().whole("button")](QWidget* modal) {
        auto* chooser = qobject_cast<Frame::frmNewFile*>(modal);
        ASSERT_NE(chooser, nullptr);
        QTest::mouseClick(chooser->Command1[button], Qt::LeftButton);
    });
    window->ShowNewFile();
    EXPECT_EQ(captions(), QStringList { row().text("name") + u"- Untitled:1"_s });
    ASSERT_EQ(TestDocument::Made().size(), 1);
    ASSERT_EQ(TestDocument::Made()[0]->Arrivals.size(), 1);
    EXPECT_TRUE(TestDocument::Made()[0]->Arrivals[0].fileName.isEmpty());
    EXPECT_FALSE(TestDocument::Made()[0]->Arrivals[0].dialogShowing);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ChooserTest, RowFile::In("frame/ui/newFileChooser.rows"), RowFile::Named());

TEST_F(MainWindowTest, ChooserOpenButtonShowsTheOpenDialogWithAllFiles)
{
    prompts.answerOpenFile(std::nullopt);
    WhenModalShows([](QWidget* modal) {
        QTest::mouseClick(qobject_cast<Frame::frmNewFile*>(modal)->Command1[0], Qt::LeftButton);
    });
    window->ShowNewFile();
    ASSERT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(prompts.calls()[0].kind, ScriptedPrompts::Kind::OpenFile);
    EXPECT_EQ(prompts.calls()[0].file.filterIndex, 1);
    EXPECT_TRUE(captions().isEmpty());
}

// ---- Ending ------------------------------------------------------------------------------------

TEST_F(MainWindowTest, ExitIsCancelledByADocumentsCloseQuery)
{
    window->OpenDocumentWindow(5, QString());
    window->OpenDocumentWindow(1, QString());
    documentAt(1)->AllowClose = false;
    QSignalSpy unloaded(window.get(), &Frame::frmMDI::Unloaded);
    window->show();
    window->SubFileMenu[3]->trigger();
    DeleteClosedWindows();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(unloaded.count(), 0);
    EXPECT_EQ(window->mdiArea->subWindowList().size(), 2);
    EXPECT_EQ(documentAt(1)->Queries, 1);
}

TEST_F(MainWindowTest, ExitAsksEachDocumentOnceAndDeletesThePictureFile)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    Frame::Settings().PictureTempFile = folder.filePath(u"QBNPicture.tmp"_s);
    QFile picture(Frame::Settings().PictureTempFile);
    ASSERT_TRUE(picture.open(QIODevice::WriteOnly));
    picture.close();
    window->OpenDocumentWindow(5, QString());
    window->OpenDocumentWindow(3, QString());
    QSignalSpy unloaded(window.get(), &Frame::frmMDI::Unloaded);
    window->show();

    EXPECT_TRUE(window->close());
    DeleteClosedWindows();
    EXPECT_EQ(unloaded.count(), 1);
    EXPECT_FALSE(QFile::exists(Frame::Settings().PictureTempFile));
    ASSERT_EQ(TestDocument::Made().size(), 2);
    EXPECT_TRUE(TestDocument::Made()[0].isNull());
    EXPECT_TRUE(TestDocument::Made()[1].isNull());
}

// ---- Compact Database --------------------------------------------------------------------------

struct CompactionCall
{
    QString fileName;
    QString workFile;
};

TEST_F(MainWindowTest, CompactNeedsATemporaryFolderThenRunsAndReports456)
{
    QList<CompactionCall> compacted;
    Frame::RegisterDatabaseCompaction([&compacted](const QString& file, const QString& work) {
        compacted.append({ file, work });
    });
    Frame::Settings().TempFolder.clear();
    prompts.answerMessage(MessageAnswer::Ok);
    window->CompactDatabase();
    EXPECT_EQ(prompts.messages(),
        QStringList { u"You cannot compact a database because there is no temporary path set."_s });
    EXPECT_EQ(prompts.calls()[0].title, u"Quorbin"_s);
    EXPECT_TRUE(compacted.isEmpty());

    Frame::Settings().TempFolder = u"/tmp/quorbin-test"_s;
    prompts.answerOpenFile(Frame::FileChoice { u"/home/class/Pets.qnd"_s, 1 })
        .answerMessage(MessageAnswer::Ok);
    window->CompactDatabase();
    ASSERT_EQ(prompts.calls().size(), 3);
    EXPECT_EQ(prompts.calls()[1].file.filter, u"Quorbin Database Files|*.qnd"_s);
    EXPECT_EQ(prompts.calls()[2].text, u"Database successfully compacted"_s);
    EXPECT_EQ(prompts.calls()[2].icon, MessageIcon::Information);
    ASSERT_EQ(compacted.size(), 1);
    EXPECT_EQ(compacted[0].fileName, u"/home/class/Pets.qnd"_s);
    EXPECT_EQ(compacted[0].workFile, u"/tmp/quorbin-test/Quorbin.tmp"_s);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MainWindowTest, FailedOrCancelledCompactionEndsSilently)
{
    int attempts = 0;
    Frame::RegisterDatabaseCompaction([&attempts](const QString&, const QString&) {
        ++attempts;
        throw std::runtime_error("database is open");
    });
    Frame::Settings().TempFolder = u"/tmp"_s;
    prompts.answerOpenFile(std::nullopt).answerOpenFile(Frame::FileChoice { u"/tmp/A.qnd"_s, 1 });
    window->CompactDatabase();
    window->CompactDatabase();
    EXPECT_EQ(attempts, 1);
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
