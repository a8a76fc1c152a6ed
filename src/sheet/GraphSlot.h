#pragma once

#include <QByteArray>
#include <QtGlobal>

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
    // The graph's own file text (the graph file format), exactly as the sheet file carried it
    // or as the graph last wrote it. The Graph model object attaches here: it will load from
    // these bytes when the sheet is read and write them back before the sheet is saved. Until
    // then the bytes pass through untouched, so sheets with graphs round-trip byte for byte.
    QByteArray GraphData;
    GraphBounds Bounds;
    CellRange Categories;
    CellRange Data;
    bool FirstRowLabels = false;
    // Count or group the categories column instead of plotting the data column.
    bool CountAndGroup = false;
    qint32 NumberOfGroups = 0;

    friend bool operator==(const GraphSlot&, const GraphSlot&) = default;
};

} // namespace Tillane
