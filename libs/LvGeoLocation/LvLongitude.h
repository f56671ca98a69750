#pragma once

#include "LvGeoArc.h"

/**
 * A longitude in decimal degrees, east positive.
 *
 * Holds any number; isInValidRange() tells whether it lies within ±180, and normalized() brings it there.
 * Arithmetic neither wraps nor clamps. East and west of another longitude are decided on the shorter way
 * round, across the 180° meridian where that is shorter. Comparisons and validity as in LvGeoArc. Plain
 * value, reentrant.
 */
class LVGEOLOCATION_EXPORT LvLongitude : public LvGeoArc
{
public:
    // NOLINTNEXTLINE(google-explicit-constructor) an angle is a number
    LvLongitude(double degrees = invalidDegrees) noexcept
        : LvGeoArc(degrees)
    {
    }

    explicit LvLongitude(const LvGeoArc& arc) noexcept
        : LvGeoArc(arc)
    {
    }

    LvLongitude(const LvLongitude& other) noexcept = default;
    LvLongitude(LvLongitude&& other) noexcept = default;
    LvLongitude& operator=(const LvLongitude& other) noexcept = default;
    LvLongitude& operator=(LvLongitude&& other) noexcept = default;
    ~LvLongitude() override = default; // inline like that of LvGeoArc

    /// The translated letter "W" in the western hemisphere, else "E".
    [[nodiscard]] QString directionIndicator() const override;

    [[nodiscard]] static LvLongitude fromRadians(double radians)
    {
        return LvLongitude(LvGeoArc::fromRadians(radians));
    }

    [[nodiscard]] static LvLongitude fromVariant(const QVariant& variant)
    {
        return LvLongitude(LvGeoArc::fromVariant(variant));
    }

    [[nodiscard]] static LvLongitude fromString(const QString& text)
    {
        return LvLongitude(LvGeoArc::fromString(text));
    }

    /// Reads "E8.8", "W74.006" or a plain number such as "-12.5". The letter is case-sensitive, the range is
    /// not checked. Unreadable text gives 720.0.
    [[nodiscard]] static LvLongitude parse(const QString& text);

    /// Brings degrees beyond ±180 back by whole turns, as normalized() does.
    [[nodiscard]] static LvLongitude safeLongitude(double degrees);

    /// Whether the way from the other longitude eastwards to this one is shorter than half a turn. False for
    /// equal longitudes and for two that are exactly 180 degrees apart.
    [[nodiscard]] bool isEastOf(const LvLongitude& other) const;

    /// The same for the way westwards.
    [[nodiscard]] bool isWestOf(const LvLongitude& other) const;

    /// 0° and ±180° belong to it.
    [[nodiscard]] bool isInEasternHemisphere() const { return !isInWesternHemisphere(); }

    /// Neither 0° nor ±180° belongs to it.
    [[nodiscard]] bool isInWesternHemisphere() const { return isShortWay(0.0 - decimalDegrees()); }

    /// Within ±180 degrees, both ends included with the tolerance of the comparisons.
    [[nodiscard]] bool isInValidRange() const;

    /// Clamped to ±180 degrees.
    [[nodiscard]] LvLongitude bounded() const;

    /// Brought back by whole turns to ±180 degrees; 180 and -180 both stay as they are.
    [[nodiscard]] LvLongitude normalized() const;

    [[nodiscard]] LvLongitude absDistance(const LvGeoArc& other) const
    {
        return LvLongitude(LvGeoArc::absDistance(other));
    }

    using LvGeoArc::toString;

    /// For people "8° 30′ 0″ Ost", else "E8.50000000", which parse() reads. Null when the angle is not
    /// isValid().
    [[nodiscard]] QString toString(bool humanReadable) const;

    LvLongitude& operator+=(const LvLongitude& other)
    {
        LvGeoArc::operator+=(other);
        return *this;
    }

    friend LvLongitude operator+(const LvLongitude& a, const LvLongitude& b)
    {
        return {a.decimalDegrees() + b.decimalDegrees()};
    }

    friend LvLongitude operator-(const LvLongitude& a, const LvLongitude& b)
    {
        return {a.decimalDegrees() - b.decimalDegrees()};
    }

    friend LvLongitude operator*(const LvLongitude& a, double factor)
    {
        return {a.decimalDegrees() * factor};
    }

    /// A divisor of exactly 0.0 gives 720.0.
    friend LvLongitude operator/(const LvLongitude& a, double divisor) { return {a.dividedBy(divisor)}; }

private:
    /// Whether turning by so many degrees is shorter than half a turn.
    [[nodiscard]] static bool isShortWay(double degrees)
    {
        constexpr double halfTurn = 180.0;
        const double way = degrees < 0.0 ? degrees + 2.0 * halfTurn : degrees;
        return 0.0 < way && way < halfTurn;
    }
};

Q_DECLARE_TYPEINFO(LvLongitude, Q_RELOCATABLE_TYPE);

/// Writes toString(false), without the degree sign that the latitude adds.
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvLongitude& longitude);
