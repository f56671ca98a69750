#include "LvGeoPosition.h"
#include "LvGeoPositionImpl.h"
#include "LvTest.h"

#include <QDomDocument>
#include <QHashFunctions>
#include <QUrl>
#include <QUrlQuery>

#include <atomic>
#include <limits>
#include <thread>
#include <vector>

namespace
{

constexpr double unknownDistance = 6370000.0;
constexpr double metre = 0.001;

bool holds(const LvGeoPosition& position, double latitude, double longitude)
{
    return position.latitude().decimalDegrees() == latitude
        && position.longitude().decimalDegrees() == longitude;
}

} // namespace

class tst_LvGeoPosition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constructors();
    void lettersOfTheHemispheres_data();
    void lettersOfTheHemispheres();
    void isValid_data();
    void isValid();
    void copiesAreIndependent();
    void movesStealThePayload();
    void copiesOnManyThreads();
    void payload();
    void setters();
    void catchLatitude();
    void normalized();
    void hemispheres();
    void directions();
    void pointF();
    void hashValue();
    void equality_data();
    void equality();
    void order_data();
    void order();
    void arithmetic();
    void deviations();
    void moves();
    void distance_data();
    void distance();
    void text();
    void parse_data();
    void parse();
    void fromString_data();
    void fromString();
    void urlQuery();
    void writeToXml();
    void fromXml_data();
    void fromXml();
    void debugText();
};

void tst_LvGeoPosition::constructors()
{
    QVERIFY(holds(LvGeoPosition(), 720.0, 720.0));
    QVERIFY(holds(LvGeoPosition(LvLatitude(53.14), LvLongitude(8.8)), 53.14, 8.8));
    QVERIFY(holds(LvGeoPosition(53.14, 8.8), 53.14, 8.8));
    QVERIFY(holds(LvGeoPosition(0, 179), 0.0, 179.0));
    QVERIFY(holds(LvGeoPosition(100.0, 300.0), 100.0, 300.0)); // neither clamped nor wrapped
    QVERIFY(holds(LvGeoPosition::null(), 0.0, 0.0));
}

void tst_LvGeoPosition::lettersOfTheHemispheres_data()
{
    QTest::addColumn<char>("ns");
    QTest::addColumn<char>("ew");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::newRow("north-east") << 'N' << 'E' << 53.0 << 8.0;
    QTest::newRow("south-west") << 'S' << 'W' << -53.0 << -8.0;
    QTest::newRow("lower case negates") << 'n' << 'e' << -53.0 << -8.0;
    QTest::newRow("south and lower case") << 'S' << 'e' << -53.0 << -8.0;
    QTest::newRow("any other letter negates") << '?' << 'E' << -53.0 << 8.0;
    QTest::newRow("east is no north") << 'E' << 'N' << -53.0 << -8.0;
}

void tst_LvGeoPosition::lettersOfTheHemispheres()
{
    QFETCH(char, ns);
    QFETCH(char, ew);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QVERIFY(holds(LvGeoPosition(53, ns, 8, ew), latitude, longitude));
}

void tst_LvGeoPosition::isValid_data()
{
    QTest::addColumn<LvGeoPosition>("position");
    QTest::addColumn<bool>("valid");
    QTest::newRow("default") << LvGeoPosition() << false;
    QTest::newRow("null") << LvGeoPosition::null() << false;
    QTest::newRow("on the equator") << LvGeoPosition(0.0, 0.0001) << true;
    QTest::newRow("nearly null, no tolerance") << LvGeoPosition(1e-12, 0.0) << true;
    QTest::newRow("on the 0° meridian") << LvGeoPosition(51.5, 0.0) << true;
    QTest::newRow("beyond the pole, within 360") << LvGeoPosition(360.0, -360.0) << true;
    QTest::newRow("latitude beyond 360") << LvGeoPosition(360.1, 8.0) << false;
    QTest::newRow("longitude beyond 360") << LvGeoPosition(53.0, -360.1) << false;
}

