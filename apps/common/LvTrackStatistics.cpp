#include "LvTrackStatistics.h"

#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvTrackBounds.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr double secondsPerHour = 3600.0;
constexpr double msecsPerSecond = 1000.0;
constexpr double shortestDurationSeconds = 1.0;

/// Adds up climbs and descents between turning points. A turn is one only when the way back is no noise.
class ClimbCounter
{
public:
    void add(double metres)
    {
        if (myDirection == 0) {
            findDirection(metres);
        } else if ((metres - myTurn) * myDirection > 0.0) {
            myTurn = metres;
        } else if ((myTurn - metres) * myDirection >= LvTrackStatistics::noiseMetres) {
            count();
            myStart = myTurn;
            myTurn = metres;
            myDirection = -myDirection;
        }
    }

    /// Ends a run: what follows has no connection with what was before.
    void finishRun()
    {
        count();
        myDirection = 0;
        myIsStarted = false;
    }

    [[nodiscard]] double ascent() const { return myAscent; }

    [[nodiscard]] double descent() const { return myDescent; }

private:
    void findDirection(double metres)
    {
        myLowest = myIsStarted ? std::min(myLowest, metres) : metres;
        myHighest = myIsStarted ? std::max(myHighest, metres) : metres;
        myIsStarted = true;
        if (metres - myLowest >= LvTrackStatistics::noiseMetres) {
            myDirection = 1;
            myStart = myLowest;
        } else if (myHighest - metres >= LvTrackStatistics::noiseMetres) {
            myDirection = -1;
            myStart = myHighest;
        }
        myTurn = metres;
    }

    void count()
    {
        if (myDirection > 0) {
            myAscent += myTurn - myStart;
        } else if (myDirection < 0) {
            myDescent += myStart - myTurn;
        }
    }

    int myDirection = 0; // 1 up, -1 down, 0 while everything may be noise
    bool myIsStarted = false;
    double myLowest = 0.0;
    double myHighest = 0.0;
    double myStart = 0.0; // of the climb or descent that goes on
    double myTurn = 0.0; // its farthest point
    double myAscent = 0.0;
    double myDescent = 0.0;
};

bool hasTime(const LvTrackProfilePoint& point)
{
    return !std::isnan(point.elapsedSeconds);
}

/// Calls the function with the begin and the end of every run.
template <class Function>
void forEachRun(const QList<LvTrackProfilePoint>& points, Function function)
{
    qsizetype begin = 0;
    for (qsizetype i = 1; i <= points.size(); ++i) {
        if (i == points.size() || points.at(i).run != points.at(begin).run) {
            function(begin, i);
            begin = i;
        }
    }
}

} // namespace

LvTrackStatistics::LvTrackStatistics(const LvGPXTrack& track)
    : myBoundingBox(LvTrackBounds::ofElement(track))
{
    collectPoints(track);
    if (!myPoints.isEmpty()) {
        myLengthKm = myPoints.last().distanceKm;
    }
    summarizeElevations();
    summarizeTimes();
}

double LvTrackStatistics::lengthKm(const LvGPXTrack& track)
{
    double length = 0.0;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        const LvGeoPositionList positions = segment.allPoints();
        for (qsizetype i = 1; i < positions.size(); ++i) {
            if (positions.at(i - 1).isValid() && positions.at(i).isValid()) {
                length += positions.at(i - 1).distance(positions.at(i));
            }
        }
    }
    return length;
}

void LvTrackStatistics::collectPoints(const LvGPXTrack& track)
{
    const QList<LvGPXTrackSegment> segments = track.segments();
    myPoints.reserve(track.countPoints());
    int run = 0;
    for (const LvGPXTrackSegment& segment : segments) {
        bool isConnected = false;
        const QList<LvGPXTrackPoint> points = segment.trackPoints();
        for (const LvGPXTrackPoint& point : points) {
            if (!point.position().isValid()) {
                isConnected = false;
                continue;
            }
            LvTrackProfilePoint profilePoint;
            profilePoint.position = point.position();
            if (!myPoints.isEmpty()) {
                const LvTrackProfilePoint& before = myPoints.constLast();
                run += isConnected ? 0 : 1;
                profilePoint.distanceKm =
                    before.distanceKm + (isConnected ? before.position.distance(profilePoint.position) : 0.0);
            }
            profilePoint.run = run;
            if (point.elevation() != 0) {
                profilePoint.elevationMetres = point.elevation();
            }
            const QDateTime time = point.timeStamp();
            if (time.isValid() && !(myEndTime.isValid() && time < myEndTime)) {
                if (!myStartTime.isValid()) {
                    myStartTime = time;
                }
                myEndTime = time;
                profilePoint.elapsedSeconds = static_cast<double>(myStartTime.msecsTo(time)) / msecsPerSecond;
            }
            myPoints.append(profilePoint);
            isConnected = true;
        }
    }
}

