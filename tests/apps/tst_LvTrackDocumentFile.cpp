#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackFileRegistry.h"
#include "LvGPXTrackFileRegistryKey.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackDocument.h"
#include "LvTrackDocumentFile.h"
#include "LvTrackLoader.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>
#include <limits>
#include <thread>
#include <vector>

using namespace LvTestTracks;
using TrackStorage = LvTrackDocumentFile::TrackStorage;

Q_DECLARE_METATYPE(LvTrackDocumentFile::TrackStorage)
Q_DECLARE_METATYPE(LvTrackDocumentContent)

namespace
{

const QString killedOption = QStringLiteral("--save-until-killed");
constexpr int killedTracks = 3;
constexpr int killedPoints = 60;

QByteArray bytesOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(fileName));
    }
}

LvTrackDocumentContent contentOf(const LvGPXConfiguredTrackList& tracks, const QList<bool>& visibility)
{
    return {LvGPXTrackSelection(tracks), visibility};
}

LvGPXConfiguredTrack configured(const LvGPXTrack& track)
{
    return {track, LvGPXTrackConfiguration::defaultValue()};
}

LvGPXTrack ring(const QString& name, double size)
{
    return {name,
            QString(),
            {LvGPXTrackSegment(QList<LvGPXTrackPoint>{point(50 - size, 8 - size), point(50 - size, 8 + size),
                                                      point(50 + size, 8 + size), point(50 + size, 8 - size),
                                                      point(50 - size, 8 - size)})},
            LvGPXTrackShapeEnum::polygon};
}

/// Everything that a track can have.
LvTrackDocumentContent fullContent()
{
    const LvGPXTrack rich(QStringLiteral("Brocken & <Harz> „ü“ 😀"),
                          QStringLiteral("Zwei\nZeilen \"mit\" 'Text'"),
                          {LvGPXTrackSegment(QList<LvGPXTrackPoint>{
                               point(51.8, 10.6, 1141, utc("2023-06-01T10:00:00.250Z"), "Gipfel, ganz oben"),
                               point(51.81, 10.61, -3, utc("2023-06-01T10:00:01Z")), point(51.82, 10.62)}),
                           LvGPXTrackSegment(QList<LvGPXTrackPoint>{
                               point(-51.8123456, -179.9999999, 7, utc("1969-12-31T23:59:59Z")),
                               point(0.00001, 0.00002, 0, utc("1970-01-01T00:00:00Z")), point(90, 180)})},
                          LvGPXTrackShapeEnum::linestring);
    LvGPXTrack area = ring(QStringLiteral("See"), 1);
    LvGPXTrack island = ring(QStringLiteral("Insel"), 0.5);
    island.addEnclave(ring(QStringLiteral("Teich"), 0.2));
    area.setEnclaves({island, ring(QStringLiteral("Zweite Insel"), 0.1)});
    LvGPXTrack spot(point(53.1, 8.8, 12, utc("2020-02-29T12:00:00Z"), "Ein Punkt"));
    LvGPXTrackConfiguration style = LvGPXTrackConfiguration::defaultValue();
    style.setLineColor(QColor(1, 2, 3, 4));
    style.setFillColor(QColor(5, 6, 7, 8));
    style.setLineWidth(7.7);
    style.setHaloWidth(0.1);
    style.setPenStyle(LvPenStyle(Qt::DashDotLine));
    LvGPXTrackDisplayOptions options;
    options |= LvGPXTrackDisplayOptionsEnum::stroke;
    options |= LvGPXTrackDisplayOptionsEnum::fill;
    style.setCurrentDisplayOptions(options);
    style.setMarkerShape(LvGPXMarkerShapeEnum::star9);
    style.setSmoothingStrength(33);
    style.setSmoothingSteps(4);
    LvTrackDocumentContent content = contentOf(
        {configured(rich), {area, style}, configured(spot), named("A")}, {true, false, true, false});
    content.selection.setCroppingOpacity(77);
    return content;
}

