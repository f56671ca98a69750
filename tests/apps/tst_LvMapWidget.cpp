#include "LvDistance.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXFullShape.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackSegment.h"
#include "LvLatitudeRange.h"
#include "LvLongitudeRange.h"
#include "LvMapPicture.h"
#include "LvMapSource.h"
#include "LvMapWidget.h"
#include "LvTest.h"
#include "LvTileServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGestureEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QPointingDevice>
#include <QProcess>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QWheelEvent>

#include <cmath>
#include <memory>

namespace
{

constexpr int waitMilliseconds = 20000; // for drawings, on busy machines
constexpr QSize widgetSize(500, 400);

/// A shown widget.
class TestMap
{
public:
    explicit TestMap(const QString& source = QStringLiteral("none"))
    {
        widget.resize(widgetSize);
        widget.setMapSource(source);
        widget.show();
    }

    bool waitUntilDrawn()
    {
        return QTest::qWaitFor([this] { return !widget.isRendering(); }, waitMilliseconds);
    }

    /// The picture when all is drawn.
    QImage picture() { return waitUntilDrawn() ? shown() : QImage(); }

    /// The picture as it is.
    QImage shown() { return widget.grab().toImage(); }

    LvMapWidget widget;
};

LvGPXTrackConfiguration redLine()
{
    LvGPXTrackConfiguration configuration;
    configuration.setLineColor(Qt::red);
    configuration.setLineWidth(4.0);
    configuration.setCurrentDisplayOptions(LvGPXTrackDisplayOptionsEnum::stroke);
    return configuration;
}

LvGPXTrack trackThrough(const QList<LvGeoPosition>& positions)
{
    QList<LvGPXTrackPoint> points;
    for (const LvGeoPosition& position : positions) {
        points.append(LvGPXTrackPoint(position, 0, {}, {}));
    }
    return {QString(), QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::linestring};
}

/// A line along the equator, a filled area north of it.
LvGPXTrackSelection exampleSelection()
{
    LvGPXTrackSelection selection;
    selection.addTrack(
        LvGPXConfiguredTrack(trackThrough({{0.0, -40.0}, {10.0, 0.1}, {0.0, 40.0}}), redLine()));
    LvGPXTrackConfiguration area = redLine();
    area.setLineColor(Qt::darkGreen);
    area.setFillColor(QColor(0, 160, 0));
    area.setCurrentDisplayOptions(LvGPXTrackDisplayOptions(QStringLiteral("stroke,fill")));
    area.setTrackShape(LvGPXTrackShapeEnum::polygon);
    selection.addTrack(
        LvGPXConfiguredTrack(trackThrough({{20.0, -20.0}, {40.0, -20.0}, {40.0, 20.0}, {20.0, 20.0}}), area));
    return selection;
}

/// So many lines that drawing them takes a while.
LvGPXTrackSelection largeSelection(int tracks, int pointsPerTrack)
{
    LvGPXTrackSelection selection;
    for (int i = 0; i < tracks; ++i) {
        QList<LvGeoPosition> positions;
        for (int j = 0; j < pointsPerTrack; ++j) {
            positions.append({(60.0 * std::sin(j * 0.01)) + (i * 0.01), (150.0 * j / pointsPerTrack) - 75.0});
        }
        LvGPXTrackConfiguration configuration = redLine();
        configuration.setHaloWidth(4.0);
        selection.addTrack(LvGPXConfiguredTrack(trackThrough(positions), configuration));
    }
    return selection;
}

bool isNear(const QColor& a, const QColor& b)
{
    return std::abs(a.red() - b.red()) < 8 && std::abs(a.green() - b.green()) < 8
        && std::abs(a.blue() - b.blue()) < 8;
}

int countOf(const QImage& image, const QColor& color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += isNear(image.pixelColor(x, y), color) ? 1 : 0;
        }
    }
    return count;
}

/// How many pixels of two pictures differ.
int differenceOf(const QImage& a, const QImage& b)
{
    if (a.size() != b.size()) {
        return -1;
    }
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            count += isNear(a.pixelColor(x, y), b.pixelColor(x, y)) ? 0 : 1;
        }
    }
    return count;
}

/// The part of a picture between legend and edges.
QImage middleOf(const QImage& image)
{
    return image.copy(100, 60, 300, 240);
}

double metresBetween(const LvGeoPosition& a, const LvGeoPosition& b)
{
    return a.distance(b) * 1000.0;
}

void dragBy(QWidget& widget, const QPoint& start, const QPoint& way)
{
    QTest::mousePress(&widget, Qt::LeftButton, {}, start);
    for (int i = 1; i <= 4; ++i) {
        const QPointF point = start + (QPointF(way) * i / 4.0);
        QMouseEvent move(QEvent::MouseMove, point, widget.mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                         {});
        QCoreApplication::sendEvent(&widget, &move);
    }
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, start + way);
}

void turnWheel(QWidget& widget, const QPointF& point, int angle)
{
    QWheelEvent event(point, widget.mapToGlobal(point), {}, {0, angle}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&widget, &event);
}

void hover(QWidget& widget, const QPointF& point)
{
    QMouseEvent move(QEvent::MouseMove, point, widget.mapToGlobal(point), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&widget, &move);
}

void writeFile(const QString& name, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(name).path());
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class tst_LvMapWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void atFirst();
    void showsMapAndTracks();
    void fadesTheMap();
    void fadesIntoThePaper();

    void setSelection_data();
    void setSelection();
    void highlightedRow();
    void changedTracksLeaveTheMapAlone();
    void newestRequestWins();

    void centerAndZoom_data();
    void centerAndZoom();
    void positionsAndPoints();
    void fitTo_data();
    void fitTo();
    void fitToTracks();
    void fitsAgainWhenFirstShown();
    void resizing();

    void dragging();
    void movedPictureIsShownAtOnce();
    void scaledPictureIsShownAtOnce();
    void smallMovesAreNotDrawnAnew();
    void aroundTheWorld();
    void keys_data();
    void keys();
    void homeKey();
    void wheelZoomsAtTheCursor();
    void doubleClick();
    void pinch();
    void nativeZoom();

    void hovering();
    void picking();
    void markedPosition();

    void mapSources_data();
    void mapSources();
    void unusableMapSources_data();
    void unusableMapSources();
    void attribution();
    void tilesComeLater();
    void refusedTiles();

    void onDenseScreens();
    void goesWhileDrawing();
    void accessibility();
};

