#include "GoldenFile.h"
#include "RowFile.h"
#include "TableRows.h"
#include "frame/FrameSettings.h"
#include "graph/Graph.h"
#include "platform/io/SaveFaults.h"
#include "platform/runtime/Error.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <map>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

using TestRows::PrintTo;

void FillFruit(Graph& graph)
{
    graph.Data(0, 0, u"Apples"_s);
    graph.Data(0, 1, u"12"_s);
    graph.Data(1, 0, u"Pears"_s);
    graph.Data(1, 1, u"7"_s);
}

class GraphFileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::Settings().ColourTable = { { u"RED"_s, 255 }, { u"LIGHT BLUE"_s, 16760960 } };
    }
    void TearDown() override { Frame::Settings() = {}; }

    static QByteArray ReadFile(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
};

// Saved files, compared with tests/data/graph/file/<row name>.qnp, then loaded back and saved
// again: with the bytes pinned, the same bytes again mean every field was read back.
struct SavedFileRow
{
    const char* name;
    std::function<void(Graph&)> fill;
};

class SavedFiles : public GraphFileTest, public testing::WithParamInterface<SavedFileRow>
{
};

TEST_P(SavedFiles, AreTheGoldenBytesAndLoadBackUnchanged)
{
    Graph graph;
    GetParam().fill(graph);
    const QByteArray bytes = graph.GraphDataBytes();
    EXPECT_TRUE(
        Golden::Matches(u"graph/file/%1.qnp"_s.arg(QString::fromLatin1(GetParam().name)), bytes));
    Graph loaded;
    loaded.LoadGraphDataBytes(bytes);
    EXPECT_EQ(loaded.GraphDataBytes(), bytes);
}

INSTANTIATE_TEST_SUITE_P(Graph, SavedFiles,
    testing::Values(
        // The options of a new graph, one series, "Row1 = "Apples","12"" and "Row2".
        SavedFileRow { "newGraphWithTwoRows", [](Graph& g) { FillFruit(g); } },
        // Every option off its default: "PieStartingAngle =-30", "Minimum Value1 =  .5",
        // "Maximum Value0 =  1E+20", "HistogramColour = &HFFFFFFFF", three series labels, and
        // rows of columns 0..3 only.
        SavedFileRow { "everyOptionHasItsSpelling",
            [](Graph& g) {
                g.GraphTitle(u"Pets by year"_s);
                g.HorizontalAxisLabel(u"Year"_s);
                g.VerticalAxisLabel(u"Pets"_s);
                g.GraphType(Graph::PieChart);
                g.Graph3D(true);
                g.BarChartType(Graph::Histogram);
                g.JoinPoints = true;
                g.AutoScale = false;
                g.UseColour = false;
                g.DisplayLegend(true);
                g.DisplayLineOfBestFit(true);
                g.DisplayCorrelation(true);
                g.PieLabels = Graph::LabelsAndPercentages;
                g.PieStartingAngle = -30;
                g.PieElevation3D = 0;
                g.PieRotation3D = 15;
                g.PointType = Graph::NoPoint;
                g.BackgroundColour3D = 0xC0C0C0;
                g.HistogramColour = -1;
                g.AxisMinimum = { -2.5, 0.5 };
                g.AxisMaximum = { 1e20, 100 };
                g.GraphFont(u"Liberation Serif"_s);
                g.NumberOfDataSeries(3);
                g.DataSeriesLabel(2, u"Dogs"_s);
                g.Data(0, 0, u"Pears"_s);
                g.Data(0, 1, u"7"_s);
                g.Data(0, 3, u"3"_s);
                g.Data(0, 4, u"not written"_s);
                g.Data(4, 2, u"1"_s);
                g.Data(9, 4, u"only beyond the count"_s);
            } },
        // The title's line break becomes two blanks, so it cannot start a line of its own;
        // "Größe" and "café" in UTF-8.
        SavedFileRow { "textsAreWrittenAsUtf8AndLineBreaksBecomeBlanks",
            [](Graph& g) {
                g.GraphTitle(u"Größe\r\nRow1 = \"x\""_s);
                g.Data(0, 0, u"café"_s);
                g.Data(0, 1, u"1"_s);
            } },
        SavedFileRow { "gaps",
            [](Graph& g) {
                g.Data(0, 0, u"a"_s);
                g.Data(5, 1, u"5"_s);
                g.Data(255, 0, u"last"_s);
            } },
        SavedFileRow { "quotesInsideCells",
            [](Graph& g) {
                g.Data(0, 0, u"say \"hi\""_s);
                g.Data(0, 1, u"\"12"_s);
            } },
        SavedFileRow { "blanksInsideRowFields",
            [](Graph& g) {
                g.Data(0, 0, u" padded "_s);
                g.Data(0, 1, u"3"_s);
            } },
        SavedFileRow { "fourSeries",
            [](Graph& g) {
                g.NumberOfDataSeries(4);
                for (int c = 0; c < 5; ++c)
                    g.Data(2, c, QString::number(c * 1.5));
                g.DataSeriesLabel(4, u"Fourth"_s);
            } },
        SavedFileRow { "scattergramOptions",
            [](Graph& g) {
                g.GraphType(Graph::Scattergram);
                g.PointType = Graph::Circle;
                g.AxisMinimum = { -1e-7, 3.25 };
                g.AxisMaximum = { 123456789012345.0, -0.5 };
                g.DisplayLineOfBestFit(true);
                g.Data(0, 0, u"140"_s);
                g.Data(0, 1, u"138"_s);
            } },
        SavedFileRow { "pieOptions",
            [](Graph& g) {
                g.GraphType(Graph::PieChart);
                g.Graph3D(true);
                g.PieLabels = Graph::NoLabels;
                g.PieStartingAngle = -90;
                g.PieElevation3D = 30;
                g.PieRotation3D = -15;
                g.UseColour = false;
                g.Data(0, 0, u"Cats"_s);
                g.Data(0, 1, u"4"_s);
            } }),
    TestRows::Named());

