#pragma once

#include "platform/emf/EmfTypes.h"
#include "platform/emf/PageState.h"
#include "platform/emf/Picture.h"

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QTransform>
#include <optional>
#include <span>
#include <variant>
#include <vector>

class QPainter;

namespace Emf {

class RecordReader;

// Plays the records of one picture onto a painter, keeping the device-context state the
// records change: objects, transforms, current position, path, clip region, text settings.
// Used through PlayPicture.
class PainterPlayback
{
public:
    PainterPlayback(const Picture& picture, QPainter& painter, const QRectF& placed);
    void run();

    // More slots than any sound picture uses; objects beyond are not kept.
    static constexpr std::size_t MaximumObjects = 65536;

private:
    struct PenObject
    {
        bool visible = true;
        bool cosmetic = true;
        double width = 0;
        QColor colour = Qt::black;
        Qt::PenStyle style = Qt::SolidLine;
        Qt::PenCapStyle cap = Qt::RoundCap;
        Qt::PenJoinStyle join = Qt::RoundJoin;
    };
    struct BrushObject
    {
        bool visible = true;
        QColor colour = Qt::white;
        Qt::BrushStyle style = Qt::SolidPattern;
        QImage pattern;
    };
    struct FontObject
    {
        LogFont font;
    };
    struct OtherObject
    {
    };
    using GraphicsObject
        = std::variant<std::monostate, PenObject, BrushObject, FontObject, OtherObject>;

    struct DeviceState
    {
        PageState page;
        PenObject pen;
        BrushObject brush;
        LogFont font;
        QPointF position;
        std::uint32_t textAlign = 0;
        Colour textColour = 0;
        Colour backgroundColour = 0xFFFFFF;
        std::uint32_t backgroundMode = BackgroundMode::Opaque;
        std::uint32_t polyFillMode = PolyFillMode::Alternate;
        std::uint32_t arcDirection = 1;
        std::uint32_t stretchMode = 1;
        double miterLimit = 10;
        std::optional<QPainterPath> clip; // in target units; none: the placed rectangle
    };

    enum class ArcKind { Arc, ArcTo, Chord, Pie };

    void play(std::uint32_t type, QByteArrayView record);
    void selectObject(std::uint32_t handle);
    void storeObject(std::uint32_t handle, GraphicsObject object);
    void createPen(RecordReader& reader);
    void createExtendedPen(RecordReader& reader);
    void createBrush(RecordReader& reader);
    void createPatternBrush(RecordReader& reader, bool monochrome);
    void createFont(RecordReader& reader);
    void restoreState(std::int32_t level);

    QTransform logicalToTarget() const;
    void prepare();
    QPen currentPen() const;
    QBrush currentBrush() const;
    Qt::FillRule fillRule() const;
    void strokeShape(const QPainterPath& shape);
    void fillShape(const QPainterPath& shape, const QBrush& brush);
    void drawShape(const QPainterPath& shape, bool fill, bool stroke);
    // A closed shape: added to the path while one is built, else filled and outlined.
    void closedShape(const QPainterPath& shape);
    void startFigureIfNeeded();

    void polyline(std::span<const PointL> points, bool closed, bool bezier, bool fromCurrent);
    void polyPolygon(RecordReader& reader, bool sixteenBits, bool closed);
    void polyDraw(RecordReader& reader, bool sixteenBits);
    void arc(RecordReader& reader, ArcKind kind);
    void angleArc(RecordReader& reader);
    void text(RecordReader& reader, bool wide);
    void bitmap(std::uint32_t type, RecordReader& reader);
    void region(std::uint32_t type, RecordReader& reader);
    void clipRegion(RecordReader& reader);
    void combineClip(const QPainterPath& shape, std::uint32_t mode);

    const Picture& m_picture;
    QPainter& m_painter;
    QRectF m_placed;
    QTransform m_placement; // reference-device pixels to target units
    QTransform m_base; // the painter's own transform
    std::optional<QPainterPath> m_outerClip; // the painter's own clip, in target units
    std::vector<GraphicsObject> m_objects;
    DeviceState m_state;
    std::vector<DeviceState> m_saved;
    QPainterPath m_path;
    bool m_pathOpen = false;
    bool m_figureOpen = false;
    bool m_clipDirty = true;
};

} // namespace Emf
