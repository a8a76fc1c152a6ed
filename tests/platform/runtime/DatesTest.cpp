#include "platform/runtime/Dates.h"

#include "RowFile.h"
#include "RuntimeRows.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/QStringPrinter.h"

#include <QDate>
#include <functional>
#include <gtest/gtest.h>
#include <tuple>

using namespace Qt::Literals::StringLiterals;
using namespace Runtime;
using RowFile::In;
using RowFile::Named;
using RuntimeRows::ExpectOutcome;

namespace {

int errorNumberOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

// A first day of the week or a first-week rule as rows write it: by name or as a number.
int Code(const RowFile::Row& row, const char* column)
{
    static const QStringList names[] = {
        { u"system"_s, u"Sunday"_s, u"Monday"_s, u"Tuesday"_s, u"Wednesday"_s, u"Thursday"_s,
            u"Friday"_s, u"Saturday"_s },
        { u"system"_s, u"firstJanuary"_s, u"firstFourDays"_s, u"firstFullWeek"_s },
    };
    for (const QStringList& list : names) {
        if (list.contains(row.text(column)))
            return int(list.indexOf(row.text(column)));
    }
    return int(row.whole(column));
}

class DateSerialRows : public RowFile::RowTest<>
{
};

TEST_P(DateSerialRows, CountsDaysFromThirtiethDecember1899)
{
    ExpectOutcome(row(), "serial", [&] {
        return DateSerial(
            int(row().whole("year")), int(row().whole("month")), int(row().whole("day")));
    });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DateSerialRows, In("platform/runtime/dates/dateSerial.rows"), Named());

class SplitRows : public RowFile::RowTest<>
{
};

TEST_P(SplitRows, GivesCalendarDateAndTime)
{
    const double serial = row().number("serial");
    const std::tuple<const char*, int DateTimeParts::*, int (*)(double)> parts[]
        = { { "year", &DateTimeParts::year, &Year }, { "month", &DateTimeParts::month, &Month },
              { "day", &DateTimeParts::day, &Day }, { "hour", &DateTimeParts::hour, &Hour },
              { "minute", &DateTimeParts::minute, &Minute },
              { "second", &DateTimeParts::second, &Second } };
    for (const auto& part : parts) {
        // Lambdas cannot capture structured bindings under every compiler the suite builds with.
        const auto member = std::get<1>(part);
        const auto function = std::get<2>(part);
        ExpectOutcome(row(), std::get<0>(part), [&] { return SplitDateSerial(serial).*member; });
        ExpectOutcome(row(), std::get<0>(part), [&] { return function(serial); });
    }
    EXPECT_EQ(IsValidDateSerial(serial), !row().text("year").startsWith(u"error"));
}

INSTANTIATE_TEST_SUITE_P(Rows, SplitRows, In("platform/runtime/dates/splitSerial.rows"), Named());

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

class TimeSerialRows : public RowFile::RowTest<>
{
};

TEST_P(TimeSerialRows, GivesTheFractionOfADay)
{
    EXPECT_DOUBLE_EQ(TimeSerial(int(row().whole("hour")), int(row().whole("minute")),
                         int(row().whole("second"))),
        row().number("serial"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TimeSerialRows, In("platform/runtime/dates/timeSerial.rows"), Named());

class WeekdayRows : public RowFile::RowTest<>
{
};

TEST_P(WeekdayRows, CountsFromTheFirstDay)
{
    ExpectOutcome(
        row(), "weekday", [&] { return Weekday(row().number("serial"), Code(row(), "firstDay")); });
}

INSTANTIATE_TEST_SUITE_P(Rows, WeekdayRows, In("platform/runtime/dates/weekday.rows"), Named());

class MonthNames : public RowFile::RowTest<>
{
};

TEST_P(MonthNames, AreBritishEnglish)
{
    ExpectOutcome(row(), "text",
        [&] { return MonthName(int(row().whole("month")), row().flag("abbreviated")); });
}

INSTANTIATE_TEST_SUITE_P(Rows, MonthNames, In("platform/runtime/dates/monthNames.rows"), Named());

class WeekdayNames : public RowFile::RowTest<>
{
};

TEST_P(WeekdayNames, AreBritishEnglishAndFollowTheFirstDay)
{
    ExpectOutcome(row(), "text", [&] {
        return WeekdayName(
            int(row().whole("weekday")), row().flag("abbreviated"), Code(row(), "firstDay"));
    });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WeekdayNames, In("platform/runtime/dates/weekdayNames.rows"), Named());

TEST(NameLocale, OtherLanguagesUseTheirOwnNames)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(MonthName(3), u"März"_s);
    EXPECT_EQ(WeekdayName(1), u"Sonntag"_s);
}

class DatePartRows : public RowFile::RowTest<>
{
};

TEST_P(DatePartRows, GivesThePart)
{
    ExpectOutcome(row(), "part", [&] {
        return DatePart(row().text("interval"), row().number("serial"), Code(row(), "firstDay"),
            Code(row(), "firstWeek"));
    });
}

INSTANTIATE_TEST_SUITE_P(Rows, DatePartRows, In("platform/runtime/dates/datePart.rows"), Named());

class DateTextRows : public RowFile::RowTest<>
{
};

TEST_P(DateTextRows, ReadInBritishEnglish)
{
    EXPECT_EQ(IsDate(row().text("text")), !row().text("serial").startsWith(u"error"));
    ExpectOutcome(row(), "serial", [&] { return CDate(row().text("text")); });
}

INSTANTIATE_TEST_SUITE_P(Rows, DateTextRows, In("platform/runtime/dates/dateText.rows"), Named());

TEST(DateTextCurrentYear, DayAndMonthAloneMeanThisYear)
{
    const int thisYear = QDate::currentDate().year();
    EXPECT_DOUBLE_EQ(CDate(u"3/4"_s), DateSerial(thisYear, 4, 3));
    EXPECT_DOUBLE_EQ(CDate(u"3 April"_s), DateSerial(thisYear, 4, 3));
}

class DateTextLocale : public RowFile::RowTest<>
{
};

TEST_P(DateTextLocale, FollowsTheHostLocale)
{
    ScopedHostLocale locale { QLocale(row().text("locale")) };
    ExpectOutcome(row(), "serial", [&] { return CDate(row().text("text")); });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DateTextLocale, In("platform/runtime/dates/dateTextOtherLocales.rows"), Named());

class DateValueRows : public RowFile::RowTest<>
{
};

TEST_P(DateValueRows, OnlyDatesAndDateTextsAreDates)
{
    EXPECT_EQ(IsDate(RuntimeRows::Value(row(), "value")), row().flag("isDate"));
    ExpectOutcome(row(), "serial", [&] { return CDate(RuntimeRows::Value(row(), "value")); });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DateValueRows, In("platform/runtime/dates/dateValues.rows"), Named());

} // namespace
