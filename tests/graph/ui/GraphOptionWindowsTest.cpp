#include "graph/ui/GraphOptionWindows.h"

#include "RowFile.h"
#include "frame/FrameSettings.h"
#include "frame/support/ScriptedPrompts.h"
#include "graph/Graph.h"
#include "graph/ui/frmBarChartOptions.h"
#include "graph/ui/frmEditDataSeries.h"
#include "graph/ui/frmGraphTools.h"
#include "graph/ui/frmLineGraphOptions.h"
#include "graph/ui/frmPieChartOptions.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QWidget>
#include <array>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Ormsey::Graph;

namespace {

// A graph with two bars, its option windows over a plain window, and the prompts double.
class GraphOptionWindowsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR));
        graph.Data(0, 0, u"Apples"_s);
        graph.Data(0, 1, u"12"_s);
        graph.Data(1, 0, u"Pears"_s);
        graph.Data(1, 1, u"7"_s);
        windows = std::make_unique<Ormsey::GraphOptionWindows>(graph, &owner);
    }

    void TearDown() override
    {
        windows.reset();
        QApplication::processEvents();
    }

    static void Retype(QLineEdit* box, const QString& text)
    {
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, text);
    }

    ScriptedPrompts prompts;
    QWidget owner;
    Graph graph;
    std::unique_ptr<Ormsey::GraphOptionWindows> windows;
};

// A caption with an "&" letter shows the letter underlined, never the "&" itself: that
// needs a buddy to send the key to.
TEST_F(GraphOptionWindowsTest, CaptionsWithAnAccessKeyHaveABuddy)
{
    for (QWidget* dialog : std::initializer_list<QWidget*> { windows->BarChartOptions(),
             windows->PieChartOptions(), windows->LineGraphOptions() }) {
        for (const QLabel* label : dialog->findChildren<QLabel*>()) {
            if (label->text().contains(u'&')) {
                EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
            }
        }
    }
}

TEST_F(GraphOptionWindowsTest, ReversedRangeIsSwappedInTheBoxesAndTaken)
{
    graph.AutoScale = true;
    windows->ShowOptions();
    Ormsey::frmBarChartOptions* dialog = windows->BarChartOptions();
    ASSERT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->txtMinimum->isEnabled());

    // A check box answers clicks on its box and caption, not across its whole row.
    QTest::mouseClick(
        dialog->chkAutoScale, Qt::LeftButton, {}, QPoint(8, dialog->chkAutoScale->height() / 2));
    EXPECT_TRUE(dialog->txtMinimum->isEnabled());
    Retype(dialog->txtMinimum, u"50"_s);
    Retype(dialog->txtMaximum, u"10"_s);
    QSignalSpy redraws(&graph, &Graph::RedrawGraph);
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);

    EXPECT_EQ(dialog->txtMinimum->text(), u"10"_s);
    EXPECT_EQ(dialog->txtMaximum->text(), u"50"_s);
    EXPECT_FALSE(graph.AutoScale);
    EXPECT_EQ(graph.AxisMinimum[1], 10.0);
    EXPECT_EQ(graph.AxisMaximum[1], 50.0);
    EXPECT_EQ(redraws.count(), 1);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(GraphOptionWindowsTest, EqualRangeIsRefusedAndTheDialogStays)
{
    graph.AutoScale = false;
    graph.AxisMinimum[1] = 0;
    graph.AxisMaximum[1] = 40;
    windows->ShowOptions();
    Ormsey::frmBarChartOptions* dialog = windows->BarChartOptions();
    Retype(dialog->txtMinimum, u"5"_s);
    Retype(dialog->txtMaximum, u"5"_s);
    prompts.answerMessage(Frame::MessageAnswer::Ok);
    QSignalSpy redraws(&graph, &Graph::RedrawGraph);
    QTest::mouseClick(dialog->cmdOK(), Qt::LeftButton);

    ASSERT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(
        prompts.calls()[0].text, u"You cannot set the minimum and maximum to the same value."_s);
    EXPECT_EQ(prompts.calls()[0].icon, Frame::MessageIcon::Exclamation);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(redraws.count(), 0);
    EXPECT_EQ(graph.AxisMaximum[1], 40.0);
}

