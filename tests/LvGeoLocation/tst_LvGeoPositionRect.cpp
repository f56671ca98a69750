#include "LvGeoPositionRect.h"
#include "LvTest.h"

#include <QUrl>
#include <QUrlQuery>

namespace
{

LvGeoPositionRect rectOf(double south, double north, double west, double east)
{
    return {LvLatitudeRange(south, north), LvLongitudeRange(west, east)};
}

bool holds(const LvGeoPositionRect& rect, double south, double north, double west, double east)
{
    return rect.south().decimalDegrees() == south && rect.north().decimalDegrees() == north
        && rect.west().decimalDegrees() == west && rect.east().decimalDegrees() == east;
}

bool isNear(const LvGeoPositionRect& rect, double south, double north, double west, double east)
{
    constexpr double degrees = 1e-12;
    return qAbs(rect.south().decimalDegrees() - south) < degrees
        && qAbs(rect.north().decimalDegrees() - north) < degrees
        && qAbs(rect.west().decimalDegrees() - west) < degrees
        && qAbs(rect.east().decimalDegrees() - east) < degrees;
}

} // namespace

class tst_LvGeoPositionRect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constructors();
    void spawn();
    void europeanUnion();
    void bounds();
    void isValid_data();
    void isValid();
    void isNull_data();
    void isNull();
    void center();
    void containsPosition_data();
    void containsPosition();
    void containsRect();
    void expandToPosition();
    void expandToRect();
    void expandToItself();
    void plus();
    void equality();
    void blowUp();
    void maxExtension();
    void isVerySmall();
    void toReasonableSize();
    void withPadding();
    void estimatedSize();
    void text();
    void urlQuery();
    void debugText();
};

void tst_LvGeoPositionRect::constructors()
{
    QVERIFY(holds(LvGeoPositionRect(), 720.0, 720.0, 720.0, 720.0));
    QVERIFY(!LvGeoPositionRect().isValid());
    // Not reordered: south and west come from the first position.
    QVERIFY(holds(LvGeoPositionRect(LvGeoPosition(50, 20), LvGeoPosition(40, 10)), 50.0, 40.0, 20.0, 10.0));
    QVERIFY(holds(rectOf(40, 50, 10, 20), 40.0, 50.0, 10.0, 20.0));
    LvGeoPositionRect rect = rectOf(40, 50, 10, 20);
    const LvGeoPositionRect copy = rect;
    rect.blowUp(1.0);
    QVERIFY(holds(copy, 40.0, 50.0, 10.0, 20.0));
}

void tst_LvGeoPositionRect::spawn()
{
    QVERIFY(holds(LvGeoPositionRect::spawn(LvGeoPosition(50, 20), LvGeoPosition(40, 10)), 40.0, 50.0, 10.0,
                  20.0));
    QVERIFY(holds(LvGeoPositionRect::spawn(LvGeoPosition(40, -170), LvGeoPosition(50, 170)), 40.0, 50.0,
                  170.0, -170.0));
}

void tst_LvGeoPositionRect::europeanUnion()
{
    QVERIFY(holds(LvGeoPositionRect::europeanUnion(), 40.0, 60.0, -10.0, 30.0));
    QVERIFY(LvGeoPositionRect::europeanUnion().isDefault());
    QVERIFY(rectOf(40.0000005, 60, -10, 30).isDefault());
    QVERIFY(!rectOf(40, 60, -10, 30.1).isDefault());
    QVERIFY(!rectOf(40, 60, -10.1, 30).isDefault());
    QVERIFY(!rectOf(40, 60.1, -10, 30).isDefault());
    QVERIFY(!rectOf(40.1, 60, -10, 30).isDefault());
    QVERIFY(!LvGeoPositionRect().isDefault());
}

void tst_LvGeoPositionRect::bounds()
{
    const LvGeoPositionRect rect = rectOf(40, 50, 170, -170);
    QVERIFY(rect.northWest() == LvGeoPosition(50, 170));
    QVERIFY(rect.southEast() == LvGeoPosition(40, -170));
    QVERIFY(rect.latitudeRange() == LvLatitudeRange(40, 50));
    QVERIFY(rect.longitudeRange() == LvLongitudeRange(170, -170));
}

void tst_LvGeoPositionRect::isValid_data()
{
    QTest::addColumn<LvGeoPositionRect>("rect");
    QTest::addColumn<bool>("valid");
    QTest::newRow("plain") << rectOf(40, 50, 10, 20) << true;
    QTest::newRow("crossing the date line") << rectOf(40, 50, 170, -170) << true;
    QTest::newRow("null") << rectOf(0, 0, 0, 0) << true;
    QTest::newRow("south above north") << rectOf(50, 40, 10, 20) << false;
    QTest::newRow("beyond a pole") << rectOf(40, 91, 10, 20) << false;
    QTest::newRow("longitude beyond 180") << rectOf(40, 50, 10, 181) << false;
    QTest::newRow("default") << LvGeoPositionRect() << false;
}

