#include "graph/GraphDrawing.h"

#include "frame/Colours.h"
#include "frame/FrameSettings.h"
#include "graph/Geometry3D.h"
#include "graph/Graph.h"
#include "graph/MetaFile.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Format.h"
#include "resources/StringTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr std::int32_t Black = 0;
constexpr std::int32_t White = 16777215;
constexpr std::int32_t SquareEndCap = 256;
constexpr std::int32_t FlatEndCap = 512;
constexpr int SolidPen = 0;
constexpr int SolidBrush = 0;
constexpr int HollowBrush = 1;
constexpr float BackgroundDepth = 130;
constexpr double PieRadius = 120;
constexpr float QuarterTurn = std::numbers::pi_v<float> / 2;
constexpr double TextSize = 14;

// Halves go to the even neighbour. A value far beyond a manual range would put a bar top far
// off the page; it is held where the picture's 32-bit coordinates cannot overflow.
std::int32_t Whole(double value)
{
    return static_cast<std::int32_t>(std::nearbyint(std::clamp(value, -1.0e6, 1.0e6)));
}

// A cell too large for a double counts as no number rather than stopping the picture.
double CellValue(const QString& text)
{
    try {
        return Runtime::Val(text);
    } catch (const Runtime::Error&) {
        return 0;
    }
}

QString NumberText(double value)
{
    return Runtime::Format(Runtime::Variant(value));
}

} // namespace

GraphDrawing::GraphDrawing(Graph& graph, MetaFile& surface)
    : m_graph(graph)
    , m_surface(surface)
{ }

void GraphDrawing::DrawGraph(int mode, std::int32_t& width, std::int32_t& height)
{
    m_mode = mode;
    m_width = &width;
    m_height = &height;
    StartPass();
    switch (m_graph.GraphType()) {
    case Graph::PieChart:
        DrawPieChart();
        break;
    case Graph::LineGraph:
    case Graph::Scattergram:
        DrawLineGraph();
        break;
    default:
        DrawBarChart();
        break;
    }
    if (m_mode == 0) {
        // A title wider than the picture would be cut off at both sides.
        const QString title = m_graph.GraphTitle();
        if (!title.isEmpty()) {
            SetFont(18, 0, true);
            width = std::max(width, m_surface.GetTextWidth(title) + 40);
            SetFont(TextSize);
        }
        return;
    }
    DrawLegend();
    DrawTitle();
}

void GraphDrawing::StartPass()
{
    m_graph.LegendEntries.clear();
    m_threeD = m_graph.Graph3D();
    m_xy = m_graph.XYPlot();
    m_surface.PenColour(Black);
    m_surface.PenStyle(SolidPen);
    m_surface.FontColour(Black);
    m_surface.FontName(FaceName(m_graph));
    SetFont(TextSize);

    m_plotBottom = 340;
    m_plotTop = m_threeD ? 160 : 120;
    m_plotLeft = std::max(m_surface.GetTextWidth(m_graph.VerticalAxisLabel()) + 20, 80);
    m_plotRight = m_plotLeft + 300;
    m_plotHeight = m_plotBottom - m_plotTop;
    m_plotWidth = m_plotRight - m_plotLeft;
    m_legendTop = m_plotTop;

    for (int axis = 0; axis < 2; ++axis) {
        const auto index = static_cast<std::size_t>(axis);
        if (m_graph.AutoScale) {
            m_minimum[axis] = m_graph.ColumnMinimum[index];
            m_maximum[axis] = m_graph.ColumnMaximum[index];
        } else {
            m_minimum[axis] = m_graph.AxisMinimum[index];
            m_maximum[axis] = m_graph.AxisMaximum[index];
        }
    }
}

QString GraphDrawing::FaceName(const Graph& graph)
{
    constexpr qsizetype longestFace = 31;
    const QString face = graph.GraphFont();
    return face.isEmpty() || face.size() > longestFace ? u"Arial"_s : face;
}

void GraphDrawing::SetFont(double points, std::int32_t orientation, bool bold)
{
    m_surface.FontSize(points);
    m_surface.FontOrientation(orientation);
    m_surface.FontBold(bold);
}

