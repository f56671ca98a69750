#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "LvTest.h"
#include "LvTrackLoader.h"
#include "LvTrackProfilePlot.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

const QDateTime noon(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC);
constexpr double kmPerDegree = 111.1774733520461;

/// Eleven points, one kilometre and six minutes apart, the last five after a break of an hour.
LvTrackStatistics hike()
{
    QList<LvGPXTrackSegment> segments;
    QList<LvGPXTrackPoint> points;
    for (int i = 0; i <= 10; ++i) {
        points.append({LvGeoPosition(50.0 + i / kmPerDegree, 8.0),
                       200 + 10 * i * i,
                       noon.addSecs(i * 360 + (i > 5 ? 3600 : 0)),
                       {}});
        if (i == 5) {
            segments.append(LvGPXTrackSegment(points));
            points.clear();
            points.append({LvGeoPosition(50.0 + i / kmPerDegree, 8.0),
                           200 + 10 * i * i,
                           noon.addSecs(i * 360 + 3600),
                           {}});
        }
    }
    segments.append(LvGPXTrackSegment(points));
    return LvTrackStatistics(LvGPXTrack({}, {}, segments, LvGPXTrackShapeEnum::linestring));
}

LvTrackStatistics longTrack(int count)
{
    QList<LvGPXTrackPoint> points;
    points.reserve(count);
    for (int i = 0; i < count; ++i) {
        points.append({LvGeoPosition(50.0 + i * 1e-5, 8.0),
                       500 + static_cast<int>(300.0 * std::sin(i * 1e-3)),
                       noon.addSecs(i),
                       {}});
    }
    return LvTrackStatistics(
        LvGPXTrack({}, {}, {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::linestring));
}

QImage picture(LvTrackProfilePlot& plot)
{
    QImage image(plot.size(), QImage::Format_RGB32);
    plot.render(&image);
    return image;
}

QPalette paletteWith(const QColor& base, const QColor& text)
{
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, text);
    return palette;
}

} // namespace

class tst_LvTrackProfilePlot : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void golden_data();
    void golden();
    void goldenWithoutProfile();
    void emptyIsBlank();
    void horizontalPixels();
    void timeNeedsTimes();
    void cursorWithoutSignal();
    void mouse();
    void keys();
    void keysOnDenseTracks();
    void keysWithoutTrack();
    void cursorIsDrawn();
    void newTrackRemovesTheCursor();
    void tinySizes();
    void paintingCostsTheWidth();
    void paintingAZigzag();
};

void tst_LvTrackProfilePlot::golden_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<bool>("isTime");
    QTest::addColumn<QString>("name");
    QTest::newRow("distance, light") << false << false << "profile-distance-light";
    QTest::newRow("time, light") << false << true << "profile-time-light";
    QTest::newRow("distance, dark") << true << false << "profile-distance-dark";
}

void tst_LvTrackProfilePlot::golden()
{
    QFETCH(bool, isDark);
    QFETCH(bool, isTime);
    QFETCH(QString, name);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    LvTrackProfilePlot plot;
    plot.setPalette(isDark ? paletteWith(QColor(30, 30, 30), QColor(230, 230, 230))
                           : paletteWith(Qt::white, Qt::black));
    plot.setStatistics(hike());
    plot.setAxis(isTime ? LvTrackProfilePlot::Axis::Time : LvTrackProfilePlot::Axis::Distance);
    plot.resize(480, 200);
    plot.setCursorIndex(8);
    QVERIFY(LvTest::matchesGolden(picture(plot), name));
}

void tst_LvTrackProfilePlot::goldenWithoutProfile()
{
    LvTrackProfilePlot plot;
    plot.setPalette(paletteWith(Qt::white, Qt::black));
    plot.setStatistics(LvTrackStatistics(
        LvGPXTrack({}, {},
                   {LvGPXTrackSegment(QList<LvGPXTrackPoint>{LvGPXTrackPoint({50.0, 8.0}, 0, {}, {}),
                                                             LvGPXTrackPoint({51.0, 8.0}, 0, {}, {})})},
                   LvGPXTrackShapeEnum::linestring)));
    plot.resize(360, 120);
    QVERIFY(LvTest::matchesGolden(picture(plot), "profile-none"));
}

void tst_LvTrackProfilePlot::emptyIsBlank()
{
    LvTrackProfilePlot plot;
    plot.setPalette(paletteWith(Qt::white, Qt::black));
    plot.resize(100, 50);
    QImage white(100, 50, QImage::Format_RGB32);
    white.fill(Qt::white);
    QCOMPARE(picture(plot), white);
    QVERIFY(std::isnan(plot.horizontalPixel(0)));
}

