#pragma once

#include <cstdint>

namespace Ormsey {

class Graph;
class MetaFile;

// Draws a graph's picture onto its drawing surface.
class GraphDrawing
{
public:
    GraphDrawing(Graph& graph, MetaFile& surface);

    // Mode 0 measures (it may only enlarge width and height); mode 1 draws for real.
    void DrawGraph(int mode, std::int32_t& width, std::int32_t& height);

private:
    Graph& m_graph;
    MetaFile& m_surface;
};

} // namespace Ormsey
