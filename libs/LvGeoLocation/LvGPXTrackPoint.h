#pragma once

#include "LvGPXTrackElement.h"
#include "lvgeolocation_export.h"

#include <QSharedDataPointer>

class LvGPXTrackPointImpl;
class QDomElement;

/**
 * One sampled position of a track: where, how high (whole metres), when, and an optional text.
 *
 * An immutable value: built once, then only copied (one atomic increment) and read, from any thread.
 * The default point has the default, invalid position (720/720).
 */
class LVGEOLOCATION_EXPORT LvGPXTrackPoint : public LvGPXTrackElement
{
public:
    LvGPXTrackPoint();

    /// @param elevation metres; 0 means none.
    /// @param timeStamp invalid means none.
    LvGPXTrackPoint(const LvGeoPosition& position, int elevation, const QDateTime& timeStamp,
                    const QString& description);
    /// Takes the parts over instead of copying them, for readers of many points.
    LvGPXTrackPoint(LvGeoPosition&& position, int elevation, QDateTime&& timeStamp, QString&& description);

    /// Reads the attributes "lat" and "lon" (decimal degrees, 1.0 each when missing, not 0) and the children
    /// "ele" (truncated to whole metres, limited to the range of an int), "time" (ISO 8601) and "desc".
    /// Numbers that do not parse are 0. The name of the element is not looked at.
    explicit LvGPXTrackPoint(const QDomElement& element);

    LvGPXTrackPoint(const LvGPXTrackPoint& other);
    LvGPXTrackPoint(LvGPXTrackPoint&& other) noexcept;
    LvGPXTrackPoint& operator=(const LvGPXTrackPoint& other);
    LvGPXTrackPoint& operator=(LvGPXTrackPoint&& other) noexcept;
    ~LvGPXTrackPoint() override;

    void swap(LvGPXTrackPoint& other) noexcept { myImpl.swap(other.myImpl); }

    /// Reads a KML tuple "longitude,latitude[,elevation[,seconds since 1970 UTC]]". Coordinates that do not
    /// parse or are missing are 0.0 and go through safeDouble(); an elevation that is no whole number of 32
    /// bits is 0; a fourth field that is no whole number of 64 bits is 0 seconds.
    [[nodiscard]] static LvGPXTrackPoint decodeKml(const QString& text);

    [[nodiscard]] LvGeoPositionList allPoints() const override;
    [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override;
    /// Always true.
    [[nodiscard]] bool isSinglePoint() const override;
    [[nodiscard]] LvGeoPosition firstPoint() const override;
    [[nodiscard]] LvGeoPosition lastPoint() const override;
    [[nodiscard]] QList<QDateTime> allTimeStamps() const override;

    /// Whether latitude and longitude are both exactly 0.0. The default point is invalid, but not null.
    [[nodiscard]] bool isNull() const;

    [[nodiscard]] LvGeoPosition position() const;
    /// Metres; 0 means none.
    [[nodiscard]] int elevation() const;
    /// Invalid means none.
    [[nodiscard]] QDateTime timeStamp() const;
    [[nodiscard]] QString description() const;

    /// position() and timeStamp() without the cost of a copy, which counts where all points of a track are
    /// walked through. Good as long as this point is.
    [[nodiscard]] const LvGeoPosition& sharedPosition() const&;
    [[nodiscard]] const QDateTime& sharedTimeStamp() const&;
    void sharedPosition() const&& = delete;
    void sharedTimeStamp() const&& = delete;

    /// Equal position (to the tolerance of angles), elevation, instant and description.
    [[nodiscard]] bool operator==(const LvGPXTrackPoint& other) const;

    /// Appends an element "trkpt", whatever the point was read from: coordinates with up to ten significant
    /// digits, "ele", "time" and "desc" only where there is something to say.
    void toXml(QDomElement& parent) const;

    /// The KML tuple: longitude, latitude (up to ten decimals, trailing zeros cut but not the point: "8."),
    /// elevation where there is one or a time, time in milliseconds since 1970 UTC where there is one. The
    /// time is written in milliseconds though decodeKml() takes seconds; both sides are as files need them.
    [[nodiscard]] QString toKml() const;

private:
    friend class LvGPXTrackRenderer; // reads the position where it lies: this is done for each point of a
                                     // track

    QSharedDataPointer<LvGPXTrackPointImpl> myImpl;
};

Q_DECLARE_SHARED(LvGPXTrackPoint)
