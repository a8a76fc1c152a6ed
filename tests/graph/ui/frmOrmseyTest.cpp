#include "graph/ui/frmOrmsey.h"

#include "frame/DocumentKinds.h"
#include "frame/FrameSettings.h"
#include "frame/support/ScriptedPrompts.h"
#include "graph/Graph.h"
#include "graph/ui/DataGrid.h"
#include "graph/ui/DataGridModel.h"
#include "graph/ui/PictureBox.h"
#include "graph/ui/RegisterGraphWindow.h"
#include "graph/ui/frmEditDataSeries.h"
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
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
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

// Readable failure messages for the texts compared below.
void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

namespace {

const QString savePromptText = u"This graph has not been saved.\nDo you wish to save your data?"_s;

class GraphWindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR));
        ASSERT_TRUE(folder.isValid());
        Frame::Settings().TempFolder = folder.path();
        window = std::make_unique<Ormsey::frmOrmsey>();
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
        ASSERT_NE(editor, nullptr);
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
    QStringList FilesInFolder() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::NoDotAndDotDot);
    }

    ScriptedPrompts prompts;
    QTemporaryDir folder;
    std::unique_ptr<Ormsey::frmOrmsey> window;
};

TEST_F(GraphWindowTest, NewWindowShowsTheDefaultTitleAndHeadings)
{
    EXPECT_EQ(window->txtGraphTitle->text(), u"Graph Title"_s);
    EXPECT_EQ(graph().GraphTitle(), u"Graph Title"_s);
    EXPECT_EQ(Heading(0), u"Categories"_s);
    EXPECT_EQ(Heading(1), u"Series 1"_s);
    EXPECT_EQ(Heading(2), QString());
    EXPECT_EQ(Current(), window->GridModel->index(0, 0));
    EXPECT_EQ(window->lblGraphTitle->text(), u"Graph &Title:"_s);
    EXPECT_EQ(window->lblXAxisLabel->text(), u"&X-Axis Label:"_s);
    EXPECT_EQ(window->lblYAxisLabel->text(), u"&Y-Axis Label:"_s);
    EXPECT_FALSE(window->IsChanged());
}

TEST_F(GraphWindowTest, EveryRowOfTheGraphIsReachable)
{
    EXPECT_EQ(window->GridModel->rowCount(), 256);
    EXPECT_EQ(window->GridModel->columnCount(), 5);
    EXPECT_EQ(window->GridModel->headerData(255, Qt::Vertical).toString(), u"256"_s);
    TypeCell(255, 4, u"7"_s);
    EXPECT_EQ(graph().Data(255, 4), u"7"_s);
}

TEST_F(GraphWindowTest, GridModelPassesTheItemModelChecks)
{
    QAbstractItemModelTester tester(
        window->GridModel, QAbstractItemModelTester::FailureReportingMode::Fatal);
    TypeRows({ { u"Apples"_s, u"3"_s } });
    window->Sort(0);
    EXPECT_EQ(Cell(0, 0), u"Apples"_s);
}

struct HeadingRow
{
    const char* name;
    int type;
    QList<QStringList> rows;
    QStringList headings;
};

class GraphWindowHeadingTest : public GraphWindowTest,
                               public testing::WithParamInterface<HeadingRow>
{
};

