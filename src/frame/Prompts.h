#pragma once

#include <QFont>
#include <QString>
#include <cstdint>
#include <optional>

// Every message box, input box and file, colour or font dialog of the program goes through
// the one installed Prompts object, so that models and windows can be driven by tests (a
// scripted double answers in order) and by quorbin-cli (HeadlessPrompts). The application
// installs QtPrompts (frame_ui) at start-up; nothing owns the installed object but its
// installer, who must uninstall it before destroying it.
namespace Frame {

enum class MessageIcon { None, Information, Exclamation, Question, Critical };

// YesNoDefaultNo: Yes and No with No pressed by Enter, for a question whose Yes destroys
// something (deleting a card).
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoDefaultNo, YesNoCancel, RetryCancel };

enum class MessageAnswer { Ok, Cancel, Yes, No, Retry };

// The open and save dialogs as the program prepares them.
struct FileDialogRequest
{
    QString title;
    // The program's form: "Description|*.x;*.y|Description 2|*.z" (see FileFilters.h).
    QString filter;
    // Counted from 1, as the program's filter strings number their pairs.
    int filterIndex = 1;
    QString folder;
    QString fileName;
    // A save dialog asks before an existing file is chosen; off where the caller refuses
    // existing files with its own message.
    bool confirmOverwrite = true;
};

struct FileChoice
{
    QString path;
    int filterIndex = 1; // the pair the user had chosen, from 1
};

class Prompts
{
public:
    virtual ~Prompts() = default;

    // An empty title means the program's name.
    virtual MessageAnswer message(
        const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons)
        = 0;
    // No value when the user cancels.
    virtual std::optional<QString> input(
        const QString& prompt, const QString& title, const QString& defaultText)
        = 0;
    virtual std::optional<FileChoice> openFile(const FileDialogRequest& request) = 0;
    virtual std::optional<FileChoice> saveFile(const FileDialogRequest& request) = 0;
    // Colours in the program's 0x00BBGGRR values.
    virtual std::optional<std::int32_t> colour(std::int32_t initial) = 0;
    virtual std::optional<QFont> font(const QFont& initial) = 0;
};

// The installed object, or the process's HeadlessPrompts when none is installed.
Prompts& CurrentPrompts();

// Installs `prompts` (nullptr: back to the headless one) and returns the previously
// installed object (nullptr if that was the headless one), for the caller to put back.
Prompts* InstallPrompts(Prompts* prompts);

} // namespace Frame
