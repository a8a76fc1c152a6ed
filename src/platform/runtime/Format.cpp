#include "platform/runtime/Format.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/DecimalDigits.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/LocaleNames.h"

#include <QDate>
#include <cmath>
#include <optional>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace Runtime {

namespace {

// ---- Sections ------------------------------------------------------------------------

// Splits at ";" outside quoted text and escapes.
std::vector<QString> splitSections(QStringView format)
{
    std::vector<QString> sections(1);
    for (qsizetype index = 0; index < format.size(); ++index) {
        const QChar character = format.at(index);
        if (character == u'"') {
            const qsizetype close = format.indexOf(u'"', index + 1);
            const qsizetype end = close < 0 ? format.size() : close + 1;
            sections.back() += format.sliced(index, end - index).toString();
            index = end - 1;
        } else if (character == u'\\' && index + 1 < format.size()) {
            sections.back() += format.sliced(index, 2).toString();
            ++index;
        } else if (character == u';') {
            sections.emplace_back();
        } else {
            sections.back() += character;
        }
    }
    return sections;
}

bool startsWithAt(QStringView text, qsizetype index, QStringView word)
{
    return text.sliced(index).startsWith(word, Qt::CaseInsensitive);
}

bool isDayHalfMarker(QStringView text, qsizetype index)
{
    return startsWithAt(text, index, u"AM/PM") || startsWithAt(text, index, u"A/P")
        || startsWithAt(text, index, u"AMPM");
}

// A format is a date format when a date letter comes before any digit placeholder.
bool isDateFormat(QStringView section)
{
    for (qsizetype index = 0; index < section.size(); ++index) {
        const QChar character = section.at(index);
        if (character == u'"') {
            const qsizetype close = section.indexOf(u'"', index + 1);
            if (close < 0)
                return false;
            index = close;
            continue;
        }
        if (character == u'\\') {
            ++index;
            continue;
        }
        if (character == u'0' || character == u'#')
            return false;
        const char16_t lower = character.toLower().unicode();
        switch (lower) {
        case u'd':
        case u'm':
        case u'y':
        case u'h':
        case u'n':
        case u's':
        case u'w':
        case u'q':
        case u'c':
            return true;
        case u't':
            if (startsWithAt(section, index, u"ttttt"))
                return true;
            break;
        case u'a':
            if (isDayHalfMarker(section, index))
                return true;
            break;
        default:
            break;
        }
    }
    return false;
}

// ---- Numbers ---------------------------------------------------------------------------

struct NumberElement
{
    enum class Kind { Literal, IntegerDigit, Point, FractionDigit, Exponent, ExponentDigit };
    Kind kind = Kind::Literal;
    QString text; // literal text, or the exponent letter
    QChar placeholder; // '0' or '#'
    bool exponentPlus = false;
};

struct NumberSection
{
    std::vector<NumberElement> elements;
    bool grouping = false;
    int thousandsScale = 0;
    int percentCount = 0;
    int integerPlaceholders = 0;
    int minimumIntegerDigits = 0;
    int fractionPlaceholders = 0;
    int minimumExponentDigits = 0;
    bool hasExponent = false;
    bool hasPlaceholders = false;
};

using Kind = NumberElement::Kind;

NumberSection parseNumberSection(QStringView text)
{
    NumberSection section;
    enum class State { Integer, Fraction, Exponent } state = State::Integer;
    const auto literal = [&section](const QString& value) {
        NumberElement element;
        element.text = value;
        section.elements.push_back(element);
    };
    bool seenZero = false;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar character = text.at(index);
        if (character == u'"') {
            const qsizetype close = text.indexOf(u'"', index + 1);
            const qsizetype end = close < 0 ? text.size() : close;
            literal(text.sliced(index + 1, end - index - 1).toString());
            index = end;
        } else if (character == u'\\') {
            if (index + 1 < text.size())
                literal(text.at(++index));
        } else if (character == u'0' || character == u'#') {
            NumberElement element;
            element.placeholder = character;
            section.hasPlaceholders = true;
            if (state == State::Integer) {
                element.kind = Kind::IntegerDigit;
                ++section.integerPlaceholders;
                seenZero = seenZero || character == u'0';
                if (seenZero)
                    ++section.minimumIntegerDigits;
            } else if (state == State::Fraction) {
                element.kind = Kind::FractionDigit;
                ++section.fractionPlaceholders;
            } else {
                element.kind = Kind::ExponentDigit;
                if (character == u'0')
                    ++section.minimumExponentDigits;
            }
            section.elements.push_back(element);
        } else if (character == u'.' && state == State::Integer) {
            NumberElement element;
            element.kind = Kind::Point;
            section.elements.push_back(element);
            state = State::Fraction;
        } else if (character == u',') {
            qsizetype end = index;
            while (end < text.size() && text.at(end) == u',')
                ++end;
            if (state == State::Integer && section.integerPlaceholders > 0) {
                const bool digitFollows
                    = end < text.size() && (text.at(end) == u'0' || text.at(end) == u'#');
                if (digitFollows)
                    section.grouping = true;
                else
                    section.thousandsScale += int(end - index);
            } else if (state == State::Integer) {
                literal(text.sliced(index, end - index).toString());
            }
            index = end - 1;
        } else if ((character == u'E' || character == u'e') && state != State::Exponent
            && section.hasPlaceholders && index + 1 < text.size()
            && (text.at(index + 1) == u'+' || text.at(index + 1) == u'-')) {
            NumberElement element;
            element.kind = Kind::Exponent;
            element.text = character;
            element.exponentPlus = text.at(index + 1) == u'+';
            section.elements.push_back(element);
            section.hasExponent = true;
            state = State::Exponent;
            ++index;
        } else if (character == u'%') {
            ++section.percentCount;
            literal(u"%"_s);
        } else {
            literal(character);
        }
    }
    return section;
}

