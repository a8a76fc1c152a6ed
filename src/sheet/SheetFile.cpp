#include "sheet/SheetFile.h"

#include "graph/Graph.h"
#include "platform/io/SafeFileWriter.h"
#include "platform/profile/TextDecoding.h"
#include "platform/runtime/Error.h"
#include "resources/StringTable.h"
#include "sheet/Sheet.h"

#include <QFile>
#include <QIODevice>
#include <QStringDecoder>
#include <QtEndian>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

// Record tags.
enum Tag : qint32 {
    VersionTag = 1,
    CurrentCellTag = 2,
    BackgroundTag = 3,
    BoldTag = 4,
    ItalicTag = 5,
    FontNameTag = 6,
    FontSizeTag = 7,
    StrikethroughTag = 8,
    UnderlineTag = 9,
    UsedAreaTag = 10,
    NumberFormatTag = 11,
    ColumnWidthTag = 12,
    GraphTag = 13,
    RowHeightTag = 14,
    CellTextTag = 101,
    CellBackColourTag = 102,
    CellForeColourTag = 103,
    CellBoldTag = 104,
    CellItalicTag = 105,
    CellFontNameTag = 106,
    CellFontSizeTag = 107,
    CellStrikethroughTag = 108,
    CellUnderlineTag = 109,
    CellAlignmentTag = 110,
    KindTag = 200,
    ValueTag = 201,
    FormulaTag = 202,
    PrecedentsTag = 203,
    DependentsTag = 204,
    CellNumberFormatTag = 205,
    LockedTag = 206,
};

// Type codes of tagged values.
enum TypeCode : qint16 {
    Integer16 = 2,
    Integer32 = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Text = 8,
    Boolean = 11,
};

// Column widths are written for at least this many columns.
constexpr int MinimumWrittenWidths = 6;
// The field of the graph block that the reader skips holds this.
constexpr qint32 GraphBlockMarker = 2;
// Font sizes beyond this are damage, not fonts (the largest a font dialog offers is 1638).
constexpr double MaximumFontSize = 16384;
// Larger files are refused before they are read into memory; a full sheet with four graphs
// is a few megabytes.
constexpr qint64 MaximumFileSize = 256LL * 1024 * 1024;

// ---- writing ----

class RecordWriter
{
public:
    explicit RecordWriter(QByteArray& bytes)
        : m_bytes(bytes)
    { }

    template <typename T> void raw(T value)
    {
        const T little = qToLittleEndian(value);
        m_bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
    }
    void tag(qint32 tag) { raw<qint32>(tag); }
    void int16(qint32 tag, qint16 value)
    {
        this->tag(tag);
        raw<qint16>(Integer16);
        raw<qint16>(value);
    }
    void int32(qint32 tag, qint32 value)
    {
        this->tag(tag);
        raw<qint16>(Integer32);
        raw<qint32>(value);
    }
    void single(qint32 tag, float value)
    {
        quint32 bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        this->tag(tag);
        raw<qint16>(Single);
        raw<quint32>(bits);
    }
    void real(qint32 tag, double value)
    {
        quint64 bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        this->tag(tag);
        raw<qint16>(Double);
        raw<quint64>(bits);
    }
    void currency(qint32 tag, double value)
    {
        this->tag(tag);
        raw<qint16>(Currency);
        raw<qint64>(std::llround(value * 10000));
    }
    // The length is 16 bits: a longer text keeps its first 65535 bytes, ending on a whole
    // character.
    void text(qint32 tag, const QString& value)
    {
        QByteArray utf8 = value.toUtf8();
        if (utf8.size() > std::numeric_limits<quint16>::max()) {
            qsizetype cut = std::numeric_limits<quint16>::max();
            while (cut > 0 && (static_cast<unsigned char>(utf8[cut]) & 0xC0) == 0x80)
                --cut;
            utf8.truncate(cut);
        }
        this->tag(tag);
        raw<qint16>(Text);
        raw<quint16>(static_cast<quint16>(utf8.size()));
        m_bytes.append(utf8);
    }
    void boolean(qint32 tag, bool value)
    {
        this->tag(tag);
        raw<qint16>(Boolean);
        raw<qint16>(value ? -1 : 0);
    }
    void references(qint32 tag, const QList<CellRef>& list)
    {
        int32(tag, static_cast<qint32>(list.size()));
        for (const CellRef& element : list) {
            raw<quint8>(element.Kind);
            raw<qint16>(element.Row);
            raw<qint16>(element.Column);
        }
    }

private:
    QByteArray& m_bytes;
};

