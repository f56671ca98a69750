#include "LvGeoPosition.h"

#include "LvGeoPositionImpl.h"

#include <QDomElement>
#include <QHashFunctions>
#include <QRegularExpression>
#include <QStringList>
#include <QUrlQuery>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double earthRadiusKm = 6370.0;
// Callers compare against it: exactly a thousand times the radius.
constexpr double unknownDistanceKm = 6370000.0;
constexpr double nauticalMileKm = 1.852;
constexpr double minutesPerDegree = 60.0;
// One degree on a sphere of 6370 km, to twelve digits.
constexpr double equatorDegreeKm = 111.1774733520461;
// Eleven digits on purpose: positions computed with it must not move. Keep it instead of the full constant.
constexpr double shortPi = 3.14159265359;
constexpr int debugDigits = 8;

constexpr QLatin1String latitudeKey("latitude");
constexpr QLatin1String longitudeKey("longitude");

// Default positions are made in large numbers, for lists above all, and share one payload. It is never
// destroyed, so that positions in static objects outlive nothing they need.
const QSharedDataPointer<LvGeoPositionImpl>& invalidPayload()
{
    static const auto* const myPayload = new QSharedDataPointer<LvGeoPositionImpl>(
        new LvGeoPositionImpl(LvLatitude(LvGeoArc::invalidDegrees), LvLongitude(LvGeoArc::invalidDegrees)));
    return *myPayload;
}

bool isSet(const LvGeoPositionImpl& payload)
{
    return payload.myLatitude.isValid() && payload.myLongitude.isValid()
        && !(payload.myLatitude.isNull() && payload.myLongitude.isNull());
}

double attribute(const QDomElement& element, const QString& name)
{
    return element.attribute(name, QStringLiteral("-720.0")).toDouble();
}

double square(double value)
{
    return value * value;
}

} // namespace

LvGeoPosition::LvGeoPosition()
    : myImpl(invalidPayload())
{
}

LvGeoPosition::LvGeoPosition(const LvLatitude& latitude, const LvLongitude& longitude)
    : myImpl(new LvGeoPositionImpl(latitude, longitude))
{
}

LvGeoPosition::LvGeoPosition(double latitude, double longitude)
    : LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude))
{
}

LvGeoPosition::LvGeoPosition(double latitude, char ns, double longitude, char ew)
    : LvGeoPosition(ns == 'N' ? latitude : -latitude, ew == 'E' ? longitude : -longitude)
{
}

LvGeoPosition::LvGeoPosition(const LvGeoPosition& other) = default;

LvGeoPosition::LvGeoPosition(LvGeoPosition&& other) noexcept = default;

LvGeoPosition& LvGeoPosition::operator=(const LvGeoPosition& other) = default;

LvGeoPosition& LvGeoPosition::operator=(LvGeoPosition&& other) noexcept = default;

LvGeoPosition::~LvGeoPosition() = default;

LvGeoPosition LvGeoPosition::null()
{
    return {0.0, 0.0};
}

LvGeoPosition LvGeoPosition::parse(const QString& text)
{
    static const QRegularExpression myWhiteSpace(QStringLiteral("\\s+"));
    const QStringList parts = text.trimmed().split(myWhiteSpace);
    if (parts.size() != 2) {
        return {};
    }
    const LvLatitude latitude = LvLatitude::parse(parts.at(0));
    const LvLongitude longitude = LvLongitude::parse(parts.at(1));
    if (!latitude.isValid() || !longitude.isValid()) {
        return {};
    }
    return {latitude, longitude};
}

LvGeoPosition LvGeoPosition::fromString(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(';'));
    if (parts.size() < 2) {
        return {};
    }
    const LvLatitude latitude = LvLatitude::fromString(parts.at(0).trimmed());
    const LvLongitude longitude = LvLongitude::fromString(parts.at(1).trimmed());
    if (!latitude.isValid() || !longitude.isValid()) {
        return {};
    }
    return {latitude, longitude};
}