void tst_LvMapWidget::atFirst()
{
    LvMapWidget widget;
    QCOMPARE(widget.mapSource(), QStringLiteral("none"));
    QVERIFY(widget.isRendering());
    const QSignalSpy finished(&widget, &LvMapWidget::renderingFinished);
    const QSignalSpy changed(&widget, &LvMapWidget::mapSourceChanged);
    widget.resize(widgetSize);
    widget.show();
    QTRY_VERIFY_WITH_TIMEOUT(!finished.isEmpty() && !widget.isRendering(), waitMilliseconds);
    QCOMPARE(widget.mapSource(), QStringLiteral("builtin"));
    QCOMPARE(changed.size(), 1);
    QVERIFY(widget.selection().isEmpty());
    QVERIFY(!widget.markedPosition().isValid());
    QCOMPARE(widget.highlightedRow(), -1);
    QVERIFY(!widget.isPickingPosition());
    // The whole world.
    QVERIFY(std::abs(widget.center().latitude().decimalDegrees()) < 1e-6);
    QVERIFY(std::abs(256.0 * std::exp2(widget.zoom()) - 400.0) < 1.0);
}

void tst_LvMapWidget::showsMapAndTracks()
{
    TestMap map(QStringLiteral("builtin"));
    map.widget.setSelection(exampleSelection());
    map.widget.setAttribution(QStringLiteral("© Beispielkarte"));
    map.widget.fitToTracks();
    map.widget.setMarkedPosition({30.0, 5.0});
    const QImage picture = map.picture();
    QVERIFY(LvTest::matchesGolden(picture, QStringLiteral("map-widget")));
    // Where the tracks are.
    QVERIFY(isNear(picture.pixelColor(map.widget.pointOf({10.0, 0.1}).toPoint()), Qt::red));
    QVERIFY(isNear(picture.pixelColor(map.widget.pointOf({25.0, -10.0}).toPoint()), QColor(0, 160, 0)));
}

void tst_LvMapWidget::fadesTheMap()
{
    TestMap map(QStringLiteral("builtin"));
    LvGPXTrackSelection selection = exampleSelection();
    selection.setCroppingOpacity(80);
    map.widget.setSelection(selection);
    map.widget.setCenterAndZoom({20.0, 10.0}, 2.0);
    const QImage faded = map.picture();
    QVERIFY(LvTest::matchesGolden(faded, QStringLiteral("map-widget-faded")));

    // As it is with the picture that the library makes in one go.
    const std::unique_ptr<LvMapSource> source = LvMapSource::create(QStringLiteral("builtin"));
    QImage expected(widgetSize, QImage::Format_RGB32);
    expected.fill(map.widget.palette().color(QPalette::Base));
    LvMapPicture whole(selection, map.widget.view(), source.get(), 1.0);
    whole.setScaleBarVisible(false);
    QPainter painter(&expected);
    painter.drawImage(0, 0, whole.toImage());
    painter.end();
    const int different = differenceOf(middleOf(faded), middleOf(expected));
    QVERIFY2(different < 40, qPrintable(QString::number(different)));

    // Also beyond what has been drawn.
    const QColor sea = faded.pixelColor(400, 330);
    map.widget.setCenterAndZoom({20.0, 10.0}, 1.0);
    const QImage smaller = map.shown();
    QVERIFY(!isNear(sea, map.widget.palette().color(QPalette::Base)));
    QVERIFY(isNear(smaller.pixelColor(3, 200), map.widget.palette().color(QPalette::Base)));
}

void tst_LvMapWidget::fadesIntoThePaper()
{
    TestMap map(QStringLiteral("builtin"));
    LvGPXTrackSelection selection = exampleSelection();
    selection.setCroppingOpacity(0);
    map.widget.setSelection(selection);
    QVERIFY(isNear(map.picture().pixelColor(250, 350), map.widget.palette().color(QPalette::Base)));
    QPalette dark = map.widget.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 40));
    map.widget.setPalette(dark);
    QVERIFY(isNear(map.picture().pixelColor(250, 350), QColor(30, 30, 40)));
}

void tst_LvMapWidget::setSelection_data()
{
    QTest::addColumn<LvGPXTrackSelection>("changed");
    QTest::addColumn<bool>("isDrawn");
    const LvGPXTrackSelection selection = exampleSelection();
    QTest::newRow("equal") << selection << false;
    const auto addConfiguration = [&selection](const char* name, const auto& change) {
        LvGPXTrackConfiguration configuration = selection.configuration(1);
        change(configuration);
        LvGPXTrackSelection changed = selection;
        changed.setConfiguration(1, configuration);
        QTest::newRow(name) << changed << true;
    };
    addConfiguration("line width", [](LvGPXTrackConfiguration& c) { c.setLineWidth(9.0); });
    addConfiguration("line colour", [](LvGPXTrackConfiguration& c) { c.setLineColor(Qt::blue); });
    addConfiguration("fill colour", [](LvGPXTrackConfiguration& c) { c.setFillColor(Qt::blue); });
    addConfiguration("halo", [](LvGPXTrackConfiguration& c) { c.setHaloWidth(5.0); });
    addConfiguration("smoothing", [](LvGPXTrackConfiguration& c) { c.setSmoothingStrength(50); });
    addConfiguration("shape",
                     [](LvGPXTrackConfiguration& c) { c.setTrackShape(LvGPXTrackShapeEnum::linestring); });
    LvGPXTrackSelection faded = selection;
    faded.setCroppingOpacity(100);
    QTest::newRow("cropping opacity") << faded << true;
    QTest::newRow("fewer tracks") << selection.reduceToTrackNumber(0) << true;
    LvGPXTrackSelection moved = selection;
    moved.moveTrack(0, 1);
    QTest::newRow("other order") << moved << true;
    QTest::newRow("nothing") << LvGPXTrackSelection() << true;
}