void writeHeader(const Sheet& sheet, RecordWriter& out)
{
    const SheetFont& font = sheet.font();
    out.int16(VersionTag, SheetFileVersion);
    out.int32(BackgroundTag, sheet.backgroundColour());
    out.boolean(BoldTag, font.Bold);
    out.boolean(ItalicTag, font.Italic);
    out.text(FontNameTag, font.Name);
    out.currency(FontSizeTag, font.Size);
    out.boolean(StrikethroughTag, font.Strikethrough);
    out.boolean(UnderlineTag, font.Underline);
    out.tag(UsedAreaTag);
    out.raw<qint16>(static_cast<qint16>(sheet.usedRows()));
    out.raw<qint16>(static_cast<qint16>(sheet.usedColumns()));
    out.text(NumberFormatTag, sheet.numberFormat());
    const int widths = std::max(MinimumWrittenWidths, sheet.usedColumns());
    for (int column = 1; column <= widths; ++column)
        out.int32(ColumnWidthTag, sheet.columnWidth(column));
    // Rows the user has sized. The row and its height share one raw 32-bit field whose value
    // is above every tag, so a reader that knows no tag 14 passes over the tag and then over
    // the field, taking it for another tag it does not know: such files still read everywhere.
    for (int row = 1; row <= SheetRows; ++row) {
        const qint32 height = std::clamp<qint32>(sheet.rowHeight(row), 0, 0xFFFF);
        if (height == 0)
            continue;
        out.tag(RowHeightTag);
        out.raw<qint32>((row << 16) | height);
    }
}

void writeGraph(int slotNumber, const GraphSlot& slot, const QByteArray& text, RecordWriter& out)
{
    out.int32(GraphTag, slotNumber);
    out.raw<qint32>(slot.Bounds.Left);
    out.raw<qint32>(slot.Bounds.Top);
    out.raw<qint32>(slot.Bounds.Right);
    out.raw<qint32>(slot.Bounds.Bottom);
    out.raw<qint16>(slot.Categories.TopRow);
    out.raw<qint16>(slot.Categories.BottomRow);
    out.raw<qint32>(GraphBlockMarker);
    out.raw<qint16>(slot.Categories.LeftColumn);
    out.raw<qint16>(slot.Data.LeftColumn);
    out.raw<qint16>(slot.FirstRowLabels ? -1 : 0);
    out.raw<qint16>(slot.CountAndGroup ? -1 : 0);
    out.raw<qint32>(slot.NumberOfGroups);
    out.raw<qint32>(static_cast<qint32>(text.size()));
}

