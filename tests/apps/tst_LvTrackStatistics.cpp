#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "LvTest.h"
#include "LvTrackLoader.h"
#include "LvTrackStatistics.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double kmPerDegree = 111.1774733520461; // on a meridian of the sphere of 6370 km
const QDateTime noon(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC);

struct Sample {
    double km = 0.0; // northwards from 50 N 8 E
    int metres = 0;
    double seconds = -1.0; // since noon; negative: no time
};

LvGPXTrackPoint pointOf(const Sample& sample)
{
    return {LvGeoPosition(50.0 + sample.km / kmPerDegree, 8.0),
            sample.metres,
            sample.seconds < 0.0 ? QDateTime() : noon.addMSecs(std::llround(sample.seconds * 1000.0)),
            {}};
}

LvGPXTrack trackOf(const QList<QList<Sample>>& segments)
{
    QList<LvGPXTrackSegment> result;
    for (const QList<Sample>& samples : segments) {
        QList<LvGPXTrackPoint> points;
        for (const Sample& sample : samples) {
            points.append(pointOf(sample));
        }
        result.append(LvGPXTrackSegment(points));
    }
    return {QStringLiteral("track"), {}, result, LvGPXTrackShapeEnum::linestring};
}

LvGPXTrack heights(const QList<int>& metres)
{
    QList<Sample> samples;
    for (const int height : metres) {
        samples.append({0.01 * static_cast<double>(samples.size()), height, -1.0});
    }
    return trackOf({samples});
}

bool isNear(double actual, double expected, double tolerance = 1e-6)
{
    if (std::abs(actual - expected) <= tolerance) {
        return true;
    }
    qWarning("%.9f instead of %.9f", actual, expected);
    return false;
}

bool isNear(const std::optional<double>& actual, double expected, double tolerance = 1e-6)
{
    return actual.has_value() && isNear(*actual, expected, tolerance);
}

} // namespace

class tst_LvTrackStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothing();
    void emptyTrack();
    void singlePoint();
    void lengthSkipsGaps();
    void lengthSkipsPositionsThatAreNotSet();
    void climbs_data();
    void climbs();
    void climbsEndWithTheRun();
    void elevationsOfZeroAreNone();
    void times();
    void timesOfPointsWithout();
    void timesThatRunBackwards();
    void timesOfLessThanASecond_data();
    void timesOfLessThanASecond();
    void rest();
    void restIsMeasuredPerRun();
    void speedIsTheMeanAroundThePoint();
    void speedOfSparsePoints();
    void speedOfEqualTimes();
    void speedHasNoWindowAcrossRuns();
    void speedInLinearTime();
    void boundingBoxAcrossTheDateLine();
    void runs();
    void sampleFile();
};

void tst_LvTrackStatistics::nothing()
{
    const LvTrackStatistics statistics;
    QCOMPARE(statistics.lengthKm(), 0.0);
    QVERIFY(!statistics.hasElevations());
    QVERIFY(!statistics.hasTimes());
    QVERIFY(!statistics.boundingBox().isValid());
    QVERIFY(statistics.points().isEmpty());
}

void tst_LvTrackStatistics::emptyTrack()
{
    const LvTrackStatistics statistics((LvGPXTrack()));
    QCOMPARE(statistics.lengthKm(), 0.0);
    QVERIFY(!statistics.startTime().isValid());
    QVERIFY(!statistics.endTime().isValid());
    QVERIFY(!statistics.durationSeconds());
    QVERIFY(!statistics.movingSeconds());
    QVERIFY(!statistics.ascentMetres());
    QVERIFY(!statistics.descentMetres());
    QVERIFY(!statistics.lowestMetres());
    QVERIFY(!statistics.highestMetres());
    QVERIFY(!statistics.meanSpeedKmh());
    QVERIFY(!statistics.movingSpeedKmh());
    QVERIFY(!statistics.highestSpeedKmh());
    QVERIFY(statistics.points().isEmpty());
}