/// The content of one of the many savings of the program that is killed.
LvTrackDocumentContent killedContent(int number)
{
    LvGPXConfiguredTrackList tracks;
    for (int i = 0; i < killedTracks; ++i) {
        QList<LvGPXTrackPoint> points;
        for (int k = 0; k < killedPoints; ++k) {
            points.append(
                point(50 + k * 0.001, 8 + number * 0.001, k, utc("2023-06-01T10:00:00Z").addSecs(k)));
        }
        tracks.append(configured(line(QString::number(number), points)));
    }
    return contentOf(tracks, QList<bool>(killedTracks, number % 2 == 0));
}

/// The other side of savingIsNeverHalfDone(): tells that it has begun, and saves until it is killed.
int saveUntilKilled(const QString& fileName, TrackStorage storage)
{
    for (int number = 1;; ++number) {
        const QString errorText = LvTrackDocumentFile::write(killedContent(number), fileName, storage);
        if (!errorText.isEmpty()) {
            std::fprintf(stderr, "%s\n", qPrintable(errorText));
            return 1;
        }
        if (number == 1) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
}

} // namespace

class tst_LvTrackDocumentFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void names();
    void roundTrip_data();
    void roundTrip();
    void roundTripOfSamples_data();
    void roundTripOfSamples();
    void readableByTheLibrary();
    void form();
    void inTheCurrentDirectory_data();
    void inTheCurrentDirectory();
    void unchangedTracksKeepTheirFiles();
    void lostTrackFileIsWrittenAnew();
    void olderDocumentKeepsItsTracks();
    void missingTrackFilesAreNamed();
    void documentMovesWithItsFiles();
    void saveAndOpen();
    void failedOpenLeavesTheDocument();
    void brokenFiles_data();
    void brokenFiles();
    void lenientReading();
    void unwritable_data();
    void unwritable();
    void savingIsNeverHalfDone_data();
    void savingIsNeverHalfDone();
    void severalThreads();
    void manyPoints();
    void tooManyPoints_data();
    void tooManyPoints();
    void tooManyBytes_data();
    void tooManyBytes();
    void sizeIsKnownBefore();

