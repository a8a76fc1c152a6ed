#include "frame/Prompts.h"

#include "frame/HeadlessPrompts.h"
#include "frame/support/ScriptedPrompts.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using Frame::MessageAnswer;
using Frame::MessageButtons;
using Frame::MessageIcon;

namespace {

// quorbin-cli runs with these: a question is answered as a cancelling user would, the
// message goes to the log on one line, and no dialog chooses anything.
TEST(HeadlessPrompts, AnswerAsACancellingUserAndLogOneLine)
{
    const std::pair<MessageButtons, MessageAnswer> rows[] = {
        { MessageButtons::Ok, MessageAnswer::Ok },
        { MessageButtons::OkCancel, MessageAnswer::Cancel },
        { MessageButtons::YesNo, MessageAnswer::No },
        { MessageButtons::YesNoCancel, MessageAnswer::Cancel },
        { MessageButtons::RetryCancel, MessageAnswer::Cancel },
    };
    for (const auto& [buttons, answer] : rows) {
        QString log;
        QTextStream stream(&log);
        Frame::HeadlessPrompts prompts(stream);
        EXPECT_EQ(prompts.message(u"Save changes?"_s, u"Quorbin"_s, MessageIcon::Question, buttons),
            answer);
        EXPECT_EQ(log, u"Quorbin: Save changes?\n"_s);
    }
    QString log;
    QTextStream stream(&log);
    Frame::HeadlessPrompts prompts(stream);
    prompts.message(
        u"New\r\nOrmsey Graph\nnow"_s, QString(), MessageIcon::None, MessageButtons::Ok);
    EXPECT_FALSE(prompts.input(u"Name:"_s, QString(), u"x"_s));
    EXPECT_FALSE(prompts.openFile({}));
    EXPECT_FALSE(prompts.saveFile({}));
    EXPECT_FALSE(prompts.colour(255));
    EXPECT_FALSE(prompts.font(QFont()));
    EXPECT_EQ(log, u"New Ormsey Graph now\n"_s);
}

TEST(InstalledPrompts, ScriptedPromptsTakeOverAndHandBackToHeadless)
{
    Frame::Prompts* const previous = Frame::InstallPrompts(nullptr);
    EXPECT_NE(dynamic_cast<Frame::HeadlessPrompts*>(&Frame::CurrentPrompts()), nullptr);
    Frame::InstallPrompts(previous);
    Frame::Prompts* const before = &Frame::CurrentPrompts();
    {
        ScriptedPrompts prompts;
        {
            ScriptedPrompts inner;
            EXPECT_EQ(&Frame::CurrentPrompts(), &inner);
        }
        EXPECT_EQ(&Frame::CurrentPrompts(), &prompts);
    }
    EXPECT_EQ(&Frame::CurrentPrompts(), before);
}

// ---- The scripted double that every window test relies on ----------------------------------

TEST(ScriptedPrompts, AnswersInOrderAndRecordsEveryCall)
{
    ScriptedPrompts prompts;
    prompts.answerMessage(MessageAnswer::Yes)
        .answerInput(u"Rabbits"_s)
        .answerSaveFile(Frame::FileChoice { u"/tmp/a.qnp"_s, 2 });
    Frame::Prompts& current = Frame::CurrentPrompts();
    EXPECT_EQ(current.message(
                  u"Save?"_s, u"Ormsey"_s, MessageIcon::Exclamation, MessageButtons::YesNoCancel),
        MessageAnswer::Yes);
    EXPECT_EQ(current.input(u"Name:"_s, u"Query"_s, u"q1"_s), u"Rabbits"_s);
    const auto saved = current.saveFile({});
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->path, u"/tmp/a.qnp"_s);
    EXPECT_EQ(saved->filterIndex, 2);
    ASSERT_EQ(prompts.calls().size(), 3);
    EXPECT_EQ(prompts.calls()[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(prompts.calls()[0].buttons, MessageButtons::YesNoCancel);
    EXPECT_EQ(prompts.calls()[1].defaultText, u"q1"_s);
    EXPECT_EQ(prompts.messages(), QStringList { u"Save?"_s });
}

TEST(ScriptedPrompts, UnexpectedMessageOrUnusedAnswerFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedPrompts prompts;
            Frame::CurrentPrompts().message(
                u"No Printers"_s, QString(), MessageIcon::Information, MessageButtons::OkCancel);
        },
        "No Printers");
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedPrompts prompts;
            prompts.answerMessage(MessageAnswer::Ok);
        },
        "never asked for");
}

} // namespace
