#pragma once

#include <QString>
#include <QStringView>
#include <QTextStream>

// What every quorbin-cli verb answers with: its exit status and, on refusal, one message on
// standard error. Scripts test the status; people read the message.
namespace Cli {

enum VerbStatus {
    Succeeded = 0,
    Failed = 1, // the input could not be read, the output not written, or the command refused
    UsageError = 64, // the words do not make a command; nothing was read or written
};

// Prints "usage: quorbin-cli <syntax>" and returns `status` (UsageError unless the verb has
// its own number for it, as the conversion verbs' 2).
int Usage(QTextStream& err, QStringView syntax, int status = UsageError);

// Prints `message` as one line and returns Failed.
int Failure(QTextStream& err, const QString& message);

} // namespace Cli
