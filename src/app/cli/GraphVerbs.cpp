#include "app/cli/GraphVerbs.h"

#include "app/cli/VerbStatus.h"
#include "graph/Graph.h"
#include "graph/GraphCsv.h"
#include "graph/PictureExport.h"
#include "platform/io/StandardStreams.h"
#include "platform/runtime/Error.h"

#include <QFile>
#include <QFileInfo>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Cli {

namespace {

constexpr QStringView Syntax
    = u"graph convert IN OUT [--type bar|pie|line|scatter] "
      u"[--bar solid|barline|histogram] [--3d] [--title TEXT] [--no-colour] "
      u"[--legend] [--width PX] [--format png|emf|svg|pdf|qnp]";

// What "-" holds and gets, for the messages.
const QString StandardInput = u"standard input"_s;

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
    QString format; // the kind of OUT: by its extension unless given; PNG for "-"
};

QString extension(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

QString shownOutput(const QString& path)
{
    return Io::IsStandardStream(path) ? u"standard output"_s : path;
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
        } else if (argument == u"--format"_s && hasValue) {
            options.format = arguments[++i];
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
    if (options.format.isEmpty())
        options.format
            = Io::IsStandardStream(options.output) ? u"png"_s : extension(options.output);
    static const QStringList outputs { u"qnp"_s, u"emf"_s, u"png"_s, u"svg"_s, u"pdf"_s };
    if (!outputs.contains(options.format))
        return std::nullopt;
    return options;
}

// A graph file starts with its section's heading; anything else from standard input is taken
// for comma-separated text.
bool isGraphFile(QByteArrayView bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes = bytes.sliced(3);
    bytes = bytes.trimmed();
    const qsizetype lineEnd = bytes.indexOf('\n');
    const QByteArrayView firstLine = lineEnd < 0 ? bytes : bytes.first(lineEnd);
    return firstLine.trimmed().compare("[Ormsey Data File]", Qt::CaseInsensitive) == 0;
}

QString readStandardInput(Ormsey::Graph& graph, QStringList& leftOut)
{
    QByteArray bytes;
    const QString problem = Io::ReadWhole(u"-"_s, bytes);
    if (!problem.isEmpty())
        return problem;
    if (!isGraphFile(bytes))
        return Ormsey::ImportGraphCsvBytes(graph, bytes, StandardInput, &leftOut);
    try {
        graph.LoadGraphDataBytes(bytes);
    } catch (const Runtime::Error& fault) {
        return u"%1 is damaged: %2"_s.arg(StandardInput, fault.message());
    }
    return {};
}

QString readInput(const QString& path, Ormsey::Graph& graph, QTextStream& err)
{
    const QString kind = extension(path);
    if (kind == u"csv"_s || Io::IsStandardStream(path)) {
        QStringList leftOut;
        const QString problem = Io::IsStandardStream(path)
            ? readStandardInput(graph, leftOut)
            : Ormsey::ImportGraphCsv(graph, path, &leftOut);
        for (const QString& note : std::as_const(leftOut))
            err << note << Qt::endl;
        return problem;
    }
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

void applyOptions(const ConvertOptions& options, Ormsey::Graph& graph)
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

QString writeOutput(const ConvertOptions& options, Ormsey::Graph& graph)
{
    if (options.format == u"qnp"_s)
        return graph.SaveGraphData(options.output);
    if (!graph.GraphHasData())
        return u"The graph has no data to draw."_s;
    // Without --width a PNG has the picture's own size.
    return Ormsey::ExportPictureFile(graph, options.output, options.width, 1, options.format);
}

int convert(const QStringList& arguments, QTextStream& err)
{
    const std::optional<ConvertOptions> options = parseOptions(arguments);
    if (!options)
        return Usage(err, Syntax);

    Ormsey::Graph graph;
    const QString readProblem = readInput(options->input, graph, err);
    if (!readProblem.isEmpty())
        return Failure(err, readProblem);
    applyOptions(*options, graph);
    const QString writeProblem = writeOutput(*options, graph);
    if (!writeProblem.isEmpty())
        return Failure(
            err, u"Cannot write %1: %2"_s.arg(shownOutput(options->output), writeProblem));
    return Succeeded;
}

} // namespace

bool IsGraphVerb(const QStringList& arguments)
{
    return !arguments.isEmpty() && arguments.front() == u"graph"_s;
}

int RunGraphVerb(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    Q_UNUSED(out);
    if (arguments.size() < 2 || arguments[1] != u"convert"_s)
        return Usage(err, Syntax);
    return convert(arguments, err);
}

} // namespace Cli
