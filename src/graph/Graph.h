#pragma once

#include "platform/emf/Picture.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QObject>
#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace Ormsey {

class MetaFile;

// One entry of the legend, filled by the drawing: the text shown and the colour of its key.
struct LegendEntry
{
    QString text;
    std::int32_t colour = 0;
};

// The one graph model of the program: a table of text cells (column 0 categories or x values,
// columns 1..4 the values of up to four series), titles, labels, display options, statistics
// derived from the cells, and a picture of itself in an enhanced metafile. The graph window,
// the count window and the sheet all hold their graphs as Graph objects.
//
// Holders never ask for a redraw: setters mark the statistics or the picture stale, and the
// readers (hMF, NumberOfDataSeries, NoOfItems, XYPlot, GraphHasData) bring them up to date
// first. Cells are text exactly as typed; they count as numbers only through Runtime::Val.
// Indexes outside their ranges throw Runtime::Error 9 and change nothing.
class Graph : public QObject
{
    Q_OBJECT

public:
    static constexpr int RowCount = 256;
    static constexpr int ColumnCount = 5; // column 0 and the four series
    static constexpr int SeriesCount = 4;

    enum GraphTypes : std::int32_t { BarChart = 0, PieChart = 1, LineGraph = 2, Scattergram = 3 };
    enum BarTypes : std::int32_t { SolidBars = 0, BarLine = 1, Histogram = 2 };
    enum PieLabelTypes : std::int32_t {
        NoLabels = 0,
        Labels = 1,
        Percentages = 2,
        LabelsAndPercentages = 3
    };
    enum PointTypes : std::int32_t { Cross = 0, SinglePoint = 1, Circle = 2, NoPoint = 3 };

    // Runs InitialiseVariables and records one empty picture, so hMF is valid from the start.
    explicit Graph(QObject* parent = nullptr);
    ~Graph() override;

    // Setting a different type drops the 3D option unless the new type can be 3D.
    std::int32_t GraphType() const { return m_graphType; }
    void GraphType(std::int32_t value);
    // Setting true on a type that cannot be 3D stores false.
    bool Graph3D() const { return m_graph3D; }
    void Graph3D(bool value);
    // Bar and pie charts.
    bool CanBe3D() const { return m_graphType < LineGraph; }
    std::int32_t BarChartType() const { return m_barType; }
    void BarChartType(std::int32_t value);

    // The texts below are stored only when they differ without regard to case.
    QString GraphFont() const { return m_graphFont; }
    void GraphFont(const QString& value);
    QString GraphTitle() const { return m_graphTitle; }
    void GraphTitle(const QString& value);
    QString HorizontalAxisLabel() const { return m_axisLabels[0]; }
    void HorizontalAxisLabel(const QString& value);
    QString VerticalAxisLabel() const { return m_axisLabels[1]; }
    void VerticalAxisLabel(const QString& value);
    // Index 1..4.
    QString DataSeriesLabel(int index) const;
    void DataSeriesLabel(int index, const QString& value);

    // Row 0..255, column 0..4. Writing compares exactly (case counts).
    QString Data(int row, int column) const;
    void Data(int row, int column, const QString& value);

    // Always stored; the picture goes stale.
    bool DisplayLegend() const { return m_displayLegend; }
    void DisplayLegend(bool value);
    bool DisplayLineOfBestFit() const { return m_displayLineOfBestFit; }
    void DisplayLineOfBestFit(bool value);
    bool DisplayCorrelation() const { return m_displayCorrelation; }
    void DisplayCorrelation(bool value);

    // These readers recalculate stale statistics first, so they may raise PlotTypeChanged.
    bool GraphHasData();
    // Reads 1 whenever the data are x-y pairs. Writers keep it within 1..4.
    std::int32_t NumberOfDataSeries();
    void NumberOfDataSeries(std::int32_t value);
    std::int32_t NoOfItems();
    bool XYPlot();

    // The current picture, redrawn first when stale. It stays owned by the graph.
    const Emf::Picture* hMF();
    // The logical size of the current picture, as the owned MetaFile holds it.
    std::int32_t Width() const;
    std::int32_t Height() const;

