#include "LvFaults.h"
#include "LvFileHandler.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"
#include "LvGPXTrackFileRegistry.h"
#include "LvGPXTrackFileRegistryKey.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvTest.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

using LvFaults::Fault;

namespace
{

const QString killedOption = QStringLiteral("--save-until-killed");
const QString olderName = QStringLiteral("older.gpx");

/// What a writer tells about its failure: a reason, an empty text for success, or nothing at all.
struct Outcome {
    bool isTold = true;
    QString reason;
};

using Writer = std::function<Outcome(const QString& path)>;

/// A track of a thousand points that tells its number in each of them.
LvGPXTrack track(int number)
{
    QList<LvGPXTrackPoint> points;
    for (int index = 0; index < 1000; ++index) {
        points.append(LvGPXTrackPoint(LvGeoPosition(1 + number % 80, 1 + index * 0.01), number, {}, {}));
    }
    return {QString::number(number), QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::linestring};
}

QByteArray documentBytes()
{
    QDomDocument document;
    QDomElement gpx = LvXMLBuilder::buildRootElement(document, QStringLiteral("gpx"));
    LvXMLBuilder::buildDomElement(gpx, QStringLiteral("desc"), QString(100'000, u'x'));
    return document.toByteArray();
}

Outcome saveDocument(const QString& path)
{
    QDomDocument document;
    document.setContent(documentBytes());
    QStringList errors;
    const bool isSaved = LvXMLBuilder::saveUTF8(document, QFileInfo(path), &errors);
    return {isSaved == errors.isEmpty(), errors.join(QLatin1Char('\n'))};
}

Outcome replaceFile(const QString& path)
{
    return {true, LvFileHandler::replaceFile(QFileInfo(path), documentBytes())};
}

Outcome saveTrack(const QString& path)
{
    track(1).saveAsGpxFile(QFileInfo(path));
    return {false, {}};
}

Outcome saveRegisteredTrack(const QString& path)
{
    const QFileInfo file(path);
    LvGPXTrackFileRegistry::saveTrackInFile(LvGPXTrackFileRegistryKey(track(1), file.dir()), file);
    return {false, {}};
}

/// The other side of killedSavesLeaveOneOfBoth().
int saveUntilKilled(const QString& path)
{
    for (int number = 1;; ++number) {
        track(number).saveAsGpxFile(QFileInfo(path));
        if (number == 1) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
}

} // namespace

Q_DECLARE_METATYPE(Writer)

/// What becomes of files when they cannot be written, with every fault really provoked.
class tst_Faults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failedWritesLeaveEverything_data();
    void failedWritesLeaveEverything();
    void newFilesAppearWholeOrNotAtAll_data();
    void newFilesAppearWholeOrNotAtAll();
    void tracksBesideADocument_data();
    void tracksBesideADocument();
    void specialFilesStay_data();
    void specialFilesStay();
    void linksStayLinks();
    void oneFileForAllThreads();
    void killedSavesLeaveOneOfBoth();

private:
    static void addWritersAndFaults(bool hasOlderFile);
};

void tst_Faults::addWritersAndFaults(bool hasOlderFile)
{
    QTest::addColumn<Writer>("writer");
    QTest::addColumn<Fault>("fault");
    const std::vector<std::pair<const char*, Writer>> writers = {
        {"document", saveDocument},
        {"bytes", replaceFile},
        {"GPX file of a track", saveTrack},
        {"file of the registry", saveRegisteredTrack},
    };
    for (const auto& [name, writer] : writers) {
        for (const Fault fault : {Fault::FileSizeLimit, Fault::FullDisk, Fault::FullFileTable,
                                  Fault::ReadOnlyDirectory, Fault::ReadOnlyFile, Fault::VanishedDirectory}) {
            if (hasOlderFile || fault != Fault::ReadOnlyFile) {
                QTest::addRow("%s, %s", name, LvFaults::nameOf(fault)) << writer << fault;
            }
        }
    }
}

void tst_Faults::failedWritesLeaveEverything_data()
{
    addWritersAndFaults(true);
}

void tst_Faults::failedWritesLeaveEverything()
{
    QFETCH(Writer, writer);
    QFETCH(Fault, fault);
    LvFaults::Place place(fault, olderName);
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    const auto before = place.content();
    QCOMPARE(before.value(olderName), QByteArray("older"));
    place.begin();
    const Outcome outcome = writer(place.olderFile());
    place.end();
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    QVERIFY(!outcome.isTold || !outcome.reason.isEmpty());
    QCOMPARE(place.content(), before);
    // Without the fault it is written.
    const Outcome second = writer(place.olderFile());
    QCOMPARE(second.reason, QString());
    QCOMPARE(place.content().keys(), before.keys());
    QVERIFY(place.content().value(olderName).startsWith("<?xml version=\"1.0\""));
}

void tst_Faults::newFilesAppearWholeOrNotAtAll_data()
{
    addWritersAndFaults(false);
}

void tst_Faults::newFilesAppearWholeOrNotAtAll()
{
    QFETCH(Writer, writer);
    QFETCH(Fault, fault);
    LvFaults::Place place(fault, olderName);
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    const auto before = place.content();
    const QString path = QDir(place.directory()).filePath(QStringLiteral("new.gpx"));
    place.begin();
    const Outcome outcome = writer(path);
    place.end();
    QVERIFY(!outcome.isTold || !outcome.reason.isEmpty());
    QCOMPARE(place.content(), before);
    QCOMPARE(writer(path).reason, QString());
    QCOMPARE(place.content().size(), before.size() + 1);
}

void tst_Faults::tracksBesideADocument_data()
{
    QTest::addColumn<Fault>("fault");
    for (const Fault fault :
         {Fault::FileSizeLimit, Fault::FullDisk, Fault::FullFileTable, Fault::ReadOnlyDirectory}) {
        QTest::newRow(LvFaults::nameOf(fault)) << fault;
    }
}

void tst_Faults::tracksBesideADocument()
{
    // The registry tells nothing: it gives the name of a file that is not there, and nothing of it is left.
    QFETCH(Fault, fault);
    LvFaults::Place place(fault, olderName);
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    const auto before = place.content();
    const QDir directory(place.directory());
    const LvGPXTrackFileRegistryKey key(track(2), directory);
    place.begin();
    const QString name = LvGPXTrackFileRegistry::instance()->createAssignedFile(key);
    place.end();
    QVERIFY(!name.isEmpty());
    QCOMPARE(place.content(), before);
    // A reader of what refers to it finds a track without points instead of half a track.
    QDomDocument document;
    const QDomElement trk = LvXMLBuilder::buildRootElement(document, QStringLiteral("trk"));
    LvXMLBuilder::buildDomElement(trk, QStringLiteral("include"), name);
    QVERIFY(!LvGPXTrack(trk, directory).isValid());
    // Another track is not affected.
    const LvGPXTrackFileRegistryKey next(track(3), directory);
    const QString nextName = LvGPXTrackFileRegistry::instance()->createAssignedFile(next);
    QVERIFY(nextName != name);
    QCOMPARE(LvGPXTrackFile(QFileInfo(directory, nextName)).tracks(), QList<LvGPXTrack>{track(3)});
}

void tst_Faults::specialFilesStay_data()
{
    QTest::addColumn<Writer>("writer");
    QTest::addColumn<bool>("isSocket");
    QTest::newRow("document, pipe") << Writer(saveDocument) << false;
    QTest::newRow("document, socket") << Writer(saveDocument) << true;
    QTest::newRow("bytes, pipe") << Writer(replaceFile) << false;
    QTest::newRow("bytes, socket") << Writer(replaceFile) << true;
}

void tst_Faults::specialFilesStay()
{
    QFETCH(Writer, writer);
    QFETCH(bool, isSocket);
    const QTemporaryDir directory;
    const QByteArray path = QFile::encodeName(directory.filePath(QStringLiteral("special")));
    if (isSocket) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        QVERIFY(static_cast<std::size_t>(path.size()) < sizeof address.sun_path);
        std::copy(path.cbegin(), path.cend(), address.sun_path);
        const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(descriptor);
    } else {
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);
    }
    const QString link = directory.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(QFile::decodeName(path), link));
    for (const QString& name : {QFile::decodeName(path), link}) {
        const Outcome outcome = writer(name);
        QVERIFY2(outcome.reason.endsWith(QStringLiteral("Das ist keine gewöhnliche Datei.")),
                 qPrintable(outcome.reason));
    }

    struct stat status {
    };

    QCOMPARE(::lstat(path.constData(), &status), 0);
    QVERIFY(isSocket ? S_ISSOCK(status.st_mode) : S_ISFIFO(status.st_mode));
    QCOMPARE(QDir(directory.path())
                 .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot),
             (QStringList{"link", "special"}));
}

