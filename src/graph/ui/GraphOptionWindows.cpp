#include "graph/ui/GraphOptionWindows.h"

#include "graph/Graph.h"
#include "graph/GraphOptions.h"
#include "graph/ui/frmBarChartOptions.h"
#include "graph/ui/frmGraphTools.h"
#include "graph/ui/frmLineGraphOptions.h"
#include "graph/ui/frmPieChartOptions.h"

namespace Ormsey {

namespace {

void ShowModal(QWidget* dialog)
{
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

} // namespace

GraphOptionWindows::GraphOptionWindows(Graph& graph, QWidget* parent)
    : QObject(parent)
    , m_graph(graph)
    , m_bar(new frmBarChartOptions(parent))
    , m_pie(new frmPieChartOptions(parent))
    , m_line(new frmLineGraphOptions(parent))
    , m_tools(new frmGraphTools(parent))
{
    connect(m_bar, &frmBarChartOptions::ReadBarChartOptions, this,
        [this] { ReadBarChartOptions(m_graph, m_bar->Options()); });
    connect(m_pie, &frmPieChartOptions::ReadPieChartOptions, this,
        [this] { ReadPieChartOptions(m_graph, m_pie->Options()); });
    connect(m_line, &frmLineGraphOptions::ReadLineGraphOptions, this,
        [this] { ReadLineGraphOptions(m_graph, m_line->Options()); });
    connect(m_tools, &frmGraphTools::GraphTypeChanged, this, [this](int type) {
        m_graph.GraphType(type);
        // A type that cannot be 3D has just dropped the option.
        m_tools->Make3DButton->setChecked(m_graph.Graph3D());
        m_graph.RequestRedraw();
    });
    connect(m_tools, &frmGraphTools::Make3D, this, [this](bool on) {
        m_graph.Graph3D(on);
        m_tools->Make3DButton->setChecked(m_graph.Graph3D());
        m_graph.RequestRedraw();
    });
    connect(m_tools, &frmGraphTools::ShowOptions, this, &GraphOptionWindows::ShowOptions);
    connect(m_tools, &frmGraphTools::GraphTitleChanged, this, [this](const QString& title) {
        m_graph.GraphTitle(title);
        m_graph.RequestRedraw();
    });
}

GraphOptionWindows::~GraphOptionWindows()
{
    // The dialogs belong to the parent window, which may outlive this object.
    delete m_bar;
    delete m_pie;
    delete m_line;
    delete m_tools;
}

void GraphOptionWindows::ShowOptions()
{
    switch (m_graph.GraphType()) {
    case Graph::BarChart:
        m_bar->SetOptions(BarChartOptionsOf(m_graph));
        ShowModal(m_bar);
        break;
    case Graph::PieChart:
        m_pie->SetOptions(PieChartOptionsOf(m_graph));
        ShowModal(m_pie);
        break;
    default:
        m_line->SetOptions(LineGraphOptionsOf(m_graph), m_graph.GraphType() == Graph::Scattergram);
        ShowModal(m_line);
        break;
    }
}

void GraphOptionWindows::ShowGraphTools()
{
    m_tools->SetState(
        m_graph.GraphType(), m_graph.Graph3D(), m_graph.GraphHasData(), m_graph.GraphTitle());
    m_tools->show();
    m_tools->raise();
}

} // namespace Ormsey
