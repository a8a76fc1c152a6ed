#include "graph/ui/frmOrmsey.h"

#include "RowFile.h"
#include "frame/DocumentHost.h"
#include "frame/DocumentKinds.h"
#include "frame/FrameSettings.h"
#include "frame/support/ScriptedPrompts.h"
#include "frame/ui/ImageList.h"
#include "frame/ui/ResourceIcons.h"
#include "graph/Graph.h"
#include "graph/GraphDocument.h"
#include "graph/ui/DataGrid.h"
#include "graph/ui/DataGridModel.h"
#include "graph/ui/GraphOptionWindows.h"
#include "graph/ui/PictureBox.h"
#include "graph/ui/RegisterGraphWindow.h"
#include "graph/ui/frmEditDataSeries.h"
#include "graph/ui/frmGraphTools.h"
#include "graph/ui/frmOrmseyPrint.h"
#include "platform/emf/Picture.h"
#include "platform/emf/RecordTrace.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QLineEdit>
#include <QMetaEnum>
#include <QMimeData>
#include <QPdfDocument>
#include <QPdfSelection>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::MessageAnswer;
using Ormsey::Graph;
namespace Menu = Ormsey::GraphMenu;
namespace Toolbar = Ormsey::GraphToolbar;

// Readable failure messages for the texts compared below.
void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

namespace {

// The frame as a graph window sees it: records what the window asks of it.
class RecordingHost : public Frame::DocumentHost
{
public:
    RecordingHost()
    {
        for (const int number : Frame::ToolbarIconNumbers())
            m_images.add(Frame::ResourceIcon(number));
    }
    void NewFile() override { Asked << u"new"_s; }
    void OpenFile(int filterIndex) override { Asked << u"open "_s + QString::number(filterIndex); }
    void ShowAbout() override { Asked << u"about"_s; }
    void Exit() override { Asked << u"exit"_s; }
    QString DialogFolder() const override { return Folder; }
    void RememberDialogFolder(const QString& chosenFile) override { Folder = chosenFile; }
    QString Caption() const override { return u"Quorbin"_s; }
    const Frame::ImageList& ToolbarImages() const override { return m_images; }
    void SetDocumentChanged(const QObject*, bool changed) override { Changed = changed; }

    QStringList Asked;
    QString Folder;
    bool Changed = false;

private:
    Frame::ImageList m_images;
};

class GraphWindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR));
        ASSERT_TRUE(folder.isValid());
        Frame::Settings().TempFolder = folder.path();
        window = std::make_unique<Ormsey::frmOrmsey>(&host);
        window->show();
    }

    void TearDown() override
    {
        window.reset();
        QApplication::processEvents();
    }

    Graph& graph() { return window->GraphObject(); }
    QString Heading(int column) const
    {
        return window->GridModel->headerData(column, Qt::Horizontal).toString();
    }
    QString Cell(int row, int column) const
    {
        return window->GridModel->index(row, column).data().toString();
    }
    QModelIndex Current() const { return window->grdData->currentIndex(); }

    // Opens the editor over the cell and types into it; `finish` ends the edit.
    QLineEdit* StartEdit(int row, int column)
    {
        const QModelIndex index = window->GridModel->index(row, column);
        window->grdData->setCurrentIndex(index);
        window->grdData->edit(index);
        return qobject_cast<QLineEdit*>(window->grdData->CellEditor());
    }
    void TypeCell(int row, int column, const QString& text, Qt::Key finish = Qt::Key_Return)
    {
        QLineEdit* editor = StartEdit(row, column);
        ASSERT_NE(editor, nullptr) << "no editor over " << row << "," << column;
        editor->selectAll();
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, finish);
    }
    void TypeRows(const QList<QStringList>& rows)
    {
        for (qsizetype row = 0; row < rows.size(); ++row) {
            for (qsizetype column = 0; column < rows[row].size(); ++column)
                TypeCell(int(row), int(column), rows[row][column]);
        }
    }
    QString PathIn(const QString& name) const { return QDir(folder.path()).filePath(name); }

    ScriptedPrompts prompts;
    RecordingHost host;
    QTemporaryDir folder;
    std::unique_ptr<Ormsey::frmOrmsey> window;
};

