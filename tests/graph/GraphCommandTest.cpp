#include "graph/GraphCommand.h"

#include "frame/FrameSettings.h"
#include "graph/Graph.h"
#include "platform/emf/Picture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

class GraphCommandTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::Settings().ColourTable = { { u"RED"_s, 255 }, { u"LIGHT BLUE"_s, 16760960 } };
        ASSERT_TRUE(m_folder.isValid());
    }
    void TearDown() override { Frame::Settings() = {}; }

    QString Path(const QString& name) const { return m_folder.filePath(name); }

    void Write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    static QByteArray Read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    int Run(QStringList arguments)
    {
        m_out.clear();
        m_err.clear();
        QTextStream out(&m_out);
        QTextStream err(&m_err);
        return Ormsey::RunGraphCommand(arguments, out, err);
    }

    QTemporaryDir m_folder;
    QString m_out;
    QString m_err;
};

const QByteArray Pets = "Year,Cats,Dogs,Fish\r\n"
                        "2021,4,6,2\r\n"
                        "2022,5,\"7\",1\r\n"
                        "\r\n"
                        "2023,3,8,\r\n";

TEST_F(GraphCommandTest, RecognisesItsVerb)
{
    EXPECT_TRUE(Ormsey::IsGraphCommand({ u"graph"_s, u"convert"_s }));
    EXPECT_FALSE(Ormsey::IsGraphCommand({ u"sheet"_s }));
    EXPECT_FALSE(Ormsey::IsGraphCommand({}));
}

TEST_F(GraphCommandTest, CsvWithHeadingRowFillsLabelsSeriesAndRows)
{
    Write(u"pets.csv"_s, Pets);
    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, Path(u"pets.csv"_s), Path(u"pets.qnp"_s),
                  u"--title"_s, u"Pets by year"_s, u"--legend"_s }),
        0)
        << m_err.toStdString();
    Graph graph;
    graph.LoadGraphData(Path(u"pets.qnp"_s));
    EXPECT_EQ(graph.GraphTitle(), u"Pets by year"_s);
    EXPECT_EQ(graph.HorizontalAxisLabel(), u"Year"_s);
    EXPECT_EQ(graph.DataSeriesLabel(2), u"Dogs"_s);
    EXPECT_TRUE(graph.DisplayLegend());
    EXPECT_EQ(graph.NoOfItems(), 3) << "the blank line is dropped";
    EXPECT_EQ(graph.Data(1, 2), u"7"_s);
    EXPECT_EQ(graph.Data(2, 0), u"2023"_s);
    EXPECT_EQ(graph.Data(2, 3), QString());
}

TEST_F(GraphCommandTest, CsvWithoutHeadingKeepsDefaultLabels)
{
    Write(u"fruit.csv"_s, "Apples,12\nPears,7\n\"Plums, red\",3\n");
    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, Path(u"fruit.csv"_s), Path(u"fruit.qnp"_s) }), 0);
    const QByteArray bytes = Read(Path(u"fruit.qnp"_s));
    EXPECT_TRUE(bytes.endsWith("NumberOfDataSeries = 1\r\nDataSeries1 = Series 1\r\n"
                               "Row1 = \"Apples\",\"12\"\r\nRow2 = \"Pears\",\"7\"\r\n"
                               "Row3 = \"Plums, red\",\"3\"\r\n"))
        << bytes.toStdString();
}

TEST_F(GraphCommandTest, QnpToQnpKeepsEveryByte)
{
    Write(u"pets.csv"_s, Pets);
    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, Path(u"pets.csv"_s), Path(u"a.qnp"_s), u"--type"_s,
                  u"pie"_s, u"--3d"_s, u"--no-colour"_s }),
        0);
    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, Path(u"a.qnp"_s), Path(u"b.qnp"_s) }), 0);
    const QByteArray first = Read(Path(u"a.qnp"_s));
    EXPECT_TRUE(first.contains("GraphType = PieChart\r\n3D") || first.contains("3D = True"));
    EXPECT_TRUE(first.contains("UseColour = False"));
    EXPECT_EQ(Read(Path(u"b.qnp"_s)), first);
}

TEST_F(GraphCommandTest, OptionsChooseTypeAndBars)
{
    Write(u"fruit.csv"_s, "Apples,12\n");
    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, Path(u"fruit.csv"_s), Path(u"f.qnp"_s), u"--type"_s,
                  u"line"_s, u"--3d"_s, u"--bar"_s, u"histogram"_s }),
        0);
    const QByteArray bytes = Read(Path(u"f.qnp"_s));
    EXPECT_TRUE(bytes.contains("GraphType = LineGraph\r\n"));
    EXPECT_TRUE(bytes.contains("BarType = Histogram\r\n"));
    EXPECT_TRUE(bytes.contains("3D = False\r\n")) << "a line graph is never 3D";
}

