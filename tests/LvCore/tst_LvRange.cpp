#include "LvRange.h"
#include "LvTest.h"

#include <QTimeZone>

#include <cmath>
#include <limits>

namespace
{

constexpr double tolerance = 1e-6;

/// A number that compares as the angles do: tolerant but for "<" and ">", and not set at 720.
struct Angle {
    double degrees = 720.0;

    bool operator==(const Angle& other) const { return std::abs(degrees - other.degrees) < tolerance; }

    bool operator<(const Angle& other) const { return degrees < other.degrees; }

    bool operator>(const Angle& other) const { return degrees > other.degrees; }

    bool operator<=(const Angle& other) const { return *this < other || *this == other; }

    bool operator>=(const Angle& other) const { return *this > other || *this == other; }

    Angle operator+(const Angle& other) const { return {degrees + other.degrees}; }

    Angle operator/(double divisor) const { return {degrees / divisor}; }
};

using AngleRange = LvRange<Angle>;

AngleRange angles(double min, double max)
{
    return AngleRange(Angle{min}, Angle{max});
}

/// Contains nothing but 7, and counts how often it is asked.
class PickyRange : public LvRange<int>
{
public:
    using LvRange<int>::LvRange;
    using LvRange<int>::contains;

    bool contains(const int& value) const override
    {
        ++questions;
        return value == 7;
    }

    mutable int questions = 0;
};

/// Never valid.
class InvalidRange : public LvRange<int>
{
public:
    using LvRange<int>::LvRange;

    bool isValid() const override { return false; }
};

QDateTime utc(int hour, int minute = 0)
{
    return QDateTime(QDate(2024, 2, 29), QTime(hour, minute), Qt::UTC);
}

} // namespace

