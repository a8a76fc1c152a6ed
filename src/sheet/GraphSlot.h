#pragma once

#include <QtGlobal>
#include <memory>

namespace Ormsey {
class Graph;
}

namespace Tillane {

inline constexpr int GraphSlotCount = 4;

// Position of a graph's picture inside the grid container, in twips.
struct GraphBounds
{
    qint32 Left = 0;
    qint32 Top = 0;
    qint32 Right = 0;
    qint32 Bottom = 0;

    friend bool operator==(const GraphBounds&, const GraphBounds&) = default;
};

// A block of cells; a graph's ranges are one column wide.
struct CellRange
{
    qint16 TopRow = 0;
    qint16 LeftColumn = 0;
    qint16 BottomRow = 0;
    qint16 RightColumn = 0;

    friend bool operator==(const CellRange&, const CellRange&) = default;
};

// One of the sheet's four graphs (slot numbers 1-4).
struct GraphSlot
{
    bool InUse = false;
    // The graph itself: read from the graph text the sheet file carries, and asked for its
    // text again when the sheet is saved. Shared, so that a copy of the slot shows the same
    // graph; empty for a slot not in use.
    std::shared_ptr<Ormsey::Graph> Graph;
    GraphBounds Bounds;
    CellRange Categories;
    CellRange Data;
    bool FirstRowLabels = false;
    // Count or group the categories column instead of plotting the data column.
    bool CountAndGroup = false;
    qint32 NumberOfGroups = 0;

    // Graphs compare by what they would write, so a slot read back equals the one written.
    friend bool operator==(const GraphSlot& left, const GraphSlot& right);
};

} // namespace Tillane
