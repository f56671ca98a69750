#include "LvGPXTrackSmoothing.h"
#include "LvTest.h"

#include <QList>
#include <QPointF>

#include <cmath>
#include <limits>
#include <type_traits>

namespace
{

using Points = QList<QPointF>;

static_assert(std::has_virtual_destructor_v<LvGPXTrackSmoothing>);
static_assert(std::is_copy_constructible_v<LvGPXTrackSmoothing>);

/// A curve without three points on one line, so that every point that is smoothed at all moves.
Points parabola(int count)
{
    Points points;
    for (int index = 0; index < count; ++index) {
        points.append(QPointF(index, double(index) * index));
    }
    return points;
}

Points smoothed(Points points, double weight, int steps)
{
    LvGPXTrackSmoothing(points.data(), static_cast<int>(points.size()), weight, steps).run();
    return points;
}

/// The indices at which both lists hold exactly the same point.
QList<int> unmoved(const Points& before, const Points& after)
{
    QList<int> indices;
    for (int index = 0; index < before.size(); ++index) {
        if (before.at(index).x() == after.at(index).x() && before.at(index).y() == after.at(index).y()) {
            indices.append(index);
        }
    }
    return indices;
}

} // namespace

class tst_LvGPXTrackSmoothing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void estimateFixPoints_data();
    void estimateFixPoints();
    void helpers();
    void worksInPlace();
    void smoothsOnePoint_data();
    void smoothsOnePoint();
    void fixPoints_data();
    void fixPoints();
    void unchanged_data();
    void unchanged();
    void weightZeroLandsOnTheLines();
    void coincidingFixPoints();
    void farBeyondThirtyTwoBits();
};

void tst_LvGPXTrackSmoothing::estimateFixPoints_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("expected");
    QTest::newRow("steps are fewer") << 10 << 4 << 4;
    QTest::newRow("points are fewer") << 4 << 10 << 4;
    QTest::newRow("both two") << 2 << 2 << 2;
    QTest::newRow("one step") << 10 << 1 << 1;
    QTest::newRow("no step") << 10 << 0 << 1;
    QTest::newRow("negative steps") << 10 << -3 << 1;
    QTest::newRow("no point") << 0 << 5 << 1;
}

void tst_LvGPXTrackSmoothing::estimateFixPoints()
{
    QFETCH(int, count);
    QFETCH(int, steps);
    QFETCH(int, expected);
    const LvGPXTrackSmoothing smoothing(nullptr, 0, 1.0, 1);
    QCOMPARE(smoothing.estimateFixPoints(count, steps), expected);
}

void tst_LvGPXTrackSmoothing::helpers()
{
    const LvGPXTrackSmoothing smoothing(nullptr, 0, 1.0, 1);
    QCOMPARE(smoothing.delta(QPointF(1, 2), QPointF(4, 6)), 5.0);
    QCOMPARE(smoothing.delta(QPointF(4, 6), QPointF(1, 2)), 5.0);
    QCOMPARE(smoothing.partOf(1.0, 3.0), 0.25);
    QCOMPARE(smoothing.partOf(3.0, 1.0), 0.75);
    QVERIFY(std::isnan(smoothing.partOf(0.0, 0.0)));
    QCOMPARE(smoothing.mix(QPointF(4, 8), QPointF(0, 0), 0.25), QPointF(1, 2));
    QCOMPARE(smoothing.mix(QPointF(4, 8), QPointF(2, 2), 1.0), QPointF(4, 8));
    QCOMPARE(smoothing.mix(QPointF(4, 8), QPointF(2, 2), 0.0), QPointF(2, 2));
}

void tst_LvGPXTrackSmoothing::worksInPlace()
{
    QPointF points[] = {{0, 0}, {1, 1}, {2, 0}};
    LvGPXTrackSmoothing smoothing(points, 3, 0.5, 1);
    QCOMPARE(points[1], QPointF(1, 1));
    smoothing.run();
    QCOMPARE(points[0], QPointF(0, 0));
    QCOMPARE(points[1], QPointF(1, 0.5));
    QCOMPARE(points[2], QPointF(2, 0));
}

void tst_LvGPXTrackSmoothing::smoothsOnePoint_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<double>("weight");
    QTest::addColumn<QPointF>("expected");
    // Between (0, 0) and (12, 0): the distances of (3, 4) are 5 and sqrt(97), those of (0, 9) 9 and 15.
    QTest::newRow("three to five, onto the line") << QPointF(0, 9) << 0.0 << QPointF(12 * 9.0 / 24.0, 0);
    QTest::newRow("three to five, half way") << QPointF(0, 9) << 0.5 << QPointF(12 * 9.0 / 48.0, 4.5);
    QTest::newRow("nearer to the end") << QPointF(12, 9) << 0.0 << QPointF(12 * 15.0 / 24.0, 0);
    QTest::newRow("on the start") << QPointF(0, 0) << 0.0 << QPointF(0, 0);
    QTest::newRow("on the end") << QPointF(12, 0) << 0.0 << QPointF(12, 0);
    QTest::newRow("kept") << QPointF(3, 4) << 1.0 << QPointF(3, 4);
}

