#include "graph/PrintPicture.h"

#include "graph/Graph.h"
#include "platform/emf/Picture.h"
#include "platform/emf/RecordTrace.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

// The printed page: the graph, then the data table in the same picture.
class PrintPictureTest : public testing::Test
{
protected:
    void SetUp() override
    {
        graph.Data(0, 0, u"Apples"_s);
        graph.Data(0, 1, u"12"_s);
        graph.Data(1, 0, u"Pears"_s);
        graph.Data(1, 1, u"7"_s);
        graph.Data(3, 0, u"Plums"_s);
        graph.Data(3, 1, u"4.5"_s);
    }

    static QStringList Texts(const Emf::Picture& picture)
    {
        QStringList texts;
        for (const QString& line : Emf::TraceRecords(picture)) {
            const qsizetype quote = line.indexOf(u'"');
            if (line.startsWith(u"EXTTEXTOUTW"_s) && quote > 0)
                texts.append(line.mid(quote + 1, line.size() - quote - 2));
        }
        return texts;
    }

    Graph graph;
};

TEST_F(PrintPictureTest, TableListsEveryRowThatHoldsData)
{
    const Ormsey::PrintTable table = Ormsey::PrintTableOf(graph, u"Fruit"_s, u"Boxes"_s);
    EXPECT_EQ(table.Headings, (QStringList { u"Fruit"_s, u"Boxes"_s }));
    ASSERT_EQ(table.Rows.size(), 3);
    EXPECT_EQ(table.Rows[2], (QStringList { u"Plums"_s, u"4.5"_s }));
}

TEST_F(PrintPictureTest, SeveralSeriesPrintUnderTheirLabels)
{
    graph.NumberOfDataSeries(2);
    graph.DataSeriesLabel(2, u"Crates"_s);
    graph.Data(0, 2, u"1"_s);
    const Ormsey::PrintTable table = Ormsey::PrintTableOf(graph, u"Fruit"_s, u"Boxes"_s);
    EXPECT_EQ(table.Headings, (QStringList { u"Fruit"_s, u"Boxes"_s, u"Crates"_s }));
    EXPECT_EQ(table.Rows[0], (QStringList { u"Apples"_s, u"12"_s, u"1"_s }));
}

TEST_F(PrintPictureTest, PortraitPageHoldsTheGraphAndTheTableBelow)
{
    const Ormsey::PrintTable table = Ormsey::PrintTableOf(graph, u"Fruit"_s, u"Boxes"_s);
    const Ormsey::PrintPicture page = Ormsey::BuildPrintPicture(graph, table, true, false);
    ASSERT_TRUE(page.Picture && page.Picture->isValid());
    EXPECT_EQ(page.Width, graph.Width());
    EXPECT_EQ(page.Height, 2 * graph.Height());
    const QStringList texts = Texts(*page.Picture);
    for (const QString& expected :
        { u"Fruit"_s, u"Boxes"_s, u"Apples"_s, u"12"_s, u"Pears"_s, u"7"_s, u"Plums"_s, u"4.5"_s })
        EXPECT_TRUE(texts.contains(expected)) << expected.toStdString();
    // Once on the graph's axis and once in the table.
    EXPECT_EQ(texts.count(u"Apples"_s), 2);
}

TEST_F(PrintPictureTest, LandscapePageDoublesTheWidth)
{
    const Ormsey::PrintTable table = Ormsey::PrintTableOf(graph, u"Fruit"_s, u"Boxes"_s);
    const Ormsey::PrintPicture page = Ormsey::BuildPrintPicture(graph, table, true, true);
    EXPECT_EQ(page.Width, 2 * graph.Width());
    EXPECT_EQ(page.Height, graph.Height());
    EXPECT_TRUE(Texts(*page.Picture).contains(u"Plums"_s));
}

TEST_F(PrintPictureTest, WithoutDataOnlyTheGraphIsPrinted)
{
    const Ormsey::PrintTable table = Ormsey::PrintTableOf(graph, u"Fruit"_s, u"Boxes"_s);
    const Ormsey::PrintPicture page = Ormsey::BuildPrintPicture(graph, table, false, false);
    EXPECT_EQ(page.Width, graph.Width());
    EXPECT_EQ(page.Height, graph.Height());
    EXPECT_FALSE(Texts(*page.Picture).contains(u"Fruit"_s));
    EXPECT_TRUE(Texts(*page.Picture).contains(u"Pears"_s)); // the graph's own category label
}

// A font dialog offers faces longer than a metafile font holds; the graph is drawn in Arial
// then, and so is its table, instead of stopping the print with error 9.
TEST_F(PrintPictureTest, AFaceTooLongForAMetafileIsPrintedInArialLikeTheGraph)
{
    graph.GraphFont(QString(32, u'F'));
    const Ormsey::PrintTable table = Ormsey::PrintTableOf(graph, u"Fruit"_s, u"Boxes"_s);
    const Ormsey::PrintPicture page = Ormsey::BuildPrintPicture(graph, table, true, false);
    ASSERT_TRUE(page.Picture);
    EXPECT_TRUE(Texts(*page.Picture).contains(u"Plums"_s));
    const QStringList fonts = Emf::TraceRecords(*page.Picture).filter(u"EXTCREATEFONTINDIRECTW"_s);
    ASSERT_FALSE(fonts.isEmpty());
    for (const QString& font : fonts)
        EXPECT_TRUE(font.endsWith(u"face Arial"_s)) << font.toStdString();
}

TEST_F(PrintPictureTest, ALongTableGrowsThePage)
{
    for (int row = 0; row < 120; ++row) {
        graph.Data(row, 0, QString::number(row));
        graph.Data(row, 1, QString::number(row * 2));
    }
    const Ormsey::PrintTable table = Ormsey::PrintTableOf(graph, u"N"_s, u"Twice"_s);
    const Ormsey::PrintPicture page = Ormsey::BuildPrintPicture(graph, table, true, false);
    EXPECT_GE(page.Height, 2 * graph.Height());
    EXPECT_TRUE(Texts(*page.Picture).contains(u"238"_s));
}

} // namespace
