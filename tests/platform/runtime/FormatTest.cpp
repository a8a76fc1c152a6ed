#include "platform/runtime/Format.h"

#include "TableRows.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/QStringPrinter.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::Literals::StringLiterals;
using namespace Runtime;

namespace {

struct FormatRow
{
    const char* name;
    Variant value;
    QString format;
    QString expected;
};

void PrintTo(const FormatRow& row, std::ostream* stream)
{
    *stream << row.name << " format \"" << row.format.toStdString() << '"';
}

constexpr double LeapDay = 45351; // Thursday 29 February 2024
constexpr double LeapDayAfternoon = 45351.59375; // 14:15:00
constexpr double WithSeconds = LeapDayAfternoon + 7.0 / 86400; // 14:15:07

class Formats : public testing::TestWithParam<FormatRow>
{
};

TEST_P(Formats, ShowWhatPupilsSee)
{
    EXPECT_EQ(Format(GetParam().value, GetParam().format), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(NumberPatterns, Formats,
    testing::Values(FormatRow { "twoPlacesPadsHalf", 0.5, u"0.00"_s, u"0.50"_s },
        FormatRow { "halfRoundsAwayFromZero", 0.5, u"0"_s, u"1"_s },
        FormatRow { "oneAndHalfRoundsUp", 1.5, u"0"_s, u"2"_s },
        FormatRow { "twoAndHalfRoundsUpNotToEven", 2.5, u"0"_s, u"3"_s },
        FormatRow { "minusHalfRoundsAwayFromZero", -0.5, u"0"_s, u"-1"_s },
        FormatRow { "minusTwoAndHalf", -2.5, u"0"_s, u"-3"_s },
        FormatRow { "decimalTextRoundedNotBinary", 1.005, u"0.00"_s, u"1.01"_s },
        FormatRow { "anotherDecimalHalf", 2.675, u"0.00"_s, u"2.68"_s },
        FormatRow { "negativeRoundingToZeroLosesSign", -0.001, u"0.00"_s, u"0.00"_s },
        FormatRow { "fourOptionalPlacesHalf", 0.5, u"0.####"_s, u"0.5"_s },
        FormatRow { "fourOptionalPlacesWholeHasNoPoint", 2.0, u"0.####"_s, u"2"_s },
        FormatRow { "fourOptionalPlacesThird", 1.0 / 3.0, u"0.####"_s, u"0.3333"_s },
        FormatRow { "fourOptionalPlacesRoundsUp", 12.34567, u"0.####"_s, u"12.3457"_s },
        FormatRow { "fourOptionalPlacesTinyHalf", 0.00005, u"0.####"_s, u"0.0001"_s },
        FormatRow { "fourOptionalPlacesHundredThousandth", 1e-05, u"0.####"_s, u"0"_s },
        FormatRow { "fourOptionalPlacesOneE15", 1e15, u"0.####"_s, u"1000000000000000"_s },
        FormatRow { "fourOptionalPlacesFifteenDigits", 123456789012345.0, u"0.####"_s,
            u"123456789012345"_s },
        FormatRow { "fourOptionalPlacesNegative", -0.5, u"0.####"_s, u"-0.5"_s },
        FormatRow { "hashZeroWhole", 12.0, u"#0.##"_s, u"12"_s },
        FormatRow { "hashZeroHalf", 0.5, u"#0.##"_s, u"0.5"_s },
        FormatRow { "hashZeroPi", 3.14159, u"#0.##"_s, u"3.14"_s },
        FormatRow { "hashZeroNegative", -3.14159, u"#0.##"_s, u"-3.14"_s },
        FormatRow { "hashZeroTiny", 0.001, u"#0.##"_s, u"0"_s },
        FormatRow { "percentWhole", 0.12, u"#0.##%"_s, u"12%"_s },
        FormatRow { "percentWithPlace", 0.125, u"#0.##%"_s, u"12.5%"_s },
        FormatRow { "percentHundred", 1.0, u"#0.##%"_s, u"100%"_s },
        FormatRow { "percentRoundsHalfUp", 0.12345, u"#0.##%"_s, u"12.35%"_s },
        FormatRow { "groupedMillion", 1234567.0, u"##,##0"_s, u"1,234,567"_s },
        FormatRow { "groupedZero", 0.0, u"##,##0"_s, u"0"_s },
        FormatRow { "groupedSmall", 12.0, u"##,##0"_s, u"12"_s },
        FormatRow { "groupedRoundsIntoThousand", 999.5, u"##,##0"_s, u"1,000"_s },
        FormatRow { "groupedNegative", -1234.4, u"##,##0"_s, u"-1,234"_s },
        FormatRow { "groupedWithPlaces", 1234.5, u"#,##0.00"_s, u"1,234.50"_s },
        FormatRow { "commaBeforeEndDividesByThousand", 1234567.0, u"#,##0,"_s, u"1,235"_s },
        FormatRow { "twoCommasDivideByMillion", 1234567.0, u"0,,.0"_s, u"1.2"_s },
        FormatRow { "scientific", 1234.5, u"0.00E+00"_s, u"1.23E+03"_s },
        FormatRow { "scientificSmall", 1e-05, u"0.00E+00"_s, u"1.00E-05"_s },
        FormatRow { "scientificZero", 0.0, u"0.00E+00"_s, u"0.00E+00"_s },
        FormatRow { "scientificRoundsIntoNextPower", 9.999, u"0.00E+00"_s, u"1.00E+01"_s },
        FormatRow { "scientificNegative", -1234.5, u"0.00E+00"_s, u"-1.23E+03"_s },
        FormatRow { "scientificMinusFormHidesPlus", 1234.5, u"0.00E-00"_s, u"1.23E03"_s },
        FormatRow { "scientificMinusFormShowsMinus", 0.001, u"0.00E-00"_s, u"1.00E-03"_s },
        FormatRow { "scientificLowerCase", 1500.0, u"0.0e+0"_s, u"1.5e+3"_s },
        FormatRow { "scientificTwoIntegerDigits", 1234.5, u"00.0E+0"_s, u"12.3E+2"_s },
        FormatRow { "scientificLargeExponent", 1e300, u"0E+00"_s, u"1E+300"_s },
        FormatRow { "negativeSectionHasNoMinus", -5.0, u"0;(0)"_s, u"(5)"_s },
        FormatRow { "positiveSectionOfTwo", 5.0, u"0;(0)"_s, u"5"_s },
        FormatRow { "zeroSection", 0.0, u"0;(0);\"zero\""_s, u"zero"_s },
        FormatRow { "zeroUsesFirstOfTwoSections", 0.0, u"0.0;(0.0)"_s, u"0.0"_s },
        FormatRow { "emptyNegativeSectionFallsBack", -5.0, u"0;;\"zero\""_s, u"-5"_s },
        FormatRow { "literalUnitAfterNumber", 5.0, u"#0.##kg"_s, u"5kg"_s },
        FormatRow { "lettersAfterDigitsStayLiteral", 3.0, u"#0.## days"_s, u"3 days"_s },
        FormatRow { "quotedSymbol", 3.0, u"\"£\"0.00"_s, u"£3.00"_s },
        FormatRow { "quotedSemicolonIsNoSection", 3.0, u"0\";\"0"_s, u"0;3"_s },
        FormatRow { "escapedPercentDoesNotScale", 5.0, u"0\\%"_s, u"5%"_s },
        FormatRow { "escapedZeroIsLiteral", 5.0, u"0\\0"_s, u"50"_s },
        FormatRow { "noIntegerPlaceholder", 12.5, u".00"_s, u"12.50"_s },
        FormatRow { "noIntegerPlaceholderBelowOne", 0.5, u".00"_s, u".50"_s },
        FormatRow { "hashesOnlyShowNothingForZero", 0.0, u"#.##"_s, u""_s },
        FormatRow { "leadingZeros", 7.0, u"000"_s, u"007"_s },
        FormatRow { "literalBetweenDigits", 1234.0, u"00-00"_s, u"12-34"_s },
        FormatRow { "telephoneNumber", 5551234567.0, u"(###) ###-####"_s, u"(555) 123-4567"_s },
        FormatRow { "extraDigitsGoLeft", 123456.0, u"0"_s, u"123456"_s },
        FormatRow { "beyondFifteenDigitsPadsZeros", 1e20, u"0"_s, u"100000000000000000000"_s },
        FormatRow { "onlyLiteral", 5.0, u"\"n/a\""_s, u"n/a"_s },
        FormatRow { "onOffValueInNumberPattern", true, u"0"_s, u"-1"_s },
        FormatRow { "wholeValue", 42, u"0.0"_s, u"42.0"_s },
        FormatRow { "currencyValue", Variant::currency(3.4567), u"0.00"_s, u"3.46"_s },
        FormatRow {
            "dateValueAsNumber", Variant::date(LeapDayAfternoon), u"0.00"_s, u"45351.59"_s },
        FormatRow { "numericText", Variant(u"2.5"_s), u"0.00"_s, u"2.50"_s },
        FormatRow { "numericTextWithSymbol", Variant(u"£1,234"_s), u"0"_s, u"1234"_s },
        FormatRow { "otherTextUnchanged", Variant(u"abc"_s), u"0.00"_s, u"abc"_s },
        // Boundaries: halves at the last place shown, zero with a sign, extreme exponents.
        FormatRow { "eighthHalfAwayFromZero", 0.125, u"0.00"_s, u"0.13"_s },
        FormatRow { "negativeEighthHalfAwayFromZero", -0.125, u"0.00"_s, u"-0.13"_s },
        FormatRow { "halfAtTheFirstPlace", 1.45, u"0.0"_s, u"1.5"_s },
        FormatRow { "halfCarriesIntoANewDigit", 9.995, u"0.00"_s, u"10.00"_s },
        FormatRow { "hashShowsARoundedHalf", 0.5, u"#"_s, u"1"_s },
        FormatRow { "negativeZeroHasNoSign", -0.0, u"0.00"_s, u"0.00"_s },
        FormatRow { "negativeZeroTakesTheZeroSection", -0.0, u"0;(0);\"zero\""_s, u"zero"_s },
        FormatRow { "tinyNegativeOptionalPlaces", -0.00001, u"0.####"_s, u"0"_s },
        FormatRow { "negativeSectionRoundsWithoutSign", -1.5, u"0;0"_s, u"2"_s },
        FormatRow { "percentOfHalfAHundredth", 0.005, u"0%"_s, u"1%"_s },
        FormatRow { "groupedFifteenDigits", 1e15, u"#,##0"_s, u"1,000,000,000,000,000"_s },
        FormatRow { "smallestExponent", 1e-300, u"0.00E+00"_s, u"1.00E-300"_s },
        FormatRow {
            "largestDouble", std::numeric_limits<double>::max(), u"0.00E+00"_s, u"1.80E+308"_s },
        FormatRow { "exponentMantissaRoundsUp", 9.9999, u"0.0E+0"_s, u"1.0E+1"_s },
        FormatRow { "infinityHasNoDigits", std::numeric_limits<double>::infinity(), u"0.00"_s,
            u"Infinity"_s },
        FormatRow { "notANumberHasNoDigits", std::numeric_limits<double>::quiet_NaN(),
            u"Currency"_s, u"NaN"_s }),
    TestRows::Named());

INSTANTIATE_TEST_SUITE_P(NamedNumberFormats, Formats,
    testing::Values(FormatRow { "generalHalf", 0.5, u"General Number"_s, u"0.5"_s },
        FormatRow { "generalNegativeHalf", -0.5, u"General Number"_s, u"-0.5"_s },
        FormatRow { "generalOneE15", 1e15, u"General Number"_s, u"1E+15"_s },
        FormatRow {
            "generalFifteenDigits", 123456789012345.0, u"General Number"_s, u"123456789012345"_s },
        FormatRow { "generalOneE05", 1e-05, u"General Number"_s, u"1E-05"_s },
        FormatRow { "generalTenThousandth", 0.0001, u"General Number"_s, u"0.0001"_s },
        FormatRow { "generalNoGrouping", 1234567.0, u"General Number"_s, u"1234567"_s },
        FormatRow { "currency", 1234.5, u"Currency"_s, u"£1,234.50"_s },
        FormatRow { "currencyNegative", -0.5, u"Currency"_s, u"-£0.50"_s },
        FormatRow { "currencyHalfPennyRoundsUp", 0.005, u"Currency"_s, u"£0.01"_s },
        FormatRow { "currencyNegativeNothing", -0.001, u"Currency"_s, u"£0.00"_s },
        FormatRow { "fixed", 2.5, u"Fixed"_s, u"2.50"_s },
        FormatRow { "fixedNoGrouping", 1234.567, u"Fixed"_s, u"1234.57"_s },
        FormatRow { "fixedAnyCase", 2.5, u"fIXED"_s, u"2.50"_s },
        FormatRow { "standard", 1234.567, u"Standard"_s, u"1,234.57"_s },
        FormatRow { "percent", 0.5, u"Percent"_s, u"50.00%"_s },
        FormatRow { "scientificSmall", 1e-05, u"Scientific"_s, u"1.00E-05"_s },
        FormatRow { "scientificLarge", 1e15, u"Scientific"_s, u"1.00E+15"_s },
        FormatRow { "yesNoZero", 0.0, u"Yes/No"_s, u"No"_s },
        FormatRow { "yesNoNonZero", 5.0, u"Yes/No"_s, u"Yes"_s },
        FormatRow { "yesNoTrue", true, u"Yes/No"_s, u"Yes"_s },
        FormatRow { "yesNoFalse", false, u"Yes/No"_s, u"No"_s },
        FormatRow { "trueFalse", -1, u"True/False"_s, u"True"_s },
        FormatRow { "onOff", 0, u"On/Off"_s, u"Off"_s },
        FormatRow { "currencyNegativeHalfPenny", -0.005, u"Currency"_s, u"-£0.01"_s },
        FormatRow { "fixedNegativeNothing", -0.0001, u"Fixed"_s, u"0.00"_s },
        FormatRow { "standardRoundsIntoAThousand", 999.995, u"Standard"_s, u"1,000.00"_s },
        FormatRow { "percentNegative", -0.0005, u"Percent"_s, u"-0.05%"_s },
        FormatRow { "namedOnText", Variant(u"abc"_s), u"Fixed"_s, u"abc"_s }),
    TestRows::Named());

class WithoutFormat : public testing::TestWithParam<FormatRow>
{
};

TEST_P(WithoutFormat, GivesTheGeneralText)
{
    EXPECT_EQ(Format(GetParam().value), GetParam().expected);
    EXPECT_EQ(CStr(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, WithoutFormat,
    testing::Values(FormatRow { "half", 0.5, {}, u"0.5"_s },
        FormatRow { "negativeHalf", -0.5, {}, u"-0.5"_s },
        FormatRow { "oneE15", 1e15, {}, u"1E+15"_s }, FormatRow { "oneE05", 1e-05, {}, u"1E-05"_s },
        FormatRow { "whole", 2, {}, u"2"_s },
        FormatRow { "largeWhole", Variant(qint64(9007199254740993)), {}, u"9007199254740993"_s },
        FormatRow { "currency", Variant::currency(3.5), {}, u"3.5"_s },
        FormatRow { "onValue", true, {}, u"True"_s },
        FormatRow { "offValue", false, {}, u"False"_s },
        FormatRow { "text", Variant(u"abc"_s), {}, u"abc"_s },
        FormatRow { "null", Variant::null(), {}, u""_s },
        FormatRow { "empty", Variant(), {}, u""_s },
        FormatRow { "dateOnly", Variant::date(LeapDay), {}, u"29/02/2024"_s },
        FormatRow { "dateAndTime", Variant::date(LeapDayAfternoon), {}, u"29/02/2024 14:15:00"_s },
        FormatRow { "timeOnly", Variant::date(0.25), {}, u"06:00:00"_s },
        FormatRow { "serialZeroIsADate", Variant::date(0), {}, u"30/12/1899"_s },
        FormatRow { "dateOutOfRangeAsNumber", Variant::date(3e6), {}, u"3000000"_s },
        FormatRow { "binaryAsText", Variant(QByteArray("Ab")), {}, u"Ab"_s }),
    TestRows::Named());

INSTANTIATE_TEST_SUITE_P(DatePatterns, Formats,
    testing::Values(
        FormatRow { "cardDate", Variant::date(LeapDay), u"dd MMM yyyy"_s, u"29 Feb 2024"_s },
        FormatRow { "cardTime", Variant::date(LeapDayAfternoon), u"HH:mm"_s, u"14:15"_s },
        FormatRow { "cardDateAndTime", Variant::date(LeapDayAfternoon), u"dd MMM yyyy HH:mm"_s,
            u"29 Feb 2024 14:15"_s },
        FormatRow { "queryLiteralDate", Variant::date(LeapDay), u"m-d-yy"_s, u"2-29-24"_s },
        FormatRow { "weekdayName", Variant::date(LeapDay), u"dddd"_s, u"Thursday"_s },
        FormatRow { "weekdayAbbreviation", Variant::date(LeapDay), u"ddd"_s, u"Thu"_s },
        FormatRow { "dayNumber", Variant::date(LeapDay), u"d"_s, u"29"_s },
        FormatRow { "dayTwoDigits", Variant::date(45352), u"dd"_s, u"01"_s },
        FormatRow { "monthName", Variant::date(LeapDay), u"mmmm"_s, u"February"_s },
        FormatRow { "monthAbbreviation", Variant::date(LeapDay), u"mmm"_s, u"Feb"_s },
        FormatRow { "septemberThreeLetters", Variant::date(45536), u"mmm"_s, u"Sep"_s },
        FormatRow { "monthTwoDigits", Variant::date(LeapDay), u"mm"_s, u"02"_s },
        FormatRow { "monthNumber", Variant::date(LeapDay), u"m"_s, u"2"_s },
        FormatRow { "twoDigitYear", Variant::date(LeapDay), u"yy"_s, u"24"_s },
        FormatRow { "fourDigitYear", Variant::date(LeapDay), u"yyyy"_s, u"2024"_s },
        FormatRow { "dayOfYear", Variant::date(LeapDay), u"y"_s, u"60"_s },
        FormatRow { "quarter", Variant::date(LeapDay), u"q"_s, u"1"_s },
        FormatRow { "weekdayNumber", Variant::date(LeapDay), u"w"_s, u"5"_s },
        FormatRow { "weekOfYear", Variant::date(LeapDay), u"ww"_s, u"9"_s },
        FormatRow { "countWindowMonday", Variant::date(2), u"dddd"_s, u"Monday"_s },
        FormatRow { "countWindowSunday", Variant::date(8), u"dddd"_s, u"Sunday"_s },
        FormatRow { "countWindowJanuary", Variant::date(30), u"mmmm"_s, u"January"_s },
        FormatRow { "countWindowDecember", Variant::date(360), u"mmmm"_s, u"December"_s },
        FormatRow { "numberAsSerial", 360.0, u"mmmm"_s, u"December"_s },
        FormatRow { "thirtyFirstDecember1899", Variant::date(1), u"dd/mm/yyyy"_s, u"31/12/1899"_s },
        FormatRow { "dayBeforeSerialZero", Variant::date(-1), u"dd/mm/yyyy"_s, u"29/12/1899"_s },
        FormatRow { "negativeSerialTimeCountsForward", Variant::date(-1.25), u"dd/mm/yyyy hh:nn"_s,
            u"29/12/1899 06:00"_s },
        FormatRow {
            "firstJanuary100", Variant::date(-657434), u"d mmmm yyyy"_s, u"1 January 100"_s },
        FormatRow { "year100TwoDigits", Variant::date(-657434), u"yy"_s, u"00"_s },
        FormatRow { "lastValidDate", Variant::date(2958465), u"dd/mm/yyyy"_s, u"31/12/9999"_s },
        FormatRow { "firstValidDateAtNoon", Variant::date(-657434.5), u"dd/mm/yyyy hh:nn"_s,
            u"01/01/100 12:00"_s },
        FormatRow { "pastTheLastMomentShowsTheNumber", Variant::date(2958465.99999999),
            u"dd/mm/yyyy"_s, u"2958465.99999999"_s },
        FormatRow { "almostMidnightIsTheNextDay", Variant::date(45351.9999999),
            u"dd/mm/yyyy hh:nn:ss"_s, u"01/03/2024 00:00:00"_s },
        FormatRow { "lastSecondIsElevenPm", Variant::date(45351 + 86399.0 / 86400),
            u"hh:nn:ss AM/PM"_s, u"11:59:59 PM"_s },
        FormatRow { "yearFirst", Variant::date(LeapDay), u"yyyy-mm-dd"_s, u"2024-02-29"_s },
        FormatRow {
            "firstJanuary2024IsMonday", Variant::date(45292), u"ddd dd mmm"_s, u"Mon 01 Jan"_s },
        FormatRow { "weekOfFirstJanuary1900", Variant::date(2), u"ww"_s, u"1"_s },
        FormatRow { "lastDayOfLeapYear", Variant::date(45657), u"y q"_s, u"366 4"_s },
        FormatRow { "leapDayOf2000", Variant::date(36585), u"d mmm yyyy"_s, u"29 Feb 2000"_s },
        FormatRow {
            "twelveHourAfternoon", Variant::date(LeapDayAfternoon), u"h:nn AM/PM"_s, u"2:15 PM"_s },
        FormatRow { "twelveHourLowerCase", Variant::date(LeapDayAfternoon), u"hh:nn am/pm"_s,
            u"02:15 pm"_s },
        FormatRow { "twelveHourLetter", Variant::date(LeapDayAfternoon), u"h A/P"_s, u"2 P"_s },
        FormatRow { "twelveHourLowerLetter", Variant::date(0.25), u"h a/p"_s, u"6 a"_s },
        FormatRow { "midnightIsTwelveAm", Variant::date(0.0), u"h:nn AM/PM"_s, u"12:00 AM"_s },
        FormatRow { "noonIsTwelvePm", Variant::date(0.5), u"h:nn AM/PM"_s, u"12:00 PM"_s },
        FormatRow {
            "localeDayHalfTexts", Variant::date(LeapDayAfternoon), u"h:nn AMPM"_s, u"2:15 pm"_s },
        FormatRow { "minutesBeforeSeconds", Variant::date(WithSeconds), u"mm:ss"_s, u"15:07"_s },
        FormatRow {
            "hoursMinutesSeconds", Variant::date(WithSeconds), u"hh:mm:ss"_s, u"14:15:07"_s },
        FormatRow { "singleLetterTime", Variant::date(WithSeconds), u"h:m:s"_s, u"14:15:7"_s },
        FormatRow { "minuteLetterN", Variant::date(WithSeconds), u"n"_s, u"15"_s },
        FormatRow { "monthAfterLiteralNotHour", Variant::date(LeapDayAfternoon), u"hh \"h\" m"_s,
            u"14 h 15"_s },
        FormatRow {
            "quotedWord", Variant::date(LeapDay), u"dd \"of\" mmmm"_s, u"29 of February"_s },
        FormatRow { "escapedLetters", Variant::date(LeapDay), u"\\d\\a\\y d"_s, u"day 29"_s },
        FormatRow { "upperCaseLetters", Variant::date(LeapDay), u"DD/MM/YYYY"_s, u"29/02/2024"_s },
        FormatRow { "generalDateLetter", Variant::date(LeapDayAfternoon), u"c"_s,
            u"29/02/2024 14:15:00"_s },
        FormatRow { "shortDateLetters", Variant::date(LeapDay), u"ddddd"_s, u"29/02/2024"_s },
        FormatRow { "longDateLetters", Variant::date(LeapDay), u"dddddd"_s,
            u"Thursday, 29 February 2024"_s },
        FormatRow { "longTimeLetters", Variant::date(LeapDayAfternoon), u"ttttt"_s, u"14:15:00"_s },
        // A run longer than the widest form is that form and then the rest read again.
        FormatRow { "longDateThenDay", Variant::date(LeapDay), u"dddddddd"_s,
            u"Thursday, 29 February 202429"_s },
        FormatRow { "threeYearLetters", Variant::date(LeapDay), u"yyy"_s, u"2460"_s },
        FormatRow { "fiveYearLetters", Variant::date(LeapDay), u"yyyyy"_s, u"202460"_s },
        FormatRow { "fiveMonthLetters", Variant::date(LeapDay), u"mmmmm"_s, u"February2"_s },
        FormatRow { "threeHourLetters", Variant::date(LeapDayAfternoon), u"hhh"_s, u"1414"_s },
        FormatRow {
            "dateTextConverted", Variant(u"29/02/2024"_s), u"dd MMM yyyy"_s, u"29 Feb 2024"_s },
        FormatRow { "numericTextAsSerial", Variant(u"45351"_s), u"dd/mm/yyyy"_s, u"29/02/2024"_s },
        FormatRow { "otherTextUnchanged", Variant(u"soon"_s), u"dd/mm/yyyy"_s, u"soon"_s },
        FormatRow { "outsideValidDatesShowsNumber", 3e6, u"dd/mm/yyyy"_s, u"3000000"_s },
        FormatRow { "secondSectionIgnoredForDates", Variant::date(LeapDay), u"d;m"_s, u"29"_s }),
    TestRows::Named());

INSTANTIATE_TEST_SUITE_P(NamedDateFormats, Formats,
    testing::Values(FormatRow { "generalDateOnlyDate", Variant::date(LeapDay), u"General Date"_s,
                        u"29/02/2024"_s },
        FormatRow { "generalDateBoth", Variant::date(LeapDayAfternoon), u"General Date"_s,
            u"29/02/2024 14:15:00"_s },
        FormatRow { "generalDateOnlyTime", Variant::date(0.25), u"General Date"_s, u"06:00:00"_s },
        FormatRow { "generalDateNegativeWithTime", Variant::date(-1.25), u"General Date"_s,
            u"29/12/1899 06:00:00"_s },
        FormatRow { "generalDateMinusHalfIsNoonOfDayZero", Variant::date(-0.5), u"General Date"_s,
            u"12:00:00"_s },
        FormatRow { "generalDateOfNumber", 45351.0, u"General Date"_s, u"29/02/2024"_s },
        FormatRow {
            "longDate", Variant::date(LeapDay), u"Long Date"_s, u"Thursday, 29 February 2024"_s },
        FormatRow { "longDateFirstValid", Variant::date(-657434), u"Long Date"_s,
            u"Friday, 1 January 100"_s },
        FormatRow { "longDateLastValid", Variant::date(2958465), u"Long Date"_s,
            u"Friday, 31 December 9999"_s },
        FormatRow { "mediumDate", Variant::date(LeapDay), u"Medium Date"_s, u"29-Feb-24"_s },
        FormatRow { "shortDate", Variant::date(LeapDay), u"Short Date"_s, u"29/02/2024"_s },
        FormatRow { "shortDateYear100", Variant::date(-657434), u"Short Date"_s, u"01/01/100"_s },
        FormatRow { "longTime", Variant::date(LeapDayAfternoon), u"Long Time"_s, u"14:15:00"_s },
        FormatRow {
            "mediumTime", Variant::date(LeapDayAfternoon), u"Medium Time"_s, u"02:15 PM"_s },
        FormatRow { "shortTime", Variant::date(LeapDayAfternoon), u"Short Time"_s, u"14:15"_s },
        FormatRow { "namedDateAnyCase", Variant::date(LeapDay), u"short date"_s, u"29/02/2024"_s }),
    TestRows::Named());

TEST(NullValues, ShowNothingUnlessAFourthSectionSaysSo)
{
    EXPECT_EQ(Format(Variant::null(), u"0.00"), u""_s);
    EXPECT_EQ(Format(Variant::null(), u"0;-0;\"zero\";\"none\""), u"none"_s);
    EXPECT_EQ(Format(Variant::null(), u"dd/mm/yyyy"), u""_s);
    EXPECT_EQ(Format(Variant(), u"0.00"), u""_s);
}

TEST(OtherLocales, GermanSeparatorsNamesAndCurrency)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(Format(1234.5, u"#,##0.00"), u"1.234,50"_s);
    EXPECT_EQ(Format(0.5), u"0,5"_s);
    EXPECT_EQ(Format(1234.5, u"Currency"), u"1.234,50\u00a0€"_s);
    EXPECT_EQ(Format(-1234.5, u"Currency"), u"-1.234,50\u00a0€"_s);
    EXPECT_EQ(Format(Variant::date(LeapDay), u"dd/mm/yyyy"), u"29.02.2024"_s);
    EXPECT_EQ(Format(Variant::date(LeapDay), u"Long Date"), u"Donnerstag, 29. Februar 2024"_s);
    EXPECT_EQ(Format(Variant::date(LeapDay), u"dddd"), u"Donnerstag"_s);
    EXPECT_EQ(CDbl(u"1.234,5"_s), 1234.5);
}

TEST(OtherLocales, AmericanDatesAndTimes)
{
    ScopedHostLocale american(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(Format(Variant::date(LeapDay), u"Short Date"), u"2/29/24"_s);
    EXPECT_EQ(Format(Variant::date(LeapDayAfternoon), u"Long Time"), u"2:15:00 PM"_s);
    EXPECT_EQ(Format(1234.5, u"Currency"), u"$1,234.50"_s);
    EXPECT_EQ(Format(Variant::date(LeapDay), u"Long Date"), u"Thursday, February 29, 2024"_s);
}

// Reading back what Format shows gives the same date: a card field's text compared with its
// stored value depends on it.
TEST(RoundTrip, NamedDateFormsReadBackAsTheSameDate)
{
    for (double serial = -657434; serial <= 2958465; serial += 9973.25) {
        for (const char16_t* format : { u"General Date", u"Long Date", u"Medium Date",
                 u"Short Date", u"dd MMM yyyy HH:mm" }) {
            const QString text = Format(Variant::date(serial), format);
            const bool hasTime
                = QStringView(format).contains(u"General") || QStringView(format).contains(u"HH");
            const double expected = hasTime ? serial : DatePartOfSerial(serial);
            // Medium Date keeps two-digit years, which read back inside 1930..2029.
            if (QStringView(format) == u"Medium Date"
                && (Year(serial) < 1930 || Year(serial) > 2029))
                continue;
            ASSERT_TRUE(IsDate(text)) << text.toStdString();
            EXPECT_DOUBLE_EQ(CDate(text), expected) << text.toStdString();
        }
    }
}

} // namespace

namespace {

// Every combination of three pattern pieces formats every kind of awkward value without an
// error: a pupil can type any format text into a field or a cell.
TEST(OddPatterns, NeverRaiseAnError)
{
    const QString pieces[] = { u"0"_s, u"#"_s, u"."_s, u","_s, u"%"_s, u"E+"_s, u"e-"_s, u";"_s,
        u"\""_s, u"\\"_s, u"d"_s, u"mmmm"_s, u"yy"_s, u"h"_s, u"n"_s, u"s"_s, u"AM/PM"_s, u"A/P"_s,
        u"AMPM"_s, u"/"_s, u":"_s, u"c"_s, u"ttttt"_s, u"w"_s, u" "_s };
    const Variant values[] = { 0.0, -0.5, 2.5, 1e15, -1e-05, 1e300, Variant::date(-657434),
        Variant::date(2958465.5), Variant::date(-1.25), Variant::null(), true, Variant(u"abc"_s),
        Variant(u"29/02/2024"_s) };
    int formatted = 0;
    for (const QString& first : pieces) {
        for (const QString& second : pieces) {
            for (const QString& third : pieces) {
                const QString pattern = first + second + third;
                for (const Variant& value : values) {
                    EXPECT_NO_THROW(Format(value, pattern)) << pattern.toStdString();
                    ++formatted;
                }
            }
        }
    }
    EXPECT_EQ(formatted, 25 * 25 * 25 * 13);
}

// IsDate and CDate must agree on every text: the sheet asks one and then calls the other.
TEST(OddDateTexts, IsDateAgreesWithCDate)
{
    const QString pieces[] = { u"1"_s, u"29"_s, u"2024"_s, u"/"_s, u"-"_s, u"."_s, u":"_s, u" "_s,
        u","_s, u"Feb"_s, u"pm"_s, u"Monday"_s, u"99"_s, u"0"_s, u"x"_s };
    for (const QString& first : pieces) {
        for (const QString& second : pieces) {
            for (const QString& third : pieces) {
                for (const QString& fourth : pieces) {
                    const QString text = first + second + third + fourth;
                    bool converted = true;
                    try {
                        CDate(text);
                    } catch (const Error& error) {
                        converted = false;
                        EXPECT_EQ(error.number(), Error::TypeMismatch) << text.toStdString();
                    }
                    EXPECT_EQ(IsDate(text), converted) << text.toStdString();
                }
            }
        }
    }
}

} // namespace
