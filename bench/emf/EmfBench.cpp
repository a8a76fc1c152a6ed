// A picture of 2,000 primitives as the graphs draw them (bars as polygons, lines, points,
// circles, pie sectors and text labels in six colours), recorded through MetaFile and
// played back: onto an 800 x 600 image, and into another recording as printing does.
#include "graph/MetaFile.h"
#include "platform/emf/Player.h"
#include "platform/emf/RecordingContext.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>
#include <cmath>
#include <numbers>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int PrimitiveCount = 2000;
constexpr std::int32_t Colours[] = { 0x3366CC, 0xDC3912, 0xFF9900, 0x109618, 0x990099, 0x0099C6 };

void DrawPicture(Ormsey::MetaFile& surface)
{
    surface.Width = 800;
    surface.Height = 600;
    surface.OpenMF();
    surface.PenStyle(0);
    surface.FontName(u"Arial"_s);
    surface.FontSize(8);
    for (int index = 0; index < PrimitiveCount; ++index) {
        const std::int32_t colour = Colours[(index / 50) % 6];
        const std::int32_t x = (index * 37) % 760 + 20;
        const std::int32_t y = (index * 53) % 540 + 30;
        surface.BrushColour(colour);
        surface.PenColour(colour);
        switch (index % 10) {
        case 0:
        case 1:
        case 2:
            surface.RectMF(x, y, x + 12, 580);
            break;
        case 3:
        case 4:
            surface.LineMF(x, y, x + 30, y + 10);
            break;
        case 5:
            surface.PlotPointMF(x, y);
            break;
        case 6:
            surface.CircleMF(x, y, 4);
            break;
        case 7: {
            const double angle = index * 0.1;
            surface.SectorMF(x, y, x + 20, y, std::lround(x + 20 * std::cos(angle)),
                std::lround(y - 20 * std::sin(angle)), 45);
            break;
        }
        default:
            surface.PaintTextMF(u"Label %1"_s.arg(index), x, y, -1, 1, 0);
            break;
        }
    }
    surface.CloseMF();
}

const Emf::Picture& Picture()
{
    static Ormsey::MetaFile surface;
    static const bool drawn = (DrawPicture(surface), true);
    Q_UNUSED(drawn);
    return *surface.hMF();
}

void BM_Record(benchmark::State& state)
{
    for (auto _ : state) {
        Ormsey::MetaFile surface;
        DrawPicture(surface);
        benchmark::DoNotOptimize(surface.hMF()->bytes().size());
    }
    state.counters["records"] = double(Picture().records().size());
    state.counters["bytes"] = double(Picture().bytes().size());
}
BENCHMARK(BM_Record)->Unit(benchmark::kMillisecond);

void BM_PlayOntoImage(benchmark::State& state)
{
    const Emf::Picture& picture = Picture();
    QImage image(800, 600, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        Emf::PlayPicture(picture, painter, QRectF(0, 0, 800, 600));
    }
}
BENCHMARK(BM_PlayOntoImage)->Unit(benchmark::kMillisecond);

void BM_PlayIntoRecording(benchmark::State& state)
{
    const Emf::Picture& picture = Picture();
    for (auto _ : state) {
        Emf::RecordingContext recording(
            Emf::ReferenceDevice::Screen(), { 0, 0, 21167, 15875 }, u"Print"_s);
        Emf::PlayPicture(picture, recording, Emf::RectL { 0, 0, 800, 600 });
        benchmark::DoNotOptimize(recording.finish().bytes().size());
    }
}
BENCHMARK(BM_PlayIntoRecording)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
