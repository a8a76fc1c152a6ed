#pragma once

#include <QDialog>
#include <QList>

class QLineEdit;
class QSpinBox;

namespace Ormsey {

class Graph;

// The number of data series (1 to 4) and their names. Only the boxes of the series in use
// are enabled. OK writes them into the graph; the caller then refreshes its grid headings
// and picture. Cancel changes nothing.
class frmEditDataSeries : public QDialog
{
    Q_OBJECT

public:
    explicit frmEditDataSeries(Graph& graph, QWidget* parent = nullptr);

    QSpinBox* updSeries = nullptr;
    QList<QLineEdit*> txtSeriesLabel;

private:
    void EnableBoxes();
    void TakeChanges();

    Graph& m_graph;
};

} // namespace Ormsey
