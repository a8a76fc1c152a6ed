#pragma once

#include <QWidget>

namespace Tillane {

// The small square at the bottom-right corner of the current cell (imgFill). Dragging it fills
// the cells along one row or column with a copy of the current cell; the grid under it works
// out which cells. Positions are reported in the coordinates of its parent, the grid's
// viewport.
class FillHandle : public QWidget
{
    Q_OBJECT

public:
    explicit FillHandle(QWidget* parent);

    QSize sizeHint() const override;

signals:
    void dragStarted(QPoint position);
    void dragMoved(QPoint position);
    void dragFinished(QPoint position);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool m_dragging = false;
};

} // namespace Tillane
