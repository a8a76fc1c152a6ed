#include "sheet/ui/SheetGrid.h"

#include "frame/Helpers.h"
#include "sheet/Sheet.h"
#include "sheet/ui/CellDelegate.h"
#include "sheet/ui/FillHandle.h"
#include "sheet/ui/SheetGridModel.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QRubberBand>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

// The fill handle sits this far inside the cell's right and bottom borders.
constexpr double fillHandleInset = 90;
// Room above and below the text of a row that fits its fonts, in pixels.
constexpr int rowPadding = 6;

CellAddress Clamped(int row, int column)
{
    return { std::clamp(row, 1, SheetRows), std::clamp(column, 1, SheetColumns) };
}

} // namespace

SheetGrid::SheetGrid(SheetGridModel* model, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
{
    setObjectName(u"DataGrid"_s);
    setAccessibleName(u"Sheet"_s);
    setModel(model);
    setItemDelegate(new CellDelegate(this));
    // The selection is the sheet's own (current cell and end); the view only shows it.
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(true);
    setCornerButtonEnabled(true);
    setWordWrap(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setHighlightSections(true);
    verticalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);

    for (QHeaderView* header : { horizontalHeader(), verticalHeader() }) {
        // The headings select whole columns and rows the sheet's way, not the view's.
        disconnect(header, &QHeaderView::sectionPressed, this, nullptr);
        disconnect(header, &QHeaderView::sectionEntered, this, nullptr);
        const Qt::Orientation orientation = header->orientation();
        connect(header, &QHeaderView::sectionPressed, this,
            [this, orientation](int section) { headingPressed(orientation, section); });
        connect(header, &QHeaderView::sectionEntered, this,
            [this, orientation](int section) { headingEntered(orientation, section); });
        connect(header, &QHeaderView::sectionResized, this,
            [this, orientation](int section, int, int size) {
                placeOverlays();
                if (m_applyingSizes)
                    return;
                if (orientation == Qt::Horizontal)
                    emit columnResized(section + 1, PixelsToTwips(size));
                else
                    emit rowResized(section + 1, PixelsToTwips(size));
            });
    }

    m_fillHandle = new FillHandle(viewport());
    connect(m_fillHandle, &FillHandle::dragStarted, this, &SheetGrid::fillStarted);
    connect(m_fillHandle, &FillHandle::dragMoved, this, &SheetGrid::fillMoved);
    connect(m_fillHandle, &FillHandle::dragFinished, this, &SheetGrid::fillFinished);
    m_fillOutline = new QRubberBand(QRubberBand::Rectangle, viewport());
    m_fillOutline->setObjectName(u"FillOutline"_s);
    showSelection();
}

void SheetGrid::SetCurrentCell(CellAddress cell)
{
    SetSelection(cell, cell);
}

void SheetGrid::SetSelection(CellAddress current, CellAddress end)
{
    const CellAddress previous = m_current;
    m_current = Clamped(current.Row, current.Column);
    m_end = Clamped(end.Row, end.Column);
    showSelection();
    if (m_current != previous)
        emit currentCellChanged(m_current, previous);
}

void SheetGrid::showSelection()
{
    const QModelIndex topLeft = m_model->IndexOf(
        { std::min(m_current.Row, m_end.Row), std::min(m_current.Column, m_end.Column) });
    const QModelIndex bottomRight = m_model->IndexOf(
        { std::max(m_current.Row, m_end.Row), std::max(m_current.Column, m_end.Column) });
    selectionModel()->setCurrentIndex(m_model->IndexOf(m_current), QItemSelectionModel::NoUpdate);
    // A single cell is marked by its border alone, so that its colours stay visible.
    if (m_current == m_end)
        selectionModel()->clearSelection();
    else
        selectionModel()->select(
            QItemSelection(topLeft, bottomRight), QItemSelectionModel::ClearAndSelect);
    placeOverlays();
    viewport()->update();
}

void SheetGrid::selectAll()
{
    if (m_mayLeave && !m_mayLeave())
        return;
    SetSelection({ 1, 1 }, { SheetRows, SheetColumns });
}

QRect SheetGrid::CellRect(CellAddress cell) const
{
    return visualRect(m_model->IndexOf(cell));
}

CellAddress SheetGrid::CellAt(QPoint position) const
{
    const QRect area = viewport()->rect();
    const int x = std::clamp(position.x(), 0, std::max(area.width() - 1, 0));
    const int y = std::clamp(position.y(), 0, std::max(area.height() - 1, 0));
    int row = rowAt(y);
    int column = columnAt(x);
    if (row < 0)
        row = SheetRows - 1;
    if (column < 0)
        column = SheetColumns - 1;
    // Beyond the edge: the next cell out, so that a drag there scrolls on.
    if (position.y() < 0)
        --row;
    else if (position.y() >= area.height())
        ++row;
    if (position.x() < 0)
        --column;
    else if (position.x() >= area.width())
        ++column;
    return Clamped(row + 1, column + 1);
}

void SheetGrid::CoverCell(QWidget* box, CellAddress cell)
{
    m_coveringBox = box;
    m_coveredCell = cell;
    placeOverlays();
}

void SheetGrid::SetFillHandleShown(bool shown)
{
    m_fillHandleShown = shown;
    placeOverlays();
}

void SheetGrid::placeOverlays()
{
    if (m_coveringBox)
        m_coveringBox->setGeometry(CellRect(m_coveredCell));
    const QRect cell = CellRect(m_current);
    const int inset = TwipsToPixels(fillHandleInset);
    m_fillHandle->move(cell.x() + cell.width() - inset, cell.y() + cell.height() - inset);
    m_fillHandle->setVisible(
        m_fillHandleShown && !cell.isEmpty() && viewport()->rect().intersects(cell));
    m_fillHandle->raise();
}

int SheetGrid::TwipsToPixels(double twips) const
{
    return Frame::TwipsToPixels(twips, logicalDpiX());
}

qint32 SheetGrid::PixelsToTwips(int pixels) const
{
    return static_cast<qint32>(std::lround(pixels * 1440.0 / logicalDpiX()));
}

void SheetGrid::ApplySizes(const Sheet& sheet)
{
    m_applyingSizes = true;
    verticalHeader()->setFixedWidth(TwipsToPixels(sheet.columnWidth(0)));
    for (int column = 1; column <= SheetColumns; ++column) {
        const int width = TwipsToPixels(sheet.columnWidth(column));
        if (columnWidth(column - 1) != width)
            setColumnWidth(column - 1, width);
    }
    const SheetFont& font = sheet.font();
    QFont sheetFont(font.Name);
    sheetFont.setPointSizeF(font.Size > 0 ? font.Size : 10.0);
    sheetFont.setBold(font.Bold);
    sheetFont.setItalic(font.Italic);
    const int fitted = QFontMetrics(sheetFont).height() + rowPadding;
    verticalHeader()->setDefaultSectionSize(fitted);
    for (int row = 1; row <= SheetRows; ++row) {
        int height = fitted;
        if (sheet.rowHeight(row) > 0) {
            height = TwipsToPixels(sheet.rowHeight(row));
        } else {
            for (int column = 1; column <= SheetColumns; ++column) {
                const CellDisplay& display = sheet.display(row, column);
                if (display.FontSize || display.FontName || display.Bold || display.Italic) {
                    const QFont cellFont = m_model->CellFont({ row, column });
                    height = std::max(height, QFontMetrics(cellFont).height() + rowPadding);
                }
            }
        }
        if (rowHeight(row - 1) != height)
            setRowHeight(row - 1, height);
    }
    m_applyingSizes = false;
    placeOverlays();
}

void SheetGrid::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        return;
    }
    const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    const CellAddress from = extend ? m_end : m_current;
    const int rowsShown = std::max(viewport()->height() / std::max(rowHeight(0), 1) - 1, 1);
    CellAddress to = from;
    switch (event->key()) {
    case Qt::Key_Up:
        to.Row = control ? 1 : from.Row - 1;
        break;
    case Qt::Key_Down:
        to.Row = control ? SheetRows : from.Row + 1;
        break;
    case Qt::Key_Left:
        to.Column = control ? 1 : from.Column - 1;
        break;
    case Qt::Key_Right:
        to.Column = control ? SheetColumns : from.Column + 1;
        break;
    case Qt::Key_PageUp:
        to.Row = from.Row - rowsShown;
        break;
    case Qt::Key_PageDown:
        to.Row = from.Row + rowsShown;
        break;
    case Qt::Key_Home:
        to = control ? CellAddress { 1, 1 } : CellAddress { from.Row, 1 };
        break;
    case Qt::Key_End:
        to = control ? CellAddress { SheetRows, SheetColumns }
                     : CellAddress { from.Row, SheetColumns };
        break;
    case Qt::Key_Tab:
        to.Column = from.Column + 1;
        break;
    case Qt::Key_Backtab:
        to.Column = from.Column - 1;
        break;
    default:
        emit keyTyped(event);
        return;
    }
    event->accept();
    to = Clamped(to.Row, to.Column);
    const bool tab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (extend && !tab)
        SetSelection(m_current, to);
    else
        SetCurrentCell(to);
    scrollTo(m_model->IndexOf(to));
}