void tst_LvTrackStatistics::singlePoint()
{
    const LvTrackStatistics statistics(trackOf({{{0.0, 120, 30.0}}}));
    QCOMPARE(statistics.lengthKm(), 0.0);
    QVERIFY(isNear(statistics.lowestMetres(), 120.0));
    QVERIFY(isNear(statistics.highestMetres(), 120.0));
    QVERIFY(isNear(statistics.ascentMetres(), 0.0));
    QVERIFY(!statistics.hasTimes());
    QCOMPARE(statistics.points().size(), 1);
    QVERIFY(statistics.boundingBox().isValid());
}

void tst_LvTrackStatistics::lengthSkipsGaps()
{
    const LvGPXTrack track = trackOf({{{0.0}, {1.0}, {3.0}}, {{10.0}, {10.5}}, {}, {{20.0}}});
    QVERIFY(isNear(LvTrackStatistics(track).lengthKm(), 3.5));
    QVERIFY(isNear(LvTrackStatistics::lengthKm(track), 3.5));
}

void tst_LvTrackStatistics::lengthSkipsPositionsThatAreNotSet()
{
    const LvGPXTrack track(
        {}, {},
        {LvGPXTrackSegment(QList<LvGPXTrackPoint>{pointOf({0.0}), pointOf({1.0}), LvGPXTrackPoint(),
                                                  LvGPXTrackPoint(LvGeoPosition::null(), 0, {}, {}),
                                                  pointOf({5.0}), pointOf({7.0})})},
        LvGPXTrackShapeEnum::linestring);
    const LvTrackStatistics statistics(track);
    QVERIFY(isNear(statistics.lengthKm(), 3.0));
    QVERIFY(isNear(LvTrackStatistics::lengthKm(track), 3.0));
    QCOMPARE(statistics.points().size(), 4);
    QCOMPARE(statistics.points().at(1).run, 0);
    QCOMPARE(statistics.points().at(2).run, 1);
    QVERIFY(isNear(statistics.points().at(2).distanceKm, 1.0));
}

void tst_LvTrackStatistics::climbs_data()
{
    QTest::addColumn<QList<int>>("metres");
    QTest::addColumn<double>("ascent");
    QTest::addColumn<double>("descent");
    QTest::newRow("flat") << QList<int>{100, 100, 100} << 0.0 << 0.0;
    QTest::newRow("up") << QList<int>{100, 103, 110, 150} << 50.0 << 0.0;
    QTest::newRow("up in steps below the noise")
        << QList<int>{100, 101, 102, 103, 104, 105, 106} << 6.0 << 0.0;
    QTest::newRow("down") << QList<int>{150, 120, 100} << 0.0 << 50.0;
    QTest::newRow("up and down") << QList<int>{100, 150, 90} << 50.0 << 60.0;
    QTest::newRow("noise only") << QList<int>{100, 104, 100, 104, 101, 104} << 0.0 << 0.0;
    QTest::newRow("just no noise up") << QList<int>{100, 105} << 5.0 << 0.0;
    QTest::newRow("just noise up") << QList<int>{100, 104} << 0.0 << 0.0;
    QTest::newRow("just no noise down") << QList<int>{105, 100} << 0.0 << 5.0;
    QTest::newRow("noise on a climb") << QList<int>{100, 120, 116, 140, 137, 160} << 60.0 << 0.0;
    QTest::newRow("noise on a descent") << QList<int>{160, 140, 144, 120, 100} << 0.0 << 60.0;
    QTest::newRow("real dip") << QList<int>{100, 120, 115, 140} << 45.0 << 5.0;
    QTest::newRow("dip at the end is noise") << QList<int>{100, 120, 117} << 20.0 << 0.0;
    QTest::newRow("starts at the deepest point") << QList<int>{103, 100, 104, 106} << 6.0 << 0.0;
    QTest::newRow("starts at the highest point") << QList<int>{100, 103, 99, 98} << 0.0 << 5.0;
    QTest::newRow("below the sea") << QList<int>{-20, -5, -30} << 15.0 << 25.0;
}

void tst_LvTrackStatistics::climbs()
{
    QFETCH(QList<int>, metres);
    QFETCH(double, ascent);
    QFETCH(double, descent);
    const LvTrackStatistics statistics(heights(metres));
    QVERIFY(isNear(statistics.ascentMetres(), ascent));
    QVERIFY(isNear(statistics.descentMetres(), descent));
    QVERIFY(isNear(statistics.lowestMetres(), *std::min_element(metres.cbegin(), metres.cend())));
    QVERIFY(isNear(statistics.highestMetres(), *std::max_element(metres.cbegin(), metres.cend())));
}