void tst_LvGeoPosition::isValid()
{
    QFETCH(LvGeoPosition, position);
    QTEST(position.isValid(), "valid");
}

void tst_LvGeoPosition::copiesAreIndependent()
{
    LvGeoPosition position(53.0, 8.0);
    LvGeoPosition copy = position;
    copy.setLatitude(54.0);
    QVERIFY(holds(position, 53.0, 8.0));
    QVERIFY(holds(copy, 54.0, 8.0));
    LvGeoPosition other = position;
    position.setLongitude(9.0);
    QVERIFY(holds(position, 53.0, 9.0));
    QVERIFY(holds(other, 53.0, 8.0));
    other = copy;
    copy += LvGeoPosition(1.0, 1.0);
    QVERIFY(holds(other, 54.0, 8.0));
    QVERIFY(holds(copy, 55.0, 9.0));
    LvGeoPosition pole(90.0, 8.0);
    const LvGeoPosition untouchedPole = pole;
    pole.catchLatitude();
    QVERIFY(holds(untouchedPole, 90.0, 8.0));

    LvGeoPosition unset;
    unset.setLatitude(1.0);
    QVERIFY(holds(LvGeoPosition(), 720.0, 720.0)); // default positions share a payload
}

void tst_LvGeoPosition::movesStealThePayload()
{
    LvGeoPosition position(53.0, 8.0);
    LvGeoPosition moved = std::move(position);
    QVERIFY(holds(moved, 53.0, 8.0));
    position = LvGeoPosition(1.0, 2.0); // a moved-from position may be assigned to
    QVERIFY(holds(position, 1.0, 2.0));
    position.swap(moved);
    QVERIFY(holds(position, 53.0, 8.0));
    QVERIFY(holds(moved, 1.0, 2.0));
    moved = std::move(position);
    QVERIFY(holds(moved, 53.0, 8.0));
}

