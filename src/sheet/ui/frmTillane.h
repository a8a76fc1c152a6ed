#pragma once

#include "frame/DocumentWindow.h"
#include "sheet/CellRef.h"
#include "sheet/SheetDocument.h"

#include <QElapsedTimer>
#include <QList>
#include <QMainWindow>
#include <QPointer>

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;
class QToolBar;

namespace Frame {
class DocumentHost;
}

namespace Tillane {

class FillHandle;
class SheetGrid;
class SheetGridModel;
class frmCopyCell;
class frmFormula;

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

// The spreadsheet's window: a view of one SheetDocument. It shows the grid, the edit box over
// the cell being typed into and the fill handle, keeps what only the view knows (the cell
// being edited, whether a click on a cell points at it for a formula), forwards every command
// to the document and answers its one changed() with one Refresh.
class frmTillane : public QMainWindow, public Frame::DocumentWindow
{
    Q_OBJECT

public:
    // The host gives the window the frame's dialogs, icons and commands; it outlives the
    // window. Without one (tests) those menu items do nothing.
    explicit frmTillane(Frame::DocumentHost* host = nullptr, QWidget* parent = nullptr);
    ~frmTillane() override;

    // Frame::DocumentWindow: an empty name starts a new sheet, any other opens that file.
    void setFileName(const QString& fileName) override;
    QString fileName() const override;
    bool queryClose() override;

    SheetDocument& Document() { return *m_document; }

    // The cell the edit box is over, or was last opened on.
    CellAddress EditCell() const { return m_editCell; }
    bool Editing() const { return m_editing; }
    // The formula in the edit box does not evaluate yet: a click on a cell inserts its name.
    bool PointMode() const { return m_pointMode; }

    // Enters an open edit box's text. False (the box keeps the focus) when it was refused.
    bool CommitEdits();
    // Everything shown, from the document: cells, sizes, caption, menus.
    void Refresh();

    // The selection from the current cell to its end, and whether it is the whole sheet.
    CellBlock Selection() const;
    bool AllCellsSelected() const;
    // Opens the edit box over the current cell with the text, unless the cell is locked or a
    // box is open already. False when it did not open.
    bool OpenEditBox(const QString& text);
    // The copy of the current cell into first..last (copy dialog and fill handle).
    void CopyCell(CellAddress source, CellAddress first, CellAddress last);
    // The formula builder's OK: its text goes into the edit box of the cell it was opened on.
    void TakeFormula(CellAddress cell, const QString& formula);

    // The Format and Data commands.
    void ChooseTextStyle();
    void ShowCellStyle();
    void ShowNumberFormat();
    void ShowFormulaBuilder();
    void ShowCopyCell();
    // The open modeless dialogs, or nullptr.
    frmFormula* FormulaBuilder() const;
    frmCopyCell* CopyCellDialog() const;

    SheetGrid* DataGrid = nullptr;
    SheetGridModel* GridModel = nullptr;
    QLineEdit* txtEdit = nullptr;
    FillHandle* imgFill = nullptr;
    QLabel* lblStatus = nullptr;
    QProgressBar* ProgressBar = nullptr;
    QToolBar* tlToolbar = nullptr;

    QMenu* mnuFile = nullptr;
    QMenu* mnuEdit = nullptr;
    QMenu* mnuFormat = nullptr;
    QMenu* mnuData = nullptr;
    QMenu* mnuHelp = nullptr;
    // A menu item by its SheetMenu number or a toolbar button by its SheetToolbar number;
    // nullptr for any other number.
    QAction* Action(int id) const;

    QSize sizeHint() const override { return { 900, 560 }; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    void buildToolbar();
    void buildStatus();
    QAction* addMenuItem(QMenu* menu, int id);
    template <typename Command> void forward(Command command);

    void closeEditBox();
    bool editKeyPressed(QKeyEvent* event);
    void editTextChanged(const QString& text);
    void cellPressed(CellAddress cell);
    void gridKeyTyped(QKeyEvent* event);
    void currentCellChanged(CellAddress current);
    void fillDragged(CellAddress target);
    void showProgress(const QString& status, int percent);
    void setDialogButton(int id, bool down);
    void placeBeside(QWidget* dialog);

    Frame::DocumentHost* m_host;
    SheetDocument* m_document;
    QList<std::pair<int, QAction*>> m_actions;
    CellAddress m_editCell { 1, 1 };
    bool m_editing = false;
    bool m_pointMode = false;
    QPointer<frmFormula> m_formula;
    QPointer<frmCopyCell> m_copyCell;
    QElapsedTimer m_progressDrawn; // invalid while no load or save runs
};

} // namespace Tillane