GraphDrawing::BarLayout GraphDrawing::BarGeometry(std::int32_t items, std::int32_t series) const
{
    BarLayout layout;
    switch (m_graph.BarChartType()) {
    case Graph::BarLine:
        layout = { 7, 6, 40, 20, 13 * series + 34 };
        break;
    case Graph::Histogram: {
        const std::int32_t width = Whole(std::max(static_cast<double>(m_plotWidth) / items, 15.0));
        layout = { width, 0, 0, 0, width };
        break;
    }
    default: {
        const double free = m_plotWidth - 16 - ((series - 1) * 4 + 10) * items + 10;
        const std::int32_t width
            = Whole(std::max(free / (static_cast<double>(series) * items), 15.0));
        layout = { width, 4, 10, 8, (width + 4) * series + 6 };
        break;
    }
    }
    return layout;
}

void GraphDrawing::DrawBarChart()
{
    const bool histogram = m_graph.BarChartType() == Graph::Histogram;
    const std::int32_t items = std::max(m_graph.NoOfItems(), 1);
    const std::int32_t series = histogram ? 1 : std::clamp(m_graph.NumberOfDataSeries(), 1, 4);
    const BarLayout bar = BarGeometry(items, series);

    m_plotRight = items * bar.pitch + m_plotLeft + 2;
    m_plotWidth = m_plotRight - m_plotLeft;
    m_valueScale = CalculateScale(
        m_minimum[1], m_maximum[1], m_graph.AutoScale, m_graph.HasNonIntegerData(), m_plotHeight);
    m_zeroY = Whole(m_plotBottom
        - static_cast<double>(m_valueScale.NegativeIntervals) * m_plotHeight
            / m_valueScale.Intervals);

    if (m_mode == 1)
        DrawBackground(m_plotLeft,
            items * bar.pitch + m_plotLeft - bar.categoryGap + 2 * bar.margin, m_plotBottom,
            m_plotTop, m_valueScale.Intervals);

    m_surface.PenColour(Black);
    m_surface.PenWidth(bar.width > 30 ? 2 : 1);
    m_surface.BrushStyle(SolidBrush);
    const double labelSize = std::min(std::nearbyint(bar.pitch / 2.0), TextSize);
    int category = 0;
    for (int row = 0; row < Graph::RowCount; ++row) {
        const QString name = m_graph.Data(row, 0);
        if (name.isEmpty())
            continue;
        for (int column = 1; column <= series; ++column) {
            const double value = CellValue(m_graph.Data(row, column));
            if (value == 0)
                continue;
            std::int32_t colour = White;
            if (!m_graph.UseColour) {
                colour = White;
            } else if (histogram) {
                colour = m_graph.HistogramColour;
            } else if (series > 1) {
                colour = SeriesColour(column);
                AddLegendEntry(m_graph.DataSeriesLabel(column), colour);
            } else {
                colour = CategoryColour(name, category, 6);
                AddLegendEntry(name, colour);
            }
            if (m_mode == 1) {
                const std::int32_t x = m_plotLeft + bar.margin + category * bar.pitch
                    + (bar.width + bar.seriesGap) * (column - 1);
                DrawBar(x, bar.width, value, colour);
            }
        }
        CategoryLabel(name, m_plotLeft + bar.margin + (category + 0.5) * bar.pitch - 8, labelSize);
        ++category;
    }
    SetFont(TextSize);

    if (m_mode == 1) {
        DrawValueAxis();
        DrawAxis(m_plotLeft, m_zeroY, m_plotRight, m_zeroY, items, 0, 6);
        DrawAxisLabels();
        PlaceLegend();
        return;
    }
    if (m_threeD)
        *m_width = std::max(*m_width, m_plotRight + 70);
    *m_width = std::max(
        *m_width, m_plotRight + m_surface.GetTextWidth(m_graph.HorizontalAxisLabel()) + 20);
    PlaceLegend();
}

