#include "graph/GraphScale.h"

#include "frame/Helpers.h"

#include <cmath>

namespace Ormsey {

namespace {

// Halves go to the even neighbour, as every real-to-integer conversion of the program does.
long long RoundHalfEven(double value)
{
    return static_cast<long long>(std::nearbyint(value));
}

} // namespace

double GraphScale::BoundaryValue(int index) const
{
    return static_cast<double>(index - NegativeIntervals) * Step / Factor;
}

void NormaliseValue(double& value, double& factor)
{
    value = std::abs(value);
    // The program's base-10 logarithm divides natural logarithms, which puts exact powers of
    // ten such as 1,000, 10^6 and 10^9 a hair below their exponent: their axes get a factor
    // ten times larger and ten intervals, where an exact log10 would give five.
    factor = std::pow(10.0, 1.0 - std::floor(Frame::Log10Of(value)));
    const double scaled = value * factor;
    const long long rounded = RoundHalfEven(scaled - 1);
    if (scaled < 45)
        value = static_cast<double>(5 * (rounded / 5 + 1));
    else
        value = static_cast<double>(10 * (rounded / 10 + 1));
}

int NumberOfIntervals(double value)
{
    const long long whole = std::llround(value);
    switch (whole) {
    case 20:
    case 50:
    case 100:
        return 10;
    case 40:
    case 80:
        return 8;
    case 30:
    case 60:
        return 6;
    case 70:
        return 7;
    case 90:
        return 9;
    default:
        return 5;
    }
}

GraphScale CalculateScale(
    double minimum, double maximum, bool autoScale, bool hasNonIntegerData, double length)
{
    if (autoScale) {
        if (minimum > 0)
            minimum = 0;
        if (maximum < 0)
            maximum = 0;
        else if (maximum < 10 && !hasNonIntegerData)
            maximum = 10;
    }
    if (minimum == 0 && maximum == 0)
        maximum = 1; // nothing to scale from; an axis of 0..1 still reads sensibly

    GraphScale scale;
    const bool positiveSideLarger = std::abs(minimum) < std::abs(maximum);
    double roundValue = positiveSideLarger ? maximum : minimum;
    NormaliseValue(roundValue, scale.Factor);
    const int count = NumberOfIntervals(roundValue);
    scale.Step = static_cast<std::int32_t>(RoundHalfEven(roundValue / count));
    // The intervals needed on the smaller side, counted in steps of the larger side.
    const double otherSide = positiveSideLarger ? minimum : maximum;
    int otherCount = 0;
    if (positiveSideLarger ? otherSide < 0 : otherSide > 0)
        otherCount = static_cast<int>(
            std::floor(std::abs(otherSide * scale.Factor * count / roundValue) + 0.9999));
    const int intervals = count + otherCount;
    scale.Intervals = static_cast<std::int16_t>(intervals);
    scale.PixelsPerUnit = static_cast<double>(count) * length * scale.Factor
        / (static_cast<double>(intervals) * roundValue);
    scale.NegativeIntervals = static_cast<std::int16_t>(positiveSideLarger ? otherCount : count);
    return scale;
}

} // namespace Ormsey