void tst_LvMapWidget::setSelection()
{
    QFETCH(LvGPXTrackSelection, changed);
    QFETCH(bool, isDrawn);
    TestMap map;
    map.widget.setSelection(exampleSelection());
    QVERIFY(map.waitUntilDrawn());
    const QSignalSpy tracks(&map.widget, &LvMapWidget::tracksDrawn);
    const QSignalSpy finished(&map.widget, &LvMapWidget::renderingFinished);
    map.widget.setSelection(changed);
    QCOMPARE(map.widget.isRendering(), isDrawn);
    QVERIFY(map.widget.selection() == changed);
    QVERIFY(map.waitUntilDrawn());
    QTest::qWait(20);
    QCOMPARE(tracks.size(), isDrawn ? 1 : 0);
    QCOMPARE(finished.size(), isDrawn ? 1 : 0);
}

void tst_LvMapWidget::highlightedRow()
{
    TestMap map;
    map.widget.setSelection(exampleSelection());
    const QImage plain = map.picture();
    const int red = countOf(plain, Qt::red);
    QVERIFY(red > 200);
    map.widget.setHighlightedRow(0);
    QCOMPARE(map.widget.highlightedRow(), 0);
    const QImage highlighted = map.picture();
    const QColor darker(255 * 100 / 128, 0, 0);
    QCOMPARE(countOf(highlighted, Qt::red), 0);
    QVERIFY(countOf(highlighted, darker) > 2 * red);
    QVERIFY(map.widget.selection() == exampleSelection());
    map.widget.setHighlightedRow(7); // none of them
    QCOMPARE(differenceOf(map.picture(), plain), 0);
    map.widget.setHighlightedRow(-1);
    QCOMPARE(differenceOf(map.picture(), plain), 0);
}

void tst_LvMapWidget::changedTracksLeaveTheMapAlone()
{
    TestMap map(QStringLiteral("builtin"));
    map.widget.setSelection(exampleSelection());
    QVERIFY(map.waitUntilDrawn());
    const QSignalSpy maps(&map.widget, &LvMapWidget::mapDrawn);
    const QSignalSpy tracks(&map.widget, &LvMapWidget::tracksDrawn);
    LvGPXTrackSelection faded = exampleSelection();
    faded.setCroppingOpacity(100);
    map.widget.setSelection(faded);
    map.widget.setHighlightedRow(1);
    QVERIFY(map.waitUntilDrawn());
    QVERIFY(!tracks.isEmpty());
    QVERIFY(maps.isEmpty());
    map.widget.setMapSource(QStringLiteral("none"));
    const qsizetype before = tracks.size();
    QVERIFY(map.waitUntilDrawn());
    QCOMPARE(maps.size(), 1);
    QCOMPARE(tracks.size(), before);
}

void tst_LvMapWidget::newestRequestWins()
{
    TestMap map;
    map.widget.setSelection(largeSelection(60, 500));
    QVERIFY(map.waitUntilDrawn());
    const QSignalSpy tracks(&map.widget, &LvMapWidget::tracksDrawn);
    const QSignalSpy finished(&map.widget, &LvMapWidget::renderingFinished);
    constexpr int requests = 40;
    for (int i = 0; i < requests; ++i) {
        map.widget.setCenterAndZoom({10.0, 10.0}, 2.0 + (i * 0.05));
        QTest::qWait(1);
    }
    const QImage picture = map.picture();
    QVERIFY2(tracks.size() < requests, qPrintable(QString::number(tracks.size())));
    QVERIFY(!finished.isEmpty());
    TestMap fresh;
    fresh.widget.setSelection(largeSelection(60, 500));
    fresh.widget.setCenterAndZoom({10.0, 10.0}, 2.0 + ((requests - 1) * 0.05));
    QCOMPARE(differenceOf(picture, fresh.picture()), 0);
}

void tst_LvMapWidget::centerAndZoom_data()
{
    QTest::addColumn<LvGeoPosition>("center");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<LvGeoPosition>("expectedCenter");
    QTest::addColumn<double>("expectedZoom");
    QTest::newRow("town") << LvGeoPosition(53.14, 8.8) << 12.0 << LvGeoPosition(53.14, 8.8) << 12.0;
    QTest::newRow("fraction") << LvGeoPosition(-33.9, 151.2) << 9.37 << LvGeoPosition(-33.9, 151.2) << 9.37;
    QTest::newRow("largest zoom") << LvGeoPosition(53.14, 8.8) << 21.0 << LvGeoPosition(53.14, 8.8) << 21.0;
    QTest::newRow("larger zoom") << LvGeoPosition(53.14, 8.8) << 21.5 << LvGeoPosition(53.14, 8.8) << 21.0;
    // (400 + 2 · 128) / 2 = 328 pixels.
    QTest::newRow("smaller zoom") << LvGeoPosition(1.0, 8.8) << -1.0 << LvGeoPosition(0.0, 8.8)
                                  << std::log2(328.0 / 256.0);
    QTest::newRow("180 degrees") << LvGeoPosition(10.0, 180.0) << 6.0 << LvGeoPosition(10.0, -180.0) << 6.0;
    QTest::newRow("beyond 180 degrees")
        << LvGeoPosition(10.0, 190.0) << 6.0 << LvGeoPosition(10.0, -170.0) << 6.0;
}

void tst_LvMapWidget::centerAndZoom()
{
    QFETCH(LvGeoPosition, center);
    QFETCH(double, zoom);
    QFETCH(LvGeoPosition, expectedCenter);
    QFETCH(double, expectedZoom);
    TestMap map;
    const QSignalSpy changed(&map.widget, &LvMapWidget::viewChanged);
    map.widget.setCenterAndZoom(center, zoom);
    QCOMPARE(changed.size(), 1);
    QVERIFY(std::abs(map.widget.zoom() - expectedZoom) < 1e-9);
    QVERIFY2(metresBetween(map.widget.center(), expectedCenter) < 0.01,
             qPrintable(map.widget.center().toString(false)));
    map.widget.setCenterAndZoom(map.widget.center(), map.widget.zoom());
    map.widget.setCenterAndZoom({}, 5.0);
    map.widget.setCenterAndZoom({10.0, 10.0}, std::nan(""));
    QVERIFY(metresBetween(map.widget.center(), expectedCenter) < 0.01);
    QVERIFY(std::abs(map.widget.zoom() - expectedZoom) < 1e-9);
    // The map fills the height.
    map.widget.setCenterAndZoom({89.0, 10.0}, 4.0);
    QVERIFY(map.widget.positionAt({250.0, 1.0}).latitude().decimalDegrees() < 85.06);
    QVERIFY(map.widget.positionAt({250.0, 1.0}).latitude().decimalDegrees() > 84.9);
}

