#pragma once

#include <QString>
#include <QStringView>

namespace Ormsey {

class Graph;

// The export dialog's filter: the enhanced metafile pair first, then PNG, SVG and PDF, for
// pupils whose word processor or web page takes no metafiles.
QString ExportFilter();

// Writes the graph's picture to `path` as the type `kind` names ("png", "svg", "pdf" or
// "emf"), or when it is empty as the type its extension names, in any case: .png, .svg or
// .pdf are the metafile played back at the picture's own size; any other ending gets the
// enhanced metafile itself ("-" is standard output). A PNG is `pngWidth` pixels wide when that is above 0, else
// `pngScale` times the picture's width (the graph window exports twice the size so that the
// picture prints cleanly); its height follows in proportion. The file goes through a
// temporary file, so a failure leaves no half-written file and keeps an older one. Returns
// the empty string on success, else why the file was not written.
QString ExportPictureFile(Graph& graph, const QString& path, int pngWidth = 0, int pngScale = 2,
    QStringView kind = {});

} // namespace Ormsey
