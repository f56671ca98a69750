#include "LvLatitudeRange.h"
#include "LvLongitudeRange.h"
#include "LvMapView.h"
#include "LvTest.h"

#include <cmath>

namespace
{

constexpr double pixelTolerance = 1e-3;

LvGeoPositionRect box(double south, double north, double west, double east)
{
    return {LvLatitudeRange(south, north), LvLongitudeRange(west, east)};
}

bool isNear(double actual, double expected, double tolerance)
{
    if (std::abs(actual - expected) <= tolerance) {
        return true;
    }
    qWarning("%.9f is not %.9f", actual, expected);
    return false;
}

bool isNear(const QPointF& actual, const QPointF& expected, double tolerance = pixelTolerance)
{
    return isNear(actual.x(), expected.x(), tolerance) && isNear(actual.y(), expected.y(), tolerance);
}

} // namespace

class tst_LvMapView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeWorld();
    void boxFillsThePicture();
    void boxWithoutExtent();
    void boxAcrossTheDateLine();
    void aroundCenter_data();
    void aroundCenter();
    void tallPictureRaisesTheZoom();
    void worldIsAPixelWideAtLeast();
    void fittedTo_data();
    void fittedTo();
    void fittedToAPointAndToNothing();
    void reservedHeight_data();
    void reservedHeight();
    void normalizedRect();
    void limitsOfLatitude();
    void pixelsPerKilometre_data();
    void pixelsPerKilometre();
};

void tst_LvMapView::wholeWorld()
{
    const LvMapView view(QSize(512, 512));
    QVERIFY(isNear(view.worldSize(), 512.0, 1e-6));
    QVERIFY(isNear(view.zoom(), 1.0, 1e-9));
    QVERIFY(isNear(view.middleLatitude(), 0.0, 1e-9));
    QVERIFY(isNear(view.pixelOf(0.0, 0.0), {256.0, 256.0}));
    QVERIFY(isNear(view.pixelOf(LvMapView::squareLatitude, -180.0), {0.0, 0.0}));
    QVERIFY(isNear(view.pixelOf(-LvMapView::squareLatitude, 180.0), {512.0, 512.0}));
    QVERIFY(isNear(view.pixelOfNormalized({0.25, 0.75}), {128.0, 384.0}));
}

void tst_LvMapView::boxFillsThePicture()
{
    // A wide picture shows more to the sides, a high one more above and below; the box itself is whole.
    const LvGeoPositionRect area = box(50.0, 52.0, 8.0, 10.0);
    const LvMapView wide(area, {1000, 400});
    QVERIFY(isNear(wide.pixelOf(52.0, 9.0), {500.0, 0.0}));
    QVERIFY(isNear(wide.pixelOf(50.0, 9.0), {500.0, 400.0}));
    QVERIFY(wide.pixelOf(50.0, 8.0).x() > 0.0);
    const LvMapView high(area, {400, 1000});
    QVERIFY(isNear(high.pixelOf(50.0, 8.0).x(), 0.0, pixelTolerance));
    QVERIFY(isNear(high.pixelOf(50.0, 10.0).x(), 400.0, pixelTolerance));
    QVERIFY(high.pixelOf(52.0, 9.0).y() > 0.0);
    QVERIFY(isNear(high.pixelOf(52.0, 9.0).y() + high.pixelOf(50.0, 9.0).y(), 1000.0, pixelTolerance));
}

void tst_LvMapView::boxWithoutExtent()
{
    const LvMapView meridian(box(10.0, 20.0, 8.0, 8.0), {300, 200});
    QVERIFY(isNear(meridian.pixelOf(20.0, 8.0), {150.0, 0.0}));
    QVERIFY(isNear(meridian.pixelOf(10.0, 8.0), {150.0, 200.0}));
    const LvMapView parallel(box(10.0, 10.0, 8.0, 9.0), {300, 200});
    QVERIFY(isNear(parallel.pixelOf(10.0, 9.0), {300.0, 100.0}));
    const LvMapView point(box(53.0, 53.0, 8.0, 8.0), {300, 200});
    QVERIFY(isNear(point.pixelOf(53.0, 8.0), {150.0, 100.0}, 0.1));
}

