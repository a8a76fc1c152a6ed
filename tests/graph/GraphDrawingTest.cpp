#include "frame/Colours.h"
#include "frame/FrameSettings.h"
#include "graph/Graph.h"
#include "graph/MetaFile.h"
#include "platform/emf/Player.h"
#include "platform/emf/RecordTrace.h"

#include <QHash>
#include <QImage>
#include <QPoint>
#include <QRegularExpression>
#include <array>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

// Readable failure messages.
void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

constexpr std::int32_t White = 0xFFFFFF;
constexpr std::int32_t Cyan = 0xFFFF00; // the series colours in the program's 0x00BBGGRR order
constexpr std::int32_t Red = 0x0000FF;
constexpr std::int32_t Yellow = 0x00FFFF;
constexpr std::int32_t LightBlue = 0xE6D8AD;

// What a picture shows, read back from its records: filled shapes with the brush they were
// filled with, lines with their pen, texts with their font.
struct Shape
{
    QList<QPoint> points; // a polygon's corners, or a path's points in the order recorded
    bool polygon = false;
    std::int32_t brush = 0;
};

struct Line
{
    QPoint from;
    QPoint to;
    std::int32_t colour = 0;
    int width = 1;
};

struct Text
{
    QString text;
    QPoint at;
    int orientation = 0;
    int height = 0;
};

struct Scene
{
    QList<Shape> shapes;
    QList<Line> lines;
    QList<Text> texts;
    QList<QRect> ellipses;

    QList<Shape> polygons() const
    {
        QList<Shape> found;
        for (const Shape& shape : shapes)
            if (shape.polygon)
                found << shape;
        return found;
    }
    QList<Shape> paths() const
    {
        QList<Shape> found;
        for (const Shape& shape : shapes)
            if (!shape.polygon)
                found << shape;
        return found;
    }
    QStringList textsTurned(int orientation) const
    {
        QStringList found;
        for (const Text& text : texts)
            if (text.orientation == orientation)
                found << text.text;
        return found;
    }
};

QList<QPoint> PointsOf(const QString& text)
{
    QList<QPoint> points;
    static const QRegularExpression pair(u"(-?\\d+),(-?\\d+)"_s);
    for (auto match = pair.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        points << QPoint(found.captured(1).toInt(), found.captured(2).toInt());
    }
    return points;
}

std::int32_t ColourOf(const QString& line)
{
    const qsizetype at = line.indexOf(u"colour 0x"_s);
    return at < 0 ? 0 : line.mid(at + 9, 6).toInt(nullptr, 16);
}

Scene Read(const Emf::Picture& picture)
{
    struct Font
    {
        int orientation = 0;
        int height = 0;
    };
    struct Pen
    {
        std::int32_t colour = 0;
        int width = 1;
    };
    QHash<QString, std::int32_t> brushes { { u"WHITE_BRUSH"_s, White }, { u"BLACK_BRUSH"_s, 0 },
        { u"NULL_BRUSH"_s, -1 } };
    QHash<QString, Pen> pens { { u"BLACK_PEN"_s, {} }, { u"WHITE_PEN"_s, { White, 1 } },
        { u"NULL_PEN"_s, { -1, 0 } } };
    QHash<QString, Font> fonts;
    std::int32_t brush = White;
    Pen pen { -1, 0 };
    Font font;
    Scene scene;
    QList<Shape> pathShapes;
    bool inPath = false;
    QPoint position;
    for (const QString& line : Emf::TraceRecords(picture)) {
        const QStringList words = line.split(u' ');
        const QString& record = words.first();
        if (record == u"CREATEBRUSHINDIRECT"_s) {
            brushes[words[1]] = ColourOf(line);
            pens.remove(words[1]);
            fonts.remove(words[1]);
        } else if (record == u"EXTCREATEPEN"_s) {
            pens[words[1]] = { ColourOf(line), words[5].toInt() };
            brushes.remove(words[1]);
            fonts.remove(words[1]);
        } else if (record == u"EXTCREATEFONTINDIRECTW"_s) {
            fonts[words[1]] = { words[7].toInt(), words[3].toInt() };
            brushes.remove(words[1]);
            pens.remove(words[1]);
        } else if (record == u"SELECTOBJECT"_s) {
            if (brushes.contains(words[1]))
                brush = brushes[words[1]];
            else if (pens.contains(words[1]))
                pen = pens[words[1]];
            else if (fonts.contains(words[1]))
                font = fonts[words[1]];
        } else if (record == u"BEGINPATH"_s) {
            inPath = true;
            pathShapes.clear();
        } else if (record == u"ENDPATH"_s) {
            inPath = false;
        } else if (record == u"STROKEANDFILLPATH"_s) {
            for (Shape& shape : pathShapes) {
                shape.brush = brush;
                scene.shapes << shape;
            }
            pathShapes.clear();
        } else if (record == u"POLYGON"_s) {
            pathShapes << Shape { PointsOf(line), true, 0 };
        } else if (record == u"MOVETOEX"_s) {
            position = PointsOf(line).value(0);
            if (inPath)
                pathShapes << Shape { { position }, false, 0 };
        } else if (record == u"LINETO"_s || record == u"POLYBEZIERTO"_s) {
            const QList<QPoint> points = PointsOf(line);
            if (inPath && !pathShapes.isEmpty())
                pathShapes.last().points << points;
            else if (!inPath && !points.isEmpty())
                scene.lines << Line { position, points.last(), pen.colour, pen.width };
            if (!points.isEmpty())
                position = points.last();
        } else if (record == u"EXTTEXTOUTW"_s) {
            const qsizetype quote = line.indexOf(u'"');
            scene.texts << Text { line.mid(quote + 1, line.size() - quote - 2),
                PointsOf(line.left(quote)).value(0), font.orientation, font.height };
        } else if (record == u"ELLIPSE"_s) {
            const QList<QPoint> corners = PointsOf(line.split(u' ').mid(1).join(u','));
            if (corners.size() == 2)
                scene.ellipses << QRect(corners[0], corners[1]);
        }
    }
    return scene;
}

