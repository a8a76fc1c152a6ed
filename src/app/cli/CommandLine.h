#pragma once

#include <QStringList>
#include <QStringView>
#include <QTextStream>

// quorbin-cli's whole command line: picks the verb module for the first argument and runs
// it. `arguments` are the program's arguments without the program name. Kept out of main() so
// that tests run whole command lines without starting a process.
namespace Cli {

int RunCommandLine(const QStringList& arguments, QTextStream& out, QTextStream& err);

// Whether the verb draws or measures text, and so needs a GUI application (offscreen) rather
// than a core one: the graph verbs, and the sheet verbs, whose files hold graphs.
bool NeedsGuiApplication(QStringView verb);

} // namespace Cli
