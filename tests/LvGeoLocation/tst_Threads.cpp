#include "LvConcurrent.h"
#include "LvEnumToStringTable.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackFileRegistry.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackRenderer.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGPXTrackShape.h"
#include "LvGeoLocationSettings.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvGeoPositionRect.h"
#include "LvTest.h"
#include "LvTrackSelectionFactory.h"

#include <QDomDocument>
#include <QLoggingCategory>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>
#include <QThreadPool>

#include <array>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace
{

constexpr int threadCount = 8;

/// Ends the program when the guarded part does not end: a deadlock shall fail, not hang.
class Watchdog
{
public:
    Watchdog()
        : myThread([this] {
            std::unique_lock lock(myMutex);
            if (!myDone.wait_for(lock, std::chrono::seconds(180), [this] { return myIsDone; })) {
                qFatal("deadlock");
            }
        })
    {
    }
    Q_DISABLE_COPY_MOVE(Watchdog)

    ~Watchdog()
    {
        {
            const std::lock_guard lock(myMutex);
            myIsDone = true;
        }
        myDone.notify_all();
        myThread.join();
    }

private:
    std::mutex myMutex;
    std::condition_variable myDone;
    bool myIsDone = false;
    std::thread myThread;
};

/// Calls the function in all threads at once, with the number of the thread, and waits for all of them.
/// The threads are std::threads: Qt's own ones would synchronise with each other while they start.
void inAllThreads(const std::function<void(int)>& function)
{
    std::barrier start(threadCount);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&start, &function, thread] {
            start.arrive_and_wait();
            function(thread);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// One number per thread that the thread alone writes.
using PerThread = std::array<int, threadCount>;

PerThread all(int number)
{
    PerThread numbers{};
    numbers.fill(number);
    return numbers;
}

LvGPXTrack lineTrack(const QString& name, int points)
{
    QList<LvGPXTrackPoint> list;
    for (int index = 0; index < points; ++index) {
        const LvGeoPosition position(40.0 * std::sin(index / 300.0),
                                     std::remainder(150.0 + index / 25.0, 360.0));
        list.append(LvGPXTrackPoint(position, index, QDateTime(), QString())); // a time would not come back
    }
    return {name, QString(), {LvGPXTrackSegment(list)}, LvGPXTrackShapeEnum::linestring};
}

LvGPXTrackConfiguration configuration(int width)
{
    LvGPXTrackConfiguration result = LvGPXTrackConfiguration::defaultValue();
    result.setTrackShape(LvGPXTrackShapeEnum::automatic);
    result.setLineWidth(width);
    result.setSmoothingSteps(width);
    return result;
}

class Renderer : public LvGPXTrackRenderer
{
public:
    using LvGPXTrackRenderer::LvGPXTrackRenderer;

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        return {position.longitude().decimalDegrees() + 180.0, 60.0 - position.latitude().decimalDegrees()};
    }
};

} // namespace

/// What the classes promise about threads, with several threads at work. The thread sanitizer sees more than
/// the comparisons here do.
class tst_Threads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void firstUseOfTables(); // stays first: tables and services are new only once
    void firstUseOfServices();
    void sharedPositions();
    void sharedTracks();
    void sharedSelection();
    void pointsFromAllThreads();
    void filesReadAtOnce();
    void oneDirectoryForAll();
    void defaultConfiguration();
    void renderersInPool_data();
    void renderersInPool();
};

void tst_Threads::cleanup()
{
    QVERIFY(QThreadPool::globalInstance()->waitForDone(60000));
    QThreadPool::globalInstance()->setMaxThreadCount(QThread::idealThreadCount());
}

void tst_Threads::firstUseOfTables()
{
    std::array<const void*, threadCount> shapes{};
    std::array<const void*, threadCount> markers{};
    std::array<const void*, threadCount> options{};
    PerThread right{};
    inAllThreads([&](int thread) {
        const auto index = static_cast<std::size_t>(thread);
        const LvGPXTrackShape shape(QStringLiteral("polygon,auto"));
        const LvGPXMarkerShape marker(QStringLiteral("star6"));
        const LvGPXTrackDisplayOptions option(QStringLiteral("stroke,fill"));
        shapes.at(index) = shape.enumToStringTable();
        markers.at(index) = marker.enumToStringTable();
        options.at(index) = option.enumToStringTable();
        right.at(index) = static_cast<int>(shape.value()) == (8 | 256)
                && static_cast<int>(marker.value()) == 128 && static_cast<int>(option.value()) == 3
                && shape.enumToStringTable()->encodeCSV(shape.value()).contains(QStringLiteral("polygon"))
            ? 1
            : 0;
    });
    QCOMPARE(right, all(1)); // nobody saw a table that was filled in half
    for (const auto* tables : {&shapes, &markers, &options}) {
        QVERIFY(tables->front() != nullptr);
        for (const void* const table : *tables) {
            QCOMPARE(table, tables->front());
        }
    }
}

