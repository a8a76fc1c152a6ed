#include "graph/Graph.h"

#include "frame/Colours.h"
#include "graph/GraphDrawing.h"
#include "graph/GraphFile.h"
#include "graph/MetaFile.h"
#include "platform/emf/Player.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "resources/StringTable.h"

#include <QCollator>
#include <algorithm>
#include <cmath>
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
    m_pictureStale = true;
}

void Graph::Graph3D(bool value)
{
    if (value == m_graph3D)
        return;
    m_graph3D = CanBe3D() && value;
    m_pictureStale = true;
}

void Graph::BarChartType(std::int32_t value)
{
    if (value == m_barType)
        return;
    m_barType = value;
    m_pictureStale = true;
}

void Graph::GraphFont(const QString& value)
{
    if (!DiffersIgnoringCase(m_graphFont, value))
        return;
    m_graphFont = value;
    m_pictureStale = true;
}

void Graph::GraphTitle(const QString& value)
{
    if (!DiffersIgnoringCase(m_graphTitle, value))
        return;
    m_graphTitle = value;
    m_pictureStale = true;
}

void Graph::HorizontalAxisLabel(const QString& value)
{
    if (!DiffersIgnoringCase(m_axisLabels[0], value))
        return;
    m_axisLabels[0] = value;
    m_pictureStale = true;
}

void Graph::VerticalAxisLabel(const QString& value)
{
    if (!DiffersIgnoringCase(m_axisLabels[1], value))
        return;
    m_axisLabels[1] = value;
    m_pictureStale = true;
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
    m_pictureStale = true;
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
        m_hasNonIntegerData = true;
    m_statisticsStale = true;
    m_pictureStale = true;
}

void Graph::DisplayLegend(bool value)
{
    m_displayLegend = value;
    m_pictureStale = true;
}

void Graph::DisplayLineOfBestFit(bool value)
{
    m_displayLineOfBestFit = value;
    m_pictureStale = true;
}

void Graph::DisplayCorrelation(bool value)
{
    m_displayCorrelation = value;
    m_pictureStale = true;
}

bool Graph::GraphHasData()
{
    return NoOfItems() >= 1;
}

std::int32_t Graph::NumberOfDataSeries()
{
    if (m_statisticsStale)
        RecalculateStatistics();
    return m_numberOfDataSeries;
}

void Graph::NumberOfDataSeries(std::int32_t value)
{
    if (value == m_numberOfDataSeries)
        return;
    m_numberOfDataSeries = value;
    m_statisticsStale = true;
    m_pictureStale = true;
}

std::int32_t Graph::NoOfItems()
{
    if (m_statisticsStale)
        RecalculateStatistics();
    return m_items;
}

bool Graph::XYPlot()
{
    if (m_statisticsStale)
        RecalculateStatistics();
    return m_xyPlot;
}

const Emf::Picture* Graph::hMF()
{
    if (m_pictureStale)
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
    return GraphFile::Bytes(*this);
}

QString Graph::SaveGraphData(const QString& fileName) const
{
    return GraphFile::Save(*this, fileName);
}

void Graph::LoadGraphData(const QString& fileName)
{
    GraphFile::Load(*this, fileName);
}

void Graph::LoadGraphDataBytes(QByteArrayView bytes)
{
    GraphFile::Read(*this, bytes);
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
    m_pictureStale = true;
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
    m_hasNonIntegerData = false;
    MarkStale();
}

void Graph::EraseData()
{
    for (auto& row : m_data)
        row = {};
    for (std::size_t i = 0; i < RowCount; ++i)
        OriginalRowOrder[i] = std::int16_t(i);
    m_statisticsStale = true;
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

    m_statisticsStale = false;
    // Raised last, so that a handler reading the graph again finds the statistics complete.
    if (m_xyPlot != wasXY)
        emit PlotTypeChanged();
}

void Graph::RedrawMetafile()
{
    if (!GraphHasData()) {
        // Holders draw nothing while there are no data; the old picture may stay.
        m_pictureStale = false;
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
    m_pictureStale = false;
}

void Graph::MarkStale()
{
    m_statisticsStale = true;
    m_pictureStale = true;
}

void Graph::RequestRedraw()
{
    m_pictureStale = true;
    emit RedrawGraph();
}

} // namespace Ormsey
