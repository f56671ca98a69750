#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackFile.h"
#include "LvTest.h"
#include "LvTrackSelectionFactory.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QSet>
#include <QUrl>

namespace
{

// Generous for a debug build with sanitizers on a busy machine; each file takes well below a second in a
// release.
constexpr qint64 longestMilliseconds = 20000;

struct GpxFile {
    const char* name;
    int tracks;
    int segments;
    int points;
    const char* firstName;
};

// Counted with another XML parser and the rules of the format.
const GpxFile gpxFacts[] = {
    {"gpx/GH#137.gpx", 1, 1, 51, "Trk Name"},
    {"gpx/bad.gpx", 1, 1, 2, "bad 1"},
    {"gpx/basecamp.gpx", 1, 1, 2, "Hwy 119 to Hwy 72"},
    {"gpx/blue_hills.gpx", 3, 14, 1243, "BIG LOOP"},
    {"gpx/cerknicko-jezero.gpx", 7, 7, 296, "ACTIVE LOG #2"},
    {"gpx/empty_names1.gpx", 2, 2, 4, "empty_names1 1"},
    {"gpx/expertgps.gpx", 1, 1, 64, "expertgps 1"},
    {"gpx/fitwrite-track.gpx", 1, 2, 64, "meridian"},
    {"gpx/gdb-sample-v3-ilinks.gpx", 1, 33, 289, "Trip to Schoodic Woods Campground - Day 1"},
    {"gpx/geocaching.gpx", 0, 0, 0, ""},
    {"gpx/googletakeout.gpx", 221, 221, 778, "googletakeout 1"},
    {"gpx/gpx_timezone.gpx", 1, 1, 1, "2021-01-07 22:51"},
    {"gpx/gtrnctr_power.gpx", 1, 1, 5109, "2010-05-28T01:16:35.000Z"},
    {"gpx/igc1.gpx", 4, 4, 121, "igc1 1"},
    {"gpx/north_core.gpx", 10, 15, 34, "north_core 1"},
    {"gpx/own-utf16le.gpx", 1, 1, 2, "Zürich → 東京"},
    {"gpx/own-windows-1252.gpx", 1, 1, 2, "Größe 5 €"},
    {"gpx/segmented_tracks.gpx", 2, 10, 46, "No Times"},
    {"gpx/track-with-small-floats.gpx", 1, 1, 3, "Untitled Path"},
    {"gpx/via-emilia.gpx", 1, 1, 5698, "via-emilia.gpx"},
    {"gpx/with_power_2.gpx", 1, 1, 80, "with_power"},
    {"gpx/wptsequence.gpx", 1, 1, 1, "wptsequence 1"},
    {"malformed/own-bad-utf8.gpx", 0, 0, 0, ""},
    {"malformed/own-billion-laughs.gpx", 0, 0, 0, ""},
    {"malformed/own-empty.gpx", 0, 0, 0, ""},
    {"malformed/own-external-entity.gpx", 1, 1, 2, "[][inner]"},
    {"malformed/own-numbers.gpx", 1, 1, 7, "numbers"},
    {"malformed/own-truncated.gpx", 0, 0, 0, ""},
    {"malformed/own-xml11.gpx", 0, 0, 0, ""},
    {"malformed/trackfilter_discard_err.gpx", 0, 0, 0, ""},
    {"malformed/Üφήが1.gpx", 0, 0, 0, ""},
};

struct KmlFile {
    const char* name;
    int length; // of the list, invalid tracks included
    int valid;
    int points;
    const char* firstName;
};

const KmlFile kmlFacts[] = {
    {"kml/DatelineSpanners.kml", 22, 22, 57, "Dateline\\nLineString\\nClampToGround\\nTessellate"},
    {"kml/Geometries.kml", 5, 5, 17, "New York City"},
    {"kml/all-altitudemodes.kml", 4, 3, 21, "all-altitudemodes.kml"},
    {"kml/bcr_with_itnconv.kml", 47, 47, 92, "Route (46 waypoints)"},
    {"kml/bendgc-input.kml", 5, 5, 8, "RPT001"},
    {"kml/dup-id.kml", 2, 2, 12, "dup-id.kml"},
    {"kml/gxmultitrack.kml", 3, 2, 2, "12/04/2014 11:24 AM (départ)"},
    {"kml/kmlsamples.kml", 20, 19, 176, "Simple placemark"},
    {"kml/linear_ring.kml", 1, 1, 176, " AOI "},
    {"kml/lines.kml", 0, 0, 0, ""},
    {"kml/multigeometry_sibling.kml", 1, 1, 3, "multigeometry_sibling.kml"},
    {"kml/non_conformant_multi.kml", 3, 2, 4, "non_conformant_multi.kml"},
    {"kml/outline_space.kml", 1, 1, 1, "D50027/Q53\n"},
    {"kml/own-utf16.kml", 1, 1, 2, "Zürich → 東京"},
    {"kml/points-puntas.kml", 11, 11, 11, "32°F / 0°C"},
    {"kml/segmented_tracks-track.kml", 73, 72, 87, "No Times-0"},
    {"kml/style_url.kml", 1, 1, 19, "Building 41"},
    {"kml/test-encoding.kml", 3, 3, 9, "Time Square"},
    {"kml/texte.kml", 18, 18, 18, "LESUNG_ALS_MAN_SEGELT_RAVENSTEIN "},
    {"kml/timezones.kml", 38, 38, 17237, "GMT -12:00"},
    {"kml/tour.kml", 63, 32, 32, "Het Loo Palace"},
    {"kmz/capitals.kmz", 5, 5, 5, "Atene"},
    {"kmz/globe.kmz", 3, 3, 363, "Equatore"},
    {"kmz/hier.kmz", 0, 0, 0, ""},
    {"kmz/iceland.kmz", 83, 83, 83, "Galtafell I Hrunamannahr"},
    {"kmz/kmztest01.kmz", 8, 8, 8, "Shanghai World Financial Center"},
    {"kmz/multigeometry.kmz", 1, 1, 5, "multigeometry.kmz"},
    {"kmz/multikml-doc.kmz", 0, 0, 0, ""},
    {"kmz/own-macosx-first.kmz", 0, 0, 0, ""},
    {"kmz/own-upper-case-entry.kmz", 0, 0, 0, ""},
    {"malformed/bad-too-large.kmz", 0, 0, 0, ""},
    {"malformed/bad.kmz", 0, 0, 0, ""},
    {"malformed/billion.kml", 0, 0, 0, ""},
    {"malformed/nokml.kmz", 0, 0, 0, ""},
    {"malformed/overflow_bad_offset.kmz", 0, 0, 0, ""},
    {"malformed/own-deep.kml", 1, 1, 2, "deep"},
    {"malformed/own-junk-after-root.kml", 0, 0, 0, ""},
    {"malformed/own-zip-bomb.kmz", 1, 1, 2, "after 20 MB of blanks"},
    {"malformed/truncated.kml", 0, 0, 0, ""},
};

LvGPXTrackFile gpx(const QString& name)
{
    return LvGPXTrackFile(QFileInfo(LvTest::corpusDirectory() + QLatin1Char('/') + name));
}

QList<LvGPXTrack> tracksOf(const LvGPXConfiguredTrackList& list)
{
    QList<LvGPXTrack> tracks;
    for (const LvGPXConfiguredTrack& configured : list) {
        tracks.append(configured.track());
    }
    return tracks;
}

QList<LvGPXTrack> throughFactory(const QString& name)
{
    const QString path = LvTest::corpusDirectory() + QLatin1Char('/') + name;
    return tracksOf(
        LvTrackSelectionFactory::instance()->createConfiguredTrackList(QUrl::fromLocalFile(path)));
}

int segmentCount(const QList<LvGPXTrack>& tracks)
{
    int count = 0;
    for (const LvGPXTrack& track : tracks) {
        count += static_cast<int>(track.segments().size());
    }
    return count;
}

int pointCount(const QList<LvGPXTrack>& tracks)
{
    int count = 0;
    for (const LvGPXTrack& track : tracks) {
        count += track.countPoints();
    }
    return count;
}

int validCount(const QList<LvGPXTrack>& tracks)
{
    int count = 0;
    for (const LvGPXTrack& track : tracks) {
        count += track.isValid() ? 1 : 0;
    }
    return count;
}

} // namespace

