#pragma once

#include <QTableView>

namespace Ormsey {

class DataGridModel;

// The graph window's data grid. A cell is edited in a text box laid over it, opened by a
// click or by typing. Enter commits and moves one cell to the right, or from the last headed
// column to the categories of the next row; the arrow keys commit and move (left and right only
// from the ends of the text); Escape drops the edit. Value columns take only the characters
// of a decimal number, so that a stray letter cannot turn a value into text.
class DataGrid : public QTableView
{
    Q_OBJECT

public:
    explicit DataGrid(DataGridModel* model, QWidget* parent = nullptr);

    // The text box over the current cell while it is being edited, else nullptr.
    QWidget* CellEditor() const;
    // Commits a running edit (before sorting, saving or a dialog that reads the graph).
    void EndCellEdit();
    // Moves the current cell by the given steps, staying inside the grid.
    void MoveCurrentCell(int rowStep, int columnStep);
    // The step Enter takes from the current cell.
    void MoveAfterEnter();
    // Whether a typed character may go into a cell of that column.
    static bool AcceptsCharacter(int column, QChar character);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // The last column under a heading: no key moves past it.
    int lastColumn() const;

    DataGridModel* m_model;
};

} // namespace Ormsey