QString groupedDigits(const QString& digits, const QString& separator)
{
    QString result;
    const qsizetype count = digits.size();
    for (qsizetype index = 0; index < count; ++index) {
        if (index > 0 && (count - index) % 3 == 0)
            result += separator;
        result += digits.at(index);
    }
    return result;
}

struct NumberText
{
    QString text;
    bool allZero = true;
};

// Renders the magnitude of `value` with one parsed section.
NumberText renderNumber(const NumberSection& section, double value, const QLocale& locale)
{
    double magnitude = std::fabs(value);
    for (int count = 0; count < section.percentCount; ++count)
        magnitude *= 100.0;
    for (int count = 0; count < section.thousandsScale; ++count)
        magnitude /= 1000.0;

    DecimalDigits digits = DecimalDigits::fromDouble(magnitude);
    int exponent = 0;
    if (section.hasExponent && !digits.isZero()) {
        const int integerWidth = section.integerPlaceholders;
        exponent = digits.pointPosition - integerWidth;
        DecimalDigits shifted = digits;
        shifted.pointPosition = integerWidth;
        shifted = shifted.roundedToFraction(section.fractionPlaceholders);
        if (shifted.pointPosition > integerWidth) {
            ++exponent;
            shifted.pointPosition = integerWidth;
        }
        digits = shifted;
    } else {
        digits = digits.roundedToFraction(section.fractionPlaceholders);
    }

    NumberText result;
    result.allZero = digits.isZero();
    QString integer = digits.integerDigits();
    if (integer.size() < section.minimumIntegerDigits)
        integer.prepend(QString(section.minimumIntegerDigits - integer.size(), u'0'));
    if (section.grouping)
        integer = groupedDigits(integer, locale.groupSeparator());

    QString fraction = digits.fractionDigits(section.fractionPlaceholders);
    std::vector<QChar> fractionPlaceholders;
    std::vector<qsizetype> integerSlots;
    for (const NumberElement& element : section.elements) {
        if (element.kind == Kind::FractionDigit)
            fractionPlaceholders.push_back(element.placeholder);
    }
    qsizetype shownFraction = fraction.size();
    while (shownFraction > 0 && fractionPlaceholders[size_t(shownFraction - 1)] == u'#'
        && fraction.at(shownFraction - 1) == u'0')
        --shownFraction;

    QString exponentDigits = QString::number(std::abs(exponent));
    if (exponentDigits.size() < section.minimumExponentDigits)
        exponentDigits.prepend(
            QString(section.minimumExponentDigits - exponentDigits.size(), u'0'));

    // Integer digits fill the placeholders from the right; the leftmost placeholder takes
    // whatever is left. Grouped digits go as a whole to the leftmost placeholder.
    std::vector<QString> integerParts(size_t(section.integerPlaceholders));
    if (!integerParts.empty()) {
        if (section.grouping) {
            integerParts.front() = integer;
        } else {
            qsizetype remaining = integer.size();
            for (size_t slot = integerParts.size(); slot-- > 1 && remaining > 0;) {
                integerParts[slot] = integer.at(remaining - 1);
                --remaining;
            }
            integerParts.front() = integer.left(remaining);
        }
    }

    QString& text = result.text;
    size_t integerIndex = 0;
    qsizetype fractionIndex = 0;
    bool integerShown = section.integerPlaceholders > 0;
    bool exponentShown = false;
    const auto showIntegerIfPending = [&] {
        if (!integerShown && section.hasPlaceholders) {
            text += integer;
            integerShown = true;
        }
    };
    for (const NumberElement& element : section.elements) {
        switch (element.kind) {
        case Kind::Literal:
            text += element.text;
            break;
        case Kind::IntegerDigit:
            text += integerParts[integerIndex++];
            break;
        case Kind::Point:
            showIntegerIfPending();
            if (shownFraction > 0)
                text += locale.decimalPoint();
            break;
        case Kind::FractionDigit:
            showIntegerIfPending();
            if (fractionIndex < shownFraction)
                text += fraction.at(fractionIndex);
            ++fractionIndex;
            break;
        case Kind::Exponent:
            showIntegerIfPending();
            text += element.text;
            if (exponent < 0)
                text += u'-';
            else if (element.exponentPlus)
                text += u'+';
            break;
        case Kind::ExponentDigit:
            if (!exponentShown)
                text += exponentDigits;
            exponentShown = true;
            break;
        }
    }
    return result;
}

