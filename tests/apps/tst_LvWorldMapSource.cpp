#include "LvLatitudeRange.h"
#include "LvLongitudeRange.h"
#include "LvMapView.h"
#include "LvTest.h"
#include "LvWorldMapSource.h"

#include <QElapsedTimer>
#include <QPainter>

namespace
{

constexpr QRgb landColor = 0xFFF7F5F0;
constexpr QRgb waterColor = 0xFFCEE1EC;

QImage draw(const LvMapView& view, double paintFactor = 1.0)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    LvWorldMapSource source;
    source.draw(painter, view, paintFactor);
    painter.end();
    return image;
}

LvMapView around(double latitude, double longitude, double zoom, const QSize& size)
{
    return LvMapView::aroundCenter(LvGeoPosition(latitude, longitude), zoom, size);
}

} // namespace

class tst_LvWorldMapSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void properties();
    void pictures_data();
    void pictures();
    void worldCopiesAreAlike();
    void noSeamOnTheDateLine();
    void everyPixelIsDrawn_data();
    void everyPixelIsDrawn();
    void leavesThePainterAsItWas();
    void deepZoomIsQuick();
};

void tst_LvWorldMapSource::properties()
{
    const LvWorldMapSource source;
    QVERIFY(source.isValid());
    QCOMPARE(source.errorText(), QString());
    QCOMPARE(source.attribution(), QString()); // public domain
}

void tst_LvWorldMapSource::pictures_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("paintFactor");

    QTest::newRow("map-world-copies") << 0.0 << 40.0 << 0.0 << QSize(600, 300) << 1.0;
    QTest::newRow("map-date-line") << 66.0 << 180.0 << 3.0 << QSize(400, 300) << 1.0;
    QTest::newRow("map-antarctica") << -80.0 << 180.0 << 2.0 << QSize(500, 300) << 1.0;
    QTest::newRow("map-borders") << 49.0 << 8.0 << 5.0 << QSize(400, 300) << 1.0;
    QTest::newRow("map-borders-double") << 49.0 << 8.0 << 5.0 << QSize(400, 300) << 2.0;
}

void tst_LvWorldMapSource::pictures()
{
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(double, zoom);
    QFETCH(QSize, size);
    QFETCH(double, paintFactor);
    const QImage image = draw(around(latitude, longitude, zoom, size), paintFactor);
    QVERIFY(LvTest::matchesGolden(image, QString::fromLatin1(QTest::currentDataTag())));
}

void tst_LvWorldMapSource::worldCopiesAreAlike()
{
    // At this zoom the world is 256 pixels wide, so the copies fall onto the same fractions of pixels.
    const QImage image = draw(around(0.0, 0.0, 0.0, {768, 256}));
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
            const QColor first(image.pixel(x, y));
            for (const int copy : {1, 2}) {
                const QColor other(image.pixel(x + (256 * copy), y));
                // The dashes of borders begin anew with the copy, nothing else may differ.
                QVERIFY(std::abs(first.red() - other.red()) < 60);
                QVERIFY(std::abs(first.blue() - other.blue()) < 60);
            }
        }
    }
}

void tst_LvWorldMapSource::noSeamOnTheDateLine()
{
    // Inland on both sides of 180°: Chukotka. The meridian of the graticule is no more than a shade.
    const QImage image = draw(around(67.6, 180.0, 6.0, {60, 40}));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QVERIFY(qGray(image.pixel(x, y)) > qGray(landColor) - 30);
        }
    }
    QCOMPARE(image.pixel(10, 20), landColor);
    QCOMPARE(image.pixel(50, 20), landColor);
    const QImage pacific = draw(around(2.0, 180.0, 6.0, {60, 40}));
    QCOMPARE(pacific.pixel(10, 20), waterColor);
    QCOMPARE(pacific.pixel(50, 20), waterColor);
}

void tst_LvWorldMapSource::everyPixelIsDrawn_data()
{
    QTest::addColumn<LvMapView>("view");
    QTest::newRow("one pixel") << LvMapView(QSize(1, 1));
    QTest::newRow("the world") << LvMapView(QSize(200, 200));
    QTest::newRow("a column") << LvMapView(QSize(3, 500));
    QTest::newRow("above and below the map") << around(85.0, 0.0, 0.0, {400, 500});
    QTest::newRow("across the date line")
        << LvMapView(LvGeoPositionRect(LvLatitudeRange(-20, 20), LvLongitudeRange(170, -170)), {200, 100});
    QTest::newRow("deep") << around(53.0, 8.0, 22.0, {100, 100});
}

void tst_LvWorldMapSource::everyPixelIsDrawn()
{
    QFETCH(LvMapView, view);
    const QImage image = draw(view);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(qAlpha(image.pixel(x, y)), 255);
        }
    }
}

void tst_LvWorldMapSource::leavesThePainterAsItWas()
{
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::red, 3.0));
    painter.setBrush(Qt::green);
    const bool hasClip = painter.hasClipping();
    LvWorldMapSource().draw(painter, LvMapView(QSize(100, 100)), 1.0);
    QCOMPARE(painter.pen(), QPen(Qt::red, 3.0));
    QCOMPARE(painter.brush(), QBrush(Qt::green));
    QCOMPARE(painter.hasClipping(), hasClip);
    QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
}

void tst_LvWorldMapSource::deepZoomIsQuick()
{
    // Enlarged without clipping, the dashes of a border would be counted by the million.
    draw(around(47.5, 7.6, 1.0, {100, 100})); // reads the map
    QElapsedTimer timer;
    timer.start();
    draw(around(47.59, 7.59, 24.0, {400, 300}));
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

LV_TEST_MAIN(tst_LvWorldMapSource)
#include "tst_LvWorldMapSource.moc"