void writeCell(const Sheet& sheet, int row, int column, RecordWriter& out)
{
    const CellRecord& cell = sheet.record(row, column);
    const CellDisplay& display = sheet.display(row, column);
    const SheetFont& font = sheet.font();
    out.tag(CurrentCellTag);
    out.raw<qint16>(static_cast<qint16>(row));
    out.raw<qint16>(static_cast<qint16>(column));
    if (!display.Text.isEmpty())
        out.text(CellTextTag, display.Text);
    if (display.BackColour != 0)
        out.int32(CellBackColourTag, display.BackColour);
    if (display.Bold && *display.Bold != font.Bold)
        out.boolean(CellBoldTag, *display.Bold);
    if (display.Italic && *display.Italic != font.Italic)
        out.boolean(CellItalicTag, *display.Italic);
    if (display.FontName && *display.FontName != font.Name)
        out.text(CellFontNameTag, *display.FontName);
    if (display.FontSize && *display.FontSize != static_cast<float>(font.Size))
        out.single(CellFontSizeTag, *display.FontSize);
    if (display.Strikethrough && *display.Strikethrough != font.Strikethrough)
        out.boolean(CellStrikethroughTag, *display.Strikethrough);
    if (display.Underline && *display.Underline != font.Underline)
        out.boolean(CellUnderlineTag, *display.Underline);
    if (display.ForeColour && *display.ForeColour != sheet.foreColour())
        out.int32(CellForeColourTag, *display.ForeColour);
    if (display.Alignment != AlignGeneral)
        out.int16(CellAlignmentTag, display.Alignment);
    if (cell.Kind != EmptyCell)
        out.int32(KindTag, cell.Kind);
    if (cell.holdsNumber())
        out.real(ValueTag, cell.Value);
    if (cell.Kind == FormulaCell)
        out.text(FormulaTag, cell.Formula);
    if (cell.HasPrecedents)
        out.references(PrecedentsTag, cell.Precedents);
    if (cell.HasDependents)
        out.references(DependentsTag, cell.Dependents);
    if (!cell.NumberFormat.isEmpty())
        out.text(CellNumberFormatTag, cell.NumberFormat);
    if (cell.Locked)
        out.boolean(LockedTag, true);
}

// ---- reading ----

// A tagged value as found in the file: a number of any numeric type, or a text.
struct TaggedValue
{
    qint16 type = 0;
    double number = 0.0;
    QString text;
};

// Why a read stopped early; the message names it for the user.
struct Damage
{
    QString reason;
};

class RecordReader
{
public:
    explicit RecordReader(QByteArrayView bytes)
        : m_bytes(bytes)
    { }

    qsizetype position() const { return m_position; }
    qsizetype size() const { return m_bytes.size(); }
    bool atEnd() const { return m_position >= m_bytes.size(); }
    qsizetype remaining() const { return m_bytes.size() - m_position; }

    template <typename T> T peek()
    {
        need(sizeof(T));
        T value;
        std::memcpy(&value, m_bytes.data() + m_position, sizeof value);
        return qFromLittleEndian(value);
    }
    template <typename T> T raw()
    {
        const T value = peek<T>();
        m_position += sizeof value;
        return value;
    }

    QByteArrayView bytes(qsizetype count)
    {
        need(count);
        const QByteArrayView view = m_bytes.sliced(m_position, count);
        m_position += count;
        return view;
    }

    TaggedValue value()
    {
        TaggedValue value;
        value.type = raw<qint16>();
        switch (value.type) {
        case Integer16:
        case Boolean:
            value.number = raw<qint16>();
            break;
        case Integer32:
            value.number = raw<qint32>();
            break;
        case Single: {
            const quint32 bits = raw<quint32>();
            float single = 0;
            std::memcpy(&single, &bits, sizeof single);
            value.number = single;
            break;
        }
        case Double: {
            const quint64 bits = raw<quint64>();
            std::memcpy(&value.number, &bits, sizeof value.number);
            break;
        }
        case Currency:
            value.number = static_cast<double>(raw<qint64>()) / 10000;
            break;
        case Text:
            value.text = decodeText(bytes(raw<quint16>()));
            break;
        default:
            throw Damage { u"a value of unknown type %1"_s.arg(value.type) };
        }
        if (!std::isfinite(value.number))
            throw Damage { u"a number that is not finite"_s };
        return value;
    }

    double number()
    {
        const TaggedValue found = value();
        if (found.type == Text)
            throw Damage { u"a text where a number belongs"_s };
        return found.number;
    }
    qint32 integer32()
    {
        const double found = number();
        if (found < std::numeric_limits<qint32>::min()
            || found > std::numeric_limits<qint32>::max())
            throw Damage { u"a number out of range"_s };
        return static_cast<qint32>(std::lround(found));
    }
    bool boolean() { return number() != 0; }
    QString text()
    {
        const TaggedValue found = value();
        if (found.type != Text)
            throw Damage { u"a number where a text belongs"_s };
        return found.text;
    }

