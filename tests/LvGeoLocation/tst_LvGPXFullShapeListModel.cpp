#include "LvGPXFullShapeListModel.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrackShape.h"
#include "LvTest.h"

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QIcon>
#include <QListView>
#include <QSignalSpy>

namespace
{

using Shape = LvGPXTrackShapeEnum;
using Marker = LvGPXMarkerShapeEnum;

LvGPXTrackDisplayOptions options(quint32 flags)
{
    return LvGPXTrackDisplayOptions(flags);
}

QImage iconOf(const LvGPXFullShapeListModel& model, int row)
{
    return model.data(model.index(row), Qt::DecorationRole)
        .value<QIcon>()
        .pixmap(QSize(32, 32))
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

QImage iconOf(Marker marker, const QColor& stroke, const QColor& fill)
{
    return LvGPXMarkerShape(marker)
        .createIcon(stroke, fill)
        .pixmap(QSize(32, 32))
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

} // namespace

class tst_LvGPXFullShapeListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void empty();
    void fill_data();
    void fill();
    void fillAgain();
    void data();
    void outOfRange();
    void markerAt();
    void indexOf_data();
    void indexOf();
    void effectiveColors_data();
    void effectiveColors();
    void icons();
    void changes();
    void inViews();
};

void tst_LvGPXFullShapeListModel::empty()
{
    LvGPXFullShapeListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QVERIFY(model.QObject::parent() == nullptr);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 1);
    QCOMPARE(model.indexOf(LvGPXFullShape()), -1);
    QVERIFY(model.wouldBeInvisible());
    // Black on gray are the colours of the start, without display options black stands for both.
    QCOMPARE(model.effectiveStrokeColor(), QColor(Qt::black));
    QCOMPARE(model.effectiveFillColor(), QColor(Qt::black));
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.setDisplayOptions(options(3));
    QCOMPARE(model.effectiveStrokeColor(), QColor(Qt::black));
    QCOMPARE(model.effectiveFillColor(), QColor(Qt::gray));
    model.updateVisualization();
    QCOMPARE(changed.size(), qsizetype{0}); // there is nothing that could have changed
}

void tst_LvGPXFullShapeListModel::fill_data()
{
    QTest::addColumn<quint32>("trackShape");
    QTest::addColumn<QStringList>("rows");
    const QStringList points{"1/1", "1/2", "1/8", "1/16", "1/32", "1/64", "1/128", "1/256", "1/512"};
    QTest::newRow("unknown") << 0U << QStringList();
    QTest::newRow("automatic") << 256U << QStringList();
    QTest::newRow("combination") << 3U << QStringList();
    for (const quint32 shape : {1U, 2U, 4U, 8U}) {
        // The expectation is the rule: every possible shape in order, each with its markers in order.
        QStringList rows;
        const QList<LvGPXTrackShape> shapes = LvGPXTrackShape(shape).possibleShapes();
        for (const LvGPXTrackShape& possible : shapes) {
            const QList<LvGPXMarkerShape> markers = possible.createMarkerShapes();
            for (const LvGPXMarkerShape& marker : markers) {
                rows.append(QStringLiteral("%1/%2")
                                .arg(static_cast<quint32>(possible.value()))
                                .arg(static_cast<quint32>(marker.value())));
            }
        }
        QTest::addRow("shape %u", shape) << shape << rows;
    }
    QTest::newRow("line, spelled out") << 4U << QStringList{"8/0", "4/0", "4/1024"};
}

void tst_LvGPXFullShapeListModel::fill()
{
    QFETCH(quint32, trackShape);
    QFETCH(QStringList, rows);
    LvGPXFullShapeListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.fill(LvGPXTrackShape(trackShape));
    QCOMPARE(reset.size(), qsizetype{1});
    QStringList actual;
    for (int row = 0; row < model.rowCount(); ++row) {
        const LvGPXFullShape shape = model.markerAt(row);
        actual.append(QStringLiteral("%1/%2")
                          .arg(static_cast<quint32>(shape.trackShape().value()))
                          .arg(static_cast<quint32>(shape.markerShape().value())));
    }
    QCOMPARE(actual, rows);
}

