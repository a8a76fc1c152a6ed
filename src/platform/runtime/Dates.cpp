#include "platform/runtime/Dates.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/LocaleNames.h"

#include <QDate>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace Runtime {

namespace {

constexpr qint64 JulianDayOfSerialZero = 2415019; // 30 December 1899
constexpr qint64 FirstDayNumber = -657434;
constexpr qint64 LastDayNumber = 2958465;
constexpr int SecondsPerDay = 86400;

struct Moment
{
    qint64 dayNumber = 0;
    int secondOfDay = 0;
};

std::optional<Moment> momentOf(double serial)
{
    if (!(serial > double(FirstDayNumber) - 1.0 && serial < double(LastDayNumber) + 1.0))
        return std::nullopt;
    const double whole = std::trunc(serial);
    const double fraction = std::fabs(serial - whole);
    Moment moment;
    moment.dayNumber = static_cast<qint64>(whole);
    qint64 seconds = std::llround(fraction * SecondsPerDay);
    if (seconds >= SecondsPerDay) {
        seconds -= SecondsPerDay;
        ++moment.dayNumber;
    }
    moment.secondOfDay = static_cast<int>(seconds);
    if (moment.dayNumber < FirstDayNumber || moment.dayNumber > LastDayNumber)
        return std::nullopt;
    return moment;
}

Moment checkedMoment(double serial)
{
    const std::optional<Moment> moment = momentOf(serial);
    if (!moment)
        throw Error(Error::Overflow);
    return *moment;
}

// A negative day keeps its time as a positive distance from the start of the day, stored
// with the day's sign: 29 December 1899 06:00 is -1.25.
double serialOf(qint64 dayNumber, double secondOfDay)
{
    const double fraction = secondOfDay / SecondsPerDay;
    return dayNumber >= 0 ? double(dayNumber) + fraction : double(dayNumber) - fraction;
}

QDate dateOfDay(qint64 dayNumber)
{
    return QDate::fromJulianDay(JulianDayOfSerialZero + dayNumber);
}

qint64 dayOfDate(const QDate& date)
{
    return date.toJulianDay() - JulianDayOfSerialZero;
}

int sundayBasedWeekday(qint64 dayNumber)
{
    // Serial 1, 31 December 1899, was a Sunday.
    return int(((dayNumber - 1) % 7 + 7) % 7) + 1;
}

int resolvedFirstDay(int firstDayOfWeek)
{
    if (firstDayOfWeek == UseSystemDayOfWeek)
        return LocaleFirstDayOfWeek(HostLocale());
    if (firstDayOfWeek < Sunday || firstDayOfWeek > Saturday)
        throw Error(Error::InvalidCall);
    return firstDayOfWeek;
}

int weekdayFrom(qint64 dayNumber, int firstDay)
{
    return (sundayBasedWeekday(dayNumber) - firstDay + 7) % 7 + 1;
}

qint64 floorDivide(qint64 value, qint64 divisor)
{
    qint64 quotient = value / divisor;
    if ((value % divisor != 0) && ((value < 0) != (divisor < 0)))
        --quotient;
    return quotient;
}

int windowedYear(int year)
{
    if (year >= 0 && year < 30)
        return year + 2000;
    if (year >= 30 && year < 100)
        return year + 1900;
    return year;
}

bool isValidCalendarDate(int year, int month, int day)
{
    return year >= 100 && year <= 9999 && QDate::isValid(year, month, day);
}

// ---- Reading date texts ----------------------------------------------------------

struct DateToken
{
    enum class Kind { Number, Word, Separator };
    Kind kind = Kind::Separator;
    QString text;
    int value = 0;
    QChar separator;
    bool used = false;
};

std::optional<std::vector<DateToken>> tokenize(QStringView text)
{
    std::vector<DateToken> tokens;
    qsizetype index = 0;
    while (index < text.size()) {
        const QChar character = text.at(index);
        if (character.isSpace()) {
            ++index;
        } else if (character >= u'0' && character <= u'9') {
            DateToken token;
            token.kind = DateToken::Kind::Number;
            while (index < text.size() && text.at(index) >= u'0' && text.at(index) <= u'9') {
                token.text.append(text.at(index));
                ++index;
            }
            if (token.text.size() > 6)
                return std::nullopt;
            token.value = token.text.toInt();
            tokens.push_back(token);
        } else if (character.isLetter()) {
            DateToken token;
            token.kind = DateToken::Kind::Word;
            while (index < text.size() && text.at(index).isLetter()) {
                token.text.append(text.at(index));
                ++index;
            }
            tokens.push_back(token);
        } else if (character == u'/' || character == u'-' || character == u'.' || character == u','
            || character == u':') {
            DateToken token;
            token.separator = character;
            tokens.push_back(token);
            ++index;
        } else {
            return std::nullopt;
        }
    }
    return tokens;
}

bool isNumber(const std::vector<DateToken>& tokens, size_t index)
{
    return index < tokens.size() && tokens[index].kind == DateToken::Kind::Number;
}

bool isSeparator(const std::vector<DateToken>& tokens, size_t index, QChar separator)
{
    return index < tokens.size() && tokens[index].kind == DateToken::Kind::Separator
        && tokens[index].separator == separator;
}

// 0: not a day-half word; 1: before noon; 2: after noon.
int dayHalfOf(const std::vector<DateToken>& tokens, size_t index, const QLocale& locale)
{
    if (index >= tokens.size() || tokens[index].kind != DateToken::Kind::Word)
        return 0;
    const QString& word = tokens[index].text;
    const auto is = [&word](const QString& candidate) {
        return !candidate.isEmpty() && word.compare(candidate, Qt::CaseInsensitive) == 0;
    };
    if (is(u"AM"_s) || is(u"A"_s) || is(locale.amText()))
        return 1;
    if (is(u"PM"_s) || is(u"P"_s) || is(locale.pmText()))
        return 2;
    return 0;
}

bool matchesName(const QString& word, const QString& longName, const QString& shortName)
{
    if (word.compare(longName, Qt::CaseInsensitive) == 0)
        return true;
    QString trimmedShort = shortName;
    if (trimmedShort.endsWith(u'.'))
        trimmedShort.chop(1);
    if (!trimmedShort.isEmpty() && word.compare(trimmedShort, Qt::CaseInsensitive) == 0)
        return true;
    return word.size() >= 3 && longName.startsWith(word, Qt::CaseInsensitive);
}

int monthOfWord(const QString& word, const QLocale& locale)
{
    const QLocale english(QLocale::English, QLocale::UnitedKingdom);
    for (const QLocale* candidate : { &locale, &english }) {
        for (int month = 1; month <= 12; ++month) {
            if (matchesName(word, candidate->monthName(month, QLocale::LongFormat),
                    candidate->monthName(month, QLocale::ShortFormat))
                || matchesName(word, candidate->standaloneMonthName(month),
                    candidate->standaloneMonthName(month, QLocale::ShortFormat)))
                return month;
        }
    }
    return 0;
}

bool isWeekdayWord(const QString& word, const QLocale& locale)
{
    const QLocale english(QLocale::English, QLocale::UnitedKingdom);
    for (const QLocale* candidate : { &locale, &english }) {
        for (int day = 1; day <= 7; ++day) {
            if (matchesName(word, candidate->dayName(day, QLocale::LongFormat),
                    candidate->dayName(day, QLocale::ShortFormat)))
                return true;
        }
    }
    return false;
}

struct TimeReading
{
    bool present = false;
    int secondOfDay = 0;
};

// Finds one time ("14:30", "14:30:15", "2:30 pm", "2pm") and marks its tokens used.
std::optional<TimeReading> readTime(std::vector<DateToken>& tokens, const QLocale& locale)
{
    TimeReading reading;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int dayHalf = 0;
    for (size_t index = 0; index < tokens.size() && !reading.present; ++index) {
        if (!isNumber(tokens, index))
            continue;
        size_t end = index;
        if (isSeparator(tokens, index + 1, u':') && isNumber(tokens, index + 2)) {
            hour = tokens[index].value;
            minute = tokens[index + 2].value;
            end = index + 3;
            if (isSeparator(tokens, end, u':') && isNumber(tokens, end + 1)) {
                second = tokens[end + 1].value;
                end += 2;
            }
        } else if (dayHalfOf(tokens, index + 1, locale) != 0) {
            hour = tokens[index].value;
            end = index + 1;
        } else {
            continue;
        }
        dayHalf = dayHalfOf(tokens, end, locale);
        if (dayHalf != 0)
            ++end;
        for (size_t used = index; used < end; ++used)
            tokens[used].used = true;
        reading.present = true;
    }
    if (!reading.present)
        return reading;
    if (minute > 59 || second > 59)
        return std::nullopt;
    if (dayHalf != 0) {
        if (hour > 12)
            return std::nullopt;
        hour = hour % 12 + (dayHalf == 2 ? 12 : 0);
    } else if (hour > 23) {
        return std::nullopt;
    }
    reading.secondOfDay = hour * 3600 + minute * 60 + second;
    return reading;
}

struct NumberPart
{
    int value = 0;
    qsizetype digits = 0;
};

bool looksLikeYear(const NumberPart& part)
{
    return part.digits >= 3 || part.value > 31;
}

int yearOf(const NumberPart& part)
{
    return part.digits <= 2 ? windowedYear(part.value) : part.value;
}

// The order of day (d), month (M) and year (y) in the locale's short date.
QString localeDateOrder(const QLocale& locale)
{
    QString order;
    for (const QChar character : locale.dateFormat(QLocale::ShortFormat)) {
        if ((character == u'd' || character == u'M' || character == u'y')
            && !order.contains(character))
            order.append(character);
    }
    return order.size() == 3 ? order : u"dMy"_s;
}

std::optional<QDate> dateInOrder(const std::vector<NumberPart>& parts, QStringView order)
{
    int year = 0;
    int month = 0;
    int day = 0;
    for (qsizetype index = 0; index < order.size(); ++index) {
        const NumberPart& part = parts[size_t(index)];
        if (order.at(index) == u'd')
            day = part.value;
        else if (order.at(index) == u'M')
            month = part.value;
        else
            year = yearOf(part);
    }
    if (!isValidCalendarDate(year, month, day))
        return std::nullopt;
    return QDate(year, month, day);
}

std::optional<QDate> numericDate(const std::vector<NumberPart>& parts, const QLocale& locale)
{
    const int thisYear = QDate::currentDate().year();
    const QString order = localeDateOrder(locale);
    if (parts.size() == 3) {
        // A first part that can be no day ("99/12/31") puts the year first. A mistyped day
        // ("31/04/21") is refused, never read the other way round as another date.
        if (parts[0].digits >= 3 || parts[0].value > 31)
            return dateInOrder(parts, u"yMd");
        for (const QString& candidate : { order, u"dMy"_s, u"Mdy"_s }) {
            if (const auto date = dateInOrder(parts, candidate))
                return date;
        }
        return std::nullopt;
    }
    // Two parts: a year on either side makes month and year; otherwise day and month of
    // this year in the locale's order, or the other order, or month and two-digit year.
    const NumberPart& first = parts[0];
    const NumberPart& second = parts[1];
    if (first.digits >= 3 && isValidCalendarDate(first.value, second.value, 1))
        return QDate(first.value, second.value, 1);
    if (second.digits >= 3 && isValidCalendarDate(second.value, first.value, 1))
        return QDate(second.value, first.value, 1);
    if (first.digits >= 3 || second.digits >= 3)
        return std::nullopt;
    const bool dayFirst = order.indexOf(u'd') < order.indexOf(u'M');
    const NumberPart& day = dayFirst ? first : second;
    const NumberPart& month = dayFirst ? second : first;
    if (isValidCalendarDate(thisYear, month.value, day.value))
        return QDate(thisYear, month.value, day.value);
    if (isValidCalendarDate(thisYear, day.value, month.value))
        return QDate(thisYear, day.value, month.value);
    if (isValidCalendarDate(yearOf(second), first.value, 1))
        return QDate(yearOf(second), first.value, 1);
    return std::nullopt;
}

std::optional<QDate> namedMonthDate(const std::vector<NumberPart>& parts, int month)
{
    int year = QDate::currentDate().year();
    int day = 1;
    if (parts.size() == 2) {
        const bool yearFirst = looksLikeYear(parts[0]) && !looksLikeYear(parts[1]);
        day = (yearFirst ? parts[1] : parts[0]).value;
        year = yearOf(yearFirst ? parts[0] : parts[1]);
    } else if (looksLikeYear(parts[0])) {
        year = yearOf(parts[0]);
    } else {
        day = parts[0].value;
    }
    if (!isValidCalendarDate(year, month, day))
        return std::nullopt;
    return QDate(year, month, day);
}

std::optional<double> readDateText(QStringView text)
{
    std::optional<std::vector<DateToken>> tokenized = tokenize(text);
    if (!tokenized || tokenized->empty())
        return std::nullopt;
    std::vector<DateToken>& tokens = *tokenized;
    const QLocale locale = HostLocale();

    const std::optional<TimeReading> time = readTime(tokens, locale);
    if (!time)
        return std::nullopt;

    std::vector<NumberPart> numbers;
    int month = 0;
    bool pointSeparator = false;
    for (const DateToken& token : tokens) {
        if (token.used)
            continue;
        switch (token.kind) {
        case DateToken::Kind::Number:
            numbers.push_back({ token.value, token.text.size() });
            break;
        case DateToken::Kind::Word:
            if (const int named = monthOfWord(token.text, locale); named != 0 && month == 0)
                month = named;
            else if (!isWeekdayWord(token.text, locale))
                return std::nullopt;
            break;
        case DateToken::Kind::Separator:
            if (token.separator == u':')
                return std::nullopt;
            if (token.separator == u'.')
                pointSeparator = true;
            break;
        }
    }

    std::optional<QDate> date;
    if (month != 0) {
        if (numbers.empty() || numbers.size() > 2)
            return std::nullopt;
        date = namedMonthDate(numbers, month);
    } else if (numbers.size() == 3 || (numbers.size() == 2 && !pointSeparator)) {
        date = numericDate(numbers, locale);
    } else if (!numbers.empty() || !time->present) {
        return std::nullopt;
    }
    if (month != 0 || !numbers.empty()) {
        if (!date)
            return std::nullopt;
        return serialOf(dayOfDate(*date), time->secondOfDay);
    }
    return serialOf(0, time->secondOfDay);
}

int weekOfYear(qint64 dayNumber, int year, int firstDay, int firstWeek)
{
    const auto weekOneStart = [firstDay, firstWeek](int forYear) {
        const qint64 januaryFirst = dayOfDate(QDate(forYear, 1, 1));
        const int weekday = weekdayFrom(januaryFirst, firstDay);
        switch (firstWeek) {
        case FirstFourDays:
            return weekday <= 4 ? januaryFirst - (weekday - 1) : januaryFirst + (8 - weekday);
        case FirstFullWeek:
            return weekday == 1 ? januaryFirst : januaryFirst + (8 - weekday);
        default:
            return januaryFirst - (weekday - 1);
        }
    };
    qint64 start = weekOneStart(year);
    if (dayNumber < start)
        start = weekOneStart(year - 1);
    else if (firstWeek == FirstFourDays && year < 9999 && dayNumber >= weekOneStart(year + 1))
        return 1;
    return int((dayNumber - start) / 7) + 1;
}

} // namespace

