// How long the desktop program keeps its user interface waiting: loads 700 files with 167,000 points, shows,
// pans, zooms and fades them, saves and opens them as a document, and prints the longest time between two
// rounds of the event loop.

#include "LvEditorFiles.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPosition.h"
#include "LvMapWidget.h"
#include "LvRecentFiles.h"
#include "LvTrackDocument.h"
#include "LvTrackDocumentFile.h"
#include "LvTrackLoadJob.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>

namespace
{

constexpr int fileCount = 700;
constexpr int pointCount = 167000;
constexpr QSize windowSize(1400, 900);
constexpr int frameMilliseconds = 16; // between two movements of the mouse
constexpr int frames = 300;
constexpr double nanosecondsPerMillisecond = 1e6;

qint64 ownNanoseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return (qint64{time.tv_sec} * 1'000'000'000) + time.tv_nsec;
}

/// Measures the longest gap between two beats of a quick timer, and the most time that this thread was at
/// work in any of them. In the rest of a gap it waited for a processor.
class StallMeter
{
public:
    StallMeter()
    {
        myTimer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&myTimer, &QTimer::timeout, &myTimer, [this] { beat(); });
    }

    /// Runs the event loop until the condition holds.
    void run(const char* name, const std::function<void()>& begin, const std::function<bool()>& isDone)
    {
        myLongest = 0;
        myMostWork = 0;
        myLastOwn = ownNanoseconds();
        myClock.start();
        QElapsedTimer whole;
        whole.start();
        myTimer.start(1);
        begin();
        QEventLoop loop;
        QTimer check;
        QObject::connect(&check, &QTimer::timeout, &loop, [&] {
            if (isDone()) {
                loop.quit();
            }
        });
        check.start(5);
        loop.exec();
        beat();
        myTimer.stop();
        myWorstBefore = myWorst;
        myWorst = std::max(myWorst, myLongest);
        std::printf("%-40s %10.0f %14.1f %14.1f\n", name, static_cast<double>(whole.elapsed()),
                    static_cast<double>(myLongest) / nanosecondsPerMillisecond,
                    static_cast<double>(myMostWork) / nanosecondsPerMillisecond);
        std::fflush(stdout);
    }

    /// What was measured last shall not count.
    void forgetLast() { myWorst = myWorstBefore; }

    [[nodiscard]] double worstMilliseconds() const
    {
        return static_cast<double>(myWorst) / nanosecondsPerMillisecond;
    }

private:
    void beat()
    {
        const qint64 gap = myClock.nsecsElapsed();
        const qint64 own = ownNanoseconds();
        myLongest = std::max(myLongest, gap);
        myMostWork = std::max(myMostWork, own - myLastOwn);
        myLastOwn = own;
        myClock.start();
    }

    QTimer myTimer;
    QElapsedTimer myClock;
    qint64 myLastOwn = 0;
    qint64 myLongest = 0;
    qint64 myMostWork = 0;
    qint64 myWorst = 0;
    qint64 myWorstBefore = 0;
};

/// Walks of the same seed in every run, all over Europe.
QStringList writeFiles(const QDir& directory)
{
    QRandomGenerator random(20260101);
    QStringList names;
    for (int number = 0; number < fileCount; ++number) {
        const int points = (pointCount / fileCount) + (number < pointCount % fileCount ? 1 : 0);
        names.append(directory.filePath(QStringLiteral("track-%1.gpx").arg(number, 3, 10, QLatin1Char('0'))));
        QFile file(names.constLast());
        if (!file.open(QIODevice::WriteOnly)) {
            return {};
        }
        QTextStream text(&file);
        text << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx version=\"1.1\" creator=\"bench\" "
                "xmlns=\"http://www.topografix.com/GPX/1/1\"><trk><name>Weg "
             << number << "</name><trkseg>\n";
        double latitude = 36.0 + (random.generateDouble() * 30.0);
        double longitude = -9.0 + (random.generateDouble() * 40.0);
        double direction = random.generateDouble() * 6.28;
        for (int point = 0; point < points; ++point) {
            direction += random.generateDouble() - 0.5;
            latitude += 0.01 * std::sin(direction);
            longitude += 0.015 * std::cos(direction);
            text << "<trkpt lat=\"" << QString::number(latitude, 'f', 6) << "\" lon=\""
                 << QString::number(longitude, 'f', 6) << "\"><ele>" << random.bounded(900)
                 << "</ele><time>2026-01-01T" << QStringLiteral("%1").arg(point / 60, 2, 10, QLatin1Char('0'))
                 << ':' << QStringLiteral("%1").arg(point % 60, 2, 10, QLatin1Char('0'))
                 << ":00Z</time></trkpt>\n";
        }
        text << "</trkseg></trk></gpx>\n";
    }
    return names;
}

