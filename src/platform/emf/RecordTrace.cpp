#include "platform/emf/RecordTrace.h"

#include "platform/emf/RecordReader.h"
#include "platform/emf/RecordType.h"

using namespace Qt::Literals::StringLiterals;

namespace Emf {

namespace {

QString colourText(std::uint32_t colour)
{
    return u"0x"_s + u"%1"_s.arg(colour & 0xFFFFFF, 6, 16, QChar(u'0')).toUpper();
}

QString handleText(std::uint32_t handle)
{
    static const char* const names[] = { "WHITE_BRUSH", "LTGRAY_BRUSH", "GRAY_BRUSH",
        "DKGRAY_BRUSH", "BLACK_BRUSH", "NULL_BRUSH", "WHITE_PEN", "BLACK_PEN", "NULL_PEN", "9",
        "OEM_FIXED_FONT", "ANSI_FIXED_FONT", "ANSI_VAR_FONT", "SYSTEM_FONT", "DEVICE_DEFAULT_FONT",
        "DEFAULT_PALETTE", "SYSTEM_FIXED_FONT", "DEFAULT_GUI_FONT", "DC_BRUSH", "DC_PEN" };
    if ((handle & StockFlag) == 0)
        return QString::number(handle);
    const std::uint32_t index = handle & ~StockFlag;
    return index < std::size(names) ? QString::fromLatin1(names[index]) : u"STOCK_%1"_s.arg(index);
}

QString pointsText(const std::vector<PointL>& points)
{
    QStringList parts;
    for (PointL point : points)
        parts << u"%1,%2"_s.arg(point.x).arg(point.y);
    return parts.join(u' ');
}

QString rectText(const RectL& box)
{
    return u"%1 %2 %3 %4"_s.arg(box.left).arg(box.top).arg(box.right).arg(box.bottom);
}

QString pointText(PointL point)
{
    return u"%1,%2"_s.arg(point.x).arg(point.y);
}

QString name(RecordType type)
{
    switch (type) {
    case RecordType::Header:
        return u"HEADER"_s;
    case RecordType::PolyBezier:
        return u"POLYBEZIER"_s;
    case RecordType::Polygon:
        return u"POLYGON"_s;
    case RecordType::Polyline:
        return u"POLYLINE"_s;
    case RecordType::PolyBezierTo:
        return u"POLYBEZIERTO"_s;
    case RecordType::PolylineTo:
        return u"POLYLINETO"_s;
    case RecordType::EndOfFile:
        return u"EOF"_s;
    case RecordType::SetPixelV:
        return u"SETPIXELV"_s;
    case RecordType::SetMapMode:
        return u"SETMAPMODE"_s;
    case RecordType::SetBkMode:
        return u"SETBKMODE"_s;
    case RecordType::SetPolyFillMode:
        return u"SETPOLYFILLMODE"_s;
    case RecordType::SetTextAlign:
        return u"SETTEXTALIGN"_s;
    case RecordType::SetTextColor:
        return u"SETTEXTCOLOR"_s;
    case RecordType::SetBkColor:
        return u"SETBKCOLOR"_s;
    case RecordType::MoveToEx:
        return u"MOVETOEX"_s;
    case RecordType::IntersectClipRect:
        return u"INTERSECTCLIPRECT"_s;
    case RecordType::ExcludeClipRect:
        return u"EXCLUDECLIPRECT"_s;
    case RecordType::SaveDC:
        return u"SAVEDC"_s;
    case RecordType::RestoreDC:
        return u"RESTOREDC"_s;
    case RecordType::SetWorldTransform:
        return u"SETWORLDTRANSFORM"_s;
    case RecordType::SelectObject:
        return u"SELECTOBJECT"_s;
    case RecordType::CreateBrushIndirect:
        return u"CREATEBRUSHINDIRECT"_s;
    case RecordType::DeleteObject:
        return u"DELETEOBJECT"_s;
    case RecordType::Ellipse:
        return u"ELLIPSE"_s;
    case RecordType::Rectangle:
        return u"RECTANGLE"_s;
    case RecordType::Pie:
        return u"PIE"_s;
    case RecordType::LineTo:
        return u"LINETO"_s;
    case RecordType::SetMiterLimit:
        return u"SETMITERLIMIT"_s;
    case RecordType::BeginPath:
        return u"BEGINPATH"_s;
    case RecordType::EndPath:
        return u"ENDPATH"_s;
    case RecordType::CloseFigure:
        return u"CLOSEFIGURE"_s;
    case RecordType::FillPath:
        return u"FILLPATH"_s;
    case RecordType::StrokeAndFillPath:
        return u"STROKEANDFILLPATH"_s;
    case RecordType::StrokePath:
        return u"STROKEPATH"_s;
    case RecordType::SelectClipPath:
        return u"SELECTCLIPPATH"_s;
    case RecordType::AbortPath:
        return u"ABORTPATH"_s;
    case RecordType::ExtSelectClipRgn:
        return u"EXTSELECTCLIPRGN"_s;
    case RecordType::ExtCreateFontIndirectW:
        return u"EXTCREATEFONTINDIRECTW"_s;
    case RecordType::ExtTextOutW:
        return u"EXTTEXTOUTW"_s;
    case RecordType::ExtCreatePen:
        return u"EXTCREATEPEN"_s;
    case RecordType::PolyDraw:
        return u"POLYDRAW"_s;
    default:
        return u"RECORD %1"_s.arg(std::uint32_t(type));
    }
}

QString fields(std::uint32_t type, RecordReader& reader)
{
    switch (static_cast<RecordType>(type)) {
    case RecordType::Header:
        return u"bounds %1 frame %2"_s.arg(rectText(reader.rect(8)), rectText(reader.rect(24)));
    case RecordType::PolyBezier:
    case RecordType::Polygon:
    case RecordType::Polyline:
    case RecordType::PolyBezierTo:
    case RecordType::PolylineTo: {
        const auto points = reader.points(28, reader.u32(24));
        return points ? pointsText(*points) : u"?"_s;
    }
    case RecordType::SetPixelV:
        return u"%1 colour %2"_s.arg(pointText(reader.point(8)), colourText(reader.u32(16)));
    case RecordType::SetMapMode:
    case RecordType::SetBkMode:
    case RecordType::SetPolyFillMode:
    case RecordType::SetTextAlign:
    case RecordType::SetMiterLimit:
    case RecordType::SelectClipPath:
        return QString::number(reader.u32(8));
    case RecordType::RestoreDC:
        return QString::number(reader.i32(8));
    case RecordType::SetTextColor:
    case RecordType::SetBkColor:
        return colourText(reader.u32(8));
    case RecordType::MoveToEx:
    case RecordType::LineTo:
        return pointText(reader.point(8));
    case RecordType::IntersectClipRect:
    case RecordType::ExcludeClipRect:
    case RecordType::Ellipse:
    case RecordType::Rectangle:
        return rectText(reader.rect(8));
    case RecordType::Pie:
        return u"%1 start %2 end %3"_s.arg(
            rectText(reader.rect(8)), pointText(reader.point(24)), pointText(reader.point(32)));
    case RecordType::SetWorldTransform: {
        const XForm form = reader.xform(8);
        return u"%1 %2 %3 %4 %5 %6"_s.arg(form.m11)
            .arg(form.m12)
            .arg(form.m21)
            .arg(form.m22)
            .arg(form.dx)
            .arg(form.dy);
    }
    case RecordType::SelectObject:
    case RecordType::DeleteObject:
        return handleText(reader.u32(8));
    case RecordType::CreateBrushIndirect:
        return u"%1 style %2 colour %3 hatch %4"_s.arg(reader.u32(8))
            .arg(reader.u32(12))
            .arg(colourText(reader.u32(16)))
            .arg(reader.u32(20));
    case RecordType::ExtCreatePen:
        return u"%1 style 0x%2 width %3 brush %4 colour %5"_s.arg(reader.u32(8))
            .arg(reader.u32(28), 0, 16)
            .arg(reader.u32(32))
            .arg(reader.u32(36))
            .arg(colourText(reader.u32(40)));
    case RecordType::ExtCreateFontIndirectW: {
        QString face;
        for (int index = 0; index < 32; ++index) {
            const std::uint16_t unit = reader.u16(40 + index * 2);
            if (unit == 0)
                break;
            face.append(QChar(unit));
        }
        return u"%1 height %2 escapement %3 orientation %4 weight %5 italic %6 underline %7 "
               "charset %8 face %9"_s.arg(reader.u32(8))
                   .arg(reader.i32(12))
                   .arg(reader.i32(20))
                   .arg(reader.i32(24))
                   .arg(reader.i32(28))
                   .arg(reader.u8(32))
                   .arg(reader.u8(33))
                   .arg(reader.u8(35))
                   .arg(face);
    }
    case RecordType::ExtTextOutW: {
        const auto text = reader.utf16(reader.u32(48), reader.u32(44));
        return u"%1 \"%2\""_s.arg(pointText(reader.point(36)), text ? *text : u"?"_s);
    }
    case RecordType::ExtSelectClipRgn: {
        const std::uint32_t mode = reader.u32(12);
        if (reader.u32(8) == 0)
            return u"%1 none"_s.arg(mode);
        QStringList boxes;
        const std::uint32_t count = reader.u32(24);
        for (std::uint32_t index = 0; index < count && reader.ok(); ++index)
            boxes << rectText(reader.rect(48 + std::uint64_t(index) * 16));
        return u"%1 %2"_s.arg(mode).arg(boxes.join(u"; "_s));
    }
    case RecordType::PolyDraw: {
        const std::uint32_t count = reader.u32(24);
        const auto points = reader.points(28, count);
        if (!points)
            return u"?"_s;
        QStringList parts;
        for (std::uint32_t index = 0; index < count; ++index)
            parts << u"%1:%2"_s.arg(pointText((*points)[index]))
                         .arg(reader.u8(28 + std::uint64_t(count) * 8 + index));
        return parts.join(u' ');
    }
    default:
        return {};
    }
}

} // namespace

QString TraceRecord(std::uint32_t type, QByteArrayView record)
{
    RecordReader reader(record);
    const QString head = name(static_cast<RecordType>(type));
    QString detail = fields(type, reader);
    if (head.startsWith(u"RECORD"_s))
        detail = u"size %1"_s.arg(record.size());
    if (!reader.ok())
        detail = u"?"_s;
    return detail.isEmpty() ? head : head + u' ' + detail;
}

QStringList TraceRecords(const Picture& picture)
{
    QStringList lines;
    if (!picture.isValid())
        return lines;
    lines << TraceRecord(std::uint32_t(RecordType::Header),
        QByteArrayView(picture.bytes()).first(std::min<qsizetype>(picture.bytes().size(), 88)));
    for (const RecordSpan& record : picture.records())
        lines << TraceRecord(record.type, picture.recordBytes(record));
    return lines;
}

} // namespace Emf