void GraphDrawing::DrawBar(std::int32_t x, std::int32_t barWidth, double value, std::int32_t colour)
{
    const std::int32_t top = Whole(m_zeroY - m_valueScale.PixelsPerUnit * value);
    const auto left = static_cast<float>(x);
    const auto zero = static_cast<float>(m_zeroY);
    const auto width = static_cast<float>(barWidth);
    const auto height = static_cast<float>(top - m_zeroY);
    const float depth = std::min(width, BackgroundDepth);
    m_surface.BrushColour(colour);
    DrawFace(m_surface, Face { { left, zero, 0 }, width, height, 0, 0 }, m_threeD);
    m_surface.BrushColour(Frame::ShadeColour(colour, 60));
    DrawFace(m_surface,
        Face { { left, static_cast<float>(top), 0 }, width, -depth, QuarterTurn, 0 }, m_threeD);
    m_surface.BrushColour(Frame::ShadeColour(colour, -40));
    DrawFace(
        m_surface, Face { { left + width, zero, 0 }, depth, height, 0, QuarterTurn }, m_threeD);
}

void GraphDrawing::CategoryLabel(const QString& text, double x, double size)
{
    SetFont(size, 2700);
    if (m_mode == 0)
        *m_height = std::max(*m_height, m_surface.GetTextWidth(text) + m_zeroY + 30);
    else
        m_surface.PaintTextMF(text, x, m_zeroY + 10, -1, 2, -1);
}

std::vector<GraphDrawing::PieSector> GraphDrawing::PieSectors(int series) const
{
    std::vector<PieSector> sectors;
    // The last row is not part of a pie.
    for (int row = 0; row < Graph::RowCount - 1; ++row) {
        const double value = std::abs(CellValue(m_graph.Data(row, series)));
        if (value != 0)
            sectors.push_back({ m_graph.Data(row, 0), value, White });
    }
    // With one sector over a multiple of six the last would take the colour of the first,
    // its neighbour round the circle.
    const int cycle = sectors.size() % 6 == 1 ? 5 : 6;
    for (std::size_t index = 0; index < sectors.size(); ++index)
        if (m_graph.UseColour)
            sectors[index].colour
                = CategoryColour(sectors[index].category, static_cast<int>(index), cycle);
    return sectors;
}

