#include "graph/Graph.h"

#include "RowFile.h"
#include "frame/FrameSettings.h"
#include "platform/emf/Player.h"
#include "platform/runtime/Error.h"

#include <QTemporaryDir>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

class GraphTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::Settings().ColourTable = { { u"RED"_s, 255 }, { u"LIGHT BLUE"_s, 16760960 } };
    }
    void TearDown() override { Frame::Settings() = {}; }

    // Rows of (category, value) from row 0 down.
    static void Fill(Graph& graph, const QList<std::pair<QString, QString>>& rows)
    {
        for (int r = 0; r < rows.size(); ++r) {
            graph.Data(r, 0, rows[r].first);
            graph.Data(r, 1, rows[r].second);
        }
    }
};

TEST_F(GraphTest, InitialiseVariablesLeavesTheUntouchedFields)
{
    Graph graph;
    graph.JoinPoints = true;
    graph.PieRotation3D = 30;
    graph.DisplayLegend(true);
    graph.AxisMinimum[1] = 5;
    graph.GraphType(Graph::PieChart);
    graph.Data(3, 2, u"x"_s);
    graph.InitialiseVariables();
    EXPECT_TRUE(graph.JoinPoints);
    EXPECT_EQ(graph.PieRotation3D, 30);
    EXPECT_TRUE(graph.DisplayLegend());
    EXPECT_EQ(graph.AxisMinimum[1], 5);
    EXPECT_EQ(graph.GraphType(), Graph::BarChart);
    EXPECT_EQ(graph.Data(3, 2), QString());
}

struct WriteRow
{
    const char* name;
    std::function<void(Graph&)> write;
    bool pictureStale;
    bool statisticsStale;
};

class WriteRulesTest : public GraphTest, public testing::WithParamInterface<WriteRow>
{
};

TEST_P(WriteRulesTest, SetsTheStaleFlagsItShould)
{
    Graph graph;
    graph.GraphTitle(u"Fruit"_s);
    graph.Data(0, 0, u"Apples"_s);
    graph.Data(0, 1, u"12"_s);
    graph.hMF(); // brings the statistics and the picture up to date
    GetParam().write(graph);
    EXPECT_EQ(graph.PictureStale(), GetParam().pictureStale);
    EXPECT_EQ(graph.StatisticsStale(), GetParam().statisticsStale);
}

// A change that shows marks the picture, and one that moves the numbers the statistics; an
// unchanged document is the document's test (GraphDocumentTest).
INSTANTIATE_TEST_SUITE_P(Graph, WriteRulesTest,
    testing::Values(
        WriteRow { "NewTitle", [](Graph& g) { g.GraphTitle(u"Fruits"_s); }, true, false },
        WriteRow { "NewType", [](Graph& g) { g.GraphType(1); }, true, false },
        WriteRow { "NewBarType", [](Graph& g) { g.BarChartType(2); }, true, false },
        WriteRow { "LegendAlwaysStale", [](Graph& g) { g.DisplayLegend(false); }, true, false },
        WriteRow { "AxisLabel", [](Graph& g) { g.VerticalAxisLabel(u"Count"_s); }, true, false },
        WriteRow {
            "CellInOtherCaseIsAChange", [](Graph& g) { g.Data(0, 0, u"APPLES"_s); }, true, true },
        WriteRow { "NewSeriesCount", [](Graph& g) { g.NumberOfDataSeries(2); }, true, true },
        WriteRow { "SortMarksOnlyThePicture", [](Graph& g) { g.SortGraph(0); }, true, false },
        WriteRow { "SortOutOfRangeDoesNothing", [](Graph& g) { g.SortGraph(5); }, false, false }),
    [](const testing::TestParamInfo<WriteRow>& info) { return info.param.name; });

