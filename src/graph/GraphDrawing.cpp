#include "graph/GraphDrawing.h"

#include "graph/Graph.h"
#include "graph/MetaFile.h"

namespace Ormsey {

GraphDrawing::GraphDrawing(Graph& graph, MetaFile& surface)
    : m_graph(graph)
    , m_surface(surface)
{ }

void GraphDrawing::DrawGraph(int mode, std::int32_t& width, std::int32_t& height)
{
    (void)mode;
    (void)width;
    (void)height;
}

} // namespace Ormsey