void GraphDrawing::DrawPieChart()
{
    const int seriesCount = std::clamp(m_graph.NumberOfDataSeries(), 1, 4);
    std::int32_t legendWidth = 0;
    if (m_mode == 0) {
        if (seriesCount > 1)
            *m_width *= 2;
        if (seriesCount > 2)
            *m_height = (*m_height - 60) * 2 + 60;
    } else {
        // The pies sit left of the legend, so its size is needed before the first pie.
        for (int series = 1; series <= seriesCount; ++series)
            for (const PieSector& sector : PieSectors(series))
                AddLegendEntry(sector.category, sector.colour);
        std::int32_t legendHeight = 0;
        MeasureLegend(legendWidth, legendHeight);
        m_graph.LegendEntries.clear();
    }

    const double elevation = m_threeD ? m_graph.PieElevation3D : 0.0;
    const double tilt = std::cos(elevation * std::numbers::pi / 180);
    const double rim = std::nearbyint(60 * std::sin(elevation * std::numbers::pi / 180));
    const double startAngle = m_graph.PieStartingAngle * std::numbers::pi / 180;
    const double labelRadius = 1.1 * PieRadius;
    double widestReach = 0; // how far a label reaches sideways from its pie's centre
    SetFont(TextSize);
    for (int series = 1; series <= seriesCount; ++series) {
        m_surface.PenWidth(2);
        m_surface.PenStyle(SolidPen);
        m_surface.BrushStyle(SolidBrush);
        const double across = *m_width - legendWidth;
        const double down = *m_height - 60;
        std::int32_t centreX = Whole(across / 2);
        std::int32_t centreY = Whole(down / 2 + 60);
        if (seriesCount > 1) {
            centreX = Whole(across * (2 * ((series - 1) % 2) + 1) / 4);
            if (seriesCount > 2)
                centreY = Whole(down * (2 * ((series - 1) / 2) + 1) / 4 + 60);
        }
        if (series == 1)
            m_legendTop = centreY - static_cast<std::int32_t>(PieRadius);
        if (m_threeD)
            centreY -= 20;

        const std::vector<PieSector> sectors = PieSectors(series);
        double total = 0;
        for (const PieSector& sector : sectors)
            total += sector.value;
        double sum = 0;
        for (const PieSector& sector : sectors) {
            AddLegendEntry(sector.category, sector.colour);
            const double from = 2 * std::numbers::pi * sum / total + startAngle;
            const double to = 2 * std::numbers::pi * (sum + sector.value) / total + startAngle;
            const std::int32_t fromX = Whole(centreX + PieRadius * std::cos(from));
            const std::int32_t fromY = Whole(centreY - PieRadius * std::sin(from));
            const std::int32_t toX = Whole(centreX + PieRadius * std::cos(to));
            const std::int32_t toY = Whole(centreY - PieRadius * std::sin(to));
            // Ends that meet make a whole disc: right for an item that is (nearly) the whole
            // pie, but a sliver too thin to reach the next pixel must not cover the others.
            const bool sliver = fromX == toX && fromY == toY && 2 * sector.value < total;
            if (m_mode == 1 && !sliver) {
                m_surface.BrushColour(sector.colour);
                m_surface.SectorMF(centreX, centreY, fromX, fromY, toX, toY, elevation);
            }
            QString label;
            if (m_graph.PieLabels == Graph::Labels
                || m_graph.PieLabels == Graph::LabelsAndPercentages)
                label = sector.category;
            if (m_graph.PieLabels == Graph::Percentages
                || m_graph.PieLabels == Graph::LabelsAndPercentages)
                label += u"  "_s
                    + Runtime::Format(Runtime::Variant(sector.value / total * 100), u"##,##0")
                    + u"%"_s;
            const double middle
                = 2 * std::numbers::pi * (sum + sector.value / 2) / total + startAngle;
            const double directionX = std::cos(middle);
            const double directionY = std::sin(middle);
            if (!label.isEmpty()) {
                if (m_mode == 1) {
                    // Tilted, the label follows the flattened rim, and the wall below it.
                    const double x = centreX + labelRadius * directionX;
                    const double y
                        = centreY - labelRadius * directionY * tilt + (directionY < 0 ? rim : 0);
                    m_surface.PaintTextMF(label, x, y, -1, directionX, directionY);
                } else {
                    const double width = m_surface.GetTextWidth(label);
                    const double reach = labelRadius * std::abs(directionX)
                        + (std::abs(directionX) + 1) * width / 2;
                    widestReach = std::max(widestReach, reach);
                }
            }
            sum += sector.value;
        }
        if (seriesCount > 1 && m_mode == 1)
            m_surface.PaintTextMF(
                m_graph.DataSeriesLabel(series), centreX, centreY + PieRadius + 40, 1, 0, 0);
    }
    if (m_mode == 0) {
        const int columns = seriesCount > 1 ? 2 : 1;
        *m_width = std::max(*m_width, Whole(columns * 2 * (widestReach + 10)));
    }
    PlaceLegend();
}