private:
    [[nodiscard]] QString path(const QString& name) const { return myDirectory->filePath(name); }

    [[nodiscard]] QStringList files() const
    {
        return QDir(myDirectory->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> myDirectory;
};

void tst_LvTrackDocumentFile::init()
{
    myDirectory = std::make_unique<QTemporaryDir>();
    QVERIFY(myDirectory->isValid());
}

void tst_LvTrackDocumentFile::names()
{
    QCOMPARE(LvTrackDocumentFile::suffix(), QStringLiteral("lvt"));
    QCOMPARE(LvTrackDocumentFile::nameFilter(), QStringLiteral("Spurdokumente (*.lvt)"));
    QVERIFY(LvTrackDocumentFile::hasSuffix(QStringLiteral("/a/b.lvt")));
    QVERIFY(LvTrackDocumentFile::hasSuffix(QStringLiteral("b.x.LVT")));
    QVERIFY(!LvTrackDocumentFile::hasSuffix(QStringLiteral("/a.lvt/b.gpx")));
    QVERIFY(!LvTrackDocumentFile::hasSuffix(QStringLiteral("lvt")));
}

void tst_LvTrackDocumentFile::roundTrip_data()
{
    QTest::addColumn<TrackStorage>("storage");
    QTest::addColumn<LvTrackDocumentContent>("content");
    for (const TrackStorage storage : {TrackStorage::Inline, TrackStorage::SeparateFiles}) {
        const char* where = storage == TrackStorage::Inline ? "inline" : "separate";
        QTest::addRow("everything, %s", where) << storage << fullContent();
        QTest::addRow("empty, %s", where) << storage << LvTrackDocumentContent();
        QTest::addRow("track without points, %s", where)
            << storage
            << contentOf(configured(LvGPXTrack("Leer", "", {}, LvGPXTrackShapeEnum::hop)), {false});
        QTest::addRow("twins, %s", where) << storage << contentOf(list({"A", "A"}), {false, true});
        QTest::addRow("time far beyond the calendar, %s", where)
            << storage
            << contentOf(configured(line(
                             "Z", {point(1, 2, 3, QDateTime::fromSecsSinceEpoch(1685613600000, Qt::UTC))})),
                         {true});
    }
}

void tst_LvTrackDocumentFile::roundTrip()
{
    QFETCH(TrackStorage, storage);
    QFETCH(LvTrackDocumentContent, content);
    const QString fileName = path("a document.lvt");
    QCOMPARE(LvTrackDocumentFile::write(content, fileName, storage), QString());
    LvTrackDocumentReading reading = LvTrackDocumentFile::read(fileName);
    QCOMPARE(reading.errorText, QString());
    QCOMPARE(reading.warnings, QStringList());
    QCOMPARE(reading.content.visibility, content.visibility);
    QCOMPARE(reading.content.selection.count(), content.selection.count());
    for (int row = 0; row < content.selection.count(); ++row) {
        QCOMPARE(reading.content.selection.value(row).configuration(), content.selection.configuration(row));
        QVERIFY(reading.content.selection.value(row).track() == content.selection.value(row).track());
    }
    QVERIFY(reading.content == content);
    const bool hasTrackFiles = storage == TrackStorage::SeparateFiles && !content.selection.isEmpty();
    QCOMPARE(files().size() > 1, hasTrackFiles);

    // What was read is written the same way.
    const QString again = path("again.lvt");
    QCOMPARE(LvTrackDocumentFile::write(reading.content, again, storage), QString());
    QCOMPARE(bytesOf(again), bytesOf(fileName));
}

void tst_LvTrackDocumentFile::roundTripOfSamples_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"brocken-hike.gpx", "date-line.gpx", "german-bight.kml", "iceland.kmz",
                             "lake-islands.gpx", "weser-route.gpx"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_LvTrackDocumentFile::roundTripOfSamples()
{
    QFETCH(QString, name);
    const LvGPXConfiguredTrackList tracks = LvTrackLoader::load(LvTest::sampleFile(name)).tracks;
    QVERIFY(tracks.isValid());
    const LvTrackDocumentContent content = contentOf(tracks, QList<bool>(tracks.count(), true));
    for (const TrackStorage storage : {TrackStorage::Inline, TrackStorage::SeparateFiles}) {
        QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), storage), QString());
        QVERIFY(LvTrackDocumentFile::read(path("a.lvt")).content == content);
    }
}

void tst_LvTrackDocumentFile::readableByTheLibrary()
{
    // The element inside is that of the library, for any program that uses it.
    const LvTrackDocumentContent content = fullContent();
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), TrackStorage::Inline), QString());
    const QDomElement root = LvXMLLoader::loadDocumentElement(QFileInfo(path("a.lvt")));
    QCOMPARE(root.tagName(), QStringLiteral("lvtracks"));
    const LvGPXTrackSelection selection(root.firstChildElement("selection"), QDir(QString()));
    QVERIFY(selection == content.selection);
}

void tst_LvTrackDocumentFile::form()
{
    const LvGPXConfiguredTrack track =
        configured(line("A", {point(50, 8, 3, utc("2023-06-01T10:00:00Z")), point(51, 9)}));
    QCOMPARE(LvTrackDocumentFile::write(contentOf(track, {false}), path("a.lvt"), TrackStorage::Inline),
             QString());
    const QByteArray text = bytesOf(path("a.lvt"));
    QVERIFY2(text.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<lvtracks version=\"1\">\n"), text);
    QVERIFY2(text.contains("<selection croppingOpacity=\"255\">"), text);
    QVERIFY2(text.contains("visible=\"0\""), text);
    // Compact, with the time in seconds.
    QVERIFY2(text.contains("<compressedPoints>8.,50.,3,1685613600\n9.,51.</compressedPoints>"), text);
}

void tst_LvTrackDocumentFile::inTheCurrentDirectory_data()
{
    QTest::addColumn<TrackStorage>("storage");
    QTest::newRow("inline") << TrackStorage::Inline;
    QTest::newRow("separate files") << TrackStorage::SeparateFiles;
}

