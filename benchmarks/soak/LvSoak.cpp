// Works like a program that is never closed: makes random documents, styles, draws, saves, reads and drops
// them, and tells ten times how much memory it holds. Ends with 1 when that is more at the end than after the
// first part.
//
// Usage: LvSoak [--seconds N | --documents N] [--seed N] [--warm-up PERCENT] [--any-memory] [--leak BYTES],
// by default ten minutes.

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackRenderer.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGPXTrackSelectionComparisonResult.h"
#include "LvGeoPositionRect.h"
#include "LvMapProjection.h"
#include "LvTrackSelectionFactory.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QCommandLineParser>
#include <QDir>
#include <QDomDocument>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <unistd.h>

namespace
{

constexpr int defaultSeconds = 600;
constexpr int reports = 10;
constexpr int defaultWarmUp = 10; // percent of the work: caches, pools of threads and of memory
constexpr int mostTracks = 8;
constexpr int mostPoints = 5000; // of a segment
constexpr double toleranceShare = 0.05;
constexpr qint64 toleranceBytes = qint64(8) << 20; // the allocator keeps some of what is dropped

/// A map of Europe to draw on.
class SoakRenderer : public LvGPXTrackRenderer
{
public:
    SoakRenderer(const LvGPXTrackSelection& selection, const QSize& size, double paintFactor)
        : LvGPXTrackRenderer(selection, size, paintFactor)
        , mySize(size)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        const double x = (position.longitude().decimalDegrees() + 12.0) / 50.0;
        const double y = (70.0 - position.latitude().decimalDegrees()) / 40.0;
        return {x * mySize.width(), y * mySize.height()};
    }

private:
    QSize mySize;
};

/// What a session of a user may consist of, all of it random and the same for the same seed.
class LvSoak
{
public:
    explicit LvSoak(quint32 seed)
        : myRandom(seed)
    {
    }

    /// One document from its beginning to its end; false when something came back differently.
    [[nodiscard]] bool runOnce()
    {
        LvGPXTrackSelection selection = makeSelection();
        const LvGPXTrackSelection before = selection;
        edit(selection);
        const LvGPXTrackSelectionComparisonResult changes = before.compare(selection);
        Q_UNUSED(changes)
        draw(selection);
        return saveAndRead(selection) && saveAndOpenTrack(selection);
    }

private:
    int number(int first, int last) { return std::uniform_int_distribution<int>(first, last)(myRandom); }

    double real(double first, double last)
    {
        return std::uniform_real_distribution<double>(first, last)(myRandom);
    }

    QColor color() { return QColor::fromRgba(static_cast<QRgb>(myRandom())); }

    LvGPXTrack makeTrack()
    {
        QList<LvGPXTrackSegment> segments;
        const int segmentCount = number(1, 3);
        for (int segment = 0; segment < segmentCount; ++segment) {
            // Many short tracks, a few long ones.
            const int count = 2 + static_cast<int>(mostPoints * std::pow(real(0.0, 1.0), 4.0));
            double latitude = real(40.0, 60.0);
            double longitude = real(-5.0, 25.0);
            QList<LvGPXTrackPoint> points;
            points.reserve(count);
            for (int index = 0; index < count; ++index) {
                latitude = std::clamp(latitude + real(-0.01, 0.01), -80.0, 80.0);
                longitude = std::remainder(longitude + real(-0.01, 0.012), 360.0);
                points.append({LvGeoPosition(latitude, longitude), number(0, 3000), QDateTime(), QString()});
            }
            segments.append(LvGPXTrackSegment(points));
        }
        LvGPXTrack track(QStringLiteral("Spur %1").arg(number(0, 1 << 20)), QString(), segments,
                         number(0, 1) == 0 ? LvGPXTrackShapeEnum::linestring : LvGPXTrackShapeEnum::polygon);
        if (number(0, 4) == 0) {
            track.addEnclave(LvGPXTrack(QStringLiteral("Insel"), QString(), {segments.first()},
                                        LvGPXTrackShapeEnum::polygon));
        }
        return track;
    }

    LvGPXTrackConfiguration makeStyle()
    {
        LvGPXTrackConfiguration style = LvGPXTrackConfiguration::defaultValue();
        style.setLineColor(color());
        style.setFillColor(color());
        style.setLineWidth(number(1, 12));
        style.setHaloWidth(number(0, 6));
        style.setSmoothingStrength(number(0, 100));
        style.setSmoothingSteps(number(1, 5));
        style.setPenStyle(LvPenStyle(number(0, 1) == 0 ? Qt::SolidLine : Qt::DashLine));
        return style;
    }

    LvGPXTrackSelection makeSelection()
    {
        LvGPXTrackSelection selection;
        const int count = number(1, mostTracks);
        for (int index = 0; index < count; ++index) {
            selection.addTrack(LvGPXConfiguredTrack(makeTrack(), makeStyle()));
        }
        return selection;
    }

    void edit(LvGPXTrackSelection& selection)
    {
        const int last = static_cast<int>(selection.count()) - 1;
        selection.moveTrack(number(0, last), number(0, last));
        selection.overrideColorOfTrack(number(0, last), number(0, 255));
        selection.setCroppingOpacity(number(0, 2) == 0 ? number(0, 254) : 255);
        LvGPXConfiguredTrackList tracks = selection.tracks();
        tracks[number(0, last)].setTrack(makeTrack());
        selection.setTracks(tracks);
    }