void tst_LvMapView::boxAcrossTheDateLine()
{
    const LvMapView view(box(-9.0, 9.0, 170.0, -170.0), {400, 400});
    QVERIFY(isNear(view.pixelOf(0.0, 170.0), {0.0, 200.0}));
    QVERIFY(isNear(view.pixelOf(0.0, 180.0), {200.0, 200.0}));
    // The eastern part belongs to the next copy of the world.
    QVERIFY(isNear(view.pixelOf(0.0, -170.0), {400.0 - view.worldSize(), 200.0}));
    QVERIFY(isNear(view.worldSize(), 400.0 * 360.0 / 20.0, 1e-6));
}

void tst_LvMapView::aroundCenter_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QSize>("size");

    QTest::newRow("a town") << 53.14 << 8.8 << 10.0 << QSize(800, 600);
    QTest::newRow("a zoom level with a fraction") << 53.14 << 8.8 << 10.5 << QSize(801, 601);
    QTest::newRow("the whole world, twice") << 0.0 << 0.0 << 0.0 << QSize(512, 256);
    QTest::newRow("the date line") << -17.0 << 180.0 << 6.0 << QSize(640, 480);
    QTest::newRow("the other side of the date line") << -17.0 << -180.0 << 6.0 << QSize(640, 480);
    QTest::newRow("a house") << 53.14 << 8.8 << 20.0 << QSize(300, 900);
    QTest::newRow("the deepest level") << -33.9 << 151.2 << 24.0 << QSize(1000, 1000);
    QTest::newRow("the edge of the map") << 85.0 << 10.0 << 5.0 << QSize(400, 400);
    QTest::newRow("a picture of one pixel") << 10.0 << 10.0 << 3.0 << QSize(1, 1);
    QTest::newRow("no place at all for the track library") << 0.0 << 0.0 << 4.0 << QSize(100, 100);
}

void tst_LvMapView::aroundCenter()
{
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(double, zoom);
    QFETCH(QSize, size);

    const LvMapView view = LvMapView::aroundCenter(LvGeoPosition(latitude, longitude), zoom, size);
    QCOMPARE(view.size(), size);
    QVERIFY(isNear(view.zoom(), zoom, 1e-6));
    // On which side of the meridian the world begins is open: the next copy may be the one that is shown.
    QPointF pixel = view.pixelOf(latitude, longitude);
    pixel.rx() -= view.worldSize() * std::round((pixel.x() - (size.width() / 2.0)) / view.worldSize());
    QVERIFY(isNear(pixel, {size.width() / 2.0, size.height() / 2.0}, 0.02));
    QVERIFY(isNear(view.middleLatitude(), latitude, 1e-4));
}

void tst_LvMapView::tallPictureRaisesTheZoom()
{
    const LvMapView view = LvMapView::aroundCenter(LvGeoPosition(10.0, 20.0), 0.0, {100, 2048});
    QVERIFY(isNear(view.zoom(), 2.0, 1e-6)); // two worlds of 1024 pixels
    QVERIFY(isNear(view.pixelOf(10.0, 20.0), {50.0, 1024.0}, 0.02));
}

void tst_LvMapView::worldIsAPixelWideAtLeast()
{
    // The world is drawn as often as it goes into the picture: never thousands of times.
    for (const QSize size : {QSize(1, 1), QSize(1, 30000), QSize(30000, 1), QSize(7, 300)}) {
        for (const LvMapView& view :
             {LvMapView(size), LvMapView(box(-90.0, 90.0, -180.0, 180.0), size),
              LvMapView(box(-85.0, 85.0, 0.001, 0.0), size), LvMapView(box(85.0, 90.0, -180.0, 180.0), size),
              LvMapView::fittedTo(box(-90.0, 90.0, -180.0, 180.0), size),
              LvMapView::fittedTo(box(-90.0, 90.0, -180.0, 180.0), size, size.height() - 1),
              LvMapView::aroundCenter(LvGeoPosition(89.0, 180.0), 0.0, size)}) {
            const QString what =
                QStringLiteral("%1x%2: %3").arg(size.width()).arg(size.height()).arg(view.worldSize());
            QVERIFY2(std::isfinite(view.worldSize()) && view.worldSize() > 0.999, qPrintable(what));
            const QPointF pixel = view.pixelOf(-33.0, 151.0);
            QVERIFY2(std::isfinite(pixel.x()) && std::isfinite(pixel.y()), qPrintable(what));
            QVERIFY2(view.normalizedRect().height() <= 6.001, qPrintable(what));
            QVERIFY2(view.normalizedRect().width() <= 120.0, qPrintable(what));
        }
    }
}