class UnreadableRangeTest : public RowFile::RowTest<GraphOptionWindowsTest>
{
};

TEST_P(UnreadableRangeTest, NeverEndsTheProgram)
{
    const bool autoScaled = row().flag("autoScale");
    const QStringList types { u"BarChart"_s, u"PieChart"_s, u"LineGraph"_s, u"Scattergram"_s };
    graph.GraphType(std::int32_t(types.indexOf(row().text("type"))));
    graph.AutoScale = false;
    graph.AxisMinimum = { 1, 2 };
    graph.AxisMaximum = { 30, 40 };
    windows->ShowOptions();
    Ormsey::frmBarChartOptions* bar = windows->BarChartOptions();
    Ormsey::frmLineGraphOptions* line = windows->LineGraphOptions();
    const bool isBar = graph.GraphType() == Graph::BarChart;
    Ormsey::OptionsDialog* dialog = isBar ? static_cast<Ormsey::OptionsDialog*>(bar) : line;
    QCheckBox* autoScale = isBar ? bar->chkAutoScale : line->chkAutoScale;
    const QHash<QString, QLineEdit*> boxes { { u"minimum"_s, bar->txtMinimum },
        { u"maximum"_s, bar->txtMaximum }, { u"xMinimum"_s, line->txtXMinimum },
        { u"xMaximum"_s, line->txtXMaximum }, { u"yMinimum"_s, line->txtYMinimum },
        { u"yMaximum"_s, line->txtYMaximum } };
    ASSERT_TRUE(dialog->isVisible());
    Retype(boxes.value(row().text("box")), row().text("text"));
    if (autoScaled)
        QTest::mouseClick(autoScale, Qt::LeftButton, {}, QPoint(8, autoScale->height() / 2));
    else
        prompts.answerMessage(Frame::MessageAnswer::Ok);
    QSignalSpy redraws(&graph, &Graph::RedrawGraph);
    QTest::mouseClick(row().flag("apply") ? dialog->cmdApply() : dialog->cmdOK(), Qt::LeftButton);

    EXPECT_EQ(prompts.messages(),
        autoScaled ? QStringList() : QStringList { u"An unknown error occured: 6"_s });
    EXPECT_EQ(redraws.count(), autoScaled ? 1 : 0);
    EXPECT_EQ(dialog->isVisible(), !autoScaled || row().flag("apply"));
    EXPECT_EQ(graph.AutoScale, autoScaled);
    EXPECT_EQ(graph.AxisMinimum, (std::array<double, 2> { 1, 2 }));
    EXPECT_EQ(graph.AxisMaximum, (std::array<double, 2> { 30, 40 }));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, UnreadableRangeTest, RowFile::In("graph/ui/unreadableRanges.rows"), RowFile::Named());

TEST_F(GraphOptionWindowsTest, CancelHandsNothingOver)
{
    windows->ShowOptions();
    Ormsey::frmBarChartOptions* dialog = windows->BarChartOptions();
    QTest::mouseClick(dialog->optBarType[2], Qt::LeftButton);
    QSignalSpy redraws(&graph, &Graph::RedrawGraph);
    QTest::mouseClick(dialog->cmdCancel(), Qt::LeftButton);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(graph.BarChartType(), Graph::SolidBars);
    EXPECT_EQ(redraws.count(), 0);
}