void tst_LvGeoPositionRect::isValid()
{
    QFETCH(LvGeoPositionRect, rect);
    QTEST(rect.isValid(), "valid");
}

void tst_LvGeoPositionRect::isNull_data()
{
    QTest::addColumn<LvGeoPositionRect>("rect");
    QTest::addColumn<bool>("null");
    QTest::newRow("null") << rectOf(0, 0, 0, 0) << true;
    QTest::newRow("within the tolerance") << rectOf(-4e-7, 4e-7, -4e-7, 4e-7) << true;
    QTest::newRow("wide") << rectOf(0, 0, -1, 0) << false;
    QTest::newRow("high") << rectOf(-1, 0, 0, 0) << false;
    QTest::newRow("a point elsewhere, latitude") << rectOf(1, 1, 0, 0) << false;
    QTest::newRow("a point elsewhere, longitude") << rectOf(0, 0, 1, 1) << false;
    QTest::newRow("default") << LvGeoPositionRect() << false;
}

void tst_LvGeoPositionRect::isNull()
{
    QFETCH(LvGeoPositionRect, rect);
    QTEST(rect.isNull(), "null");
}

void tst_LvGeoPositionRect::center()
{
    QVERIFY(rectOf(40, 60, -10, 30).center() == LvGeoPosition(50, 10));
    QVERIFY(rectOf(-10, 20, 160, -150).center() == LvGeoPosition(5, -175));
}

void tst_LvGeoPositionRect::containsPosition_data()
{
    QTest::addColumn<LvGeoPositionRect>("rect");
    QTest::addColumn<LvGeoPosition>("position");
    QTest::addColumn<bool>("contained");
    const LvGeoPositionRect rect = rectOf(40, 60, -10, 30);
    QTest::newRow("inside") << rect << LvGeoPosition(53, 8) << true;
    QTest::newRow("corner") << rect << LvGeoPosition(60, -10) << true;
    QTest::newRow("outside the corner within the tolerance")
        << rect << LvGeoPosition(39.9999995, 30.0000005) << true;
    QTest::newRow("too far north") << rect << LvGeoPosition(60.000002, 8) << false;
    QTest::newRow("too far south") << rect << LvGeoPosition(39.999998, 8) << false;
    QTest::newRow("too far west") << rect << LvGeoPosition(53, -10.000002) << false;
    QTest::newRow("too far east") << rect << LvGeoPosition(53, 30.000002) << false;
    const LvGeoPositionRect crossing = rectOf(40, 60, 170, -170);
    QTest::newRow("crossing, eastern part") << crossing << LvGeoPosition(53, 175) << true;
    QTest::newRow("crossing, western part") << crossing << LvGeoPosition(53, -175) << true;
    QTest::newRow("crossing, opposite") << crossing << LvGeoPosition(53, 8) << false;
    QTest::newRow("no position") << rect << LvGeoPosition() << false;
}

void tst_LvGeoPositionRect::containsPosition()
{
    QFETCH(LvGeoPositionRect, rect);
    QFETCH(LvGeoPosition, position);
    QTEST(rect.contains(position), "contained");
}

void tst_LvGeoPositionRect::containsRect()
{
    const LvGeoPositionRect rect = rectOf(40, 60, -10, 30);
    QVERIFY(rect.contains(rect));
    QVERIFY(rect.contains(rectOf(45, 55, 0, 10)));
    QVERIFY(!rect.contains(rectOf(39, 55, 0, 10)));
    QVERIFY(!rect.contains(rectOf(45, 61, 0, 10)));
    QVERIFY(!rect.contains(rectOf(45, 55, -11, 10)));
    QVERIFY(!rect.contains(rectOf(45, 55, 0, 31)));
    QVERIFY(rectOf(40, 60, 170, -170).contains(rectOf(45, 55, 175, -175)));
    QVERIFY(!rectOf(40, 60, 170, -170).contains(rectOf(45, 55, 160, -175)));
}

