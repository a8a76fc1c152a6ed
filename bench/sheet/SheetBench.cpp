// The sheet's heavy paths on a full sheet: 6,656 formulas chained cell to cell (each reads the
// one before it, row by row), recalculated from the first cell, saved and loaded.
#include "sheet/CellEntry.h"
#include "sheet/CellReferences.h"
#include "sheet/Sheet.h"
#include "sheet/SheetFile.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

CellAddress cellNumber(int index)
{
    return { index / SheetColumns + 1, index % SheetColumns + 1 };
}

// "=1" in A1, then "=A1+1" in B1, "=B1+1" in C1 ... down to Z256.
void enterChain(Sheet& sheet)
{
    EnterCell(sheet, 1, 1, u"=1"_s);
    for (int index = 1; index < SheetCellCount; ++index) {
        const CellAddress cell = cellNumber(index);
        EnterCell(sheet, cell.Row, cell.Column, u"="_s + CellName(cellNumber(index - 1)) + u"+1"_s);
    }
}

void EnterChainedFormulas(benchmark::State& state)
{
    for (auto _ : state) {
        Sheet sheet;
        enterChain(sheet);
        benchmark::DoNotOptimize(sheet.record(SheetRows, SheetColumns).Value);
    }
    state.counters["formulas"] = SheetCellCount;
}
BENCHMARK(EnterChainedFormulas)->Unit(benchmark::kMillisecond);

void RecalculateChainFromFirstCell(benchmark::State& state)
{
    Sheet sheet;
    enterChain(sheet);
    int first = 1;
    for (auto _ : state) {
        // A new value in A1 changes every cell of the chain.
        ++first;
        EnterCell(sheet, 1, 1, u"="_s + QString::number(first));
        if (sheet.record(SheetRows, SheetColumns).Value != first + SheetCellCount - 1)
            state.SkipWithError("the chain was not recalculated");
    }
    state.counters["cells"] = SheetCellCount;
}
BENCHMARK(RecalculateChainFromFirstCell)->Unit(benchmark::kMillisecond);

void SaveFullSheet(benchmark::State& state)
{
    Sheet sheet;
    enterChain(sheet);
    QTemporaryDir folder;
    const QString path = folder.filePath(u"full.qnc"_s);
    for (auto _ : state) {
        const QString error = SaveSheetFile(sheet, path);
        if (!error.isEmpty())
            state.SkipWithError(qPrintable(error));
    }
    state.counters["bytes"] = static_cast<double>(SheetFileBytes(sheet).size());
}
BENCHMARK(SaveFullSheet)->Unit(benchmark::kMillisecond);

void LoadFullSheet(benchmark::State& state)
{
    Sheet sheet;
    enterChain(sheet);
    QTemporaryDir folder;
    const QString path = folder.filePath(u"full.qnc"_s);
    SaveSheetFile(sheet, path);
    for (auto _ : state) {
        Sheet loaded;
        if (!LoadSheetFile(path, loaded).isComplete())
            state.SkipWithError("the sheet did not load");
        benchmark::DoNotOptimize(loaded.record(SheetRows, SheetColumns).Value);
    }
}
BENCHMARK(LoadFullSheet)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
