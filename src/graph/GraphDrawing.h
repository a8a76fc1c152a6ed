#pragma once

#include "graph/GraphScale.h"

#include <QString>
#include <cstdint>
#include <vector>

namespace Ormsey {

class Graph;
class MetaFile;

// Draws a graph's whole picture onto its drawing surface: background panel, axes and their
// scales, the bars, pies or points, labels, legend and title. The graph's RedrawMetafile runs
// it twice on fresh objects: a measuring pass (mode 0) that only enlarges the wanted picture
// size, then the final pass (mode 1) at that size. The layout of a pass lives here; the graph
// keeps only its legend entries, rebuilt every pass. Units are picture pixels, y downward.
class GraphDrawing
{
public:
    GraphDrawing(Graph& graph, MetaFile& surface);

    // Mode 0 measures (it may only enlarge width and height); mode 1 draws for real.
    void DrawGraph(int mode, std::int32_t& width, std::int32_t& height);

    // The face every text of the graph's pictures is drawn in: the graph font, or Arial when
    // that is empty or longer than the 31 characters a metafile font holds (a font dialog
    // offers such names, and the surface refuses them).
    static QString FaceName(const Graph& graph);

    // Layout of the page, as the last pass left it.
    std::int32_t PlotLeft() const { return m_plotLeft; }
    std::int32_t PlotRight() const { return m_plotRight; }
    std::int32_t PlotTop() const { return m_plotTop; }
    std::int32_t PlotBottom() const { return m_plotBottom; }
    std::int32_t ZeroY() const { return m_zeroY; }
    const GraphScale& ValueScale() const { return m_valueScale; }

private:
    struct PieSector
    {
        QString category;
        double value = 0; // the size of the cell's value
        std::int32_t colour = 0;
    };

    struct BarLayout
    {
        std::int32_t width = 0;
        std::int32_t seriesGap = 0;
        std::int32_t categoryGap = 0;
        std::int32_t margin = 0;
        std::int32_t pitch = 0;
    };

    void StartPass();
    void SetFont(double points, std::int32_t orientation = 0, bool bold = false);

    BarLayout BarGeometry(std::int32_t items, std::int32_t series) const;
    void DrawBarChart();
    void DrawPieChart();
    std::vector<PieSector> PieSectors(int series) const;
    void DrawLineGraph();

    void DrawAxis(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, int intervals,
        std::int32_t tickX, std::int32_t tickY);
    void DrawValueAxis();
    void DrawAxisLabels();
    void DrawBackground(std::int32_t left, std::int32_t right, std::int32_t bottom,
        std::int32_t top, int intervals);
    void DrawBar(std::int32_t x, std::int32_t barWidth, double value, std::int32_t colour);
    void DrawMarker(std::int32_t x, std::int32_t y, std::int32_t colour);
    void DrawLineOfBestFit(std::int32_t colour);
    void CategoryLabel(const QString& text, double x, double size);

    void AddLegendEntry(const QString& text, std::int32_t colour);
    void MeasureLegend(std::int32_t& legendWidth, std::int32_t& legendHeight);
    void DrawLegend();
    void PlaceLegend();
    void DrawTitle();

    // The colour whose name equals the category (case included), else the series colour
    // `index` (taken modulo `cycle`).
    std::int32_t CategoryColour(const QString& category, int index, int cycle) const;
    static std::int32_t SeriesColour(int index);

    Graph& m_graph;
    MetaFile& m_surface;
    int m_mode = 0;
    std::int32_t* m_width = nullptr;
    std::int32_t* m_height = nullptr;
    bool m_threeD = false;

    std::int32_t m_plotBottom = 340;
    std::int32_t m_plotTop = 120;
    std::int32_t m_plotLeft = 80;
    std::int32_t m_plotRight = 380;
    std::int32_t m_plotHeight = 220;
    std::int32_t m_plotWidth = 300;
    std::int32_t m_legendLeft = 0;
    std::int32_t m_legendTop = 0;

    // The ranges to scale, before any rounding: index 0 the x axis, 1 the value axis.
    double m_minimum[2] {};
    double m_maximum[2] {};
    GraphScale m_valueScale;
    GraphScale m_xScale;
    std::int32_t m_zeroY = 340;
    std::int32_t m_xOrigin = 80;
    bool m_xy = false;
};

} // namespace Ormsey