bool IsValidDateSerial(double serial)
{
    return momentOf(serial).has_value();
}

DateTimeParts SplitDateSerial(double serial)
{
    const Moment moment = checkedMoment(serial);
    const QDate date = dateOfDay(moment.dayNumber);
    DateTimeParts parts;
    parts.year = date.year();
    parts.month = date.month();
    parts.day = date.day();
    parts.hour = moment.secondOfDay / 3600;
    parts.minute = moment.secondOfDay / 60 % 60;
    parts.second = moment.secondOfDay % 60;
    return parts;
}

double JoinDateSerial(const DateTimeParts& parts)
{
    if (!isValidCalendarDate(parts.year, parts.month, parts.day) || parts.hour < 0
        || parts.hour > 23 || parts.minute < 0 || parts.minute > 59 || parts.second < 0
        || parts.second > 59)
        throw Error(Error::InvalidCall);
    return serialOf(dayOfDate(QDate(parts.year, parts.month, parts.day)),
        parts.hour * 3600 + parts.minute * 60 + parts.second);
}

double DatePartOfSerial(double serial)
{
    return double(checkedMoment(serial).dayNumber);
}

double TimeOfSerial(double serial)
{
    return checkedMoment(serial).secondOfDay / double(SecondsPerDay);
}

double DateSerial(int year, int month, int day)
{
    const qint64 months = qint64(windowedYear(year)) * 12 + (qint64(month) - 1);
    const qint64 fullYear = floorDivide(months, 12);
    const int monthOfYear = int(months - fullYear * 12) + 1;
    if (fullYear < 1 || fullYear > 20000)
        throw Error(Error::InvalidCall);
    const qint64 dayNumber = dayOfDate(QDate(int(fullYear), monthOfYear, 1)) + (qint64(day) - 1);
    if (dayNumber < FirstDayNumber || dayNumber > LastDayNumber)
        throw Error(Error::InvalidCall);
    return double(dayNumber);
}