TEST_P(GraphWindowHeadingTest, HeadingsFollowTheTypeAndTheData)
{
    const HeadingRow& row = GetParam();
    window->Action(531 + row.type)->trigger();
    TypeRows(row.rows);
    for (qsizetype column = 0; column < row.headings.size(); ++column)
        EXPECT_EQ(Heading(int(column)), row.headings[column]) << "column " << column;
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphWindowHeadingTest,
    testing::Values(
        HeadingRow { "barWithYears", Graph::BarChart,
            { { u"1990"_s, u"4"_s }, { u"1991"_s, u"6"_s } }, { u"Categories"_s, u"Series 1"_s } },
        HeadingRow { "lineWithYears", Graph::LineGraph,
            { { u"1990"_s, u"4"_s }, { u"1991"_s, u"6"_s } }, { u"X"_s, u"Y"_s } },
        HeadingRow { "lineWithTextCategories", Graph::LineGraph,
            { { u"Winter"_s, u"4"_s }, { u"Spring"_s, u"6"_s } },
            { u"Categories"_s, u"Series 1"_s } },
        HeadingRow { "scattergramAlways", Graph::Scattergram, { { u"Spring"_s, u"6"_s } },
            { u"X"_s, u"Y"_s } },
        HeadingRow { "pieWithYears", Graph::PieChart, { { u"1990"_s, u"4"_s } },
            { u"Categories"_s, u"Series 1"_s } }),
    [](const testing::TestParamInfo<HeadingRow>& info) { return info.param.name; });

TEST_F(GraphWindowTest, HeadingsTurnBackWhenACategoryBecomesText)
{
    window->Action(533)->trigger();
    TypeRows({ { u"1990"_s, u"4"_s }, { u"1991"_s, u"6"_s } });
    ASSERT_EQ(Heading(0), u"X"_s);
    TypeCell(0, 0, u"Early"_s);
    EXPECT_EQ(Heading(0), u"X"_s); // one number is enough for x-y pairs
    TypeCell(1, 0, u"Later"_s);
    EXPECT_EQ(Heading(0), u"Categories"_s);
    EXPECT_EQ(Heading(1), u"Series 1"_s);
}

TEST_F(GraphWindowTest, TypingDataDrawsThePictureAndMarksTheDocument)
{
    ASSERT_FALSE(graph().GraphHasData());
    const std::size_t emptyRecords = graph().hMF()->records().size();
    TypeRows({ { u"Apples"_s, u"12"_s }, { u"Pears"_s, u"7"_s } });
    EXPECT_TRUE(graph().GraphHasData());
    EXPECT_EQ(graph().Data(1, 1), u"7"_s);
    EXPECT_GT(graph().hMF()->records().size(), emptyRecords);
    const QStringList trace = Emf::TraceRecords(*graph().hMF());
    EXPECT_TRUE(trace.filter(u"\"Pears\""_s).size() == 1) << trace.join(u'\n').toStdString();
    EXPECT_TRUE(window->IsChanged());
}

struct MoveRow
{
    const char* name;
    int row;
    int column;
    Qt::Key key;
    int expectedRow;
    int expectedColumn;
};

class GraphWindowMoveTest : public GraphWindowTest, public testing::WithParamInterface<MoveRow>
{
};

