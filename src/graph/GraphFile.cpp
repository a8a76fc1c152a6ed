#include "graph/GraphFile.h"

#include "graph/Graph.h"
#include "platform/io/SafeFileWriter.h"
#include "platform/profile/ProfileFile.h"
#include "platform/runtime/Conversions.h"

#include <QFile>
#include <QIODevice>
#include <QStringList>
#include <QStringView>
#include <algorithm>
#include <array>
#include <span>
#include <utility>

using namespace Qt::StringLiterals;

namespace Ormsey {

namespace {

constexpr QStringView Section = u"Ormsey Data File";
// Between a row's fields in the file.
constexpr QStringView FieldSeparator = u"\",\"";

constexpr std::array<QStringView, 4> GraphTypeNames { u"BarChart", u"PieChart", u"LineGraph",
    u"Scattergram" };
constexpr std::array<QStringView, 3> BarTypeNames { u"Solid Bars", u"Bar Line", u"Histogram" };
constexpr std::array<QStringView, 4> PieLabelNames { u"No Labels", u"Labels", u"Percentages",
    u"Labels and Percentages" };
constexpr std::array<QStringView, 4> PointTypeNames { u"Cross", u"Single Point", u"Circle",
    u"None" };

// The spelling of an enumerated value; a value outside the table (only a caller's mistake
// can store one) is written as the first spelling, which reads back as the default.
QString Spelling(std::span<const QStringView> names, std::int32_t value)
{
    if (value < 0 || std::size_t(value) >= names.size())
        return names.front().toString();
    return names[std::size_t(value)].toString();
}

QString TrueFalse(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

// A line break inside a text would end its line in the file and could even start a new key,
// so texts are written with blanks in their place.
QString OneLine(const QString& text)
{
    QString line = text;
    line.replace(u'\r', u' ');
    line.replace(u'\n', u' ');
    return line;
}

bool IsWord(QStringView value, QStringView word)
{
    return value.compare(word, Qt::CaseInsensitive) == 0;
}

// The colour after "&H" as an unsigned 32-bit value; hexadecimal digits are read as far as
// they go, and digits beyond eight keep the low 32 bits.
std::int32_t ReadColour(QStringView value)
{
    if (value.startsWith(u"&H", Qt::CaseInsensitive))
        value = value.sliced(2);
    std::uint32_t colour = 0;
    for (const QChar character : value) {
        const char16_t code = character.unicode();
        std::uint32_t digit = 0;
        if (code >= u'0' && code <= u'9')
            digit = std::uint32_t(code - u'0');
        else if (code >= u'a' && code <= u'f')
            digit = std::uint32_t(code - u'a' + 10);
        else if (code >= u'A' && code <= u'F')
            digit = std::uint32_t(code - u'A' + 10);
        else
            break;
        colour = colour * 16U + digit;
    }
    return std::int32_t(colour);
}

} // namespace

QByteArray GraphFile::Bytes(const Graph& graph)
{
    // Cells and labels up to the series count; a count beyond the four series stops there.
    const std::int32_t series = graph.m_numberOfDataSeries;
    const auto columns = std::size_t(std::clamp(series, 0, Graph::SeriesCount)) + 1;

    QStringList lines;
    lines << u"[Ormsey Data File]"_s << QString();
    lines << u"GraphTitle = "_s + OneLine(graph.m_graphTitle);
    lines << u"Label1 = "_s + OneLine(graph.m_axisLabels[0]);
    lines << u"Label2 = "_s + OneLine(graph.m_axisLabels[1]);
    lines << u"GraphType = "_s + Spelling(GraphTypeNames, graph.m_graphType);
    lines << u"BarType = "_s + Spelling(BarTypeNames, graph.m_barType);
    lines << u"JoinPoints = "_s + TrueFalse(graph.JoinPoints);
    lines << u"3D = "_s + TrueFalse(graph.m_graph3D);
    lines << u"AutoScale = "_s + TrueFalse(graph.AutoScale);
    lines << u"UseColour = "_s + TrueFalse(graph.UseColour);
    lines << u"DisplayLegend = "_s + TrueFalse(graph.m_displayLegend);
    lines << u"DisplayLineOfBestFit = "_s + TrueFalse(graph.m_displayLineOfBestFit);
    lines << u"DisplayCorrelation = "_s + TrueFalse(graph.m_displayCorrelation);
    lines << u"PieLabels = "_s + Spelling(PieLabelNames, graph.PieLabels);
    // No blank after "=": Str puts one before a non-negative number.
    lines << u"PieStartingAngle ="_s + Runtime::Str(graph.PieStartingAngle);
    lines << u"3DPieElevation ="_s + Runtime::Str(graph.PieElevation3D);
    lines << u"3DPieRotation ="_s + Runtime::Str(graph.PieRotation3D);
    lines << u"PointType = "_s + Spelling(PointTypeNames, graph.PointType);
    lines << u"3DBackgroundColour = &H"_s
            + QString::number(std::uint32_t(graph.BackgroundColour3D), 16).toUpper();
    lines << u"HistogramColour = &H"_s
            + QString::number(std::uint32_t(graph.HistogramColour), 16).toUpper();
    lines << u"Minimum Value0 = "_s + Runtime::Str(graph.AxisMinimum[0]);
    lines << u"Maximum Value0 = "_s + Runtime::Str(graph.AxisMaximum[0]);
    lines << u"Minimum Value1 = "_s + Runtime::Str(graph.AxisMinimum[1]);
    lines << u"Maximum Value1 = "_s + Runtime::Str(graph.AxisMaximum[1]);
    lines << u"Font Name = "_s + OneLine(graph.m_graphFont);
    lines << u"NumberOfDataSeries = "_s + QString::number(series);
    for (std::size_t k = 1; k < columns; ++k)
        lines << u"DataSeries%1 = "_s.arg(k) + OneLine(graph.m_seriesLabels[k - 1]);
    for (std::size_t r = 0; r < Graph::RowCount; ++r) {
        const auto& row = graph.m_data[r];
        if (std::all_of(row.begin(), row.begin() + std::ptrdiff_t(columns),
                [](const QString& cell) { return cell.isEmpty(); }))
            continue;
        QStringList fields;
        for (std::size_t c = 0; c < columns; ++c)
            fields << u'"' + OneLine(row[c]) + u'"';
        lines << u"Row%1 = "_s.arg(r + 1) + fields.join(u',');
    }

    QByteArray bytes;
    for (const QString& line : std::as_const(lines))
        bytes += line.toUtf8() + "\r\n";
    return bytes;
}

void GraphFile::Read(Graph& graph, QByteArrayView bytes)
{
    const Profile::ProfileFile profile = Profile::ProfileFile::fromBytes(bytes);
    const auto read = [&](QStringView key) { return profile.value(Section, key); };
    const auto readFlag = [&](QStringView key) { return IsWord(read(key), u"true"); };
    const auto readNumber = [&](QStringView key) { return Runtime::Val(read(key)); };

    graph.m_graphTitle = read(u"GraphTitle");
    graph.m_axisLabels[0] = read(u"Label1");
    graph.m_axisLabels[1] = read(u"Label2");

    const QString graphType = read(u"GraphType");
    graph.m_graphType = Graph::BarChart;
    for (std::int32_t type = Graph::PieChart; type <= Graph::Scattergram; ++type) {
        if (IsWord(graphType, GraphTypeNames[std::size_t(type)]))
            graph.m_graphType = type;
    }
    const QString barType = read(u"BarType");
    graph.m_barType = IsWord(barType, u"Bar Line") ? Graph::BarLine
        : IsWord(barType, u"Histogram")            ? Graph::Histogram
                                                   : Graph::SolidBars;

    graph.JoinPoints = readFlag(u"JoinPoints");
    graph.m_graph3D = readFlag(u"3D");
    graph.AutoScale = readFlag(u"AutoScale");
    graph.UseColour = readFlag(u"UseColour");
    graph.m_displayLegend = readFlag(u"DisplayLegend");
    graph.m_displayLineOfBestFit = readFlag(u"DisplayLineOfBestFit");
    graph.m_displayCorrelation = readFlag(u"DisplayCorrelation");

    const QString pieLabels = read(u"PieLabels");
    graph.PieLabels = IsWord(pieLabels, u"No Labels")  ? Graph::NoLabels
        : IsWord(pieLabels, u"Percentages")            ? Graph::Percentages
        : IsWord(pieLabels, u"Labels and Percentages") ? Graph::LabelsAndPercentages
                                                       : Graph::Labels;

    graph.PieStartingAngle = std::int16_t(Runtime::CInt(readNumber(u"PieStartingAngle")));
    graph.PieElevation3D = std::int16_t(Runtime::CInt(readNumber(u"3DPieElevation")));
    graph.PieRotation3D = std::int16_t(Runtime::CInt(readNumber(u"3DPieRotation")));

    const QString pointType = read(u"PointType");
    graph.PointType = IsWord(pointType, u"None") ? Graph::NoPoint
        : IsWord(pointType, u"Cross")            ? Graph::Cross
        : IsWord(pointType, u"Circle")           ? Graph::Circle
                                                 : Graph::SinglePoint;

    graph.BackgroundColour3D = ReadColour(read(u"3DBackgroundColour"));
    graph.HistogramColour = ReadColour(read(u"HistogramColour"));

    graph.AxisMinimum[0] = readNumber(u"Minimum Value0");
    graph.AxisMaximum[0] = readNumber(u"Maximum Value0");
    graph.AxisMinimum[1] = readNumber(u"Minimum Value1");
    graph.AxisMaximum[1] = readNumber(u"Maximum Value1");

    graph.m_graphFont = read(u"Font Name");

    // The drawing and the writer index the four series labels with the count, so a damaged
    // file's larger count is held to four.
    const double series
        = std::clamp(readNumber(u"NumberOfDataSeries"), 1.0, double(Graph::SeriesCount));
    graph.NumberOfDataSeries(Runtime::CLng(series));

    for (int k = 1; k <= Graph::SeriesCount; ++k) {
        const QString label = read(u"DataSeries%1"_s.arg(k));
        if (!label.isEmpty())
            graph.m_seriesLabels[std::size_t(k - 1)] = label;
    }

    for (int r = 0; r < Graph::RowCount; ++r) {
        const QString value = read(u"Row%1"_s.arg(r + 1));
        if (value.isEmpty()) {
            graph.Data(r, 0, QString());
            graph.Data(r, 1, QString());
            continue;
        }
        QStringView rest = value;
        int column = 0;
        for (qsizetype separator = rest.indexOf(FieldSeparator); separator >= 0;
             separator = rest.indexOf(FieldSeparator)) {
            graph.m_hasNonIntegerData = true;
            graph.Data(r, column, rest.first(separator).toString());
            ++column;
            rest = rest.sliced(separator + FieldSeparator.size());
        }
        if (!rest.isEmpty())
            graph.Data(r, column, rest.toString());
    }

    graph.MarkStale();
}

QString GraphFile::Save(const Graph& graph, const QString& fileName)
{
    const QByteArray bytes = Bytes(graph);
    return Io::SafeFileWriter::writeFile(
        fileName, [&](QIODevice& device) { return device.write(bytes) == bytes.size(); });
}

void GraphFile::Load(Graph& graph, const QString& fileName)
{
    QByteArray bytes;
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    Read(graph, bytes);
}

} // namespace Ormsey