TEST_F(GraphCommandTest, PicturesAreWrittenInEachFormat)
{
    Write(u"fruit.csv"_s, "Fruit,Pupils\nApples,12\nPears,7\n");
    const QString input = Path(u"fruit.csv"_s);
    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, input, Path(u"f.emf"_s) }), 0) << m_err.toStdString();
    EXPECT_TRUE(Emf::Picture::fromFile(Path(u"f.emf"_s)).isValid());

    ASSERT_EQ(
        Run({ u"graph"_s, u"convert"_s, input, Path(u"f.png"_s), u"--width"_s, u"800"_s }), 0);
    const QImage image(Path(u"f.png"_s));
    EXPECT_EQ(image.width(), 800);
    EXPECT_GT(image.height(), 0);

    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, input, Path(u"f.svg"_s) }), 0);
    EXPECT_TRUE(Read(Path(u"f.svg"_s)).contains("<svg"));

    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, input, Path(u"f.pdf"_s) }), 0);
    EXPECT_TRUE(Read(Path(u"f.pdf"_s)).startsWith("%PDF-"));
}

struct FailureRow
{
    const char* name;
    QStringList arguments; // after "graph convert"; "@" stands for the folder
    int status;
};

class CommandFailureTest : public GraphCommandTest, public testing::WithParamInterface<FailureRow>
{
};

TEST_P(CommandFailureTest, ExitsWithAStatusAndOneMessage)
{
    Write(u"ok.csv"_s, "a,1\n");
    Write(u"empty.csv"_s, "\n\n");
    Write(u"bad.qnp"_s, "[Ormsey Data File]\nRow1 = \"a\",\"1\",\"2\",\"3\",\"4\",\"5\"\n");
    QStringList arguments { u"graph"_s, u"convert"_s };
    for (const QString& argument : GetParam().arguments)
        arguments << QString(argument).replace(u'@', m_folder.path());
    EXPECT_EQ(Run(arguments), GetParam().status);
    EXPECT_FALSE(m_err.isEmpty());
    EXPECT_EQ(m_err.count(u'\n'), 1) << m_err.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Graph, CommandFailureTest,
    testing::Values(FailureRow { "MissingInput", { u"@/none.csv"_s, u"@/out.qnp"_s }, 1 },
        FailureRow { "MissingGraphFile", { u"@/none.qnp"_s, u"@/out.qnp"_s }, 1 },
        FailureRow { "DamagedGraphFile", { u"@/bad.qnp"_s, u"@/out.qnp"_s }, 1 },
        FailureRow { "EmptyCsv", { u"@/empty.csv"_s, u"@/out.qnp"_s }, 1 },
        FailureRow { "UnknownInputKind", { u"@/ok.txt"_s, u"@/out.qnp"_s }, 1 },
        FailureRow { "UnwritableOutput", { u"@/ok.csv"_s, u"@/no/such/folder/out.qnp"_s }, 1 },
        FailureRow { "OneFile", { u"@/ok.csv"_s }, 64 },
        FailureRow { "UnknownOutputKind", { u"@/ok.csv"_s, u"@/out.doc"_s }, 64 },
        FailureRow { "UnknownType", { u"@/ok.csv"_s, u"@/o.qnp"_s, u"--type"_s, u"donut"_s }, 64 },
        FailureRow { "WidthNotANumber", { u"@/ok.csv"_s, u"@/o.png"_s, u"--width"_s, u"x"_s }, 64 },
        FailureRow { "WidthWithoutValue", { u"@/ok.csv"_s, u"@/o.png"_s, u"--width"_s }, 64 },
        FailureRow { "UnknownOption", { u"@/ok.csv"_s, u"@/o.qnp"_s, u"--fast"_s }, 64 }),
    [](const testing::TestParamInfo<FailureRow>& info) { return info.param.name; });

struct ExampleRow
{
    const char* name;
    QString source;
    int items;
    int series;
    bool xy;
};

class ExampleTest : public GraphCommandTest, public testing::WithParamInterface<ExampleRow>
{
};

// The example sources that the build turns into graph files.
TEST_P(ExampleTest, ConvertsToTheGraphItShows)
{
    // Not found through __FILE__: a shared compiler cache may make that path
    // relative to another checkout.
    const QString source = QStringLiteral(QUORBIN_EXAMPLES_DIR "/graph/") + GetParam().source;
    ASSERT_EQ(Run({ u"graph"_s, u"convert"_s, source, Path(u"e.qnp"_s) }), 0)
        << m_err.toStdString();
    Graph graph;
    graph.LoadGraphData(Path(u"e.qnp"_s));
    EXPECT_EQ(graph.NoOfItems(), GetParam().items);
    EXPECT_EQ(graph.NumberOfDataSeries(), GetParam().series);
    EXPECT_EQ(graph.XYPlot(), GetParam().xy);
}

INSTANTIATE_TEST_SUITE_P(Graph, ExampleTest,
    testing::Values(ExampleRow { "FavouriteFruit", u"fruit.csv"_s, 6, 1, false },
        ExampleRow { "PetsBySchoolYear", u"pets.csv"_s, 4, 3, false },
        ExampleRow { "ArmSpans", u"arms.csv"_s, 12, 1, true }),
    [](const testing::TestParamInfo<ExampleRow>& info) { return info.param.name; });

TEST_F(GraphCommandTest, UnknownSubcommandIsAUsageError)
{
    EXPECT_EQ(Run({ u"graph"_s, u"draw"_s }), 64);
    EXPECT_TRUE(m_err.startsWith(u"usage: quorbin-cli graph convert"_s));
}

} // namespace
