// Two of the largest graphs a user can make, 256 rows each: a 3D bar chart of four series and
// a scattergram with its best-fit line. Each is redrawn through the model (both passes of the
// drawing) and played onto a 1920 x 1080 image, as the graph window shows it full screen.
#include "frame/FrameSettings.h"
#include "graph/Graph.h"
#include "platform/emf/Player.h"

#include <QGuiApplication>
#include <QImage>
#include <benchmark/benchmark.h>
#include <cmath>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

void FillBarChart(Graph& graph)
{
    for (int row = 0; row < Graph::RowCount; ++row) {
        graph.Data(row, 0, u"Item %1"_s.arg(row + 1));
        for (int series = 1; series <= 4; ++series)
            graph.Data(row, series, QString::number((row * 7 + series * 13) % 50 + 1));
    }
    graph.NumberOfDataSeries(4);
    graph.Graph3D(true);
    graph.DisplayLegend(true);
    graph.GraphTitle(u"Four series"_s);
}

void FillScattergram(Graph& graph)
{
    for (int row = 0; row < Graph::RowCount; ++row) {
        graph.Data(row, 0, QString::number(row + 1));
        graph.Data(row, 1, QString::number(row * 0.5 + std::sin(row) * 20 + 30));
    }
    graph.GraphType(Graph::Scattergram);
    graph.DisplayLineOfBestFit(true);
    graph.DisplayCorrelation(true);
}

void Redraw(benchmark::State& state, void (*fill)(Graph&))
{
    Graph graph;
    fill(graph);
    for (auto _ : state) {
        graph.RedrawMetafile();
        benchmark::DoNotOptimize(graph.Width());
    }
}

void Play(benchmark::State& state, void (*fill)(Graph&))
{
    Graph graph;
    fill(graph);
    const Emf::Picture* picture = graph.hMF();
    for (auto _ : state) {
        QImage image = Emf::RenderPicture(*picture, QSize(1920, 1080));
        benchmark::DoNotOptimize(image.constBits());
    }
}

void RedrawBarChart3D(benchmark::State& state)
{
    Redraw(state, FillBarChart);
}
void RedrawScattergram(benchmark::State& state)
{
    Redraw(state, FillScattergram);
}
void PlayBarChart3D(benchmark::State& state)
{
    Play(state, FillBarChart);
}
void PlayScattergram(benchmark::State& state)
{
    Play(state, FillScattergram);
}

} // namespace

BENCHMARK(RedrawBarChart3D)->Unit(benchmark::kMillisecond);
BENCHMARK(RedrawScattergram)->Unit(benchmark::kMillisecond);
BENCHMARK(PlayBarChart3D)->Unit(benchmark::kMillisecond);
BENCHMARK(PlayScattergram)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    Frame::InitialiseFrame(QGuiApplication::applicationDirPath());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
