// Positions by the million: what a large track costs before anything is drawn.

#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvLongitudeList.h"
#include "LvMapProjection.h"

#include <QRandomGenerator>

#include <benchmark/benchmark.h>
#include <vector>

namespace
{

constexpr quint32 seed = 20240521;
constexpr int smallCount = 1000;
constexpr int largeCount = 1000000;

struct Degrees {
    double latitude;
    double longitude;
};

/// A walk like that of a track, starting in Bremen: steps of some ten metres.
std::vector<Degrees> walk(qint64 count)
{
    constexpr double stepDegrees = 0.0005;
    QRandomGenerator random(seed);
    std::vector<Degrees> result;
    result.reserve(static_cast<size_t>(count));
    Degrees place{53.0792962, 8.806422};
    for (qint64 i = 0; i < count; ++i) {
        place.latitude += (random.generateDouble() - 0.5) * stepDegrees;
        place.longitude += (random.generateDouble() - 0.5) * stepDegrees;
        result.push_back(place);
    }
    return result;
}

LvGeoPositionList walkedPositions(qint64 count)
{
    LvGeoPositionList result;
    result.reserve(count);
    for (const Degrees& place : walk(count))
        result.append(LvGeoPosition(place.latitude, place.longitude));
    return result;
}

void countItems(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void createPositions(benchmark::State& state)
{
    const std::vector<Degrees> places = walk(state.range(0));
    for (auto _ : state) {
        LvGeoPositionList positions;
        positions.reserve(state.range(0));
        for (const Degrees& place : places)
            positions.append(LvGeoPosition(place.latitude, place.longitude));
        benchmark::DoNotOptimize(positions.constData());
    }
    countItems(state);
}

BENCHMARK(createPositions)->Arg(smallCount)->Arg(largeCount);

void createDefaultPositions(benchmark::State& state)
{
    for (auto _ : state) {
        const std::vector<LvGeoPosition> positions(static_cast<size_t>(state.range(0)));
        benchmark::DoNotOptimize(positions.data());
    }
    countItems(state);
}

BENCHMARK(createDefaultPositions)->Arg(smallCount)->Arg(largeCount);

void copyPositions(benchmark::State& state)
{
    const LvGeoPositionList positions = walkedPositions(state.range(0));
    for (auto _ : state) {
        const std::vector<LvGeoPosition> copy(positions.cbegin(), positions.cend());
        benchmark::DoNotOptimize(copy.data());
    }
    countItems(state);
}

BENCHMARK(copyPositions)->Arg(smallCount)->Arg(largeCount);

void detachPositions(benchmark::State& state)
{
    const LvGeoPositionList positions = walkedPositions(state.range(0));
    for (auto _ : state) {
        for (const LvGeoPosition& position : positions) {
            LvGeoPosition copy = position;
            copy.setLongitude(0.0);
            benchmark::DoNotOptimize(copy);
        }
    }
    countItems(state);
}

BENCHMARK(detachPositions)->Arg(smallCount);

void readAngles(benchmark::State& state)
{
    const LvGeoPositionList positions = walkedPositions(state.range(0));
    for (auto _ : state) {
        double sum = 0.0;
        for (const LvGeoPosition& position : positions)
            sum += position.latitude().decimalDegrees() + position.longitude().decimalDegrees();
        benchmark::DoNotOptimize(sum);
    }
    countItems(state);
}

BENCHMARK(readAngles)->Arg(smallCount)->Arg(largeCount);

void distanceBetweenNeighbours(benchmark::State& state)
{
    const LvGeoPositionList positions = walkedPositions(state.range(0));
    for (auto _ : state) {
        double kilometres = 0.0;
        for (qsizetype i = 1; i < positions.size(); ++i)
            kilometres += positions.at(i - 1).distance(positions.at(i));
        benchmark::DoNotOptimize(kilometres);
    }
    countItems(state);
}

BENCHMARK(distanceBetweenNeighbours)->Arg(smallCount)->Arg(largeCount);

void boundingBoxOfList(benchmark::State& state)
{
    const LvGeoPositionList positions = walkedPositions(state.range(0));
    for (auto _ : state) {
        const LvGeoPositionRect box = positions.boundingBox();
        benchmark::DoNotOptimize(&box);
    }
    countItems(state);
}

BENCHMARK(boundingBoxOfList)->Arg(smallCount)->Arg(largeCount);

void effectiveRangeAcrossTheDateLine(benchmark::State& state)
{
    QRandomGenerator random(seed);
    LvLongitudeList longitudes;
    longitudes.reserve(state.range(0));
    for (qint64 i = 0; i < state.range(0); ++i)
        longitudes.append(LvLongitude(170.0 + random.generateDouble() * 20.0).normalized());
    for (auto _ : state) {
        const LvRange<LvLongitude> range = longitudes.effectiveRange();
        benchmark::DoNotOptimize(&range);
    }
    countItems(state);
}

BENCHMARK(effectiveRangeAcrossTheDateLine)->Arg(smallCount)->Arg(largeCount);

void projectPositions(benchmark::State& state)
{
    const LvGeoPositionList positions = walkedPositions(state.range(0));
    const LvMapProjection projection(positions.boundingBox(), QSize(1920, 1080));
    for (auto _ : state) {
        double sum = 0.0;
        for (const LvGeoPosition& position : positions)
            sum += projection.projectate(position).x();
        benchmark::DoNotOptimize(sum);
    }
    countItems(state);
}

BENCHMARK(projectPositions)->Arg(smallCount)->Arg(largeCount);

} // namespace
