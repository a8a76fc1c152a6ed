#pragma once

#include "platform/emf/EmfTypes.h"
#include "platform/emf/Picture.h"
#include "platform/emf/ReferenceDevice.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Emf {

// A device context that records: every call appends the matching enhanced metafile record,
// and the context keeps what a drawing program may ask back (the selected objects, the
// current position, the path being built, text extents) and the bounds of everything drawn.
// finish() adds the end record and fills in the header, giving the picture.
//
// The records are encoded with libuemf's record builders (Debian's libuemf-dev), which know
// the layout of every record; this class keeps its own in-memory buffer and object table,
// because libuemf's file tracker always writes to a named file and we record in memory and
// save through a safe writer. Little-endian hosts only, as libuemf writes native order.
//
// Units are those of the default mapping mode: one logical unit is one pixel of the
// reference device, x to the right and y downward.
class RecordingContext
{
public:
    struct PathPoint
    {
        PointL point;
        std::uint8_t type = 0; // PathPointType bits
        friend bool operator==(const PathPoint&, const PathPoint&) = default;
    };

    // `frame`: the picture frame in hundredths of a millimetre. `description`: the header's
    // text, nulls included. `spare`: the storage of a picture no longer needed, written over.
    RecordingContext(const ReferenceDevice& device, const RectL& frame, const QString& description,
        Picture::Storage spare = {});
    RecordingContext(const RecordingContext&) = delete;
    RecordingContext& operator=(const RecordingContext&) = delete;

    const ReferenceDevice& device() const { return m_device; }
    // False once finished; every call is then ignored.
    bool isRecording() const { return !m_finished; }

    // Objects. Creation gives 0 when the object table is full; selecting or deleting an
    // unknown handle does nothing and gives 0 / false.
    ObjectHandle createPen(const ExtendedPen& pen);
    ObjectHandle createBrush(const LogBrush& brush);
    ObjectHandle createFont(const LogFont& font);
    // Selects a created or stock object; gives the object of the same kind it replaced.
    ObjectHandle selectObject(ObjectHandle handle);
    // Refuses (false) an object that is selected, as the platform does.
    bool deleteObject(ObjectHandle handle);
    ObjectHandle selectedPen() const { return m_state.pen; }
    ObjectHandle selectedBrush() const { return m_state.brush; }
    ObjectHandle selectedFont() const { return m_state.font; }
    int createdObjectCount() const;

    // State. saveState gives the new save level (1 for the first); restoreState takes a level
    // (above 0) or a count back from the top (below 0), and refuses a level that was not saved.
    int saveState();
    bool restoreState(int level);
    void setMapMode(std::uint32_t mode);
    void setMiterLimit(std::uint32_t limit);
    void setTextAlign(std::uint32_t flags);
    void setTextColour(Colour colour);
    void setBackgroundMode(std::uint32_t mode);
    void setBackgroundColour(Colour colour);
    void setPolyFillMode(std::uint32_t mode);
    void setWorldTransform(const XForm& transform);
    const XForm& worldTransform() const { return m_state.world; }
    PointL currentPosition() const { return m_state.position; }

    // Drawing.
    void moveTo(PointL point);
    void lineTo(PointL point);
    void polyBezierTo(std::span<const PointL> points);
    void polyline(std::span<const PointL> points);
    void polygon(std::span<const PointL> points);
    void ellipse(const RectL& box);
    void rectangle(const RectL& box);
    void pie(const RectL& box, PointL start, PointL end);
    void setPixel(PointL point, Colour colour);
    // One line of text at `point`, with the advances of the selected font.
    void textOut(PointL point, QStringView text);
    // Width and height of one line of text in the selected font.
    SizeL textExtent(QStringView text) const;
    const LogFont& selectedLogFont() const;

    // Paths. The path can be read back while it is being built and after it is ended.
    void beginPath();
    void endPath();
    void closeFigure();
    void abortPath();
    void strokePath();
    void fillPath();
    void strokeAndFillPath();
    void selectClipPath(std::uint32_t mode);
    bool isPathOpen() const { return m_pathOpen; }
    const std::vector<PathPoint>& path() const { return m_path; }

    // Clipping. selectClipRectangle replaces the clip region by one rectangle (device units);
    // removeClipping drops the clip region altogether.
    bool selectClipRectangle(const RectL& rectangle);
    void removeClipping();
    void intersectClipRectangle(const RectL& rectangle);

    // For playing one picture into another: a record copied as it is (its size must be a
    // whole number of words and match its size field), object slots for the copied
    // objects, and a drawn area the records themselves do not report.
    bool appendRecord(QByteArrayView record);
    std::optional<ObjectHandle> allocateObjectSlot();
    void releaseObjectSlot(ObjectHandle handle);
    void includeInBounds(const RectL& deviceRectangle);

    // Ends the recording: restores nothing, writes the end record and the header's counts
    // and bounds. Later calls give an invalid picture.
    Picture finish();

    static constexpr int MaximumObjects = 65535;

private:
    enum class ObjectKind : std::uint8_t { Free, Pen, Brush, Font, Other };
    struct ObjectSlot
    {
        ObjectKind kind = ObjectKind::Free;
        std::uint32_t penWidth = 0; // for bounds; 0 for a pen that draws nothing
        LogFont font;
    };
    struct State
    {
        ObjectHandle pen;
        ObjectHandle brush;
        ObjectHandle font;
        XForm world;
        PointL position;
        std::uint32_t textAlign = 0;
    };

    void append(char* record);
    void appendOwned(QByteArrayView record);
    std::optional<ObjectHandle> newSlot(ObjectKind kind);
    ObjectKind kindOf(ObjectHandle handle) const;
    std::uint32_t selectedPenWidth() const;
    void includePoints(std::span<const PointL> points, bool stroked);
    void includeBox(const RectL& box, bool stroked);
    RectL boundsOf(std::span<const PointL> points) const;
    void addPathPoint(PointL point, std::uint8_t type);
    void startFigureIfNeeded();
    void includePath(bool stroked);
    std::vector<PointL> pathPoints() const;
    RectL pathBounds() const;
    void endPathUse();

    ReferenceDevice m_device;
    QByteArray m_bytes;
    std::vector<RecordSpan> m_records; // after the header
    std::uint32_t m_recordCount = 0;
    std::vector<ObjectSlot> m_objects; // slot 0 is never used
    std::uint32_t m_highestSlot = 0;
    State m_state;
    std::vector<State> m_savedStates;
    std::optional<RectL> m_bounds;
    std::vector<PathPoint> m_path;
    bool m_pathOpen = false;
    bool m_figureOpen = false;
    bool m_finished = false;
};

} // namespace Emf
