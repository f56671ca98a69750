// What a program outside the tree can write with the editing classes of the installed package.

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QListView>
#include <QMimeData>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTest>
#include <QToolButton>

#include <LvElidedLabel.h>
#include <LvGPXBeelineCreator.h>
#include <LvGPXFullShapeListModel.h>
#include <LvGPXMarkerShape.h>
#include <LvGPXTrackConfiguration.h>
#include <LvGPXTrackEditOptions.h>
#include <LvGPXTrackListModel.h>
#include <LvGPXTrackMultiFunctionDelegate.h>
#include <LvGPXTrackMultiFunctionDelegateWidget.h>
#include <LvGPXTrackSelection.h>
#include <LvGPXTrackShape.h>
#include <LvGeoArc.h>
#include <LvGeoArcEdit.h>
#include <LvTranslations.h>
#include <memory>

namespace
{

const LvGeoPosition berlin(52.52, 13.40);
const LvGeoPosition newYork(40.71, -74.01);

LvGPXTrackSelection beelines(const QStringList& names)
{
    LvGPXTrackSelection selection;
    for (const QString& name : names) {
        selection.addTrack(LvGPXBeelineCreator(berlin, newYork).createBeeline(name));
    }
    return selection;
}

} // namespace

class editing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void beeline();
    void trackList();
    void drop();
    void shapeList();
    void rows();
    void angle();
    void language();
};

void editing::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("package"));
    QCoreApplication::setApplicationName(QStringLiteral("client"));
    LvTranslations::install(QLocale(QLocale::German));
}

void editing::beeline()
{
    const LvGPXBeelineCreator creator(berlin, newYork);
    QCOMPARE(creator.createPoints().size(), creator.createIntermediatePoints().size() + 2);
    QVERIFY(creator.createIntermediatePoints().size() >= 31);
    const LvLongitude center = creator.findLogicalCenterLongitude();
    QVERIFY(creator.estimateOptimalLatitude(center).isNorthOf(berlin));
    QCOMPARE(creator.positions2trackPoints({berlin}).size(), 1);
    const LvGPXTrack track = creator.createBeeline(QStringLiteral("Atlantik"));
    QCOMPARE(track.description(), QStringLiteral("Fluglinie"));
    QVERIFY(track.hasShape(LvGPXTrackShape(4)));
}

void editing::trackList()
{
    LvGPXTrackListModel model(nullptr);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setSelection(beelines({"a", "b", "c"}));
    QCOMPARE(model.rowCount(QModelIndex()), 3);
    QCOMPARE(model.columnCount(QModelIndex()), 2);
    QCOMPARE(model.data(model.index(1, 0), Qt::DisplayRole).toString(), QStringLiteral("b"));
    QCOMPARE(model.trackAt(2).name(), QStringLiteral("c"));
    QCOMPARE(model.trackAt(model.index(0, 0)).name(), QStringLiteral("a"));
    QVERIFY(model.isValidRow(2) && !model.isValidRow(3));
    const LvGPXConfiguredTrackList tracks = model.tracks();
    model.setSelection(LvGPXTrackSelection(tracks));
    QCOMPARE(reset.size(), 1);
    model.addTracks(tracks);
    model.remove(model.index(5, 0));
    QCOMPARE(reset.size(), 3);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    LvGPXTrackConfiguration configuration = model.trackAt(0).configuration();
    configuration.setLineWidth(LvDistance(25.0));
    model.setConfiguration(0, configuration);
    model.setConfiguration(model.index(1, 0), configuration);
    model.setConfigurationToAll(configuration);
    QCOMPARE(changed.size(), model.rowCount(QModelIndex()));
    model.moveTrack(0, 2);
    QCOMPARE(model.trackAt(2).name(), QStringLiteral("a"));
}

void editing::drop()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(beelines({"a", "b", "c"}));
    QSignalSpy select(&model, &LvGPXTrackListModel::pleaseSelectTrack);
    const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0)}));
    QVERIFY(data->hasFormat(LvGPXTrackListModel::myMimeType));
    QVERIFY(model.dropMimeData(data.get(), Qt::MoveAction, -1, -1, QModelIndex()));
    QCOMPARE(model.trackAt(2).name(), QStringLiteral("a"));
    QCOMPARE(select.first().first().toInt(), 2);
}

void editing::shapeList()
{
    LvGPXFullShapeListModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QVERIFY(model.wouldBeInvisible());
    model.fill(LvGPXTrackShape(1));
    QCOMPARE(model.rowCount(QModelIndex()), 9);
    QCOMPARE(model.indexOf(LvGPXFullShape(LvGPXTrackShape(1), LvGPXMarkerShape(1025))), 0);
    QVERIFY(model.markerAt(0) == model.markerAt(model.index(0, 0)));
    model.setStrokeColor(Qt::red);
    model.setFillColor(Qt::blue);
    model.setDisplayOptions(LvGPXTrackDisplayOptions(2));
    QCOMPARE(model.effectiveStrokeColor(), QColor(Qt::transparent));
    QCOMPARE(model.effectiveFillColor(), QColor(Qt::blue));
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.updateVisualization();
    QCOMPARE(changed.size(), 1);
}

void editing::rows()
{
    LvGPXTrackListModel model(nullptr);
    model.setSelection(beelines({"a", "b"}));
    QListView view;
    auto* delegate = new LvGPXTrackMultiFunctionDelegate(
        &view, LvGPXTrackEditOption::EditButton | LvGPXTrackEditOption::DeleteButton);
    view.setModel(&model);
    view.setItemDelegate(delegate);
    view.show();
    QTRY_VERIFY(view.isPersistentEditorOpen(model.index(1, 0)));
    auto* row = qobject_cast<LvGPXTrackMultiFunctionDelegateWidget*>(view.indexWidget(model.index(1, 0)));
    QVERIFY(row != nullptr);
    const QList<QToolButton*> buttons = row->findChildren<QToolButton*>();
    QCOMPARE(buttons.size(), 2);
    QCOMPARE(buttons.first()->toolTip(), QStringLiteral("b bearbeiten"));
    QSignalSpy edit(delegate, &LvGPXTrackMultiFunctionDelegate::editItem);
    QTest::mouseClick(buttons.first(), Qt::LeftButton);
    QCOMPARE(edit.first().first().toInt(), 1);
    delegate->animate(1);
    QCOMPARE(row->findChild<LvElidedLabel*>()->animationState(), 1);
}

void editing::angle()
{
    LvGeoArcEdit edit(nullptr, false);
    edit.setGeoArc(LvGeoArc(-74.01));
    QCOMPARE(edit.findChild<QComboBox*>()->currentText(), QStringLiteral("West"));
    QCOMPARE(edit.geoArc(), LvGeoArc(-74.01));
    edit.findChild<QDoubleSpinBox*>()->setValue(0.0);
    QVERIFY(edit.geoArc() == LvGeoArc(-74.0));
}

void editing::language()
{
    QCOMPARE(LvTranslations::install(QLocale(QLocale::English)), QLocale::English);
    QCOMPARE(LvGPXTrackShape(4).humanReadable(LvGPXMarkerShape()), QStringLiteral("Line"));
    QCOMPARE(LvTranslations::install(QLocale(QLocale::German)), QLocale::German);
    QCOMPARE(LvGPXTrackShape(4).humanReadable(LvGPXMarkerShape()), QStringLiteral("Strecke"));
}

QTEST_MAIN(editing)
#include "editing.moc"
