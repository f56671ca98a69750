#include "LvGeoPositionSamples.h"
#include "LvTest.h"

class tst_LvGeoPositionSamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void samples_data();
    void samples();
    void unknownValue_data();
    void unknownValue();
    void distances();
};

void tst_LvGeoPositionSamples::samples_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::newRow("0") << 0 << "Oldenburg" << 53.14118 << 8.21467;
    QTest::newRow("1") << 1 << "Bremen" << 53.0792962 << 8.806422;
    QTest::newRow("2") << 2 << "Wellington" << -41.28646 << 174.772996908;
    QTest::newRow("3") << 3 << "Sydney" << -33.865143 << 151.2099;
    QTest::newRow("4") << 4 << "New York" << 40.73061 << -73.935242;
    QTest::newRow("5") << 5 << "LA" << 34.052235 << -118.243683;
    QTest::newRow("6") << 6 << "Honolulu" << 21.315603 << -157.858093;
    QTest::newRow("7") << 7 << "Polynesien" << -17.679742 << -149.3729275;
    QTest::newRow("8, on the 0° meridian") << 8 << "Greenich" << 51.507351 << 0.0;
    QTest::newRow("9") << 9 << "Windhoek" << -22.5631 << 17.0786;
    QTest::newRow("10") << 10 << "Helsinki" << 60.169471 << 24.929667;
    QTest::newRow("11") << 11 << "Gibraltar" << 36.140751 << -5.353585;
    QTest::newRow("12") << 12 << "Passau" << 48.5667364 << 13.4319466;
}

void tst_LvGeoPositionSamples::samples()
{
    QFETCH(int, value);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    const auto sample = LvGeoPositionSamplesEnum(value);
    const LvGeoPositionSamples samples;
    QTEST(samples.name(sample), "name");
    QVERIFY(samples.position(sample).isValid());
    QVERIFY(samples.position(sample).latitude().decimalDegrees() == latitude);
    QVERIFY(samples.position(sample).longitude().decimalDegrees() == longitude);
    QVERIFY(samples.latitude(sample).decimalDegrees() == latitude);
    QVERIFY(samples.longitude(sample).decimalDegrees() == longitude);
}

void tst_LvGeoPositionSamples::unknownValue_data()
{
    QTest::addColumn<int>("value");
    QTest::newRow("above") << 13;
    QTest::newRow("below") << -1;
    QTest::newRow("far above") << 1000;
}

void tst_LvGeoPositionSamples::unknownValue()
{
    QFETCH(int, value);
    const auto sample = LvGeoPositionSamplesEnum(value);
    const LvGeoPositionSamples samples;
    QVERIFY(samples.name(sample).isEmpty());
    QVERIFY(!samples.position(sample).isValid());
    QVERIFY(samples.latitude(sample).decimalDegrees() == 720.0);
    QVERIFY(samples.longitude(sample).decimalDegrees() == 720.0);
}

void tst_LvGeoPositionSamples::distances()
{
    const LvGeoPositionSamples samples;
    const LvGeoPosition oldenburg = samples.position(LvGeoPositionSamplesEnum::Oldenburg);
    const LvGeoPosition bremen = samples.position(LvGeoPositionSamplesEnum::Bremen);
    QCOMPARE(QString::number(oldenburg.distance(bremen), 'f', 2), QStringLiteral("40.09"));
    const LvGeoPosition wellington = samples.position(LvGeoPositionSamplesEnum::Wellington);
    const LvGeoPosition polynesia = samples.position(LvGeoPositionSamplesEnum::Polynesien);
    QVERIFY(polynesia.isEastOf(wellington));
    QVERIFY(wellington.distance(polynesia) < 5000.0);
    QVERIFY(samples.longitude(LvGeoPositionSamplesEnum::Greenich).isInEasternHemisphere());
}

LV_TEST_MAIN(tst_LvGeoPositionSamples)

#include "tst_LvGeoPositionSamples.moc"