void tst_Faults::linksStayLinks()
{
    // The file behind the link is replaced, not the link.
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("file.gpx"));
    const QString link = directory.filePath(QStringLiteral("link.gpx"));
    QVERIFY(QFile::link(file, link));
    for (int number = 1; number <= 2; ++number) { // the first makes the file
        track(number).saveAsGpxFile(QFileInfo(link));
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(!QFileInfo(file).isSymLink());
        QCOMPARE(LvGPXTrackFile(QFileInfo(file)).tracks(), QList<LvGPXTrack>{track(number)});
    }
}

void tst_Faults::oneFileForAllThreads()
{
    // Whoever is last: the file is always one that somebody has written as a whole.
    constexpr int threadCount = 8;
    constexpr int rounds = 15;
    const QTemporaryDir directory;
    const QFileInfo file(directory.filePath(QStringLiteral("a.gpx")));
    track(1).saveAsGpxFile(file);
    std::vector<std::thread> threads;
    std::vector<int> right(threadCount, 0);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&right, &file, thread] {
            for (int round = 0; round < rounds; ++round) {
                track(1 + thread).saveAsGpxFile(file);
                const QList<LvGPXTrack> tracks = LvGPXTrackFile(file).tracks();
                const int number = tracks.isEmpty() ? 0 : tracks.first().name().toInt();
                right.at(static_cast<std::size_t>(thread)) +=
                    number > 0 && tracks.first() == track(number) ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(right, std::vector<int>(threadCount, rounds));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"a.gpx"});
}

