#pragma once

#include "platform/emf/Picture.h"

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QStringList>
#include <memory>

namespace Ormsey {

class Graph;

// The data table printed beside or below a graph: headings and one row per grid row that
// holds data. Column 0 is the categories (or x values) headed by the horizontal axis label,
// column 1 the first series headed by the vertical axis label; further series in use follow
// under their series labels, so several series print whole.
struct PrintTable
{
    QStringList Headings;
    QList<QStringList> Rows;
};

PrintTable PrintTableOf(Graph& graph, const QString& horizontalLabel, const QString& verticalLabel);

// A finished print picture and its size in reference-device pixels.
struct PrintPicture
{
    std::unique_ptr<Emf::Picture> Picture;
    int Width = 0;
    int Height = 0;
};

// The page as it is printed: the graph's picture at its own size in the top left corner and,
// with `printData`, the table below it (portrait: the height doubled, the table from the
// graph's height + 20) or to its right (landscape: the width doubled). The table is drawn in
// the face of the graph's picture (GraphDrawing::FaceName) at the smaller of 24 points and
// the graph's height per item, headings bold, with ruling lines between the columns and
// under the headings. When the table is longer than its half of the page, the page grows so
// that every item is listed.
PrintPicture BuildPrintPicture(
    Graph& graph, const PrintTable& table, bool printData, bool landscape);

} // namespace Ormsey