void tst_LvTrackProfilePlot::horizontalPixels()
{
    LvTrackProfilePlot plot;
    plot.setStatistics(hike());
    plot.resize(480, 200);
    const double first = plot.horizontalPixel(0);
    const double last = plot.horizontalPixel(11);
    QVERIFY(first > 0.0 && last < 480.0 && last - first > 300.0);
    QVERIFY(std::abs(plot.horizontalPixel(5) - (first + last) / 2.0) < 0.01);
    QCOMPARE(plot.horizontalPixel(6), plot.horizontalPixel(5)); // the break has no length
    plot.setAxis(LvTrackProfilePlot::Axis::Time);
    // Half an hour of two hours, and an hour of break.
    const double hour = (plot.horizontalPixel(11) - plot.horizontalPixel(0)) / 2.0;
    QVERIFY(std::abs(plot.horizontalPixel(6) - plot.horizontalPixel(5) - hour) < 0.01);
    QVERIFY(std::isnan(plot.horizontalPixel(-1)));
    QVERIFY(std::isnan(plot.horizontalPixel(12)));
}

void tst_LvTrackProfilePlot::timeNeedsTimes()
{
    LvTrackProfilePlot plot;
    plot.setAxis(LvTrackProfilePlot::Axis::Time);
    plot.resize(480, 200);
    plot.setStatistics(LvTrackStatistics(
        LvGPXTrack({}, {},
                   {LvGPXTrackSegment(QList<LvGPXTrackPoint>{LvGPXTrackPoint({50.0, 8.0}, 100, {}, {}),
                                                             LvGPXTrackPoint({51.0, 8.0}, 200, {}, {})})},
                   LvGPXTrackShapeEnum::linestring)));
    QVERIFY(plot.horizontalPixel(1) > plot.horizontalPixel(0) + 300.0);
}

void tst_LvTrackProfilePlot::cursorWithoutSignal()
{
    LvTrackProfilePlot plot;
    QSignalSpy spy(&plot, &LvTrackProfilePlot::cursorMoved);
    plot.setStatistics(hike());
    plot.setCursorIndex(11);
    QCOMPARE(plot.cursorIndex(), 11);
    plot.setCursorIndex(12);
    QCOMPARE(plot.cursorIndex(), -1);
    plot.setCursorIndex(-5);
    QCOMPARE(plot.cursorIndex(), -1);
    QCOMPARE(spy.size(), 0);
}

void tst_LvTrackProfilePlot::mouse()
{
    LvTrackProfilePlot plot;
    plot.setStatistics(hike());
    plot.resize(480, 200);
    plot.show();
    QSignalSpy spy(&plot, &LvTrackProfilePlot::cursorMoved);
    for (const int index : {3, 8}) {
        QTest::mouseMove(&plot, QPoint(static_cast<int>(std::lround(plot.horizontalPixel(index))) + 3, 60));
        QCOMPARE(plot.cursorIndex(), index);
        QCOMPARE(spy.takeFirst().first().toInt(), index);
    }
    QTest::mouseMove(&plot, QPoint(0, 60));
    QCOMPARE(plot.cursorIndex(), 0);
    QTest::mouseClick(&plot, Qt::LeftButton, {}, QPoint(479, 60));
    QCOMPARE(plot.cursorIndex(), 11);
    spy.clear();
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&plot, &leave);
    QCOMPARE(plot.cursorIndex(), -1);
    QCOMPARE(spy.takeFirst().first().toInt(), -1);
}

void tst_LvTrackProfilePlot::keys()
{
    LvTrackProfilePlot plot;
    plot.setStatistics(hike());
    plot.resize(480, 200);
    QCOMPARE(plot.focusPolicy(), Qt::StrongFocus);
    QSignalSpy spy(&plot, &LvTrackProfilePlot::cursorMoved);
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(&plot, key);
        return plot.cursorIndex();
    };
    QCOMPARE(press(Qt::Key_Right), 0);
    QCOMPARE(press(Qt::Key_Right), 1);
    QCOMPARE(press(Qt::Key_Right), 2);
    QCOMPARE(press(Qt::Key_Left), 1);
    QCOMPARE(press(Qt::Key_Left), 0);
    QCOMPARE(press(Qt::Key_Left), 0);
    QCOMPARE(press(Qt::Key_End), 11);
    QCOMPARE(press(Qt::Key_Right), 11);
    QCOMPARE(press(Qt::Key_Home), 0);
    QCOMPARE(press(Qt::Key_PageDown), 1); // a tenth of ten kilometres
    QCOMPARE(press(Qt::Key_PageDown), 2);
    QCOMPARE(press(Qt::Key_PageUp), 1);
    QCOMPARE(press(Qt::Key_Escape), -1);
    QCOMPARE(press(Qt::Key_Left), 11);
    QVERIFY(spy.size() > 10);
    QCOMPARE(spy.last().first().toInt(), 11);
}

