#pragma once

#include "platform/emf/EmfTypes.h"
#include "platform/emf/Picture.h"
#include "platform/emf/RecordingContext.h"
#include "platform/emf/ReferenceDevice.h"

#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace Ormsey {

// The drawing surface of the graphs: one enhanced metafile, recorded through an Emf
// recording context. Pen, brush and font settings are kept as plain values and turned into
// objects only when a drawing operation needs them and only when a setting really changed;
// stock objects stand in for the commonest cases, so a graph of many same-coloured shapes
// records few object creations. Units are reference-device pixels, y downward.
//
// The owner calls OpenMF, draws, and calls CloseMF in one go; drawing while closed does
// nothing. The finished picture belongs to this object until the next OpenMF, until
// ReleaseMetaFile hands it over, or until destruction.
class MetaFile
{
public:
    MetaFile();
    ~MetaFile();
    MetaFile(const MetaFile&) = delete;
    MetaFile& operator=(const MetaFile&) = delete;

    // The picture frame, in reference-device pixels.
    std::int32_t Top = 0;
    std::int32_t Left = 0;
    std::int32_t Width = 400;
    std::int32_t Height = 400;

    // Records against `reference` (the 96 dpi screen by default); with a file name the
    // finished picture is also written there by CloseMF.
    void OpenMF(const Emf::ReferenceDevice& reference = Emf::ReferenceDevice::Screen(),
        const QString& fileName = QString());
    void SetMapModeMF(std::uint32_t mode);
    // The bounds rectangle of the finished picture's header; none while there is no picture.
    std::optional<Emf::RectL> GetBoundingBox() const;
    Emf::RecordingContext* hDC() const { return m_context.get(); }
    const Emf::Picture* hMF() const { return m_picture.get(); }
    void CloseMF();

    void PenStyle(std::int32_t style);
    void PenColour(std::int32_t colour);
    void PenWidth(std::int32_t width);
    void PenEndCap(std::int32_t cap);
    void BrushColour(std::int32_t colour);
    void BrushStyle(std::int32_t style);
    void BrushHatch(std::int32_t hatch);
    // Names of 32 characters or more are refused with error 9.
    void FontName(const QString& name);
    void FontSize(double points);
    void FontBold(bool on);
    void FontItalic(bool on);
    void FontUnderline(bool on);
    void FontOrientation(std::int32_t tenths);
    void FontColour(std::int32_t colour);

    void CircleMF(std::int32_t x, std::int32_t y, std::int32_t radius);
    void LineMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2);
    void MoveToMF(std::int32_t x, std::int32_t y);
    void LineToMF(std::int32_t x, std::int32_t y);
    void PolyBezierToMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
        std::int32_t x3, std::int32_t y3);
    void CloseFigureMF();
    // `points` holds x, y pairs; `count` (at most 19) of them are drawn. A larger count, or
    // fewer numbers than it needs, is refused with error 9.
    void PolygonMF(std::span<const std::int32_t> points, std::int32_t count);
    void ParallelogramMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2,
        std::int32_t x3, std::int32_t y3);
    void PieMF(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom,
        std::int32_t startX, std::int32_t startY, std::int32_t endX, std::int32_t endY);
    void PlotPointMF(std::int32_t x, std::int32_t y);
    void RectMF(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2);
    void SectorMF(std::int32_t centreX, std::int32_t centreY, std::int32_t startX,
        std::int32_t startY, std::int32_t endX, std::int32_t endY, double elevation);
    void SetTextAlignMF(std::uint32_t flags);
    void PaintTextMF(const QString& text, double x, double y, std::int32_t align, double directionX,
        double directionY);
    std::int32_t GetTextWidth(const QString& text);
    std::int32_t GetTextHeight(const QString& text);
    void BeginPathMF();
    void EndPathMF();
    void StrokeAndFillPathMF();
    void StrokePathMF();
    void SelectClipPathMF();
    void ClearClipPath();
    // Hands the finished picture to the caller, who owns it from now on.
    std::unique_ptr<Emf::Picture> ReleaseMetaFile();

    // The largest PolygonMF.
    static constexpr int MaximumPoints = 19;
    // The description written into every picture's header.
    static QString Description();

private:
    struct ObjectState
    {
        Emf::ObjectHandle current = 0;
        Emf::ObjectHandle replaced = 0;
        bool created = false;
        bool changed = false;
    };

    void ApplySettings();
    void MakePen();
    void MakeBrush();
    void MakeFont();
    void ReleaseObject(ObjectState& state);
    void SelectMadeObject(ObjectState& state, Emf::ObjectHandle made, bool created);
    std::array<double, 2> SectorPoint(double angle, double offsetY) const;
    void DrawArc(double startAngle, double endAngle, double offsetY);

    std::unique_ptr<Emf::RecordingContext> m_context;
    std::unique_ptr<Emf::Picture> m_picture;
    Emf::ReferenceDevice m_device;
    QString m_fileName;
    int m_savedState = 0;
    double m_pixelWidth = 0; // hundredths of a millimetre
    double m_pixelHeight = 0;

    std::int32_t m_penStyle = 5;
    std::int32_t m_penWidthX = 1;
    std::int32_t m_penWidthY = 1;
    std::int32_t m_penColour = 0;
    std::int32_t m_penEndCap = 512;
    ObjectState m_pen;

    std::int32_t m_brushStyle = 0;
    std::int32_t m_brushColour = 16777215;
    std::int32_t m_brushHatch = 8;
    ObjectState m_brush;

    Emf::LogFont m_font;
    ObjectState m_fontObject;

    std::int32_t m_textColour = 0;
    std::array<Emf::PointL, MaximumPoints> m_points {};

    // The sector being drawn by SectorMF: centre, flattening and the radius at each angle.
    struct SectorShape
    {
        double centreX = 0;
        double centreY = 0;
        double flattening = 1;
        double startAngle = 0;
        double endAngle = 0;
        double startRadius = 0;
        double endRadius = 0;
    } m_sector;
};

} // namespace Ormsey
