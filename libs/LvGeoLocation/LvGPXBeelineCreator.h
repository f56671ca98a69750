#pragma once

#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvLongitude.h"
#include "lvgeolocation_export.h"

#include <QList>
#include <QString>

/**
 * Turns two positions into a track along the great circle between them, so that a long connection bends on a
 * flat map the way a flight does.
 *
 * Points are inserted by halving until neighbours are less than 200 km apart. Plain value, reentrant.
 */
class LVGEOLOCATION_EXPORT LvGPXBeelineCreator
{
public:
    LvGPXBeelineCreator(const LvGeoPosition& from, const LvGeoPosition& to);
    LvGPXBeelineCreator(const LvGPXBeelineCreator& other);
    LvGPXBeelineCreator(LvGPXBeelineCreator&& other) noexcept;
    LvGPXBeelineCreator& operator=(const LvGPXBeelineCreator& other);
    LvGPXBeelineCreator& operator=(LvGPXBeelineCreator&& other) noexcept;
    virtual ~LvGPXBeelineCreator();

    /// Both ends with the points between them.
    [[nodiscard]] LvGeoPositionList createPoints() const;

    /// The points strictly between the ends, in order. None for ends closer than 200 km or on one meridian,
    /// for an end that is not valid, and for ends without a meridian between them.
    [[nodiscard]] LvGeoPositionList createIntermediatePoints() const;

    /// The position, not just the latitude, where the great circle through both ends crosses the meridian, to
    /// about 0.00015 degrees. Crossings beyond ±80 degrees of latitude are moved to there.
    /// The search halves the band of latitudes by comparing its two ends, nothing in between: for ends that
    /// lie almost on one meridian, and on the meridian 0 (where 0°/0° is no place), it may miss the crossing.
    [[nodiscard]] LvGeoPosition estimateOptimalLatitude(const LvLongitude& longitude) const;

    /// The longitude half-way between the ends on the shorter way round, also across the 180° meridian.
    [[nodiscard]] LvLongitude findLogicalCenterLongitude() const;

    /// A point for each position: no elevation, the current time, no description.
    [[nodiscard]] QList<LvGPXTrackPoint> positions2trackPoints(const LvGeoPositionList& positions) const;

    /// A track of one segment with createPoints() and the translated description "Fluglinie". Its shape is
    /// linestring: the bends are its points, nothing is left to a drawing rule for flights.
    [[nodiscard]] LvGPXTrack createBeeline(const QString& name) const;

private:
    LvGeoPosition myFrom;
    LvGeoPosition myTo;
};
