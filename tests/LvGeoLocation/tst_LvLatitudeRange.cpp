#include "LvLatitudeRange.h"
#include "LvTest.h"

#include <QUrl>
#include <QUrlQuery>

namespace
{

bool holds(const LvLatitudeRange& range, double south, double north)
{
    return range.south().decimalDegrees() == south && range.north().decimalDegrees() == north;
}

} // namespace

class tst_LvLatitudeRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bounds();
    void spawn();
    void isValid_data();
    void isValid();
    void contains_data();
    void contains();
    void containsRange();
    void intersects();
    void expandTo_data();
    void expandTo();
    void centerAndHeight();
    void blowUp();
    void equality();
    void order();
    void text();
    void urlQuery();
    void parse();
    void debugText();
};

void tst_LvLatitudeRange::bounds()
{
    QVERIFY(holds(LvLatitudeRange(), 720.0, 720.0));
    const LvLatitudeRange range(50, 40); // as given
    QVERIFY(holds(range, 50.0, 40.0));
    QVERIFY(range.min() == range.south() && range.max() == range.north());
    QVERIFY(holds(LvLatitudeRange(LvRange<LvLatitude>(1.0, 2.0)), 1.0, 2.0));
    LvLatitudeRange copy = range;
    copy.expandTo(60);
    QVERIFY(holds(range, 50.0, 40.0));
}

void tst_LvLatitudeRange::spawn()
{
    QVERIFY(holds(LvLatitudeRange::spawn(50, 40), 40.0, 50.0));
    QVERIFY(holds(LvLatitudeRange::spawn(-40, 50), -40.0, 50.0));
    QVERIFY(
        holds(LvLatitudeRange::spawn(40.0000005, 40), 40.0, 40.0000005)); // exact, although they are equal
}

void tst_LvLatitudeRange::isValid_data()
{
    QTest::addColumn<double>("south");
    QTest::addColumn<double>("north");
    QTest::addColumn<bool>("valid");
    QTest::newRow("both poles") << -90.0 << 90.0 << true;
    QTest::newRow("one latitude") << 53.0 << 53.0 << true;
    QTest::newRow("wrong order") << 50.0 << 40.0 << false;
    QTest::newRow("wrong order within the tolerance") << 50.0000005 << 50.0 << true;
    QTest::newRow("north beyond the pole") << 50.0 << 91.0 << false;
    QTest::newRow("north beyond the pole within the tolerance") << 50.0 << 90.0000005 << true;
    QTest::newRow("south beyond the pole") << -91.0 << 50.0 << false;
    QTest::newRow("empty") << 720.0 << 720.0 << false;
}

void tst_LvLatitudeRange::isValid()
{
    QFETCH(double, south);
    QFETCH(double, north);
    QTEST(LvLatitudeRange(south, north).isValid(), "valid");
    const LvLatitudeRange range(south, north);
    const LvRange<LvLatitude>& base = range;
    QTEST(base.isValid(), "valid");
}

void tst_LvLatitudeRange::contains_data()
{
    QTest::addColumn<double>("latitude");
    QTest::addColumn<bool>("contained");
    QTest::newRow("inside") << 45.0 << true;
    QTest::newRow("south") << 40.0 << true;
    QTest::newRow("north") << 50.0 << true;
    QTest::newRow("below within the tolerance") << 39.9999995 << true;
    QTest::newRow("above within the tolerance") << 50.0000005 << true;
    QTest::newRow("below") << 39.999998 << false;
    QTest::newRow("above") << 50.000002 << false;
}

void tst_LvLatitudeRange::contains()
{
    QFETCH(double, latitude);
    QTEST(LvLatitudeRange(40, 50).contains(latitude), "contained");
}

void tst_LvLatitudeRange::containsRange()
{
    const LvLatitudeRange range(40, 50);
    QVERIFY(range.contains(45));
    QVERIFY(range.contains(LvLatitudeRange(40, 50)));
    QVERIFY(range.contains(LvLatitudeRange(41, 42)));
    QVERIFY(!range.contains(LvLatitudeRange(39, 42)));
    QVERIFY(!range.contains(LvLatitudeRange(41, 51)));
}

void tst_LvLatitudeRange::intersects()
{
    const LvLatitudeRange range(40, 50);
    QVERIFY(range.intersects(LvLatitudeRange(45, 60)));
    QVERIFY(range.intersects(LvLatitudeRange(30, 45)));
    QVERIFY(range.intersects(LvLatitudeRange(30, 60)));
    QVERIFY(range.intersects(LvLatitudeRange(50, 60)));
    QVERIFY(!range.intersects(LvLatitudeRange(51, 60)));
    QVERIFY(!range.intersects(LvLatitudeRange(30, 39)));
}

