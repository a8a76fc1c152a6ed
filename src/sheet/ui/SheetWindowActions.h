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

namespace Tillane {

// The window's menu items by their string numbers.
namespace SheetMenu {
inline constexpr int File = 400;
inline constexpr int New = 1201;
inline constexpr int Open = 1202;
inline constexpr int Close = 1203;
inline constexpr int Save = 1205;
inline constexpr int SaveAs = 1206;
inline constexpr int ExportData = 1207;
inline constexpr int Print = 1209;
inline constexpr int Exit = 1211;
inline constexpr int Edit = 1212;
inline constexpr int Undo = 1213;
inline constexpr int Redo = 1214;
inline constexpr int Format = 1220;
inline constexpr int TextStyle = 1221;
inline constexpr int CellStyle = 1222;
inline constexpr int NumberFormat = 1223;
inline constexpr int Data = 1230;
inline constexpr int CreateFormula = 1231;
inline constexpr int CopyCell = 1232;
inline constexpr int MakeGraph = 1233;
inline constexpr int ImportData = 1235;
inline constexpr int Help = 420;
inline constexpr int About = 421;
} // namespace SheetMenu

// The toolbar buttons by their tool tips' string numbers (1250 + the button's place).
namespace SheetToolbar {
inline constexpr int Open = 1251;
inline constexpr int Save = 1252;
inline constexpr int Print = 1253;
inline constexpr int TextStyle = 1255;
inline constexpr int CellStyle = 1256;
inline constexpr int NumberFormat = 1257;
inline constexpr int CreateFormula = 1258;
inline constexpr int CopyCell = 1259;
inline constexpr int MakeGraph = 1261;
} // namespace SheetToolbar

// The sheet window's menu bar and toolbar. Every item and button is made from its string
// number ("mnu1205", "tbr1252" as object names) with its shortcut; the commands that come
// with the sheet's graphs, printing and import stay disabled. A button that does what a menu
// item does triggers that item; the formula builder's and copy cell's buttons are checkable,
// down while their dialog is open. The window connects the items to its commands.
class SheetWindowActions
{
public:
    // The toolbar's pictures come from the host's shared images, or without a host (tests)
    // from the program's own icons.
    SheetWindowActions(QMainWindow& window, Frame::DocumentHost* host);

    // A menu item by its SheetMenu number or a toolbar button by its SheetToolbar number;
    // nullptr for any other number.
    QAction* Action(int id) const;

    QMenu* mnuFile = nullptr;
    QMenu* mnuEdit = nullptr;
    QMenu* mnuFormat = nullptr;
    QMenu* mnuData = nullptr;
    QMenu* mnuHelp = nullptr;
    // Its object name is also the settings key its layout is kept under.
    QToolBar* tlToolbar = nullptr;

private:
    void buildMenus(QMainWindow& window);
    void buildToolbar(QMainWindow& window, Frame::DocumentHost* host);
    QAction* addMenuItem(QMenu* menu, int id);

    QList<std::pair<int, QAction*>> m_actions;
};

} // namespace Tillane
