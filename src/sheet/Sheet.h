#pragma once

#include "sheet/CellDisplay.h"
#include "sheet/CellRecord.h"
#include "sheet/GraphSlot.h"
#include "sheet/SheetFont.h"

#include <QObject>
#include <QString>
#include <array>
#include <vector>

namespace Tillane {

// Windows colour values (0x00BBGGRR).
inline constexpr qint32 White = 0xFFFFFF;
inline constexpr qint32 Black = 0x000000;

// Column widths in twips. The heading column is set to half its designed width.
inline constexpr qint32 DesignedColumnWidth = 1200;
inline constexpr qint32 HeadingColumnWidth = DesignedColumnWidth / 2;

// One spreadsheet: 256 rows by 26 columns of cells, each with its formula model (CellRecord)
// and what the grid shows of it (CellDisplay), plus the sheet-wide font, number format,
// colours, column widths and four graph slots. The sheet window shows it through an item
// model and forwards commands to the free functions of CellEntry.h, Dependencies.h,
// Formulas.h and CopyCell.h, which keep it consistent; nothing about a cell lives only in a
// widget. Cells are addressed from 1 (row 1..256, column 1..26); other addresses are a
// programming error.
class Sheet : public QObject
{
    Q_OBJECT

public:
    explicit Sheet(QObject* parent = nullptr);

    CellRecord& record(int row, int column) { return m_records[index(row, column)]; }
    const CellRecord& record(int row, int column) const { return m_records[index(row, column)]; }
    CellRecord& record(CellAddress cell) { return record(cell.Row, cell.Column); }
    const CellRecord& record(CellAddress cell) const { return record(cell.Row, cell.Column); }
    CellDisplay& display(int row, int column) { return m_displays[index(row, column)]; }
    const CellDisplay& display(int row, int column) const { return m_displays[index(row, column)]; }

    // The highest row and column ever entered (at least 1); they only grow. Saving and
    // whole-sheet operations walk rows 1..UsedRows and columns 1..UsedColumns.
    int usedRows() const { return m_usedRows; }
    int usedColumns() const { return m_usedColumns; }
    // An entry into the cell: the used area grows to include it.
    void noteEntry(int row, int column);
    // As read from a file; held to 1..256 and 1..26.
    void setUsedArea(int rows, int columns);

    // The sheet's number format; empty: numbers show in the general form ("0.####" when they
    // are not whole).
    const QString& numberFormat() const { return m_numberFormat; }
    // Shows every numeric cell again with the new format.
    void setNumberFormat(const QString& format);

    const SheetFont& font() const { return m_font; }
    void setFont(const SheetFont& font);
    qint32 backgroundColour() const { return m_backgroundColour; }
    void setBackgroundColour(qint32 colour);
    // The grid's text colour; cells with another fore colour keep their own. Not stored in
    // the sheet file.
    qint32 foreColour() const { return m_foreColour; }
    void setForeColour(qint32 colour);

    // Column 0 is the heading column.
    qint32 columnWidth(int column) const { return m_columnWidths.at(column); }
    void setColumnWidth(int column, qint32 twips);
    // Rows 1..256, in twips; 0 (the default) lets the row fit the largest font in it.
    qint32 rowHeight(int row) const { return m_rowHeights.at(row); }
    void setRowHeight(int row, qint32 twips);

    // Slots 1..4.
    GraphSlot& graphSlot(int slot) { return m_graphSlots.at(slot - 1); }
    const GraphSlot& graphSlot(int slot) const { return m_graphSlots.at(slot - 1); }

    // Empty for an untitled sheet.
    const QString& fileName() const { return m_fileName; }
    void setFileName(const QString& fileName) { m_fileName = fileName; }
    // The file name without folder and extension, for captions and graph titles.
    QString baseName() const;

    bool isModified() const { return m_modified; }
    void setModified(bool modified);

    // The text a number shows with a cell format, else the sheet's format, else "0.####"
    // for numbers that are not whole, else the general form.
    QString numberText(double value, const QString& cellFormat) const;
    // Shows the cell's Value formatted, as entry, recalculation and loading do.
    void showNumber(int row, int column);
    // Shows every numeric cell of the used area again.
    void showAllNumbers();

    // The window's item model listens to these; the model emits them from the one place a
    // change is made (entry, recalculation, copy, load).
    void notifyCellChanged(int row, int column) { emit cellChanged(row, column); }
    void requestGraphRedraw(int slot) { emit graphRedrawRequested(slot); }

signals:
    // Something the grid shows of the cell changed.
    void cellChanged(int row, int column);
    // A cell that a graph reads changed (slot 1..4); the window refills and redraws it.
    void graphRedrawRequested(int slot);
    void modifiedChanged(bool modified);

private:
    static int index(int row, int column);

    std::vector<CellRecord> m_records;
    std::vector<CellDisplay> m_displays;
    int m_usedRows = 1;
    int m_usedColumns = 1;
    QString m_numberFormat;
    SheetFont m_font;
    qint32 m_backgroundColour = White;
    qint32 m_foreColour = Black;
    std::array<qint32, SheetColumns + 1> m_columnWidths {};
    std::array<qint32, SheetRows + 1> m_rowHeights {};
    std::array<GraphSlot, GraphSlotCount> m_graphSlots {};
    QString m_fileName;
    bool m_modified = false;
};

} // namespace Tillane