void tst_LvGPXFullShapeListModel::fillAgain()
{
    LvGPXFullShapeListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.fill(Shape::linestring);
    const int lines = model.rowCount();
    model.fill(Shape::point);
    QCOMPARE(model.rowCount(), 9);
    model.fill(Shape::linestring);
    QCOMPARE(model.rowCount(), lines);
    model.fill(Shape::automatic);
    QCOMPARE(model.rowCount(), 0);
}

void tst_LvGPXFullShapeListModel::data()
{
    LvGPXFullShapeListModel model;
    model.fill(Shape::linestring);
    QCOMPARE(model.data(model.index(0), Qt::DisplayRole).toString(), QStringLiteral("Fläche"));
    QCOMPARE(model.data(model.index(1), Qt::DisplayRole).toString(), QStringLiteral("Strecke"));
    QCOMPARE(model.data(model.index(2), Qt::DisplayRole).toString(), QStringLiteral("Pfeil"));
    for (int row = 0; row < model.rowCount(); ++row) {
        const LvGPXFullShape shape = model.markerAt(row);
        QCOMPARE(model.data(model.index(row), Qt::DisplayRole).toString(), shape.describe());
        QCOMPARE(model.data(model.index(row), Qt::ToolTipRole).toString(), shape.toolTip());
        QVERIFY(!shape.toolTip().isEmpty());
        QCOMPARE(model.data(model.index(row), Qt::DecorationRole).metaType(), QMetaType::fromType<QIcon>());
        for (const int role :
             {int{Qt::EditRole}, int{Qt::FontRole}, int{Qt::CheckStateRole}, int{Qt::UserRole}}) {
            QVERIFY(!model.data(model.index(row), role).isValid());
        }
    }
    QVERIFY(!model.data(QModelIndex(), Qt::DisplayRole).isValid());
    QVERIFY(!model.data(QModelIndex(), Qt::DecorationRole).isValid());
}

