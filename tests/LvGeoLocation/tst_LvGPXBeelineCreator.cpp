#include "LvGPXBeelineCreator.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "LvTest.h"

#include <QTranslator>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <type_traits>

namespace
{

constexpr double earthRadiusKm = 6370.0;
constexpr double radiansPerDegree = 0.017453292519943295;

// The search ends within this distance of the crossing.
constexpr double searchToleranceDegrees = 0.0002;

// Marks the text that is looked up as agreed.
class Marker : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int /*count*/) const override
    {
        return QStringLiteral("%1|%2|%3")
            .arg(QString::fromUtf8(context), QString::fromUtf8(source), QString::fromUtf8(disambiguation));
    }
};

struct Vector {
    double x, y, z;
};

Vector onSphere(const LvGeoPosition& position)
{
    const double latitude = position.latitude().radians();
    const double longitude = position.longitude().radians();
    return {std::cos(latitude) * std::cos(longitude), std::cos(latitude) * std::sin(longitude),
            std::sin(latitude)};
}

// How far a place is off the great circle through two others.
double offTheGreatCircleKm(const LvGeoPosition& place, const LvGeoPosition& from, const LvGeoPosition& to)
{
    const Vector a = onSphere(from);
    const Vector b = onSphere(to);
    const Vector p = onSphere(place);
    const Vector pole{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    const double length = std::hypot(pole.x, pole.y, pole.z);
    return std::abs(std::asin((p.x * pole.x + p.y * pole.y + p.z * pole.z) / length)) * earthRadiusKm;
}

double longestStepKm(const LvGeoPositionList& points)
{
    double longest = 0.0;
    for (qsizetype i = 1; i < points.size(); ++i) {
        longest = std::max(longest, points.at(i - 1).distance(points.at(i)));
    }
    return longest;
}

const LvGeoPosition berlin(52.52, 13.40);
const LvGeoPosition newYork(40.71, -74.01);

} // namespace

class tst_LvGPXBeelineCreator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numberOfPoints_data();
    void numberOfPoints();
    void greatCircle_data();
    void greatCircle();
    void bulgesTowardsThePole();
    void acrossTheDateLine();
    void centerLongitude_data();
    void centerLongitude();
    void optimalLatitude_data();
    void optimalLatitude();
    void equalSums();
    void bothDirections();
    void alwaysEnds_data();
    void alwaysEnds();
    void alwaysEndsAnywhere();
    void trackPoints();
    void beeline();
    void translation();
    void values();
};

void tst_LvGPXBeelineCreator::numberOfPoints_data()
{
    QTest::addColumn<LvGeoPosition>("from");
    QTest::addColumn<LvGeoPosition>("to");
    QTest::addColumn<int>("intermediate");
    // One degree of the equator is 111.177 km on a sphere of 6370 km.
    QTest::newRow("the same place") << berlin << berlin << 0;
    QTest::newRow("150 km") << LvGeoPosition(0, 10) << LvGeoPosition(0, 10 + 150 / 111.177) << 0;
    QTest::newRow("199.99 km") << LvGeoPosition(0, 10) << LvGeoPosition(0, 10 + 199.99 / 111.177) << 0;
    QTest::newRow("200.01 km") << LvGeoPosition(0, 10) << LvGeoPosition(0, 10 + 200.01 / 111.177) << 1;
    QTest::newRow("399 km") << LvGeoPosition(0, 10) << LvGeoPosition(0, 10 + 399.0 / 111.177) << 1;
    QTest::newRow("401 km") << LvGeoPosition(0, 10) << LvGeoPosition(0, 10 + 401.0 / 111.177) << 3;
    QTest::newRow("1000 km") << LvGeoPosition(0, 10) << LvGeoPosition(0, 10 + 1000.0 / 111.177) << 7;
    QTest::newRow("one meridian") << LvGeoPosition(-70, 10) << LvGeoPosition(75, 10) << 0;
    QTest::newRow("one meridian, to the tolerance")
        << LvGeoPosition(-70, 10) << LvGeoPosition(75, 10.0000005) << 0;
}

