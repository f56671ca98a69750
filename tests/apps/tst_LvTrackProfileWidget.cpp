#include "LvElidedLabel.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvTest.h"
#include "LvTrackLoader.h"
#include "LvTrackProfileWidget.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QStandardItemModel>

namespace
{

LvGPXTrack sample(const QString& name)
{
    return LvTrackLoader::load(LvTest::sampleFile(name)).tracks.at(0).track();
}

struct Parts {
    explicit Parts(const LvTrackProfileWidget& widget)
        : axis(widget.findChild<QComboBox*>(QStringLiteral("axis")))
        , readout(widget.findChild<LvElidedLabel*>(QStringLiteral("readout")))
        , plot(widget.findChild<LvTrackProfilePlot*>(QStringLiteral("plot")))
    {
    }

    [[nodiscard]] bool isTimeEnabled() const
    {
        return qobject_cast<QStandardItemModel*>(axis->model())->item(1)->isEnabled();
    }

    QComboBox* axis;
    LvElidedLabel* readout;
    LvTrackProfilePlot* plot;
};

} // namespace

class tst_LvTrackProfileWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutTrack();
    void axisChooser();
    void axisStaysPastATrackWithoutTimes();
    void userMovesTheCursor();
    void mapMovesTheCursor();
    void nearestAcrossTheDateLine();
    void newTrackTakesTheMarkAway();
    void accessibility();
};

void tst_LvTrackProfileWidget::withoutTrack()
{
    LvTrackProfileWidget widget;
    QVERIFY(!widget.isEnabled());
    widget.setMarkedPosition({51.8, 10.6});
    QCOMPARE(Parts(widget).plot->cursorIndex(), -1);
    widget.setTrack(sample("brocken-hike.gpx"));
    QVERIFY(widget.isEnabled());
    widget.clear();
    QVERIFY(!widget.isEnabled());
}

void tst_LvTrackProfileWidget::axisChooser()
{
    LvTrackProfileWidget widget;
    widget.setTrack(sample("brocken-hike.gpx"));
    widget.resize(600, 250);
    widget.show();
    const Parts parts(widget);
    QCOMPARE(parts.axis->currentText(), QStringLiteral("Entfernung"));
    const double byDistance = parts.plot->horizontalPixel(200);
    parts.axis->setFocus();
    QTest::keyClick(parts.axis, Qt::Key_Down);
    QCOMPARE(parts.axis->currentText(), QStringLiteral("Zeit"));
    QVERIFY(parts.plot->horizontalPixel(200) != byDistance);
    QTest::keyClick(parts.axis, Qt::Key_Up);
    QCOMPARE(parts.plot->horizontalPixel(200), byDistance);
}

void tst_LvTrackProfileWidget::axisStaysPastATrackWithoutTimes()
{
    LvTrackProfileWidget widget;
    const Parts parts(widget);
    widget.setTrack(sample("brocken-hike.gpx"));
    QVERIFY(parts.isTimeEnabled());
    parts.axis->setCurrentIndex(1);
    Q_EMIT parts.axis->activated(1);
    widget.setTrack(sample("lake-islands.gpx"));
    QVERIFY(!parts.isTimeEnabled());
    QCOMPARE(parts.axis->currentIndex(), 0);
    widget.setTrack(sample("brocken-hike.gpx"));
    QVERIFY(parts.isTimeEnabled());
    QCOMPARE(parts.axis->currentIndex(), 1);
}