void tst_LvTrackStatistics::climbsEndWithTheRun()
{
    // A lift between the two segments is no climb.
    const LvTrackStatistics statistics(trackOf({{{0.0, 100}, {1.0, 120}}, {{2.0, 900}, {3.0, 880}}}));
    QVERIFY(isNear(statistics.ascentMetres(), 20.0));
    QVERIFY(isNear(statistics.descentMetres(), 20.0));
    QVERIFY(isNear(statistics.highestMetres(), 900.0));
}

void tst_LvTrackStatistics::elevationsOfZeroAreNone()
{
    const LvTrackStatistics statistics(heights({0, 100, 0, 0, 110, 0}));
    QVERIFY(isNear(statistics.lowestMetres(), 100.0));
    QVERIFY(isNear(statistics.ascentMetres(), 10.0));
    QVERIFY(isNear(statistics.descentMetres(), 0.0));
    QVERIFY(std::isnan(statistics.points().at(0).elevationMetres));
    QCOMPARE(statistics.points().at(1).elevationMetres, 100.0);
    QVERIFY(!LvTrackStatistics(heights({0, 0})).hasElevations());
}

void tst_LvTrackStatistics::times()
{
    const LvTrackStatistics statistics(trackOf({{{0.0, 0, 0.0}, {5.0, 0, 900.0}, {10.0, 0, 1800.0}}}));
    QVERIFY(statistics.hasTimes());
    QCOMPARE(statistics.startTime(), noon);
    QCOMPARE(statistics.endTime(), noon.addSecs(1800));
    QVERIFY(isNear(statistics.durationSeconds(), 1800.0));
    QVERIFY(isNear(statistics.movingSeconds(), 1800.0));
    QVERIFY(isNear(statistics.meanSpeedKmh(), 20.0));
    QVERIFY(isNear(statistics.movingSpeedKmh(), 20.0));
    QVERIFY(isNear(statistics.highestSpeedKmh(), 20.0));
    QVERIFY(isNear(statistics.points().at(1).elapsedSeconds, 900.0));
}

void tst_LvTrackStatistics::timesOfPointsWithout()
{
    // The mean counts the way between the first and the last time only.
    const LvTrackStatistics statistics(trackOf({{{0.0}, {1.0, 0, 0.0}, {2.0}, {3.0, 0, 360.0}, {9.0}}}));
    QVERIFY(isNear(statistics.lengthKm(), 9.0));
    QVERIFY(isNear(statistics.meanSpeedKmh(), 20.0));
    QVERIFY(std::isnan(statistics.points().at(0).elapsedSeconds));
    QVERIFY(std::isnan(statistics.points().at(2).elapsedSeconds));
    QVERIFY(std::isnan(statistics.points().at(2).speedKmh));
    QVERIFY(isNear(statistics.points().at(3).speedKmh, 20.0));
}

void tst_LvTrackStatistics::timesThatRunBackwards()
{
    const LvTrackStatistics statistics(
        trackOf({{{0.0, 0, 100.0}, {1.0, 0, 50.0}, {2.0, 0, 200.0}, {3.0, 0, 200.0}}}));
    QVERIFY(isNear(statistics.durationSeconds(), 100.0));
    QVERIFY(std::isnan(statistics.points().at(1).elapsedSeconds));
    QVERIFY(isNear(statistics.points().at(3).elapsedSeconds, 100.0));
}

void tst_LvTrackStatistics::timesOfLessThanASecond_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<bool>("isRecording");
    QTest::newRow("made in a moment") << 0.999 << false;
    QTest::newRow("all the same") << 0.0 << false;
    QTest::newRow("a second") << 1.0 << true;
}