// Left and right edges of the shapes.
QList<std::pair<int, int>> Spans(const QList<Shape>& shapes)
{
    QList<std::pair<int, int>> spans;
    for (const Shape& shape : shapes) {
        int left = shape.points.first().x();
        int right = left;
        for (const QPoint& point : shape.points) {
            left = std::min(left, point.x());
            right = std::max(right, point.x());
        }
        spans.append({ left, right });
    }
    return spans;
}

QList<std::int32_t> Brushes(const QList<Shape>& shapes)
{
    QList<std::int32_t> colours;
    for (const Shape& shape : shapes)
        colours << shape.brush;
    return colours;
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

    // Rows from row 0 down: the category, then the values of series 1, 2, ...
    static void Fill(Graph& graph, const QList<QStringList>& rows)
    {
        for (int row = 0; row < rows.size(); ++row)
            for (int column = 0; column < rows[row].size(); ++column)
                graph.Data(row, column, rows[row][column]);
    }
    static Scene Draw(Graph& graph) { return Read(*graph.hMF()); }
};

// ---------------------------------------------------------------------------------------------
// Bars

struct BarGeometryRow
{
    const char* name;
    std::int32_t barType;
    QList<QStringList> rows;
    std::int32_t series;
    int barCount;
    QList<std::pair<int, int>> bars; // left and right of the first bars' front faces
    int axisEnd; // the right end of the horizontal axis: the plot right
};

class BarGeometry : public GraphDrawingTest, public testing::WithParamInterface<BarGeometryRow>
{
};

TEST_P(BarGeometry, PlacesTheBars)
{
    const BarGeometryRow& row = GetParam();
    Graph graph;
    Fill(graph, row.rows);
    graph.BarChartType(row.barType);
    graph.NumberOfDataSeries(row.series);
    const Scene scene = Draw(graph);
    const QList<Shape> polygons = scene.polygons();
    ASSERT_EQ(polygons.size(), row.barCount + 1); // the background panel first
    EXPECT_EQ(Spans(polygons.mid(1, row.bars.size())), row.bars);
    const auto axis = std::find_if(scene.lines.begin(), scene.lines.end(), [](const Line& line) {
        return line.from == QPoint(80, 340) && line.to.y() == 340 && line.to.x() > 80;
    });
    ASSERT_NE(axis, scene.lines.end());
    EXPECT_EQ(axis->to.x(), row.axisEnd);
}