double TimeSerial(int hour, int minute, int second)
{
    const qint64 total = qint64(hour) * 3600 + qint64(minute) * 60 + second;
    const qint64 dayNumber = floorDivide(total, SecondsPerDay);
    if (dayNumber < FirstDayNumber || dayNumber > LastDayNumber)
        throw Error(Error::InvalidCall);
    return serialOf(dayNumber, double(total - dayNumber * SecondsPerDay));
}

int Year(double serial)
{
    return SplitDateSerial(serial).year;
}

int Month(double serial)
{
    return SplitDateSerial(serial).month;
}

int Day(double serial)
{
    return SplitDateSerial(serial).day;
}

int Hour(double serial)
{
    return SplitDateSerial(serial).hour;
}

int Minute(double serial)
{
    return SplitDateSerial(serial).minute;
}

int Second(double serial)
{
    return SplitDateSerial(serial).second;
}

int Weekday(double serial, int firstDayOfWeek)
{
    const int firstDay = resolvedFirstDay(firstDayOfWeek);
    return weekdayFrom(checkedMoment(serial).dayNumber, firstDay);
}

QString MonthName(int month, bool abbreviate)
{
    if (month < 1 || month > 12)
        throw Error(Error::InvalidCall);
    return LocaleMonthName(HostLocale(), month, abbreviate, true);
}

