#include "graph/GraphCsv.h"

#include "graph/Graph.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

struct CsvRow
{
    const char* name;
    QByteArray text;
    int series;
    // Cells of the graph after the import, "row,column=text"; every other cell is empty.
    QStringList cells;
    // The horizontal axis label and the series labels after the import.
    QStringList labels = { QString(), u"Series 1"_s, u"Series 2"_s, u"Series 3"_s, u"Series 4"_s };
    QStringList leftOut = {};
};

class GraphCsv : public testing::TestWithParam<CsvRow>
{
};

TEST_P(GraphCsv, FillsTheGraph)
{
    const CsvRow& row = GetParam();
    Graph graph;
    QStringList leftOut;
    ASSERT_EQ(Ormsey::ImportGraphCsvBytes(graph, row.text, u"in.csv"_s, &leftOut), QString());
    EXPECT_EQ(leftOut, row.leftOut);
    EXPECT_EQ(graph.NumberOfDataSeries(), row.series);
    QStringList labels { graph.HorizontalAxisLabel() };
    for (int k = 1; k <= Graph::SeriesCount; ++k)
        labels << graph.DataSeriesLabel(k);
    EXPECT_EQ(labels, row.labels);
    QStringList cells;
    for (int r = 0; r < Graph::RowCount; ++r) {
        for (int c = 0; c < Graph::ColumnCount; ++c) {
            if (!graph.Data(r, c).isEmpty() && cells.size() < 12)
                cells << u"%1,%2=%3"_s.arg(r).arg(c).arg(graph.Data(r, c));
        }
    }
    EXPECT_EQ(cells, row.cells);
}

QByteArray manyRows(int rows)
{
    QByteArray text;
    for (int r = 1; r <= rows; ++r)
        text += "r" + QByteArray::number(r) + "," + QByteArray::number(r) + "\n";
    return text;
}

// A first row is a heading when one of its series cells is text that is not a number. (Numbers
// in the first column would make x-y data, which reads as one series whatever the columns.)
INSTANTIATE_TEST_SUITE_P(Rows, GraphCsv,
    testing::Values(
        CsvRow { "headingRowGivesTheLabels",
            "Class,Cats,Dogs,Fish\r\nOak,4,6,2\r\nAsh,5,\"7\",1\r\n\r\nElm,3,8,\r\n", 3,
            { u"0,0=Oak"_s, u"0,1=4"_s, u"0,2=6"_s, u"0,3=2"_s, u"1,0=Ash"_s, u"1,1=5"_s,
                u"1,2=7"_s, u"1,3=1"_s, u"2,0=Elm"_s, u"2,1=3"_s, u"2,2=8"_s },
            { u"Class"_s, u"Cats"_s, u"Dogs"_s, u"Fish"_s, u"Series 4"_s } },
        CsvRow { "numbersFirstMeanNoHeading", "Apples,12\nPears,7\n", 1,
            { u"0,0=Apples"_s, u"0,1=12"_s, u"1,0=Pears"_s, u"1,1=7"_s } },
        CsvRow { "emptyHeadingCellsKeepTheirLabels", "Name,,Weight\nAnn,2,3\n", 2,
            { u"0,0=Ann"_s, u"0,1=2"_s, u"0,2=3"_s },
            { u"Name"_s, u"Series 1"_s, u"Weight"_s, u"Series 3"_s, u"Series 4"_s } },
        CsvRow { "quotesHoldCommasQuotesAndLineBreaks",
            "\"Plums, red\",3\n\"say \"\"hi\"\"\",4\n\"two\r\nlines\",5\n", 1,
            { u"0,0=Plums, red"_s, u"0,1=3"_s, u"1,0=say \"hi\""_s, u"1,1=4"_s,
                u"2,0=two\r\nlines"_s, u"2,1=5"_s } },
        CsvRow { "blanksAroundCellsAreTrimmed", "  a , 1 \n   \n", 1, { u"0,0=a"_s, u"0,1=1"_s } },
        CsvRow { "windowsBytesAndAMarkAreRead",
            "\xEF\xBB\xBF\xA3"
            "5,1\n",
            1, { u"0,0=£5"_s, u"0,1=1"_s } },
        CsvRow { "pastFourSeriesIsLeftOut", "a,1,2,3,4,5\n", 4,
            { u"0,0=a"_s, u"0,1=1"_s, u"0,2=2"_s, u"0,3=3"_s, u"0,4=4"_s },
            { QString(), u"Series 1"_s, u"Series 2"_s, u"Series 3"_s, u"Series 4"_s },
            { u"Only the first 4 series of in.csv are used."_s } },
        CsvRow { "past256RowsIsLeftOut", manyRows(257), 1,
            { u"0,0=r1"_s, u"0,1=1"_s, u"1,0=r2"_s, u"1,1=2"_s, u"2,0=r3"_s, u"2,1=3"_s,
                u"3,0=r4"_s, u"3,1=4"_s, u"4,0=r5"_s, u"4,1=5"_s, u"5,0=r6"_s, u"5,1=6"_s },
            { QString(), u"Series 1"_s, u"Series 2"_s, u"Series 3"_s, u"Series 4"_s },
            { u"Only the first 256 rows of in.csv are used."_s } }),
    [](const testing::TestParamInfo<CsvRow>& info) { return std::string(info.param.name); });

TEST(GraphCsvFailures, LeaveTheGraphAsItWas)
{
    QTemporaryDir folder;
    Graph graph;
    graph.Data(0, 0, u"kept"_s);
    const QString missing = folder.filePath(u"none.csv"_s);
    EXPECT_TRUE(Ormsey::ImportGraphCsv(graph, missing).startsWith(u"Cannot read "_s + missing));
    EXPECT_EQ(Ormsey::ImportGraphCsvBytes(graph, "\r\n  \n", u"blank.csv"_s),
        u"blank.csv holds no rows."_s);
    EXPECT_EQ(graph.Data(0, 0), u"kept"_s);
}

} // namespace
