#include "sheet/CellReferences.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "sheet/SheetError.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

bool isLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

QChar columnLetter(int column)
{
    return QChar(u'A' + column - 1);
}

} // namespace

CellReferenceMatch FindNextReference(QStringView text, qsizetype& position)
{
    for (qsizetype i = std::max<qsizetype>(position, 0); i + 1 < text.size(); ++i) {
        const QChar successor = text[i + 1];
        if (!isLetter(text[i]) || !(successor == u'$' || isDigit(successor)))
            continue;
        CellReferenceMatch match;
        match.Found = true;
        match.Start = i;
        if (i > 0 && text[i - 1] == u'$') {
            match.Start = i - 1;
            match.ColumnFixed = true;
        }
        match.RowFixed = successor == u'$';
        qsizetype end = i + 2;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        match.Length = end - match.Start;
        match.Cell = ParseCellReference(text.mid(match.Start, match.Length));
        if (match.Cell.Row < 1 || match.Cell.Row > SheetRows)
            throw SheetError::user(SheetError::NoSuchCell);
        position = end;
        return match;
    }
    position = text.size();
    return {};
}

CellAddress ParseCellReference(QStringView text)
{
    qsizetype i = 0;
    if (i < text.size() && text[i] == u'$')
        ++i;
    if (i >= text.size() || !isLetter(text[i]))
        return {};
    CellAddress cell;
    cell.Column = text[i].toUpper().unicode() - 64;
    ++i;
    if (i < text.size() && text[i] == u'$')
        ++i;
    try {
        const double row = Runtime::Val(text.mid(i));
        if (row >= std::numeric_limits<qint16>::min() && row <= std::numeric_limits<qint16>::max())
            cell.Row = Runtime::CInt(row);
    } catch (const Runtime::Error&) {
        // A row too long to read names no cell; the caller reports it as such.
    }
    return cell;
}

QString CellName(int row, int column)
{
    return columnLetter(column) + QString::number(row);
}

QString CellName(CellAddress cell)
{
    return CellName(cell.Row, cell.Column);
}

std::optional<CellAddress> CellFromName(QStringView name)
{
    qsizetype position = 0;
    try {
        const CellReferenceMatch match = FindNextReference(name, position);
        if (!match.Found || match.Start != 0 || match.Length != name.size()
            || !match.Cell.isValid())
            return std::nullopt;
        return match.Cell;
    } catch (const SheetError&) {
        return std::nullopt;
    }
}

QString ShiftFormulaReferences(QStringView formula, int rowShift, int columnShift)
{
    QString shifted;
    qsizetype copied = 0;
    qsizetype position = 0;
    while (true) {
        const CellReferenceMatch match = FindNextReference(formula, position);
        if (!match.Found)
            break;
        const int column = match.Cell.Column + (match.ColumnFixed ? 0 : columnShift);
        const int row = match.Cell.Row + (match.RowFixed ? 0 : rowShift);
        if (!CellAddress { row, column }.isValid())
            throw SheetError::user(SheetError::CopyOutOfRange);
        shifted += formula.mid(copied, match.Start - copied);
        if (match.ColumnFixed)
            shifted += u'$';
        shifted += columnLetter(column);
        if (match.RowFixed)
            shifted += u'$';
        shifted += QString::number(row);
        copied = match.Start + match.Length;
    }
    shifted += formula.mid(copied);
    return shifted;
}

} // namespace Tillane