void tst_Threads::firstUseOfServices()
{
    std::array<const void*, threadCount> settings{};
    std::array<const void*, threadCount> registries{};
    std::array<const void*, threadCount> factories{};
    inAllThreads([&](int thread) {
        const auto index = static_cast<std::size_t>(thread);
        settings.at(index) = LvGeoLocationSettings::instance();
        registries.at(index) = LvGPXTrackFileRegistry::instance();
        factories.at(index) = LvTrackSelectionFactory::instance();
    });
    for (const void* const service : settings) {
        QCOMPARE(service, static_cast<const void*>(LvGeoLocationSettings::instance()));
    }
    for (const void* const service : registries) {
        QCOMPARE(service, static_cast<const void*>(LvGPXTrackFileRegistry::instance()));
    }
    for (const void* const service : factories) {
        QCOMPARE(service, static_cast<const void*>(LvTrackSelectionFactory::instance()));
    }
    QCOMPARE(LvGeoLocationSettings::instance()->thread(), QCoreApplication::instance()->thread());
}

void tst_Threads::sharedPositions()
{
    constexpr int rounds = 500;
    const LvGeoPosition shared(53.0, 8.0);
    LvGeoPositionList list;
    for (int index = 0; index < 100; ++index) {
        list.append(shared); // one payload for all of them
    }
    PerThread right{};
    inAllThreads([&](int thread) {
        int equal = 0;
        for (int round = 0; round < rounds; ++round) {
            LvGeoPosition copy = list.at(round % 100);
            copy.setLatitude(LvLatitude(thread));
            copy.setLongitude(LvLongitude(round % 180));
            LvGeoPositionList ownList = list;
            ownList[round % 100] = copy;
            const bool isRight = copy == LvGeoPosition(thread, round % 180) && ownList.at(round % 100) == copy
                && ownList.at((round + 1) % 100) == shared && list.at(round % 100) == shared
                && copy.distance(shared) > 0.0 && ownList.boundingBox().isValid();
            equal += isRight ? 1 : 0;
        }
        right.at(static_cast<std::size_t>(thread)) = equal;
    });
    QCOMPARE(right, all(rounds));
    QCOMPARE(shared, LvGeoPosition(53.0, 8.0));
}

void tst_Threads::sharedTracks()
{
    constexpr int rounds = 60;
    LvGPXTrack owned = lineTrack(QStringLiteral("owned"), 100);
    const std::vector<LvGPXTrack> handedOut(threadCount, owned);
    const LvGPXTrack common = owned;
    PerThread right{};
    std::thread owner([&owned] { // changes its own handle while the others read theirs
        for (int round = 0; round < rounds; ++round) {
            owned.setName(QString::number(round));
            owned.addEnclave(owned);
            owned.setEnclaves({});
            owned.setShape(LvGPXTrackShape(round % 2 == 0 ? 8 : 4));
        }
    });
    inAllThreads([&](int thread) {
        const LvGPXTrack& mine = handedOut.at(static_cast<std::size_t>(thread));
        int equal = 0;
        for (int round = 0; round < rounds; ++round) {
            LvGPXTrack copy = round % 2 == 0 ? mine : common;
            copy.setName(QString::number(thread));
            copy.addEnclave(mine);
            QDomDocument document;
            QDomElement root = document.createElement(QStringLiteral("root"));
            document.appendChild(root);
            copy.toXml(root, QDir(QString()));
            const bool isRight = mine.name() == QStringLiteral("owned") && mine.enclaves().isEmpty()
                && mine == common && copy != common && copy.enclaves() == QList<LvGPXTrack>{common}
                && copy.allPoints() == mine.allPoints() && mine.boundingBox() == common.boundingBox()
                && mine.allTimeStamps().size() == mine.countPoints();
            equal += isRight ? 1 : 0;
        }
        right.at(static_cast<std::size_t>(thread)) = equal;
    });
    owner.join();
    QCOMPARE(right, all(rounds));
    QCOMPARE(owned.name(), QString::number(rounds - 1));
    QCOMPARE(common.name(), QStringLiteral("owned"));
}

