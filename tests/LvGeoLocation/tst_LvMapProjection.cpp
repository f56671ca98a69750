#include "LvMapProjection.h"
#include "LvPlainProjection.h"
#include "LvTest.h"

#include <QRandomGenerator>

#include <cmath>
#include <limits>

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double degreeTolerance = 1e-9;

LvGeoPositionRect rectOf(double south, double north, double west, double east)
{
    return {LvLatitudeRange(south, north), LvLongitudeRange(west, east)};
}

bool isNear(double actual, double expected, double tolerance)
{
    return qAbs(actual - expected) <= tolerance;
}

} // namespace

class tst_LvMapProjection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void normalizedLongitude_data();
    void normalizedLongitude();
    void normalizedLongitudeIsFused();
    void normalizedLatitude_data();
    void normalizedLatitude();
    void epsilonEqual();
    void widensEastAndWest();
    void widensNorthAndSouth();
    void northIsNormalizedAfresh();
    void keepsMatchingAspect();
    void wholeBoxIsVisible_data();
    void wholeBoxIsVisible();
    void sameScaleOnBothAxes();
    void crossingTheDateLine();
    void crossingTheDateLineInATallImage();
    void truncatesTowardZero();
    void boundsWrapBack();
    void convertsBack_data();
    void convertsBack();
    void convertDoesNotRound();
    void copies();
    void wideImages_data();
    void wideImages();
    void outOfRangePixelsAreLimited();
    void poles();
    void emptyImage();
    void pixelsAreThoseOfTheFormula_data();
    void pixelsAreThoseOfTheFormula();
};

void tst_LvMapProjection::normalizedLongitude_data()
{
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("x");
    QTest::newRow("west end") << -180.0 << 0.0;
    QTest::newRow("middle") << 0.0 << 0.5;
    QTest::newRow("east end") << 180.0 << 1.0;
    QTest::newRow("beyond the date line") << 270.0 << 1.25;
    QTest::newRow("west of the square") << -270.0 << -0.25;
}

void tst_LvMapProjection::normalizedLongitude()
{
    QFETCH(double, longitude);
    QFETCH(double, x);
    QVERIFY(LvMapProjection::longitudeToNormalized(longitude) == x);
    QVERIFY(LvMapProjection::normalizedToLongitude(x) == longitude);
}

void tst_LvMapProjection::normalizedLongitudeIsFused()
{
    QRandomGenerator random(11);
    int different = 0;
    for (int i = 0; i < 10000; ++i) {
        const double x = random.generateDouble();
        QVERIFY(LvMapProjection::normalizedToLongitude(x) == std::fma(x, 360.0, -180.0));
        const double product = x * 360.0;
        if (LvMapProjection::normalizedToLongitude(x) != product - 180.0)
            ++different;
    }
    QVERIFY(different > 0); // else the comparison above would prove nothing
}

void tst_LvMapProjection::normalizedLatitude_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("y");
    QTest::newRow("equator") << 0.0 << 0.5;
    QTest::newRow("top of the square") << 85.0511287798066 << 0.0;
    QTest::newRow("bottom of the square") << -85.0511287798066 << 1.0;
    QTest::newRow("north") << 53.14 << 0.32510460;
    QTest::newRow("south") << -53.14 << 0.67489540;
}

void tst_LvMapProjection::normalizedLatitude()
{
    QFETCH(double, latitude);
    QFETCH(double, y);
    QVERIFY2(isNear(LvMapProjection::latitudeToNormalized(latitude), y, 1e-8),
             qPrintable(QString::number(LvMapProjection::latitudeToNormalized(latitude), 'f', 10)));
    const double back =
        LvMapProjection::normalizedToLatitude(LvMapProjection::latitudeToNormalized(latitude));
    QVERIFY(isNear(back, latitude, degreeTolerance));
}

