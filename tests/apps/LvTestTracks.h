#pragma once

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"

#include <QDateTime>
#include <QRandomGenerator>
#include <QStringList>

#include <limits>

/// Small tracks for the tests of the programs.
namespace LvTestTracks
{

inline LvGPXTrackPoint point(double latitude, double longitude, int elevation = 0,
                             const QDateTime& time = QDateTime(), const QString& description = QString())
{
    return {LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude)), elevation, time, description};
}

inline QDateTime utc(const QString& text)
{
    return QDateTime::fromString(text, Qt::ISODateWithMs).toUTC();
}

inline LvGPXTrack line(const QString& name, const QList<LvGPXTrackPoint>& points)
{
    return {name, QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::linestring};
}

/// A track of three points that depend on its name.
inline LvGPXConfiguredTrack named(const QString& name)
{
    const double shift = static_cast<double>(qHash(name, 0) % 1000) / 1000.0;
    return {line(name, {point(50 + shift, 8), point(51 + shift, 9), point(51 + shift, 10)}),
            LvGPXTrackConfiguration::defaultValue()};
}

inline LvGPXConfiguredTrackList list(const QStringList& names)
{
    LvGPXConfiguredTrackList tracks;
    for (const QString& name : names) {
        tracks.append(named(name));
    }
    return tracks;
}

/// Any text: with characters of each length in UTF-8, such as XML escapes, and such as it forbids.
inline QString randomText(QRandomGenerator& random)
{
    static const QString pieces =
        QStringLiteral("a <>&\"'\r\n\t]]>ü€\u0001\uFFFE") + QString::fromUtf8("😀") + QChar(0xD800);
    QString text;
    for (int length = random.bounded(30) - 10; length > 0; --length) {
        text += pieces.at(random.bounded(static_cast<int>(pieces.size())));
    }
    return text;
}

/// An angle of any kind: usual, short, tiny, huge, none.
inline double randomAngle(QRandomGenerator& random)
{
    switch (random.bounded(12)) {
    case 0:
        return random.bounded(-180, 181);
    case 1:
        return 1e-9 * random.bounded(-1000, 1000);
    case 2:
        return random.bounded(2) == 0 ? 1e300 : -1.7e308;
    case 3:
        return random.bounded(2) == 0 ? std::numeric_limits<double>::quiet_NaN()
                                      : -std::numeric_limits<double>::infinity();
    default:
        return random.generateDouble() * 360.0 - 180.0;
    }
}

/// A point that may have everything. Such with texts or milliseconds keep a segment from its compact form.
inline LvGPXTrackPoint randomPoint(QRandomGenerator& random, bool isRich)
{
    const qint64 day = 86400000;
    QDateTime time;
    if (random.bounded(3) != 0) {
        const qint64 days =
            random.bounded(20) == 0 ? random.bounded(-800000, 4000000) : random.bounded(20000);
        time = QDateTime::fromMSecsSinceEpoch(days * day + (isRich ? random.bounded(1000) : 0), Qt::UTC);
    }
    const int elevation =
        random.bounded(10) == 0 ? std::numeric_limits<int>::min() : random.bounded(-20, 3000);
    return point(randomAngle(random), randomAngle(random), random.bounded(2) == 0 ? elevation : 0, time,
                 isRich && random.bounded(2) == 0 ? randomText(random) : QString());
}

/// A track of any kind, with enclaves so deep.
inline LvGPXTrack randomTrack(QRandomGenerator& random, int depth)
{
    QList<LvGPXTrackSegment> segments;
    for (int count = random.bounded(4); count > 0; --count) {
        const bool isRich = random.bounded(2) == 0;
        QList<LvGPXTrackPoint> points;
        for (int index = random.bounded(60); index > 0; --index) {
            points.append(randomPoint(random, isRich));
        }
        segments.append(LvGPXTrackSegment(points));
    }
    LvGPXTrack track(randomText(random), randomText(random), segments, LvGPXTrackShapeEnum::polygon);
    for (int count = depth > 0 ? random.bounded(3) : 0; count > 0; --count) {
        track.addEnclave(randomTrack(random, depth - 1));
    }
    return track;
}

/// The names in order, joined: "A B C".
inline QString names(const LvGPXConfiguredTrackList& tracks)
{
    QStringList result;
    for (const LvGPXConfiguredTrack& track : tracks) {
        result.append(track.name());
    }
    return result.join(QLatin1Char(' '));
}

} // namespace LvTestTracks
