#include "sheet/Formulas.h"

#include "sheet/Dependencies.h"
#include "sheet/SheetError.h"
#include "sheet/SheetTestSupport.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

class Formulas : public SheetTest
{
protected:
    double evaluate(const QString& formula, const char* cell = "J10", bool recordRefs = true)
    {
        const CellAddress address = at(cell);
        return EvaluateFormula(sheet, formula, recordRefs, address.Row, address.Column);
    }
    // The error's offset and text, or "no error".
    std::pair<int, QString> failure(const QString& formula, const char* cell = "J10")
    {
        try {
            evaluate(formula, cell);
        } catch (const SheetError& error) {
            return { error.offset(), error.description() };
        }
        return { -2, u"no error"_s };
    }
};

TEST_F(Formulas, SumAddsTextAndEmptyCellsAsZero)
{
    enter("A1", u"1"_s);
    enter("A2", u"apples"_s);
    enter("A3", u"3"_s);
    EXPECT_EQ(evaluate(u"=sum(A1:A3)"_s), 4);
    EXPECT_EQ(evaluate(u"=sum(A1:A9)"_s), 4);
}

TEST_F(Formulas, MeanCountsOnlyNumbersAndFormulas)
{
    enter("A1", u"1"_s);
    enter("A2", u"apples"_s);
    enter("A3", u"3"_s);
    enter("A4", u"=A3*2"_s);
    EXPECT_EQ(evaluate(u"=mean(A1:A3)"_s), 2);
    // The mean goes into the formula's text with 15 significant digits.
    EXPECT_NEAR(evaluate(u"=average(A1:A4)"_s), (1 + 3 + 6) / 3.0, 1e-13);
}

TEST_F(Formulas, MeanOfEmptyCellsIsZero)
{
    EXPECT_EQ(evaluate(u"=mean(A5:A7)"_s), 0);
}

TEST_F(Formulas, RangeGivenBackwardsHoldsNoCells)
{
    enter("A1", u"5"_s);
    enter("A2", u"6"_s);
    EXPECT_EQ(evaluate(u"=sum(A2:A1)"_s), 0);
    EXPECT_EQ(evaluate(u"=sum(B1:A2)"_s), 0);
}

TEST_F(Formulas, RangeRunsRowByRowOverARectangle)
{
    enter("A1", u"1"_s);
    enter("B1", u"2"_s);
    enter("A2", u"3"_s);
    enter("B2", u"4"_s);
    enter("C3", u"100"_s);
    EXPECT_EQ(evaluate(u"=SUM(a1:b2)*2"_s), 20);
}

TEST_F(Formulas, BothSumsOfAFormulaAreReplaced)
{
    enter("A1", u"1"_s);
    enter("A2", u"2"_s);
    enter("B1", u"10"_s);
    enter("B2", u"20"_s);
    EXPECT_EQ(evaluate(u"=2*sum(A1:A2)+sum(B1:B2)"_s), 36);
    // The first sum found comes first in the links.
    const QList<CellRef> expected { { 2, 1, 1 }, { 2, 2, 1 }, { 2, 1, 2 }, { 2, 2, 2 } };
    EXPECT_EQ(record("J10").Precedents, expected);
}

struct StatisticRow
{
    const char* name;
    QStringList cells; // entered into A1, A2, ...
    QString formula;
    double expected;
};

