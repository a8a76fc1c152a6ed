#include "graph/MetaFile.h"

#include "frame/Colours.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

namespace {

constexpr std::int32_t White = 16777215;
constexpr std::int32_t NullPenStyle = 5;
constexpr std::int32_t SolidStyle = 0;
constexpr std::int32_t HollowBrushStyle = 1;
constexpr int SubscriptOutOfRange = 9;
constexpr double Pi = std::numbers::pi;

[[noreturn]] void subscriptOutOfRange()
{
    throw Runtime::Error(SubscriptOutOfRange, u"Subscript out of range"_s);
}

// The platform's MulDiv: the exact quotient rounded half away from zero.
std::int32_t multiplyDivide(std::int64_t number, std::int64_t numerator, std::int64_t denominator)
{
    const std::int64_t product = number * numerator;
    const std::int64_t half = std::abs(denominator) / 2;
    const std::int64_t rounded
        = product >= 0 ? (product + half) / denominator : (product - half) / denominator;
    return static_cast<std::int32_t>(rounded);
}

Emf::PointL point(double x, double y)
{
    return { Runtime::CLng(x), Runtime::CLng(y) };
}

} // namespace

MetaFile::MetaFile()
{
    m_font.faceName = u"Arial"_s;
}

MetaFile::~MetaFile() = default;

QString MetaFile::Description()
{
    return u"Pellimore"_s + QChar(0);
}

void MetaFile::OpenMF(const Emf::ReferenceDevice& reference, const QString& fileName)
{
    Emf::Picture::Storage spare;
    if (m_picture)
        spare = std::move(*m_picture).takeStorage();
    m_picture.reset();
    m_context.reset();
    m_device = reference;
    m_fileName = fileName;
    m_pixelWidth = reference.pixelWidthHundredths();
    m_pixelHeight = reference.pixelHeightHundredths();
    const Emf::RectL frame { Runtime::CLng(Left * m_pixelWidth), Runtime::CLng(Top * m_pixelHeight),
        Runtime::CLng((double(Left) + Width) * m_pixelWidth),
        Runtime::CLng((double(Top) + Height) * m_pixelHeight) };
    m_context = std::make_unique<Emf::RecordingContext>(
        reference, frame, Description(), std::move(spare));

    m_penStyle = NullPenStyle;
    m_penWidthX = 1;
    m_penWidthY = 1;
    m_penColour = 0;
    m_penEndCap = Emf::PenStyle::EndCapFlat;
    m_brushStyle = SolidStyle;
    m_brushColour = White;
    m_brushHatch = 8;
    m_font.height = -multiplyDivide(12, reference.dotsPerInchY, 72);
    m_font.italic = false;
    m_font.underline = false;
    m_font.strikeOut = false;
    m_font.charSet = 1;
    m_font.faceName = u"Arial"_s;
    m_textColour = 0;
    m_context->setMiterLimit(2);

    m_savedState = m_context->saveState();
    m_brush
        = { Emf::Stock::WhiteBrush, m_context->selectObject(Emf::Stock::WhiteBrush), false, false };
    m_pen = { Emf::Stock::NullPen, m_context->selectObject(Emf::Stock::NullPen), false, false };
    m_fontObject
        = { Emf::Stock::SystemFont, m_context->selectObject(Emf::Stock::SystemFont), false, false };
}

void MetaFile::SetMapModeMF(std::uint32_t mode)
{
    if (m_context)
        m_context->setMapMode(mode);
}

std::optional<Emf::RectL> MetaFile::GetBoundingBox() const
{
    if (!m_picture)
        return std::nullopt;
    return m_picture->header().bounds;
}

void MetaFile::CloseMF()
{
    if (!m_context)
        return;
    m_context->restoreState(m_savedState);
    for (ObjectState* state : { &m_pen, &m_brush, &m_fontObject }) {
        if (state->created)
            m_context->deleteObject(state->current);
        *state = {};
    }
    m_picture = std::make_unique<Emf::Picture>(m_context->finish());
    m_context.reset();
    // A file that cannot be written is not reported; the picture in memory is still whole.
    if (!m_fileName.isEmpty())
        m_picture->save(m_fileName);
}

std::unique_ptr<Emf::Picture> MetaFile::ReleaseMetaFile()
{
    return std::move(m_picture);
}

