#pragma once

#include <QPoint>
#include <QWidget>

class QMimeData;

namespace Ormsey {

class Graph;

// Shows a graph's picture, scaled to fit the box with the graph's proportions. The picture
// is played straight onto the widget's painter, so it stays sharp at any size and on
// high-density screens. Dragging it out offers the picture as the file "Graph.emf" in the
// temporary folder, which is what file managers and office programs take.
class PictureBox : public QWidget
{
    Q_OBJECT

public:
    explicit PictureBox(Graph& graph, QWidget* parent = nullptr);

    // Exports the picture to Graph.emf in the temporary folder and names it as a file URL;
    // nullptr when there is no temporary folder, no data or the file cannot be written.
    // The caller owns the result.
    QMimeData* DragData() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    Graph& m_graph;
    QPoint m_pressedAt;
    bool m_pressed = false;
};

} // namespace Ormsey
