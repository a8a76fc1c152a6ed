#include "cards/ui/CardArea.h"

#include "frame/Helpers.h"

#include <QPainter>
#include <cmath>

namespace Bramlet {

namespace {
constexpr int selectionMargin = 30; // twips
} // namespace

CardArea::CardArea(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("CardArea"));
    setAutoFillBackground(true);
}

int CardArea::pixels(double twips) const
{
    return Frame::TwipsToPixels(twips, logicalDpiX());
}

QRect CardArea::pixels(const QRect& twips) const
{
    return { pixels(twips.left()), pixels(twips.top()), pixels(twips.width()),
        pixels(twips.height()) };
}

int CardArea::twips(int pixels) const
{
    return static_cast<int>(std::lround(pixels * 1440.0 / logicalDpiX()));
}

void CardArea::setSelection(const QRect& control)
{
    if (control == m_selection)
        return;
    m_selection = control;
    update();
}

void CardArea::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    if (m_selection.isEmpty())
        return;
    QPainter painter(this);
    painter.setPen(QPen(QColor(0, 0, 255), 1));
    painter.setBrush(Qt::NoBrush);
    const int margin = pixels(selectionMargin);
    painter.drawRect(m_selection.adjusted(-margin, -margin, margin - 1, margin - 1));
}

} // namespace Bramlet
