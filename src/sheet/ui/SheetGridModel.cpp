#include "sheet/ui/SheetGridModel.h"

#include "frame/Colours.h"
#include "sheet/Sheet.h"
#include "sheet/SheetDocument.h"

#include <QBrush>

namespace Tillane {

namespace {

// The grid's alignment codes: three rows of left, centre and right, each top, centre and
// bottom; 9 (general) puts numbers on the right and text on the left.
Qt::Alignment AlignmentOf(qint16 code, bool number)
{
    if (code < 0 || code > 8)
        return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    static const Qt::Alignment horizontal[] = { Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight };
    static const Qt::Alignment vertical[] = { Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom };
    return horizontal[code / 3] | vertical[code % 3];
}

} // namespace

SheetGridModel::SheetGridModel(const SheetDocument& document, QObject* parent)
    : QAbstractTableModel(parent)
    , m_document(document)
{ }

int SheetGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : SheetRows;
}

int SheetGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : SheetColumns;
}

CellAddress SheetGridModel::CellOf(const QModelIndex& index)
{
    return index.isValid() ? CellAddress { index.row() + 1, index.column() + 1 } : CellAddress {};
}

QModelIndex SheetGridModel::IndexOf(CellAddress cell) const
{
    return cell.isValid() ? index(cell.Row - 1, cell.Column - 1) : QModelIndex();
}

QFont SheetGridModel::CellFont(CellAddress cell) const
{
    return QtFontOf(m_document.CellTextStyle(cell).Font);
}

QVariant SheetGridModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const CellAddress cell = CellOf(index);
    const Sheet& sheet = m_document.SheetObject();
    const CellRecord& record = sheet.record(cell);
    const CellDisplay& display = sheet.display(cell.Row, cell.Column);
    switch (role) {
    case Qt::DisplayRole:
        if (cell == m_formulaCell && record.Kind == FormulaCell && !record.Locked)
            return record.Formula;
        return display.Text;
    case Qt::EditRole:
        return m_document.EditText(cell);
    // Cells without a font or colour of their own show the grid's, which are the sheet's; a
    // screen of cells is drawn many times faster without a font made for each.
    case Qt::FontRole:
        if (!display.FontName && !display.FontSize && !display.Bold && !display.Italic
            && !display.Underline && !display.Strikethrough)
            return {};
        return CellFont(cell);
    case Qt::ForegroundRole:
        if (!display.ForeColour)
            return {};
        return QBrush(Frame::ColourFromValue(*display.ForeColour));
    case Qt::BackgroundRole:
        if (display.BackColour == 0)
            return {};
        return QBrush(Frame::ColourFromValue(display.BackColour == 1 ? Black : display.BackColour));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(AlignmentOf(display.Alignment, record.holdsNumber()));
    default:
        return {};
    }
}

Qt::ItemFlags SheetGridModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
}

QVariant SheetGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignCenter);
    if (role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical)
        return QString::number(section + 1);
    return QString(QChar(u'A' + section));
}

void SheetGridModel::SetFormulaCell(CellAddress cell)
{
    if (cell == m_formulaCell)
        return;
    const CellAddress previous = m_formulaCell;
    m_formulaCell = cell;
    for (const CellAddress& changed : { previous, cell }) {
        if (changed.isValid())
            emit dataChanged(IndexOf(changed), IndexOf(changed), { Qt::DisplayRole });
    }
}

void SheetGridModel::Refresh()
{
    emit dataChanged(index(0, 0), index(SheetRows - 1, SheetColumns - 1));
}

} // namespace Tillane
