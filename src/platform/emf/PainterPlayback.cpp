#include "platform/emf/PainterPlayback.h"

#include "platform/emf/DeviceIndependentBitmap.h"
#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordType.h"
#include "platform/emf/TextMetrics.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPathStroker>
#include <algorithm>
#include <cmath>
#include <numbers>

using namespace Qt::Literals::StringLiterals;

namespace Emf {

namespace {

constexpr std::uint32_t ArcClockwise = 2;
constexpr std::uint32_t StretchModeHalftone = 4;
constexpr std::uint32_t RopSourceCopy = 0x00CC0020;
constexpr std::uint32_t RopSourceAnd = 0x008800C6;
constexpr std::uint32_t RopPatternCopy = 0x00F00021;
constexpr std::uint32_t RopBlackness = 0x00000042;
constexpr std::uint32_t RopWhiteness = 0x00FF0062;
// Region rectangles read from one record at most; more than any real clip region needs.
constexpr std::uint32_t MaximumRegionRectangles = 100000;
// The font engine renders a small glyph as one bitmap under the painter's transform, judging
// "small" by area alone. A transform that stretches or shears a glyph far in one direction
// makes a bitmap too long to render, and the engine then copies from a null buffer. Text that
// could reach beyond this many pixels is filled as outlines instead.
constexpr double LongestGlyphBitmap = 1024;

// An upper bound on how far the transform can stretch a length in any direction.
double greatestStretch(const QTransform& transform)
{
    return std::hypot(
        std::hypot(transform.m11(), transform.m12()), std::hypot(transform.m21(), transform.m22()));
}

QColor colourOf(Colour colour)
{
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

QPainterPath rectanglePath(const QRectF& box)
{
    QPainterPath path;
    path.addRect(box.normalized());
    return path;
}

QPointF toPoint(PointL point)
{
    return QPointF(point.x, point.y);
}

QRectF toRect(const RectL& box)
{
    return QRectF(QPointF(box.left, box.top), QPointF(box.right, box.bottom)).normalized();
}

Qt::PenStyle penLineStyle(std::uint32_t style)
{
    switch (style & PenStyle::StyleMask) {
    case PenStyle::Dash:
        return Qt::DashLine;
    case PenStyle::Dot:
    case PenStyle::Alternate:
        return Qt::DotLine;
    case PenStyle::DashDot:
        return Qt::DashDotLine;
    case PenStyle::DashDotDot:
        return Qt::DashDotDotLine;
    case PenStyle::Null:
        return Qt::NoPen;
    default:
        return Qt::SolidLine;
    }
}

Qt::BrushStyle hatchStyle(std::uint32_t hatch)
{
    switch (hatch) {
    case Hatch::Horizontal:
        return Qt::HorPattern;
    case Hatch::Vertical:
        return Qt::VerPattern;
    case Hatch::ForwardDiagonal:
        return Qt::FDiagPattern;
    case Hatch::BackwardDiagonal:
        return Qt::BDiagPattern;
    case Hatch::Cross:
        return Qt::CrossPattern;
    default:
        return Qt::DiagCrossPattern;
    }
}

// The parametric angle, in degrees, of the ellipse point on the ray from the centre through
// `point` (y grows downward, angles counterclockwise), as QPainterPath::arcTo takes it.
double ellipseAngle(const QRectF& box, QPointF point)
{
    const double dx = (point.x() - box.center().x()) / std::max(box.width() / 2, 1e-9);
    const double dy = (box.center().y() - point.y()) / std::max(box.height() / 2, 1e-9);
    if (dx == 0 && dy == 0)
        return 0;
    return std::atan2(dy, dx) * 180 / std::numbers::pi;
}

} // namespace

PainterPlayback::PainterPlayback(const Picture& picture, QPainter& painter, const QRectF& placed)
    : m_picture(picture)
    , m_painter(painter)
    , m_placed(placed)
    , m_placement(PlacementTransform(picture.header(), placed))
    , m_base(painter.transform())
    , m_objects(std::min<std::size_t>(
          std::max<std::size_t>(picture.header().handleCount, 1), MaximumObjects))
{
    m_state.font = SystemFont();
    if (painter.hasClipping())
        m_outerClip = painter.clipPath();
}

void PainterPlayback::run()
{
    m_painter.save();
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const RecordSpan& record : m_picture.records()) {
        if (record.type == std::uint32_t(RecordType::EndOfFile))
            break;
        play(record.type, m_picture.recordBytes(record));
    }
    m_painter.restore();
}

QTransform PainterPlayback::logicalToTarget() const
{
    return m_state.page.toDevice(m_picture.header()) * m_placement;
}

void PainterPlayback::prepare()
{
    if (m_clipDirty) {
        QPainterPath clip;
        clip.addRect(m_placed);
        if (m_state.clip)
            clip = clip.intersected(*m_state.clip);
        if (m_outerClip)
            clip = clip.intersected(*m_outerClip);
        m_painter.setTransform(m_base);
        m_painter.setClipPath(clip, Qt::ReplaceClip);
        m_clipDirty = false;
    }
    m_painter.setTransform(logicalToTarget() * m_base);
}

QPen PainterPlayback::currentPen() const
{
    const PenObject& pen = m_state.pen;
    if (!pen.visible || pen.style == Qt::NoPen)
        return Qt::NoPen;
    QPen result(pen.colour);
    result.setStyle(pen.style);
    result.setCapStyle(pen.cap);
    result.setJoinStyle(pen.join);
    result.setMiterLimit(m_state.miterLimit);
    // Pens of no width, and cosmetic pens, are one device pixel wide whatever the scale;
    // others are in logical units, so a stretched graph keeps its line weights.
    if (pen.cosmetic || pen.width <= 0) {
        result.setWidthF(0);
        result.setCosmetic(true);
    } else {
        result.setWidthF(pen.width);
    }
    return result;
}

QBrush PainterPlayback::currentBrush() const
{
    const BrushObject& brush = m_state.brush;
    if (!brush.visible)
        return Qt::NoBrush;
    if (!brush.pattern.isNull())
        return QBrush(brush.pattern);
    return QBrush(brush.colour, brush.style);
}

Qt::FillRule PainterPlayback::fillRule() const
{
    return m_state.polyFillMode == PolyFillMode::Winding ? Qt::WindingFill : Qt::OddEvenFill;
}

void PainterPlayback::strokeShape(const QPainterPath& shape)
{
    drawShape(shape, false, true);
}

void PainterPlayback::fillShape(const QPainterPath& shape, const QBrush& brush)
{
    prepare();
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(brush);
    m_painter.drawPath(shape);
}

void PainterPlayback::drawShape(const QPainterPath& shape, bool fill, bool stroke)
{
    prepare();
    QPainterPath filled = shape;
    filled.setFillRule(fillRule());
    const QBrush brush = fill ? currentBrush() : QBrush(Qt::NoBrush);
    if (brush.style() != Qt::NoBrush) {
        m_painter.setPen(Qt::NoPen);
        if (brush.style() >= Qt::HorPattern && brush.style() <= Qt::DiagCrossPattern
            && m_state.backgroundMode == BackgroundMode::Opaque) {
            m_painter.setBrush(colourOf(m_state.backgroundColour));
            m_painter.drawPath(filled);
        }
        m_painter.setBrush(brush);
        m_painter.drawPath(filled);
    }
    QPen pen = stroke ? currentPen() : QPen(Qt::NoPen);
    if (pen.style() == Qt::NoPen)
        return;
    // Outlines run through the middle of the reference pixels, as the platform draws a line
    // on the pixels at and below-right of its coordinates; fills keep the exact edges.
    const QTransform outline = m_state.page.toDevice(m_picture.header())
        * QTransform::fromTranslate(0.5, 0.5) * m_placement * m_base;
    m_painter.setTransform(outline);
    // A line is never thinner than one device pixel, as on the platform: a graph shrunk to a
    // fraction of its size keeps visible outlines (and they take the fast one-pixel stroker
    // rather than filling a sliver of a polygon each).
    if (!pen.isCosmetic() && pen.widthF() * std::sqrt(std::abs(outline.determinant())) < 1) {
        pen.setWidthF(0);
        pen.setCosmetic(true);
    }
    m_painter.setPen(pen);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawPath(filled);
}

void PainterPlayback::closedShape(const QPainterPath& shape)
{
    if (m_pathOpen) {
        m_path.addPath(shape);
        m_figureOpen = false;
        return;
    }
    drawShape(shape, true, true);
}

void PainterPlayback::startFigureIfNeeded()
{
    if (!m_figureOpen) {
        m_path.moveTo(m_state.position);
        m_figureOpen = true;
    }
}

void PainterPlayback::storeObject(std::uint32_t handle, GraphicsObject object)
{
    if (handle == 0 || (handle & StockFlag) != 0 || handle >= MaximumObjects)
        return;
    // Some programs write a handle count too small for the objects they make.
    if (handle >= m_objects.size())
        m_objects.resize(handle + 1);
    m_objects[handle] = std::move(object);
}

void PainterPlayback::selectObject(std::uint32_t handle)
{
    if ((handle & StockFlag) != 0) {
        switch (handle) {
        case Stock::WhiteBrush:
        case Stock::DcBrush:
            m_state.brush = { true, Qt::white, Qt::SolidPattern, {} };
            break;
        case Stock::LightGreyBrush:
            m_state.brush = { true, QColor(192, 192, 192), Qt::SolidPattern, {} };
            break;
        case Stock::GreyBrush:
            m_state.brush = { true, QColor(128, 128, 128), Qt::SolidPattern, {} };
            break;
        case Stock::DarkGreyBrush:
            m_state.brush = { true, QColor(64, 64, 64), Qt::SolidPattern, {} };
            break;
        case Stock::BlackBrush:
            m_state.brush = { true, Qt::black, Qt::SolidPattern, {} };
            break;
        case Stock::NullBrush:
            m_state.brush = { false, Qt::white, Qt::NoBrush, {} };
            break;
        case Stock::WhitePen:
            m_state.pen = PenObject { true, true, 0, Qt::white };
            break;
        case Stock::BlackPen:
        case Stock::DcPen:
            m_state.pen = PenObject { true, true, 0, Qt::black };
            break;
        case Stock::NullPen:
            m_state.pen = PenObject { false, true, 0, Qt::black };
            break;
        case Stock::OemFixedFont:
        case Stock::AnsiFixedFont:
        case Stock::SystemFixedFont:
            m_state.font = SystemFont();
            m_state.font.faceName = u"Courier New"_s;
            m_state.font.weight = 400;
            break;
        case Stock::AnsiVariableFont:
        case Stock::SystemFont:
        case Stock::DeviceDefaultFont:
        case Stock::DefaultGuiFont:
            m_state.font = SystemFont();
            break;
        default:
            break;
        }
        return;
    }
    if (handle >= m_objects.size())
        return;
    const GraphicsObject& object = m_objects[handle];
    if (const auto* pen = std::get_if<PenObject>(&object))
        m_state.pen = *pen;
    else if (const auto* brush = std::get_if<BrushObject>(&object))
        m_state.brush = *brush;
    else if (const auto* font = std::get_if<FontObject>(&object))
        m_state.font = font->font;
}

void PainterPlayback::createPen(RecordReader& reader)
{
    const std::uint32_t handle = reader.u32(8);
    const std::uint32_t style = reader.u32(12);
    const std::int32_t width = reader.i32(16);
    const Colour colour = reader.u32(24);
    if (!reader.ok())
        return;
    PenObject pen;
    pen.style = penLineStyle(style);
    pen.visible = pen.style != Qt::NoPen;
    pen.width = std::abs(double(width));
    pen.cosmetic = width <= 0;
    pen.colour = colourOf(colour);
    pen.cap = Qt::RoundCap;
    pen.join = Qt::RoundJoin;
    storeObject(handle, pen);
}

void PainterPlayback::createExtendedPen(RecordReader& reader)
{
    const std::uint32_t handle = reader.u32(8);
    const std::uint32_t style = reader.u32(28);
    const std::uint32_t width = reader.u32(32);
    const std::uint32_t brushStyle = reader.u32(36);
    const Colour colour = reader.u32(40);
    if (!reader.ok())
        return;
    PenObject pen;
    pen.style = penLineStyle(style);
    pen.visible = pen.style != Qt::NoPen && brushStyle != BrushStyle::Null;
    pen.cosmetic = (style & PenStyle::TypeMask) != PenStyle::Geometric;
    pen.width = pen.cosmetic ? 0 : double(width);
    pen.colour = colourOf(colour);
    switch (style & PenStyle::EndCapMask) {
    case PenStyle::EndCapSquare:
        pen.cap = Qt::SquareCap;
        break;
    case PenStyle::EndCapFlat:
        pen.cap = Qt::FlatCap;
        break;
    default:
        pen.cap = Qt::RoundCap;
        break;
    }
    switch (style & PenStyle::JoinMask) {
    case PenStyle::JoinBevel:
        pen.join = Qt::BevelJoin;
        break;
    case PenStyle::JoinMiter:
        pen.join = Qt::MiterJoin;
        break;
    default:
        pen.join = Qt::RoundJoin;
        break;
    }
    storeObject(handle, pen);
}

void PainterPlayback::createBrush(RecordReader& reader)
{
    const std::uint32_t handle = reader.u32(8);
    const std::uint32_t style = reader.u32(12);
    const Colour colour = reader.u32(16);
    const std::uint32_t hatch = reader.u32(20);
    if (!reader.ok())
        return;
    BrushObject brush;
    brush.colour = colourOf(colour);
    brush.visible = style != BrushStyle::Null;
    brush.style = style == BrushStyle::Hatched ? hatchStyle(hatch)
        : brush.visible                        ? Qt::SolidPattern
                                               : Qt::NoBrush;
    storeObject(handle, brush);
}

void PainterPlayback::createPatternBrush(RecordReader& reader, bool monochrome)
{
    const std::uint32_t handle = reader.u32(8);
    const std::uint32_t usage = reader.u32(12);
    const std::uint32_t infoOffset = reader.u32(16);
    const std::uint32_t infoSize = reader.u32(20);
    const std::uint32_t bitsOffset = reader.u32(24);
    const std::uint32_t bitsSize = reader.u32(28);
    if (!reader.ok())
        return;
    const QByteArrayView info = reader.bytes(infoOffset, infoSize);
    const QByteArrayView bits = reader.bytes(bitsOffset, bitsSize);
    BrushObject brush;
    if (reader.ok())
        brush.pattern = DecodeDeviceIndependentBitmap(info, bits, usage == 1);
    if (brush.pattern.isNull()) {
        // An unreadable pattern still fills, in a middle grey, so the shape is not lost.
        brush.colour = QColor(128, 128, 128);
    } else if (monochrome) {
        // A monochrome pattern takes the text and background colours when it is used;
        // those of the moment of creation stand in for them.
        brush.pattern = brush.pattern.convertToFormat(QImage::Format_Mono)
                            .convertToFormat(QImage::Format_RGB32);
    }
    storeObject(handle, brush);
}

void PainterPlayback::createFont(RecordReader& reader)
{
    const std::uint32_t handle = reader.u32(8);
    LogFont font;
    font.height = reader.i32(12);
    font.width = reader.i32(16);
    font.escapement = reader.i32(20);
    font.orientation = reader.i32(24);
    font.weight = reader.i32(28);
    font.italic = reader.u8(32) != 0;
    font.underline = reader.u8(33) != 0;
    font.strikeOut = reader.u8(34) != 0;
    font.charSet = reader.u8(35);
    if (!reader.ok())
        return;
    // The face name: up to 32 UTF-16 units, ended by the first null.
    QString face;
    for (std::uint64_t index = 0; index < 32 && reader.contains(40 + index * 2, 2); ++index) {
        const std::uint16_t unit = reader.u16(40 + index * 2);
        if (unit == 0)
            break;
        face.append(QChar(unit));
    }
    font.faceName = face;
    storeObject(handle, FontObject { font });
}

void PainterPlayback::restoreState(std::int32_t level)
{
    const auto depth = static_cast<std::int64_t>(m_saved.size());
    const std::int64_t relative = level > 0 ? std::int64_t(level) - depth - 1 : level;
    if (relative >= 0 || -relative > depth)
        return;
    const auto kept = static_cast<std::size_t>(depth + relative);
    m_state = m_saved[kept];
    m_saved.resize(kept);
    m_clipDirty = true;
}

void PainterPlayback::polyline(
    std::span<const PointL> points, bool closed, bool bezier, bool fromCurrent)
{
    if (points.empty())
        return;
    QPainterPath shape;
    std::size_t first = 0;
    const QPointF startPosition = m_state.position;
    if (fromCurrent) {
        shape.moveTo(m_state.position);
    } else {
        shape.moveTo(toPoint(points[0]));
        first = 1;
    }
    if (bezier) {
        for (std::size_t index = first; index + 2 < points.size(); index += 3)
            shape.cubicTo(
                toPoint(points[index]), toPoint(points[index + 1]), toPoint(points[index + 2]));
    } else {
        for (std::size_t index = first; index < points.size(); ++index)
            shape.lineTo(toPoint(points[index]));
    }
    if (closed)
        shape.closeSubpath();
    if (fromCurrent)
        m_state.position = shape.currentPosition();

    if (m_pathOpen) {
        if (fromCurrent) {
            if (!m_figureOpen) {
                m_path.moveTo(startPosition);
                m_figureOpen = true;
            }
            // Continue the open figure with everything after the starting point.
            for (int index = 1; index < shape.elementCount(); ++index) {
                const QPainterPath::Element element = shape.elementAt(index);
                if (element.type == QPainterPath::LineToElement) {
                    m_path.lineTo(element.x, element.y);
                } else if (element.type == QPainterPath::CurveToElement
                    && index + 2 < shape.elementCount()) {
                    const QPainterPath::Element second = shape.elementAt(index + 1);
                    const QPainterPath::Element third = shape.elementAt(index + 2);
                    m_path.cubicTo(element.x, element.y, second.x, second.y, third.x, third.y);
                    index += 2;
                }
            }
        } else {
            m_path.addPath(shape);
            m_figureOpen = !closed;
        }
        return;
    }
    drawShape(shape, closed, true);
}

void PainterPlayback::polyPolygon(RecordReader& reader, bool sixteenBits, bool closed)
{
    const std::uint32_t polygonCount = reader.u32(24);
    const std::uint32_t pointCount = reader.u32(28);
    if (!reader.ok())
        return;
    const std::optional<std::vector<std::uint32_t>> counts = reader.u32s(32, polygonCount);
    if (!counts)
        return;
    const std::uint64_t pointsOffset = 32 + std::uint64_t(polygonCount) * 4;
    const std::optional<std::vector<PointL>> points = sixteenBits
        ? reader.points16(pointsOffset, pointCount)
        : reader.points(pointsOffset, pointCount);
    if (!points)
        return;
    QPainterPath shape;
    std::uint64_t next = 0;
    for (std::uint32_t count : *counts) {
        if (count == 0)
            continue;
        if (next + count > points->size())
            break;
        shape.moveTo(toPoint((*points)[next]));
        for (std::uint64_t index = next + 1; index < next + count; ++index)
            shape.lineTo(toPoint((*points)[index]));
        if (closed)
            shape.closeSubpath();
        next += count;
    }
    if (m_pathOpen) {
        m_path.addPath(shape);
        m_figureOpen = false;
        return;
    }
    drawShape(shape, closed, true);
}

void PainterPlayback::polyDraw(RecordReader& reader, bool sixteenBits)
{
    const std::uint32_t count = reader.u32(24);
    if (!reader.ok())
        return;
    const std::optional<std::vector<PointL>> points
        = sixteenBits ? reader.points16(28, count) : reader.points(28, count);
    if (!points)
        return;
    const std::uint64_t typesOffset = 28 + std::uint64_t(count) * (sixteenBits ? 4 : 8);
    const QByteArrayView types = reader.bytes(typesOffset, count);
    if (!reader.ok())
        return;
    QPainterPath shape;
    shape.moveTo(m_state.position);
    for (std::size_t index = 0; index < points->size(); ++index) {
        const std::uint8_t type = static_cast<std::uint8_t>(types[index]);
        const QPointF point = toPoint((*points)[index]);
        switch (type & PathPointType::TypeMask) {
        case PathPointType::MoveTo:
            shape.moveTo(point);
            break;
        case PathPointType::BezierTo:
            if (index + 2 < points->size()) {
                shape.cubicTo(point, toPoint((*points)[index + 1]), toPoint((*points)[index + 2]));
                index += 2;
            }
            break;
        default:
            shape.lineTo(point);
            break;
        }
        const std::uint8_t last = static_cast<std::uint8_t>(types[index]);
        if ((last & PathPointType::CloseFigure) != 0)
            shape.closeSubpath();
    }
    m_state.position = shape.currentPosition();
    if (m_pathOpen) {
        m_path.addPath(shape);
        m_figureOpen = false;
        return;
    }
    drawShape(shape, false, true);
}

void PainterPlayback::arc(RecordReader& reader, ArcKind kind)
{
    const QRectF box = toRect(reader.rect(8));
    const QPointF start = toPoint(reader.point(24));
    const QPointF end = toPoint(reader.point(32));
    if (!reader.ok())
        return;
    const double startAngle = ellipseAngle(box, start);
    double sweep = ellipseAngle(box, end) - startAngle;
    if (m_state.arcDirection == ArcClockwise) {
        while (sweep >= 0)
            sweep -= 360;
    } else {
        while (sweep <= 0)
            sweep += 360;
    }
    QPainterPath shape;
    if (kind == ArcKind::Pie) {
        shape.moveTo(box.center());
        shape.arcTo(box, startAngle, sweep);
        shape.closeSubpath();
    } else {
        shape.arcMoveTo(box, startAngle);
        shape.arcTo(box, startAngle, sweep);
        if (kind == ArcKind::Chord)
            shape.closeSubpath();
    }
    if (kind == ArcKind::ArcTo) {
        QPainterPath joined;
        joined.moveTo(m_state.position);
        joined.lineTo(shape.elementAt(0).x, shape.elementAt(0).y);
        joined.connectPath(shape);
        m_state.position = shape.currentPosition();
        if (m_pathOpen) {
            startFigureIfNeeded();
            m_path.connectPath(joined);
            return;
        }
        strokeShape(joined);
        return;
    }
    if (kind == ArcKind::Arc) {
        if (m_pathOpen) {
            m_path.addPath(shape);
            m_figureOpen = true;
            return;
        }
        strokeShape(shape);
        return;
    }
    closedShape(shape);
}

void PainterPlayback::angleArc(RecordReader& reader)
{
    const QPointF centre = toPoint(reader.point(8));
    const double radius = reader.u32(16);
    const double startAngle = reader.f32(20);
    const double sweep = reader.f32(24);
    if (!reader.ok() || !std::isfinite(startAngle) || !std::isfinite(sweep))
        return;
    const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    QPainterPath shape;
    shape.moveTo(m_state.position);
    QPainterPath arcOnly;
    arcOnly.arcMoveTo(box, startAngle);
    shape.lineTo(arcOnly.currentPosition());
    shape.arcTo(box, startAngle, std::clamp(sweep, -360.0, 360.0));
    m_state.position = shape.currentPosition();
    if (m_pathOpen) {
        startFigureIfNeeded();
        m_path.connectPath(shape);
        return;
    }
    strokeShape(shape);
}

void PainterPlayback::text(RecordReader& reader, bool wide)
{
    const PointL reference = reader.point(36);
    const std::uint32_t count = reader.u32(44);
    const std::uint32_t stringOffset = reader.u32(48);
    const std::uint32_t options = reader.u32(52);
    const bool hasRectangle = (options & TextOption::NoRectangle) == 0;
    const RectL rectangle = hasRectangle ? reader.rect(56) : RectL {};
    const std::uint32_t advancesOffset = reader.u32(hasRectangle ? 72 : 56);
    if (!reader.ok() || (options & TextOption::GlyphIndex) != 0)
        return;
    std::optional<QString> text;
    if (wide) {
        text = reader.utf16(stringOffset, count);
    } else {
        const QByteArrayView bytes = reader.bytes(stringOffset, count);
        if (reader.ok())
            text = QString::fromLatin1(bytes);
    }
    if (!text)
        return;
    const bool paired = (options & TextOption::PairedDx) != 0;
    std::optional<std::vector<std::uint32_t>> advances;
    if (advancesOffset != 0)
        advances = reader.u32s(advancesOffset, std::uint64_t(count) * (paired ? 2 : 1));

    const QFont font = FontFromLogFont(m_state.font);
    const QFontMetricsF metrics(font);
    std::vector<double> offsets; // start of each character from the reference point
    double width = 0;
    if (advances) {
        for (std::uint32_t index = 0; index < count; ++index) {
            offsets.push_back(width);
            width += std::int32_t((*advances)[index * (paired ? 2 : 1)]);
        }
    } else {
        width = metrics.horizontalAdvance(*text);
    }

    QPointF origin = toPoint(reference);
    if ((m_state.textAlign & TextAlign::UpdateCurrentPosition) != 0)
        origin = m_state.position;
    double x = 0;
    switch (m_state.textAlign & TextAlign::HorizontalMask) {
    case TextAlign::Right:
        x = -width;
        break;
    case TextAlign::Centre:
        x = -width / 2;
        break;
    default:
        break;
    }
    double baseline = metrics.ascent();
    switch (m_state.textAlign & TextAlign::VerticalMask) {
    case TextAlign::Bottom:
        baseline = -metrics.descent();
        break;
    case TextAlign::Baseline:
        baseline = 0;
        break;
    default:
        break;
    }
    if ((m_state.textAlign & TextAlign::UpdateCurrentPosition) != 0) {
        const double angle = m_state.font.escapement / 10.0 * std::numbers::pi / 180;
        const double advance = (m_state.textAlign & TextAlign::HorizontalMask) == TextAlign::Right
            ? -width
            : (m_state.textAlign & TextAlign::HorizontalMask) == TextAlign::Centre ? 0
                                                                                   : width;
        m_state.position = origin + QPointF(advance * std::cos(angle), -advance * std::sin(angle));
    }

    if (m_pathOpen) {
        QPainterPath outline;
        outline.addText(QPointF(x, baseline), font, *text);
        QTransform turn;
        turn.translate(origin.x(), origin.y());
        turn.rotate(-m_state.font.escapement / 10.0);
        m_path.addPath(turn.map(outline));
        return;
    }

    prepare();
    const QTransform logical = logicalToTarget();
    // A mapping with y growing upward would turn the text over: mirror it back.
    const bool flipped = logical.m22() < 0;
    if (hasRectangle && (options & TextOption::Opaque) != 0) {
        m_painter.fillRect(toRect(rectangle), colourOf(m_state.backgroundColour));
    }
    if (hasRectangle && (options & TextOption::Clipped) != 0)
        m_painter.setClipRect(toRect(rectangle), Qt::IntersectClip);
    QTransform turn;
    turn.translate(origin.x(), origin.y());
    if (flipped)
        turn.scale(1, -1);
    turn.rotate(flipped ? m_state.font.escapement / 10.0 : -m_state.font.escapement / 10.0);
    const QTransform placed = turn * logical * m_base;
    m_painter.setTransform(placed);
    if (m_state.backgroundMode == BackgroundMode::Opaque) {
        m_painter.fillRect(QRectF(x, baseline - metrics.ascent(), width, metrics.height()),
            colourOf(m_state.backgroundColour));
    }
    const QColor colour = colourOf(m_state.textColour);
    const bool asOutlines
        = std::max(font.pixelSize(), 1) * greatestStretch(placed) > LongestGlyphBitmap;
    QPainterPath outlines;
    const auto draw = [&](const QPointF& at, const QString& piece) {
        if (asOutlines)
            outlines.addText(at, font, piece);
        else
            m_painter.drawText(at, piece);
    };
    m_painter.setFont(font);
    m_painter.setPen(colour);
    if (advances) {
        for (qsizetype index = 0; index < text->size(); ++index) {
            const qsizetype length
                = text->at(index).isHighSurrogate() && index + 1 < text->size() ? 2 : 1;
            draw(QPointF(x + offsets[std::size_t(index)], baseline), text->mid(index, length));
            index += length - 1;
        }
    } else {
        draw(QPointF(x, baseline), *text);
    }
    if (asOutlines)
        m_painter.fillPath(outlines, colour);
    if (hasRectangle && (options & TextOption::Clipped) != 0)
        m_clipDirty = true;
}

void PainterPlayback::bitmap(std::uint32_t type, RecordReader& reader)
{
    QRectF target;
    QRectF source;
    std::uint32_t rop = RopSourceCopy;
    std::uint32_t infoOffset = 0, infoSize = 0, bitsOffset = 0, bitsSize = 0, usage = 0;
    switch (static_cast<RecordType>(type)) {
    case RecordType::BitBlt:
    case RecordType::StretchBlt: {
        target = QRectF(reader.i32(24), reader.i32(28), reader.i32(32), reader.i32(36));
        rop = reader.u32(40);
        source = QRectF(reader.i32(44), reader.i32(48), target.width(), target.height());
        usage = reader.u32(80);
        infoOffset = reader.u32(84);
        infoSize = reader.u32(88);
        bitsOffset = reader.u32(92);
        bitsSize = reader.u32(96);
        if (type == std::uint32_t(RecordType::StretchBlt) && reader.contains(100, 8))
            source.setSize(QSizeF(reader.i32(100), reader.i32(104)));
        break;
    }
    case RecordType::StretchDIBits:
        source = QRectF(reader.i32(32), reader.i32(36), reader.i32(40), reader.i32(44));
        infoOffset = reader.u32(48);
        infoSize = reader.u32(52);
        bitsOffset = reader.u32(56);
        bitsSize = reader.u32(60);
        usage = reader.u32(64);
        rop = reader.u32(68);
        target = QRectF(reader.i32(24), reader.i32(28), reader.i32(72), reader.i32(76));
        break;
    case RecordType::SetDIBitsToDevice:
        source = QRectF(reader.i32(32), reader.i32(36), reader.i32(40), reader.i32(44));
        target = QRectF(reader.i32(24), reader.i32(28), source.width(), source.height());
        infoOffset = reader.u32(48);
        infoSize = reader.u32(52);
        bitsOffset = reader.u32(56);
        bitsSize = reader.u32(60);
        usage = reader.u32(64);
        break;
    default:
        return;
    }
    if (!reader.ok())
        return;
    if (infoSize == 0) {
        // No bitmap: a fill of the target with the brush, black or white.
        if (rop == RopPatternCopy)
            fillShape(rectanglePath(target), currentBrush());
        else if (rop == RopBlackness || rop == RopWhiteness)
            fillShape(rectanglePath(target), rop == RopBlackness ? Qt::black : Qt::white);
        return;
    }
    const QByteArrayView info = reader.bytes(infoOffset, infoSize);
    const QByteArrayView bits = reader.bytes(bitsOffset, bitsSize);
    if (!reader.ok())
        return;
    const QImage image = DecodeDeviceIndependentBitmap(info, bits, usage == 1);
    if (image.isNull())
        return;
    // Source rectangles of bottom-up bitmaps count their rows from the bottom.
    if (IsBottomUp(info))
        source.moveTop(image.height() - source.top() - source.height());
    prepare();
    // Pixels are repeated when stretched, as the platform does unless halftoning is asked.
    m_painter.setRenderHint(
        QPainter::SmoothPixmapTransform, m_state.stretchMode == StretchModeHalftone);
    if (rop == RopSourceAnd)
        m_painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    m_painter.drawImage(target.normalized(), image, source.normalized());
    m_painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void PainterPlayback::region(std::uint32_t type, RecordReader& reader)
{
    // FILLRGN and FRAMERGN name a brush; PAINTRGN uses the selected one.
    const bool namesBrush = type != std::uint32_t(RecordType::PaintRgn);
    const std::uint64_t dataOffset = type == std::uint32_t(RecordType::FrameRgn) ? 40
        : namesBrush                                                             ? 32
                                                                                 : 28;
    const std::uint32_t count = reader.u32(dataOffset + 8);
    if (!reader.ok() || count > MaximumRegionRectangles)
        return;
    QPainterPath shape;
    for (std::uint32_t index = 0; index < count; ++index) {
        const RectL box = reader.rect(dataOffset + 32 + std::uint64_t(index) * 16);
        if (!reader.ok())
            return;
        shape.addRect(toRect(box));
    }
    const BrushObject selected = m_state.brush;
    const PenObject selectedPen = m_state.pen;
    if (namesBrush) {
        const std::uint32_t handle = reader.u32(28);
        if (!reader.ok())
            return;
        selectObject(handle);
    }
    if (type == std::uint32_t(RecordType::FrameRgn)) {
        const PenObject frame { true, false, 1, m_state.brush.colour, Qt::SolidLine };
        m_state.pen = frame;
        strokeShape(shape);
    } else {
        fillShape(shape, currentBrush());
    }
    m_state.brush = selected;
    m_state.pen = selectedPen;
}

void PainterPlayback::combineClip(const QPainterPath& shape, std::uint32_t mode)
{
    QPainterPath current;
    if (m_state.clip) {
        current = *m_state.clip;
    } else {
        current.addRect(m_placed);
    }
    switch (mode) {
    case RegionMode::And:
        m_state.clip = current.intersected(shape);
        break;
    case RegionMode::Or:
        m_state.clip = current.united(shape);
        break;
    case RegionMode::Xor:
        m_state.clip = current.united(shape).subtracted(current.intersected(shape));
        break;
    case RegionMode::Difference:
        m_state.clip = current.subtracted(shape);
        break;
    case RegionMode::Copy:
        m_state.clip = shape;
        break;
    default:
        return;
    }
    m_clipDirty = true;
}

void PainterPlayback::clipRegion(RecordReader& reader)
{
    const std::uint32_t size = reader.u32(8);
    const std::uint32_t mode = reader.u32(12);
    if (!reader.ok())
        return;
    if (size == 0) {
        if (mode == RegionMode::Copy) {
            m_state.clip.reset();
            m_clipDirty = true;
        }
        return;
    }
    const std::uint32_t count = reader.u32(24);
    if (!reader.ok() || count > MaximumRegionRectangles)
        return;
    // Region rectangles are in the reference device's pixels.
    QPainterPath shape;
    for (std::uint32_t index = 0; index < count; ++index) {
        const RectL box = reader.rect(48 + std::uint64_t(index) * 16);
        if (!reader.ok())
            return;
        shape.addRect(toRect(box));
    }
    combineClip(m_placement.map(shape), mode);
}

void PainterPlayback::play(std::uint32_t type, QByteArrayView record)
{
    if (m_state.page.apply(type, record))
        return;
    RecordReader reader(record);
    switch (static_cast<RecordType>(type)) {
    case RecordType::SetBkMode:
        m_state.backgroundMode = reader.u32(8);
        break;
    case RecordType::SetPolyFillMode:
        m_state.polyFillMode = reader.u32(8);
        break;
    case RecordType::SetTextAlign:
        m_state.textAlign = reader.u32(8);
        break;
    case RecordType::SetTextColor:
        m_state.textColour = reader.u32(8);
        break;
    case RecordType::SetBkColor:
        m_state.backgroundColour = reader.u32(8);
        break;
    case RecordType::SetArcDirection:
        m_state.arcDirection = reader.u32(8);
        break;
    case RecordType::SetStretchBltMode:
        m_state.stretchMode = reader.u32(8);
        break;
    case RecordType::SetMiterLimit: {
        const std::uint32_t limit = reader.u32(8);
        // Written as a whole number by most programs, as a float by some.
        const double value = limit < 0x00800000u ? double(limit) : double(reader.f32(8));
        if (reader.ok() && std::isfinite(value) && value >= 1 && value <= 1000)
            m_state.miterLimit = value;
        break;
    }
    case RecordType::MoveToEx: {
        const PointL point = reader.point(8);
        if (!reader.ok())
            break;
        m_state.position = toPoint(point);
        if (m_pathOpen)
            m_figureOpen = false;
        break;
    }
    case RecordType::LineTo: {
        const PointL point = reader.point(8);
        if (!reader.ok())
            break;
        const PointL end[] = { point };
        polyline(end, false, false, true);
        break;
    }
    case RecordType::SaveDC:
        m_saved.push_back(m_state);
        break;
    case RecordType::RestoreDC:
        restoreState(reader.i32(8));
        break;
    case RecordType::SelectObject:
        selectObject(reader.u32(8));
        break;
    case RecordType::DeleteObject: {
        const std::uint32_t handle = reader.u32(8);
        if (reader.ok() && handle < m_objects.size())
            m_objects[handle] = std::monostate {};
        break;
    }
    case RecordType::CreatePen:
        createPen(reader);
        break;
    case RecordType::ExtCreatePen:
        createExtendedPen(reader);
        break;
    case RecordType::CreateBrushIndirect:
        createBrush(reader);
        break;
    case RecordType::CreateDIBPatternBrushPt:
        createPatternBrush(reader, false);
        break;
    case RecordType::CreateMonoBrush:
        createPatternBrush(reader, true);
        break;
    case RecordType::ExtCreateFontIndirectW:
        createFont(reader);
        break;
    case RecordType::CreatePalette:
    case RecordType::CreateColorSpace:
    case RecordType::CreateColorSpaceW:
        storeObject(reader.u32(8), OtherObject {});
        break;
    case RecordType::Ellipse: {
        const RectL box = reader.rect(8);
        if (!reader.ok())
            break;
        QPainterPath shape;
        shape.addEllipse(toRect(box));
        closedShape(shape);
        break;
    }
    case RecordType::Rectangle: {
        const RectL box = reader.rect(8);
        if (!reader.ok())
            break;
        QPainterPath shape;
        shape.addRect(toRect(box));
        closedShape(shape);
        break;
    }
    case RecordType::RoundRect: {
        const RectL box = reader.rect(8);
        const SizeL corner = reader.size(24);
        if (!reader.ok())
            break;
        QPainterPath shape;
        shape.addRoundedRect(toRect(box), std::abs(corner.cx) / 2.0, std::abs(corner.cy) / 2.0);
        closedShape(shape);
        break;
    }
    case RecordType::Arc:
        arc(reader, ArcKind::Arc);
        break;
    case RecordType::ArcTo:
        arc(reader, ArcKind::ArcTo);
        break;
    case RecordType::Chord:
        arc(reader, ArcKind::Chord);
        break;
    case RecordType::Pie:
        arc(reader, ArcKind::Pie);
        break;
    case RecordType::AngleArc:
        angleArc(reader);
        break;
    case RecordType::SetPixelV: {
        const PointL point = reader.point(8);
        const Colour colour = reader.u32(16);
        if (!reader.ok() || m_pathOpen)
            break;
        QPainterPath pixel;
        pixel.addRect(QRectF(point.x, point.y, 1, 1));
        fillShape(pixel, colourOf(colour));
        break;
    }
    case RecordType::Polygon:
    case RecordType::Polyline:
    case RecordType::PolyBezier:
    case RecordType::PolyBezierTo:
    case RecordType::PolylineTo:
    case RecordType::Polygon16:
    case RecordType::Polyline16:
    case RecordType::PolyBezier16:
    case RecordType::PolyBezierTo16:
    case RecordType::PolylineTo16: {
        const bool sixteen = type >= std::uint32_t(RecordType::PolyBezier16);
        const std::uint32_t count = reader.u32(24);
        if (!reader.ok())
            break;
        const auto points = sixteen ? reader.points16(28, count) : reader.points(28, count);
        if (!points)
            break;
        const auto kind = static_cast<RecordType>(sixteen ? type - 83 : type);
        polyline(*points, kind == RecordType::Polygon,
            kind == RecordType::PolyBezier || kind == RecordType::PolyBezierTo,
            kind == RecordType::PolyBezierTo || kind == RecordType::PolylineTo);
        break;
    }
    case RecordType::PolyPolygon:
    case RecordType::PolyPolygon16:
        polyPolygon(reader, type == std::uint32_t(RecordType::PolyPolygon16), true);
        break;
    case RecordType::PolyPolyline:
    case RecordType::PolyPolyline16:
        polyPolygon(reader, type == std::uint32_t(RecordType::PolyPolyline16), false);
        break;
    case RecordType::PolyDraw:
    case RecordType::PolyDraw16:
        polyDraw(reader, type == std::uint32_t(RecordType::PolyDraw16));
        break;
    case RecordType::BeginPath:
        m_path = QPainterPath();
        m_pathOpen = true;
        m_figureOpen = false;
        break;
    case RecordType::EndPath:
        m_pathOpen = false;
        break;
    case RecordType::AbortPath:
        m_path = QPainterPath();
        m_pathOpen = false;
        break;
    case RecordType::CloseFigure:
        if (m_pathOpen && m_figureOpen) {
            m_path.closeSubpath();
            m_figureOpen = false;
        }
        break;
    case RecordType::FillPath:
    case RecordType::StrokePath:
    case RecordType::StrokeAndFillPath:
        if (!m_pathOpen) {
            drawShape(m_path, type != std::uint32_t(RecordType::StrokePath),
                type != std::uint32_t(RecordType::FillPath));
            m_path = QPainterPath();
        }
        break;
    case RecordType::WidenPath:
        if (!m_pathOpen && currentPen().style() != Qt::NoPen) {
            QPainterPathStroker stroker(currentPen());
            m_path = stroker.createStroke(m_path);
        }
        break;
    case RecordType::SelectClipPath:
        if (!m_pathOpen) {
            QPainterPath shape = m_path;
            shape.setFillRule(fillRule());
            combineClip(logicalToTarget().map(shape), reader.u32(8));
            m_path = QPainterPath();
        }
        break;
    case RecordType::IntersectClipRect:
    case RecordType::ExcludeClipRect: {
        const RectL box = reader.rect(8);
        if (!reader.ok())
            break;
        QPainterPath shape;
        shape.addRect(toRect(box));
        combineClip(logicalToTarget().map(shape),
            type == std::uint32_t(RecordType::IntersectClipRect) ? RegionMode::And
                                                                 : RegionMode::Difference);
        break;
    }
    case RecordType::OffsetClipRgn: {
        const PointL offset = reader.point(8);
        if (!reader.ok() || !m_state.clip)
            break;
        const QTransform logical = logicalToTarget();
        const QPointF moved = logical.map(toPoint(offset)) - logical.map(QPointF(0, 0));
        m_state.clip->translate(moved);
        m_clipDirty = true;
        break;
    }
    case RecordType::ExtSelectClipRgn:
        clipRegion(reader);
        break;
    case RecordType::FillRgn:
    case RecordType::PaintRgn:
    case RecordType::FrameRgn:
        region(type, reader);
        break;
    case RecordType::ExtTextOutW:
    case RecordType::ExtTextOutA:
        text(reader, type == std::uint32_t(RecordType::ExtTextOutW));
        break;
    case RecordType::BitBlt:
    case RecordType::StretchBlt:
    case RecordType::StretchDIBits:
    case RecordType::SetDIBitsToDevice:
        bitmap(type, reader);
        break;
    default:
        break;
    }
}

} // namespace Emf