void tst_LvGPXFullShapeListModel::outOfRange()
{
    LvGPXFullShapeListModel model;
    model.fill(Shape::point);
    const QModelIndex stale = model.index(8);
    QVERIFY(stale.isValid());
    model.fill(Shape::linestring);
    QCOMPARE(model.data(stale, Qt::DisplayRole).toString(), LvGPXFullShape().describe());
    QCOMPARE(model.data(stale, Qt::ToolTipRole).toString(), LvGPXFullShape().toolTip());
    QVERIFY(model.data(stale, Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(model.markerAt(stale) == LvGPXFullShape());
}

void tst_LvGPXFullShapeListModel::markerAt()
{
    LvGPXFullShapeListModel model;
    model.fill(Shape::point);
    QVERIFY(model.markerAt(0) == LvGPXFullShape(Shape::point, Marker::disk));
    QVERIFY(model.markerAt(model.index(1)) == model.markerAt(1));
    QVERIFY(model.markerAt(1) != LvGPXFullShape());
    QVERIFY(model.markerAt(-1) == LvGPXFullShape());
    QVERIFY(model.markerAt(9) == LvGPXFullShape());
    QVERIFY(model.markerAt(QModelIndex()) == LvGPXFullShape());
}

void tst_LvGPXFullShapeListModel::indexOf_data()
{
    QTest::addColumn<quint32>("filledWith");
    QTest::addColumn<quint32>("trackShape");
    QTest::addColumn<quint32>("markerShape");
    QTest::addColumn<int>("row");
    QTest::newRow("first marker") << 1U << 1U << 1U << 0;
    QTest::newRow("point with an arrow: without the arrow") << 1U << 1U << (1U | 1024U) << 0;
    QTest::newRow("line") << 4U << 4U << 0U << 1;
    QTest::newRow("line with an arrow") << 4U << 4U << 1024U << 2;
    QTest::newRow("line with a figure: without the figure") << 4U << 4U << 1U << 1;
    QTest::newRow("area with a figure: without the figure") << 4U << 8U << 1U << 0;
    QTest::newRow("two figures") << 1U << 1U << 3U << -1;
    QTest::newRow("a shape that is not on offer") << 4U << 1U << 1U << -1;
}

void tst_LvGPXFullShapeListModel::indexOf()
{
    QFETCH(quint32, filledWith);
    QFETCH(quint32, trackShape);
    QFETCH(quint32, markerShape);
    QFETCH(int, row);
    LvGPXFullShapeListModel model;
    model.fill(LvGPXTrackShape(filledWith));
    QCOMPARE(model.indexOf(LvGPXFullShape(LvGPXTrackShape(trackShape), LvGPXMarkerShape(markerShape))), row);
}

void tst_LvGPXFullShapeListModel::effectiveColors_data()
{
    QTest::addColumn<quint32>("flags");
    QTest::addColumn<QColor>("stroke");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<bool>("invisible");
    const QColor red(200, 0, 0, 128);
    const QColor blue(0, 0, 200);
    QTest::newRow("nothing") << 0U << QColor(Qt::black) << QColor(Qt::black) << true;
    QTest::newRow("outline") << 1U << red << QColor(Qt::transparent) << false;
    QTest::newRow("area") << 2U << QColor(Qt::transparent) << blue << false;
    QTest::newRow("both") << 3U << red << blue << false;
    QTest::newRow("the nameless flag") << 4U << QColor(Qt::black) << QColor(Qt::black) << true;
    QTest::newRow("outline and the nameless flag") << 5U << red << QColor(Qt::transparent) << false;
}

void tst_LvGPXFullShapeListModel::effectiveColors()
{
    QFETCH(quint32, flags);
    QFETCH(QColor, stroke);
    QFETCH(QColor, fill);
    QFETCH(bool, invisible);
    LvGPXFullShapeListModel model;
    model.setStrokeColor(QColor(200, 0, 0, 128));
    model.setFillColor(QColor(0, 0, 200));
    model.setDisplayOptions(options(flags));
    QCOMPARE(model.effectiveStrokeColor(), stroke);
    QCOMPARE(model.effectiveFillColor(), fill);
    QCOMPARE(model.wouldBeInvisible(), invisible);
}

void tst_LvGPXFullShapeListModel::icons()
{
    LvGPXFullShapeListModel model;
    model.fill(Shape::point);
    QCOMPARE(iconOf(model, 0), iconOf(Marker::disk, Qt::black, Qt::black));
    model.setStrokeColor(Qt::red);
    model.setFillColor(Qt::yellow);
    QCOMPARE(iconOf(model, 0), iconOf(Marker::disk, Qt::black, Qt::black));
    model.setDisplayOptions(options(3));
    QCOMPARE(iconOf(model, 0), iconOf(Marker::disk, Qt::red, Qt::yellow));
    QVERIFY(iconOf(model, 0) != iconOf(Marker::disk, Qt::black, Qt::black));
    model.setDisplayOptions(options(2));
    QCOMPARE(iconOf(model, 0), iconOf(Marker::disk, Qt::transparent, Qt::yellow));
    model.setDisplayOptions(options(1));
    QCOMPARE(iconOf(model, 0), iconOf(Marker::disk, Qt::red, Qt::transparent));
}

void tst_LvGPXFullShapeListModel::changes()
{
    LvGPXFullShapeListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.fill(Shape::point);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setStrokeColor(Qt::red);
    model.setFillColor(Qt::red);
    model.setDisplayOptions(options(1));
    model.updateVisualization();
    QCOMPARE(changed.size(), qsizetype{4});
    QCOMPARE(reset.size(), qsizetype{0});
    for (const QList<QVariant>& arguments : std::as_const(changed)) {
        QCOMPARE(arguments.at(0).toModelIndex(), model.index(0, 0));
        QCOMPARE(arguments.at(1).toModelIndex(), model.index(8, 0));
        QCOMPARE(arguments.at(2).value<QList<int>>(), QList<int>{Qt::DecorationRole});
    }
}

void tst_LvGPXFullShapeListModel::inViews()
{
    LvGPXFullShapeListModel model;
    model.fill(Shape::point);
    model.setDisplayOptions(options(3));
    QListView view;
    view.setModel(&model);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.setCurrentIndex(model.index(4));
    model.setFillColor(Qt::green);
    QCOMPARE(view.currentIndex(), model.index(4));
    QVERIFY(view.selectionModel()->isSelected(model.index(4)));

    QComboBox box;
    box.setModel(&model);
    box.setCurrentIndex(3);
    model.setStrokeColor(Qt::green);
    QCOMPARE(box.currentIndex(), 3);
    QCOMPARE(box.currentText(), QStringLiteral("Punkt"));
    QVERIFY(!box.itemIcon(3).isNull());
}

LV_TEST_MAIN(tst_LvGPXFullShapeListModel)
#include "tst_LvGPXFullShapeListModel.moc"