QList<QStringList> Categories(int count)
{
    QList<QStringList> rows;
    for (int index = 0; index < count; ++index)
        rows << QStringList { u"Item %1"_s.arg(index + 1), u"5"_s };
    return rows;
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, BarGeometry,
    testing::Values(
        BarGeometryRow { "solidOneSeries", Graph::SolidBars,
            { { u"Apples"_s, u"12"_s }, { u"Pears"_s, u"30"_s }, { u"Plums"_s, u"7"_s } }, 1, 3,
            { { 88, 176 }, { 186, 274 }, { 284, 372 } }, 3 * 98 + 80 + 2 },
        BarGeometryRow { "solidTwoSeries", Graph::SolidBars,
            { { u"Apples"_s, u"12"_s, u"3"_s }, { u"Pears"_s, u"30"_s, u"4"_s } }, 2, 4,
            // w = (300 - 16 - 14 x 2 + 10) / 4 = 66.5, rounded to the even 66; pitch 146
            { { 88, 154 }, { 158, 224 }, { 234, 300 }, { 304, 370 } }, 2 * 146 + 82 },
        BarGeometryRow { "solidNarrowBarsStayFifteenWide", Graph::SolidBars, Categories(30), 1, 30,
            { { 88, 103 }, { 113, 128 } }, 30 * 25 + 82 },
        BarGeometryRow { "barLineTwoSeries", Graph::BarLine,
            { { u"Apples"_s, u"12"_s, u"3"_s }, { u"Pears"_s, u"30"_s, u"4"_s } }, 2, 4,
            { { 100, 107 }, { 113, 120 }, { 160, 167 }, { 173, 180 } }, 2 * 60 + 82 },
        BarGeometryRow { "histogramBarsTouch", Graph::Histogram,
            { { u"0-9"_s, u"12"_s, u"99"_s }, { u"10-19"_s, u"30"_s, u"99"_s },
                { u"20-29"_s, u"7"_s, u"99"_s } },
            2, 3, { { 80, 180 }, { 180, 280 }, { 280, 380 } }, 3 * 100 + 82 },
        BarGeometryRow { "zeroValuesAndEmptyCategoriesDrawNoBar", Graph::SolidBars,
            { { u"Apples"_s, u"0"_s }, { u""_s, u"9"_s }, { u"Plums"_s, u"7"_s } }, 1, 1,
            { { 186, 274 } }, 3 * 98 + 82 }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, NegativeBarsHangBelowTheZeroLine)
{
    Graph graph;
    Fill(graph, { { u"Loss"_s, u"-20"_s }, { u"Gain"_s, u"28"_s } });
    const Scene scene = Draw(graph);
    // Round value 30 in 6 steps of 5, four more below zero: zero at 340 - 4 x 22 = 252, and
    // 4.4 pixels a unit. Two bars 137 wide, 147 apart.
    const QList<Shape> bars = scene.polygons().mid(1);
    ASSERT_EQ(bars.size(), 2);
    EXPECT_EQ(
        bars[0].points, (QList<QPoint> { { 88, 252 }, { 225, 252 }, { 225, 340 }, { 88, 340 } }));
    EXPECT_EQ(
        bars[1].points, (QList<QPoint> { { 235, 252 }, { 372, 252 }, { 372, 129 }, { 235, 129 } }));
    EXPECT_EQ(scene.textsTurned(0),
        (QStringList { u"-20"_s, u"-15"_s, u"-10"_s, u"-5"_s, u"0"_s, u"5"_s, u"10"_s, u"15"_s,
            u"20"_s, u"25"_s, u"30"_s }));
}

struct TickRow
{
    const char* name;
    QStringList values;
    QStringList ticks;
};

class TickLabels : public GraphDrawingTest, public testing::WithParamInterface<TickRow>
{
};

TEST_P(TickLabels, ReadTheScale)
{
    Graph graph;
    QList<QStringList> rows;
    for (const QString& value : GetParam().values)
        rows << QStringList { u"Item"_s + value, value };
    Fill(graph, rows);
    EXPECT_EQ(Draw(graph).textsTurned(0), GetParam().ticks);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, TickLabels,
    testing::Values(
        TickRow { "wholeNumbersToThirtySeven", { u"37"_s, u"12"_s },
            { u"0"_s, u"5"_s, u"10"_s, u"15"_s, u"20"_s, u"25"_s, u"30"_s, u"35"_s, u"40"_s } },
        TickRow { "smallWholeNumbersReachTen", { u"3"_s, u"7"_s },
            { u"0"_s, u"2"_s, u"4"_s, u"6"_s, u"8"_s, u"10"_s } },
        // Empty cells read 0, so the top of negative data is 0, and whole numbers get 10.
        TickRow { "negativeOnlyKeepsATopOfTen", { u"-17"_s, u"-3"_s },
            { u"-20"_s, u"-18"_s, u"-16"_s, u"-14"_s, u"-12"_s, u"-10"_s, u"-8"_s, u"-6"_s, u"-4"_s,
                u"-2"_s, u"0"_s, u"2"_s, u"4"_s, u"6"_s, u"8"_s, u"10"_s } },
        TickRow { "negativeDecimalsStopAtZero", { u"-1.5"_s, u"-0.5"_s },
            { u"-1.5"_s, u"-1.2"_s, u"-0.9"_s, u"-0.6"_s, u"-0.3"_s, u"0"_s } },
        TickRow { "decimals", { u"0.25"_s, u"0.37"_s },
            { u"0"_s, u"0.05"_s, u"0.1"_s, u"0.15"_s, u"0.2"_s, u"0.25"_s, u"0.3"_s, u"0.35"_s,
                u"0.4"_s } },
        TickRow { "thousands", { u"3700"_s, u"1200"_s },
            { u"0"_s, u"500"_s, u"1000"_s, u"1500"_s, u"2000"_s, u"2500"_s, u"3000"_s, u"3500"_s,
                u"4000"_s } }),
    [](const auto& info) { return std::string(info.param.name); });

struct ColourRow
{
    const char* name;
    QList<QStringList> rows;
    std::int32_t series;
    std::int32_t barType;
    bool useColour;
    QList<std::int32_t> colours; // of the bars' front faces, in order
};

class BarColours : public GraphDrawingTest, public testing::WithParamInterface<ColourRow>
{
};

TEST_P(BarColours, FollowTheColourRules)
{
    const ColourRow& row = GetParam();
    Graph graph;
    Fill(graph, row.rows);
    graph.NumberOfDataSeries(row.series);
    graph.BarChartType(row.barType);
    graph.UseColour = row.useColour;
    EXPECT_EQ(Brushes(Draw(graph).polygons().mid(1)), row.colours);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, BarColours,
    testing::Values(ColourRow { "categoryNamedLikeAColourTakesIt",
                        { { u"Apples"_s, u"1"_s }, { u"RED"_s, u"2"_s }, { u"Plums"_s, u"3"_s } },
                        1, Graph::SolidBars, true, { Cyan, Red, Yellow } },
        // Only a name equal to the category counts: "red" is not "RED", and "LIGHT" is only
        // part of three names.
        ColourRow { "categoryOnlyLikeAColourNameKeepsItsPlaceColour",
            { { u"red"_s, u"1"_s }, { u"LIGHT"_s, u"2"_s } }, 1, Graph::SolidBars, true,
            { Cyan, Red } },
        ColourRow { "seventhCategoryStartsTheTableAgain",
            { { u"P1"_s, u"1"_s }, { u"P2"_s, u"1"_s }, { u"P3"_s, u"1"_s }, { u"P4"_s, u"1"_s },
                { u"P5"_s, u"1"_s }, { u"P6"_s, u"1"_s }, { u"P7"_s, u"1"_s } },
            1, Graph::SolidBars, true, { Cyan, Red, Yellow, 0x00FF00, 0xFF0000, 0xFF00FF, Cyan } },
        ColourRow { "seriesColoursWithTwoSeries",
            { { u"Apples"_s, u"1"_s, u"2"_s }, { u"RED"_s, u"3"_s, u"4"_s } }, 2, Graph::BarLine,
            true, { Red, Yellow, Red, Yellow } },
        ColourRow { "histogramColour", { { u"Apples"_s, u"1"_s }, { u"Pears"_s, u"2"_s } }, 1,
            Graph::Histogram, true, { Red, Red } },
        ColourRow { "withoutColourAllWhite",
            { { u"Apples"_s, u"1"_s, u"2"_s }, { u"RED"_s, u"3"_s, u"4"_s } }, 2, Graph::SolidBars,
            false, { White, White, White, White } }),
    [](const auto& info) { return std::string(info.param.name); });

struct FaceRow
{
    const char* name;
    bool threeD;
    QList<std::int32_t> colours; // every filled polygon, in order
};

class BarFaces : public GraphDrawingTest, public testing::WithParamInterface<FaceRow>
{
};

TEST_P(BarFaces, AreDrawnWhenSeen)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"4"_s } });
    graph.Graph3D(GetParam().threeD);
    EXPECT_EQ(Brushes(Draw(graph).polygons()), GetParam().colours);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, BarFaces,
    testing::Values(FaceRow { "flatShowsPanelAndFrontsOnly", false, { LightBlue, Cyan } },
        FaceRow { "threeDShowsPanelWallFloorAndThreeFacesABar", true,
            { LightBlue, Frame::ShadeColour(LightBlue, -30), Frame::ShadeColour(LightBlue, 50),
                Cyan, Frame::ShadeColour(Cyan, 60), Frame::ShadeColour(Cyan, -40) } }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, ThreeDTopFaceLeansBackAndUp)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"4"_s }, { u"Pears"_s, u"10"_s } });
    graph.Graph3D(true);
    const QList<Shape> polygons = Draw(graph).polygons();
    ASSERT_EQ(polygons.size(), 3 + 6);
    // Plot top 160 in 3D, so 180 pixels for 0..10; the first bar is 72 high from 340.
    const Shape& front = polygons[3];
    const Shape& top = polygons[4];
    EXPECT_EQ(front.points[2].y(), 268);
    // The top face starts on the front's top edge and runs back: right and up.
    EXPECT_EQ(top.points[0], front.points[3]);
    EXPECT_GT(top.points[2].x(), top.points[1].x());
    EXPECT_LT(top.points[2].y(), top.points[1].y());
}