    QList<CellRef> references()
    {
        const qint32 count = integer32();
        // Each element is 5 bytes: the count is checked against what is left before anything
        // is allocated.
        if (count < 0 || count > remaining() / 5)
            throw Damage { u"a list longer than the file"_s };
        QList<CellRef> list;
        list.reserve(count);
        for (qint32 i = 0; i < count; ++i) {
            CellRef element;
            element.Kind = raw<quint8>();
            element.Row = raw<qint16>();
            element.Column = raw<qint16>();
            list.append(element);
        }
        return list;
    }

private:
    void need(qsizetype count)
    {
        if (count < 0 || count > remaining())
            throw Damage { u"it ends in the middle of a record"_s };
    }

    // The system code page is UTF-8; files made on Windows are in Windows-1252.
    static QString decodeText(QByteArrayView bytes)
    {
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        QString text = utf8.decode(bytes);
        if (utf8.hasError())
            return Profile::DecodeWindows1252(bytes);
        return text;
    }

    QByteArrayView m_bytes;
    qsizetype m_position = 0;
};

// Reads one graph block into its slot. A graph text its reader refuses part-way (a row of
// more than five fields, a number too large) leaves the graph as far as it was read; the
// reason is returned, and the sheet's cells after it are still read.
QString readGraph(RecordReader& in, Sheet& sheet)
{
    const qint32 slotNumber = in.integer32();
    if (slotNumber < 1 || slotNumber > GraphSlotCount)
        throw Damage { u"a graph slot that does not exist"_s };
    GraphSlot slot;
    slot.InUse = true;
    slot.Bounds.Left = in.raw<qint32>();
    slot.Bounds.Top = in.raw<qint32>();
    slot.Bounds.Right = in.raw<qint32>();
    slot.Bounds.Bottom = in.raw<qint32>();
    const qint16 topRow = in.raw<qint16>();
    const qint16 bottomRow = in.raw<qint16>();
    in.raw<qint32>(); // always 2; of no use to the reader
    const qint16 categoriesColumn = in.raw<qint16>();
    const qint16 dataColumn = in.raw<qint16>();
    slot.FirstRowLabels = in.raw<qint16>() != 0;
    slot.CountAndGroup = in.raw<qint16>() != 0;
    slot.NumberOfGroups = in.raw<qint32>();
    const qint32 length = in.raw<qint32>();
    if (!CellAddress { topRow, categoriesColumn }.isValid()
        || !CellAddress { bottomRow, dataColumn }.isValid())
        throw Damage { u"a graph range outside the sheet"_s };
    if (length < 0 || length > in.remaining())
        throw Damage { u"a graph longer than the file"_s };
    slot.Graph = std::make_shared<Ormsey::Graph>();
    QString problem;
    try {
        slot.Graph->LoadGraphDataBytes(in.bytes(length));
    } catch (const Runtime::Error& fault) {
        problem = fault.message();
    }
    slot.Categories = { topRow, categoriesColumn, bottomRow, categoriesColumn };
    slot.Data = { topRow, dataColumn, bottomRow, dataColumn };
    sheet.graphSlot(slotNumber) = slot;
    return problem;
}

// The state of one read: the cell the cell records apply to and the next column width.
class SheetReader
{
public:
    SheetReader(QByteArrayView bytes, Sheet& sheet)
        : m_in(bytes)
        , m_sheet(sheet)
    { }

