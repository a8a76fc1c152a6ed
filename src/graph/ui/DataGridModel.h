#pragma once

#include <QAbstractTableModel>
#include <QStringList>

namespace Ormsey {

class GraphDocument;

// The graph window's data grid as an item model: a thin adapter over the graph's 256 x 5
// text cells. Rows are numbered from 1 in the vertical header. The document owns the values:
// edits go to it, and the window calls Refresh when it notifies a change. Only the columns
// under a heading take text, since no other column is drawn or saved.
class DataGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit DataGridModel(GraphDocument& document, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // Hands the text to the document, which refuses it unchanged or outside the headings.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Every cell and heading may have changed underneath.
    void Refresh();
    const QStringList& Headings() const { return m_headings; }

private:
    GraphDocument& m_document;
    QStringList m_headings;
};

} // namespace Ormsey