/// Files of other programs, with what is known about each of them.
class tst_SampleFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void gpxFiles_data();
    void gpxFiles();
    void kmlFiles_data();
    void kmlFiles();
    void everyFileIsListed();
    void names_data();
    void names();
    void unnamedTracks();
    void numbers();
    void timeStamps();
    void shapes();
    void severalFiles();
};

void tst_SampleFiles::initTestCase()
{
    if (LvTest::corpusDirectory().isEmpty()) {
        QSKIP("the folder with the sample files is not there");
    }
    QLoggingCategory::setFilterRules(QStringLiteral("lv.usage=false"));
}

void tst_SampleFiles::gpxFiles_data()
{
    QTest::addColumn<int>("tracks");
    QTest::addColumn<int>("segments");
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("firstName");
    for (const GpxFile& file : gpxFacts) {
        QTest::newRow(file.name) << file.tracks << file.segments << file.points
                                 << QString::fromUtf8(file.firstName);
    }
}

void tst_SampleFiles::gpxFiles()
{
    QFETCH(int, tracks);
    QFETCH(int, segments);
    QFETCH(int, points);
    QFETCH(QString, firstName);
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    QElapsedTimer timer;
    timer.start();
    const LvGPXTrackFile file = gpx(name);
    QVERIFY2(timer.elapsed() < longestMilliseconds, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(file.tracks().size(), tracks);
    QCOMPARE(file.isValid(), tracks > 0);
    QCOMPARE(segmentCount(file.tracks()), segments);
    QCOMPARE(pointCount(file.tracks()), points);
    QCOMPARE(file.tracks().value(0).name(), firstName);
    QCOMPARE(throughFactory(name), file.tracks());
}

void tst_SampleFiles::kmlFiles_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("valid");
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("firstName");
    for (const KmlFile& file : kmlFacts) {
        QTest::newRow(file.name) << file.length << file.valid << file.points
                                 << QString::fromUtf8(file.firstName);
    }
}

