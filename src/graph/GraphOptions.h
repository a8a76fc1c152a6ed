#pragma once

#include <QString>
#include <cstdint>

namespace Ormsey {

class Graph;

// What the three options dialogs show and hand back, as plain values: the dialogs are thin
// views over these, and the graph takes them in one place (the Read...Options functions),
// which marks the picture stale and raises RedrawGraph once. The same dialogs serve the graph
// window and the sheet's embedded graphs.
//
// Minimum and maximum boxes hold text as typed; they count as numbers through Val. A box
// whose number is too large for the program ("1e999", "&H" digits beyond 32 bits) is refused
// by the range check; handed over anyway (under auto scale, where the check is skipped), it
// leaves the graph's value as it was.

struct BarChartOptions
{
    bool displayLegend = false;
    bool autoScale = true;
    QString minimum;
    QString maximum;
    std::int32_t barType = 0; // 0 solid bars, 1 bar-line, 2 histogram
    bool useColour = true;
    // Names from the colour table; a name the table does not know leaves the colour as it was.
    QString backgroundColourName;
    QString histogramColourName;
};

// The starting position buttons, in the order their index turns into an angle (90 x index).
enum StartingPosition : int { ThreeOClock = 0, TwelveOClock = 1, NineOClock = 2, SixOClock = 3 };

struct PieChartOptions
{
    bool displayLegend = false;
    bool useColour = true;
    bool showLabels = true;
    bool showPercentages = false;
    // A StartingPosition, or -1 when the graph's angle is none of the four (then kept).
    int startingPosition = TwelveOClock;
};

struct LineGraphOptions
{
    bool displayLegend = false;
    bool autoScale = true;
    bool useColour = true;
    // Scattergrams only.
    bool lineOfBestFit = false;
    bool correlation = false;
    std::int32_t pointType = 0; // 0 cross, 1 single point, 2 circle, 3 none
    // Line graphs only: the stored join-points option.
    bool joinPoints = false;
    QString xMinimum;
    QString xMaximum;
    QString yMinimum;
    QString yMaximum;
};

// The dialogs' contents for the graph as it is (minimum and maximum in the general form).
BarChartOptions BarChartOptionsOf(const Graph& graph);
PieChartOptions PieChartOptionsOf(const Graph& graph);
LineGraphOptions LineGraphOptionsOf(const Graph& graph);

// The graph takes the dialogs' settings and asks its holder to redraw.
void ReadBarChartOptions(Graph& graph, const BarChartOptions& options);
void ReadPieChartOptions(Graph& graph, const PieChartOptions& options);
void ReadLineGraphOptions(Graph& graph, const LineGraphOptions& options);

// The check OK and Apply make on a manual range before handing it over. Refused: a box too
// large to read (the dialog shows the standard error message for an overflow and stays) and
// two equal values (it shows string 10020 and stays). A minimum above the maximum is swapped
// and both boxes rewritten in the general form.
enum class AxisRangeCheck { Accepted, MinimumTooLarge, MaximumTooLarge, EqualValues };
AxisRangeCheck CheckAxisRange(QString& minimum, QString& maximum);

} // namespace Ormsey
