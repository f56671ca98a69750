#pragma once

#include "LvGPXTrackElement.h"
#include "LvGPXTrackPoint.h"
#include "LvIntRange.h"
#include "lvgeolocation_export.h"

#include <QList>

class QDomElement;

/**
 * An ordered run of track points that is drawn as one connected line. A plain value over a shared list.
 *
 * The text form ("compressedPoints") holds one KML tuple per point, see LvGPXTrackPoint::toKml(), joined by
 * line feeds; on reading any white space separates them. A point at 0 N 0 E cannot be stored in it: it is
 * dropped on reading.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackSegment : public LvGPXTrackElement
{
public:
    LvGPXTrackSegment();
    // NOLINTNEXTLINE(google-explicit-constructor) it is that list
    LvGPXTrackSegment(const QList<LvGPXTrackPoint>& points);
    // NOLINTNEXTLINE(google-explicit-constructor) a list of this one point
    LvGPXTrackSegment(const LvGPXTrackPoint& point);

    /// Reads the children "trkpt", "compressedPoints" and "extensions", mixed as they come, and skips all
    /// others. The name of the element itself is not looked at: "trkseg" and "rtept" are read alike.
    explicit LvGPXTrackSegment(const QDomElement& element);

    LvGPXTrackSegment(const LvGPXTrackSegment& other);
    LvGPXTrackSegment(LvGPXTrackSegment&& other) noexcept;
    LvGPXTrackSegment& operator=(const LvGPXTrackSegment& other);
    LvGPXTrackSegment& operator=(LvGPXTrackSegment&& other) noexcept;
    ~LvGPXTrackSegment() override;

    void swap(LvGPXTrackSegment& other) noexcept { myTrackPoints.swap(other.myTrackPoints); }

    /// The segment of decodeTrackPoints().
    [[nodiscard]] static LvGPXTrackSegment decodeKml(const QString& text);

    /// The points of a "compressedPoints" or KML "coordinates" text, without those at exactly 0/0.
    [[nodiscard]] static QList<LvGPXTrackPoint> decodeTrackPoints(const QString& text);

    /// Whether the calling thread is that of the application object.
    [[nodiscard]] static bool weAreaRunningInMainThread();

    [[nodiscard]] LvGeoPositionList allPoints() const override;

    /// On the main thread about one block per processor core, gathered in parallel; on any other thread one
    /// block.
    [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override;

    [[nodiscard]] bool isSinglePoint() const override;
    [[nodiscard]] LvGeoPosition firstPoint() const override;
    [[nodiscard]] LvGeoPosition lastPoint() const override;
    [[nodiscard]] QList<QDateTime> allTimeStamps() const override;
    bool
    visitTrackPoints(const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const override;

    /// Whether there is at least one point, whatever its position.
    [[nodiscard]] bool isValid() const;

    [[nodiscard]] QList<LvGPXTrackPoint> trackPoints() const;
    [[nodiscard]] int count() const;

    /// The positions from the first index of the block up to, but without, its lastIndexEvenIfUnvalid().
    /// Indices outside the segment are passed over.
    [[nodiscard]] LvGeoPositionList collectBlock(const LvIntRange& block) const;

    /// The same number of points, equal pairwise.
    [[nodiscard]] bool operator==(const LvGPXTrackSegment& other) const;

    /// Appends the points "gpxx:rpt" of the first "gpxx:RoutePointExtension" below the element.
    // NOLINTNEXTLINE(performance-unnecessary-value-param) a handle itself
    void decodeGarminGPX(QDomElement extensions);

    /// Appends an element "trkseg" with one child "compressedPoints"; never "trkpt" elements.
    void toXml(QDomElement& parent) const;

    /// The text form, see above.
    [[nodiscard]] QString toKml() const;

private:
    QList<LvGPXTrackPoint> myTrackPoints;
};

Q_DECLARE_SHARED(LvGPXTrackSegment)
