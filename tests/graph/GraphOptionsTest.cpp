#include "graph/GraphOptions.h"

#include "RowFile.h"
#include "frame/Colours.h"
#include "frame/FrameSettings.h"
#include "graph/Graph.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

class GraphOptionsTest : public testing::Test
{
protected:
    void SetUp() override { Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR)); }
};

using AxisRangeTest = RowFile::RowTest<>;

TEST_P(AxisRangeTest, RefusesEqualValuesAndSwapsAReversedRange)
{
    const QStringList checks { u"Accepted"_s, u"MinimumTooLarge"_s, u"MaximumTooLarge"_s,
        u"EqualValues"_s };
    QString minimum = row().text("minimum");
    QString maximum = row().text("maximum");
    EXPECT_EQ(Ormsey::CheckAxisRange(minimum, maximum),
        Ormsey::AxisRangeCheck(checks.indexOf(row().text("check"))));
    EXPECT_EQ(minimum, row().text("minimumAfter"));
    EXPECT_EQ(maximum, row().text("maximumAfter"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, AxisRangeTest, RowFile::In("graph/axisRanges.rows"), RowFile::Named());

TEST_F(GraphOptionsTest, BarOptionsAreTakenWithOneRedraw)
{
    Graph graph;
    QSignalSpy redraws(&graph, &Graph::RedrawGraph);
    Ormsey::BarChartOptions options;
    options.displayLegend = true;
    options.autoScale = false;
    options.minimum = u"10"_s;
    options.maximum = u"50"_s;
    options.barType = Graph::Histogram;
    options.useColour = false;
    options.histogramColourName = u"LIGHT BLUE"_s;
    options.backgroundColourName = u"RED"_s;
    Ormsey::ReadBarChartOptions(graph, options);

    EXPECT_EQ(redraws.count(), 1);
    EXPECT_TRUE(graph.PictureStale());
    EXPECT_TRUE(graph.DisplayLegend());
    EXPECT_FALSE(graph.AutoScale);
    EXPECT_EQ(graph.AxisMinimum[1], 10.0);
    EXPECT_EQ(graph.AxisMaximum[1], 50.0);
    EXPECT_EQ(graph.BarChartType(), Graph::Histogram);
    EXPECT_FALSE(graph.UseColour);
    EXPECT_EQ(graph.HistogramColour, Frame::ColourValueByName(u"LIGHT BLUE"));
    EXPECT_EQ(graph.BackgroundColour3D, Frame::ColourValueByName(u"RED"));
}

TEST_F(GraphOptionsTest, AColourNameTheTableLacksKeepsTheColour)
{
    Graph graph;
    const std::int32_t histogram = graph.HistogramColour;
    Ormsey::BarChartOptions options = Ormsey::BarChartOptionsOf(graph);
    options.histogramColourName = u"NO SUCH COLOUR"_s;
    Ormsey::ReadBarChartOptions(graph, options);
    EXPECT_EQ(graph.HistogramColour, histogram);
}

TEST_F(GraphOptionsTest, BarDialogIsFilledFromTheGraph)
{
    Graph graph;
    graph.AutoScale = false;
    graph.AxisMinimum[1] = 0.5;
    graph.AxisMaximum[1] = 1E+20;
    graph.BarChartType(Graph::BarLine);
    const Ormsey::BarChartOptions options = Ormsey::BarChartOptionsOf(graph);
    EXPECT_FALSE(options.autoScale);
    EXPECT_EQ(options.minimum, u"0.5"_s);
    EXPECT_EQ(options.maximum, u"1E+20"_s);
    EXPECT_EQ(options.barType, Graph::BarLine);
    // A new graph's colours are the table's "RED" and "LIGHT BLUE".
    EXPECT_EQ(options.histogramColourName, u"RED"_s);
    EXPECT_EQ(options.backgroundColourName, u"LIGHT BLUE"_s);
}

struct PieRow
{
    const char* name;
    bool labels;
    bool percentages;
    int position;
    std::int32_t pieLabels;
    int angle;
};

class PieOptionsTest : public GraphOptionsTest, public testing::WithParamInterface<PieRow>
{
};

TEST_P(PieOptionsTest, BoxesAndPositionGiveLabelsAndAngle)
{
    const PieRow& row = GetParam();
    Graph graph;
    graph.PieStartingAngle = 45; // none of the four buttons
    Ormsey::PieChartOptions options;
    options.showLabels = row.labels;
    options.showPercentages = row.percentages;
    options.startingPosition = row.position;
    Ormsey::ReadPieChartOptions(graph, options);
    EXPECT_EQ(graph.PieLabels, row.pieLabels);
    EXPECT_EQ(graph.PieStartingAngle, row.angle);

    const Ormsey::PieChartOptions shown = Ormsey::PieChartOptionsOf(graph);
    EXPECT_EQ(shown.showLabels, row.labels);
    EXPECT_EQ(shown.showPercentages, row.percentages);
    EXPECT_EQ(shown.startingPosition, row.position);
}

INSTANTIATE_TEST_SUITE_P(Rows, PieOptionsTest,
    testing::Values(PieRow { "bothAtNine", true, true, Ormsey::NineOClock, 3, 180 },
        PieRow { "labelsAtTwelve", true, false, Ormsey::TwelveOClock, 1, 90 },
        PieRow { "percentagesAtThree", false, true, Ormsey::ThreeOClock, 2, 0 },
        PieRow { "nothingAtSix", false, false, Ormsey::SixOClock, 0, 270 },
        PieRow { "noButtonKeepsTheAngle", true, false, -1, 1, 45 }),
    [](const testing::TestParamInfo<PieRow>& info) { return std::string(info.param.name); });

TEST_F(GraphOptionsTest, LineOptionsSetBothAxesAndTheScattergramChoices)
{
    Graph graph;
    QSignalSpy redraws(&graph, &Graph::RedrawGraph);
    Ormsey::LineGraphOptions options;
    options.autoScale = false;
    options.xMinimum = u"-5"_s;
    options.xMaximum = u"5"_s;
    options.yMinimum = u"0"_s;
    options.yMaximum = u"100"_s;
    options.pointType = Graph::Circle;
    options.lineOfBestFit = true;
    options.correlation = true;
    options.joinPoints = true;
    Ormsey::ReadLineGraphOptions(graph, options);
    EXPECT_EQ(redraws.count(), 1);
    EXPECT_EQ(graph.AxisMinimum[0], -5.0);
    EXPECT_EQ(graph.AxisMaximum[0], 5.0);
    EXPECT_EQ(graph.AxisMinimum[1], 0.0);
    EXPECT_EQ(graph.AxisMaximum[1], 100.0);
    EXPECT_EQ(graph.PointType, Graph::Circle);
    EXPECT_TRUE(graph.DisplayLineOfBestFit());
    EXPECT_TRUE(graph.DisplayCorrelation());
    EXPECT_TRUE(graph.JoinPoints);

    const Ormsey::LineGraphOptions shown = Ormsey::LineGraphOptionsOf(graph);
    EXPECT_EQ(shown.xMinimum, u"-5"_s);
    EXPECT_EQ(shown.yMaximum, u"100"_s);
    EXPECT_EQ(shown.pointType, Graph::Circle);
}

} // namespace
