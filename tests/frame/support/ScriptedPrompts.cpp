#include "frame/support/ScriptedPrompts.h"

#include <gtest/gtest.h>

using Frame::FileChoice;
using Frame::FileDialogRequest;
using Frame::MessageAnswer;
using Frame::MessageButtons;
using Frame::MessageIcon;

namespace {

// The queued answer as the dialog's own kind of result, or a cancelled dialog.
template <typename Result, typename Value>
Result answerOr(const std::optional<Value>& answer, Result cancelled)
{
    return answer ? std::get<Result>(*answer) : cancelled;
}

} // namespace

ScriptedPrompts::ScriptedPrompts()
    : m_previous(Frame::InstallPrompts(this))
{ }

ScriptedPrompts::~ScriptedPrompts()
{
    Frame::InstallPrompts(m_previous);
    for (const Answer& answer : m_answers)
        ADD_FAILURE() << "A queued " << kindName(answer.kind) << " answer was never asked for";
}

const char* ScriptedPrompts::kindName(Kind kind)
{
    static const char* const names[] = { "message box", "input box", "open dialog", "save dialog",
        "colour dialog", "font dialog" };
    return names[int(kind)];
}

ScriptedPrompts& ScriptedPrompts::queue(Kind kind, Value value)
{
    m_answers.append(Answer { kind, std::move(value) });
    return *this;
}

ScriptedPrompts& ScriptedPrompts::answerMessage(MessageAnswer answer)
{
    return queue(Kind::Message, answer);
}

ScriptedPrompts& ScriptedPrompts::answerInput(std::optional<QString> answer)
{
    return queue(Kind::Input, std::move(answer));
}

ScriptedPrompts& ScriptedPrompts::answerOpenFile(std::optional<FileChoice> answer)
{
    return queue(Kind::OpenFile, std::move(answer));
}

ScriptedPrompts& ScriptedPrompts::answerSaveFile(std::optional<FileChoice> answer)
{
    return queue(Kind::SaveFile, std::move(answer));
}

ScriptedPrompts& ScriptedPrompts::answerColour(std::optional<std::int32_t> answer)
{
    return queue(Kind::Colour, answer);
}

ScriptedPrompts& ScriptedPrompts::answerFont(std::optional<QFont> answer)
{
    return queue(Kind::Font, std::move(answer));
}

QStringList ScriptedPrompts::messages() const
{
    QStringList texts;
    for (const Call& call : m_calls) {
        if (call.kind == Kind::Message)
            texts.append(call.text);
    }
    return texts;
}

std::optional<ScriptedPrompts::Value> ScriptedPrompts::take(const Call& call)
{
    m_calls.append(call);
    const QString asked
        = call.kind == Kind::OpenFile || call.kind == Kind::SaveFile ? call.file.title : call.text;
    if (m_answers.isEmpty()) {
        ADD_FAILURE() << "Unexpected " << kindName(call.kind) << " with no queued answer: \""
                      << asked.toStdString() << "\" (title \"" << call.title.toStdString() << "\")";
        return std::nullopt;
    }
    if (m_answers.front().kind != call.kind) {
        ADD_FAILURE() << "Asked a " << kindName(call.kind) << " \"" << asked.toStdString()
                      << "\" but the next queued answer is for a "
                      << kindName(m_answers.front().kind);
        return std::nullopt;
    }
    return m_answers.takeFirst().value;
}

MessageAnswer ScriptedPrompts::message(
    const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons)
{
    Call call;
    call.text = text;
    call.title = title;
    call.icon = icon;
    call.buttons = buttons;
    return answerOr(take(call),
        buttons == MessageButtons::Ok ? MessageAnswer::Ok
            : buttons == MessageButtons::YesNo || buttons == MessageButtons::YesNoDefaultNo
            ? MessageAnswer::No
            : MessageAnswer::Cancel);
}

std::optional<QString> ScriptedPrompts::input(
    const QString& prompt, const QString& title, const QString& defaultText)
{
    Call call;
    call.kind = Kind::Input;
    call.text = prompt;
    call.title = title;
    call.defaultText = defaultText;
    return answerOr<std::optional<QString>>(take(call), std::nullopt);
}

std::optional<FileChoice> ScriptedPrompts::openFile(const FileDialogRequest& request)
{
    Call call;
    call.kind = Kind::OpenFile;
    call.title = request.title;
    call.file = request;
    return answerOr<std::optional<FileChoice>>(take(call), std::nullopt);
}

std::optional<FileChoice> ScriptedPrompts::saveFile(const FileDialogRequest& request)
{
    Call call;
    call.kind = Kind::SaveFile;
    call.title = request.title;
    call.file = request;
    return answerOr<std::optional<FileChoice>>(take(call), std::nullopt);
}

std::optional<std::int32_t> ScriptedPrompts::colour(std::int32_t initial)
{
    Call call;
    call.kind = Kind::Colour;
    call.initialColour = initial;
    return answerOr<std::optional<std::int32_t>>(take(call), std::nullopt);
}

std::optional<QFont> ScriptedPrompts::font(const QFont& initial)
{
    Call call;
    call.kind = Kind::Font;
    call.initialFont = initial;
    return answerOr<std::optional<QFont>>(take(call), std::nullopt);
}
