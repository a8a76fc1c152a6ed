#pragma once

#include "cards/ui/CardLayoutBuilder.h"
#include "frame/DocumentWindow.h"

#include <QList>
#include <QMainWindow>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QTextEdit;
class QToolBar;

namespace Dao {
class DBEngine;
}

namespace Frame {
class DocumentHost;
}

namespace Bramlet {

class CardArea;
class CardDocument;

// The window's menu items by their string numbers.
namespace CardMenu {
inline constexpr int File = 700;
inline constexpr int New = 701;
inline constexpr int Open = 702;
inline constexpr int Close = 703;
inline constexpr int LoadPicture = 705;
inline constexpr int ExportPicture = 706;
inline constexpr int ExportData = 707;
inline constexpr int Print = 709;
inline constexpr int Exit = 711;
inline constexpr int CreateReport = 715;
inline constexpr int ExportCsv = 716;
inline constexpr int Edit = 720;
inline constexpr int Cut = 721;
inline constexpr int Copy = 722;
inline constexpr int Paste = 723;
inline constexpr int FindCard = 725;
inline constexpr int CreateQuery = 726;
inline constexpr int ShowQueries = 727;
inline constexpr int EditFields = 729;
inline constexpr int View = 730;
inline constexpr int Velkin = 731; // to Sprondle, in the order of the view codes 2 to 4
inline constexpr int Bramlet = 732;
inline constexpr int Sprondle = 733;
inline constexpr int Table = 734;
inline constexpr int PictureLibrary = 736;
inline constexpr int Record = 740;
inline constexpr int FirstRecord = 741; // to LastRecord, in the order of GoToCard's actions
inline constexpr int PreviousRecord = 742;
inline constexpr int NextRecord = 743;
inline constexpr int LastRecord = 744;
inline constexpr int AddRecord = 746;
inline constexpr int DeleteRecord = 747;
inline constexpr int Remove = 749;
inline constexpr int Data = 750;
inline constexpr int CountWindow = 751;
inline constexpr int CountOptions = 752;
inline constexpr int MakeGraph = 754;
inline constexpr int SortRecords = 756;
inline constexpr int Help = 420;
inline constexpr int About = 421;
} // namespace CardMenu

// The toolbar buttons by their tool tips' string numbers (800 + button). Action() keys them
// apart from the menu items with Key added.
namespace CardToolbar {
inline constexpr int Open = 801;
inline constexpr int Print = 802;
inline constexpr int FirstRecord = 804; // to LastRecord, in the order of GoToCard's actions
inline constexpr int PreviousRecord = 805;
inline constexpr int NextRecord = 806;
inline constexpr int LastRecord = 807;
inline constexpr int FindCard = 809;
inline constexpr int CreateQuery = 810;
inline constexpr int CountWindow = 812;
inline constexpr int QueriesWindow = 813;
inline constexpr int PictureLibrary = 814;
inline constexpr int MakeGraph = 816;
inline constexpr int Refresh = 817;
inline constexpr int Key = 1000;
} // namespace CardToolbar

// The card window: a view of one CardDocument in one of the three views (Velkin, Bramlet,
// Sprondle). It lays the card out from the document's controls, shows the card on show,
// forwards every edit and command to the document and answers its changed() with Refresh.
// Boxes hand each keystroke to the document as it is typed, so no edit is ever left open in
// the window when a command runs.
class frmBramlet : public QMainWindow, public Frame::DocumentWindow
{
    Q_OBJECT

public:
    // `docType` (2, 3 or 4) is the view a new database starts in; an opened file shows the
    // view stored in it. The host gives the frame's dialogs, icons and commands; without one
    // (tests) those menu items do nothing. `engine` is for tests that play a second copy.
    explicit frmBramlet(Frame::DocumentHost* host = nullptr, int docType = 3,
        Dao::DBEngine* engine = nullptr, QWidget* parent = nullptr);
    ~frmBramlet() override;

    // Frame::DocumentWindow: an empty name runs the new-database dialog, any other opens that
    // file. When neither gives a card file the window closes.
    void setFileName(const QString& fileName) override;
    QString fileName() const override;
    bool queryClose() override;

    CardDocument& Document() { return *m_document; }

    // Everything shown, from the document: layout, view, values, record box, menus, caption.
    void Refresh();
    void SetView(int view);
    // The field editor's side of the window: menus and toolbar off, the file to itself, a
    // blank card, the chosen control marked, controls dragged to the 120-twip grid.
    void SetFieldEditing(bool on);
    // The print dialog, then the cards it asks for, as this view shows them, one to a page.
    void PrintCards();

    // The widget showing a document control, and a field's label.
    QWidget* ControlWidget(int control) const;
    QLabel* LabelWidget(int control) const;

    CardArea* picCard = nullptr;
    QLabel* lblName = nullptr;
    QLineEdit* txtName = nullptr;
    QTextEdit* txtFreeText = nullptr;
    QLabel* picPicture = nullptr;
    QLabel* lblKeyWords = nullptr;
    QList<QLineEdit*> txtKeyWord;
    QLabel* lblKeyPictures = nullptr;
    QList<QLabel*> picKeyPicture;
    QList<QLabel*> lblKeyPicture;
    QLabel* lblRecord = nullptr;
    QLineEdit* txtRecordNo = nullptr;
    QLabel* lblNoOfRecords = nullptr;
    QToolBar* dbToolbar = nullptr;

    QMenu* mnuFile = nullptr;
    QMenu* mnuEdit = nullptr;
    QMenu* mnuView = nullptr;
    QMenu* mnuRecord = nullptr;
    QMenu* mnuData = nullptr;
    QMenu* mnuHelp = nullptr;
    // A menu item by its CardMenu number, or a toolbar button by CardToolbar::Key plus its
    // number; nullptr for any other number.
    QAction* Action(int id) const;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildCard();
    void buildMenus();
    void buildToolbar();
    QAction* addMenuItem(QMenu* menu, int id);
    void rebuildLayout();
    void applyView();
    void showValues();
    void enableCommands();
    void connectControl(int index, QWidget* widget);
    void goToCard(int action);
    void closeSoon();
    void clipboard(int id);

    Frame::DocumentHost* m_host;
    int m_docType;
    CardDocument* m_document;
    CardWidgets m_widgets;
    QList<std::pair<int, QAction*>> m_actions;
    int m_layoutVersion = -1;
    int m_shownView = 0;
    bool m_refreshing = false;
    bool m_closing = false;
    // A blank new card was on show at the last refresh.
    bool m_newCardShown = false;
    // A field control being dragged while the fields are edited: its index and where the
    // mouse took hold of it.
    int m_dragged = -1;
    QPoint m_dragStart;
};

} // namespace Bramlet
