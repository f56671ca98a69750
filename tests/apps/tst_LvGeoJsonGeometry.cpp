#include "LvGeoJsonGeometry.h"
#include "LvTest.h"

#include <QPainterPath>
#include <QRandomGenerator>

#include <cmath>
#include <numbers>

namespace
{

/// "179,1 -179,2" as a path.
LvGeoJsonPath path(const QString& text)
{
    LvGeoJsonPath result;
    const QStringList tuples = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& tuple : tuples) {
        result.append({tuple.section(',', 0, 0).toDouble(),
                       tuple.section(',', 1, 1).toDouble(),
                       tuple.section(',', 2, 2).toDouble(),
                       {}});
    }
    return result;
}

QString text(const LvGeoJsonPath& path)
{
    QStringList tuples;
    for (const LvGeoJsonVertex& vertex : path) {
        tuples.append(QStringLiteral("%1,%2").arg(QString::number(vertex.x), QString::number(vertex.y)));
    }
    return tuples.join(QLatin1Char(' '));
}

QString text(const QList<LvGeoJsonPath>& paths)
{
    QStringList texts;
    for (const LvGeoJsonPath& each : paths) {
        texts.append(text(each));
    }
    return texts.join(QStringLiteral(" | "));
}

double signedArea(const LvGeoJsonPath& ring)
{
    double area = 0.0;
    for (qsizetype i = 0; i < ring.size(); ++i) {
        const LvGeoJsonVertex& a = ring.at(i);
        const LvGeoJsonVertex& b = ring.at((i + 1) % ring.size());
        area += a.x * b.y - b.x * a.y;
    }
    return area / 2.0;
}

/// The ring from its smallest vertex on, so that the same rings have the same text.
LvGeoJsonPath canonical(LvGeoJsonPath ring)
{
    const auto smallest =
        std::min_element(ring.begin(), ring.end(), [](const LvGeoJsonVertex& a, const LvGeoJsonVertex& b) {
            return std::pair(a.x, a.y) < std::pair(b.x, b.y);
        });
    std::rotate(ring.begin(), smallest, ring.end());
    return ring;
}

QString text(const QList<LvGeoJsonPolygon>& polygons)
{
    QStringList texts;
    for (const LvGeoJsonPolygon& polygon : polygons) {
        QStringList rings;
        for (const LvGeoJsonPath& ring : polygon) {
            rings.append(text(canonical(ring)));
        }
        texts.append(rings.join(QStringLiteral(" - ")));
    }
    texts.sort();
    return texts.join(QStringLiteral(" | "));
}

double wrapped(double x)
{
    return x > 180.0 ? x - 360.0 : (x < -180.0 ? x + 360.0 : x);
}

/// A star around a place, with so ragged an edge that the meridian cuts it many times.
LvGeoJsonPath star(QRandomGenerator& random, double x, double y, double smallest, double largest, int corners)
{
    LvGeoJsonPath ring;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / corners;
        const double radius = smallest + (largest - smallest) * random.generateDouble();
        ring.append({wrapped(x + radius * std::cos(angle)), y + radius * std::sin(angle), 0.0, {}});
    }
    return ring;
}

} // namespace

class tst_LvGeoJsonGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines_data();
    void lines();
    void cutVertices();
    void areas_data();
    void areas();
    void raggedAreas();
    void anyRingEnds();
};

void tst_LvGeoJsonGeometry::lines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("one vertex") << "8,50"
                                << "8,50 8,50";
    QTest::newRow("away from the meridian") << "8,50 9,51 -100,3"
                                            << "8,50 9,51 -100,3";
    QTest::newRow("eastwards") << "179,0 -179,2"
                               << "179,0 180,1 | -180,1 -179,2";
    QTest::newRow("westwards") << "-179,2 179,0"
                               << "-179,2 -180,1 | 180,1 179,0";
    QTest::newRow("there and back") << "179,0 -179,2 179,4"
                                    << "179,0 180,1 | -180,1 -179,2 -180,3 | 180,3 179,4";
    QTest::newRow("half a turn is no crossing") << "-90,0 90,1"
                                                << "-90,0 90,1";
    QTest::newRow("up to the meridian") << "170,0 180,1"
                                        << "170,0 180,1";
    QTest::newRow("up to the meridian, written from the west") << "170,0 -180,1"
                                                               << "170,0 180,1";
    QTest::newRow("from the meridian") << "180,1 -170,0"
                                       << "-180,1 -170,0";
    QTest::newRow("touching the meridian") << "170,0 180,1 170,2"
                                           << "170,0 180,1 170,2";
    QTest::newRow("vertex on the meridian") << "170,0 180,1 -170,2"
                                            << "170,0 180,1 | -180,1 -170,2";
    QTest::newRow("along the meridian and on") << "170,0 180,1 -180,2 -170,3"
                                               << "170,0 180,1 180,2 | -180,2 -170,3";
    QTest::newRow("along the meridian and back") << "170,0 180,1 180,2 170,3"
                                                 << "170,0 180,1 180,2 170,3";
    QTest::newRow("along the meridian only") << "180,1 180,2"
                                             << "-180,1 -180,2";
    QTest::newRow("around the globe")
        << "0,0 120,0 -120,0 0,0 120,0 -120,0 0,0"
        << "0,0 120,0 180,0 | -180,0 -120,0 0,0 120,0 180,0 | -180,0 -120,0 0,0";
}

