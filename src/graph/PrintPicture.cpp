#include "graph/PrintPicture.h"

#include "graph/Graph.h"
#include "graph/GraphDrawing.h"
#include "graph/MetaFile.h"
#include "platform/emf/FitPicture.h"
#include "platform/emf/Player.h"

#include <algorithm>

namespace Ormsey {

namespace {

constexpr int tableGap = 20; // between the graph and its table
constexpr int cellPadding = 4;
constexpr double largestTableFont = 24;

bool RowHoldsData(const QStringList& row)
{
    return std::any_of(
        row.cbegin(), row.cend(), [](const QString& cell) { return !cell.trimmed().isEmpty(); });
}

} // namespace

PrintTable PrintTableOf(Graph& graph, const QString& horizontalLabel, const QString& verticalLabel)
{
    PrintTable table;
    const int series = graph.NumberOfDataSeries();
    table.Headings = QStringList { horizontalLabel, verticalLabel };
    for (int index = 2; index <= series; ++index)
        table.Headings.append(graph.DataSeriesLabel(index));
    for (int row = 0; row < Graph::RowCount; ++row) {
        QStringList cells;
        for (int column = 0; column <= series; ++column)
            cells.append(graph.Data(row, column));
        if (RowHoldsData(cells))
            table.Rows.append(cells);
    }
    return table;
}

PrintPicture BuildPrintPicture(
    Graph& graph, const PrintTable& table, bool printData, bool landscape)
{
    const Emf::Picture* graphPicture = graph.hMF();
    const int graphWidth = graph.Width();
    const int graphHeight = graph.Height();
    const int items = graph.NoOfItems();

    int width = graphWidth;
    int height = graphHeight;
    if (printData) {
        if (landscape)
            width *= 2;
        else
            height *= 2;
    }

    // A first pass measures the table so the page can grow to hold every row; the second
    // records the page.
    const double fontSize
        = items > 0 ? std::min(largestTableFont, double(graphHeight / items)) : largestTableFont;
    const int tableLeft = landscape ? graphWidth + tableGap : tableGap;
    const int tableTop = landscape ? tableGap : graphHeight + tableGap;

    MetaFile surface;
    QList<int> columnWidths;
    int rowHeight = 0;
    for (int pass = printData ? 0 : 1; pass < 2; ++pass) {
        surface.Width = width;
        surface.Height = height;
        surface.OpenMF();
        if (pass == 1 && graphPicture != nullptr)
            Emf::PlayPicture(*graphPicture, *surface.hDC(), { 0, 0, graphWidth, graphHeight });
        if (!printData)
            break;
        surface.FontName(GraphDrawing::FaceName(graph));
        surface.FontSize(fontSize);
        if (pass == 0) {
            columnWidths.fill(0, table.Headings.size());
            surface.FontBold(true);
            for (qsizetype column = 0; column < table.Headings.size(); ++column) {
                columnWidths[column] = surface.GetTextWidth(table.Headings[column]);
                rowHeight = std::max(rowHeight, surface.GetTextHeight(table.Headings[column]));
            }
            surface.FontBold(false);
            for (const QStringList& row : table.Rows) {
                for (qsizetype column = 0; column < row.size() && column < columnWidths.size();
                     ++column) {
                    columnWidths[column]
                        = std::max(columnWidths[column], surface.GetTextWidth(row[column]));
                    rowHeight = std::max(rowHeight, surface.GetTextHeight(row[column]));
                }
            }
            rowHeight += cellPadding;
            int tableWidth = 0;
            for (const int columnWidth : columnWidths)
                tableWidth += columnWidth + 2 * cellPadding;
            const int tableBottom = tableTop + rowHeight * int(table.Rows.size() + 1);
            width = std::max(width, tableLeft + tableWidth + tableGap);
            height = std::max(height, tableBottom + tableGap);
            continue;
        }

        const int tableBottom = tableTop + rowHeight * int(table.Rows.size() + 1);
        int x = tableLeft;
        surface.PenStyle(0);
        surface.PenColour(0);
        surface.PenWidth(1);
        for (qsizetype column = 0; column < columnWidths.size(); ++column) {
            const int left = x + cellPadding;
            surface.FontBold(true);
            surface.PaintTextMF(table.Headings[column], left, tableTop, 0, 0, 0);
            surface.FontBold(false);
            int y = tableTop + rowHeight;
            for (const QStringList& row : table.Rows) {
                if (column < row.size())
                    surface.PaintTextMF(row[column], left, y, 0, 0, 0);
                y += rowHeight;
            }
            x += columnWidths[column] + 2 * cellPadding;
            if (column + 1 < columnWidths.size())
                surface.LineMF(x, tableTop, x, tableBottom);
        }
        surface.LineMF(tableLeft, tableTop + rowHeight, x, tableTop + rowHeight);
    }
    surface.CloseMF();
    return { surface.ReleaseMetaFile(), width, height };
}

} // namespace Ormsey
