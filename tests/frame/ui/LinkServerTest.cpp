#include "frame/ui/LinkServer.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QUuid>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::LinkServer;

namespace {

// A socket of its own for every test, so that tests and a running program never meet.
QString UniqueName()
{
    return u"quorbin-test-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

TEST(LinkServer, SecondCopyHandsItsCommandToTheFirst)
{
    const QString name = UniqueName();
    LinkServer first;
    ASSERT_EQ(first.startOrForward(name, QString()), LinkServer::Start::Listening);
    QSignalSpy received(&first, &LinkServer::executeReceived);

    LinkServer second;
    const QString command = u"[open(/home/class/Pets and plants.qnd)]"_s;
    EXPECT_EQ(second.startOrForward(name, command), LinkServer::Start::Forwarded);
    EXPECT_FALSE(second.isListening());

    ASSERT_TRUE(received.wait(5000));
    ASSERT_EQ(received.count(), 1);
    EXPECT_EQ(received[0][0].toString(), command);
    // A copy started with nothing to open forwards nothing and runs on its own.
    LinkServer third;
    EXPECT_EQ(third.startOrForward(name, QString()), LinkServer::Start::Alone);
}

TEST(LinkServer, SocketLeftByACrashedCopyIsReplaced)
{
    const QString name = UniqueName();
    QFile leftover(QDir(QDir::tempPath()).filePath(name));
    ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
    leftover.close();
    LinkServer server;
    EXPECT_EQ(server.startOrForward(name, u"[open(/tmp/A.qnd)]"_s), LinkServer::Start::Listening);
    EXPECT_TRUE(server.isListening());
}

TEST(LinkServer, SendWithoutRunningCopyFails)
{
    EXPECT_FALSE(LinkServer::send(UniqueName(), u"[open(/tmp/A.qnd)]"_s, 500));
}

} // namespace
