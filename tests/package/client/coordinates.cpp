// What a program outside the tree can write with the coordinate classes of the installed package.

#include <QDomDocument>
#include <QTest>
#include <QUrlQuery>

#include <LvGeoArc.h>
#include <LvGeoPosition.h>
#include <LvGeoPositionList.h>
#include <LvGeoPositionRect.h>
#include <LvGeoPositionSamples.h>
#include <LvLatitude.h>
#include <LvLatitudeList.h>
#include <LvLatitudeRange.h>
#include <LvLongitude.h>
#include <LvLongitudeList.h>
#include <LvLongitudeRange.h>
#include <LvMapProjection.h>

class coordinates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void angles();
    void texts();
    void positions();
    void ranges();
    void rectangles();
    void lists();
    void samples();
    void projection();
};

void coordinates::angles()
{
    QVERIFY(LvLatitude(53.0) == LvLatitude(53.0000005));
    QVERIFY(LvLatitude(53.0) < LvLatitude(53.0000005));
    QVERIFY(LvLatitude(53.0) >= LvLatitude(53.0000005));
    QVERIFY(LvLatitude(53.0) != LvLatitude(53.000002));
    QVERIFY(!(LvGeoArc(10) / 0.0).isValid());
    QCOMPARE((LvGeoArc(10) / 0.0).decimalDegrees(), 720.0);
    QCOMPARE((LvGeoArc(10) / 4.0).decimalDegrees(), 2.5);
    QCOMPARE((LvGeoArc(10) * 2.0).decimalDegrees(), 20.0);
    LvGeoArc sum(1);
    sum += LvGeoArc(2);
    QCOMPARE(sum.degreeF(), 3.0);
    LvGeoArc set(0);
    QVERIFY(set.isNull());
    set.setDegree(-33, -30, -0.0);
    QCOMPARE(set.decimalDegrees(), -33.5);
    QCOMPARE(set.degree(), -33);
    QCOMPARE(set.minute(), -30);
    QCOMPARE(set.minuteF(), 30.0);
    QCOMPARE(set.secondF(), 0.0);
    QCOMPARE(set.directionIndicator(), QString());
    QCOMPARE(LvLatitude::safeLatitude(100).decimalDegrees(), -80.0);
    QCOMPARE(LvLatitude::safeLatitude(-270).decimalDegrees(), -90.0);
    QCOMPARE(LvLongitude(540).normalized().decimalDegrees(), 180.0);
    QCOMPARE(LvLongitude(-181).normalized().decimalDegrees(), 179.0);
    QCOMPARE(LvLatitude(90).catchOutOfBound().decimalDegrees(), 90 - 0.01);
    QCOMPARE(LvLatitude(89.98).catchOutOfBound().decimalDegrees(), 89.98);
    QVERIFY(!LvLongitude(170).isEastOf(LvLongitude(-170)));
    QVERIFY(LvLongitude(170).isWestOf(LvLongitude(-170)));
    QVERIFY(LvLongitude(-180).isInEasternHemisphere());
    QVERIFY(LvLatitude(0).isInNorthernHemisphere());
    QCOMPARE(LvGeoArc::fromVariant(QVariant()).decimalDegrees(), 720.0);
    QCOMPARE(LvGeoArc(5).toVariant().toDouble(), 5.0);
    QCOMPARE(LvGeoArc::fromRadians(LvGeoArc(90).radians()).decimalDegrees(), 90.0);
    const LvLatitude difference = LvLatitude(5) - LvLatitude(7);
    QCOMPARE(difference.decimalDegrees(), -2.0);
    const LvLongitude total = LvLongitude(179) + LvLongitude(7);
    QCOMPARE(total.decimalDegrees(), 186.0);
    QCOMPARE(LvGeoArc(3).absDistance(LvGeoArc(-4)).decimalDegrees(), 7.0);
}

