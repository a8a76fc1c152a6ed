#include "graph/GraphScale.h"

#include <gtest/gtest.h>

using Ormsey::CalculateScale;
using Ormsey::GraphScale;

namespace {

struct NormaliseRow
{
    const char* name;
    double value;
    double roundValue;
    double factor;
};

class NormaliseValueRows : public testing::TestWithParam<NormaliseRow>
{
};

TEST_P(NormaliseValueRows, GiveTheRoundValueAndFactor)
{
    double value = GetParam().value;
    double factor = 0;
    Ormsey::NormaliseValue(value, factor);
    EXPECT_DOUBLE_EQ(value, GetParam().roundValue);
    EXPECT_DOUBLE_EQ(factor, GetParam().factor);
}

INSTANTIATE_TEST_SUITE_P(GraphScale, NormaliseValueRows,
    testing::Values(NormaliseRow { "twelveBecomesFifteen", 12, 15, 1 },
        NormaliseRow { "fortySevenBecomesFifty", 47, 50, 1 },
        NormaliseRow { "eightyStays", 80, 80, 1 },
        NormaliseRow { "fifteenPointFourBecomesFifteen", 15.4, 15, 1 },
        NormaliseRow { "thirtySevenBecomesForty", 37, 40, 1 },
        NormaliseRow { "negativeCountsByItsSize", -20, 20, 1 },
        NormaliseRow { "hundredsScaleDown", 370, 40, 0.1 },
        NormaliseRow { "tenthsScaleUp", 0.37, 40, 100 },
        // The base-10 logarithm as the natural logarithm over that of 10 puts a thousand just
        // below 3, so its whole part is 2.
        NormaliseRow { "exactThousand", 1000, 100, 0.1 },
        NormaliseRow { "justUnderFortyFiveRoundsUpInFives", 44, 45, 1 },
        NormaliseRow { "fortyFiveRoundsInTens", 45, 50, 1 },
        NormaliseRow { "ninetyNineBecomesHundred", 99.5, 100, 1 }),
    [](const auto& info) { return std::string(info.param.name); });

struct IntervalRow
{
    const char* name;
    double value;
    int intervals;
};

class NumberOfIntervalsRows : public testing::TestWithParam<IntervalRow>
{
};

TEST_P(NumberOfIntervalsRows, SplitTheRoundValue)
{
    EXPECT_EQ(Ormsey::NumberOfIntervals(GetParam().value), GetParam().intervals);
}

INSTANTIATE_TEST_SUITE_P(GraphScale, NumberOfIntervalsRows,
    testing::Values(IntervalRow { "ten", 10, 5 }, IntervalRow { "fifteen", 15, 5 },
        IntervalRow { "twenty", 20, 10 }, IntervalRow { "thirty", 30, 6 },
        IntervalRow { "thirtyFive", 35, 5 }, IntervalRow { "forty", 40, 8 },
        IntervalRow { "fifty", 50, 10 }, IntervalRow { "sixty", 60, 6 },
        IntervalRow { "seventy", 70, 7 }, IntervalRow { "eighty", 80, 8 },
        IntervalRow { "ninety", 90, 9 }, IntervalRow { "hundred", 100, 10 }),
    [](const auto& info) { return std::string(info.param.name); });

struct ScaleRow
{
    const char* name;
    double minimum;
    double maximum;
    bool autoScale;
    bool nonInteger;
    int intervals;
    int step;
    int negativeIntervals;
    double factor;
    double pixelsPerUnit; // over an axis of 220 pixels
    double lowEnd; // the value at the bottom of the axis
    double highEnd; // and at the top
};

class CalculateScaleRows : public testing::TestWithParam<ScaleRow>
{
};

TEST_P(CalculateScaleRows, GiveTheAxis)
{
    const ScaleRow& row = GetParam();
    const GraphScale scale
        = CalculateScale(row.minimum, row.maximum, row.autoScale, row.nonInteger, 220);
    EXPECT_EQ(scale.Intervals, row.intervals);
    EXPECT_EQ(scale.Step, row.step);
    EXPECT_EQ(scale.NegativeIntervals, row.negativeIntervals);
    EXPECT_DOUBLE_EQ(scale.Factor, row.factor);
    EXPECT_NEAR(scale.PixelsPerUnit, row.pixelsPerUnit, 1e-9);
    EXPECT_NEAR(scale.BoundaryValue(0), row.lowEnd, 1e-12);
    EXPECT_NEAR(scale.BoundaryValue(scale.Intervals), row.highEnd, 1e-12);
    // The pixels of the whole axis cover exactly its range of values.
    EXPECT_NEAR((row.highEnd - row.lowEnd) * scale.PixelsPerUnit, 220, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(GraphScale, CalculateScaleRows,
    testing::Values(
        ScaleRow { "wholeNumbersUpToThirtySeven", 0, 37, true, false, 8, 5, 0, 1, 5.5, 0, 40 },
        ScaleRow { "twelveThirtySeven", 0, 30, true, false, 6, 5, 0, 1, 220.0 / 30, 0, 30 },
        ScaleRow {
            "minusTwentyToThirtyFive", -20, 35, true, false, 8, 7, 3, 1, 220.0 / 56, -21, 35 },
        ScaleRow { "smallWholeNumbersGetATopOfTen", 0, 7, true, false, 5, 2, 0, 1, 22, 0, 10 },
        ScaleRow { "minimumAboveZeroStartsAtZero", 5, 7, true, false, 5, 2, 0, 1, 22, 0, 10 },
        ScaleRow { "negativeOnlyData", -17, -3, true, false, 10, 2, 10, 1, 11, -20, 0 },
        ScaleRow { "negativeWholeNumbersUpToZeroReachTen", -17, 0, true, false, 15, 2, 10, 1,
            220.0 / 30, -20, 10 },
        ScaleRow { "negativeSideLarger", -37, 12, true, false, 11, 5, 8, 1, 4, -40, 15 },
        ScaleRow { "nonIntegerDataKeepsASmallTop", 0, 0.37, true, true, 8, 5, 0, 100, 550, 0, 0.4 },
        ScaleRow { "nonIntegerDataBelowTen", 0, 7, true, true, 7, 10, 0, 10, 220.0 / 7, 0, 7 },
        ScaleRow { "thousands", 0, 3700, true, false, 8, 5, 0, 0.01, 220.0 / 4000, 0, 4000 },
        // Ticks every tenth of the way: 0, 100, ..., 1000 and the like.
        ScaleRow { "exactlyAThousand", 0, 1e3, true, false, 10, 10, 0, 0.1, 0.22, 0, 1e3 },
        ScaleRow { "exactlyAMillion", 0, 1e6, true, false, 10, 10, 0, 1e-4, 2.2e-4, 0, 1e6 },
        ScaleRow { "exactlyABillion", 0, 1e9, true, false, 10, 10, 0, 1e-7, 2.2e-7, 0, 1e9 },
        ScaleRow {
            "manualRangeIsNotStretchedToTen", 2, 7, false, false, 7, 10, 0, 10, 220.0 / 7, 0, 7 },
        ScaleRow { "zeroAtBothEndsShowsZeroToOne", 0, 0, true, true, 5, 2, 0, 10, 220, 0, 1 }),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
