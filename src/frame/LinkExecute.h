#pragma once

#include <QString>
#include <QStringView>
#include <optional>

namespace Frame {

// What the shell's execute string asks for, as the frame's scan reads it.
struct LinkCommand
{
    // The argument of an "open" command met before the scan stopped, used as written
    // (quotation marks are not removed). At most one: the scan refuses anything after the
    // first command.
    std::optional<QString> OpenArgument;
    // The execute string is refused (the shell is told it failed). An open command met
    // before the refusal is still carried out.
    bool Cancel = false;
    // 5 when an "open" command has no room for an argument ("[open(]"), the classic
    // "invalid procedure call"; the command is then not carried out. 0 otherwise.
    int Error = 0;
};

// The scan of the DDE execute string: one command in square brackets, a verb, "(", the
// argument, ")". The verb is compared without case; other verbs and commands without "("
// are accepted and ignored. Text after the first command, a second command included, is
// refused; so is text that does not start with "[", and a "[" with no later "]". A string
// of fewer than two characters is never examined and is accepted.
LinkCommand ParseLinkExecute(QStringView executeString);

} // namespace Frame