QString WeekdayName(int weekday, bool abbreviate, int firstDayOfWeek)
{
    if (weekday < 1 || weekday > 7)
        throw Error(Error::InvalidCall);
    const int firstDay = resolvedFirstDay(firstDayOfWeek);
    return LocaleDayName(HostLocale(), (weekday - 1 + firstDay - 1) % 7 + 1, abbreviate);
}

bool IsDate(QStringView text)
{
    return readDateText(text).has_value();
}

bool IsDate(const QString& text)
{
    return IsDate(QStringView(text));
}

bool IsDate(const Variant& value)
{
    if (value.type() == VariantType::Date)
        return IsValidDateSerial(value.number());
    if (value.type() == VariantType::Text)
        return IsDate(value.text());
    return false;
}

double CDate(QStringView text)
{
    const std::optional<double> serial = readDateText(text);
    if (!serial)
        throw Error(Error::TypeMismatch);
    return *serial;
}

double CDate(const QString& text)
{
    return CDate(QStringView(text));
}

double CDate(const Variant& value)
{
    switch (value.type()) {
    case VariantType::Empty:
        return 0.0;
    case VariantType::Null:
        throw Error(Error::InvalidUseOfNull);
    case VariantType::Text:
        return CDate(value.text());
    case VariantType::Binary:
        throw Error(Error::TypeMismatch);
    case VariantType::Boolean:
    case VariantType::Long:
    case VariantType::Double:
    case VariantType::Currency:
    case VariantType::Date:
        break;
    }
    const double serial = value.number();
    if (!IsValidDateSerial(serial))
        throw Error(Error::Overflow);
    return serial;
}

