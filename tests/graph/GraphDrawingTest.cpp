#include "GoldenFile.h"
#include "RowFile.h"
#include "TableRows.h"
#include "frame/FrameSettings.h"
#include "graph/Graph.h"
#include "graph/MetaFile.h"
#include "platform/emf/RecordTrace.h"

#include <QHash>
#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

using TestRows::PrintTo;

constexpr std::int32_t Cyan = 0xFFFF00; // the series colours in the program's 0x00BBGGRR order
constexpr std::int32_t Red = 0x0000FF;
constexpr std::int32_t Yellow = 0x00FFFF;

using Rows = std::vector<std::vector<std::string>>;

// Rows from row 0 down: the category, then the values of series 1, 2, ...
void Fill(Graph& graph, const Rows& rows)
{
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < rows[row].size(); ++column)
            graph.Data(int(row), int(column), QString::fromStdString(rows[row][column]));
}

// One item a row, each worth 1 (or `value`), named `prefix` and its number.
Rows Items(int count, const std::string& prefix, const std::string& value = "1")
{
    Rows rows;
    for (int index = 0; index < count; ++index)
        rows.push_back({ prefix + std::to_string(index + 1), value });
    return rows;
}

// The texts written with an upright font, in order: tick labels, legend texts, titles.
QStringList UprightTexts(const Emf::Picture& picture)
{
    QHash<QString, bool> upright; // font handle -> escapement 0
    bool current = true;
    QStringList texts;
    for (const QString& line : Emf::TraceRecords(picture)) {
        const QStringList words = line.split(u' ');
        if (words[0] == u"EXTCREATEFONTINDIRECTW"_s)
            upright[words[1]] = words[5] == u"0"_s;
        else if (words[0] == u"SELECTOBJECT"_s && upright.contains(words[1]))
            current = upright[words[1]];
        else if (words[0] == u"EXTTEXTOUTW"_s && current)
            texts << line.section(u'"', 1, -2);
    }
    return texts;
}

// The width of a text in the graphs' 14-point Arial, as the drawing measures it.
std::int32_t TextWidth(const QString& text, std::int32_t orientation = 0)
{
    Ormsey::MetaFile surface;
    surface.OpenMF();
    surface.FontName(u"Arial"_s);
    surface.FontSize(14);
    surface.FontOrientation(orientation);
    const std::int32_t width = surface.GetTextWidth(text);
    surface.CloseMF();
    return width;
}

class GraphDrawingTest : public testing::Test
{
protected:
    void SetUp() override { Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR)); }
    void TearDown() override { Frame::Settings() = {}; }
};

// ---------------------------------------------------------------------------------------------
// Whole pictures, compared record by record with tests/data/graph/<row name>.trace. The first
// line of each golden is the picture's size; the rest is the record trace. The comment on a
// row says what its golden was checked to show.

struct PictureRow
{
    const char* name;
    std::function<void(Graph&)> setUp;
};

class GraphPictures : public GraphDrawingTest, public testing::WithParamInterface<PictureRow>
{
};

TEST_P(GraphPictures, AreRecordedAsInTheirGoldenTraces)
{
    Graph graph;
    GetParam().setUp(graph);
    const Emf::Picture& picture = *graph.hMF(); // drawn before its size is read
    const QStringList trace
        = QStringList { u"picture %1 x %2"_s.arg(graph.Width()).arg(graph.Height()) }
        + Emf::TraceRecords(picture);
    EXPECT_TRUE(Golden::Matches(
        u"graph/%1.trace"_s.arg(QString::fromLatin1(GetParam().name)), Golden::Lines(trace)));
}

const Rows fruit { { "Apples", "12" }, { "Pears", "30" }, { "Plums", "7" } };
const Rows twoSeries { { "Apples", "12", "3" }, { "Pears", "30", "4" } };
const Rows oneOneTwo { { "Item 1", "1" }, { "Item 2", "1" }, { "Item 3", "2" } };
const Rows straightLine { { "1", "2" }, { "2", "4" }, { "3", "6" } };
const Rows weakCorrelation { { "1", "1" }, { "2", "1" }, { "3", "4" }, { "4", "2" }, { "5", "2" },
    { "6", "1" } };