void MetaFile::PenStyle(std::int32_t style)
{
    if (style != m_penStyle)
        m_pen.changed = true;
    m_penStyle = style;
}

void MetaFile::PenColour(std::int32_t colour)
{
    if (colour != m_penColour && m_penStyle != NullPenStyle)
        m_pen.changed = true;
    m_penColour = colour;
}

void MetaFile::PenWidth(std::int32_t width)
{
    if (width != m_penWidthX && m_penStyle != NullPenStyle)
        m_pen.changed = true;
    m_penWidthX = width;
    m_penWidthY = width;
}

void MetaFile::PenEndCap(std::int32_t cap)
{
    if (cap != m_penEndCap && m_penStyle != NullPenStyle)
        m_pen.changed = true;
    m_penEndCap = cap;
}

void MetaFile::BrushColour(std::int32_t colour)
{
    if (colour != m_brushColour && m_brushStyle != HollowBrushStyle)
        m_brush.changed = true;
    m_brushColour = colour;
}

void MetaFile::BrushStyle(std::int32_t style)
{
    if (style != m_brushStyle)
        m_brush.changed = true;
    m_brushStyle = style;
}

void MetaFile::BrushHatch(std::int32_t hatch)
{
    if (hatch != m_brushHatch)
        m_brush.changed = true;
    m_brushHatch = hatch;
}

void MetaFile::FontName(const QString& name)
{
    // The face name field holds 31 characters and the terminating null.
    if (name.size() >= 32)
        subscriptOutOfRange();
    m_font.faceName = name;
    m_fontObject.changed = true;
}

void MetaFile::FontSize(double points)
{
    const std::int32_t height = -Runtime::CLng(points * m_device.dotsPerInchY / 72);
    if (height != m_font.height)
        m_fontObject.changed = true;
    m_font.height = height;
}

void MetaFile::FontBold(bool on)
{
    const std::int32_t weight = on ? 700 : 400;
    if (weight != m_font.weight)
        m_fontObject.changed = true;
    m_font.weight = weight;
}

void MetaFile::FontItalic(bool on)
{
    if (on != m_font.italic)
        m_fontObject.changed = true;
    m_font.italic = on;
}

void MetaFile::FontUnderline(bool on)
{
    if (on != m_font.underline)
        m_fontObject.changed = true;
    m_font.underline = on;
}

void MetaFile::FontOrientation(std::int32_t tenths)
{
    if (tenths != m_font.escapement || tenths != m_font.orientation)
        m_fontObject.changed = true;
    m_font.escapement = tenths;
    m_font.orientation = tenths;
}

void MetaFile::FontColour(std::int32_t colour)
{
    m_textColour = colour;
}

void MetaFile::ApplySettings()
{
    if (!m_context)
        return;
    if (m_pen.changed)
        MakePen();
    if (m_brush.changed)
        MakeBrush();
    if (m_fontObject.changed)
        MakeFont();
}

void MetaFile::ReleaseObject(ObjectState& state)
{
    // The object this one replaced goes back in, so that ours can be deleted.
    m_context->selectObject(state.replaced);
    if (state.created)
        m_context->deleteObject(state.current);
    state.current = state.replaced;
    state.created = false;
}

void MetaFile::SelectMadeObject(ObjectState& state, Emf::ObjectHandle made, bool created)
{
    // A failed creation leaves the replaced object selected and the setting still pending.
    if (made == 0)
        return;
    state.replaced = m_context->selectObject(made);
    state.current = made;
    state.created = created;
    state.changed = false;
}

void MetaFile::MakePen()
{
    ReleaseObject(m_pen);
    if (m_penStyle == NullPenStyle) {
        SelectMadeObject(m_pen, Emf::Stock::NullPen, false);
    } else if (m_penStyle == SolidStyle && m_penWidthX == 1 && m_penColour == White) {
        SelectMadeObject(m_pen, Emf::Stock::WhitePen, false);
    } else {
        const Emf::ExtendedPen pen { Emf::PenStyle::Geometric | Emf::PenStyle::JoinMiter
                | static_cast<std::uint32_t>(m_penEndCap) | static_cast<std::uint32_t>(m_penStyle),
            static_cast<std::uint32_t>(std::max(m_penWidthX, 0)), Emf::BrushStyle::Solid,
            static_cast<Emf::Colour>(m_penColour), 0 };
        SelectMadeObject(m_pen, m_context->createPen(pen), true);
    }
}