void tst_Faults::killedSavesLeaveOneOfBoth()
{
    constexpr int kills = 200;
    int longestLifeMs = 4; // grows to what the machine needs for a save
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("a.gpx"));
    QRandomGenerator random(7);
    int replaced = 0;
    for (int i = 0; i < kills; ++i) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), {killedOption, path});
        QVERIFY(process.waitForReadyRead(30000));
        QTest::qSleep(random.bounded(longestLifeMs));
        QCOMPARE(process.state(), QProcess::Running);
        process.kill();
        QVERIFY(process.waitForFinished(30000));
        const QList<LvGPXTrack> tracks = LvGPXTrackFile(QFileInfo(path)).tracks();
        QCOMPARE(tracks.size(), 1);
        const int number = tracks.first().name().toInt();
        QVERIFY(tracks.first() == track(number));
        replaced += number > 1 ? 1 : 0;
        longestLifeMs += number > 1 ? 0 : 2;
    }
    // Otherwise hardly a program was killed while it replaced a file of its own.
    QVERIFY2(replaced > kills / 10, qPrintable(QString::number(replaced)));
}

int main(int argc, char* argv[])
{
    const QStringList arguments(argv, argv + argc);
    if (arguments.value(1) == killedOption) {
        LvTest::isolateEnvironment();
        const QCoreApplication application(argc, argv);
        return saveUntilKilled(arguments.value(2));
    }
    return LvTest::run<tst_Faults>(argc, argv);
}

#include "tst_Faults.moc"
