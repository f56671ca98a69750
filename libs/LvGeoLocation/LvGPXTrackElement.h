#pragma once

#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvGeoPositionRect.h"
#include "LvRange.h"
#include "lvgeolocation_export.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>

class LvGPXTrackPoint;

/**
 * What everything that holds track points has in common: a point, a segment, a track.
 *
 * Reading an element from several threads at once is safe as long as nobody changes that very object.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackElement
{
public:
    virtual ~LvGPXTrackElement();

    /// Every position, in order; invalid ones included.
    [[nodiscard]] virtual LvGeoPositionList allPoints() const = 0;

    /// The positions in order, cut into runs that are drawn as polylines one after the other. How many runs
    /// there are depends on the thread and on the number of processor cores; joined together they are
    /// allPoints().
    [[nodiscard]] virtual QList<LvGeoPositionList> chunkedPoints() const = 0;

    /// Whether there is exactly one position. This implementation counts allPoints().
    [[nodiscard]] virtual bool isSinglePoint() const;

    /// The first position; the default (invalid) position when there is none.
    [[nodiscard]] virtual LvGeoPosition firstPoint() const = 0;

    /// The last position; the default (invalid) position when there is none.
    [[nodiscard]] virtual LvGeoPosition lastPoint() const = 0;

    /// One time stamp per point, in point order; invalid where the point has none.
    [[nodiscard]] virtual QList<QDateTime> allTimeStamps() const = 0;

    /// Calls the function with all points in order, one list after the other, and returns true. An element
    /// that does not hold lists of points returns false and calls nothing, as this implementation does:
    /// allPoints() and allTimeStamps() serve for every element, but they copy what long tracks hold.
    virtual bool
    visitTrackPoints(const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const;

    /// The rectangle around all valid positions, all four bounds 720.0 when there is none.
    [[nodiscard]] LvGeoPositionRect boundingBox() const;

    /// From the earliest to the latest time stamp; both ends null when there is none. Missing ones count only
    /// behind the first one that is there: a null date-time compares like 1970, so the lower end is null
    /// then.
    [[nodiscard]] LvRange<QDateTime> timeFrame() const;

    /// The number of a KML coordinate text, with at most seven digits behind the point; 0.0 when it is no
    /// number. A text without a point is cut to its first seven characters: "12345678" gives 1234567.
    [[nodiscard]] static double safeDouble(const QString& text);

protected:
    // Only whole elements are copied: a copy of this base alone would lose the points.
    LvGPXTrackElement();
    LvGPXTrackElement(const LvGPXTrackElement& other);
    LvGPXTrackElement(LvGPXTrackElement&& other) noexcept;
    LvGPXTrackElement& operator=(const LvGPXTrackElement& other);
    LvGPXTrackElement& operator=(LvGPXTrackElement&& other) noexcept;
};
