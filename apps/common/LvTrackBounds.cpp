#include "LvTrackBounds.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPositionList.h"
#include "LvLatitudeRange.h"
#include "LvLongitude.h"
#include "LvLongitudeRange.h"

#include <QList>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

constexpr double fullTurn = 360.0;

/// What a connected line covers; east runs on beyond 180 where the line does.
struct Extent {
    double south = std::numeric_limits<double>::max();
    double north = std::numeric_limits<double>::lowest();
    double west = std::numeric_limits<double>::max();
    double east = std::numeric_limits<double>::lowest();

    [[nodiscard]] bool isValid() const { return south <= north; }
};

Extent extentOf(const LvGeoPositionList& positions)
{
    Extent extent;
    double previous = 0.0;
    for (const LvGeoPosition& position : positions) {
        if (!position.isValid()) {
            continue;
        }
        const double latitude = std::clamp(position.latitude().decimalDegrees(), -90.0, 90.0);
        double longitude = LvLongitude::safeLongitude(position.longitude().decimalDegrees()).decimalDegrees();
        if (extent.isValid()) {
            longitude += fullTurn * std::round((previous - longitude) / fullTurn); // the short way round
        }
        extent.south = std::min(extent.south, latitude);
        extent.north = std::max(extent.north, latitude);
        extent.west = std::min(extent.west, longitude);
        extent.east = std::max(extent.east, longitude);
        previous = longitude;
    }
    return extent;
}

/// The longitudes of all extents without the widest gap between them.
LvLongitudeRange commonLongitudes(QList<Extent> extents)
{
    for (Extent& extent : extents) {
        const double turns = fullTurn * std::floor((extent.west + 180.0) / fullTurn);
        extent.west -= turns;
        extent.east -= turns;
    }
    std::sort(extents.begin(), extents.end(),
              [](const Extent& a, const Extent& b) { return a.west < b.west; });
    double easternmost = std::numeric_limits<double>::lowest();
    for (const Extent& extent : std::as_const(extents)) {
        easternmost = std::max(easternmost, extent.east);
    }
    // What reaches beyond the 180° meridian covers the beginning of the circle as well.
    double reach = easternmost - fullTurn;
    double widestGap = 0.0;
    double west = -180.0;
    double east = 180.0;
    for (qsizetype i = 0; i < extents.size(); ++i) {
        const Extent& extent = extents.at(i);
        if (extent.west - reach > widestGap) {
            widestGap = extent.west - reach;
            west = extent.west;
            east = i == 0 ? easternmost : reach;
        }
        reach = std::max(reach, extent.east);
    }
    return {west, east > 180.0 ? east - fullTurn : east};
}

LvGeoPositionRect boxAround(const QList<Extent>& extents)
{
    if (extents.isEmpty()) {
        return {};
    }
    double south = extents.first().south;
    double north = extents.first().north;
    for (const Extent& extent : extents) {
        south = std::min(south, extent.south);
        north = std::max(north, extent.north);
    }
    return {LvLatitudeRange(south, north), commonLongitudes(extents)};
}

} // namespace

LvGeoPositionRect LvTrackBounds::ofElement(const LvGPXTrackElement& element)
{
    const Extent extent = extentOf(element.allPoints());
    return boxAround(extent.isValid() ? QList<Extent>{extent} : QList<Extent>());
}

LvGeoPositionRect LvTrackBounds::ofSelection(const LvGPXTrackSelection& selection)
{
    QList<Extent> extents;
    const LvGPXConfiguredTrackList tracks = selection.tracks();
    for (const LvGPXConfiguredTrack& track : tracks) {
        const Extent extent = extentOf(track.allPoints());
        if (extent.isValid()) {
            extents.append(extent);
        }
    }
    return boxAround(extents);
}
