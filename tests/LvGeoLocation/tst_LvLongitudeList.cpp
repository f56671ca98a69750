#include "LvLongitudeList.h"
#include "LvTest.h"

Q_DECLARE_METATYPE(QList<double>)

class tst_LvLongitudeList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void average();
    void hemispheres();
    void bounds();
    void ranges_data();
    void ranges();
    void emptyList();
};

void tst_LvLongitudeList::construction()
{
    const LvLongitudeList list{8.0, 9.0};
    QCOMPARE(list.size(), 2);
    LvLongitudeList copy = list;
    copy[0] = 10.0;
    QVERIFY(list.first().decimalDegrees() == 8.0);
    const QList<LvLongitude> plain = copy;
    QVERIFY(LvLongitudeList(plain).first().decimalDegrees() == 10.0);
    QVERIFY(std::has_virtual_destructor_v<LvLongitudeList>);
}

void tst_LvLongitudeList::average()
{
    QVERIFY((LvLongitudeList{170.0, -170.0, 30.0}.average().decimalDegrees() == 10.0)); // in raw degrees
}

void tst_LvLongitudeList::hemispheres()
{
    const LvLongitudeList list{8.0, -74.0, 0.0, 180.0, -180.0, -1.0, 179.0};
    const LvLongitudeList western = list.onlyWesternHemisphere();
    const LvLongitudeList eastern = list.onlyEasternHemisphere();
    QVERIFY((western == QList<LvLongitude>{-74.0, -1.0}));
    QVERIFY((eastern == QList<LvLongitude>{8.0, 0.0, 180.0, -180.0, 179.0}));
}

void tst_LvLongitudeList::bounds()
{
    const LvLongitudeList list{8.0, -74.0, 170.0};
    QVERIFY(list.westernBound().decimalDegrees() == -74.0);
    QVERIFY(list.easternBound().decimalDegrees() == 170.0);
}

void tst_LvLongitudeList::ranges_data()
{
    QTest::addColumn<QList<double>>("longitudes");
    QTest::addColumn<double>("naiveWest");
    QTest::addColumn<double>("naiveEast");
    QTest::addColumn<double>("west");
    QTest::addColumn<double>("east");
    QTest::newRow("around 180") << QList<double>{170, 175, -175, -170} << -175.0 << 175.0 << 170.0 << -170.0;
    QTest::newRow("around 0") << QList<double>{-10, 20} << -10.0 << 20.0 << -10.0 << 20.0;
    QTest::newRow("eastern only") << QList<double>{10, 5} << 5.0 << 10.0 << 5.0 << 10.0;
    QTest::newRow("western only") << QList<double>{-5, -10} << -10.0 << -5.0 << -10.0 << -5.0;
    QTest::newRow("one") << QList<double>{8} << 8.0 << 8.0 << 8.0 << 8.0;
    QTest::newRow("averages exactly 180 apart") << QList<double>{90, -90} << -90.0 << 90.0 << -90.0 << 90.0;
    QTest::newRow("averages just more apart") << QList<double>{90.1, -90} << -90.0 << 90.1 << 90.1 << -90.0;
    QTest::newRow("180 apart within the tolerance")
        << QList<double>{90.0000005, -90} << -90.0 << 90.0000005 << -90.0 << 90.0000005;
    // -180 is eastern and by raw value the smallest of them, so the rule takes it as the western bound.
    QTest::newRow("-180 among the eastern ones")
        << QList<double>{179, 179, -180, -179} << -180.0 << 179.0 << -180.0 << -179.0;
    QTest::newRow("empty") << QList<double>{} << 720.0 << 720.0 << 720.0 << 720.0;
}

void tst_LvLongitudeList::ranges()
{
    QFETCH(QList<double>, longitudes);
    QFETCH(double, naiveWest);
    QFETCH(double, naiveEast);
    QFETCH(double, west);
    QFETCH(double, east);
    LvLongitudeList list;
    for (const double longitude : std::as_const(longitudes))
        list.append(longitude);
    const LvLongitudeRange naive = list.naiveRange();
    QVERIFY(naive.west().decimalDegrees() == naiveWest);
    QVERIFY(naive.east().decimalDegrees() == naiveEast);
    QVERIFY(!naive.crossesDateLine());
    const LvRange<LvLongitude> effective = list.effectiveRange();
    QVERIFY(effective.min().decimalDegrees() == west);
    QVERIFY(effective.max().decimalDegrees() == east);
}

void tst_LvLongitudeList::emptyList()
{
    QVERIFY(LvLongitudeList().average().decimalDegrees() == 720.0);
    QVERIFY(LvLongitudeList().westernBound().decimalDegrees() == 720.0);
    QVERIFY(LvLongitudeList().easternBound().decimalDegrees() == 720.0);
    QVERIFY(LvLongitudeList().onlyEasternHemisphere().isEmpty());
    QVERIFY(LvLongitudeList().onlyWesternHemisphere().isEmpty());
}

LV_TEST_MAIN(tst_LvLongitudeList)

#include "tst_LvLongitudeList.moc"
