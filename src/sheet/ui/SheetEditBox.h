#pragma once

#include "sheet/CellRef.h"

#include <QObject>

class QKeyEvent;
class QLineEdit;

namespace Tillane {

class SheetDocument;
class SheetGrid;
class SheetGridModel;

// The box a cell is typed into, over the cell on the grid: it opens on the current cell,
// enters its text through the document and knows whether the formula typed so far waits for a
// cell to be pointed at. Return enters the text, Escape drops it, the arrow keys up and down
// and Tab and Shift+Tab enter it and move on; "=" in an empty box asks for the formula builder.
class SheetEditBox : public QObject
{
    Q_OBJECT

public:
    // The box is made on the grid's viewport, hidden. All three outlive it.
    SheetEditBox(SheetDocument& document, SheetGrid& grid, const SheetGridModel& model);

    QLineEdit* Box() const { return m_box; }
    // The cell the box is over, or was last opened on.
    CellAddress Cell() const { return m_cell; }
    bool IsOpen() const { return m_open; }
    // The formula in the box does not evaluate yet: a click on a cell inserts its name.
    bool PointMode() const { return m_pointMode; }

    // Opens over the current cell with the text, unless the cell is locked (a beep) or the
    // box is open already. False when it did not open.
    bool Open(const QString& text);
    // Closes without entering anything; the grid has the focus.
    void Close();
    // Enters the text into the cell being edited, which becomes current again, and closes.
    // False (the box keeps the focus) when the entry was refused.
    bool Commit();
    // A cell pointed at for the formula: its name replaces the selected text.
    void InsertCellName(const QString& name);
    // Over its cell again, after the grid's sizes may have changed.
    void Cover();

signals:
    void formulaBuilderWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool keyPressed(QKeyEvent* event);
    void textChanged(const QString& text);

    SheetDocument& m_document;
    SheetGrid& m_grid;
    const SheetGridModel& m_model;
    QLineEdit* m_box;
    CellAddress m_cell { 1, 1 };
    bool m_open = false;
    bool m_pointMode = false;
};

} // namespace Tillane
