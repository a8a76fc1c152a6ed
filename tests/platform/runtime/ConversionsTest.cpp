#include "platform/runtime/Conversions.h"

#include "TableRows.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/QStringPrinter.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <tuple>

using namespace Qt::Literals::StringLiterals;
using namespace Runtime;

namespace {

using TestRows::PrintTo;

struct TextToNumber
{
    const char* name;
    QString text;
    double expected;
};

class ValReading : public testing::TestWithParam<TextToNumber>
{
};

TEST_P(ValReading, ReadsTheLeadingNumber)
{
    EXPECT_DOUBLE_EQ(Val(GetParam().text), GetParam().expected) << GetParam().text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Rows, ValReading,
    testing::Values(TextToNumber { "plainWhole", u"42"_s, 42.0 },
        TextToNumber { "leadingBlanksSkipped", u"   7"_s, 7.0 },
        TextToNumber { "tabsAndLineEndsSkipped", u"\t\n\r8"_s, 8.0 },
        TextToNumber { "blanksInsideIgnored", u" 1 615 198th Street"_s, 1615198.0 },
        TextToNumber { "stopsAtLetters", u"12 apples"_s, 12.0 },
        TextToNumber { "stopsAtComma", u"1,000"_s, 1.0 },
        TextToNumber { "negative", u"-12.5"_s, -12.5 },
        TextToNumber { "explicitPlus", u"+3"_s, 3.0 },
        TextToNumber { "doubleSignIsNothing", u"--5"_s, 0.0 },
        TextToNumber { "pointFirst", u".5"_s, 0.5 },
        TextToNumber { "secondPointStops", u"1.2.3"_s, 1.2 },
        TextToNumber { "exponent", u"1.5E3"_s, 1500.0 },
        TextToNumber { "exponentWithD", u"2D2"_s, 200.0 },
        TextToNumber { "exponentWithoutDigitsIgnored", u"2e"_s, 2.0 },
        TextToNumber { "exponentStopsAtPoint", u"1e2.5"_s, 100.0 },
        TextToNumber { "blankTextIsZero", u"   "_s, 0.0 },
        TextToNumber { "wordIsZero", u"Cats"_s, 0.0 },
        TextToNumber { "currencySymbolIsZero", u"£5"_s, 0.0 },
        TextToNumber { "loneSignIsZero", u"-"_s, 0.0 },
        TextToNumber { "hexSmall", u"&H1F"_s, 31.0 },
        TextToNumber { "hexFFFFIsSixteenBitMinusOne", u"&HFFFF"_s, -1.0 },
        TextToNumber { "hex8000IsSixteenBitMinimum", u"&H8000"_s, -32768.0 },
        TextToNumber { "hexLongSuffixKeepsPositive", u"&HFFFF&"_s, 65535.0 },
        TextToNumber { "hexFiveDigitsIsLong", u"&HFFFFF"_s, 1048575.0 },
        TextToNumber { "hexLeadingZeroStillSixteenBit", u"&H0FFFF"_s, -1.0 },
        TextToNumber { "hexEightFsIsLongMinusOne", u"&HFFFFFFFF"_s, -1.0 },
        TextToNumber { "hexStopsAtNonDigit", u"&H1G"_s, 1.0 },
        TextToNumber { "hexWithoutDigitsIsZero", u"&H"_s, 0.0 },
        TextToNumber { "hexWithBlanks", u" & H 1 0"_s, 16.0 },
        TextToNumber { "octal", u"&O17"_s, 15.0 },
        TextToNumber { "octalSixteenBitMinusOne", u"&O177777"_s, -1.0 },
        TextToNumber { "ampersandAloneIsZero", u"&"_s, 0.0 },
        TextToNumber { "signBeforeHexIsZero", u"-&H10"_s, 0.0 },
        TextToNumber { "tinyUnderflowsToZero", u"1e-400"_s, 0.0 },
        TextToNumber { "longDigitRun", u"123456789012345678901234567890"_s, 1.2345678901234568e29 },
        TextToNumber {
            "largestDouble", u"1.7976931348623157e308"_s, std::numeric_limits<double>::max() }),
    TestRows::Named());

TEST(ValErrors, OverflowsRaiseErrorSix)
{
    for (const QString& text : { u"1e400"_s, u"-1e309"_s, u"&H100000000"_s, u"&O77777777777"_s }) {
        try {
            Val(text);
            ADD_FAILURE() << "no error for " << text.toStdString();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), Error::Overflow) << text.toStdString();
        }
    }
}

