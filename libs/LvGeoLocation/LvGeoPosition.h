#pragma once

#include "LvLatitude.h"
#include "LvLongitude.h"
#include "lvgeolocation_export.h"

#include <QDebug>
#include <QPointF>
#include <QSharedDataPointer>
#include <QString>

class QDomElement;
class QUrlQuery;

class LvGeoPositionImpl;

/**
 * A point on the globe: latitude and longitude in decimal degrees, north and east positive.
 *
 * A handle over a shared payload: copying costs one atomic increment, a setter detaches first. Invalid when
 * default-constructed (both angles 720.0) and at exactly 0°/0°, which means "not set".
 *
 * Copies of one position may be read, changed and destroyed on different threads; one handle must not be
 * changed while another thread uses it. A moved-from position is empty: assign to it or destroy it.
 *
 * There is no qHash() and so no QSet of positions: == has a tolerance, and equal positions would need equal
 * hashes. hashValue() serves for telling exact copies apart.
 */
class LVGEOLOCATION_EXPORT LvGeoPosition
{
public:
    /// The invalid position, both angles 720.0.
    LvGeoPosition();

    /// Takes the angles as they are, without wrapping or clamping.
    LvGeoPosition(const LvLatitude& latitude, const LvLongitude& longitude);

    /// Decimal degrees, taken as they are.
    LvGeoPosition(double latitude, double longitude);

    /// Keeps the latitude for exactly 'N' and the longitude for exactly 'E'; any other letter, the lower-case
    /// ones included, changes the sign.
    LvGeoPosition(double latitude, char ns, double longitude, char ew);

    LvGeoPosition(const LvGeoPosition& other);
    LvGeoPosition(LvGeoPosition&& other) noexcept;
    LvGeoPosition& operator=(const LvGeoPosition& other);
    LvGeoPosition& operator=(LvGeoPosition&& other) noexcept;
    virtual ~LvGeoPosition();

    void swap(LvGeoPosition& other) noexcept { myImpl.swap(other.myImpl); }

    /// 0°/0°: "not set", hence invalid. Where sums of positions start.
    [[nodiscard]] static LvGeoPosition null();

    /// Reads two texts of LvLatitude::parse() and LvLongitude::parse() with white space between, such as
    /// "N53.14 E8.8". Anything else gives the default position, and so does what toString(false) writes.
    [[nodiscard]] static LvGeoPosition parse(const QString& text);

    /// Reads two texts of LvGeoArc::fromString() with ";" between, such as "53,8,24 N; 8,48,0 E"; further
    /// parts are ignored. The default position when there are fewer or one of them is invalid.
    [[nodiscard]] static LvGeoPosition fromString(const QString& text);

    /// Reads the attributes prefix + "latitude" and prefix + "longitude". A missing one gives -720.0, so that
    /// the position is invalid, an unreadable one 0.0.
    [[nodiscard]] static LvGeoPosition fromXml(const QDomElement& element, const QString& prefix = QString());

    /// The latitude that spans so many kilometres northwards (one minute is a nautical mile of 1.852 km).
    [[nodiscard]] static LvLatitude latitudeDeviation(double kilometres);

    /// Both angles are within ±360° and they are not both exactly 0.
    [[nodiscard]] bool isValid() const;

    [[nodiscard]] bool isInNorthernHemisphere() const;
    [[nodiscard]] bool isInSouthernHemisphere() const;
    [[nodiscard]] bool isInEasternHemisphere() const;
    [[nodiscard]] bool isInWesternHemisphere() const;

    /// Compares the latitudes exactly.
    [[nodiscard]] bool isNorthOf(const LvGeoPosition& other) const;
    [[nodiscard]] bool isNorthOf(const LvLatitude& other) const;
    [[nodiscard]] bool isSouthOf(const LvGeoPosition& other) const;
    [[nodiscard]] bool isSouthOf(const LvLatitude& other) const;

    /// Compares the longitudes on the shorter way round, see LvLongitude::isEastOf().
    [[nodiscard]] bool isEastOf(const LvGeoPosition& other) const;
    [[nodiscard]] bool isEastOf(const LvLongitude& other) const;
    [[nodiscard]] bool isWestOf(const LvGeoPosition& other) const;
    [[nodiscard]] bool isWestOf(const LvLongitude& other) const;

    [[nodiscard]] LvLatitude latitude() const;
    [[nodiscard]] LvLongitude longitude() const;

    void setLatitude(const LvLatitude& latitude);
    void setLongitude(const LvLongitude& longitude);

    /// Keeps the latitude 0.01 degrees off the poles, see LvLatitude::catchOutOfBound().
    void catchLatitude();

    /// The same position with its longitude within ±180°.
    [[nodiscard]] LvGeoPosition normalized() const;

    /// The longitude that spans so many kilometres eastwards at this latitude (sphere of radius 6370 km, so
    /// not the Earth model of latitudeDeviation(); the difference is intended).
    [[nodiscard]] LvLongitude longitudeDeviation(double kilometres) const;

    /// So many kilometres farther north; does not stop at a pole.
    [[nodiscard]] LvGeoPosition moveNorthBy(double kilometres) const;

    /// So many kilometres farther east; does not wrap at 180°.
    [[nodiscard]] LvGeoPosition moveEastBy(double kilometres) const;

    /// Great-circle distance in kilometres (haversine formula, sphere of radius 6370 km).
    /// Returns 6370000.0 when either position is invalid: farther than any two real places.
    [[nodiscard]] double distance(const LvGeoPosition& other) const;

    /// x = longitude and y = latitude, in degrees.
    [[nodiscard]] QPointF toPointF() const;

    /// The hash of latitude + longitude. Positions mirrored at the line latitude = -longitude collide, which
    /// is accepted; equal positions that differ within the tolerance have different values.
    [[nodiscard]] size_t hashValue() const;

    /// For people the two angles with "<br>" between, for rich text; else "N53.14000000; E8.80000000".
    [[nodiscard]] QString toString(bool humanReadable) const;

    /// Adds the query items "latitude" and "longitude".
    void writeTo(QUrlQuery& query) const;

    /// Sets the attributes "latitude" and "longitude" of the element; leaves it alone when the position is
    /// invalid.
    void writeToXml(QDomElement element) const;

    /// Component-wise and without wrapping, for averages.
    LvGeoPosition& operator+=(const LvGeoPosition& other);
    /// Component-wise; a divisor of exactly 0.0 makes the position invalid.
    LvGeoPosition& operator/=(double divisor);

    /// Component-wise and without wrapping, for averages.
    [[nodiscard]] LvGeoPosition operator+(const LvGeoPosition& other) const;
    /// Component-wise; a divisor of exactly 0.0 gives an invalid position.
    [[nodiscard]] LvGeoPosition operator/(double divisor) const;

    /// Both angles equal within 1e-6 degrees.
    [[nodiscard]] bool operator==(const LvGeoPosition& other) const;

    [[nodiscard]] bool operator!=(const LvGeoPosition& other) const { return !(*this == other); }

    /// South before north; at equal latitudes (within the tolerance) the smaller longitude first.
    [[nodiscard]] bool operator<(const LvGeoPosition& other) const;
    [[nodiscard]] bool operator>(const LvGeoPosition& other) const;

private:
    // They read the angles where they lie: this is done for each point of a track.
    friend class LvGPXTrackRenderer;
    friend class LvMapProjection;

    QSharedDataPointer<LvGeoPositionImpl> myImpl;
};

Q_DECLARE_SHARED(LvGeoPosition)

/// Writes "Lat", the latitude, "; Lon" and the longitude, with 8 significant digits.
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvGeoPosition& position);