void tst_LvMapProjection::epsilonEqual()
{
    QVERIFY(LvMapProjection::epsilonEqual(LvGeoArc(10.0), LvGeoArc(10.5), 0.5));
    QVERIFY(!LvMapProjection::epsilonEqual(LvGeoArc(10.0), LvGeoArc(10.5), 0.49));
    QVERIFY(LvMapProjection::epsilonEqual(LvLatitude(10.5), LvLongitude(10.0), 0.5));
    QVERIFY(LvMapProjection::epsilonEqual(LvGeoPosition(10, 20), LvGeoPosition(10.5, 19.5), 0.5));
    QVERIFY(!LvMapProjection::epsilonEqual(LvGeoPosition(10, 20), LvGeoPosition(10.6, 20), 0.5));
    QVERIFY(!LvMapProjection::epsilonEqual(LvGeoPosition(10, 20), LvGeoPosition(10, 20.6), 0.5));
    QVERIFY(
        !LvMapProjection::epsilonEqual(LvGeoPosition(10, 180), LvGeoPosition(10, -180), 0.5)); // no wrapping
}

void tst_LvMapProjection::widensEastAndWest()
{
    const LvMapProjection projection(rectOf(-10, 10, -10, 10), QSize(200, 100));
    const LvGeoPositionRect box = projection.resultBoundingBox();
    QVERIFY(box.south().decimalDegrees() == -10.0);
    QVERIFY(box.north().decimalDegrees() == 10.0);
    const double height =
        LvMapProjection::latitudeToNormalized(-10.0) - LvMapProjection::latitudeToNormalized(10.0);
    QVERIFY(isNear(box.east().decimalDegrees(), height * 2.0 * 360.0 / 2.0, degreeTolerance));
    QVERIFY(isNear(box.west().decimalDegrees(), -box.east().decimalDegrees(), degreeTolerance));
    QVERIFY(box.east().decimalDegrees() > 20.0);
}

void tst_LvMapProjection::widensNorthAndSouth()
{
    const LvMapProjection projection(rectOf(40, 50, -10, 30), QSize(100, 100));
    const LvGeoPositionRect box = projection.resultBoundingBox();
    QVERIFY(box.west().decimalDegrees() == -10.0);
    QVERIFY(box.east().decimalDegrees() == 30.0);
    const double oldSouth = LvMapProjection::latitudeToNormalized(40.0);
    const double oldNorth = LvMapProjection::latitudeToNormalized(50.0);
    const double south = LvMapProjection::latitudeToNormalized(box.south().decimalDegrees());
    const double north = LvMapProjection::latitudeToNormalized(box.north().decimalDegrees());
    QVERIFY(isNear(south - north, 40.0 / 360.0, 1e-12)); // as high as wide
    QVERIFY(isNear(south - oldSouth, oldNorth - north, 1e-12)); // equally on both sides
    QVERIFY(south > oldSouth);
}

void tst_LvMapProjection::northIsNormalizedAfresh()
{
    // The upper edge of a heightened box follows from the latitude that the result tells, which is rounded,
    // not from the normalized value that this latitude was made of.
    constexpr double pi = 3.141592653589793;
    constexpr double worldSize = 100 * 360 / 60.0;
    const auto latitudeOfTop = [](double normalizedNorth) {
        const double y = (0 + worldSize * normalizedNorth) / worldSize;
        return 90.0 - 360.0 * std::atan(std::exp(2.0 * (y - 0.5) * pi)) / pi;
    };
    int differing = 0;
    for (int step = 0; step < 200; ++step) {
        const double south = -60.0 + step * 0.45;
        const double north = south + 0.6;
        const LvMapProjection projection(rectOf(south, north, -30, 30), QSize(100, 100));
        const double normalizedNorth = LvMapProjection::latitudeToNormalized(north);
        const double height = LvMapProjection::latitudeToNormalized(south) - normalizedNorth;
        const double summed = normalizedNorth - ((60.0 / 360.0) / 1.0 - height) * 0.5;
        const double afresh =
            LvMapProjection::latitudeToNormalized(LvMapProjection::normalizedToLatitude(summed));
        const double latitude = projection.convert(QPoint(0, 0)).latitude().decimalDegrees();
        QVERIFY(latitude == latitudeOfTop(afresh));
        differing += latitude == latitudeOfTop(summed) ? 0 : 1;
    }
    QVERIFY(differing > 0);
}

