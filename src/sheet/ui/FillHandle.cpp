#include "sheet/ui/FillHandle.h"

#include <QMouseEvent>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

FillHandle::FillHandle(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(u"imgFill"_s);
    setAccessibleName(u"Fill handle"_s);
    setCursor(Qt::CrossCursor);
    resize(sizeHint());
}

QSize FillHandle::sizeHint() const
{
    return { 7, 7 };
}

void FillHandle::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.fillRect(rect().adjusted(1, 1, -1, -1), palette().color(QPalette::Text));
}

void FillHandle::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_dragging = true;
    emit dragStarted(mapToParent(event->position().toPoint()));
}

void FillHandle::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging)
        emit dragMoved(mapToParent(event->position().toPoint()));
}

void FillHandle::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_dragging || event->button() != Qt::LeftButton)
        return;
    m_dragging = false;
    emit dragFinished(mapToParent(event->position().toPoint()));
}

} // namespace Tillane