void GraphDrawing::DrawLineGraph()
{
    const bool scattergram = m_graph.GraphType() == Graph::Scattergram;
    const std::int32_t items = std::max(m_graph.NoOfItems(), 1);
    m_valueScale = CalculateScale(
        m_minimum[1], m_maximum[1], m_graph.AutoScale, m_graph.HasNonIntegerData(), m_plotHeight);
    m_zeroY = Whole(m_plotBottom
        - static_cast<double>(m_valueScale.NegativeIntervals) * m_plotHeight
            / m_valueScale.Intervals);
    m_xOrigin = m_plotLeft;
    if (m_xy) {
        m_xScale = CalculateScale(m_minimum[0], m_maximum[0], m_graph.AutoScale,
            m_graph.HasNonIntegerData(), m_plotWidth);
        m_xOrigin = Whole(
            static_cast<double>(m_xScale.NegativeIntervals) * m_plotWidth / m_xScale.Intervals
            + m_plotLeft);
    }
    const int seriesCount = m_xy ? 1 : std::clamp(m_graph.NumberOfDataSeries(), 1, 4);

    if (m_mode == 1) {
        DrawBackground(
            m_plotLeft, m_plotRight + 2, m_plotBottom, m_plotTop, m_valueScale.Intervals);
        m_surface.PenWidth(scattergram ? 1 : 2);
    }
    std::int32_t colour = Black;
    for (int series = 1; series <= seriesCount; ++series) {
        colour = m_graph.UseColour ? SeriesColour(series) : Black;
        if (!scattergram)
            AddLegendEntry(m_graph.DataSeriesLabel(series), colour);
        if (m_mode == 0)
            continue;
        m_surface.PenColour(colour);
        int drawn = 0; // points drawn so far: a line graph's items step along by this count
        bool joined = false;
        std::int32_t previousX = 0;
        std::int32_t previousY = 0;
        for (int row = 0; row < Graph::RowCount; ++row) {
            const QString name = m_graph.Data(row, 0);
            if (name.isEmpty())
                continue;
            const double x = CellValue(name);
            const double y = CellValue(m_graph.Data(row, series));
            // Category names read as x = 0, so a manual x range without 0 leaves them out too.
            if (x < m_minimum[0] || x > m_maximum[0])
                continue;
            if (y < m_minimum[1] || y > m_maximum[1])
                continue;
            // A point left out takes no step: the points after it close up to the left.
            ++drawn;
            const std::int32_t pointX = m_xy
                ? Whole(m_xScale.PixelsPerUnit * x + m_xOrigin)
                : Whole(static_cast<double>(m_plotWidth) * drawn / items + m_plotLeft);
            const std::int32_t pointY = Whole(m_zeroY - m_valueScale.PixelsPerUnit * y);
            if (scattergram) {
                DrawMarker(pointX, pointY, colour);
            } else {
                if (joined)
                    m_surface.LineMF(previousX, previousY, pointX, pointY);
                joined = true;
                previousX = pointX;
                previousY = pointY;
            }
        }
    }

    if (m_mode == 0) {
        if (!m_xy) {
            const double size = std::min(std::nearbyint(126.0 / items), TextSize);
            for (int row = 0; row < Graph::RowCount; ++row)
                if (!m_graph.Data(row, 0).isEmpty())
                    CategoryLabel(m_graph.Data(row, 0), 0, size);
        }
        SetFont(TextSize);
        *m_width = std::max(
            *m_width, m_plotRight + m_surface.GetTextWidth(m_graph.HorizontalAxisLabel()) + 75);
        PlaceLegend();
        return;
    }

    if (scattergram)
        DrawLineOfBestFit(colour);
    m_surface.PenColour(Black);
    DrawValueAxis();
    if (m_xy) {
        DrawAxis(m_plotLeft, m_zeroY, m_plotRight, m_zeroY, m_xScale.Intervals, 0, 6);
        SetFont(std::min(std::nearbyint(126.0 / m_xScale.Intervals), TextSize));
        for (int index = 0; index <= m_xScale.Intervals; ++index)
            m_surface.PaintTextMF(NumberText(m_xScale.BoundaryValue(index)),
                m_plotLeft + static_cast<double>(m_plotWidth) * index / m_xScale.Intervals,
                m_zeroY + 10, 1, 0, 0);
    } else {
        DrawAxis(m_plotLeft, m_zeroY, m_plotRight, m_zeroY, items, 0, 6);
        const double size = std::min(std::nearbyint(126.0 / items), TextSize);
        int position = 0;
        for (int row = 0; row < Graph::RowCount; ++row) {
            const QString name = m_graph.Data(row, 0);
            if (name.isEmpty())
                continue;
            ++position;
            CategoryLabel(
                name, static_cast<double>(m_plotWidth) * position / items + m_plotLeft, size);
        }
    }
    DrawAxisLabels();
    if (scattergram && m_graph.RegressionValid && m_graph.DisplayCorrelation()) {
        SetFont(TextSize);
        const QString text = GetResString(10042) + u" = "_s
            + Runtime::Format(Runtime::Variant(m_graph.CorrelationCoefficient), u"0.00");
        m_surface.PaintTextMF(text, *m_width / 2.0, m_plotBottom + 50, 1, 0, 0);
    }
    PlaceLegend();
}

