#include "graph/GraphCsv.h"

#include "graph/Graph.h"
#include "platform/io/StandardStreams.h"
#include "platform/profile/TextDecoding.h"
#include "platform/runtime/Conversions.h"
#include "platform/text/DelimitedText.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

QString ImportGraphCsv(Graph& graph, const QString& path, QStringList* leftOut)
{
    QByteArray bytes;
    const QString problem = Io::ReadWhole(path, bytes);
    if (!problem.isEmpty())
        return problem;
    return ImportGraphCsvBytes(graph, bytes, path, leftOut);
}

QString ImportGraphCsvBytes(
    Graph& graph, QByteArrayView bytes, const QString& name, QStringList* leftOut)
{
    const QString text = Profile::DecodeSystemText(bytes);
    QList<QStringList> rows = Text::ReadDelimitedText(text, u',', Text::Dialect::Quoted);
    if (rows.isEmpty())
        return u"%1 holds no rows."_s.arg(name);
    QStringList notes;

    qsizetype columns = 0;
    for (const QStringList& row : std::as_const(rows))
        columns = std::max(columns, row.size());
    if (columns > Graph::ColumnCount)
        notes << u"Only the first %1 series of %2 are used."_s.arg(Graph::SeriesCount).arg(name);
    const int series = int(std::clamp<qsizetype>(columns - 1, 1, Graph::SeriesCount));

    const QStringList& first = rows.front();
    const bool heading = std::any_of(first.begin() + std::min<qsizetype>(1, first.size()),
        first.end(),
        [](const QString& cell) { return !cell.trimmed().isEmpty() && !Runtime::IsNumeric(cell); });
    if (heading) {
        graph.HorizontalAxisLabel(first.value(0).trimmed());
        for (int k = 1; k <= series; ++k) {
            const QString label = first.value(k).trimmed();
            if (!label.isEmpty())
                graph.DataSeriesLabel(k, label);
        }
        rows.removeFirst();
    }
    if (rows.size() > Graph::RowCount)
        notes << u"Only the first %1 rows of %2 are used."_s.arg(Graph::RowCount).arg(name);

    const int rowCount = int(std::min<qsizetype>(rows.size(), Graph::RowCount));
    for (int r = 0; r < rowCount; ++r) {
        const QStringList& row = rows[r];
        for (int c = 0; c <= series; ++c)
            graph.Data(r, c, row.value(c).trimmed());
    }
    graph.NumberOfDataSeries(series);
    if (leftOut != nullptr)
        *leftOut += notes;
    return {};
}

} // namespace Ormsey
