#include "frame/ui/frmMDI.h"

#include "frame/DatabaseCompaction.h"
#include "frame/DocumentKinds.h"
#include "frame/DocumentWindow.h"
#include "frame/FrameSettings.h"
#include "frame/Hourglass.h"
#include "frame/LinkExecute.h"
#include "frame/Prompts.h"
#include "frame/ui/DocumentSubWindow.h"
#include "frame/ui/ResourceIcons.h"
#include "frame/ui/WidgetHelpers.h"
#include "frame/ui/frmAbout.h"
#include "frame/ui/frmNewFile.h"
#include "resources/StringTable.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenuBar>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

namespace {

constexpr int fileMenuText = 400;
constexpr int utilitiesMenuText = 410;
constexpr int helpMenuText = 420;
constexpr int untitledText = 1008;
constexpr int modalWindowOpenText = 450;
constexpr int unknownErrorText = 451;
constexpr int allFilesFilter = 452;
constexpr int databaseFilter = 453;
constexpr int compactTitle = 454;
constexpr int noTemporaryFolderText = 455;
constexpr int compactedText = 456;
constexpr int openTitle = 551;

} // namespace

frmMDI::frmMDI(QWidget* parent)
    : QMainWindow(parent)
{
    setWindowTitle(u"Quorbin"_s);
    setWindowIcon(ResourceIcon(131));
    mdiArea = new QMdiArea;
    setCentralWidget(mdiArea);
    CommonDialogFolder = QDir::currentPath();
    for (const int number : ToolbarIconNumbers())
        m_toolbarImages.add(ResourceIcon(number));
    buildMenus();
}

frmMDI::~frmMDI() = default;

void frmMDI::buildMenus()
{
    FileMenu = menuBar()->addMenu(QString());
    for (int index = 0; index < 4; ++index)
        SubFileMenu.append(FileMenu->addAction(QString()));
    SetMenuCaptions({ FileMenu->menuAction() }, fileMenuText);
    SetMenuCaptions(SubFileMenu, fileMenuText + 1);
    SubFileMenu[0]->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    SubFileMenu[1]->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    SubFileMenu[1]->setIcon(ResourceIcon(127));
    connect(SubFileMenu[0], &QAction::triggered, this, &frmMDI::ShowNewFile);
    connect(SubFileMenu[1], &QAction::triggered, this, [this] { FileOpen(1); });
    connect(SubFileMenu[3], &QAction::triggered, this, &QWidget::close);

    UtilitiesMenu = menuBar()->addMenu(QString());
    SubUtilitiesMenu.append(UtilitiesMenu->addAction(QString()));
    SetMenuCaptions({ UtilitiesMenu->menuAction() }, utilitiesMenuText);
    SetMenuCaptions(SubUtilitiesMenu, utilitiesMenuText + 1);
    connect(SubUtilitiesMenu[0], &QAction::triggered, this, &frmMDI::CompactDatabase);
    // Compaction comes from the card library, which the application may or may not wire in.
    SubUtilitiesMenu[0]->setEnabled(IsDatabaseCompactionRegistered());
    connect(UtilitiesMenu, &QMenu::aboutToShow, this,
        [this] { SubUtilitiesMenu[0]->setEnabled(IsDatabaseCompactionRegistered()); });

    HelpMenu = menuBar()->addMenu(QString());
    SubHelpMenu.append(HelpMenu->addAction(QString()));
    SetMenuCaptions({ HelpMenu->menuAction() }, helpMenuText);
    SetMenuCaptions(SubHelpMenu, helpMenuText + 1);
    connect(SubHelpMenu[0], &QAction::triggered, this, &frmMDI::ShowAbout);
}

void frmMDI::RememberDialogFolder(const QString& chosenFile)
{
    const QString folder = QFileInfo(chosenFile).absolutePath();
    if (!folder.isEmpty())
        CommonDialogFolder = folder;
}

void frmMDI::SetDocumentChanged(const QObject* window, bool changed)
{
    bool ok = false;
    const int slot = window->property("Tag").toString().toInt(&ok);
    DocumentTable& table = Settings().DocumentTable;
    if (ok && table.isValidIndex(slot) && table.slot(slot).Form.data() == window)
        table.setChanged(slot, changed);
}

void frmMDI::FileOpen(int filterIndex)
{
    const FileDialogRequest request { GetResString(openTitle), GetResString(allFilesFilter),
        filterIndex, CommonDialogFolder, QString() };
    const std::optional<FileChoice> choice = CurrentPrompts().openFile(request);
    if (!choice || choice->path.isEmpty())
        return;
    RememberDialogFolder(choice->path);
    OpenDocumentFile(choice->path);
}

void frmMDI::OpenDocumentFile(const QString& fileName)
{
    const int docType = DocTypeForFileName(fileName);
    if (docType != 0)
        OpenDocumentWindow(docType, fileName);
}

