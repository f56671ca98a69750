// Drawing: long tracks at several zooms, many tracks, areas, and the fading of a map outside of the tracks.

#include "LvGPXConfiguredTrack.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackRenderer.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"
#include "LvMapProjection.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QRandomGenerator>

#include <benchmark/benchmark.h>
#include <cmath>
#include <numbers>

namespace
{

constexpr quint32 seed = 20240521;
const QSize pictureSize(1280, 800);

/// What the picture shows: the larger, the farther away.
enum Zoom { Street, Region, World };

LvGeoPositionRect shownBox(Zoom zoom)
{
    switch (zoom) {
    case Street:
        return {LvGeoPosition(53.05, 8.76), LvGeoPosition(53.10, 8.86)};
    case Region:
        return {LvGeoPosition(52.0, 7.0), LvGeoPosition(54.0, 11.0)};
    case World:
        break;
    }
    return {LvGeoPosition(-60.0, -179.0), LvGeoPosition(75.0, 179.0)};
}

class MapRenderer : public LvGPXTrackRenderer
{
public:
    MapRenderer(const LvGPXTrackSelection& selection, const QSize& size, const LvGeoPositionRect& box)
        : LvGPXTrackRenderer(selection, size, 1.0)
        , myProjection(box, size)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        return myProjection.projectate(position);
    }

private:
    LvMapProjection myProjection;
};

/// A walk around a place in Bremen that keeps its direction for a while, as people and vehicles do.
LvGPXTrack walk(QRandomGenerator& random, qint64 count, LvGPXTrackShapeEnum shape)
{
    constexpr double stepDegrees = 0.0002;
    double latitude = 53.0792962 + (random.generateDouble() - 0.5) * 0.2;
    double longitude = 8.806422 + (random.generateDouble() - 0.5) * 0.4;
    double direction = 2.0 * std::numbers::pi * random.generateDouble();
    QList<LvGPXTrackPoint> points;
    points.reserve(count);
    for (qint64 i = 0; i < count; ++i) {
        direction += (random.generateDouble() - 0.5) * 0.4;
        latitude += stepDegrees * std::sin(direction);
        longitude += stepDegrees * std::cos(direction);
        points.append(LvGPXTrackPoint(LvGeoPosition(latitude, longitude), 0, QDateTime(), QString()));
    }
    return {QStringLiteral("walk"), QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShape(shape)};
}

LvGPXTrackSelection walks(qint64 tracks, qint64 pointsPerTrack,
                          LvGPXTrackShapeEnum shape = LvGPXTrackShapeEnum::linestring, int smoothing = 100)
{
    LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    configuration.setTrackShape(shape);
    configuration.setLineWidth(3.0);
    configuration.setHaloWidth(4.0);
    configuration.setSmoothingStrength(smoothing);
    QRandomGenerator random(seed);
    LvGPXTrackSelection selection;
    for (qint64 i = 0; i < tracks; ++i) {
        selection.addTrack(LvGPXConfiguredTrack(walk(random, pointsPerTrack, shape), configuration));
    }
    return selection;
}

void countPoints(benchmark::State& state, qint64 points)
{
    state.SetItemsProcessed(state.iterations() * points);
}

void render(benchmark::State& state, const LvGPXTrackSelection& selection, Zoom zoom, qint64 points)
{
    const MapRenderer renderer(selection, pictureSize, shownBox(zoom));
    for (auto _ : state) {
        const QImage image = renderer.render(TrackRenderOption::Normal);
        benchmark::DoNotOptimize(image.constBits());
    }
    countPoints(state, points);
}

void longTrack(benchmark::State& state)
{
    const qint64 points = state.range(0);
    render(state, walks(1, points), static_cast<Zoom>(state.range(1)), points);
}

BENCHMARK(longTrack)
    ->ArgNames({"points", "zoom"})
    ->ArgsProduct({{10000, 100000}, {Street, Region, World}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void millionPoints(benchmark::State& state)
{
    constexpr qint64 points = 1000000;
    render(state, walks(1, points), static_cast<Zoom>(state.range(0)), points);
}

BENCHMARK(millionPoints)
    ->ArgName("zoom")
    ->Arg(Region)
    ->Arg(World)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void thousandTracksOfThousandPoints(benchmark::State& state)
{
    render(state, walks(1000, 1000), static_cast<Zoom>(state.range(0)), 1000 * 1000);
}

BENCHMARK(thousandTracksOfThousandPoints)
    ->ArgName("zoom")
    ->Arg(Street)
    ->Arg(Region)
    ->Arg(World)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void area(benchmark::State& state)
{
    const qint64 points = state.range(0);
    render(state, walks(1, points, LvGPXTrackShapeEnum::polygon), Region, points);
}

BENCHMARK(area)->ArgName("points")->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From the track to its path, before anything is painted: gathering, date line, projection, thinning.
void painterPath(benchmark::State& state)
{
    const qint64 points = state.range(0);
    const int smoothing = static_cast<int>(state.range(1));
    const LvGPXTrackSelection selection = walks(1, points, LvGPXTrackShapeEnum::linestring, smoothing);
    const MapRenderer renderer(selection, pictureSize, shownBox(Region));
    const LvGPXConfiguredTrack track = selection.value(0);
    for (auto _ : state) {
        const QPainterPath path = renderer.createPainterPath(track);
        benchmark::DoNotOptimize(path.elementCount());
    }
    countPoints(state, points);
}

BENCHMARK(painterPath)
    ->ArgNames({"points", "smoothing"})
    ->ArgsProduct({{1000, 100000}, {100, 50}})
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

/// Pixels per second of the fading, the drawing of its mask included.
void crop(benchmark::State& state)
{
    const QSize size(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)));
    LvGPXTrackSelection selection = walks(1, 5000);
    selection.setCroppingOpacity(80);
    const MapRenderer renderer(selection, size, shownBox(Region));
    QImage background(size, QImage::Format_ARGB32);
    background.fill(Qt::darkGreen);
    for (auto _ : state) {
        const QImage image = renderer.crop(background);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetItemsProcessed(state.iterations() * size.width() * size.height());
}

BENCHMARK(crop)->ArgName("side")->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

// The loops fan out only where there is an application whose main thread asks.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