void tst_LvGeoPosition::copiesOnManyThreads()
{
    const LvGeoPosition position(53.0, 8.0);
    std::atomic_int wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&position, &wrong, i] {
            for (int round = 0; round < 20000; ++round) {
                LvGeoPosition copy = position;
                copy.setLongitude(i + 10.0);
                const LvGeoPosition second = copy;
                if (!holds(second, 53.0, i + 10.0) || !holds(position, 53.0, 8.0))
                    ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
    QVERIFY(holds(position, 53.0, 8.0));
}

void tst_LvGeoPosition::payload()
{
    QSharedDataPointer<LvGeoPositionImpl> payload(new LvGeoPositionImpl(LvLatitude(53.0), LvLongitude(8.0)));
    const QSharedDataPointer<LvGeoPositionImpl> shared = payload;
    QCOMPARE(int(shared->ref.loadRelaxed()), 2);
    payload->myLatitude = 54.0;
    QCOMPARE(int(shared->ref.loadRelaxed()), 1);
    QCOMPARE(int(payload->ref.loadRelaxed()), 1);
    QVERIFY(shared->myLatitude.decimalDegrees() == 53.0);
    QVERIFY(payload->myLongitude.decimalDegrees() == 8.0);
    QVERIFY(std::has_virtual_destructor_v<LvGeoPositionImpl>);
    QVERIFY(std::has_virtual_destructor_v<LvGeoPosition>);
}

void tst_LvGeoPosition::setters()
{
    LvGeoPosition position(53.0, 8.0);
    position.setLatitude(LvLatitude(-12.5));
    position.setLongitude(LvLongitude(190.0));
    QVERIFY(holds(position, -12.5, 190.0));
    position.setLatitude(-12.5000005); // a change below the tolerance is one
    position.setLongitude(190.0000005);
    QVERIFY(holds(position, -12.5000005, 190.0000005));
}

void tst_LvGeoPosition::catchLatitude()
{
    LvGeoPosition position(90.0, 8.0);
    position.catchLatitude();
    QVERIFY(holds(position, 89.99, 8.0));
    position = LvGeoPosition(-100.0, 8.0);
    position.catchLatitude();
    QVERIFY(holds(position, -89.99, 8.0));
    position = LvGeoPosition(53.0, 8.0);
    position.catchLatitude();
    QVERIFY(holds(position, 53.0, 8.0));
}

void tst_LvGeoPosition::normalized()
{
    QVERIFY(holds(LvGeoPosition(100.0, 540.0).normalized(), 100.0, 180.0));
    QVERIFY(holds(LvGeoPosition(53.0, -181.0).normalized(), 53.0, 179.0));
}

void tst_LvGeoPosition::hemispheres()
{
    const LvGeoPosition northEast(53.0, 8.0);
    QVERIFY(northEast.isInNorthernHemisphere() && !northEast.isInSouthernHemisphere());
    QVERIFY(northEast.isInEasternHemisphere() && !northEast.isInWesternHemisphere());
    const LvGeoPosition southWest(-53.0, -8.0);
    QVERIFY(!southWest.isInNorthernHemisphere() && southWest.isInSouthernHemisphere());
    QVERIFY(!southWest.isInEasternHemisphere() && southWest.isInWesternHemisphere());
    QVERIFY(LvGeoPosition::null().isInNorthernHemisphere() && LvGeoPosition::null().isInEasternHemisphere());
}

void tst_LvGeoPosition::directions()
{
    const LvGeoPosition position(10.0, 170.0);
    const LvGeoPosition beyondTheDateLine(20.0, -170.0);
    QVERIFY(beyondTheDateLine.isNorthOf(position) && !position.isNorthOf(beyondTheDateLine));
    QVERIFY(position.isSouthOf(beyondTheDateLine) && !beyondTheDateLine.isSouthOf(position));
    QVERIFY(beyondTheDateLine.isEastOf(position) && !position.isEastOf(beyondTheDateLine));
    QVERIFY(position.isWestOf(beyondTheDateLine) && !beyondTheDateLine.isWestOf(position));
    QVERIFY(position.isNorthOf(LvLatitude(9.9999999)) && !position.isNorthOf(LvLatitude(10.0)));
    QVERIFY(position.isSouthOf(LvLatitude(10.0000001)) && !position.isSouthOf(LvLatitude(10.0)));
    QVERIFY(position.isEastOf(LvLongitude(160.0)) && !position.isEastOf(LvLongitude(-10.0)));
    QVERIFY(position.isWestOf(LvLongitude(-170.0)) && !position.isWestOf(LvLongitude(170.0)));
}

void tst_LvGeoPosition::pointF()
{
    QVERIFY(LvGeoPosition(53.14, 8.8).toPointF().x() == 8.8);
    QVERIFY(LvGeoPosition(53.14, 8.8).toPointF().y() == 53.14);
}

void tst_LvGeoPosition::hashValue()
{
    QCOMPARE(LvGeoPosition(53.0, 8.0).hashValue(), qHash(61.0, 0));
    QCOMPARE(LvGeoPosition(53.0, 8.0).hashValue(), LvGeoPosition(8.0, 53.0).hashValue());
    QCOMPARE(LvGeoPosition(-8.0, 8.0).hashValue(), LvGeoPosition(20.0, -20.0).hashValue());
    QVERIFY(LvGeoPosition(53.0, 8.0).hashValue() != LvGeoPosition(53.0, 8.5).hashValue());
}

void tst_LvGeoPosition::equality_data()
{
    QTest::addColumn<LvGeoPosition>("left");
    QTest::addColumn<LvGeoPosition>("right");
    QTest::addColumn<bool>("equal");
    const LvGeoPosition position(53.0, 8.0);
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const LvGeoPosition strange(notANumber, notANumber);
    QTest::newRow("one payload") << position << position << true;
    QTest::newRow("two payloads") << position << LvGeoPosition(53.0, 8.0) << true;
    QTest::newRow("within the tolerance") << position << LvGeoPosition(53.0000005, 7.9999995) << true;
    QTest::newRow("other latitude") << position << LvGeoPosition(53.000002, 8.0) << false;
    QTest::newRow("other longitude") << position << LvGeoPosition(53.0, 8.000002) << false;
    QTest::newRow("one turn apart") << position << LvGeoPosition(53.0, 368.0) << false;
    QTest::newRow("default") << LvGeoPosition() << LvGeoPosition() << true;
    QTest::newRow("one payload is enough") << strange << strange << true;
    QTest::newRow("not a number in two payloads")
        << strange << LvGeoPosition(notANumber, notANumber) << false;
}

void tst_LvGeoPosition::equality()
{
    QFETCH(LvGeoPosition, left);
    QFETCH(LvGeoPosition, right);
    QFETCH(bool, equal);
    QCOMPARE(left == right, equal);
    QCOMPARE(right == left, equal);
    QCOMPARE(left != right, !equal);
}

void tst_LvGeoPosition::order_data()
{
    QTest::addColumn<LvGeoPosition>("left");
    QTest::addColumn<LvGeoPosition>("right");
    QTest::addColumn<bool>("less");
    QTest::addColumn<bool>("greater");
    QTest::newRow("south first") << LvGeoPosition(1.0, 9.0) << LvGeoPosition(2.0, 8.0) << true << false;
    QTest::newRow("west first") << LvGeoPosition(1.0, 8.0) << LvGeoPosition(1.0, 9.0) << true << false;
    QTest::newRow("latitudes equal within the tolerance")
        << LvGeoPosition(1.0000005, 1.0) << LvGeoPosition(1.0, 2.0) << true << false;
    QTest::newRow("longitudes compare exactly")
        << LvGeoPosition(1.0, 2.0) << LvGeoPosition(1.0, 2.0000001) << true << false;
    QTest::newRow("by raw longitude across the date line")
        << LvGeoPosition(1.0, -170.0) << LvGeoPosition(1.0, 170.0) << true << false;
    QTest::newRow("equal") << LvGeoPosition(1.0, 2.0) << LvGeoPosition(1.0, 2.0) << false << false;
}

void tst_LvGeoPosition::order()
{
    QFETCH(LvGeoPosition, left);
    QFETCH(LvGeoPosition, right);
    QFETCH(bool, less);
    QFETCH(bool, greater);
    QCOMPARE(left < right, less);
    QCOMPARE(left > right, greater);
    QCOMPARE(right > left, less);
    QCOMPARE(right < left, greater);
}

void tst_LvGeoPosition::arithmetic()
{
    const LvGeoPosition position(53.0, 170.0);
    QVERIFY(holds(position + LvGeoPosition(40.0, 20.0), 93.0, 190.0)); // not wrapped
    QVERIFY(holds(position / 2.0, 26.5, 85.0));
    QVERIFY(holds(position / 0.0, 720.0, 720.0));
    LvGeoPosition sum = LvGeoPosition::null();
    sum += position;
    sum += position;
    QVERIFY(holds(sum, 106.0, 340.0));
    sum /= 2.0;
    QVERIFY(holds(sum, 53.0, 170.0));
    sum += sum;
    QVERIFY(holds(sum, 106.0, 340.0));
    sum /= 0.0;
    QVERIFY(!sum.isValid());
    QVERIFY(holds(position, 53.0, 170.0));
}

void tst_LvGeoPosition::deviations()
{
    const LvGeoPosition position(60.0, 8.0);
    QVERIFY(LvGeoPosition::latitudeDeviation(0.0).decimalDegrees() == 0.0);
    QVERIFY(position.latitudeDeviation(111.12).decimalDegrees() == 111.12 / 1.852 / 60.0);
    QVERIFY(qAbs(LvGeoPosition::latitudeDeviation(111.12).decimalDegrees() - 1.0) < 1e-12);
    QVERIFY(LvGeoPosition::latitudeDeviation(-1.852).decimalDegrees() == -1.0 / 60.0);
    QVERIFY(position.longitudeDeviation(0.0).decimalDegrees() == 0.0);
    QVERIFY(LvGeoPosition(90.0, 0.0).longitudeDeviation(0.0).decimalDegrees() == 0.0);
    QVERIFY(position.longitudeDeviation(10.0).decimalDegrees()
            == 10.0 / (std::cos(60.0 * 3.14159265359 / 180.0) * 111.1774733520461));
    QVERIFY(LvGeoPosition(0.0, 8.0).longitudeDeviation(111.1774733520461).decimalDegrees() == 1.0);
    // The full constant would give another number.
    QVERIFY(position.longitudeDeviation(10.0).decimalDegrees()
            != 10.0 / (std::cos(60.0 * 3.141592653589793 / 180.0) * 111.1774733520461));
}

void tst_LvGeoPosition::moves()
{
    const LvGeoPosition position(60.0, 179.9);
    const LvGeoPosition east = position.moveEastBy(100.0);
    QVERIFY(east.latitude().decimalDegrees() == 60.0);
    QVERIFY(east.longitude().decimalDegrees() == 179.9 + position.longitudeDeviation(100.0).decimalDegrees());
    QVERIFY(east.longitude().decimalDegrees() > 180.0); // not wrapped
    QVERIFY(qAbs(LvGeoPosition(60.0, 8.0).moveEastBy(10.0).longitude().decimalDegrees() - 8.17989) < 1e-5);
    QVERIFY(holds(position.moveEastBy(0.0), 60.0, 179.9));
    const LvGeoPosition north = LvGeoPosition(89.9, 8.0).moveNorthBy(111.12);
    QVERIFY(holds(north, 89.9 + 111.12 / 1.852 / 60.0, 8.0)); // does not stop at the pole
    QVERIFY(holds(LvGeoPosition(10.0, 8.0).moveNorthBy(-1.852), 10.0 - 1.0 / 60.0, 8.0));
}

void tst_LvGeoPosition::distance_data()
{
    QTest::addColumn<LvGeoPosition>("from");
    QTest::addColumn<LvGeoPosition>("to");
    QTest::addColumn<double>("kilometres");
    const LvGeoPosition position(53.14, 8.80);
    QTest::newRow("same place") << position << LvGeoPosition(53.14, 8.80) << 0.0;
    QTest::newRow("equator to pole") << LvGeoPosition(0.0, 8.0) << LvGeoPosition(90.0, 8.0) << 10005.9726;
    QTest::newRow("one degree of the equator") << LvGeoPosition(0, 1) << LvGeoPosition(0, 2) << 111.17747;
    QTest::newRow("across the date line") << LvGeoPosition(0, 179) << LvGeoPosition(0, -179) << 222.35495;
    QTest::newRow("antipodes") << LvGeoPosition(0, 90) << LvGeoPosition(0, -90) << 20011.9452;
    QTest::newRow("antipodes off the equator")
        << LvGeoPosition(53, 8) << LvGeoPosition(-53, -172) << 20011.9452;
    QTest::newRow("invalid start") << LvGeoPosition() << position << unknownDistance;
    QTest::newRow("invalid end") << position << LvGeoPosition() << unknownDistance;
    QTest::newRow("null end") << position << LvGeoPosition::null() << unknownDistance;
    QTest::newRow("null to itself") << LvGeoPosition::null() << LvGeoPosition::null() << unknownDistance;
}

void tst_LvGeoPosition::distance()
{
    QFETCH(LvGeoPosition, from);
    QFETCH(LvGeoPosition, to);
    QFETCH(double, kilometres);
    const double there = from.distance(to);
    QVERIFY2(qAbs(there - kilometres) < metre, qPrintable(QString::number(there, 'f', 6)));
    if (kilometres == unknownDistance)
        QVERIFY(there == unknownDistance); // compared against, so exactly this number
    QVERIFY(to.distance(from) == there);

    // Antipodes must never end in the root of a negative number.
    for (int i = 1; i < 2000; ++i) {
        const double latitude = i * 0.0449;
        const double longitude = i * 0.0891;
        const double half =
            LvGeoPosition(latitude, longitude).distance(LvGeoPosition(-latitude, longitude - 180.0));
        QVERIFY(qAbs(half - 20011.9452) < metre);
    }
}

void tst_LvGeoPosition::text()
{
    QCOMPARE(LvGeoPosition(53.14, 8.8).toString(false), QStringLiteral("N53.14000000; E8.80000000"));
    QCOMPARE(LvGeoPosition(-33.5, -70.25).toString(false), QStringLiteral("S33.50000000; W70.25000000"));
    QCOMPARE(LvGeoPosition(53.25, 8.5).toString(true), QStringLiteral("53° 15′ 0″ Nord<br>8° 30′ 0″ Ost"));
    QCOMPARE(LvGeoPosition(53.25, 8.8).toString(true),
             QStringLiteral("53° 15′ 0″ Nord<br>8° 48′ 3.63798e-12″ Ost"));
    QCOMPARE(LvGeoPosition().toString(false), QStringLiteral("; "));
    QCOMPARE(LvGeoPosition().toString(true), QStringLiteral("<br>"));
}

void tst_LvGeoPosition::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::newRow("letters") << "N53.14 E8.8" << 53.14 << 8.8;
    QTest::newRow("other hemispheres") << "S53.14 W8.8" << -53.14 << -8.8;
    QTest::newRow("plain") << "53.14 8.8" << 53.14 << 8.8;
    QTest::newRow("tab, blanks around") << "  N53.1\tE8.8 " << 53.1 << 8.8;
    QTest::newRow("several blanks") << "N53.1   \n E8.8" << 53.1 << 8.8;
    QTest::newRow("semicolon") << "N53.1;E8.8" << 720.0 << 720.0;
    QTest::newRow("machine text") << "N53.10000000; E8.80000000" << 720.0 << 720.0;
    QTest::newRow("three parts") << "N53.1 E8.8 X" << 720.0 << 720.0;
    QTest::newRow("one part") << "N53.1" << 720.0 << 720.0;
    QTest::newRow("empty") << "" << 720.0 << 720.0;
    QTest::newRow("swapped") << "E8.8 N53.1" << 720.0 << 720.0;
    QTest::newRow("unreadable longitude") << "N53.1 east" << 720.0 << 720.0;
    QTest::newRow("beyond 360") << "N361 E8" << 720.0 << 720.0;
    QTest::newRow("beyond the pole, within 360") << "N360 W360" << 360.0 << -360.0;
    QTest::newRow("null is read") << "0 0" << 0.0 << 0.0;
}

