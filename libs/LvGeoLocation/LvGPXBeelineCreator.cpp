#include "LvGPXBeelineCreator.h"

#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "LvLongitudeRange.h"

#include <QCoreApplication>
#include <QDateTime>

namespace
{

constexpr double subdivisionThresholdKm = 200.0;

// The band that the latitude search looks at. Mercator maps end not far beyond it.
constexpr double northernSearchLimit = 80.0;
constexpr double southernSearchLimit = -80.0;
constexpr int searchIterations = 20;

} // namespace

// NOLINTNEXTLINE(modernize-pass-by-value) copies are as cheap
LvGPXBeelineCreator::LvGPXBeelineCreator(const LvGeoPosition& from, const LvGeoPosition& to)
    : myFrom(from)
    , myTo(to)
{
}

LvGPXBeelineCreator::LvGPXBeelineCreator(const LvGPXBeelineCreator& other) = default;
LvGPXBeelineCreator::LvGPXBeelineCreator(LvGPXBeelineCreator&& other) noexcept = default;
LvGPXBeelineCreator& LvGPXBeelineCreator::operator=(const LvGPXBeelineCreator& other) = default;
LvGPXBeelineCreator& LvGPXBeelineCreator::operator=(LvGPXBeelineCreator&& other) noexcept = default;
LvGPXBeelineCreator::~LvGPXBeelineCreator() = default;

LvGeoPositionList LvGPXBeelineCreator::createPoints() const
{
    LvGeoPositionList points{myFrom};
    points.append(createIntermediatePoints());
    points.append(myTo);
    return points;
}

LvGeoPositionList LvGPXBeelineCreator::createIntermediatePoints() const
{
    // The distance of an invalid position is far beyond the threshold and would never get smaller.
    if (!myFrom.isValid() || !myTo.isValid() || myFrom.distance(myTo) < subdivisionThresholdKm
        || myFrom.longitude() == myTo.longitude()) {
        return {};
    }
    const LvLongitude center = findLogicalCenterLongitude();
    // One meridian may have two names, as 10° and 370°: then halving leads nowhere, and this must end.
    if (center == myFrom.longitude() || center == myTo.longitude()) {
        return {};
    }
    const LvGeoPosition middle = estimateOptimalLatitude(center);
    LvGeoPositionList points = LvGPXBeelineCreator(myFrom, middle).createIntermediatePoints();
    points.append(middle);
    points.append(LvGPXBeelineCreator(middle, myTo).createIntermediatePoints());
    return points;
}

LvGeoPosition LvGPXBeelineCreator::estimateOptimalLatitude(const LvLongitude& longitude) const
{
    // Compares the ends of the bracket and nothing in between: stored beelines must come out the same again,
    // so do not replace it by a better search.
    LvGeoPosition a(LvLatitude(northernSearchLimit), longitude);
    LvGeoPosition b(LvLatitude(southernSearchLimit), longitude);
    for (int i = 0; i < searchIterations; ++i) {
        const double sumA = myFrom.distance(a) + myTo.distance(a);
        const double sumB = myFrom.distance(b) + myTo.distance(b);
        const LvGeoPosition middle = (a + b) / 2.0;
        if (sumB > sumA) {
            b = middle;
        } else {
            a = middle;
        }
    }
    return (a + b) / 2.0;
}

LvLongitude LvGPXBeelineCreator::findLogicalCenterLongitude() const
{
    return LvLongitudeRange::spawn(myFrom.longitude(), myTo.longitude()).center();
}

// A member for the sake of the interface: it looks at its argument only.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
QList<LvGPXTrackPoint> LvGPXBeelineCreator::positions2trackPoints(const LvGeoPositionList& positions) const
{
    QList<LvGPXTrackPoint> points;
    points.reserve(positions.size());
    for (const LvGeoPosition& position : positions) {
        points.append(LvGPXTrackPoint(position, 0, QDateTime::currentDateTime(), QString()));
    }
    return points;
}

LvGPXTrack LvGPXBeelineCreator::createBeeline(const QString& name) const
{
    const LvGPXTrackSegment segment(positions2trackPoints(createPoints()));
    return {name,
            QCoreApplication::translate("LvGPXBeelineCreator", "Fluglinie"),
            {segment},
            LvGPXTrackShapeEnum::linestring};
}
