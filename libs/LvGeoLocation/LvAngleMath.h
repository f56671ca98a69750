#pragma once

#include <cmath>
#include <limits>

/// Number helpers that the coordinate sources share; not installed.
namespace LvAngleMath
{

/// Truncates toward zero to a 32-bit integer. Defined for every double: values beyond the range of an int are
/// limited to it, and what is not a number gives 0.
[[nodiscard]] inline int truncatedToInt(double value)
{
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value)) {
        return 0;
    }
    if (value <= static_cast<double>(Limits::min())) {
        return Limits::min();
    }
    if (value >= static_cast<double>(Limits::max())) {
        return Limits::max();
    }
    return static_cast<int>(value);
}

/// Brings a value beyond ±limit back by whole turns of 2 * limit: from above into (-limit, limit], from below
/// into [-limit, limit). Values within ±limit, infinities and what is not a number stay as they are.
///
/// The same to the bit as adding or subtracting one turn after the other (each such step is exact), but it
/// takes the same time for every number.
[[nodiscard]] inline double wrapped(double value, double limit)
{
    const bool above = value > limit;
    if ((!above && !(value < -limit)) || std::isinf(value)) {
        return value;
    }
    // The sum turns the negative zero of a whole number of turns into the positive one that subtracting
    // gives.
    const double rest = std::remainder(value, 2.0 * limit) + 0.0;
    if (std::abs(rest) == limit) {
        return above ? limit : -limit;
    }
    return rest;
}

} // namespace LvAngleMath
