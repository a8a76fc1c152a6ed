#pragma once

#include "frame/DocumentHost.h"
#include "frame/ui/ImageList.h"

#include <QAction>
#include <QList>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
#include <QPointer>
#include <QString>

namespace Frame {

class frmNewFile;

// The main window: a multiple-document frame that owns the table of open documents, turns
// file names into document windows of the registered kinds, takes the shell's open command
// and ends the program. It is the host of every document window it makes: the windows ask it
// for what they need through DocumentHost and never name this class.
class frmMDI : public QMainWindow, public DocumentHost
{
    Q_OBJECT

public:
    // Loads the window: the common dialogs start in the current folder, the 24 toolbar
    // images, the menus and their captions. InitialiseFrame must have run.
    explicit frmMDI(QWidget* parent = nullptr);
    ~frmMDI() override;

    // The open dialog with the pair `filterIndex` (from 1) of the program's file filter
    // preselected, then OpenDocumentFile with the choice. Cancelling ends it silently.
    void FileOpen(int filterIndex);
    // Opens a file by the last three characters of its name, ignoring case; any ending that
    // no registered kind claims does nothing.
    void OpenDocumentFile(const QString& fileName);
    // Makes a document window of the type in the first free slot (the table grows by one
    // when none is free): the slot index goes into the window's "Tag" property, the caption
    // reads "Tillane- Untitled:1" for slot 0, the window is shown and finally given its file
    // name (empty: a new document). Returns the slot index; a type with no registered window
    // makes no window, takes no slot and returns -1.
    int OpenDocumentWindow(int docType, const QString& fileName);
    // Compacts one card database in place through the registered compaction, with the
    // hourglass showing. Throws whatever the compaction throws; the file is then unchanged.
    void MDICompactDatabase(const QString& fileName);
    // The shell's execute string (see ParseLinkExecute). Hides the new-file chooser before
    // opening; refuses to open while another dialog is showing (message 450). Returns the
    // Cancel flag: true when the string is refused.
    bool LinkExecute(const QString& executeString);

    // The menu commands.
    void ShowNewFile();
    void ShowAbout() override;
    void CompactDatabase();

    // DocumentHost, for the document windows.
    void NewFile() override { ShowNewFile(); }
    void OpenFile(int filterIndex) override { FileOpen(filterIndex); }
    void Exit() override { close(); }
    QString DialogFolder() const override { return CommonDialogFolder; }
    void RememberDialogFolder(const QString& chosenFile) override;
    QString Caption() const override { return windowTitle(); }
    const ImageList& ToolbarImages() const override { return m_toolbarImages; }
    void SetDocumentChanged(const QObject* window, bool changed) override;

    // The document window (a widget implementing DocumentWindow) of a slot; nullptr when
    // the slot is free or out of range.
    QWidget* DocumentWindowAt(int slot) const;

    QMdiArea* mdiArea = nullptr;
    // Where the open dialogs start: the current folder at start-up, then the last one used.
    QString CommonDialogFolder;
    QMenu* FileMenu = nullptr;
    QList<QAction*> SubFileMenu;
    QMenu* UtilitiesMenu = nullptr;
    QList<QAction*> SubUtilitiesMenu;
    QMenu* HelpMenu = nullptr;
    QList<QAction*> SubHelpMenu;

signals:
    // The window has closed for good: every document agreed and the picture file is gone.
    // The program ends here.
    void Unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();

    // The shared toolbar icons, indexes 1 to 24, for the document windows' toolbars.
    ImageList m_toolbarImages;
    QPointer<frmNewFile> m_newFile;
};

} // namespace Frame