const Rows negativeCorrelation { { "1", "1" }, { "2", "2" }, { "3", "2" }, { "4", "1" },
    { "5", "1" }, { "6", "1" } };

auto Bars(Rows rows, std::int32_t barType, std::int32_t series, bool colour = true)
{
    return [=](Graph& g) {
        Fill(g, rows);
        g.BarChartType(barType);
        g.NumberOfDataSeries(series);
        g.UseColour = colour;
    };
}

auto Pie(Rows rows, std::int16_t startingAngle = 90, std::int32_t labels = Graph::Labels)
{
    return [=](Graph& g) {
        Fill(g, rows);
        g.GraphType(Graph::PieChart);
        g.PieStartingAngle = startingAngle;
        g.PieLabels = labels;
    };
}

auto Scatter(Rows rows, std::int32_t pointType, bool bestFit = false, bool correlation = false)
{
    return [=](Graph& g) {
        Fill(g, rows);
        g.GraphType(Graph::Scattergram);
        g.PointType = pointType;
        g.DisplayLineOfBestFit(bestFit);
        g.DisplayCorrelation(correlation);
    };
}

auto ManualRange(std::array<double, 2> minimum, std::array<double, 2> maximum)
{
    return [=](Graph& g) {
        Fill(g, { { "Mon", "10" }, { "Tue", "40" }, { "Wed", "30" } });
        g.GraphType(Graph::LineGraph);
        g.AutoScale = false;
        g.AxisMinimum = minimum;
        g.AxisMaximum = maximum;
    };
}

