#include "platform/emf/RecordingContext.h"

#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordType.h"
#include "platform/emf/TextMetrics.h"

#include <QFontMetricsF>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <uemf.h>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace Emf {

namespace {

// Header fields patched by finish().
constexpr qsizetype BoundsOffset = 8;
constexpr qsizetype ByteCountOffset = 48;
constexpr qsizetype RecordCountOffset = 52;
constexpr qsizetype HandleCountOffset = 56;

U_POINTL toU(PointL point)
{
    return { point.x, point.y };
}

U_RECTL toU(const RectL& rect)
{
    return { rect.left, rect.top, rect.right, rect.bottom };
}

std::vector<U_POINTL> toU(std::span<const PointL> points)
{
    std::vector<U_POINTL> result;
    result.reserve(points.size());
    for (PointL point : points)
        result.push_back(toU(point));
    return result;
}

// The colour as a 32-bit value: its byte layout is the format's COLORREF.
U_COLORREF colourRef(Colour colour)
{
    U_COLORREF value;
    static_assert(sizeof value == sizeof colour);
    std::memcpy(&value, &colour, sizeof value);
    return value;
}

std::vector<std::uint16_t> utf16(QStringView text)
{
    std::vector<std::uint16_t> units(static_cast<std::size_t>(text.size()) + 1, 0);
    for (qsizetype index = 0; index < text.size(); ++index)
        units[static_cast<std::size_t>(index)] = text[index].unicode();
    return units;
}

void putU32(QByteArray& bytes, qsizetype offset, std::uint32_t value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

void putI32(QByteArray& bytes, qsizetype offset, std::int32_t value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

RectL normalised(const RectL& rect)
{
    return { std::min(rect.left, rect.right), std::min(rect.top, rect.bottom),
        std::max(rect.left, rect.right), std::max(rect.top, rect.bottom) };
}

bool isIdentity(const XForm& transform)
{
    return transform == XForm {};
}

std::int32_t clampToInt(double value)
{
    return static_cast<std::int32_t>(std::clamp(value, -2147483648.0, 2147483647.0));
}

} // namespace

RecordingContext::RecordingContext(const ReferenceDevice& device, const RectL& frame,
    const QString& description, Picture::Storage spare)
    : m_device(device)
    , m_bytes(std::move(spare.bytes))
    , m_records(std::move(spare.records))
    , m_objects(1)
{
    // Emptied, keeping the memory (unless the bytes are shared, when they are left alone).
    m_bytes.resize(0);
    m_records.clear();
    m_state.pen = Stock::BlackPen;
    m_state.brush = Stock::WhiteBrush;
    m_state.font = Stock::SystemFont;
    std::vector<std::uint16_t> text = utf16(description);
    const U_SIZEL pixels { device.pixelsWide, device.pixelsHigh };
    const U_SIZEL millimetres { device.millimetresWide, device.millimetresHigh };
    append(U_EMRHEADER_set({ 0, 0, -1, -1 }, toU(frame), nullptr,
        static_cast<U_CBSTR>(description.size()), description.isEmpty() ? nullptr : text.data(),
        pixels, millimetres, 0));
}

void RecordingContext::append(char* record)
{
    if (record == nullptr)
        return;
    std::uint32_t size = 0;
    std::memcpy(&size, record + 4, sizeof size);
    appendOwned(QByteArrayView(record, size));
    std::free(record);
}

void RecordingContext::appendOwned(QByteArrayView record)
{
    if (m_finished)
        return;
    if (m_recordCount > 0) {
        std::uint32_t type = 0;
        std::memcpy(&type, record.data(), sizeof type);
        m_records.push_back({ type, m_bytes.size(), record.size() });
    }
    m_bytes.append(record.data(), record.size());
    ++m_recordCount;
}

bool RecordingContext::appendRecord(QByteArrayView record)
{
    RecordReader reader(record);
    const std::uint32_t size = reader.u32(4);
    if (m_finished || !reader.ok() || record.size() % 4 != 0 || size != quint64(record.size()))
        return false;
    appendOwned(record);
    return true;
}

std::optional<ObjectHandle> RecordingContext::newSlot(ObjectKind kind)
{
    // The lowest free slot, as the platform hands them out.
    for (std::size_t index = 1; index < m_objects.size(); ++index) {
        if (m_objects[index].kind == ObjectKind::Free) {
            m_objects[index] = { kind, 0, {} };
            return static_cast<ObjectHandle>(index);
        }
    }
    if (m_objects.size() > MaximumObjects)
        return std::nullopt;
    m_objects.push_back({ kind, 0, {} });
    m_highestSlot = std::max<std::uint32_t>(m_highestSlot, m_objects.size() - 1);
    return static_cast<ObjectHandle>(m_objects.size() - 1);
}

std::optional<ObjectHandle> RecordingContext::allocateObjectSlot()
{
    if (m_finished)
        return std::nullopt;
    return newSlot(ObjectKind::Other);
}

void RecordingContext::releaseObjectSlot(ObjectHandle handle)
{
    if (handle > 0 && handle < m_objects.size())
        m_objects[handle] = {};
}

RecordingContext::ObjectKind RecordingContext::kindOf(ObjectHandle handle) const
{
    if ((handle & StockFlag) != 0) {
        const std::uint32_t stock = handle & ~StockFlag;
        if (stock <= 5 || stock == 18)
            return ObjectKind::Brush;
        if ((stock >= 6 && stock <= 8) || stock == 19)
            return ObjectKind::Pen;
        if ((stock >= 10 && stock <= 14) || stock == 16 || stock == 17)
            return ObjectKind::Font;
        return stock == 15 ? ObjectKind::Other : ObjectKind::Free;
    }
    return handle < m_objects.size() ? m_objects[handle].kind : ObjectKind::Free;
}

int RecordingContext::createdObjectCount() const
{
    return static_cast<int>(std::count_if(m_objects.begin() + 1, m_objects.end(),
        [](const ObjectSlot& slot) { return slot.kind != ObjectKind::Free; }));
}

ObjectHandle RecordingContext::createPen(const ExtendedPen& pen)
{
    if (m_finished)
        return 0;
    const std::optional<ObjectHandle> handle = newSlot(ObjectKind::Pen);
    if (!handle)
        return 0;
    const bool drawsNothing
        = (pen.style & PenStyle::StyleMask) == PenStyle::Null || pen.brushStyle == BrushStyle::Null;
    m_objects[*handle].penWidth = drawsNothing ? 0 : std::max<std::uint32_t>(pen.width, 1);
    PU_EXTLOGPEN logical = extlogpen_set(
        pen.style, pen.width, pen.brushStyle, colourRef(pen.colour), pen.hatch, 0, nullptr);
    if (logical == nullptr) {
        m_objects[*handle] = {};
        return 0;
    }
    append(U_EMREXTCREATEPEN_set(*handle, nullptr, 0, nullptr, logical));
    std::free(logical);
    return *handle;
}

ObjectHandle RecordingContext::createBrush(const LogBrush& brush)
{
    if (m_finished)
        return 0;
    const std::optional<ObjectHandle> handle = newSlot(ObjectKind::Brush);
    if (!handle)
        return 0;
    append(U_EMRCREATEBRUSHINDIRECT_set(
        *handle, logbrush_set(brush.style, colourRef(brush.colour), brush.hatch)));
    return *handle;
}

ObjectHandle RecordingContext::createFont(const LogFont& font)
{
    if (m_finished)
        return 0;
    const std::optional<ObjectHandle> handle = newSlot(ObjectKind::Font);
    if (!handle)
        return 0;
    LogFont kept = font;
    kept.faceName.truncate(31);
    m_objects[*handle].font = kept;
    std::vector<std::uint16_t> face = utf16(kept.faceName);
    const U_LOGFONT logical
        = logfont_set(font.height, font.width, font.escapement, font.orientation, font.weight,
            font.italic ? 1 : 0, font.underline ? 1 : 0, font.strikeOut ? 1 : 0, font.charSet,
            font.outPrecision, font.clipPrecision, font.quality, font.pitchAndFamily, face.data());
    append(
        U_EMREXTCREATEFONTINDIRECTW_set(*handle, reinterpret_cast<const char*>(&logical), nullptr));
    return *handle;
}

ObjectHandle RecordingContext::selectObject(ObjectHandle handle)
{
    if (m_finished)
        return 0;
    ObjectHandle* selected = nullptr;
    switch (kindOf(handle)) {
    case ObjectKind::Pen:
        selected = &m_state.pen;
        break;
    case ObjectKind::Brush:
        selected = &m_state.brush;
        break;
    case ObjectKind::Font:
        selected = &m_state.font;
        break;
    case ObjectKind::Free:
    case ObjectKind::Other:
        return 0;
    }
    append(U_EMRSELECTOBJECT_set(handle));
    return std::exchange(*selected, handle);
}

bool RecordingContext::deleteObject(ObjectHandle handle)
{
    if (m_finished || (handle & StockFlag) != 0 || kindOf(handle) == ObjectKind::Free)
        return false;
    if (handle == m_state.pen || handle == m_state.brush || handle == m_state.font)
        return false;
    append(U_EMRDELETEOBJECT_set(handle));
    m_objects[handle] = {};
    return true;
}

int RecordingContext::saveState()
{
    if (m_finished)
        return 0;
    append(U_EMRSAVEDC_set());
    m_savedStates.push_back(m_state);
    return static_cast<int>(m_savedStates.size());
}

bool RecordingContext::restoreState(int level)
{
    const int depth = static_cast<int>(m_savedStates.size());
    // The record always counts back from the top.
    const int relative = level > 0 ? level - depth - 1 : level;
    if (m_finished || level == 0 || relative >= 0 || -relative > depth)
        return false;
    append(U_EMRRESTOREDC_set(relative));
    const std::size_t kept = static_cast<std::size_t>(depth + relative);
    m_state = m_savedStates[kept];
    m_savedStates.resize(kept);
    return true;
}

void RecordingContext::setMapMode(std::uint32_t mode)
{
    append(U_EMRSETMAPMODE_set(mode));
}

void RecordingContext::setMiterLimit(std::uint32_t limit)
{
    append(U_EMRSETMITERLIMIT_set(limit));
}

void RecordingContext::setTextAlign(std::uint32_t flags)
{
    append(U_EMRSETTEXTALIGN_set(flags));
    m_state.textAlign = flags;
}

void RecordingContext::setTextColour(Colour colour)
{
    append(U_EMRSETTEXTCOLOR_set(colourRef(colour)));
}

void RecordingContext::setBackgroundMode(std::uint32_t mode)
{
    append(U_EMRSETBKMODE_set(mode));
}

void RecordingContext::setBackgroundColour(Colour colour)
{
    append(U_EMRSETBKCOLOR_set(colourRef(colour)));
}

void RecordingContext::setPolyFillMode(std::uint32_t mode)
{
    append(U_EMRSETPOLYFILLMODE_set(mode));
}

void RecordingContext::setWorldTransform(const XForm& transform)
{
    if (m_finished)
        return;
    append(U_EMRSETWORLDTRANSFORM_set({ transform.m11, transform.m12, transform.m21, transform.m22,
        transform.dx, transform.dy }));
    m_state.world = transform;
}

std::uint32_t RecordingContext::selectedPenWidth() const
{
    if ((m_state.pen & StockFlag) != 0)
        return m_state.pen == Stock::NullPen ? 0 : 1;
    return m_state.pen < m_objects.size() ? m_objects[m_state.pen].penWidth : 1;
}

RectL RecordingContext::boundsOf(std::span<const PointL> points) const
{
    RectL box { std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::max(),
        std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min() };
    for (PointL point : points) {
        box.left = std::min(box.left, point.x);
        box.top = std::min(box.top, point.y);
        box.right = std::max(box.right, point.x);
        box.bottom = std::max(box.bottom, point.y);
    }
    return points.empty() ? RectL {} : box;
}

void RecordingContext::includeInBounds(const RectL& deviceRectangle)
{
    const RectL box = normalised(deviceRectangle);
    if (!m_bounds) {
        m_bounds = box;
        return;
    }
    m_bounds->left = std::min(m_bounds->left, box.left);
    m_bounds->top = std::min(m_bounds->top, box.top);
    m_bounds->right = std::max(m_bounds->right, box.right);
    m_bounds->bottom = std::max(m_bounds->bottom, box.bottom);
}

void RecordingContext::includePoints(std::span<const PointL> points, bool stroked)
{
    if (points.empty() || m_finished)
        return;
    RectL box = boundsOf(points);
    if (!isIdentity(m_state.world)) {
        const XForm& w = m_state.world;
        const QTransform transform(w.m11, w.m12, w.m21, w.m22, w.dx, w.dy);
        const QRectF mapped
            = transform.mapRect(QRectF(QPointF(box.left, box.top), QPointF(box.right, box.bottom)));
        box = { clampToInt(std::floor(mapped.left())), clampToInt(std::floor(mapped.top())),
            clampToInt(std::ceil(mapped.right())), clampToInt(std::ceil(mapped.bottom())) };
    }
    // Half the pen on either side of the outline; a one-unit pen stays on its pixels.
    const std::int32_t half = stroked ? static_cast<std::int32_t>(selectedPenWidth() / 2) : 0;
    includeInBounds({ box.left - half, box.top - half, box.right + half, box.bottom + half });
}

void RecordingContext::includeBox(const RectL& box, bool stroked)
{
    const RectL corners = normalised(box);
    const PointL points[] = { { corners.left, corners.top }, { corners.right, corners.bottom } };
    includePoints(points, stroked);
}

void RecordingContext::addPathPoint(PointL point, std::uint8_t type)
{
    m_path.push_back({ point, type });
}

void RecordingContext::startFigureIfNeeded()
{
    if (!m_figureOpen) {
        addPathPoint(m_state.position, PathPointType::MoveTo);
        m_figureOpen = true;
    }
}

void RecordingContext::moveTo(PointL point)
{
    if (m_finished)
        return;
    append(U_EMRMOVETOEX_set(toU(point)));
    m_state.position = point;
    if (m_pathOpen)
        m_figureOpen = false;
}

void RecordingContext::lineTo(PointL point)
{
    if (m_finished)
        return;
    append(U_EMRLINETO_set(toU(point)));
    if (m_pathOpen) {
        startFigureIfNeeded();
        addPathPoint(point, PathPointType::LineTo);
    } else {
        const PointL ends[] = { m_state.position, point };
        includePoints(ends, true);
    }
    m_state.position = point;
}

void RecordingContext::polyBezierTo(std::span<const PointL> points)
{
    if (m_finished || points.empty() || points.size() % 3 != 0)
        return;
    std::vector<PointL> all { m_state.position };
    all.insert(all.end(), points.begin(), points.end());
    std::vector<U_POINTL> encoded = toU(points);
    append(U_EMRPOLYBEZIERTO_set(toU(boundsOf(all)), encoded.size(), encoded.data()));
    if (m_pathOpen) {
        startFigureIfNeeded();
        for (PointL point : points)
            addPathPoint(point, PathPointType::BezierTo);
    } else {
        includePoints(all, true);
    }
    m_state.position = points.back();
}

void RecordingContext::polyline(std::span<const PointL> points)
{
    if (m_finished || points.empty())
        return;
    std::vector<U_POINTL> encoded = toU(points);
    append(U_EMRPOLYLINE_set(toU(boundsOf(points)), encoded.size(), encoded.data()));
    if (m_pathOpen) {
        addPathPoint(points.front(), PathPointType::MoveTo);
        for (PointL point : points.subspan(1))
            addPathPoint(point, PathPointType::LineTo);
        m_figureOpen = false;
    } else {
        includePoints(points, true);
    }
}

void RecordingContext::polygon(std::span<const PointL> points)
{
    if (m_finished || points.empty())
        return;
    std::vector<U_POINTL> encoded = toU(points);
    append(U_EMRPOLYGON_set(toU(boundsOf(points)), encoded.size(), encoded.data()));
    if (m_pathOpen) {
        addPathPoint(points.front(), PathPointType::MoveTo);
        for (PointL point : points.subspan(1))
            addPathPoint(point, PathPointType::LineTo);
        m_path.back().type |= PathPointType::CloseFigure;
        m_figureOpen = false;
    } else {
        includePoints(points, true);
    }
}

void RecordingContext::ellipse(const RectL& box)
{
    if (m_finished)
        return;
    append(U_EMRELLIPSE_set(toU(box)));
    if (!m_pathOpen) {
        includeBox(box, true);
        return;
    }
    // Four quarter arcs counterclockwise from three o'clock; 0.5523 puts the control points
    // where a cubic follows a quarter circle most closely.
    const double cx = (box.left + box.right) / 2.0;
    const double cy = (box.top + box.bottom) / 2.0;
    const double rx = (box.right - box.left) / 2.0;
    const double ry = (box.bottom - box.top) / 2.0;
    constexpr double k = 0.5522847498;
    auto at = [&](double x, double y) {
        return PointL { clampToInt(std::lround(cx + x * rx)),
            clampToInt(std::lround(cy + y * ry)) };
    };
    addPathPoint(at(1, 0), PathPointType::MoveTo);
    const double quarters[4][6] = { { 1, -k, k, -1, 0, -1 }, { -k, -1, -1, -k, -1, 0 },
        { -1, k, -k, 1, 0, 1 }, { k, 1, 1, k, 1, 0 } };
    for (const auto& quarter : quarters) {
        addPathPoint(at(quarter[0], quarter[1]), PathPointType::BezierTo);
        addPathPoint(at(quarter[2], quarter[3]), PathPointType::BezierTo);
        addPathPoint(at(quarter[4], quarter[5]), PathPointType::BezierTo);
    }
    m_path.back().type |= PathPointType::CloseFigure;
    m_figureOpen = false;
}

void RecordingContext::rectangle(const RectL& box)
{
    if (m_finished)
        return;
    append(U_EMRRECTANGLE_set(toU(box)));
    if (!m_pathOpen) {
        includeBox(box, true);
        return;
    }
    addPathPoint({ box.left, box.top }, PathPointType::MoveTo);
    addPathPoint({ box.left, box.bottom }, PathPointType::LineTo);
    addPathPoint({ box.right, box.bottom }, PathPointType::LineTo);
    addPathPoint({ box.right, box.top }, PathPointType::LineTo | PathPointType::CloseFigure);
    m_figureOpen = false;
}

void RecordingContext::pie(const RectL& box, PointL start, PointL end)
{
    if (m_finished)
        return;
    append(U_EMRPIE_set(toU(box), toU(start), toU(end)));
    // Inside a path a pie is recorded but not traced: the program never builds one there.
    if (!m_pathOpen)
        includeBox(box, true);
}

void RecordingContext::setPixel(PointL point, Colour colour)
{
    if (m_finished)
        return;
    append(U_EMRSETPIXELV_set(toU(point), colourRef(colour)));
    const PointL points[] = { point };
    includePoints(points, false);
}

const LogFont& RecordingContext::selectedLogFont() const
{
    static const LogFont system = SystemFont();
    if ((m_state.font & StockFlag) == 0 && m_state.font < m_objects.size()
        && m_objects[m_state.font].kind == ObjectKind::Font)
        return m_objects[m_state.font].font;
    return system;
}

SizeL RecordingContext::textExtent(QStringView text) const
{
    return MeasureText(selectedLogFont(), text);
}

void RecordingContext::textOut(PointL point, QStringView text)
{
    if (m_finished)
        return;
    const LogFont& font = selectedLogFont();
    std::vector<std::uint32_t> advances = CharacterAdvances(font, text);
    std::vector<std::uint16_t> units = utf16(text);
    const SizeL extent = MeasureText(font, text);

    // The text's box before turning: x from the alignment, y from the top of the cell.
    double left = 0;
    switch (m_state.textAlign & TextAlign::HorizontalMask) {
    case TextAlign::Right:
        left = -extent.cx;
        break;
    case TextAlign::Centre:
        left = -extent.cx / 2.0;
        break;
    default:
        break;
    }
    const QFontMetricsF metrics(FontFromLogFont(font));
    double top = 0;
    switch (m_state.textAlign & TextAlign::VerticalMask) {
    case TextAlign::Bottom:
        top = -extent.cy;
        break;
    case TextAlign::Baseline:
        top = -metrics.ascent();
        break;
    default:
        break;
    }
    QTransform turn;
    turn.translate(point.x, point.y);
    turn.rotate(-font.escapement / 10.0);
    const QRectF box = turn.mapRect(QRectF(left, top, extent.cx, extent.cy));
    const RectL bounds { clampToInt(std::floor(box.left())), clampToInt(std::floor(box.top())),
        clampToInt(std::ceil(box.right())), clampToInt(std::ceil(box.bottom())) };

    char* body = emrtext_set(toU(point), static_cast<U_NUM_STR>(text.size()), 2, units.data(),
        U_ETO_NONE, { 0, 0, -1, -1 }, advances.empty() ? nullptr : advances.data());
    if (body == nullptr)
        return;
    append(U_EMREXTTEXTOUTW_set(
        toU(bounds), U_GM_COMPATIBLE, 0.0f, 0.0f, reinterpret_cast<PU_EMRTEXT>(body)));
    std::free(body);
    if (!text.isEmpty()) {
        const PointL corners[] = { { bounds.left, bounds.top }, { bounds.right, bounds.bottom } };
        includePoints(corners, false);
    }
}

void RecordingContext::beginPath()
{
    if (m_finished)
        return;
    append(U_EMRBEGINPATH_set());
    m_path.clear();
    m_pathOpen = true;
    m_figureOpen = false;
}

void RecordingContext::endPath()
{
    if (m_finished)
        return;
    append(U_EMRENDPATH_set());
    m_pathOpen = false;
}

void RecordingContext::closeFigure()
{
    if (m_finished)
        return;
    append(U_EMRCLOSEFIGURE_set());
    if (m_pathOpen && !m_path.empty() && m_figureOpen) {
        m_path.back().type |= PathPointType::CloseFigure;
        m_figureOpen = false;
    }
}

void RecordingContext::abortPath()
{
    if (m_finished)
        return;
    append(U_EMRABORTPATH_set());
    endPathUse();
}

void RecordingContext::endPathUse()
{
    m_path.clear();
    m_pathOpen = false;
    m_figureOpen = false;
}

std::vector<PointL> RecordingContext::pathPoints() const
{
    std::vector<PointL> points;
    points.reserve(m_path.size());
    for (const PathPoint& point : m_path)
        points.push_back(point.point);
    return points;
}

RectL RecordingContext::pathBounds() const
{
    return m_path.empty() ? RectL { 0, 0, -1, -1 } : boundsOf(pathPoints());
}

void RecordingContext::includePath(bool stroked)
{
    includePoints(pathPoints(), stroked);
}

void RecordingContext::strokePath()
{
    if (m_finished)
        return;
    append(U_EMRSTROKEPATH_set(toU(pathBounds())));
    includePath(true);
    endPathUse();
}

void RecordingContext::fillPath()
{
    if (m_finished)
        return;
    append(U_EMRFILLPATH_set(toU(pathBounds())));
    includePath(false);
    endPathUse();
}

void RecordingContext::strokeAndFillPath()
{
    if (m_finished)
        return;
    append(U_EMRSTROKEANDFILLPATH_set(toU(pathBounds())));
    includePath(true);
    endPathUse();
}

void RecordingContext::selectClipPath(std::uint32_t mode)
{
    if (m_finished)
        return;
    append(U_EMRSELECTCLIPPATH_set(mode));
    endPathUse();
}

bool RecordingContext::selectClipRectangle(const RectL& rectangle)
{
    if (m_finished)
        return false;
    U_RECTL box = toU(normalised(rectangle));
    PU_RGNDATA region = rgndata_set(rgndataheader_set(1, box), &box);
    if (region == nullptr)
        return false;
    append(U_EMREXTSELECTCLIPRGN_set(U_RGN_COPY, region));
    std::free(region);
    return true;
}

void RecordingContext::removeClipping()
{
    // Size, region byte count 0, mode: "no region" resets clipping to the whole surface.
    QByteArray record(16, '\0');
    putU32(record, 0, static_cast<std::uint32_t>(RecordType::ExtSelectClipRgn));
    putU32(record, 4, 16);
    putU32(record, 8, 0);
    putU32(record, 12, RegionMode::Copy);
    appendOwned(record);
}

void RecordingContext::intersectClipRectangle(const RectL& rectangle)
{
    append(U_EMRINTERSECTCLIPRECT_set(toU(rectangle)));
}

Picture RecordingContext::finish()
{
    if (m_finished)
        return {};
    // Size, no palette entries, their offset, and the size again at the end.
    QByteArray endRecord(20, '\0');
    putU32(endRecord, 0, static_cast<std::uint32_t>(RecordType::EndOfFile));
    putU32(endRecord, 4, 20);
    putU32(endRecord, 12, 16);
    putU32(endRecord, 16, 20);
    appendOwned(endRecord);
    m_finished = true;
    const RectL bounds = m_bounds.value_or(RectL { 0, 0, -1, -1 });
    putI32(m_bytes, BoundsOffset, bounds.left);
    putI32(m_bytes, BoundsOffset + 4, bounds.top);
    putI32(m_bytes, BoundsOffset + 8, bounds.right);
    putI32(m_bytes, BoundsOffset + 12, bounds.bottom);
    putU32(m_bytes, ByteCountOffset, static_cast<std::uint32_t>(m_bytes.size()));
    putU32(m_bytes, RecordCountOffset, m_recordCount);
    const std::uint16_t handles = static_cast<std::uint16_t>(m_highestSlot + 1);
    std::memcpy(m_bytes.data() + HandleCountOffset, &handles, sizeof handles);
    return Picture::fromRecording({ std::exchange(m_bytes, {}), std::exchange(m_records, {}) });
}

} // namespace Emf
