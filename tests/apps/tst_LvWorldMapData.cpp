#include "LvMapProjection.h"
#include "LvMapView.h"
#include "LvTest.h"
#include "LvWorldMapData.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace
{

using Line = LvWorldMapData::Line;

/// A topology whose arcs are given as they stand in the file, with one object for land and one for countries.
QByteArray topology(const QByteArray& arcs, const QByteArray& land, const QByteArray& countries = "[]",
                    const QByteArray& transform = R"({"scale":[1,1],"translate":[0,0]})")
{
    return R"({"type":"Topology","transform":)" + transform + R"(,"arcs":)" + arcs
        + R"(,"objects":{"land":{"type":"GeometryCollection","geometries":)" + land
        + R"(},"countries":{"type":"GeometryCollection","geometries":)" + countries + "}}}";
}

QByteArray polygon(const QByteArray& arcs)
{
    return R"({"type":"Polygon","arcs":)" + arcs + "}";
}

double longitudeOf(const QPointF& point)
{
    return LvMapProjection::normalizedToLongitude(point.x());
}

/// The points in whole degrees, "longitude/latitude".
QString textOf(const QPolygonF& points)
{
    QStringList texts;
    for (const QPointF& point : points) {
        texts.append(QStringLiteral("%1/%2")
                         .arg(std::lround(longitudeOf(point)))
                         .arg(std::lround(LvMapProjection::normalizedToLatitude(point.y()))));
    }
    return texts.join(QLatin1Char(' '));
}

QString textOf(const QList<Line>& lines)
{
    QStringList texts;
    for (const Line& line : lines) {
        texts.append(textOf(line.points));
    }
    return texts.join(QStringLiteral(" | "));
}

/// Whether the land areas cover a place in any copy of the world.
bool isLand(double latitude, double longitude)
{
    const QPointF place(LvMapProjection::longitudeToNormalized(longitude), LvMapView::normalizedY(latitude));
    int count = 0;
    for (const Line& ring : LvWorldMapData::builtIn().landRings()) {
        for (const double copy : {-1.0, 0.0, 1.0}) {
            count += ring.points.containsPoint(place + QPointF(copy, 0.0), Qt::OddEvenFill) ? 1 : 0;
        }
    }
    return count % 2 == 1;
}

} // namespace

class tst_LvWorldMapData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void builtInRingsAreWhole();
    void builtInAntarctica();
    void builtInLand_data();
    void builtInLand();
    void builtInOutlines();
    void rings_data();
    void rings();
    void outlines_data();
    void outlines();
    void unreadable_data();
    void unreadable();
};

void tst_LvWorldMapData::builtInRingsAreWhole()
{
    const QList<Line>& rings = LvWorldMapData::builtIn().landRings();
    QVERIFY2(rings.size() > 1400, qPrintable(QString::number(rings.size())));
    qsizetype crossing = 0;
    for (const Line& ring : rings) {
        QCOMPARE(ring.points.first(), ring.points.last());
        QCOMPARE(ring.bounds, ring.points.boundingRect());
        QVERIFY(ring.bounds.top() >= -1e-9 && ring.bounds.bottom() <= 1.0 + 1e-9);
        crossing += ring.bounds.right() > 1.0 + 1e-6 || ring.bounds.left() < -1e-6 ? 1 : 0;
        for (qsizetype i = 1; i < ring.points.size(); ++i) {
            const QPointF from = ring.points.at(i - 1);
            const QPointF to = ring.points.at(i);
            // The only long step is the way back below the edge of the map.
            QVERIFY(std::abs(to.x() - from.x()) <= 0.5 || (from.y() >= 1.0 - 1e-9 && to.y() >= 1.0 - 1e-9));
        }
    }
    QVERIFY(crossing >= 3); // Eurasia, Wrangel Island and Fiji at least
}

void tst_LvWorldMapData::builtInAntarctica()
{
    const QList<Line>& rings = LvWorldMapData::builtIn().landRings();
    const auto antarctica = std::max_element(rings.begin(), rings.end(), [](const Line& a, const Line& b) {
        return a.bounds.width() * a.bounds.height() * (a.bounds.bottom() > 0.999 ? 1.0 : 0.0)
            < b.bounds.width() * b.bounds.height() * (b.bounds.bottom() > 0.999 ? 1.0 : 0.0);
    });
    QVERIFY(antarctica != rings.end());
    // It runs all around and is closed along the lower edge of the map.
    QVERIFY(std::abs(antarctica->bounds.width() - 1.0) < 1e-6);
    QVERIFY(std::abs(antarctica->bounds.bottom() - 1.0) < 1e-9);
}