void LvTrackStatistics::summarizeElevations()
{
    ClimbCounter climbs;
    forEachRun(myPoints, [&](qsizetype begin, qsizetype end) {
        for (qsizetype i = begin; i < end; ++i) {
            const double metres = myPoints.at(i).elevationMetres;
            if (!std::isnan(metres)) {
                myLowestMetres = std::min(metres, myLowestMetres.value_or(metres));
                myHighestMetres = std::max(metres, myHighestMetres.value_or(metres));
                climbs.add(metres);
            }
        }
        climbs.finishRun();
    });
    if (myLowestMetres) {
        myAscentMetres = climbs.ascent();
        myDescentMetres = climbs.descent();
    }
}

void LvTrackStatistics::summarizeTimes()
{
    const double duration = static_cast<double>(myStartTime.msecsTo(myEndTime)) / msecsPerSecond;
    if (!myStartTime.isValid() || duration < shortestDurationSeconds) {
        myStartTime = {};
        myEndTime = {};
        for (LvTrackProfilePoint& point : myPoints) {
            point.elapsedSeconds = LvTrackProfilePoint::none;
        }
        return;
    }
    myDurationSeconds = duration;
    myMovingSeconds = 0.0;
    double movingKm = 0.0;
    forEachRun(myPoints, [&](qsizetype begin, qsizetype end) {
        qsizetype before = -1;
        for (qsizetype i = begin; i < end; ++i) {
            if (!hasTime(myPoints.at(i))) {
                continue;
            }
            if (before >= 0) {
                const double seconds = myPoints.at(i).elapsedSeconds - myPoints.at(before).elapsedSeconds;
                const double kilometres = myPoints.at(i).distanceKm - myPoints.at(before).distanceKm;
                if (kilometres * secondsPerHour > restKmh * seconds) {
                    *myMovingSeconds += seconds;
                    movingKm += kilometres;
                }
            }
            before = i;
        }
        summarizeSpeeds(begin, end);
    });
    const auto first = std::find_if(myPoints.cbegin(), myPoints.cend(), hasTime);
    const auto last = std::find_if(myPoints.crbegin(), myPoints.crend(), hasTime);
    myMeanSpeedKmh = (last->distanceKm - first->distanceKm) / duration * secondsPerHour;
    if (*myMovingSeconds > 0.0) {
        myMovingSpeedKmh = movingKm / *myMovingSeconds * secondsPerHour;
    }
}

void LvTrackStatistics::summarizeSpeeds(qsizetype begin, qsizetype end)
{
    QList<qsizetype> timed;
    timed.reserve(end - begin);
    for (qsizetype i = begin; i < end; ++i) {
        if (hasTime(myPoints.at(i))) {
            timed.append(i);
        }
    }
    // Both ends of the window only ever move forwards, so this stays linear.
    qsizetype first = 0;
    qsizetype last = 0;
    for (qsizetype i = 0; i < timed.size(); ++i) {
        LvTrackProfilePoint& point = myPoints[timed.at(i)];
        const auto secondsAt = [&](qsizetype index) { return myPoints.at(timed.at(index)).elapsedSeconds; };
        while (first + 1 < i && point.elapsedSeconds - secondsAt(first + 1) >= speedWindowSeconds) {
            ++first;
        }
        last = std::max(last, i);
        while (last + 1 < timed.size() && secondsAt(last) - point.elapsedSeconds < speedWindowSeconds) {
            ++last;
        }
        const double seconds = secondsAt(last) - secondsAt(first);
        if (seconds > 0.0) {
            const double kilometres =
                myPoints.at(timed.at(last)).distanceKm - myPoints.at(timed.at(first)).distanceKm;
            point.speedKmh = kilometres / seconds * secondsPerHour;
            myHighestSpeedKmh = std::max(point.speedKmh, myHighestSpeedKmh.value_or(point.speedKmh));
        }
    }
}