void tst_LvMapView::fittedTo_data()
{
    QTest::addColumn<LvGeoPositionRect>("area");
    QTest::addColumn<QSize>("size");

    QTest::newRow("square") << box(50.0, 52.0, 8.0, 10.0) << QSize(400, 400);
    QTest::newRow("wide picture") << box(50.0, 52.0, 8.0, 10.0) << QSize(1600, 200);
    QTest::newRow("high picture") << box(50.0, 52.0, 8.0, 10.0) << QSize(200, 1600);
    QTest::newRow("across the date line") << box(-40.0, 20.0, 170.0, -150.0) << QSize(900, 600);
    QTest::newRow("up to the date line") << box(-40.0, 20.0, 100.0, 180.0) << QSize(900, 600);
    QTest::newRow("from the date line on") << box(-40.0, 20.0, -180.0, -100.0) << QSize(900, 600);
    QTest::newRow("one meridian") << box(10.0, 20.0, 8.0, 8.0) << QSize(300, 300);
    QTest::newRow("the 180th meridian") << box(10.0, 20.0, 180.0, 180.0) << QSize(300, 300);
    QTest::newRow("one parallel") << box(10.0, 10.0, 8.0, 9.0) << QSize(300, 300);
}

void tst_LvMapView::fittedTo()
{
    QFETCH(LvGeoPositionRect, area);
    QFETCH(QSize, size);

    const LvMapView view = LvMapView::fittedTo(area, size);
    QPointF upperLeft = view.pixelOf(area.north().decimalDegrees(), area.west().decimalDegrees());
    QPointF lowerRight = view.pixelOf(area.south().decimalDegrees(), area.east().decimalDegrees());
    const double turns = std::floor(upperLeft.x() / view.worldSize());
    upperLeft.rx() -= turns * view.worldSize();
    lowerRight.rx() -= view.worldSize() * std::floor(lowerRight.x() / view.worldSize());

    // The same air on opposite sides, and on the sides that decide 8 % of the box.
    const double left = upperLeft.x();
    const double right = size.width() - lowerRight.x();
    const double top = upperLeft.y();
    const double bottom = size.height() - lowerRight.y();
    QVERIFY(isNear(left, right, 0.02));
    QVERIFY(isNear(top, bottom, 0.02));
    const double width = lowerRight.x() - left;
    const double height = lowerRight.y() - top;
    const bool isWidthDeciding = width / size.width() > height / size.height();
    QVERIFY(isNear(isWidthDeciding ? left / width : top / height, 0.08, 0.001));
    QVERIFY(left > 0.0 && top > 0.0);
}

void tst_LvMapView::fittedToAPointAndToNothing()
{
    const LvMapView point = LvMapView::fittedTo(box(53.0, 53.0, 8.0, 8.0), {400, 400});
    QVERIFY(isNear(point.pixelOf(53.0, 8.0), {200.0, 200.0}, 0.05));
    QVERIFY(isNear(point.worldSize(), 400.0 * 360.0 / 0.5, 1.0)); // half a degree

    // A few metres do not fill the picture: there would be nothing else to see.
    const LvMapView yard = LvMapView::fittedTo(box(53.0, 53.0001, 8.0, 8.0001), {400, 400});
    const double metres = 400.0 / yard.pixelsPerKilometre() * 1000.0;
    QVERIFY2(metres > 100.0 && metres < 400.0, qPrintable(QString::number(metres)));

    const LvMapView world = LvMapView::fittedTo(LvGeoPositionRect(), {512, 512});
    QVERIFY(isNear(world.worldSize(), 512.0, 1e-6));
    const LvMapView around = LvMapView::fittedTo(box(-60.0, 70.0, -180.0, 180.0), {1000, 100});
    QVERIFY(around.worldSize() > 100.0 && around.worldSize() < 1000.0);
    const LvMapView poles = LvMapView::fittedTo(box(-90.0, 90.0, -180.0, 180.0), {300, 300});
    QVERIFY(isNear(poles.worldSize(), 300.0, 1e-6));
}