QString formatNumber(double value, QStringView format)
{
    const QLocale locale = HostLocale();
    const std::vector<QString> sections = splitSections(format);
    const auto available = [&sections](size_t index) {
        return index < sections.size() && !sections[index].isEmpty();
    };
    size_t chosen = 0;
    bool ownSign = false;
    if (value < 0 && available(1)) {
        chosen = 1;
        ownSign = true;
    } else if (value == 0 && available(2)) {
        chosen = 2;
    }
    const NumberText number = renderNumber(parseNumberSection(sections[chosen]), value, locale);
    if (value < 0 && !ownSign && !number.allZero)
        return u'-' + number.text;
    return number.text;
}

QString formatNull(QStringView format)
{
    // Only a fourth section says what Null shows; most formats have one section.
    if (!format.contains(u';'))
        return {};
    const std::vector<QString> sections = splitSections(format);
    if (sections.size() < 4 || isDateFormat(sections[0]))
        return {};
    return renderNumber(parseNumberSection(sections[3]), 0.0, HostLocale()).text;
}

// ---- Dates -----------------------------------------------------------------------------

struct DateElement
{
    enum class Kind {
        Literal,
        Day, // count 1..4
        ShortDate,
        LongDate,
        Month, // count 1..4; 1 and 2 may turn into minutes
        Minute, // count 1..2
        DayOfYear,
        Year, // count 2 or 4
        Hour,
        Second,
        Weekday,
        Week,
        Quarter,
        GeneralDate,
        LongTime,
        DayHalf,
        DateSeparator,
        TimeSeparator,
    };
    Kind kind = Kind::Literal;
    int count = 1;
    QString text; // literal text; for DayHalf the morning text
    QString afternoon; // for DayHalf
};

