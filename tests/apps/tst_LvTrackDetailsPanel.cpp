#include "LvGPXConfiguredTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvTest.h"
#include "LvTrackDetailsPanel.h"
#include "LvTrackLoader.h"

#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalSpy>

namespace
{

LvGPXConfiguredTrack sample(const QString& name)
{
    return LvTrackLoader::load(LvTest::sampleFile(name)).tracks.at(0);
}

QString text(const LvTrackDetailsPanel& panel, const QString& name)
{
    const auto* label = panel.findChild<QLabel*>(name);
    return label != nullptr ? label->text() : QStringLiteral("no such label");
}

QLineEdit* nameEdit(const LvTrackDetailsPanel& panel)
{
    return panel.findChild<QLineEdit*>(QStringLiteral("name"));
}

} // namespace

class tst_LvTrackDetailsPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void values();
    void missingValues();
    void clear();
    void markupIsText();
    void editingTheName();
    void editingTheNameAndBack();
    void equalNameIsLeftAlone();
    void editName();
    void textsCanBeSelected();
    void accessibility();
};

void tst_LvTrackDetailsPanel::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void tst_LvTrackDetailsPanel::values()
{
    LvTrackDetailsPanel panel;
    panel.setTrack(sample("brocken-hike.gpx"));
    QCOMPARE(nameEdit(panel)->text(), QStringLiteral("Over the Brocken"));
    QCOMPARE(text(panel, "description"), QStringLiteral("From Torfhaus over the summit down to Schierke"));
    QCOMPARE(text(panel, "shape"), QStringLiteral("Strecke"));
    QVERIFY(text(panel, "points").startsWith(QStringLiteral("369 in 2 ")));
    QCOMPARE(text(panel, "length"), QStringLiteral("13,09 km"));
    QCOMPARE(text(panel, "start"), QStringLiteral("15.06.24, 08:05:00"));
    QCOMPARE(text(panel, "end"), QStringLiteral("15.06.24, 12:32:45"));
    QCOMPARE(text(panel, "duration"), QStringLiteral("4:27:45 h"));
    QCOMPARE(text(panel, "movingTime"), QStringLiteral("3:37:45 h"));
    QCOMPARE(text(panel, "meanSpeed"), QStringLiteral("2,9 km/h"));
    QCOMPARE(text(panel, "movingSpeed"), QStringLiteral("3,6 km/h"));
    QVERIFY(text(panel, "highestSpeed").endsWith(QStringLiteral(" km/h")));
    QCOMPARE(text(panel, "ascent"), QStringLiteral("352 m"));
    QCOMPARE(text(panel, "descent"), QStringLiteral("544 m"));
    QCOMPARE(text(panel, "elevations"), QStringLiteral("612 m bis 1.141 m"));
    QVERIFY(text(panel, "southWest").startsWith(QStringLiteral("51.76400°")));
    QVERIFY(text(panel, "northEast").startsWith(QStringLiteral("51.80260°")));
}

void tst_LvTrackDetailsPanel::missingValues()
{
    LvTrackDetailsPanel panel;
    panel.setTrack(sample("brocken-hike.gpx"));
    panel.setTrack(sample("lake-islands.gpx"));
    for (const char* name : {"description", "start", "end", "duration", "movingTime", "meanSpeed",
                             "movingSpeed", "highestSpeed", "ascent", "descent", "elevations"}) {
        QCOMPARE(text(panel, name), QStringLiteral("–"));
    }
    QCOMPARE(text(panel, "shape"), QStringLiteral("Fläche"));
    QCOMPARE(text(panel, "points"), QStringLiteral("271"));
}

void tst_LvTrackDetailsPanel::clear()
{
    LvTrackDetailsPanel panel;
    QVERIFY(!panel.widget()->isEnabled());
    panel.setTrack(sample("brocken-hike.gpx"));
    QVERIFY(panel.widget()->isEnabled());
    QSignalSpy spy(&panel, &LvTrackDetailsPanel::nameEdited);
    panel.clear();
    QVERIFY(!panel.widget()->isEnabled());
    QCOMPARE(text(panel, "length"), QStringLiteral("–"));
    QCOMPARE(nameEdit(panel)->text(), QString());
    Q_EMIT nameEdit(panel)->editingFinished();
    QCOMPARE(spy.size(), 0);
    // The captions stay.
    QVERIFY(panel.findChildren<QLabel*>(QString()).size() > 0);
    int captions = 0;
    for (const QLabel* label : panel.findChildren<QLabel*>()) {
        captions += label->text().endsWith(u':') ? 1 : 0;
    }
    QCOMPARE(captions, 17);
}

