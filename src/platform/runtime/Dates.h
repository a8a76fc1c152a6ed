#pragma once

#include "platform/runtime/Variant.h"

#include <QString>
#include <QStringView>

// Dates as the classic runtime kept them: a day serial counted from 30 December 1899 (serial
// 0), with the time of day as the fraction. Days before that count down (-1 is 29 December
// 1899), but the fraction of a negative serial still counts forward from the start of its
// day: -1.25 is 29 December 1899 06:00. Valid dates run from 1 January 100 (serial -657434)
// to 31 December 9999 (serial 2958465); times are resolved to the nearest second.
//
// Functions given a serial outside that range throw Error 6; DateSerial gives Error 5 for a
// result outside it; CDate gives Error 13 for a text that is not a date.
namespace Runtime {

// Weekday numbering: 1 = Sunday ... 7 = Saturday; 0 asks for the host locale's first day.
enum DayOfWeek : int {
    UseSystemDayOfWeek = 0,
    Sunday = 1,
    Monday,
    Tuesday,
    Wednesday,
    Thursday,
    Friday,
    Saturday,
};

// Which week of a year is its week 1 (DatePart "ww"): the week holding 1 January, the first
// week with at least four days in the year, or the first full week.
enum WeekOfYear : int {
    UseSystemWeekOfYear = 0,
    FirstJanuary = 1,
    FirstFourDays = 2,
    FirstFullWeek = 3,
};

constexpr double FirstDateSerial = -657434.0; // 1 January 100
constexpr double LastDateSerial = 2958465.0; // 31 December 9999, start of the day

struct DateTimeParts
{
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// Whether the serial names a moment between 1 January 100 and the end of 31 December 9999.
bool IsValidDateSerial(double serial);
DateTimeParts SplitDateSerial(double serial);
// The serial of a calendar date and time (no rolling over; the parts must be valid).
double JoinDateSerial(const DateTimeParts& parts);
// The whole-day part and the time-of-day fraction of a serial (both never negative for the
// fraction): DatePartOfSerial(-1.25) = -1, TimeOfSerial(-1.25) = 0.25.
double DatePartOfSerial(double serial);
double TimeOfSerial(double serial);

// The serial of a date; months and days outside their ranges roll over (month 13 is January
// of the next year, day 0 the last day of the previous month); years 0 to 29 mean 2000 to
// 2029 and 30 to 99 mean 1930 to 1999.
double DateSerial(int year, int month, int day);
// The fraction of a day for a time, rolling over like DateSerial: TimeSerial(25, 0, 0) is one
// day and one hour; a negative total is that long before midnight starting 30 December 1899.
double TimeSerial(int hour, int minute, int second);

int Year(double serial);
int Month(double serial);
int Day(double serial);
int Hour(double serial);
int Minute(double serial);
int Second(double serial);
// 1..7 counted from firstDayOfWeek: with Sunday first, 31 December 1899 (serial 1) is 1.
int Weekday(double serial, int firstDayOfWeek = Sunday);

// Month and weekday names of the host locale. English abbreviations are always the first
// three letters (Jan ... Dec, Sun ... Sat) as pupils have always seen them, although current
// locale data spells September "Sept" in some English locales. Error 5 outside 1..12 / 1..7.
QString MonthName(int month, bool abbreviate = false);
// The name of weekday number `weekday` counted from firstDayOfWeek (1 = Sunday by default).
QString WeekdayName(int weekday, bool abbreviate = false, int firstDayOfWeek = Sunday);

// Whether a text reads as a date, a time or both in the host locale. Accepted: numeric dates
// in the locale's order (day/month/year for en_GB), falling back to month/day/year and
// year/month/day when that order gives no valid date, with "/", "-" or "." between the parts
// ("." only in three-part dates, so "12.5" is no date); month names and their abbreviations
// ("29 February 2024", "Feb 29, 2024", "29-Feb-24"); a leading weekday name; day and month
// alone (this year) or month and year alone (the 1st); two-digit years as in DateSerial;
// times "14:30", "14:30:15", "2:30 PM", "2pm", before or after the date.
bool IsDate(QStringView text);
bool IsDate(const QString& text);
// True for dates and for texts that read as dates.
bool IsDate(const Variant& value);

// The serial of a date text (Error 13 if it is none) or value: dates as they are, numbers
// taken as serials (Error 6 outside the valid range), Null Error 94, Empty serial 0.
double CDate(QStringView text);
double CDate(const QString& text);
double CDate(const Variant& value);

// One part of a date: "yyyy" year, "q" quarter, "m" month, "y" day of the year, "d" day,
// "w" weekday, "ww" week of the year, "h" hour, "n" minute, "s" second (any case). Error 5
// for any other interval.
int DatePart(QStringView interval, double serial, int firstDayOfWeek = Sunday,
    int firstWeekOfYear = FirstJanuary);

} // namespace Runtime