void tst_SampleFiles::kmlFiles()
{
    QFETCH(int, length);
    QFETCH(int, valid);
    QFETCH(int, points);
    QFETCH(QString, firstName);
    QElapsedTimer timer;
    timer.start();
    const QList<LvGPXTrack> tracks = throughFactory(QString::fromUtf8(QTest::currentDataTag()));
    QVERIFY2(timer.elapsed() < longestMilliseconds, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(tracks.size(), length);
    QCOMPARE(validCount(tracks), valid);
    QCOMPARE(pointCount(tracks), points);
    QCOMPARE(tracks.value(0).name(), firstName);
}

void tst_SampleFiles::everyFileIsListed()
{
    QSet<QString> listed;
    for (const GpxFile& file : gpxFacts) {
        listed.insert(QString::fromUtf8(file.name));
    }
    for (const KmlFile& file : kmlFacts) {
        listed.insert(QString::fromUtf8(file.name));
    }
    const QDir corpus(LvTest::corpusDirectory());
    QSet<QString> found;
    QDirIterator files(corpus.path(), {"*.gpx", "*.kml", "*.kmz"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        found.insert(corpus.relativeFilePath(files.next()));
    }
    QCOMPARE(found - listed, QSet<QString>{});
    QCOMPARE(listed - found, QSet<QString>{});
}

void tst_SampleFiles::names_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("leading blanks stay") << "gpx/igc1.gpx" << QStringList{"igc1 1", " #2", " #3", " #4"};
    // The first track of the file is empty and left out.
    QTest::newRow("behind an empty track")
        << "gpx/cerknicko-jezero.gpx"
        << QStringList{"ACTIVE LOG #2", "ACTIVE LOG #3", "ACTIVE LOG #4", "ACTIVE LOG #5",
                       "ACTIVE LOG #6", "ACTIVE LOG #7", "ACTIVE LOG #8"};
    QTest::newRow("numbered") << "gpx/empty_names1.gpx" << QStringList{"empty_names1 1", "empty_names1 2"};
}

void tst_SampleFiles::names()
{
    QFETCH(QString, file);
    QFETCH(QStringList, expected);
    QStringList actual;
    const QList<LvGPXTrack> tracks = gpx(file).tracks();
    for (const LvGPXTrack& track : tracks) {
        actual.append(track.name());
    }
    QCOMPARE(actual, expected);
}

void tst_SampleFiles::unnamedTracks()
{
    int unnamed = 0;
    int closed = 0;
    const QList<LvGPXTrack> tracks = gpx(QStringLiteral("gpx/googletakeout.gpx")).tracks();
    for (int index = 0; index < tracks.size(); ++index) {
        const LvGPXTrack& track = tracks.at(index);
        unnamed += track.name() == QStringLiteral("googletakeout %1").arg(index + 1) ? 1 : 0;
        closed += track.naturalShape() == LvGPXTrackShapeEnum::polygon ? 1 : 0;
        QVERIFY(track.hasShape(LvGPXTrackShapeEnum::linestring));
    }
    QCOMPARE(unnamed, 216);
    QCOMPARE(closed, 26);
}

void tst_SampleFiles::numbers()
{
    const QList<LvGPXTrackPoint> points =
        gpx(QStringLiteral("malformed/own-numbers.gpx")).tracks().first().segments().first().trackPoints();
    const double latitudes[] = {1.0, 53.1, 53.1, 1.0, 53.1, 91.5, 0.0};
    const double longitudes[] = {1.0, 8.5, 8.5, 8.5, 1.0, -190.25, 0.0};
    const int elevations[] = {0, 123, -123, 1000, 0, 0, 0};
    QCOMPARE(points.size(), 7);
    for (int index = 0; index < 7; ++index) {
        QVERIFY(points.at(index).position().latitude().decimalDegrees() == latitudes[index]);
        QVERIFY(points.at(index).position().longitude().decimalDegrees() == longitudes[index]);
        QCOMPARE(points.at(index).elevation(), elevations[index]);
    }
    QVERIFY(!points.at(1).timeStamp().isValid());
    QCOMPARE(points.at(2).timeStamp(), QDateTime(QDate(2020, 2, 28), QTime(8, 0), Qt::UTC));

    const QList<LvGPXTrackPoint> small = gpx(QStringLiteral("gpx/track-with-small-floats.gpx"))
                                             .tracks()
                                             .first()
                                             .segments()
                                             .first()
                                             .trackPoints();
    QVERIFY(small.at(0).position().latitude().decimalDegrees() == 0.000091697);
    QCOMPARE(small.at(1).elevation(), 12);
    QCOMPARE(small.at(2).elevation(), 0);
}

void tst_SampleFiles::timeStamps()
{
    // 21:51:59.179 at an offset of one hour and a quarter.
    const LvGPXTrack zoned = gpx(QStringLiteral("gpx/gpx_timezone.gpx")).tracks().first();
    QVERIFY(zoned.isSinglePoint());
    QCOMPARE(zoned.allTimeStamps().first(), QDateTime(QDate(2021, 1, 7), QTime(20, 36, 59, 179), Qt::UTC));
    // Without a zone it is local time.
    const LvGPXTrack local = gpx(QStringLiteral("gpx/fitwrite-track.gpx")).tracks().first();
    QCOMPARE(local.allTimeStamps().first(), QDateTime(QDate(2002, 5, 25), QTime(17, 6, 21, 250)));
    // Some points have none, which makes the lower end of the time frame null.
    QVERIFY(local.timeFrame().min().isNull());
    QCOMPARE(local.timeFrame().max(), QDateTime(QDate(2002, 5, 25), QTime(18, 52, 56, 980)));
}

void tst_SampleFiles::shapes()
{
    const LvGPXTrack route = gpx(QStringLiteral("gpx/gdb-sample-v3-ilinks.gpx")).tracks().first();
    QCOMPARE(route.segments().size(), 33);
    const LvGPXTrack ring = throughFactory(QStringLiteral("kml/linear_ring.kml")).first();
    QVERIFY(ring.hasShape(LvGPXTrackShapeEnum::polygon));
    // "Polygon" decides, though its ring is not closed.
    QList<LvGPXTrack> open;
    const QList<LvGPXTrack> tracks = throughFactory(QStringLiteral("kml/test-encoding.kml"));
    for (const LvGPXTrack& track : tracks) {
        if (track.hasShape(LvGPXTrackShapeEnum::polygon)
            && track.naturalShape() == LvGPXTrackShapeEnum::linestring) {
            open.append(track);
        }
    }
    QCOMPARE(open.size(), 1);
}

void tst_SampleFiles::severalFiles()
{
    // Several files in one request: all that can be read, in order.
    const QDir corpus(LvTest::corpusDirectory());
    const QList<LvGPXTrack> tracks = tracksOf(LvTrackSelectionFactory::instance()->createConfiguredTrackList(
        QList<QUrl>{QUrl::fromLocalFile(corpus.filePath(QStringLiteral("gpx/GH#137.gpx"))),
                    QUrl::fromLocalFile(corpus.filePath(QStringLiteral("malformed/bad.kmz"))),
                    QUrl::fromLocalFile(corpus.filePath(QStringLiteral("kmz/capitals.kmz")))}));
    QCOMPARE(tracks.size(), 6);
    QCOMPARE(tracks.first().countPoints(), 51);
    QCOMPARE(tracks.at(1).name(), QStringLiteral("Atene"));
}

LV_TEST_MAIN(tst_SampleFiles)
#include "tst_SampleFiles.moc"