using DateKind = DateElement::Kind;

qsizetype runLength(QStringView text, qsizetype index, QChar letter)
{
    qsizetype end = index;
    while (end < text.size() && text.at(end).toLower() == letter)
        ++end;
    return end - index;
}

void addLiteral(std::vector<DateElement>& elements, const QString& text)
{
    if (!elements.empty() && elements.back().kind == DateKind::Literal)
        elements.back().text += text;
    else
        elements.push_back({ DateKind::Literal, 1, text, {} });
}

// Minutes: m or mm right after an hour or right before a second.
void resolveMinutes(std::vector<DateElement>& elements)
{
    const auto isFieldKind = [](DateKind kind) {
        return kind != DateKind::Literal && kind != DateKind::DateSeparator
            && kind != DateKind::TimeSeparator;
    };
    for (size_t index = 0; index < elements.size(); ++index) {
        DateElement& element = elements[index];
        if (element.kind != DateKind::Month || element.count > 2)
            continue;
        std::optional<DateKind> previous;
        for (size_t back = index; back-- > 0;) {
            if (isFieldKind(elements[back].kind)) {
                previous = elements[back].kind;
                break;
            }
        }
        std::optional<DateKind> next;
        for (size_t forward = index + 1; forward < elements.size(); ++forward) {
            if (isFieldKind(elements[forward].kind)) {
                next = elements[forward].kind;
                break;
            }
        }
        if (previous == DateKind::Hour || next == DateKind::Second)
            element.kind = DateKind::Minute;
    }
}

std::vector<DateElement> parseDateSection(QStringView text, const QLocale& locale)
{
    std::vector<DateElement> elements;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar character = text.at(index);
        const QChar lower = character.toLower();
        const auto add = [&elements](DateKind kind, int count) {
            elements.push_back({ kind, count, {}, {} });
        };
        if (character == u'"') {
            const qsizetype close = text.indexOf(u'"', index + 1);
            const qsizetype end = close < 0 ? text.size() : close;
            addLiteral(elements, text.sliced(index + 1, end - index - 1).toString());
            index = end;
            continue;
        }
        if (character == u'\\') {
            if (index + 1 < text.size())
                addLiteral(elements, text.at(++index));
            continue;
        }
        if (character == u'/') {
            add(DateKind::DateSeparator, 1);
            continue;
        }
        if (character == u':') {
            add(DateKind::TimeSeparator, 1);
            continue;
        }
        if (lower == u'a' && isDayHalfMarker(text, index)) {
            DateElement element { DateKind::DayHalf, 1, {}, {} };
            if (startsWithAt(text, index, u"AMPM")) {
                element.text = locale.amText();
                element.afternoon = locale.pmText();
                index += 3;
            } else if (startsWithAt(text, index, u"AM/PM")) {
                element.text = text.sliced(index, 2).toString();
                element.afternoon = text.sliced(index + 3, 2).toString();
                index += 4;
            } else {
                element.text = text.sliced(index, 1).toString();
                element.afternoon = text.sliced(index + 2, 1).toString();
                index += 2;
            }
            elements.push_back(element);
            continue;
        }
        // A run longer than a field's widest form is that form, then the rest of the run
        // read again (dddddddd = long date, then dd; yyy = yy, then y).
        const int run = int(runLength(text, index, lower));
        int count = run;
        switch (lower.unicode()) {
        case u'd':
            count = std::min(run, 6);
            break;
        case u'm':
            count = std::min(run, 4);
            break;
        case u'y':
            count = run >= 4 ? 4 : (run >= 2 ? 2 : 1);
            break;
        case u'h':
        case u'n':
        case u's':
        case u'w':
            count = std::min(run, 2);
            break;
        case u'q':
        case u'c':
            count = 1;
            break;
        case u't':
            count = std::min(run, 5);
            break;
        default:
            break;
        }
        bool consumed = true;
        switch (lower.unicode()) {
        case u'd':
            if (count >= 6)
                add(DateKind::LongDate, 1);
            else if (count == 5)
                add(DateKind::ShortDate, 1);
            else
                add(DateKind::Day, count);
            break;
        case u'm':
            add(DateKind::Month, count);
            break;
        case u'y':
            if (count == 1)
                add(DateKind::DayOfYear, 1);
            else
                add(DateKind::Year, count);
            break;
        case u'h':
            add(DateKind::Hour, count);
            break;
        case u'n':
            add(DateKind::Minute, count);
            break;
        case u's':
            add(DateKind::Second, count);
            break;
        case u'w':
            add(count >= 2 ? DateKind::Week : DateKind::Weekday, 1);
            break;
        case u'q':
            add(DateKind::Quarter, 1);
            break;
        case u'c':
            add(DateKind::GeneralDate, 1);
            break;
        case u't':
            consumed = count == 5;
            if (consumed)
                add(DateKind::LongTime, 1);
            break;
        default:
            consumed = false;
            break;
        }
        if (consumed) {
            index += count - 1;
        } else {
            addLiteral(elements, character);
        }
    }
    resolveMinutes(elements);
    return elements;
}

