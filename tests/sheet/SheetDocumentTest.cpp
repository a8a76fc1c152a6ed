#include "sheet/SheetDocument.h"

#include "RowFile.h"
#include "frame/support/ScriptedPrompts.h"
#include "platform/io/SaveFaults.h"
#include "sheet/SheetChange.h"
#include "sheet/SheetFile.h"
#include "sheet/SheetTestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;
using Frame::MessageAnswer;

namespace {

using RowFile::In;
using RowFile::Named;

constexpr qint32 Red = 0x0000FF;
constexpr qint32 Yellow = 0x00FFFF;

class SheetDocumentTest : public testing::Test
{
protected:
    static CellAddress at(const char* name) { return *CellFromName(QString::fromLatin1(name)); }
    static CellBlock block(const char* current, const char* end)
    {
        return { at(current), at(end) };
    }
    const Sheet& sheet() const { return document.SheetObject(); }
    QString shown(const char* name) const
    {
        const CellAddress cell = at(name);
        return sheet().display(cell.Row, cell.Column).Text;
    }
    QByteArray fileBytes(const QString& path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    // A small saved sheet: numbers, a formula reading them, a total, text.
    void fillAndSave()
    {
        for (const auto& [cell, text] : { std::pair { "A1", u"4"_s }, { "A2", u"6"_s },
                 { "B1", u"=A1*2"_s }, { "A3", u"=sum(A1:A2)"_s }, { "C1", u"Rain"_s } })
            ASSERT_TRUE(document.EnterCell(at(cell), text));
        prompts.answerSaveFile(Frame::FileChoice { folder.filePath(u"base"_s), 1 });
        ASSERT_TRUE(document.Save());
        ASSERT_FALSE(document.IsChanged());
    }

    Runtime::ScopedHostLocale locale { QLocale(QLocale::English, QLocale::UnitedKingdom) };
    ScriptedPrompts prompts;
    QTemporaryDir folder;
    SheetDocument document;
};

struct UndoRow
{
    const char* name;
    std::function<void(SheetDocument&, ScriptedPrompts&)> change;
};

class SheetUndo : public SheetDocumentTest, public testing::WithParamInterface<UndoRow>
{
};

// Undo brings back exactly what the sheet held, the file it would write and its unchanged
// state; redo exactly what the change made.
TEST_P(SheetUndo, UndoAndRedoRestoreEveryCellAndSetting)
{
    fillAndSave();
    const SheetContents before = SheetContents::Of(sheet());
    const QByteArray beforeBytes = SheetFileBytes(sheet());
    GetParam().change(document, prompts);
    const SheetContents after = SheetContents::Of(sheet());
    const QByteArray afterBytes = SheetFileBytes(sheet());
    ASSERT_NE(afterBytes, beforeBytes);
    EXPECT_TRUE(document.IsChanged());
    EXPECT_EQ(document.UndoStack().count(), 6); // five entries and the change

    document.Undo();
    EXPECT_TRUE(SheetContents::Of(sheet()) == before);
    EXPECT_EQ(SheetFileBytes(sheet()), beforeBytes);
    EXPECT_FALSE(document.IsChanged());
    document.Redo();
    EXPECT_TRUE(SheetContents::Of(sheet()) == after);
    EXPECT_EQ(SheetFileBytes(sheet()), afterBytes);
    EXPECT_TRUE(document.IsChanged());
}

TextStyle Serif()
{
    TextStyle style;
    style.Font.Name = u"Liberation Serif"_s;
    style.Font.Size = 14;
    style.Font.Bold = true;
    style.Colour = Red;
    return style;
}

INSTANTIATE_TEST_SUITE_P(Rows, SheetUndo,
    testing::Values(UndoRow { "entryRecalculates",
                        [](SheetDocument& d, ScriptedPrompts&) {
                            d.EnterCell({ 1, 1 }, u"10"_s);
                        } },
        UndoRow { "refusedEntryLeftTheCellEmpty",
            [](SheetDocument& d, ScriptedPrompts& prompts) {
                prompts.answerMessage(MessageAnswer::Ok);
                EXPECT_FALSE(d.EnterCell({ 1, 1 }, u"=B1+1"_s));
            } },
        UndoRow { "clear",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.ClearCells({ { 1, 1 }, { 2, 1 } });
            } },
        UndoRow { "copy",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.CopyCell({ 1, 2 }, { 2, 2 }, { 4, 2 });
            } },
        UndoRow { "textStyle",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.SetTextStyle({ { 1, 1 }, { 2, 2 } }, Serif());
            } },
        UndoRow { "textStyleOfTheSheet",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.SetTextStyle(CellBlock::WholeSheet(), Serif());
            } },
        UndoRow { "cellStyle",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.SetCellStyle({ { 1, 1 }, { 2, 1 } }, Red, true);
            } },
        UndoRow { "cellStyleOfTheSheet",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.SetCellStyle(CellBlock::WholeSheet(), Yellow, false);
            } },
        UndoRow { "numberFormat",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.SetNumberFormat({ { 1, 1 }, { 3, 1 } }, u"0.00"_s);
            } },
        UndoRow { "numberFormatOfTheSheet",
            [](SheetDocument& d, ScriptedPrompts&) {
                d.SetNumberFormat(CellBlock::WholeSheet(), u"Currency"_s);
            } },
        UndoRow {
            "columnWidth", [](SheetDocument& d, ScriptedPrompts&) { d.SetColumnWidth(3, 2000); } },
        UndoRow {
            "rowHeight", [](SheetDocument& d, ScriptedPrompts&) { d.SetRowHeight(2, 600); } }),
    [](const testing::TestParamInfo<UndoRow>& info) { return info.param.name; });

