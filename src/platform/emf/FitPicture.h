#pragma once

#include <QRectF>
#include <QSizeF>
#include <Qt>

namespace Emf {

// Where a picture of size `picture` is shown in `box`, for every holder of a picture (graph
// window, printed page, player, card pictures): the largest rectangle of the picture's
// proportions inside the box, scaled up or down, or with `mayEnlarge` false never above the
// picture's own size. `alignment` places it: centred by default, against an edge or a
// corner with the left, right, top or bottom flags. A picture or a box without area gives an
// empty rectangle at the aligned point.
QRectF FitPicture(const QSizeF& picture, const QRectF& box,
    Qt::Alignment alignment = Qt::AlignCenter, bool mayEnlarge = true);

} // namespace Emf
