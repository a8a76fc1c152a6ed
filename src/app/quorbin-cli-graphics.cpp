// quorbin-cli-graphics: the quorbin-cli verbs whose libraries draw (graph, sheet, eval).
// quorbin-cli hands them over with the same arguments and standard streams.
#include "app/cli/CommandLine.h"
#include "frame/FrameSettings.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTextStream>
#include <cstdio>
#include <memory>

namespace {

QtMessageHandler g_messages = nullptr;

// Without a desktop session (cron, CI) Qt says on every start that it made up a runtime
// folder: true, but no concern of a batch tool, and a tool says nothing on success.
void quietAboutTheRuntimeFolder(
    QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    g_messages(type, context, message);
}

std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    if (argc < 2 || !Cli::NeedsGuiApplication(QString::fromLocal8Bit(argv[1])))
        return std::make_unique<QCoreApplication>(argc, argv);
    // Pictures and text measuring need a GUI application, but never a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    g_messages = qInstallMessageHandler(quietAboutTheRuntimeFolder);
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(g_messages);
    return application;
}

} // namespace

int main(int argc, char** argv)
{
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
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