TEST_F(SheetDocumentTest, DraggedBorderIsOneStepAndNoneWhenDraggedBack)
{
    for (const qint32 width : { 1300, 1500, 1700 })
        document.SetColumnWidth(2, width);
    EXPECT_EQ(document.UndoStack().count(), 1);
    document.SetColumnWidth(3, 900);
    EXPECT_EQ(document.UndoStack().count(), 2);
    document.SetColumnWidth(3, DesignedColumnWidth);
    EXPECT_EQ(document.UndoStack().count(), 1);
    document.Undo();
    EXPECT_EQ(sheet().columnWidth(2), DesignedColumnWidth);
    EXPECT_FALSE(document.IsChanged());
}

TEST_F(SheetDocumentTest, UndoKeepsAHundredStepsAndKnowsWhereTheFileWasSaved)
{
    for (int value = 1; value <= 50; ++value)
        document.EnterCell({ 1, 1 }, QString::number(value));
    prompts.answerSaveFile(Frame::FileChoice { folder.filePath(u"steps.qnc"_s), 1 });
    ASSERT_TRUE(document.Save());
    for (int value = 51; value <= 101; ++value)
        document.EnterCell({ 1, 1 }, QString::number(value));
    EXPECT_TRUE(document.IsChanged());
    for (int step = 0; step < 51; ++step)
        document.Undo();
    EXPECT_EQ(shown("A1"), u"50"_s);
    EXPECT_FALSE(document.IsChanged());
    while (document.CanUndo())
        document.Undo();
    EXPECT_EQ(shown("A1"), QString::number(101 - SheetUndoDepth));
    EXPECT_TRUE(document.IsChanged());
    document.EnterCell({ 1, 1 }, shown("A1")); // the same text again is no step
    EXPECT_TRUE(document.CanRedo());
}

TEST_F(SheetDocumentTest, FailedSaveKeepsTheFileAndTheChangedState)
{
    fillAndSave();
    const QString path = document.FileName();
    const QByteArray saved = fileBytes(path);
    document.EnterCell(at("C1"), u"Snow"_s);
    Io::SaveFaults::Scope faults;
    Io::SaveFaults::failAtCommit();
    prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(document.Save());
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_EQ(fileBytes(path), saved);
    EXPECT_TRUE(document.IsChanged());
    EXPECT_EQ(document.FileName(), path);
}

TEST_F(SheetDocumentTest, SaveAsAddsTheExtensionAndSetsTheCaption)
{
    prompts.answerSaveFile(Frame::FileChoice { folder.filePath(u"Pond"_s), 1 });
    document.EnterCell({ 1, 1 }, u"Frogs"_s);
    ASSERT_TRUE(document.SaveAs());
    EXPECT_EQ(prompts.calls().at(0).file.filter, u"Tillane Files (*.qnc)|*.qnc"_s);
    EXPECT_EQ(document.FileName(), folder.filePath(u"Pond.qnc"_s));
    EXPECT_EQ(document.Caption(), u"Tillane - Pond"_s);
    SheetDocument reopened;
    ASSERT_TRUE(reopened.Open(document.FileName()));
    EXPECT_EQ(reopened.SheetObject().display(1, 1).Text, u"Frogs"_s);
    EXPECT_FALSE(reopened.IsChanged());
}

struct OpenRow
{
    const char* name;
    QByteArray bytes;
    Frame::MessageIcon icon;
    QString messageStart;
    bool keepsPrevious; // nothing applied: the document as it was
    bool changed;
};

class SheetOpen : public SheetDocumentTest, public testing::WithParamInterface<OpenRow>
{
};