void tst_LvGPXBeelineCreator::numberOfPoints()
{
    QFETCH(LvGeoPosition, from);
    QFETCH(LvGeoPosition, to);
    QFETCH(int, intermediate);
    const LvGPXBeelineCreator creator(from, to);
    const LvGeoPositionList between = creator.createIntermediatePoints();
    QCOMPARE(between.size(), qsizetype{intermediate});
    const LvGeoPositionList all = creator.createPoints();
    QCOMPARE(all.size(), qsizetype{intermediate + 2});
    QCOMPARE(all.first(), from);
    QCOMPARE(all.last(), to);
    QCOMPARE(LvGeoPositionList(all.mid(1, intermediate)), between);
}

void tst_LvGPXBeelineCreator::greatCircle_data()
{
    QTest::addColumn<LvGeoPosition>("from");
    QTest::addColumn<LvGeoPosition>("to");
    QTest::newRow("Berlin - New York") << berlin << newYork;
    QTest::newRow("New York - Berlin") << newYork << berlin;
    QTest::newRow("Sydney - Santiago, across the date line")
        << LvGeoPosition(-33.9, 151.2) << LvGeoPosition(-33.4, -70.7);
    QTest::newRow("along the equator") << LvGeoPosition(0, 20) << LvGeoPosition(0, 100);
    QTest::newRow("across the equator") << LvGeoPosition(40, 30) << LvGeoPosition(-30, 100);
}

void tst_LvGPXBeelineCreator::greatCircle()
{
    QFETCH(LvGeoPosition, from);
    QFETCH(LvGeoPosition, to);
    const LvGeoPositionList points = LvGPXBeelineCreator(from, to).createPoints();
    QVERIFY(points.size() > 20);
    QVERIFY2(longestStepKm(points) < 200.0, qPrintable(QString::number(longestStepKm(points))));
    double travelled = 0.0;
    for (const LvGeoPosition& point : points) {
        const double off = offTheGreatCircleKm(point, from, to);
        QVERIFY2(off < 0.5, qPrintable(QString::number(off)));
        const double fromStart = from.distance(point);
        QVERIFY2(fromStart >= travelled, "the points are in order");
        travelled = fromStart;
    }
}

void tst_LvGPXBeelineCreator::bulgesTowardsThePole()
{
    const LvGeoPositionList points = LvGPXBeelineCreator(berlin, newYork).createIntermediatePoints();
    bool isNorthOfBoth = false;
    for (const LvGeoPosition& point : points) {
        QVERIFY(point.isNorthOf(newYork));
        const double share = (point.longitude().decimalDegrees() - berlin.longitude().decimalDegrees())
            / (newYork.longitude().decimalDegrees() - berlin.longitude().decimalDegrees());
        QVERIFY(share > 0.0 && share < 1.0);
        const double straight = 52.52 + share * (40.71 - 52.52);
        QVERIFY2(point.latitude().decimalDegrees() > straight, qPrintable(point.toString(false)));
        isNorthOfBoth = isNorthOfBoth || point.latitude().decimalDegrees() > 54.0;
    }
    QVERIFY(isNorthOfBoth);
    // Half of the points in the middle lie far beyond both ends.
    const qsizetype quarter = points.size() / 4;
    for (qsizetype i = quarter; i < 2 * quarter; ++i) {
        QVERIFY(points.at(i).isNorthOf(berlin));
    }
}

void tst_LvGPXBeelineCreator::acrossTheDateLine()
{
    const LvGeoPositionList points =
        LvGPXBeelineCreator(LvGeoPosition(30, 170), LvGeoPosition(30, -170)).createIntermediatePoints();
    QCOMPARE(points.size(), qsizetype{15});
    for (const LvGeoPosition& point : points) {
        QVERIFY(std::abs(point.longitude().decimalDegrees()) > 170.0);
        QVERIFY(point.latitude().decimalDegrees() > 30.0);
    }
    QCOMPARE(points.at(7).longitude().decimalDegrees(), 180.0);
}