void tst_LvGeoJsonGeometry::lines()
{
    QFETCH(QString, line);
    QFETCH(QString, expected);
    QCOMPARE(text(LvGeoJsonGeometry::cutLine(path(line))), expected);
}

void tst_LvGeoJsonGeometry::cutVertices()
{
    LvGeoJsonPath line = path("179,10,100 -177,20,300");
    line[0].time = QDateTime::fromSecsSinceEpoch(10, Qt::UTC);
    line[1].time = QDateTime::fromSecsSinceEpoch(20, Qt::UTC);
    const QList<LvGeoJsonPath> parts = LvGeoJsonGeometry::cutLine(line);
    QCOMPARE(parts.size(), 2);
    QCOMPARE(parts.at(0).at(1).y, 12.5);
    QCOMPARE(parts.at(0).at(1).elevation, 150.0);
    QVERIFY(!parts.at(0).at(1).time.isValid()); // nobody measured it
    QCOMPARE(parts.at(0).at(0).time, line.at(0).time);
    QCOMPARE(parts.at(1).at(1).time, line.at(1).time);
}

void tst_LvGeoJsonGeometry::areas_data()
{
    QTest::addColumn<QString>("outer");
    QTest::addColumn<QStringList>("holes");
    QTest::addColumn<QString>("expected");
    const QStringList none;
    QTest::newRow("against the clock") << "0,0 2,0 2,2 0,2" << none << "0,0 2,0 2,2 0,2";
    QTest::newRow("with the clock") << "0,0 0,2 2,2 2,0" << none << "0,0 2,0 2,2 0,2";
    QTest::newRow("closed already") << "0,0 2,0 2,2 0,2 0,0" << none << "0,0 2,0 2,2 0,2";
    QTest::newRow("doubled vertices") << "0,0 0,0 2,0 2,2 2,2 0,2 0,0 0,0" << none << "0,0 2,0 2,2 0,2";
    QTest::newRow("two corners") << "0,0 2,0 0,0" << none << "";
    QTest::newRow("no corners") << "" << none << "";
    QTest::newRow("hole turns with the clock")
        << "0,0 9,0 9,9 0,9" << QStringList{"1,1 2,1 2,2 1,2"} << "0,0 9,0 9,9 0,9 - 1,1 1,2 2,2 2,1";
    QTest::newRow("hole turns with the clock already")
        << "0,0 9,0 9,9 0,9" << QStringList{"1,1 1,2 2,2 2,1 1,1"} << "0,0 9,0 9,9 0,9 - 1,1 1,2 2,2 2,1";
    QTest::newRow("hole that is none") << "0,0 9,0 9,9 0,9" << QStringList{"1,1 2,1"} << "0,0 9,0 9,9 0,9";
    QTest::newRow("across the meridian")
        << "178,0 -178,0 -178,2 178,2" << none << "-180,0 -178,0 -178,2 -180,2 | 178,0 180,0 180,2 178,2";
    QTest::newRow("across the meridian with the clock")
        << "178,0 178,2 -178,2 -178,0" << none << "-180,0 -178,0 -178,2 -180,2 | 178,0 180,0 180,2 178,2";
    QTest::newRow("beside the meridian in the west")
        << "178,0 180,0 180,2 178,2" << none << "178,0 180,0 180,2 178,2";
    QTest::newRow("beside the meridian in the east")
        << "-180,0 -178,0 -178,2 -180,2" << none << "-180,0 -178,0 -178,2 -180,2";
    QTest::newRow("corner on the meridian") << "178,0 180,1 178,2" << none << "178,0 180,1 178,2";
    QTest::newRow("edge along the meridian inside")
        << "178,0 180,0 180,1 -178,1 -178,2 178,2" << none
        << "-180,1 -178,1 -178,2 -180,2 | 178,0 180,0 180,2 178,2";
    QTest::newRow("two teeth across the meridian")
        << "170,0 -179,0 -179,1 179,1 179,2 -179,2 -179,3 170,3" << none
        << "-180,0 -179,0 -179,1 -180,1 | -180,2 -179,2 -179,3 -180,3"
           " | 170,0 180,0 180,1 179,1 179,2 180,2 180,3 170,3";
    QTest::newRow("holes on either side")
        << "170,0 -170,0 -170,9 170,9"
        << QStringList{"171,1 172,1 172,2 171,2", "-172,1 -171,1 -171,2 -172,2"}
        << "-180,0 -170,0 -170,9 -180,9 - -172,1 -172,2 -171,2 -171,1"
           " | 170,0 180,0 180,9 170,9 - 171,1 171,2 172,2 172,1";
    QTest::newRow("hole across the meridian")
        << "170,0 -170,0 -170,9 170,9" << QStringList{"179,3 -179,3 -179,6 179,6"}
        << "-180,0 -170,0 -170,9 -180,9 -180,6 -179,6 -179,3 -180,3"
           " | 170,0 180,0 180,3 179,3 179,6 180,6 180,9 170,9";
    QTest::newRow("around the north pole eastwards")
        << "0,80 90,80 180,80 -90,80" << none << "-180,80 -90,80 0,80 90,80 180,80 180,90 -180,90";
    QTest::newRow("around the north pole westwards")
        << "0,80 -90,80 180,80 90,80" << none << "-180,80 -90,80 0,80 90,80 180,80 180,90 -180,90";
    QTest::newRow("around the south pole")
        << "0,-80 100,-80 -100,-80" << none << "-180,-90 180,-90 180,-80 100,-80 0,-80 -100,-80 -180,-80";
    QTest::newRow("twice around the globe") << "0,80 100,80 -100,80 0,81 100,81 -100,81" << none << "";
}

