#include "platform/runtime/DecimalDigits.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace Runtime {

DecimalDigits DecimalDigits::fromDouble(double value, int significantDigits)
{
    DecimalDigits result;
    result.negative = std::signbit(value) && value != 0.0;
    if (value == 0.0 || !std::isfinite(value))
        return result;
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*e", significantDigits - 1, std::fabs(value));
    // buffer is "d.ddddde+XX"
    QString digits;
    const char* cursor = buffer;
    for (; *cursor && *cursor != 'e'; ++cursor) {
        if (*cursor >= '0' && *cursor <= '9')
            digits.append(QLatin1Char(*cursor));
    }
    const int exponent = *cursor == 'e' ? std::atoi(cursor + 1) : 0;
    while (digits.endsWith(QLatin1Char('0')))
        digits.chop(1);
    result.digits = digits;
    result.pointPosition = exponent + 1;
    return result;
}

DecimalDigits DecimalDigits::roundedToFraction(int fractionDigits, Halves halves) const
{
    const qsizetype keep = qsizetype(pointPosition) + fractionDigits;
    if (keep >= digits.size())
        return *this;
    DecimalDigits result;
    result.negative = negative;
    if (keep < 0)
        return result;
    bool roundUp = digits.at(keep) >= QLatin1Char('5');
    // Digits carry no trailing zeros, so a lone 5 at the end is an exact half.
    if (halves == Halves::ToEven && digits.at(keep) == QLatin1Char('5')
        && keep + 1 == digits.size()) {
        const int previous = keep > 0 ? digits.at(keep - 1).unicode() - u'0' : 0;
        roundUp = previous % 2 == 1;
    }
    QString kept = digits.left(keep);
    int point = pointPosition;
    if (roundUp) {
        qsizetype index = kept.size() - 1;
        while (index >= 0 && kept.at(index) == QLatin1Char('9')) {
            kept[index] = QLatin1Char('0');
            --index;
        }
        if (index < 0) {
            kept.prepend(QLatin1Char('1'));
            ++point;
        } else {
            kept[index] = QChar(kept.at(index).unicode() + 1);
        }
    }
    while (kept.endsWith(QLatin1Char('0')))
        kept.chop(1);
    if (kept.isEmpty())
        return result;
    result.digits = kept;
    result.pointPosition = point;
    return result;
}

QString DecimalDigits::integerDigits() const
{
    if (pointPosition <= 0 || digits.isEmpty())
        return {};
    QString result = digits.left(pointPosition);
    if (result.size() < pointPosition)
        result.append(QString(pointPosition - result.size(), QLatin1Char('0')));
    return result;
}

QString DecimalDigits::fractionDigits(int count) const
{
    QString result;
    result.reserve(count);
    for (int index = 0; index < count; ++index) {
        const qsizetype position = qsizetype(pointPosition) + index;
        if (position >= 0 && position < digits.size())
            result.append(digits.at(position));
        else
            result.append(QLatin1Char('0'));
    }
    return result;
}

double DecimalDigits::toDouble() const
{
    if (digits.isEmpty())
        return 0.0;
    const QString text = u"0."_s + digits + u'e' + QString::number(pointPosition);
    const double magnitude = text.toDouble();
    return negative ? -magnitude : magnitude;
}

} // namespace Runtime