void tst_LvMapProjection::keepsMatchingAspect()
{
    // A whole turn and the latitudes of the square, into a square.
    const LvMapProjection projection(rectOf(-85.0511287798066, 85.0511287798066, -180, 180), QSize(256, 256));
    const LvGeoPositionRect box = projection.resultBoundingBox();
    QVERIFY(isNear(box.south().decimalDegrees(), -85.0511287798066, 1e-6));
    QVERIFY(isNear(box.north().decimalDegrees(), 85.0511287798066, 1e-6));
    QCOMPARE(projection.projectate(LvGeoPosition(-0.01, 0.01)), QPointF(128, 128));
    QCOMPARE(projection.getPixelCoordinateByMapCoordinate(-0.01, 90.1), QPointF(192, 128));
    QCOMPARE(projection.getPixelCoordinateByMapCoordinate(66.6, -89.9).x(), 64.0);
}

void tst_LvMapProjection::wholeBoxIsVisible_data()
{
    QTest::addColumn<LvGeoPositionRect>("box");
    QTest::addColumn<QSize>("size");
    QTest::newRow("wide image") << rectOf(40, 60, -10, 30) << QSize(1000, 100);
    QTest::newRow("tall image") << rectOf(40, 60, -10, 30) << QSize(100, 1000);
    QTest::newRow("square image") << rectOf(40, 60, -10, 30) << QSize(500, 500);
    QTest::newRow("southern hemisphere") << rectOf(-60, -40, 100, 150) << QSize(640, 480);
    QTest::newRow("small area") << rectOf(53.1, 53.2, 8.1, 8.3) << QSize(640, 480);
}

void tst_LvMapProjection::wholeBoxIsVisible()
{
    QFETCH(LvGeoPositionRect, box);
    QFETCH(QSize, size);
    const LvMapProjection projection(box, size);
    const QPointF topLeft = projection.projectate(box.northWest());
    const QPointF bottomRight = projection.projectate(box.southEast());
    QVERIFY(topLeft.x() >= 0.0 && topLeft.y() >= 0.0);
    QVERIFY(bottomRight.x() <= size.width() && bottomRight.y() <= size.height());
    // One direction is filled.
    const bool wide = topLeft.x() == 0.0 && bottomRight.x() >= size.width() - 1;
    const bool high = topLeft.y() == 0.0 && bottomRight.y() >= size.height() - 1;
    QVERIFY(wide || high);
    // The result is what the image shows.
    const LvGeoPositionRect result = projection.resultBoundingBox();
    QVERIFY(result.contains(box));
    QVERIFY(LvMapProjection::epsilonEqual(projection.convert(QPoint(0, 0)), result.northWest(), 1e-6));
    QVERIFY(LvMapProjection::epsilonEqual(projection.convert(QPoint(size.width(), size.height())),
                                          result.southEast(), 1e-6));
}

void tst_LvMapProjection::sameScaleOnBothAxes()
{
    for (const QSize size : {QSize(300, 900), QSize(900, 300)}) {
        const LvMapProjection projection(rectOf(-5, 5, -5, 5), size);
        const QPointF center = projection.getPixelCoordinateByMapCoordinate(0.0, 0.0);
        const double east = projection.getPixelCoordinateByMapCoordinate(0.0, 1.0).x() - center.x();
        const double south = projection.getPixelCoordinateByMapCoordinate(-1.0, 0.0).y() - center.y();
        QVERIFY(east > 10.0);
        QVERIFY(isNear(east, south, 1.0)); // at the equator a degree is as wide as high
    }
}

