#pragma once

#include <QStringList>
#include <QTextStream>

// quorbin-cli's one entry point: picks the verb module for the first argument and runs it.
// `arguments` are the program's arguments without the program name. Kept out of main() so
// that tests run whole command lines without starting a process.
namespace Cli {

// The text --help prints (and a missing or unknown verb points to).
QString HelpText();

int RunCommandLine(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace Cli