void tst_LvTrackStatistics::timesOfLessThanASecond()
{
    QFETCH(double, seconds);
    QFETCH(bool, isRecording);
    const LvTrackStatistics statistics(trackOf({{{0.0, 0, 0.0}, {0.01, 0, seconds}}}));
    QCOMPARE(statistics.hasTimes(), isRecording);
    QCOMPARE(statistics.startTime().isValid(), isRecording);
    QCOMPARE(statistics.endTime().isValid(), isRecording);
    QCOMPARE(statistics.meanSpeedKmh().has_value(), isRecording);
    QCOMPARE(statistics.highestSpeedKmh().has_value(), isRecording);
    QCOMPARE(std::isnan(statistics.points().at(1).elapsedSeconds), !isRecording);
}

void tst_LvTrackStatistics::rest()
{
    // Twenty metres of drift in an hour are no movement.
    const LvTrackStatistics statistics(
        trackOf({{{0.0, 0, 0.0}, {5.0, 0, 1800.0}, {5.02, 0, 5400.0}, {10.02, 0, 7200.0}}}));
    QVERIFY(isNear(statistics.durationSeconds(), 7200.0));
    QVERIFY(isNear(statistics.movingSeconds(), 3600.0));
    QVERIFY(isNear(statistics.movingSpeedKmh(), 10.0));
    QVERIFY(isNear(statistics.meanSpeedKmh(), 5.01));

    const LvTrackStatistics noMove(trackOf({{{0.0, 0, 0.0}, {0.0, 0, 60.0}}}));
    QVERIFY(isNear(noMove.movingSeconds(), 0.0));
    QVERIFY(!noMove.movingSpeedKmh());
    QVERIFY(isNear(noMove.meanSpeedKmh(), 0.0));

    const LvTrackStatistics atTheLimit(trackOf({{{0.0, 0, 0.0}, {0.9999, 0, 3600.0}, {2.0, 0, 7200.0}}}));
    QVERIFY(isNear(atTheLimit.movingSeconds(), 3600.0));
}

void tst_LvTrackStatistics::restIsMeasuredPerRun()
{
    const LvTrackStatistics statistics(
        trackOf({{{0.0, 0, 0.0}, {1.0, 0, 360.0}}, {{50.0, 0, 1000.0}, {51.0, 0, 1360.0}}}));
    QVERIFY(isNear(statistics.durationSeconds(), 1360.0));
    QVERIFY(isNear(statistics.movingSeconds(), 720.0));
    QVERIFY(isNear(statistics.movingSpeedKmh(), 10.0));
}

void tst_LvTrackStatistics::speedIsTheMeanAroundThePoint()
{
    // One point is off by 50 m for a second: without the window this would be 180 km/h.
    QList<Sample> samples;
    for (int i = 0; i <= 20; ++i) {
        samples.append({0.005 * i + (i == 10 ? 0.05 : 0.0), 0, static_cast<double>(i)}); // 18 km/h
    }
    const LvTrackStatistics statistics(trackOf({samples}));
    QVERIFY(isNear(statistics.points().at(2).speedKmh, 18.0)); // from 0 to 7 s
    QVERIFY(isNear(statistics.points().at(0).speedKmh, 18.0));
    QVERIFY(isNear(statistics.points().at(20).speedKmh, 18.0));
    // There and back: 0.05 + 0.095 km of way from 5 to 15 s instead of 0.05.
    QVERIFY(isNear(statistics.points().at(10).speedKmh, (0.02 + 0.055 + 0.045 + 0.02) / 10.0 * 3600.0));
    QVERIFY(isNear(statistics.highestSpeedKmh(), statistics.points().at(10).speedKmh));
}

void tst_LvTrackStatistics::speedOfSparsePoints()
{
    // One minute from point to point: each point looks at its neighbours.
    const LvTrackStatistics statistics(
        trackOf({{{0.0, 0, 0.0}, {1.0, 0, 60.0}, {3.0, 0, 120.0}, {6.0, 0, 180.0}}}));
    QVERIFY(isNear(statistics.points().at(0).speedKmh, 60.0));
    QVERIFY(isNear(statistics.points().at(1).speedKmh, 90.0));
    QVERIFY(isNear(statistics.points().at(2).speedKmh, 150.0));
    QVERIFY(isNear(statistics.points().at(3).speedKmh, 180.0));
    QVERIFY(isNear(statistics.highestSpeedKmh(), 180.0));
}

