#include "graph/GraphCsv.h"

#include "graph/Graph.h"
#include "platform/profile/TextDecoding.h"
#include "platform/runtime/Conversions.h"

#include <QFile>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

// Comma-separated text as spreadsheets write it: fields in double quotes may hold commas,
// doubled quotes and line breaks; lines end in LF or CRLF. Lines with no text are dropped.
QList<QStringList> readCommaSeparated(const QString& text)
{
    QList<QStringList> rows;
    QStringList fields;
    QString field;
    bool quoted = false;
    bool lineHasText = false;
    const auto endField = [&] {
        fields << field;
        field.clear();
    };
    const auto endLine = [&] {
        endField();
        if (lineHasText)
            rows << fields;
        fields.clear();
        lineHasText = false;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        if (quoted) {
            if (character == u'"' && i + 1 < text.size() && text[i + 1] == u'"') {
                field += u'"';
                ++i;
            } else if (character == u'"') {
                quoted = false;
            } else {
                field += character;
            }
        } else if (character == u'"') {
            quoted = true;
            lineHasText = true;
        } else if (character == u',') {
            endField();
        } else if (character == u'\n') {
            endLine();
        } else if (character != u'\r') {
            field += character;
            if (!character.isSpace())
                lineHasText = true;
        }
    }
    endLine();
    return rows;
}

} // namespace

QString ImportGraphCsv(Graph& graph, const QString& path, QStringList* leftOut)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return u"Cannot read %1: %2"_s.arg(path, file.errorString());
    return ImportGraphCsvBytes(graph, file.readAll(), path, leftOut);
}

QString ImportGraphCsvBytes(
    Graph& graph, QByteArrayView bytes, const QString& name, QStringList* leftOut)
{
    QList<QStringList> rows = readCommaSeparated(Profile::DecodeSystemText(bytes));
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