TEST_P(GraphWindowMoveTest, KeyCommitsAndMoves)
{
    const MoveRow& row = GetParam();
    TypeCell(row.row, row.column, u"5"_s, row.key);
    EXPECT_EQ(graph().Data(row.row, row.column), u"5"_s);
    EXPECT_EQ(Current().row(), row.expectedRow);
    EXPECT_EQ(Current().column(), row.expectedColumn);
    EXPECT_EQ(window->grdData->CellEditor(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphWindowMoveTest,
    testing::Values(MoveRow { "enterMovesRight", 2, 1, Qt::Key_Return, 2, 2 },
        MoveRow { "enterFromLastColumnGoesToNextRow", 2, 4, Qt::Key_Return, 3, 0 },
        MoveRow { "enterOnLastCellStays", 255, 4, Qt::Key_Enter, 255, 4 },
        MoveRow { "downMovesDown", 2, 1, Qt::Key_Down, 3, 1 },
        MoveRow { "upMovesUp", 2, 1, Qt::Key_Up, 1, 1 },
        MoveRow { "upOnFirstRowStays", 0, 1, Qt::Key_Up, 0, 1 },
        MoveRow { "rightAtTheEndMoves", 2, 1, Qt::Key_Right, 2, 2 }),
    [](const testing::TestParamInfo<MoveRow>& info) { return info.param.name; });

TEST_F(GraphWindowTest, EscapeDropsTheEdit)
{
    TypeCell(0, 1, u"4"_s);
    TypeCell(0, 1, u"9"_s, Qt::Key_Escape);
    EXPECT_EQ(graph().Data(0, 1), u"4"_s);
    EXPECT_EQ(Cell(0, 1), u"4"_s);
    EXPECT_EQ(window->grdData->CellEditor(), nullptr);
}

TEST_F(GraphWindowTest, LeftInsideTheTextMovesTheCaretNotTheCell)
{
    QLineEdit* editor = StartEdit(1, 2);
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, u"12"_s);
    QTest::keyClick(editor, Qt::Key_Left);
    EXPECT_EQ(window->grdData->CellEditor(), editor);
    EXPECT_EQ(editor->cursorPosition(), 1);
    QTest::keyClick(editor, Qt::Key_Home);
    QTest::keyClick(editor, Qt::Key_Left);
    EXPECT_EQ(graph().Data(1, 2), u"12"_s);
    EXPECT_EQ(Current().column(), 1);
}

TEST_F(GraphWindowTest, ValueCellsTakeOnlyNumberCharacters)
{
    TypeCell(0, 0, u"A-1.5b"_s);
    TypeCell(0, 1, u"x-1.5b"_s);
    EXPECT_EQ(graph().Data(0, 0), u"A-1.5b"_s);
    EXPECT_EQ(graph().Data(0, 1), u"-1.5"_s);
}

TEST_F(GraphWindowTest, AnUnchangedCellLeavesTheDocumentUnchanged)
{
    TypeCell(0, 0, QString());
    EXPECT_FALSE(window->IsChanged());
}

TEST_F(GraphWindowTest, TitleAndLabelsAreTakenOnEnter)
{
    window->txtGraphTitle->setText(u"Pets"_s);
    QTest::keyClick(window->txtGraphTitle, Qt::Key_Return);
    window->txtXAxisLabel->setText(u"Animal"_s);
    QTest::keyClick(window->txtXAxisLabel, Qt::Key_Return);
    window->txtYAxisLabel->setText(u"Number"_s);
    QTest::keyClick(window->txtYAxisLabel, Qt::Key_Return);
    EXPECT_EQ(graph().GraphTitle(), u"Pets"_s);
    EXPECT_EQ(graph().HorizontalAxisLabel(), u"Animal"_s);
    EXPECT_EQ(graph().VerticalAxisLabel(), u"Number"_s);
    EXPECT_TRUE(window->IsChanged());
}

TEST_F(GraphWindowTest, ChangedFlagLivesInTheDocumentTable)
{
    const int slot = Frame::Settings().DocumentTable.claimSlot(Frame::GraphDocument);
    window->setProperty("Tag", QString::number(slot));
    TypeCell(0, 1, u"3"_s);
    EXPECT_TRUE(Frame::Settings().DocumentTable.slot(slot).Changed);
    Frame::Settings().DocumentTable.setChanged(slot, false);
    EXPECT_FALSE(window->IsChanged());
}

TEST_F(GraphWindowTest, SaveThenReopenGivesTheSameGraph)
{
    TypeRows({ { u"Cats"_s, u"12"_s }, { u"Dogs"_s, u"9.5"_s }, { u"Fish"_s, u"-2"_s } });
    window->txtGraphTitle->setText(u"Pets"_s);
    const QString path = PathIn(u"pets.qnp"_s);
    prompts.answerSaveFile(Frame::FileChoice { path, 1 });
    ASSERT_TRUE(window->FileSave());
    EXPECT_EQ(prompts.calls().at(0).file.title, u"Save As"_s);
    EXPECT_EQ(prompts.calls().at(0).file.filter, u"Quorbin Ormsey Files (*.qnp)|*.qnp"_s);
    EXPECT_EQ(window->windowTitle(), u"Ormsey - pets"_s);
    EXPECT_EQ(window->FileName(), path);
    EXPECT_FALSE(window->IsChanged());

    Ormsey::frmOrmsey reopened;
    reopened.setFileName(path);
    EXPECT_EQ(reopened.txtGraphTitle->text(), u"Pets"_s);
    EXPECT_EQ(reopened.windowTitle(), u"Ormsey - pets"_s);
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 2; ++column)
            EXPECT_EQ(reopened.GridModel->index(row, column).data().toString(), Cell(row, column))
                << row << "," << column;
    }
    EXPECT_FALSE(reopened.IsChanged());
}

