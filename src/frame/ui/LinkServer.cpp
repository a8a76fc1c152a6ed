#include "frame/ui/LinkServer.h"

#include <QLocalSocket>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

LinkServer::LinkServer(QObject* parent)
    : QObject(parent)
{
    connect(&m_server, &QLocalServer::newConnection, this, &LinkServer::acceptConnections);
}

QString LinkServer::DefaultName()
{
    return u"quorbin-"_s + QString::number(getuid());
}

bool LinkServer::listen(const QString& name)
{
    // Only the user may talk to the program: the command opens files in their name.
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    return m_server.listen(name);
}

LinkServer::Start LinkServer::startOrForward(const QString& name, const QString& executeString)
{
    // Listening would quietly take the name over from a running copy, so ask first.
    QLocalSocket probe;
    probe.connectToServer(name);
    if (probe.waitForConnected(1000)) {
        probe.disconnectFromServer();
        if (executeString.isEmpty())
            return Start::Alone;
        return send(name, executeString) ? Start::Forwarded : Start::Alone;
    }
    // Nobody answers: any socket there is a leftover of a copy that did not end cleanly.
    QLocalServer::removeServer(name);
    return listen(name) ? Start::Listening : Start::Alone;
}

bool LinkServer::send(const QString& name, const QString& executeString, int timeoutMs)
{
    QLocalSocket socket;
    socket.connectToServer(name);
    if (!socket.waitForConnected(timeoutMs))
        return false;
    socket.write(executeString.toUtf8());
    if (!socket.waitForBytesWritten(timeoutMs))
        return false;
    socket.disconnectFromServer();
    if (socket.state() != QLocalSocket::UnconnectedState)
        socket.waitForDisconnected(timeoutMs);
    return true;
}

void LinkServer::acceptConnections()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        // The sender writes the whole string and hangs up; it is complete only then.
        connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
            const QString executeString = QString::fromUtf8(socket->readAll());
            socket->deleteLater();
            if (!executeString.isEmpty())
                emit executeReceived(executeString);
        });
    }
}

} // namespace Frame
