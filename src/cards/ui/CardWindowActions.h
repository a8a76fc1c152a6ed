#pragma once

#include <QList>
#include <utility>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace Frame {
class DocumentHost;
}

namespace Bramlet {

struct CardCommandState;

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

// The card window's menu bar and toolbar. Every item and button is made from its string
// number ("mnu709", "tbr802" as object names) with its shortcut; buttons that do what a menu
// item does trigger that item. The commands whose windows and dialogs belong to other parts of
// the card tool stay disabled. Ctrl+Shift+I (cards from a delimited file) is an action of the
// window itself. The window connects the items to its commands.
class CardWindowActions
{
public:
    // The toolbar's pictures come from the host's shared images, or without a host (tests)
    // from the program's own icons.
    CardWindowActions(QMainWindow& window, Frame::DocumentHost* host);

    // A menu item by its CardMenu number, or a toolbar button by CardToolbar::Key plus its
    // number; nullptr for any other number.
    QAction* Action(int id) const;
    // The window's own action for Ctrl+Shift+I.
    QAction* ImportAction() const { return m_import; }

    // Enables the commands that may run now.
    void Enable(const CardCommandState& state);
    // The View menu's check on the view shown (2 to 4).
    void ShowView(int view);

    QMenu* mnuFile = nullptr;
    QMenu* mnuEdit = nullptr;
    QMenu* mnuView = nullptr;
    QMenu* mnuRecord = nullptr;
    QMenu* mnuData = nullptr;
    QMenu* mnuHelp = nullptr;
    // Its object name is also the settings key its layout is kept under.
    QToolBar* dbToolbar = nullptr;

private:
    void buildMenus();
    void buildToolbar(Frame::DocumentHost* host);
    QAction* addMenuItem(QMenu* menu, int id);

    QMainWindow& m_window;
    QList<std::pair<int, QAction*>> m_actions;
    QAction* m_import = nullptr;
};

} // namespace Bramlet
