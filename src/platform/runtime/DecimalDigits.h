#pragma once

#include <QString>

namespace Runtime {

// A real number as the classic runtime saw it when turning it into text: at most 15
// significant decimal digits. value = 0.digits × 10^pointPosition, so 123.45 has digits
// "12345" and pointPosition 3, and 0.0012 has digits "12" and pointPosition -2. Digits
// carry no leading or trailing zeros; zero has no digits at all.
struct DecimalDigits
{
    QString digits;
    int pointPosition = 0;
    bool negative = false;

    bool isZero() const { return digits.isEmpty(); }

    // Reading through 15 significant digits first is what makes 1.005 show as 1.01 with two
    // decimals: the text is rounded, not the binary value below it.
    static DecimalDigits fromDouble(double value, int significantDigits = 15);

    enum class Halves { AwayFromZero, ToEven };

    // Rounded to `fractionDigits` places after the point.
    DecimalDigits roundedToFraction(int fractionDigits, Halves halves = Halves::AwayFromZero) const;

    // The double nearest to the digits.
    double toDouble() const;

    // The digits before the point ("0" padded as needed; empty for a value below 1) and the
    // first `count` digits after it (padded with zeros).
    QString integerDigits() const;
    QString fractionDigits(int count) const;
};

} // namespace Runtime
