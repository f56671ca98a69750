#include "LvGeoPositionList.h"
#include "LvTest.h"

#include <QRandomGenerator>

namespace
{

bool holds(const LvGeoPosition& position, double latitude, double longitude)
{
    return position.latitude().decimalDegrees() == latitude
        && position.longitude().decimalDegrees() == longitude;
}

} // namespace

class tst_LvGeoPositionList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void average();
    void averageIsTheSumOfPositions();
    void boundingBox();
    void boundingBoxFollowsTheOrder();
    void center();
    void angles();
    void painterPath();
    void filterStrayPositions();
    void filterKeepsTheBoundary();
    void filterWithSmallLists();
    void filterWithInvalidPositions();
    void emptyList();
};

void tst_LvGeoPositionList::construction()
{
    const LvGeoPositionList list{LvGeoPosition(53, 8), LvGeoPosition(54, 9)};
    QCOMPARE(list.size(), 2);
    LvGeoPositionList copy = list;
    copy[0].setLatitude(10.0);
    QVERIFY(holds(list.first(), 53.0, 8.0));
    QVERIFY(holds(copy.first(), 10.0, 8.0));
    const QList<LvGeoPosition> plain = copy;
    QVERIFY(LvGeoPositionList(plain) == copy);
    QVERIFY(LvGeoPositionList(QList<LvGeoPosition>{LvGeoPosition(1, 2)}).size() == 1);
    QVERIFY(std::has_virtual_destructor_v<LvGeoPositionList>);
}

void tst_LvGeoPositionList::average()
{
    QVERIFY(holds(LvGeoPositionList({LvGeoPosition(50, 8), LvGeoPosition(54, 9)}).average(), 52.0, 8.5));
    // In raw degrees, so the longitude lies on the other side of the Earth.
    QVERIFY(holds(LvGeoPositionList({LvGeoPosition(10, 175), LvGeoPosition(20, -175)}).average(), 15.0, 0.0));
    QVERIFY(holds(LvGeoPositionList({LvGeoPosition()}).average(), 720.0, 720.0));
}

void tst_LvGeoPositionList::averageIsTheSumOfPositions()
{
    QRandomGenerator random(7);
    LvGeoPositionList list;
    LvGeoPosition sum = LvGeoPosition::null();
    for (int i = 0; i < 1000; ++i) {
        list.append(
            LvGeoPosition(random.generateDouble() * 180.0 - 90.0, random.generateDouble() * 360.0 - 180.0));
        sum += list.constLast();
    }
    const LvGeoPosition expected = sum / 1000.0;
    QVERIFY(
        holds(list.average(), expected.latitude().decimalDegrees(), expected.longitude().decimalDegrees()));
}

void tst_LvGeoPositionList::boundingBox()
{
    const LvGeoPositionList list{LvGeoPosition(53, 8), LvGeoPosition(), LvGeoPosition(54, -9),
                                 LvGeoPosition::null(), LvGeoPosition(52, 1)};
    QVERIFY(list.boundingBox() == LvGeoPositionRect(LvLatitudeRange(52, 54), LvLongitudeRange(-9, 8)));
}

void tst_LvGeoPositionList::boundingBoxFollowsTheOrder()
{
    // A box that does not cross the date line never starts to, whatever the order.
    const LvGeoPositionList list{LvGeoPosition(10, 175), LvGeoPosition(10, -175)};
    QVERIFY(list.boundingBox() == LvGeoPositionRect(LvLatitudeRange(10, 10), LvLongitudeRange(-175, 175)));
    LvGeoPositionRect step;
    step.expandTo(list.at(0));
    step.expandTo(list.at(1));
    QVERIFY(list.boundingBox() == step);
}

void tst_LvGeoPositionList::center()
{
    const LvGeoPositionList list{LvGeoPosition(50, 8), LvGeoPosition(51, 8), LvGeoPosition(54, 10)};
    QVERIFY(holds(list.center(), 52.0, 9.0)); // of the box, not the average
}

void tst_LvGeoPositionList::angles()
{
    const LvGeoPositionList list{LvGeoPosition(53, 8), LvGeoPosition(), LvGeoPosition(-54, -9)};
    const LvLatitudeList latitudes = list.latitudes();
    const LvLongitudeList longitudes = list.longitudes();
    QVERIFY((latitudes == QList<LvLatitude>{53.0, 720.0, -54.0}));
    QVERIFY((longitudes == QList<LvLongitude>{8.0, 720.0, -9.0}));
}