void tst_LvTrackProfilePlot::keysOnDenseTracks()
{
    LvTrackProfilePlot plot;
    plot.setStatistics(longTrack(8'000));
    plot.resize(480, 200);
    QTest::keyClick(&plot, Qt::Key_Right);
    for (int i = 0; i < 20; ++i) {
        const double before = plot.horizontalPixel(plot.cursorIndex());
        QTest::keyClick(&plot, Qt::Key_Right);
        const double after = plot.horizontalPixel(plot.cursorIndex());
        QVERIFY(after - before >= 1.0 && after - before < 1.1); // a pixel, not one of fifty points in it
    }
    const double before = plot.horizontalPixel(plot.cursorIndex());
    QTest::keyClick(&plot, Qt::Key_Left);
    const double step = before - plot.horizontalPixel(plot.cursorIndex());
    QVERIFY(step >= 1.0 && step < 1.1);
}

void tst_LvTrackProfilePlot::keysWithoutTrack()
{
    LvTrackProfilePlot plot;
    plot.resize(480, 200);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown}) {
        QTest::keyClick(&plot, key);
        QCOMPARE(plot.cursorIndex(), -1);
    }
}

void tst_LvTrackProfilePlot::cursorIsDrawn()
{
    LvTrackProfilePlot plot;
    plot.setPalette(paletteWith(Qt::white, Qt::black));
    plot.setStatistics(hike());
    plot.resize(480, 200);
    const QImage without = picture(plot);
    plot.setCursorIndex(4);
    QVERIFY(picture(plot) != without);
    plot.setCursorIndex(-1);
    QCOMPARE(picture(plot), without);
}

void tst_LvTrackProfilePlot::newTrackRemovesTheCursor()
{
    LvTrackProfilePlot plot;
    plot.setStatistics(hike());
    plot.setCursorIndex(4);
    plot.setStatistics(hike());
    QCOMPARE(plot.cursorIndex(), -1);
}

void tst_LvTrackProfilePlot::tinySizes()
{
    LvTrackProfilePlot plot;
    plot.setStatistics(hike());
    for (const QSize& size : {QSize(1, 1), QSize(1, 200), QSize(480, 1), QSize(40, 30)}) {
        plot.resize(size);
        plot.setCursorIndex(4);
        QCOMPARE(picture(plot).size(), size);
    }
    QVERIFY(plot.minimumSizeHint().width() > 0);
    QVERIFY(plot.sizeHint().width() >= plot.minimumSizeHint().width());
}

void tst_LvTrackProfilePlot::paintingCostsTheWidth()
{
    const auto milliseconds = [](int count) {
        LvTrackProfilePlot plot;
        plot.setStatistics(longTrack(count));
        plot.resize(480, 200);
        picture(plot); // gathers the columns
        qint64 shortest = std::numeric_limits<qint64>::max(); // the others were interrupted
        for (int i = 0; i < 20; ++i) {
            QElapsedTimer timer;
            timer.start();
            picture(plot);
            shortest = std::min(shortest, timer.nsecsElapsed());
        }
        return static_cast<double>(shortest) / 1e6;
    };
    const double few = milliseconds(1'000);
    const double many = milliseconds(50'000);
    QVERIFY2(many < 5.0 * few, qPrintable(QStringLiteral("%1 ms and %2 ms").arg(few).arg(many)));
}

void tst_LvTrackProfilePlot::paintingAZigzag()
{
    // Up and down in every column, the worst that a recording can be. As one path this takes seconds.
    QList<LvGPXTrackPoint> points;
    for (int i = 0; i < 8'000; ++i) {
        points.append({LvGeoPosition(50.0 + i * 1e-5, 8.0 + (i % 7) * 1e-4),
                       i % 2 == 0 ? 100 : 900 - i % 97,
                       noon.addSecs(i),
                       {}});
    }
    LvTrackProfilePlot plot;
    plot.setStatistics(
        LvTrackStatistics(LvGPXTrack({}, {}, {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::linestring)));
    plot.resize(800, 250);
    picture(plot); // gathers the columns
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer timer;
        timer.start();
        picture(plot);
        shortest = std::min(shortest, timer.elapsed());
    }
    QVERIFY2(shortest < 250, qPrintable(QString::number(shortest)));
}

LV_TEST_MAIN(tst_LvTrackProfilePlot)
#include "tst_LvTrackProfilePlot.moc"
