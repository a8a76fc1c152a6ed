#pragma once

#include <QStringList>
#include <QTextStream>

// The quorbin-cli verbs on card databases. `arguments` start at the verb "cards":
//
//   cards new FILE.qnd [--view 2|3|4] [--labels L1,L2,...]
//                                          a new, empty card file (view 3 unless given);
//                                          the labels name the six starting fields in order
//   cards import FILE.qnd IN.csv           adds a card per record (first row labels, first
//                                          value the name, further values by field label);
//                                          prints how many cards were added; IN "-" reads
//                                          comma-separated text from standard input
//   cards add FILE.qnd NAME [LABEL=VALUE ...]
//                                          adds one card as the card window would: each
//                                          value typed into the field with that label (case
//                                          ignored) and the card saved; a refused save prints
//                                          the window's message (one line) and exits 1
//   cards show FILE.qnd NAME               the card as the Sprondle view shows it: a line per
//                                          field, its label ("Name" for the name), a tab and
//                                          the text shown (check boxes 1 or 0)
//   cards export FILE.qnd OUT.csv [--view 2|3|4] [--where CONDITION] [--fields L1,L2,...]
//                                          the card set as comma-separated text, every item
//                                          of the view (the file's unless given) or the
//                                          items named, by their texts; OUT "-" writes to
//                                          standard output
//   cards find FILE.qnd CONDITION          the names of the cards the condition selects, one
//                                          a line, in card-set order
//   cards info FILE.qnd                    "Version", "Cards", then a line per column: name,
//                                          label, type code, separated by tabs
//   cards compact FILE.qnd                 compacts the file in place
//
// A failure is one line on `err`, "Error <number>: <text>" with the engine's number, and
// exit status 1; nothing already in the file is lost. Usage errors exit with 64.
namespace Cli {

// Whether the arguments name these verbs ("cards").
bool IsCardVerb(const QStringList& arguments);

int RunCardVerb(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Cli