void tst_Threads::sharedSelection()
{
    const LvGPXConfiguredTrack track(lineTrack(QStringLiteral("A"), 10), configuration(3));
    LvGPXTrackSelection common;
    for (int row = 0; row < 4; ++row) {
        common.addTrack(track);
    }
    PerThread right{};
    inAllThreads([&](int thread) {
        LvGPXTrackSelection copy = common;
        copy.overrideColorOfTrack(thread % 4, 64);
        copy.moveTrack(0, 3);
        copy.setCroppingOpacity(thread);
        copy.addTrack(track);
        const LvGPXTrackSelectionComparisonResult changes = common.compare(copy);
        right.at(static_cast<std::size_t>(thread)) = changes.trackCountChanges()
                && changes.changingTracks().size() == 2 && common.count() == 4
                && common.value(thread % 4) == track && common.nominalCroppingOpacity() == 255
            ? 1
            : 0;
    });
    QCOMPARE(right, all(1));
}

void tst_Threads::pointsFromAllThreads()
{
    // Gathered in blocks on the main thread while workers gather the same segment in one.
    const LvGPXTrack track = lineTrack(QStringLiteral("long"), 20000);
    const LvGeoPositionList expected = track.allPoints();
    const auto joined = [&track] {
        LvGeoPositionList positions;
        const QList<LvGeoPositionList> chunks = track.chunkedPoints();
        for (const LvGeoPositionList& chunk : chunks) {
            positions.append(chunk);
        }
        return positions;
    };
    PerThread right{};
    LvGeoPositionList onMain;
    std::thread workers([&] {
        inAllThreads([&](int thread) {
            right.at(static_cast<std::size_t>(thread)) =
                joined() == expected && track.chunkedPoints().size() == 1 ? 1 : 0;
        });
    });
    for (int round = 0; round < 5; ++round) {
        onMain = joined();
    }
    workers.join();
    QCOMPARE(right, all(1));
    QCOMPARE(onMain, expected);
}

void tst_Threads::filesReadAtOnce()
{
    QList<QUrl> files;
    for (const char* name :
         {"brocken-hike.gpx", "weser-route.gpx", "german-bight.kml", "iceland.kmz", "lake-islands.gpx"}) {
        files.append(QUrl::fromLocalFile(LvTest::sampleFile(QString::fromLatin1(name))));
    }
    QLoggingCategory::setFilterRules(QStringLiteral("lv.usage=false")); // not a line per file and thread
    const LvTrackSelectionFactory* factory = LvTrackSelectionFactory::instance();
    const LvGPXConfiguredTrackList expected = factory->createConfiguredTrackList(files);
    QVERIFY(expected.count() >= files.size());
    PerThread right{};
    inAllThreads([&](int thread) {
        right.at(static_cast<std::size_t>(thread)) =
            factory->createConfiguredTrackList(files) == expected ? 1 : 0;
    });
    QCOMPARE(right, all(1));
}

void tst_Threads::oneDirectoryForAll()
{
    constexpr int tracksPerThread = 15;
    const QTemporaryDir folder;
    const QDir directory(folder.path());
    const auto trackOf = [](int thread, int index) {
        return lineTrack(QStringLiteral("%1/%2").arg(thread).arg(index), 2 + index);
    };
    std::array<QStringList, threadCount> names;
    PerThread right{};
    inAllThreads([&](int thread) {
        int equal = 0;
        QDomDocument own; // documents are not for several threads
        QDomElement root = own.createElement(QStringLiteral("configuration"));
        own.appendChild(root);
        for (int index = 0; index < tracksPerThread; ++index) {
            trackOf(thread, index).toXml(root, directory);
        }
        for (QDomElement trk = root.firstChildElement(); !trk.isNull(); trk = trk.nextSiblingElement()) {
            names.at(static_cast<std::size_t>(thread))
                .append(trk.firstChildElement(QStringLiteral("include")).text());
            // Read and written again: registered by the reader, found by the writer, no second file.
            const LvGPXTrack read(trk, directory);
            equal += read == trackOf(thread, equal) ? 1 : 0;
            QDomElement again = own.createElement(QStringLiteral("again"));
            read.toXml(again, directory);
        }
        right.at(static_cast<std::size_t>(thread)) = equal;
    });
    QCOMPARE(right, all(tracksPerThread));
    QSet<QString> different;
    for (const QStringList& own : names) {
        QCOMPARE(own.size(), tracksPerThread);
        different.unite(QSet<QString>(own.cbegin(), own.cend()));
    }
    QCOMPARE(different.size(), threadCount * tracksPerThread); // no name twice
    const QStringList files = directory.entryList(QDir::Files | QDir::Hidden);
    const QSet<QString> found(files.cbegin(), files.cend());
    QCOMPARE(QStringList((different - found).values()), QStringList()); // none lost
    QCOMPARE(QStringList((found - different).values()), QStringList()); // none left over
}