void tst_LvTrackDocumentFile::inTheCurrentDirectory()
{
    QFETCH(TrackStorage, storage);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(myDirectory->path()));
    const LvTrackDocumentContent content = fullContent();
    QString errorText = LvTrackDocumentFile::write(content, QStringLiteral("a.lvt"), storage);
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(QStringLiteral("a.lvt"));
    const QStringList written = files();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(errorText, QString());
    QCOMPARE(reading.warnings, QStringList());
    QVERIFY(reading.content == content);
    QCOMPARE(written.size(), storage == TrackStorage::Inline ? 1 : 5);
}

void tst_LvTrackDocumentFile::unchangedTracksKeepTheirFiles()
{
    LvTrackDocument document;
    document.reset(contentOf(list({"A", "B"}), {true, true}));
    const QString fileName = path("a.lvt");
    QCOMPARE(LvTrackDocumentFile::save(document, fileName, TrackStorage::SeparateFiles), QString());
    QCOMPARE(files(), (QStringList{"a.lvt", "track.gps", "track_1.gps"}));
    document.setCroppingOpacity(5);
    document.setVisible(0, false);
    document.moveTrack(0, 1);
    QCOMPARE(LvTrackDocumentFile::save(document, fileName, TrackStorage::SeparateFiles), QString());
    QCOMPARE(files(), (QStringList{"a.lvt", "track.gps", "track_1.gps"}));
    document.renameTrack(0, QStringLiteral("C"));
    QCOMPARE(LvTrackDocumentFile::save(document, fileName, TrackStorage::SeparateFiles), QString());
    QCOMPARE(files(), (QStringList{"a.lvt", "track.gps", "track_1.gps", "track_2.gps"}));
    QVERIFY(LvTrackDocumentFile::read(fileName).content == document.content());
}

void tst_LvTrackDocumentFile::lostTrackFileIsWrittenAnew()
{
    const LvTrackDocumentContent content = contentOf(list({"A", "B"}), {true, true});
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), TrackStorage::SeparateFiles), QString());
    QVERIFY(QFile::remove(path("track.gps")));
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), TrackStorage::SeparateFiles), QString());
    QVERIFY(LvTrackDocumentFile::read(path("a.lvt")).content == content);
}

void tst_LvTrackDocumentFile::olderDocumentKeepsItsTracks()
{
    const LvTrackDocumentContent first = contentOf(list({"A", "B"}), {true, true});
    QCOMPARE(LvTrackDocumentFile::write(first, path("first.lvt"), TrackStorage::SeparateFiles), QString());
    const LvTrackDocumentContent second = contentOf(list({"B", "C"}), {true, false});
    QCOMPARE(LvTrackDocumentFile::write(second, path("second.lvt"), TrackStorage::SeparateFiles), QString());
    QVERIFY(LvTrackDocumentFile::read(path("first.lvt")).content == first);
    QVERIFY(LvTrackDocumentFile::read(path("second.lvt")).content == second);
}

void tst_LvTrackDocumentFile::missingTrackFilesAreNamed()
{
    const LvTrackDocumentContent content = contentOf(list({"A", "B", "C"}), {true, true, false});
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), TrackStorage::SeparateFiles), QString());
    QVERIFY(QFile::remove(path("track.gps")));
    write(path("track_1.gps"), "<includedTrack/>");
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(path("a.lvt"));
    QCOMPARE(reading.errorText, QString());
    QCOMPARE(reading.warnings,
             (QStringList{"Die Spurdatei „track.gps“ fehlt oder enthält keine Spur.",
                          "Die Spurdatei „track_1.gps“ fehlt oder enthält keine Spur."}));
    QCOMPARE(LvTestTracks::names(reading.content.selection.tracks()), QStringLiteral("C"));
    QCOMPARE(reading.content.visibility, QList<bool>{false});
}

