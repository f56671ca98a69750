#include "LvGeoJsonExporter.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackLoader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace LvTestTracks;

Q_DECLARE_METATYPE(LvGPXConfiguredTrackList)

namespace
{

LvGPXConfiguredTrack configured(const LvGPXTrack& track)
{
    return {track, LvGPXTrackConfiguration::defaultValue()};
}

LvGPXTrack area(const QString& name, const QList<LvGPXTrackPoint>& points,
                const QList<LvGPXTrack>& enclaves = {})
{
    LvGPXTrack track(name, QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::polygon);
    track.setEnclaves(enclaves);
    return track;
}

QList<LvGPXTrackPoint> square(double west, double south, double size)
{
    return {point(south, west), point(south, west + size), point(south + size, west + size),
            point(south + size, west), point(south, west)};
}

/// What the file says, in one line with sorted keys.
QString featuresOf(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    return QString::fromUtf8(
        QJsonDocument(document.object().value("features").toArray()).toJson(QJsonDocument::Compact));
}

QString feature(const QString& type, const QString& coordinates, const QString& properties)
{
    return QStringLiteral(
               R"([{"geometry":{"coordinates":%1,"type":"%2"},"properties":{%3},"type":"Feature"}])")
        .arg(coordinates, type, properties);
}

} // namespace

class tst_LvGeoJsonExporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void features_data();
    void features();
    void form();
    void styleDecides();
    void samples_data();
    void samples();

private:
    static void checkRing(const QJsonArray& ring, bool isOuter);
};