// Odd inputs must never crash or hang and must give either a number or Error 6.
TEST(ValErrors, OddInputsGiveANumberOrOverflow)
{
    const QString pieces[] = { u"&"_s, u"H"_s, u"O"_s, u"e"_s, u"D"_s, u"+"_s, u"-"_s, u"."_s,
        u"9"_s, u"0"_s, u"F"_s, u" "_s, u"\u00a0"_s, u"\U0001F600"_s, QString(QChar(0)) };
    int readings = 0;
    for (const QString& first : pieces) {
        for (const QString& second : pieces) {
            for (const QString& third : pieces) {
                for (const QString& fourth : pieces) {
                    const QString text = first + second + third + fourth;
                    try {
                        const double value = Val(text);
                        EXPECT_TRUE(std::isfinite(value)) << text.toStdString();
                        ++readings;
                    } catch (const Error& error) {
                        EXPECT_EQ(error.number(), Error::Overflow);
                    }
                }
            }
        }
    }
    EXPECT_EQ(readings, 15 * 15 * 15 * 15);
}

struct NumberToText
{
    const char* name;
    double value;
    QString expected;
};

class StrText : public testing::TestWithParam<NumberToText>
{
};

TEST_P(StrText, MatchesTheClassicText)
{
    EXPECT_EQ(Str(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, StrText,
    testing::Values(NumberToText { "zeroHasBlank", 0.0, u" 0"_s },
        NumberToText { "negativeZeroIsZero", -0.0, u" 0"_s },
        NumberToText { "negativeWhole", -30.0, u"-30"_s },
        NumberToText { "halfWithoutLeadingZero", 0.5, u" .5"_s },
        NumberToText { "negativeHalf", -0.5, u"-.5"_s },
        NumberToText { "fraction", 12.25, u" 12.25"_s },
        NumberToText { "fifteenDigitsStayPlain", 123456789012345.0, u" 123456789012345"_s },
        NumberToText { "oneE15IsExponent", 1e15, u" 1E+15"_s },
        NumberToText { "mantissaWithFraction", 1.5e20, u" 1.5E+20"_s },
        NumberToText { "threeDigitExponent", 1e100, u" 1E+100"_s },
        NumberToText { "roundsUpIntoExponentForm", 999999999999999.9, u" 1E+15"_s },
        NumberToText { "tenThousandthIsPlain", 0.0001, u" .0001"_s },
        NumberToText { "hundredThousandthIsExponent", 1e-05, u" 1E-05"_s },
        NumberToText { "fifteenSignificantDigits", 0.1 + 0.2, u" .3"_s },
        NumberToText { "oneThird", 1.0 / 3.0, u" .333333333333333"_s },
        NumberToText { "twoThirdsRounded", 2.0 / 3.0, u" .666666666666667"_s },
        NumberToText { "sixteenDigitsRounded", 1234567890123456.0, u" 1.23456789012346E+15"_s },
        NumberToText { "largeNegative", -1e300, u"-1E+300"_s },
        NumberToText { "smallestNormal", 2.2250738585072014e-308, u" 2.2250738585072E-308"_s }),
    TestRows::Named());

TEST(StrText, IgnoresTheLocale)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(Str(1234.5), u" 1234.5"_s);
}

struct NumericTextRow
{
    const char* name;
    QString text;
    std::optional<double> value; // nothing: not numeric
};

class LocaleNumberReading : public testing::TestWithParam<NumericTextRow>
{
};

TEST_P(LocaleNumberReading, IsNumericAndCDblAgree)
{
    const NumericTextRow& row = GetParam();
    EXPECT_EQ(IsNumeric(row.text), row.value.has_value()) << row.text.toStdString();
    if (row.value) {
        EXPECT_DOUBLE_EQ(CDbl(row.text), *row.value) << row.text.toStdString();
    } else {
        try {
            CDbl(row.text);
            ADD_FAILURE() << "no error for " << row.text.toStdString();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), Error::TypeMismatch);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, LocaleNumberReading,
    testing::Values(NumericTextRow { "whole", u"42"_s, 42.0 },
        NumericTextRow { "blanksAround", u"  42  "_s, 42.0 },
        NumericTextRow { "decimal", u"-12.5"_s, -12.5 },
        NumericTextRow { "pointFirst", u".5"_s, 0.5 }, NumericTextRow { "pointLast", u"5."_s, 5.0 },
        NumericTextRow { "thousands", u"1,234,567.5"_s, 1234567.5 },
        NumericTextRow { "looseThousands", u"1,2,3"_s, 123.0 },
        NumericTextRow { "currencySymbol", u"£3.50"_s, 3.5 },
        NumericTextRow { "minusBeforeSymbol", u"-£3"_s, -3.0 },
        NumericTextRow { "symbolBeforeMinus", u"£-3"_s, -3.0 },
        NumericTextRow { "trailingMinus", u"5-"_s, -5.0 },
        NumericTextRow { "bracketsAreNegative", u"(5)"_s, -5.0 },
        NumericTextRow { "exponent", u"1.5E3"_s, 1500.0 },
        NumericTextRow { "hex", u"&HFF"_s, 255.0 },
        NumericTextRow { "hexSixteenBit", u"&HFFFF"_s, -1.0 },
        NumericTextRow { "empty", u""_s, std::nullopt },
        NumericTextRow { "word", u"abc"_s, std::nullopt },
        NumericTextRow { "numberThenWord", u"12 apples"_s, std::nullopt },
        NumericTextRow { "blankInside", u"1 000"_s, std::nullopt },
        NumericTextRow { "twoPoints", u"1.2.3"_s, std::nullopt },
        NumericTextRow { "exponentWithoutDigits", u"1e"_s, std::nullopt },
        NumericTextRow { "loneSign", u"-"_s, std::nullopt },
        NumericTextRow { "twoSigns", u"-5-"_s, std::nullopt },
        NumericTextRow { "unclosedBracket", u"(5"_s, std::nullopt },
        NumericTextRow { "bracketAndMinus", u"(-5)"_s, std::nullopt },
        NumericTextRow { "foreignSymbol", u"$5"_s, std::nullopt },
        NumericTextRow { "hexWithJunk", u"&HFG"_s, std::nullopt },
        NumericTextRow { "dateIsNotNumeric", u"29/02/2024"_s, std::nullopt }),
    TestRows::Named());

TEST(LocaleNumberErrors, TooLargeIsOverflowNotMismatch)
{
    EXPECT_FALSE(IsNumeric(u"1e400"_s));
    try {
        CDbl(u"1e400"_s);
        ADD_FAILURE() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Error::Overflow);
    }
}

