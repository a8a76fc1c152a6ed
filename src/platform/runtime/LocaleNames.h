#pragma once

#include <QLocale>
#include <QString>

// Month and weekday names as dates show them, shared by the date functions and Format.
namespace Runtime {

// month 1..12. `standalone` gives the form used on its own (a heading), otherwise the form
// used inside a date, which differs in some languages.
QString LocaleMonthName(const QLocale& locale, int month, bool abbreviate, bool standalone);
// sundayBasedDay 1 = Sunday ... 7 = Saturday.
QString LocaleDayName(const QLocale& locale, int sundayBasedDay, bool abbreviate);
// The host's first day of the week, 1 = Sunday ... 7 = Saturday.
int LocaleFirstDayOfWeek(const QLocale& locale);

} // namespace Runtime
