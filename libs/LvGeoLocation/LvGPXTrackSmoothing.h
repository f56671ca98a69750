#pragma once

#include "lvgeolocation_export.h"

#include <QPointF>

/**
 * Pulls the drawn points of a track towards straight lines between a few fixed points, which calms jittery
 * recordings.
 *
 * Works in place on the caller's array, allocates nothing and passes over it once. The array must outlive the
 * object and belong to one thread while run() is at work.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackSmoothing
{
public:
    /// @param points the array, not owned; its first and last point never move.
    /// @param count number of points in the array.
    /// @param weight share that is kept of each unsmoothed point, 0.0 to 1.0; 1.0 leaves the track as it is.
    /// @param steps wanted number of sections, see estimateFixPoints().
    LvGPXTrackSmoothing(QPointF* points, int count, double weight, int steps);
    LvGPXTrackSmoothing(const LvGPXTrackSmoothing& other);
    LvGPXTrackSmoothing(LvGPXTrackSmoothing&& other) noexcept;
    LvGPXTrackSmoothing& operator=(const LvGPXTrackSmoothing& other);
    LvGPXTrackSmoothing& operator=(LvGPXTrackSmoothing&& other) noexcept;
    virtual ~LvGPXTrackSmoothing();

    /// The number of sections: the smaller of both numbers, at least 1.
    [[nodiscard]] static int estimateFixPoints(int count, int steps);

    /// Smooths the whole array. Leaves it alone when it has fewer than three points or when the sections
    /// would be one point long. Section k of n ends at the fixed point with the index count * k / n - 1.
    void run();

    /// Moves one point towards the line between two fixed points, given by their indices. A point on two
    /// coinciding fixed points becomes not-a-number: the ratio of its distances is undefined.
    void smoothPoint(int index, int before, int after);

    /// Euclidean distance.
    [[nodiscard]] static double delta(const QPointF& a, const QPointF& b);

    /// The share of a in the sum of both: a / (b + a).
    [[nodiscard]] static double partOf(double a, double b);

    /// The point that divides the line from q (t = 0) to p (t = 1): t * p + (1 - t) * q.
    [[nodiscard]] static QPointF mix(const QPointF& p, const QPointF& q, double t);

private:
    [[nodiscard]] int fixPointIndex(int section) const;

    QPointF* myPoints;
    int myCount;
    double myWeight;
    int myFixPoints;
};