void tst_LvGeoJsonExporter::features_data()
{
    QTest::addColumn<LvGPXConfiguredTrackList>("tracks");
    QTest::addColumn<QString>("expected");
    const QDateTime time = utc("2023-06-01T10:00:00Z");
    const QString named = QStringLiteral(R"("name":"A")");
    const auto row = [](const char* name, const LvGPXTrack& track, const QString& expected) {
        QTest::newRow(name) << LvGPXConfiguredTrackList(configured(track)) << expected;
    };
    QTest::newRow("no tracks") << LvGPXConfiguredTrackList() << "[]";
    row("no points", line("A", {}), "[]");
    row("only positions that are not set", line("A", {point(0, 0), LvGPXTrackPoint()}), "[]");
    row("point", line("A", {point(50, 8)}), feature("Point", "[8,50]", named));
    row("point with everything", LvGPXTrack(point(50, 8, 7, time, "A")),
        feature("Point", "[8,50,7]", R"("coordTimes":"2023-06-01T10:00:00Z","name":"A")"));
    row("line", line("A", {point(50, 8), point(51, 9)}), feature("LineString", "[[8,50],[9,51]]", named));
    row("seven decimals", line("A", {point(50.00000004, 8.12345678), point(-0.00000001, 0.1 + 0.2)}),
        feature("LineString", "[[8.1234568,50],[0.3,0]]", named));
    row("elevations everywhere when anywhere", line("A", {point(50, 8), point(51, 9, -2)}),
        feature("LineString", "[[8,50,0],[9,51,-2]]", named));
    row("times with gaps",
        line("A",
             {point(50, 8, 0, time.addMSecs(5)), point(51, 9),
              point(52, 9, 0, QDateTime::fromSecsSinceEpoch(1685613600000, Qt::UTC))}),
        feature("LineString", "[[8,50],[9,51],[9,52]]",
                R"("coordTimes":["2023-06-01T10:00:00.005Z",null,null],"name":"A")"));
    row("description",
        LvGPXTrack("A", "\"ü\"\n", {LvGPXTrackSegment(point(50, 8))}, LvGPXTrackShapeEnum::point),
        feature("Point", "[8,50]", R"("desc":"\"ü\"\n","name":"A")"));
    row("two segments",
        LvGPXTrack("A", "",
                   {LvGPXTrackSegment(QList<LvGPXTrackPoint>{point(50, 8), point(51, 9)}),
                    LvGPXTrackSegment(QList<LvGPXTrackPoint>{point(52, 8, 0, time), point(53, 9)})},
                   LvGPXTrackShapeEnum::linestring),
        feature("MultiLineString", "[[[8,50],[9,51]],[[8,52],[9,53]]]",
                R"("coordTimes":[[null,null],["2023-06-01T10:00:00Z",null]],"name":"A")"));
    row("a segment of one point",
        LvGPXTrack("A", "",
                   {LvGPXTrackSegment(QList<LvGPXTrackPoint>{point(50, 8), point(51, 9)}),
                    LvGPXTrackSegment(point(52, 8))},
                   LvGPXTrackShapeEnum::linestring),
        feature("MultiLineString", "[[[8,50],[9,51]],[[8,52],[8,52]]]", named));
    row("line across the 180° meridian", line("A", {point(0, 179), point(2, -179)}),
        feature("MultiLineString", "[[[179,0],[180,1]],[[-180,1],[-179,2]]]", named));
    row("area", area("A", square(8, 50, 1)),
        feature("Polygon", "[[[8,50],[9,50],[9,51],[8,51],[8,50]]]", named));
    row("area with an enclave", area("A", square(1, 1, 9), {area("B", square(2, 2, 1))}),
        feature("Polygon", "[[[1,1],[10,1],[10,10],[1,10],[1,1]],[[2,3],[3,3],[3,2],[2,2],[2,3]]]", named));
    row("island in the enclave",
        area("A", square(1, 1, 9), {area("B", square(2, 2, 3), {area("C", square(3, 3, 1))})}),
        feature("MultiPolygon",
                "[[[[1,1],[10,1],[10,10],[1,10],[1,1]],[[2,5],[5,5],[5,2],[2,2],[2,5]]],"
                "[[[3,3],[4,3],[4,4],[3,4],[3,3]]]]",
                named));
    row("area across the 180° meridian",
        area("A", {point(1, 179), point(1, -179), point(2, -179), point(2, 179), point(1, 179)}),
        feature(
            "MultiPolygon",
            "[[[[180,2],[179,2],[179,1],[180,1],[180,2]]],[[[-180,1],[-179,1],[-179,2],[-180,2],[-180,1]]]]",
            named));
    row("area of two corners", area("A", {point(50, 8), point(51, 9), point(50, 8)}),
        feature("LineString", "[[8,50],[9,51],[8,50]]", named));
}

void tst_LvGeoJsonExporter::features()
{
    QFETCH(LvGPXConfiguredTrackList, tracks);
    QFETCH(QString, expected);
    const QByteArray bytes = LvGeoJsonExporter::encode(tracks);
    QCOMPARE(featuresOf(bytes), expected);
    QCOMPARE(bytes.isEmpty(), expected == QLatin1String("[]"));
}

void tst_LvGeoJsonExporter::form()
{
    const QByteArray bytes = LvGeoJsonExporter::encode(list({"A", "B"}));
    const QList<QByteArray> lines = bytes.split('\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0), QByteArray(R"({"type":"FeatureCollection","features":[)"));
    QVERIFY(lines.at(1).startsWith('{') && lines.at(1).endsWith("},"));
    QCOMPARE(lines.at(3), QByteArray("]}"));
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(bytes, &error).object();
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(object.value("type").toString(), QStringLiteral("FeatureCollection"));
    QCOMPARE(object.value("features").toArray().size(), 2);
}

void tst_LvGeoJsonExporter::styleDecides()
{
    // An area that is drawn as a line is exported with its outlines, and the other way round.
    LvGPXTrackConfiguration asLine = LvGPXTrackConfiguration::defaultValue();
    asLine.setTrackShape(LvGPXTrackShapeEnum::linestring);
    const LvGPXTrack track = area("A", square(1, 1, 9), {area("B", square(2, 2, 1))});
    QCOMPARE(featuresOf(LvGeoJsonExporter::encode(LvGPXConfiguredTrack(track, asLine))),
             feature("MultiLineString",
                     "[[[1,1],[10,1],[10,10],[1,10],[1,1]],[[2,2],[3,2],[3,3],[2,3],[2,2]]]",
                     R"("name":"A")"));
    LvGPXTrackConfiguration asArea = asLine;
    asArea.setTrackShape(LvGPXTrackShapeEnum::polygon);
    const LvGPXTrack open = line("A", {point(50, 8), point(50, 9), point(51, 9)});
    QCOMPARE(featuresOf(LvGeoJsonExporter::encode(LvGPXConfiguredTrack(open, asArea))),
             feature("Polygon", "[[[8,50],[9,50],[9,51],[8,50]]]", R"("name":"A")"));
}

void tst_LvGeoJsonExporter::checkRing(const QJsonArray& ring, bool isOuter)
{
    QVERIFY(ring.size() >= 4);
    QCOMPARE(ring.first(), ring.last());
    double area = 0.0;
    for (qsizetype i = 0; i + 1 < ring.size(); ++i) {
        const QJsonArray a = ring.at(i).toArray();
        const QJsonArray b = ring.at(i + 1).toArray();
        QVERIFY(std::abs(a.at(0).toDouble()) <= 180.0 && std::abs(a.at(1).toDouble()) <= 90.0);
        area += a.at(0).toDouble() * b.at(1).toDouble() - b.at(0).toDouble() * a.at(1).toDouble();
    }
    QCOMPARE(area > 0.0, isOuter);
}

void tst_LvGeoJsonExporter::samples_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"brocken-hike.gpx", "date-line.gpx", "german-bight.kml", "iceland.kmz",
                             "lake-islands.gpx", "weser-route.gpx"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_LvGeoJsonExporter::samples()
{
    QFETCH(QString, name);
    const LvGPXConfiguredTrackList tracks = LvTrackLoader::load(LvTest::sampleFile(name)).tracks;
    const QJsonArray features =
        QJsonDocument::fromJson(LvGeoJsonExporter::encode(tracks)).object().value("features").toArray();
    QCOMPARE(features.size(), tracks.count());
    for (const QJsonValue& value : features) {
        const QJsonObject geometry = value.toObject().value("geometry").toObject();
        QJsonArray polygons = geometry.value("coordinates").toArray();
        if (geometry.value("type").toString() == QLatin1String("Polygon")) {
            polygons = QJsonArray{polygons};
        } else if (geometry.value("type").toString() != QLatin1String("MultiPolygon")) {
            continue;
        }
        for (const QJsonValue& polygon : std::as_const(polygons)) {
            const QJsonArray rings = polygon.toArray();
            for (qsizetype i = 0; i < rings.size(); ++i) {
                checkRing(rings.at(i).toArray(), i == 0);
            }
        }
    }
}

LV_TEST_MAIN(tst_LvGeoJsonExporter)
#include "tst_LvGeoJsonExporter.moc"