void MetaFile::MakeBrush()
{
    ReleaseObject(m_brush);
    if (m_brushStyle == SolidStyle && m_brushColour == 0) {
        SelectMadeObject(m_brush, Emf::Stock::BlackBrush, false);
    } else if (m_brushStyle == SolidStyle && m_brushColour == White) {
        SelectMadeObject(m_brush, Emf::Stock::WhiteBrush, false);
    } else if (m_brushStyle == HollowBrushStyle) {
        SelectMadeObject(m_brush, Emf::Stock::NullBrush, false);
    } else {
        const Emf::LogBrush brush { static_cast<std::uint32_t>(m_brushStyle),
            static_cast<Emf::Colour>(m_brushColour), static_cast<std::uint32_t>(m_brushHatch) };
        SelectMadeObject(m_brush, m_context->createBrush(brush), true);
    }
}

void MetaFile::MakeFont()
{
    ReleaseObject(m_fontObject);
    SelectMadeObject(m_fontObject, m_context->createFont(m_font), true);
}

void MetaFile::CircleMF(std::int32_t x, std::int32_t y, std::int32_t radius)
{
    ApplySettings();
    if (m_context)
        m_context->ellipse({ x - radius, y - radius, x + radius, y + radius });
}

void MetaFile::LineMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2)
{
    ApplySettings();
    if (!m_context)
        return;
    m_context->moveTo({ x1, y1 });
    m_context->lineTo({ x2, y2 });
}

void MetaFile::MoveToMF(std::int32_t x, std::int32_t y)
{
    if (m_context)
        m_context->moveTo({ x, y });
}

void MetaFile::LineToMF(std::int32_t x, std::int32_t y)
{
    ApplySettings();
    if (m_context)
        m_context->lineTo({ x, y });
}

void MetaFile::PolyBezierToMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
    std::int32_t x3, std::int32_t y3)
{
    ApplySettings();
    if (!m_context)
        return;
    const Emf::PointL points[] = { { x1, y1 }, { x2, y2 }, { x3, y3 } };
    m_context->polyBezierTo(points);
}

void MetaFile::CloseFigureMF()
{
    ApplySettings();
    if (m_context)
        m_context->closeFigure();
}

void MetaFile::PolygonMF(std::span<const std::int32_t> points, std::int32_t count)
{
    if (count < 0 || count > MaximumPoints || points.size() < std::size_t(count) * 2)
        subscriptOutOfRange();
    for (std::int32_t index = 0; index < count; ++index)
        m_points[index] = { points[index * 2], points[index * 2 + 1] };
    if (!m_context)
        return;
    // The caller may be building a path of its own: keep it and build it again afterwards.
    const std::vector<Emf::RecordingContext::PathPoint> saved = m_context->path();

    m_context->beginPath();
    m_context->polygon(std::span<const Emf::PointL>(m_points.data(), std::size_t(count)));
    m_context->endPath();
    StrokeAndFillPathMF();

    if (saved.empty())
        return;
    m_context->beginPath();
    for (std::size_t index = 0; index < saved.size(); ++index) {
        const Emf::RecordingContext::PathPoint& item = saved[index];
        switch (item.type & Emf::PathPointType::TypeMask) {
        case Emf::PathPointType::MoveTo:
            m_context->moveTo(item.point);
            break;
        case Emf::PathPointType::BezierTo:
            if (index + 2 < saved.size()) {
                const Emf::PointL curve[]
                    = { item.point, saved[index + 1].point, saved[index + 2].point };
                m_context->polyBezierTo(curve);
                index += 2;
            }
            break;
        default:
            m_context->lineTo(item.point);
            break;
        }
        if ((saved[index].type & Emf::PathPointType::CloseFigure) != 0)
            m_context->closeFigure();
    }
    m_context->endPath();
}

void MetaFile::ParallelogramMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
    std::int32_t x3, std::int32_t y3)
{
    const std::int32_t corners[] = { x1, y1, x2, y2, x3, y3, x1 + x3 - x2, y1 + y3 - y2 };
    PolygonMF(corners, 4);
}