void coordinates::texts()
{
    QCOMPARE(LvLatitude(0).toString(false), QStringLiteral("N0.00000000"));
    QCOMPARE(LvLongitude(0).toString(false), QStringLiteral("E0.00000000"));
    QCOMPARE(LvLongitude(-180).toString(false), QStringLiteral("E180.00000000"));
    QCOMPARE(LvLatitude(-33.5).toString(true), QStringLiteral("33° 30′ 0″ Süd"));
    QVERIFY(LvLatitude(720).toString(true).isEmpty());
    QCOMPARE(LvLatitude::parse(QStringLiteral("S33.8688")).decimalDegrees(), -33.8688);
    QCOMPARE(LvLatitude::parse(QStringLiteral("s33.8688")).decimalDegrees(), 720.0);
    QCOMPARE(LvLongitude::parse(QStringLiteral("W12")).decimalDegrees(), -12.0);
    QCOMPARE(LvGeoArc::fromString(QStringLiteral("53,8,24 N")).decimalDegrees(), 53.14);
    QCOMPARE(LvGeoArc::fromString(QStringLiteral("53,8,24 S")).decimalDegrees(), -53.14);
    QCOMPARE(LvGeoArc::fromString(QStringLiteral("53° 8' 24\"")).decimalDegrees(), 720.0);
    QCOMPARE(LvGeoArc(53.14).toExifRational(), QStringLiteral("53/1 8/1 2400000/100000"));
    QCOMPARE(LvLatitude(53.5).humanReadable(QStringLiteral("dm"), 2), QStringLiteral("53° 30.00' N"));
    QCOMPARE(LvGeoArc(53.5).humanReadable(QStringLiteral("d"), 1), QStringLiteral("53.5° "));
    QCOMPARE(LvLongitude(-8.5).humanReadable(QStringLiteral("dms"), 0), QStringLiteral("8° 30' 0\" W"));
    QCOMPARE(LvGeoArc(1.5).toString(), QStringLiteral("1.5000000000000000"));
    QUrlQuery query;
    LvGeoArc(1.5).writeTo(query, QStringLiteral("key"));
    QCOMPARE(query.queryItemValue(QStringLiteral("key")), QStringLiteral("1.5000000000000000"));
}

void coordinates::positions()
{
    QVERIFY(!LvGeoPosition().isValid());
    QVERIFY(!LvGeoPosition::null().isValid());
    QVERIFY(LvGeoPosition(0.0, 0.0001).isValid());
    QCOMPARE(LvGeoPosition(53.14, 8.80).distance(LvGeoPosition(53.14, 8.80)), 0.0);
    QCOMPARE(LvGeoPosition(53.14, 8.80).distance(LvGeoPosition::null()), 6370000.0);
    QVERIFY(qAbs(LvGeoPosition(0, 10).distance(LvGeoPosition(90, 10)) - 10005.97) < 0.01);
    const LvGeoPosition southEast(53, 'S', 8, 'e');
    QCOMPARE(southEast.latitude().decimalDegrees(), -53.0);
    QCOMPARE(southEast.longitude().decimalDegrees(), -8.0);
    QCOMPARE(LvGeoPosition::parse(QStringLiteral(" N53.1\tE8.8 ")), LvGeoPosition(53.1, 8.8));
    QVERIFY(!LvGeoPosition::parse(QStringLiteral("N53.1;E8.8")).isValid());
    QVERIFY(!LvGeoPosition::parse(QStringLiteral("N53.1 E8.8 X")).isValid());
    QCOMPARE(LvGeoPosition::fromString(QStringLiteral("53,8,24 N; 8,48,0 E")), LvGeoPosition(53.14, 8.8));
    QCOMPARE(LvGeoPosition(53.14, 8.8).toString(false), QStringLiteral("N53.14000000; E8.80000000"));
    QCOMPARE(LvGeoPosition(53.14, 8.5).toString(true), QStringLiteral("53° 8′ 24″ Nord<br>8° 30′ 0″ Ost"));
    QVERIFY(LvGeoPosition(10.0000005, 1) < LvGeoPosition(10, 2));
    QVERIFY(LvGeoPosition(1, 2) > LvGeoPosition(0, 3));
    QVERIFY(qAbs(LvGeoPosition(60, 0.5).moveEastBy(10).longitude().decimalDegrees() - 0.5 - 0.17989) < 1e-5);
    QCOMPARE(LvGeoPosition(10, 5).moveNorthBy(111.12).latitude().decimalDegrees(), 11.0);
    LvGeoPosition changed(1, 2);
    const LvGeoPosition copy = changed;
    changed.setLatitude(LvLatitude(9));
    QCOMPARE(copy.latitude().decimalDegrees(), 1.0);
    changed.catchLatitude();
    QCOMPARE(changed, LvGeoPosition(9, 2));
    QCOMPARE((LvGeoPosition(2, 4) + LvGeoPosition(4, 4)) / 2, LvGeoPosition(3, 4));
    QCOMPARE(LvGeoPosition(1, 2).toPointF(), QPointF(2, 1));
    QCOMPARE(LvGeoPosition(1, 2).hashValue(), qHash(3.0, 0));
    QVERIFY(LvGeoPosition(0, 179).isWestOf(LvGeoPosition(0, -179)));
    QVERIFY(LvGeoPosition(1, 179).isNorthOf(LvLatitude(0)));

    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("e"));
    QCOMPARE(LvGeoPosition::fromXml(element, QString()).latitude().decimalDegrees(), -720.0);
    LvGeoPosition::null().writeToXml(element);
    QVERIFY(!element.hasAttribute(QStringLiteral("latitude")));
    LvGeoPosition(1.5, 2.5).writeToXml(element);
    QCOMPARE(LvGeoPosition::fromXml(element, QString()), LvGeoPosition(1.5, 2.5));
    element.setAttribute(QStringLiteral("latitude"), QStringLiteral("abc"));
    QCOMPARE(LvGeoPosition::fromXml(element, QString()).latitude().decimalDegrees(), 0.0);
}