// The locale's own date and time forms, read from Qt's pattern letters.
std::vector<DateElement> parseQtPattern(QStringView pattern, const QLocale& locale)
{
    std::vector<DateElement> elements;
    for (qsizetype index = 0; index < pattern.size(); ++index) {
        const QChar character = pattern.at(index);
        if (character == u'\'') {
            if (index + 1 < pattern.size() && pattern.at(index + 1) == u'\'') {
                addLiteral(elements, u"'"_s);
                ++index;
                continue;
            }
            const qsizetype close = pattern.indexOf(u'\'', index + 1);
            const qsizetype end = close < 0 ? pattern.size() : close;
            addLiteral(elements, pattern.sliced(index + 1, end - index - 1).toString());
            index = end;
            continue;
        }
        qsizetype end = index;
        while (end < pattern.size() && pattern.at(end) == character)
            ++end;
        const int count = int(end - index);
        const auto add = [&elements](DateKind kind, int fieldCount) {
            elements.push_back({ kind, fieldCount, {}, {} });
        };
        switch (character.unicode()) {
        case u'd':
            add(DateKind::Day, std::min(count, 4));
            break;
        case u'M':
            add(DateKind::Month, std::min(count, 4));
            break;
        case u'y':
            add(DateKind::Year, count >= 3 ? 4 : 2);
            break;
        case u'H':
        case u'h':
            add(DateKind::Hour, std::min(count, 2));
            break;
        case u'm':
            add(DateKind::Minute, std::min(count, 2));
            break;
        case u's':
            add(DateKind::Second, std::min(count, 2));
            break;
        case u'A':
        case u'a':
        case u'P':
        case u'p': {
            const bool upper = character == u'A' || character == u'P';
            DateElement element { DateKind::DayHalf, 1, locale.amText(), locale.pmText() };
            if (upper) {
                element.text = element.text.toUpper();
                element.afternoon = element.afternoon.toUpper();
            } else {
                element.text = element.text.toLower();
                element.afternoon = element.afternoon.toLower();
            }
            elements.push_back(element);
            // "AP" is one marker.
            if (end < pattern.size() && pattern.at(end).toLower() == u'p')
                ++end;
            break;
        }
        case u't':
        case u'z':
            break; // time zones and milliseconds are never shown
        default:
            if (character.isLetter())
                break;
            addLiteral(elements, pattern.sliced(index, count).toString());
            break;
        }
        index = end - 1;
    }
    // Dropping a time zone leaves the blank before it.
    while (!elements.empty() && elements.back().kind == DateKind::Literal
        && elements.back().text.trimmed().isEmpty())
        elements.pop_back();
    if (!elements.empty() && elements.back().kind == DateKind::Literal) {
        QString& text = elements.back().text;
        while (text.endsWith(u' '))
            text.chop(1);
    }
    return elements;
}