// ---------------------------------------------------------------------------------------------
// Legend and the measuring pass

struct LegendRow
{
    const char* name;
    QList<QStringList> rows;
    std::int32_t graphType;
    std::int32_t series;
    bool displayLegend;
    QStringList texts;
    QList<std::int32_t> colours;
};

class Legend : public GraphDrawingTest, public testing::WithParamInterface<LegendRow>
{
};

TEST_P(Legend, ListsEachEntryOnce)
{
    const LegendRow& row = GetParam();
    Graph graph;
    Fill(graph, row.rows);
    graph.GraphType(row.graphType);
    graph.NumberOfDataSeries(row.series);
    graph.DisplayLegend(row.displayLegend);
    graph.hMF();
    QStringList texts;
    QList<std::int32_t> colours;
    for (const Ormsey::LegendEntry& entry : graph.LegendEntries) {
        texts << entry.text;
        colours << entry.colour;
    }
    EXPECT_EQ(texts, row.texts);
    EXPECT_EQ(colours, row.colours);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, Legend,
    testing::Values(
        LegendRow { "categoriesOfOneSeriesWithoutCaseRepeats",
            { { u"Apples"_s, u"1"_s }, { u"APPLES"_s, u"2"_s }, { u"Pears"_s, u"3"_s } },
            Graph::BarChart, 1, true, { u"Apples"_s, u"Pears"_s }, { Cyan, Yellow } },
        LegendRow { "seriesLabelsOfSeveralSeries",
            { { u"Apples"_s, u"1"_s, u"2"_s }, { u"Pears"_s, u"3"_s, u"0"_s } }, Graph::BarChart, 2,
            true, { u"Series 1"_s, u"Series 2"_s }, { Red, Yellow } },
        LegendRow { "zeroBarsAddNothing", { { u"Apples"_s, u"0"_s }, { u"Pears"_s, u"3"_s } },
            Graph::BarChart, 1, true, { u"Pears"_s }, { Red } },
        LegendRow { "switchedOff", { { u"Apples"_s, u"1"_s } }, Graph::BarChart, 1, false, {}, {} },
        LegendRow { "lineGraphSeries", { { u"Apples"_s, u"1"_s, u"2"_s } }, Graph::LineGraph, 2,
            true, { u"Series 1"_s, u"Series 2"_s }, { Red, Yellow } },
        LegendRow { "scattergramHasNone", { { u"Apples"_s, u"1"_s, u"2"_s } }, Graph::Scattergram,
            2, true, {}, {} },
        LegendRow { "pieCategories",
            { { u"Apples"_s, u"1"_s }, { u"Pears"_s, u"0"_s }, { u"Plums"_s, u"3"_s } },
            Graph::PieChart, 1, true, { u"Apples"_s, u"Plums"_s }, { Cyan, Red } }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, LegendSitsRightOfThePlotAndWidensThePicture)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"1"_s }, { u"Pears"_s, u"3"_s } });
    graph.DisplayLegend(true);
    const Scene scene = Draw(graph);
    // Bars end at 2 x 147 + 82 = 376; the picture is first 400 wide, then the legend is added.
    const std::int32_t legendWidth = std::max(TextWidth(u"Apples"_s), TextWidth(u"Pears"_s)) + 40;
    EXPECT_EQ(graph.Width(), 400 + legendWidth);
    const QList<Shape> polygons = scene.polygons();
    ASSERT_EQ(polygons.size(), 5);
    EXPECT_EQ(polygons[3].points,
        (QList<QPoint> { { 390, 120 }, { 390, 140 }, { 410, 140 }, { 410, 120 } }));
    EXPECT_EQ(polygons[4].points,
        (QList<QPoint> { { 390, 150 }, { 390, 170 }, { 410, 170 }, { 410, 150 } }));
    EXPECT_EQ(Brushes(polygons.mid(3)), (QList<std::int32_t> { Cyan, Red }));
    ASSERT_GE(scene.texts.size(), 2);
    EXPECT_EQ(scene.texts[scene.texts.size() - 2].text, u"Apples"_s);
    EXPECT_EQ(scene.texts.last().text, u"Pears"_s);
}