class tst_LvRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void defaultIsEmpty()
    {
        QCOMPARE(AngleRange().min().degrees, 720.0);
        QCOMPARE(AngleRange().max().degrees, 720.0);
        QVERIFY(AngleRange().isEmpty());
        QCOMPARE(LvRange<int>().min(), 0);
        QCOMPARE(LvRange<int>().max(), 0);
        QVERIFY(LvRange<int>().isEmpty());
        QVERIFY(LvRange<QDateTime>().min().isNull());
        QVERIFY(LvRange<QDateTime>().max().isNull());
        QVERIFY(LvRange<QDateTime>().isEmpty());
    }

    void endsAsGiven()
    {
        LvRange<int> range(3, -5); // not put in order
        QCOMPARE(range.min(), 3);
        QCOMPARE(range.max(), -5);
        range.setMin(-7);
        range.setMax(9);
        QCOMPARE(range.min(), -7);
        QCOMPARE(range.max(), 9);
    }

    void equality()
    {
        QVERIFY(angles(1, 2) == angles(1 + 5e-7, 2 - 5e-7));
        QVERIFY(!(angles(1, 2) != angles(1 + 5e-7, 2 - 5e-7)));
        QVERIFY(angles(1, 2) != angles(1 + 2e-6, 2));
        QVERIFY(angles(1, 2) != angles(1, 2 + 2e-6));
        QVERIFY(LvRange<int>(1, 2) == LvRange<int>(1, 2));
        QVERIFY(LvRange<int>(1, 2) != LvRange<int>(2, 1));
    }

    void order_data()
    {
        QTest::addColumn<int>("leftMin");
        QTest::addColumn<int>("leftMax");
        QTest::addColumn<int>("rightMin");
        QTest::addColumn<int>("rightMax");
        QTest::addColumn<bool>("less");
        QTest::newRow("lower begin") << 1 << 9 << 2 << 3 << true;
        QTest::newRow("higher begin") << 2 << 3 << 1 << 9 << false;
        QTest::newRow("same begin, lower end") << 1 << 2 << 1 << 3 << true;
        QTest::newRow("same begin, higher end") << 1 << 3 << 1 << 2 << false;
        QTest::newRow("equal") << 1 << 2 << 1 << 2 << false;
        QTest::newRow("valid before invalid") << 5 << 6 << 1 << 0 << true;
        QTest::newRow("invalid after valid") << 1 << 0 << 5 << 6 << false;
        QTest::newRow("both invalid") << 1 << 0 << 5 << 4 << false;
        QTest::newRow("both invalid, other way") << 5 << 4 << 1 << 0 << false;
    }

    void order()
    {
        QFETCH(int, leftMin);
        QFETCH(int, leftMax);
        QFETCH(int, rightMin);
        QFETCH(int, rightMax);
        QFETCH(bool, less);
        const LvRange<int> left(leftMin, leftMax);
        const LvRange<int> right(rightMin, rightMax);
        QCOMPARE(left < right, less);
    }

    void orderByTolerantBegin()
    {
        // The begins are equal within the tolerance, so the ends decide, though the begins differ exactly.
        QVERIFY(angles(1 + 5e-7, 2) < angles(1, 3));
        QVERIFY(!(angles(1, 3) < angles(1 + 5e-7, 2)));
        QVERIFY(angles(1, 2) < angles(1, 2 + 5e-7)); // ends exactly
    }

    void orderAsksVirtually()
    {
        QVERIFY(!(InvalidRange(1, 2) < LvRange<int>(3, 4)));
        QVERIFY(LvRange<int>(3, 4) < InvalidRange(1, 2));
    }

    void expandTo_data()
    {
        QTest::addColumn<int>("min");
        QTest::addColumn<int>("max");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("newMin");
        QTest::addColumn<int>("newMax");
        QTest::newRow("empty") << 0 << 0 << 5 << 5 << 5;
        QTest::newRow("empty, negative") << 0 << 0 << -5 << -5 << -5;
        QTest::newRow("above") << 1 << 3 << 5 << 1 << 5;
        QTest::newRow("below") << 1 << 3 << -5 << -5 << 3;
        QTest::newRow("inside") << 1 << 3 << 2 << 1 << 3;
        QTest::newRow("at the lower end") << 1 << 3 << 1 << 1 << 3;
        QTest::newRow("at the upper end") << 1 << 3 << 3 << 1 << 3;
        QTest::newRow("one end 0 is not empty") << 0 << 3 << 5 << 0 << 5;
        QTest::newRow("other end 0 is not empty") << -3 << 0 << -5 << -5 << 0;
        QTest::newRow("above a reversed range") << 3 << 1 << 2 << 3 << 2;
    }

    void expandTo()
    {
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(int, value);
        QFETCH(int, newMin);
        QFETCH(int, newMax);
        LvRange<int> range(min, max);
        range.expandTo(value);
        QCOMPARE(range.min(), newMin);
        QCOMPARE(range.max(), newMax);
    }

    void expandAngles()
    {
        AngleRange range = angles(720 + 5e-7, 720); // tolerantly empty
        range.expandTo(Angle{53});
        QCOMPARE(range.min().degrees, 53.0);
        QCOMPARE(range.max().degrees, 53.0);
        range.expandTo(Angle{53 + 5e-7}); // equal, but above: widened exactly
        QVERIFY(range.max().degrees > 53.0);
        QCOMPARE(range.min().degrees, 53.0);
    }

    void expandDateTimes()
    {
        LvRange<QDateTime> range;
        range.expandTo(utc(12));
        QCOMPARE(range.min(), utc(12));
        QCOMPARE(range.max(), utc(12));
        range.expandTo(utc(10));
        range.expandTo(utc(11));
        range.expandTo(utc(14));
        QCOMPARE(range.min(), utc(10));
        QCOMPARE(range.max(), utc(14));

        // The start of the epoch is a time; only null date-times are empty.
        const QDateTime epoch = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
        LvRange<QDateTime> seventies(epoch, epoch);
        QVERIFY(!seventies.isEmpty());
        seventies.expandTo(utc(10));
        QCOMPARE(seventies.min(), epoch);
        QCOMPARE(seventies.max(), utc(10));
    }

    void center_data()
    {
        QTest::addColumn<int>("min");
        QTest::addColumn<int>("max");
        QTest::addColumn<int>("center");
        QTest::newRow("even") << 2 << 4 << 3;
        QTest::newRow("odd, positive") << 2 << 5 << 3;
        QTest::newRow("odd, negative: toward zero") << -5 << -2 << -3;
        QTest::newRow("odd across zero") << -2 << 1 << 0;
        QTest::newRow("largest") << std::numeric_limits<int>::max() << std::numeric_limits<int>::max()
                                 << std::numeric_limits<int>::max();
        QTest::newRow("smallest") << std::numeric_limits<int>::min() << std::numeric_limits<int>::min()
                                  << std::numeric_limits<int>::min();
        QTest::newRow("all") << std::numeric_limits<int>::min() << std::numeric_limits<int>::max() << 0;
    }

    void center()
    {
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(int, center);
        QCOMPARE(LvRange<int>(min, max).center(), center);
    }

    void centerOfOtherTypes()
    {
        QCOMPARE(angles(1, 2).center().degrees, 1.5);
        QCOMPARE(LvRange<QDateTime>(utc(10), utc(13)).center(), utc(11, 30));
        const QDateTime odd = utc(10).addMSecs(3);
        QCOMPARE(LvRange<QDateTime>(utc(10), odd).center(), utc(10).addMSecs(1));
        const QDateTime zoned(QDate(2024, 2, 29), QTime(12, 0), Qt::OffsetFromUTC, 3600);
        QCOMPARE(LvRange<QDateTime>(zoned, utc(13)).center(), utc(12));
        QCOMPARE(LvRange<QDateTime>(zoned, utc(13)).center().offsetFromUtc(), 3600);
        QVERIFY(LvRange<QDateTime>().center().isNull());
        QVERIFY(LvRange<QDateTime>(utc(10), QDateTime()).center().isNull());
        QVERIFY(LvRange<QDateTime>(QDateTime(), utc(10)).center().isNull());
    }

    void validity()
    {
        QVERIFY(LvRange<int>(1, 1).isValid());
        QVERIFY(LvRange<int>(1, 2).isValid());
        QVERIFY(!LvRange<int>(2, 1).isValid());
        QVERIFY(LvRange<int>().isValid());
        QVERIFY(angles(1 + 5e-7, 1).isValid());
        QVERIFY(!angles(1 + 2e-6, 1).isValid());
        QVERIFY(!LvRange<QDateTime>(utc(11), utc(10)).isValid());
    }

    void containsValue()
    {
        const LvRange<int> range(1, 3);
        QVERIFY(!range.contains(0));
        QVERIFY(range.contains(1));
        QVERIFY(range.contains(2));
        QVERIFY(range.contains(3));
        QVERIFY(!range.contains(4));
        QVERIFY(!LvRange<int>(3, 1).contains(2));
        QVERIFY(angles(1, 2).contains(Angle{1 - 5e-7}));
        QVERIFY(angles(1, 2).contains(Angle{2 + 5e-7}));
        QVERIFY(!angles(1, 2).contains(Angle{1 - 2e-6}));
        QVERIFY(!angles(1, 2).contains(Angle{2 + 2e-6}));
        QVERIFY(LvRange<QDateTime>(utc(10), utc(12)).contains(utc(11)));
        QVERIFY(!LvRange<QDateTime>(utc(10), utc(12)).contains(utc(13)));
    }

    void containsRange()
    {
        const LvRange<int> range(1, 5);
        QVERIFY(range.contains(LvRange<int>(1, 5)));
        QVERIFY(range.contains(LvRange<int>(2, 3)));
        QVERIFY(range.contains(LvRange<int>(3, 2))); // only its ends are asked for
        QVERIFY(!range.contains(LvRange<int>(0, 3)));
        QVERIFY(!range.contains(LvRange<int>(3, 6)));
    }

    void containsRangeAsksVirtually()
    {
        const PickyRange range(0, 1);
        QVERIFY(range.contains(LvRange<int>(7, 7)));
        QVERIFY(!range.contains(LvRange<int>(0, 1)));
    }

    void intersects_data()
    {
        QTest::addColumn<int>("min");
        QTest::addColumn<int>("max");
        QTest::addColumn<bool>("expected");
        QTest::newRow("below") << -3 << 0 << false;
        QTest::newRow("touching from below") << -3 << 1 << true;
        QTest::newRow("overlapping from below") << 0 << 3 << true;
        QTest::newRow("inside") << 2 << 3 << true;
        QTest::newRow("around") << 0 << 9 << true;
        QTest::newRow("touching from above") << 5 << 9 << true;
        QTest::newRow("above") << 6 << 9 << false;
    }

    void intersects()
    {
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(bool, expected);
        QCOMPARE(LvRange<int>(1, 5).intersects(LvRange<int>(min, max)), expected);
        QCOMPARE(LvRange<int>(min, max).intersects(LvRange<int>(1, 5)), expected);
    }

    void intersectsExitsEarly()
    {
        const PickyRange first(0, 1);
        QVERIFY(first.intersects(LvRange<int>(7, 8)));
        QCOMPARE(first.questions, 1);
        const PickyRange second(0, 1);
        QVERIFY(second.intersects(LvRange<int>(6, 7)));
        QCOMPARE(second.questions, 2);
        const PickyRange other(0, 1);
        QVERIFY(LvRange<int>(20, 7).intersects(other)); // fourth question: the other one contains 7
        QCOMPARE(other.questions, 2);
    }

    void copiesAreIndependent()
    {
        LvRange<int> range(1, 2);
        LvRange<int> copy = range;
        copy.expandTo(9);
        QCOMPARE(range.max(), 2);
        range = copy;
        QCOMPARE(range.max(), 9);
        const LvRange<int> moved = std::move(copy);
        QCOMPARE(moved.max(), 9);
    }
};

LV_TEST_MAIN(tst_LvRange)
#include "tst_LvRange.moc"
