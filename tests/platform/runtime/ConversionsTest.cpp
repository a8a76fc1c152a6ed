#include "platform/runtime/Conversions.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/QStringPrinter.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace Qt::Literals::StringLiterals;
using namespace Runtime;

namespace {

struct TextToNumber
{
    const char* name;
    QString text;
    double expected;
};

std::string rowName(const testing::TestParamInfo<TextToNumber>& info)
{
    return info.param.name;
}

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
        TextToNumber { "pointFirst", u".5"_s, 0.5 }, TextToNumber { "pointLast", u"5."_s, 5.0 },
        TextToNumber { "secondPointStops", u"1.2.3"_s, 1.2 },
        TextToNumber { "exponent", u"1.5E3"_s, 1500.0 },
        TextToNumber { "lowerExponentNegative", u"25e-1"_s, 2.5 },
        TextToNumber { "exponentWithD", u"2D2"_s, 200.0 },
        TextToNumber { "exponentWithoutDigitsIgnored", u"2e"_s, 2.0 },
        TextToNumber { "exponentSignWithoutDigitsIgnored", u"2e+x"_s, 2.0 },
        TextToNumber { "exponentStopsAtPoint", u"1e2.5"_s, 100.0 },
        TextToNumber { "blankTextIsZero", u"   "_s, 0.0 },
        TextToNumber { "emptyIsZero", u""_s, 0.0 }, TextToNumber { "wordIsZero", u"Cats"_s, 0.0 },
        TextToNumber { "currencySymbolIsZero", u"£5"_s, 0.0 },
        TextToNumber { "loneSignIsZero", u"-"_s, 0.0 },
        TextToNumber { "lonePointIsZero", u"."_s, 0.0 },
        TextToNumber { "hexSmall", u"&H1F"_s, 31.0 },
        TextToNumber { "hexLowerCase", u"&hff"_s, 255.0 },
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
        TextToNumber { "octalStopsAtEight", u"&O178"_s, 15.0 },
        TextToNumber { "octalSixteenBitMinusOne", u"&O177777"_s, -1.0 },
        TextToNumber { "ampersandAloneIsZero", u"&"_s, 0.0 },
        TextToNumber { "ampersandOtherLetterIsZero", u"&X12"_s, 0.0 },
        TextToNumber { "signBeforeHexIsZero", u"-&H10"_s, 0.0 },
        TextToNumber { "tinyUnderflowsToZero", u"1e-400"_s, 0.0 },
        TextToNumber { "longDigitRun", u"123456789012345678901234567890"_s, 1.2345678901234568e29 },
        TextToNumber {
            "largestDouble", u"1.7976931348623157e308"_s, std::numeric_limits<double>::max() }),
    rowName);

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

std::string numberRowName(const testing::TestParamInfo<NumberToText>& info)
{
    return info.param.name;
}

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
        NumberToText { "positiveWhole", 90.0, u" 90"_s },
        NumberToText { "negativeWhole", -30.0, u"-30"_s },
        NumberToText { "halfWithoutLeadingZero", 0.5, u" .5"_s },
        NumberToText { "negativeHalf", -0.5, u"-.5"_s },
        NumberToText { "fraction", 12.25, u" 12.25"_s },
        NumberToText { "fifteenDigitsStayPlain", 123456789012345.0, u" 123456789012345"_s },
        NumberToText { "oneE15IsExponent", 1e15, u" 1E+15"_s },
        NumberToText { "oneE20IsExponent", 1e20, u" 1E+20"_s },
        NumberToText { "mantissaWithFraction", 1.5e20, u" 1.5E+20"_s },
        NumberToText { "threeDigitExponent", 1e100, u" 1E+100"_s },
        NumberToText { "roundsUpIntoExponentForm", 999999999999999.9, u" 1E+15"_s },
        NumberToText { "tenThousandthIsPlain", 0.0001, u" .0001"_s },
        NumberToText { "hundredThousandthIsExponent", 1e-05, u" 1E-05"_s },
        NumberToText { "negativeSmall", -2.5e-7, u"-2.5E-07"_s },
        NumberToText { "fifteenSignificantDigits", 0.1 + 0.2, u" .3"_s },
        NumberToText { "oneThird", 1.0 / 3.0, u" .333333333333333"_s },
        NumberToText { "twoThirdsRounded", 2.0 / 3.0, u" .666666666666667"_s },
        NumberToText { "sixteenDigitsRounded", 1234567890123456.0, u" 1.23456789012346E+15"_s },
        NumberToText { "largeNegative", -1e300, u"-1E+300"_s },
        NumberToText { "smallestNormal", 2.2250738585072014e-308, u" 2.2250738585072E-308"_s }),
    numberRowName);

TEST(StrText, IgnoresTheLocale)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(Str(1234.5), u" 1234.5"_s);
}

} // namespace