TEST_F(GraphDrawingTest, PictureKeepsItsStartingSizeWhenEverythingFits)
{
    Graph graph;
    Fill(graph, { { u"Ant"_s, u"1"_s }, { u"Bee"_s, u"3"_s } });
    graph.hMF();
    EXPECT_EQ(graph.Width(), 400);
    EXPECT_EQ(graph.Height(), 420);
}

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
    Fill(graph, { { u"Ant"_s, u"1"_s }, { label, u"3"_s } });
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
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, LongVerticalAxisLabelMovesThePlotRight)
{
    Graph graph;
    Fill(graph, { { u"Ant"_s, u"1"_s } });
    const QString label = u"Number of creatures found under one stone"_s;
    graph.VerticalAxisLabel(label);
    const Scene scene = Draw(graph);
    const std::int32_t plotLeft = TextWidth(label) + 20;
    ASSERT_GT(plotLeft, 80);
    const auto axis = std::find_if(scene.lines.begin(), scene.lines.end(),
        [](const Line& line) { return line.from.y() == 340 && line.to.y() == 120; });
    ASSERT_NE(axis, scene.lines.end());
    EXPECT_EQ(axis->from.x(), plotLeft);
    const auto text = std::find_if(scene.texts.begin(), scene.texts.end(),
        [&label](const Text& found) { return found.text == label; });
    ASSERT_NE(text, scene.texts.end());
    EXPECT_EQ(text->at, QPoint(10, 90)); // right-aligned 10 left of the plot, 30 above it
}

TEST_F(GraphDrawingTest, TitleIsBoldAndCentred)
{
    Graph graph;
    Fill(graph, { { u"Ant"_s, u"1"_s } });
    graph.GraphTitle(u"Minibeasts"_s);
    const Scene scene = Draw(graph);
    ASSERT_FALSE(scene.texts.isEmpty());
    const Text& title = scene.texts.last();
    EXPECT_EQ(title.text, u"Minibeasts"_s);
    EXPECT_EQ(title.height, -24); // 18 points at 96 dots an inch
    Ormsey::MetaFile surface;
    surface.OpenMF();
    surface.FontName(u"Arial"_s);
    surface.FontSize(18);
    surface.FontBold(true);
    const std::int32_t width = surface.GetTextWidth(u"Minibeasts"_s);
    surface.CloseMF();
    EXPECT_NEAR(title.at.x(), 200 - width / 2.0, 0.5);
    EXPECT_EQ(title.at.y(), 40);
}

// ---------------------------------------------------------------------------------------------
// Pies

// Each flat sector is one path: the centre, the start point on the rim, then the arc to the
// end point.
struct Sector
{
    QPoint centre;
    QPoint start;
    QPoint end;
    std::int32_t colour = 0;
};

QList<Sector> Sectors(const Scene& scene)
{
    QList<Sector> sectors;
    for (const Shape& path : scene.paths())
        if (path.points.size() >= 3)
            sectors << Sector { path.points[0], path.points[1], path.points.last(), path.brush };
    return sectors;
}

struct PieRow
{
    const char* name;
    QStringList values;
    std::int16_t startingAngle;
    QList<QPoint> starts; // of each sector, in row order
    QPoint lastEnd;
};

class PieSectors : public GraphDrawingTest, public testing::WithParamInterface<PieRow>
{
};

TEST_P(PieSectors, RunCounterclockwiseFromTheStartingAngle)
{
    const PieRow& row = GetParam();
    Graph graph;
    QList<QStringList> rows;
    for (const QString& value : row.values)
        rows << QStringList { u"Item %1"_s.arg(rows.size() + 1), value };
    Fill(graph, rows);
    graph.GraphType(Graph::PieChart);
    graph.PieStartingAngle = row.startingAngle;
    const QList<Sector> sectors = Sectors(Draw(graph));
    ASSERT_EQ(sectors.size(), row.starts.size());
    QList<QPoint> starts;
    for (const Sector& sector : sectors) {
        EXPECT_EQ(sector.centre, QPoint(200, 240));
        starts << sector.start;
    }
    EXPECT_EQ(starts, row.starts);
    EXPECT_EQ(sectors.last().end, row.lastEnd);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, PieSectors,
    testing::Values(
        // Twelve to nine o'clock, nine to six, then the right half back to twelve.
        PieRow { "oneOneTwoFromTwelve", { u"1"_s, u"1"_s, u"2"_s }, 90,
            { { 200, 120 }, { 80, 240 }, { 200, 360 } }, { 200, 120 } },
        PieRow { "fromThreeOClock", { u"1"_s, u"1"_s, u"2"_s }, 0,
            { { 320, 240 }, { 200, 120 }, { 80, 240 } }, { 320, 240 } },
        PieRow { "negativeValuesCountByTheirSize", { u"-10"_s, u"30"_s }, 90,
            { { 200, 120 }, { 80, 240 } }, { 200, 120 } },
        PieRow { "zeroValuesHaveNoSector", { u"1"_s, u"0"_s, u"1"_s }, 90,
            { { 200, 120 }, { 200, 360 } }, { 200, 120 } }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, SingleValueIsAWholeDisc)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"5"_s } });
    graph.GraphType(Graph::PieChart);
    graph.PieLabels = Graph::NoLabels;
    const QList<Shape> paths = Draw(graph).paths();
    ASSERT_EQ(paths.size(), 1);
    const QList<QPoint>& points = paths[0].points;
    EXPECT_EQ(points.first(), QPoint(200, 120));
    EXPECT_EQ(points.last(), QPoint(200, 120));
    EXPECT_TRUE(points.contains(QPoint(80, 240)));
    EXPECT_TRUE(points.contains(QPoint(320, 240)));
    EXPECT_TRUE(points.contains(QPoint(200, 360)));
}

