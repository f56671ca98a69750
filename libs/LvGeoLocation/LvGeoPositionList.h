#pragma once

#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"
#include "LvLatitudeList.h"
#include "LvLongitudeList.h"
#include "lvgeolocation_export.h"

#include <QList>
#include <QPainterPath>

#include <initializer_list>

/**
 * An ordered list of positions, as a track or an area has them.
 *
 * Implicitly shared like the list it is; reentrant.
 */
class LVGEOLOCATION_EXPORT LvGeoPositionList : public QList<LvGeoPosition>
{
public:
    LvGeoPositionList();
    LvGeoPositionList(std::initializer_list<LvGeoPosition> elements);
    // NOLINTNEXTLINE(google-explicit-constructor) the same elements
    LvGeoPositionList(const QList<LvGeoPosition>& elements);
    // NOLINTNEXTLINE(google-explicit-constructor) the same elements
    LvGeoPositionList(QList<LvGeoPosition>&& elements) noexcept;
    LvGeoPositionList(const LvGeoPositionList& other);
    LvGeoPositionList(LvGeoPositionList&& other) noexcept;
    LvGeoPositionList& operator=(const LvGeoPositionList& other);
    LvGeoPositionList& operator=(LvGeoPositionList&& other) noexcept;
    virtual ~LvGeoPositionList();

    /// The component-wise mean in raw degrees: positions on both sides of the 180° meridian average to a
    /// longitude near 0. The invalid default position for an empty list.
    [[nodiscard]] LvGeoPosition average() const;

    /// The area of all valid positions, expanded to one after the other. The default one when there are none.
    [[nodiscard]] LvGeoPositionRect boundingBox() const;

    /// The centre of boundingBox().
    [[nodiscard]] LvGeoPosition center() const;

    /// The latitude of every position, the invalid ones included.
    [[nodiscard]] LvLatitudeList latitudes() const;

    /// The longitude of every position, the invalid ones included.
    [[nodiscard]] LvLongitudeList longitudes() const;

    /// Lines from position to position in degrees, x = longitude and y = latitude.
    [[nodiscard]] QPainterPath toPainterPath() const;

    /// The positions that lie no farther from average() than factor times their distance from center(), in
    /// list order; inverted, exactly the others, which are the stray ones. A list with fewer than
    /// minimumCount positions comes back whole in either case.
    [[nodiscard]] LvGeoPositionList filterStrayPositions(double factor, bool inverted,
                                                         int minimumCount) const;
};