void tst_LvTrackProfileWidget::userMovesTheCursor()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    LvTrackProfileWidget widget;
    const LvGPXTrack track = sample("brocken-hike.gpx");
    widget.setTrack(track);
    const Parts parts(widget);
    QSignalSpy spy(&widget, &LvTrackProfileWidget::positionHovered);
    QTest::keyClick(parts.plot, Qt::Key_Home);
    QCOMPARE(spy.size(), 1);
    QVERIFY(spy.takeFirst().first().value<LvGeoPosition>() == track.firstPoint());
    QTest::keyClick(parts.plot, Qt::Key_End);
    QVERIFY(spy.takeFirst().first().value<LvGeoPosition>() == track.lastPoint());
    const QStringList texts = parts.readout->fullText().split(QStringLiteral(" · "));
    QCOMPARE(texts.size(), 4);
    QCOMPARE(texts.at(0), QStringLiteral("13,09 km"));
    QCOMPARE(texts.at(1), QStringLiteral("4:27:45 h"));
    QCOMPARE(texts.at(2), QStringLiteral("612 m"));
    QVERIFY(texts.at(3).endsWith(QStringLiteral("km/h")));
    QTest::keyClick(parts.plot, Qt::Key_Escape);
    QVERIFY(!spy.takeFirst().first().value<LvGeoPosition>().isValid());
    QCOMPARE(parts.readout->fullText(), QString());
}

void tst_LvTrackProfileWidget::mapMovesTheCursor()
{
    LvTrackProfileWidget widget;
    const LvGPXTrack track = sample("brocken-hike.gpx");
    widget.setTrack(track);
    const Parts parts(widget);
    QSignalSpy spy(&widget, &LvTrackProfileWidget::positionHovered);
    const LvGeoPosition there = track.segments().at(0).trackPoints().at(120).position();
    widget.setMarkedPosition(there.moveNorthBy(0.005));
    QCOMPARE(parts.plot->cursorIndex(), 120);
    QVERIFY(!parts.readout->fullText().isEmpty());
    widget.setMarkedPosition({});
    QCOMPARE(parts.plot->cursorIndex(), -1);
    QVERIFY(parts.readout->fullText().isEmpty());
    QCOMPARE(spy.size(), 0); // or map and profile would call each other
}

void tst_LvTrackProfileWidget::nearestAcrossTheDateLine()
{
    const auto point = [](double longitude) {
        return LvGPXTrackPoint(LvGeoPosition(-17.0, longitude), 10, {}, {});
    };
    LvTrackProfileWidget widget;
    widget.setTrack(LvGPXTrack(
        {}, {}, {LvGPXTrackSegment(QList<LvGPXTrackPoint>{point(179.0), point(179.8), point(-179.0)})},
        LvGPXTrackShapeEnum::linestring));
    widget.setMarkedPosition({-17.0, -179.9});
    QCOMPARE(Parts(widget).plot->cursorIndex(), 1);
    widget.setMarkedPosition({-17.0, 180.1}); // another copy of the world
    QCOMPARE(Parts(widget).plot->cursorIndex(), 1);
}

void tst_LvTrackProfileWidget::newTrackTakesTheMarkAway()
{
    LvTrackProfileWidget widget;
    widget.setTrack(sample("brocken-hike.gpx"));
    QSignalSpy spy(&widget, &LvTrackProfileWidget::positionHovered);
    widget.setTrack(sample("brocken-hike.gpx"));
    QCOMPARE(spy.size(), 0);
    QTest::keyClick(Parts(widget).plot, Qt::Key_Home);
    widget.setTrack(sample("lake-islands.gpx"));
    QCOMPARE(spy.size(), 2);
    QVERIFY(!spy.last().first().value<LvGeoPosition>().isValid());
}

void tst_LvTrackProfileWidget::accessibility()
{
    LvTrackProfileWidget widget;
    widget.setTrack(sample("brocken-hike.gpx"));
    const Parts parts(widget);
    QVERIFY(!parts.axis->accessibleName().isEmpty());
    QVERIFY(!parts.plot->accessibleName().isEmpty());
    const QList<QLabel*> captions = widget.findChildren<QLabel*>();
    QCOMPARE(captions.size(), 1);
    QCOMPARE(captions.first()->buddy(), parts.axis);
    QTest::keyClick(parts.plot, Qt::Key_Home);
    QCOMPARE(parts.plot->accessibleDescription(), parts.readout->fullText());
    QVERIFY(!parts.plot->accessibleDescription().isEmpty());
}

LV_TEST_MAIN(tst_LvTrackProfileWidget)
#include "tst_LvTrackProfileWidget.moc"
