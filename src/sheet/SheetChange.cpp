#include "sheet/SheetChange.h"

#include "sheet/Sheet.h"

#include <algorithm>

namespace Tillane {

namespace {

CellAddress AddressOf(int index)
{
    return { index / SheetColumns + 1, index % SheetColumns + 1 };
}

} // namespace

SheetContents SheetContents::Of(const Sheet& sheet)
{
    SheetContents contents;
    contents.Records.reserve(SheetCellCount);
    contents.Displays.reserve(SheetCellCount);
    for (int row = 1; row <= SheetRows; ++row) {
        for (int column = 1; column <= SheetColumns; ++column) {
            contents.Records.push_back(sheet.record(row, column));
            contents.Displays.push_back(sheet.display(row, column));
        }
    }
    contents.UsedRows = sheet.usedRows();
    contents.UsedColumns = sheet.usedColumns();
    contents.NumberFormat = sheet.numberFormat();
    contents.Font = sheet.font();
    contents.BackgroundColour = sheet.backgroundColour();
    contents.ForeColour = sheet.foreColour();
    for (int column = 0; column <= SheetColumns; ++column)
        contents.ColumnWidths[column] = sheet.columnWidth(column);
    for (int row = 1; row <= SheetRows; ++row)
        contents.RowHeights[row] = sheet.rowHeight(row);
    return contents;
}

SheetChange::Settings SheetChange::SettingsOf(const SheetContents& contents)
{
    return { contents.UsedRows, contents.UsedColumns, contents.NumberFormat, contents.Font,
        contents.BackgroundColour, contents.ForeColour, contents.ColumnWidths,
        contents.RowHeights };
}

SheetChange::Settings SheetChange::SettingsOf(const Sheet& sheet)
{
    Settings settings { sheet.usedRows(), sheet.usedColumns(), sheet.numberFormat(), sheet.font(),
        sheet.backgroundColour(), sheet.foreColour(), {}, {} };
    for (int column = 0; column <= SheetColumns; ++column)
        settings.ColumnWidths[column] = sheet.columnWidth(column);
    for (int row = 1; row <= SheetRows; ++row)
        settings.RowHeights[row] = sheet.rowHeight(row);
    return settings;
}

SheetChange::SheetChange(Sheet& sheet, const SheetContents& before, int mergeKey)
    : m_sheet(sheet)
    , m_mergeKey(mergeKey)
    , m_before(SettingsOf(before))
    , m_after(SettingsOf(sheet))
{
    for (int index = 0; index < SheetCellCount; ++index) {
        const CellAddress cell = AddressOf(index);
        const CellRecord& record = sheet.record(cell);
        const CellDisplay& display = sheet.display(cell.Row, cell.Column);
        if (record == before.Records[index] && display == before.Displays[index])
            continue;
        m_cells.push_back(
            { index, before.Records[index], record, before.Displays[index], display });
    }
}

bool SheetChange::IsEmpty() const
{
    return m_cells.empty() && m_before == m_after;
}

void SheetChange::undo()
{
    apply(false);
}

void SheetChange::redo()
{
    // The command itself made the change before the step was pushed.
    if (m_firstRedo) {
        m_firstRedo = false;
        return;
    }
    apply(true);
}

void SheetChange::apply(bool after)
{
    const Settings& settings = after ? m_after : m_before;
    if (settings.NumberFormat != m_sheet.numberFormat()) {
        // Setting the sheet's format shows every number again; the cells this step did not
        // change must keep exactly what they show.
        std::vector<QString> shown;
        shown.reserve(SheetCellCount);
        for (int index = 0; index < SheetCellCount; ++index) {
            const CellAddress cell = AddressOf(index);
            shown.push_back(m_sheet.display(cell.Row, cell.Column).Text);
        }
        m_sheet.setNumberFormat(settings.NumberFormat);
        for (int index = 0; index < SheetCellCount; ++index) {
            const CellAddress cell = AddressOf(index);
            m_sheet.display(cell.Row, cell.Column).Text = shown[index];
        }
    }
    m_sheet.setUsedArea(settings.UsedRows, settings.UsedColumns);
    m_sheet.setFont(settings.Font);
    m_sheet.setBackgroundColour(settings.BackgroundColour);
    m_sheet.setForeColour(settings.ForeColour);
    for (int column = 0; column <= SheetColumns; ++column)
        m_sheet.setColumnWidth(column, settings.ColumnWidths[column]);
    for (int row = 1; row <= SheetRows; ++row)
        m_sheet.setRowHeight(row, settings.RowHeights[row]);
    for (const CellChange& change : m_cells) {
        const CellAddress cell = AddressOf(change.Index);
        m_sheet.record(cell) = after ? change.RecordAfter : change.RecordBefore;
        CellDisplay& display = m_sheet.display(cell.Row, cell.Column);
        display = after ? change.DisplayAfter : change.DisplayBefore;
        m_sheet.notifyCellChanged(cell.Row, cell.Column);
    }
}

bool SheetChange::mergeWith(const QUndoCommand* other)
{
    const auto* later = dynamic_cast<const SheetChange*>(other);
    if (later == nullptr || later->m_mergeKey != m_mergeKey || &later->m_sheet != &m_sheet)
        return false;
    m_after = later->m_after;
    for (const CellChange& change : later->m_cells) {
        const auto found = std::lower_bound(m_cells.begin(), m_cells.end(), change.Index,
            [](const CellChange& held, int index) { return held.Index < index; });
        if (found != m_cells.end() && found->Index == change.Index) {
            found->RecordAfter = change.RecordAfter;
            found->DisplayAfter = change.DisplayAfter;
        } else {
            m_cells.insert(found, change);
        }
    }
    std::erase_if(m_cells, [](const CellChange& change) {
        return change.RecordBefore == change.RecordAfter
            && change.DisplayBefore == change.DisplayAfter;
    });
    setObsolete(IsEmpty());
    return true;
}

} // namespace Tillane