void coordinates::ranges()
{
    const LvLongitudeRange crossing = LvLongitudeRange::spawn(170, -170);
    QVERIFY(crossing.crossesDateLine());
    QCOMPARE(crossing.center().decimalDegrees(), 180.0);
    QVERIFY(crossing.contains(179));
    QVERIFY(crossing.contains(-179));
    QVERIFY(!crossing.contains(0));
    QCOMPARE(crossing.width().decimalDegrees(), -340.0);
    QCOMPARE(LvLongitudeRange(-10, 30).center().decimalDegrees(), 10.0);
    QCOMPARE(LvLongitudeRange(160, -150).center().decimalDegrees(), -175.0);
    LvLongitudeRange west(170, -170);
    west.expandTo(160);
    QCOMPARE(west.west().decimalDegrees(), 160.0);
    west.expandTo(LvLongitude(-160));
    QCOMPARE(west.east().decimalDegrees(), -160.0);
    west.expandTo(175);
    QCOMPARE(west, LvLongitudeRange(160, -160));
    QVERIFY(!LvLatitudeRange(50, 40).isValid());
    QVERIFY(LvLongitudeRange(50, 40).isValid());
    QCOMPARE(LvLatitudeRange::spawn(50, 40), LvLatitudeRange(40, 50));
    LvLatitudeRange empty;
    empty.expandTo(53);
    QCOMPARE(empty, LvLatitudeRange(53, 53));
    QVERIFY(LvLatitudeRange(0, 10).intersects(LvLatitudeRange(5, 20)));
    QCOMPARE(QUERY_ITEM_SOUTH, QStringLiteral("latitude_min"));
    QUrlQuery query;
    LvLatitudeRange(1, 2).writeTo(query);
    QCOMPARE(LvLatitudeRange::parse(query), LvLatitudeRange(1, 2));
    QCOMPARE(LvLongitudeRange::parse(QStringLiteral("W3"), QStringLiteral("E4")), LvLongitudeRange(-3, 4));
    QCOMPARE(LvLatitudeRange(1, 2).toString(false), QStringLiteral("N1.00000000 - N2.00000000"));
    QCOMPARE(LvRange<int>(0, 5).center(), 2);
    QVERIFY(LvRange<QDateTime>().min().isNull());
}

void coordinates::rectangles()
{
    QVERIFY(LvGeoPositionRect::europeanUnion().isDefault());
    QVERIFY(!LvGeoPositionRect().isValid());
    LvGeoPositionRect rect = LvGeoPositionRect::spawn(LvGeoPosition(50.5, 8.2), LvGeoPosition(50, 8));
    QCOMPARE(rect.south().decimalDegrees(), 50.0);
    QCOMPARE(rect.northWest(), LvGeoPosition(50.5, 8));
    QVERIFY(rect.isVerySmall());
    const LvGeoPositionRect reasonable = rect.toReasonableSize();
    QCOMPARE(reasonable.north().decimalDegrees(), 51.5);
    QCOMPARE(reasonable.west().decimalDegrees(), 7.0);
    const LvGeoPositionRect padded =
        LvGeoPositionRect(LvLatitudeRange(10, 12), LvLongitudeRange(20, 24)).withPadding(10);
    QVERIFY(qAbs(padded.south().decimalDegrees() - 9.6) < 1e-12);
    QVERIFY(qAbs(padded.east().decimalDegrees() - 24.4) < 1e-12);
    LvGeoPositionRect unchanged = rect;
    unchanged.expandTo(LvGeoPosition());
    QCOMPARE(unchanged, rect);
    QVERIFY(rect.contains(LvGeoPosition(50.25, 8.1)));
    QVERIFY((rect + LvGeoPositionRect::europeanUnion()).contains(rect));
    QVERIFY(qAbs(rect.estimatedSize() - 0.1) < 1e-9);
    QUrlQuery query;
    rect.writeTo(query);
    QCOMPARE(LvGeoPositionRect::parse(query), rect);
    QVERIFY(LvGeoPositionRect(LvGeoPosition(0, 0), LvGeoPosition(0, 0)).isNull());
    QCOMPARE(rect.blownUp(1).west().decimalDegrees(), 7.0);
}

