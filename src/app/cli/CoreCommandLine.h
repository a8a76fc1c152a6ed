#pragma once

#include <QStringList>
#include <QStringView>
#include <QTextStream>

// The verbs of quorbin-cli that need no graphics libraries: the conversions, the card
// database verbs, --help and the answers to a missing or unknown verb. quorbin-cli runs them
// itself, with the Qt core library alone, and hands the graphics verbs to
// quorbin-cli-graphics (CommandLine.h), so that a conversion starts in a few milliseconds.
namespace Cli {

// The text --help prints (and a missing or unknown verb points to).
QString HelpText();

// Whether the command is one that quorbin-cli-graphics runs: graph, sheet and eval (whose
// libraries draw graphs, so load the graphics libraries), and cards add and cards show (which
// drive the card window's document). `arguments` are the program's, without its name.
bool IsGraphicsCommand(const QStringList& arguments);

// Runs a command line of the core verbs; a graphics verb counts as unknown here.
// `arguments` are the program's arguments without the program name.
int RunCoreCommandLine(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Cli