void GraphDrawing::DrawMarker(std::int32_t x, std::int32_t y, std::int32_t colour)
{
    switch (m_graph.PointType) {
    case Graph::Cross:
        m_surface.LineMF(x - 5, y - 5, x + 5, y + 5);
        m_surface.LineMF(x - 5, y + 5, x + 5, y - 5);
        break;
    case Graph::SinglePoint:
    case Graph::Circle:
        m_surface.BrushStyle(SolidBrush);
        m_surface.BrushColour(colour);
        m_surface.RectMF(x - 1, y - 1, x, y);
        if (m_graph.PointType == Graph::Circle) {
            m_surface.BrushStyle(HollowBrush);
            m_surface.CircleMF(x, y, 5);
            m_surface.BrushStyle(SolidBrush);
        }
        break;
    default:
        break;
    }
}

void GraphDrawing::DrawLineOfBestFit(std::int32_t colour)
{
    // The line needs a numeric x axis; with categories there is no x to run it along.
    if (!m_graph.RegressionValid || !m_xy || !m_graph.DisplayLineOfBestFit()
        || std::abs(m_graph.CorrelationCoefficient) <= 0.1)
        return;
    m_surface.PenWidth(2);
    m_surface.PenColour(colour);
    // The ends are whole numbers in data units, as the line has always been drawn.
    const double x1 = Runtime::Round(m_minimum[0]);
    const double x2 = Runtime::Round(m_maximum[0]);
    const double y1 = Runtime::Round(m_graph.RegressionSlope * x1 + m_graph.RegressionIntercept);
    const double y2 = Runtime::Round(m_graph.RegressionSlope * x2 + m_graph.RegressionIntercept);
    m_surface.LineMF(Whole(x1 * m_xScale.PixelsPerUnit + m_xOrigin),
        Whole(m_zeroY - y1 * m_valueScale.PixelsPerUnit),
        Whole(x2 * m_xScale.PixelsPerUnit + m_xOrigin),
        Whole(m_zeroY - y2 * m_valueScale.PixelsPerUnit));
}

void GraphDrawing::DrawAxis(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
    int intervals, std::int32_t tickX, std::int32_t tickY)
{
    m_surface.PenColour(Black);
    m_surface.PenWidth(2);
    m_surface.PenEndCap(SquareEndCap);
    m_surface.LineMF(x1, y1, x2, y2);
    const int count = std::max(intervals, 1);
    for (int index = 0; index <= count; ++index) {
        const std::int32_t x = Whole(x1 + static_cast<double>(x2 - x1) * index / count);
        const std::int32_t y = Whole(y1 + static_cast<double>(y2 - y1) * index / count);
        m_surface.LineMF(x, y, x + tickX, y + tickY);
    }
    m_surface.PenEndCap(FlatEndCap);
}

void GraphDrawing::DrawValueAxis()
{
    const int intervals = m_valueScale.Intervals;
    DrawAxis(m_plotLeft, m_plotBottom, m_plotLeft, m_plotTop, intervals, -6, 0);
    SetFont(std::min(std::nearbyint(126.0 / intervals), TextSize));
    for (int index = 0; index <= intervals; ++index)
        m_surface.PaintTextMF(NumberText(m_valueScale.BoundaryValue(index)), m_plotLeft - 10,
            m_plotBottom - static_cast<double>(m_plotHeight) * index / intervals - 6, 2, 0, 0);
}

void GraphDrawing::DrawAxisLabels()
{
    SetFont(TextSize);
    const QString horizontal = m_graph.HorizontalAxisLabel();
    if (!horizontal.isEmpty())
        m_surface.PaintTextMF(horizontal, m_plotRight + 10, m_zeroY, 0, 0, 0);
    const QString vertical = m_graph.VerticalAxisLabel();
    if (!vertical.isEmpty())
        m_surface.PaintTextMF(vertical, m_plotLeft - 10, m_plotTop - 30, 2, 0, 0);
}