void tst_LvMapWidget::positionsAndPoints()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    const LvMapView view = map.widget.view();
    QCOMPARE(view.size(), widgetSize);
    for (const LvGeoPosition& position :
         {LvGeoPosition(53.14, 8.8), LvGeoPosition(53.0, 8.6), LvGeoPosition(53.3, 9.1)}) {
        const QPointF point = map.widget.pointOf(position);
        const QPointF ofView =
            view.pixelOf(position.latitude().decimalDegrees(), position.longitude().decimalDegrees());
        QVERIFY((point - ofView).manhattanLength() < 0.01);
        QVERIFY(metresBetween(map.widget.positionAt(point), position) < 0.01);
    }
    QVERIFY((map.widget.pointOf({53.14, 8.8}) - QPointF(250.0, 200.0)).manhattanLength() < 1e-6);
    // In the nearest copy of the world, and longitudes as usual.
    map.widget.setCenterAndZoom({10.0, 179.9}, 8.0);
    QVERIFY(map.widget.pointOf({10.0, -179.9}).x() > 250.0);
    QVERIFY(map.widget.pointOf({10.0, -179.9}).x() < 500.0);
    QVERIFY(std::abs(map.widget.positionAt(map.widget.pointOf({10.0, -179.9})).longitude().decimalDegrees()
                     + 179.9)
            < 1e-6);
    // Neither above nor below the world is any place.
    map.widget.setCenterAndZoom({0.0, 1.0}, 0.0);
    QVERIFY(!map.widget.positionAt({250.0, 2.0}).isValid());
    QVERIFY(!map.widget.positionAt({250.0, 398.0}).isValid());
    QVERIFY(map.widget.positionAt({250.0, 150.0}).isValid());
}

void tst_LvMapWidget::fitTo_data()
{
    QTest::addColumn<LvGeoPositionRect>("area");
    QTest::newRow("north sea") << LvGeoPositionRect(LvLatitudeRange(51.0, 60.0), LvLongitudeRange(-4.0, 9.0));
    QTest::newRow("across the date line")
        << LvGeoPositionRect(LvLatitudeRange(-20.0, -10.0), LvLongitudeRange(175.0, -170.0));
    QTest::newRow("tall") << LvGeoPositionRect(LvLatitudeRange(-60.0, 70.0), LvLongitudeRange(10.0, 11.0));
    QTest::newRow("one place") << LvGeoPositionRect(LvLatitudeRange(53.14, 53.14),
                                                    LvLongitudeRange(8.8, 8.8));
    QTest::newRow("north cape") << LvGeoPositionRect(LvLatitudeRange(70.0, 84.5),
                                                     LvLongitudeRange(10.0, 40.0));
}

void tst_LvMapWidget::fitTo()
{
    QFETCH(LvGeoPositionRect, area);
    TestMap map;
    map.widget.fitTo(area);
    const QRectF rect(map.widget.rect());
    for (const LvGeoPosition& corner :
         {LvGeoPosition(area.south(), area.west()), LvGeoPosition(area.south(), area.east()),
          LvGeoPosition(area.north(), area.west()), LvGeoPosition(area.north(), area.east())}) {
        QVERIFY2(rect.contains(map.widget.pointOf(corner)), qPrintable(corner.toString(false)));
    }
    // And not much more than that.
    const QPointF way =
        map.widget.pointOf({area.south(), area.east()}) - map.widget.pointOf({area.north(), area.west()});
    if (QTest::currentDataTag() != QByteArray("one place")) {
        QVERIFY(way.x() > 0.7 * rect.width() || way.y() > 0.7 * rect.height());
    }
}

void tst_LvMapWidget::fitToTracks()
{
    TestMap map;
    map.widget.setSelection(exampleSelection());
    map.widget.setCenterAndZoom({53.14, 8.8}, 12.0);
    map.widget.fitToTracks();
    QVERIFY(QRectF(map.widget.rect()).contains(map.widget.pointOf({0.0, -40.0})));
    QVERIFY(QRectF(map.widget.rect()).contains(map.widget.pointOf({40.0, 20.0})));
    QVERIFY(map.widget.zoom() > 2.0);
    map.widget.setSelection({});
    map.widget.fitToTracks();
    QVERIFY(std::abs(256.0 * std::exp2(map.widget.zoom()) - 400.0) < 1.0); // the world
}

void tst_LvMapWidget::fitsAgainWhenFirstShown()
{
    const LvGeoPositionRect area(LvLatitudeRange(51.0, 60.0), LvLongitudeRange(-4.0, 9.0));
    LvMapWidget early;
    early.fitTo(area);
    early.resize(300, 700);
    early.show();
    LvMapWidget late;
    late.resize(300, 700);
    late.show();
    late.fitTo(area);
    QVERIFY(std::abs(early.zoom() - late.zoom()) < 1e-9);
    QVERIFY(metresBetween(early.center(), late.center()) < 0.01);
    // But only then.
    early.resize(600, 600);
    QVERIFY(std::abs(early.zoom() - late.zoom()) < 1e-9);
    // A view that was chosen meanwhile stays.
    LvMapWidget chosen;
    chosen.fitTo(area);
    chosen.setCenterAndZoom({53.14, 8.8}, 12.0);
    chosen.resize(300, 700);
    chosen.show();
    QVERIFY(std::abs(chosen.zoom() - 12.0) < 1e-9);
}

void tst_LvMapWidget::resizing()
{
    TestMap map;
    map.widget.setSelection(exampleSelection());
    map.widget.setCenterAndZoom({20.0, 0.1}, 3.0);
    QVERIFY(map.waitUntilDrawn());
    const QSignalSpy changed(&map.widget, &LvMapWidget::viewChanged);
    map.widget.resize(700, 500);
    QTRY_VERIFY(!changed.isEmpty());
    QVERIFY(metresBetween(map.widget.center(), {20.0, 0.1}) < 0.01);
    QCOMPARE(map.widget.zoom(), 3.0);
    QCOMPARE(map.picture().size(), QSize(700, 500));
    QVERIFY(isNear(map.shown().pixelColor(map.widget.pointOf({10.0, 0.1}).toPoint()), Qt::red));
    // Where the world is too small for the new height it grows.
    map.widget.setCenterAndZoom({0.0, 1.0}, 0.0);
    map.widget.resize(300, 1400);
    QTRY_VERIFY(map.widget.zoom() >= map.widget.minimumZoom());
}

