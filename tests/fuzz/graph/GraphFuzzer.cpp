// Any bytes as a graph file: the reader must neither crash nor read out of bounds, may only
// fail with the runtime's own errors, and whatever it kept must save as a file of whole CRLF
// lines that the reader takes again.
#include "graph/Graph.h"
#include "platform/runtime/Error.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

namespace {

bool LoadSurvives(Ormsey::Graph& graph, QByteArrayView bytes)
{
    try {
        graph.LoadGraphDataBytes(bytes);
        return true;
    } catch (const Runtime::Error& error) {
        // A row of too many fields, or a number too large for its field.
        if (error.number() != 9 && error.number() != Runtime::Error::Overflow)
            std::abort();
        return false;
    }
}

// Every line break the writer puts out is a CRLF pair, so a text cannot start a new key.
bool WholeLines(const QByteArray& bytes)
{
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\r' && (i + 1 >= bytes.size() || bytes[i + 1] != '\n'))
            return false;
        if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r'))
            return false;
    }
    return bytes.endsWith("\r\n");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    Ormsey::Graph graph;
    LoadSurvives(graph, bytes);
    const int series = graph.NumberOfDataSeries();
    if (series < 1 || series > Ormsey::Graph::SeriesCount)
        std::abort();
    if (graph.NoOfItems() < 0 || graph.NoOfItems() > Ormsey::Graph::RowCount)
        std::abort();
    graph.SortGraph(0);
    graph.SortGraph(1);
    graph.SortGraph(-1);

    const QByteArray written = graph.GraphDataBytes();
    if (!WholeLines(written) || !written.startsWith("[Ormsey Data File]\r\n"))
        std::abort();
    Ormsey::Graph again;
    LoadSurvives(again, written);
    return 0;
}