int DatePart(QStringView interval, double serial, int firstDayOfWeek, int firstWeekOfYear)
{
    const QString name = interval.toString().toLower();
    const int firstDay = resolvedFirstDay(firstDayOfWeek);
    int firstWeek = firstWeekOfYear;
    if (firstWeek == UseSystemWeekOfYear)
        firstWeek = FirstJanuary;
    if (firstWeek < FirstJanuary || firstWeek > FirstFullWeek)
        throw Error(Error::InvalidCall);
    const Moment moment = checkedMoment(serial);
    const DateTimeParts parts = SplitDateSerial(serial);
    if (name == u"yyyy")
        return parts.year;
    if (name == u"q")
        return (parts.month - 1) / 3 + 1;
    if (name == u"m")
        return parts.month;
    if (name == u"y")
        return int(moment.dayNumber - dayOfDate(QDate(parts.year, 1, 1))) + 1;
    if (name == u"d")
        return parts.day;
    if (name == u"w")
        return weekdayFrom(moment.dayNumber, firstDay);
    if (name == u"ww")
        return weekOfYear(moment.dayNumber, parts.year, firstDay, firstWeek);
    if (name == u"h")
        return parts.hour;
    if (name == u"n")
        return parts.minute;
    if (name == u"s")
        return parts.second;
    throw Error(Error::InvalidCall);
}

} // namespace Runtime
