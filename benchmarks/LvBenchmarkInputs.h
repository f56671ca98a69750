#pragma once

#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QString>

#include <vector>

/**
 * The files and points that the benchmarks work on, the same ones on every machine.
 *
 * The files are written once into a folder of the build and kept there, each under a name that tells its
 * size. A file that cannot be written ends the program.
 */
class LvBenchmarkInputs
{
public:
    /// A place of the walk, in decimal degrees.
    struct Degrees {
        double latitude;
        double longitude;
    };

    explicit LvBenchmarkInputs(const QDir& folder);

    /// A walk that keeps its direction for a while, as people and vehicles do, in steps of some ten metres.
    [[nodiscard]] static std::vector<Degrees> walk(qint64 count, quint32 seed);
    [[nodiscard]] static std::vector<Degrees> walk(qint64 count);

    /// GPX 1.1 as most programs write it, with elevation and time, about 99 bytes per point.
    [[nodiscard]] QFileInfo gpx(qint64 points, int tracks = 1) const;

    /// With the track-point extensions of sports watches and their long numbers, about 400 bytes per point.
    [[nodiscard]] QFileInfo gpxWithExtensions(qint64 points) const;

    /// A collection of tours: files of the plain kind that share the points.
    [[nodiscard]] QList<QFileInfo> collection(int files, qint64 points) const;

    /// The dialect with all points in one text, written by the library.
    [[nodiscard]] QFileInfo compactGpx(qint64 points) const;

    /// One placemark with one line.
    [[nodiscard]] QFileInfo kml(qint64 points) const;

private:
    QDir myFolder;
};
