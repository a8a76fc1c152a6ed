#include "sheet/ExpressionEvaluator.h"

#include "RowFile.h"
#include "frame/support/ScriptedPrompts.h"
#include "platform/runtime/Error.h"
#include "sheet/SheetTestSupport.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

using RowFile::In;
using RowFile::Named;

class EvaluatorValues : public RowFile::RowTest<>
{
};

TEST_P(EvaluatorValues, GiveTheDocumentedResult)
{
    const Evaluation evaluation = EvaluateExpression(row().text("expression"));
    EXPECT_EQ(evaluation.ErrorCode, NoEvaluatorError) << evaluation.Message.toStdString();
    EXPECT_DOUBLE_EQ(evaluation.Result, row().number("value"));
}

INSTANTIATE_TEST_SUITE_P(Rows, EvaluatorValues, In("sheet/evaluator/values.rows"), Named());

class EvaluatorErrors : public RowFile::RowTest<>
{
};

TEST_P(EvaluatorErrors, GiveTheCodeAndMessage)
{
    const Evaluation evaluation = EvaluateExpression(row().text("expression"));
    EXPECT_EQ(evaluation.ErrorCode, row().whole("code"));
    EXPECT_EQ(evaluation.Message, row().text("message"));
}

INSTANTIATE_TEST_SUITE_P(Rows, EvaluatorErrors, In("sheet/evaluator/errors.rows"), Named());

TEST(EvaluatorErrors, TooDeepIsAnUnexpectedToken)
{
    const Evaluation evaluation
        = EvaluateExpression(QString(MaximumExpressionDepth + 5, u'(') + u"1"_s);
    EXPECT_EQ(evaluation.ErrorCode, 2);
    EXPECT_EQ(evaluation.Message, u"syntax error, token = '('"_s);
}

class EvaluatorFaults : public RowFile::RowTest<>
{
};

TEST_P(EvaluatorFaults, ReachTheCallerAsRuntimeErrors)
{
    try {
        EvaluateExpression(row().text("expression"));
        ADD_FAILURE() << "no fault";
    } catch (const Runtime::Error& fault) {
        EXPECT_EQ(fault.number(), row().whole("number"));
        EXPECT_EQ(fault.message(), row().text("message"));
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, EvaluatorFaults, In("sheet/evaluator/faults.rows"), Named());

TEST(EvaluatorRandom, NegativeArgumentSeedsTheSameNumber)
{
    const double first = EvaluateExpression(u"rnd(-3)"_s).Result;
    EvaluateExpression(u"rnd(1)"_s);
    EXPECT_EQ(EvaluateExpression(u"rnd(-3)"_s).Result, first);
    EXPECT_NE(EvaluateExpression(u"rnd(-4)"_s).Result, first);
}

// A negative argument seeds; 0 repeats the last number drawn.
TEST(EvaluatorRandom, SeedStartsTheSameSequenceAndZeroRepeats)
{
    auto sequence = [] {
        QList<double> numbers { EvaluateExpression(u"rnd(-7)"_s).Result };
        for (int i = 0; i < 3; ++i)
            numbers.append(EvaluateExpression(u"rnd(1)"_s).Result);
        return numbers;
    };
    const QList<double> first = sequence();
    EXPECT_EQ(sequence(), first);
    EXPECT_NE(first[1], first[2]);
    EXPECT_EQ(EvaluateExpression(u"rnd(0)"_s).Result, first.back());
}

TEST(EvaluatorRandom, NumbersLieInTheUnitInterval)
{
    EvaluateExpression(u"rnd(-1)"_s);
    double smallest = 1;
    double largest = 0;
    for (int i = 0; i < 2000; ++i) {
        const double number = EvaluateExpression(u"rnd(1)"_s).Result;
        ASSERT_GE(number, 0.0);
        ASSERT_LT(number, 1.0);
        smallest = std::min(smallest, number);
        largest = std::max(largest, number);
    }
    // Spread over the interval, not stuck in a corner of it.
    EXPECT_LT(smallest, 0.01);
    EXPECT_GT(largest, 0.99);
}

TEST(EvaluatorMessages, ShownOnlyWhenAskedAndOnlyTheFirst)
{
    ScriptedPrompts prompts;
    prompts.answerMessage(Frame::MessageAnswer::Ok);
    double result = 99;
    EXPECT_EQ(Evaluate(u"foo(*)"_s, result, true), UnexpectedToken);
    ASSERT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(prompts.calls()[0].text, u"syntax error, token = '*'"_s);
    EXPECT_EQ(prompts.calls()[0].icon, Frame::MessageIcon::None);
    EXPECT_EQ(prompts.calls()[0].buttons, Frame::MessageButtons::Ok);
    EXPECT_TRUE(prompts.calls()[0].title.isEmpty()); // the application's title

    EXPECT_EQ(Evaluate(u"1 2"_s, result, false), TrailingText);
    EXPECT_EQ(prompts.calls().size(), 1);
    EXPECT_EQ(Evaluate(u"6*7"_s, result, true), NoEvaluatorError);
    EXPECT_EQ(result, 42);
}

class FormulaNumberTexts : public RowFile::RowTest<>
{
};

TEST_P(FormulaNumberTexts, ReadBackByTheEvaluator)
{
    const double value = row().number("value");
    const QString text = FormulaNumberText(value);
    EXPECT_EQ(text, row().text("text"));
    // Whatever a formula inserts, the evaluator reads back as the same number to 15 digits.
    const Evaluation back = EvaluateExpression(u"0+"_s + text);
    EXPECT_EQ(back.ErrorCode, NoEvaluatorError);
    EXPECT_NEAR(back.Result, value, std::fabs(value) * 1e-14);
}

INSTANTIATE_TEST_SUITE_P(Rows, FormulaNumberTexts, In("sheet/evaluator/numberTexts.rows"), Named());

} // namespace
