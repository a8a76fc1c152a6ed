#pragma once

#include "frame/DocumentWindow.h"
#include "sheet/CellRef.h"
#include "sheet/SheetDocument.h"
#include "sheet/ui/SheetWindowActions.h"

#include <QMainWindow>
#include <memory>

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
class SheetEditBox;
class SheetGrid;
class SheetGridModel;
class SheetStatusArea;
class SheetToolDialogs;
class frmCopyCell;
class frmFormula;

// The spreadsheet's window: a view of one SheetDocument. It shows the grid, the edit box over
// the cell being typed into and the fill handle, keeps what only the view knows (the cell
// being edited, whether a click on a cell points at it for a formula), forwards every command
// to the document and answers its one changed() with one Refresh. Its parts are classes of
// their own: the menus and toolbar (SheetWindowActions), the edit box (SheetEditBox), the
// modeless tools (SheetToolDialogs) and the status bar (SheetStatusArea).
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
    CellAddress EditCell() const;
    bool Editing() const;
    // The formula in the edit box does not evaluate yet: a click on a cell inserts its name.
    bool PointMode() const;

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
    QAction* Action(int id) const { return m_actions->Action(id); }

    QSize sizeHint() const override { return { 900, 560 }; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void connectActions();
    template <typename Command> void forward(Command command);

    void cellPressed(CellAddress cell);
    void gridKeyTyped(QKeyEvent* event);
    void currentCellChanged(CellAddress current);
    void fillDragged(CellAddress target);

    Frame::DocumentHost* m_host;
    SheetDocument* m_document;
    // Gone before the widgets they work on, so nothing of them runs while the window is torn
    // down.
    std::unique_ptr<SheetEditBox> m_editBox;
    std::unique_ptr<SheetWindowActions> m_actions;
    std::unique_ptr<SheetToolDialogs> m_tools;
    std::unique_ptr<SheetStatusArea> m_status;
};

} // namespace Tillane