void tst_LvMapProjection::crossingTheDateLine()
{
    const LvMapProjection projection(rectOf(-10, 10, 170, -170), QSize(400, 200));
    const LvGeoPositionRect box = projection.resultBoundingBox();
    QVERIFY(box.longitudeRange().crossesDateLine());
    const double margin = 170.0 - box.west().decimalDegrees();
    QVERIFY(margin > 0.0);
    QVERIFY(isNear(box.east().decimalDegrees(), -170.0 + margin, degreeTolerance));
    QVERIFY(isNear(projection.projectate(LvGeoPosition(1, 180)).x(), 200.0, 1.0));
    const double inside = projection.projectate(LvGeoPosition(1, 175)).x();
    QVERIFY(inside > 0.0 && inside < 200.0);
    // Negative longitudes lie one world to the left; callers shift them.
    const double shifted = projection.projectate(LvGeoPosition(1, -175)).x();
    const double unwrapped = projection.projectate(LvGeoPosition(1, 185)).x();
    QVERIFY(shifted < 0.0);
    QVERIFY(unwrapped > 200.0 && unwrapped < 400.0);
    const double world = 400.0 * 360.0 / (20.0 + 2.0 * margin);
    QVERIFY(isNear(unwrapped - shifted, world, 2.0)); // both truncated, in opposite directions
    QVERIFY(projection.convert(QPoint(400, 100)).longitude().decimalDegrees() > 180.0);
}

void tst_LvMapProjection::crossingTheDateLineInATallImage()
{
    const LvMapProjection projection(rectOf(-10, 10, 170, -170), QSize(200, 400));
    const LvGeoPositionRect box = projection.resultBoundingBox();
    QVERIFY(box.west().decimalDegrees() == 170.0);
    QVERIFY(box.east().decimalDegrees() == -170.0);
    QVERIFY(box.north().decimalDegrees() > 19.0);
    QCOMPARE(projection.projectate(LvGeoPosition(1, 180)).x(), 100.0);
}

void tst_LvMapProjection::truncatesTowardZero()
{
    // 36 degrees over 360 pixels: 10 pixels to the degree.
    const LvMapProjection projection(rectOf(0, 1, -18, 18), QSize(360, 360));
    const auto x = [&projection](double longitude) {
        return projection.getPixelCoordinateByMapCoordinate(0.5, longitude).x();
    };
    QVERIFY(x(-18.0) == 0.0);
    QVERIFY(x(-18.05) == 0.0); // half a pixel left of the edge
    QVERIFY(x(-18.15) == -1.0); // one and a half
    QVERIFY(x(-17.81) == 1.0); // 1.9 pixels inside
    QVERIFY(x(-18.0) == projection.projectate(LvGeoPosition(0.5, -18.0)).x());

    QRandomGenerator random(3);
    for (int i = 0; i < 1000; ++i) {
        const QPointF pixel = projection.getPixelCoordinateByMapCoordinate(
            random.generateDouble() * 160.0 - 80.0, random.generateDouble() * 720.0 - 360.0);
        QVERIFY(pixel.x() == std::trunc(pixel.x()) && pixel.y() == std::trunc(pixel.y()));
    }
    // In both directions: the row above the image is -0.5 pixels away, hence 0.
    const double half = LvMapProjection::normalizedToLatitude(
        LvMapProjection::latitudeToNormalized(projection.resultBoundingBox().north().decimalDegrees())
        - 0.5 / 3600.0);
    QVERIFY(projection.getPixelCoordinateByMapCoordinate(half, 0.0).y() == 0.0);
}

void tst_LvMapProjection::boundsWrapBack()
{
    // Near the date line the widened east exceeds 180 and comes back as a western longitude.
    const LvGeoPositionRect box =
        LvMapProjection(rectOf(-10, 10, 160, 179), QSize(400, 100)).resultBoundingBox();
    QVERIFY(box.east().isInWesternHemisphere());
    QVERIFY(box.west().isInEasternHemisphere());
    QVERIFY(box.isValid());
    const LvGeoPositionRect west =
        LvMapProjection(rectOf(-10, 10, -179, -160), QSize(400, 100)).resultBoundingBox();
    QVERIFY(west.west().isInEasternHemisphere());
    QVERIFY(west.isValid());
}