void tst_LvGeoPosition::parse()
{
    QFETCH(QString, text);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QVERIFY(holds(LvGeoPosition::parse(text), latitude, longitude));
}

void tst_LvGeoPosition::fromString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<LvGeoPosition>("position");
    QTest::newRow("both") << "53,8,24 N; 8,48,0 E" << LvGeoPosition(53.14, 8.8);
    QTest::newRow("south-west") << "53,8,24 S;8,48,0 W" << LvGeoPosition(-53.14, -8.8);
    QTest::newRow("further parts are ignored") << "53,8,24; 8,48,0; 1,2,3" << LvGeoPosition(53.14, 8.8);
    QTest::newRow("one part") << "53,8,24 N" << LvGeoPosition();
    QTest::newRow("first part empty") << ";53,8,24;8,48,0" << LvGeoPosition();
    QTest::newRow("latitude unreadable") << "53.14;8,48,0" << LvGeoPosition();
    QTest::newRow("longitude unreadable") << "53,8,24;8,48" << LvGeoPosition();
    QTest::newRow("beyond 360") << "361,0,0;8,48,0" << LvGeoPosition();
    QTest::newRow("empty") << "" << LvGeoPosition();
}

void tst_LvGeoPosition::fromString()
{
    QFETCH(QString, text);
    QFETCH(LvGeoPosition, position);
    QVERIFY(LvGeoPosition::fromString(text) == position);
}

