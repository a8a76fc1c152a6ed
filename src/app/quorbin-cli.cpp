// quorbin-cli: runs the verbs that need no graphics itself, with the Qt core library alone,
// and hands the others to quorbin-cli-graphics beside it. Loading the GUI libraries costs
// several times what a conversion does, and scripts call a conversion many times over.
#include "app/cli/CoreCommandLine.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

// Replaces this process with quorbin-cli-graphics from this program's own folder, keeping
// the arguments, the environment and the standard streams. Returns only on failure.
int runGraphicsProgram(char** argv)
{
    char self[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", self, sizeof self - 1);
    std::string program = length > 0 ? std::string(self, std::size_t(length)) : std::string();
    program = program.substr(0, program.rfind('/') + 1) + "quorbin-cli-graphics";
    argv[0] = program.data();
    ::execv(program.c_str(), argv);
    std::fprintf(
        stderr, "quorbin-cli: cannot start %s: %s\n", program.c_str(), std::strerror(errno));
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList words;
    for (int index = 1; index < std::min(argc, 3); ++index)
        words << QString::fromLocal8Bit(argv[index]);
    if (Cli::IsGraphicsCommand(words))
        return runGraphicsProgram(argv);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Quorbin"));
    QCoreApplication::setOrganizationName(QStringLiteral("Pellimore Soft"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = Cli::RunCoreCommandLine(QCoreApplication::arguments().mid(1), out, err);
    out.flush();
    err.flush();
    return status;
}
