// The suite: wires the frame, the document kinds and the card engine's compaction together.

#include "cards/CardCompaction.h"
#include "frame/DatabaseCompaction.h"
#include "frame/FrameSettings.h"
#include "frame/ui/LinkServer.h"
#include "frame/ui/QtPrompts.h"
#include "frame/ui/frmMDI.h"
#include "graph/ui/RegisterGraphWindow.h"
#include "platform/dao/DBEngine.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

// The shell starts the program with the document's path (or "/n", which asks for nothing);
// it arrives as the open command, as the running copy would receive it.
QString ExecuteStringFromArguments(const QStringList& arguments)
{
    for (qsizetype index = 1; index < arguments.size(); ++index) {
        const QString& argument = arguments[index];
        if (argument.compare(u"/n"_s, Qt::CaseInsensitive) == 0 || argument.isEmpty())
            continue;
        return u"[open("_s + QFileInfo(argument).absoluteFilePath() + u")]"_s;
    }
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Quorbin"_s);
    QApplication::setApplicationDisplayName(u"Quorbin"_s);
    QApplication::setOrganizationName(u"Pellimore Soft"_s);
    QApplication::setDesktopFileName(u"quorbin"_s);

    const QString executeString = ExecuteStringFromArguments(QApplication::arguments());
    Frame::LinkServer linkServer;
    if (linkServer.startOrForward(Frame::LinkServer::DefaultName(), executeString)
        == Frame::LinkServer::Start::Forwarded)
        return 0;

    Frame::InitialiseFrame();
    Ormsey::RegisterGraphWindow();
    Frame::RegisterDatabaseCompaction([](const QString& fileName, const QString& workFile) {
        Dao::DBEngine engine;
        Bramlet::CompactCardDatabase(engine, fileName, workFile);
    });

    Frame::frmMDI mainWindow;
    Frame::QtPrompts prompts(&mainWindow);
    Frame::InstallPrompts(&prompts);
    QObject::connect(&mainWindow, &Frame::frmMDI::Unloaded, &application, &QApplication::quit,
        Qt::QueuedConnection);
    QObject::connect(&linkServer, &Frame::LinkServer::executeReceived, &mainWindow,
        [&mainWindow](const QString& command) {
            mainWindow.showNormal();
            mainWindow.raise();
            mainWindow.activateWindow();
            mainWindow.LinkExecute(command);
        });

    mainWindow.resize(1024, 720);
    mainWindow.show();
    // After the event loop has started, so that the chooser is modal over a visible window; a
    // document named on the command line takes the chooser's place.
    QTimer::singleShot(0, &mainWindow, [&mainWindow, executeString] {
        if (executeString.isEmpty())
            mainWindow.ShowNewFile();
        else
            mainWindow.LinkExecute(executeString);
    });
    const int result = QApplication::exec();
    Frame::InstallPrompts(nullptr);
    return result;
}
