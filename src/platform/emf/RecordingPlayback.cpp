#include "platform/emf/RecordingPlayback.h"

#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordType.h"
#include "platform/emf/RecordingContext.h"

#include <cmath>
#include <cstring>

namespace Emf {

namespace {

constexpr std::uint32_t MaximumRegionRectangles = 100000;

void putU32(QByteArray& bytes, qsizetype offset, std::uint32_t value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

void putI32(QByteArray& bytes, qsizetype offset, std::int32_t value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

std::int32_t rounded(double value)
{
    return static_cast<std::int32_t>(std::clamp(std::round(value), -2147483648.0, 2147483647.0));
}

// Records that draw or set state without naming objects or positions outside themselves:
// copied as they are.
bool copiedAsIs(RecordType type)
{
    switch (type) {
    case RecordType::PolyBezier:
    case RecordType::Polygon:
    case RecordType::Polyline:
    case RecordType::PolyBezierTo:
    case RecordType::PolylineTo:
    case RecordType::PolyPolyline:
    case RecordType::PolyPolygon:
    case RecordType::SetBrushOrgEx:
    case RecordType::SetPixelV:
    case RecordType::SetMapperFlags:
    case RecordType::SetBkMode:
    case RecordType::SetPolyFillMode:
    case RecordType::SetRop2:
    case RecordType::SetStretchBltMode:
    case RecordType::SetTextAlign:
    case RecordType::SetTextColor:
    case RecordType::SetBkColor:
    case RecordType::OffsetClipRgn:
    case RecordType::MoveToEx:
    case RecordType::ExcludeClipRect:
    case RecordType::IntersectClipRect:
    case RecordType::AngleArc:
    case RecordType::Ellipse:
    case RecordType::Rectangle:
    case RecordType::RoundRect:
    case RecordType::Arc:
    case RecordType::Chord:
    case RecordType::Pie:
    case RecordType::RealizePalette:
    case RecordType::LineTo:
    case RecordType::ArcTo:
    case RecordType::PolyDraw:
    case RecordType::SetArcDirection:
    case RecordType::SetMiterLimit:
    case RecordType::BeginPath:
    case RecordType::EndPath:
    case RecordType::CloseFigure:
    case RecordType::FillPath:
    case RecordType::StrokeAndFillPath:
    case RecordType::StrokePath:
    case RecordType::FlattenPath:
    case RecordType::WidenPath:
    case RecordType::SelectClipPath:
    case RecordType::AbortPath:
    case RecordType::PaintRgn:
    case RecordType::BitBlt:
    case RecordType::StretchBlt:
    case RecordType::SetDIBitsToDevice:
    case RecordType::StretchDIBits:
    case RecordType::ExtTextOutA:
    case RecordType::ExtTextOutW:
    case RecordType::PolyBezier16:
    case RecordType::Polygon16:
    case RecordType::Polyline16:
    case RecordType::PolyBezierTo16:
    case RecordType::PolylineTo16:
    case RecordType::PolyPolyline16:
    case RecordType::PolyPolygon16:
    case RecordType::PolyDraw16:
        return true;
    default:
        return false;
    }
}

bool createsObject(RecordType type)
{
    switch (type) {
    case RecordType::CreatePen:
    case RecordType::CreateBrushIndirect:
    case RecordType::CreatePalette:
    case RecordType::ExtCreateFontIndirectW:
    case RecordType::CreateMonoBrush:
    case RecordType::CreateDIBPatternBrushPt:
    case RecordType::ExtCreatePen:
    case RecordType::CreateColorSpace:
    case RecordType::CreateColorSpaceW:
        return true;
    default:
        return false;
    }
}

} // namespace

RecordingPlayback::RecordingPlayback(
    const Picture& picture, RecordingContext& recording, const QRectF& placed)
    : m_picture(picture)
    , m_recording(recording)
    , m_placed(placed)
    , m_outer(PlacementTransform(picture.header(), placed)
          * TransformFromXForm(recording.worldTransform()))
{ }

void RecordingPlayback::run()
{
    const XForm outerWorld = m_recording.worldTransform();
    m_recording.saveState();
    m_recording.intersectClipRectangle({ rounded(m_placed.left()), rounded(m_placed.top()),
        rounded(m_placed.right()), rounded(m_placed.bottom()) });
    writeTransform();
    for (const RecordSpan& record : m_picture.records()) {
        if (record.type == std::uint32_t(RecordType::EndOfFile))
            break;
        copy(record.type, m_picture.recordBytes(record));
    }
    // Back to the state before the picture (also undoing saves the picture left open), then
    // free every object the picture did not delete itself.
    m_recording.restoreState(-static_cast<int>(m_savedPages.size()) - 1);
    for (const auto& [source, target] : m_handles) {
        QByteArray record(12, '\0');
        putU32(record, 0, std::uint32_t(RecordType::DeleteObject));
        putU32(record, 4, 12);
        putU32(record, 8, target);
        m_recording.appendRecord(record);
        m_recording.releaseObjectSlot(target);
    }
    m_handles.clear();
    const QRectF drawn = TransformFromXForm(outerWorld).mapRect(m_placed);
    m_recording.includeInBounds(
        { rounded(std::floor(drawn.left())), rounded(std::floor(drawn.top())),
            rounded(std::ceil(drawn.right())), rounded(std::ceil(drawn.bottom())) });
}

void RecordingPlayback::writeTransform()
{
    const QTransform combined = m_page.toDevice(m_picture.header()) * m_outer;
    // Written directly so that the recording's own idea of its transform (used for its
    // bounds) stays the outer one; the placed rectangle is added to the bounds at the end.
    QByteArray record(32, '\0');
    putU32(record, 0, std::uint32_t(RecordType::SetWorldTransform));
    putU32(record, 4, 32);
    const XForm form = XFormFromTransform(combined);
    const float values[] = { form.m11, form.m12, form.m21, form.m22, form.dx, form.dy };
    std::memcpy(record.data() + 8, values, sizeof values);
    m_recording.appendRecord(record);
}

bool RecordingPlayback::remapHandle(QByteArray& record, qsizetype offset)
{
    RecordReader reader(record);
    const std::uint32_t handle = reader.u32(offset);
    if (!reader.ok())
        return false;
    if ((handle & StockFlag) != 0)
        return true;
    const auto found = m_handles.find(handle);
    if (found == m_handles.end())
        return false;
    putU32(record, offset, found->second);
    return true;
}

void RecordingPlayback::createObject(QByteArray& record)
{
    RecordReader reader(record);
    const std::uint32_t handle = reader.u32(8);
    if (!reader.ok() || handle == 0 || (handle & StockFlag) != 0)
        return;
    deleteObject(handle);
    const std::optional<ObjectHandle> slot = m_recording.allocateObjectSlot();
    if (!slot)
        return;
    putU32(record, 8, *slot);
    if (m_recording.appendRecord(record))
        m_handles[handle] = *slot;
    else
        m_recording.releaseObjectSlot(*slot);
}

void RecordingPlayback::deleteObject(std::uint32_t handle)
{
    const auto found = m_handles.find(handle);
    if (found == m_handles.end())
        return;
    QByteArray record(12, '\0');
    putU32(record, 0, std::uint32_t(RecordType::DeleteObject));
    putU32(record, 4, 12);
    putU32(record, 8, found->second);
    m_recording.appendRecord(record);
    m_recording.releaseObjectSlot(found->second);
    m_handles.erase(found);
}

void RecordingPlayback::clipRegion(QByteArrayView source)
{
    RecordReader reader(source);
    const std::uint32_t size = reader.u32(8);
    const std::uint32_t mode = reader.u32(12);
    if (!reader.ok())
        return;
    const QTransform placement = PlacementTransform(m_picture.header(), m_placed);
    QByteArray record(source.data(), source.size());
    if (size == 0) {
        // "No region" would lift the recording's own clip too: clip to the placed
        // rectangle instead.
        if (mode != RegionMode::Copy)
            return;
        const QRectF box = m_outer.mapRect(m_placed);
        m_recording.selectClipRectangle({ rounded(box.left()), rounded(box.top()),
            rounded(box.right()), rounded(box.bottom()) });
        return;
    }
    const std::uint32_t count = reader.u32(24);
    if (!reader.ok() || count > MaximumRegionRectangles || !reader.contains(48, count * 16ull))
        return;
    // Region rectangles are device pixels: move and scale them to the target.
    QRectF bound;
    for (std::uint32_t index = 0; index < count; ++index) {
        const qsizetype at = 48 + qsizetype(index) * 16;
        const RectL box = reader.rect(at);
        const QRectF mapped
            = (placement * TransformFromXForm(m_recording.worldTransform()))
                  .mapRect(QRectF(QPointF(box.left, box.top), QPointF(box.right, box.bottom)));
        putI32(record, at, rounded(mapped.left()));
        putI32(record, at + 4, rounded(mapped.top()));
        putI32(record, at + 8, rounded(mapped.right()));
        putI32(record, at + 12, rounded(mapped.bottom()));
        bound = bound.united(mapped);
    }
    putI32(record, 32, rounded(bound.left()));
    putI32(record, 36, rounded(bound.top()));
    putI32(record, 40, rounded(bound.right()));
    putI32(record, 44, rounded(bound.bottom()));
    m_recording.appendRecord(record);
}

void RecordingPlayback::copy(std::uint32_t type, QByteArrayView source)
{
    if (m_page.apply(type, source)) {
        writeTransform();
        return;
    }
    const auto kind = static_cast<RecordType>(type);
    if (copiedAsIs(kind)) {
        m_recording.appendRecord(source);
        return;
    }
    QByteArray record(source.data(), source.size());
    RecordReader reader(source);
    switch (kind) {
    case RecordType::SaveDC:
        m_recording.saveState();
        m_savedPages.push_back(m_page);
        break;
    case RecordType::RestoreDC: {
        const std::int32_t level = reader.i32(8);
        const auto depth = static_cast<std::int64_t>(m_savedPages.size());
        const std::int64_t relative = level > 0 ? std::int64_t(level) - depth - 1 : level;
        // Only the picture's own saves may be restored.
        if (!reader.ok() || relative >= 0 || -relative > depth)
            break;
        m_recording.restoreState(static_cast<int>(relative));
        const auto kept = static_cast<std::size_t>(depth + relative);
        m_page = m_savedPages[kept];
        m_savedPages.resize(kept);
        break;
    }
    case RecordType::SelectObject:
    case RecordType::SelectPalette:
    case RecordType::SetColorSpace:
    case RecordType::SetPaletteEntries:
    case RecordType::ResizePalette:
        if (remapHandle(record, 8))
            m_recording.appendRecord(record);
        break;
    case RecordType::FillRgn:
    case RecordType::FrameRgn:
        if (remapHandle(record, 28))
            m_recording.appendRecord(record);
        break;
    case RecordType::DeleteObject:
    case RecordType::DeleteColorSpace:
        deleteObject(reader.u32(8));
        break;
    case RecordType::ExtSelectClipRgn:
        clipRegion(source);
        break;
    default:
        if (createsObject(kind))
            createObject(record);
        break;
    }
}

} // namespace Emf
