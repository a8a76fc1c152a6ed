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

TEST_F(Formulas, BothSumsOfAFormulaAreReplaced)
{
    enter("A1", u"1"_s);
    enter("A2", u"2"_s);
    enter("B1", u"10"_s);
    enter("B2", u"20"_s);
    enter("C3", u"100"_s);
    EXPECT_EQ(evaluate(u"=2*sum(A1:A2)+SUM(b1:b2)"_s), 36);
    // The first sum found comes first in the links; a range runs row by row.
    const QList<CellRef> expected { { 2, 1, 1 }, { 2, 2, 1 }, { 2, 1, 2 }, { 2, 2, 2 } };
    EXPECT_EQ(record("J10").Precedents, expected);
    EXPECT_EQ(evaluate(u"=sum(A1:B2)"_s), 33);
}

struct ValueRow
{
    const char* name;
    QList<std::pair<const char*, QString>> cells; // entered first
    QString formula;
    double expected;
};

class FormulaValues : public Formulas, public testing::WithParamInterface<ValueRow>
{
};

TEST_P(FormulaValues, FollowTheChosenRules)
{
    for (const auto& [cell, text] : GetParam().cells)
        enter(cell, text);
    EXPECT_DOUBLE_EQ(evaluate(GetParam().formula), GetParam().expected);
}

const QList<std::pair<const char*, QString>> oneTextThree { { "A1", u"1"_s }, { "A2", u"apples"_s },
    { "A3", u"3"_s } };

INSTANTIATE_TEST_SUITE_P(Rows, FormulaValues,
    testing::Values(ValueRow { "sumAddsTextAsZero", oneTextThree, u"=sum(A1:A3)"_s, 4 },
        ValueRow { "sumPastTheEntries", oneTextThree, u"=sum(A1:A9)"_s, 4 },
        ValueRow { "meanCountsOnlyNumbers", oneTextThree, u"=mean(A1:A3)"_s, 2 },
        // The mean goes into the formula's text with 15 significant digits.
        ValueRow { "averageCountsFormulas",
            { { "A1", u"1"_s }, { "A2", u"3"_s }, { "A3", u"=A2*2"_s } }, u"=average(A1:A3)"_s,
            3.33333333333333 },
        ValueRow { "meanOfEmptyCellsIsZero", {}, u"=mean(A5:A7)"_s, 0 },
        ValueRow { "backwardsRangeHoldsNoCells", oneTextThree, u"=sum(A3:A1)+sum(B1:A2)"_s, 0 },
        ValueRow { "medianOfOddCount", { { "A1", u"5"_s }, { "A2", u"1"_s }, { "A3", u"3"_s } },
            u"=median(A1:A3)"_s, 3 },
        ValueRow { "medianOfEvenCountIsMeanOfMiddleTwo",
            { { "A1", u"4"_s }, { "A2", u"1"_s }, { "A3", u"3"_s }, { "A4", u"10"_s } },
            u"=median(A1:A4)"_s, 3.5 },
        ValueRow { "medianIgnoresText", { { "A1", u"4"_s }, { "A2", u"x"_s }, { "A3", u"8"_s } },
            u"=median(A1:A3)"_s, 6 },
        ValueRow { "medianOfNothingIsZero", { { "A1", u"x"_s } }, u"=median(A1:A3)"_s, 0 },
        ValueRow { "modeMostFrequent",
            { { "A1", u"2"_s }, { "A2", u"7"_s }, { "A3", u"7"_s }, { "A4", u"2"_s },
                { "A5", u"7"_s } },
            u"=mode(A1:A5)"_s, 7 },
        ValueRow { "modeTieGoesToSmallest",
            { { "A1", u"9"_s }, { "A2", u"9"_s }, { "A3", u"4"_s }, { "A4", u"4"_s } },
            u"=mode(A1:A4)"_s, 4 },
        ValueRow { "modeOfAllDifferentIsSmallest",
            { { "A1", u"9"_s }, { "A2", u"3"_s }, { "A3", u"5"_s } }, u"=mode(A1:A3)"_s, 3 },
        ValueRow { "modeOfNothingIsZero", { { "A2", u"x"_s } }, u"=mode(A1:A3)"_s, 0 },
        // A value is inserted into the text in its general form, so "2" then ".5" is 2.5.
        ValueRow { "fractionInsertedFromItsPoint", { { "A1", u"0.5"_s } }, u"=2A1"_s, 2.5 },
        ValueRow { "exponentLetterIsACell", { { "E5", u"7"_s } }, u"=1e5"_s, 17 },
        ValueRow { "fixedMarksChangeNothing", { { "B2", u"21"_s } }, u"=$B$2+B$2+$B2+b2"_s, 84 },
        ValueRow { "negativeInsertedWithItsSign", { { "A1", u"-3"_s } }, u"=2-A1+2^A1"_s, 5.125 },
        ValueRow { "largeInsertedInExponentForm", { { "A1", u"1e20"_s } }, u"=A1*2"_s, 2e20 },
        ValueRow {
            "insertedWithFifteenDigits", { { "A1", u"=1/3"_s } }, u"=A1*3"_s, 0.999999999999999 },
        ValueRow { "onlyEqualsIsZero", {}, u"="_s, 0 }),
    [](const testing::TestParamInfo<ValueRow>& info) { return info.param.name; });

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
