#pragma once

#include <QAbstractTableModel>
#include <QStringList>

namespace Ormsey {

class Graph;

// The headings of the data grid: "X", "Y" while the graph plots x-y pairs (a scattergram, or
// a line graph whose categories are all numbers), else "Categories" and one heading per
// series label in use.
QStringList GridHeadings(Graph& graph);

// The graph window's data grid as an item model: a thin adapter over the graph's 256 x 5
// text cells. Rows are numbered from 1 in the vertical header. The graph owns the values;
// this model only passes them through, so a producer that fills the graph directly calls
// Refresh afterwards.
class DataGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit DataGridModel(Graph& graph, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // Stores the text only when it differs from the cell, then raises CellEdited.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Takes the headings anew (GridHeadings); the columns beyond them have none.
    void UpdateHeadings();
    // Every cell may have changed underneath (a file loaded, a sort).
    void Refresh();
    const QStringList& Headings() const { return m_headings; }

signals:
    void CellEdited(int row, int column);

private:
    Graph& m_graph;
    QStringList m_headings;
};

} // namespace Ormsey
