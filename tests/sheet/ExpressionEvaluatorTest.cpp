#include "sheet/ExpressionEvaluator.h"

#include "TableRows.h"
#include "frame/support/ScriptedPrompts.h"
#include "platform/runtime/Error.h"
#include "sheet/SheetTestSupport.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

using TestRows::PrintTo;

struct ValueRow
{
    const char* name;
    QString expression;
    double expected;
};

class EvaluatorValues : public testing::TestWithParam<ValueRow>
{
};

TEST_P(EvaluatorValues, GiveTheDocumentedResult)
{
    const Evaluation evaluation = EvaluateExpression(GetParam().expression);
    EXPECT_EQ(evaluation.ErrorCode, NoEvaluatorError) << evaluation.Message.toStdString();
    EXPECT_DOUBLE_EQ(evaluation.Result, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, EvaluatorValues,
    testing::Values(ValueRow { "productBeforeSum", u"2+3*4"_s, 14 },
        ValueRow { "bracketsFirst", u"(2+3)*4"_s, 20 },
        ValueRow { "powersLeftToRight", u"2^3^2"_s, 64 },
        ValueRow { "minusLooserThanPower", u"-2^2"_s, -4 },
        ValueRow { "minusTighterThanProduct", u"-2*3"_s, -6 },
        ValueRow { "minusOfNegativeReplacement", u"2--3"_s, 5 },
        ValueRow { "powerOfNegativeExponent", u"2^-1"_s, 0.5 },
        ValueRow { "integerQuotient", u"7\\2"_s, 3 },
        ValueRow { "integerQuotientTruncatesTowardZero", u"-7\\2"_s, -3 },
        ValueRow { "integerQuotientRoundsHalfToEven", u"2.5\\1"_s, 2 },
        ValueRow { "integerQuotientRoundsOtherHalfUp", u"3.5\\1"_s, 4 },
        ValueRow { "quotientTighterThanMod", u"7 mod 5\\2"_s, 1 },
        ValueRow { "remainderHasSignOfLeft", u"-7 mod 3"_s, -1 },
        ValueRow { "remainderOfPositive", u"7 mod -3"_s, 1 },
        ValueRow { "divisionIsFloating", u"7/2"_s, 3.5 },
        ValueRow { "subtractionLeftToRight", u"10-4-3"_s, 3 },
        ValueRow { "divisionLeftToRight", u"64/4/2"_s, 8 },
        ValueRow { "comparisonTrue", u"1<2"_s, -1 }, ValueRow { "comparisonFalse", u"2<1"_s, 0 },
        ValueRow { "notEqual", u"1<>2"_s, -1 }, ValueRow { "lessOrEqual", u"2<=2"_s, -1 },
        ValueRow { "equalOfSums", u"1+1=2"_s, -1 },
        ValueRow { "comparisonsCombineWithAnd", u"1<2 and 3<4"_s, -1 },
        ValueRow { "andOfTrueAndFalse", u"1<2 and 4<3"_s, 0 },
        ValueRow { "orOfFalseAndTrue", u"2<1 or 3<4"_s, -1 },
        ValueRow { "bitwiseAnd", u"12 and 10"_s, 8 }, ValueRow { "bitwiseOr", u"12 or 10"_s, 14 },
        ValueRow { "bitwiseXor", u"12 xor 10"_s, 6 }, ValueRow { "eqvOfEqual", u"5 eqv 5"_s, -1 },
        ValueRow { "eqvOfDifferent", u"0 eqv -1"_s, 0 },
        ValueRow { "impFalseImpliesAnything", u"0 imp 0"_s, -1 },
        ValueRow { "impTrueImpliesFalse", u"-1 imp 0"_s, 0 },
        ValueRow { "andTighterThanOr", u"-1 or 0 and 0"_s, -1 },
        ValueRow { "orTighterThanXor", u"-1 xor -1 or 0"_s, 0 },
        ValueRow { "notOfZero", u"not 0"_s, -1 },
        ValueRow { "notLooserThanComparison", u"not 1 = 2"_s, -1 },
        ValueRow { "notRoundsHalfToEven", u"not 2.5"_s, -3 },
        ValueRow { "upperCaseFunction", u"SIN(0)"_s, 0 },
        ValueRow { "upperCasePi", u"PI"_s, std::numbers::pi },
        ValueRow { "unclosedBracketIsAccepted", u"(1+2"_s, 3 },
        ValueRow { "exponent", u"1e3"_s, 1000 }, ValueRow { "negativeExponent", u"1e-3"_s, 0.001 },
        ValueRow { "secondPointEndsNumber", u"1.5.2"_s, 1.5 },
        ValueRow { "exponentWithoutDigits", u"2e"_s, 2 }, ValueRow { "leadingPoint", u".5"_s, 0.5 },
        ValueRow { "blanksIgnored", u"  1 +  2 "_s, 3 },
        ValueRow { "absolute", u"abs(-2.5)"_s, 2.5 },
        ValueRow { "arctangent", u"atn(1)*4"_s, std::numbers::pi },
        ValueRow { "cosine", u"cos(0)"_s, 1 },
        ValueRow { "exponential", u"exp(1)"_s, std::numbers::e },
        ValueRow { "fixTruncates", u"fix(-2.5)"_s, -2 },
        ValueRow { "intRoundsDown", u"int(-2.5)"_s, -3 },
        ValueRow { "naturalLogarithm", u"log(exp(2))"_s, 2 },
        ValueRow { "signOfNegative", u"sgn(-4)"_s, -1 }, ValueRow { "squareRoot", u"sqr(16)"_s, 4 },
        ValueRow { "functionOfExpression", u"sqr(3*3+16)"_s, 5 },
        ValueRow { "functionTakesWholeArgument", u"abs(1-3)*2"_s, 4 }),
    TestRows::Named());

struct ErrorRow
{
    const char* name;
    QString expression;
    int code;
    QString message;
};

class EvaluatorErrors : public testing::TestWithParam<ErrorRow>
{
};

TEST_P(EvaluatorErrors, GiveTheCodeAndMessage)
{
    const Evaluation evaluation = EvaluateExpression(GetParam().expression);
    EXPECT_EQ(evaluation.ErrorCode, GetParam().code);
    EXPECT_EQ(evaluation.Message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(Rows, EvaluatorErrors,
    testing::Values(ErrorRow { "textLeftOver", u"1 2"_s, 1, u"syntax error, token = '2'"_s },
        ErrorRow { "operatorWithoutOperand", u"*3"_s, 2, u"syntax error, token = '*'"_s },
        ErrorRow { "unknownFunction", u"foo(1)"_s, 3, u"Undefined function 'foo'"_s },
        ErrorRow { "unknownFunctionLowerCased", u"FOO(1)"_s, 3, u"Undefined function 'foo'"_s },
        ErrorRow { "argumentWhereBracketBelongs", u"sin 2)"_s, 2, u"syntax error, token = ')'"_s },
        ErrorRow { "emptyExpression", u""_s, 2, u"syntax error, token = ''"_s },
        ErrorRow { "missingRightOperand", u"1+"_s, 2, u"syntax error, token = ''"_s },
        ErrorRow { "keywordAsOperand", u"mod 2"_s, 2, u"syntax error, token = 'mod'"_s },
        ErrorRow { "shiftTokenIsNoOperator", u"1>>2"_s, 1, u"syntax error, token = '>>'"_s },
        ErrorRow { "firstErrorCounts", u"foo(*)"_s, 2, u"syntax error, token = '*'"_s },
        ErrorRow { "closingBracketLeftOver", u"1)"_s, 1, u"syntax error, token = ')'"_s },
        ErrorRow { "tabIsAToken", u"1\t2"_s, 1, u"syntax error, token = '\t'"_s },
        ErrorRow { "doubleSignAfterExponent", u"1e+-3"_s, 0, QString() },
        ErrorRow { "tooDeep", QString(MaximumExpressionDepth + 5, u'(') + u"1"_s, 2,
            u"syntax error, token = '('"_s }),
    TestRows::Named());

struct FaultRow
{
    const char* name;
    QString expression;
    int number;
    QString message;
};

class EvaluatorFaults : public testing::TestWithParam<FaultRow>
{
};

TEST_P(EvaluatorFaults, ReachTheCallerAsRuntimeErrors)
{
    try {
        EvaluateExpression(GetParam().expression);
        ADD_FAILURE() << "no fault";
    } catch (const Runtime::Error& fault) {
        EXPECT_EQ(fault.number(), GetParam().number);
        EXPECT_EQ(fault.message(), GetParam().message);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, EvaluatorFaults,
    testing::Values(FaultRow { "divisionByZero", u"1/0"_s, 11, u"Division by zero"_s },
        FaultRow { "zeroOverZero", u"0/0"_s, 6, u"Overflow"_s },
        FaultRow { "integerDivisionByRoundedZero", u"1\\0.4"_s, 11, u"Division by zero"_s },
        FaultRow { "remainderByZero", u"5 mod 0"_s, 11, u"Division by zero"_s },
        FaultRow { "powerOverflows", u"10^400"_s, 6, u"Overflow"_s },
        FaultRow { "exponentialOverflows", u"exp(1000)"_s, 6, u"Overflow"_s },
        FaultRow { "numberTooLarge", u"1e999"_s, 6, u"Overflow"_s },
        FaultRow { "zeroToNegativePower", u"0^-1"_s, 11, u"Division by zero"_s },
        FaultRow {
            "rootOfNegativeByPower", u"(-8)^(1/3)"_s, 5, u"Invalid procedure call or argument"_s },
        FaultRow { "logarithmOfZero", u"log(0)"_s, 5, u"Invalid procedure call or argument"_s },
        // A missing operand reads as 0 and the operator still applies to it.
        FaultRow { "halfTypedDivision", u"1/"_s, 11, u"Division by zero"_s },
        FaultRow {
            "squareRootOfNegative", u"sqr(-1)"_s, 5, u"Invalid procedure call or argument"_s },
        FaultRow { "logicalOperandTooLarge", u"3e9 and 1"_s, 6, u"Overflow"_s },
        FaultRow { "notOperandTooLarge", u"not 3e9"_s, 6, u"Overflow"_s }),
    TestRows::Named());

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

struct NumberTextRow
{
    const char* name;
    double value;
    QString expected;
};

class FormulaNumberTexts : public testing::TestWithParam<NumberTextRow>
{
};

TEST_P(FormulaNumberTexts, ReadBackByTheEvaluator)
{
    const QString text = FormulaNumberText(GetParam().value);
    EXPECT_EQ(text, GetParam().expected);
    // Whatever a formula inserts, the evaluator reads back as the same number to 15 digits.
    const Evaluation back = EvaluateExpression(u"0+"_s + text);
    EXPECT_EQ(back.ErrorCode, NoEvaluatorError);
    EXPECT_NEAR(back.Result, GetParam().value, std::fabs(GetParam().value) * 1e-14);
}

INSTANTIATE_TEST_SUITE_P(Rows, FormulaNumberTexts,
    testing::Values(NumberTextRow { "whole", 14, u"14"_s },
        NumberTextRow { "negative", -3, u"-3"_s },
        NumberTextRow { "fractionFromThePoint", 0.5, u".5"_s },
        NumberTextRow { "negativeFraction", -0.25, u"-.25"_s },
        NumberTextRow { "fifteenDigits", 1.0 / 3.0, u".333333333333333"_s },
        NumberTextRow { "large", 1e20, u"1E+20"_s }, NumberTextRow { "small", 1e-5, u"1E-05"_s }),
    TestRows::Named());

} // namespace