void tst_LvGeoJsonGeometry::areas()
{
    QFETCH(QString, outer);
    QFETCH(QStringList, holes);
    QFETCH(QString, expected);
    QList<LvGeoJsonPath> holePaths;
    for (const QString& hole : holes) {
        holePaths.append(path(hole));
    }
    QCOMPARE(text(LvGeoJsonGeometry::cutArea(path(outer), holePaths)), expected);
}

void tst_LvGeoJsonGeometry::raggedAreas()
{
    QRandomGenerator random(180);
    int cutCount = 0;
    for (int round = 0; round < 300; ++round) {
        const double x = 165.0 + 30.0 * random.generateDouble();
        const double y = -40.0 + 80.0 * random.generateDouble();
        const LvGeoJsonPath outer = star(random, x, y, 5.0, 20.0, 60);
        const LvGeoJsonPath hole =
            star(random, x, y, 0.5, 3.5, 40); // inside the innermost corner of the star
        const QList<LvGeoJsonPolygon> polygons = LvGeoJsonGeometry::cutArea(outer, {hole});
        QVERIFY(!polygons.isEmpty());
        cutCount += polygons.size() > 2 ? 1 : 0;

        double area = 0.0;
        for (const LvGeoJsonPolygon& polygon : polygons) {
            QVERIFY(signedArea(polygon.first()) > 0.0);
            for (const LvGeoJsonPath& ring : polygon) {
                area += signedArea(ring);
                QVERIFY(ring.size() >= 3);
                QVERIFY(&ring == &polygon.first() || signedArea(ring) < 0.0);
                for (const LvGeoJsonVertex& vertex : ring) {
                    QVERIFY(std::abs(vertex.x) <= 180.0);
                }
            }
        }
        const auto straight = [x](LvGeoJsonPath ring) {
            for (LvGeoJsonVertex& vertex : ring) {
                vertex.x += vertex.x < x - 180.0 ? 360.0 : 0.0;
            }
            return std::abs(signedArea(ring));
        };
        const double expected = straight(outer) - straight(hole);
        QVERIFY2(std::abs(area - expected) < 1e-6,
                 qPrintable(QStringLiteral("round %1: %2 instead of %3").arg(round).arg(area).arg(expected)));
    }
    QVERIFY(cutCount > 50); // else the stars were not ragged enough to prove anything
}

void tst_LvGeoJsonGeometry::anyRingEnds()
{
    // Rings that cross themselves and holes that lie anywhere: whatever comes out, it comes out.
    QRandomGenerator random(7);
    for (int round = 0; round < 500; ++round) {
        QList<LvGeoJsonPath> rings(3);
        for (LvGeoJsonPath& ring : rings) {
            for (int i = 0; i < 12; ++i) {
                const double x = round % 2 == 0 ? random.bounded(-180, 181) : 170 + random.bounded(21);
                ring.append({wrapped(x), static_cast<double>(random.bounded(-90, 91)), 0.0, {}});
            }
        }
        const QList<LvGeoJsonPolygon> polygons =
            LvGeoJsonGeometry::cutArea(rings.at(0), {rings.at(1), rings.at(2)});
        for (const LvGeoJsonPolygon& polygon : polygons) {
            for (const LvGeoJsonPath& ring : polygon) {
                QVERIFY(ring.size() >= 3);
            }
        }
    }
}

LV_TEST_MAIN(tst_LvGeoJsonGeometry)
#include "tst_LvGeoJsonGeometry.moc"