void tst_LvMapWidget::dragging()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    const LvGeoPosition start = map.widget.positionAt({100.0, 120.0});
    const QSignalSpy changed(&map.widget, &LvMapWidget::viewChanged);
    dragBy(map.widget, {100, 120}, {80, -40});
    QVERIFY(!changed.isEmpty());
    QVERIFY(metresBetween(map.widget.positionAt({180.0, 80.0}), start) < 0.01);
    QCOMPARE(map.widget.zoom(), 10.0);
    // Other buttons do not drag.
    const LvGeoPosition center = map.widget.center();
    QTest::mousePress(&map.widget, Qt::RightButton, {}, {100, 120});
    QTest::mouseMove(&map.widget, {200, 200});
    QTest::mouseRelease(&map.widget, Qt::RightButton, {}, {200, 200});
    QVERIFY(metresBetween(map.widget.center(), center) < 0.01);
}

void tst_LvMapWidget::movedPictureIsShownAtOnce()
{
    TestMap map(QStringLiteral("builtin"));
    map.widget.setSelection(exampleSelection());
    map.widget.setCenterAndZoom({20.0, 0.1}, 3.0);
    const QImage before = map.picture();
    dragBy(map.widget, {250, 200}, {50, 30});
    const QImage after = map.shown(); // nothing new can have been drawn: no event has been processed
    QCOMPARE(differenceOf(middleOf(after), before.copy(50, 30, 300, 240)), 0);
    // And so it stays when it is drawn.
    QVERIFY(differenceOf(middleOf(map.picture()), middleOf(after)) < 40);
    dragBy(map.widget, {250, 200}, {-100, 40});
    const QImage shown = map.shown();
    QVERIFY(map.widget.isRendering());
    QVERIFY(differenceOf(middleOf(map.picture()), middleOf(shown)) < 40);
}

void tst_LvMapWidget::scaledPictureIsShownAtOnce()
{
    TestMap map;
    map.widget.setSelection(exampleSelection());
    map.widget.setCenterAndZoom({20.0, 0.1}, 3.0);
    QVERIFY(map.waitUntilDrawn());
    const QColor green(0, 160, 0);
    for (const double zoom : {4.0, 2.0, 3.4}) {
        map.widget.setCenterAndZoom({20.0, 0.1}, zoom);
        const QImage shown = map.shown();
        QVERIFY(isNear(shown.pixelColor(map.widget.pointOf({25.0, 10.0}).toPoint()), green));
        QVERIFY(isNear(shown.pixelColor(map.widget.pointOf({15.0, 10.0}).toPoint()),
                       map.widget.palette().color(QPalette::Base)));
        QVERIFY(map.widget.isRendering());
    }
    // Even by many levels, without drawing a picture as large as the world.
    QElapsedTimer timer;
    timer.start();
    map.widget.setCenterAndZoom({25.0, 10.0}, 21.0);
    QVERIFY(isNear(map.shown().pixelColor(250, 200), green));
    QVERIFY(timer.elapsed() < 10000);
}

void tst_LvMapWidget::smallMovesAreNotDrawnAnew()
{
    TestMap map;
    map.widget.setSelection(exampleSelection());
    map.widget.setCenterAndZoom({20.0, 0.1}, 4.0);
    QVERIFY(map.waitUntilDrawn());
    dragBy(map.widget, {250, 200}, {30, 30});
    QVERIFY(!map.widget.isRendering());
    dragBy(map.widget, {250, 200}, {60, 0});
    QVERIFY(map.widget.isRendering());
    QVERIFY(map.waitUntilDrawn());
    dragBy(map.widget, {250, 200}, {30, 30});
    QVERIFY(!map.widget.isRendering());
}

void tst_LvMapWidget::aroundTheWorld()
{
    TestMap map;
    map.widget.setSelection(exampleSelection());
    map.widget.setCenterAndZoom({20.0, 0.1}, 3.0);
    const QImage before = map.picture();
    const int world = 256 << 3;
    for (int moved = 0; moved < world; moved += 256) {
        dragBy(map.widget, {50, 200}, {256, 0});
    }
    QVERIFY(metresBetween(map.widget.center(), {20.0, 0.1}) < 0.01);
    QVERIFY(differenceOf(map.picture(), before) < 40);
    // At the 180th meridian the picture does not jump either.
    map.widget.setCenterAndZoom({20.0, 179.9}, 3.0);
    QVERIFY(map.waitUntilDrawn());
    const QImage left = map.shown();
    dragBy(map.widget, {250, 200}, {-20, 0});
    QVERIFY(!map.widget.isRendering());
    QVERIFY(map.widget.center().longitude().decimalDegrees() < 0.0);
    QCOMPARE(differenceOf(middleOf(map.shown()), left.copy(120, 60, 300, 240)), 0);
}

void tst_LvMapWidget::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QPointF>("way"); // of the map
    QTest::addColumn<double>("levels");
    QTest::newRow("left") << int(Qt::Key_Left) << QPointF(80.0, 0.0) << 0.0;
    QTest::newRow("right") << int(Qt::Key_Right) << QPointF(-80.0, 0.0) << 0.0;
    QTest::newRow("up") << int(Qt::Key_Up) << QPointF(0.0, 80.0) << 0.0;
    QTest::newRow("down") << int(Qt::Key_Down) << QPointF(0.0, -80.0) << 0.0;
    QTest::newRow("plus") << int(Qt::Key_Plus) << QPointF() << 1.0;
    QTest::newRow("equal") << int(Qt::Key_Equal) << QPointF() << 1.0;
    QTest::newRow("minus") << int(Qt::Key_Minus) << QPointF() << -1.0;
    QTest::newRow("underscore") << int(Qt::Key_Underscore) << QPointF() << -1.0;
}