void tst_LvTrackStatistics::speedOfEqualTimes()
{
    const LvTrackStatistics statistics(
        trackOf({{{0.0, 0, 10.0}}, {{1.0, 0, 10.0}, {2.0, 0, 10.0}}, {{3.0, 0, 20.0}}}));
    for (const LvTrackProfilePoint& point : statistics.points()) {
        QVERIFY(std::isnan(point.speedKmh));
    }
    QVERIFY(!statistics.highestSpeedKmh());
    QVERIFY(isNear(statistics.durationSeconds(), 10.0));
}

void tst_LvTrackStatistics::speedHasNoWindowAcrossRuns()
{
    const LvTrackStatistics statistics(
        trackOf({{{0.0, 0, 0.0}, {0.01, 0, 1.0}}, {{500.0, 0, 2.0}, {500.02, 0, 3.0}}}));
    QVERIFY(isNear(statistics.points().at(1).speedKmh, 36.0));
    QVERIFY(isNear(statistics.points().at(2).speedKmh, 72.0));
}

void tst_LvTrackStatistics::speedInLinearTime()
{
    // A hundred thousand points of one instant share one window; a search for each would take minutes.
    QList<Sample> samples(100'000, {0.0, 100, 0.0});
    samples.append({1.0, 100, 60.0});
    const LvGPXTrack track = trackOf({samples});
    QElapsedTimer timer;
    timer.start();
    const LvTrackStatistics statistics(track);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(isNear(statistics.points().at(0).speedKmh, 60.0));
}

void tst_LvTrackStatistics::boundingBoxAcrossTheDateLine()
{
    const LvGPXTrack track(
        {}, {},
        {LvGPXTrackSegment(QList<LvGPXTrackPoint>{LvGPXTrackPoint(LvGeoPosition(-17.0, 179.0), 0, {}, {}),
                                                  LvGPXTrackPoint(LvGeoPosition(-18.0, -179.0), 0, {}, {})})},
        LvGPXTrackShapeEnum::linestring);
    const LvTrackStatistics statistics(track);
    QVERIFY(isNear(statistics.boundingBox().west().decimalDegrees(), 179.0));
    QVERIFY(isNear(statistics.boundingBox().east().decimalDegrees(), -179.0));
    QVERIFY(statistics.lengthKm() < 300.0);
}

void tst_LvTrackStatistics::runs()
{
    const LvTrackStatistics statistics(trackOf({{{0.0}, {1.0}}, {}, {{2.0}}, {{3.0}, {4.0}}}));
    QList<int> runs;
    for (const LvTrackProfilePoint& point : statistics.points()) {
        runs.append(point.run);
    }
    QCOMPARE(runs, (QList<int>{0, 0, 1, 2, 2}));
}

void tst_LvTrackStatistics::sampleFile()
{
    const LvLoadedTracks loaded = LvTrackLoader::load(LvTest::sampleFile(QStringLiteral("brocken-hike.gpx")));
    QVERIFY2(loaded.errorText.isEmpty(), qPrintable(loaded.errorText));
    const LvTrackStatistics statistics(loaded.tracks.at(0).track());
    QVERIFY(statistics.hasTimes());
    QVERIFY(statistics.hasElevations());
    QCOMPARE(statistics.lengthKm(), LvTrackStatistics::lengthKm(loaded.tracks.at(0).track()));
    // From Torfhaus up to the summit at 1141 m.
    QVERIFY2(*statistics.highestMetres() > 1100.0, qPrintable(QString::number(*statistics.highestMetres())));
    // The end is the lowest place.
    QVERIFY(*statistics.descentMetres() >= *statistics.highestMetres() - *statistics.lowestMetres());
    QVERIFY(*statistics.ascentMetres() < *statistics.descentMetres());
    QVERIFY(*statistics.movingSeconds() <= *statistics.durationSeconds());
    QVERIFY(*statistics.meanSpeedKmh() <= *statistics.movingSpeedKmh());
    QVERIFY(*statistics.movingSpeedKmh() <= *statistics.highestSpeedKmh());
}

LV_TEST_MAIN(tst_LvTrackStatistics)
#include "tst_LvTrackStatistics.moc"