TEST_F(GraphOptionWindowsTest, PieApplyTakesLabelsPercentagesAndNineOClock)
{
    graph.GraphType(Graph::PieChart);
    windows->ShowOptions();
    Ormsey::frmPieChartOptions* dialog = windows->PieChartOptions();
    ASSERT_TRUE(dialog->isVisible());
    // A new graph starts at twelve o'clock with labels.
    EXPECT_TRUE(dialog->optStartingPosition[Ormsey::TwelveOClock]->isChecked());
    EXPECT_TRUE(dialog->chkLabels->isChecked());

    QTest::mouseClick(dialog->chkPercentages, Qt::LeftButton);
    QTest::mouseClick(dialog->optStartingPosition[Ormsey::NineOClock], Qt::LeftButton);
    EXPECT_FALSE(dialog->optStartingPosition[Ormsey::TwelveOClock]->isChecked());
    QTest::mouseClick(dialog->cmdApply(), Qt::LeftButton);

    EXPECT_EQ(graph.PieLabels, Graph::LabelsAndPercentages);
    EXPECT_EQ(graph.PieStartingAngle, 180);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(GraphOptionWindowsTest, LineDialogEnablesTheControlsOfItsKindOnly)
{
    graph.GraphType(Graph::LineGraph);
    windows->ShowOptions();
    Ormsey::frmLineGraphOptions* dialog = windows->LineGraphOptions();
    EXPECT_FALSE(dialog->fraScattergram->isEnabled());
    EXPECT_FALSE(dialog->chkLineOfBestFit->isEnabled());
    EXPECT_TRUE(dialog->chkJoinPoints->isEnabled());
    dialog->hide();

    graph.GraphType(Graph::Scattergram);
    windows->ShowOptions();
    EXPECT_TRUE(dialog->chkLineOfBestFit->isEnabled());
    EXPECT_TRUE(dialog->optDotType[Graph::Circle]->isEnabled());
    EXPECT_FALSE(dialog->chkJoinPoints->isEnabled());
}

TEST_F(GraphOptionWindowsTest, PaletteButtonsChangeTheGraphAtOnce)
{
    windows->ShowGraphTools();
    Ormsey::frmGraphTools* tools = windows->GraphTools();
    EXPECT_TRUE(tools->TypeButtons[Graph::BarChart]->isChecked());
    EXPECT_TRUE(tools->OptionsButton->isEnabled());

    QSignalSpy redraws(&graph, &Graph::RedrawGraph);
    tools->TypeButtons[Graph::PieChart]->trigger();
    EXPECT_EQ(graph.GraphType(), Graph::PieChart);
    tools->Make3DButton->trigger();
    EXPECT_TRUE(graph.Graph3D());
    // A line graph cannot be 3D (the graph's rule, GraphTest): the button follows.
    tools->TypeButtons[Graph::LineGraph]->trigger();
    EXPECT_FALSE(tools->Make3DButton->isChecked());
    EXPECT_EQ(redraws.count(), 3);
}

TEST_F(GraphOptionWindowsTest, PaletteOptionsButtonNeedsData)
{
    Graph empty;
    Ormsey::GraphOptionWindows emptyWindows(empty, &owner);
    emptyWindows.ShowGraphTools();
    EXPECT_FALSE(emptyWindows.GraphTools()->OptionsButton->isEnabled());
}

// What OK hands over shows in the window's headings (frmOrmseyTest).
TEST_F(GraphOptionWindowsTest, SeriesEditorEnablesTheBoxesInUseAndCancelChangesNothing)
{
    Ormsey::frmEditDataSeries editor(graph, &owner);
    EXPECT_EQ(editor.updSeries->value(), 1);
    EXPECT_TRUE(editor.txtSeriesLabel[0]->isEnabled());
    EXPECT_FALSE(editor.txtSeriesLabel[1]->isEnabled());
    editor.updSeries->setValue(2);
    EXPECT_TRUE(editor.txtSeriesLabel[1]->isEnabled());
    EXPECT_FALSE(editor.txtSeriesLabel[2]->isEnabled());
    // Cancel hands nothing over.
    Retype(editor.txtSeriesLabel[0], u"Girls"_s);
    QTest::mouseClick(editor.findChild<QPushButton*>(u"cmdCancel"_s), Qt::LeftButton);
    EXPECT_EQ(graph.NumberOfDataSeries(), 1);
    EXPECT_EQ(graph.DataSeriesLabel(1), u"Series 1"_s);
}

} // namespace