void tst_LvMapWidget::keys()
{
    QFETCH(int, key);
    QFETCH(QPointF, way);
    QFETCH(double, levels);
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    QTest::keyClick(&map.widget, Qt::Key(key));
    QVERIFY((map.widget.pointOf({53.14, 8.8}) - QPointF(250.0, 200.0) - way).manhattanLength() < 1e-6);
    QCOMPARE(map.widget.zoom(), 10.0 + levels);
}

void tst_LvMapWidget::homeKey()
{
    TestMap map;
    map.widget.setSelection(exampleSelection());
    map.widget.fitToTracks();
    const double zoom = map.widget.zoom();
    const LvGeoPosition center = map.widget.center();
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    QTest::keyClick(&map.widget, Qt::Key_Home);
    QCOMPARE(map.widget.zoom(), zoom);
    QVERIFY(metresBetween(map.widget.center(), center) < 0.01);
    map.widget.zoomIn();
    QCOMPARE(map.widget.zoom(), zoom + 1.0);
    map.widget.zoomOut();
    QCOMPARE(map.widget.zoom(), zoom);
}

void tst_LvMapWidget::wheelZoomsAtTheCursor()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    const QPointF point(400.0, 90.0);
    const LvGeoPosition fixed = map.widget.positionAt(point);
    turnWheel(map.widget, point, 120);
    QCOMPARE(map.widget.zoom(), 11.0);
    QVERIFY(metresBetween(map.widget.positionAt(point), fixed) < 0.01);
    turnWheel(map.widget, point, -60); // half a notch
    QCOMPARE(map.widget.zoom(), 10.5);
    QVERIFY(metresBetween(map.widget.positionAt(point), fixed) < 0.01);
    turnWheel(map.widget, point, 120 * 1000);
    turnWheel(map.widget, point, 120 * 1000);
    turnWheel(map.widget, point, 120 * 1000);
    QCOMPARE(map.widget.zoom(), LvMapWidget::maximumZoom);
    QVERIFY(metresBetween(map.widget.positionAt(point), fixed) < 0.01);
    turnWheel(map.widget, point, 120); // at the end nothing moves
    QVERIFY(metresBetween(map.widget.positionAt(point), fixed) < 0.01);
}

void tst_LvMapWidget::doubleClick()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    const LvGeoPosition fixed = map.widget.positionAt({400.0, 90.0});
    QTest::mouseDClick(&map.widget, Qt::LeftButton, {}, {400, 90});
    QCOMPARE(map.widget.zoom(), 11.0);
    QVERIFY(metresBetween(map.widget.positionAt({400.0, 90.0}), fixed) < 0.01);
    QTest::mouseDClick(&map.widget, Qt::LeftButton, Qt::ShiftModifier, {400, 90});
    QCOMPARE(map.widget.zoom(), 10.0);
    QVERIFY(metresBetween(map.widget.positionAt({400.0, 90.0}), fixed) < 0.01);
    QTest::mouseDClick(&map.widget, Qt::RightButton, {}, {400, 90});
    QCOMPARE(map.widget.zoom(), 10.0);
}

void tst_LvMapWidget::pinch()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    const QPointF point(300.0, 150.0);
    const LvGeoPosition fixed = map.widget.positionAt(point);
    QPinchGesture gesture;
    gesture.setChangeFlags(QPinchGesture::ScaleFactorChanged | QPinchGesture::CenterPointChanged);
    gesture.setScaleFactor(2.0);
    gesture.setLastCenterPoint(map.widget.mapToGlobal(point));
    gesture.setCenterPoint(map.widget.mapToGlobal(point + QPointF(20.0, 10.0)));
    QGestureEvent event({&gesture});
    QCoreApplication::sendEvent(&map.widget, &event);
    QVERIFY(event.isAccepted(&gesture));
    QCOMPARE(map.widget.zoom(), 11.0);
    QVERIFY(metresBetween(map.widget.positionAt(point + QPointF(20.0, 10.0)), fixed) < 0.01);
    gesture.setScaleFactor(0.0); // not meant to happen
    QCoreApplication::sendEvent(&map.widget, &event);
    QVERIFY(std::isfinite(map.widget.zoom()));
}

void tst_LvMapWidget::nativeZoom()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    const QPointF point(300.0, 150.0);
    const LvGeoPosition fixed = map.widget.positionAt(point);
    QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, point,
                              point, map.widget.mapToGlobal(point), 1.0, {});
    QCoreApplication::sendEvent(&map.widget, &event);
    QCOMPARE(map.widget.zoom(), 11.0);
    QVERIFY(metresBetween(map.widget.positionAt(point), fixed) < 0.01);
}

void tst_LvMapWidget::hovering()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    QSignalSpy hovered(&map.widget, &LvMapWidget::positionHovered);
    const QSignalSpy left(&map.widget, &LvMapWidget::hoverLeft);
    hover(map.widget, {100.0, 120.0});
    QCOMPARE(hovered.size(), 1);
    QVERIFY(
        metresBetween(hovered.takeFirst().at(0).value<LvGeoPosition>(), map.widget.positionAt({100.0, 120.0}))
        < 0.01);
    QVERIFY(left.isEmpty());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&map.widget, &leave);
    QCOMPARE(left.size(), 1);
    map.widget.setCenterAndZoom({0.0, 1.0}, 0.0);
    hover(map.widget, {250.0, 2.0}); // above the world
    QCOMPARE(left.size(), 2);
    QVERIFY(hovered.isEmpty());
}