void tst_LvGeoPosition::urlQuery()
{
    QUrlQuery query;
    LvGeoPosition(53.14, -8.5).writeTo(query);
    QCOMPARE(query.toString(QUrl::FullyEncoded),
             QStringLiteral("latitude=53.1400000000000006&longitude=-8.5000000000000000"));
}

void tst_LvGeoPosition::writeToXml()
{
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("place"));
    LvGeoPosition().writeToXml(element);
    LvGeoPosition::null().writeToXml(element);
    LvGeoPosition(361.0, 8.0).writeToXml(element);
    QCOMPARE(element.attributes().count(), 0);
    const LvGeoPosition position(53.14118, -8.21467);
    position.writeToXml(element);
    QCOMPARE(element.attributes().count(), 2);
    QVERIFY(element.attribute(QStringLiteral("latitude")).toDouble() == 53.14118);
    QVERIFY(element.attribute(QStringLiteral("longitude")).toDouble() == -8.21467);
    QDomElement reference = document.createElement(QStringLiteral("place"));
    reference.setAttribute(QStringLiteral("latitude"), 53.14118);
    QCOMPARE(element.attribute(QStringLiteral("latitude")), reference.attribute(QStringLiteral("latitude")));
    QVERIFY(holds(LvGeoPosition::fromXml(element, QString()), 53.14118, -8.21467));
}