    void draw(const LvGPXTrackSelection& selection)
    {
        const QSize size(number(1, 600), number(1, 450));
        const SoakRenderer renderer(selection, size, real(0.5, 2.5));
        myPixels += renderer.render(TrackRenderOption::Normal).sizeInBytes();
        QImage map(size, QImage::Format_RGB32);
        map.fill(color());
        myPixels += renderer.crop(map).sizeInBytes();
    }

    [[nodiscard]] bool saveAndRead(const LvGPXTrackSelection& selection)
    {
        const QFileInfo file(myDirectory.filePath(QStringLiteral("document.xml")));
        QDomDocument document;
        QDomElement root = LvXMLBuilder::buildRootElement(document, QStringLiteral("selection"));
        selection.toXml(root, QDir(QString()));
        if (!LvXMLBuilder::saveUTF8(document, file)) {
            return false;
        }
        const LvGPXTrackSelection read(LvXMLLoader::loadDocumentElement(file), QDir(QString()));
        return read.count() == selection.count();
    }

    [[nodiscard]] bool saveAndOpenTrack(const LvGPXTrackSelection& selection)
    {
        const QFileInfo file(myDirectory.filePath(QStringLiteral("track.gpx")));
        selection.value(0).track().saveAsGpxFile(file);
        const LvGPXConfiguredTrackList opened =
            LvTrackSelectionFactory::instance()->createConfiguredTrackList(
                QList<QUrl>{QUrl::fromLocalFile(file.filePath())});
        return opened.count() == 1 && opened.at(0).track().boundingBox().isValid();
    }

    std::mt19937 myRandom;
    QTemporaryDir myDirectory;
    qint64 myPixels = 0;
};

/// What the process holds in memory, in bytes; 0 where the system does not tell.
qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

double megabytes(qint64 bytes)
{
    return static_cast<double>(bytes) / (1 << 20);
}

struct SoakOptions {
    qint64 milliseconds = 0; // or
    qint64 documents = 0;
    quint32 seed = 0;
    int warmUpPercent = defaultWarmUp;
    bool isAnyMemoryAllowed = false;
    qsizetype leakedBytes = 0; // of each document
};

int soak(const SoakOptions& options)
{
    LvSoak session(options.seed);
    QList<QByteArray> leaked;
    QElapsedTimer timer;
    timer.start();
    qint64 documents = 0;
    qint64 first = 0;
    qint64 last = 0;
    const auto isPartDone = [&](int part) {
        return options.documents > 0 ? documents >= options.documents * part / reports
                                     : timer.elapsed() >= options.milliseconds * part / reports;
    };
    for (int part = 1; part <= reports; ++part) {
        // The largest of all moments between documents: a single one may be a lucky one.
        last = 0;
        do {
            if (!session.runOnce()) {
                std::fputs("a document did not come back as it was written\n", stderr);
                return 1;
            }
            ++documents;
            leaked.append(QByteArray(options.leakedBytes, 'x'));
            last = std::max(last, residentBytes());
        } while (!isPartDone(part));
        if (part == 1 || part * 100 <= options.warmUpPercent * reports) {
            first = std::max(first, last);
        }
        std::printf("%6.1f s %8lld documents %9.1f MB\n", static_cast<double>(timer.elapsed()) / 1000.0,
                    static_cast<long long>(documents), megabytes(last));
        std::fflush(stdout);
    }
    const qint64 limit =
        first + static_cast<qint64>(static_cast<double>(first) * toleranceShare) + toleranceBytes;
    const bool hasGrown = last > limit;
    std::printf("seed %u: %.1f MB at first, %.1f MB at the end, %.1f MB allowed: %s\n", options.seed,
                megabytes(first), megabytes(last), megabytes(limit), hasGrown ? "GROWN" : "steady");
    return !options.isAnyMemoryAllowed && (hasGrown || first == 0) ? 1 : 0;
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("lv.usage=false")); // not a line for every file
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption secondsOption(QStringLiteral("seconds"), QStringLiteral("How long to work."),
                                           QStringLiteral("N"), QString::number(defaultSeconds));
    const QCommandLineOption documentsOption(QStringLiteral("documents"),
                                             QStringLiteral("How many documents instead."),
                                             QStringLiteral("N"), QStringLiteral("0"));
    const QCommandLineOption seedOption(QStringLiteral("seed"), QStringLiteral("Of the random documents."),
                                        QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption warmUpOption(QStringLiteral("warm-up"),
                                          QStringLiteral("The part that the end is compared with."),
                                          QStringLiteral("PERCENT"), QString::number(defaultWarmUp));
    const QCommandLineOption anyMemoryOption(QStringLiteral("any-memory"),
                                             QStringLiteral("Fail only when a document is damaged."));
    const QCommandLineOption leakOption(QStringLiteral("leak"),
                                        QStringLiteral("What to keep of each document, to see it noticed."),
                                        QStringLiteral("BYTES"), QStringLiteral("0"));
    parser.addOptions(
        {secondsOption, documentsOption, seedOption, warmUpOption, anyMemoryOption, leakOption});
    parser.process(application);
    SoakOptions options;
    options.milliseconds = 1000 * parser.value(secondsOption).toLongLong();
    options.documents = parser.value(documentsOption).toLongLong();
    options.seed = parser.value(seedOption).toUInt();
    options.warmUpPercent = parser.value(warmUpOption).toInt();
    options.isAnyMemoryAllowed = parser.isSet(anyMemoryOption);
    options.leakedBytes = parser.value(leakOption).toLongLong();
    if (options.milliseconds <= 0 && options.documents <= 0) {
        std::fputs("--seconds and --documents need a number above 0\n", stderr);
        return 2;
    }
    return soak(options);
}
