#pragma once

#include <QStringList>
#include <QTextStream>

// The quorbin-cli card verbs that drive the card window's document, and so its messages
// (quorbin-cli-graphics runs them; CardVerbs.h has the rest). `arguments` start at "cards":
//
//   cards add FILE.qnd NAME [LABEL=VALUE ...]   one card, each value typed into the field with
//                                               that label (case ignored) and the card saved
//                                               as the window saves it; a refused save prints
//                                               the window's message (one line), exits 1 and
//                                               leaves the file as it was
//   cards show FILE.qnd NAME                    the card as the Sprondle view shows it: a line
//                                               per field, its label ("Name" for the name), a
//                                               tab and the text shown (check boxes 1 or 0)
namespace Cli {

bool IsCardDocumentVerb(const QStringList& arguments);

int RunCardDocumentVerb(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Cli
