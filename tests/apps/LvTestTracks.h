#pragma once

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"

#include <QDateTime>
#include <QStringList>

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