void tst_LvTrackDetailsPanel::markupIsText()
{
    const LvGPXTrack track(QStringLiteral("<b>n</b>"), QStringLiteral("<img src=x>"),
                           {LvGPXTrackSegment(LvGPXTrackPoint({50.0, 8.0}, 0, {}, {}))},
                           LvGPXTrackShapeEnum::point);
    LvTrackDetailsPanel panel;
    panel.setTrack(LvGPXConfiguredTrack(track, {}));
    QCOMPARE(text(panel, "description"), QStringLiteral("<img src=x>"));
    QCOMPARE(panel.findChild<QLabel*>("description")->textFormat(), Qt::PlainText);
}

void tst_LvTrackDetailsPanel::editingTheName()
{
    LvTrackDetailsPanel panel;
    panel.setTrack(sample("brocken-hike.gpx"));
    QSignalSpy spy(&panel, &LvTrackDetailsPanel::nameEdited);
    QTest::keyClick(nameEdit(panel), Qt::Key_Return);
    QCOMPARE(spy.size(), 0); // nothing changed
    nameEdit(panel)->selectAll();
    QTest::keyClicks(nameEdit(panel), QStringLiteral("Brocken"));
    QCOMPARE(spy.size(), 0);
    QTest::keyClick(nameEdit(panel), Qt::Key_Return);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toString(), QStringLiteral("Brocken"));
    QTest::keyClick(nameEdit(panel), Qt::Key_Return);
    QCOMPARE(spy.size(), 1);
}

void tst_LvTrackDetailsPanel::editingTheNameAndBack()
{
    LvTrackDetailsPanel panel;
    panel.setTrack(sample("brocken-hike.gpx"));
    QSignalSpy spy(&panel, &LvTrackDetailsPanel::nameEdited);
    nameEdit(panel)->selectAll();
    QTest::keyClicks(nameEdit(panel), QStringLiteral("x"));
    QTest::keyClick(nameEdit(panel), Qt::Key_Escape);
    QCOMPARE(nameEdit(panel)->text(), QStringLiteral("Over the Brocken"));
    QTest::keyClick(nameEdit(panel), Qt::Key_Return);
    QCOMPARE(spy.size(), 0);
}

void tst_LvTrackDetailsPanel::equalNameIsLeftAlone()
{
    LvTrackDetailsPanel panel;
    LvGPXConfiguredTrack track = sample("brocken-hike.gpx");
    panel.setTrack(track);
    nameEdit(panel)->setText(QStringLiteral("half a na"));
    track.setLineColor(Qt::red);
    panel.setTrack(track);
    QCOMPARE(nameEdit(panel)->text(), QStringLiteral("half a na"));
    panel.setTrack(sample("lake-islands.gpx"));
    QCOMPARE(nameEdit(panel)->text(), sample("lake-islands.gpx").name());
}

void tst_LvTrackDetailsPanel::editName()
{
    LvTrackDetailsPanel panel;
    panel.setTrack(sample("brocken-hike.gpx"));
    panel.resize(250, 100);
    panel.show();
    panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    panel.editName();
    QVERIFY(nameEdit(panel)->hasFocus());
    QCOMPARE(nameEdit(panel)->selectedText(), QStringLiteral("Over the Brocken"));
}

void tst_LvTrackDetailsPanel::textsCanBeSelected()
{
    const LvTrackDetailsPanel panel;
    for (const QLabel* label : panel.findChildren<QLabel*>(QRegularExpression(QStringLiteral(".+")))) {
        QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        QVERIFY(label->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
    }
}

void tst_LvTrackDetailsPanel::accessibility()
{
    const LvTrackDetailsPanel panel;
    QVERIFY(!nameEdit(panel)->accessibleName().isEmpty());
    for (const QLabel* label : panel.findChildren<QLabel*>(QRegularExpression(QStringLiteral(".+")))) {
        QVERIFY2(!label->accessibleName().isEmpty(), qPrintable(label->objectName()));
    }
}

LV_TEST_MAIN(tst_LvTrackDetailsPanel)
#include "tst_LvTrackDetailsPanel.moc"
