#pragma once

#include <QStringList>
#include <QTextStream>

// The quorbin-cli verb on graphs. `arguments` start at the verb:
//
//   graph convert IN OUT [--type bar|pie|line|scatter] [--bar solid|barline|histogram] [--3d]
//                 [--title TEXT] [--no-colour] [--legend] [--width PX]
//                 [--format png|emf|svg|pdf|qnp]
//
// IN is a graph file (.qnp) or comma-separated text (.csv, read by ImportGraphCsv); "-" is
// standard input, a graph file when it starts with the graph file's heading, else text. OUT
// is .qnp, .emf, .png, .svg or .pdf, chosen by its extension unless --format names the kind;
// "-" is standard output, PNG unless --format says otherwise. Pictures are drawn at the
// graph's own size, PNG at --width pixels wide when given. What the text held beyond the
// graph's room is told on `err`, and the conversion goes on.
namespace Cli {

// Whether the arguments name this verb ("graph").
bool IsGraphVerb(const QStringList& arguments);

int RunGraphVerb(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Cli