void tst_LvWorldMapData::builtInLand_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<bool>("expected");

    QTest::newRow("Bremen") << 53.08 << 8.8 << true;
    QTest::newRow("North Sea") << 55.0 << 4.0 << false;
    QTest::newRow("Chukotka west of the date line") << 67.0 << 178.0 << true;
    QTest::newRow("Chukotka east of the date line") << 67.0 << -176.0 << true;
    QTest::newRow("Chukotka on the date line") << 67.5 << 180.0 << true;
    QTest::newRow("Wrangel Island, west") << 71.2 << 179.5 << true;
    QTest::newRow("Wrangel Island, east") << 71.2 << -179.0 << true;
    QTest::newRow("Bering Sea") << 58.0 << -179.0 << false;
    QTest::newRow("Fiji") << -17.8 << 178.0 << true;
    QTest::newRow("Pacific on the date line") << 0.5 << 180.0 << false;
    QTest::newRow("Antarctica, east") << -80.0 << 100.0 << true;
    QTest::newRow("Antarctica, west") << -80.0 << -120.0 << true;
    QTest::newRow("Antarctica near the edge of the map") << -84.9 << 0.0 << true;
    QTest::newRow("Antarctica on the date line") << -84.9 << 180.0 << true;
    QTest::newRow("Southern Ocean") << -60.0 << 100.0 << false;
    QTest::newRow("Ross Sea on the date line") << -75.0 << 180.0 << false;
    QTest::newRow("Arctic Ocean") << 84.9 << 180.0 << false;
    QTest::newRow("a hole: the Caspian Sea") << 42.0 << 51.0 << false;
    QTest::newRow("Null Island") << 0.0 << 0.0 << false;
}

void tst_LvWorldMapData::builtInLand()
{
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(bool, expected);
    QCOMPARE(isLand(latitude, longitude), expected);
}

void tst_LvWorldMapData::builtInOutlines()
{
    const LvWorldMapData& data = LvWorldMapData::builtIn();
    QVERIFY(data.coasts().size() > 1400);
    QVERIFY(data.borders().size() > 300);
    const auto isSeam = [](const QPointF& from, const QPointF& to) {
        const auto onMeridian = [](double x) { return std::abs(x - std::round(x)) < 1e-8; };
        return (onMeridian(from.x()) && onMeridian(to.x()) && std::abs(to.y() - from.y()) > 1e-3)
            || (from.y() >= 1.0 - 1e-9 && to.y() >= 1.0 - 1e-9);
    };
    for (const QList<Line>& lines : {data.coasts(), data.borders()}) {
        for (const Line& line : lines) {
            QVERIFY(line.points.size() > 1);
            for (qsizetype i = 1; i < line.points.size(); ++i) {
                QVERIFY(std::abs(line.points.at(i).x() - line.points.at(i - 1).x()) <= 0.5);
                QVERIFY(!isSeam(line.points.at(i - 1), line.points.at(i)));
            }
        }
    }
}

void tst_LvWorldMapData::rings_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");

    const QByteArray triangle = "[[[10,10],[10,0],[0,10],[-10,-10]]]";
    QTest::newRow("one arc of steps")
        << topology(triangle, "[" + polygon("[[0]]") + "]") << "10/10 20/10 20/20 10/10 10/10";
    QTest::newRow("scaled and moved")
        << topology("[[[0,0],[2,0],[0,2],[-2,-2]]]", "[" + polygon("[[0]]") + "]", "[]",
                    R"({"scale":[5,10],"translate":[-20,-10]})")
        << "-20/-10 -10/-10 -10/10 -20/-10 -20/-10";
    QTest::newRow("two arcs, one of them backwards")
        << topology("[[[0,0],[10,0],[0,10]],[[0,0],[0,10],[10,0]]]", "[" + polygon("[[0,-2]]") + "]")
        << "0/0 10/0 10/10 0/10 0/0 0/0";
    QTest::newRow("a hole and a second polygon")
        << topology("[[[0,0],[30,0],[0,30],[-30,-30]],[[20,10],[5,0],[0,5],[-5,-5]]]",
                    R"([{"type":"MultiPolygon","arcs":[[[0],[1]],[[1]]]}])")
        << "0/0 30/0 30/30 0/0 0/0 | 20/10 25/10 25/15 20/10 20/10 | 20/10 25/10 25/15 20/10 20/10";
    QTest::newRow("eastwards across the date line")
        << topology("[[[170,0],[20,0],[-360,10],[-10,0],[350,-10]]]", "[" + polygon("[[0]]") + "]")
        << "170/0 190/0 190/10 180/10 170/0 170/0";
    QTest::newRow("westwards across the date line")
        << topology("[[[-170,0],[340,0],[0,10],[-340,0],[0,-10]]]", "[" + polygon("[[0]]") + "]")
        << "-170/0 -190/0 -190/10 -170/10 -170/0 -170/0";
    QTest::newRow("around the south pole")
        << topology("[[[-180,-70],[90,-5],[90,5],[90,-5],[90,5]]]", "[" + polygon("[[0]]") + "]")
        << "-180/-70 -90/-75 0/-70 90/-75 180/-70 180/-85 -180/-85 -180/-70";
    QTest::newRow("around the south pole, jumping at the date line")
        << topology("[[[0,-70],[120,0],[-240,0],[120,0]]]", "[" + polygon("[[0]]") + "]")
        << "0/-70 120/-70 240/-70 360/-70 360/-85 0/-85 0/-70";
    QTest::newRow("around the north pole, westwards")
        << topology("[[[180,70],[-120,0],[-120,0],[-120,0]]]", "[" + polygon("[[0]]") + "]")
        << "180/70 60/70 -60/70 -180/70 -180/85 180/85 180/70";
    QTest::newRow("beyond the edge of the map")
        << topology("[[[0,80],[10,0],[0,9],[-10,-9]]]", "[" + polygon("[[0]]") + "]")
        << "0/80 10/80 10/85 0/80 0/80";
    QTest::newRow("an arc that does not exist") << topology(triangle, "[" + polygon("[[7]]") + "]") << "";
    QTest::newRow("an arc before the first") << topology(triangle, "[" + polygon("[[-9]]") + "]") << "";
    QTest::newRow("a ring of one point") << topology("[[[1,1]]]", "[" + polygon("[[0]]") + "]") << "";
}

