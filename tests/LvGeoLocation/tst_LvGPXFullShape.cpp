#include "LvGPXFullShape.h"
#include "LvTest.h"

class tst_LvGPXFullShape : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void equality();
    void normalization_data();
    void normalization();
    void texts();
    void icon();
};

void tst_LvGPXFullShape::construction()
{
    const LvGPXFullShape empty;
    QVERIFY(empty.trackShape() == LvGPXTrackShape(0));
    QVERIFY(empty.markerShape() == LvGPXMarkerShape(0));
    LvGPXFullShape shape(LvGPXTrackShapeEnum::point, LvGPXMarkerShapeEnum::rhombus);
    QVERIFY(shape.trackShape() == LvGPXTrackShapeEnum::point);
    QVERIFY(shape.markerShape() == LvGPXMarkerShapeEnum::rhombus);
    const LvGPXFullShape copy(shape);
    shape.setTrackShape(LvGPXTrackShapeEnum::linestring);
    shape.setMarkerShape(LvGPXMarkerShapeEnum::arrow);
    QVERIFY(shape == LvGPXFullShape(LvGPXTrackShape(4), LvGPXMarkerShape(1024)));
    QVERIFY(copy == LvGPXFullShape(LvGPXTrackShape(1), LvGPXMarkerShape(64)));
    static_assert(std::has_virtual_destructor_v<LvGPXFullShape>);
}

void tst_LvGPXFullShape::equality()
{
    const LvGPXFullShape shape(LvGPXTrackShape(1), LvGPXMarkerShape(2));
    QVERIFY(shape == LvGPXFullShape(LvGPXTrackShape(1), LvGPXMarkerShape(2)));
    QVERIFY(shape != LvGPXFullShape(LvGPXTrackShape(2), LvGPXMarkerShape(2)));
    QVERIFY(shape != LvGPXFullShape(LvGPXTrackShape(1), LvGPXMarkerShape(1)));
    QVERIFY(!(shape == LvGPXFullShape()));
    QVERIFY(!(shape != LvGPXFullShape(shape)));
}

void tst_LvGPXFullShape::normalization_data()
{
    QTest::addColumn<int>("track");
    QTest::addColumn<quint32>("marker");
    QTest::addColumn<quint32>("normalized");
    QTest::newRow("point drops the arrow") << 1 << 1025U << 1U;
    QTest::newRow("point keeps all its figures") << 1 << 0xFFFFFFFFU << 1019U;
    QTest::newRow("point drops the nameless flag") << 1 << 4U << 0U;
    QTest::newRow("line keeps only the arrow") << 4 << 1152U << 1024U;
    QTest::newRow("line without arrow") << 4 << 1023U << 0U;
    QTest::newRow("line drops higher flags") << 4 << 0xFFFFFFFFU << 1024U;
    QTest::newRow("polygon") << 8 << 1U << 0U;
    QTest::newRow("hop") << 2 << 1025U << 0U;
    QTest::newRow("auto") << 256 << 1025U << 0U;
    QTest::newRow("unknown") << 0 << 1025U << 0U;
    QTest::newRow("combination with point") << 5 << 1025U << 0U;
}

void tst_LvGPXFullShape::normalization()
{
    QFETCH(int, track);
    QFETCH(quint32, marker);
    QFETCH(quint32, normalized);
    LvGPXFullShape shape{LvGPXTrackShape(track), LvGPXMarkerShape(marker)};
    const LvGPXFullShape expected{LvGPXTrackShape(track), LvGPXMarkerShape(normalized)};
    QVERIFY(shape.normalized() == expected);
    QVERIFY(shape.markerShape() == LvGPXMarkerShape(marker)); // the original stays
    shape.normalize();
    QVERIFY(shape == expected);
}

void tst_LvGPXFullShape::texts()
{
    const LvGPXFullShape arrow(LvGPXTrackShape(4), LvGPXMarkerShape(1024));
    QCOMPARE(arrow.describe(), QStringLiteral("Pfeil"));
    QCOMPARE(arrow.toolTip(), QStringLiteral("Alle Punkte werden zu einer Strecke verbunden."));
    QCOMPARE(LvGPXFullShape(LvGPXTrackShape(4), LvGPXMarkerShape(0)).describe(), QStringLiteral("Strecke"));
    QCOMPARE(LvGPXFullShape().describe(), QStringLiteral("unbekannt"));
}

void tst_LvGPXFullShape::icon()
{
    const LvGPXFullShape point(LvGPXTrackShape(1), LvGPXMarkerShape(64));
    QCOMPARE(point.createIcon(Qt::red, Qt::blue).pixmap(32, 32).toImage(),
             LvGPXMarkerShape(64).createIcon(Qt::red, Qt::blue).pixmap(32, 32).toImage());
    QVERIFY(!point.createIcon(Qt::red, Qt::blue).isNull());
    QVERIFY(
        LvGPXFullShape(LvGPXTrackShape(4), LvGPXMarkerShape(1024)).createIcon(Qt::red, Qt::blue).isNull());
}

LV_TEST_MAIN(tst_LvGPXFullShape)
#include "tst_LvGPXFullShape.moc"