void SheetGrid::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid())
        return;
    const CellAddress cell = SheetGridModel::CellOf(index);
    if (m_coveringBox == nullptr)
        setFocus(Qt::MouseFocusReason);
    if (event->modifiers().testFlag(Qt::ShiftModifier) && m_coveringBox == nullptr) {
        SetSelection(m_current, cell);
        return;
    }
    emit cellPressed(cell);
    m_selecting = m_coveringBox == nullptr && m_current == cell;
}

void SheetGrid::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_selecting || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const CellAddress cell = CellAt(event->position().toPoint());
    if (cell != m_end) {
        SetSelection(m_current, cell);
        scrollTo(m_model->IndexOf(cell));
    }
}

void SheetGrid::mouseReleaseEvent(QMouseEvent*)
{
    m_selecting = false;
}

void SheetGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid())
        emit cellDoubleClicked(SheetGridModel::CellOf(index));
}

void SheetGrid::headingPressed(Qt::Orientation orientation, int section)
{
    if (m_mayLeave && !m_mayLeave())
        return;
    if (orientation == Qt::Horizontal)
        SetSelection({ 1, section + 1 }, { SheetRows, section + 1 });
    else
        SetSelection({ section + 1, 1 }, { section + 1, SheetColumns });
}

void SheetGrid::headingEntered(Qt::Orientation orientation, int section)
{
    // Dragging along the headings widens the selection to more whole columns or rows.
    if (orientation == Qt::Horizontal && m_current.Row == 1 && m_end.Row == SheetRows)
        SetSelection(m_current, { SheetRows, section + 1 });
    else if (orientation == Qt::Vertical && m_current.Column == 1 && m_end.Column == SheetColumns)
        SetSelection(m_current, { section + 1, SheetColumns });
}

