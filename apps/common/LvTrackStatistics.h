#pragma once

#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"

#include <QDateTime>
#include <QList>

#include <limits>
#include <optional>

class LvGPXTrack;

/// One point of a track with what was covered up to it.
struct LvTrackProfilePoint {
    /// Where there is no such value.
    static constexpr double none = std::numeric_limits<double>::quiet_NaN();

    LvGeoPosition position; // always valid
    double distanceKm = 0.0; // from the start, along the track
    double elapsedSeconds = none; // since the first time of the track, never decreasing
    double elevationMetres = none;
    double speedKmh = none;
    int run = 0; // points of one number are connected; between two runs there is a gap
};

/**
 * What can be told about the way a track took: length, time, climbs, speeds. A plain value, thread-safe.
 *
 * The way from one segment to the next, and that to a position that is not set, is a gap: it has no length,
 * no climb and no moving time. Lengths are those of LvGeoPosition::distance(), on a sphere of 6370 km.
 *
 * Recordings are noisy, so that sums over all points would be too large:
 * - A climb or descent counts when it is at least noiseMetres high; smaller ups and downs are noise.
 * - The speed at a point is the mean over speedWindowSeconds before and behind it, as far as its run reaches.
 * - Moving time is that of the ways between two points that were faster than restKmh.
 *
 * An elevation of 0 m means none, as in all tracks. A time before that of an earlier point is ignored. Times
 * that span less than a second say when the track was made, not when it was travelled: such a track has none.
 */
class LvTrackStatistics
{
public:
    static constexpr double noiseMetres = 5.0;
    static constexpr double speedWindowSeconds = 5.0;
    static constexpr double restKmh = 1.0;

    /// Of no track: nothing has a value.
    LvTrackStatistics() = default;
    /// The enclaves of the track are not looked at.
    explicit LvTrackStatistics(const LvGPXTrack& track);

    /// The length alone, without the work of everything else.
    [[nodiscard]] static double lengthKm(const LvGPXTrack& track);

    [[nodiscard]] double lengthKm() const { return myLengthKm; }

    /// The first and the last time; invalid without times.
    [[nodiscard]] QDateTime startTime() const { return myStartTime; }

    [[nodiscard]] QDateTime endTime() const { return myEndTime; }

    /// From the first to the last time, breaks included.
    [[nodiscard]] std::optional<double> durationSeconds() const { return myDurationSeconds; }

    [[nodiscard]] std::optional<double> movingSeconds() const { return myMovingSeconds; }

    [[nodiscard]] std::optional<double> ascentMetres() const { return myAscentMetres; }

    /// Positive downwards.
    [[nodiscard]] std::optional<double> descentMetres() const { return myDescentMetres; }

    [[nodiscard]] std::optional<double> lowestMetres() const { return myLowestMetres; }

    [[nodiscard]] std::optional<double> highestMetres() const { return myHighestMetres; }

    /// Between the first and the last time, breaks included.
    [[nodiscard]] std::optional<double> meanSpeedKmh() const { return myMeanSpeedKmh; }

    /// While moving.
    [[nodiscard]] std::optional<double> movingSpeedKmh() const { return myMovingSpeedKmh; }

    /// The highest speed of the points.
    [[nodiscard]] std::optional<double> highestSpeedKmh() const { return myHighestSpeedKmh; }

    /// The smallest box around the track, see LvTrackBounds; invalid without a valid position.
    [[nodiscard]] LvGeoPositionRect boundingBox() const { return myBoundingBox; }

    /// Every point with a valid position, in order.
    [[nodiscard]] const QList<LvTrackProfilePoint>& points() const { return myPoints; }

    [[nodiscard]] bool hasElevations() const { return myLowestMetres.has_value(); }

    [[nodiscard]] bool hasTimes() const { return myDurationSeconds.has_value(); }

private:
    void collectPoints(const LvGPXTrack& track);
    void summarizeElevations();
    void summarizeTimes();
    void summarizeSpeeds(qsizetype begin, qsizetype end);

    double myLengthKm = 0.0;
    QDateTime myStartTime;
    QDateTime myEndTime;
    std::optional<double> myDurationSeconds;
    std::optional<double> myMovingSeconds;
    std::optional<double> myAscentMetres;
    std::optional<double> myDescentMetres;
    std::optional<double> myLowestMetres;
    std::optional<double> myHighestMetres;
    std::optional<double> myMeanSpeedKmh;
    std::optional<double> myMovingSpeedKmh;
    std::optional<double> myHighestSpeedKmh;
    LvGeoPositionRect myBoundingBox;
    QList<LvTrackProfilePoint> myPoints;
};