// A field of a graph as text, by the name a reading row gives it.
QString Field(Graph& g, const QString& name)
{
    const QStringList words = name.split(u' ');
    const auto cell = [&](const QString& at) {
        return g.Data(at.section(u',', 0, 0).toInt(), at.section(u',', 1, 1).toInt());
    };
    if (words[0] == u"cell" || words[0] == u"cells") {
        QStringList cells;
        for (const QString& at : words.mid(1))
            cells << cell(at);
        return cells.join(u'|');
    }
    if (words[0] == u"series")
        return g.DataSeriesLabel(words[1].toInt());
    const std::map<QString, std::function<double()>> numbers {
        { u"GraphType"_s, [&] { return g.GraphType(); } },
        { u"BarType"_s, [&] { return g.BarChartType(); } },
        { u"PieLabels"_s, [&] { return g.PieLabels; } },
        { u"PointType"_s, [&] { return g.PointType; } },
        { u"3D"_s, [&] { return g.Graph3D(); } },
        { u"UseColour"_s, [&] { return g.UseColour; } },
        { u"AutoScale"_s, [&] { return g.AutoScale; } },
        { u"PieStartingAngle"_s, [&] { return g.PieStartingAngle; } },
        { u"3DPieElevation"_s, [&] { return g.PieElevation3D; } },
        { u"3DBackgroundColour"_s, [&] { return g.BackgroundColour3D; } },
        { u"HistogramColour"_s, [&] { return g.HistogramColour; } },
        { u"NumberOfDataSeries"_s, [&] { return g.NumberOfDataSeries(); } },
        { u"nonInteger"_s, [&] { return g.HasNonIntegerData(); } },
    };
    if (const auto number = numbers.find(name); number != numbers.end())
        return QString::number(number->second(), 'g', 10);
    return name == u"GraphTitle" ? g.GraphTitle()
        : name == u"Label1"      ? g.HorizontalAxisLabel()
                                 : u"no field "_s + name;
}

class Reading : public RowFile::RowTest<GraphFileTest>
{
};

TEST_P(Reading, FollowsTheProfileRules)
{
    Graph graph;
    graph.LoadGraphDataBytes("[Ormsey Data File]\r\n" + row().bytes("lines"));
    EXPECT_EQ(Field(graph, row().text("field")), row().text("expected"));
}

INSTANTIATE_TEST_SUITE_P(Graph, Reading, RowFile::In("graph/file/reading.rows"), RowFile::Named());

TEST_F(GraphFileTest, LongTitleIsCutTo254Characters)
{
    Graph graph;
    const QString title = QString(300, u'T');
    graph.GraphTitle(title);
    Graph loaded;
    loaded.LoadGraphDataBytes(graph.GraphDataBytes());
    EXPECT_EQ(loaded.GraphTitle(), title.left(254));
}

TEST_F(GraphFileTest, FileWithoutTheSectionLoadsAsAnEmptyBarChart)
{
    Graph graph;
    graph.GraphType(Graph::PieChart);
    FillFruit(graph);
    graph.LoadGraphDataBytes("just some text\r\nGraphType = PieChart\r\n");
    EXPECT_EQ(graph.GraphType(), Graph::BarChart);
    EXPECT_FALSE(graph.GraphHasData());
    EXPECT_EQ(graph.GraphFont(), QString());
    EXPECT_TRUE(graph.PictureStale());
}