void tst_LvTrackDocumentFile::documentMovesWithItsFiles()
{
    const LvTrackDocumentContent content = contentOf(list({"A", "B"}), {true, true});
    QVERIFY(QDir(myDirectory->path()).mkdir("old"));
    QCOMPARE(LvTrackDocumentFile::write(content, path("old/a.lvt"), TrackStorage::SeparateFiles), QString());
    QVERIFY(QDir(myDirectory->path()).rename("old", "new"));
    QVERIFY(LvTrackDocumentFile::read(path("new/a.lvt")).content == content);
}

void tst_LvTrackDocumentFile::saveAndOpen()
{
    LvTrackDocument document;
    document.addTracks(list({"A", "B"}));
    QVERIFY(document.isModified());
    QCOMPARE(LvTrackDocumentFile::save(document, path("a.lvt"), TrackStorage::Inline), QString());
    QVERIFY(!document.isModified());
    QCOMPARE(document.fileName(), path("a.lvt"));

    LvTrackDocument other;
    other.addTracks(list({"X"}));
    QStringList warnings{QStringLiteral("old")};
    QCOMPARE(LvTrackDocumentFile::open(other, path("a.lvt"), &warnings), QString());
    QVERIFY(other.content() == document.content());
    QVERIFY(!other.isModified());
    QVERIFY(!other.undoStack()->canUndo());
    QCOMPARE(other.fileName(), path("a.lvt"));
    QVERIFY(warnings.isEmpty());
}

void tst_LvTrackDocumentFile::failedOpenLeavesTheDocument()
{
    LvTrackDocument document;
    document.addTracks(list({"A"}));
    const LvTrackDocumentContent before = document.content();
    QVERIFY(!LvTrackDocumentFile::open(document, path("missing.lvt")).isEmpty());
    QVERIFY(document.content() == before);
    QVERIFY(document.isModified());
    QVERIFY(document.fileName().isEmpty());
    // And so does a failed save().
    QVERIFY(!LvTrackDocumentFile::save(document, path("no/such/folder.lvt"), TrackStorage::Inline).isEmpty());
    QVERIFY(document.isModified());
    QVERIFY(document.fileName().isEmpty());
}

void tst_LvTrackDocumentFile::brokenFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    const QString broken = QStringLiteral("Die Datei „%1“ ist beschädigt: ");
    QTest::newRow("empty") << QByteArray() << broken;
    QTest::newRow("no XML") << QByteArray("\x89PNG\r\n\x1a\n") << broken;
    QTest::newRow("cut off") << QByteArray("<lvtracks version=\"1\"><selection><gpxtrack>") << broken;
    QTest::newRow("another root") << QByteArray("<gpx version=\"1.1\"/>")
                                  << QStringLiteral("Die Datei „%1“ ist kein Spurdokument.");
    QTest::newRow("from the future") << QByteArray("<lvtracks version=\"2\"/>")
                                     << QStringLiteral(
                                            "Die Datei „%1“ stammt aus einer neueren Fassung des Programms.");
}

void tst_LvTrackDocumentFile::brokenFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, expected);
    write(path("a.lvt"), bytes);
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(path("a.lvt"));
    const QString shown = expected.arg(QDir::toNativeSeparators(path("a.lvt")));
    QVERIFY2(reading.errorText.startsWith(shown), qPrintable(reading.errorText));
    QVERIFY(!reading.errorText.contains(QLatin1Char('\n')));
    QVERIFY(reading.content.selection.isEmpty());
}

void tst_LvTrackDocumentFile::lenientReading()
{
    // No selection, no version: nothing there is no error.
    write(path("a.lvt"), "<lvtracks/>");
    QCOMPARE(LvTrackDocumentFile::read(path("a.lvt")).errorText, QString());
    // Unknown parts are skipped; tracks under the older name come first, and all are shown by default.
    write(path("b.lvt"),
          "<lvtracks version=\"1\"><future/><selection croppingOpacity=\"9\"><gpxtrack>"
          "<configuredTrack visible=\"no idea\"><trk><name>Second</name></trk></configuredTrack><future/>"
          "<locationTrack visible=\"false\"><trk><name>First</name></trk></locationTrack>"
          "</gpxtrack></selection></lvtracks>");
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(path("b.lvt"));
    QCOMPARE(LvTestTracks::names(reading.content.selection.tracks()), QStringLiteral("First Second"));
    QCOMPARE(reading.content.visibility, (QList<bool>{false, true}));
    QCOMPARE(reading.content.selection.nominalCroppingOpacity(), 9);
}