void MetaFile::PieMF(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom,
    std::int32_t startX, std::int32_t startY, std::int32_t endX, std::int32_t endY)
{
    ApplySettings();
    if (m_context)
        m_context->pie({ left, top, right, bottom }, { startX, startY }, { endX, endY });
}

void MetaFile::PlotPointMF(std::int32_t x, std::int32_t y)
{
    if (m_context)
        m_context->setPixel({ x, y }, static_cast<Emf::Colour>(m_penColour));
}

void MetaFile::RectMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2)
{
    ParallelogramMF(x1, y1, x1, y2, x2, y2);
}

std::array<double, 2> MetaFile::SectorPoint(double angle, double offsetY) const
{
    // The radius runs evenly from the start point's to the end point's, which rounding may
    // have made a little different, so the outline meets both points exactly.
    const SectorShape& sector = m_sector;
    const double span = sector.endAngle - sector.startAngle;
    const double radius = span > 0 ? sector.startRadius
            + (sector.endRadius - sector.startRadius) * (angle - sector.startAngle) / span
                                   : sector.startRadius;
    return { sector.centreX + radius * std::cos(angle),
        sector.centreY - radius * std::sin(angle) * sector.flattening + offsetY };
}

void MetaFile::DrawArc(double startAngle, double endAngle, double offsetY)
{
    // Pieces of at most a quarter turn; each cubic passes through the arc's points at one
    // third and two thirds of the piece.
    const int pieces = std::max(
        1, static_cast<int>(std::ceil(std::abs(endAngle - startAngle) / (Pi / 2) - 1e-9)));
    for (int piece = 0; piece < pieces; ++piece) {
        const double from = startAngle + (endAngle - startAngle) * piece / pieces;
        const double to = startAngle + (endAngle - startAngle) * (piece + 1) / pieces;
        const auto p0 = SectorPoint(from, offsetY);
        const auto q1 = SectorPoint(from + (to - from) / 3, offsetY);
        const auto q2 = SectorPoint(from + 2 * (to - from) / 3, offsetY);
        const auto p3 = SectorPoint(to, offsetY);
        std::array<double, 2> c1 {};
        std::array<double, 2> c2 {};
        for (std::size_t axis = 0; axis < 2; ++axis) {
            c1[axis] = (18 * q1[axis] - 9 * q2[axis] - 5 * p0[axis] + 2 * p3[axis]) / 6;
            c2[axis] = (18 * q2[axis] - 9 * q1[axis] + 2 * p0[axis] - 5 * p3[axis]) / 6;
        }
        const Emf::PointL first = point(c1[0], c1[1]);
        const Emf::PointL second = point(c2[0], c2[1]);
        const Emf::PointL end = point(p3[0], p3[1]);
        PolyBezierToMF(first.x, first.y, second.x, second.y, end.x, end.y);
    }
}