void tst_LvGPXBeelineCreator::centerLongitude_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("center");
    QTest::newRow("east") << 10.0 << 50.0 << 30.0;
    QTest::newRow("west") << 50.0 << 10.0 << 30.0;
    QTest::newRow("across Greenwich") << -30.0 << 10.0 << -10.0;
    QTest::newRow("across the date line") << 170.0 << -170.0 << 180.0;
    QTest::newRow("across the date line, farther east") << 170.0 << -150.0 << -170.0;
    QTest::newRow("across the date line, farther west") << -170.0 << 150.0 << 170.0;
}

void tst_LvGPXBeelineCreator::centerLongitude()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, center);
    const LvGPXBeelineCreator creator(LvGeoPosition(20.0, from), LvGeoPosition(-5.0, to));
    QCOMPARE(creator.findLogicalCenterLongitude().decimalDegrees(), center);
}

void tst_LvGPXBeelineCreator::optimalLatitude_data()
{
    QTest::addColumn<LvGeoPosition>("from");
    QTest::addColumn<LvGeoPosition>("to");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("latitude");
    // The crossings come from spherical trigonometry, for the first rows; for the others see their names.
    QTest::newRow("Berlin - New York") << berlin << newYork << -30.305 << 56.259709;
    QTest::newRow("another meridian than half-way") << berlin << newYork << -45.0 << 53.808012;
    QTest::newRow("northern bulge") << LvGeoPosition(60, -10) << LvGeoPosition(60, 10) << 0.0 << 60.378348;
    QTest::newRow("southern bulge") << LvGeoPosition(-33.9, 151.2) << LvGeoPosition(-33.4, -70.7) << -139.75
                                    << -61.758492;
    QTest::newRow("equator") << LvGeoPosition(0, 10) << LvGeoPosition(0, 50) << 30.0 << 0.0;
    QTest::newRow("beyond 80 degrees, moved to there")
        << LvGeoPosition(75, -80) << LvGeoPosition(75, 80) << 0.0 << 80.0;
    QTest::newRow("beyond -80 degrees, moved to there")
        << LvGeoPosition(-75, -80) << LvGeoPosition(-75, 80) << 0.0 << -80.0;
    // At the end of the row before the last the crossing is at 48.8; of 60 and 40 degrees the latter has the
    // larger sum, and of 60 and 50 the former.
    QTest::newRow("near one end: only the ends are compared") << berlin << newYork << -60.0 << 50.0;
    // The crossing is at 54.8, but of 80 and 0 degrees the latter has the smaller sum, and of 40 and 0 the
    // former: the search compares the ends of its bracket only.
    QTest::newRow("almost one meridian: only the ends are compared")
        << LvGeoPosition(5, 100) << LvGeoPosition(70, 101) << 100.5 << 40.0;
}

void tst_LvGPXBeelineCreator::optimalLatitude()
{
    QFETCH(LvGeoPosition, from);
    QFETCH(LvGeoPosition, to);
    QFETCH(double, longitude);
    QFETCH(double, latitude);
    const LvGeoPosition crossing = LvGPXBeelineCreator(from, to).estimateOptimalLatitude(longitude);
    QCOMPARE(crossing.longitude().decimalDegrees(), longitude);
    const double difference = std::abs(crossing.latitude().decimalDegrees() - latitude);
    QVERIFY2(difference < searchToleranceDegrees, qPrintable(crossing.toString(false)));
}

void tst_LvGPXBeelineCreator::equalSums()
{
    // Ends on the equator make both ends of the bracket equally far: the southern half is kept, and from then
    // on its northern end is always the better one.
    const LvGPXBeelineCreator creator(LvGeoPosition(0, 10), LvGeoPosition(0, 50));
    QCOMPARE(creator.estimateOptimalLatitude(30).latitude().decimalDegrees(), -80.0 / (1 << 20));
}