void tst_LvGeoPositionRect::expandToPosition()
{
    LvGeoPositionRect rect;
    rect.expandTo(LvGeoPosition());
    rect.expandTo(LvGeoPosition::null());
    QVERIFY(holds(rect, 720.0, 720.0, 720.0, 720.0));
    rect.expandTo(LvGeoPosition(53, 8));
    QVERIFY(holds(rect, 53.0, 53.0, 8.0, 8.0));
    rect.expandTo(LvGeoPosition(50, 10));
    QVERIFY(holds(rect, 50.0, 53.0, 8.0, 10.0));
    rect.expandTo(LvGeoPosition(361, 200));
    QVERIFY(holds(rect, 50.0, 53.0, 8.0, 10.0));
    LvGeoPositionRect crossing = rectOf(40, 60, 170, -170);
    crossing.expandTo(LvGeoPosition(30, -160));
    QVERIFY(holds(crossing, 30.0, 60.0, 170.0, -160.0));
}

void tst_LvGeoPositionRect::expandToRect()
{
    LvGeoPositionRect rect = rectOf(40, 60, -10, 30);
    rect.expandTo(LvGeoPositionRect());
    rect.expandTo(rectOf(70, 30, 0, 1)); // invalid latitudes
    rect.expandTo(rectOf(30, 70, 0, 181)); // invalid longitudes
    QVERIFY(holds(rect, 40.0, 60.0, -10.0, 30.0));
    rect.expandTo(rectOf(30, 50, 0, 50));
    QVERIFY(holds(rect, 30.0, 60.0, -10.0, 50.0));

    LvGeoPositionRect empty;
    empty.expandTo(rectOf(30, 50, 0, 50));
    QVERIFY(holds(empty, 30.0, 50.0, 0.0, 50.0));
    // An empty area starts with the eastern bound, so that the western one extends it the long way.
    LvGeoPositionRect notCrossing;
    notCrossing.expandTo(rectOf(30, 50, 170, -170));
    QVERIFY(holds(notCrossing, 30.0, 50.0, -170.0, 170.0));

    // East before west: 100 becomes the western bound first and 20 thereafter. The other way round west would
    // be 100.
    LvGeoPositionRect crossing = rectOf(40, 60, 170, -170);
    crossing.expandTo(rectOf(40, 60, 20, 100));
    QVERIFY(holds(crossing, 40.0, 60.0, 20.0, -170.0));
    crossing = rectOf(40, 60, 170, -170);
    crossing.expandTo(rectOf(40, 60, -100, 100));
    QVERIFY(holds(crossing, 40.0, 60.0, 100.0, -100.0));
}

void tst_LvGeoPositionRect::expandToItself()
{
    LvGeoPositionRect rect = rectOf(40, 60, 170, -170);
    rect.expandTo(rect);
    QVERIFY(holds(rect, 40.0, 60.0, 170.0, -170.0));
}

void tst_LvGeoPositionRect::plus()
{
    const LvGeoPositionRect rect = rectOf(40, 60, -10, 30);
    QVERIFY(holds(rect + rectOf(30, 50, 0, 50), 30.0, 60.0, -10.0, 50.0));
    QVERIFY(holds(rect + LvGeoPositionRect(), 40.0, 60.0, -10.0, 30.0));
    QVERIFY(holds(rect, 40.0, 60.0, -10.0, 30.0));
}

void tst_LvGeoPositionRect::equality()
{
    const LvGeoPositionRect rect = rectOf(40, 60, -10, 30);
    QVERIFY(rect == rectOf(40.0000005, 60, -10, 29.9999995));
    QVERIFY(!(rect != rectOf(40, 60, -10, 30)));
    QVERIFY(rect != rectOf(41, 60, -10, 30));
    QVERIFY(rect != rectOf(40, 60, -10, 31));
    QVERIFY(LvGeoPositionRect() == LvGeoPositionRect());
}

void tst_LvGeoPositionRect::blowUp()
{
    LvGeoPositionRect rect = rectOf(40, 60, -10, 30);
    const LvGeoPositionRect larger = rect.blownUp(40.0);
    QVERIFY(holds(larger, 0.0, 90.0, -50.0, 70.0));
    QVERIFY(holds(rect, 40.0, 60.0, -10.0, 30.0));
    rect.blowUp(1.0);
    QVERIFY(holds(rect, 39.0, 61.0, -11.0, 31.0));
    rect.blowUp(200.0);
    QVERIFY(holds(rect, -90.0, 90.0, -180.0, 180.0));
}

void tst_LvGeoPositionRect::maxExtension()
{
    QVERIFY(rectOf(40, 60, -10, 30).maxExtension().decimalDegrees() == 40.0);
    QVERIFY(rectOf(40, 60, 0, 10).maxExtension().decimalDegrees() == 20.0);
    QVERIFY(rectOf(40, 60, 170, -170).maxExtension().decimalDegrees() == 340.0);
    QVERIFY(rectOf(60, 30, 0, 10).maxExtension().decimalDegrees() == 30.0);
}