TEST_F(GraphTest, ThreeDOptionFollowsTheGraphType)
{
    Graph graph;
    graph.Graph3D(true);
    EXPECT_TRUE(graph.Graph3D());
    graph.GraphType(Graph::PieChart);
    EXPECT_TRUE(graph.Graph3D());
    graph.GraphType(Graph::LineGraph);
    EXPECT_FALSE(graph.Graph3D());
    EXPECT_FALSE(graph.CanBe3D());
    graph.Graph3D(true);
    EXPECT_FALSE(graph.Graph3D());
    graph.GraphType(Graph::Scattergram);
    graph.Graph3D(true);
    EXPECT_FALSE(graph.Graph3D());
}

TEST_F(GraphTest, NonIntegerValuesAreNoted)
{
    Graph graph;
    graph.Data(0, 1, u"12"_s);
    graph.Data(1, 1, u"Apples"_s);
    EXPECT_FALSE(graph.HasNonIntegerData());
    graph.Data(2, 1, u"2.5"_s);
    EXPECT_TRUE(graph.HasNonIntegerData());
    graph.Data(2, 1, QString());
    EXPECT_TRUE(graph.HasNonIntegerData()) << "once noted, it stays";
}

struct IndexRow
{
    const char* name;
    std::function<void(Graph&)> access;
};

class IndexTest : public GraphTest, public testing::WithParamInterface<IndexRow>
{
};

TEST_P(IndexTest, IsRefusedWithError9AndChangesNothing)
{
    Graph graph;
    graph.hMF(); // brings the statistics and the picture up to date
    try {
        GetParam().access(graph);
        FAIL() << "no error";
    } catch (const Runtime::Error& error) {
        EXPECT_EQ(error.number(), 9);
    }
    EXPECT_FALSE(graph.PictureStale());
    EXPECT_FALSE(graph.StatisticsStale());
}

INSTANTIATE_TEST_SUITE_P(Graph, IndexTest,
    testing::Values(IndexRow { "RowBelow", [](Graph& g) { g.Data(-1, 0, u"x"_s); } },
        IndexRow { "RowAbove", [](Graph& g) { g.Data(256, 0, u"x"_s); } },
        IndexRow { "ColumnAbove", [](Graph& g) { g.Data(0, 5, u"x"_s); } },
        IndexRow { "SeriesZero", [](Graph& g) { g.DataSeriesLabel(0, u"x"_s); } }),
    [](const testing::TestParamInfo<IndexRow>& info) { return info.param.name; });

TEST_F(GraphTest, ItemsCountRowsWithAnyCellAndSkipGaps)
{
    Graph graph;
    graph.Data(0, 0, u"Apples"_s);
    graph.Data(5, 3, u"7"_s);
    graph.Data(255, 4, u"1"_s);
    EXPECT_EQ(graph.NoOfItems(), 3);
    EXPECT_TRUE(graph.GraphHasData());
    EXPECT_FALSE(graph.StatisticsStale());
}

TEST_F(GraphTest, RangesIncludeZeroUnlessEveryRowIsFilled)
{
    Graph graph;
    graph.Data(0, 1, u"12"_s);
    graph.Data(1, 1, u"7"_s);
    graph.Data(1, 3, u"-4"_s);
    graph.Data(0, 2, u"30"_s);
    graph.RecalculateStatistics();
    EXPECT_EQ(graph.ColumnMinimum[1], -4) << "entry 1 spans all series";
    EXPECT_EQ(graph.ColumnMaximum[1], 30);
    EXPECT_EQ(graph.ColumnMinimum[2], 0) << "empty rows fold in zero";
    EXPECT_EQ(graph.ColumnMaximum[3], 0);
}

TEST_F(GraphTest, NumericCategoriesMakeAnXYPlotWithOneSeries)
{
    Graph graph;
    graph.NumberOfDataSeries(3);
    Fill(graph, { { u"1990"_s, u"5"_s }, { u"1991"_s, u"8"_s } });
    EXPECT_TRUE(graph.XYPlot());
    EXPECT_EQ(graph.NumberOfDataSeries(), 1);
    graph.Data(0, 0, u"Spring"_s);
    graph.Data(1, 0, u"Summer"_s);
    EXPECT_FALSE(graph.XYPlot());
}

