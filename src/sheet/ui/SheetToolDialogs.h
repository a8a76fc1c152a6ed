#pragma once

#include "sheet/CellRef.h"

#include <QPointer>

class QWidget;

namespace Tillane {

class SheetWindowActions;
class frmCopyCell;
class frmFormula;
class frmTillane;

// The sheet window's two modeless tools, the formula builder and the copy cell dialog: one at
// a time, over the right-hand edge of the grid, each with its toolbar button down while it is
// open. Both hear of the cells clicked on the sheet.
class SheetToolDialogs
{
public:
    // The window owns the dialogs; the grid places them. All outlive this object.
    SheetToolDialogs(frmTillane& window, QWidget& grid, const SheetWindowActions& actions);

    // Opens the builder on `cell` with `formula` (or brings it forward), closing the copy
    // cell dialog.
    void ShowFormulaBuilder(CellAddress cell, const QString& formula);
    // Opens the copy cell dialog with `source` to copy (or brings it forward), closing the
    // builder.
    void ShowCopyCell(CellAddress source);
    // A tool's toolbar button (SheetToolbar::CreateFormula or CopyCell) pressed: down asks the
    // window to open the dialog, which it may refuse, up closes it. The button then shows
    // whether the dialog is open.
    void ButtonPressed(int button, bool down);
    void CloseAll();
    // A cell clicked on the sheet, by its name.
    void CellClicked(const QString& name);

    frmFormula* FormulaBuilder() const { return m_formula; }
    frmCopyCell* CopyCell() const { return m_copyCell; }

private:
    void placeBeside(QWidget* dialog);
    void setButton(int id, bool down);

    frmTillane& m_window;
    QWidget& m_grid;
    const SheetWindowActions& m_actions;
    QPointer<frmFormula> m_formula;
    QPointer<frmCopyCell> m_copyCell;
};

} // namespace Tillane