void tst_LvMapView::reservedHeight_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("the height decides") << QSize(600, 400);
    QTest::newRow("the width decides") << QSize(300, 600);
}

void tst_LvMapView::reservedHeight()
{
    QFETCH(QSize, size);
    const LvGeoPositionRect area = box(50.0, 51.0, 8.0, 9.6);
    const LvMapView view = LvMapView::fittedTo(area, size, 100);
    const double bottom = view.pixelOf(50.0, 8.0).y();
    QVERIFY2(bottom < size.height() - 100, qPrintable(QString::number(bottom)));
    QVERIFY(view.pixelOf(51.0, 8.0).y() > 0.0);
    QVERIFY(view.pixelOf(51.0, 8.0).x() > 0.0);
    QVERIFY(view.pixelOf(51.0, 9.6).x() < size.width());
    // As much air above the box as between it and the reserved part.
    QVERIFY(isNear(view.pixelOf(51.0, 8.0).y(), size.height() - 100 - bottom, 0.05));
    // As large as possible.
    const LvMapView smaller = LvMapView::fittedTo(area, size - QSize(0, 100));
    QVERIFY(isNear(view.worldSize() / smaller.worldSize(), 1.0, 1e-6));
    // More than there is cannot be reserved.
    QCOMPARE(LvMapView::fittedTo(area, size, size.height()).worldSize(),
             LvMapView::fittedTo(area, size).worldSize());
}

void tst_LvMapView::normalizedRect()
{
    const QRectF half = LvMapView::aroundCenter(LvGeoPosition(0.0, -90.0), 2.0, {512, 256}).normalizedRect();
    QVERIFY(isNear(half.topLeft(), {0.0, 0.375}, 1e-6));
    QVERIFY(isNear(half.bottomRight(), {0.5, 0.625}, 1e-6));
    const QRectF beyond = LvMapView::aroundCenter(LvGeoPosition(0.0, 0.0), 0.0, {512, 256}).normalizedRect();
    QVERIFY(isNear(beyond.width(), 2.0, 1e-6));
}

void tst_LvMapView::limitsOfLatitude()
{
    QVERIFY(isNear(LvMapView::normalizedY(90.0), 0.0, 1e-9));
    QVERIFY(isNear(LvMapView::normalizedY(-90.0), 1.0, 1e-9));
    QVERIFY(isNear(LvMapView::normalizedY(720.0), 0.0, 1e-9));
    const LvMapView view(box(-90.0, 90.0, -10.0, 10.0), {20, 360});
    QVERIFY(isNear(view.pixelOf(90.0, -10.0), {0.0, 0.0}));
    QVERIFY(isNear(view.pixelOf(-90.0, 10.0), {20.0, 360.0}));
}

void tst_LvMapView::pixelsPerKilometre_data()
{
    QTest::addColumn<double>("latitude");
    QTest::newRow("equator") << 0.0;
    QTest::newRow("north") << 53.0;
    QTest::newRow("south") << -53.0;
    QTest::newRow("far north") << 78.0;
}

void tst_LvMapView::pixelsPerKilometre()
{
    QFETCH(double, latitude);
    const LvMapView view = LvMapView::aroundCenter(LvGeoPosition(latitude, 8.0), 12.0, {600, 600});
    const LvGeoPosition west(latitude, 8.0);
    const LvGeoPosition east(latitude, 8.01);
    const double pixels = view.pixelOf(latitude, 8.01).x() - view.pixelOf(latitude, 8.0).x();
    QVERIFY(isNear(pixels / west.distance(east) / view.pixelsPerKilometre(), 1.0, 1e-5));
}

LV_TEST_MAIN(tst_LvMapView)
#include "tst_LvMapView.moc"