TEST_F(GraphTest, PlotTypeHandlerSeesCurrentStatistics)
{
    Graph graph;
    Fill(graph, { { u"1"_s, u"2"_s }, { u"2"_s, u"4"_s } });
    int itemsSeen = -1;
    QObject::connect(&graph, &Graph::PlotTypeChanged, [&] { itemsSeen = graph.NoOfItems(); });
    EXPECT_TRUE(graph.GraphHasData());
    EXPECT_EQ(itemsSeen, 2);
}

class RegressionTest : public RowFile::RowTest<GraphTest>
{
};

TEST_P(RegressionTest, GivesTheLeastSquaresLine)
{
    Graph graph;
    int r = 0;
    for (const QString& point : row().list("points")) {
        const QStringList xy = point.split(u' ');
        graph.Data(r, 0, point == u"-" ? QString() : xy.value(0));
        graph.Data(r++, 1, point == u"-" ? QString() : xy.value(1));
    }
    graph.RecalculateStatistics();
    ASSERT_EQ(graph.RegressionValid, row().flag("valid"));
    if (!graph.RegressionValid)
        return;
    EXPECT_NEAR(graph.RegressionSlope, row().number("slope"), 1e-12);
    EXPECT_NEAR(graph.RegressionIntercept, row().number("intercept"), 1e-12);
    EXPECT_NEAR(graph.CorrelationCoefficient, row().number("correlation"), 1e-12);
}

INSTANTIATE_TEST_SUITE_P(
    Graph, RegressionTest, RowFile::In("graph/regression.rows"), RowFile::Named());

class SortTest : public RowFile::RowTest<GraphTest>
{
};

TEST_P(SortTest, OrdersRowsAndRestores)
{
    const int column = int(row().whole("column"));
    const QStringList before = row().list("before");
    Graph graph;
    for (int r = 0; r < before.size(); ++r) {
        graph.Data(r, column, before[r]);
        graph.Data(r, 4, QString::number(r)); // travels with its row
    }
    graph.SortGraph(column);
    QStringList sorted;
    for (int r = 0; r < before.size(); ++r) {
        sorted << graph.Data(r, column);
        EXPECT_EQ(graph.Data(r, 4).toInt(), graph.OriginalRowOrder[std::size_t(r)]);
    }
    EXPECT_EQ(sorted.join(u", ").toStdString(), row().text("after").toStdString());
    graph.SortGraph(-1);
    for (int r = 0; r < before.size(); ++r)
        EXPECT_EQ(graph.Data(r, column), before[r]) << "restored row " << r;
}

INSTANTIATE_TEST_SUITE_P(Graph, SortTest, RowFile::In("graph/sort.rows"), RowFile::Named());

TEST_F(GraphTest, ExportedPictureLooksLikeTheGraph)
{
    Graph graph;
    graph.GraphTitle(u"Fruit"_s);
    graph.Data(0, 0, u"Apples"_s);
    graph.Data(0, 1, u"12"_s);
    graph.Data(1, 0, u"Pears"_s);
    graph.Data(1, 1, u"7"_s);
    QTemporaryDir folder;
    const QString path = folder.filePath(u"fruit.emf"_s);
    ASSERT_EQ(graph.ExportGraph(path), QString());
    const Emf::Picture exported = Emf::Picture::fromFile(path);
    ASSERT_TRUE(exported.isValid()) << exported.errorText().toStdString();
    const QSize size(graph.Width(), graph.Height());
    const QImage copy = Emf::RenderPicture(exported, size);
    const QImage original = Emf::RenderPicture(*graph.hMF(), size);
    // Playing into a recording turns the mapping into a world transform, so text and line
    // edges may be smoothed a little differently; no pixel may change colour.
    int differing = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const QColor a = copy.pixelColor(x, y);
            const QColor b = original.pixelColor(x, y);
            const int difference = std::max({ std::abs(a.red() - b.red()),
                std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue()) });
            differing += difference > 96;
        }
    EXPECT_EQ(differing, 0);
}

} // namespace