struct ValueRow
{
    const char* name;
    Variant value;
    bool numeric;
};

class NumericValues : public testing::TestWithParam<ValueRow>
{
};

TEST_P(NumericValues, FollowTheKindOfValue)
{
    EXPECT_EQ(IsNumeric(GetParam().value), GetParam().numeric);
}

INSTANTIATE_TEST_SUITE_P(Rows, NumericValues,
    testing::Values(ValueRow { "empty", Variant(), true }, ValueRow { "onOff", true, true },
        ValueRow { "whole", 5, true }, ValueRow { "real", 2.5, true },
        ValueRow { "currency", Variant::currency(1.25), true },
        ValueRow { "date", Variant::date(45351), false },
        ValueRow { "null", Variant::null(), false },
        ValueRow { "numericText", Variant(u" 3 "_s), true },
        ValueRow { "otherText", Variant(u"x"_s), false },
        ValueRow { "binary", Variant(QByteArray("1")), false }),
    TestRows::Named());

int errorNumberOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(ValueConversions, CDblOfEachKind)
{
    EXPECT_EQ(CDbl(Variant()), 0.0);
    EXPECT_EQ(CDbl(Variant(true)), -1.0);
    EXPECT_EQ(CDbl(Variant(7)), 7.0);
    EXPECT_EQ(CDbl(Variant::date(-1.25)), -1.25);
    EXPECT_EQ(CDbl(Variant(u"£1,000"_s)), 1000.0);
    EXPECT_EQ(errorNumberOf([] { CDbl(Variant::null()); }), Error::InvalidUseOfNull);
    EXPECT_EQ(errorNumberOf([] { CDbl(Variant(u"x"_s)); }), Error::TypeMismatch);
    EXPECT_EQ(errorNumberOf([] { CDbl(Variant(QByteArray("1"))); }), Error::TypeMismatch);
}

