#include "app/cli/CommandLine.h"
#include "frame/FrameSettings.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTextStream>
#include <cstdio>

int main(int argc, char** argv)
{
    // Pictures and text measuring need a GUI application, but never a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Quorbin"));
    QCoreApplication::setOrganizationName(QStringLiteral("Pellimore Soft"));
    // The colour table, currency symbol and temporary folder, exactly as the suite has them.
    Frame::InitialiseFrame();
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = Cli::RunCommandLine(QCoreApplication::arguments().mid(1), out, err);
    out.flush();
    err.flush();
    return status;
}
