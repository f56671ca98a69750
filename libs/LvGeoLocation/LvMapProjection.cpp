#include "LvMapProjection.h"

#include "LvAngleMath.h"
#include "LvGeoPositionImpl.h"
#include "LvMath.h"
#include "LvMercatorTable.h"

#include <cmath>
#include <limits>

namespace
{

constexpr double pi = 3.141592653589793;
constexpr double twoPi = 6.283185307179586;
constexpr double halfTurnDegrees = 180.0;
constexpr double fullTurnDegrees = 360.0;
constexpr double poleDegrees = 90.0;

// With larger errors of the estimate too many points need the formula as well.
constexpr double largestUsefulError = 0.05;

// Well within the range of an int, so that a plain conversion truncates.
constexpr double largestQuickPixel = 2e9;

double truncated(double pixel)
{
    return LvAngleMath::truncatedToInt(pixel);
}

} // namespace

LvMapProjection::LvMapProjection(const LvGeoPositionRect& box, const QSize& imageSize)
    : myImageSize(imageSize)
{
    adjustMapData(box);
}

LvMapProjection::LvMapProjection(const LvMapProjection& other) = default;

LvMapProjection::LvMapProjection(LvMapProjection&& other) noexcept = default;

LvMapProjection& LvMapProjection::operator=(const LvMapProjection& other) = default;

LvMapProjection& LvMapProjection::operator=(LvMapProjection&& other) noexcept = default;

LvMapProjection::~LvMapProjection() = default;

double LvMapProjection::longitudeToNormalized(double longitude)
{
    return (longitude + halfTurnDegrees) / fullTurnDegrees;
}

double LvMapProjection::latitudeToNormalized(double latitude)
{
    // The tangent of a rounded right angle is finite; without this the south pole would lie at about 6.4,
    // while the north pole is infinitely far away.
    if (latitude == -poleDegrees) {
        return std::numeric_limits<double>::infinity();
    }
    return std::log(std::tan((poleDegrees - latitude) * pi / fullTurnDegrees)) / twoPi + 0.5;
}

double LvMapProjection::normalizedToLongitude(double x)
{
    return std::fma(x, fullTurnDegrees, -halfTurnDegrees);
}

double LvMapProjection::normalizedToLatitude(double y)
{
    return poleDegrees - fullTurnDegrees * std::atan(std::exp(twoPi * (y - 0.5))) / pi;
}

bool LvMapProjection::epsilonEqual(const LvGeoArc& a, const LvGeoArc& b, double epsilon)
{
    return LvMath::epsilonEqual(a.decimalDegrees(), b.decimalDegrees(), epsilon);
}

bool LvMapProjection::epsilonEqual(const LvGeoPosition& a, const LvGeoPosition& b, double epsilon)
{
    if (!epsilonEqual(a.longitude(), b.longitude(), epsilon)) {
        return false;
    }
    return epsilonEqual(a.latitude(), b.latitude(), epsilon);
}

QPointF LvMapProjection::projectate(const LvGeoPosition& position) const
{
    return pixelOf(position.myImpl->myLatitude.decimalDegrees(),
                   position.myImpl->myLongitude.decimalDegrees());
}

QPointF LvMapProjection::getPixelCoordinateByMapCoordinate(double latitude, double longitude) const
{
    return pixelOf(latitude, longitude);
}

QPointF LvMapProjection::pixelOf(double latitude, double longitude) const
{
    const double x = myWorldSize * (longitude + halfTurnDegrees) / fullTurnDegrees - myOffsetX;
    if (myTable != nullptr && std::abs(latitude) <= LvMercatorTable::limit) {
        const double y = myWorldSize * myTable->normalized(latitude) - myOffsetY;
        if (std::abs(x) < largestQuickPixel && std::abs(y) < largestQuickPixel) {
            const int pixel = static_cast<int>(y - myEstimateError);
            if (pixel == static_cast<int>(y + myEstimateError)) {
                return {static_cast<double>(static_cast<int>(x)), static_cast<double>(pixel)};
            }
        }
    }
    const double y = myWorldSize * latitudeToNormalized(latitude) - myOffsetY;
    return {truncated(x), truncated(y)};
}

LvGeoPosition LvMapProjection::convert(const QPoint& pixel) const
{
    const double longitude = (pixel.x() + myOffsetX) / myWorldSize * fullTurnDegrees - halfTurnDegrees;
    const double latitude = poleDegrees
        - fullTurnDegrees * std::atan(std::exp(2.0 * ((pixel.y() + myOffsetY) / myWorldSize - 0.5) * pi))
            / pi;
    return {latitude, longitude};
}

LvGeoPositionRect LvMapProjection::resultBoundingBox() const
{
    return {LvLatitudeRange(LvLatitude::safeLatitude(mySouth), LvLatitude::safeLatitude(myNorth)),
            LvLongitudeRange(LvLongitude::safeLongitude(myWest), LvLongitude::safeLongitude(myEast))};
}

void LvMapProjection::adjustMapData(const LvGeoPositionRect& box)
{
    mySouth = box.south().decimalDegrees();
    myNorth = box.north().decimalDegrees();
    myWest = box.west().decimalDegrees();
    myEast = box.east().decimalDegrees();
    if (myWest > myEast) {
        myEast += fullTurnDegrees;
    }
    double longitudeSpan = myEast - myWest;
    double normalizedSouth = latitudeToNormalized(mySouth);
    double normalizedNorth = latitudeToNormalized(myNorth);
    const double latitudeSpan = normalizedSouth - normalizedNorth;

    const double imageAspect =
        static_cast<double>(myImageSize.width()) / static_cast<double>(myImageSize.height());
    const double mapAspect = (longitudeSpan / fullTurnDegrees) / latitudeSpan;
    if (imageAspect >= mapAspect) {
        const double margin = (longitudeSpan * imageAspect / mapAspect - longitudeSpan) * 0.5;
        myWest -= margin;
        myEast += margin;
        longitudeSpan = myEast - myWest;
    } else {
        const double margin = ((longitudeSpan / fullTurnDegrees) / imageAspect - latitudeSpan) * 0.5;
        normalizedSouth += margin;
        normalizedNorth -= margin;
        mySouth = normalizedToLatitude(normalizedSouth);
        myNorth = normalizedToLatitude(normalizedNorth);
        // From the latitude that resultBoundingBox() tells, not from the sum.
        normalizedNorth = latitudeToNormalized(myNorth);
    }

    // In 64 bits: images wider than 5,965,232 pixels exceed 32.
    myWorldSize = static_cast<double>(qint64{myImageSize.width()} * 360) / longitudeSpan;
    myOffsetX = myWorldSize * (myWest + halfTurnDegrees) / fullTurnDegrees;
    myOffsetY = myWorldSize * normalizedNorth;

    // The last two terms are more than product and difference are rounded by.
    myEstimateError = std::abs(myWorldSize) * LvMercatorTable::largestError
        + (std::abs(myWorldSize) + std::abs(myOffsetY)) * std::numeric_limits<double>::epsilon();
    if (myEstimateError <= largestUsefulError) { // not so for what is not a number
        myTable = &LvMercatorTable::instance();
    }
}
