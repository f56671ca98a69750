#include "LvGeoPosition.h"
#include "LvMeasureText.h"
#include "LvTest.h"

#include <QDateTime>
#include <QTimeZone>

class tst_LvMeasureText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void distance_data();
    void distance();
    void duration_data();
    void duration();
    void metresAndSpeed();
    void dateTime();
    void position();
    void localeOfTheUser();
    void missing();
};

void tst_LvMeasureText::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_LvMeasureText::distance_data()
{
    QTest::addColumn<double>("kilometres");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << "0 m";
    QTest::newRow("metres") << 0.35 << "350 m";
    QTest::newRow("just metres") << 0.9994 << "999 m";
    QTest::newRow("rounds up to a kilometre") << 0.9996 << "1.00 km";
    QTest::newRow("two decimals") << 12.345 << "12.35 km";
    QTest::newRow("one decimal") << 123.45 << "123.5 km";
    QTest::newRow("whole kilometres") << 6384.6 << "6385 km";
}

void tst_LvMeasureText::distance()
{
    QFETCH(double, kilometres);
    QFETCH(QString, text);
    QCOMPARE(LvMeasureText::distance(kilometres), text);
}

void tst_LvMeasureText::duration_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << "0:00 min";
    QTest::newRow("seconds") << 5.4 << "0:05 min";
    QTest::newRow("minutes") << 245.0 << "4:05 min";
    QTest::newRow("just minutes") << 3599.4 << "59:59 min";
    QTest::newRow("rounds up to an hour") << 3599.6 << "1:00:00 h";
    QTest::newRow("hours") << 11045.0 << "3:04:05 h";
    QTest::newRow("more than a day") << 97445.0 << "27:04:05 h";
}

void tst_LvMeasureText::duration()
{
    QFETCH(double, seconds);
    QFETCH(QString, text);
    QCOMPARE(LvMeasureText::duration(seconds), text);
}

void tst_LvMeasureText::metresAndSpeed()
{
    QCOMPARE(LvMeasureText::metres(1140.6), QStringLiteral("1141 m"));
    QCOMPARE(LvMeasureText::metres(-3.2), QStringLiteral("-3 m"));
    QCOMPARE(LvMeasureText::speed(5.44), QStringLiteral("5.4 km/h"));
}

void tst_LvMeasureText::dateTime()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    // The tests run in UTC; the time is given in another zone.
    const QDateTime time(QDate(2024, 6, 15), QTime(10, 5, 7), Qt::OffsetFromUTC, 7200);
    QCOMPARE(LvMeasureText::dateTime(time), QStringLiteral("15.06.24, 08:05:07"));
}

void tst_LvMeasureText::position()
{
    const QChar blank(QChar::Nbsp); // keeps number and letter in one line
    QCOMPARE(LvMeasureText::position({53.14, -8.8}), QStringLiteral("53.14000°%1N, 8.80000°%1W").arg(blank));
}

void tst_LvMeasureText::localeOfTheUser()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(LvMeasureText::distance(12.345), QStringLiteral("12,35 km"));
    QCOMPARE(LvMeasureText::metres(1141.0), QStringLiteral("1.141 m"));
    QCOMPARE(LvMeasureText::speed(5.4), QStringLiteral("5,4 km/h"));
}

void tst_LvMeasureText::missing()
{
    QCOMPARE(LvMeasureText::missing(), QStringLiteral("–"));
    QCOMPARE(LvMeasureText::metres({}), LvMeasureText::missing());
    QCOMPARE(LvMeasureText::speed({}), LvMeasureText::missing());
    QCOMPARE(LvMeasureText::duration({}), LvMeasureText::missing());
    QCOMPARE(LvMeasureText::dateTime({}), LvMeasureText::missing());
    QCOMPARE(LvMeasureText::position({}), LvMeasureText::missing());
}

LV_TEST_MAIN(tst_LvMeasureText)
#include "tst_LvMeasureText.moc"