void tst_LvTrackDocumentFile::unwritable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<TrackStorage>("storage");
    for (const TrackStorage storage : {TrackStorage::Inline, TrackStorage::SeparateFiles}) {
        const char* where = storage == TrackStorage::Inline ? "inline" : "separate";
        QTest::addRow("no such folder, %s", where) << "no/such/a.lvt" << storage;
        QTest::addRow("a folder itself, %s", where) << "folder" << storage;
        QTest::addRow("below a file, %s", where) << "file/a.lvt" << storage;
    }
}

void tst_LvTrackDocumentFile::unwritable()
{
    QFETCH(QString, name);
    QFETCH(TrackStorage, storage);
    QVERIFY(QDir(myDirectory->path()).mkdir("folder"));
    write(path("file"), "untouched");
    const QString errorText = LvTrackDocumentFile::write(fullContent(), path(name), storage);
    QVERIFY(!errorText.isEmpty());
    QVERIFY(!errorText.contains(QLatin1Char('\n')));
    QCOMPARE(bytesOf(path("file")), QByteArray("untouched"));
}

void tst_LvTrackDocumentFile::savingIsNeverHalfDone_data()
{
    QTest::addColumn<TrackStorage>("storage");
    QTest::newRow("inline") << TrackStorage::Inline;
    QTest::newRow("separate files") << TrackStorage::SeparateFiles;
}

void tst_LvTrackDocumentFile::savingIsNeverHalfDone()
{
    QFETCH(TrackStorage, storage);
    constexpr int kills = 100; // of each kind of document
    int longestLifeMs = 4; // grows to what the machine needs for a save
    const QString fileName = path("a.lvt");
    QRandomGenerator random(20);
    int replaced = 0;
    for (int i = 0; i < kills; ++i) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(),
                      {killedOption, fileName, storage == TrackStorage::Inline ? "inline" : "separate"});
        QVERIFY(process.waitForReadyRead(30000));
        QTest::qSleep(random.bounded(longestLifeMs));
        QCOMPARE(process.state(), QProcess::Running);
        process.kill();
        QVERIFY(process.waitForFinished(30000));

        const LvTrackDocumentReading reading = LvTrackDocumentFile::read(fileName);
        QCOMPARE(reading.errorText, QString());
        QCOMPARE(reading.warnings, QStringList());
        QVERIFY(!reading.content.selection.isEmpty());
        const int number = reading.content.selection.value(0).name().toInt();
        QVERIFY(reading.content == killedContent(number));
        replaced += number > 1 ? 1 : 0;
        longestLifeMs += number > 1 ? 0 : 2;
    }
    // Otherwise hardly a program was killed while it replaced a document of its own.
    QVERIFY2(replaced > kills / 10, qPrintable(QString::number(replaced)));
}