void tst_LvMapProjection::convertsBack_data()
{
    QTest::addColumn<LvGeoPositionRect>("box");
    QTest::addColumn<QSize>("size");
    QTest::newRow("wide image") << rectOf(40, 60, -10, 30) << QSize(1000, 300);
    QTest::newRow("tall image") << rectOf(40, 60, -10, 30) << QSize(300, 1000);
    QTest::newRow("southern hemisphere") << rectOf(-60, -40, 100, 150) << QSize(640, 480);
    QTest::newRow("crossing the date line") << rectOf(-10, 10, 170, -170) << QSize(640, 480);
}

void tst_LvMapProjection::convertsBack()
{
    QFETCH(LvGeoPositionRect, box);
    QFETCH(QSize, size);
    const LvMapProjection projection(box, size);
    for (int x = 0; x < size.width(); x += 7) {
        for (int y = 0; y < size.height(); y += 11) {
            const QPointF pixel = projection.projectate(projection.convert(QPoint(x, y)));
            QVERIFY(isNear(pixel.x(), x, 1.0));
            QVERIFY(isNear(pixel.y(), y, 1.0));
        }
    }
}

void tst_LvMapProjection::convertDoesNotRound()
{
    const LvMapProjection projection(rectOf(-10, 10, -10, 10), QSize(200, 200));
    const double first = projection.convert(QPoint(50, 50)).longitude().decimalDegrees();
    const double second = projection.convert(QPoint(51, 50)).longitude().decimalDegrees();
    QVERIFY(isNear(second - first,
                   projection.resultBoundingBox().longitudeRange().width().decimalDegrees() / 200.0,
                   degreeTolerance));
}

void tst_LvMapProjection::copies()
{
    const LvMapProjection projection(rectOf(40, 60, -10, 30), QSize(300, 200));
    LvMapProjection copy(rectOf(0, 1, 0, 1), QSize(10, 10));
    copy = projection;
    QCOMPARE(copy.projectate(LvGeoPosition(53, 8)), projection.projectate(LvGeoPosition(53, 8)));
    QVERIFY(copy.resultBoundingBox() == projection.resultBoundingBox());
    QVERIFY(std::has_virtual_destructor_v<LvMapProjection>);
}

void tst_LvMapProjection::wideImages_data()
{
    QTest::addColumn<int>("width");
    QTest::newRow("below the limit of 32 bits") << 5965000;
    QTest::newRow("above the limit of 32 bits") << 6000000;
    QTest::newRow("far above") << 100000000;
}

void tst_LvMapProjection::wideImages()
{
    QFETCH(int, width);
    const LvMapProjection projection(rectOf(-1, 1, -60, 60), QSize(width, width));
    const double middle = projection.getPixelCoordinateByMapCoordinate(0.0, 0.0).x();
    QVERIFY(isNear(middle, width / 2.0, 1.0));
}

void tst_LvMapProjection::outOfRangePixelsAreLimited()
{
    const LvMapProjection projection(rectOf(53.0, 53.0000001, 8.0, 8.0000001), QSize(1000, 1000));
    const QPointF southEast = projection.getPixelCoordinateByMapCoordinate(-80.0, 170.0);
    QCOMPARE(southEast, QPointF(std::numeric_limits<int>::max(), std::numeric_limits<int>::max()));
    const QPointF northWest = projection.getPixelCoordinateByMapCoordinate(80.0, -170.0);
    QCOMPARE(northWest, QPointF(std::numeric_limits<int>::min(), std::numeric_limits<int>::min()));
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(projection.getPixelCoordinateByMapCoordinate(notANumber, notANumber), QPointF(0, 0));
}