QChar separatorIn(const QString& pattern, QChar fallback)
{
    for (const QChar character : pattern) {
        if (!character.isLetter() && character != u'\'' && !character.isSpace())
            return character;
    }
    return fallback;
}

QString twoDigits(int value)
{
    return QString::number(value).rightJustified(2, u'0');
}

QString renderDate(const std::vector<DateElement>& elements, double serial, const QLocale& locale);

QString renderShortDate(double serial, const QLocale& locale)
{
    return renderDate(
        parseQtPattern(locale.dateFormat(QLocale::ShortFormat), locale), serial, locale);
}

QString renderLongDate(double serial, const QLocale& locale)
{
    return renderDate(
        parseQtPattern(locale.dateFormat(QLocale::LongFormat), locale), serial, locale);
}

QString renderLongTime(double serial, const QLocale& locale)
{
    return renderDate(
        parseQtPattern(locale.timeFormat(QLocale::LongFormat), locale), serial, locale);
}

QString renderGeneralDate(double serial, const QLocale& locale)
{
    const double time = TimeOfSerial(serial);
    const double day = DatePartOfSerial(serial);
    if (time == 0.0)
        return renderShortDate(serial, locale);
    if (day == 0.0)
        return renderLongTime(serial, locale);
    return renderShortDate(serial, locale) + u' ' + renderLongTime(serial, locale);
}

QString renderDate(const std::vector<DateElement>& elements, double serial, const QLocale& locale)
{
    const DateTimeParts parts = SplitDateSerial(serial);
    bool twelveHour = false;
    for (const DateElement& element : elements)
        twelveHour = twelveHour || element.kind == DateKind::DayHalf;
    QString text;
    text.reserve(32); // the longest usual date and time, so it is not grown piece by piece
    for (const DateElement& element : elements) {
        switch (element.kind) {
        case DateKind::Literal:
            text += element.text;
            break;
        case DateKind::Day:
            if (element.count == 1)
                text += QString::number(parts.day);
            else if (element.count == 2)
                text += twoDigits(parts.day);
            else
                text += LocaleDayName(locale, Weekday(serial, Sunday), element.count == 3);
            break;
        case DateKind::ShortDate:
            text += renderShortDate(serial, locale);
            break;
        case DateKind::LongDate:
            text += renderLongDate(serial, locale);
            break;
        case DateKind::Month:
            if (element.count == 1)
                text += QString::number(parts.month);
            else if (element.count == 2)
                text += twoDigits(parts.month);
            else
                text += LocaleMonthName(locale, parts.month, element.count == 3, false);
            break;
        case DateKind::Minute:
            text += element.count == 1 ? QString::number(parts.minute) : twoDigits(parts.minute);
            break;
        case DateKind::DayOfYear:
            text += QString::number(DatePart(u"y", serial));
            break;
        case DateKind::Year:
            text += element.count == 2 ? twoDigits(parts.year % 100) : QString::number(parts.year);
            break;
        case DateKind::Hour: {
            int hour = parts.hour;
            if (twelveHour)
                hour = hour % 12 == 0 ? 12 : hour % 12;
            text += element.count == 1 ? QString::number(hour) : twoDigits(hour);
            break;
        }
        case DateKind::Second:
            text += element.count == 1 ? QString::number(parts.second) : twoDigits(parts.second);
            break;
        case DateKind::Weekday:
            text += QString::number(Weekday(serial, Sunday));
            break;
        case DateKind::Week:
            text += QString::number(DatePart(u"ww", serial));
            break;
        case DateKind::Quarter:
            text += QString::number((parts.month - 1) / 3 + 1);
            break;
        case DateKind::GeneralDate:
            text += renderGeneralDate(serial, locale);
            break;
        case DateKind::LongTime:
            text += renderLongTime(serial, locale);
            break;
        case DateKind::DayHalf:
            text += parts.hour < 12 ? element.text : element.afternoon;
            break;
        case DateKind::DateSeparator:
            text += separatorIn(locale.dateFormat(QLocale::ShortFormat), u'/');
            break;
        case DateKind::TimeSeparator:
            text += separatorIn(locale.timeFormat(QLocale::ShortFormat), u':');
            break;
        }
    }
    return text;
}

