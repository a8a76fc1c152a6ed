#include "platform/emf/Player.h"

#include "platform/emf/PageState.h"
#include "platform/emf/PainterPlayback.h"
#include "platform/emf/RecordingContext.h"
#include "platform/emf/RecordingPlayback.h"

#include <QPainter>

namespace Emf {

void PlayPicture(const Picture& picture, QPainter& painter, const QRectF& target, Scaling scaling)
{
    if (!picture.isValid() || target.isEmpty() || !painter.isActive())
        return;
    const QRectF placed
        = PlacedRectangle(picture.header(), target, scaling == Scaling::KeepProportions);
    PainterPlayback(picture, painter, placed).run();
}

bool PlayPicture(
    const Picture& picture, RecordingContext& recording, const RectL& target, Scaling scaling)
{
    const QRectF area(QPointF(target.left, target.top), QPointF(target.right, target.bottom));
    if (!picture.isValid() || !recording.isRecording() || area.isEmpty())
        return false;
    const QRectF placed
        = PlacedRectangle(picture.header(), area, scaling == Scaling::KeepProportions);
    RecordingPlayback(picture, recording, placed).run();
    return true;
}

QImage RenderPicture(
    const Picture& picture, const QSize& size, const QColor& background, Scaling scaling)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(background);
    QPainter painter(&image);
    PlayPicture(picture, painter, QRectF(QPointF(0, 0), QSizeF(size)), scaling);
    painter.end();
    return image;
}

} // namespace Emf
