#pragma once

#include <QObject>

class QWidget;

namespace Ormsey {

class Graph;
class frmBarChartOptions;
class frmGraphTools;
class frmLineGraphOptions;
class frmPieChartOptions;

// The options dialogs and the tools palette of one graph, made with it and gone with it.
// The graph model knows no widgets, so this object stands beside it: it fills the dialogs
// from the graph, and hands what the user chose back to the graph, which raises RedrawGraph
// for its holder (the graph window or the sheet).
class GraphOptionWindows : public QObject
{
    Q_OBJECT

public:
    // The dialogs are owned by `parent` (the window over which they appear).
    GraphOptionWindows(Graph& graph, QWidget* parent);
    ~GraphOptionWindows() override;

    // The options dialog of the current graph type, filled from the graph, shown modally
    // without blocking the caller.
    void ShowOptions();
    // The palette, set from the graph's type, 3D option, data and title.
    void ShowGraphTools();

    frmBarChartOptions* BarChartOptions() const { return m_bar; }
    frmPieChartOptions* PieChartOptions() const { return m_pie; }
    frmLineGraphOptions* LineGraphOptions() const { return m_line; }
    frmGraphTools* GraphTools() const { return m_tools; }

private:
    Graph& m_graph;
    frmBarChartOptions* m_bar = nullptr;
    frmPieChartOptions* m_pie = nullptr;
    frmLineGraphOptions* m_line = nullptr;
    frmGraphTools* m_tools = nullptr;
};

} // namespace Ormsey