struct RoundingRow
{
    const char* name;
    double value;
    int expected;
};

class HalvesToEven : public testing::TestWithParam<RoundingRow>
{
};

TEST_P(HalvesToEven, InCIntAndCLng)
{
    EXPECT_EQ(CInt(GetParam().value), GetParam().expected);
    EXPECT_EQ(CLng(GetParam().value), GetParam().expected);
    EXPECT_EQ(Round(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, HalvesToEven,
    testing::Values(RoundingRow { "halfToZero", 0.5, 0 }, RoundingRow { "oneAndHalfToTwo", 1.5, 2 },
        RoundingRow { "twoAndHalfToTwo", 2.5, 2 }, RoundingRow { "threeAndHalfToFour", 3.5, 4 },
        RoundingRow { "minusHalfToZero", -0.5, 0 },
        RoundingRow { "minusOneAndHalfToMinusTwo", -1.5, -2 },
        RoundingRow { "minusTwoAndHalfToMinusTwo", -2.5, -2 },
        RoundingRow { "justAboveHalfUp", 0.5000001, 1 },
        RoundingRow { "justBelowHalfDown", 2.4999999, 2 },
        RoundingRow { "negativeFractionDown", -2.6, -3 },
        RoundingRow { "largestInteger", 32767.4, 32767 },
        RoundingRow { "smallestInteger", -32768.5, -32768 }),
    TestRows::Named());

TEST(WholeNumberRanges, OverflowIsErrorSix)
{
    EXPECT_EQ(errorNumberOf([] { CInt(32767.5); }), Error::Overflow);
    EXPECT_EQ(errorNumberOf([] { CInt(-32768.6); }), Error::Overflow);
    EXPECT_EQ(errorNumberOf([] { CInt(std::nan("")); }), Error::Overflow);
    EXPECT_EQ(CLng(32768.0), 32768);
    EXPECT_EQ(CLng(2147483647.4), 2147483647);
    EXPECT_EQ(CLng(-2147483648.5), -2147483647 - 1);
    EXPECT_EQ(errorNumberOf([] { CLng(2147483647.5); }), Error::Overflow);
    EXPECT_EQ(errorNumberOf([] { CLng(1e300); }), Error::Overflow);
    EXPECT_EQ(CInt(Variant(u"2.5"_s)), 2);
    EXPECT_EQ(CLng(Variant(true)), -1);
    EXPECT_EQ(errorNumberOf([] { CInt(Variant(u"many"_s)); }), Error::TypeMismatch);
}

// Int rounds down, Fix drops the fraction: they differ only below zero.
TEST(IntAndFix, RoundDownAndTowardZero)
{
    const std::tuple<double, double, double> rows[]
        = { { 2.7, 2, 2 }, { -2.5, -3, -2 }, { -0.1, -1, 0 }, { -4, -4, -4 } };
    for (const auto& [value, intValue, fixValue] : rows) {
        EXPECT_EQ(Int(value), intValue) << value;
        EXPECT_EQ(Fix(value), fixValue) << value;
    }
}

struct RoundDigitsRow
{
    const char* name;
    double value;
    int digits;
    double expected;
};

class RoundRows : public testing::TestWithParam<RoundDigitsRow>
{
};

TEST_P(RoundRows, HalvesGoToEven)
{
    EXPECT_DOUBLE_EQ(Round(GetParam().value, GetParam().digits), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, RoundRows,
    testing::Values(RoundDigitsRow { "eighthToTwoPlacesEven", 0.125, 2, 0.12 },
        RoundDigitsRow { "threeEighthsToTwoPlacesEven", 0.375, 2, 0.38 },
        RoundDigitsRow { "negativeEighth", -0.125, 2, -0.12 },
        RoundDigitsRow { "onePlace", 3.14159, 1, 3.1 },
        RoundDigitsRow { "fourPlaces", 2.71828182, 4, 2.7183 },
        RoundDigitsRow { "hugeValueUnchanged", 1e300, 2, 1e300 },
        RoundDigitsRow { "manyDigitsUnchanged", 0.1, 30, 0.1 }),
    TestRows::Named());

TEST(RoundArguments, NegativeDigitsAreErrorFive)
{
    EXPECT_EQ(errorNumberOf([] { Round(1.5, -1); }), Error::InvalidCall);
}

class CurrencyRows : public testing::TestWithParam<TextToNumber>
{
};

TEST_P(CurrencyRows, KeepFourDecimals)
{
    EXPECT_DOUBLE_EQ(CCur(GetParam().text), GetParam().expected) << GetParam().text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Rows, CurrencyRows,
    testing::Values(TextToNumber { "poundsAndPence", u"£1,234.50"_s, 1234.5 },
        TextToNumber { "negativePounds", u"-£3"_s, -3.0 },
        TextToNumber { "plainNumber", u"2.5"_s, 2.5 },
        TextToNumber { "fifthPlaceHalfToEvenDown", u"1.00005"_s, 1.0 },
        TextToNumber { "fifthPlaceHalfToEvenUp", u"1.00015"_s, 1.0002 },
        TextToNumber { "fifthPlaceAboveHalf", u"0.123456"_s, 0.1235 }),
    TestRows::Named());

TEST(CurrencyErrors, TextAndRangeErrors)
{
    EXPECT_EQ(errorNumberOf([] { CCur(u"cheap"_s); }), Error::TypeMismatch);
    EXPECT_EQ(errorNumberOf([] { CCur(1e15); }), Error::Overflow);
    EXPECT_EQ(errorNumberOf([] { CCur(Variant::null()); }), Error::InvalidUseOfNull);
    EXPECT_DOUBLE_EQ(CCur(922337203685477.0), 922337203685477.0);
    EXPECT_DOUBLE_EQ(CCur(Variant(u"£0.50"_s)), 0.5);
}

TEST(CurrencySymbolOfLocale, FollowsTheHostLocale)
{
    EXPECT_EQ(CurrencySymbol(), u"£"_s);
    {
        ScopedHostLocale american(QLocale(QLocale::English, QLocale::UnitedStates));
        EXPECT_EQ(CurrencySymbol(), u"$"_s);
        EXPECT_DOUBLE_EQ(CCur(u"$2.25"_s), 2.25);
        EXPECT_FALSE(IsNumeric(u"£2"_s));
    }
    EXPECT_EQ(CurrencySymbol(), u"£"_s);
}

TEST(HostLocaleChoice, TheCLocaleCountsAsBritishEnglish)
{
    // Tests run under LC_ALL=C.UTF-8.
    if (QLocale::system().language() != QLocale::C)
        GTEST_SKIP() << "the system locale is not C";
    EXPECT_EQ(HostLocale().language(), QLocale::English);
    EXPECT_EQ(HostLocale().territory(), QLocale::UnitedKingdom);
}

class GeneralNumberText : public testing::TestWithParam<NumberToText>
{
};

TEST_P(GeneralNumberText, IsStrWithoutBlankAndWithLeadingZero)
{
    EXPECT_EQ(GeneralNumber(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, GeneralNumberText,
    testing::Values(NumberToText { "zero", 0.0, u"0"_s }, NumberToText { "half", 0.5, u"0.5"_s },
        NumberToText { "oneE15", 1e15, u"1E+15"_s }, NumberToText { "oneE05", 1e-05, u"1E-05"_s },
        NumberToText { "negativeTenThousandth", -0.0001, u"-0.0001"_s },
        NumberToText {
            "tooLargeForAnyNumber", std::numeric_limits<double>::infinity(), u"Infinity"_s }),
    TestRows::Named());

} // namespace