void coordinates::lists()
{
    const LvLongitudeList longitudes{170, 175, -175, -170};
    QCOMPARE(longitudes.effectiveRange().min().decimalDegrees(), 170.0);
    QCOMPARE(longitudes.effectiveRange().max().decimalDegrees(), -170.0);
    QCOMPARE(longitudes.naiveRange().min().decimalDegrees(), -175.0);
    QCOMPARE(longitudes.onlyWesternHemisphere().size(), 2);
    QCOMPARE(LvLongitudeList().effectiveRange().min().decimalDegrees(), 720.0);
    QVERIFY(!LvGeoPositionList().average().isValid());
    QVERIFY(!LvGeoPositionList().boundingBox().isValid());
    const LvGeoPositionList list{LvGeoPosition(1, 2), LvGeoPosition(3, 4)};
    QCOMPARE(list.average(), LvGeoPosition(2, 3));
    QCOMPARE(list.center(), LvGeoPosition(2, 3));
    QCOMPARE(list.latitudes().northernBound().decimalDegrees(), 3.0);
    QCOMPARE(list.longitudes().westernBound().decimalDegrees(), 2.0);
    QCOMPARE(list.toPainterPath().elementCount(), 2);
    QCOMPARE(list.filterStrayPositions(1.0, false, 5).size(), 2);
    QCOMPARE(list.filterStrayPositions(2.0, true, 1).size(), 0);
}

void coordinates::samples()
{
    const LvGeoPositionSamples table;
    QCOMPARE(table.name(LvGeoPositionSamplesEnum(5)), QStringLiteral("LA"));
    QVERIFY(table.name(LvGeoPositionSamplesEnum(13)).isEmpty());
    QVERIFY(!table.position(LvGeoPositionSamplesEnum(13)).isValid());
    const double km =
        table.position(LvGeoPositionSamplesEnum(0)).distance(table.position(LvGeoPositionSamplesEnum(1)));
    QVERIFY(qAbs(km - 40.09) < 0.005);
    QCOMPARE(table.latitude(LvGeoPositionSamplesEnum(8)).decimalDegrees(), 51.507351);
}

void coordinates::projection()
{
    const LvMapProjection wide(LvGeoPositionRect(LvLatitudeRange(-10, 10), LvLongitudeRange(-10, 10)),
                               QSize(200, 100));
    QVERIFY(qAbs(wide.resultBoundingBox().south().decimalDegrees() + 10.0) < 1e-9);
    QVERIFY(wide.resultBoundingBox().west().decimalDegrees() < -10.0);
    const QPointF pixel = wide.projectate(LvGeoPosition(5, 5));
    QCOMPARE(pixel.x(), double(int(pixel.x())));
    const LvGeoPosition back = wide.convert(pixel.toPoint());
    QVERIFY(LvMapProjection::epsilonEqual(back, LvGeoPosition(5, 5), 0.3));
    QCOMPARE(LvMapProjection::longitudeToNormalized(0), 0.5);
    QCOMPARE(LvMapProjection::normalizedToLongitude(1), 180.0);
    QCOMPARE(wide.getPixelCoordinateByMapCoordinate(5, 5), pixel);
    const LvMapProjection dateLine(LvGeoPositionRect(LvLatitudeRange(-10, 10), LvLongitudeRange(170, -170)),
                                   QSize(400, 500));
    QCOMPARE(dateLine.projectate(LvGeoPosition(0, 170)).x(), 0.0);
    QVERIFY(dateLine.projectate(LvGeoPosition(0, -175)).x() < 0);
}

QTEST_GUILESS_MAIN(coordinates)
#include "coordinates.moc"
