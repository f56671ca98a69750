// Memory: what a track keeps per point and the most that reading takes, each file in a process of its own.
// With --read=FILE the program is such a process: it reads the file and prints what it holds.

#include "LvBenchmarkInputs.h"
#include "LvBenchmarkProgram.h"
#include "LvChildProcess.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"
#include "LvTrackSelectionFactoryKmlFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <cstdio>
#include <malloc.h>
#include <optional>
#include <utility>

namespace
{

constexpr double bytesPerMebibyte = 1024.0 * 1024.0;
constexpr double allowedBeside = 16.0 * bytesPerMebibyte;
constexpr double allowedPerPoint = 150.0;
constexpr qint64 smallPoints = 100;

struct Usage {
    qint64 kept; ///< bytes of resident memory that stay as long as the tracks are held
    qint64 allocated; ///< the same as the allocator of the C library sees it, its own records not included
    qint64 peak; ///< the most of resident memory at any time, less what was there before
    qint64 points;
};

/// A line of the kernel's record of this process, in bytes.
qint64 ownStatus(const char* key)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(key)) {
            return line.mid(static_cast<qsizetype>(qstrlen(key)))
                       .simplified()
                       .split(' ')
                       .value(0)
                       .toLongLong()
                * 1024;
        }
    }
    return 0;
}

qint64 allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

/// @param small read before, so that the pages of the libraries themselves are not counted
int readAndTell(const QFileInfo& file, const QFileInfo& small)
{
    static_cast<void>(LvGPXTrackFile(small).tracks());
    static_cast<void>(LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(small));
    malloc_trim(0);
    const qint64 before = ownStatus("VmRSS:");
    const qint64 allocatedBefore = allocatedBytes();
    QList<LvGPXTrack> tracks;
    if (file.suffix() == QLatin1String("kml")) {
        const LvGPXConfiguredTrackList read =
            LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(file);
        for (const LvGPXConfiguredTrack& track : read) {
            tracks.append(track.track());
        }
    } else {
        tracks = LvGPXTrackFile(file).tracks();
    }
    malloc_trim(0); // what is free already is no longer kept
    const qint64 kept = ownStatus("VmRSS:") - before;
    const qint64 allocated = allocatedBytes() - allocatedBefore;
    const qint64 peak = ownStatus("VmHWM:") - before;
    qint64 points = 0;
    for (const LvGPXTrack& track : std::as_const(tracks)) {
        points += track.countPoints();
    }
    std::printf("%lld %lld %lld %lld\n", kept, allocated, peak, points);
    return 0;
}

std::optional<Usage> usageOfReading(const LvBenchmarkProgram& program, const QFileInfo& file)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--read=%1").arg(file.filePath()),
                   QStringLiteral("--inputs=%1").arg(program.inputFolder().path())});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        return {};
    }
    const QList<QByteArray> numbers = process.readAllStandardOutput().simplified().split(' ');
    if (numbers.size() != 4) {
        return {};
    }
    return Usage{numbers[0].toLongLong(), numbers[1].toLongLong(), numbers[2].toLongLong(),
                 numbers[3].toLongLong()};
}

QString mebibytes(double bytes)
{
    return QStringLiteral("%1 MiB").arg(bytes / bytesPerMebibyte, 0, 'f', 1);
}

void measure(LvBenchmarkProgram& program, const QString& kind, const QFileInfo& file, qint64 points)
{
    const std::optional<Usage> usage = usageOfReading(program, file);
    if (!usage || usage->points != points) {
        program.fail(QStringLiteral("%1 was not read completely.").arg(file.filePath()));
        return;
    }
    const double perPoint = static_cast<double>(usage->kept) / static_cast<double>(points);
    program.addFact(QStringLiteral("%1: kept per point").arg(kind), QStringLiteral("resident memory"),
                    QStringLiteral("≤ 150 bytes"), QStringLiteral("%1 bytes").arg(perPoint, 0, 'f', 1),
                    perPoint <= allowedPerPoint);
    program.addFact(QStringLiteral("%1: kept per point").arg(kind),
                    QStringLiteral("of it from the C allocator"), QString(),
                    QStringLiteral("%1 bytes")
                        .arg(static_cast<double>(usage->allocated) / static_cast<double>(points), 0, 'f', 1),
                    true);
    const double allowed =
        static_cast<double>(usage->kept) + static_cast<double>(file.size()) + allowedBeside;
    program.addFact(QStringLiteral("%1: peak while reading").arg(kind),
                    QStringLiteral("kept + file size + 16 MiB"),
                    QStringLiteral("≤ %1").arg(mebibytes(allowed)),
                    mebibytes(static_cast<double>(usage->peak)), static_cast<double>(usage->peak) <= allowed);
}

void measurePeer(LvBenchmarkProgram& program, const QString& name, const QStringList& arguments)
{
    const QString path = QStandardPaths::findExecutable(name);
    if (path.isEmpty()) {
        return;
    }
    const LvChildUsage usage = LvChildProcess::run(path, arguments);
    if (!usage.hasSucceeded) {
        program.fail(QStringLiteral("%1 failed.").arg(name));
        return;
    }
    program.addFact(QStringLiteral("%1: peak of its process").arg(name), QStringLiteral("GPX, 1 track"),
                    QString(), mebibytes(static_cast<double>(usage.peakBytes)), true);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    LvBenchmarkProgram program(argc, argv);
    const LvBenchmarkInputs inputs(program.inputFolder());
    const QString read = program.argument(QStringLiteral("--read="));
    if (!read.isEmpty()) {
        return readAndTell(QFileInfo(read), inputs.gpx(smallPoints));
    }
    const qint64 points = program.points();
    const QFileInfo one = inputs.gpx(points);
    measure(program, QStringLiteral("GPX, 1 track"), one, points);
    measure(program, QStringLiteral("GPX, 1,000 tracks"), inputs.gpx(points, 1000), points);
    measure(program, QStringLiteral("GPX with Garmin extensions"), inputs.gpxWithExtensions(points), points);
    measurePeer(program, QStringLiteral("gpsbabel"),
                {QStringLiteral("-t"), QStringLiteral("-i"), QStringLiteral("gpx"), QStringLiteral("-f"),
                 one.filePath()});
    measurePeer(
        program, QStringLiteral("ogrinfo"),
        {QStringLiteral("-ro"), QStringLiteral("-so"), one.filePath(), QStringLiteral("track_points")});
    return program.run();
}
