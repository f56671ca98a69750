#include "LvLatitudeList.h"
#include "LvTest.h"

class tst_LvLatitudeList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void average();
    void bounds();
    void firstOfEquals();
    void range();
    void emptyList();
};

void tst_LvLatitudeList::construction()
{
    const LvLatitudeList list{53.0, 54.0};
    QCOMPARE(list.size(), 2);
    LvLatitudeList copy = list;
    copy.append(55.0);
    QCOMPARE(list.size(), 2);
    QCOMPARE(copy.size(), 3);
    const QList<LvLatitude> plain = copy;
    QCOMPARE(LvLatitudeList(plain).size(), 3);
    QVERIFY(std::has_virtual_destructor_v<LvLatitudeList>);
}

void tst_LvLatitudeList::average()
{
    QVERIFY((LvLatitudeList{10.0, -20.0, 25.0}.average().decimalDegrees() == 5.0));
}

void tst_LvLatitudeList::bounds()
{
    const LvLatitudeList list{10.0, -20.0, 25.0};
    QVERIFY(list.northernBound().decimalDegrees() == 25.0);
    QVERIFY(list.southernBound().decimalDegrees() == -20.0);
}

void tst_LvLatitudeList::firstOfEquals()
{
    // By raw values, so these two differ although they are equal within the tolerance.
    const LvLatitudeList list{10.0, 10.0000005};
    QVERIFY(list.northernBound().decimalDegrees() == 10.0000005);
    QVERIFY(list.southernBound().decimalDegrees() == 10.0);
    // The two zeros are equal and can be told apart by their signs.
    QVERIFY(!std::signbit(LvLatitudeList{0.0, -0.0}.northernBound().decimalDegrees()));
    QVERIFY(std::signbit(LvLatitudeList{-0.0, 0.0}.northernBound().decimalDegrees()));
    QVERIFY(!std::signbit(LvLatitudeList{0.0, -0.0}.southernBound().decimalDegrees()));
    QVERIFY(std::signbit(LvLatitudeList{-0.0, 0.0}.southernBound().decimalDegrees()));
}

void tst_LvLatitudeList::range()
{
    const LvLatitudeRange range = LvLatitudeList{10.0, -20.0, 25.0}.range();
    QVERIFY(range.south().decimalDegrees() == -20.0);
    QVERIFY(range.north().decimalDegrees() == 25.0);
}

void tst_LvLatitudeList::emptyList()
{
    QVERIFY(LvLatitudeList().average().decimalDegrees() == 720.0);
    QVERIFY(LvLatitudeList().northernBound().decimalDegrees() == 720.0);
    QVERIFY(LvLatitudeList().southernBound().decimalDegrees() == 720.0);
    QVERIFY(LvLatitudeList().range() == LvLatitudeRange());
}

LV_TEST_MAIN(tst_LvLatitudeList)

#include "tst_LvLatitudeList.moc"