void tst_LvGPXBeelineCreator::bothDirections()
{
    LvGeoPositionList there = LvGPXBeelineCreator(berlin, newYork).createPoints();
    const LvGeoPositionList back = LvGPXBeelineCreator(newYork, berlin).createPoints();
    std::reverse(there.begin(), there.end());
    QCOMPARE(there.size(), back.size());
    for (qsizetype i = 0; i < back.size(); ++i) {
        QVERIFY(there.at(i).distance(back.at(i)) < 0.1);
    }
}

void tst_LvGPXBeelineCreator::alwaysEnds_data()
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<LvGeoPosition>("from");
    QTest::addColumn<LvGeoPosition>("to");
    QTest::addColumn<bool>("hasPointsBetween");
    QTest::newRow("no places") << LvGeoPosition() << LvGeoPosition() << false;
    QTest::newRow("no start") << LvGeoPosition() << berlin << false;
    QTest::newRow("no end") << berlin << LvGeoPosition() << false;
    QTest::newRow("not set") << berlin << LvGeoPosition::null() << false;
    QTest::newRow("only the latitude is invalid") << LvGeoPosition(720, 5) << berlin << false;
    QTest::newRow("not a number") << LvGeoPosition(nan, 3) << berlin << false;
    QTest::newRow("infinite") << berlin << LvGeoPosition(3, infinity) << false;
    QTest::newRow("two names of one meridian") << LvGeoPosition(0.5, 10) << LvGeoPosition(70, 370) << false;
    QTest::newRow("two names of one meridian, the other way round")
        << LvGeoPosition(0.5, 10) << LvGeoPosition(70, -350) << true;
    QTest::newRow("longitudes a little apart") << LvGeoPosition(-60, 5) << LvGeoPosition(60, 5.00001) << true;
    QTest::newRow("almost two names of one meridian")
        << LvGeoPosition(0.5, 10) << LvGeoPosition(70, -350.1) << true;
    QTest::newRow("antipodes") << LvGeoPosition(10, 20) << LvGeoPosition(-10, -160) << true;
    QTest::newRow("antipodes on the equator") << LvGeoPosition(0, 90) << LvGeoPosition(0, -90) << true;
    QTest::newRow("around the north pole") << LvGeoPosition(89, 0) << LvGeoPosition(89, 180) << true;
    QTest::newRow("pole to pole") << LvGeoPosition(90, 0) << LvGeoPosition(-90, 90) << true;
    QTest::newRow("around the south pole") << LvGeoPosition(-85, 20) << LvGeoPosition(-85, -170) << true;
    QTest::newRow("both names of the date line") << LvGeoPosition(10, 180) << LvGeoPosition(50, -180) << true;
    QTest::newRow("a latitude beyond the pole") << LvGeoPosition(200, 0) << LvGeoPosition(-300, 90) << true;
    QTest::newRow("longitudes beyond the date line")
        << LvGeoPosition(20, -350) << LvGeoPosition(40, 355) << true;
    QTest::newRow("through 0/0") << LvGeoPosition(10, 10) << LvGeoPosition(-10, -10) << true;
}

void tst_LvGPXBeelineCreator::alwaysEnds()
{
    QFETCH(LvGeoPosition, from);
    QFETCH(LvGeoPosition, to);
    QFETCH(bool, hasPointsBetween);
    const LvGeoPositionList points = LvGPXBeelineCreator(from, to).createIntermediatePoints();
    QCOMPARE(!points.isEmpty(), hasPointsBetween);
    QVERIFY2(points.size() < 500, qPrintable(QString::number(points.size())));
    QCOMPARE(LvGPXBeelineCreator(from, to).createPoints().size(), points.size() + 2);
}

