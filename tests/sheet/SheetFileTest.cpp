#include "sheet/SheetFile.h"

#include "GoldenFile.h"
#include "TableRows.h"
#include "frame/FrameSettings.h"
#include "graph/Graph.h"
#include "platform/io/SaveFaults.h"
#include "sheet/CellReferences.h"
#include "sheet/Dependencies.h"
#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>
#include <cstring>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

// The file format written out by hand, record by record, to compare the writer against.
class Bytes
{
public:
    Bytes& tag(qint32 tag) { return raw(tag); }
    Bytes& int16(qint32 tag, qint16 value) { return raw(tag).raw<qint16>(2).raw(value); }
    Bytes& int32(qint32 tag, qint32 value) { return raw(tag).raw<qint16>(3).raw(value); }
    Bytes& real(qint32 tag, double value)
    {
        quint64 bits;
        std::memcpy(&bits, &value, 8);
        return raw(tag).raw<qint16>(5).raw(bits);
    }
    Bytes& currency(qint32 tag, qint64 tenThousandths)
    {
        return raw(tag).raw<qint16>(6).raw(tenThousandths);
    }
    Bytes& text(qint32 tag, const QByteArray& bytes)
    {
        raw(tag).raw<qint16>(8).raw<quint16>(quint16(bytes.size()));
        m_bytes += bytes;
        return *this;
    }
    Bytes& boolean(qint32 tag, bool value)
    {
        return raw(tag).raw<qint16>(11).raw<qint16>(value ? -1 : 0);
    }
    Bytes& cell(qint16 row, qint16 column) { return raw<qint32>(2).raw(row).raw(column); }
    // The head of a graph block in slot 1 over rows 1-2, categories in A and data in B,
    // saying that `length` bytes of graph text follow.
    Bytes& graphBlockHead(qint32 length)
    {
        int32(13, 1);
        for (int corner = 0; corner < 4; ++corner)
            raw<qint32>(0);
        return raw<qint16>(1)
            .raw<qint16>(2)
            .raw<qint32>(2)
            .raw<qint16>(1)
            .raw<qint16>(2)
            .raw<qint16>(0)
            .raw<qint16>(0)
            .raw<qint32>(0)
            .raw<qint32>(length);
    }
    template <typename T> Bytes& raw(T value)
    {
        const T little = qToLittleEndian(value);
        m_bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
        return *this;
    }
    Bytes& append(const QByteArray& bytes)
    {
        m_bytes += bytes;
        return *this;
    }
    // The records of a new sheet before the first cell, with the used area given.
    Bytes& header(qint16 usedRows = 1, qint16 usedColumns = 1, int widths = 6)
    {
        int16(1, 310).int32(3, 0xFFFFFF).boolean(4, false).boolean(5, false).text(6, "Arial");
        currency(7, 100000).boolean(8, false).boolean(9, false);
        raw<qint32>(10).raw(usedRows).raw(usedColumns);
        text(11, "");
        for (int column = 1; column <= widths; ++column)
            int32(12, 1200);
        return *this;
    }
    const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

void Put(Sheet& target, const char* name, const QString& text)
{
    const CellAddress cell = CellFromName(QString::fromLatin1(name)).value();
    EnterCell(target, cell.Row, cell.Column, text);
}

// A sheet with something of everything the file keeps.
void FillRichSheet(Sheet& target)
{
    Put(target, "A1", u"Day"_s);
    Put(target, "B1", u"Rain"_s);
    Put(target, "A2", u"12/3/2004"_s);
    Put(target, "B2", u"12.5"_s);
    Put(target, "B3", u"50%"_s);
    Put(target, "B4", u"£3"_s);
    Put(target, "C2", u"=B2*2"_s);
    Put(target, "C3", u"=sum(B2:B4)"_s);
    Put(target, "D5", u"x"_s);
    SheetFont font;
    font.Name = u"Liberation Serif"_s;
    font.Size = 12.5;
    font.Bold = true;
    font.Underline = true;
    target.setFont(font);
    target.setBackgroundColour(0xEEDDCC);
    target.setNumberFormat(u"0.0"_s);
    target.setColumnWidth(2, 2400);
    CellDisplay& styled = target.display(1, 2);
    styled.BackColour = 1;
    styled.ForeColour = 0x0000FF;
    styled.Bold = false;
    styled.Italic = true;
    styled.FontName = u"Liberation Mono"_s;
    styled.FontSize = 9.5f;
    styled.Strikethrough = true;
    styled.Underline = false;
    styled.Alignment = AlignCentreCentre;
    target.record(2, 2).Locked = true;
    target.record(3, 3).NumberFormat = u"Fixed"_s;
    target.showNumber(3, 3);
    GraphSlot& graph = target.graphSlot(2);
    graph.InUse = true;
    graph.Bounds = { 2000, 2000, 7000, 7000 };
    graph.Categories = { 1, 1, 4, 1 };
    graph.Data = { 1, 2, 4, 2 };
    graph.FirstRowLabels = true;
    graph.NumberOfGroups = 5;
    graph.Graph = std::make_shared<Ormsey::Graph>();
    graph.Graph->GraphTitle(u"Rain"_s);
    graph.Graph->Data(0, 0, u"Mon"_s);
    graph.Graph->Data(0, 1, u"4"_s);
    for (int row = 1; row <= 4; ++row) {
        AddDependent(target, { 0, 0 }, { row, 1 }, 2);
        AddDependent(target, { 0, 0 }, { row, 2 }, 2);
    }
}

// A graph in slot 3 counting its categories in 7 groups.
void FillGraphBlock(Sheet& target)
{
    GraphSlot& graph = target.graphSlot(3);
    graph.InUse = true;
    graph.Bounds = { 10, 20, 30, 40 };
    graph.Categories = { 2, 1, 9, 1 };
    graph.Data = { 2, 4, 9, 4 };
    graph.CountAndGroup = true;
    graph.NumberOfGroups = 7;
    graph.Graph = std::make_shared<Ormsey::Graph>();
    graph.Graph->GraphTitle(u"Rain"_s);
    graph.Graph->Data(0, 0, u"Mon"_s);
    graph.Graph->Data(0, 1, u"4"_s);
}

class SheetFiles : public SheetTest
{
protected:
    QTemporaryDir folder;
};

// Written files, compared whole with tests/data/sheet/<golden>, then read back and written
// again unchanged: with the bytes pinned, the same bytes again mean that every cell, setting
// and graph the file holds was read back.
struct WrittenRow
{
    const char* name;
    const char* golden;
    std::function<void(Sheet&)> fill;
};

using TestRows::PrintTo;

class WrittenFiles : public SheetTest, public testing::WithParamInterface<WrittenRow>
{
protected:
    // Embedded graphs take their default colours from the colour table.
    void SetUp() override
    {
        Frame::Settings().ColourTable = { { u"RED"_s, 255 }, { u"LIGHT BLUE"_s, 0xFFC080 } };
    }
    void TearDown() override { Frame::Settings() = {}; }
};

TEST_P(WrittenFiles, AreTheGoldenBytesAndReadBackToThem)
{
    GetParam().fill(sheet);
    const QByteArray bytes = SheetFileBytes(sheet);
    EXPECT_TRUE(Golden::Matches(u"sheet/"_s + QString::fromLatin1(GetParam().golden), bytes));
    Sheet back;
    ASSERT_TRUE(ReadSheet(bytes, back).isComplete());
    EXPECT_EQ(SheetFileBytes(back), bytes);
}

INSTANTIATE_TEST_SUITE_P(Rows, WrittenFiles,
    testing::Values(
        // Version 310, white, Arial 10 plain, used area 1 by 1, six widths of 1200 twips,
        // and the one cell (1, 1) with no records.
        WrittenRow { "newSheetWritesOneCellAndSixWidths", "newSheet.qnc", [](Sheet&) {} },
        // The same bytes: no 104-109 or 103 records.
        WrittenRow { "cellFontEqualToTheSheetFontWritesNothing", "newSheet.qnc",
            [](Sheet& target) {
                CellDisplay& display = target.display(1, 1);
                display.Bold = false;
                display.Italic = false;
                display.FontName = u"Arial"_s;
                display.FontSize = 10.0f;
                display.Strikethrough = false;
                display.Underline = false;
                display.ForeColour = Black;
            } },
        // A1 text, locked; B1 50% (0.5, "#0.##%"); A2 12.5 with its dependent B2; B2 the
        // formula =A2*2 (25) with the precedent A2.
        WrittenRow { "smallSheetMatchesTheFormatRecordByRecord", "smallSheet.qnc",
            [](Sheet& target) {
                Put(target, "A1", u"Rain"_s);
                Put(target, "A2", u"12.5"_s);
                Put(target, "B2", u"=A2*2"_s);
                Put(target, "B1", u"50%"_s);
                target.record(1, 1).Locked = true;
            } },
        // Records 101, 102, 104-109, 103, 110, 205 in that order; "é" in UTF-8.
        WrittenRow { "cellDisplayRecordsInTheirOrder", "cellDisplay.qnc",
            [](Sheet& target) {
                CellDisplay& display = target.display(1, 1);
                display.Text = u"é"_s;
                display.BackColour = 5;
                display.Bold = true;
                display.Italic = true;
                display.FontName = u"Courier"_s;
                display.FontSize = 8.5f;
                display.Strikethrough = true;
                display.Underline = true;
                display.ForeColour = 0x00FF00;
                display.Alignment = AlignCentreCentre;
                target.record(1, 1).NumberFormat = u"0.0"_s;
            } },
        // Tag 13 with slot 3, bounds 10 20 30 40, rows 2 and 9, the skipped 2, columns 1 and 4,
        // no first-row labels, counting on, 7 groups, then the graph's own file.
        WrittenRow { "graphBlockCarriesTheGraphBytes", "graphBlock.qnc", FillGraphBlock },
        WrittenRow { "richSheet", "richSheet.qnc", FillRichSheet }),
    TestRows::Named());

// A graph its own reader refuses part-way keeps what was read, and so do the cells after it.
TEST_F(SheetFiles, RefusedGraphTextLosesNoCells)
{
    const QByteArray text = "[Ormsey Data File]\r\nGraphTitle = Rain\r\n"
                            "Row1 = \"a\",\"1\",\"2\",\"3\",\"4\",\"5\",\"6\"\r\n";
    const QByteArray bytes = Bytes()
                                 .header()
                                 .graphBlockHead(static_cast<qint32>(text.size()))
                                 .append(text)
                                 .cell(1, 1)
                                 .text(101, "after")
                                 .bytes();
    Sheet back;
    const SheetReadResult result = ReadSheet(bytes, back);
    EXPECT_EQ(result.status, SheetReadResult::Damaged);
    EXPECT_EQ(result.message,
        u"A graph in this file is damaged (Subscript out of range): it shows only what could be "
        u"read."_s);
    EXPECT_EQ(back.display(1, 1).Text, u"after"_s);
    ASSERT_TRUE(back.graphSlot(1).Graph);
    EXPECT_EQ(back.graphSlot(1).Graph->GraphTitle(), u"Rain"_s);
}

TEST_F(SheetFiles, LastCellZ256WritesEveryCell)
{
    enter("Z256", u"1"_s);
    const QByteArray bytes = SheetFileBytes(sheet);
    const qsizetype header = Bytes().header(256, 26, 26).bytes().size();
    const qsizetype lastCellRecords
        = Bytes().text(101, "1").int16(110, 7).int32(200, 2).real(201, 1).bytes().size();
    EXPECT_EQ(bytes.size(), header + 256 * 26 * 8 + lastCellRecords);
    Sheet back;
    ASSERT_TRUE(ReadSheet(bytes, back).isComplete());
    EXPECT_EQ(back.record(256, 26).Value, 1);
    EXPECT_EQ(back.usedRows(), 256);
    EXPECT_EQ(back.usedColumns(), 26);
}

// The goldens hold six widths for sheets of up to six columns; a wider sheet writes and reads
// one for each column it uses.
TEST_F(SheetFiles, WidthsOfEveryUsedColumnReadBackInOrder)
{
    for (int column = 1; column <= 8; ++column)
        sheet.setColumnWidth(column, 1000 + column);
    enter("H1", u"x"_s);
    Sheet back;
    ASSERT_TRUE(ReadSheet(SheetFileBytes(sheet), back).isComplete());
    for (int column = 1; column <= 8; ++column)
        EXPECT_EQ(back.columnWidth(column), 1000 + column) << column;
}

// A sized row is tag 14 and one raw field; a reader without tag 14 (here renamed to an unknown
// tag) passes over both and reads the rest unchanged.
TEST_F(SheetFiles, RowHeightsReadBackAndPassUnseenByReadersWithoutThem)
{
    enter("B3", u"=1+2"_s);
    sheet.setRowHeight(3, 700);
    sheet.setRowHeight(256, 0xFFFF);
    const QByteArray bytes = SheetFileBytes(sheet);
    const QByteArray plain = Bytes().header(3, 2).tag(14).raw<qint32>((3 << 16) | 700).bytes();
    EXPECT_TRUE(bytes.startsWith(plain));
    Sheet back;
    ASSERT_TRUE(ReadSheet(bytes, back).isComplete());
    EXPECT_EQ(back.rowHeight(3), 700);
    EXPECT_EQ(back.rowHeight(256), 0xFFFF);
    EXPECT_EQ(back.rowHeight(4), 0);

    QByteArray unknown = bytes;
    const qsizetype records = Bytes().header(3, 2).bytes().size();
    for (qsizetype at : { records, records + 8 })
        unknown[at] = 99;
    Sheet without;
    ASSERT_TRUE(ReadSheet(unknown, without).isComplete());
    EXPECT_EQ(without.rowHeight(3), 0);
    EXPECT_EQ(without.record(3, 2).Formula, u"=1+2"_s);
    EXPECT_EQ(without.display(3, 2).Text, u"3"_s);
}

TEST_F(SheetFiles, GraphRangesAfterLoadingAreOneColumnEach)
{
    FillRichSheet(sheet);
    sheet.graphSlot(2).Data = { 1, 2, 4, 3 }; // wider than a graph ever makes it
    Sheet back;
    ASSERT_TRUE(ReadSheet(SheetFileBytes(sheet), back).isComplete());
    EXPECT_EQ(back.graphSlot(2).Data, (CellRange { 1, 2, 4, 2 }));
    EXPECT_EQ(back.graphSlot(2).Categories, (CellRange { 1, 1, 4, 1 }));
    EXPECT_FALSE(back.graphSlot(1).InUse);
}

TEST_F(SheetFiles, NewerVersionIsRefusedBeforeAnythingElse)
{
    const QByteArray bytes
        = Bytes().int16(1, 311).int32(3, 0x123456).cell(1, 1).text(101, "x").bytes();
    const SheetReadResult result = ReadSheet(bytes, sheet);
    EXPECT_EQ(result.status, SheetReadResult::NewerVersion);
    EXPECT_EQ(result.message,
        u"This file was created by a more recent version of Quorbin and cannot be loaded."_s);
    EXPECT_EQ(sheet.backgroundColour(), White);
    EXPECT_TRUE(shown("A1").isEmpty());
}

// A1 holds 2.5 with the sheet's format "0.00", but the file's shown text for it is stale.
Bytes staleNumberInA1()
{
    return Bytes()
        .header()
        .cell(1, 1)
        .text(101, "stale")
        .int32(200, 2)
        .real(201, 2.5)
        .text(205, "0.00");
}

struct ReadRow
{
    const char* name;
    QByteArray bytes;
    QString shownInA1;
};

class ReadFiles : public SheetTest, public testing::WithParamInterface<ReadRow>
{
};

TEST_P(ReadFiles, ShowTheFirstCell)
{
    ASSERT_TRUE(ReadSheet(GetParam().bytes, sheet).isComplete());
    EXPECT_EQ(shown("A1"), GetParam().shownInA1);
}

INSTANTIATE_TEST_SUITE_P(Rows, ReadFiles,
    testing::Values(
        ReadRow { "olderVersion", Bytes().int16(1, 300).cell(1, 1).text(101, "x").bytes(), u"x"_s },
        ReadRow { "unknownTagsPassedOver",
            Bytes().header().tag(999).cell(1, 1).tag(150).text(101, "kept").tag(-4).bytes(),
            u"kept"_s },
        ReadRow { "notUtf8IsWindows1252",
            Bytes()
                .header()
                .cell(1, 1)
                .text(101,
                    "\xA3"
                    "5 caf\xE9")
                .bytes(),
            u"£5 café"_s },
        ReadRow { "numbersShownAgainWithTheirFormats", staleNumberInA1().bytes(), u"2.50"_s }),
    [](const testing::TestParamInfo<ReadRow>& info) { return info.param.name; });

TEST_F(SheetFiles, NewerVersionLaterInTheFileStillShowsTheNumbersReadBeforeIt)
{
    // What came before the second version record is kept, so it must be a whole sheet: its
    // numbers shown with their formats, and its saved file reading back the same.
    const QByteArray bytes = staleNumberInA1().int16(1, 311).cell(2, 1).text(101, "after").bytes();
    EXPECT_EQ(ReadSheet(bytes, sheet).status, SheetReadResult::NewerVersion);
    EXPECT_EQ(shown("A1"), u"2.50"_s);
    EXPECT_TRUE(shown("A2").isEmpty());
    const QByteArray saved = SheetFileBytes(sheet);
    Sheet back;
    ASSERT_TRUE(ReadSheet(saved, back).isComplete());
    EXPECT_EQ(SheetFileBytes(back), saved);
}

TEST_F(SheetFiles, LoadedLinksRecalculateAfterAnEntry)
{
    enter("A1", u"2"_s);
    enter("A2", u"3"_s);
    enter("B1", u"=sum(A1:A2)"_s);
    enter("C1", u"=B1*A1"_s);
    const QString path = folder.filePath(u"links.qnc"_s);
    ASSERT_TRUE(SaveSheetFile(sheet, path).isEmpty());

    Sheet loaded;
    ASSERT_TRUE(LoadSheetFile(path, loaded).isComplete());
    EXPECT_EQ(loaded.record(1, 3).Value, 10);
    EnterCell(loaded, 2, 1, u"8"_s);
    EXPECT_EQ(loaded.record(1, 2).Value, 10);
    EXPECT_EQ(loaded.record(1, 3).Value, 20);
    EXPECT_EQ(loaded.display(1, 3).Text, u"20"_s);
    EnterCell(loaded, 1, 1, u"=A2"_s);
    EXPECT_EQ(loaded.record(1, 3).Value, 16 * 8);
}

TEST_F(SheetFiles, LoadedCircleIsStillRefused)
{
    enter("A1", u"=B1+1"_s);
    Sheet loaded;
    ASSERT_TRUE(ReadSheet(SheetFileBytes(sheet), loaded).isComplete());
    EXPECT_THROW(EnterCell(loaded, 1, 2, u"=A1"_s), SheetError);
}

struct DamageRow
{
    const char* name;
    QByteArray bytes;
    SheetReadResult::Status status;
    QString reason;
};

class DamagedFiles : public SheetTest, public testing::WithParamInterface<DamageRow>
{
};

TEST_P(DamagedFiles, StopWithAMessageAndKeepWhatCameBefore)
{
    const SheetReadResult result = ReadSheet(GetParam().bytes, sheet);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_TRUE(result.message.contains(GetParam().reason)) << result.message.toStdString();
    if (GetParam().status == SheetReadResult::Damaged) {
        EXPECT_EQ(shown("A1"), u"before"_s); // every row puts this first
    }
}

Bytes damagedStart()
{
    Bytes start;
    start.header().cell(1, 1).text(101, "before");
    return start;
}

INSTANTIATE_TEST_SUITE_P(Rows, DamagedFiles,
    testing::Values(
        DamageRow { "empty", QByteArray(), SheetReadResult::NotASheetFile, u"not a Tillane"_s },
        DamageRow {
            "otherFile", "Day,Rain\r\n"_ba, SheetReadResult::NotASheetFile, u"not a Tillane"_s },
        DamageRow { "cutInsideTag", damagedStart().bytes() + "\x02\x00"_ba,
            SheetReadResult::Damaged, u"ends in the middle of a record"_s },
        DamageRow { "cutInsideText",
            damagedStart().raw<qint32>(101).raw<qint16>(8).raw<quint16>(50).append("abc").bytes(),
            SheetReadResult::Damaged, u"ends in the middle of a record"_s },
        DamageRow { "unknownType",
            damagedStart().raw<qint32>(201).raw<qint16>(99).raw<qint32>(0).bytes(),
            SheetReadResult::Damaged, u"unknown type 99"_s },
        DamageRow { "listLongerThanFile", damagedStart().int32(203, 1000000).bytes(),
            SheetReadResult::Damaged, u"a list longer than the file"_s },
        DamageRow { "negativeListCount", damagedStart().int32(204, -1).bytes(),
            SheetReadResult::Damaged, u"a list longer than the file"_s },
        DamageRow { "cellOutsideSheet", damagedStart().cell(257, 1).bytes(),
            SheetReadResult::Damaged, u"a cell outside the sheet"_s },
        DamageRow { "usedAreaOutsideSheet",
            damagedStart().raw<qint32>(10).raw<qint16>(0).raw<qint16>(3).bytes(),
            SheetReadResult::Damaged, u"a used area outside the sheet"_s },
        DamageRow { "graphSlotFive", damagedStart().int32(13, 5).bytes(), SheetReadResult::Damaged,
            u"a graph slot that does not exist"_s },
        DamageRow { "graphLongerThanFile", damagedStart().graphBlockHead(1000).bytes(),
            SheetReadResult::Damaged, u"a graph longer than the file"_s },
        DamageRow { "unknownKind", damagedStart().int32(200, 7).bytes(), SheetReadResult::Damaged,
            u"a cell of unknown kind"_s },
        DamageRow { "textForNumber", damagedStart().text(201, "12").bytes(),
            SheetReadResult::Damaged, u"a text where a number belongs"_s },
        DamageRow { "hugeFontSize", damagedStart().real(107, 1e300).bytes(),
            SheetReadResult::Damaged, u"a font size out of range"_s },
        DamageRow { "notANumber", damagedStart().real(201, std::nan("")).bytes(),
            SheetReadResult::Damaged, u"not finite"_s }),
    [](const testing::TestParamInfo<DamageRow>& info) { return info.param.name; });

TEST_F(SheetFiles, EveryTruncationStopsCleanlyAndKeepsEarlierCells)
{
    FillRichSheet(sheet);
    const QByteArray bytes = SheetFileBytes(sheet);
    // Where row 2 starts: the cells of row 1 are complete in every longer prefix.
    const qsizetype rowTwo = bytes.indexOf(Bytes().cell(2, 1).bytes());
    ASSERT_GT(rowTwo, 0);
    int damaged = 0;
    for (qsizetype length = 4; length < bytes.size(); ++length) {
        Sheet partial;
        const SheetReadResult result = ReadSheet(bytes.first(length), partial);
        ASSERT_NE(result.status, SheetReadResult::NewerVersion) << length;
        ASSERT_NE(result.status, SheetReadResult::NotASheetFile) << length;
        damaged += result.status == SheetReadResult::Damaged;
        if (length > rowTwo) {
            ASSERT_EQ(partial.display(1, 1).Text, u"Day"_s) << length;
        }
    }
    // Most cuts fall inside a record.
    EXPECT_GT(damaged, bytes.size() / 2);
}

TEST_F(SheetFiles, MissingFileIsUnreadable)
{
    const SheetReadResult result = LoadSheetFile(folder.filePath(u"none.qnc"_s), sheet);
    EXPECT_EQ(result.status, SheetReadResult::Unreadable);
    EXPECT_TRUE(result.message.contains(u"none.qnc"_s));
}

TEST_F(SheetFiles, FailedSaveKeepsThePreviousFile)
{
    const QString path = folder.filePath(u"kept.qnc"_s);
    enter("A1", u"old"_s);
    ASSERT_TRUE(SaveSheetFile(sheet, path).isEmpty());
    const QByteArray previous = SheetFileBytes(sheet);
    enter("A3", u"new"_s);

    Io::SaveFaults::Scope faults;
    ASSERT_TRUE(SaveSheetFile(sheet, folder.filePath(u"count.qnc"_s)).isEmpty());
    const int writes = Io::SaveFaults::writesSeen();
    ASSERT_GE(writes, 4); // the header and one write per row

    sheet.setModified(true);
    for (int failing = 1; failing <= writes; ++failing) {
        Io::SaveFaults::reset();
        Io::SaveFaults::failAtWrite(failing);
        EXPECT_FALSE(SaveSheetFile(sheet, path).isEmpty()) << failing;
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), previous) << failing;
        EXPECT_TRUE(sheet.isModified());
    }
    Io::SaveFaults::reset();
    Io::SaveFaults::failAtCommit();
    EXPECT_FALSE(SaveSheetFile(sheet, path).isEmpty());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), previous);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2); // no temporary left over
}