    // The graph file, as GraphFile reads and writes it (see there).
    QString SaveGraphData(const QString& fileName) const;
    void LoadGraphData(const QString& fileName);
    // The same text without a file, for the sheet file that embeds it and for tests.
    QByteArray GraphDataBytes() const;
    void LoadGraphDataBytes(QByteArrayView bytes);

    // Plays the current picture into a new enhanced metafile file of the same size. Returns
    // the empty string on success, else why the file was not written.
    QString ExportGraph(const QString& fileName);
    // The current picture played into a new picture of the same size, for the clipboard or a
    // drag; the caller owns it.
    std::unique_ptr<Emf::Picture> CopyPicture();

    // Column 0..4 sorts ascending by that column (numbers by value, else text without case),
    // leaving empty cells in place; -1 restores the order of entry; anything else does nothing.
    void SortGraph(int column);
    void InitialiseVariables();
    // Empties the cells and the sort order; the options stay.
    void EraseData();
    void RecalculateStatistics();
    // Measures, then draws the picture at the measured size.
    void RedrawMetafile();
    // Marks the picture stale and raises RedrawGraph: for the options dialogs and tools.
    void RequestRedraw();

    // Options without accessors: whoever sets them (the options dialogs) then calls
    // RequestRedraw, since nothing else marks the picture stale.
    bool UseColour = false;
    bool AutoScale = false;
    std::int32_t PieLabels = NoLabels;
    std::int32_t PointType = Cross;
    std::int16_t PieStartingAngle = 0; // degrees
    std::int16_t PieElevation3D = 0; // degrees
    std::int16_t PieRotation3D = 0; // degrees; kept in the file, not drawn
    bool JoinPoints = false; // kept in the file; line graphs always join their points
    std::int32_t BackgroundColour3D = 0; // 0x00BBGGRR
    std::int32_t HistogramColour = 0; // 0x00BBGGRR
    // Index 0 the x axis of numeric x-y data, index 1 the value axis; used when not AutoScale.
    std::array<double, 2> AxisMinimum {};
    std::array<double, 2> AxisMaximum {};
    // The row each row had before any sort.
    std::array<std::int16_t, RowCount> OriginalRowOrder {};
    // Some value ever entered is not a whole number; only new cells and loading set it.
    bool HasNonIntegerData() const { return m_hasNonIntegerData; }
    // The statistics or the picture must be brought up to date before they are read. Only
    // the setters mark them, and only RecalculateStatistics and RedrawMetafile clear them.
    bool StatisticsStale() const { return m_statisticsStale; }
    bool PictureStale() const { return m_pictureStale; }

    // Statistics, valid after RecalculateStatistics. After it, entry 1 of the ranges holds the
    // range of all four series together.
    std::array<double, ColumnCount> ColumnMinimum {};
    std::array<double, ColumnCount> ColumnMaximum {};
    // y = slope x + intercept of series 1 against column 0.
    double RegressionSlope = 0;
    double RegressionIntercept = 0;
    double CorrelationCoefficient = 0;
    bool RegressionValid = false;

    // Filled by the drawing.
    std::vector<LegendEntry> LegendEntries;

signals:
    void RedrawGraph();
    void PlotTypeChanged();

private:
    friend class GraphFile;

    // After a change the statistics and the picture no longer match the fields.
    void MarkStale();

    std::int32_t m_graphType = BarChart;
    std::int32_t m_barType = SolidBars;
    bool m_graph3D = false;
    bool m_displayLegend = false;
    bool m_displayLineOfBestFit = false;
    bool m_displayCorrelation = false;
    QString m_graphFont;
    QString m_graphTitle;
    std::array<QString, 2> m_axisLabels;
    std::array<QString, SeriesCount> m_seriesLabels;
    std::int32_t m_numberOfDataSeries = 1;
    std::array<std::array<QString, ColumnCount>, RowCount> m_data;

    bool m_hasNonIntegerData = false;
    bool m_statisticsStale = true;
    bool m_pictureStale = true;
    std::int32_t m_items = 0;
    bool m_xyPlot = false;

    std::unique_ptr<MetaFile> m_metaFile;
};

} // namespace Ormsey