// An export or a column of cards formats one date after another in the same format: the
// last format read is kept, for the locale it was read in. The elements are replaced only
// here, and rendering a date never formats through Format, so none is replaced in use.
const std::vector<DateElement>& dateSectionOf(const QString& section, const QLocale& locale)
{
    thread_local std::optional<std::pair<QString, QLocale>> lastFormat;
    thread_local std::vector<DateElement> lastElements;
    if (!lastFormat || lastFormat->first != section || lastFormat->second != locale) {
        lastFormat.reset();
        lastElements = parseDateSection(section, locale);
        lastFormat.emplace(section, locale);
    }
    return lastElements;
}

// ---- Named formats ---------------------------------------------------------------------

enum class Named {
    None,
    GeneralNumber,
    Currency,
    Fixed,
    Standard,
    Percent,
    Scientific,
    YesNo,
    TrueFalse,
    OnOff,
    GeneralDate,
    LongDate,
    MediumDate,
    ShortDate,
    LongTime,
    MediumTime,
    ShortTime,
};

Named namedFormat(QStringView format)
{
    static const std::pair<const char16_t*, Named> names[] = {
        { u"General Number", Named::GeneralNumber },
        { u"Currency", Named::Currency },
        { u"Fixed", Named::Fixed },
        { u"Standard", Named::Standard },
        { u"Percent", Named::Percent },
        { u"Scientific", Named::Scientific },
        { u"Yes/No", Named::YesNo },
        { u"True/False", Named::TrueFalse },
        { u"On/Off", Named::OnOff },
        { u"General Date", Named::GeneralDate },
        { u"Long Date", Named::LongDate },
        { u"Medium Date", Named::MediumDate },
        { u"Short Date", Named::ShortDate },
        { u"Long Time", Named::LongTime },
        { u"Medium Time", Named::MediumTime },
        { u"Short Time", Named::ShortTime },
    };
    for (const auto& [name, named] : names) {
        if (format.compare(QStringView(name), Qt::CaseInsensitive) == 0)
            return named;
    }
    return Named::None;
}

bool isDateNamed(Named named)
{
    return named >= Named::GeneralDate;
}

QString formatCurrency(double value)
{
    const QLocale locale = HostLocale();
    // The symbol's place and the number of places come from the locale's own currency
    // text for 1; negatives get a leading minus.
    const QString sample = locale.toCurrencyString(1.0);
    int places = 2;
    QString prefix = locale.currencySymbol(QLocale::CurrencySymbol);
    QString suffix;
    for (const int candidate : { 2, 0, 3 }) {
        const QString one = locale.toString(1.0, 'f', candidate);
        const qsizetype at = sample.indexOf(one);
        if (at >= 0) {
            places = candidate;
            prefix = sample.left(at);
            suffix = sample.sliced(at + one.size());
            break;
        }
    }
    QString pattern = u"#,##0"_s;
    if (places > 0)
        pattern += u'.' + QString(places, u'0');
    const NumberText number = renderNumber(parseNumberSection(pattern), std::fabs(value), locale);
    return (value < 0 && !number.allZero ? u"-"_s : QString()) + prefix + number.text + suffix;
}

