#pragma once

#include <QStringList>
#include <QTextStream>

// The quorbin-cli verb on graphs, for teachers' batch work and for testing whole paths
// without a display. `arguments` start at the verb:
//
//   graph convert IN OUT [--type bar|pie|line|scatter] [--bar solid|barline|histogram] [--3d]
//                 [--title TEXT] [--no-colour] [--legend] [--width PX]
//
// IN is a graph file (.qnp) or comma-separated text (.csv): the first column holds the
// categories or x values, up to four further columns the series; a first row whose series
// cells are not all numbers is a heading row (the horizontal axis label, then the series
// labels). OUT is .qnp, .emf, .png, .svg or .pdf, chosen by its extension; pictures are
// drawn at the graph's own size, PNG at --width pixels wide when given.
//
// Messages for the user go to `err`, one per line.
namespace Ormsey {

enum GraphCommandStatus {
    GraphCommandFailed = 1, // the input could not be read or the output not written
    GraphUsageError = 64,
};

// Whether the arguments name this verb ("graph").
bool IsGraphCommand(const QStringList& arguments);

int RunGraphCommand(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Ormsey
