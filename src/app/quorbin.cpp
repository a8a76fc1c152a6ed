// The suite: wires the frame, the document kinds and the card engine's compaction together.

#include "cards/CardCompaction.h"
#include "cards/ui/RegisterCardWindow.h"
#include "frame/DatabaseCompaction.h"
#include "frame/FrameSettings.h"
#include "frame/ui/GuardedApplication.h"
#include "frame/ui/LinkServer.h"
#include "frame/ui/QtPrompts.h"
#include "frame/ui/frmMDI.h"
#include "graph/ui/RegisterGraphWindow.h"
#include "platform/dao/DBEngine.h"
#include "sheet/ui/RegisterSheetWindow.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

// The shell starts the program with the documents' paths (or "/n", which asks for nothing);
// each arrives as an open command, as the running copy would receive it.
QStringList ExecuteStringsFromArguments(const QStringList& arguments)
{
    QStringList commands;
    for (qsizetype index = 1; index < arguments.size(); ++index) {
        const QString& argument = arguments[index];
        if (argument.compare(u"/n"_s, Qt::CaseInsensitive) == 0 || argument.isEmpty())
            continue;
        commands.append(u"[open("_s + QFileInfo(argument).absoluteFilePath() + u")]"_s);
    }
    return commands;
}

} // namespace

int main(int argc, char** argv)
{
    Frame::GuardedApplication application(argc, argv);
    QApplication::setApplicationName(u"Quorbin"_s);
    QApplication::setApplicationDisplayName(u"Quorbin"_s);
    QApplication::setOrganizationName(u"Pellimore Soft"_s);
    QApplication::setDesktopFileName(u"quorbin"_s);

    const QStringList executeStrings = ExecuteStringsFromArguments(QApplication::arguments());
    Frame::LinkServer linkServer;
    if (linkServer.startOrForward(Frame::LinkServer::DefaultName(), executeStrings.value(0))
        == Frame::LinkServer::Start::Forwarded) {
        // The running copy takes one command at a time.
        for (qsizetype index = 1; index < executeStrings.size(); ++index)
            Frame::LinkServer::send(Frame::LinkServer::DefaultName(), executeStrings[index]);
        return 0;
    }

    Frame::InitialiseFrame();
    Ormsey::RegisterGraphWindow();
    Tillane::RegisterSheetWindow();
    Bramlet::RegisterCardWindow();
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
    // After the event loop has started, so that the chooser is modal over a visible window;
    // documents named on the command line take the chooser's place.
    QTimer::singleShot(0, &mainWindow, [&mainWindow, executeStrings] {
        if (executeStrings.isEmpty())
            mainWindow.ShowNewFile();
        for (const QString& executeString : executeStrings)
            mainWindow.LinkExecute(executeString);
    });
    const int result = QApplication::exec();
    Frame::InstallPrompts(nullptr);
    return result;
}