void tst_LvLatitudeRange::expandTo_data()
{
    QTest::addColumn<LvLatitudeRange>("range");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("south");
    QTest::addColumn<double>("north");
    QTest::newRow("empty") << LvLatitudeRange() << 53.0 << 53.0 << 53.0;
    QTest::newRow("north") << LvLatitudeRange(40, 50) << 60.0 << 40.0 << 60.0;
    QTest::newRow("south") << LvLatitudeRange(40, 50) << 30.0 << 30.0 << 50.0;
    QTest::newRow("inside") << LvLatitudeRange(40, 50) << 45.0 << 40.0 << 50.0;
    QTest::newRow("exact, within the tolerance")
        << LvLatitudeRange(40, 50) << 50.0000005 << 40.0 << 50.0000005;
    QTest::newRow("half empty is not empty") << LvLatitudeRange(40, 720) << 30.0 << 30.0 << 720.0;
}

void tst_LvLatitudeRange::expandTo()
{
    QFETCH(LvLatitudeRange, range);
    QFETCH(double, latitude);
    QFETCH(double, south);
    QFETCH(double, north);
    range.expandTo(latitude);
    QVERIFY(holds(range, south, north));
}

void tst_LvLatitudeRange::centerAndHeight()
{
    QVERIFY(LvLatitudeRange(40, 50).center().decimalDegrees() == 45.0);
    QVERIFY(LvLatitudeRange(40, 50).height().decimalDegrees() == 10.0);
    QVERIFY(LvLatitudeRange(50, 40).height().decimalDegrees() == -10.0);
}

void tst_LvLatitudeRange::blowUp()
{
    LvLatitudeRange range(40, 50);
    range.blowUp(1.5);
    QVERIFY(holds(range, 38.5, 51.5));
    range.blowUp(45);
    QVERIFY(holds(range, -6.5, 90.0));
    range.blowUp(90);
    QVERIFY(holds(range, -90.0, 90.0));
    range.blowUp(-10);
    QVERIFY(holds(range, -80.0, 80.0));
}

void tst_LvLatitudeRange::equality()
{
    QVERIFY(LvLatitudeRange(40, 50) == LvLatitudeRange(40.0000005, 49.9999995));
    QVERIFY(!(LvLatitudeRange(40, 50) != LvLatitudeRange(40, 50)));
    QVERIFY(LvLatitudeRange(40, 50) != LvLatitudeRange(40, 51));
    QVERIFY(LvLatitudeRange(40, 50) != LvLatitudeRange(41, 50));
}

void tst_LvLatitudeRange::order()
{
    QVERIFY(LvLatitudeRange(40, 50) < LvLatitudeRange(41, 42));
    QVERIFY(LvLatitudeRange(40, 42) < LvLatitudeRange(40, 50));
    QVERIFY(!(LvLatitudeRange(40, 50) < LvLatitudeRange(40, 50)));
    QVERIFY(LvLatitudeRange(40, 50) < LvLatitudeRange(20, 10)); // valid before invalid
    QVERIFY(!(LvLatitudeRange(20, 10) < LvLatitudeRange(40, 50)));
    QVERIFY(!(LvLatitudeRange() < LvLatitudeRange()));
}

void tst_LvLatitudeRange::text()
{
    QCOMPARE(LvLatitudeRange(-40, 50.5).toString(false), QStringLiteral("S40.00000000 - N50.50000000"));
    QCOMPARE(LvLatitudeRange(-40, 50.5).toString(true), QStringLiteral("40° 0′ 0″ Süd - 50° 30′ 0″ Nord"));
    QCOMPARE(LvLatitudeRange().toString(false), QStringLiteral(" - "));
}

void tst_LvLatitudeRange::urlQuery()
{
    QCOMPARE(QUERY_ITEM_SOUTH, QStringLiteral("latitude_min"));
    QCOMPARE(QUERY_ITEM_NORTH, QStringLiteral("latitude_max"));
    QUrlQuery query;
    LvLatitudeRange(-40, 50.5).writeTo(query);
    QCOMPARE(query.toString(QUrl::FullyEncoded),
             QStringLiteral("latitude_max=50.5000000000000000&latitude_min=-40.0000000000000000"));
    QVERIFY(holds(LvLatitudeRange::parse(query), -40.0, 50.5));
}

void tst_LvLatitudeRange::parse()
{
    QVERIFY(holds(LvLatitudeRange::parse(QUrlQuery(QStringLiteral("latitude_min=N60&latitude_max=S10"))),
                  60.0, -10.0));
    QVERIFY(holds(LvLatitudeRange::parse(QUrlQuery(QStringLiteral("latitude_max=10"))), 720.0, 10.0));
    QVERIFY(holds(LvLatitudeRange::parse(QUrlQuery(QStringLiteral("latitude_min=ten&longitude_max=5"))),
                  720.0, 720.0));
    QVERIFY(holds(LvLatitudeRange::parse(QStringLiteral("S10"), QStringLiteral("N123")), -10.0, 123.0));
    QVERIFY(holds(LvLatitudeRange::parse(QString(), QStringLiteral("x")), 720.0, 720.0));
}

void tst_LvLatitudeRange::debugText()
{
    QString text;
    QDebug(&text).noquote() << LvLatitudeRange(-40, 50);
    QCOMPARE(text.trimmed(), QStringLiteral("S40.00000000 - N50.00000000"));
}

LV_TEST_MAIN(tst_LvLatitudeRange)

#include "tst_LvLatitudeRange.moc"