void tst_LvTrackDocumentFile::severalThreads()
{
    // Documents beside each other, with tracks that all of them have and such that only one has.
    constexpr int threadCount = 6;
    constexpr int rounds = 4;
    std::vector<std::thread> threads;
    std::vector<int> right(threadCount, 0);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&right, thread, this] {
            const QString fileName = path(QStringLiteral("%1.lvt").arg(thread));
            for (int round = 0; round < rounds; ++round) {
                const LvTrackDocumentContent content =
                    contentOf(list({"A", QString::number(thread), "B", QString::number(100 + round)}),
                              {true, false, true, false});
                const auto storage =
                    (thread + round) % 3 == 0 ? TrackStorage::Inline : TrackStorage::SeparateFiles;
                const QString errorText = LvTrackDocumentFile::write(content, fileName, storage);
                const LvTrackDocumentReading reading = LvTrackDocumentFile::read(fileName);
                const bool isRight = errorText.isEmpty() && reading.errorText.isEmpty()
                    && reading.warnings.isEmpty() && reading.content == content;
                right.at(static_cast<std::size_t>(thread)) += isRight ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(right, std::vector<int>(threadCount, rounds));
}

void tst_LvTrackDocumentFile::manyPoints()
{
    constexpr int tracks = 700;
    constexpr int pointsPerTrack = 239; // 167,300 points in all
    LvGPXConfiguredTrackList all;
    for (int i = 0; i < tracks; ++i) {
        QList<LvGPXTrackPoint> points;
        for (int k = 0; k < pointsPerTrack; ++k) {
            points.append(point(50 + k * 0.0011, 8 + i * 0.0013, k, utc("2023-06-01T10:00:00Z").addSecs(k)));
        }
        all.append(configured(line(QString::number(i), points)));
    }
    const LvTrackDocumentContent content = contentOf(all, QList<bool>(tracks, true));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), TrackStorage::Inline), QString());
    const qint64 writing = timer.restart();
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(path("a.lvt"));
    const qint64 readingTime = timer.elapsed();
    QVERIFY(reading.content == content);
    qInfo("%d points: %lld ms to write, %lld ms to read, %lld bytes", tracks * pointsPerTrack,
          static_cast<long long>(writing), static_cast<long long>(readingTime),
          static_cast<long long>(QFileInfo(path("a.lvt")).size()));
}

void tst_LvTrackDocumentFile::tooManyPoints_data()
{
    QTest::addColumn<TrackStorage>("storage");
    QTest::addColumn<QString>("expected");
    QTest::newRow("inline")
        << TrackStorage::Inline
        << "Die Spuren haben so viele Punkte mit Texten oder Sekundenbruchteilen, dass sich "
           "das Dokument nicht wieder öffnen ließe. Mit einer eigenen Datei für jede Spur "
           "(siehe Einstellungen) ist mehr Platz.";
    QTest::newRow("separate files") << TrackStorage::SeparateFiles
                                    << "Die Spur „Fahrt“ hat so viele Punkte mit Texten oder "
                                       "Sekundenbruchteilen, dass sich ihre Datei nicht "
                                       "wieder öffnen ließe.";
}

void tst_LvTrackDocumentFile::tooManyPoints()
{
    QFETCH(TrackStorage, storage);
    QFETCH(QString, expected);
    const LvTrackDocumentContent older = contentOf(list({"A"}), {true});
    QCOMPARE(LvTrackDocumentFile::write(older, path("a.lvt"), TrackStorage::Inline), QString());
    const LvGPXTrackPoint sample = point(50, 8, 100, utc("2023-06-01T10:00:00.250Z"), "Text");
    constexpr qint64 nodesPerPoint = 11; // point, two attributes, three children, each of these with a text
    const auto count = static_cast<qsizetype>(LvXMLLoader::maximumNodes / nodesPerPoint + 1);
    const LvTrackDocumentContent content =
        contentOf(configured(line("Fahrt", QList<LvGPXTrackPoint>(count, sample))), {true});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), storage), expected);
    QVERIFY(timer.elapsed() < 20000); // nothing has been built
    QVERIFY(LvTrackDocumentFile::read(path("a.lvt")).content == older);
    QCOMPARE(files(), QStringList{"a.lvt"});
}

void tst_LvTrackDocumentFile::tooManyBytes_data()
{
    QTest::addColumn<TrackStorage>("storage");
    QTest::addColumn<QString>("expected");
    QTest::newRow("inline") << TrackStorage::Inline
                            << "Die Spuren haben so viele Punkte, dass sich das Dokument nicht wieder öffnen "
                               "ließe. Mit einer eigenen Datei für jede Spur (siehe Einstellungen) ist mehr "
                               "Platz.";
    QTest::newRow("separate files")
        << TrackStorage::SeparateFiles
        << "Die Spur „Lang“ hat so viele Punkte, dass sich ihre Datei nicht wieder öffnen ließe.";
}