TEST_F(GraphWindowTest, SaveWithANameAsksNothing)
{
    const QString path = PathIn(u"again.qnp"_s);
    prompts.answerSaveFile(Frame::FileChoice { path, 1 });
    ASSERT_TRUE(window->FileSaveAs());
    TypeCell(0, 1, u"8"_s);
    ASSERT_TRUE(window->FileSave());
    EXPECT_EQ(prompts.calls().size(), 1);
    Graph reread;
    reread.LoadGraphData(path);
    EXPECT_EQ(reread.Data(0, 1), u"8"_s);
}

TEST_F(GraphWindowTest, AFailedSaveIsReportedAndKeepsTheDocumentChanged)
{
    TypeCell(0, 1, u"8"_s);
    prompts.answerSaveFile(Frame::FileChoice { PathIn(u"no/such/folder/x.qnp"_s), 1 });
    prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(window->FileSave());
    ASSERT_EQ(prompts.calls().size(), 2);
    EXPECT_EQ(prompts.calls().at(1).icon, Frame::MessageIcon::Exclamation);
    EXPECT_TRUE(window->IsChanged());
    EXPECT_TRUE(window->FileName().isEmpty());
}

TEST_F(GraphWindowTest, OpenAMissingFileIsReportedAndKeepsTheGraph)
{
    TypeCell(0, 0, u"Kept"_s);
    prompts.answerMessage(MessageAnswer::Ok);
    window->OpenGraphFile(PathIn(u"missing.qnp"_s));
    EXPECT_EQ(prompts.messages(), QStringList { u"An unknown error occured: 53"_s });
    EXPECT_EQ(graph().Data(0, 0), u"Kept"_s);
}

TEST_F(GraphWindowTest, FileOpenUsesTheOpenDialog)
{
    Graph source;
    source.Data(0, 0, u"Owls"_s);
    source.Data(0, 1, u"2"_s);
    const QString path = PathIn(u"owls.qnp"_s);
    ASSERT_EQ(source.SaveGraphData(path), QString());
    prompts.answerOpenFile(Frame::FileChoice { path, 1 });
    window->FileOpen();
    EXPECT_EQ(prompts.calls().at(0).file.title, u"Open"_s);
    EXPECT_EQ(prompts.calls().at(0).file.filter, u"Quorbin Ormsey Files|*.qnp"_s);
    EXPECT_EQ(Cell(0, 0), u"Owls"_s);
}

TEST_F(GraphWindowTest, CancelledExportWritesNothing)
{
    TypeRows({ { u"Apples"_s, u"12"_s } });
    QGuiApplication::clipboard()->setText(u"before"_s);
    prompts.answerSaveFile(std::nullopt);
    window->ExportGraphFile();
    EXPECT_EQ(prompts.calls().at(0).file.title, u"Export Graph"_s);
    EXPECT_TRUE(prompts.calls().at(0).file.filter.startsWith(
        u"Windows Enhanced Metafiles (*.emf)|*.emf|"_s));
    EXPECT_TRUE(FilesInFolder().isEmpty()) << FilesInFolder().join(u' ').toStdString();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_s);
}

struct ExportRow
{
    const char* name;
    const char* fileName;
    int filterIndex;
    const char* writtenName;
    QByteArray signature; // at offset 40 for metafiles, else at the start
};

class GraphWindowExportTest : public GraphWindowTest, public testing::WithParamInterface<ExportRow>
{
};