TEST_F(GraphDrawingTest, SliverNarrowerThanAPixelDoesNotCoverThePie)
{
    Graph graph;
    Fill(graph, { { u"Big"_s, u"1000"_s }, { u"Tiny"_s, u"0.1"_s } });
    graph.GraphType(Graph::PieChart);
    graph.PieLabels = Graph::NoLabels;
    // Big's ends meet at twelve, so it is the whole disc; Tiny's ends meet too, but it is
    // left out rather than drawn as a second whole disc over Big.
    const QList<Shape> paths = Draw(graph).paths();
    ASSERT_EQ(paths.size(), 1);
    EXPECT_EQ(paths[0].brush, Cyan); // the first item's colour
    EXPECT_TRUE(paths[0].points.contains(QPoint(200, 360)));
}

TEST_F(GraphDrawingTest, PieColourCycleSkipsTheFirstColourForTheLastSector)
{
    Graph graph;
    QList<QStringList> rows;
    for (int index = 0; index < 7; ++index)
        rows << QStringList { u"P%1"_s.arg(index + 1), u"1"_s };
    Fill(graph, rows);
    graph.GraphType(Graph::PieChart);
    QList<std::int32_t> colours;
    for (const Sector& sector : Sectors(Draw(graph)))
        colours << sector.colour;
    // Seven sectors: a cycle of five, so the seventh takes entry 1 and not its neighbour's 0.
    EXPECT_EQ(colours, (QList<std::int32_t> { Cyan, Red, Yellow, 0x00FF00, 0xFF0000, Cyan, Red }));
}

struct PieLabelRow
{
    const char* name;
    std::int32_t pieLabels;
    QStringList texts;
};

class PieLabelTexts : public GraphDrawingTest, public testing::WithParamInterface<PieLabelRow>
{
};

TEST_P(PieLabelTexts, CarryNamesAndPercentages)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"1"_s }, { u"Pears"_s, u"3"_s } });
    graph.GraphType(Graph::PieChart);
    graph.PieLabels = GetParam().pieLabels;
    EXPECT_EQ(Draw(graph).textsTurned(0), GetParam().texts);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, PieLabelTexts,
    testing::Values(PieLabelRow { "none", Graph::NoLabels, {} },
        PieLabelRow { "labels", Graph::Labels, { u"Apples"_s, u"Pears"_s } },
        PieLabelRow {
            "percentagesStartWithTwoBlanks", Graph::Percentages, { u"  25%"_s, u"  75%"_s } },
        PieLabelRow { "both", Graph::LabelsAndPercentages, { u"Apples  25%"_s, u"Pears  75%"_s } }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, PieLabelSitsOutsideItsSector)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"1"_s }, { u"Pears"_s, u"1"_s } });
    graph.GraphType(Graph::PieChart);
    const Scene scene = Draw(graph);
    ASSERT_EQ(scene.texts.size(), 2);
    // Apples runs from twelve to six o'clock through nine: its label is left of the pie,
    // ending 132 left of the centre; Pears starts 132 right of it.
    EXPECT_EQ(scene.texts[0].at.x() + TextWidth(u"Apples"_s), 200 - 132);
    EXPECT_EQ(scene.texts[1].at.x(), 200 + 132);
}

TEST_F(GraphDrawingTest, ThreeSeriesMakeFourPlacesForPies)
{
    Graph graph;
    Fill(
        graph, { { u"Apples"_s, u"1"_s, u"2"_s, u"3"_s }, { u"Pears"_s, u"3"_s, u"2"_s, u"1"_s } });
    graph.GraphType(Graph::PieChart);
    graph.NumberOfDataSeries(3);
    graph.PieLabels = Graph::NoLabels;
    const Scene scene = Draw(graph);
    EXPECT_EQ(graph.Width(), 800);
    EXPECT_EQ(graph.Height(), 780);
    QList<QPoint> centres;
    for (const Sector& sector : Sectors(scene))
        if (!centres.contains(sector.centre))
            centres << sector.centre;
    EXPECT_EQ(centres, (QList<QPoint> { { 200, 240 }, { 600, 240 }, { 200, 600 } }));
    EXPECT_EQ(scene.textsTurned(0), (QStringList { u"Series 1"_s, u"Series 2"_s, u"Series 3"_s }));
}

TEST_F(GraphDrawingTest, LongPieLabelsWidenThePicture)
{
    Graph graph;
    const QString label = u"Children who walk to school every day"_s;
    Fill(graph, { { label, u"1"_s }, { u"Others"_s, u"1"_s } });
    graph.GraphType(Graph::PieChart);
    const Scene scene = Draw(graph);
    EXPECT_GT(graph.Width(), 400);
    for (const Text& text : scene.texts) {
        EXPECT_GE(text.at.x(), 0) << text.text.toStdString();
        EXPECT_LE(text.at.x() + TextWidth(text.text), graph.Width()) << text.text.toStdString();
    }
}