LvGeoPosition LvGeoPosition::fromXml(const QDomElement& element, const QString& prefix)
{
    return {attribute(element, prefix + latitudeKey), attribute(element, prefix + longitudeKey)};
}

LvLatitude LvGeoPosition::latitudeDeviation(double kilometres)
{
    if (kilometres == 0.0) {
        return {0.0};
    }
    return {kilometres / nauticalMileKm / minutesPerDegree};
}

bool LvGeoPosition::isValid() const
{
    return isSet(*myImpl);
}

bool LvGeoPosition::isInNorthernHemisphere() const
{
    return myImpl->myLatitude.isInNorthernHemisphere();
}

bool LvGeoPosition::isInSouthernHemisphere() const
{
    return myImpl->myLatitude.isInSouthernHemisphere();
}

bool LvGeoPosition::isInEasternHemisphere() const
{
    return myImpl->myLongitude.isInEasternHemisphere();
}

bool LvGeoPosition::isInWesternHemisphere() const
{
    return myImpl->myLongitude.isInWesternHemisphere();
}

bool LvGeoPosition::isNorthOf(const LvGeoPosition& other) const
{
    return isNorthOf(other.myImpl->myLatitude);
}

bool LvGeoPosition::isNorthOf(const LvLatitude& other) const
{
    return myImpl->myLatitude.isNorthOf(other);
}

bool LvGeoPosition::isSouthOf(const LvGeoPosition& other) const
{
    return isSouthOf(other.myImpl->myLatitude);
}

bool LvGeoPosition::isSouthOf(const LvLatitude& other) const
{
    return myImpl->myLatitude.isSouthOf(other);
}

bool LvGeoPosition::isEastOf(const LvGeoPosition& other) const
{
    return isEastOf(other.myImpl->myLongitude);
}

bool LvGeoPosition::isEastOf(const LvLongitude& other) const
{
    return myImpl->myLongitude.isEastOf(other);
}

bool LvGeoPosition::isWestOf(const LvGeoPosition& other) const
{
    return isWestOf(other.myImpl->myLongitude);
}

bool LvGeoPosition::isWestOf(const LvLongitude& other) const
{
    return myImpl->myLongitude.isWestOf(other);
}

LvLatitude LvGeoPosition::latitude() const
{
    return myImpl->myLatitude;
}

LvLongitude LvGeoPosition::longitude() const
{
    return myImpl->myLongitude;
}

void LvGeoPosition::setLatitude(const LvLatitude& latitude)
{
    // By the raw values: a change below the tolerance of == is one.
    if (std::as_const(myImpl)->myLatitude.decimalDegrees() != latitude.decimalDegrees()) {
        myImpl->myLatitude = latitude;
    }
}

void LvGeoPosition::setLongitude(const LvLongitude& longitude)
{
    if (std::as_const(myImpl)->myLongitude.decimalDegrees() != longitude.decimalDegrees()) {
        myImpl->myLongitude = longitude;
    }
}

void LvGeoPosition::catchLatitude()
{
    setLatitude(std::as_const(myImpl)->myLatitude.catchOutOfBound());
}

LvGeoPosition LvGeoPosition::normalized() const
{
    return {myImpl->myLatitude, myImpl->myLongitude.normalized()};
}

LvLongitude LvGeoPosition::longitudeDeviation(double kilometres) const
{
    if (kilometres == 0.0) {
        return {0.0};
    }
    return {kilometres / (std::cos(myImpl->myLatitude.decimalDegrees() * shortPi / 180.0) * equatorDegreeKm)};
}

LvGeoPosition LvGeoPosition::moveNorthBy(double kilometres) const
{
    return {myImpl->myLatitude + latitudeDeviation(kilometres), myImpl->myLongitude};
}

LvGeoPosition LvGeoPosition::moveEastBy(double kilometres) const
{
    return {myImpl->myLatitude, myImpl->myLongitude + longitudeDeviation(kilometres)};
}

