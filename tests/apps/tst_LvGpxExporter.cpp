#include "LvGPXTrackFile.h"
#include "LvGpxExporter.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackLoader.h"

#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace LvTestTracks;

Q_DECLARE_METATYPE(LvGPXConfiguredTrackList)

namespace
{

LvGPXConfiguredTrack configured(const LvGPXTrack& track)
{
    return {track, LvGPXTrackConfiguration::defaultValue()};
}

/// A track with everything that is difficult to write.
LvGPXConfiguredTrackList difficultTracks()
{
    LvGPXTrack rich(
        QStringLiteral("A & <b> \u0001\"quoted\" 😀"), QStringLiteral("Zwei\nZeilen"),
        {LvGPXTrackSegment(QList<LvGPXTrackPoint>{
             point(0.00001, -0.00002, -3, utc("2023-06-01T10:00:00.125Z"), "tief & <nass>"),
             point(90, 180, 8848, utc("0001-01-01T00:00:00Z")),
             point(-90, -180, 0, QDateTime(QDate(2023, 6, 1), QTime(12, 0), Qt::OffsetFromUTC, 7200)),
             point(1, 2, 0, QDateTime::fromSecsSinceEpoch(1685613600000, Qt::UTC)), point(0, 0),
             LvGPXTrackPoint()}),
         LvGPXTrackSegment(), LvGPXTrackSegment(point(0, 0)), LvGPXTrackSegment(point(5, 6))},
        LvGPXTrackShapeEnum::linestring);
    LvGPXTrack lake = line("See", {point(1, 1), point(1, 2), point(2, 2), point(1, 1)});
    lake.addEnclave(line("Insel", {point(1.1, 1.2), point(1.1, 1.3), point(1.2, 1.3), point(1.1, 1.2)}));
    const LvGPXTrack nameless("", "", {LvGPXTrackSegment(point(7, 8))}, LvGPXTrackShapeEnum::point);
    const LvGPXTrack empty("Leer", "", {}, LvGPXTrackShapeEnum::linestring);
    return {{configured(rich), configured(lake), configured(nameless), configured(empty)}};
}

LvGPXConfiguredTrackList loadBack(const QByteArray& bytes)
{
    QTemporaryDir directory;
    QFile file(directory.filePath("x.gpx"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        return {};
    }
    file.close();
    return LvTrackLoader::load(file.fileName()).tracks;
}

} // namespace

class tst_LvGpxExporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void root();
    void nothingToWrite_data();
    void nothingToWrite();
    void onlyPlainElements();
    void elementOrder();
    void enclavesFollowTheirTrack();
    void readBack();
    void samplesReadBack_data();
    void samplesReadBack();
    void validAgainstSchema_data();
    void validAgainstSchema();
    void schemaCatchesMistakes_data();
    void schemaCatchesMistakes();
    void sizeIsKnownBefore();

private:
    static void validate(const QByteArray& bytes, bool& isValid, QByteArray& output);
};