QString formatNamedNumber(Named named, double value)
{
    switch (named) {
    case Named::GeneralNumber:
        return GeneralNumber(value);
    case Named::Currency:
        return formatCurrency(value);
    case Named::Fixed:
        return formatNumber(value, u"0.00");
    case Named::Standard:
        return formatNumber(value, u"#,##0.00");
    case Named::Percent:
        return formatNumber(value, u"0.00%");
    case Named::Scientific:
        return formatNumber(value, u"0.00E+00");
    case Named::YesNo:
        return value != 0 ? u"Yes"_s : u"No"_s;
    case Named::TrueFalse:
        return value != 0 ? u"True"_s : u"False"_s;
    case Named::OnOff:
        return value != 0 ? u"On"_s : u"Off"_s;
    default:
        return {};
    }
}

QString formatNamedDate(Named named, double serial)
{
    const QLocale locale = HostLocale();
    switch (named) {
    case Named::GeneralDate:
        return renderGeneralDate(serial, locale);
    case Named::LongDate:
        return renderLongDate(serial, locale);
    case Named::MediumDate:
        return renderDate(parseDateSection(u"dd-mmm-yy", locale), serial, locale);
    case Named::ShortDate:
        return renderShortDate(serial, locale);
    case Named::LongTime:
        return renderLongTime(serial, locale);
    case Named::MediumTime:
        return renderDate(parseDateSection(u"hh:nn AM/PM", locale), serial, locale);
    case Named::ShortTime:
        return renderDate(parseDateSection(u"hh:nn", locale), serial, locale);
    default:
        return {};
    }
}

// ---- Reading the value -----------------------------------------------------------------

std::optional<double> numberOf(const Variant& value)
{
    switch (value.type()) {
    case VariantType::Boolean:
    case VariantType::Long:
    case VariantType::Double:
    case VariantType::Currency:
    case VariantType::Date:
        return value.number();
    case VariantType::Text:
        if (IsNumeric(value.text()))
            return CDbl(value.text());
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<double> serialOf(const Variant& value)
{
    if (value.type() == VariantType::Text && IsDate(value.text()))
        return CDate(value.text());
    return numberOf(value);
}

QString unformatted(const Variant& value)
{
    switch (value.type()) {
    case VariantType::Empty:
    case VariantType::Null:
        return {};
    case VariantType::Boolean:
        return value.boolean() ? u"True"_s : u"False"_s;
    case VariantType::Long:
        return QString::number(value.whole());
    case VariantType::Double:
    case VariantType::Currency:
        return GeneralNumber(value.number());
    case VariantType::Date:
        if (!IsValidDateSerial(value.number()))
            return GeneralNumber(value.number());
        return renderGeneralDate(value.number(), HostLocale());
    case VariantType::Text:
        return value.text();
    case VariantType::Binary:
        return QString::fromUtf8(value.bytes());
    }
    return {};
}

} // namespace

QString Format(const Variant& value, QStringView format)
{
    if (value.isEmpty())
        return {};
    if (value.isNull())
        return formatNull(format);
    if (format.isEmpty())
        return unformatted(value);

    const Named named = namedFormat(format);
    const std::vector<QString> sections
        = named == Named::None ? splitSections(format) : std::vector<QString>();
    const bool dateFormat
        = named == Named::None ? isDateFormat(sections.front()) : isDateNamed(named);
    if (dateFormat) {
        const std::optional<double> serial = serialOf(value);
        if (!serial)
            return unformatted(value);
        if (!IsValidDateSerial(*serial))
            return GeneralNumber(*serial);
        if (named != Named::None)
            return formatNamedDate(named, *serial);
        const QLocale locale = HostLocale();
        return renderDate(dateSectionOf(sections.front(), locale), *serial, locale);
    }
    const std::optional<double> number = numberOf(value);
    if (!number)
        return unformatted(value);
    // Results of a division by zero and the like have no digits to place.
    if (!std::isfinite(*number))
        return GeneralNumber(*number);
    if (named != Named::None)
        return formatNamedNumber(named, *number);
    return formatNumber(*number, format);
}

} // namespace Runtime