void tst_LvWorldMapData::rings()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    QCOMPARE(textOf(LvWorldMapData(text).landRings()), expected);
}

void tst_LvWorldMapData::outlines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("coasts");
    QTest::addColumn<QString>("borders");

    // Two countries side by side: arc 0 lies between them, 1 and 2 at the sea.
    const QByteArray arcs = "[[[10,0],[0,10]],[[10,10],[-10,0],[10,-10]],[[10,10],[10,0],[-10,-10]]]";
    QTest::newRow("a border and two coasts")
        << topology(arcs, "[]", "[" + polygon("[[0,1]]") + "," + polygon("[[0,2]]") + "]")
        << "10/10 0/10 10/0 | 10/10 20/10 10/0"
        << "10/0 10/10";
    QTest::newRow("a border used backwards is one all the same")
        << topology(arcs, "[]", "[" + polygon("[[0,1]]") + "," + polygon("[[-1,2]]") + "]")
        << "10/10 0/10 10/0 | 10/10 20/10 10/0"
        << "10/0 10/10";
    QTest::newRow("arcs of no country") << topology(arcs, "[" + polygon("[[1]]") + "]", "[]") << ""
                                        << "";
    QTest::newRow("a cut along the date line is no coast")
        << topology("[[[170,0],[10,0],[0,10],[-10,0]]]", "[]", "[" + polygon("[[0]]") + "]")
        << "170/0 180/0 | 180/10 170/10"
        << "";
    QTest::newRow("what lies beyond the map is no coast")
        << topology("[[[0,-80],[10,-8],[10,0],[10,8]]]", "[]", "[" + polygon("[[0]]") + "]")
        << "0/-80 10/-85 | 20/-85 30/-80"
        << "";
    QTest::newRow("a coast across the date line")
        << topology("[[[170,0],[-340,5],[10,0]]]", "[]", "[" + polygon("[[0]]") + "]") << "170/0 190/5 200/5"
        << "";
}

void tst_LvWorldMapData::outlines()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, coasts);
    QFETCH(QString, borders);
    const LvWorldMapData data(text);
    QCOMPARE(textOf(data.coasts()), coasts);
    QCOMPARE(textOf(data.borders()), borders);
}

void tst_LvWorldMapData::unreadable_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("land");
    QTest::newRow("an array") << QByteArray("[1,2]");
    QTest::newRow("no arcs") << QByteArray(R"({"objects":{"land":{"type":"Polygon","arcs":[[0]]}}})");
    QTest::newRow("texts instead of numbers")
        << topology(R"([["a","b"]])", "[" + polygon(R"([["x"]])") + "]");
}

void tst_LvWorldMapData::unreadable()
{
    QFETCH(QByteArray, text);
    const LvWorldMapData data(text);
    QVERIFY(data.landRings().isEmpty());
    QVERIFY(data.coasts().isEmpty());
    QVERIFY(data.borders().isEmpty());
}

LV_TEST_MAIN(tst_LvWorldMapData)
#include "tst_LvWorldMapData.moc"