double LvGeoPosition::distance(const LvGeoPosition& other) const
{
    const LvGeoPositionImpl& from = *myImpl;
    const LvGeoPositionImpl& to = *other.myImpl;
    if (!isSet(from) || !isSet(to)) {
        return unknownDistanceKm;
    }
    const double latitudeStep = from.myLatitude.absDistance(to.myLatitude).radians();
    const double longitudeStep = from.myLongitude.absDistance(to.myLongitude).radians();
    const double a = square(std::sin(latitudeStep * 0.5))
        + std::cos(from.myLatitude.radians()) * std::cos(to.myLatitude.radians())
            * square(std::sin(longitudeStep * 0.5));
    // Rounding may lift the haversine of two antipodes a little above 1.
    return 2.0 * std::atan2(std::sqrt(a), std::sqrt(std::max(0.0, 1.0 - a))) * earthRadiusKm;
}

QPointF LvGeoPosition::toPointF() const
{
    return {myImpl->myLongitude.decimalDegrees(), myImpl->myLatitude.decimalDegrees()};
}

size_t LvGeoPosition::hashValue() const
{
    return qHash(myImpl->myLatitude.decimalDegrees() + myImpl->myLongitude.decimalDegrees(), 0);
}

QString LvGeoPosition::toString(bool humanReadable) const
{
    const QString separator = humanReadable ? QStringLiteral("<br>") : QStringLiteral("; ");
    return myImpl->myLatitude.toString(humanReadable) + separator
        + myImpl->myLongitude.toString(humanReadable);
}

void LvGeoPosition::writeTo(QUrlQuery& query) const
{
    myImpl->myLatitude.writeTo(query, latitudeKey);
    myImpl->myLongitude.writeTo(query, longitudeKey);
}

void LvGeoPosition::writeToXml(QDomElement element) const
{
    if (!isValid()) {
        return;
    }
    element.setAttribute(latitudeKey, myImpl->myLatitude.decimalDegrees());
    element.setAttribute(longitudeKey, myImpl->myLongitude.decimalDegrees());
}

LvGeoPosition& LvGeoPosition::operator+=(const LvGeoPosition& other)
{
    return *this = *this + other;
}

LvGeoPosition& LvGeoPosition::operator/=(double divisor)
{
    return *this = *this / divisor;
}

LvGeoPosition LvGeoPosition::operator+(const LvGeoPosition& other) const
{
    return {myImpl->myLatitude + other.myImpl->myLatitude, myImpl->myLongitude + other.myImpl->myLongitude};
}

LvGeoPosition LvGeoPosition::operator/(double divisor) const
{
    return {myImpl->myLatitude / divisor, myImpl->myLongitude / divisor};
}

bool LvGeoPosition::operator==(const LvGeoPosition& other) const
{
    if (myImpl == other.myImpl) {
        return true;
    }
    return myImpl->myLatitude == other.myImpl->myLatitude && myImpl->myLongitude == other.myImpl->myLongitude;
}

bool LvGeoPosition::operator<(const LvGeoPosition& other) const
{
    if (myImpl->myLatitude == other.myImpl->myLatitude) {
        return myImpl->myLongitude < other.myImpl->myLongitude;
    }
    return myImpl->myLatitude < other.myImpl->myLatitude;
}

bool LvGeoPosition::operator>(const LvGeoPosition& other) const
{
    if (myImpl->myLatitude == other.myImpl->myLatitude) {
        return myImpl->myLongitude > other.myImpl->myLongitude;
    }
    return myImpl->myLatitude > other.myImpl->myLatitude;
}

QDebug operator<<(QDebug debug, const LvGeoPosition& position)
{
    debug << "Lat" << QString::number(position.latitude().decimalDegrees(), 'g', debugDigits) << "; Lon"
          << QString::number(position.longitude().decimalDegrees(), 'g', debugDigits);
    return debug;
}
