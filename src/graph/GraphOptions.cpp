#include "graph/GraphOptions.h"

#include "frame/Colours.h"
#include "graph/Graph.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Format.h"

#include <optional>

namespace Ormsey {

namespace {

QString GeneralForm(double value)
{
    return Runtime::Format(Runtime::Variant(value));
}

// Val of a box, or nothing for a number too large for a double or for 32 bits.
std::optional<double> BoxValue(const QString& text)
{
    try {
        return Runtime::Val(text);
    } catch (const Runtime::Error&) {
        return std::nullopt;
    }
}

void ReadAxisValue(double& value, const QString& text)
{
    value = BoxValue(text).value_or(value);
}

void ReadColour(std::int32_t& colour, const QString& name)
{
    const std::int32_t value = Frame::ColourValueByName(name);
    if (!name.isEmpty() && value != -1)
        colour = value;
}

} // namespace

BarChartOptions BarChartOptionsOf(const Graph& graph)
{
    BarChartOptions options;
    options.displayLegend = graph.DisplayLegend();
    options.autoScale = graph.AutoScale;
    options.minimum = GeneralForm(graph.AxisMinimum[1]);
    options.maximum = GeneralForm(graph.AxisMaximum[1]);
    options.barType = graph.BarChartType();
    options.useColour = graph.UseColour;
    options.backgroundColourName = Frame::ColourNameByValue(graph.BackgroundColour3D);
    options.histogramColourName = Frame::ColourNameByValue(graph.HistogramColour);
    return options;
}

PieChartOptions PieChartOptionsOf(const Graph& graph)
{
    PieChartOptions options;
    options.displayLegend = graph.DisplayLegend();
    options.useColour = graph.UseColour;
    options.showLabels = (graph.PieLabels & Graph::Labels) != 0;
    options.showPercentages = (graph.PieLabels & Graph::Percentages) != 0;
    const int angle = graph.PieStartingAngle;
    options.startingPosition = angle >= 0 && angle < 360 && angle % 90 == 0 ? angle / 90 : -1;
    return options;
}

LineGraphOptions LineGraphOptionsOf(const Graph& graph)
{
    LineGraphOptions options;
    options.displayLegend = graph.DisplayLegend();
    options.autoScale = graph.AutoScale;
    options.useColour = graph.UseColour;
    options.lineOfBestFit = graph.DisplayLineOfBestFit();
    options.correlation = graph.DisplayCorrelation();
    options.pointType = graph.PointType;
    options.joinPoints = graph.JoinPoints;
    options.xMinimum = GeneralForm(graph.AxisMinimum[0]);
    options.xMaximum = GeneralForm(graph.AxisMaximum[0]);
    options.yMinimum = GeneralForm(graph.AxisMinimum[1]);
    options.yMaximum = GeneralForm(graph.AxisMaximum[1]);
    return options;
}

void ReadBarChartOptions(Graph& graph, const BarChartOptions& options)
{
    graph.DisplayLegend(options.displayLegend);
    graph.AutoScale = options.autoScale;
    ReadAxisValue(graph.AxisMinimum[1], options.minimum);
    ReadAxisValue(graph.AxisMaximum[1], options.maximum);
    graph.BarChartType(options.barType);
    graph.UseColour = options.useColour;
    ReadColour(graph.BackgroundColour3D, options.backgroundColourName);
    ReadColour(graph.HistogramColour, options.histogramColourName);
    graph.RequestRedraw();
}

void ReadPieChartOptions(Graph& graph, const PieChartOptions& options)
{
    graph.DisplayLegend(options.displayLegend);
    graph.UseColour = options.useColour;
    graph.PieLabels = (options.showLabels ? Graph::Labels : Graph::NoLabels)
        + (options.showPercentages ? Graph::Percentages : Graph::NoLabels);
    if (options.startingPosition >= ThreeOClock && options.startingPosition <= SixOClock)
        graph.PieStartingAngle = std::int16_t(90 * options.startingPosition);
    graph.RequestRedraw();
}

void ReadLineGraphOptions(Graph& graph, const LineGraphOptions& options)
{
    graph.DisplayLegend(options.displayLegend);
    graph.AutoScale = options.autoScale;
    graph.UseColour = options.useColour;
    graph.DisplayLineOfBestFit(options.lineOfBestFit);
    graph.DisplayCorrelation(options.correlation);
    ReadAxisValue(graph.AxisMinimum[0], options.xMinimum);
    ReadAxisValue(graph.AxisMaximum[0], options.xMaximum);
    ReadAxisValue(graph.AxisMinimum[1], options.yMinimum);
    ReadAxisValue(graph.AxisMaximum[1], options.yMaximum);
    graph.PointType = options.pointType;
    graph.JoinPoints = options.joinPoints;
    graph.RequestRedraw();
}

AxisRangeCheck CheckAxisRange(QString& minimum, QString& maximum)
{
    const std::optional<double> low = BoxValue(minimum);
    if (!low)
        return AxisRangeCheck::MinimumTooLarge;
    const std::optional<double> high = BoxValue(maximum);
    if (!high)
        return AxisRangeCheck::MaximumTooLarge;
    if (*low == *high)
        return AxisRangeCheck::EqualValues;
    if (*low > *high) {
        minimum = GeneralForm(*high);
        maximum = GeneralForm(*low);
    }
    return AxisRangeCheck::Accepted;
}

} // namespace Ormsey