void SheetGrid::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    // The current cell stands out from the rest of the selection.
    QPainter painter(viewport());
    QPen pen(palette().color(QPalette::Text), 2);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.drawRect(CellRect(m_current).adjusted(1, 1, -1, -1));
}

void SheetGrid::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    placeOverlays();
}

void SheetGrid::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    placeOverlays();
}

CellAddress SheetGrid::FillTarget(QPoint position) const
{
    const QPoint origin = CellRect(m_current).topLeft() + m_fillOffset;
    const CellAddress under = CellAt(position);
    // Only the larger movement counts: the fill runs along one row or one column.
    if (std::abs(position.x() - origin.x()) > std::abs(position.y() - origin.y()))
        return { m_current.Row, under.Column };
    return { under.Row, m_current.Column };
}

void SheetGrid::fillStarted(QPoint position)
{
    m_fillOffset = position - CellRect(m_current).topLeft();
    m_fillOutline->hide();
}

void SheetGrid::fillMoved(QPoint position)
{
    const CellAddress target = FillTarget(position);
    scrollTo(m_model->IndexOf(target));
    m_fillOutline->setGeometry(CellRect(m_current).united(CellRect(target)));
    m_fillOutline->show();
}

void SheetGrid::fillFinished(QPoint position)
{
    const CellAddress target = FillTarget(position);
    m_fillOutline->hide();
    emit fillDragged(target);
}

} // namespace Tillane
