#pragma once

#include "sheet/CellRef.h"
#include "sheet/SheetFont.h"

#include "frame/ChangeBatch.h"

#include <QObject>
#include <QString>
#include <QUndoStack>
#include <memory>

namespace Frame {
class DocumentHost;
}

namespace Tillane {

class Sheet;

// A block of cells as the sheet window selects them: from the current cell to the selection's
// end cell. Commands walk rows Current.Row..End.Row and, within each, columns
// Current.Column..End.Column, so a block whose end lies above or left of its current cell
// (a selection made upwards) holds no cells.
struct CellBlock
{
    CellAddress Current { 1, 1 };
    CellAddress End { 1, 1 };

    // From A1 to Z256: commands then change the sheet-wide settings.
    bool IsWholeSheet() const;
    static CellBlock WholeSheet() { return { { 1, 1 }, { SheetRows, SheetColumns } }; }
    static CellBlock Single(CellAddress cell) { return { cell, cell }; }
};

// What Text Style sets: the font and the colour of the text.
struct TextStyle
{
    SheetFont Font;
    qint32 Colour = 0;

    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

// The sheet window's undo keeps at least this many steps.
inline constexpr int SheetUndoDepth = 100;

// One spreadsheet as a document of the sheet window, after the pattern described at the top
// of graph/GraphDocument.h. It owns the Sheet, its file name (kept in the Sheet, which the file
// functions set) and its changed state, which follows the undo stack: every command is one step
// of the stack, and the sheet counts as changed whenever the stack stands anywhere but where it
// stood when the sheet was last opened or saved. Commands that change nothing leave no step.
class SheetDocument : public QObject
{
    Q_OBJECT

public:
    explicit SheetDocument(Frame::DocumentHost* host = nullptr, QObject* parent = nullptr);
    ~SheetDocument() override;

    const Sheet& SheetObject() const { return *m_sheet; }
    const QString& FileName() const;
    bool IsChanged() const;
    // "Tillane - Weather"; empty for a sheet that has no file yet.
    QString Caption() const;

    // The text the edit box opens with: a formula cell's formula, else what the cell shows.
    QString EditText(CellAddress cell) const;
    // The font and text colour a cell shows (its own attributes, else the sheet's).
    TextStyle CellTextStyle(CellAddress cell) const;
    // The background a cell shows: black for the stored 1, the grid's for the stored 0.
    qint32 CellBackColour(CellAddress cell) const;

    // Commands; each is one undo step and ends in one changed(). Errors of the sheet (a
    // refused formula, a division by zero while recalculating, a copy out of range) are
    // shown with their description, the exclamation icon and the program's title, and the
    // step keeps what the command did before it stopped.
    //
    // Enters the text as typed. False for a locked cell (nothing shown) or a refused entry.
    bool EnterCell(CellAddress cell, const QString& text);
    // Empties the block's cells that are not locked: their entries go, their values stay for
    // the sums that read them (as in the sheet file), and the formulas that read them are
    // recalculated. Number formats, colours and fonts stay.
    void ClearCells(const CellBlock& block);
    // The source copied into first..last with its references moved (the copy-cell dialog and
    // the fill handle). False when the copy stopped with a message.
    bool CopyCell(CellAddress source, CellAddress first, CellAddress last);
    // The fill handle dragged from the source to `target`: the source is copied into the cells
    // from its neighbour towards `target` up to `target`, in either direction. False when the
    // copy stopped with a message, or (doing nothing) when `target` is the source.
    bool FillCells(CellAddress source, CellAddress target);
    // On the whole sheet the font becomes the sheet's, and the colour every cell's, so that
    // it is saved with the cells; otherwise both go to each cell of the block.
    void SetTextStyle(const CellBlock& block, const TextStyle& style);
    // Format > Text Style: the font dialog from the block's current cell, then the colour
    // dialog; cancelling the font changes nothing, cancelling the colour keeps the text's.
    void ChooseTextStyle(const CellBlock& block);
    // The background and the lock. On the whole sheet the colour becomes the grid's and every
    // cell follows it; otherwise a colour equal to the grid's is stored as 0 (follow the grid),
    // black as 1 and any other colour as it is.
    void SetCellStyle(const CellBlock& block, qint32 colour, bool locked);
    // "General" or "" is the empty format. On the whole sheet every cell's format is removed
    // and the sheet's set; otherwise each cell of the block takes it. Numbers show again.
    void SetNumberFormat(const CellBlock& block, const QString& format);
    // In twips. A border dragged in several moves makes one step.
    void SetColumnWidth(int column, qint32 twips);
    // In twips; 0 lets the row fit its fonts again.
    void SetRowHeight(int row, qint32 twips);

    // Whether the text typed so far into a cell's edit box evaluates as a formula there (with
    // the circular check). Changes nothing: the links made on trial are taken back.
    bool FormulaEvaluates(CellAddress cell, const QString& text);

    bool CanUndo() const { return m_undo.canUndo(); }
    bool CanRedo() const { return m_undo.canRedo(); }
    void Undo();
    void Redo();
    const QUndoStack& UndoStack() const { return m_undo; }

    // Opens a sheet file into this document. A file that cannot be read, or is no sheet file,
    // leaves the document as it was; a damaged one keeps what could be read, untitled and
    // changed; a newer one is refused with its message. False on any failure.
    bool Open(const QString& path);
    // Save acts as Save As while the sheet has no file. A failed save keeps the previous file
    // and the changed state and says why. False when not saved.
    bool Save();
    bool SaveAs();
    // The question before a changed sheet is closed: Yes saves, No drops the changes; false
    // when the user cancels or saving fails.
    bool AskToSave();

signals:
    // Anything of the document changed: cells, settings, the file name or the changed state.
    void changed();
    // Loading, saving and formatting report their progress: the status text and the per cent
    // done, then an empty text and -1 when finished.
    void progress(const QString& status, int percent);

private:
    // Runs one command on the sheet as an undo step. Returns the description of the sheet
    // error that stopped it, empty when none did.
    template <typename Edit> QString command(Edit edit, int mergeKey = -1);
    void showError(const QString& description);
    void notify();
    void syncChanged();
    void adopt(std::unique_ptr<Sheet> sheet);
    bool saveTo(const QString& path);
    QString dialogFolder() const;

    Frame::DocumentHost* m_host;
    std::unique_ptr<Sheet> m_sheet;
    QUndoStack m_undo;
    Frame::ChangeBatch m_changes;
    bool m_quiet = false;
};

} // namespace Tillane
