#pragma once

#include "LvGeoArc.h"

/**
 * A latitude in decimal degrees, north positive.
 *
 * Holds any number; isInValidRange() tells whether it is one between the poles. Arithmetic neither wraps nor
 * clamps. Comparisons and validity as in LvGeoArc. Plain value, reentrant.
 */
class LVGEOLOCATION_EXPORT LvLatitude : public LvGeoArc
{
public:
    // NOLINTNEXTLINE(google-explicit-constructor) an angle is a number
    LvLatitude(double degrees = invalidDegrees) noexcept
        : LvGeoArc(degrees)
    {
    }

    explicit LvLatitude(const LvGeoArc& arc) noexcept
        : LvGeoArc(arc)
    {
    }

    LvLatitude(const LvLatitude& other) noexcept = default;
    LvLatitude(LvLatitude&& other) noexcept = default;
    LvLatitude& operator=(const LvLatitude& other) noexcept = default;
    LvLatitude& operator=(LvLatitude&& other) noexcept = default;
    ~LvLatitude() override = default; // inline like that of LvGeoArc

    /// The translated letter "S" below the equator, else "N".
    [[nodiscard]] QString directionIndicator() const override;

    [[nodiscard]] static LvLatitude fromRadians(double radians)
    {
        return LvLatitude(LvGeoArc::fromRadians(radians));
    }

    [[nodiscard]] static LvLatitude fromVariant(const QVariant& variant)
    {
        return LvLatitude(LvGeoArc::fromVariant(variant));
    }

    [[nodiscard]] static LvLatitude fromString(const QString& text)
    {
        return LvLatitude(LvGeoArc::fromString(text));
    }

    /// Reads "N53.14", "S33.8688" or a plain number such as "-12.5". The letter is case-sensitive, the range
    /// is not checked. Unreadable text gives 720.0.
    [[nodiscard]] static LvLatitude parse(const QString& text);

    /// Brings degrees beyond ±90 back by half turns: 100 gives -80, not 80; it is a shift and no reflection
    /// at the pole.
    [[nodiscard]] static LvLatitude safeLatitude(double degrees);

    /// Exact, without tolerance.
    [[nodiscard]] bool isNorthOf(const LvLatitude& other) const { return *this > other; }

    /// Exact, without tolerance.
    [[nodiscard]] bool isSouthOf(const LvLatitude& other) const { return *this < other; }

    /// The equator belongs to it.
    [[nodiscard]] bool isInNorthernHemisphere() const { return !isInSouthernHemisphere(); }

    /// The equator does not belong to it.
    [[nodiscard]] bool isInSouthernHemisphere() const { return decimalDegrees() < 0.0; }

    /// Within ±90 degrees, both ends included with the tolerance of the comparisons.
    [[nodiscard]] bool isInValidRange() const;

    /// Clamped to ±90 degrees.
    [[nodiscard]] LvLatitude bounded() const;

    /// Moves a latitude at or beyond a pole (with the tolerance of the comparisons) to 0.01 degrees before
    /// it, for projections that cannot take a pole. Others stay as they are.
    [[nodiscard]] LvLatitude catchOutOfBound() const;

    [[nodiscard]] LvLatitude absDistance(const LvGeoArc& other) const
    {
        return LvLatitude(LvGeoArc::absDistance(other));
    }

    using LvGeoArc::toString;

    /// For people "53° 8′ 24″ Nord", else "N53.14000000", which parse() reads. Null when the angle is not
    /// isValid().
    [[nodiscard]] QString toString(bool humanReadable) const;

    LvLatitude& operator+=(const LvLatitude& other)
    {
        LvGeoArc::operator+=(other);
        return *this;
    }

    friend LvLatitude operator+(const LvLatitude& a, const LvLatitude& b)
    {
        return {a.decimalDegrees() + b.decimalDegrees()};
    }

    friend LvLatitude operator-(const LvLatitude& a, const LvLatitude& b)
    {
        return {a.decimalDegrees() - b.decimalDegrees()};
    }

    friend LvLatitude operator*(const LvLatitude& a, double factor) { return {a.decimalDegrees() * factor}; }

    /// A divisor of exactly 0.0 gives 720.0.
    friend LvLatitude operator/(const LvLatitude& a, double divisor) { return {a.dividedBy(divisor)}; }
};

Q_DECLARE_TYPEINFO(LvLatitude, Q_RELOCATABLE_TYPE);

/// Writes toString(false) and the degree sign. The longitude writes no degree sign; both are kept as they are
/// because logs are compared.
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvLatitude& latitude);
