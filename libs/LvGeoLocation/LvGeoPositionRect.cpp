#include "LvGeoPositionRect.h"

#include <QUrlQuery>

#include <algorithm>
#include <utility>

namespace
{

constexpr double verySmallDegrees = 1.0;
constexpr double reasonableMarginDegrees = 1.0;
constexpr double pointMarginDegrees = 0.1;
constexpr double wholePercent = 100.0;

} // namespace

LvGeoPositionRect::LvGeoPositionRect() = default;

LvGeoPositionRect::LvGeoPositionRect(LvLatitudeRange latitudeRange, LvLongitudeRange longitudeRange)
    : myLatitudeRange(std::move(latitudeRange))
    , myLongitudeRange(std::move(longitudeRange))
{
}

LvGeoPositionRect::LvGeoPositionRect(const LvGeoPosition& southWest, const LvGeoPosition& northEast)
    : myLatitudeRange(southWest.latitude(), northEast.latitude())
    , myLongitudeRange(southWest.longitude(), northEast.longitude())
{
}

LvGeoPositionRect::LvGeoPositionRect(const LvGeoPositionRect& other) = default;

LvGeoPositionRect::LvGeoPositionRect(LvGeoPositionRect&& other) noexcept = default;

LvGeoPositionRect& LvGeoPositionRect::operator=(const LvGeoPositionRect& other) = default;

LvGeoPositionRect& LvGeoPositionRect::operator=(LvGeoPositionRect&& other) noexcept = default;

LvGeoPositionRect::~LvGeoPositionRect() = default;

LvGeoPositionRect LvGeoPositionRect::spawn(const LvGeoPosition& a, const LvGeoPosition& b)
{
    return {LvLatitudeRange::spawn(a.latitude(), b.latitude()),
            LvLongitudeRange::spawn(a.longitude(), b.longitude())};
}

LvGeoPositionRect LvGeoPositionRect::europeanUnion()
{
    return {LvLatitudeRange(40.0, 60.0), LvLongitudeRange(-10.0, 30.0)};
}

LvGeoPositionRect LvGeoPositionRect::parse(const QUrlQuery& query)
{
    return {LvLatitudeRange::parse(query), LvLongitudeRange::parse(query)};
}

bool LvGeoPositionRect::isValid() const
{
    return myLongitudeRange.isValid() && myLatitudeRange.isValid();
}

bool LvGeoPositionRect::isNull() const
{
    return east() == west() && north() == south() && east() == LvLongitude(0.0) && north() == LvLatitude(0.0);
}

bool LvGeoPositionRect::isDefault() const
{
    return *this == europeanUnion();
}

bool LvGeoPositionRect::isVerySmall() const
{
    return maxExtension() < LvGeoArc(verySmallDegrees);
}

bool LvGeoPositionRect::contains(const LvGeoPosition& position) const
{
    const LvLatitude latitude = position.latitude();
    return south() <= latitude && latitude <= north() && myLongitudeRange.contains(position.longitude());
}

bool LvGeoPositionRect::contains(const LvGeoPositionRect& other) const
{
    return myLatitudeRange.contains(other.south()) && myLatitudeRange.contains(other.north())
        && myLongitudeRange.contains(other.myLongitudeRange);
}

LvGeoPosition LvGeoPositionRect::northWest() const
{
    return {north(), west()};
}

LvGeoPosition LvGeoPositionRect::southEast() const
{
    return {south(), east()};
}

LvGeoPosition LvGeoPositionRect::center() const
{
    return {myLatitudeRange.center(), myLongitudeRange.center()};
}

LvGeoArc LvGeoPositionRect::maxExtension() const
{
    const double height = north().absDistance(south()).decimalDegrees();
    const double width = east().absDistance(west()).decimalDegrees();
    return {std::max(height, width)};
}

double LvGeoPositionRect::estimatedSize() const
{
    return myLatitudeRange.height().decimalDegrees() * myLongitudeRange.width().decimalDegrees();
}

void LvGeoPositionRect::expandTo(const LvGeoPosition& position)
{
    if (!position.isValid()) {
        return;
    }
    myLatitudeRange.expandTo(position.latitude());
    myLongitudeRange.expandTo(position.longitude());
}

void LvGeoPositionRect::expandTo(const LvGeoPositionRect& other)
{
    if (!other.isValid()) {
        return;
    }
    // East before west, because a crossing range decides step by step.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization) the other area may be this one
    const LvGeoPositionRect bounds = other;
    myLatitudeRange.expandTo(bounds.north());
    myLatitudeRange.expandTo(bounds.south());
    myLongitudeRange.expandTo(bounds.east());
    myLongitudeRange.expandTo(bounds.west());
}

void LvGeoPositionRect::blowUp(double degrees)
{
    myLatitudeRange.blowUp(degrees);
    myLongitudeRange.blowUp(degrees);
}

LvGeoPositionRect LvGeoPositionRect::blownUp(double degrees) const
{
    LvGeoPositionRect result = *this;
    result.blowUp(degrees);
    return result;
}

LvGeoPositionRect LvGeoPositionRect::toReasonableSize() const
{
    return isVerySmall() ? blownUp(reasonableMarginDegrees) : *this;
}

LvGeoPositionRect LvGeoPositionRect::withPadding(double percent) const
{
    if (!isValid() || percent == 0.0) {
        return *this;
    }
    const LvGeoArc extension = maxExtension();
    if (extension == LvGeoArc(0.0)) {
        return blownUp(pointMarginDegrees);
    }
    return blownUp(extension.decimalDegrees() * percent / wholePercent);
}

QString LvGeoPositionRect::toString(bool humanReadable) const
{
    return myLatitudeRange.toString(humanReadable) + QStringLiteral(" ; ")
        + myLongitudeRange.toString(humanReadable);
}

void LvGeoPositionRect::writeTo(QUrlQuery& query) const
{
    myLatitudeRange.writeTo(query);
    myLongitudeRange.writeTo(query);
}

LvGeoPositionRect LvGeoPositionRect::operator+(const LvGeoPositionRect& other) const
{
    LvGeoPositionRect result = *this;
    result.expandTo(other);
    return result;
}

bool LvGeoPositionRect::operator==(const LvGeoPositionRect& other) const
{
    return myLatitudeRange == other.myLatitudeRange && myLongitudeRange == other.myLongitudeRange;
}

QDebug operator<<(QDebug debug, const LvGeoPositionRect& rect)
{
    debug << "Lat: " << rect.latitudeRange() << " ; Lon:" << rect.longitudeRange();
    return debug;
}
