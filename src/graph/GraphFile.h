#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace Ormsey {

class Graph;

// The graph file (.qnp): one profile section "[Ormsey Data File]" of "Key = value" lines,
// CRLF, written in full in a fixed order; rows as "RowN = "a","b"" with their position kept.
// The sheet file embeds the same text for each of its graphs.
//
// Reading follows the platform profile reader's rules (keys without case, blanks trimmed,
// outer quotes dropped, values cut to 254 characters), so a file missing keys or the whole
// section still loads with the defaults of each key. It stores fields as read, bypassing the
// setters' checks (a 3D pie stays 3D, a title differing only in case replaces the old one),
// hence its friendship with Graph.
class GraphFile
{
public:
    // The file's text for the graph as it is, UTF-8.
    static QByteArray Bytes(const Graph& graph);
    // Throws Runtime::Error 9 for a row of more than five fields and Error 6 for a number
    // too large, keeping what was read before it.
    static void Read(Graph& graph, QByteArrayView bytes);

    // Through a temporary file, so a failure keeps the previous file. Returns the empty
    // string on success, else why the file was not saved.
    static QString Save(const Graph& graph, const QString& fileName);
    // A file that cannot be opened reads as an empty one.
    static void Load(Graph& graph, const QString& fileName);
};

} // namespace Ormsey
