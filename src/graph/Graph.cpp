#include "graph/Graph.h"

#include "frame/Colours.h"
#include "graph/GraphDrawing.h"
#include "graph/MetaFile.h"
#include "platform/emf/Player.h"
#include "platform/io/SafeFileWriter.h"
#include "platform/profile/ProfileFile.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "resources/StringTable.h"

#include <QCollator>
#include <QFile>
#include <QIODevice>
#include <QStringView>
#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

using namespace Qt::StringLiterals;

namespace Ormsey {

namespace {

constexpr int SubscriptOutOfRange = 9;

[[noreturn]] void RefuseIndex()
{
    throw Runtime::Error(SubscriptOutOfRange, u"Subscript out of range"_s);
}

// The size the measuring pass starts from; the drawing may only enlarge it.
constexpr std::int32_t StartWidth = 400;
constexpr std::int32_t StartHeight = 420;

// A cell's number. Cells are typed by users and read from files, so a number too large for a
// double counts as no number rather than stopping every drawing and statistic.
double CellValue(const QString& text)
{
    try {
        return Runtime::Val(text);
    } catch (const Runtime::Error&) {
        return 0;
    }
}

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

bool DiffersIgnoringCase(const QString& stored, const QString& value)
{
    return stored.compare(value, Qt::CaseInsensitive) != 0;
}

} // namespace

Graph::Graph(QObject* parent)
    : QObject(parent)
    , m_metaFile(std::make_unique<MetaFile>())
{
    InitialiseVariables();
    m_metaFile->OpenMF();
    m_metaFile->CloseMF();
}

Graph::~Graph() = default;

void Graph::GraphType(std::int32_t value)
{
    if (value == m_graphType)
        return;
    m_graphType = value;
    if (!CanBe3D())
        m_graph3D = false;
    PictureStale = true;
}

void Graph::Graph3D(bool value)
{
    if (value == m_graph3D)
        return;
    m_graph3D = CanBe3D() && value;
    PictureStale = true;
}

void Graph::BarChartType(std::int32_t value)
{
    if (value == m_barType)
        return;
    m_barType = value;
    PictureStale = true;
}

void Graph::GraphFont(const QString& value)
{
    if (!DiffersIgnoringCase(m_graphFont, value))
        return;
    m_graphFont = value;
    PictureStale = true;
}

void Graph::GraphTitle(const QString& value)
{
    if (!DiffersIgnoringCase(m_graphTitle, value))
        return;
    m_graphTitle = value;
    PictureStale = true;
}

void Graph::HorizontalAxisLabel(const QString& value)
{
    if (!DiffersIgnoringCase(m_axisLabels[0], value))
        return;
    m_axisLabels[0] = value;
    PictureStale = true;
}

void Graph::VerticalAxisLabel(const QString& value)
{
    if (!DiffersIgnoringCase(m_axisLabels[1], value))
        return;
    m_axisLabels[1] = value;
    PictureStale = true;
}

QString Graph::DataSeriesLabel(int index) const
{
    if (index < 1 || index > SeriesCount)
        RefuseIndex();
    return m_seriesLabels[std::size_t(index - 1)];
}

void Graph::DataSeriesLabel(int index, const QString& value)
{
    if (index < 1 || index > SeriesCount)
        RefuseIndex();
    QString& label = m_seriesLabels[std::size_t(index - 1)];
    if (!DiffersIgnoringCase(label, value))
        return;
    label = value;
    PictureStale = true;
}

QString Graph::Data(int row, int column) const
{
    if (row < 0 || row >= RowCount || column < 0 || column >= ColumnCount)
        RefuseIndex();
    return m_data[std::size_t(row)][std::size_t(column)];
}

void Graph::Data(int row, int column, const QString& value)
{
    if (row < 0 || row >= RowCount || column < 0 || column >= ColumnCount)
        RefuseIndex();
    QString& cell = m_data[std::size_t(row)][std::size_t(column)];
    if (cell == value)
        return;
    cell = value;
    const double number = CellValue(value);
    if (Runtime::Int(number) != number)
        HasNonIntegerData = true;
    StatisticsStale = true;
    PictureStale = true;
}

void Graph::DisplayLegend(bool value)
{
    m_displayLegend = value;
    PictureStale = true;
}

void Graph::DisplayLineOfBestFit(bool value)
{
    m_displayLineOfBestFit = value;
    PictureStale = true;
}

void Graph::DisplayCorrelation(bool value)
{
    m_displayCorrelation = value;
    PictureStale = true;
}

bool Graph::GraphHasData()
{
    return NoOfItems() >= 1;
}

std::int32_t Graph::NumberOfDataSeries()
{
    if (StatisticsStale)
        RecalculateStatistics();
    return m_numberOfDataSeries;
}

void Graph::NumberOfDataSeries(std::int32_t value)
{
    if (value == m_numberOfDataSeries)
        return;
    m_numberOfDataSeries = value;
    StatisticsStale = true;
    PictureStale = true;
}

std::int32_t Graph::NoOfItems()
{
    if (StatisticsStale)
        RecalculateStatistics();
    return m_items;
}

bool Graph::XYPlot()
{
    if (StatisticsStale)
        RecalculateStatistics();
    return m_xyPlot;
}

const Emf::Picture* Graph::hMF()
{
    if (PictureStale)
        RedrawMetafile();
    return m_metaFile->hMF();
}

std::int32_t Graph::Width() const
{
    return m_metaFile->Width;
}

std::int32_t Graph::Height() const
{
    return m_metaFile->Height;
}

std::unique_ptr<Emf::Picture> Graph::CopyPicture()
{
    const Emf::Picture* current = hMF();
    MetaFile copy;
    copy.Width = m_metaFile->Width;
    copy.Height = m_metaFile->Height;
    copy.OpenMF();
    if (current)
        Emf::PlayPicture(*current, *copy.hDC(), Emf::RectL { 0, 0, copy.Width, copy.Height });
    copy.CloseMF();
    return copy.ReleaseMetaFile();
}

QString Graph::ExportGraph(const QString& fileName)
{
    const std::unique_ptr<Emf::Picture> picture = CopyPicture();
    if (!picture)
        return u"There is no picture to export."_s;
    return picture->save(fileName);
}

QByteArray Graph::GraphDataBytes() const
{
    // Cells and labels up to the series count; a count beyond the four series stops there.
    const auto columns = std::size_t(std::clamp(m_numberOfDataSeries, 0, SeriesCount)) + 1;

    QStringList lines;
    lines << u"[Ormsey Data File]"_s << QString();
    lines << u"GraphTitle = "_s + OneLine(m_graphTitle);
    lines << u"Label1 = "_s + OneLine(m_axisLabels[0]);
    lines << u"Label2 = "_s + OneLine(m_axisLabels[1]);
    lines << u"GraphType = "_s + Spelling(GraphTypeNames, m_graphType);
    lines << u"BarType = "_s + Spelling(BarTypeNames, m_barType);
    lines << u"JoinPoints = "_s + TrueFalse(JoinPoints);
    lines << u"3D = "_s + TrueFalse(m_graph3D);
    lines << u"AutoScale = "_s + TrueFalse(AutoScale);
    lines << u"UseColour = "_s + TrueFalse(UseColour);
    lines << u"DisplayLegend = "_s + TrueFalse(m_displayLegend);
    lines << u"DisplayLineOfBestFit = "_s + TrueFalse(m_displayLineOfBestFit);
    lines << u"DisplayCorrelation = "_s + TrueFalse(m_displayCorrelation);
    lines << u"PieLabels = "_s + Spelling(PieLabelNames, PieLabels);
    // No blank after "=": Str puts one before a non-negative number.
    lines << u"PieStartingAngle ="_s + Runtime::Str(PieStartingAngle);
    lines << u"3DPieElevation ="_s + Runtime::Str(PieElevation3D);
    lines << u"3DPieRotation ="_s + Runtime::Str(PieRotation3D);
    lines << u"PointType = "_s + Spelling(PointTypeNames, PointType);
    lines << u"3DBackgroundColour = &H"_s
            + QString::number(std::uint32_t(BackgroundColour3D), 16).toUpper();
    lines << u"HistogramColour = &H"_s
            + QString::number(std::uint32_t(HistogramColour), 16).toUpper();
    lines << u"Minimum Value0 = "_s + Runtime::Str(AxisMinimum[0]);
    lines << u"Maximum Value0 = "_s + Runtime::Str(AxisMaximum[0]);
    lines << u"Minimum Value1 = "_s + Runtime::Str(AxisMinimum[1]);
    lines << u"Maximum Value1 = "_s + Runtime::Str(AxisMaximum[1]);
    lines << u"Font Name = "_s + OneLine(m_graphFont);
    lines << u"NumberOfDataSeries = "_s + QString::number(m_numberOfDataSeries);
    for (std::size_t k = 1; k < columns; ++k)
        lines << u"DataSeries%1 = "_s.arg(k) + OneLine(m_seriesLabels[k - 1]);
    for (std::size_t r = 0; r < RowCount; ++r) {
        const auto& row = m_data[r];
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

QString Graph::SaveGraphData(const QString& fileName) const
{
    const QByteArray bytes = GraphDataBytes();
    return Io::SafeFileWriter::writeFile(
        fileName, [&](QIODevice& device) { return device.write(bytes) == bytes.size(); });
}

void Graph::LoadGraphData(const QString& fileName)
{
    QByteArray bytes;
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    LoadGraphDataBytes(bytes);
}

void Graph::LoadGraphDataBytes(QByteArrayView bytes)
{
    const Profile::ProfileFile profile = Profile::ProfileFile::fromBytes(bytes);
    const auto read = [&](QStringView key) { return profile.value(Section, key); };
    const auto readFlag = [&](QStringView key) { return IsWord(read(key), u"true"); };
    const auto readNumber = [&](QStringView key) { return Runtime::Val(read(key)); };

    m_graphTitle = read(u"GraphTitle");
    m_axisLabels[0] = read(u"Label1");
    m_axisLabels[1] = read(u"Label2");

    const QString graphType = read(u"GraphType");
    m_graphType = BarChart;
    for (std::int32_t type = PieChart; type <= Scattergram; ++type) {
        if (IsWord(graphType, GraphTypeNames[std::size_t(type)]))
            m_graphType = type;
    }
    const QString barType = read(u"BarType");
    m_barType = IsWord(barType, u"Bar Line") ? BarLine
        : IsWord(barType, u"Histogram")      ? Histogram
                                             : SolidBars;

    JoinPoints = readFlag(u"JoinPoints");
    m_graph3D = readFlag(u"3D");
    AutoScale = readFlag(u"AutoScale");
    UseColour = readFlag(u"UseColour");
    m_displayLegend = readFlag(u"DisplayLegend");
    m_displayLineOfBestFit = readFlag(u"DisplayLineOfBestFit");
    m_displayCorrelation = readFlag(u"DisplayCorrelation");

    const QString pieLabels = read(u"PieLabels");
    PieLabels = IsWord(pieLabels, u"No Labels")        ? NoLabels
        : IsWord(pieLabels, u"Percentages")            ? Percentages
        : IsWord(pieLabels, u"Labels and Percentages") ? LabelsAndPercentages
                                                       : Labels;

    PieStartingAngle = std::int16_t(Runtime::CInt(readNumber(u"PieStartingAngle")));
    PieElevation3D = std::int16_t(Runtime::CInt(readNumber(u"3DPieElevation")));
    PieRotation3D = std::int16_t(Runtime::CInt(readNumber(u"3DPieRotation")));

    const QString pointType = read(u"PointType");
    PointType = IsWord(pointType, u"None") ? NoPoint
        : IsWord(pointType, u"Cross")      ? Cross
        : IsWord(pointType, u"Circle")     ? Circle
                                           : SinglePoint;

    BackgroundColour3D = ReadColour(read(u"3DBackgroundColour"));
    HistogramColour = ReadColour(read(u"HistogramColour"));

    AxisMinimum[0] = readNumber(u"Minimum Value0");
    AxisMaximum[0] = readNumber(u"Maximum Value0");
    AxisMinimum[1] = readNumber(u"Minimum Value1");
    AxisMaximum[1] = readNumber(u"Maximum Value1");

    m_graphFont = read(u"Font Name");

    // The drawing and the writer index the four series labels with the count, so a damaged
    // file's larger count is held to four.
    const double series = std::clamp(readNumber(u"NumberOfDataSeries"), 1.0, double(SeriesCount));
    NumberOfDataSeries(Runtime::CLng(series));

    for (int k = 1; k <= SeriesCount; ++k) {
        const QString label = read(u"DataSeries%1"_s.arg(k));
        if (!label.isEmpty())
            m_seriesLabels[std::size_t(k - 1)] = label;
    }

    for (int r = 0; r < RowCount; ++r) {
        const QString value = read(u"Row%1"_s.arg(r + 1));
        if (value.isEmpty()) {
            Data(r, 0, QString());
            Data(r, 1, QString());
            continue;
        }
        QStringView rest = value;
        int column = 0;
        for (qsizetype separator = rest.indexOf(FieldSeparator); separator >= 0;
             separator = rest.indexOf(FieldSeparator)) {
            HasNonIntegerData = true;
            Data(r, column, rest.first(separator).toString());
            ++column;
            rest = rest.sliced(separator + FieldSeparator.size());
        }
        if (!rest.isEmpty())
            Data(r, column, rest.toString());
    }

    StatisticsStale = true;
    PictureStale = true;
}

void Graph::SortGraph(int column)
{
    if (column > 4 || column < -1)
        return;
    QCollator collator(Runtime::HostLocale());
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto columnIndex = std::size_t(std::max(column, 0));

    // The exchange sort compares each pair of rows once; reading a cell's number once per row
    // instead of once per comparison keeps a full sort of 256 rows quick. The readings travel
    // with their rows.
    struct Key
    {
        bool numeric = false;
        double value = 0;
    };
    std::array<Key, RowCount> keys {};
    if (column >= 0) {
        for (std::size_t r = 0; r < RowCount; ++r) {
            const QString& cell = m_data[r][columnIndex];
            keys[r].numeric = !cell.isEmpty() && Runtime::IsNumeric(cell);
            keys[r].value = keys[r].numeric ? CellValue(cell) : 0;
        }
    }

    for (std::size_t i = 0; i + 1 < RowCount; ++i) {
        for (std::size_t j = i + 1; j < RowCount; ++j) {
            bool swap = false;
            if (column == -1) {
                swap = OriginalRowOrder[i] > OriginalRowOrder[j];
            } else {
                const QString& a = m_data[i][columnIndex];
                const QString& b = m_data[j][columnIndex];
                if (a.isEmpty() || b.isEmpty())
                    swap = false;
                else if (keys[i].numeric && keys[j].numeric)
                    swap = keys[i].value > keys[j].value;
                else
                    swap = collator.compare(a, b) > 0;
            }
            if (swap) {
                std::swap(m_data[i], m_data[j]);
                std::swap(OriginalRowOrder[i], OriginalRowOrder[j]);
                std::swap(keys[i], keys[j]);
            }
        }
    }
    PictureStale = true;
}

void Graph::InitialiseVariables()
{
    m_graphType = BarChart;
    m_barType = SolidBars;
    PieLabels = Labels;
    PointType = Cross;
    PieStartingAngle = 90;
    PieElevation3D = 45;
    m_graph3D = false;
    UseColour = true;
    BackgroundColour3D = Frame::ColourValueByName(u"LIGHT BLUE");
    HistogramColour = Frame::ColourValueByName(u"RED");
    AutoScale = true;
    m_graphFont = u"Arial"_s;
    m_graphTitle.clear();
    m_axisLabels = {};
    const QString series = GetResString(577);
    for (int k = 1; k <= SeriesCount; ++k)
        m_seriesLabels[std::size_t(k - 1)] = series + u' ' + QString::number(k);
    m_numberOfDataSeries = 1;
    EraseData();
    HasNonIntegerData = false;
    StatisticsStale = true;
    PictureStale = true;
}

void Graph::EraseData()
{
    for (auto& row : m_data)
        row = {};
    for (std::size_t i = 0; i < RowCount; ++i)
        OriginalRowOrder[i] = std::int16_t(i);
    StatisticsStale = true;
}

void Graph::RecalculateStatistics()
{
    m_items = 0;
    for (std::size_t c = 0; c < ColumnCount; ++c) {
        if (!m_data[0][c].isEmpty())
            m_items = 1;
        ColumnMinimum[c] = ColumnMaximum[c] = CellValue(m_data[0][c]);
    }

    // Row 0 always enters the sums, empty or not.
    const double x0 = CellValue(m_data[0][0]);
    const double y0 = CellValue(m_data[0][1]);
    double sumX = x0;
    double sumY = y0;
    double sumXY = x0 * y0;
    double sumXX = x0 * x0;
    double sumYY = y0 * y0;

    for (std::size_t r = 1; r < RowCount; ++r) {
        bool filled = false;
        for (std::size_t c = 0; c < ColumnCount; ++c) {
            const QString& cell = m_data[r][c];
            filled = filled || !cell.isEmpty();
            const double value = CellValue(cell);
            ColumnMinimum[c] = std::min(ColumnMinimum[c], value);
            ColumnMaximum[c] = std::max(ColumnMaximum[c], value);
        }
        if (filled) {
            ++m_items;
            const double x = CellValue(m_data[r][0]);
            const double y = CellValue(m_data[r][1]);
            sumX += x;
            sumY += y;
            sumXY += x * y;
            sumXX += x * x;
            sumYY += y * y;
        }
    }

    for (std::size_t c = 2; c < ColumnCount; ++c) {
        ColumnMinimum[1] = std::min(ColumnMinimum[1], ColumnMinimum[c]);
        ColumnMaximum[1] = std::max(ColumnMaximum[1], ColumnMaximum[c]);
    }

    const bool wasXY = m_xyPlot;
    m_xyPlot = m_items > 0 && (ColumnMinimum[0] != 0 || ColumnMaximum[0] != 0)
        && (ColumnMinimum[1] != 0 || ColumnMaximum[1] != 0);
    if (m_xyPlot)
        m_numberOfDataSeries = 1;

    RegressionValid = false;
    if (m_items != 0) {
        const double n = m_items;
        const double deviationXX = n * sumXX - sumX * sumX;
        const double deviationYY = n * sumYY - sumY * sumY;
        if (deviationXX != 0 && deviationYY != 0) {
            RegressionValid = true;
            const double deviationXY = n * sumXY - sumX * sumY;
            RegressionSlope = deviationXY / deviationXX;
            RegressionIntercept = (sumY - RegressionSlope * sumX) / n;
            CorrelationCoefficient
                = deviationXY / (std::sqrt(deviationXX) * std::sqrt(deviationYY));
        }
    }

    StatisticsStale = false;
    // Raised last, so that a handler reading the graph again finds the statistics complete.
    if (m_xyPlot != wasXY)
        emit PlotTypeChanged();
}

void Graph::RedrawMetafile()
{
    if (!GraphHasData()) {
        // Holders draw nothing while there are no data; the old picture may stay.
        PictureStale = false;
        return;
    }
    std::int32_t width = StartWidth;
    std::int32_t height = StartHeight;
    m_metaFile->OpenMF();
    GraphDrawing(*this, *m_metaFile).DrawGraph(0, width, height);
    m_metaFile->CloseMF();

    m_metaFile->Width = width;
    m_metaFile->Height = height;
    m_metaFile->OpenMF();
    GraphDrawing(*this, *m_metaFile).DrawGraph(1, width, height);
    m_metaFile->CloseMF();
    PictureStale = false;
}

void Graph::RequestRedraw()
{
    PictureStale = true;
    emit RedrawGraph();
}

} // namespace Ormsey
