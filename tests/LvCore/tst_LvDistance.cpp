#include "LvDistance.h"
#include "LvTest.h"

#include <cmath>
#include <limits>

class tst_LvDistance : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void construction()
    {
        QCOMPARE(LvDistance().value(), 0.0);
        const LvDistance fromNumber = 7.7;
        QCOMPARE(fromNumber.value(), 7.7);
        QCOMPARE(LvDistance(300).value(), 300.0);
        LvDistance changed(1);
        changed.setValue(2.5);
        QCOMPARE(changed.value(), 2.5);
    }

    void isNull()
    {
        QVERIFY(LvDistance().isNull());
        QVERIFY(LvDistance(-0.0).isNull());
        QVERIFY(!LvDistance(std::numeric_limits<double>::denorm_min()).isNull()); // no tolerance
        QVERIFY(!LvDistance(-1).isNull());
    }

    void arithmetic()
    {
        const LvDistance a = 6.0;
        const LvDistance b = 1.5;
        QCOMPARE((a + b).value(), 7.5);
        QCOMPARE((a - b).value(), 4.5);
        QCOMPARE((a + 1.0).value(), 7.0);
        QCOMPARE((1.0 - a).value(), -5.0);
        QCOMPARE((a * 2.0).value(), 12.0);
        QCOMPARE((2 * a).value(), 12.0);
        QCOMPARE((a / 2.0).value(), 3.0);
        QCOMPARE((a / 2).value(), 3.0);
        QCOMPARE((-a).value(), -6.0);
        const double ratio = a / b;
        QCOMPARE(ratio, 4.0);
        static_assert(std::is_same_v<decltype(a / b), double>);
        static_assert(std::is_same_v<decltype(a / 2.0), LvDistance>);
        QVERIFY(std::isinf(a / LvDistance()));
        QVERIFY(std::isnan(LvDistance() / LvDistance()));

        LvDistance sum = a;
        sum += b;
        sum -= 0.5;
        sum *= 4;
        sum /= 2;
        QCOMPARE(sum.value(), 14.0);
        QCOMPARE(a.value(), 6.0);
    }

    void comparisons()
    {
        const LvDistance a = 1.0;
        const LvDistance slightlyMore = std::nextafter(1.0, 2.0);
        QVERIFY(a == LvDistance(1.0));
        QVERIFY(a == 1.0);
        QVERIFY(1.0 == a);
        QVERIFY(a != slightlyMore); // exact
        QVERIFY(a < slightlyMore);
        QVERIFY(!(a < a));
        QVERIFY(slightlyMore > a);
        QVERIFY(a <= a);
        QVERIFY(a >= a);
        QVERIFY(!(slightlyMore <= a));
        QVERIFY(0.5 < a);
    }

    void describe_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("unit");
        QTest::addColumn<int>("precision");
        QTest::addColumn<bool>("withUnit");
        QTest::addColumn<QString>("text");
        QTest::newRow("pixels") << 10.0 << 1 << 1 << true << "10.0 px";
        QTest::newRow("pixels without unit") << 10.0 << 1 << 1 << false << "10.0";
        QTest::newRow("no halo") << 0.0 << 1 << 1 << true << "0.0 px";
        QTest::newRow("metres") << 12.345 << 2 << 2 << true << "12.35 m";
        QTest::newRow("kilometres") << 300.0 << 3 << 0 << true << "300 km";
        QTest::newRow("no unit") << 1.5 << 0 << 3 << true << "1.500";
        QTest::newRow("unknown unit") << 1.5 << 99 << 1 << true << "1.5";
        QTest::newRow("negative") << -2.25 << 1 << 2 << true << "-2.25 px";
        QTest::newRow("large, no exponent") << 1e9 << 2 << 0 << true << "1000000000 m";
    }

    void describe()
    {
        QFETCH(double, value);
        QFETCH(int, unit);
        QFETCH(int, precision);
        QFETCH(bool, withUnit);
        QFETCH(QString, text);
        QCOMPARE(LvDistance(value).describe(LvDistanceUnit(unit), precision, withUnit), text);
    }

    void units()
    {
        QCOMPARE(LvDistanceUnit(1), LvDistanceUnit::Pixel);
        QCOMPARE(static_cast<int>(LvDistanceUnit::None), 0);
        QCOMPARE(static_cast<int>(LvDistanceUnit::Metre), 2);
        QCOMPARE(static_cast<int>(LvDistanceUnit::Kilometre), 3);
    }
};

LV_TEST_MAIN(tst_LvDistance)
#include "tst_LvDistance.moc"