TEST_F(GraphDrawingTest, ThreeDPieMovesUpAndDrawsItsRim)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"1"_s }, { u"Pears"_s, u"1"_s } });
    graph.GraphType(Graph::PieChart);
    graph.Graph3D(true);
    const QList<Shape> paths = Draw(graph).paths();
    // Apples lies on the left half and reaches below the middle: a rim, then its top.
    ASSERT_GE(paths.size(), 3);
    EXPECT_EQ(paths[0].brush, Frame::ShadeColour(Cyan, -40));
    EXPECT_EQ(paths[1].brush, Cyan);
    EXPECT_EQ(paths[1].points[0], QPoint(200, 220));
    int lowest = 0;
    for (const QPoint& point : paths[0].points)
        lowest = std::max(lowest, point.y());
    // The flattened disc reaches 120 cos 45 below the centre, the rim 42 further.
    EXPECT_NEAR(lowest, 220 + 85 + 42, 1);
}

// ---------------------------------------------------------------------------------------------
// Line graphs and scattergrams

QList<Line> LinesOfColour(const Scene& scene, std::int32_t colour, int width)
{
    QList<Line> found;
    for (const Line& line : scene.lines)
        if (line.colour == colour && line.width == width)
            found << line;
    return found;
}

TEST_F(GraphDrawingTest, LineGraphSpreadsCategoriesEvenly)
{
    Graph graph;
    Fill(graph, { { u"Mon"_s, u"10"_s }, { u"Tue"_s, u"20"_s }, { u"Wed"_s, u"30"_s } });
    graph.GraphType(Graph::LineGraph);
    const QList<Line> lines = LinesOfColour(Draw(graph), Red, 2);
    // 0..30 over 220 pixels; items at plot left + 100, + 200, + 300.
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].from, QPoint(180, 267));
    EXPECT_EQ(lines[0].to, QPoint(280, 193));
    EXPECT_EQ(lines[1].from, QPoint(280, 193));
    EXPECT_EQ(lines[1].to, QPoint(380, 120));
}

struct ManualRangeRow
{
    const char* name;
    std::array<double, 2> minimum; // x, then the values
    std::array<double, 2> maximum;
    QList<std::pair<QPoint, QPoint>> lines;
};

class PointsOutsideAManualRange : public GraphDrawingTest,
                                  public testing::WithParamInterface<ManualRangeRow>
{
};

