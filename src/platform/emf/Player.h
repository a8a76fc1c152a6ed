#pragma once

#include "platform/emf/EmfTypes.h"
#include "platform/emf/Picture.h"

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QSize>

class QPainter;

namespace Emf {

class RecordingContext;

enum class Scaling {
    Stretch, // the frame fills the target
    KeepProportions, // the largest centred rectangle of the frame's proportions
};

// Renders a picture onto any painter (screen, printer, PDF, SVG, image): the picture's frame
// is mapped onto `target`, given in the painter's current coordinates, and drawing is clipped
// to it. Plays what our recorder writes and the common records of other programs' pictures;
// records it does not know are passed over. The painter's state is left as it was.
void PlayPicture(const Picture& picture, QPainter& painter, const QRectF& target,
    Scaling scaling = Scaling::Stretch);

// Plays a picture into another recording, its frame mapped onto `target` (logical units of
// the recording): the records are copied with their objects renumbered, transforms and
// mapping modes turned into one world transform, and the whole wrapped in a saved state so
// the recording's own state is untouched afterwards. False when there is nothing to play.
bool PlayPicture(const Picture& picture, RecordingContext& recording, const RectL& target,
    Scaling scaling = Scaling::Stretch);

// The picture rendered into a new image of `size` pixels on `background`.
QImage RenderPicture(const Picture& picture, const QSize& size,
    const QColor& background = Qt::white, Scaling scaling = Scaling::Stretch);

} // namespace Emf