    SheetReadResult run(const SheetProgress& progress)
    {
        SheetReadResult result;
        try {
            if (m_in.remaining() < 4 || m_in.peek<qint32>() != VersionTag)
                return { SheetReadResult::NotASheetFile,
                    u"This file is not a Tillane sheet file."_s };
            while (!m_in.atEnd()) {
                m_recordStart = m_in.position();
                const qint32 tag = m_in.raw<qint32>();
                if (tag == VersionTag) {
                    // A later version record stops the read too: what came before it is
                    // kept, and shown as a whole sheet.
                    if (m_in.integer32() > SheetFileVersion) {
                        result = { SheetReadResult::NewerVersion, GetResString(1275) };
                        break;
                    }
                } else {
                    apply(tag);
                }
                if (progress)
                    progress(static_cast<int>(std::clamp<qint64>(
                        m_in.position() * 100 / std::max<qsizetype>(m_in.size(), 1), 0, 100)));
            }
            if (result.isComplete() && !m_graphProblem.isEmpty()) {
                result = { SheetReadResult::Damaged,
                    u"A graph in this file is damaged (%1): it shows only what could be read."_s
                        .arg(m_graphProblem) };
            }
        } catch (const Damage& damage) {
            result = { SheetReadResult::Damaged,
                u"This file is damaged (%1) and could be read only up to byte %2 of %3."_s.arg(
                    damage.reason, QString::number(m_recordStart), QString::number(m_in.size())) };
        }
        m_sheet.showAllNumbers();
        return result;
    }

private:
    void apply(qint32 tag)
    {
        SheetFont font = m_sheet.font();
        CellRecord& cell = m_sheet.record(m_current);
        CellDisplay& display = m_sheet.display(m_current.Row, m_current.Column);
        switch (tag) {
        case CurrentCellTag: {
            CellAddress next;
            next.Row = m_in.raw<qint16>();
            next.Column = m_in.raw<qint16>();
            if (!next.isValid())
                throw Damage { u"a cell outside the sheet"_s };
            m_current = next;
            break;
        }
        case BackgroundTag:
            m_sheet.setBackgroundColour(m_in.integer32());
            break;
        case BoldTag:
            font.Bold = m_in.boolean();
            break;
        case ItalicTag:
            font.Italic = m_in.boolean();
            break;
        case FontNameTag:
            font.Name = m_in.text();
            break;
        case FontSizeTag:
            font.Size = fontSize();
            break;
        case StrikethroughTag:
            font.Strikethrough = m_in.boolean();
            break;
        case UnderlineTag:
            font.Underline = m_in.boolean();
            break;
        case UsedAreaTag: {
            const qint16 rows = m_in.raw<qint16>();
            const qint16 columns = m_in.raw<qint16>();
            if (!CellAddress { rows, columns }.isValid())
                throw Damage { u"a used area outside the sheet"_s };
            m_sheet.setUsedArea(rows, columns);
            break;
        }
        case NumberFormatTag:
            m_sheet.setNumberFormat(m_in.text());
            break;
        case ColumnWidthTag: {
            const qint32 width = m_in.integer32();
            if (m_nextWidthColumn <= SheetColumns)
                m_sheet.setColumnWidth(m_nextWidthColumn, width);
            ++m_nextWidthColumn;
            break;
        }
        case RowHeightTag: {
            const qint32 packed = m_in.raw<qint32>();
            const int row = packed >> 16;
            if (row >= 1 && row <= SheetRows)
                m_sheet.setRowHeight(row, packed & 0xFFFF);
            break;
        }
        case GraphTag:
            if (const QString problem = readGraph(m_in, m_sheet); !problem.isEmpty())
                m_graphProblem = problem;
            break;
        case CellTextTag:
            display.Text = m_in.text();
            break;
        case CellBackColourTag:
            display.BackColour = m_in.integer32();
            break;
        case CellForeColourTag:
            display.ForeColour = m_in.integer32();
            break;
        case CellBoldTag:
            display.Bold = m_in.boolean();
            break;
        case CellItalicTag:
            display.Italic = m_in.boolean();
            break;
        case CellFontNameTag:
            display.FontName = m_in.text();
            break;
        case CellFontSizeTag:
            display.FontSize = static_cast<float>(fontSize());
            break;
        case CellStrikethroughTag:
            display.Strikethrough = m_in.boolean();
            break;
        case CellUnderlineTag:
            display.Underline = m_in.boolean();
            break;
        case CellAlignmentTag: {
            const qint32 alignment = m_in.integer32();
            if (alignment < std::numeric_limits<qint16>::min()
                || alignment > std::numeric_limits<qint16>::max())
                throw Damage { u"a number out of range"_s };
            display.Alignment = static_cast<qint16>(alignment);
            break;
        }
        case KindTag: {
            const qint32 kind = m_in.integer32();
            if (kind < EmptyCell || kind > FormulaCell)
                throw Damage { u"a cell of unknown kind"_s };
            cell.Kind = kind;
            break;
        }
        case ValueTag:
            cell.Value = m_in.number();
            break;
        case FormulaTag:
            cell.Formula = m_in.text();
            break;
        case PrecedentsTag:
            cell.Precedents = m_in.references();
            cell.HasPrecedents = true;
            break;
        case DependentsTag:
            cell.Dependents = m_in.references();
            cell.HasDependents = true;
            break;
        case CellNumberFormatTag:
            cell.NumberFormat = m_in.text();
            break;
        case LockedTag:
            cell.Locked = m_in.boolean();
            break;
        default:
            // A tag this version does not know: nothing is read for it.
            break;
        }
        if (tag >= BoldTag && tag <= UnderlineTag)
            m_sheet.setFont(font);
    }