const PictureRow pictureRows[] = {
    // Bars. Scale 0..30 in 6 steps of 5; bars 88 wide at 88, 186, 284; axis 80..376.
    { "solidOneSeries", Bars(fruit, Graph::SolidBars, 1) },
    // w = (300 - 16 - 14 x 2 + 10) / 4 = 66.5, rounded to the even 66; pitch 146: bars at 88,
    // 158, 234, 304; axis to 374; series colours red and yellow.
    { "solidTwoSeries", Bars(twoSeries, Graph::SolidBars, 2) },
    // Bars held at 15 wide, pitch 25: 88-103, 113-128, ...; axis to 832; labels 12 points.
    { "solidNarrowBarsStayFifteenWide", Bars(Items(30, "Item ", "5"), Graph::SolidBars, 1) },
    // Bars 7 wide, 6 apart, categories 60 apart from 100: 100, 113, 160, 173; axis to 202.
    { "barLineTwoSeries", Bars(twoSeries, Graph::BarLine, 2) },
    // Series 1 only, 100 wide and touching from 80, in the histogram colour (red).
    { "histogramBarsTouch",
        Bars({ { "0-9", "12", "99" }, { "10-19", "30", "99" }, { "20-29", "7", "99" } },
            Graph::Histogram, 2) },
    // Only Plums' bar, in the second place (186-274), red by its place.
    { "zeroValuesAndEmptyCategoriesDrawNoBar",
        Bars({ { "Apples", "0" }, { "", "9" }, { "Plums", "7" } }, Graph::SolidBars, 1) },
    // Scale -20..30 in steps of 5 with four below zero: zero at 252; bars 88-225 down to 340
    // and 235-372 up to 129.
    { "negativeBarsHangBelowTheZeroLine",
        Bars({ { "Loss", "-20" }, { "Gain", "28" } }, Graph::SolidBars, 1) },
    // Cyan, red, and red again by name where yellow would be by place.
    { "categoryNamedLikeAColourTakesIt",
        Bars({ { "Apples", "1" }, { "Pears", "2" }, { "RED", "3" } }, Graph::SolidBars, 1) },
    // Only a name equal to the category counts: "red" is not "RED", and "LIGHT" is only part
    // of three names. Cyan, red by place.
    { "categoryOnlyLikeAColourNameKeepsItsPlaceColour",
        Bars({ { "red", "1" }, { "LIGHT", "2" } }, Graph::SolidBars, 1) },
    // Cyan, red, yellow, green, blue, magenta, cyan.
    { "seventhCategoryStartsTheTableAgain", Bars(Items(7, "P"), Graph::SolidBars, 1) },
    // Series colours red and yellow, whatever the categories are called.
    { "seriesColoursWithTwoSeries",
        Bars({ { "Apples", "1", "2" }, { "RED", "3", "4" } }, Graph::BarLine, 2) },
    { "histogramColour", Bars({ { "Apples", "1" }, { "Pears", "2" } }, Graph::Histogram, 1) },
    // Four white bars with black outlines.
    { "withoutColourAllWhite",
        Bars({ { "Apples", "1", "2" }, { "RED", "3", "4" } }, Graph::SolidBars, 2, false) },
    // Panel (light blue) and front faces only.
    { "flatShowsPanelAndFrontsOnly", Bars({ { "Apples", "4" } }, Graph::SolidBars, 1) },
    // Plot top 160: panel set back 130 (56 right, 32 up), wall shaded -30, floor +50, then
    // each bar's front, top (+60) leaning back and up, and right side (-40). Apples' front
    // runs up to 268 (72 of 180 pixels for 0..10).
    { "threeDTopFaceLeansBackAndUp",
        [](Graph& g) {
            Fill(g, { { "Apples", "4" }, { "Pears", "10" } });
            g.Graph3D(true);
        } },
    // 400 by 420 with nothing to widen it.
    { "pictureKeepsItsStartingSizeWhenEverythingFits",
        Bars({ { "Ant", "1" }, { "Bee", "3" } }, Graph::SolidBars, 1) },

    // Legend, labels and title. The legend's squares at (390, 120) and (390, 150) in cyan and
    // red, its texts last, and the picture widened by the widest text + 40.
    { "legendSitsRightOfThePlotAndWidensThePicture",
        [](Graph& g) {
            Fill(g, { { "Apples", "1" }, { "Pears", "3" } });
            g.DisplayLegend(true);
        } },
    // Plot left = label width + 20; the label right-aligned ending there - 10, at y 90.
    { "longVerticalAxisLabelMovesThePlotRight",
        [](Graph& g) {
            Fill(g, { { "Ant", "1" } });
            g.VerticalAxisLabel(u"Number of creatures found under one stone"_s);
        } },
    // The title last, 18 points (height -24) bold, centred on 200 at y 40.
    { "titleIsBoldAndCentred",
        [](Graph& g) {
            Fill(g, { { "Ant", "1" } });
            g.GraphTitle(u"Minibeasts"_s);
        } },

    // Pies of radius 120 about (200, 240), sectors counterclockwise. 1, 1, 2 from twelve: to
    // nine, to six, then the right half back to twelve.
    { "pieOneOneTwoFromTwelve", Pie(oneOneTwo, 90) },
    { "pieFromThreeOClock", Pie(oneOneTwo, 0) },
    // A quarter from twelve to nine, then three quarters back to twelve.
    { "pieNegativeValuesCountByTheirSize", Pie({ { "Item 1", "-10" }, { "Item 2", "30" } }) },
    { "pieZeroValuesHaveNoSector",
        Pie({ { "Item 1", "1" }, { "Item 2", "0" }, { "Item 3", "1" } }) },
    // One path from twelve o'clock all the way round.
    { "singleValueIsAWholeDisc", Pie({ { "Apples", "5" } }, 90, Graph::NoLabels) },
    // Big's ends meet at twelve, so it is the whole disc; Tiny's ends meet too, but it is left
    // out rather than drawn as a second whole disc over Big.
    { "sliverNarrowerThanAPixelDoesNotCoverThePie",
        Pie({ { "Big", "1000" }, { "Tiny", "0.1" } }, 90, Graph::NoLabels) },
    // Seven sectors: a cycle of five, so the seventh is red (entry 1), not its neighbour's cyan.
    { "pieColourCycleSkipsTheFirstColourForTheLastSector", Pie(Items(7, "P")) },
    { "pieLabelsNone", Pie({ { "Apples", "1" }, { "Pears", "3" } }, 90, Graph::NoLabels) },
    // Apples left of the pie, ending 132 left of the centre; Pears starting 132 right of it.
    { "pieLabelsSitOutsideTheirSectors", Pie({ { "Apples", "1" }, { "Pears", "1" } }) },
    { "pieLabelsAreNames", Pie({ { "Apples", "1" }, { "Pears", "3" } }) },
    { "pieLabelPercentagesStartWithTwoBlanks",
        Pie({ { "Apples", "1" }, { "Pears", "3" } }, 90, Graph::Percentages) },
    { "pieLabelsNamesAndPercentages",
        Pie({ { "Apples", "1" }, { "Pears", "3" } }, 90, Graph::LabelsAndPercentages) },
    // 800 by 780; pies about (200, 240), (600, 240) and (200, 600), captioned with the series
    // labels.
    { "threeSeriesMakeFourPlacesForPies",
        [](Graph& g) {
            Fill(g, { { "Apples", "1", "2", "3" }, { "Pears", "3", "2", "1" } });
            g.GraphType(Graph::PieChart);
            g.NumberOfDataSeries(3);
            g.PieLabels = Graph::NoLabels;
        } },
    // Wider than 400, with every label inside the picture.
    { "longPieLabelsWidenThePicture",
        Pie({ { "Children who walk to school every day", "1" }, { "Others", "1" } }) },
    // Centre up by 20 to (200, 220); Apples (left half, reaching below the middle) gets its
    // rim first, cyan darkened by 40, reaching 85 + 42 below the centre, then its top.
    { "threeDPieMovesUpAndDrawsItsRim",
        [](Graph& g) {
            Pie({ { "Apples", "1" }, { "Pears", "1" } })(g);
            g.Graph3D(true);
        } },

    // Line graphs. 0..30 over 220 pixels; items at plot left + 100, + 200, + 300: red lines
    // 2 wide from (180, 267) to (280, 193) to (380, 120).
    { "lineGraphSpreadsCategoriesEvenly",
        [](Graph& g) {
            Fill(g, { { "Mon", "10" }, { "Tue", "20" }, { "Wed", "30" } });
            g.GraphType(Graph::LineGraph);
        } },
    // Tuesday's 40 is left out: Monday (180, 267) joins Wednesday, which takes the second
    // step (280, 120), not the third.
    { "manualRangeLeavesOutAValueAboveIt", ManualRange({ 0, 0 }, { 0, 30 }) },
    // A category name reads as x = 0, outside an x range of 1 to 10: no line at all.
    { "manualRangeLeavesOutCategoriesOutsideTheXRange", ManualRange({ 1, 0 }, { 10, 40 }) },
    // Black lines, no red.
    { "lineGraphWithoutColourIsBlack",
        [](Graph& g) {
            Fill(g, { { "Mon", "10", "5" }, { "Tue", "20", "5" } });
            g.GraphType(Graph::LineGraph);
            g.NumberOfDataSeries(2);
            g.UseColour = false;
        } },

    // Scattergrams. x 0..10 over 300 pixels, y 0..10 over 220: (2, 5) is at (140, 230).
    { "scatterCross", Scatter({ { "2", "5" } }, Graph::Cross) },
    { "scatterSinglePoint", Scatter({ { "2", "5" } }, Graph::SinglePoint) },
    { "scatterCircle", Scatter({ { "2", "5" } }, Graph::Circle) },
    { "scatterNone", Scatter({ { "2", "5" } }, Graph::NoPoint) },
    // Two red crosses; nothing in series 2's yellow.
    { "xyDataDrawOnlyTheFirstSeries",
        [](Graph& g) {
            Scatter({ { "1", "2", "7", "8" }, { "2", "4", "7", "8" } }, Graph::Cross)(g);
            g.NumberOfDataSeries(3);
        } },
    // x 0..10 at 30 pixels a unit, y 0..10 at 22: y = 2x from (80, 340) to (170, 208), and
    // "Coefficient of Correlation = 1.00".
    { "bestFitThroughThePoints", Scatter(straightLine, Graph::NoPoint, true, true) },
    { "bestFitLineOptionOff", Scatter(straightLine, Graph::NoPoint, false, true) },
    { "bestFitCorrelationOptionOff", Scatter(straightLine, Graph::NoPoint, true, false) },
    // "= 0.05" but no line.
    { "bestFitWeakCorrelationShowsTextButNoLine",
        Scatter(weakCorrelation, Graph::NoPoint, true, true) },
    // x 0..4 at 75 pixels a unit, y 0..8 at 27.5; y = 2x + 0.13 with its ends taken at whole
    // numbers: from (0, 0) to (4, 8), (80, 340) to (380, 120), past the last point at x 3.6.
    { "bestFitEndsRoundedToWholeNumbers",
        Scatter({ { "1.4", "3" }, { "2.5", "5" }, { "3.6", "7.4" } }, Graph::NoPoint, true) },
    { "bestFitNegativeCoefficient", Scatter(negativeCorrelation, Graph::NoPoint, false, true) },
    // Centred on half the picture width at y 390, after the crosses.
    { "correlationTextIsCentredBelowThePlot", Scatter(straightLine, Graph::Cross, false, true) },
};