void tst_LvGeoPosition::fromXml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::newRow("both") << R"(<a latitude="53.14" longitude="8.8"/>)"
                          << "" << 53.14 << 8.8;
    QTest::newRow("missing") << "<a/>"
                             << "" << -720.0 << -720.0;
    QTest::newRow("longitude missing") << R"(<a latitude="53.14"/>)"
                                       << "" << 53.14 << -720.0;
    QTest::newRow("unreadable") << R"(<a latitude="abc" longitude="8.8"/>)"
                                << "" << 0.0 << 8.8;
    QTest::newRow("empty") << R"(<a latitude="" longitude="8.8"/>)"
                           << "" << 0.0 << 8.8;
    QTest::newRow("prefix") << R"(<a latitude="1" from_latitude="53" from_longitude="8"/>)"
                            << "from_" << 53.0 << 8.0;
    QTest::newRow("prefix missing") << R"(<a latitude="1" longitude="2"/>)"
                                    << "from_" << -720.0 << -720.0;
    QTest::newRow("no check") << R"(<a latitude="400" longitude="-999"/>)"
                              << "" << 400.0 << -999.0;
}

void tst_LvGeoPosition::fromXml()
{
    QFETCH(QString, xml);
    QFETCH(QString, prefix);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QDomDocument document;
    QVERIFY(document.setContent(xml));
    QVERIFY(holds(LvGeoPosition::fromXml(document.documentElement(), prefix), latitude, longitude));
}

void tst_LvGeoPosition::debugText()
{
    QString text;
    QDebug(&text).noquote() << LvGeoPosition(53.141181234567, -8.5);
    QCOMPARE(text.trimmed(), QStringLiteral("Lat 53.141181 ; Lon -8.5"));
}

LV_TEST_MAIN(tst_LvGeoPosition)

#include "tst_LvGeoPosition.moc"
