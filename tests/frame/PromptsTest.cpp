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

// ---- Headless prompts -----------------------------------------------------------------------

struct HeadlessRow
{
    const char* name;
    MessageButtons buttons;
    MessageAnswer expected;
};

class HeadlessMessage : public testing::TestWithParam<HeadlessRow>
{
};

TEST_P(HeadlessMessage, AnswersAsACancellingUser)
{
    QString log;
    QTextStream stream(&log);
    Frame::HeadlessPrompts prompts(stream);
    EXPECT_EQ(prompts.message(
                  u"Save changes?"_s, u"Quorbin"_s, MessageIcon::Question, GetParam().buttons),
        GetParam().expected);
    EXPECT_EQ(log, u"Quorbin: Save changes?\n"_s);
}

INSTANTIATE_TEST_SUITE_P(Rows, HeadlessMessage,
    testing::Values(HeadlessRow { "ok", MessageButtons::Ok, MessageAnswer::Ok },
        HeadlessRow { "ok_cancel", MessageButtons::OkCancel, MessageAnswer::Cancel },
        HeadlessRow { "yes_no", MessageButtons::YesNo, MessageAnswer::No },
        HeadlessRow { "yes_no_cancel", MessageButtons::YesNoCancel, MessageAnswer::Cancel },
        HeadlessRow { "retry_cancel", MessageButtons::RetryCancel, MessageAnswer::Cancel }),
    [](const testing::TestParamInfo<HeadlessRow>& info) { return std::string(info.param.name); });

TEST(HeadlessPrompts, WritesAMessageAsOneLine)
{
    QString log;
    QTextStream stream(&log);
    Frame::HeadlessPrompts prompts(stream);
    prompts.message(
        u"New\r\nOrmsey Graph\nnow"_s, QString(), MessageIcon::None, MessageButtons::Ok);
    EXPECT_EQ(log, u"New Ormsey Graph now\n"_s);
}

TEST(HeadlessPrompts, ChoosesNothingInDialogs)
{
    QString log;
    QTextStream stream(&log);
    Frame::HeadlessPrompts prompts(stream);
    EXPECT_FALSE(prompts.input(u"Name:"_s, QString(), u"x"_s));
    EXPECT_FALSE(prompts.openFile({}));
    EXPECT_FALSE(prompts.saveFile({}));
    EXPECT_FALSE(prompts.colour(255));
    EXPECT_FALSE(prompts.font(QFont()));
    EXPECT_TRUE(log.isEmpty());
}

// ---- Installation ---------------------------------------------------------------------------

TEST(InstalledPrompts, ScriptedPromptsTakeOverAndHandBack)
{
    Frame::Prompts* const before = &Frame::CurrentPrompts();
    {
        ScriptedPrompts prompts;
        EXPECT_EQ(&Frame::CurrentPrompts(), &prompts);
        {
            ScriptedPrompts inner;
            EXPECT_EQ(&Frame::CurrentPrompts(), &inner);
        }
        EXPECT_EQ(&Frame::CurrentPrompts(), &prompts);
    }
    EXPECT_EQ(&Frame::CurrentPrompts(), before);
}

TEST(InstalledPrompts, NothingInstalledMeansHeadless)
{
    Frame::Prompts* const previous = Frame::InstallPrompts(nullptr);
    EXPECT_NE(dynamic_cast<Frame::HeadlessPrompts*>(&Frame::CurrentPrompts()), nullptr);
    Frame::InstallPrompts(previous);
}

// ---- The scripted double --------------------------------------------------------------------

TEST(ScriptedPrompts, AnswersInOrderAndRecordsEveryCall)
{
    ScriptedPrompts prompts;
    prompts.answerMessage(MessageAnswer::Yes)
        .answerInput(u"Rabbits"_s)
        .answerSaveFile(Frame::FileChoice { u"/tmp/a.qnp"_s, 2 })
        .answerColour(255)
        .answerFont(std::nullopt);

    Frame::Prompts& current = Frame::CurrentPrompts();
    EXPECT_EQ(current.message(
                  u"Save?"_s, u"Ormsey"_s, MessageIcon::Exclamation, MessageButtons::YesNoCancel),
        MessageAnswer::Yes);
    EXPECT_EQ(current.input(u"Name:"_s, u"Query"_s, u"q1"_s), u"Rabbits"_s);
    Frame::FileDialogRequest request;
    request.title = u"Save As"_s;
    request.filter = u"Ormsey Files|*.qnp"_s;
    const auto saved = current.saveFile(request);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->path, u"/tmp/a.qnp"_s);
    EXPECT_EQ(saved->filterIndex, 2);
    EXPECT_EQ(current.colour(0), 255);
    EXPECT_FALSE(current.font(QFont()));

    ASSERT_EQ(prompts.calls().size(), 5);
    const ScriptedPrompts::Call& first = prompts.calls()[0];
    EXPECT_EQ(first.kind, ScriptedPrompts::Kind::Message);
    EXPECT_EQ(first.text, u"Save?"_s);
    EXPECT_EQ(first.title, u"Ormsey"_s);
    EXPECT_EQ(first.icon, MessageIcon::Exclamation);
    EXPECT_EQ(first.buttons, MessageButtons::YesNoCancel);
    EXPECT_EQ(prompts.calls()[1].defaultText, u"q1"_s);
    EXPECT_EQ(prompts.calls()[2].file.filter, u"Ormsey Files|*.qnp"_s);
    EXPECT_EQ(prompts.messages(), QStringList { u"Save?"_s });
    EXPECT_EQ(prompts.pendingAnswers(), 0);
}

TEST(ScriptedPrompts, UnexpectedMessageFailsWithItsText)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedPrompts prompts;
            const MessageAnswer answer = Frame::CurrentPrompts().message(
                u"No Printers"_s, QString(), MessageIcon::Information, MessageButtons::OkCancel);
            EXPECT_EQ(answer, MessageAnswer::Cancel);
        },
        "No Printers");
}

TEST(ScriptedPrompts, AnswerOfAnotherKindFailsWithTheAskedText)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedPrompts prompts;
            prompts.answerInput(u"x"_s);
            Frame::CurrentPrompts().message(u"Database successfully compacted"_s, QString(),
                MessageIcon::Information, MessageButtons::Ok);
            Frame::CurrentPrompts().input(u"Name:"_s, QString(), QString());
        },
        "Database successfully compacted");
}

TEST(ScriptedPrompts, UnusedAnswerFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedPrompts prompts;
            prompts.answerMessage(MessageAnswer::Ok);
        },
        "never asked for");
}

} // namespace