void tst_LvGPXBeelineCreator::alwaysEndsAnywhere()
{
    // Any pair of places that counts as valid, with the odd ones among them more often than chance would.
    std::mt19937 random(20240229);
    std::uniform_real_distribution<double> anyDegrees(-360.0, 360.0);
    const std::array<double, 12> odd{-360, -180, -90, -1e-6, 0, 5e-7, 80, 89.99999, 90, 180, 359.999999, 360};
    const auto degrees = [&] {
        return random() % 3 == 0 ? odd.at(random() % odd.size()) : anyDegrees(random);
    };
    qsizetype most = 0;
    for (int i = 0; i < 150; ++i) {
        const LvGeoPosition from(degrees(), degrees());
        const LvGeoPosition to(degrees(), degrees());
        const qsizetype count = LvGPXBeelineCreator(from, to).createIntermediatePoints().size();
        most = std::max(most, count);
        QVERIFY2(count < 500, qPrintable(from.toString(false) + u' ' + to.toString(false)));
    }
    QVERIFY(most > 100);
}

void tst_LvGPXBeelineCreator::trackPoints()
{
    const LvGPXBeelineCreator creator(berlin, newYork);
    QVERIFY(creator.positions2trackPoints({}).isEmpty());
    const QDateTime before = QDateTime::currentDateTime();
    const QList<LvGPXTrackPoint> points = creator.positions2trackPoints({newYork, LvGeoPosition(1, 2)});
    const QDateTime after = QDateTime::currentDateTime();
    QCOMPARE(points.size(), qsizetype{2});
    QCOMPARE(points.first().position(), newYork);
    QCOMPARE(points.last().position(), LvGeoPosition(1, 2));
    for (const LvGPXTrackPoint& point : points) {
        QCOMPARE(point.elevation(), 0);
        QVERIFY(point.description().isEmpty());
        QVERIFY(point.timeStamp() >= before && point.timeStamp() <= after);
    }
}

void tst_LvGPXBeelineCreator::beeline()
{
    const LvGPXBeelineCreator creator(berlin, newYork);
    const LvGPXTrack track = creator.createBeeline(QStringLiteral("Über den Teich"));
    QCOMPARE(track.name(), QStringLiteral("Über den Teich"));
    QCOMPARE(track.description(), QStringLiteral("Fluglinie"));
    QVERIFY(track.hasShape(LvGPXTrackShapeEnum::linestring));
    QCOMPARE(track.segments().size(), qsizetype{1});
    QCOMPARE(track.allPoints(), creator.createPoints());
    QVERIFY(track.enclaves().isEmpty());
    const QList<QDateTime> times = track.allTimeStamps();
    QCOMPARE(times.size(), track.allPoints().size());

    const LvGPXTrack shortWay =
        LvGPXBeelineCreator(berlin, LvGeoPosition(53, 13)).createBeeline(QStringLiteral("kurz"));
    QCOMPARE(shortWay.countPoints(), 2);
}

void tst_LvGPXBeelineCreator::translation()
{
    Marker translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const LvGPXTrack track = LvGPXBeelineCreator(berlin, newYork).createBeeline(QStringLiteral("x"));
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(track.description(), QStringLiteral("LvGPXBeelineCreator|Fluglinie|"));
    QCOMPARE(track.name(), QStringLiteral("x"));
}

void tst_LvGPXBeelineCreator::values()
{
    static_assert(std::has_virtual_destructor_v<LvGPXBeelineCreator>);
    static_assert(std::is_nothrow_move_constructible_v<LvGPXBeelineCreator>);
    LvGPXBeelineCreator a(berlin, newYork);
    const LvGPXBeelineCreator b(berlin, LvGeoPosition(53, 13));
    const LvGPXBeelineCreator copy(a);
    a = b;
    QCOMPARE(a.createPoints().size(), qsizetype{2});
    QVERIFY(copy.createPoints().size() > 2);
}

LV_TEST_MAIN(tst_LvGPXBeelineCreator)
#include "tst_LvGPXBeelineCreator.moc"
