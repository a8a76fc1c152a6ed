#pragma once

#include "platform/emf/EmfTypes.h"
#include "platform/emf/Picture.h"

#include <QByteArrayView>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

namespace Emf {

// The coordinate part of a device context as a picture plays: world transform, mapping mode,
// window and viewport. Both players keep one, so that transforms found in foreign pictures
// are followed the same way on screen and when one picture is played into another.
struct PageState
{
    QTransform world;
    std::uint32_t mapMode = MapMode::Text;
    QPointF windowOrigin;
    QSizeF windowExtent { 1, 1 };
    QPointF viewportOrigin;
    QSizeF viewportExtent { 1, 1 };

    // Logical units to the reference device's pixels: world transform, then page transform.
    QTransform toDevice(const PictureHeader& header) const;

    // Follows a transform or mapping record; false when the record is of another kind.
    // Values that are not finite or absurdly large are ignored, as a damaged file may hold.
    bool apply(std::uint32_t type, QByteArrayView record);
};

// The rectangle of the picture's frame in reference-device pixels (the bounds when the frame
// is empty); playback maps it onto the target.
QRectF SourceRectangle(const PictureHeader& header);

// Where the frame lands in `target`: all of it, or the largest centred rectangle of the
// frame's proportions.
QRectF PlacedRectangle(const PictureHeader& header, const QRectF& target, bool keepProportions);

// Reference-device pixels to target units.
QTransform PlacementTransform(const PictureHeader& header, const QRectF& placed);

QTransform TransformFromXForm(const XForm& transform);
XForm XFormFromTransform(const QTransform& transform);

} // namespace Emf
