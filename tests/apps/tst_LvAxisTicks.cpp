#include "LvAxisTicks.h"
#include "LvTest.h"

#include <cmath>
#include <limits>

class tst_LvAxisTicks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbers_data();
    void numbers();
    void enclosing_data();
    void enclosing();
    void seconds_data();
    void seconds();
    void none_data();
    void none();
    void labels_data();
    void labels();
    void labelsOfTimes();
    void neverTooMany();
};

void tst_LvAxisTicks::numbers_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("mostTicks");
    QTest::addColumn<QList<double>>("values");
    QTest::newRow("ends belong to it") << 0.0 << 10.0 << 6 << QList<double>{0, 2, 4, 6, 8, 10};
    QTest::newRow("inside only") << 0.0 << 13.09 << 8 << QList<double>{0, 2, 4, 6, 8, 10, 12};
    QTest::newRow("steps of five") << 0.0 << 13.09 << 4 << QList<double>{0, 5, 10};
    QTest::newRow("steps of one") << 0.0 << 5.5 << 8 << QList<double>{0, 1, 2, 3, 4, 5};
    QTest::newRow("not from zero") << 3.2 << 7.9 << 6 << QList<double>{4, 5, 6, 7};
    QTest::newRow("below zero") << -3.0 << 3.0 << 4 << QList<double>{-2, 0, 2};
    QTest::newRow("large") << 0.0 << 6385.0 << 5 << QList<double>{0, 2000, 4000, 6000};
}

void tst_LvAxisTicks::numbers()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(int, mostTicks);
    QFETCH(QList<double>, values);
    QCOMPARE(LvAxisTicks::numbers(lowest, highest, mostTicks).values(), values);
}

void tst_LvAxisTicks::enclosing_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("mostTicks");
    QTest::addColumn<QList<double>>("values");
    QTest::newRow("wider") << 612.0 << 1141.0 << 4 << QList<double>{600, 800, 1000, 1200};
    QTest::newRow("already round") << 600.0 << 1200.0 << 4 << QList<double>{600, 800, 1000, 1200};
    QTest::newRow("from zero") << 0.0 << 4.8 << 4 << QList<double>{0, 2, 4, 6};
    QTest::newRow("below zero") << -12.0 << -3.0 << 4 << QList<double>{-15, -10, -5, 0};
}

void tst_LvAxisTicks::enclosing()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(int, mostTicks);
    QFETCH(QList<double>, values);
    QCOMPARE(LvAxisTicks::enclosing(lowest, highest, mostTicks).values(), values);
}

void tst_LvAxisTicks::seconds_data()
{
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("mostTicks");
    QTest::addColumn<QList<double>>("values");
    QTest::newRow("a minute") << 60.0 << 5 << QList<double>{0, 15, 30, 45, 60};
    QTest::newRow("an hour") << 3600.0 << 5 << QList<double>{0, 900, 1800, 2700, 3600};
    QTest::newRow("four hours and a half") << 16065.0 << 6 << QList<double>{0, 3600, 7200, 10800, 14400};
    QTest::newRow("a day") << 86400.0 << 5 << QList<double>{0, 21600, 43200, 64800, 86400};
    QTest::newRow("three weeks") << 1814400.0 << 5 << QList<double>{0, 864000, 1728000}; // of ten days
}

void tst_LvAxisTicks::seconds()
{
    QFETCH(double, highest);
    QFETCH(int, mostTicks);
    QFETCH(QList<double>, values);
    QCOMPARE(LvAxisTicks::seconds(0.0, highest, mostTicks).values(), values);
}

void tst_LvAxisTicks::none_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("mostTicks");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("empty range") << 5.0 << 5.0 << 5;
    QTest::newRow("turned round") << 5.0 << 4.0 << 5;
    QTest::newRow("endless") << 0.0 << infinity << 5;
    QTest::newRow("no number") << nan << 5.0 << 5;
    QTest::newRow("no number at the end") << 0.0 << nan << 5;
    QTest::newRow("no room for two") << 0.0 << 5.0 << 1;
    QTest::newRow("no room") << 0.0 << 5.0 << 0;
}

void tst_LvAxisTicks::none()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(int, mostTicks);
    for (const LvAxisTicks& ticks : {LvAxisTicks::numbers(lowest, highest, mostTicks),
                                     LvAxisTicks::enclosing(lowest, highest, mostTicks),
                                     LvAxisTicks::seconds(lowest, highest, mostTicks), LvAxisTicks()}) {
        QVERIFY(ticks.values().isEmpty());
        QCOMPARE(ticks.step(), 0.0);
    }
}

void tst_LvAxisTicks::labels_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("whole") << 0.0 << 4.0 << QStringList{"0", "1", "2", "3", "4"};
    QTest::newRow("tenths") << 0.0 << 0.4 << QStringList{"0,0", "0,1", "0,2", "0,3", "0,4"};
    QTest::newRow("twentieths") << 0.0 << 0.2 << QStringList{"0,00", "0,05", "0,10", "0,15", "0,20"};
    QTest::newRow("thousands") << 0.0 << 4000.0 << QStringList{"0", "1.000", "2.000", "3.000", "4.000"};
    QTest::newRow("no negative zero") << -0.2 << 0.2 << QStringList{"-0,2", "-0,1", "0,0", "0,1", "0,2"};
}

void tst_LvAxisTicks::labels()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(QStringList, labels);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const LvAxisTicks ticks = LvAxisTicks::numbers(lowest, highest, 5);
    QStringList actual;
    for (const double value : ticks.values()) {
        actual.append(ticks.label(value));
    }
    QCOMPARE(actual, labels);
}

void tst_LvAxisTicks::labelsOfTimes()
{
    const LvAxisTicks hours = LvAxisTicks::seconds(0.0, 16065.0, 6);
    QCOMPARE(hours.label(0.0), QStringLiteral("0:00"));
    QCOMPARE(hours.label(14400.0), QStringLiteral("4:00"));
    QCOMPARE(hours.label(97200.0), QStringLiteral("27:00"));
    const LvAxisTicks seconds = LvAxisTicks::seconds(0.0, 90.0, 5);
    QCOMPARE(seconds.label(75.0), QStringLiteral("0:01:15"));
}

void tst_LvAxisTicks::neverTooMany()
{
    for (int mostTicks = 2; mostTicks < 12; ++mostTicks) {
        for (double highest = 0.001; highest < 1e7; highest *= 1.37) {
            const auto count = LvAxisTicks::numbers(0.0, highest, mostTicks).values().size();
            QVERIFY(count >= 1 && count <= mostTicks);
            const auto times = LvAxisTicks::seconds(0.0, highest, mostTicks).values().size();
            QVERIFY(times >= 1 && times <= mostTicks);
            // Rounding outwards may take one more.
            const LvAxisTicks around = LvAxisTicks::enclosing(highest / 3.0, highest, mostTicks);
            QVERIFY(around.values().size() <= mostTicks + 1);
            QVERIFY(around.values().first() <= highest / 3.0);
            QVERIFY(around.values().last() >= highest * (1.0 - 1e-9));
        }
    }
}

LV_TEST_MAIN(tst_LvAxisTicks)
#include "tst_LvAxisTicks.moc"
