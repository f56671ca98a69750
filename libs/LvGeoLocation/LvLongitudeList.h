#pragma once

#include "LvLongitude.h"
#include "LvLongitudeRange.h"
#include "lvgeolocation_export.h"

#include <QList>

#include <initializer_list>

/**
 * An ordered list of longitudes, which may lie on both sides of the 180° meridian.
 *
 * Implicitly shared like the list it is; reentrant.
 */
class LVGEOLOCATION_EXPORT LvLongitudeList : public QList<LvLongitude>
{
public:
    LvLongitudeList();
    LvLongitudeList(std::initializer_list<LvLongitude> elements);
    // NOLINTNEXTLINE(google-explicit-constructor) the same elements
    LvLongitudeList(const QList<LvLongitude>& elements);
    // NOLINTNEXTLINE(google-explicit-constructor) the same elements
    LvLongitudeList(QList<LvLongitude>&& elements) noexcept;
    LvLongitudeList(const LvLongitudeList& other);
    LvLongitudeList(LvLongitudeList&& other) noexcept;
    LvLongitudeList& operator=(const LvLongitudeList& other);
    LvLongitudeList& operator=(LvLongitudeList&& other) noexcept;
    virtual ~LvLongitudeList();

    /// The mean in raw degrees; 720.0 for an empty list.
    [[nodiscard]] LvLongitude average() const;

    /// The longitudes of the western hemisphere, in list order.
    [[nodiscard]] LvLongitudeList onlyWesternHemisphere() const;

    /// The longitudes of the eastern hemisphere, in list order; 0° and ±180° belong to it.
    [[nodiscard]] LvLongitudeList onlyEasternHemisphere() const;

    /// The smallest raw value, the first one among equals; 720.0 for an empty list.
    [[nodiscard]] LvLongitude westernBound() const;

    /// The largest raw value, the first one among equals; 720.0 for an empty list.
    [[nodiscard]] LvLongitude easternBound() const;

    /// From westernBound() to easternBound(); never crosses the 180° meridian.
    [[nodiscard]] LvLongitudeRange naiveRange() const;

    /// The range that covers all longitudes the short way. It crosses the 180° meridian, with the western
    /// bound as the greater one, when the averages of both hemispheres are more than 180 degrees apart.
    [[nodiscard]] LvRange<LvLongitude> effectiveRange() const;
};