void tst_LvGpxExporter::root()
{
    QDomDocument document;
    QVERIFY(document.setContent(LvGpxExporter::encode(list({"A"})), true));
    const QDomElement gpx = document.documentElement();
    QCOMPARE(gpx.localName(), QStringLiteral("gpx"));
    QCOMPARE(gpx.namespaceURI(), QStringLiteral("http://www.topografix.com/GPX/1/1"));
    QCOMPARE(gpx.attribute("version"), QStringLiteral("1.1"));
    QCOMPARE(gpx.attribute("creator"), QStringLiteral("LvTest"));
    QCOMPARE(gpx.attributeNS("http://www.w3.org/2001/XMLSchema-instance", "schemaLocation"),
             QStringLiteral("http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/1/1/gpx.xsd"));
    QVERIFY(LvGpxExporter::encode(list({"A"})).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
}

void tst_LvGpxExporter::nothingToWrite_data()
{
    QTest::addColumn<LvGPXConfiguredTrackList>("tracks");
    QTest::newRow("no tracks") << LvGPXConfiguredTrackList();
    QTest::newRow("no segments") << LvGPXConfiguredTrackList(
        configured(LvGPXTrack("A", "", {}, LvGPXTrackShapeEnum::linestring)));
    QTest::newRow("only positions that are not set")
        << LvGPXConfiguredTrackList(configured(line("A", {point(0, 0), LvGPXTrackPoint()})));
}

void tst_LvGpxExporter::nothingToWrite()
{
    QFETCH(LvGPXConfiguredTrackList, tracks);
    QCOMPARE(LvGpxExporter::encode(tracks), QByteArray());
}

void tst_LvGpxExporter::onlyPlainElements()
{
    const QByteArray text = LvGpxExporter::encode(difficultTracks());
    for (const char* dialect : {"compressedPoints", "shape", "enclaves", "include", "rtept"}) {
        QVERIFY2(!text.contains(QByteArray("<") + dialect), dialect);
    }
    QCOMPARE(text.count("<trkpt "), 4 + 1 + 4 + 4 + 1);
    QCOMPARE(text.count("<trkseg>"), 2 + 1 + 1 + 1);
}

void tst_LvGpxExporter::elementOrder()
{
    QDomDocument document;
    QVERIFY(document.setContent(LvGpxExporter::encode(difficultTracks())));
    QStringList tags;
    const QDomElement trk = document.documentElement().firstChildElement();
    for (QDomElement child = trk.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        tags.append(child.tagName());
    }
    QCOMPARE(tags, (QStringList{"name", "desc", "trkseg", "trkseg"}));
    QCOMPARE(trk.firstChildElement("name").text(), QStringLiteral("A & <b> \"quoted\" 😀"));
    const QDomElement third = trk.nextSiblingElement().nextSiblingElement().nextSiblingElement();
    QCOMPARE(third.firstChildElement().tagName(), QStringLiteral("trkseg")); // no empty name
}

void tst_LvGpxExporter::enclavesFollowTheirTrack()
{
    QCOMPARE(names(loadBack(LvGpxExporter::encode(difficultTracks()))),
             QStringLiteral("A & <b> \"quoted\" 😀 See Insel x 4"));
}

void tst_LvGpxExporter::readBack()
{
    const LvGPXTrack track = line("A",
                                  {point(53.1234567, 8.8765432, 12, utc("2023-06-01T10:00:00.250Z"), "Start"),
                                   point(-33.9, -179.5, -400, utc("2023-06-01T10:00:01Z")), point(1, 2)});
    const LvGPXConfiguredTrackList read = loadBack(LvGpxExporter::encode(configured(track)));
    QCOMPARE(read.count(), 1);
    QVERIFY(read.at(0).track() == track);
}

void tst_LvGpxExporter::samplesReadBack_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"brocken-hike.gpx", "date-line.gpx", "german-bight.kml", "weser-route.gpx"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_LvGpxExporter::samplesReadBack()
{
    QFETCH(QString, name);
    const LvGPXConfiguredTrackList tracks = LvTrackLoader::load(LvTest::sampleFile(name)).tracks;
    QVERIFY(tracks.isValid());
    const LvGPXConfiguredTrackList read = loadBack(LvGpxExporter::encode(tracks));
    QCOMPARE(read.count(), tracks.count());
    for (qsizetype i = 0; i < tracks.count(); ++i) {
        QVERIFY(read.at(i).track().segments() == tracks.at(i).track().segments());
        QCOMPARE(read.at(i).name(), tracks.at(i).name());
    }
}

void tst_LvGpxExporter::validate(const QByteArray& bytes, bool& isValid, QByteArray& output)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xmllint"));
    if (program.isEmpty()) {
        QSKIP("xmllint is not installed");
    }
    QProcess process;
    process.start(
        program, {"--nonet", "--noout", "--schema", LvTest::dataFile(QStringLiteral("gpx-tracks.xsd")), "-"});
    process.write(bytes);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    output = process.readAllStandardError();
    isValid = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

void tst_LvGpxExporter::validAgainstSchema_data()
{
    QTest::addColumn<LvGPXConfiguredTrackList>("tracks");
    QTest::newRow("everything difficult") << difficultTracks();
    QTest::newRow("simple") << list({"A", "B"});
    for (const char* name : {"brocken-hike.gpx", "date-line.gpx", "german-bight.kml", "iceland.kmz",
                             "lake-islands.gpx", "weser-route.gpx"}) {
        QTest::newRow(name) << LvTrackLoader::load(LvTest::sampleFile(QString::fromLatin1(name))).tracks;
    }
}

void tst_LvGpxExporter::validAgainstSchema()
{
    QFETCH(LvGPXConfiguredTrackList, tracks);
    const QByteArray bytes = LvGpxExporter::encode(tracks);
    QVERIFY(!bytes.isEmpty());
    bool isValid = false;
    QByteArray output;
    validate(bytes, isValid, output);
    QVERIFY2(isValid, output);
}

void tst_LvGpxExporter::schemaCatchesMistakes_data()
{
    QTest::addColumn<QByteArray>("right");
    QTest::addColumn<QByteArray>("wrong");
    QTest::newRow("exponent") << QByteArray("lat=\"5\"") << QByteArray("lat=\"5e-05\"");
    QTest::newRow("180 degrees east") << QByteArray("lon=\"-180\"") << QByteArray("lon=\"180\"");
    QTest::newRow("order") << QByteArray("<trkseg>") << QByteArray("<trkseg/><name/><trkseg>");
    QTest::newRow("empty time") << QByteArray("2023-06-01T10:00:00Z") << QByteArray();
    QTest::newRow("unknown element") << QByteArray("<trkseg>") << QByteArray("<shape/><trkseg>");
}

void tst_LvGpxExporter::schemaCatchesMistakes()
{
    QFETCH(QByteArray, right);
    QFETCH(QByteArray, wrong);
    QByteArray bytes = LvGpxExporter::encode(difficultTracks());
    const qsizetype start = bytes.indexOf(right);
    QVERIFY(start >= 0);
    bytes.replace(start, right.size(), wrong);
    bool isValid = true;
    QByteArray output;
    validate(bytes, isValid, output);
    QVERIFY(!isValid);
}

void tst_LvGpxExporter::sizeIsKnownBefore()
{
    const auto told = [](const LvGPXConfiguredTrackList& tracks, qint64& real) {
        real = LvGpxExporter::encode(tracks).size();
        return LvGpxExporter::maximumSize(tracks);
    };
    qint64 real = 0;
    QVERIFY(told(difficultTracks(), real) >= real);
    QRandomGenerator random(20261122);
    for (int round = 0; round < 200; ++round) {
        const LvGPXConfiguredTrackList tracks{configured(randomTrack(random, 2)),
                                              configured(randomTrack(random, 2))};
        QVERIFY(told(tracks, real) >= real);
    }
    // It is not much more, or files would be refused that can be read.
    QList<LvGPXTrackPoint> points;
    for (int index = 0; index < 5000; ++index) {
        points.append(
            point(50.1234567 + index * 1e-5, 8.7654321, 100 + index % 7, utc("2023-06-01T10:00:00Z")));
    }
    const qint64 most = told(configured(line("A", points)), real);
    QVERIFY2(most >= real && most < real + real / 8,
             qPrintable(QStringLiteral("%1 instead of %2").arg(most).arg(real)));
}

LV_TEST_MAIN(tst_LvGpxExporter)
#include "tst_LvGpxExporter.moc"