/// Calls the step once for each frame of an animation.
class Animation
{
public:
    explicit Animation(const std::function<void(int frame)>& step)
    {
        QObject::connect(&myTimer, &QTimer::timeout, &myTimer, [this, step] {
            step(myFrame);
            if (++myFrame == frames) {
                myTimer.stop();
            }
        });
    }

    void start() { myTimer.start(frameMilliseconds); }

    [[nodiscard]] bool isDone() const { return myFrame == frames; }

private:
    QTimer myTimer;
    int myFrame = 0;
};

void moveMouse(QWidget& widget, QEvent::Type type, const QPointF& point, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, point, widget.mapToGlobal(point), button, buttons, {});
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("lv.*=false"));
    QCoreApplication::setApplicationName(QStringLiteral("bench_EditorStall"));

    const QTemporaryDir directory;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, directory.path()); // not the user's
    const QStringList names = writeFiles(QDir(directory.path()));
    if (names.isEmpty()) {
        std::fputs("The track files cannot be written.\n", stderr);
        return 1;
    }

    LvTrackDocument document;
    LvMapWidget map;
    QObject::connect(&document, &LvTrackDocument::selectionChanged, &map,
                     [&] { map.setSelection(document.visibleSelection()); });
    map.resize(windowSize);
    map.show();

    std::printf("%-40s %10s %14s %14s\n", "milliseconds", "in all", "longest stall", "most work");
    StallMeter meter;
    const auto isDrawn = [&map] { return !map.isRendering(); };

    meter.run(
        "begin with the built-in map", [] {}, isDrawn);

    LvTrackLoadJob job;
    LvGPXConfiguredTrackList tracks;
    bool isLoaded = false;
    QObject::connect(&job, &LvTrackLoadJob::loaded, &job, [&](const LvGPXConfiguredTrackList& loaded) {
        tracks = loaded;
        isLoaded = true;
    });
    meter.run(
        "load 700 files, 167,000 points", [&] { job.start(names); }, [&] { return isLoaded; });
    if (tracks.count() != fileCount) {
        std::fputs("Not all of the files have been loaded.\n", stderr);
        return 1;
    }
    meter.run(
        "add them to the document, draw them", [&] { document.addTracks(tracks); }, isDrawn);
    meter.run(
        "fit the map to them", [&] { map.fitToTracks(); }, isDrawn);

    const QPointF start(200.0, 450.0);
    Animation drag([&](int frame) {
        const double turn = frame * 0.05;
        moveMouse(map, QEvent::MouseMove, start + QPointF(frame * 3.0, 200.0 * std::sin(turn)),
                  Qt::LeftButton);
    });
    meter.run(
        "drag the map for 300 frames",
        [&] {
            moveMouse(map, QEvent::MouseButtonPress, start, Qt::LeftButton);
            drag.start();
        },
        [&] { return drag.isDone() && isDrawn(); });
    moveMouse(map, QEvent::MouseButtonRelease, start, Qt::NoButton);

    Animation zoom([&](int frame) {
        const QPointF point(700.0, 400.0);
        QWheelEvent event(point, map.mapToGlobal(point), {}, {0, frame / 50 % 2 == 0 ? 12 : -12},
                          Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&map, &event);
    });
    meter.run(
        "zoom in and out for 300 frames", [&] { zoom.start(); }, [&] { return zoom.isDone() && isDrawn(); });

    Animation fade([&](int frame) { document.setCroppingOpacity(255 - (frame % 256)); });
    meter.run(
        "fade the map for 300 frames", [&] { fade.start(); }, [&] { return fade.isDone() && isDrawn(); });

    // In this thread, as it would be without a worker: the row to compare the others with.
    document.setCroppingOpacity(255);
    const QString fileName = directory.filePath(QStringLiteral("document.lvt"));
    QString errorText;
    meter.run(
        "(save them without a worker)",
        [&] {
            errorText = LvTrackDocumentFile::write(document.content(), fileName,
                                                   LvTrackDocumentFile::TrackStorage::Inline);
        },
        [] { return true; });
    meter.forgetLast();
    LvRecentFiles recentFiles;
    LvEditorFiles files(&document, &map, &recentFiles, &map);
    meter.run(
        "save them as a document", [&] { files.saveTo(fileName); }, [&] { return !files.isBusy(); });
    files.startNew();
    meter.run(
        "open that document, draw it", [&] { files.open(fileName); },
        [&] { return !files.isBusy() && isDrawn(); });
    if (!errorText.isEmpty() || document.selection().count() != fileCount) {
        std::fputs("The document has not been saved and opened.\n", stderr);
        return 1;
    }

    std::printf("\nlongest stall of all: %.1f milliseconds\n", meter.worstMilliseconds());
    return 0;
}
