#include "platform/runtime/Dates.h"

#include "TableRows.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/QStringPrinter.h"

#include <QDate>
#include <gtest/gtest.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;
using namespace Runtime;

namespace {

using TestRows::PrintTo;

int errorNumberOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

struct CalendarRow
{
    const char* name;
    int year;
    int month;
    int day;
    double serial;
};

class DateSerialRows : public testing::TestWithParam<CalendarRow>
{
};

TEST_P(DateSerialRows, CountsDaysFromThirtiethDecember1899)
{
    const CalendarRow& row = GetParam();
    EXPECT_EQ(DateSerial(row.year, row.month, row.day), row.serial);
}

INSTANTIATE_TEST_SUITE_P(Rows, DateSerialRows,
    testing::Values(CalendarRow { "serialZero", 1899, 12, 30, 0 },
        CalendarRow { "thirtyFirstDecember1899", 1899, 12, 31, 1 },
        CalendarRow { "dayBeforeZeroIsMinusOne", 1899, 12, 29, -1 },
        CalendarRow { "firstJanuary1900", 1900, 1, 1, 2 },
        CalendarRow { "firstMarch1900NoPhantomLeapDay", 1900, 3, 1, 61 },
        CalendarRow { "leapDay2024", 2024, 2, 29, 45351 },
        CalendarRow { "leapDay2000", 2000, 2, 29, 36585 },
        CalendarRow { "firstValidDate", 100, 1, 1, -657434 },
        CalendarRow { "lastValidDate", 9999, 12, 31, 2958465 },
        CalendarRow { "monthThirteenRollsIntoNextYear", 2023, 13, 1, 45292 },
        CalendarRow { "dayZeroIsLastOfPreviousMonth", 2024, 3, 0, 45351 },
        CalendarRow { "monthZeroIsDecemberBefore", 2025, 0, 1, 45627 },
        CalendarRow { "negativeDayCountsBack", 2024, 3, -1, 45350 },
        CalendarRow { "dayThirtyOfFebruaryRolls", 2023, 2, 29, 44986 },
        CalendarRow { "twoDigitYearTwentyNineIs2029", 29, 1, 1, 47119 },
        CalendarRow { "twoDigitYearThirtyIs1930", 30, 1, 1, 10959 },
        CalendarRow { "yearZeroIs2000", 0, 2, 29, 36585 }),
    TestRows::Named());

TEST(DateSerialRange, OutsideOneHundredToNineThousandIsErrorFive)
{
    EXPECT_EQ(errorNumberOf([] { DateSerial(100, 1, 0); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { DateSerial(10000, 1, 1); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { DateSerial(9999, 13, 1); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { DateSerial(-5, 1, 1); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { DateSerial(2000, 2147483647, 1); }), Error::InvalidCall);
}

struct SplitRow
{
    const char* name;
    double serial;
    DateTimeParts parts;
};

class SplitRows : public testing::TestWithParam<SplitRow>
{
};

TEST_P(SplitRows, GivesCalendarDateAndTime)
{
    const SplitRow& row = GetParam();
    const DateTimeParts parts = SplitDateSerial(row.serial);
    EXPECT_EQ(parts.year, row.parts.year);
    EXPECT_EQ(parts.month, row.parts.month);
    EXPECT_EQ(parts.day, row.parts.day);
    EXPECT_EQ(parts.hour, row.parts.hour);
    EXPECT_EQ(parts.minute, row.parts.minute);
    EXPECT_EQ(parts.second, row.parts.second);
    EXPECT_EQ(Year(row.serial), row.parts.year);
    EXPECT_EQ(Month(row.serial), row.parts.month);
    EXPECT_EQ(Day(row.serial), row.parts.day);
    EXPECT_EQ(Hour(row.serial), row.parts.hour);
    EXPECT_EQ(Minute(row.serial), row.parts.minute);
    EXPECT_EQ(Second(row.serial), row.parts.second);
}

INSTANTIATE_TEST_SUITE_P(Rows, SplitRows,
    testing::Values(SplitRow { "zero", 0.0, { 1899, 12, 30, 0, 0, 0 } },
        SplitRow { "minusOneIs29December1899", -1.0, { 1899, 12, 29, 0, 0, 0 } },
        SplitRow { "negativeFractionCountsForward", -1.25, { 1899, 12, 29, 6, 0, 0 } },
        SplitRow { "minusHalfIsNoonOfDayZero", -0.5, { 1899, 12, 30, 12, 0, 0 } },
        SplitRow { "quarterPastTwoOClock", 45351.59375, { 2024, 2, 29, 14, 15, 0 } },
        SplitRow { "secondsRoundToNearest", 0.5 + 1.4 / 86400, { 1899, 12, 30, 12, 0, 1 } },
        SplitRow { "lastSecondOfDay", 45351 + 86399.0 / 86400, { 2024, 2, 29, 23, 59, 59 } },
        SplitRow { "almostMidnightCarriesToNextDay", 45351.9999999, { 2024, 3, 1, 0, 0, 0 } },
        SplitRow { "negativeAlmostMidnightCarriesForward", -1.9999999, { 1899, 12, 30, 0, 0, 0 } },
        SplitRow { "firstValidDate", -657434.0, { 100, 1, 1, 0, 0, 0 } },
        SplitRow { "lastValidMoment", 2958465 + 86399.0 / 86400, { 9999, 12, 31, 23, 59, 59 } }),
    TestRows::Named());

TEST(SplitRange, SerialsOutsideTheValidDatesAreOverflow)
{
    for (const double serial : { -657435.0, 2958466.0, 2958465.99999999, 1e300, -1e300,
             std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() }) {
        EXPECT_FALSE(IsValidDateSerial(serial)) << serial;
        EXPECT_EQ(errorNumberOf([serial] { Year(serial); }), Error::Overflow) << serial;
    }
}

TEST(JoinSerial, RoundTripsThroughSplitForEveryMonthEnd)
{
    // An oracle over the whole range: joining the split parts gives the serial back.
    for (int year = 100; year <= 9999; year += 37) {
        for (int month = 1; month <= 12; ++month) {
            const DateTimeParts parts { year, month, QDate(year, month, 1).daysInMonth(), 7, 8, 9 };
            const double serial = JoinDateSerial(parts);
            const DateTimeParts back = SplitDateSerial(serial);
            ASSERT_EQ(back.year, year);
            ASSERT_EQ(back.month, month);
            ASSERT_EQ(back.day, parts.day);
            ASSERT_EQ(back.hour * 3600 + back.minute * 60 + back.second, 7 * 3600 + 8 * 60 + 9);
        }
    }
}

TEST(JoinSerial, NegativeDaysStoreTheTimeWithTheDaysSign)
{
    EXPECT_DOUBLE_EQ(JoinDateSerial({ 1899, 12, 29, 6, 0, 0 }), -1.25);
    EXPECT_DOUBLE_EQ(JoinDateSerial({ 1899, 12, 30, 6, 0, 0 }), 0.25);
    EXPECT_DOUBLE_EQ(DatePartOfSerial(-1.25), -1.0);
    EXPECT_DOUBLE_EQ(TimeOfSerial(-1.25), 0.25);
    EXPECT_EQ(errorNumberOf([] { JoinDateSerial({ 2023, 2, 29, 0, 0, 0 }); }), Error::InvalidCall);
}

struct TimeRow
{
    const char* name;
    int hour;
    int minute;
    int second;
    double serial;
};

class TimeSerialRows : public testing::TestWithParam<TimeRow>
{
};

TEST_P(TimeSerialRows, GivesTheFractionOfADay)
{
    const TimeRow& row = GetParam();
    EXPECT_DOUBLE_EQ(TimeSerial(row.hour, row.minute, row.second), row.serial);
}

INSTANTIATE_TEST_SUITE_P(Rows, TimeSerialRows,
    testing::Values(TimeRow { "midnight", 0, 0, 0, 0.0 }, TimeRow { "noon", 12, 0, 0, 0.5 },
        TimeRow { "minutesRollIntoHours", 11, 90, 0, 0.5 + 1.0 / 48 },
        TimeRow { "twentyFiveHoursIsNextDay", 25, 0, 0, 1.0 + 1.0 / 24 },
        TimeRow { "negativeSecondsCountBack", 12, 0, -1, 0.5 - 1.0 / 86400 },
        TimeRow { "beforeDayZeroIsLateOn29December", -1, 0, 0, -1.0 - 23.0 / 24 }),
    TestRows::Named());

struct WeekdayRow
{
    const char* name;
    double serial;
    int firstDay;
    int weekday;
};

class WeekdayRows : public testing::TestWithParam<WeekdayRow>
{
};

TEST_P(WeekdayRows, CountsFromTheFirstDay)
{
    EXPECT_EQ(Weekday(GetParam().serial, GetParam().firstDay), GetParam().weekday);
}

INSTANTIATE_TEST_SUITE_P(Rows, WeekdayRows,
    testing::Values(WeekdayRow { "serialOneIsSunday", 1, Sunday, 1 },
        WeekdayRow { "serialZeroIsSaturday", 0, Sunday, 7 },
        WeekdayRow { "minusOneIsFriday", -1, Sunday, 6 },
        WeekdayRow { "negativeWithTimeStillFriday", -1.75, Sunday, 6 },
        WeekdayRow { "leapDay2024IsThursday", 45351, Sunday, 5 },
        WeekdayRow { "thursdayFromMonday", 45351, Monday, 4 },
        WeekdayRow { "thursdayFromFriday", 45351, Friday, 7 },
        WeekdayRow { "firstValidDateIsFriday", -657434, Sunday, 6 },
        WeekdayRow { "lastValidDateIsFriday", 2958465, Sunday, 6 },
        WeekdayRow { "systemFirstDayIsMondayForBritain", 45351, UseSystemDayOfWeek, 4 }),
    TestRows::Named());

TEST(WeekdayArguments, FirstDayOutsideZeroToSevenIsErrorFive)
{
    EXPECT_EQ(errorNumberOf([] { Weekday(1, 8); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { Weekday(1, -1); }), Error::InvalidCall);
}

TEST(Names, AreBritishEnglishAndFollowTheFirstDay)
{
    EXPECT_EQ(MonthName(1), u"January"_s);
    EXPECT_EQ(MonthName(9, true), u"Sep"_s);
    EXPECT_EQ(MonthName(12), u"December"_s);
    EXPECT_EQ(WeekdayName(1), u"Sunday"_s);
    EXPECT_EQ(WeekdayName(7), u"Saturday"_s);
    EXPECT_EQ(WeekdayName(5, true), u"Thu"_s);
    EXPECT_EQ(WeekdayName(1, false, Monday), u"Monday"_s);
    EXPECT_EQ(WeekdayName(7, false, Monday), u"Sunday"_s);
    EXPECT_EQ(WeekdayName(1, false, Saturday), u"Saturday"_s);
}

TEST(NameArguments, OutOfRangeNumbersAreErrorFive)
{
    EXPECT_EQ(errorNumberOf([] { MonthName(0); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { MonthName(13); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { WeekdayName(0); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { WeekdayName(8); }), Error::InvalidCall);
}

TEST(NameLocale, OtherLanguagesUseTheirOwnNames)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(MonthName(3), u"März"_s);
    EXPECT_EQ(WeekdayName(1), u"Sonntag"_s);
}

struct DatePartRow
{
    const char* name;
    const char16_t* interval;
    double serial;
    int firstDay;
    int firstWeek;
    int expected;
};

class DatePartRows : public testing::TestWithParam<DatePartRow>
{
};

TEST_P(DatePartRows, GivesThePart)
{
    const DatePartRow& row = GetParam();
    EXPECT_EQ(DatePart(row.interval, row.serial, row.firstDay, row.firstWeek), row.expected);
}

constexpr double LeapDayAfternoon = 45351.59375 + 7.0 / 86400; // 29 Feb 2024 14:15:07

INSTANTIATE_TEST_SUITE_P(Rows, DatePartRows,
    testing::Values(DatePartRow { "year", u"yyyy", LeapDayAfternoon, Sunday, FirstJanuary, 2024 },
        DatePartRow { "quarterFour", u"q", 45657, Sunday, FirstJanuary, 4 },
        DatePartRow { "month", u"m", LeapDayAfternoon, Sunday, FirstJanuary, 2 },
        DatePartRow { "dayOfYear", u"y", LeapDayAfternoon, Sunday, FirstJanuary, 60 },
        DatePartRow { "dayOfYearLast", u"y", 45657, Sunday, FirstJanuary, 366 },
        DatePartRow { "weekdayThursday", u"w", LeapDayAfternoon, Sunday, FirstJanuary, 5 },
        DatePartRow { "weekdayFromMonday", u"w", LeapDayAfternoon, Monday, FirstJanuary, 4 },
        DatePartRow { "weekOfYear", u"ww", LeapDayAfternoon, Sunday, FirstJanuary, 9 },
        DatePartRow { "firstJanuaryIsWeekOne", u"ww", 44197, Sunday, FirstJanuary, 1 },
        DatePartRow { "lastDayOfLeapYearWeek53", u"ww", 45657, Sunday, FirstJanuary, 53 },
        DatePartRow {
            "fourDaysRuleJanuaryFirstInLastYearsWeek", u"ww", 44197, Monday, FirstFourDays, 53 },
        DatePartRow {
            "fourDaysRuleFourthJanuaryIsWeekOne", u"ww", 44200, Monday, FirstFourDays, 1 },
        DatePartRow {
            "fourDaysRuleYearEndInNextYearsWeekOne", u"ww", 45657, Monday, FirstFourDays, 1 },
        DatePartRow {
            "fullWeekRuleJanuaryFirstInLastYearsWeek", u"ww", 44197, Sunday, FirstFullWeek, 52 },
        DatePartRow {
            "fullWeekRuleFirstSundayStartsWeekOne", u"ww", 44199, Sunday, FirstFullWeek, 1 },
        DatePartRow { "hour", u"h", LeapDayAfternoon, Sunday, FirstJanuary, 14 },
        DatePartRow { "second", u"s", LeapDayAfternoon, Sunday, FirstJanuary, 7 },
        DatePartRow {
            "intervalIgnoresCase", u"YYYY", LeapDayAfternoon, Sunday, FirstJanuary, 2024 },
        DatePartRow { "negativeSerialHour", u"h", -1.25, Sunday, FirstJanuary, 6 },
        DatePartRow { "negativeSerialDay", u"d", -1.25, Sunday, FirstJanuary, 29 }),
    TestRows::Named());

TEST(DatePartArguments, UnknownIntervalIsErrorFive)
{
    EXPECT_EQ(errorNumberOf([] { DatePart(u"x", 1); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { DatePart(u"", 1); }), Error::InvalidCall);
    EXPECT_EQ(errorNumberOf([] { DatePart(u"mm", 1); }), Error::InvalidCall);
}

struct DateTextRow
{
    const char* name;
    QString text;
    std::optional<double> serial; // nothing: not a date
};

class DateTextRows : public testing::TestWithParam<DateTextRow>
{
};

TEST_P(DateTextRows, ReadInBritishEnglish)
{
    const DateTextRow& row = GetParam();
    EXPECT_EQ(IsDate(row.text), row.serial.has_value()) << row.text.toStdString();
    if (row.serial)
        EXPECT_DOUBLE_EQ(CDate(row.text), *row.serial) << row.text.toStdString();
    else
        EXPECT_EQ(errorNumberOf([&row] { CDate(row.text); }), Error::TypeMismatch);
}

constexpr double LeapDay = 45351;

INSTANTIATE_TEST_SUITE_P(Rows, DateTextRows,
    testing::Values(DateTextRow { "dayMonthYear", u"29/02/2024"_s, LeapDay },
        DateTextRow { "dashes", u"29-2-2024"_s, LeapDay },
        DateTextRow { "twoDigitYear", u"29/2/24"_s, LeapDay },
        DateTextRow { "twoDigitYearThirtyIs1930", u"1/1/30"_s, 10959 },
        DateTextRow { "monthFirstWhenDayOrderFails", u"12/31/1999"_s, 36525 },
        DateTextRow { "yearFirstWhenNoOtherOrderFits", u"99/12/31"_s, 36525 },
        DateTextRow { "yearFirstWithDashes", u"99-12-31"_s, 36525 },
        DateTextRow { "isoYearFirst", u"2024-02-29"_s, LeapDay },
        DateTextRow { "longMonthName", u"29 February 2024"_s, LeapDay },
        DateTextRow { "monthNameFirstWithComma", u"February 29, 2024"_s, LeapDay },
        DateTextRow { "abbreviatedMonth", u"29 Feb 2024"_s, LeapDay },
        DateTextRow { "mediumDateForm", u"29-Feb-24"_s, LeapDay },
        DateTextRow { "septWithFourLetters", u"1 Sept 2024"_s, 45536 },
        DateTextRow { "longDateWithWeekday", u"Thursday, 29 February 2024"_s, LeapDay },
        DateTextRow { "monthAndYearIsTheFirst", u"February 2024"_s, 45323 },
        DateTextRow { "monthAndYearNumeric", u"2/2024"_s, 45323 },
        DateTextRow { "firstValidDate", u"1/1/100"_s, -657434 },
        DateTextRow { "lastValidDate", u"31 December 9999"_s, 2958465 },
        DateTextRow { "dayBeforeSerialZero", u"29/12/1899"_s, -1 },
        DateTextRow { "dateAndTime", u"29/02/2024 14:15"_s, LeapDay + 14.25 / 24 },
        DateTextRow { "dateAndTimeWithSeconds", u"29/02/2024 14:15:30"_s,
            LeapDay + (14 * 3600 + 15 * 60 + 30) / 86400.0 },
        DateTextRow { "timeBeforeDate", u"14:15 29/02/2024"_s, LeapDay + 14.25 / 24 },
        DateTextRow { "timeOnlyHasNoDate", u"06:00"_s, 0.25 },
        DateTextRow { "afternoonWithPm", u"2:30 PM"_s, 14.5 / 24 },
        DateTextRow { "twelveAmIsMidnight", u"12:00 AM"_s, 0.0 },
        DateTextRow { "twelvePmIsNoon", u"12:00 pm"_s, 0.5 },
        DateTextRow { "negativeSerialWithTime", u"29/12/1899 06:00"_s, -1.25 },
        DateTextRow { "notALeapYear", u"29/02/2023"_s, std::nullopt },
        // A day that does not exist is refused, not read year first as some other date.
        DateTextRow { "notALeapYearTwoDigits", u"29/02/23"_s, std::nullopt },
        DateTextRow { "noThirtyFirstOfApril", u"31/04/21"_s, std::nullopt },
        DateTextRow { "fourDigitYearBelowOneHundred", u"1/1/0099"_s, std::nullopt },
        DateTextRow { "yearTenThousand", u"1/1/10000"_s, std::nullopt },
        DateTextRow { "decimalNumberIsNoDate", u"12.5"_s, std::nullopt },
        DateTextRow { "plainNumberIsNoDate", u"2024"_s, std::nullopt },
        DateTextRow { "wordIsNoDate", u"Cats"_s, std::nullopt },
        DateTextRow { "weekdayAloneIsNoDate", u"Monday"_s, std::nullopt },
        DateTextRow { "emptyIsNoDate", u""_s, std::nullopt },
        DateTextRow { "hourTwentyFour", u"24:00"_s, std::nullopt },
        DateTextRow { "thirteenPm", u"13:00 PM"_s, std::nullopt },
        DateTextRow { "twoTimes", u"10:00 11:00"_s, std::nullopt },
        DateTextRow { "fourParts", u"1/2/3/4"_s, std::nullopt },
        DateTextRow { "unknownWord", u"29 Smarch 2024"_s, std::nullopt },
        DateTextRow { "oddCharacter", u"29/02/2024!"_s, std::nullopt },
        DateTextRow { "hugeNumber", u"99999999999/1/1"_s, std::nullopt }),
    TestRows::Named());

TEST(DateTextCurrentYear, DayAndMonthAloneMeanThisYear)
{
    const int thisYear = QDate::currentDate().year();
    EXPECT_DOUBLE_EQ(CDate(u"3/4"_s), DateSerial(thisYear, 4, 3));
    EXPECT_DOUBLE_EQ(CDate(u"3 April"_s), DateSerial(thisYear, 4, 3));
}

TEST(DateTextLocale, AmericanOrderIsMonthFirst)
{
    ScopedHostLocale american(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_DOUBLE_EQ(CDate(u"2/29/2024"_s), LeapDay);
    EXPECT_DOUBLE_EQ(CDate(u"3/4/2024"_s), DateSerial(2024, 3, 4));
}

TEST(DateTextLocale, GermanMonthNamesAndPoints)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_DOUBLE_EQ(CDate(u"29. Februar 2024"_s), LeapDay);
    EXPECT_DOUBLE_EQ(CDate(u"1. März 2024"_s), LeapDay + 1);
    EXPECT_DOUBLE_EQ(CDate(u"29.02.2024"_s), LeapDay);
}

struct DateValueRow
{
    const char* name;
    Variant value;
    bool isDate;
};

class DateValueRows : public testing::TestWithParam<DateValueRow>
{
};

TEST_P(DateValueRows, OnlyDatesAndDateTextsAreDates)
{
    EXPECT_EQ(IsDate(GetParam().value), GetParam().isDate);
}

INSTANTIATE_TEST_SUITE_P(Rows, DateValueRows,
    testing::Values(DateValueRow { "dateValue", Variant::date(45351), true },
        DateValueRow { "dateText", Variant(u"29/02/2024"_s), true },
        DateValueRow { "number", Variant(45351.0), false },
        DateValueRow { "null", Variant::null(), false }, DateValueRow { "empty", Variant(), false },
        DateValueRow { "otherText", Variant(u"soon"_s), false }),
    TestRows::Named());

TEST(DateValues, CDateOfValues)
{
    EXPECT_DOUBLE_EQ(CDate(Variant::date(-1.25)), -1.25);
    EXPECT_DOUBLE_EQ(CDate(Variant(45351.5)), 45351.5);
    EXPECT_DOUBLE_EQ(CDate(Variant()), 0.0);
    EXPECT_DOUBLE_EQ(CDate(Variant(u"29/02/2024"_s)), LeapDay);
    EXPECT_EQ(errorNumberOf([] { CDate(Variant::null()); }), Error::InvalidUseOfNull);
    EXPECT_EQ(errorNumberOf([] { CDate(Variant(3e6)); }), Error::Overflow);
    EXPECT_EQ(errorNumberOf([] { CDate(Variant(u"never"_s)); }), Error::TypeMismatch);
}

} // namespace
