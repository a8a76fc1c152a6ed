#include "platform/runtime/Conversions.h"

#include "platform/runtime/DecimalDigits.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/HostLocale.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <string>

using namespace Qt::Literals::StringLiterals;

namespace Runtime {

namespace {

constexpr quint64 LargestRadixValue = 0xFFFFFFFFull;
// The currency type keeps 64-bit integers of ten-thousandths.
constexpr double LargestCurrency = 922337203685477.5807;

bool isValBlank(QChar character)
{
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r';
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

int digitValue(QChar character, int radix)
{
    int value = -1;
    const char16_t code = character.unicode();
    if (code >= u'0' && code <= u'9')
        value = code - u'0';
    else if (code >= u'a' && code <= u'f')
        value = code - u'a' + 10;
    else if (code >= u'A' && code <= u'F')
        value = code - u'A' + 10;
    return value < radix ? value : -1;
}

int radixOf(QChar marker)
{
    if (marker == u'H' || marker == u'h')
        return 16;
    if (marker == u'O' || marker == u'o')
        return 8;
    return 0;
}

// Hexadecimal and octal texts keep the integer type their size gives them, so "&HFFFF" is
// the 16-bit -1 and "&HFFFF&" (a long) is 65535.
double radixNumber(quint64 value, bool forceLong)
{
    if (!forceLong && value <= 0xFFFFu)
        return static_cast<qint16>(static_cast<quint16>(value));
    return static_cast<qint32>(static_cast<quint32>(value));
}

struct RadixReading
{
    qsizetype end = 0; // index after the digits (and the "&" suffix)
    quint64 value = 0;
    bool anyDigit = false;
    bool overflow = false;
    bool forceLong = false;
};

// Reads the digits after "&H"/"&O"; `start` indexes the "&".
RadixReading readRadix(QStringView text, qsizetype start, int radix)
{
    RadixReading reading;
    qsizetype index = start + 2;
    for (; index < text.size(); ++index) {
        const int digit = digitValue(text.at(index), radix);
        if (digit < 0)
            break;
        reading.anyDigit = true;
        if (!reading.overflow) {
            reading.value = reading.value * radix + digit;
            reading.overflow = reading.value > LargestRadixValue;
        }
    }
    if (index < text.size() && text.at(index) == u'&') {
        reading.forceLong = true;
        ++index;
    }
    reading.end = index;
    return reading;
}

// Turns collected ASCII mantissa and exponent digits into a double without the C
// library's locale; `integerDigits` counts the mantissa digits before the point and tells
// overflow from underflow when the value is out of range.
std::optional<double> decimalFromAscii(const std::string& number, long long magnitude)
{
    double value = 0.0;
    const auto [end, error] = std::from_chars(
        number.data(), number.data() + number.size(), value, std::chars_format::general);
    (void)end;
    if (error == std::errc::result_out_of_range) {
        if (magnitude > 0)
            return std::nullopt;
        return 0.0;
    }
    return value;
}

struct NumberReading
{
    std::string ascii; // mantissa and exponent in the C form, without sign
    bool negative = false;
    bool anyDigit = false;
    long long magnitude = 0; // decimal exponent of the leading digit, roughly
};

// Appends the exponent "e±digits" when `text` at `index` holds one; returns the index
// after it, or `index` when there is none.
qsizetype readExponent(QStringView text, qsizetype index, NumberReading& reading)
{
    if (index >= text.size())
        return index;
    const QChar marker = text.at(index);
    if (marker != u'E' && marker != u'e' && marker != u'D' && marker != u'd')
        return index;
    qsizetype cursor = index + 1;
    std::string exponent = "e";
    if (cursor < text.size() && (text.at(cursor) == u'+' || text.at(cursor) == u'-')) {
        exponent += static_cast<char>(text.at(cursor).unicode());
        ++cursor;
    }
    long long exponentValue = 0;
    const qsizetype digitsStart = cursor;
    while (cursor < text.size() && isDigit(text.at(cursor))) {
        exponent += static_cast<char>(text.at(cursor).unicode());
        if (exponentValue < 100000)
            exponentValue = exponentValue * 10 + (text.at(cursor).unicode() - u'0');
        ++cursor;
    }
    if (cursor == digitsStart)
        return index;
    reading.ascii += exponent;
    reading.magnitude += exponent[1] == '-' ? -exponentValue : exponentValue;
    return cursor;
}

// Mantissa digits with an optional point; `group`, when not empty, may stand between
// digits of the whole part. Returns the index after the mantissa.
qsizetype readMantissa(
    QStringView text, qsizetype index, QStringView point, QStringView group, NumberReading& reading)
{
    bool leadingZeros = true;
    long long wholeDigits = 0;
    long long fractionZeros = 0;
    while (index < text.size()) {
        const QChar character = text.at(index);
        if (isDigit(character)) {
            reading.ascii += static_cast<char>(character.unicode());
            reading.anyDigit = true;
            if (character != u'0')
                leadingZeros = false;
            if (!leadingZeros)
                ++wholeDigits;
            ++index;
        } else if (!group.isEmpty() && reading.anyDigit && text.sliced(index).startsWith(group)
            && index + group.size() < text.size() && isDigit(text.at(index + group.size()))) {
            index += group.size();
        } else {
            break;
        }
    }
    if (index < text.size() && text.sliced(index).startsWith(point)) {
        reading.ascii += '.';
        index += point.size();
        while (index < text.size() && isDigit(text.at(index))) {
            const QChar character = text.at(index);
            reading.ascii += static_cast<char>(character.unicode());
            reading.anyDigit = true;
            if (leadingZeros && character == u'0')
                ++fractionZeros;
            else
                leadingZeros = false;
            ++index;
        }
    }
    reading.magnitude = leadingZeros ? 0 : (wholeDigits > 0 ? wholeDigits : -fractionZeros);
    return index;
}

enum class ParseOutcome { Number, NotNumber, TooLarge };

struct ParsedNumber
{
    ParseOutcome outcome = ParseOutcome::NotNumber;
    double value = 0.0;
};

bool isTextBlank(QChar character)
{
    return character == u' ' || character == u'\t' || character == QChar(0xA0);
}

// The host-locale reading behind IsNumeric, CDbl and CCur: the whole text must be one
// number, with the decorations listed in Conversions.h.
ParsedNumber parseLocaleNumber(QStringView text)
{
    ParsedNumber parsed;
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isTextBlank(text.at(begin)))
        ++begin;
    while (end > begin && isTextBlank(text.at(end - 1)))
        --end;
    text = text.sliced(begin, end - begin);
    if (text.isEmpty())
        return parsed;

    if (text.size() >= 2 && text.at(0) == u'&' && radixOf(text.at(1)) != 0) {
        const RadixReading reading = readRadix(text, 0, radixOf(text.at(1)));
        if (!reading.anyDigit || reading.end != text.size())
            return parsed;
        if (reading.overflow) {
            parsed.outcome = ParseOutcome::TooLarge;
            return parsed;
        }
        parsed.outcome = ParseOutcome::Number;
        parsed.value = radixNumber(reading.value, reading.forceLong);
        return parsed;
    }

    const QLocale locale = HostLocale();
    const QString point = locale.decimalPoint();
    const QString group = locale.groupSeparator();
    const QString currency = locale.currencySymbol(QLocale::CurrencySymbol);

    QChar sign;
    bool bracket = false;
    bool sawCurrency = false;
    qsizetype index = 0;
    auto skipBlanks = [&] {
        while (index < text.size() && isTextBlank(text.at(index)))
            ++index;
    };
    while (true) {
        skipBlanks();
        if (index >= text.size())
            return parsed;
        const QChar character = text.at(index);
        if ((character == u'+' || character == u'-') && sign.isNull() && !bracket) {
            sign = character;
            ++index;
        } else if (character == u'(' && sign.isNull() && !bracket) {
            bracket = true;
            ++index;
        } else if (!sawCurrency && !currency.isEmpty() && text.sliced(index).startsWith(currency)) {
            sawCurrency = true;
            index += currency.size();
        } else {
            break;
        }
    }

    NumberReading reading;
    index = readMantissa(text, index, point, group, reading);
    if (!reading.anyDigit)
        return parsed;
    const qsizetype afterMantissa = index;
    index = readExponent(text, index, reading);
    if (index == afterMantissa && index < text.size()) {
        const QChar marker = text.at(index);
        if (marker == u'E' || marker == u'e' || marker == u'D' || marker == u'd')
            return parsed; // an exponent marker without digits
    }

    bool closed = false;
    while (index < text.size()) {
        skipBlanks();
        if (index >= text.size())
            break;
        const QChar character = text.at(index);
        if ((character == u'+' || character == u'-') && sign.isNull() && !bracket) {
            sign = character;
            ++index;
        } else if (character == u')' && bracket && !closed) {
            closed = true;
            ++index;
        } else if (!sawCurrency && !currency.isEmpty() && text.sliced(index).startsWith(currency)) {
            sawCurrency = true;
            index += currency.size();
        } else {
            return parsed;
        }
    }
    if (bracket != closed)
        return parsed;

    const std::optional<double> value = decimalFromAscii(reading.ascii, reading.magnitude);
    if (!value) {
        parsed.outcome = ParseOutcome::TooLarge;
        return parsed;
    }
    parsed.outcome = ParseOutcome::Number;
    parsed.value = (sign == u'-' || bracket) ? -*value : *value;
    return parsed;
}

double roundHalfEven(double value)
{
    const double below = std::floor(value);
    const double difference = value - below;
    if (difference > 0.5)
        return below + 1.0;
    if (difference < 0.5)
        return below;
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

QString exponentText(int exponent)
{
    QString digits = QString::number(std::abs(exponent));
    if (digits.size() < 2)
        digits.prepend(u'0');
    return (exponent < 0 ? u"E-"_s : u"E+"_s) + digits;
}

// The unsigned body shared by Str and GeneralNumber.
QString plainNumberText(const DecimalDigits& number, const QString& point, bool zeroBeforePoint)
{
    if (number.isZero())
        return u"0"_s;
    const QString& digits = number.digits;
    const int position = number.pointPosition;
    if (position > 15 || position < -3) {
        QString mantissa = digits.left(1);
        if (digits.size() > 1)
            mantissa += point + digits.sliced(1);
        return mantissa + exponentText(position - 1);
    }
    if (position >= digits.size())
        return digits + QString(position - digits.size(), u'0');
    if (position > 0)
        return digits.left(position) + point + digits.sliced(position);
    return (zeroBeforePoint ? u"0"_s : QString()) + point + QString(-position, u'0') + digits;
}

QString nonFiniteText(double value)
{
    if (std::isnan(value))
        return u"NaN"_s;
    return value < 0 ? u"-Infinity"_s : u"Infinity"_s;
}

// Rounds on the 15-digit decimal text, so "1.00005" becomes 1.0000 (an exact half, to even)
// although its binary value lies a little above the half.
double checkedCurrency(double value)
{
    if (!std::isfinite(value) || std::fabs(value) > LargestCurrency)
        throw Error(Error::Overflow);
    return DecimalDigits::fromDouble(value)
        .roundedToFraction(4, DecimalDigits::Halves::ToEven)
        .toDouble();
}

} // namespace

double Val(QStringView text)
{
    QString compact;
    compact.reserve(text.size());
    for (const QChar character : text) {
        if (!isValBlank(character))
            compact.append(character);
    }
    if (compact.startsWith(u'&')) {
        const int radix = compact.size() >= 2 ? radixOf(compact.at(1)) : 0;
        if (radix == 0)
            return 0.0;
        const RadixReading reading = readRadix(compact, 0, radix);
        if (!reading.anyDigit)
            return 0.0;
        if (reading.overflow)
            throw Error(Error::Overflow);
        return radixNumber(reading.value, reading.forceLong);
    }

    NumberReading reading;
    qsizetype index = 0;
    if (!compact.isEmpty() && (compact.at(0) == u'+' || compact.at(0) == u'-')) {
        reading.negative = compact.at(0) == u'-';
        ++index;
    }
    index = readMantissa(compact, index, u".", {}, reading);
    if (!reading.anyDigit)
        return 0.0;
    readExponent(compact, index, reading);
    const std::optional<double> value = decimalFromAscii(reading.ascii, reading.magnitude);
    if (!value)
        throw Error(Error::Overflow);
    return reading.negative ? -*value : *value;
}

QString Str(double value)
{
    if (!std::isfinite(value))
        return nonFiniteText(value);
    const DecimalDigits number = DecimalDigits::fromDouble(value);
    return (number.negative ? u"-"_s : u" "_s) + plainNumberText(number, u"."_s, false);
}

QString GeneralNumber(double value)
{
    if (!std::isfinite(value))
        return nonFiniteText(value);
    // Whole numbers below 10^15 have no point and no exponent, and fit 15 digits exactly:
    // counts and whole-number fields, the commonest values by far.
    if (std::fabs(value) < 1e15 && std::trunc(value) == value)
        return QString::number(static_cast<qint64>(value));
    const DecimalDigits number = DecimalDigits::fromDouble(value);
    return (number.negative ? u"-"_s : QString())
        + plainNumberText(number, HostLocale().decimalPoint(), true);
}

bool IsNumeric(QStringView text)
{
    return parseLocaleNumber(text).outcome == ParseOutcome::Number;
}

bool IsNumeric(const QString& text)
{
    return IsNumeric(QStringView(text));
}

bool IsNumeric(const Variant& value)
{
    switch (value.type()) {
    case VariantType::Empty:
    case VariantType::Boolean:
    case VariantType::Long:
    case VariantType::Double:
    case VariantType::Currency:
        return true;
    case VariantType::Text:
        return IsNumeric(value.text());
    case VariantType::Null:
    case VariantType::Date:
    case VariantType::Binary:
        return false;
    }
    return false;
}

double CDbl(QStringView text)
{
    const ParsedNumber parsed = parseLocaleNumber(text);
    if (parsed.outcome == ParseOutcome::TooLarge)
        throw Error(Error::Overflow);
    if (parsed.outcome == ParseOutcome::NotNumber)
        throw Error(Error::TypeMismatch);
    return parsed.value;
}

double CDbl(const QString& text)
{
    return CDbl(QStringView(text));
}

double CDbl(const Variant& value)
{
    switch (value.type()) {
    case VariantType::Empty:
        return 0.0;
    case VariantType::Null:
        throw Error(Error::InvalidUseOfNull);
    case VariantType::Boolean:
    case VariantType::Long:
    case VariantType::Double:
    case VariantType::Currency:
    case VariantType::Date:
        return value.number();
    case VariantType::Text:
        return CDbl(value.text());
    case VariantType::Binary:
        break;
    }
    throw Error(Error::TypeMismatch);
}

int CInt(double value)
{
    const double rounded = roundHalfEven(value);
    if (!(rounded >= -32768.0 && rounded <= 32767.0))
        throw Error(Error::Overflow);
    return static_cast<int>(rounded);
}

int CInt(const Variant& value)
{
    return CInt(CDbl(value));
}

int CLng(double value)
{
    const double rounded = roundHalfEven(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0))
        throw Error(Error::Overflow);
    return static_cast<int>(rounded);
}

int CLng(const Variant& value)
{
    return CLng(CDbl(value));
}

double CCur(double value)
{
    return checkedCurrency(value);
}

double CCur(QStringView text)
{
    return checkedCurrency(CDbl(text));
}

double CCur(const QString& text)
{
    return CCur(QStringView(text));
}

double CCur(const Variant& value)
{
    return checkedCurrency(CDbl(value));
}

double Int(double value)
{
    return std::floor(value);
}

double Fix(double value)
{
    return std::trunc(value);
}

double Round(double value, int digits)
{
    if (digits < 0)
        throw Error(Error::InvalidCall);
    if (!std::isfinite(value) || digits > 22)
        return value;
    const double scale = std::pow(10.0, digits);
    const double scaled = value * scale;
    // From 2^52 on a double has no fraction left, so there is nothing to round.
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 4503599627370496.0)
        return value;
    return roundHalfEven(scaled) / scale;
}

QString CStr(const Variant& value)
{
    return Format(value);
}

} // namespace Runtime
