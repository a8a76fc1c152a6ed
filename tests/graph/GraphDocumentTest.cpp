#include "graph/GraphDocument.h"

#include "RowFile.h"
#include "frame/FrameSettings.h"
#include "frame/support/ScriptedPrompts.h"
#include "graph/Graph.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::MessageAnswer;
using Ormsey::Graph;
using Ormsey::GraphDocument;

namespace {

class GraphDocumentTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Frame::InitialiseFrame(QStringLiteral(QUORBIN_RESOURCES_DIR));
        ASSERT_TRUE(folder.isValid());
    }

    QString PathIn(const QString& name) const { return QDir(folder.path()).filePath(name); }
    QString WriteFile(const QString& name, const QByteArray& bytes) const
    {
        QFile file(PathIn(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    Graph& graph() { return document.GraphObject(); }

    ScriptedPrompts prompts;
    QTemporaryDir folder;
    GraphDocument document;
};

TEST_F(GraphDocumentTest, OpeningOverAFullerGraphKeepsNothingOfIt)
{
    // Four series and a sort: nothing of them may leak into the file read.
    graph().NumberOfDataSeries(4);
    for (int row = 0; row < 6; ++row) {
        for (int column = 0; column < Graph::ColumnCount; ++column)
            document.SetCell(row, column, QString::number(row * 10 + column) + u".5"_s);
    }
    document.Sort(1);
    const QString path = WriteFile(u"two.qnp"_s,
        "[Ormsey Data File]\r\nNumberOfDataSeries = 2\r\nRow1 = \"Cats\",\"3\",\"4\"\r\n"
        "Row2 = \"Dogs\",\"5\",\"6\"\r\n");
    prompts.answerMessage(MessageAnswer::No); // drop the unsaved four-series graph
    QMimeData dropped;
    dropped.setUrls({ QUrl::fromLocalFile(path) });
    ASSERT_TRUE(document.Drop(&dropped));
    EXPECT_FALSE(document.IsChanged());

    const QStringList expected[] = { { u"Cats"_s, u"3"_s, u"4"_s }, { u"Dogs"_s, u"5"_s, u"6"_s } };
    for (int row = 0; row < Graph::RowCount; ++row) {
        for (int column = 0; column < Graph::ColumnCount; ++column) {
            const QString want = row < 2 ? expected[row].value(column) : QString();
            ASSERT_EQ(graph().Data(row, column), want) << row << "," << column;
        }
    }
    document.Sort(-1);
    EXPECT_EQ(graph().Data(0, 0), u"Cats"_s);
    ASSERT_TRUE(document.Save());
    QFile saved(path);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    const QByteArray text = saved.readAll();
    EXPECT_TRUE(text.contains("Row1 = \"Cats\",\"3\",\"4\"")) << text.toStdString();
    EXPECT_FALSE(text.contains("Row3")) << text.toStdString();
    EXPECT_FALSE(text.contains(".5")) << text.toStdString();
}

TEST_F(GraphDocumentTest, AFileThatCannotBeReadKeepsTheGraph)
{
    document.SetCell(0, 0, u"Kept"_s);
    prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(document.Open(PathIn(u"missing.qnp"_s)));
    EXPECT_EQ(prompts.messages(), QStringList { u"An unknown error occured: 53"_s });
    EXPECT_EQ(graph().Data(0, 0), u"Kept"_s);
    EXPECT_TRUE(document.FileName().isEmpty());
    EXPECT_TRUE(document.IsChanged());
}

TEST_F(GraphDocumentTest, ADamagedFileKeepsWhatWasReadAndSaysSo)
{
    const QString path = WriteFile(u"damaged.qnp"_s,
        "[Ormsey Data File]\r\nRow1 = \"Owls\",\"2\"\r\n"
        "Row2 = \"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\"\r\n");
    prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(document.Open(path));
    EXPECT_EQ(prompts.messages(), QStringList { u"An unknown error occured: 9"_s });
    EXPECT_EQ(document.FileName(), path);
    EXPECT_EQ(graph().Data(0, 0), u"Owls"_s);
    EXPECT_FALSE(document.IsChanged());
}

TEST_F(GraphDocumentTest, CommaSeparatedTextOpensAsANewUnsavedGraphOrNotAtAll)
{
    document.SetCell(0, 0, u"Kept"_s);
    prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(document.Open(WriteFile(u"empty.csv"_s, "\r\n\r\n")));
    EXPECT_EQ(graph().Data(0, 0), u"Kept"_s);
    ASSERT_EQ(prompts.calls().size(), 1);

    ASSERT_TRUE(document.Open(WriteFile(u"heights.CSV"_s, "Name,Height\r\n\"Lee, Jo\",131\r\n")));
    EXPECT_EQ(graph().Data(0, 0), u"Lee, Jo"_s);
    EXPECT_EQ(graph().Data(0, 1), u"131"_s);
    EXPECT_EQ(graph().DataSeriesLabel(1), u"Height"_s);
    EXPECT_TRUE(document.FileName().isEmpty()); // Save asks for a graph file's name
    EXPECT_TRUE(document.IsChanged());
}

TEST_F(GraphDocumentTest, SaveAsThenSaveWritesTheFileAndClearsTheChangedState)
{
    document.SetCell(0, 0, u"Cats"_s);
    document.SetCell(0, 1, u"12"_s);
    const QString path = PathIn(u"pets"_s);
    prompts.answerSaveFile(Frame::FileChoice { path, 1 });
    ASSERT_TRUE(document.Save()); // no file yet: Save acts as Save As
    EXPECT_EQ(prompts.calls().at(0).file.title, u"Save As"_s);
    EXPECT_EQ(prompts.calls().at(0).file.filter, u"Quorbin Ormsey Files (*.qnp)|*.qnp"_s);
    EXPECT_EQ(document.FileName(), path + u".qnp"_s);
    EXPECT_EQ(document.Caption(), u"Ormsey - pets"_s);
    EXPECT_FALSE(document.IsChanged());

    document.SetCell(0, 1, u"8"_s);
    ASSERT_TRUE(document.Save()); // asks nothing now
    EXPECT_EQ(prompts.calls().size(), 1);
    GraphDocument reopened;
    ASSERT_TRUE(reopened.Open(document.FileName()));
    EXPECT_EQ(reopened.GraphObject().Data(0, 0), u"Cats"_s);
    EXPECT_EQ(reopened.GraphObject().Data(0, 1), u"8"_s);
}

TEST_F(GraphDocumentTest, AFailedSaveIsReportedAndKeepsTheChanges)
{
    document.SetCell(0, 1, u"8"_s);
    prompts.answerSaveFile(Frame::FileChoice { PathIn(u"no/such/folder/x.qnp"_s), 1 })
        .answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(document.Save());
    ASSERT_EQ(prompts.calls().size(), 2);
    EXPECT_EQ(prompts.calls().at(1).icon, Frame::MessageIcon::Exclamation);
    EXPECT_TRUE(document.IsChanged());
    EXPECT_TRUE(document.FileName().isEmpty());
}

class GraphDocumentAskTest : public RowFile::RowTest<GraphDocumentTest>
{
};

TEST_P(GraphDocumentAskTest, TheQuestionBeforeClosing)
{
    const QHash<QString, MessageAnswer> answers { { u"Yes"_s, MessageAnswer::Yes },
        { u"No"_s, MessageAnswer::No }, { u"Cancel"_s, MessageAnswer::Cancel } };
    document.SetCell(0, 1, u"3"_s);
    prompts.answerMessage(answers.value(row().text("answer")));
    if (row().text("answer") == u"Yes") {
        prompts.answerSaveFile(row().flag("saveDialogAnswered")
                ? std::optional(Frame::FileChoice { PathIn(u"closing.qnp"_s), 1 })
                : std::nullopt);
    }
    EXPECT_EQ(document.AskToSave(), row().flag("mayClose"));
    EXPECT_EQ(prompts.calls().at(0).text,
        u"This graph has not been saved.\nDo you wish to save your data?"_s);
    EXPECT_EQ(prompts.calls().at(0).buttons, Frame::MessageButtons::YesNoCancel);
    EXPECT_EQ(document.IsChanged(), row().flag("changedAfter"));
    EXPECT_EQ(QFile::exists(PathIn(u"closing.qnp"_s)), row().flag("fileWritten"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphDocumentAskTest, RowFile::In("graph/documentAsks.rows"), RowFile::Named());

TEST_F(GraphDocumentTest, AnUnchangedGraphClosesWithoutAQuestion)
{
    EXPECT_TRUE(document.AskToSave());
    EXPECT_TRUE(prompts.calls().isEmpty());
}

TEST_F(GraphDocumentTest, OnlyCellsUnderAHeadingTakeText)
{
    EXPECT_TRUE(document.SetCell(0, 1, u"5"_s));
    EXPECT_FALSE(document.SetCell(0, 2, u"6"_s)); // one series: no heading over column 2
    EXPECT_FALSE(document.SetCell(0, 1, u"5"_s)); // unchanged
    EXPECT_FALSE(document.SetCell(256, 0, u"7"_s));
    graph().NumberOfDataSeries(2);
    EXPECT_TRUE(document.SetCell(0, 2, u"6"_s));
    // X-y pairs plot one series only.
    document.SetCell(0, 0, u"1990"_s);
    document.SetGraphType(Graph::Scattergram);
    EXPECT_EQ(document.Headings(), (QStringList { u"X"_s, u"Y"_s }));
    EXPECT_FALSE(document.SetCell(1, 2, u"6"_s));
}

TEST_F(GraphDocumentTest, EveryCommandNotifiesOnceAndOnlyRealChangesMarkTheDocument)
{
    QSignalSpy changed(&document, &GraphDocument::changed);
    document.SetCell(0, 0, u"1990"_s);
    document.SetCell(0, 1, u"4"_s); // the data turn into x-y pairs here
    EXPECT_EQ(changed.count(), 2);
    EXPECT_TRUE(document.IsChanged());

    GraphDocument fresh;
    QSignalSpy notified(&fresh, &GraphDocument::changed);
    fresh.SetGraphTitle(fresh.GraphObject().GraphTitle());
    EXPECT_EQ(notified.count(), 0);
    fresh.SetGraphType(Graph::BarChart);
    EXPECT_FALSE(fresh.IsChanged());
    fresh.GraphObject().RequestRedraw(); // an options dialog applied its settings
    EXPECT_EQ(notified.count(), 2);
    EXPECT_TRUE(fresh.IsChanged());
}

class GraphDocumentDropTest : public RowFile::RowTest<>
{
};

TEST_P(GraphDocumentDropTest, OnlyOneGraphFileIsAccepted)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& file : row().list("files"))
        urls.append(QUrl::fromLocalFile(u"/tmp/"_s + file));
    if (!urls.isEmpty())
        data.setUrls(urls);
    else
        data.setText(u"pets.qnp"_s);
    EXPECT_EQ(GraphDocument::DroppedGraphFile(&data).has_value(), row().flag("accepted"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphDocumentDropTest, RowFile::In("graph/documentDrops.rows"), RowFile::Named());

class GraphDocumentExportTest : public RowFile::RowTest<GraphDocumentTest>
{
};

TEST_P(GraphDocumentExportTest, ExportWritesTheChosenKind)
{
    const QString chosen = row().text("chosen");
    const QString written = row().text("written");
    const QByteArray signature = row().bytes("signature");
    document.SetCell(0, 0, u"Apples"_s);
    document.SetCell(0, 1, u"12"_s);
    prompts.answerSaveFile(chosen.isEmpty()
            ? std::nullopt
            : std::optional(Frame::FileChoice { PathIn(chosen), int(row().whole("filterIndex")) }));
    EXPECT_EQ(document.Export(), !written.isEmpty());
    EXPECT_TRUE(prompts.calls().at(0).file.filter.startsWith(
        u"Windows Enhanced Metafiles (*.emf)|*.emf|"_s));
    const QStringList files = QDir(folder.path()).entryList(QDir::Files);
    ASSERT_EQ(files, written.isEmpty() ? QStringList() : QStringList { written });
    if (written.isEmpty())
        return;
    QFile file(PathIn(written));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const qsizetype at = signature == " EMF" ? 40 : 0;
    EXPECT_EQ(file.readAll().mid(at, signature.size()), signature);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GraphDocumentExportTest, RowFile::In("graph/documentExports.rows"), RowFile::Named());

} // namespace