void GraphDrawing::DrawBackground(
    std::int32_t left, std::int32_t right, std::int32_t bottom, std::int32_t top, int intervals)
{
    m_surface.PenColour(Black);
    m_surface.PenWidth(1);
    m_surface.BrushStyle(SolidBrush);
    const auto x = static_cast<float>(left);
    const auto y = static_cast<float>(bottom);
    const auto width = static_cast<float>(right - left);
    const auto height = static_cast<float>(top - bottom);
    const std::int32_t background = m_graph.BackgroundColour3D;
    m_surface.BrushColour(background);
    DrawFace(m_surface, Face { { x, y, -BackgroundDepth }, width, height, 0, 0 }, m_threeD);
    m_surface.BrushColour(Frame::ShadeColour(background, -30));
    DrawFace(m_surface, Face { { x, y, 0 }, BackgroundDepth, height, 0, QuarterTurn }, m_threeD);
    m_surface.BrushColour(Frame::ShadeColour(background, 50));
    DrawFace(m_surface, Face { { x, y, 0 }, width, -BackgroundDepth, QuarterTurn, 0 }, m_threeD);
    for (int index = 1; index < intervals; ++index) {
        const float lineY = y + height * static_cast<float>(index) / static_cast<float>(intervals);
        DrawLine3D(m_surface, { x, lineY, 0 }, { x, lineY, -BackgroundDepth }, m_threeD);
        DrawLine3D(m_surface, { x, lineY, -BackgroundDepth },
            { x + width, lineY, -BackgroundDepth }, m_threeD);
    }
}

void GraphDrawing::AddLegendEntry(const QString& text, std::int32_t colour)
{
    if (!m_graph.DisplayLegend())
        return;
    for (const LegendEntry& entry : m_graph.LegendEntries)
        if (entry.text.compare(text, Qt::CaseInsensitive) == 0)
            return;
    m_graph.LegendEntries.push_back({ text, colour });
}

void GraphDrawing::MeasureLegend(std::int32_t& legendWidth, std::int32_t& legendHeight)
{
    legendWidth = 0;
    legendHeight = 0;
    const std::vector<LegendEntry>& entries = m_graph.LegendEntries;
    if (entries.empty())
        return;
    SetFont(TextSize);
    std::int32_t widest = 0;
    for (const LegendEntry& entry : entries)
        widest = std::max(widest, m_surface.GetTextWidth(entry.text));
    legendWidth = widest + 40;
    legendHeight = static_cast<std::int32_t>(entries.size() - 1) * 30 + 20;
}

void GraphDrawing::PlaceLegend()
{
    std::int32_t legendWidth = 0;
    std::int32_t legendHeight = 0;
    MeasureLegend(legendWidth, legendHeight);
    if (legendWidth == 0)
        return;
    if (m_mode == 0) {
        m_legendLeft = *m_width;
        *m_width += legendWidth;
        *m_height = std::max(*m_height, legendHeight);
    } else {
        // The measuring pass put the legend at the right edge of the picture.
        m_legendLeft = *m_width - legendWidth;
    }
}

void GraphDrawing::DrawLegend()
{
    const std::vector<LegendEntry>& entries = m_graph.LegendEntries;
    if (entries.empty())
        return;
    SetFont(TextSize);
    m_surface.PenStyle(SolidPen);
    m_surface.PenColour(Black);
    m_surface.PenWidth(1);
    m_surface.BrushStyle(SolidBrush);
    std::int32_t y = m_legendTop;
    for (const LegendEntry& entry : entries) {
        m_surface.BrushColour(entry.colour);
        m_surface.RectMF(m_legendLeft - 10, y, m_legendLeft + 10, y + 20);
        m_surface.PaintTextMF(entry.text, m_legendLeft + 20, y, 0, 0, 0);
        y += 30;
    }
}

void GraphDrawing::DrawTitle()
{
    const QString title = m_graph.GraphTitle();
    if (title.isEmpty())
        return;
    SetFont(18, 0, true);
    m_surface.PaintTextMF(title, *m_width / 2.0, 40, 1, 0, 0);
    m_surface.FontBold(false);
}

std::int32_t GraphDrawing::CategoryColour(const QString& category, int index, int cycle) const
{
    // Only a name equal to the category, case included: the colour table's own lookup also
    // takes names that merely contain the text, which would paint "Light" grey.
    if (!category.isEmpty()) {
        for (const Frame::ColourEntry& entry : Frame::Settings().ColourTable) {
            if (entry.Name == category)
                return entry.Value;
        }
    }
    return SeriesColour(index % cycle);
}

std::int32_t GraphDrawing::SeriesColour(int index)
{
    const auto& colours = Frame::Settings().DefaultColours;
    return colours[static_cast<std::size_t>(index) % colours.size()];
}

} // namespace Ormsey
