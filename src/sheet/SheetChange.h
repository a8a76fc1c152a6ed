#pragma once

#include "sheet/CellDisplay.h"
#include "sheet/CellRecord.h"
#include "sheet/SheetFont.h"

#include <QString>
#include <QUndoCommand>
#include <array>
#include <vector>

namespace Tillane {

class Sheet;

// What a command may change of a sheet: every cell and the sheet-wide settings. Graphs and
// the file name are not commands' business. Taken whole before each command (a few hundred
// microseconds for a full sheet), because an entry reaches cells far from the one typed into:
// dependents recalculated, links added to the cells a formula reads.
struct SheetContents
{
    std::vector<CellRecord> Records; // row by row, as Sheet keeps them
    std::vector<CellDisplay> Displays;
    int UsedRows = 1;
    int UsedColumns = 1;
    QString NumberFormat;
    SheetFont Font;
    qint32 BackgroundColour = 0;
    qint32 ForeColour = 0;
    std::array<qint32, SheetColumns + 1> ColumnWidths {};
    std::array<qint32, SheetRows + 1> RowHeights {};

    static SheetContents Of(const Sheet& sheet);
    friend bool operator==(const SheetContents&, const SheetContents&) = default;
};

// One step of a sheet's undo stack: the cells and settings one command changed, each before and
// after. Only what differs is kept, so a step costs memory in proportion to what it changed. It
// is made after the command has run, so the stack's first redo() does nothing. Steps with the
// same merge key in a row (the widths of one column while its border is dragged) merge into one,
// which the stack drops when it changes nothing in the end.
class SheetChange : public QUndoCommand
{
public:
    SheetChange(Sheet& sheet, const SheetContents& before, int mergeKey = -1);

    bool IsEmpty() const;
    // The cells whose record or display differ.
    int CellCount() const { return int(m_cells.size()); }

    void undo() override;
    void redo() override;
    int id() const override { return m_mergeKey; }
    bool mergeWith(const QUndoCommand* other) override;

private:
    struct CellChange
    {
        int Index = 0;
        CellRecord RecordBefore;
        CellRecord RecordAfter;
        CellDisplay DisplayBefore;
        CellDisplay DisplayAfter;
    };
    struct Settings
    {
        int UsedRows = 1;
        int UsedColumns = 1;
        QString NumberFormat;
        SheetFont Font;
        qint32 BackgroundColour = 0;
        qint32 ForeColour = 0;
        std::array<qint32, SheetColumns + 1> ColumnWidths {};
        std::array<qint32, SheetRows + 1> RowHeights {};

        friend bool operator==(const Settings&, const Settings&) = default;
    };

    static Settings SettingsOf(const SheetContents& contents);
    static Settings SettingsOf(const Sheet& sheet);
    void apply(bool after);

    Sheet& m_sheet;
    int m_mergeKey;
    std::vector<CellChange> m_cells; // in cell order
    Settings m_before;
    Settings m_after;
    bool m_firstRedo = true;
};

} // namespace Tillane
