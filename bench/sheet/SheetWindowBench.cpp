// The sheet window on a full sheet: 6,656 formulas chained cell to cell (each reads the one
// before it, row by row). Opening the file into a new window and drawing it; one entry in the
// first cell, which recalculates the whole chain, typed through the edit box and redrawn; and
// scrolling from the top to row 256, drawn page by page as PageDown goes.
#include "frame/FrameSettings.h"
#include "sheet/CellEntry.h"
#include "sheet/CellReferences.h"
#include "sheet/Sheet.h"
#include "sheet/SheetDocument.h"
#include "sheet/SheetFile.h"
#include "sheet/ui/SheetGrid.h"
#include "sheet/ui/frmTillane.h"

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QWindow>
#include <benchmark/benchmark.h>
#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

QString ChainFile(QTemporaryDir& folder)
{
    Sheet sheet;
    EnterCell(sheet, 1, 1, u"=1"_s);
    for (int index = 1; index < SheetCellCount; ++index) {
        const CellAddress cell { index / SheetColumns + 1, index % SheetColumns + 1 };
        const CellAddress before { (index - 1) / SheetColumns + 1, (index - 1) % SheetColumns + 1 };
        EnterCell(sheet, cell.Row, cell.Column, u"="_s + CellName(before) + u"+1"_s);
    }
    const QString path = folder.filePath(u"chain.qnc"_s);
    SaveSheetFile(sheet, path);
    return path;
}

std::unique_ptr<frmTillane> OpenWindow(const QString& path)
{
    auto window = std::make_unique<frmTillane>();
    window->resize(1280, 800);
    window->show();
    // Drawing happens only once the window is exposed.
    while (!window->windowHandle()->isExposed())
        QApplication::processEvents();
    window->setFileName(path);
    window->DataGrid->viewport()->repaint();
    return window;
}

void OpenFullSheetAndShow(benchmark::State& state)
{
    QTemporaryDir folder;
    const QString path = ChainFile(folder);
    for (auto _ : state) {
        const std::unique_ptr<frmTillane> window = OpenWindow(path);
        if (window->Document().SheetObject().record(SheetRows, SheetColumns).Value
            != SheetCellCount)
            state.SkipWithError("the sheet did not load");
        state.PauseTiming();
        window.get()->close();
        state.ResumeTiming();
    }
}
BENCHMARK(OpenFullSheetAndShow)->Unit(benchmark::kMillisecond);

void EntryRecalculatesChainAndRepaints(benchmark::State& state)
{
    QTemporaryDir folder;
    const std::unique_ptr<frmTillane> window = OpenWindow(ChainFile(folder));
    int first = 1;
    for (auto _ : state) {
        ++first;
        window->DataGrid->SetCurrentCell({ 1, 1 });
        window->OpenEditBox(u"="_s + QString::number(first));
        window->CommitEdits();
        window->DataGrid->viewport()->repaint();
        if (window->Document().SheetObject().record(SheetRows, SheetColumns).Value
            != first + SheetCellCount - 1)
            state.SkipWithError("the chain was not recalculated");
    }
    state.counters["cells"] = SheetCellCount;
}
BENCHMARK(EntryRecalculatesChainAndRepaints)->Unit(benchmark::kMillisecond);

void ScrollTopToRow256(benchmark::State& state)
{
    QTemporaryDir folder;
    const std::unique_ptr<frmTillane> window = OpenWindow(ChainFile(folder));
    SheetGrid* grid = window->DataGrid;
    QScrollBar* scroll = grid->verticalScrollBar();
    int pages = 0;
    for (auto _ : state) {
        state.PauseTiming();
        scroll->setValue(0);
        grid->viewport()->repaint();
        state.ResumeTiming();
        pages = 0;
        while (scroll->value() < scroll->maximum()) {
            scroll->triggerAction(QAbstractSlider::SliderPageStepAdd);
            grid->viewport()->repaint();
            ++pages;
        }
    }
    state.counters["pages"] = pages;
}
BENCHMARK(ScrollTopToRow256)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Frame::InitialiseFrame(QApplication::applicationDirPath());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
