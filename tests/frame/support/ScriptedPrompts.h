#pragma once

#include "frame/Prompts.h"

#include <QList>
#include <QStringList>
#include <variant>

// The Prompts double of every window and model test. Answers are queued in the order the
// code under test will ask; every call is recorded. A call with no queued answer, or whose
// next answer is of another kind, fails the running test with the text that was asked and
// is answered as a cancelled dialog. Answers left unused when the object dies fail the test
// too. The object installs itself for its lifetime and puts back what was installed before.
class ScriptedPrompts : public Frame::Prompts
{
public:
    enum class Kind { Message, Input, OpenFile, SaveFile, Colour, Font };

    struct Call
    {
        Kind kind = Kind::Message;
        QString text; // the message, or the input box's prompt
        QString title;
        Frame::MessageIcon icon = Frame::MessageIcon::None;
        Frame::MessageButtons buttons = Frame::MessageButtons::Ok;
        QString defaultText; // input box
        Frame::FileDialogRequest file; // open and save dialogs
        std::int32_t initialColour = 0;
        QFont initialFont;
    };

    ScriptedPrompts();
    ~ScriptedPrompts() override;
    ScriptedPrompts(const ScriptedPrompts&) = delete;
    ScriptedPrompts& operator=(const ScriptedPrompts&) = delete;

    ScriptedPrompts& answerMessage(Frame::MessageAnswer answer);
    ScriptedPrompts& answerInput(std::optional<QString> answer);
    ScriptedPrompts& answerOpenFile(std::optional<Frame::FileChoice> answer);
    ScriptedPrompts& answerSaveFile(std::optional<Frame::FileChoice> answer);
    ScriptedPrompts& answerColour(std::optional<std::int32_t> answer);
    ScriptedPrompts& answerFont(std::optional<QFont> answer);

    const QList<Call>& calls() const { return m_calls; }
    // The texts of the message boxes shown, in order.
    QStringList messages() const;
    int pendingAnswers() const { return int(m_answers.size()); }

    Frame::MessageAnswer message(const QString& text, const QString& title, Frame::MessageIcon icon,
        Frame::MessageButtons buttons) override;
    std::optional<QString> input(
        const QString& prompt, const QString& title, const QString& defaultText) override;
    std::optional<Frame::FileChoice> openFile(const Frame::FileDialogRequest& request) override;
    std::optional<Frame::FileChoice> saveFile(const Frame::FileDialogRequest& request) override;
    std::optional<std::int32_t> colour(std::int32_t initial) override;
    std::optional<QFont> font(const QFont& initial) override;

    static const char* kindName(Kind kind);

private:
    using Value = std::variant<Frame::MessageAnswer, std::optional<QString>,
        std::optional<Frame::FileChoice>, std::optional<std::int32_t>, std::optional<QFont>>;
    struct Answer
    {
        Kind kind;
        Value value;
    };

    ScriptedPrompts& queue(Kind kind, Value value);
    // The next answer if it is of this kind (consumed), else a recorded test failure.
    std::optional<Value> take(const Call& call);

    QList<Answer> m_answers;
    QList<Call> m_calls;
    Frame::Prompts* m_previous = nullptr;
};
