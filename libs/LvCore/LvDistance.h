#pragma once

#include "LvDistanceUnit.h"
#include "lvcore_export.h"

#include <QMetaType>
#include <QString>

#include <compare>

/**
 * A length as a real number without a unit of its own: the width of a line in pixels, pixels per kilometre.
 *
 * What the number counts is known to its user only; describe() takes the unit for the text. All comparisons
 * are exact. A double converts to it, so that lengths read like numbers.
 */
class LVCORE_EXPORT LvDistance
{
public:
    constexpr LvDistance() = default;

    // NOLINTNEXTLINE(google-explicit-constructor) a length is written as a plain number
    constexpr LvDistance(double value)
        : myValue(value)
    {
    }

    /// Whether the length is exactly 0.
    [[nodiscard]] constexpr bool isNull() const { return myValue == 0.0; }

    [[nodiscard]] constexpr double value() const { return myValue; }

    constexpr void setValue(double value) { myValue = value; }

    constexpr LvDistance operator-() const { return {-myValue}; }

    constexpr LvDistance& operator+=(const LvDistance& other)
    {
        myValue += other.myValue;
        return *this;
    }

    constexpr LvDistance& operator-=(const LvDistance& other)
    {
        myValue -= other.myValue;
        return *this;
    }

    constexpr LvDistance& operator*=(double factor)
    {
        myValue *= factor;
        return *this;
    }

    constexpr LvDistance& operator/=(double divisor)
    {
        myValue /= divisor;
        return *this;
    }

    friend constexpr LvDistance operator+(const LvDistance& left, const LvDistance& right)
    {
        return {left.myValue + right.myValue};
    }

    friend constexpr LvDistance operator-(const LvDistance& left, const LvDistance& right)
    {
        return {left.myValue - right.myValue};
    }

    friend constexpr LvDistance operator*(const LvDistance& distance, double factor)
    {
        return {distance.myValue * factor};
    }

    friend constexpr LvDistance operator*(double factor, const LvDistance& distance)
    {
        return {factor * distance.myValue};
    }

    friend constexpr LvDistance operator/(const LvDistance& distance, double divisor)
    {
        return {distance.myValue / divisor};
    }

    /// The ratio of two lengths; as with doubles, that to a length of 0 is infinite or not a number.
    friend constexpr double operator/(const LvDistance& left, const LvDistance& right)
    {
        return left.myValue / right.myValue;
    }

    friend constexpr bool operator==(const LvDistance& left, const LvDistance& right) = default;
    // NOLINTNEXTLINE(modernize-use-nullptr) finds the 0 in what the compiler makes of it
    friend constexpr auto operator<=>(const LvDistance& left, const LvDistance& right) = default;

    /// The number with the given number of decimals and, on request, a blank and the sign of the unit: "10.0
    /// px".
    [[nodiscard]] QString describe(LvDistanceUnit unit, int precision, bool withUnit) const;

private:
    double myValue = 0.0;
};

Q_DECLARE_TYPEINFO(LvDistance, Q_RELOCATABLE_TYPE);