TEST_F(GraphWindowTest, NewWindowShowsTheDefaultTitleAndAnEmptyGrid)
{
    EXPECT_EQ(window->txtGraphTitle->text(), u"Graph Title"_s);
    EXPECT_EQ(Heading(0), u"Categories"_s);
    EXPECT_EQ(Heading(1), u"Series 1"_s);
    EXPECT_EQ(Heading(2), QString());
    EXPECT_EQ(Current(), window->GridModel->index(0, 0));
    EXPECT_EQ(window->GridModel->rowCount(), 256);
    EXPECT_FALSE(window->Document().IsChanged());
    QAbstractItemModelTester tester(
        window->GridModel, QAbstractItemModelTester::FailureReportingMode::Fatal);
    TypeRows({ { u"Apples"_s, u"3"_s } });
}

class GraphWindowHeadingTest : public RowFile::RowTest<GraphWindowTest>
{
};

TEST_P(GraphWindowHeadingTest, HeadingsFollowTheTypeAndTheData)
{
    const QStringList types { u"BarChart"_s, u"PieChart"_s, u"LineGraph"_s, u"Scattergram"_s };
    window->Action(Menu::BarChart + int(types.indexOf(row().text("type"))))->trigger();
    QList<QStringList> rows;
    for (const QString& line : row().list("data", u";"_s))
        rows << line.split(u',');
    TypeRows(rows);
    const QStringList headings = row().list("headings");
    for (qsizetype column = 0; column < headings.size(); ++column)
        EXPECT_EQ(Heading(int(column)), headings[column]) << "column " << column;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphWindowHeadingTest, RowFile::In("graph/ui/headings.rows"), RowFile::Named());

TEST_F(GraphWindowTest, TypingDataDrawsThePictureAndTellsTheFrame)
{
    TypeRows({ { u"Apples"_s, u"12"_s }, { u"Pears"_s, u"7"_s } });
    EXPECT_EQ(graph().Data(1, 1), u"7"_s);
    const QStringList trace = Emf::TraceRecords(*graph().hMF());
    EXPECT_EQ(trace.filter(u"\"Pears\""_s).size(), 1) << trace.join(u'\n').toStdString();
    EXPECT_TRUE(window->Document().IsChanged());
    EXPECT_TRUE(host.Changed);
}

class GraphWindowMoveTest : public RowFile::RowTest<GraphWindowTest>
{
};