TEST_P(GraphWindowExportTest, ExportWritesTheChosenKind)
{
    const ExportRow& row = GetParam();
    TypeRows({ { u"Apples"_s, u"12"_s } });
    prompts.answerSaveFile(
        Frame::FileChoice { PathIn(QString::fromUtf8(row.fileName)), row.filterIndex });
    window->ExportGraphFile();
    QFile written(PathIn(QString::fromUtf8(row.writtenName)));
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray bytes = written.readAll();
    const qsizetype at = row.signature == " EMF" ? 40 : 0;
    EXPECT_EQ(bytes.mid(at, row.signature.size()), row.signature);
    EXPECT_EQ(FilesInFolder().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphWindowExportTest,
    testing::Values(ExportRow { "emf", "g.emf", 1, "g.emf", " EMF" },
        ExportRow { "emfByFilter", "g", 1, "g.emf", " EMF" },
        ExportRow { "pngByFilter", "g", 2, "g.png", "\x89PNG" },
        ExportRow { "svg", "g.SVG", 1, "g.SVG", "<?xml" },
        ExportRow { "pdf", "g.pdf", 4, "g.pdf", "%PDF" }),
    [](const testing::TestParamInfo<ExportRow>& info) { return info.param.name; });

TEST_F(GraphWindowTest, CopyGraphPutsTheMetafileAndAnImageOnTheClipboard)
{
    TypeRows({ { u"Apples"_s, u"12"_s } });
    window->CopyGraph();
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(data, nullptr);
    const Emf::Picture picture = Emf::Picture::fromBytes(data->data(u"image/x-emf"_s));
    EXPECT_TRUE(picture.isValid());
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

struct DropRow
{
    const char* name;
    QStringList files;
    bool accepted;
};

class GraphWindowDropTest : public GraphWindowTest, public testing::WithParamInterface<DropRow>
{
};

TEST_P(GraphWindowDropTest, OnlyOneGraphFileIsAccepted)
{
    const DropRow& row = GetParam();
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& file : row.files)
        urls.append(QUrl::fromLocalFile(PathIn(file)));
    if (!urls.isEmpty())
        data.setUrls(urls);
    else
        data.setText(u"pets.qnp"_s);
    EXPECT_EQ(Ormsey::frmOrmsey::DroppedGraphFile(&data).has_value(), row.accepted);

    QDragEnterEvent enter(
        QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_EQ(enter.isAccepted(), row.accepted);
    if (row.accepted) {
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphWindowDropTest,
    testing::Values(DropRow { "oneGraphFile", { u"pets.qnp"_s }, true },
        DropRow { "upperCaseEnding", { u"PETS.QNP"_s }, true },
        DropRow { "twoGraphFiles", { u"a.qnp"_s, u"b.qnp"_s }, false },
        DropRow { "sheetFile", { u"pets.qnc"_s }, false }, DropRow { "noFiles", {}, false }),
    [](const testing::TestParamInfo<DropRow>& info) { return info.param.name; });

TEST_F(GraphWindowTest, DroppingAGraphFileOpensIt)
{
    Graph source;
    source.Data(0, 0, u"Bats"_s);
    const QString path = PathIn(u"Bats.QNP"_s);
    ASSERT_EQ(source.SaveGraphData(path), QString());
    QMimeData data;
    data.setUrls({ QUrl::fromLocalFile(path) });
    EXPECT_TRUE(window->DropFile(&data));
    EXPECT_EQ(Cell(0, 0), u"Bats"_s);
    EXPECT_EQ(window->FileName(), path);
}

TEST_F(GraphWindowTest, ClosingAnUnchangedGraphAsksNothing)
{
    EXPECT_TRUE(window->queryClose());
    EXPECT_TRUE(prompts.calls().isEmpty());
}

TEST_F(GraphWindowTest, ClosingAChangedGraphAsksAndCancelKeepsIt)
{
    TypeCell(0, 1, u"3"_s);
    prompts.answerMessage(MessageAnswer::Cancel);
    EXPECT_FALSE(window->queryClose());
    ASSERT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(prompts.calls()[0].text, savePromptText);
    EXPECT_EQ(prompts.calls()[0].icon, Frame::MessageIcon::Exclamation);
    EXPECT_EQ(prompts.calls()[0].buttons, Frame::MessageButtons::YesNoCancel);
    EXPECT_TRUE(window->IsChanged());
}

TEST_F(GraphWindowTest, ClosingAChangedGraphWithYesSaves)
{
    TypeCell(0, 1, u"3"_s);
    const QString path = PathIn(u"closing.qnp"_s);
    prompts.answerMessage(MessageAnswer::Yes).answerSaveFile(Frame::FileChoice { path, 1 });
    EXPECT_TRUE(window->queryClose());
    Graph reread;
    reread.LoadGraphData(path);
    EXPECT_EQ(reread.Data(0, 1), u"3"_s);
}

TEST_F(GraphWindowTest, ClosingAChangedGraphWithNoDropsTheChanges)
{
    TypeCell(0, 1, u"3"_s);
    prompts.answerMessage(MessageAnswer::No);
    EXPECT_TRUE(window->queryClose());
    EXPECT_FALSE(window->IsChanged());
    EXPECT_TRUE(FilesInFolder().isEmpty());
}

TEST_F(GraphWindowTest, ClosingWhenTheSaveDialogIsCancelledKeepsTheWindow)
{
    TypeCell(0, 1, u"3"_s);
    prompts.answerMessage(MessageAnswer::Yes).answerSaveFile(std::nullopt);
    EXPECT_FALSE(window->queryClose());
}

TEST_F(GraphWindowTest, MenusFollowTheGraph)
{
    // Options can be set before any data are typed.
    EXPECT_TRUE(window->Action(538)->isEnabled());
    EXPECT_TRUE(window->Action(1561)->isEnabled());
    EXPECT_TRUE(window->Action(536)->isEnabled());
    EXPECT_TRUE(window->Action(545)->isEnabled());
    EXPECT_TRUE(window->Action(531)->isChecked());

    TypeRows({ { u"1990"_s, u"4"_s }, { u"1991"_s, u"6"_s } });

    window->Action(1559)->trigger();
    EXPECT_TRUE(graph().Graph3D());
    EXPECT_TRUE(window->Action(536)->isChecked());

    window->Action(533)->trigger(); // a line graph of x-y pairs
    EXPECT_EQ(graph().GraphType(), Graph::LineGraph);
    EXPECT_FALSE(window->Action(536)->isEnabled());
    EXPECT_FALSE(window->Action(1559)->isEnabled());
    EXPECT_FALSE(window->Action(545)->isEnabled());
    EXPECT_TRUE(window->Action(1557)->isChecked());

    TypeCell(0, 0, u"Early"_s);
    TypeCell(1, 0, u"Later"_s);
    EXPECT_TRUE(window->Action(545)->isEnabled());
    window->Action(1558)->trigger();
    EXPECT_FALSE(window->Action(545)->isEnabled());
    EXPECT_TRUE(window->Action(534)->isChecked());
}

TEST_F(GraphWindowTest, MenuCaptionsComeFromTheStringTable)
{
    EXPECT_EQ(window->mnuFile->title(), u"&File"_s);
    EXPECT_EQ(window->mnuHelp->title(), u"&Help"_s);
    EXPECT_EQ(window->Action(507)->text(), u"&Export Graph..."_s);
    EXPECT_EQ(window->Action(545)->text(), u"&Edit Data Series..."_s);
    EXPECT_EQ(window->Action(1553)->text(), u"Print"_s);
}

struct SortRow
{
    const char* name;
    int menuId;
    QStringList order;
};

class GraphWindowSortTest : public GraphWindowTest, public testing::WithParamInterface<SortRow>
{
};

TEST_P(GraphWindowSortTest, SortCommandsReorderTheGrid)
{
    TypeRows({ { u"Cats"_s, u"2"_s }, { u"Ants"_s, u"30"_s }, { u"Bees"_s, u"10"_s } });
    window->Action(541)->trigger();
    window->Action(GetParam().menuId)->trigger();
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(Cell(row, 0), GetParam().order[row]) << row;
}

INSTANTIATE_TEST_SUITE_P(Rows, GraphWindowSortTest,
    testing::Values(SortRow { "byName", 541, { u"Ants"_s, u"Bees"_s, u"Cats"_s } },
        SortRow { "byNumber", 542, { u"Cats"_s, u"Bees"_s, u"Ants"_s } },
        SortRow { "restored", 543, { u"Cats"_s, u"Ants"_s, u"Bees"_s } }),
    [](const testing::TestParamInfo<SortRow>& info) { return info.param.name; });

TEST_F(GraphWindowTest, TextStyleSetsTheGraphFont)
{
    prompts.answerFont(QFont(u"Liberation Serif"_s, 12));
    window->Action(523)->trigger();
    EXPECT_EQ(graph().GraphFont(), u"Liberation Serif"_s);
    EXPECT_TRUE(window->IsChanged());
    prompts.answerFont(std::nullopt);
    window->Action(523)->trigger();
    EXPECT_EQ(graph().GraphFont(), u"Liberation Serif"_s);
    EXPECT_EQ(prompts.calls()[1].initialFont.family(), u"Liberation Serif"_s);
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
    window->Action(545)->trigger();
    EXPECT_EQ(Heading(1), u"Boys"_s);
    EXPECT_EQ(Heading(2), u"Girls"_s);
    EXPECT_TRUE(window->IsChanged());
}

TEST_F(GraphWindowTest, ADamagedFileIsReportedAndKeepsWhatWasRead)
{
    const QString path = PathIn(u"damaged.qnp"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Ormsey Data File]\r\nRow1 = \"Owls\",\"2\"\r\n"
               "Row2 = \"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\"\r\n");
    file.close();
    prompts.answerMessage(MessageAnswer::Ok);
    window->OpenGraphFile(path);
    EXPECT_EQ(prompts.messages(), QStringList { u"An unknown error occured: 9"_s });
    EXPECT_EQ(window->FileName(), path);
    EXPECT_EQ(Cell(0, 0), u"Owls"_s);
}

TEST_F(GraphWindowTest, ProducersFillTheGraphAndTheWindowShowsIt)
{
    graph().Data(0, 0, u"Red"_s);
    graph().Data(0, 1, u"5"_s);
    graph().HorizontalAxisLabel(u"Colour"_s);
    window->GetDataFromGraphObject();
    EXPECT_EQ(Cell(0, 0), u"Red"_s);
    EXPECT_EQ(window->txtXAxisLabel->text(), u"Colour"_s);
    EXPECT_TRUE(window->Action(538)->isEnabled());
}

TEST_F(GraphWindowTest, PrintDialogCarriesPrintData)
{
    Ormsey::frmOrmseyPrint dialog(window.get());
    EXPECT_EQ(dialog.chkPrintData->text(), u"Print &Data"_s);
    EXPECT_EQ(dialog.FormOwner.data(), static_cast<QWidget*>(window.get()));
    ASSERT_NE(dialog.optLandscape, nullptr);
}

TEST(GraphWindowRegistration, KindOneMakesGraphWindows)
{
    Ormsey::RegisterGraphWindow();
    const Frame::DocumentKind* kind = Frame::FindDocumentKind(Frame::GraphDocument);
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind->CaptionWord, u"Ormsey"_s);
    EXPECT_EQ(Frame::DocTypeForFileName(u"/class/PETS.QNP"), Frame::GraphDocument);
    std::unique_ptr<QObject> made(kind->CreateWindow());
    EXPECT_NE(qobject_cast<Ormsey::frmOrmsey*>(made.get()), nullptr);
    Frame::UnregisterDocumentKind(Frame::GraphDocument);
}

} // namespace