void tst_LvGeoPositionRect::isVerySmall()
{
    QVERIFY(rectOf(40, 40.5, 8, 8.2).isVerySmall());
    QVERIFY(rectOf(40, 40, 8, 8).isVerySmall());
    QVERIFY(!rectOf(40, 41, 8, 8.2).isVerySmall());
    QVERIFY(rectOf(0, 0.9999999, 8, 8.2).isVerySmall()); // exact, although it equals 1
    QVERIFY(!rectOf(40, 40.5, 170, -170).isVerySmall());
}

void tst_LvGeoPositionRect::toReasonableSize()
{
    QVERIFY(isNear(rectOf(40, 40.5, 8, 8.2).toReasonableSize(), 39.0, 41.5, 7.0, 9.2));
    QVERIFY(isNear(rectOf(89.5, 90, -180, -179.8).toReasonableSize(), 88.5, 90.0, -180.0, -178.8));
    QVERIFY(holds(rectOf(40, 41, 8, 8.2).toReasonableSize(), 40.0, 41.0, 8.0, 8.2));
    // Two identical markers are 0 degrees apart; blown up they end at the bounds.
    QVERIFY(holds(LvGeoPositionRect().toReasonableSize(), 90.0, 90.0, 180.0, 180.0));
}

void tst_LvGeoPositionRect::withPadding()
{
    QVERIFY(isNear(rectOf(50, 52, 8, 12).withPadding(10), 49.6, 52.4, 7.6, 12.4));
    QVERIFY(holds(rectOf(50, 52, 8, 12).withPadding(0), 50.0, 52.0, 8.0, 12.0));
    QVERIFY(isNear(rectOf(50, 52, 8, 12).withPadding(-10), 50.4, 51.6, 8.4, 11.6));
    QVERIFY(isNear(rectOf(50, 50, 8, 8).withPadding(10), 49.9, 50.1, 7.9, 8.1));
    QVERIFY(isNear(rectOf(50, 50.0000005, 8, 8).withPadding(10), 49.9, 50.1000005, 7.9,
                   8.1)); // a point by tolerance
    QVERIFY(holds(rectOf(50, 50, 8, 8).withPadding(0), 50.0, 50.0, 8.0, 8.0));
    QVERIFY(holds(rectOf(0, 80, 0, 160).withPadding(100), -90.0, 90.0, -160.0, 180.0));
    QVERIFY(holds(rectOf(52, 50, 8, 12).withPadding(10), 52.0, 50.0, 8.0, 12.0));
    QVERIFY(holds(LvGeoPositionRect().withPadding(10), 720.0, 720.0, 720.0, 720.0));
}

void tst_LvGeoPositionRect::estimatedSize()
{
    QVERIFY(rectOf(40, 60, -10, 30).estimatedSize() == 800.0);
    QVERIFY(rectOf(40, 60, 170, -170).estimatedSize() == -6800.0);
    QVERIFY(LvGeoPositionRect().estimatedSize() == 0.0);
}

void tst_LvGeoPositionRect::text()
{
    QCOMPARE(rectOf(-40, 60, -10, 30.5).toString(false),
             QStringLiteral("S40.00000000 - N60.00000000 ; W10.00000000 - E30.50000000"));
    QCOMPARE(rectOf(-40, 60, -10, 30.5).toString(true),
             QStringLiteral("40° 0′ 0″ Süd - 60° 0′ 0″ Nord ; 10° 0′ 0″ West - 30° 30′ 0″ Ost"));
}

void tst_LvGeoPositionRect::urlQuery()
{
    QUrlQuery query;
    rectOf(-40, 60, -10, 30.5).writeTo(query);
    QCOMPARE(query.toString(QUrl::FullyEncoded),
             QStringLiteral("latitude_max=60.0000000000000000&latitude_min=-40.0000000000000000"
                            "&longitude_max=30.5000000000000000&longitude_min=-10.0000000000000000"));
    QVERIFY(holds(LvGeoPositionRect::parse(query), -40.0, 60.0, -10.0, 30.5));
    QVERIFY(holds(LvGeoPositionRect::parse(QUrlQuery(QStringLiteral("latitude_max=60&longitude_min=x"))),
                  720.0, 60.0, 720.0, 720.0));
    QVERIFY(!LvGeoPositionRect::parse(QUrlQuery()).isValid());
}

void tst_LvGeoPositionRect::debugText()
{
    QString text;
    QDebug(&text).noquote().nospace() << rectOf(40, 60, -10, 30);
    QCOMPARE(text, QStringLiteral("Lat: N40.00000000 - N60.00000000 ; Lon:W10.00000000 - E30.00000000"));
}

LV_TEST_MAIN(tst_LvGeoPositionRect)

#include "tst_LvGeoPositionRect.moc"