TEST_P(GraphWindowMoveTest, KeyCommitsAndMovesWithinTheHeadedColumns)
{
    const int row = int(this->row().whole("row"));
    const int column = int(this->row().whole("column"));
    bool known = false;
    const auto key = Qt::Key(QMetaEnum::fromType<Qt::Key>().keyToValue(
        this->row().text("key").toLatin1().constData(), &known));
    ASSERT_TRUE(known);
    graph().NumberOfDataSeries(std::int32_t(this->row().whole("series")));
    window->Document().GraphEdited();
    TypeCell(row, column, u"5"_s, key);
    EXPECT_EQ(graph().Data(row, column), u"5"_s);
    EXPECT_EQ(Current().row(), this->row().whole("toRow"));
    EXPECT_EQ(Current().column(), this->row().whole("toColumn"));
    EXPECT_EQ(window->grdData->CellEditor(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphWindowMoveTest, RowFile::In("graph/ui/gridKeys.rows"), RowFile::Named());

TEST_F(GraphWindowTest, ColumnsWithoutAHeadingTakeNoData)
{
    const QModelIndex unheaded = window->GridModel->index(0, 2);
    EXPECT_FALSE(window->GridModel->flags(unheaded) & Qt::ItemIsEditable);
    EXPECT_FALSE(window->GridModel->setData(unheaded, u"9"_s));
    window->grdData->setCurrentIndex(unheaded);
    window->grdData->edit(unheaded);
    EXPECT_EQ(window->grdData->CellEditor(), nullptr);
}

TEST_F(GraphWindowTest, EditingKeysKeepValuesNumeric)
{
    TypeCell(0, 0, u"A-1.5b"_s);
    TypeCell(0, 1, u"x-1.5b"_s);
    EXPECT_EQ(graph().Data(0, 0), u"A-1.5b"_s);
    EXPECT_EQ(graph().Data(0, 1), u"-1.5"_s);
    TypeCell(0, 1, u"9"_s, Qt::Key_Escape);
    EXPECT_EQ(graph().Data(0, 1), u"-1.5"_s);
    // Left inside the text moves the caret, from its start the cell.
    QLineEdit* editor = StartEdit(1, 1);
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, u"12"_s);
    QTest::keyClick(editor, Qt::Key_Left);
    EXPECT_EQ(window->grdData->CellEditor(), editor);
    QTest::keyClick(editor, Qt::Key_Home);
    QTest::keyClick(editor, Qt::Key_Left);
    EXPECT_EQ(graph().Data(1, 1), u"12"_s);
    EXPECT_EQ(Current().column(), 0);
}

TEST_F(GraphWindowTest, TitleAndLabelsAreTakenOnEnter)
{
    for (QLineEdit* box : { window->txtGraphTitle, window->txtXAxisLabel, window->txtYAxisLabel }) {
        box->setText(box->objectName());
        QTest::keyClick(box, Qt::Key_Return);
    }
    EXPECT_EQ(graph().GraphTitle(), u"txtGraphTitle"_s);
    EXPECT_EQ(graph().HorizontalAxisLabel(), u"txtXAxisLabel"_s);
    EXPECT_EQ(graph().VerticalAxisLabel(), u"txtYAxisLabel"_s);
    EXPECT_TRUE(window->Document().IsChanged());
}

TEST_F(GraphWindowTest, MenusFollowTheGraph)
{
    // Options can be set before any data are typed.
    EXPECT_TRUE(window->Action(Menu::Options)->isEnabled());
    EXPECT_TRUE(window->Action(Menu::EditDataSeries)->isEnabled());
    EXPECT_TRUE(window->Action(Menu::BarChart)->isChecked());

    TypeRows({ { u"1990"_s, u"4"_s }, { u"1991"_s, u"6"_s } });
    window->Action(Toolbar::Key + Toolbar::Make3D)->trigger();
    EXPECT_TRUE(graph().Graph3D());
    EXPECT_TRUE(window->Action(Menu::Make3D)->isChecked());

    window->Action(Menu::BarChart + Graph::LineGraph)->trigger(); // x-y pairs
    EXPECT_EQ(graph().GraphType(), Graph::LineGraph);
    EXPECT_FALSE(window->Action(Menu::Make3D)->isEnabled());
    EXPECT_FALSE(window->Action(Toolbar::Key + Toolbar::Make3D)->isEnabled());
    EXPECT_FALSE(window->Action(Menu::EditDataSeries)->isEnabled());
    EXPECT_TRUE(window->Action(Toolbar::Key + Toolbar::BarChart + Graph::LineGraph)->isChecked());

    TypeCell(0, 0, u"Early"_s);
    TypeCell(1, 0, u"Later"_s);
    EXPECT_TRUE(window->Action(Menu::EditDataSeries)->isEnabled());
    window->Action(Toolbar::Key + Toolbar::Scattergram)->trigger();
    EXPECT_FALSE(window->Action(Menu::EditDataSeries)->isEnabled());
    EXPECT_TRUE(window->Action(Menu::Scattergram)->isChecked());
}

// The sorting itself is the graph's; the window forwards and shows the new order.
TEST_F(GraphWindowTest, SortCommandsReorderTheGrid)
{
    TypeRows({ { u"Cats"_s, u"2"_s }, { u"Ants"_s, u"30"_s }, { u"Bees"_s, u"10"_s } });
    window->Action(Menu::SortByNumber)->trigger();
    EXPECT_EQ(Cell(0, 0), u"Cats"_s);
    EXPECT_EQ(Cell(2, 0), u"Ants"_s);
    window->Action(Menu::RestoreSort)->trigger();
    EXPECT_EQ(Cell(1, 0), u"Ants"_s);
}

TEST_F(GraphWindowTest, TextStyleSetsTheGraphFontUnlessCancelled)
{
    prompts.answerFont(QFont(u"Liberation Serif"_s, 12)).answerFont(std::nullopt);
    window->Action(Menu::TextStyle)->trigger();
    window->Action(Menu::TextStyle)->trigger();
    EXPECT_EQ(graph().GraphFont(), u"Liberation Serif"_s);
    EXPECT_EQ(prompts.calls()[1].initialFont.family(), u"Liberation Serif"_s);
    EXPECT_TRUE(window->Document().IsChanged());
}

TEST_F(GraphWindowTest, EditDataSeriesRenamesTheHeadings)
{
    TypeCell(0, 0, u"Week 1"_s);
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<Ormsey::frmEditDataSeries*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->updSeries->setValue(2);
        dialog->txtSeriesLabel[0]->setText(u"Boys"_s);
        dialog->txtSeriesLabel[1]->setText(u"Girls"_s);
        QTest::mouseClick(dialog->findChild<QPushButton*>(u"cmdOK"_s), Qt::LeftButton);
    });
    window->Action(Menu::EditDataSeries)->trigger();
    EXPECT_EQ(Heading(1), u"Boys"_s);
    EXPECT_EQ(Heading(2), u"Girls"_s);
    TypeCell(0, 2, u"4"_s); // the new column takes data at once
    EXPECT_EQ(graph().Data(0, 2), u"4"_s);
}