void tst_LvMapWidget::picking()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    QSignalSpy picked(&map.widget, &LvMapWidget::positionPicked);
    const QSignalSpy ended(&map.widget, &LvMapWidget::pickingEnded);
    QTest::mouseClick(&map.widget, Qt::LeftButton, {}, {100, 120}); // not asked for
    QVERIFY(picked.isEmpty());

    map.widget.setPickingPosition(true);
    QVERIFY(map.widget.isPickingPosition());
    QCOMPARE(map.widget.cursor().shape(), Qt::CrossCursor);
    dragBy(map.widget, {100, 120}, {60, 0}); // looking for the place
    QVERIFY(picked.isEmpty() && map.widget.isPickingPosition());
    QTest::mouseClick(&map.widget, Qt::RightButton, {}, {100, 120});
    QVERIFY(picked.isEmpty());
    QTest::mouseClick(&map.widget, Qt::LeftButton, {}, {100, 120});
    QCOMPARE(picked.size(), 1);
    QVERIFY(metresBetween(picked.at(0).at(0).value<LvGeoPosition>(), map.widget.positionAt({100.0, 120.0}))
            < 0.01);
    QCOMPARE(ended.size(), 1);
    QVERIFY(!map.widget.isPickingPosition());
    QCOMPARE(map.widget.cursor().shape(), Qt::ArrowCursor);
    QTest::mouseClick(&map.widget, Qt::LeftButton, {}, {100, 120});
    QCOMPARE(picked.size(), 1);

    map.widget.setPickingPosition(true);
    QTest::keyClick(&map.widget, Qt::Key_Escape);
    QVERIFY(!map.widget.isPickingPosition());
    QCOMPARE(ended.size(), 2);
    QCOMPARE(picked.size(), 1);
    map.widget.setPickingPosition(true);
    map.widget.setPickingPosition(false);
    map.widget.setPickingPosition(false);
    QCOMPARE(ended.size(), 3);
}

void tst_LvMapWidget::markedPosition()
{
    TestMap map;
    map.widget.setCenterAndZoom({53.14, 8.8}, 10.0);
    const QImage plain = map.picture();
    map.widget.setMarkedPosition({53.14, 8.8});
    QVERIFY(map.widget.markedPosition() == LvGeoPosition(53.14, 8.8));
    QVERIFY(!map.widget.isRendering()); // nothing to be drawn by the threads
    const QImage marked = map.shown();
    const int pixels = differenceOf(marked, plain);
    QVERIFY(pixels > 50 && pixels < 700);
    QCOMPARE(differenceOf(marked.copy(230, 180, 41, 41), plain.copy(230, 180, 41, 41)), pixels);
    map.widget.setMarkedPosition({});
    QCOMPARE(differenceOf(map.shown(), plain), 0);
    // In every copy of the world.
    map.widget.setCenterAndZoom({0.0, 1.0}, 0.0);
    const QImage world = map.picture();
    map.widget.setMarkedPosition({0.0, 100.0});
    const QImage twice = map.shown();
    const int x = qRound(map.widget.pointOf({0.0, 100.0}).x());
    const int worldWidth = qRound(256.0 * std::exp2(map.widget.zoom()));
    QVERIFY(differenceOf(twice.copy(x - 20, 180, 41, 41), world.copy(x - 20, 180, 41, 41)) > 50);
    QVERIFY(differenceOf(twice.copy(x - worldWidth - 20, 180, 41, 41),
                         world.copy(x - worldWidth - 20, 180, 41, 41))
            > 50);
}

void tst_LvMapWidget::mapSources_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("built-in map") << "builtin";
    QTest::newRow("nothing") << "none";
    QTest::newRow("folder of tiles") << "folder";
    QTest::newRow("MBTiles") << "mbtiles";
    QTest::newRow("server") << "server";
}

void tst_LvMapWidget::mapSources()
{
    QFETCH(QString, kind);
    const QTemporaryDir directory;
    const LvTileServer server(Qt::yellow);
    QString name = kind;
    QColor expected(Qt::yellow);
    if (kind == QLatin1String("folder")) {
        writeFile(directory.filePath(QStringLiteral("0/0/0.png")), LvTileServer::tileOf(Qt::yellow));
        name = directory.path();
    } else if (kind == QLatin1String("mbtiles")) {
        name = directory.filePath(QStringLiteral("map.mbtiles"));
        {
            QSqlDatabase database =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("test"));
            database.setDatabaseName(name);
            QVERIFY(database.open());
            QSqlQuery query(database);
            QVERIFY(query.exec(QStringLiteral("CREATE TABLE metadata (name text, value text)")));
            QVERIFY(
                query.exec(QStringLiteral("INSERT INTO metadata VALUES ('attribution', 'Amt für Karten')")));
            QVERIFY(query.exec(QStringLiteral("CREATE TABLE tiles (zoom_level integer, tile_column integer, "
                                              "tile_row integer, tile_data blob)")));
            QVERIFY(query.prepare(QStringLiteral("INSERT INTO tiles VALUES (0, 0, 0, ?)")));
            query.addBindValue(LvTileServer::tileOf(Qt::yellow));
            QVERIFY(query.exec());
        }
        QSqlDatabase::removeDatabase(QStringLiteral("test"));
    } else if (kind == QLatin1String("server")) {
        name = server.address();
    } else if (kind == QLatin1String("builtin")) {
        expected = QColor(206, 225, 236); // the sea
    }
    TestMap map;
    if (kind == QLatin1String("none")) {
        expected = map.widget.palette().color(QPalette::Base);
    }
    map.widget.setCenterAndZoom({20.0, -40.0}, 4.0);
    QVERIFY(map.waitUntilDrawn());
    const QSignalSpy changed(&map.widget, &LvMapWidget::mapSourceChanged);
    const QSignalSpy failed(&map.widget, &LvMapWidget::mapSourceFailed);
    map.widget.setMapSource(name);
    QVERIFY(map.widget.isRendering());
    const QImage picture = map.picture();
    QCOMPARE(changed.size(), 1);
    QVERIFY(failed.isEmpty());
    QCOMPARE(map.widget.mapSource(), name);
    QCOMPARE(picture.pixelColor(210, 130), expected);
    QCOMPARE(map.widget.attribution(),
             kind == QLatin1String("mbtiles") ? QStringLiteral("Amt für Karten") : QString());
}

void tst_LvMapWidget::unusableMapSources_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message"); // a part of it
    QTest::newRow("no file") << "/nowhere/map.mbtiles"
                             << "„/nowhere/map.mbtiles“ gibt es nicht";
    QTest::newRow("empty name") << ""
                                << "gibt es nicht";
    QTest::newRow("empty folder") << "EMPTY"
                                  << "keine Kartenkacheln der Form {z}/{x}/{y}.png";
    QTest::newRow("no database") << "TEXT"
                                 << "keine lesbare Kartendatei";
    QTest::newRow("address of nothing") << "https:///{z}/{x}/{y}"
                                        << "keine gültige Adresse";
    QTest::newRow("other scheme") << "ftp://a.example/{z}/{x}/{y}"
                                  << "https://";
    QTest::newRow("no placeholder") << "https://a.example/map.png"
                                    << "{z}, {x} und {y}";
}

