#include "sheet/GraphSlot.h"

#include "graph/Graph.h"

namespace Tillane {

bool operator==(const GraphSlot& left, const GraphSlot& right)
{
    const auto text = [](const GraphSlot& slot) {
        return slot.Graph ? slot.Graph->GraphDataBytes() : QByteArray();
    };
    return left.InUse == right.InUse && left.Bounds == right.Bounds
        && left.Categories == right.Categories && left.Data == right.Data
        && left.FirstRowLabels == right.FirstRowLabels && left.CountAndGroup == right.CountAndGroup
        && left.NumberOfGroups == right.NumberOfGroups && text(left) == text(right);
}

} // namespace Tillane
