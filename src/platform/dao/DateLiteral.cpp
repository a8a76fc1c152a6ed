#include "platform/dao/DateLiteral.h"

#include <QDate>
#include <QList>

using namespace Qt::Literals::StringLiterals;

namespace Dao {

namespace {

// Splits "12/31/1999 10:30 PM" into its words at blanks.
QList<QStringView> Words(QStringView text)
{
    QList<QStringView> words;
    qsizetype start = -1;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        const bool blank = i == text.size() || text[i].isSpace();
        if (blank && start >= 0) {
            words.append(text.mid(start, i - start));
            start = -1;
        } else if (!blank && start < 0) {
            start = i;
        }
    }
    return words;
}

// Whole decimal numbers separated by one separator character; empty when malformed.
std::optional<QList<QStringView>> Parts(QStringView word, const QString& separators)
{
    QList<QStringView> parts;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= word.size(); ++i) {
        if (i == word.size() || separators.contains(word[i])) {
            const QStringView part = word.mid(start, i - start);
            if (part.isEmpty() || part.size() > 4)
                return std::nullopt;
            for (const QChar c : part) {
                if (c < u'0' || c > u'9')
                    return std::nullopt;
            }
            parts.append(part);
            start = i + 1;
        }
    }
    return parts;
}

std::optional<double> DaysOf(QStringView word)
{
    const auto parts = Parts(word, u"-/"_s);
    if (!parts || parts->size() != 3)
        return std::nullopt;
    int year = 0;
    int month = 0;
    int day = 0;
    if ((*parts)[0].size() == 4) {
        year = (*parts)[0].toInt();
        month = (*parts)[1].toInt();
        day = (*parts)[2].toInt();
    } else {
        month = (*parts)[0].toInt();
        day = (*parts)[1].toInt();
        year = (*parts)[2].toInt();
        if ((*parts)[2].size() <= 2)
            year += year < 30 ? 2000 : 1900;
    }
    if (year < 100 || year > 9999)
        return std::nullopt;
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    return static_cast<double>(QDate(1899, 12, 30).daysTo(date));
}

std::optional<double> FractionOf(QStringView word, QStringView meridiem)
{
    const auto parts = Parts(word, u":"_s);
    if (!parts || parts->size() < 2 || parts->size() > 3)
        return std::nullopt;
    int hour = (*parts)[0].toInt();
    const int minute = (*parts)[1].toInt();
    const int second = parts->size() == 3 ? (*parts)[2].toInt() : 0;
    if (!meridiem.isEmpty()) {
        const bool afternoon = meridiem.compare(u"PM"_s, Qt::CaseInsensitive) == 0;
        if (!afternoon && meridiem.compare(u"AM"_s, Qt::CaseInsensitive) != 0)
            return std::nullopt;
        if (hour < 1 || hour > 12)
            return std::nullopt;
        hour = hour % 12 + (afternoon ? 12 : 0);
    }
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return (hour * 3600.0 + minute * 60.0 + second) / 86400.0;
}

} // namespace

std::optional<double> ParseDateLiteral(QStringView text)
{
    const QList<QStringView> words = Words(text);
    if (words.isEmpty() || words.size() > 3)
        return std::nullopt;
    qsizetype next = 0;
    std::optional<double> days;
    if (!words[0].contains(u':')) {
        days = DaysOf(words[0]);
        if (!days)
            return std::nullopt;
        next = 1;
    }
    double fraction = 0.0;
    if (next < words.size()) {
        const QStringView meridiem = next + 1 < words.size() ? words[next + 1] : QStringView();
        if (next + 2 < words.size())
            return std::nullopt;
        const auto time = FractionOf(words[next], meridiem);
        if (!time)
            return std::nullopt;
        fraction = *time;
    }
    const double whole = days.value_or(0.0);
    // Before the zero day the fraction still runs forward in time: -1.25 is 29 December 1899
    // at 6 in the morning.
    return whole < 0 ? whole - fraction : whole + fraction;
}

} // namespace Dao
