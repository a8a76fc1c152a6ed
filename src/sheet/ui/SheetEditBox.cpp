#include "sheet/ui/SheetEditBox.h"

#include "sheet/Sheet.h"
#include "sheet/SheetDocument.h"
#include "sheet/ui/SheetGrid.h"
#include "sheet/ui/SheetGridModel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

SheetEditBox::SheetEditBox(SheetDocument& document, SheetGrid& grid, const SheetGridModel& model)
    : m_document(document)
    , m_grid(grid)
    , m_model(model)
    , m_box(new QLineEdit(grid.viewport()))
{
    m_box->setObjectName(u"txtEdit"_s);
    m_box->setAccessibleName(u"Cell entry"_s);
    m_box->setFrame(false);
    m_box->hide();
    m_box->installEventFilter(this);
    connect(m_box, &QLineEdit::textChanged, this, &SheetEditBox::textChanged);
}

bool SheetEditBox::Open(const QString& text)
{
    if (m_open)
        return false;
    const CellAddress cell = m_grid.CurrentCell();
    if (m_document.SheetObject().record(cell).Locked) {
        QApplication::beep();
        return false;
    }
    m_cell = cell;
    m_open = true;
    m_box->setFont(m_model.CellFont(cell));
    {
        const QSignalBlocker quiet(m_box);
        m_box->setText(text);
    }
    textChanged(text);
    m_box->setCursorPosition(int(text.size()));
    m_grid.scrollTo(m_model.IndexOf(cell));
    m_grid.CoverCell(m_box, cell);
    m_grid.SetFillHandleShown(false);
    m_box->show();
    m_box->raise();
    m_box->setFocus();
    return true;
}

void SheetEditBox::Close()
{
    m_open = false;
    m_pointMode = false;
    // The grid takes the focus before the box goes: a focused box that hides hands the focus
    // on as a Tab would, which moves the grid's current cell.
    m_grid.setFocus();
    m_grid.CoverCell(nullptr, {});
    m_box->hide();
    m_grid.SetFillHandleShown(true);
}

bool SheetEditBox::Commit()
{
    if (!m_open)
        return true;
    const CellAddress cell = m_cell;
    // The entry goes to the cell being edited, which becomes current again.
    m_grid.SetCurrentCell(cell);
    if (m_document.SheetObject().record(cell).Locked) {
        Close();
        return true;
    }
    if (!m_document.EnterCell(cell, m_box->text())) {
        m_box->setFocus();
        return false;
    }
    Close();
    return true;
}

void SheetEditBox::InsertCellName(const QString& name)
{
    QString text = m_box->text();
    const int start = m_box->hasSelectedText() ? m_box->selectionStart() : m_box->cursorPosition();
    text.replace(start, m_box->selectedText().size(), name);
    m_box->setText(text);
    m_box->setCursorPosition(int(text.size()));
    m_box->setFocus();
}

void SheetEditBox::Cover()
{
    if (m_open)
        m_grid.CoverCell(m_box, m_cell);
}

void SheetEditBox::textChanged(const QString& text)
{
    m_pointMode = false;
    // The formula as far as it is typed: while it does not evaluate, a click on a cell
    // inserts the cell's name instead of leaving the cell.
    if (m_open && text.startsWith(u'='))
        m_pointMode = !m_document.FormulaEvaluates(m_cell, text);
}

bool SheetEditBox::keyPressed(QKeyEvent* event)
{
    const auto commitAndMove = [this](int rowStep, int columnStep) {
        if (!Commit())
            return;
        const CellAddress cell = m_grid.CurrentCell();
        const CellAddress next { std::clamp(cell.Row + rowStep, 1, SheetRows),
            std::clamp(cell.Column + columnStep, 1, SheetColumns) };
        m_grid.SetCurrentCell(next);
        m_grid.scrollTo(m_model.IndexOf(next));
    };
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Commit();
        return true;
    case Qt::Key_Escape:
        Close();
        return true;
    case Qt::Key_Up:
        commitAndMove(-1, 0);
        return true;
    case Qt::Key_Down:
        commitAndMove(1, 0);
        return true;
    case Qt::Key_Tab:
        commitAndMove(0, 1);
        return true;
    case Qt::Key_Backtab:
        commitAndMove(0, -1);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        break;
    }
    if (event->text() == u"="_s && m_box->text().isEmpty()) {
        Close();
        emit formulaBuilderWanted();
        return true;
    }
    return false;
}

bool SheetEditBox::eventFilter(QObject* watched, QEvent* event)
{
    // Seen before the box itself, so Tab commits and moves instead of moving the focus.
    if (watched == m_box && event->type() == QEvent::KeyPress)
        return keyPressed(static_cast<QKeyEvent*>(event));
    return QObject::eventFilter(watched, event);
}

} // namespace Tillane