void tst_LvMapWidget::unusableMapSources()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    const QTemporaryDir directory;
    if (name == QLatin1String("EMPTY")) {
        name = directory.path();
    } else if (name == QLatin1String("TEXT")) {
        name = directory.filePath(QStringLiteral("text.mbtiles"));
        writeFile(name, "Guten Tag");
    }
    TestMap map(QStringLiteral("builtin"));
    const QImage before = map.picture();
    const QSignalSpy failed(&map.widget, &LvMapWidget::mapSourceFailed);
    const QSignalSpy finished(&map.widget, &LvMapWidget::renderingFinished);
    map.widget.setMapSource(name);
    QVERIFY(map.waitUntilDrawn());
    QCOMPARE(failed.size(), 1);
    QCOMPARE(finished.size(), 1);
    const QString text = failed.at(0).at(0).toString();
    QVERIFY2(text.contains(message) && text.endsWith(QLatin1Char('.')), qUtf8Printable(text));
    QCOMPARE(map.widget.mapSource(), QStringLiteral("builtin"));
    QCOMPARE(differenceOf(map.shown(), before), 0);
}

void tst_LvMapWidget::attribution()
{
    TestMap map;
    const QImage plain = map.picture();
    QCOMPARE(map.widget.attribution(), QString());
    map.widget.setAttribution(QStringLiteral("&copy; <a href=\"https://a.example\">Amt</a>"));
    QCOMPARE(map.widget.attribution(), QStringLiteral("© Amt"));
    const QImage noticed = map.shown();
    QCOMPARE(differenceOf(noticed.copy(0, 0, 500, 350), plain.copy(0, 0, 500, 350)), 0);
    QVERIFY(differenceOf(noticed.copy(350, 350, 150, 50), plain.copy(350, 350, 150, 50)) > 100);
    map.widget.setAttribution({});
    QCOMPARE(differenceOf(map.shown(), plain), 0);
}

void tst_LvMapWidget::tilesComeLater()
{
    LvTileServer server([tile = LvTileServer::tileOf(Qt::yellow)](const QString&) {
        return LvTileServer::Answer{200, tile, {}, true};
    });
    TestMap map;
    map.widget.setCenterAndZoom({20.0, -40.0}, 4.0);
    QVERIFY(map.waitUntilDrawn());
    QSignalSpy drawn(&map.widget, &LvMapWidget::mapDrawn);
    map.widget.setMapSource(server.address());
    QVERIFY(drawn.wait(waitMilliseconds)); // without any tile
    QVERIFY(map.widget.isRendering());
    QVERIFY(!isNear(map.shown().pixelColor(210, 130), Qt::yellow));
    for (int i = 0; i < 1000 && map.widget.isRendering(); ++i) {
        QTest::qWait(10);
        server.answerLate();
    }
    QVERIFY(!map.widget.isRendering());
    QCOMPARE(map.shown().pixelColor(210, 130), QColor(Qt::yellow));
}

void tst_LvMapWidget::refusedTiles()
{
    const LvTileServer server([](const QString&) { return LvTileServer::Answer{403, "no", {}, false}; });
    TestMap map;
    QVERIFY(map.waitUntilDrawn());
    const QSignalSpy messages(&map.widget, &LvMapWidget::tileMessage);
    map.widget.setMapSource(server.address());
    QVERIFY(map.waitUntilDrawn());
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages.at(0).at(0).toString().contains(QStringLiteral("HTTP 403")));
    QCOMPARE(map.widget.mapSource(), server.address());
}

void tst_LvMapWidget::onDenseScreens()
{
    if (qEnvironmentVariable("QT_SCALE_FACTOR") != QLatin1String("2")) {
        // The scale of the screen is set before a program begins.
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("onDenseScreens")});
        QVERIFY(process.waitForFinished(60000));
        QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                 process.readAll().constData());
        return;
    }
    TestMap map(QStringLiteral("builtin"));
    QCOMPARE(map.widget.devicePixelRatioF(), 2.0);
    map.widget.setSelection(exampleSelection());
    map.widget.setCenterAndZoom({20.0, 0.1}, 2.5);
    const QImage picture = map.picture();
    QCOMPARE(picture.size(), widgetSize * 2);
    QVERIFY(LvTest::matchesGolden(picture, QStringLiteral("map-widget-dense")));
    // Lines are twice as wide in pixels: 8 across.
    int across = 0;
    const QPoint tip = (map.widget.pointOf({10.0, 0.1}) * 2.0).toPoint();
    for (int y = -30; y <= 30; ++y) {
        across += isNear(picture.pixelColor(tip + QPoint(60, 0) + QPoint(0, y)), Qt::red) ? 1 : 0;
    }
    QVERIFY2(across >= 6 && across <= 11, qPrintable(QString::number(across)));
    // The moved picture lies pixel on pixel here, too.
    dragBy(map.widget, {250, 200}, {15, 10});
    QCOMPARE(differenceOf(map.shown().copy(300, 200, 300, 300), picture.copy(270, 180, 300, 300)), 0);
}

void tst_LvMapWidget::goesWhileDrawing()
{
    const LvGPXTrackSelection selection = largeSelection(40, 2000);
    const LvTileServer server([](const QString&) { return LvTileServer::Answer{200, {}, {}, true}; });
    for (int i = 0; i < 12; ++i) {
        auto map = std::make_unique<TestMap>(i % 2 == 0 ? QStringLiteral("builtin") : server.address());
        map->widget.setSelection(selection);
        QTest::qWait(i * 3);
        map->widget.setCenterAndZoom({10.0, 10.0}, 3.0);
        QTest::qWait(i);
    }
}

void tst_LvMapWidget::accessibility()
{
    const LvMapWidget widget;
    QCOMPARE(widget.accessibleName(), QStringLiteral("Karte"));
    QVERIFY(widget.accessibleDescription().contains(QStringLiteral("Pfeiltasten")));
    QCOMPARE(widget.focusPolicy(), Qt::StrongFocus);
    QVERIFY(widget.minimumSizeHint().width() < widget.sizeHint().width());
}

LV_TEST_MAIN(tst_LvMapWidget)

#include "tst_LvMapWidget.moc"
