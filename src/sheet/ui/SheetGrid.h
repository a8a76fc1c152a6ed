#pragma once

#include "sheet/CellRef.h"
#include "sheet/SheetDocument.h"

#include <QPointer>
#include <QTableView>
#include <functional>

class QRubberBand;

namespace Tillane {

class FillHandle;
class Sheet;
class SheetGridModel;

// The sheet's grid (DataGrid): a table view over SheetGridModel with the row numbers and column
// letters as headings. It keeps the selection as the sheet commands read it: the current cell,
// where the selection started, and the selection's end, where it stopped, so that a selection
// made upwards runs "backwards". The view moves the selection for the keys and the mouse and
// reports everything else (keys that type or clear, clicks on cells, the fill handle's drag,
// resized borders) to the window, which decides.
class SheetGrid : public QTableView
{
    Q_OBJECT

public:
    explicit SheetGrid(SheetGridModel* model, QWidget* parent = nullptr);

    CellAddress CurrentCell() const { return m_current; }
    CellAddress SelectionEnd() const { return m_end; }
    CellBlock Selection() const { return { m_current, m_end }; }
    // The selection from A1 to Z256.
    bool AllCellsSelected() const { return Selection().IsWholeSheet(); }
    // Makes the cell current, alone in the selection.
    void SetCurrentCell(CellAddress cell);
    void SetSelection(CellAddress current, CellAddress end);

    // Where a cell is drawn, in the viewport's coordinates.
    QRect CellRect(CellAddress cell) const;
    // The cell under a point of the viewport, held to the sheet.
    CellAddress CellAt(QPoint position) const;

    // Keeps `box` exactly over the cell while the grid scrolls or its borders move; nullptr
    // lets go of it.
    void CoverCell(QWidget* box, CellAddress cell);
    FillHandle* FillHandleWidget() const { return m_fillHandle; }
    void SetFillHandleShown(bool shown);

    // Column widths and row heights from the sheet, in twips at the screen's dots per inch. A
    // row without a height of its own fits the largest font in it.
    void ApplySizes(const Sheet& sheet);
    int TwipsToPixels(double twips) const;
    qint32 PixelsToTwips(int pixels) const;

    // Asked before the user moves the selection with the mouse on a heading or the corner: the
    // window commits an open edit there and may refuse.
    void SetLeaveCheck(std::function<bool()> check) { m_mayLeave = std::move(check); }

    // The fill handle's drag, as the window would see it: pressed at the handle, moved to the
    // point and released there. Returns the cell the drag ends on.
    CellAddress FillTarget(QPoint position) const;

    void selectAll() override;

signals:
    // A left click on a cell without Shift; the window makes it current (or not).
    void cellPressed(CellAddress cell);
    void cellDoubleClicked(CellAddress cell);
    // A key the grid does not use to move: typing, clearing, opening the edit box.
    void keyTyped(QKeyEvent* event);
    void currentCellChanged(CellAddress current, CellAddress previous);
    // The fill handle was dropped on `target`.
    void fillDragged(CellAddress target);
    // The user dragged a border; sizes in twips.
    void columnResized(int column, qint32 twips);
    void rowResized(int row, qint32 twips);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showSelection();
    void placeOverlays();
    void headingPressed(Qt::Orientation orientation, int section);
    void headingEntered(Qt::Orientation orientation, int section);
    void fillStarted(QPoint position);
    void fillMoved(QPoint position);
    void fillFinished(QPoint position);

    SheetGridModel* m_model;
    CellAddress m_current { 1, 1 };
    CellAddress m_end { 1, 1 };
    bool m_selecting = false;
    QPointer<QWidget> m_coveringBox;
    CellAddress m_coveredCell;
    FillHandle* m_fillHandle;
    bool m_fillHandleShown = true;
    QRubberBand* m_fillOutline;
    QPoint m_fillOffset; // where the drag started, from the current cell's top-left corner
    bool m_applyingSizes = false;
    std::function<bool()> m_mayLeave;
};

} // namespace Tillane