TEST_F(GraphWindowTest, TheToolsPaletteChangesTheGraphAndItsTitle)
{
    TypeRows({ { u"Apples"_s, u"12"_s } });
    window->Action(Menu::GraphTools)->trigger();
    Ormsey::frmGraphTools* tools = window->findChild<Ormsey::frmGraphTools*>();
    ASSERT_NE(tools, nullptr);
    ASSERT_TRUE(tools->isVisible());
    tools->TypeButtons[Graph::PieChart]->trigger();
    EXPECT_EQ(graph().GraphType(), Graph::PieChart);
    EXPECT_TRUE(window->Action(Menu::BarChart + Graph::PieChart)->isChecked());
    tools->txtGraphTitle->setText(u"Fruit"_s);
    tools->close();
    EXPECT_EQ(window->txtGraphTitle->text(), u"Fruit"_s);
    EXPECT_TRUE(window->Document().IsChanged());
}

TEST_F(GraphWindowTest, OpenStartsInTheHostsFolderAndTellsItTheChoice)
{
    Graph source;
    source.Data(0, 0, u"Owls"_s);
    const QString path = PathIn(u"owls.qnp"_s);
    ASSERT_EQ(source.SaveGraphData(path), QString());
    host.Folder = u"/home/class"_s;
    prompts.answerOpenFile(Frame::FileChoice { path, 1 });
    window->Action(Toolbar::Key + Toolbar::Open)->trigger();
    EXPECT_EQ(prompts.calls().at(0).file.folder, u"/home/class"_s);
    EXPECT_EQ(prompts.calls().at(0).file.filter,
        u"Quorbin Ormsey Files|*.qnp|Comma-separated Text (*.csv)|*.csv"_s);
    EXPECT_EQ(host.Folder, path);
    EXPECT_EQ(Cell(0, 0), u"Owls"_s);
    EXPECT_EQ(window->windowTitle(), u"Ormsey - owls"_s);
}

