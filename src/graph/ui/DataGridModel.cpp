#include "graph/ui/DataGridModel.h"

#include "graph/Graph.h"
#include "graph/GraphDocument.h"

namespace Ormsey {

DataGridModel::DataGridModel(GraphDocument& document, QObject* parent)
    : QAbstractTableModel(parent)
    , m_document(document)
    , m_headings(document.Headings())
{ }

int DataGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Graph::RowCount;
}

int DataGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Graph::ColumnCount;
}

QVariant DataGridModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return m_document.GraphObject().Data(index.row(), index.column());
    if (role == Qt::TextAlignmentRole && index.column() > 0)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool DataGridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    return m_document.SetCell(index.row(), index.column(), value.toString());
}

Qt::ItemFlags DataGridModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    if (index.column() >= m_headings.size())
        return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical)
        return QString::number(section + 1);
    if (section >= 0 && section < m_headings.size())
        return m_headings[section];
    return QString();
}

void DataGridModel::Refresh()
{
    const QStringList headings = m_document.Headings();
    if (headings != m_headings) {
        m_headings = headings;
        emit headerDataChanged(Qt::Horizontal, 0, Graph::ColumnCount - 1);
    }
    emit dataChanged(index(0, 0), index(Graph::RowCount - 1, Graph::ColumnCount - 1));
}

} // namespace Ormsey
