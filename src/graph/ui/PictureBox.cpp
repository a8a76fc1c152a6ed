#include "graph/ui/PictureBox.h"

#include "frame/FrameSettings.h"
#include "graph/Graph.h"
#include "platform/emf/FitPicture.h"
#include "platform/emf/Player.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

PictureBox::PictureBox(Graph& graph, QWidget* parent)
    : QWidget(parent)
    , m_graph(graph)
{
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, Qt::white);
    setPalette(colours);
    setMinimumSize(120, 90);
}

QMimeData* PictureBox::DragData() const
{
    const QString path = Frame::TempFilePath(u"Graph.emf");
    if (path.isEmpty() || !m_graph.GraphHasData())
        return nullptr;
    if (!m_graph.ExportGraph(path).isEmpty())
        return nullptr;
    auto* data = new QMimeData;
    data->setUrls({ QUrl::fromLocalFile(path) });
    return data;
}

void PictureBox::paintEvent(QPaintEvent* /*event*/)
{
    if (!m_graph.GraphHasData())
        return;
    const Emf::Picture* picture = m_graph.hMF();
    if (picture == nullptr || m_graph.Width() <= 0 || m_graph.Height() <= 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const QRectF target = Emf::FitPicture(
        QSizeF(m_graph.Width(), m_graph.Height()), QRectF(rect()).adjusted(4, 4, -4, -4));
    Emf::PlayPicture(*picture, painter, target, Emf::Scaling::Stretch);
}

void PictureBox::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton;
    m_pressedAt = event->position().toPoint();
    QWidget::mousePressEvent(event);
}

void PictureBox::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressed || !(event->buttons() & Qt::LeftButton)
        || (event->position().toPoint() - m_pressedAt).manhattanLength()
            < QApplication::startDragDistance())
        return;
    m_pressed = false;
    QMimeData* data = DragData();
    if (data == nullptr)
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    drag->exec(Qt::CopyAction);
}

} // namespace Ormsey