void tst_LvTrackDocumentFile::tooManyBytes()
{
    QFETCH(TrackStorage, storage);
    QFETCH(QString, expected);
    constexpr qint64 maximumBytes = 20000;
    const LvTrackDocumentContent older = contentOf(list({"A"}), {true});
    QCOMPARE(LvTrackDocumentFile::write(older, path("a.lvt"), TrackStorage::Inline, maximumBytes), QString());
    QList<LvGPXTrackPoint> points;
    for (int index = 0; index < 2000; ++index) {
        points.append(point(50.1 + index * 0.001, 8.1, 7));
    }
    // The track in front would have room, but is not written either.
    const LvTrackDocumentContent content =
        contentOf({named("B"), configured(line("Lang", points))}, {true, true});
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), storage, maximumBytes), expected);
    QVERIFY(LvTrackDocumentFile::read(path("a.lvt")).content == older);
    QCOMPARE(files(), QStringList{"a.lvt"});
    QCOMPARE(LvTrackDocumentFile::write(content, path("a.lvt"), storage, 10 * maximumBytes), QString());
    QVERIFY(LvTrackDocumentFile::read(path("a.lvt")).content == content);
    // With files of their own, the document itself may still become too large.
    if (storage == TrackStorage::SeparateFiles) {
        const LvTrackDocumentContent twins =
            contentOf(list(QStringList(1000, QStringLiteral("B"))), QList<bool>(1000, true));
        QCOMPARE(
            LvTrackDocumentFile::write(twins, path("a.lvt"), storage, 10 * maximumBytes),
            QStringLiteral("Es sind so viele Spuren, dass sich das Dokument nicht wieder öffnen ließe."));
        QVERIFY(LvTrackDocumentFile::read(path("a.lvt")).content == content);
    }
}

void tst_LvTrackDocumentFile::sizeIsKnownBefore()
{
    // Whatever its content is, a document of so many bytes is refused where fewer are allowed.
    QRandomGenerator random(20261122);
    for (int round = 0; round < 15; ++round) {
        LvTrackDocumentContent content;
        LvGPXConfiguredTrackList tracks;
        for (int count = random.bounded(5); count > 0; --count) {
            LvGPXTrackConfiguration style = fullContent().selection.configuration(1);
            style.setLineWidth(random.generateDouble() * 1e-5);
            style.setHaloWidth(-1e300 * random.generateDouble());
            style.setSmoothingSteps(std::numeric_limits<int>::min());
            style.setCurrentDisplayOptions(
                LvGPXTrackDisplayOptions(std::numeric_limits<quint32>::max())); // every one
            tracks.append(LvGPXConfiguredTrack(randomTrack(random, 2), style));
        }
        content.selection = LvGPXTrackSelection(tracks);
        content.selection.setCroppingOpacity(0);
        for (const TrackStorage storage : {TrackStorage::Inline, TrackStorage::SeparateFiles}) {
            const QString fileName = path(QStringLiteral("%1.lvt").arg(round));
            QCOMPARE(LvTrackDocumentFile::write(content, fileName, storage), QString());
            const qint64 size = QFileInfo(fileName).size();
            QVERIFY(!LvTrackDocumentFile::write(content, fileName, storage, size - 1).isEmpty());
            QCOMPARE(QFileInfo(fileName).size(), size);
        }
    }
}

int main(int argc, char* argv[])
{
    const QStringList arguments(argv, argv + argc);
    if (arguments.value(1) == killedOption) {
        LvTest::isolateEnvironment();
        const QCoreApplication application(argc, argv);
        return saveUntilKilled(arguments.value(2),
                               arguments.value(3) == QLatin1String("inline") ? TrackStorage::Inline
                                                                             : TrackStorage::SeparateFiles);
    }
    return LvTest::run<tst_LvTrackDocumentFile>(argc, argv);
}

#include "tst_LvTrackDocumentFile.moc"