TEST_P(PointsOutsideAManualRange, AreLeftOut)
{
    Graph graph;
    Fill(graph, { { u"Mon"_s, u"10"_s }, { u"Tue"_s, u"40"_s }, { u"Wed"_s, u"30"_s } });
    graph.GraphType(Graph::LineGraph);
    graph.AutoScale = false;
    graph.AxisMinimum = GetParam().minimum;
    graph.AxisMaximum = GetParam().maximum;
    QList<std::pair<QPoint, QPoint>> lines;
    for (const Line& line : LinesOfColour(Draw(graph), Red, 2))
        lines.append({ line.from, line.to });
    EXPECT_EQ(lines, GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, PointsOutsideAManualRange,
    testing::Values(
        // Monday joins Wednesday, which takes the second step, not the third.
        ManualRangeRow {
            "valueAboveTheRange", { 0, 0 }, { 0, 30 }, { { { 180, 267 }, { 280, 120 } } } },
        // A category name reads as x = 0, outside an x range of 1 to 10.
        ManualRangeRow { "categoriesOutsideTheXRange", { 1, 0 }, { 10, 40 }, {} }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, LineGraphWithoutColourIsBlack)
{
    Graph graph;
    Fill(graph, { { u"Mon"_s, u"10"_s, u"5"_s }, { u"Tue"_s, u"20"_s, u"5"_s } });
    graph.GraphType(Graph::LineGraph);
    graph.NumberOfDataSeries(2);
    graph.UseColour = false;
    const Scene scene = Draw(graph);
    EXPECT_TRUE(LinesOfColour(scene, Red, 2).isEmpty());
    // Two series of one joining line each; the axes are black and 2 wide too.
    EXPECT_GE(LinesOfColour(scene, 0, 2).size(), 2);
}

struct MarkerRow
{
    const char* name;
    std::int32_t pointType;
    QList<std::pair<QPoint, QPoint>> lines; // the thin red lines
    int squares;
    int circles;
};

class ScatterMarkers : public GraphDrawingTest, public testing::WithParamInterface<MarkerRow>
{
};

TEST_P(ScatterMarkers, AreDrawnAtThePoint)
{
    Graph graph;
    // x 0..10 over 300 pixels, y 0..10 over 220: (2, 5) is at (140, 230).
    Fill(graph, { { u"2"_s, u"5"_s } });
    graph.GraphType(Graph::Scattergram);
    graph.PointType = GetParam().pointType;
    const Scene scene = Draw(graph);
    QList<std::pair<QPoint, QPoint>> lines;
    for (const Line& line : LinesOfColour(scene, Red, 1))
        lines.append({ line.from, line.to });
    EXPECT_EQ(lines, GetParam().lines);
    int squares = 0;
    for (const Shape& polygon : scene.polygons())
        if (polygon.brush == Red
            && polygon.points
                == QList<QPoint> { { 139, 229 }, { 139, 230 }, { 140, 230 }, { 140, 229 } })
            ++squares;
    EXPECT_EQ(squares, GetParam().squares);
    EXPECT_EQ(scene.ellipses.count(QRect(QPoint(135, 225), QPoint(145, 235))), GetParam().circles);
}

INSTANTIATE_TEST_SUITE_P(GraphDrawing, ScatterMarkers,
    testing::Values(MarkerRow { "cross", Graph::Cross,
                        { { { 135, 225 }, { 145, 235 } }, { { 135, 235 }, { 145, 225 } } }, 0, 0 },
        MarkerRow { "singlePoint", Graph::SinglePoint, {}, 1, 0 },
        MarkerRow { "circle", Graph::Circle, {}, 1, 1 },
        MarkerRow { "none", Graph::NoPoint, {}, 0, 0 }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, XYDataDrawOnlyTheFirstSeries)
{
    Graph graph;
    Fill(graph, { { u"1"_s, u"2"_s, u"7"_s, u"8"_s }, { u"2"_s, u"4"_s, u"7"_s, u"8"_s } });
    graph.GraphType(Graph::Scattergram);
    graph.NumberOfDataSeries(3);
    const Scene scene = Draw(graph);
    EXPECT_EQ(LinesOfColour(scene, Red, 1).size(), 4); // two crosses
    EXPECT_TRUE(LinesOfColour(scene, Yellow, 1).isEmpty());
}

struct BestFitRow
{
    const char* name;
    QList<QStringList> rows;
    bool lineOption;
    bool correlationOption;
    QList<std::pair<QPoint, QPoint>> line;
    QString text; // empty: no text
};

class LineOfBestFit : public GraphDrawingTest, public testing::WithParamInterface<BestFitRow>
{
};

TEST_P(LineOfBestFit, IsDrawnWhenTheCorrelationIsStrong)
{
    const BestFitRow& row = GetParam();
    Graph graph;
    Fill(graph, row.rows);
    graph.GraphType(Graph::Scattergram);
    graph.PointType = Graph::NoPoint;
    graph.DisplayLineOfBestFit(row.lineOption);
    graph.DisplayCorrelation(row.correlationOption);
    const Scene scene = Draw(graph);
    QList<std::pair<QPoint, QPoint>> lines;
    for (const Line& line : LinesOfColour(scene, Red, 2))
        lines.append({ line.from, line.to });
    EXPECT_EQ(lines, row.line);
    const QString prefix = u"Coefficient of Correlation = "_s;
    QStringList texts;
    for (const Text& text : scene.texts)
        if (text.text.startsWith(prefix))
            texts << text.text;
    EXPECT_EQ(texts, row.text.isEmpty() ? QStringList() : QStringList { row.text });
}

const QList<QStringList> straightLine { { u"1"_s, u"2"_s }, { u"2"_s, u"4"_s },
    { u"3"_s, u"6"_s } };
const QList<QStringList> weakCorrelation { { u"1"_s, u"1"_s }, { u"2"_s, u"1"_s },
    { u"3"_s, u"4"_s }, { u"4"_s, u"2"_s }, { u"5"_s, u"2"_s }, { u"6"_s, u"1"_s } };
const QList<QStringList> negativeCorrelation { { u"1"_s, u"1"_s }, { u"2"_s, u"2"_s },
    { u"3"_s, u"2"_s }, { u"4"_s, u"1"_s }, { u"5"_s, u"1"_s }, { u"6"_s, u"1"_s } };

INSTANTIATE_TEST_SUITE_P(GraphDrawing, LineOfBestFit,
    testing::Values(
        // x 0..10 at 30 pixels a unit, y 0..10 at 22: y = 2x from x 0 to 3.
        BestFitRow { "throughThePoints", straightLine, true, true,
            { { { 80, 340 }, { 170, 208 } } }, u"Coefficient of Correlation = 1.00"_s },
        BestFitRow { "lineOptionOff", straightLine, false, true, {},
            u"Coefficient of Correlation = 1.00"_s },
        BestFitRow { "correlationOptionOff", straightLine, true, false,
            { { { 80, 340 }, { 170, 208 } } }, {} },
        BestFitRow { "weakCorrelationShowsTextButNoLine", weakCorrelation, true, true, {},
            u"Coefficient of Correlation = 0.05"_s },
        // x 0..4 at 75 pixels a unit, y 0..8 at 27.5; y = 2x + 0.13 with its ends taken at
        // whole numbers: from (0, 0) to (4, 8), past the last point at x 3.6.
        BestFitRow { "endsRoundedToWholeNumbers",
            { { u"1.4"_s, u"3"_s }, { u"2.5"_s, u"5"_s }, { u"3.6"_s, u"7.4"_s } }, true, false,
            { { { 80, 340 }, { 380, 120 } } }, {} },
        BestFitRow { "negativeCoefficient", negativeCorrelation, false, true, {},
            u"Coefficient of Correlation = -0.41"_s }),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GraphDrawingTest, CorrelationTextIsCentredBelowThePlot)
{
    Graph graph;
    Fill(graph, straightLine);
    graph.GraphType(Graph::Scattergram);
    graph.DisplayCorrelation(true);
    const Scene scene = Draw(graph);
    ASSERT_FALSE(scene.texts.isEmpty());
    const Text& text = scene.texts.last();
    EXPECT_EQ(text.text, u"Coefficient of Correlation = 1.00"_s);
    EXPECT_NEAR(text.at.x(), graph.Width() / 2.0 - TextWidth(text.text) / 2.0, 0.5);
    EXPECT_EQ(text.at.y(), 390);
}

// ---------------------------------------------------------------------------------------------
// Played back

TEST_F(GraphDrawingTest, PlayedBarChartShowsBarsOnThePanel)
{
    Graph graph;
    Fill(graph, { { u"Apples"_s, u"12"_s }, { u"Pears"_s, u"30"_s }, { u"Plums"_s, u"7"_s } });
    const QImage image = Emf::RenderPicture(*graph.hMF(), QSize(graph.Width(), graph.Height()));
    EXPECT_EQ(image.pixelColor(130, 300), Frame::ColourFromValue(Cyan)); // inside the first bar
    EXPECT_EQ(image.pixelColor(230, 200), Frame::ColourFromValue(Red)); // the tall second bar
    EXPECT_EQ(image.pixelColor(330, 200), Frame::ColourFromValue(LightBlue)); // above the third
    EXPECT_EQ(image.pixelColor(30, 380), QColor(Qt::white)); // outside the plot
}

} // namespace
