#include "platform/runtime/LocaleNames.h"

namespace Runtime {

namespace {
// English abbreviations stay at three letters (Sep, not Sept): the names pupils and
// teachers know from every earlier version of the program.
bool abbreviatesToThreeLetters(const QLocale& locale)
{
    return locale.language() == QLocale::English;
}

int qtDayOf(int sundayBasedDay)
{
    return sundayBasedDay == 1 ? 7 : sundayBasedDay - 1;
}
} // namespace

QString LocaleMonthName(const QLocale& locale, int month, bool abbreviate, bool standalone)
{
    if (abbreviate && abbreviatesToThreeLetters(locale))
        return locale.monthName(month, QLocale::LongFormat).left(3);
    const QLocale::FormatType type = abbreviate ? QLocale::ShortFormat : QLocale::LongFormat;
    return standalone ? locale.standaloneMonthName(month, type) : locale.monthName(month, type);
}

QString LocaleDayName(const QLocale& locale, int sundayBasedDay, bool abbreviate)
{
    const int qtDay = qtDayOf(sundayBasedDay);
    if (abbreviate && abbreviatesToThreeLetters(locale))
        return locale.dayName(qtDay, QLocale::LongFormat).left(3);
    return locale.dayName(qtDay, abbreviate ? QLocale::ShortFormat : QLocale::LongFormat);
}

int LocaleFirstDayOfWeek(const QLocale& locale)
{
    const int qtDay = static_cast<int>(locale.firstDayOfWeek());
    return qtDay == 7 ? 1 : qtDay + 1;
}

} // namespace Runtime
