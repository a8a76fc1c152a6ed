#include "platform/emf/FitPicture.h"

#include <algorithm>

namespace Emf {

QRectF FitPicture(
    const QSizeF& picture, const QRectF& box, Qt::Alignment alignment, bool mayEnlarge)
{
    QSizeF size(0, 0);
    if (!picture.isEmpty() && !box.isEmpty()) {
        double scale = std::min(box.width() / picture.width(), box.height() / picture.height());
        if (!mayEnlarge)
            scale = std::min(scale, 1.0);
        size = QSizeF(picture.width() * scale, picture.height() * scale);
    }
    const QSizeF room = box.isEmpty() ? QSizeF(0, 0) : box.size() - size;
    double left = box.left() + room.width() / 2;
    if (alignment & Qt::AlignLeft)
        left = box.left();
    else if (alignment & Qt::AlignRight)
        left = box.left() + room.width();
    double top = box.top() + room.height() / 2;
    if (alignment & Qt::AlignTop)
        top = box.top();
    else if (alignment & Qt::AlignBottom)
        top = box.top() + room.height();
    return QRectF(QPointF(left, top), size);
}

} // namespace Emf
