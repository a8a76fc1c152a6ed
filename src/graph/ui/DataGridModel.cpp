#include "graph/ui/DataGridModel.h"

#include "graph/Graph.h"
#include "resources/StringTable.h"

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

QStringList GridHeadings(Graph& graph)
{
    // XYPlot brings the statistics up to date first, so it must come before the type test.
    const bool xy = graph.XYPlot();
    if (graph.GraphType() == Graph::Scattergram || (graph.GraphType() == Graph::LineGraph && xy))
        return { u"X"_s, u"Y"_s };
    QStringList headings { u"Categories"_s };
    const int series = graph.NumberOfDataSeries();
    for (int index = 1; index <= series; ++index)
        headings.append(graph.DataSeriesLabel(index));
    return headings;
}

DataGridModel::DataGridModel(Graph& graph, QObject* parent)
    : QAbstractTableModel(parent)
    , m_graph(graph)
    , m_headings(GridHeadings(graph))
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
        return m_graph.Data(index.row(), index.column());
    if (role == Qt::TextAlignmentRole && index.column() > 0)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool DataGridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    const QString text = value.toString();
    if (text == m_graph.Data(index.row(), index.column()))
        return false;
    m_graph.Data(index.row(), index.column(), text);
    emit dataChanged(index, index, { Qt::DisplayRole, Qt::EditRole });
    emit CellEdited(index.row(), index.column());
    return true;
}

Qt::ItemFlags DataGridModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
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

void DataGridModel::UpdateHeadings()
{
    const QStringList headings = GridHeadings(m_graph);
    if (headings == m_headings)
        return;
    m_headings = headings;
    emit headerDataChanged(Qt::Horizontal, 0, Graph::ColumnCount - 1);
}

void DataGridModel::Refresh()
{
    emit dataChanged(index(0, 0), index(Graph::RowCount - 1, Graph::ColumnCount - 1));
    UpdateHeadings();
}

} // namespace Ormsey
