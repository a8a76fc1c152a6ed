#include "RowFile.h"
#include "VerbTestSupport.h"
#include "graph/Graph.h"
#include "platform/emf/Picture.h"

#include <QImage>

using namespace Qt::Literals::StringLiterals;
using CliTest::RunCli;

namespace {

using GraphVerbs = CliTest::VerbTest;

const QString separator = QStringLiteral(" | ");

class GraphOptions : public RowFile::RowTest<GraphVerbs>
{
};

TEST_P(GraphOptions, AreWrittenToTheGraphFile)
{
    const QString csv = write(u"fruit.csv"_s, "Apples,12\nPears,7\n");
    const QString qnp = path(u"fruit.qnp"_s);
    const CliTest::Outcome outcome = RunCli(
        QStringList { u"graph"_s, u"convert"_s, csv, qnp } + row().list("options", separator));
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QByteArray bytes = read(qnp);
    for (const QString& line : row().list("lines", separator))
        EXPECT_TRUE(bytes.contains(line.toUtf8() + "\r\n")) << line.toStdString() << " in\n"
                                                            << bytes.toStdString();

    // Read back and written again, the graph file keeps every byte.
    ASSERT_EQ(RunCli({ u"graph"_s, u"convert"_s, qnp, path(u"copy.qnp"_s) }).status, 0);
    EXPECT_EQ(read(path(u"copy.qnp"_s)), bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphOptions, RowFile::In("app/graphOptions.rows"), RowFile::Named());

class GraphPictures : public RowFile::RowTest<GraphVerbs>
{
};

TEST_P(GraphPictures, AreWrittenInTheKindTheNameSays)
{
    const QString csv = write(u"fruit.csv"_s, "Fruit,Pupils\nApples,12\nPears,7\n");
    const QString picture = path(row().text("output"));
    const CliTest::Outcome outcome = RunCli(
        QStringList { u"graph"_s, u"convert"_s, csv, picture } + row().list("options", separator));
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.isEmpty());
    EXPECT_TRUE(read(picture).first(64).contains(row().bytes("mark")));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphPictures, RowFile::In("app/graphPictures.rows"), RowFile::Named());

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

class GraphExamples : public RowFile::RowTest<GraphVerbs>
{
};

// The example sources that the build turns into graph files.
TEST_P(GraphExamples, ConvertToTheGraphTheyShow)
{
    // Not found through __FILE__: a shared compiler cache may make that path
    // relative to another checkout.
    const QString source = QStringLiteral(QUORBIN_EXAMPLES_DIR "/graph/") + row().text("source");
    const CliTest::Outcome outcome = RunCli({ u"graph"_s, u"convert"_s, source, path(u"e.qnp"_s) });
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    Ormsey::Graph graph;
    graph.LoadGraphDataBytes(read(path(u"e.qnp"_s)));
    EXPECT_EQ(graph.NoOfItems(), row().whole("items"));
    EXPECT_EQ(graph.NumberOfDataSeries(), row().whole("series"));
    EXPECT_EQ(graph.XYPlot(), row().flag("xy"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphExamples, RowFile::In("app/graphExamples.rows"), RowFile::Named());

} // namespace
