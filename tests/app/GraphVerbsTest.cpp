#include "VerbTestSupport.h"
#include "graph/Graph.h"
#include "platform/emf/Picture.h"

#include <QImage>

using namespace Qt::Literals::StringLiterals;
using CliTest::RunCli;

namespace {

using GraphVerbs = CliTest::VerbTest;

struct OptionRow
{
    const char* name;
    QStringList options;
    QList<QByteArray> lines; // each found in the graph file written
};

class GraphOptions : public GraphVerbs, public testing::WithParamInterface<OptionRow>
{
};

TEST_P(GraphOptions, AreWrittenToTheGraphFile)
{
    const QString csv = write(u"fruit.csv"_s, "Apples,12\nPears,7\n");
    const QString qnp = path(u"fruit.qnp"_s);
    const CliTest::Outcome outcome
        = RunCli(QStringList { u"graph"_s, u"convert"_s, csv, qnp } + GetParam().options);
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QByteArray bytes = read(qnp);
    for (const QByteArray& line : GetParam().lines)
        EXPECT_TRUE(bytes.contains(line)) << line.toStdString() << " in\n" << bytes.toStdString();

    // Read back and written again, the graph file keeps every byte.
    ASSERT_EQ(RunCli({ u"graph"_s, u"convert"_s, qnp, path(u"copy.qnp"_s) }).status, 0);
    EXPECT_EQ(read(path(u"copy.qnp"_s)), bytes);
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphOptions,
    testing::Values(OptionRow { "none", {},
                        { "GraphType = BarChart\r\n", "NumberOfDataSeries = 1\r\n",
                            "Row1 = \"Apples\",\"12\"\r\nRow2 = \"Pears\",\"7\"\r\n" } },
        OptionRow { "titleAndLegend", { u"--title"_s, u"Pets by year"_s, u"--legend"_s },
            { "GraphTitle = Pets by year\r\n", "DisplayLegend = True\r\n" } },
        OptionRow { "pieIn3DWithoutColour", { u"--type"_s, u"pie"_s, u"--3d"_s, u"--no-colour"_s },
            { "GraphType = PieChart\r\n", "3D = True\r\n", "UseColour = False\r\n" } },
        OptionRow { "lineGraphIsNever3D",
            { u"--type"_s, u"line"_s, u"--3d"_s, u"--bar"_s, u"histogram"_s },
            { "GraphType = LineGraph\r\n", "BarType = Histogram\r\n", "3D = False\r\n" } }),
    [](const testing::TestParamInfo<OptionRow>& info) { return std::string(info.param.name); });

struct PictureRow
{
    const char* name;
    QString output;
    QStringList options;
    QByteArray mark; // found in the first bytes of the file
};

class GraphPictures : public GraphVerbs, public testing::WithParamInterface<PictureRow>
{
};

TEST_P(GraphPictures, AreWrittenInTheKindTheNameSays)
{
    const QString csv = write(u"fruit.csv"_s, "Fruit,Pupils\nApples,12\nPears,7\n");
    const QString picture = path(GetParam().output);
    const CliTest::Outcome outcome
        = RunCli(QStringList { u"graph"_s, u"convert"_s, csv, picture } + GetParam().options);
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty());
    EXPECT_TRUE(read(picture).first(64).contains(GetParam().mark));
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphPictures,
    testing::Values(PictureRow { "emf", u"f.emf"_s, {}, " EMF" },
        PictureRow { "png", u"f.png"_s, {}, "\x89PNG" },
        PictureRow { "svg", u"f.svg"_s, {}, "<svg" }, PictureRow { "pdf", u"f.PDF"_s, {}, "%PDF-" },
        PictureRow { "formatOverTheName", u"f.out"_s, { u"--format"_s, u"pdf"_s }, "%PDF-" }),
    [](const testing::TestParamInfo<PictureRow>& info) { return std::string(info.param.name); });

TEST_F(GraphVerbs, PicturesAreWholeAndPngTakesTheWidth)
{
    const QString csv = write(u"fruit.csv"_s, "Fruit,Pupils\nApples,12\nPears,7\n");
    ASSERT_EQ(RunCli({ u"graph"_s, u"convert"_s, csv, path(u"f.emf"_s) }).status, 0);
    EXPECT_TRUE(Emf::Picture::fromFile(path(u"f.emf"_s)).isValid());
    ASSERT_EQ(
        RunCli({ u"graph"_s, u"convert"_s, csv, path(u"f.png"_s), u"--width"_s, u"800"_s }).status,
        0);
    const QImage image(path(u"f.png"_s));
    EXPECT_EQ(image.width(), 800);
    EXPECT_GT(image.height(), 0);
}

struct ExampleRow
{
    const char* name;
    QString source;
    int items;
    int series;
    bool xy;
};

class GraphExamples : public GraphVerbs, public testing::WithParamInterface<ExampleRow>
{
};

// The example sources that the build turns into graph files.
TEST_P(GraphExamples, ConvertToTheGraphTheyShow)
{
    // Not found through __FILE__: a shared compiler cache may make that path
    // relative to another checkout.
    const QString source = QStringLiteral(QUORBIN_EXAMPLES_DIR "/graph/") + GetParam().source;
    const CliTest::Outcome outcome = RunCli({ u"graph"_s, u"convert"_s, source, path(u"e.qnp"_s) });
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    Ormsey::Graph graph;
    graph.LoadGraphData(path(u"e.qnp"_s));
    EXPECT_EQ(graph.NoOfItems(), GetParam().items);
    EXPECT_EQ(graph.NumberOfDataSeries(), GetParam().series);
    EXPECT_EQ(graph.XYPlot(), GetParam().xy);
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphExamples,
    testing::Values(ExampleRow { "favouriteFruit", u"fruit.csv"_s, 6, 1, false },
        ExampleRow { "petsBySchoolYear", u"pets.csv"_s, 4, 3, false },
        ExampleRow { "armSpans", u"arms.csv"_s, 12, 1, true }),
    [](const testing::TestParamInfo<ExampleRow>& info) { return std::string(info.param.name); });

} // namespace
