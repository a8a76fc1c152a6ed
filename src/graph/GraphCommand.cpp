#include "graph/GraphCommand.h"

#include "graph/Graph.h"
#include "graph/PictureExport.h"
#include "platform/io/SafeFileWriter.h"
#include "platform/profile/TextDecoding.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr QStringView Syntax
    = u"graph convert IN OUT [--type bar|pie|line|scatter] "
      u"[--bar solid|barline|histogram] [--3d] [--title TEXT] [--no-colour] "
      u"[--legend] [--width PX]";

// Wider pictures than this are not a classroom graph but a mistyped number.
constexpr int MaximumWidth = 20000;

struct ConvertOptions
{
    QString input;
    QString output;
    std::optional<std::int32_t> graphType;
    std::optional<std::int32_t> barType;
    bool threeD = false;
    std::optional<QString> title;
    bool noColour = false;
    bool legend = false;
    int width = 0; // 0: the picture's own width
};

int usage(QTextStream& err)
{
    err << u"usage: quorbin-cli "_s << Syntax << Qt::endl;
    return GraphUsageError;
}

int failed(QTextStream& err, const QString& message)
{
    err << message << Qt::endl;
    return GraphCommandFailed;
}

QString extension(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

std::optional<ConvertOptions> parseOptions(const QStringList& arguments)
{
    ConvertOptions options;
    QStringList files;
    for (qsizetype i = 2; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (argument == u"--type"_s && hasValue) {
            const QString type = arguments[++i];
            static const QStringList types { u"bar"_s, u"pie"_s, u"line"_s, u"scatter"_s };
            if (!types.contains(type))
                return std::nullopt;
            options.graphType = std::int32_t(types.indexOf(type));
        } else if (argument == u"--bar"_s && hasValue) {
            const QString type = arguments[++i];
            static const QStringList types { u"solid"_s, u"barline"_s, u"histogram"_s };
            if (!types.contains(type))
                return std::nullopt;
            options.barType = std::int32_t(types.indexOf(type));
        } else if (argument == u"--title"_s && hasValue) {
            options.title = arguments[++i];
        } else if (argument == u"--width"_s && hasValue) {
            bool ok = false;
            options.width = arguments[++i].toInt(&ok);
            if (!ok || options.width < 1 || options.width > MaximumWidth)
                return std::nullopt;
        } else if (argument == u"--3d"_s) {
            options.threeD = true;
        } else if (argument == u"--no-colour"_s) {
            options.noColour = true;
        } else if (argument == u"--legend"_s) {
            options.legend = true;
        } else if (argument.startsWith(u"--"_s)) {
            return std::nullopt;
        } else {
            files << argument;
        }
    }
    if (files.size() != 2)
        return std::nullopt;
    options.input = files[0];
    options.output = files[1];
    return options;
}

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

// Fills a new graph from comma-separated text. Returns a message when the text cannot be a
// graph; warnings for what was left out go to `err`.
QString readCsv(const QString& path, Graph& graph, QTextStream& err)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return u"Cannot read %1: %2"_s.arg(path, file.errorString());
    QList<QStringList> rows = readCommaSeparated(Profile::DecodeSystemText(file.readAll()));
    if (rows.isEmpty())
        return u"%1 holds no rows."_s.arg(path);

    qsizetype columns = 0;
    for (const QStringList& row : std::as_const(rows))
        columns = std::max(columns, row.size());
    if (columns > Graph::ColumnCount)
        err << u"Only the first %1 series of %2 are used."_s.arg(Graph::SeriesCount).arg(path)
            << Qt::endl;
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
        err << u"Only the first %1 rows of %2 are used."_s.arg(Graph::RowCount).arg(path)
            << Qt::endl;

    const int rowCount = int(std::min<qsizetype>(rows.size(), Graph::RowCount));
    for (int r = 0; r < rowCount; ++r) {
        const QStringList& row = rows[r];
        for (int c = 0; c <= series; ++c)
            graph.Data(r, c, row.value(c).trimmed());
    }
    graph.NumberOfDataSeries(series);
    return {};
}

QString readInput(const QString& path, Graph& graph, QTextStream& err)
{
    const QString kind = extension(path);
    if (kind == u"csv"_s)
        return readCsv(path, graph, err);
    if (kind != u"qnp"_s)
        return u"%1 is neither a graph file (.qnp) nor comma-separated text (.csv)."_s.arg(path);
    // A missing key has a default, so only a file that cannot be opened is an error here.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return u"Cannot read %1: %2"_s.arg(path, file.errorString());
    try {
        graph.LoadGraphDataBytes(file.readAll());
    } catch (const Runtime::Error& fault) {
        return u"%1 is damaged: %2"_s.arg(path, fault.message());
    }
    return {};
}

void applyOptions(const ConvertOptions& options, Graph& graph)
{
    if (options.graphType)
        graph.GraphType(*options.graphType);
    if (options.barType)
        graph.BarChartType(*options.barType);
    if (options.threeD)
        graph.Graph3D(true);
    if (options.title)
        graph.GraphTitle(*options.title);
    if (options.noColour) {
        graph.UseColour = false;
        graph.RequestRedraw();
    }
    if (options.legend)
        graph.DisplayLegend(true);
}

QString writeOutput(const ConvertOptions& options, Graph& graph)
{
    const QString kind = extension(options.output);
    if (kind == u"qnp"_s)
        return graph.SaveGraphData(options.output);
    if (!graph.GraphHasData())
        return u"The graph has no data to draw."_s;
    // Without --width a PNG has the picture's own size.
    return ExportPictureFile(graph, options.output, options.width, 1);
}

int convert(const QStringList& arguments, QTextStream& err)
{
    const std::optional<ConvertOptions> options = parseOptions(arguments);
    if (!options)
        return usage(err);
    static const QStringList outputs { u"qnp"_s, u"emf"_s, u"png"_s, u"svg"_s, u"pdf"_s };
    if (!outputs.contains(extension(options->output)))
        return usage(err);

    Graph graph;
    const QString readProblem = readInput(options->input, graph, err);
    if (!readProblem.isEmpty())
        return failed(err, readProblem);
    applyOptions(*options, graph);
    const QString writeProblem = writeOutput(*options, graph);
    if (!writeProblem.isEmpty())
        return failed(err, u"Cannot write %1: %2"_s.arg(options->output, writeProblem));
    return 0;
}

} // namespace

bool IsGraphCommand(const QStringList& arguments)
{
    return !arguments.isEmpty() && arguments.front() == u"graph"_s;
}

int RunGraphCommand(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    Q_UNUSED(out);
    if (arguments.size() < 2 || arguments[1] != u"convert"_s)
        return usage(err);
    return convert(arguments, err);
}

} // namespace Ormsey