TEST_P(SheetOpen, RefusedAndDamagedFilesAreReported)
{
    const OpenRow& row = GetParam();
    document.EnterCell({ 5, 5 }, u"before"_s);
    const QString path = folder.filePath(u"file.qnc"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(row.bytes);
    file.close();
    prompts.answerMessage(MessageAnswer::Ok);
    EXPECT_FALSE(document.Open(path));
    ASSERT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(prompts.calls()[0].icon, row.icon);
    EXPECT_TRUE(prompts.calls()[0].text.startsWith(row.messageStart))
        << prompts.messages()[0].toStdString();
    EXPECT_EQ(shown("E5"), row.keepsPrevious ? u"before"_s : QString());
    EXPECT_EQ(document.IsChanged(), row.changed);
    EXPECT_TRUE(document.FileName().isEmpty());
}

QByteArray DamagedFile()
{
    Sheet source;
    EnterCell(source, 1, 1, u"kept"_s);
    EnterCell(source, 2, 1, u"lost"_s);
    const QByteArray bytes = SheetFileBytes(source);
    return bytes.left(bytes.lastIndexOf("lost") - 2);
}

INSTANTIATE_TEST_SUITE_P(Rows, SheetOpen,
    testing::Values(OpenRow { "newerVersion", QByteArray("\x01\0\0\0\x02\0\x37\x01", 8),
                        Frame::MessageIcon::Critical,
                        u"This file was created by a more recent version"_s, false, false },
        OpenRow { "notASheet", "hello there", Frame::MessageIcon::Exclamation,
            u"This file is not a Tillane sheet file."_s, true, true },
        OpenRow { "damaged", DamagedFile(), Frame::MessageIcon::Exclamation,
            u"This file is damaged"_s, false, true }),
    [](const testing::TestParamInfo<OpenRow>& info) { return info.param.name; });

// What clearing does to a cell is the sheet's rule (DependenciesTest); the document picks the
// cells: from the current cell to the selection's end, none when that lies above or left.
TEST_F(SheetDocumentTest, ClearingTakesTheCellsFromTheCurrentCellDown)
{
    fillAndSave();
    document.ClearCells(block("A2", "A1"));
    EXPECT_EQ(shown("A1"), u"4"_s);
    document.ClearCells(block("A1", "B1"));
    EXPECT_EQ((QStringList { shown("A1"), shown("B1"), shown("C1"), shown("A2") }),
        (QStringList { QString(), QString(), u"Rain"_s, u"6"_s }));
}

using SheetCellColour = RowFile::RowTest<SheetDocumentTest>;

TEST_P(SheetCellColour, ColoursAreStoredTheSheetsWay)
{
    const auto chosen = qint32(row().whole("chosen"));
    document.SetCellStyle(
        row().flag("wholeSheet") ? CellBlock::WholeSheet() : CellBlock::Single(at("B2")), chosen,
        false);
    EXPECT_EQ(sheet().display(2, 2).BackColour, row().whole("stored"));
    EXPECT_EQ(sheet().backgroundColour(), row().whole("background"));
    EXPECT_EQ(document.CellBackColour(at("B2")), chosen);
}

INSTANTIATE_TEST_SUITE_P(Rows, SheetCellColour, In("sheet/document/cellColours.rows"), Named());

TEST_F(SheetDocumentTest, NumberFormatsOfCellsAndOfTheSheet)
{
    document.EnterCell(at("A1"), u"£3"_s);
    document.EnterCell(at("A2"), u"2.5"_s);
    document.SetNumberFormat(CellBlock::Single(at("A1")), u"General"_s);
    EXPECT_EQ(sheet().record(at("A1")).NumberFormat, QString());
    EXPECT_EQ(shown("A1"), u"3"_s);
    document.SetNumberFormat(block("A2", "A2"), u"0.000"_s);
    EXPECT_EQ(shown("A2"), u"2.500"_s);
    document.SetNumberFormat(CellBlock::WholeSheet(), u"0.0"_s);
    EXPECT_EQ(sheet().numberFormat(), u"0.0"_s);
    EXPECT_EQ(sheet().record(at("A2")).NumberFormat, QString());
    EXPECT_EQ(shown("A1"), u"3.0"_s);
    EXPECT_EQ(shown("A2"), u"2.5"_s);
}

using SheetFormulaTrial = RowFile::RowTest<SheetDocumentTest>;

TEST_P(SheetFormulaTrial, TrialEvaluationChangesNothing)
{
    fillAndSave();
    const SheetContents before = SheetContents::Of(sheet());
    const QByteArray cell = row().text("cell").toLatin1();
    EXPECT_EQ(document.FormulaEvaluates(at(cell.constData()), row().text("text")),
        row().flag("evaluates"));
    EXPECT_TRUE(SheetContents::Of(sheet()) == before);
    EXPECT_FALSE(document.CanUndo() && document.IsChanged());
}

INSTANTIATE_TEST_SUITE_P(Rows, SheetFormulaTrial, In("sheet/document/formulaTrials.rows"), Named());

} // namespace