void MetaFile::SectorMF(std::int32_t centreX, std::int32_t centreY, std::int32_t startX,
    std::int32_t startY, std::int32_t endX, std::int32_t endY, double elevation)
{
    const double radians = elevation * Pi / 180;
    const double flattening = std::cos(radians);
    const std::int32_t wall = Runtime::CLng(60 * std::sin(radians));

    // Angles counterclockwise from three o'clock; y grows downward.
    auto angleOf = [](double x, double y, double radius) {
        if (radius == 0)
            return 0.0;
        const double angle = std::acos(std::clamp(x / radius, -1.0, 1.0));
        return y > 0 ? 2 * Pi - angle : angle;
    };
    const double startDx = double(startX) - centreX;
    const double startDy = double(startY) - centreY;
    const double endDx = double(endX) - centreX;
    const double endDy = double(endY) - centreY;
    m_sector.centreX = centreX;
    m_sector.centreY = centreY;
    m_sector.flattening = flattening;
    m_sector.startRadius = std::hypot(startDx, startDy);
    m_sector.endRadius = std::hypot(endDx, endDy);
    m_sector.startAngle = angleOf(startDx, startDy, m_sector.startRadius);
    m_sector.endAngle = angleOf(endDx, endDy, m_sector.endRadius);
    if (m_sector.endAngle <= m_sector.startAngle)
        m_sector.endAngle += 2 * Pi;
    const double startAngle = m_sector.startAngle;
    const double endAngle = m_sector.endAngle;

    // The rim, where the sector reaches the lower half (between pi and 2 pi, or between 3 pi
    // and 4 pi once the end has gone round): the arc, the same arc lowered by the wall's
    // height, and the two upright edges.
    if (elevation >= 1) {
        std::vector<std::pair<double, double>> lowerParts;
        for (double lower : { Pi, 3 * Pi }) {
            const double from = std::max(startAngle, lower);
            const double to = std::min(endAngle, lower + Pi);
            if (to > from)
                lowerParts.emplace_back(from, to);
        }
        if (!lowerParts.empty()) {
            const std::int32_t brushColour = m_brushColour;
            BrushColour(Frame::ShadeColour(brushColour, -40));
            BeginPathMF();
            for (const auto& [from, to] : lowerParts) {
                const auto first = SectorPoint(from, 0);
                const auto down = SectorPoint(to, wall);
                MoveToMF(Runtime::CLng(first[0]), Runtime::CLng(first[1]));
                DrawArc(from, to, 0);
                LineToMF(Runtime::CLng(down[0]), Runtime::CLng(down[1]));
                DrawArc(to, from, wall);
                CloseFigureMF();
            }
            EndPathMF();
            StrokeAndFillPathMF();
            BrushColour(brushColour);
        }
    }

    // The top face. Start and end in one point make the whole ellipse (a single item taking
    // the whole pie), drawn without a radius.
    const auto start = SectorPoint(startAngle, 0);
    BeginPathMF();
    if (startX == endX && startY == endY) {
        MoveToMF(Runtime::CLng(start[0]), Runtime::CLng(start[1]));
    } else {
        MoveToMF(centreX, centreY);
        LineToMF(Runtime::CLng(start[0]), Runtime::CLng(start[1]));
    }
    DrawArc(startAngle, endAngle, 0);
    CloseFigureMF();
    EndPathMF();
    StrokeAndFillPathMF();
}

void MetaFile::SetTextAlignMF(std::uint32_t flags)
{
    if (m_context)
        m_context->setTextAlign(flags);
}

void MetaFile::PaintTextMF(const QString& text, double x, double y, std::int32_t align,
    double directionX, double directionY)
{
    ApplySettings();
    if (!m_context)
        return;
    const Emf::SizeL extent = m_context->textExtent(text);
    double width = extent.cx;
    double height = extent.cy;
    double startX = x;
    double startY = y;
    switch (align) {
    case -1:
        // Text turned to run vertically swaps the roles of width and height.
        if (m_font.orientation == 900 || m_font.orientation == 2700)
            std::swap(width, height);
        startX = x + (directionX - 1) * width / 2;
        startY = y - (directionY + 1) * height / 2;
        break;
    case 1:
        startX = x - width / 2;
        break;
    case 2:
        startX = x - width;
        break;
    default:
        break;
    }
    m_context->setTextColour(static_cast<Emf::Colour>(m_textColour));
    m_context->setBackgroundMode(Emf::BackgroundMode::Transparent);
    m_context->textOut(point(startX, startY), text);
}

std::int32_t MetaFile::GetTextWidth(const QString& text)
{
    ApplySettings();
    return m_context ? m_context->textExtent(text).cx : 0;
}

std::int32_t MetaFile::GetTextHeight(const QString& text)
{
    ApplySettings();
    return m_context ? m_context->textExtent(text).cy : 0;
}

void MetaFile::BeginPathMF()
{
    if (m_context)
        m_context->beginPath();
}

void MetaFile::EndPathMF()
{
    if (m_context)
        m_context->endPath();
}

void MetaFile::StrokeAndFillPathMF()
{
    ApplySettings();
    if (m_context)
        m_context->strokeAndFillPath();
}

void MetaFile::StrokePathMF()
{
    ApplySettings();
    if (m_context)
        m_context->strokePath();
}

void MetaFile::SelectClipPathMF()
{
    if (m_context)
        m_context->selectClipPath(Emf::RegionMode::Copy);
}

void MetaFile::ClearClipPath()
{
    if (!m_context)
        return;
    // The frame's fields taken as left, top, right, bottom.
    if (!m_context->selectClipRectangle({ Left, Top, Width, Height }))
        m_context->removeClipping();
}

} // namespace Ormsey