TEST_F(SheetFiles, ProgressRunsUpToOneHundred)
{
    FillRichSheet(sheet);
    QList<int> saving;
    const QString path = folder.filePath(u"progress.qnc"_s);
    ASSERT_TRUE(SaveSheetFile(sheet, path, [&](int percent) { saving.append(percent); }).isEmpty());
    ASSERT_EQ(saving.size(), sheet.usedRows());
    EXPECT_EQ(saving.front(), 0);
    EXPECT_TRUE(std::is_sorted(saving.begin(), saving.end()));
    QList<int> loading;
    Sheet loaded;
    LoadSheetFile(path, loaded, [&](int percent) { loading.append(percent); });
    EXPECT_TRUE(std::is_sorted(loading.begin(), loading.end()));
    EXPECT_EQ(loading.back(), 100);
}

TEST_F(SheetFiles, FixtureOfVersion310LoadsAndWritesBackUnchanged)
{
    QFile file(QStringLiteral(QUORBIN_SHEET_TEST_DATA "/weather-v310.qnc"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    ASSERT_TRUE(ReadSheet(bytes, sheet).isComplete());
    EXPECT_EQ(shown("A1"), u"Day"_s);
    EXPECT_EQ(record("C9").Formula, u"=sum(C2:C8)"_s);
    EXPECT_EQ(value("C9"), 27);
    EXPECT_EQ(SheetFileBytes(sheet), bytes);
}

} // namespace
