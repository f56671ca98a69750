// Files: reading standard and compact GPX, KML and many small files, writing, and the text form of points.

#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoPosition.h"
#include "LvTrackSelectionFactoryKmlFile.h"
#include "LvXMLBuilder.h"

#include <QDateTime>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <utility>

namespace
{

constexpr quint32 seed = 20240521;
constexpr int smallCount = 1000;
constexpr int largeCount = 100000;

/// A walk with heights and times, starting in Bremen: steps of some ten metres, one each second.
LvGPXTrack walk(qint64 count)
{
    constexpr double stepDegrees = 0.0005;
    constexpr qint64 startSeconds = 1700000000;
    QRandomGenerator random(seed);
    QList<LvGPXTrackPoint> points;
    points.reserve(count);
    double latitude = 53.0792962;
    double longitude = 8.806422;
    for (qint64 i = 0; i < count; ++i) {
        latitude += (random.generateDouble() - 0.5) * stepDegrees;
        longitude += (random.generateDouble() - 0.5) * stepDegrees;
        points.append(LvGPXTrackPoint(LvGeoPosition(latitude, longitude), 1 + random.bounded(100),
                                      QDateTime::fromSecsSinceEpoch(startSeconds + i, Qt::UTC), QString()));
    }
    return {QStringLiteral("walk"), QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::linestring};
}

/// As other programs write them: one element per point.
void writeStandardGpx(const QFileInfo& file, const LvGPXTrack& track)
{
    QDomDocument document;
    const QDomElement gpx = LvXMLBuilder::buildRootElement(document, QStringLiteral("gpx"));
    const QDomElement trk = LvXMLBuilder::buildDomElement(gpx, QStringLiteral("trk"));
    LvXMLBuilder::buildDomElement(trk, QStringLiteral("name"), track.name());
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        QDomElement trkseg = LvXMLBuilder::buildDomElement(trk, QStringLiteral("trkseg"));
        const QList<LvGPXTrackPoint> points = segment.trackPoints();
        for (const LvGPXTrackPoint& point : points) {
            point.toXml(trkseg);
        }
    }
    LvXMLBuilder::saveUTF8(document, file);
}

void writeKml(const QFileInfo& file, const LvGPXTrack& track)
{
    QFile device(file.filePath());
    if (device.open(QIODevice::WriteOnly)) {
        device.write("<kml><Document><Placemark><name>walk</name><LineString><coordinates>");
        device.write(track.segments().constFirst().toKml().toUtf8());
        device.write("</coordinates></LineString></Placemark></Document></kml>");
    }
}

QFileInfo fileIn(const QTemporaryDir& folder, const QString& name)
{
    return QFileInfo(folder.filePath(name));
}

void countPoints(benchmark::State& state, qint64 points)
{
    state.SetItemsProcessed(state.iterations() * points);
}

void countBytes(benchmark::State& state, const QFileInfo& file)
{
    state.SetBytesProcessed(state.iterations() * QFileInfo(file.filePath()).size());
}

void readGpx(benchmark::State& state, const QFileInfo& file)
{
    for (auto _ : state) {
        const QList<LvGPXTrack> tracks = LvGPXTrackFile(file).tracks();
        if (tracks.size() != 1 || tracks.constFirst().countPoints() != state.range(0)) {
            state.SkipWithError("points are missing");
            break;
        }
    }
    countPoints(state, state.range(0));
    countBytes(state, file);
}

void readStandardGpx(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QFileInfo file = fileIn(folder, QStringLiteral("standard.gpx"));
    writeStandardGpx(file, walk(state.range(0)));
    readGpx(state, file);
}

BENCHMARK(readStandardGpx)->Arg(smallCount)->Arg(largeCount)->Unit(benchmark::kMillisecond);

void readCompactGpx(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QFileInfo file = fileIn(folder, QStringLiteral("compact.gpx"));
    walk(state.range(0)).saveAsGpxFile(file);
    readGpx(state, file);
}

BENCHMARK(readCompactGpx)->Arg(smallCount)->Arg(largeCount)->Unit(benchmark::kMillisecond);

void readKml(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QFileInfo file = fileIn(folder, QStringLiteral("walk.kml"));
    writeKml(file, walk(state.range(0)));
    const LvTrackSelectionFactoryKmlFile factory;
    for (auto _ : state) {
        const LvGPXConfiguredTrackList tracks = factory.createConfiguredTrackList(file);
        if (tracks.count() != 1 || tracks.at(0).track().countPoints() != state.range(0)) {
            state.SkipWithError("points are missing");
            break;
        }
    }
    countPoints(state, state.range(0));
    countBytes(state, file);
}

BENCHMARK(readKml)->Arg(smallCount)->Arg(largeCount)->Unit(benchmark::kMillisecond);

/// A collection of tours: 700 files of 150 points each.
void readManyFiles(benchmark::State& state)
{
    constexpr int fileCount = 700;
    constexpr int pointsPerFile = 150;
    const QTemporaryDir folder;
    const LvGPXTrack track = walk(pointsPerFile);
    QList<QFileInfo> files;
    for (int number = 0; number < fileCount; ++number) {
        files.append(fileIn(folder, QStringLiteral("%1.gpx").arg(number)));
        writeStandardGpx(files.constLast(), track);
    }
    for (auto _ : state) {
        qint64 points = 0;
        for (const QFileInfo& file : std::as_const(files)) {
            points += LvGPXTrackFile(file).tracks().constFirst().countPoints();
        }
        benchmark::DoNotOptimize(points);
    }
    countPoints(state, qint64{fileCount} * pointsPerFile);
}

BENCHMARK(readManyFiles)->Unit(benchmark::kMillisecond);

void writeCompactGpx(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QFileInfo file = fileIn(folder, QStringLiteral("compact.gpx"));
    const LvGPXTrack track = walk(state.range(0));
    for (auto _ : state) {
        track.saveAsGpxFile(file);
    }
    countPoints(state, state.range(0));
    countBytes(state, file);
}

BENCHMARK(writeCompactGpx)->Arg(smallCount)->Arg(largeCount)->Unit(benchmark::kMillisecond);

/// The text form of points without any file or XML around it.
void encodePoints(benchmark::State& state)
{
    const LvGPXTrackSegment segment = walk(state.range(0)).segments().constFirst();
    for (auto _ : state) {
        const QString text = segment.toKml();
        benchmark::DoNotOptimize(text.constData());
    }
    countPoints(state, state.range(0));
}

BENCHMARK(encodePoints)->Arg(smallCount)->Arg(largeCount)->Unit(benchmark::kMicrosecond);

void decodePoints(benchmark::State& state)
{
    const QString text = walk(state.range(0)).segments().constFirst().toKml();
    for (auto _ : state) {
        const QList<LvGPXTrackPoint> points = LvGPXTrackSegment::decodeTrackPoints(text);
        benchmark::DoNotOptimize(points.constData());
    }
    countPoints(state, state.range(0));
}

BENCHMARK(decodePoints)->Arg(smallCount)->Arg(largeCount)->Unit(benchmark::kMicrosecond);

} // namespace
