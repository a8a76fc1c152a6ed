#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

namespace Frame {

// The shell's open command on Linux: the first copy of the program listens on a local socket
// of the user; a later copy started with a file hands "[open(path)]" to it and ends.
class LinkServer : public QObject
{
    Q_OBJECT

public:
    enum class Start {
        Listening, // this copy is the first: it listens and handles its own command
        Forwarded, // another copy runs and has been sent the command: this copy should end
        Alone, // another copy runs but there was nothing to send, or no socket could be made
    };

    explicit LinkServer(QObject* parent = nullptr);

    // One socket per user.
    static QString DefaultName();

    // Listens on `name`; when another copy already does, sends it `executeString` instead
    // (unless that is empty). A socket left behind by a copy that crashed is replaced.
    Start startOrForward(const QString& name, const QString& executeString);

    // Sends one execute string to the copy listening on `name`. False when none answers.
    static bool send(const QString& name, const QString& executeString, int timeoutMs = 3000);

    bool isListening() const { return m_server.isListening(); }

signals:
    // A complete execute string from another copy.
    void executeReceived(const QString& executeString);

private:
    bool listen(const QString& name);
    void acceptConnections();

    QLocalServer m_server;
};

} // namespace Frame