void tst_LvMapProjection::poles()
{
    QVERIFY(LvMapProjection::latitudeToNormalized(90.0) == -infinity);
    QVERIFY(LvMapProjection::latitudeToNormalized(-90.0) == infinity);
    QVERIFY(LvMapProjection::normalizedToLatitude(-infinity) == 90.0);
    const LvMapProjection projection(rectOf(-10, 10, -10, 10), QSize(200, 200));
    QVERIFY(projection.projectate(LvGeoPosition(90, 1)).y() == std::numeric_limits<int>::min());
    QVERIFY(projection.projectate(LvGeoPosition(-90, 1)).y() == std::numeric_limits<int>::max());
    // Meaningless, but no undefined behaviour and no endless loop.
    const LvMapProjection whole(rectOf(-90, 90, -180, 180), QSize(200, 100));
    QVERIFY(std::isfinite(whole.projectate(LvGeoPosition(53, 8)).x()));
    QVERIFY(!whole.resultBoundingBox().isNull());
}

void tst_LvMapProjection::emptyImage()
{
    for (const QSize size : {QSize(0, 0), QSize(0, 100), QSize(100, 0), QSize()}) {
        const LvMapProjection projection(rectOf(40, 60, -10, 30), size);
        const QPointF pixel = projection.projectate(LvGeoPosition(53, 8));
        QVERIFY(std::isfinite(pixel.x()) && std::isfinite(pixel.y()));
    }
}

void tst_LvMapProjection::pixelsAreThoseOfTheFormula_data()
{
    QTest::addColumn<double>("worldSize");
    // From a thumbnail of the world to grains of dust; the last is beyond what estimates are made for.
    for (const double worldSize : {50.0, 4e3, 6e5, 7e7, 3e9, 2e10, 9e10, 8e12}) {
        QTest::addRow("a world of %g pixels", worldSize) << worldSize;
    }
}

void tst_LvMapProjection::pixelsAreThoseOfTheFormula()
{
    QFETCH(double, worldSize);
    constexpr int places = 400;
    constexpr int pixelsPerPlace = 60;
    const QSize size(360, 270);
    QRandomGenerator random(20);
    const auto between = [&random](double low, double high) {
        return low + (high - low) * random.generateDouble();
    };
    for (int place = 0; place < places; ++place) {
        const double width = size.width() * 360.0 / worldSize;
        const double south = place % 4 == 0 ? between(-89.9, 89.8) : between(-85.1, 85.0);
        const double north = south + std::min(between(0.1, 1.0) * width, (90.0 - south) / 2.0);
        const double west = between(-179.0, 179.0 - std::min(width, 300.0));
        const LvGeoPositionRect box = rectOf(south, north, west, west + std::min(width, 300.0));
        const LvMapProjection projection(box, size);
        const LvPlainProjection plain(box, size);
        const auto isEqualAt = [&](double latitude) {
            const QPointF pixel = projection.getPixelCoordinateByMapCoordinate(latitude, west);
            const QPointF expected = plain.pixelOf(latitude, west);
            if (pixel == expected) {
                return true;
            }
            qWarning().nospace() << qSetRealNumberPrecision(17) << "latitude " << latitude << ": "
                                 << pixel.y() << " instead of " << expected.y();
            return false;
        };
        const double top =
            LvMapProjection::latitudeToNormalized(projection.resultBoundingBox().north().decimalDegrees());
        for (int number = 0; number < pixelsPerPlace; ++number) {
            QVERIFY(isEqualAt(between(-90.0, 90.0)));
            QVERIFY(isEqualAt(between(south, north)));
            // Where one pixel ends and the next begins every bit counts.
            const double row = std::floor(between(-2.0, 3.0) * size.height());
            double latitude = LvMapProjection::normalizedToLatitude(top + row / plain.worldSize());
            for (int step = 0; step < 20; ++step) {
                QVERIFY(isEqualAt(latitude));
                latitude = std::nextafter(latitude, number % 2 == 0 ? 90.0 : -90.0);
            }
        }
        for (const double latitude : {-90.0, -85.0, -84.96875, 0.0, 0.03125, 84.96875, 85.0, 90.0, 91.0}) {
            QVERIFY(isEqualAt(latitude));
            QVERIFY(isEqualAt(std::nextafter(latitude, -100.0)));
            QVERIFY(isEqualAt(std::nextafter(latitude, 100.0)));
        }
    }
}

LV_TEST_MAIN(tst_LvMapProjection)

#include "tst_LvMapProjection.moc"