INSTANTIATE_TEST_SUITE_P(
    GraphDrawing, GraphPictures, testing::ValuesIn(pictureRows), TestRows::Named());

// ---------------------------------------------------------------------------------------------
// Rules over many inputs

// A row file's rows of data: ";" between rows, "," between cells.
Rows DataOf(const RowFile::Row& row)
{
    Rows rows;
    for (const QString& line : row.list("data", u";"_s)) {
        rows.emplace_back();
        for (const QString& cell : line.split(u','))
            rows.back().push_back(cell.toStdString());
    }
    return rows;
}

class TickLabels : public RowFile::RowTest<GraphDrawingTest>
{
};

TEST_P(TickLabels, ReadTheScale)
{
    Graph graph;
    Fill(graph, DataOf(row()));
    EXPECT_EQ(UprightTexts(*graph.hMF()), row().list("ticks"));
}

INSTANTIATE_TEST_SUITE_P(
    GraphDrawing, TickLabels, RowFile::In("graph/ticks.rows"), RowFile::Named());

class Legend : public RowFile::RowTest<GraphDrawingTest>
{
};

TEST_P(Legend, ListsEachEntryOnce)
{
    Graph graph;
    Fill(graph, DataOf(row()));
    graph.GraphType(std::int32_t(
        QStringList { u"bar"_s, u"pie"_s, u"line"_s, u"scatter"_s }.indexOf(row().text("type"))));
    graph.NumberOfDataSeries(std::int32_t(row().whole("series")));
    graph.DisplayLegend(row().flag("legend"));
    graph.hMF();
    const QHash<QString, std::int32_t> colourNames { { u"cyan"_s, Cyan }, { u"red"_s, Red },
        { u"yellow"_s, Yellow } };
    QStringList texts;
    QList<std::int32_t> colours;
    QList<std::int32_t> expectedColours;
    for (const Ormsey::LegendEntry& entry : graph.LegendEntries) {
        texts << entry.text;
        colours << entry.colour;
    }
    for (const QString& name : row().list("colours"))
        expectedColours << colourNames.value(name, -1);
    EXPECT_EQ(texts, row().list("entries"));
    EXPECT_EQ(colours, expectedColours);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, Legend, RowFile::In("graph/legend.rows"), RowFile::Named());

struct MeasureRow
{
    const char* name;
    std::int32_t graphType;
    QString category;
};

class LongCategoryLabel : public GraphDrawingTest, public testing::WithParamInterface<MeasureRow>
{
};

TEST_P(LongCategoryLabel, MakesThePictureTaller)
{
    Graph graph;
    const QString label = GetParam().category;
    graph.Data(0, 0, u"Ant"_s);
    graph.Data(0, 1, u"1"_s);
    graph.Data(1, 0, label);
    graph.Data(1, 1, u"3"_s);
    graph.GraphType(GetParam().graphType);
    graph.hMF();
    // Turned labels run down from 10 below the zero line, with 20 to spare.
    EXPECT_EQ(graph.Height(), TextWidth(label, 2700) + 340 + 30);
    EXPECT_GT(graph.Height(), 420);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, LongCategoryLabel,
    testing::Values(MeasureRow { "barChart", Graph::BarChart,
                        u"Average daily rainfall in the wettest month"_s },
        MeasureRow { "lineGraph", Graph::LineGraph, u"Pupils walking to school in spring"_s }),
    TestRows::Named());

} // namespace