void tst_LvGPXTrackSmoothing::smoothsOnePoint()
{
    QFETCH(QPointF, point);
    QFETCH(double, weight);
    QFETCH(QPointF, expected);
    Points points{QPointF(0, 0), point, QPointF(12, 0)};
    LvGPXTrackSmoothing(points.data(), 3, weight, 1).smoothPoint(1, 0, 2);
    QVERIFY(std::abs(points.at(1).x() - expected.x()) < 1e-12);
    QVERIFY(std::abs(points.at(1).y() - expected.y()) < 1e-12);
    QCOMPARE(smoothed({QPointF(0, 0), point, QPointF(12, 0)}, weight, 1), points);
}

void tst_LvGPXTrackSmoothing::fixPoints_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("steps");
    QTest::addColumn<QList<int>>("indices");
    QTest::newRow("ten points, four sections") << 10 << 4 << QList<int>{0, 1, 4, 6, 9};
    QTest::newRow("ten points, three sections") << 10 << 3 << QList<int>{0, 2, 5, 9};
    QTest::newRow("ten points, one section") << 10 << 1 << QList<int>{0, 9};
    QTest::newRow("no section counts as one") << 10 << 0 << QList<int>{0, 9};
    QTest::newRow("seven points, two sections") << 7 << 2 << QList<int>{0, 2, 6};
    QTest::newRow("three points") << 3 << 1 << QList<int>{0, 2};
}

void tst_LvGPXTrackSmoothing::fixPoints()
{
    QFETCH(int, count);
    QFETCH(int, steps);
    QFETCH(QList<int>, indices);
    const Points before = parabola(count);
    QCOMPARE(unmoved(before, smoothed(before, 0.25, steps)), indices);
}

void tst_LvGPXTrackSmoothing::unchanged_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("weight");
    QTest::addColumn<int>("steps");
    QTest::newRow("no point") << 0 << 0.5 << 1;
    QTest::newRow("one point") << 1 << 0.5 << 1;
    QTest::newRow("two points") << 2 << 0.5 << 1;
    QTest::newRow("more sections than half the points") << 10 << 0.5 << 6;
    QTest::newRow("as many sections as points") << 10 << 0.5 << 10;
    QTest::newRow("more sections than points") << 10 << 0.5 << 100;
    QTest::newRow("full weight") << 10 << 1.0 << 2;
}

void tst_LvGPXTrackSmoothing::unchanged()
{
    QFETCH(int, count);
    QFETCH(double, weight);
    QFETCH(int, steps);
    const Points before = parabola(count);
    const Points after = smoothed(before, weight, steps);
    for (int index = 0; index < count; ++index) {
        QVERIFY(std::abs(before.at(index).x() - after.at(index).x()) < 1e-12);
        QVERIFY(std::abs(before.at(index).y() - after.at(index).y()) < 1e-12);
    }
    // Half the points are enough sections to smooth again.
    QVERIFY(unmoved(parabola(10), smoothed(parabola(10), 0.5, 5)).size() < 10);
}

void tst_LvGPXTrackSmoothing::weightZeroLandsOnTheLines()
{
    const QList<int> fixed{0, 1, 4, 6, 9};
    const Points before = parabola(10);
    const Points after = smoothed(before, 0.0, 4);
    for (int section = 1; section < fixed.size(); ++section) {
        const QPointF start = before.at(fixed.at(section - 1));
        const QPointF end = before.at(fixed.at(section));
        for (int index = fixed.at(section - 1) + 1; index < fixed.at(section); ++index) {
            const QPointF along = end - start;
            const QPointF offset = after.at(index) - start;
            QVERIFY(std::abs(along.x() * offset.y() - along.y() * offset.x()) < 1e-9);
            QVERIFY(QPointF::dotProduct(along, offset) > 0.0);
            QVERIFY(QPointF::dotProduct(along, offset) < QPointF::dotProduct(along, along));
        }
    }
}

void tst_LvGPXTrackSmoothing::coincidingFixPoints()
{
    const Points after = smoothed({QPointF(1, 1), QPointF(1, 1), QPointF(1, 1)}, 0.5, 1);
    QCOMPARE(after.at(0), QPointF(1, 1));
    QVERIFY(std::isnan(after.at(1).x()));
    QVERIFY(std::isnan(after.at(1).y()));
    QCOMPARE(after.at(2), QPointF(1, 1));
}

void tst_LvGPXTrackSmoothing::farBeyondThirtyTwoBits()
{
    // 200,000 points times 20,000 sections is 4e9; each section is exactly ten points long.
    constexpr int count = 200000;
    const Points before = parabola(count);
    const Points after = smoothed(before, 0.25, count / 10);
    QList<int> expected{0};
    for (int index = 9; index < count; index += 10) {
        expected.append(index);
    }
    QCOMPARE(unmoved(before, after), expected);
}

LV_TEST_MAIN(tst_LvGPXTrackSmoothing)
#include "tst_LvGPXTrackSmoothing.moc"
