#pragma once

#include <QString>

namespace Ormsey {

class Graph;

// The export dialog's filter: the enhanced metafile pair first, then PNG, SVG and PDF, for
// pupils whose word processor or web page takes no metafiles.
QString ExportFilter();

// Writes the graph's picture to `path` as the file type its extension names (emf, png, svg
// or pdf, any case; any other extension writes the metafile), through a temporary file so a
// failure leaves no half-written file. PNG is rendered at twice the graph's size so that it
// prints cleanly. Returns the empty string on success, else why the file was not written.
QString ExportPictureFile(Graph& graph, const QString& path);

} // namespace Ormsey