TEST_F(GraphFileTest, MissingRowEmptiesOnlyTheFirstTwoCells)
{
    Graph graph;
    graph.Data(0, 0, u"a"_s);
    graph.Data(0, 1, u"1"_s);
    graph.Data(0, 2, u"2"_s);
    graph.LoadGraphDataBytes("[Ormsey Data File]\r\n");
    EXPECT_EQ(graph.Data(0, 0), QString());
    EXPECT_EQ(graph.Data(0, 1), QString());
    EXPECT_EQ(graph.Data(0, 2), u"2"_s);
}

TEST_F(GraphFileTest, RowOfSixFieldsIsRefusedKeepingWhatWasRead)
{
    Graph graph;
    try {
        graph.LoadGraphDataBytes("[Ormsey Data File]\r\nGraphTitle = Kept\r\n"
                                 "Row1 = \"a\",\"1\"\r\n"
                                 "Row2 = \"b\",\"1\",\"2\",\"3\",\"4\",\"5\"\r\n"
                                 "Row3 = \"c\",\"1\"\r\n");
        FAIL() << "no error";
    } catch (const Runtime::Error& error) {
        EXPECT_EQ(error.number(), 9);
    }
    EXPECT_EQ(graph.GraphTitle(), u"Kept"_s);
    EXPECT_EQ(graph.Data(0, 0), u"a"_s);
    EXPECT_EQ(graph.Data(1, 4), u"4"_s);
    EXPECT_EQ(graph.Data(2, 0), QString());
}

TEST_F(GraphFileTest, TruncatedFileKeepsTheLinesBeforeTheCut)
{
    Graph graph;
    FillFruit(graph);
    graph.GraphTitle(u"Fruit"_s);
    const QByteArray bytes = graph.GraphDataBytes();
    const qsizetype cut = bytes.indexOf("Row2 = ") + 10; // inside "Pears"
    Graph loaded;
    loaded.LoadGraphDataBytes(bytes.left(cut));
    EXPECT_EQ(loaded.GraphTitle(), u"Fruit"_s);
    EXPECT_EQ(loaded.Data(0, 1), u"12"_s);
    EXPECT_EQ(loaded.Data(1, 0), u"\"Pe"_s) << "without its closing quote the opening one stays";
}

TEST_F(GraphFileTest, HugeNumbersInTheFileAreAnOverflowNotACrash)
{
    Graph graph;
    try {
        graph.LoadGraphDataBytes("[Ormsey Data File]\r\nPieStartingAngle = 40000\r\n");
        FAIL() << "no error";
    } catch (const Runtime::Error& error) {
        EXPECT_EQ(error.number(), Runtime::Error::Overflow);
    }
    graph.LoadGraphDataBytes("[Ormsey Data File]\r\nRow1 = \"a\",\"1E999\"\r\n");
    EXPECT_EQ(graph.Data(0, 1), u"1E999"_s);
    EXPECT_EQ(graph.NoOfItems(), 1) << "an unreadable cell counts as no number";
}

struct FaultRow
{
    const char* name;
    std::function<void()> arm;
};

class SaveFaultTest : public GraphFileTest, public testing::WithParamInterface<FaultRow>
{
};

TEST_P(SaveFaultTest, LeavesThePreviousFileIntact)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"fruit.qnp"_s);
    Graph graph;
    FillFruit(graph);
    ASSERT_EQ(graph.SaveGraphData(path), QString());
    const QByteArray before = ReadFile(path);
    EXPECT_EQ(before, graph.GraphDataBytes());

    graph.GraphTitle(u"Changed"_s);
    Io::SaveFaults::Scope faults;
    GetParam().arm();
    EXPECT_NE(graph.SaveGraphData(path), QString());
    EXPECT_EQ(ReadFile(path), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList { u"fruit.qnp"_s });
}

INSTANTIATE_TEST_SUITE_P(Graph, SaveFaultTest,
    testing::Values(FaultRow { "AtOpen", [] { Io::SaveFaults::failAtOpen(); } },
        FaultRow { "AtWrite", [] { Io::SaveFaults::failAtWrite(1); } },
        FaultRow { "AtCommit", [] { Io::SaveFaults::failAtCommit(); } }),
    [](const testing::TestParamInfo<FaultRow>& info) { return info.param.name; });

} // namespace
