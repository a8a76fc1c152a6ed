#include "graph/ui/PictureExport.h"

#include "graph/Graph.h"
#include "graph/GraphPictureFile.h"
#include "resources/StringTable.h"

namespace Ormsey {

namespace {

constexpr int emfFilterText = 581;
// The further pictures a pupil's word processor or web page takes when it takes no metafile.
constexpr int pictureFilterTexts[] = { 585, 586, 587 };
// PNG files are rendered at twice the graph's size so that they print cleanly.
constexpr int pngScale = 2;

} // namespace

QString ExportFilter()
{
    QString filter = GetResString(emfFilterText);
    for (const int text : pictureFilterTexts)
        filter += u'|' + GetResString(text);
    return filter;
}

QString ExportPictureFile(Graph& graph, const QString& path)
{
    return WriteGraphPicture(graph, path, graph.Width() * pngScale);
}

} // namespace Ormsey