int frmMDI::OpenDocumentWindow(int docType, const QString& fileName)
{
    const DocumentKind* kind = FindDocumentKind(docType);
    if (kind == nullptr || !kind->CreateWindow)
        return -1;
    QObject* made = kind->CreateWindow(*this);
    auto* widget = qobject_cast<QWidget*>(made);
    auto* document = dynamic_cast<DocumentWindow*>(made);
    if (widget == nullptr || document == nullptr) {
        delete made;
        return -1;
    }
    const QString caption = kind->CaptionWord;

    DocumentTable& table = Settings().DocumentTable;
    const int slot = table.claimSlot(docType);
    table.setForm(slot, widget);
    widget->setProperty("Tag", QString::number(slot));
    widget->setWindowTitle(caption + GetResString(untitledText) + QString::number(slot + 1));

    auto* frame = new DocumentSubWindow(widget, document);
    // The slot is given back when the window goes, however it goes.
    // (A widget announces its end before its guarded pointers clear, so compare by address.)
    connect(widget, &QObject::destroyed, this, [slot](QObject* gone) {
        DocumentTable& documents = Settings().DocumentTable;
        const DocumentSlot entry = documents.slot(slot);
        if (!entry.Free && (entry.Form.isNull() || entry.Form.data() == gone))
            documents.release(slot);
    });
    mdiArea->addSubWindow(frame);
    frame->show();
    document->setFileName(fileName);
    return slot;
}

QWidget* frmMDI::DocumentWindowAt(int slot) const
{
    const DocumentSlot entry = Settings().DocumentTable.slot(slot);
    if (entry.Free)
        return nullptr;
    return qobject_cast<QWidget*>(entry.Form.data());
}

void frmMDI::MDICompactDatabase(const QString& fileName)
{
    const Hourglass hourglass;
    CompactDatabaseFile(fileName);
}

void frmMDI::CompactDatabase()
{
    const FileDialogRequest request { GetResString(compactTitle), GetResString(databaseFilter), 1,
        CommonDialogFolder, QString() };
    if (Settings().TempFolder.isEmpty()) {
        CurrentPrompts().message(GetResString(noTemporaryFolderText), u"Quorbin"_s,
            MessageIcon::Information, MessageButtons::Ok);
        return;
    }
    const std::optional<FileChoice> choice = CurrentPrompts().openFile(request);
    if (!choice || choice->path.isEmpty())
        return;
    RememberDialogFolder(choice->path);
    try {
        MDICompactDatabase(choice->path);
    } catch (...) {
        // A failed compaction leaves the database as it was and ends without a message.
        return;
    }
    CurrentPrompts().message(
        GetResString(compactedText), QString(), MessageIcon::Information, MessageButtons::Ok);
}

bool frmMDI::LinkExecute(const QString& executeString)
{
    const LinkCommand command = ParseLinkExecute(executeString);
    if (command.Error != 0) {
        CurrentPrompts().message(GetResString(unknownErrorText) + QString::number(command.Error),
            QString(), MessageIcon::None, MessageButtons::Ok);
        return command.Cancel;
    }
    if (!command.OpenArgument)
        return command.Cancel;
    if (m_newFile)
        m_newFile->reject();
    // Another dialog still showing would be left under a new document window.
    if (DocTypeForFileName(*command.OpenArgument) != 0
        && QApplication::activeModalWidget() != nullptr) {
        CurrentPrompts().message(GetResString(modalWindowOpenText), QString(),
            MessageIcon::Information, MessageButtons::Ok);
        return command.Cancel;
    }
    OpenDocumentFile(*command.OpenArgument);
    return command.Cancel;
}

void frmMDI::ShowNewFile()
{
    int choice = -1;
    {
        frmNewFile chooser(this);
        m_newFile = &chooser;
        chooser.exec();
        choice = chooser.Choice();
    }
    if (choice == 0)
        FileOpen(1);
    else if (choice > 0)
        OpenDocumentWindow(frmNewFile::ButtonDocTypes[choice], QString());
}

void frmMDI::ShowAbout()
{
    frmAbout about(this);
    about.exec();
}

void frmMDI::closeEvent(QCloseEvent* event)
{
    const QList<QMdiSubWindow*> windows = mdiArea->subWindowList();
    for (QMdiSubWindow* window : windows) {
        auto* frame = qobject_cast<DocumentSubWindow*>(window);
        if (frame != nullptr && frame->document() != nullptr && !frame->document()->queryClose()) {
            event->ignore();
            return;
        }
    }
    // Every document has agreed: close them without asking again.
    for (QMdiSubWindow* window : windows) {
        if (auto* frame = qobject_cast<DocumentSubWindow*>(window))
            frame->setAskBeforeClosing(false);
        window->close();
    }
    if (!Settings().PictureTempFile.isEmpty())
        QFile::remove(Settings().PictureTempFile);
    event->accept();
    emit Unloaded();
}

} // namespace Frame
