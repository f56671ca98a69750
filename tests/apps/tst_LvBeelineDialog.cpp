#include "LvBeelineDialog.h"
#include "LvGPXBeelineCreator.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoPositionSamples.h"
#include "LvPlaceEdit.h"
#include "LvTest.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

namespace
{

const LvGeoPosition berlin(52.52, 13.40);
const LvGeoPosition newYork(40.71, -74.01);

struct Dialog : LvBeelineDialog {
    Dialog()
        : start(findChild<LvPlaceEdit*>(QStringLiteral("start")))
        , end(findChild<LvPlaceEdit*>(QStringLiteral("end")))
        , name(findChild<QLineEdit*>(QStringLiteral("name")))
        , summary(findChild<QLabel*>(QStringLiteral("summary")))
        , ok(findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok))
    {
    }

    static void choose(LvPlaceEdit* place, LvGeoPositionSamplesEnum sample)
    {
        auto* combo = place->findChild<QComboBox*>(QStringLiteral("samples"));
        combo->setCurrentIndex(static_cast<int>(sample) + 1);
        Q_EMIT combo->activated(combo->currentIndex());
    }

    LvPlaceEdit* start;
    LvPlaceEdit* end;
    QLineEdit* name;
    QLabel* summary;
    QPushButton* ok;
};

} // namespace

class tst_LvBeelineDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void needsTwoPlaces();
    void needsTwoDifferentPlaces();
    void track();
    void summary();
    void suggestsAName();
    void keepsAName();
    void picks();
    void pickedFromAnotherWorld();
    void cancelledPick();
    void acceptsOnlyWhenComplete();
    void unknownPlaceNumber();
};

void tst_LvBeelineDialog::init()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void tst_LvBeelineDialog::needsTwoPlaces()
{
    Dialog dialog;
    QVERIFY(!dialog.ok->isEnabled());
    QVERIFY(!dialog.beeline().isValid());
    dialog.setPlace(LvBeelineDialog::Start, berlin);
    QVERIFY(!dialog.ok->isEnabled());
    QVERIFY(!dialog.beeline().isValid());
    dialog.setPlace(LvBeelineDialog::End, newYork);
    QVERIFY(dialog.ok->isEnabled());
    QVERIFY(dialog.beeline().isValid());
    dialog.setPlace(LvBeelineDialog::Start, {});
    QVERIFY(!dialog.ok->isEnabled());
}

void tst_LvBeelineDialog::needsTwoDifferentPlaces()
{
    Dialog dialog;
    dialog.setPlace(LvBeelineDialog::Start, berlin);
    dialog.setPlace(LvBeelineDialog::End, berlin);
    QVERIFY(!dialog.ok->isEnabled());
    QVERIFY(!dialog.beeline().isValid());
    QVERIFY(dialog.summary->text().contains(QStringLiteral("derselbe")));
}

void tst_LvBeelineDialog::track()
{
    Dialog dialog;
    dialog.setPlace(LvBeelineDialog::Start, berlin);
    dialog.setPlace(LvBeelineDialog::End, newYork);
    dialog.name->setText(QStringLiteral("  Heimflug "));
    const LvGPXTrack track = dialog.beeline();
    QCOMPARE(track.name(), QStringLiteral("Heimflug"));
    QVERIFY(track.allPoints() == LvGPXBeelineCreator(berlin, newYork).createPoints());
    QVERIFY(track.countPoints() > 30);
    QVERIFY(track.firstPoint() == berlin);
    QVERIFY(track.lastPoint() == newYork);
    dialog.name->clear();
    QCOMPARE(dialog.beeline().name(), QStringLiteral("Fluglinie"));
}

void tst_LvBeelineDialog::summary()
{
    Dialog dialog;
    dialog.setPlace(LvBeelineDialog::Start, berlin);
    dialog.setPlace(LvBeelineDialog::End, newYork);
    const auto points = LvGPXBeelineCreator(berlin, newYork).createIntermediatePoints().size();
    QCOMPARE(dialog.summary->text(),
             QStringLiteral("Entfernung: %1 km, dazwischen %2 Punkte.")
                 .arg(QLocale().toString(berlin.distance(newYork), 'f', 0), QString::number(points)));
}

void tst_LvBeelineDialog::suggestsAName()
{
    Dialog dialog;
    QCOMPARE(dialog.name->text(), QStringLiteral("Fluglinie"));
    Dialog::choose(dialog.start, LvGeoPositionSamplesEnum::Bremen);
    QCOMPARE(dialog.name->text(), QStringLiteral("Fluglinie"));
    Dialog::choose(dialog.end, LvGeoPositionSamplesEnum::NewYork);
    QCOMPARE(dialog.name->text(), QStringLiteral("Bremen – New York"));
    dialog.setPlace(LvBeelineDialog::Start, berlin);
    QCOMPARE(dialog.name->text(), QStringLiteral("Fluglinie"));
}

void tst_LvBeelineDialog::keepsAName()
{
    Dialog dialog;
    dialog.name->selectAll();
    QTest::keyClicks(dialog.name, QStringLiteral("Urlaub"));
    Dialog::choose(dialog.start, LvGeoPositionSamplesEnum::Bremen);
    Dialog::choose(dialog.end, LvGeoPositionSamplesEnum::NewYork);
    QCOMPARE(dialog.name->text(), QStringLiteral("Urlaub"));
    QCOMPARE(dialog.beeline().name(), QStringLiteral("Urlaub"));
}

void tst_LvBeelineDialog::picks()
{
    Dialog dialog;
    QVERIFY(!dialog.isModal());
    QSignalSpy spy(&dialog, &LvBeelineDialog::pickRequested);
    dialog.end->findChild<QPushButton*>(QStringLiteral("pick"))->click();
    QCOMPARE(spy.takeFirst().first().toInt(), static_cast<int>(LvBeelineDialog::End));
    dialog.setPicked(newYork);
    QVERIFY(dialog.end->position() == newYork);
    QVERIFY(!dialog.start->position().isValid());
    dialog.start->findChild<QPushButton*>(QStringLiteral("pick"))->click();
    QCOMPARE(spy.takeFirst().first().toInt(), static_cast<int>(LvBeelineDialog::Start));
    dialog.setPicked(berlin);
    QVERIFY(dialog.start->position() == berlin);
    QVERIFY(dialog.end->position() == newYork);
}

void tst_LvBeelineDialog::pickedFromAnotherWorld()
{
    Dialog dialog;
    dialog.setPicked({10.0, 190.0});
    QVERIFY(dialog.start->position() == LvGeoPosition(10.0, -170.0));
}

void tst_LvBeelineDialog::cancelledPick()
{
    Dialog dialog;
    dialog.setPlace(LvBeelineDialog::Start, berlin);
    dialog.setPicked({});
    QVERIFY(dialog.start->position() == berlin);
}

void tst_LvBeelineDialog::acceptsOnlyWhenComplete()
{
    Dialog dialog;
    dialog.show();
    dialog.accept();
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
    dialog.setPlace(LvBeelineDialog::Start, berlin);
    dialog.setPlace(LvBeelineDialog::End, newYork);
    dialog.ok->click();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    QVERIFY(dialog.beeline().isValid());
}

void tst_LvBeelineDialog::unknownPlaceNumber()
{
    Dialog dialog;
    dialog.setPlace(2, berlin);
    dialog.setPlace(-1, berlin);
    QVERIFY(!dialog.start->position().isValid());
    QVERIFY(!dialog.end->position().isValid());
}

LV_TEST_MAIN(tst_LvBeelineDialog)
#include "tst_LvBeelineDialog.moc"
