#include "sheet/Sheet.h"

#include "frame/Helpers.h"
#include "platform/runtime/Format.h"

#include <QtAlgorithms>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

Sheet::Sheet(QObject* parent)
    : QObject(parent)
    , m_records(SheetCellCount)
    , m_displays(SheetCellCount)
{
    m_columnWidths.fill(DesignedColumnWidth);
    m_columnWidths[0] = HeadingColumnWidth;
}

int Sheet::index(int row, int column)
{
    Q_ASSERT((CellAddress { row, column }.isValid()));
    return (row - 1) * SheetColumns + (column - 1);
}

void Sheet::noteEntry(int row, int column)
{
    m_usedRows = std::max(m_usedRows, row);
    m_usedColumns = std::max(m_usedColumns, column);
}

void Sheet::setUsedArea(int rows, int columns)
{
    m_usedRows = std::clamp(rows, 1, SheetRows);
    m_usedColumns = std::clamp(columns, 1, SheetColumns);
}

void Sheet::setNumberFormat(const QString& format)
{
    m_numberFormat = format;
    showAllNumbers();
}

void Sheet::setFont(const SheetFont& font)
{
    m_font = font;
}

void Sheet::setBackgroundColour(qint32 colour)
{
    m_backgroundColour = colour;
}

void Sheet::setForeColour(qint32 colour)
{
    m_foreColour = colour;
}

void Sheet::setColumnWidth(int column, qint32 twips)
{
    m_columnWidths.at(column) = twips;
}

void Sheet::setRowHeight(int row, qint32 twips)
{
    m_rowHeights.at(row) = twips;
}

QString Sheet::baseName() const
{
    return Frame::FileTitleOf(m_fileName);
}

void Sheet::setModified(bool modified)
{
    if (m_modified == modified)
        return;
    m_modified = modified;
    emit modifiedChanged(modified);
}

QString Sheet::numberText(double value, const QString& cellFormat) const
{
    QString format = cellFormat.isEmpty() ? m_numberFormat : cellFormat;
    if (format.isEmpty() && value != std::floor(value))
        format = u"0.####"_s;
    return Runtime::Format(Runtime::Variant(value), format);
}

void Sheet::showNumber(int row, int column)
{
    const CellRecord& cell = record(row, column);
    display(row, column).Text = numberText(cell.Value, cell.NumberFormat);
    emit cellChanged(row, column);
}

void Sheet::showAllNumbers()
{
    for (int row = 1; row <= m_usedRows; ++row) {
        for (int column = 1; column <= m_usedColumns; ++column) {
            if (record(row, column).holdsNumber())
                showNumber(row, column);
        }
    }
}

} // namespace Tillane