void tst_LvGeoPositionList::painterPath()
{
    const QPainterPath path =
        LvGeoPositionList{LvGeoPosition(53, 8), LvGeoPosition(54, 9), LvGeoPosition(52, -1)}.toPainterPath();
    QCOMPARE(path.elementCount(), 3);
    QVERIFY(path.elementAt(0).isMoveTo());
    QCOMPARE(QPointF(path.elementAt(0)), QPointF(8, 53));
    QVERIFY(path.elementAt(1).isLineTo());
    QCOMPARE(QPointF(path.elementAt(1)), QPointF(9, 54));
    QVERIFY(path.elementAt(2).isLineTo());
    QCOMPARE(QPointF(path.elementAt(2)), QPointF(-1, 52));
    const LvGeoPositionList one{LvGeoPosition(53, 8)};
    QCOMPARE(one.toPainterPath().currentPosition(), QPointF(8, 53));
}

void tst_LvGeoPositionList::filterStrayPositions()
{
    LvGeoPositionList list;
    for (int i = 0; i < 9; ++i)
        list.append(LvGeoPosition(53.0 + i * 0.001, 8.0 + i * 0.001));
    const LvGeoPosition stray(20.0, 60.0);
    list.insert(4, stray);
    LvGeoPositionList others = list;
    others.removeAt(4);
    QVERIFY(list.filterStrayPositions(1.0, false, 1) == others);
    QVERIFY((list.filterStrayPositions(1.0, true, 1) == LvGeoPositionList{stray}));
    // A large factor keeps everything, so nothing is left for the inverted filter.
    QVERIFY(list.filterStrayPositions(100.0, false, 1) == list);
    QVERIFY(list.filterStrayPositions(100.0, true, 1).isEmpty());
    QVERIFY(list.filterStrayPositions(0.0, false, 1).isEmpty());
    QVERIFY(list.filterStrayPositions(0.0, true, 1) == list);
}

void tst_LvGeoPositionList::filterKeepsTheBoundary()
{
    // The average is the centre of the box, so both distances are the same.
    const LvGeoPositionList list{LvGeoPosition(50, 8), LvGeoPosition(52, 10)};
    QVERIFY(list.filterStrayPositions(1.0, false, 2) == list);
    QVERIFY(list.filterStrayPositions(1.0, true, 2).isEmpty());
    QVERIFY(list.filterStrayPositions(0.999, false, 2).isEmpty());
}

void tst_LvGeoPositionList::filterWithSmallLists()
{
    const LvGeoPositionList list{LvGeoPosition(50, 8), LvGeoPosition(52, 10)};
    QVERIFY(list.filterStrayPositions(0.0, false, 3) == list);
    QVERIFY(list.filterStrayPositions(0.0, true, 3) == list);
    QVERIFY(list.filterStrayPositions(0.0, false, 2).isEmpty());
}

void tst_LvGeoPositionList::filterWithInvalidPositions()
{
    // Everything is infinitely far from an average of 720, but near the centre of the valid positions.
    const LvGeoPositionList list{LvGeoPosition(50, 8), LvGeoPosition(52, 10), LvGeoPosition(),
                                 LvGeoPosition(), LvGeoPosition()};
    QVERIFY(!list.average().isValid());
    // The invalid ones are as far from the one as from the other.
    QCOMPARE(list.filterStrayPositions(1.0, false, 1).size(), 3);
    QCOMPARE(list.filterStrayPositions(1.0, true, 1).size(), 2);
}

void tst_LvGeoPositionList::emptyList()
{
    const LvGeoPositionList list;
    QVERIFY(!list.average().isValid());
    QVERIFY(holds(list.average(), 720.0, 720.0));
    QVERIFY(list.boundingBox() == LvGeoPositionRect());
    QVERIFY(list.toPainterPath().isEmpty());
    QCOMPARE(list.toPainterPath().elementCount(), 0);
    QVERIFY(list.latitudes().isEmpty());
    QVERIFY(list.longitudes().isEmpty());
    QVERIFY(list.filterStrayPositions(1.0, false, 0).isEmpty());
}

LV_TEST_MAIN(tst_LvGeoPositionList)

#include "tst_LvGeoPositionList.moc"
