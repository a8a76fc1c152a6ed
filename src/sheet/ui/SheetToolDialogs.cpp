#include "sheet/ui/SheetToolDialogs.h"

#include "sheet/ui/SheetWindowActions.h"
#include "sheet/ui/frmCopyCell.h"
#include "sheet/ui/frmFormula.h"
#include "sheet/ui/frmTillane.h"

#include <QAction>

namespace Tillane {

namespace {

// Pixels between a tool dialog and the edges of the grid it stands over.
constexpr int margin = 24;

} // namespace

SheetToolDialogs::SheetToolDialogs(
    frmTillane& window, QWidget& grid, const SheetWindowActions& actions)
    : m_window(window)
    , m_grid(grid)
    , m_actions(actions)
{ }

void SheetToolDialogs::setButton(int id, bool down)
{
    if (QAction* button = m_actions.Action(id))
        button->setChecked(down);
}

void SheetToolDialogs::placeBeside(QWidget* dialog)
{
    // Over the right-hand edge of the sheet, where it hides the fewest of the cells a pupil
    // clicks while it is open.
    dialog->adjustSize();
    const QPoint topRight = m_grid.mapToGlobal(QPoint(m_grid.width(), 0));
    dialog->move(topRight.x() - dialog->width() - margin, topRight.y() + margin);
}

void SheetToolDialogs::ShowFormulaBuilder(CellAddress cell, const QString& formula)
{
    if (m_copyCell)
        m_copyCell->close();
    if (!m_formula) {
        m_formula = new frmFormula(&m_window, cell, formula);
        QObject::connect(m_formula, &QObject::destroyed, &m_window,
            [this] { setButton(SheetToolbar::CreateFormula, false); });
        placeBeside(m_formula);
        m_formula->show();
    }
    m_formula->raise();
    m_formula->activateWindow();
    setButton(SheetToolbar::CreateFormula, true);
}

void SheetToolDialogs::ShowCopyCell(CellAddress source)
{
    if (m_formula)
        m_formula->close();
    if (!m_copyCell) {
        m_copyCell = new frmCopyCell(&m_window, source);
        QObject::connect(m_copyCell, &QObject::destroyed, &m_window,
            [this] { setButton(SheetToolbar::CopyCell, false); });
        placeBeside(m_copyCell);
        m_copyCell->show();
    }
    m_copyCell->raise();
    m_copyCell->activateWindow();
    setButton(SheetToolbar::CopyCell, true);
}

void SheetToolDialogs::ButtonPressed(int button, bool down)
{
    const bool formula = button == SheetToolbar::CreateFormula;
    if (down) {
        if (formula)
            m_window.ShowFormulaBuilder();
        else
            m_window.ShowCopyCell();
    } else if (formula && m_formula) {
        m_formula->close();
    } else if (!formula && m_copyCell) {
        m_copyCell->close();
    }
    setButton(button, formula ? m_formula != nullptr : m_copyCell != nullptr);
}

void SheetToolDialogs::CloseAll()
{
    if (m_formula)
        m_formula->close();
    if (m_copyCell)
        m_copyCell->close();
}

void SheetToolDialogs::CellClicked(const QString& name)
{
    if (m_formula)
        m_formula->Cell_Click(name);
    if (m_copyCell)
        m_copyCell->Cell_Click(name);
}

} // namespace Tillane
