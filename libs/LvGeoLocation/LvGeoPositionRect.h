#pragma once

#include "LvGeoPosition.h"
#include "LvLatitudeRange.h"
#include "LvLongitudeRange.h"
#include "lvgeolocation_export.h"

#include <QDebug>
#include <QString>

class QUrlQuery;

/**
 * An area between two latitudes and two longitudes; it may cross the 180° meridian, see LvLongitudeRange.
 *
 * All bounds are 720.0 when default-constructed; the first position it expands to becomes all of them. Plain
 * value, reentrant.
 */
class LVGEOLOCATION_EXPORT LvGeoPositionRect
{
public:
    LvGeoPositionRect();
    LvGeoPositionRect(LvLatitudeRange latitudeRange, LvLongitudeRange longitudeRange);
    /// Takes the corners as they are; spawn() puts them into order.
    LvGeoPositionRect(const LvGeoPosition& southWest, const LvGeoPosition& northEast);
    LvGeoPositionRect(const LvGeoPositionRect& other);
    LvGeoPositionRect(LvGeoPositionRect&& other) noexcept;
    LvGeoPositionRect& operator=(const LvGeoPositionRect& other);
    LvGeoPositionRect& operator=(LvGeoPositionRect&& other) noexcept;
    virtual ~LvGeoPositionRect();

    /// The area between any two opposite corners, the shorter way round.
    [[nodiscard]] static LvGeoPositionRect spawn(const LvGeoPosition& a, const LvGeoPosition& b);

    /// The default area of a map: latitude 40 to 60, longitude -10 to 30.
    [[nodiscard]] static LvGeoPositionRect europeanUnion();

    /// Reads the four query items of the bounds; a missing or unreadable one is 720.0.
    [[nodiscard]] static LvGeoPositionRect parse(const QUrlQuery& query);

    /// Both ranges are valid.
    [[nodiscard]] bool isValid() const;

    /// All bounds are 0, within the tolerance of angles.
    [[nodiscard]] bool isNull() const;

    /// All bounds equal those of europeanUnion().
    [[nodiscard]] bool isDefault() const;

    /// The longer side is shorter than 1 degree.
    [[nodiscard]] bool isVerySmall() const;

    [[nodiscard]] bool contains(const LvGeoPosition& position) const;

    /// Whether all four bounds of the other area lie in this one.
    [[nodiscard]] bool contains(const LvGeoPositionRect& other) const;

    [[nodiscard]] LvLatitude north() const { return myLatitudeRange.north(); }

    [[nodiscard]] LvLatitude south() const { return myLatitudeRange.south(); }

    [[nodiscard]] LvLongitude east() const { return myLongitudeRange.east(); }

    [[nodiscard]] LvLongitude west() const { return myLongitudeRange.west(); }

    [[nodiscard]] LvGeoPosition northWest() const;
    [[nodiscard]] LvGeoPosition southEast() const;

    [[nodiscard]] LvLatitudeRange latitudeRange() const { return myLatitudeRange; }

    [[nodiscard]] LvLongitudeRange longitudeRange() const { return myLongitudeRange; }

    [[nodiscard]] LvGeoPosition center() const;

    /// The longer of height and width by the raw differences: a width across the 180° meridian counts the
    /// long way.
    [[nodiscard]] LvGeoArc maxExtension() const;

    /// Height times width in square degrees; negative for an area across the 180° meridian.
    [[nodiscard]] double estimatedSize() const;

    /// Does nothing for an invalid position.
    void expandTo(const LvGeoPosition& position);

    /// Expands to the bounds of the other area; does nothing when that is invalid.
    void expandTo(const LvGeoPositionRect& other);

    /// Moves all bounds outwards, clamped to ±90 and ±180 degrees.
    void blowUp(double degrees);

    /// A copy with all bounds moved outwards, see blowUp().
    [[nodiscard]] LvGeoPositionRect blownUp(double degrees) const;

    /// A copy, blown up by 1 degree when the area is very small.
    [[nodiscard]] LvGeoPositionRect toReasonableSize() const;

    /// A copy, blown up by so many percent of its longer side, or by 0.1 degrees when it is a point. 0
    /// percent and an invalid area give an unchanged copy.
    [[nodiscard]] LvGeoPositionRect withPadding(double percent) const;

    /// Both ranges in the forms of their toString(), with " ; " between.
    [[nodiscard]] QString toString(bool humanReadable) const;

    /// Adds the four query items of the bounds.
    void writeTo(QUrlQuery& query) const;

    /// A copy expanded to the other area.
    [[nodiscard]] LvGeoPositionRect operator+(const LvGeoPositionRect& other) const;

    [[nodiscard]] bool operator==(const LvGeoPositionRect& other) const;

    [[nodiscard]] bool operator!=(const LvGeoPositionRect& other) const { return !(*this == other); }

private:
    LvLatitudeRange myLatitudeRange;
    LvLongitudeRange myLongitudeRange;
};

Q_DECLARE_TYPEINFO(LvGeoPositionRect, Q_RELOCATABLE_TYPE);

/// Writes both ranges, each after its name.
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvGeoPositionRect& rect);
