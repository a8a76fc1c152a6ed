#include "platform/emf/PageState.h"

#include "platform/emf/FitPicture.h"
#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordType.h"

#include <cmath>

namespace Emf {

namespace {

constexpr double LargestTransformValue = 1e9;

bool sensible(double value)
{
    return std::isfinite(value) && std::abs(value) <= LargestTransformValue;
}

bool sensible(const XForm& transform)
{
    return sensible(transform.m11) && sensible(transform.m12) && sensible(transform.m21)
        && sensible(transform.m22) && sensible(transform.dx) && sensible(transform.dy);
}

double nonZero(double value)
{
    return value == 0 ? 1 : value;
}

// Device pixels per millimetre of the reference device, 96 dpi when the header has none.
QSizeF pixelsPerMillimetre(const PictureHeader& header)
{
    const double fallback = 96 / 25.4;
    const double x = header.deviceMillimetres.cx > 0 && header.devicePixels.cx > 0
        ? double(header.devicePixels.cx) / header.deviceMillimetres.cx
        : fallback;
    const double y = header.deviceMillimetres.cy > 0 && header.devicePixels.cy > 0
        ? double(header.devicePixels.cy) / header.deviceMillimetres.cy
        : fallback;
    return { x, y };
}

} // namespace

QTransform TransformFromXForm(const XForm& transform)
{
    return QTransform(
        transform.m11, transform.m12, transform.m21, transform.m22, transform.dx, transform.dy);
}

XForm XFormFromTransform(const QTransform& transform)
{
    return { float(transform.m11()), float(transform.m12()), float(transform.m21()),
        float(transform.m22()), float(transform.dx()), float(transform.dy()) };
}

QTransform PageState::toDevice(const PictureHeader& header) const
{
    double scaleX = 1;
    double scaleY = 1;
    const QSizeF perMillimetre = pixelsPerMillimetre(header);
    auto metric = [&](double millimetresPerUnit) {
        scaleX = perMillimetre.width() * millimetresPerUnit;
        scaleY = -perMillimetre.height() * millimetresPerUnit;
    };
    switch (mapMode) {
    case MapMode::LowMetric:
        metric(0.1);
        break;
    case MapMode::HighMetric:
        metric(0.01);
        break;
    case MapMode::LowEnglish:
        metric(0.254);
        break;
    case MapMode::HighEnglish:
        metric(0.0254);
        break;
    case MapMode::Twips:
        metric(25.4 / 1440);
        break;
    case MapMode::Isotropic:
    case MapMode::Anisotropic:
        scaleX = viewportExtent.width() / nonZero(windowExtent.width());
        scaleY = viewportExtent.height() / nonZero(windowExtent.height());
        if (mapMode == MapMode::Isotropic) {
            const double smaller = std::min(std::abs(scaleX), std::abs(scaleY));
            scaleX = std::copysign(smaller, scaleX);
            scaleY = std::copysign(smaller, scaleY);
        }
        break;
    default:
        break;
    }
    const QTransform page(scaleX, 0, 0, scaleY, viewportOrigin.x() - windowOrigin.x() * scaleX,
        viewportOrigin.y() - windowOrigin.y() * scaleY);
    return world * page;
}

bool PageState::apply(std::uint32_t type, QByteArrayView record)
{
    RecordReader reader(record);
    switch (static_cast<RecordType>(type)) {
    case RecordType::SetWorldTransform: {
        const XForm transform = reader.xform(8);
        if (reader.ok() && sensible(transform))
            world = TransformFromXForm(transform);
        return true;
    }
    case RecordType::ModifyWorldTransform: {
        const XForm transform = reader.xform(8);
        const std::uint32_t mode = reader.u32(32);
        if (!reader.ok() || !sensible(transform))
            return true;
        const QTransform given = TransformFromXForm(transform);
        QTransform result = world;
        switch (mode) {
        case WorldTransformMode::Identity:
            result = QTransform();
            break;
        case WorldTransformMode::LeftMultiply:
            result = given * world;
            break;
        case WorldTransformMode::RightMultiply:
            result = world * given;
            break;
        case WorldTransformMode::Set:
            result = given;
            break;
        default:
            break;
        }
        if (sensible(result.m11()) && sensible(result.m12()) && sensible(result.m21())
            && sensible(result.m22()) && sensible(result.dx()) && sensible(result.dy()))
            world = result;
        return true;
    }
    case RecordType::SetMapMode: {
        const std::uint32_t mode = reader.u32(8);
        if (reader.ok() && mode >= MapMode::Text && mode <= MapMode::Anisotropic)
            mapMode = mode;
        return true;
    }
    case RecordType::SetWindowExtEx:
    case RecordType::SetViewportExtEx: {
        const SizeL size = reader.size(8);
        // Extents only count in the two scalable modes, and a zero extent is refused.
        if (!reader.ok() || size.cx == 0 || size.cy == 0)
            return true;
        QSizeF& extent
            = type == std::uint32_t(RecordType::SetWindowExtEx) ? windowExtent : viewportExtent;
        extent = QSizeF(size.cx, size.cy);
        return true;
    }
    case RecordType::SetWindowOrgEx:
    case RecordType::SetViewportOrgEx: {
        const PointL origin = reader.point(8);
        if (!reader.ok())
            return true;
        QPointF& target
            = type == std::uint32_t(RecordType::SetWindowOrgEx) ? windowOrigin : viewportOrigin;
        target = QPointF(origin.x, origin.y);
        return true;
    }
    case RecordType::ScaleViewportExtEx:
    case RecordType::ScaleWindowExtEx: {
        const std::int32_t xNumerator = reader.i32(8);
        const std::int32_t xDenominator = reader.i32(12);
        const std::int32_t yNumerator = reader.i32(16);
        const std::int32_t yDenominator = reader.i32(20);
        if (!reader.ok() || xNumerator == 0 || xDenominator == 0 || yNumerator == 0
            || yDenominator == 0)
            return true;
        QSizeF& extent
            = type == std::uint32_t(RecordType::ScaleWindowExtEx) ? windowExtent : viewportExtent;
        const QSizeF scaled(extent.width() * xNumerator / xDenominator,
            extent.height() * yNumerator / yDenominator);
        if (sensible(scaled.width()) && sensible(scaled.height()) && scaled.width() != 0
            && scaled.height() != 0)
            extent = scaled;
        return true;
    }
    default:
        return false;
    }
}

QRectF SourceRectangle(const PictureHeader& header)
{
    const RectL& frame = header.frame;
    const QSizeF perMillimetre = pixelsPerMillimetre(header);
    const double width = double(frame.right) - frame.left;
    const double height = double(frame.bottom) - frame.top;
    if (width > 0 && height > 0) {
        return QRectF(frame.left * perMillimetre.width() / 100,
            frame.top * perMillimetre.height() / 100, width * perMillimetre.width() / 100,
            height * perMillimetre.height() / 100);
    }
    const RectL& bounds = header.bounds;
    const double boundsWidth = double(bounds.right) - bounds.left + 1;
    const double boundsHeight = double(bounds.bottom) - bounds.top + 1;
    if (boundsWidth > 0 && boundsHeight > 0)
        return QRectF(bounds.left, bounds.top, boundsWidth, boundsHeight);
    return QRectF(0, 0, 1, 1);
}

QRectF PlacedRectangle(const PictureHeader& header, const QRectF& target, bool keepProportions)
{
    if (!keepProportions)
        return target;
    return FitPicture(SourceRectangle(header).size(), target);
}

QTransform PlacementTransform(const PictureHeader& header, const QRectF& placed)
{
    const QRectF source = SourceRectangle(header);
    const double scaleX = placed.width() / source.width();
    const double scaleY = placed.height() / source.height();
    return QTransform(scaleX, 0, 0, scaleY, placed.left() - source.left() * scaleX,
        placed.top() - source.top() * scaleY);
}

} // namespace Emf
