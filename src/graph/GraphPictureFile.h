#pragma once

#include <QString>
#include <QStringView>

namespace Ormsey {

class Graph;

// Writes the graph's picture to `path` as the type `kind` names ("png", "svg", "pdf" or "emf"),
// or when it is empty as the type the path's extension names, in any case: .png, .svg or .pdf
// are the metafile played back at the picture's own size (a PNG `pngWidth` pixels wide when
// that is above 0, its height in proportion); any other kind gets the enhanced metafile
// itself. The file goes through SafeFileWriter ("-" is standard output), so a failure leaves
// no half-written file and keeps an older one. Returns the empty string on success, else why
// the file was not written.
QString WriteGraphPicture(
    Graph& graph, const QString& path, int pngWidth = 0, QStringView kind = {});

} // namespace Ormsey
