#pragma once

#include "lvgeolocation_export.h"

#include <QDebug>
#include <QString>
#include <QTypeInfo>

#include <cmath>

class QUrlQuery;
class QVariant;

/**
 * An angle on the globe in decimal degrees, north and east positive, south and west negative.
 *
 * There is no separate "valid" flag: 720.0 means "no angle". It is what a default-constructed angle,
 * unreadable text, a null variant and a division by zero give, and it fails isValid().
 *
 * The comparisons ==, != , <= and >= take angles closer than 1e-6 degrees for equal, while < and > compare
 * the raw values. So of two nearly equal angles all of ==, <=, >= and one of < and > may hold. That is
 * intended: equality forgives rounding, sorting does not.
 *
 * Plain value without shared state; reentrant.
 */
class LVGEOLOCATION_EXPORT LvGeoArc
{
public:
    /// "No angle".
    static constexpr double invalidDegrees = 720.0;

    /// Two angles closer than this are equal.
    static constexpr double equalityToleranceDegrees = 1e-6;

    // NOLINTNEXTLINE(google-explicit-constructor) an angle is a number
    LvGeoArc(double degrees = invalidDegrees) noexcept
        : myDegrees(degrees)
    {
    }

    LvGeoArc(const LvGeoArc& other) noexcept = default;
    LvGeoArc(LvGeoArc&& other) noexcept = default;
    LvGeoArc& operator=(const LvGeoArc& other) noexcept = default;
    LvGeoArc& operator=(LvGeoArc&& other) noexcept = default;
    // Inline on purpose: angles are made and dropped by the million. directionIndicator() keeps the vtable in
    // one place.
    virtual ~LvGeoArc() = default;

    /// The letter of the hemisphere; empty for an angle without an axis.
    [[nodiscard]] virtual QString directionIndicator() const;

    /// The angle of so many radians.
    [[nodiscard]] static LvGeoArc fromRadians(double radians);

    /// The number in the variant; 720.0 when the variant is null, 0 when it holds no number.
    [[nodiscard]] static LvGeoArc fromVariant(const QVariant& variant);

    /// Reads "degree,minute,second" with an optional hemisphere letter, such as "53,8,24 N". Degree, minute
    /// and second signs and blanks are skipped. Fewer than three parts give 720.0, an unreadable part counts
    /// as 0.
    ///
    /// The hemisphere is looked for in the whole text and in either case: an "s" or "w" makes the angle
    /// negative, an "n" or "e" makes it positive again, without any of them the parts keep their own signs.
    /// Hence "Süd" and "Ost" are negative and "West" is positive.
    [[nodiscard]] static LvGeoArc fromString(const QString& text);

    /// Exactly 0, without tolerance.
    [[nodiscard]] bool isNull() const { return myDegrees == 0.0; }

    /// Within ±360 degrees, both ends included, without tolerance.
    [[nodiscard]] bool isValid() const { return -360.0 <= myDegrees && myDegrees <= 360.0; }

    void setDecimalDegrees(double degrees) { myDegrees = degrees; }

    [[nodiscard]] double decimalDegrees() const { return myDegrees; }

    [[nodiscard]] double degreeF() const { return myDegrees; }

    /// Adds up the three parts whatever their signs: a southern or western angle takes three negative ones.
    void setDegree(int degree, int minute, double second);

    /// Whole degrees, truncated toward zero and limited to the range of an int.
    [[nodiscard]] int degree() const;

    /// Whole minutes beyond degree(), -59 to 59 with the sign of the angle.
    [[nodiscard]] int minute() const;

    /// Seconds beyond degree() and minute(), with the sign of the angle.
    [[nodiscard]] double secondF() const;

    /// Minutes beyond degree() with their fraction, never negative.
    [[nodiscard]] double minuteF() const;

    [[nodiscard]] double radians() const { return myDegrees * radiansPerDegree; }

    /// The absolute difference, without wrapping.
    [[nodiscard]] LvGeoArc absDistance(const LvGeoArc& other) const
    {
        return {std::abs(myDegrees - other.myDegrees)};
    }

    /// Decimal degrees with 16 digits after the point, "720.0000000000000000" for no angle.
    [[nodiscard]] QString toString() const;

    /// The angle for people, by the format "d" (decimal degrees), "dm" (degrees and decimal minutes), or any
    /// other text (degrees, minutes and decimal seconds), each without sign and followed by
    /// directionIndicator(). The precision is the number of digits after the point. An invalid angle is
    /// written like any other.
    [[nodiscard]] QString humanReadable(const QString& format, int precision) const;

    /// Degrees, minutes and seconds without sign as rationals, the way EXIF stores positions: "53/1 8/1
    /// 2400000/100000". Degrees and parts of seconds are limited to the ranges of their integers, and what is
    /// not a number counts as 0.
    [[nodiscard]] QString toExifRational() const;

    /// A variant that holds the decimal degrees.
    [[nodiscard]] QVariant toVariant() const;

    /// Adds the angle with 16 digits after the point as query item.
    void writeTo(QUrlQuery& query, const QString& key) const;

    LvGeoArc& operator+=(const LvGeoArc& other)
    {
        myDegrees += other.myDegrees;
        return *this;
    }

    friend bool operator==(const LvGeoArc& a, const LvGeoArc& b) { return a.equals(b); }

    friend bool operator!=(const LvGeoArc& a, const LvGeoArc& b) { return !a.equals(b); }

    friend bool operator<(const LvGeoArc& a, const LvGeoArc& b) { return a.myDegrees < b.myDegrees; }

    friend bool operator>(const LvGeoArc& a, const LvGeoArc& b) { return a.myDegrees > b.myDegrees; }

    friend bool operator<=(const LvGeoArc& a, const LvGeoArc& b)
    {
        return a.myDegrees < b.myDegrees || a.equals(b);
    }

    friend bool operator>=(const LvGeoArc& a, const LvGeoArc& b)
    {
        return a.myDegrees > b.myDegrees || a.equals(b);
    }

    friend LvGeoArc operator+(const LvGeoArc& a, const LvGeoArc& b) { return {a.myDegrees + b.myDegrees}; }

    friend LvGeoArc operator-(const LvGeoArc& a, const LvGeoArc& b) { return {a.myDegrees - b.myDegrees}; }

    friend LvGeoArc operator*(const LvGeoArc& a, double factor) { return {a.myDegrees * factor}; }

    /// A divisor of exactly 0.0 gives 720.0.
    friend LvGeoArc operator/(const LvGeoArc& a, double divisor) { return {a.dividedBy(divisor)}; }

protected:
    [[nodiscard]] double dividedBy(double divisor) const
    {
        return divisor == 0.0 ? invalidDegrees : myDegrees / divisor;
    }

private:
    static constexpr double radiansPerDegree = 0.017453292519943295;

    [[nodiscard]] bool equals(const LvGeoArc& other) const
    {
        return std::abs(myDegrees - other.myDegrees) < equalityToleranceDegrees;
    }

    double myDegrees;
};

Q_DECLARE_TYPEINFO(LvGeoArc, Q_RELOCATABLE_TYPE);

/// Writes toString().
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvGeoArc& arc);