TEST_F(GraphWindowTest, DroppingAGraphFileOpensItAfterTheQuestion)
{
    TypeCell(0, 0, u"Unsaved"_s);
    Graph source;
    source.Data(0, 0, u"Bats"_s);
    const QString path = PathIn(u"Bats.QNP"_s);
    ASSERT_EQ(source.SaveGraphData(path), QString());
    QMimeData data;
    data.setUrls({ QUrl::fromLocalFile(path) });
    QDragEnterEvent enter(
        QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    prompts.answerMessage(MessageAnswer::No);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(Cell(0, 0), u"Bats"_s);
    EXPECT_EQ(window->fileName(), path);
    EXPECT_FALSE(host.Changed);
}

TEST_F(GraphWindowTest, ClosingAChangedGraphAsksAndCancelKeepsIt)
{
    window->txtGraphTitle->setText(u"Typed but not yet entered"_s);
    prompts.answerMessage(MessageAnswer::Cancel);
    EXPECT_FALSE(window->queryClose());
    ASSERT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(prompts.calls()[0].title, u"Quorbin"_s);
    EXPECT_EQ(graph().GraphTitle(), u"Typed but not yet entered"_s);
}

TEST_F(GraphWindowTest, CopyGraphPutsTheMetafileAndAnImageOnTheClipboard)
{
    TypeRows({ { u"Apples"_s, u"12"_s } });
    window->Action(Menu::CopyGraph)->trigger();
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(data, nullptr);
    const Emf::Picture picture = Emf::Picture::fromBytes(data->data(u"image/x-emf"_s));
    const auto texts = [](const Emf::Picture& from) {
        return Emf::TraceRecords(from).filter(u"EXTTEXTOUTW"_s).size();
    };
    EXPECT_EQ(texts(picture), texts(*graph().hMF()));
    EXPECT_GT(texts(picture), 0);
    EXPECT_FALSE(qvariant_cast<QImage>(data->imageData()).isNull());
}

TEST_F(GraphWindowTest, DraggingOutOffersGraphEmfInTheTemporaryFolder)
{
    EXPECT_EQ(window->picGraph->DragData(), nullptr); // nothing to drag yet
    TypeRows({ { u"Apples"_s, u"12"_s } });
    std::unique_ptr<QMimeData> data(window->picGraph->DragData());
    ASSERT_NE(data, nullptr);
    ASSERT_EQ(data->urls().size(), 1);
    EXPECT_EQ(data->urls()[0].toLocalFile(), PathIn(u"Graph.emf"_s));
    EXPECT_TRUE(Emf::Picture::fromFile(PathIn(u"Graph.emf"_s)).isValid());
}

TEST_F(GraphWindowTest, PrintsToAPdfFileWithTheDataTable)
{
    TypeRows({ { u"Apples"_s, u"12"_s }, { u"Pears"_s, u"7"_s } });
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<Ormsey::frmOrmseyPrint*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        const int last = dialog->cmbPrinters->count() - 1;
        ASSERT_EQ(dialog->cmbPrinters->itemText(last), u"PDF File"_s);
        dialog->cmbPrinters->setCurrentIndex(last);
        dialog->chkPrintData->setChecked(true);
        dialog->optLandscape->click();
        QTest::mouseClick(dialog->cmdOK, Qt::LeftButton);
    });
    const QString path = PathIn(u"fruit"_s);
    prompts.answerSaveFile(Frame::FileChoice { path, 1 });
    window->Action(Menu::Print)->trigger();
    EXPECT_EQ(prompts.calls().at(0).file.title, u"Print to PDF File"_s);

    QPdfDocument pdf;
    ASSERT_EQ(pdf.load(path + u".pdf"_s), QPdfDocument::Error::None);
    ASSERT_EQ(pdf.pageCount(), 1);
    const QSizeF page = pdf.pagePointSize(0);
    EXPECT_GT(page.width(), page.height()); // landscape
    // "Pears" once on the graph's axis and once in the table. Text placed glyph by glyph comes
    // back with breaks between the letters.
    QString text = pdf.getAllText(0).text();
    text.removeIf([](QChar character) { return !character.isLetterOrNumber(); });
    EXPECT_EQ(text.count(u"Pears"_s), 2) << text.toStdString();
    Frame::Settings().PrintToPdfFile = false;
}

TEST(GraphWindowRegistration, KindOneMakesGraphWindowsWithTheirHost)
{
    Ormsey::RegisterGraphWindow();
    const Frame::DocumentKind* kind = Frame::FindDocumentKind(Frame::GraphDocumentType);
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind->CaptionWord, u"Ormsey"_s);
    EXPECT_EQ(Frame::DocTypeForFileName(u"/class/PETS.QNP"), Frame::GraphDocumentType);
    RecordingHost host;
    std::unique_ptr<QObject> made(kind->CreateWindow(host));
    auto* window = qobject_cast<Ormsey::frmOrmsey*>(made.get());
    ASSERT_NE(window, nullptr);
    // The frame's own commands go to the host the window was made with.
    for (const int item : { Menu::New, Menu::About, Menu::Exit })
        window->Action(item)->trigger();
    EXPECT_EQ(host.Asked, (QStringList { u"new"_s, u"about"_s, u"exit"_s }));
    Frame::UnregisterDocumentKind(Frame::GraphDocumentType);
}

} // namespace