    double fontSize()
    {
        const double size = m_in.number();
        if (size < 0 || size > MaximumFontSize)
            throw Damage { u"a font size out of range"_s };
        return size;
    }

    RecordReader m_in;
    Sheet& m_sheet;
    CellAddress m_current { 1, 1 };
    int m_nextWidthColumn = 1;
    qsizetype m_recordStart = 0;
    QString m_graphProblem; // why a graph was read only in part; the rest of the file was read
};

} // namespace

SheetReadResult ReadSheet(QByteArrayView bytes, Sheet& sheet, const SheetProgress& progress)
{
    return SheetReader(bytes, sheet).run(progress);
}

bool WriteSheet(const Sheet& sheet, const std::function<bool(const QByteArray& piece)>& write,
    const SheetProgress& progress)
{
    QByteArray piece;
    RecordWriter out(piece);
    writeHeader(sheet, out);
    for (int slotNumber = 1; slotNumber <= GraphSlotCount; ++slotNumber) {
        const GraphSlot& slot = sheet.graphSlot(slotNumber);
        if (!slot.InUse)
            continue;
        const QByteArray text = slot.Graph ? slot.Graph->GraphDataBytes() : QByteArray();
        writeGraph(slotNumber, slot, text, out);
        piece.append(text);
    }
    if (!write(piece))
        return false;
    for (int row = 1; row <= sheet.usedRows(); ++row) {
        piece.clear();
        for (int column = 1; column <= sheet.usedColumns(); ++column)
            writeCell(sheet, row, column, out);
        if (!write(piece))
            return false;
        if (progress)
            progress(std::clamp((row - 1) * 100 / sheet.usedRows(), 0, 100));
    }
    return true;
}

QByteArray SheetFileBytes(const Sheet& sheet)
{
    QByteArray bytes;
    WriteSheet(sheet, [&](const QByteArray& piece) {
        bytes.append(piece);
        return true;
    });
    return bytes;
}

SheetReadResult LoadSheetFile(const QString& path, Sheet& sheet, const SheetProgress& progress)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return { SheetReadResult::Unreadable,
            u"Cannot open \"%1\": %2"_s.arg(path, file.errorString()) };
    if (file.size() > MaximumFileSize)
        return { SheetReadResult::Unreadable,
            u"Cannot open \"%1\": it is too large to be a sheet file."_s.arg(path) };
    const QByteArray bytes = file.readAll();
    if (bytes.size() != file.size())
        return { SheetReadResult::Unreadable,
            u"Cannot read \"%1\": %2"_s.arg(path, file.errorString()) };
    const SheetReadResult result = ReadSheet(bytes, sheet, progress);
    if (result.isComplete()) {
        sheet.setFileName(path);
        sheet.setModified(false);
    }
    return result;
}

QString SaveSheetFile(Sheet& sheet, const QString& path, const SheetProgress& progress)
{
    const QString error = Io::SafeFileWriter::writeFile(path, [&](QIODevice& device) {
        return WriteSheet(
            sheet, [&](const QByteArray& piece) { return device.write(piece) == piece.size(); },
            progress);
    });
    if (!error.isEmpty())
        return error;
    sheet.setFileName(path);
    sheet.setModified(false);
    return {};
}

} // namespace Tillane
