// Files: reading and writing GPX and KML, compared with what merely walking through the bytes costs and with
// other programs. With --write=FILE the program only writes a compact file, so that two runs of it can be
// compared.

#include "LvBenchmarkInputs.h"
#include "LvBenchmarkProgram.h"
#include "LvChildProcess.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvTrackSelectionFactoryKmlFile.h"
#include "LvXMLLoader.h"

#include <QCoreApplication>
#include <QDomElement>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

#include <utility>

#ifdef LV_HAS_EXPAT
#include <expat.h>
#endif
#ifdef LV_HAS_GDAL
#include <gdal.h>
#include <ogr_api.h>
#endif

namespace
{

constexpr int manyTracks = 1000;
constexpr int collectionFiles = 700;
constexpr int pointsPerCollectionFile = 240;

qint64 countPoints(const QList<LvGPXTrack>& tracks)
{
    qint64 count = 0;
    for (const LvGPXTrack& track : tracks) {
        count += track.countPoints();
    }
    return count;
}

/// Reading alone: the tracks are released while the clock stands still.
void readGpx(benchmark::State& state, const QList<QFileInfo>& files, qint64 points)
{
    for (auto _ : state) {
        QList<LvGPXTrack> tracks;
        for (const QFileInfo& file : files) {
            tracks += LvGPXTrackFile(file).tracks();
        }
        state.PauseTiming();
        if (countPoints(tracks) != points) {
            state.SkipWithError("points are missing");
            break;
        }
        tracks.clear();
        state.ResumeTiming();
    }
}

void readAndReleaseGpx(benchmark::State& state, const QFileInfo& file)
{
    for (auto _ : state) {
        const LvGPXTrackFile tracks(file);
        benchmark::DoNotOptimize(&tracks);
    }
}

/// The general way, for documents of any kind.
void readGpxAsTree(benchmark::State& state, const QFileInfo& file, qint64 points)
{
    for (auto _ : state) {
        int counter = 0;
        QDomElement root = LvXMLLoader::loadDocumentElement(file);
        QList<LvGPXTrack> tracks = LvGPXTrackFile::readTracks(root, QStringLiteral("trk"), counter, file);
        state.PauseTiming();
        if (countPoints(tracks) != points) {
            state.SkipWithError("points are missing");
            break;
        }
        root = {};
        tracks.clear();
        state.ResumeTiming();
    }
}

void readKml(benchmark::State& state, const QFileInfo& file, qint64 points)
{
    const LvTrackSelectionFactoryKmlFile factory;
    for (auto _ : state) {
        LvGPXConfiguredTrackList tracks = factory.createConfiguredTrackList(file);
        state.PauseTiming();
        if (tracks.count() != 1 || tracks.at(0).track().countPoints() != points) {
            state.SkipWithError("points are missing");
            break;
        }
        tracks = {};
        state.ResumeTiming();
    }
}

#ifdef LV_HAS_EXPAT
void ignoreStart(void*, const XML_Char*, const XML_Char**)
{
}

void ignoreEnd(void*, const XML_Char*)
{
}

void ignoreText(void*, const XML_Char*, int)
{
}
#endif

/// What an XML parser in C takes to see all tags and texts of the file, without doing anything about them.
void walkWithExpat([[maybe_unused]] benchmark::State& state, [[maybe_unused]] const QList<QFileInfo>& files)
{
#ifdef LV_HAS_EXPAT
    constexpr int atOnce = 1 << 16;
    for (auto _ : state) {
        for (const QFileInfo& info : files) {
            QFile file(info.filePath());
            XML_Parser parser = XML_ParserCreate(nullptr);
            XML_SetElementHandler(parser, ignoreStart, ignoreEnd);
            XML_SetCharacterDataHandler(parser, ignoreText);
            bool isGood = file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
            bool isAtEnd = false;
            while (isGood && !isAtEnd) {
                const qint64 size = file.read(static_cast<char*>(XML_GetBuffer(parser, atOnce)), atOnce);
                isAtEnd = size <= 0;
                isGood = size >= 0
                    && XML_ParseBuffer(parser, static_cast<int>(size), isAtEnd ? XML_TRUE : XML_FALSE)
                        == XML_STATUS_OK;
            }
            XML_ParserFree(parser);
            if (!isGood) {
                state.SkipWithError("the file is not well-formed");
                return;
            }
        }
    }
#endif
}

/// All features of one layer, each of them with its geometry.
void readWithGdal([[maybe_unused]] benchmark::State& state, [[maybe_unused]] const QFileInfo& file,
                  [[maybe_unused]] const char* driver, [[maybe_unused]] const char* layerName)
{
#ifdef LV_HAS_GDAL
    const QByteArray path = file.filePath().toLocal8Bit();
    const char* const drivers[] = {driver, nullptr};
    for (auto _ : state) {
        GDALDatasetH source =
            GDALOpenEx(path.constData(), GDAL_OF_VECTOR, std::begin(drivers), nullptr, nullptr);
        OGRLayerH layer = source == nullptr ? nullptr
            : layerName == nullptr          ? GDALDatasetGetLayer(source, 0)
                                            : GDALDatasetGetLayerByName(source, layerName);
        if (layer == nullptr) {
            state.SkipWithError("the layer is missing");
            return;
        }
        qint64 features = 0;
        while (OGRFeatureH feature = OGR_L_GetNextFeature(layer)) {
            ++features;
            OGR_F_Destroy(feature);
        }
        benchmark::DoNotOptimize(features);
        GDALClose(source);
    }
#endif
}

void writeCompact(benchmark::State& state, const LvGPXTrack& track, const QFileInfo& file)
{
    for (auto _ : state) {
        track.saveAsGpxFile(file);
    }
}

/// The same way to the disk for bytes that are ready.
void writeReadyBytes(benchmark::State& state, const QByteArray& bytes, const QFileInfo& info)
{
    for (auto _ : state) {
        QSaveFile file(info.filePath());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
            state.SkipWithError("the file cannot be written");
            break;
        }
    }
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Two processes of their own, because what differs from run to run are the seeds of the hash tables.
bool writesSameBytes(const LvBenchmarkProgram& program, const QDir& folder)
{
    QList<QByteArray> written;
    for (const char* name : {"first.gpx", "second.gpx"}) {
        const QString path = folder.filePath(QString::fromLatin1(name));
        QStringList arguments{QStringLiteral("--write=%1").arg(path),
                              QStringLiteral("--inputs=%1").arg(program.inputFolder().path())};
        if (program.isQuick()) {
            arguments.append(QStringLiteral("--quick"));
        }
        if (!LvChildProcess::run(QCoreApplication::applicationFilePath(), arguments).hasSucceeded) {
            return false;
        }
        written.append(contentsOf(path));
    }
    return !written.constFirst().isEmpty() && written.constFirst() == written.constLast();
}

void addGpx(LvBenchmarkProgram& program, const LvBenchmarkInputs& inputs)
{
    const qint64 points = program.points();
    const QString floor = QStringLiteral("expat, empty handlers");

    const QFileInfo one = inputs.gpx(points);
    const QFileInfo many = inputs.gpx(points, manyTracks);
    const QFileInfo extended = inputs.gpxWithExtensions(points);
    const auto addReading = [&program](const QString& name, const QList<QFileInfo>& files, qint64 count) {
        program.add(name, count, [files, count](benchmark::State& state) { readGpx(state, files, count); });
    };
    const auto addFloor = [&program](const QString& name, const QList<QFileInfo>& files, qint64 count) {
#ifdef LV_HAS_EXPAT
        program.add(name, count, [files](benchmark::State& state) { walkWithExpat(state, files); });
#else
        Q_UNUSED(program)
        Q_UNUSED(name)
        Q_UNUSED(files)
        Q_UNUSED(count)
#endif
    };
    addReading(QStringLiteral("gpx/read"), {one}, points);
    addReading(QStringLiteral("gpx/read/tracks"), {many}, points);
    addReading(QStringLiteral("gpx/read/extensions"), {extended}, points);
    addFloor(QStringLiteral("gpx/expat"), {one}, points);
    addFloor(QStringLiteral("gpx/expat/tracks"), {many}, points);
    addFloor(QStringLiteral("gpx/expat/extensions"), {extended}, points);
    program.addRatio(QStringLiteral("GPX, 1 track"), QStringLiteral("gpx/read"), floor,
                     QStringLiteral("gpx/expat"), 1.0);
    program.addRatio(QStringLiteral("GPX, 1,000 tracks"), QStringLiteral("gpx/read/tracks"), floor,
                     QStringLiteral("gpx/expat/tracks"), 1.0);
    program.addRatio(QStringLiteral("GPX with Garmin extensions"), QStringLiteral("gpx/read/extensions"),
                     floor, QStringLiteral("gpx/expat/extensions"), 0.6);

    program.add(QStringLiteral("gpx/release"), points,
                [one](benchmark::State& state) { readAndReleaseGpx(state, one); });
    program.addRatio(QStringLiteral("GPX, 1 track, and releasing it"), QStringLiteral("gpx/release"), floor,
                     QStringLiteral("gpx/expat"));

    // The tree of a million points takes gigabytes.
    const qint64 treePoints = points / 10;
    const QFileInfo tenth = inputs.gpx(treePoints);
    program.add(QStringLiteral("gpx/tree"), treePoints,
                [tenth, treePoints](benchmark::State& state) { readGpxAsTree(state, tenth, treePoints); });
    addFloor(QStringLiteral("gpx/expat/tenth"), {tenth}, treePoints);
    program.addRatio(QStringLiteral("the general way, through a DOM tree (a tenth of the points)"),
                     QStringLiteral("gpx/tree"), floor, QStringLiteral("gpx/expat/tenth"));
#ifdef LV_HAS_GDAL
    program.add(QStringLiteral("gpx/gdal/tracks"), points,
                [one](benchmark::State& state) { readWithGdal(state, one, "GPX", "tracks"); });
    program.add(QStringLiteral("gpx/gdal/points"), points,
                [one](benchmark::State& state) { readWithGdal(state, one, "GPX", "track_points"); });
#endif
    program.addRatio(QStringLiteral("GDAL, layer tracks (without times)"), QStringLiteral("gpx/gdal/tracks"),
                     floor, QStringLiteral("gpx/expat"));
    program.addRatio(QStringLiteral("GDAL, layer track_points"), QStringLiteral("gpx/gdal/points"), floor,
                     QStringLiteral("gpx/expat"));
    program.addChild(QStringLiteral("gpx/gpsbabel"), points, QStringLiteral("gpsbabel"),
                     {QStringLiteral("-t"), QStringLiteral("-i"), QStringLiteral("gpx"), QStringLiteral("-f"),
                      one.filePath()});
    program.addRatio(QStringLiteral("gpsbabel"), QStringLiteral("gpx/gpsbabel"), floor,
                     QStringLiteral("gpx/expat"));

    QStringList sizes;
    const qint64 largest = program.isLarge() ? points * 10 : points;
    for (qint64 size = points / 100; size <= largest; size *= 10) {
        const QString name =
            size == points ? QStringLiteral("gpx/read") : QStringLiteral("gpx/read/%1").arg(size);
        sizes.append(name);
        if (size == points) {
            continue;
        }
        addReading(name, {inputs.gpx(size)}, size);
        if (size < points) {
            program.addRatioPerPoint(QStringLiteral("GPX, %L1 points, per point").arg(size), name,
                                     QStringLiteral("%L1 points").arg(points), QStringLiteral("gpx/read"),
                                     1.3);
        }
    }
    const int files = program.isQuick() ? collectionFiles / 10 : collectionFiles;
    const qint64 collectionPoints = qint64{files} * pointsPerCollectionFile;
    addReading(QStringLiteral("gpx/read/collection"), inputs.collection(files, collectionPoints),
               collectionPoints);
    program.addRatioPerPoint(
        QStringLiteral("GPX, %1 files of %2 points, per point").arg(files).arg(pointsPerCollectionFile),
        QStringLiteral("gpx/read/collection"), QStringLiteral("%L1 points").arg(points),
        QStringLiteral("gpx/read"), 1.3);
    program.addSpread(QStringLiteral("GPX, %L1 to %L2 points, per point").arg(points / 100).arg(largest),
                      sizes, 1.5);
}

void addKml(LvBenchmarkProgram& program, const LvBenchmarkInputs& inputs)
{
    const qint64 points = program.points();
    const QString floor = QStringLiteral("expat, empty handlers");
    const QFileInfo file = inputs.kml(points);
    program.add(QStringLiteral("kml/read"), points,
                [file, points](benchmark::State& state) { readKml(state, file, points); });
#ifdef LV_HAS_EXPAT
    program.add(QStringLiteral("kml/expat"), points,
                [file](benchmark::State& state) { walkWithExpat(state, {file}); });
#endif
#ifdef LV_HAS_GDAL
    program.add(QStringLiteral("kml/gdal"), points,
                [file](benchmark::State& state) { readWithGdal(state, file, "LIBKML", nullptr); });
#endif
    program.addChild(QStringLiteral("kml/gpsbabel"), points, QStringLiteral("gpsbabel"),
                     {QStringLiteral("-t"), QStringLiteral("-i"), QStringLiteral("kml"), QStringLiteral("-f"),
                      file.filePath()});
    program.addRatio(QStringLiteral("KML, one line"), QStringLiteral("kml/read"), floor,
                     QStringLiteral("kml/expat"), 5.5);
    program.addRatio(QStringLiteral("GDAL, LIBKML"), QStringLiteral("kml/gdal"), floor,
                     QStringLiteral("kml/expat"));
    program.addRatio(QStringLiteral("gpsbabel, KML"), QStringLiteral("kml/gpsbabel"), floor,
                     QStringLiteral("kml/expat"));
}

void addCompact(LvBenchmarkProgram& program, const LvBenchmarkInputs& inputs, const QDir& folder)
{
    const qint64 points = program.points();
    const QFileInfo file = inputs.compactGpx(points);
    program.add(QStringLiteral("compact/read"), points,
                [file, points](benchmark::State& state) { readGpx(state, {file}, points); });
#ifdef LV_HAS_EXPAT
    program.add(QStringLiteral("compact/expat"), points,
                [file](benchmark::State& state) { walkWithExpat(state, {file}); });
#endif
    program.addRatio(QStringLiteral("compact GPX, reading"), QStringLiteral("compact/read"),
                     QStringLiteral("expat, empty handlers"), QStringLiteral("compact/expat"), 4.0);

    // The track of which the file was made, so that the same bytes are written.
    const QFileInfo source = inputs.gpx(points);
    const QFileInfo target(folder.filePath(QStringLiteral("compact.gpx")));
    program.add(QStringLiteral("compact/write"), points, [source, file, target](benchmark::State& state) {
        writeCompact(state, LvGPXTrackFile(source).tracks().value(0), target);
        if (contentsOf(target.filePath()) != contentsOf(file.filePath())) {
            state.SkipWithError("the bytes differ");
        }
    });
    program.add(QStringLiteral("compact/bytes"), points, [file, target](benchmark::State& state) {
        writeReadyBytes(state, contentsOf(file.filePath()), target);
    });
    program.addRatio(QStringLiteral("compact GPX, writing"), QStringLiteral("compact/write"),
                     QStringLiteral("writing the ready bytes"), QStringLiteral("compact/bytes"), 12.0);

    const bool isStable = writesSameBytes(program, folder);
    program.addFact(QStringLiteral("compact GPX, bytes"), QStringLiteral("those of another process"),
                    QStringLiteral("equal"), QString::fromLatin1(isStable ? "equal" : "different"), isStable);
    if (!isStable) {
        program.fail(QStringLiteral("Two processes wrote different bytes."));
    }
}

/// The text form of points without any file or XML around it.
void addTexts(LvBenchmarkProgram& program, const LvBenchmarkInputs& inputs)
{
    const qint64 points = program.points();
    const QFileInfo file = inputs.compactGpx(points);
    program.add(QStringLiteral("text/encode"), points, [file](benchmark::State& state) {
        const LvGPXTrackSegment segment = LvGPXTrackFile(file).tracks().value(0).segments().value(0);
        for (auto _ : state) {
            const QString text = segment.toKml();
            benchmark::DoNotOptimize(text.constData());
        }
    });
    program.add(QStringLiteral("text/decode"), points, [file](benchmark::State& state) {
        const QString text = LvGPXTrackFile(file).tracks().value(0).segments().value(0).toKml();
        for (auto _ : state) {
            const QList<LvGPXTrackPoint> decoded = LvGPXTrackSegment::decodeTrackPoints(text);
            benchmark::DoNotOptimize(decoded.constData());
        }
    });
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    LvBenchmarkProgram program(argc, argv);
    const LvBenchmarkInputs inputs(program.inputFolder());

    const QString written = program.argument(QStringLiteral("--write="));
    if (!written.isEmpty()) {
        LvGPXTrackFile(inputs.compactGpx(program.points()))
            .tracks()
            .value(0)
            .saveAsGpxFile(QFileInfo(written));
        return 0;
    }
#ifdef LV_HAS_GDAL
    GDALAllRegister();
#endif
    QDir().mkpath(program.inputFolder().path());
    const QTemporaryDir folder(program.inputFolder().filePath(QStringLiteral("written-XXXXXX")));
    if (!folder.isValid()) {
        program.fail(folder.errorString());
        return 1;
    }
    addGpx(program, inputs);
    addKml(program, inputs);
    addCompact(program, inputs, QDir(folder.path()));
    addTexts(program, inputs);
    return program.run();
}
