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

// Without a window's prompts (quorbin-cli) dialogs fall back to the headless answers.
TEST(InstalledPrompts, NoneInstalledIsHeadless)
{
    Frame::Prompts* const previous = Frame::InstallPrompts(nullptr);
    EXPECT_NE(dynamic_cast<Frame::HeadlessPrompts*>(&Frame::CurrentPrompts()), nullptr);
    Frame::InstallPrompts(previous);
}

// ---- The scripted double that every window test relies on ----------------------------------

// Its answering and recording are read by every window test; what no other test can show is
// that a message nobody expected, or an answer nobody took, fails the test.
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