void tst_Threads::defaultConfiguration()
{
    LvGeoLocationSettings* settings = LvGeoLocationSettings::instance();
    constexpr int rounds = 60;
    settings->setDefaultTrackConfiguration(configuration(1));
    std::atomic<bool> stopped = false;
    std::thread writer([&] {
        for (int round = 0; !stopped; ++round) {
            settings->setDefaultTrackConfiguration(configuration(1 + round % 5));
            settings->setInstantlyAddLocations(round % 2 == 0);
            if (round % 5 == 0) {
                settings->saveSettings();
            } else if (round % 7 == 0) {
                settings->loadSettings();
            }
        }
    });
    PerThread whole{};
    inAllThreads([&](int thread) {
        int count = 0;
        for (int round = 0; round < rounds; ++round) {
            const LvGPXTrackConfiguration read = round % 2 == 0 ? settings->defaultTrackConfiguration()
                                                                : LvGPXConfiguredTrack().configuration();
            // Two fields that are always written together.
            const double width = read.lineWidth().value();
            count += read.smoothingSteps() == static_cast<int>(width) && width >= 1.0 && width <= 5.0 ? 1 : 0;
            (void)settings->instantlyAddLocations();
        }
        whole.at(static_cast<std::size_t>(thread)) = count;
    });
    stopped = true;
    writer.join();
    QCOMPARE(whole, all(rounds));
    // The store has what was set last, not what somebody else was about to save.
    settings->setDefaultTrackConfiguration(configuration(4));
    settings->loadSettings();
    QVERIFY(settings->defaultTrackConfiguration() == configuration(4));
    settings->setInstantlyAddLocations(true);
    settings->setDefaultTrackConfiguration(LvGPXTrackConfiguration::defaultValue());
}

void tst_Threads::renderersInPool_data()
{
    QTest::addColumn<int>("poolThreads");
    QTest::addColumn<int>("limit");
    QTest::newRow("one thread") << 1 << 0;
    QTest::newRow("two threads") << 2 << 0;
    QTest::newRow("two threads, workers may always fan out") << 2 << 1000;
    QTest::newRow("many threads") << 64 << 0;
    QTest::newRow("many threads, workers may always fan out") << 64 << 1000;
}

void tst_Threads::renderersInPool()
{
    QFETCH(int, poolThreads);
    QFETCH(int, limit); // 0 stands for the usual one
    const Watchdog watchdog;
    const int usualLimit = LvConcurrent::maxRunningThreads;
    LvConcurrent::maxRunningThreads = limit == 0 ? usualLimit : limit;
    QThreadPool* pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(poolThreads);

    LvGPXTrackSelection selection;
    for (const int shape : {4, 8, 1}) {
        LvGPXTrackConfiguration style = configuration(3);
        style.setTrackShape(LvGPXTrackShape(shape));
        style.setSmoothingStrength(80);
        selection.addTrack(LvGPXConfiguredTrack(lineTrack(QStringLiteral("long"), 2500), style));
    }
    selection.setCroppingOpacity(60);
    QImage background(240, 90, QImage::Format_RGB32);
    background.fill(Qt::darkGreen);
    const Renderer common(selection, background.size(), 1.0);
    const QImage drawn = common.render(TrackRenderOption::Normal);
    const QImage faded = common.crop(background);
    QVERIFY(drawn.pixelColor(0, 0).alpha() == 0);
    QVERIFY(faded != background.convertToFormat(faded.format()));

    constexpr int jobs = 70; // more than threads: some wait in the queue of a full pool
    std::atomic<int> equal = 0;
    for (int job = 0; job < jobs; ++job) {
        pool->start([&, job] {
            const Renderer own(selection, background.size(), 1.0);
            const LvGPXTrackRenderer& renderer = job % 2 == 0 ? own : common;
            if (renderer.render(TrackRenderOption::Normal) == drawn && renderer.crop(background) == faded) {
                ++equal;
            }
        });
    }
    for (int round = 0; round < 5; ++round) {
        QCOMPARE(common.render(TrackRenderOption::Normal), drawn);
        QCOMPARE(common.crop(background), faded);
    }
    QVERIFY(pool->waitForDone());
    QCOMPARE(equal.load(), jobs);
    LvConcurrent::maxRunningThreads = usualLimit;
}

LV_TEST_MAIN(tst_Threads)
#include "tst_Threads.moc"
