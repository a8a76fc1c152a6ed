#pragma once

#include <cstdint>

namespace Ormsey {

// The scale of one graph axis: Intervals equal intervals of Step / Factor data units each,
// NegativeIntervals of them below zero, drawn over a given length of pixels.
struct GraphScale
{
    double PixelsPerUnit = 0;
    double Factor = 1; // a power of ten: data value x Factor = scaled value
    std::int16_t Intervals = 1;
    std::int32_t Step = 1; // in scaled units
    std::int16_t NegativeIntervals = 0;

    // The data value at interval boundary `index` (0 is the low end of the axis).
    double BoundaryValue(int index) const;
};

// Makes |value| a round scaled value between 10 and 100 (15, 40, 50, 80 ...) and sets `factor`
// to the power of ten that scales it. Zero is refused with Runtime::Error 5, as the logarithm
// refuses it.
void NormaliseValue(double& value, double& factor);

// How many intervals a round scaled value is split into: 10 for 20, 50 and 100; 8 for 40
// and 80; 6 for 30 and 60; 7 for 70; 9 for 90; 5 otherwise.
int NumberOfIntervals(double value);

// The scale of an axis of `length` pixels showing minimum..maximum. With automatic scaling
// the range is first stretched to include zero, and whole-number data get a top of at least
// 10. A range that is zero at both ends is drawn as 0..1.
GraphScale CalculateScale(
    double minimum, double maximum, bool autoScale, bool hasNonIntegerData, double length);

} // namespace Ormsey