void PrintTo(const StatisticRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class RangeStatistics : public Formulas, public testing::WithParamInterface<StatisticRow>
{
};

TEST_P(RangeStatistics, FollowTheChosenRules)
{
    for (int i = 0; i < GetParam().cells.size(); ++i)
        EnterCell(sheet, i + 1, 1, GetParam().cells[i]);
    EXPECT_DOUBLE_EQ(evaluate(GetParam().formula), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, RangeStatistics,
    testing::Values(
        StatisticRow { "medianOfOddCount", { u"5"_s, u"1"_s, u"3"_s }, u"=median(A1:A3)"_s, 3 },
        StatisticRow { "medianOfEvenCountIsMeanOfMiddleTwo", { u"4"_s, u"1"_s, u"3"_s, u"10"_s },
            u"=median(A1:A4)"_s, 3.5 },
        StatisticRow {
            "medianIgnoresText", { u"4"_s, u"x"_s, u"8"_s, u"6"_s }, u"=median(A1:A4)"_s, 6 },
        StatisticRow { "medianOfNothingIsZero", { u"x"_s }, u"=median(A1:A3)"_s, 0 },
        StatisticRow {
            "modeMostFrequent", { u"2"_s, u"7"_s, u"7"_s, u"2"_s, u"7"_s }, u"=mode(A1:A5)"_s, 7 },
        StatisticRow {
            "modeTieGoesToSmallest", { u"9"_s, u"9"_s, u"4"_s, u"4"_s }, u"=mode(A1:A4)"_s, 4 },
        StatisticRow {
            "modeOfAllDifferentIsSmallest", { u"9"_s, u"3"_s, u"5"_s }, u"=mode(A1:A3)"_s, 3 },
        StatisticRow { "modeIgnoresTextAndEmpty", { u"x"_s, u""_s, u"6"_s }, u"=mode(A1:A3)"_s, 6 },
        StatisticRow { "modeOfNothingIsZero", {}, u"=mode(A1:A3)"_s, 0 }),
    [](const testing::TestParamInfo<StatisticRow>& info) { return info.param.name; });

struct FailureRow
{
    const char* name;
    QString formula;
    int offset;
    QString description;
};

void PrintTo(const FailureRow& row, std::ostream* stream)
{
    *stream << row.name << ": " << row.formula.toStdString();
}

class FormulaErrors : public Formulas, public testing::WithParamInterface<FailureRow>
{
};

TEST_P(FormulaErrors, RaiseTheirOffsetAndText)
{
    EXPECT_EQ(
        failure(GetParam().formula), std::make_pair(GetParam().offset, GetParam().description));
    // A refused formula records no links.
    EXPECT_FALSE(record("J10").HasPrecedents);
    EXPECT_FALSE(record("A1").HasDependents);
}

INSTANTIATE_TEST_SUITE_P(Rows, FormulaErrors,
    testing::Values(FailureRow { "rowBelowSheet", u"=A257"_s, 0, u"No such cell"_s },
        FailureRow { "rowZero", u"=A1+A0"_s, 0, u"No such cell"_s },
        FailureRow { "rangeCornerOutside", u"=sum(A1:A300)"_s, 0, u"No such cell"_s },
        FailureRow {
            "noClosingBracket", u"=sum(A1:A3"_s, 1, u"Functions must end with closed brackets."_s },
        FailureRow { "oneReference", u"=sum(A1)"_s, 2,
            u"You must have two valid cell references in this function."_s },
        FailureRow { "noReference", u"=mean(1:2)"_s, 2,
            u"You must have two valid cell references in this function."_s },
        FailureRow { "secondReferenceAfterBracket", u"=sum(A1)+B2"_s, 2,
            u"You must have two valid cell references in this function."_s },
        FailureRow { "syntaxError", u"=A1+*2"_s, 4, u"Syntax Error"_s },
        FailureRow { "emptyBrackets", u"=()"_s, 4, u"Syntax Error"_s },
        FailureRow { "undefinedFunction", u"=foo(1)"_s, 4, u"Undefined Function"_s },
        FailureRow { "divisionByZero", u"=1/A1"_s, -1, u"Division by zero"_s },
        // The divisor still to be typed reads as 0: the division faults before the syntax.
        FailureRow { "halfTypedDivision", u"=5/"_s, -1, u"Division by zero"_s },
        FailureRow { "overflow", u"=10^200*10^200"_s, -1, u"Overflow"_s }),
    [](const testing::TestParamInfo<FailureRow>& info) { return info.param.name; });

TEST_F(Formulas, FractionIsInsertedFromItsPoint)
{
    enter("A1", u"0.5"_s);
    // "2" followed by ".5": the value is inserted in its general form, without a "0".
    EXPECT_EQ(evaluate(u"=2A1"_s), 2.5);
    EXPECT_EQ(evaluate(u"=A1*4"_s), 2);
}

TEST_F(Formulas, ExponentLetterIsReadAsCell)
{
    enter("E5", u"7"_s);
    // "1e5" is "1" followed by the value of E5.
    EXPECT_EQ(evaluate(u"=1e5"_s), 17);
}

TEST_F(Formulas, FixedMarksChangeNothingInEvaluation)
{
    enter("B2", u"21"_s);
    EXPECT_EQ(evaluate(u"=$B$2+B$2+$B2+b2"_s), 84);
}

TEST_F(Formulas, NegativeValuesAreInsertedWithTheirSign)
{
    enter("A1", u"-3"_s);
    EXPECT_EQ(evaluate(u"=2-A1"_s), 5);
    EXPECT_EQ(evaluate(u"=2^A1"_s), 0.125);
}

TEST_F(Formulas, LargeValuesAreInsertedInExponentForm)
{
    enter("A1", u"1e20"_s);
    EXPECT_EQ(evaluate(u"=A1*2"_s), 2e20);
}

TEST_F(Formulas, ValuesAreInsertedWithFifteenDigits)
{
    enter("A1", u"=1/3"_s);
    EXPECT_DOUBLE_EQ(evaluate(u"=A1*3"_s), 0.999999999999999);
}

TEST_F(Formulas, OnlyEqualsIsZeroWithoutLinks)
{
    EXPECT_EQ(evaluate(u"="_s), 0);
    EXPECT_FALSE(record("J10").HasPrecedents);
}

TEST_F(Formulas, TextLeftOverGivesZeroWithoutLinks)
{
    enter("A1", u"5"_s);
    EXPECT_EQ(evaluate(u"=A1 2"_s), 0);
    EXPECT_FALSE(record("J10").HasPrecedents);
    EXPECT_FALSE(record("A1").HasDependents);
}

TEST_F(Formulas, LinksRecordedBothWays)
{
    enter("A1", u"5"_s);
    evaluate(u"=A1+a1+sum(B1:B2)"_s, "C1");
    const QList<CellRef> precedents { { 2, 1, 2 }, { 2, 2, 2 }, { 1, 1, 1 } };
    EXPECT_EQ(record("C1").Precedents, precedents);
    EXPECT_TRUE(record("C1").HasPrecedents);
    for (const char* cell : { "A1", "B1", "B2" }) {
        EXPECT_EQ(record(cell).Dependents, (QList<CellRef> { { 0, 1, 3 } })) << cell;
        EXPECT_TRUE(record(cell).HasDependents) << cell;
    }
    EXPECT_FALSE(record("B3").HasDependents);
}

TEST_F(Formulas, WithoutRecordingNothingIsLinked)
{
    enter("A1", u"5"_s);
    EXPECT_EQ(evaluate(u"=A1*2"_s, "C1", false), 10);
    EXPECT_FALSE(record("C1").HasPrecedents);
    EXPECT_FALSE(record("A1").HasDependents);
}

TEST(PrecedentCellsOfLists, SkipWhatNamesNoCell)
{
    const QList<CellRef> damaged { { 1, 0, 1 }, { 1, 3, 27 }, { 2, 255, 26 }, { 2, 300, 30 },
        { 1, 2, 2 }, { 2, 1, 1 } };
    // The range is held to the sheet; the last corner has no partner.
    const QList<CellAddress> expected { { 255, 26 }, { 256, 26 }, { 2, 2 } };
    EXPECT_EQ(PrecedentCells(damaged), expected);
}

TEST_F(Formulas, CycleAwayFromTheOriginEndsTheSearch)
{
    // Only a damaged file can hold this: B1 and C1 read each other, and A1 reads B1.
    sheet.record(1, 2).Precedents = { { 1, 1, 3 } };
    sheet.record(1, 2).HasPrecedents = true;
    sheet.record(1, 3).Precedents = { { 1, 1, 2 } };
    sheet.record(1, 3).HasPrecedents = true;
    sheet.record(1, 1).Precedents = { { 1, 1, 2 } };
    sheet.record(1, 1).HasPrecedents = true;
    EXPECT_FALSE(LeadsBackTo(sheet, { 1, 1 }));
    EXPECT_TRUE(LeadsBackTo(sheet, { 1, 2 }));
}

} // namespace
