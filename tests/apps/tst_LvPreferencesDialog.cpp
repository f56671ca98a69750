#include "LvEditorSettings.h"
#include "LvGeoLocationSettings.h"
#include "LvPreferencesBox.h"
#include "LvPreferencesDialog.h"
#include "LvTest.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>

namespace
{

/// Notes what the dialog asks of it.
class NotingPage : public LvPreferencesBox
{
public:
    NotingPage(const QString& name, int type, QStringList& notes)
        : LvPreferencesBox(name, type)
        , myNotes(notes)
    {
    }

    void readFromConfig() override { myNotes.append(title() + QStringLiteral(" read")); }

    void writeToConfig() override { myNotes.append(title() + QStringLiteral(" write")); }

    void revertChanges() override { myNotes.append(title() + QStringLiteral(" revert")); }

    bool checkLeaveCondition() override { return canBeLeft; }

    bool canBeLeft = true;

private:
    QStringList& myNotes;
};

/// Two pages on the first tab, one on the second.
struct Dialog : LvPreferencesDialog {
    Dialog()
    {
        addPage(first, QStringLiteral("one"));
        addPage(second, QStringLiteral("two"));
        addPage(third, QStringLiteral("ignored"));
        tabs = findChild<QTabWidget*>(QStringLiteral("tabs"));
    }

    void click(QDialogButtonBox::StandardButton button)
    {
        findChild<QDialogButtonBox*>()->button(button)->click();
    }

    QStringList takeNotes() { return std::exchange(notes, {}); }

    QStringList notes;
    NotingPage* first = new NotingPage(QStringLiteral("A"), 3, notes);
    NotingPage* second = new NotingPage(QStringLiteral("B"), 5, notes);
    NotingPage* third = new NotingPage(QStringLiteral("C"), 3, notes);
    QTabWidget* tabs;
};

const QStringList allRead{"A read", "B read", "C read"};
const QStringList allWritten{"A write", "B write", "C write"};
const QStringList allReverted{"A revert", "B revert", "C revert"};

} // namespace

class tst_LvPreferencesDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groupsByType();
    void readsWhenShown();
    void ok();
    void apply();
    void cancel_data();
    void cancel();
    void resetRevertsTheTab();
    void tabCannotBeLeft();
    void applyShowsThePageThatCannotBeLeft();
    void standardPages();
};

void tst_LvPreferencesDialog::groupsByType()
{
    Dialog dialog;
    QCOMPARE(dialog.tabs->count(), 2);
    QCOMPARE(dialog.tabs->tabText(0), QStringLiteral("one"));
    QCOMPARE(dialog.tabs->tabText(1), QStringLiteral("two"));
    QVERIFY(dialog.tabs->widget(0)->isAncestorOf(dialog.first));
    QVERIFY(dialog.tabs->widget(0)->isAncestorOf(dialog.third));
    QVERIFY(dialog.tabs->widget(1)->isAncestorOf(dialog.second));
}

void tst_LvPreferencesDialog::readsWhenShown()
{
    Dialog dialog;
    QVERIFY(dialog.takeNotes().isEmpty());
    dialog.show();
    QCOMPARE(dialog.takeNotes(), allRead);
    dialog.hide();
    dialog.show();
    QCOMPARE(dialog.takeNotes(), allRead);
}

void tst_LvPreferencesDialog::ok()
{
    Dialog dialog;
    dialog.show();
    dialog.takeNotes();
    QSignalSpy spy(&dialog, &LvPreferencesDialog::applied);
    dialog.click(QDialogButtonBox::Ok);
    QCOMPARE(dialog.takeNotes(), allWritten);
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(spy.size(), 1);
}

void tst_LvPreferencesDialog::apply()
{
    Dialog dialog;
    dialog.show();
    dialog.takeNotes();
    dialog.click(QDialogButtonBox::Apply);
    QCOMPARE(dialog.takeNotes(), allWritten);
    QVERIFY(dialog.isVisible());
}

void tst_LvPreferencesDialog::cancel_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("escape") << 1;
    QTest::newRow("close") << 2;
}

void tst_LvPreferencesDialog::cancel()
{
    QFETCH(int, way);
    Dialog dialog;
    dialog.first->canBeLeft = false; // no reason to stay when everything is dropped
    dialog.show();
    dialog.takeNotes();
    QSignalSpy spy(&dialog, &LvPreferencesDialog::applied);
    if (way == 0) {
        dialog.click(QDialogButtonBox::Cancel);
    } else if (way == 1) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
    } else {
        dialog.close();
    }
    QCOMPARE(dialog.takeNotes(), allReverted);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(spy.size(), 0);
}

void tst_LvPreferencesDialog::resetRevertsTheTab()
{
    Dialog dialog;
    dialog.show();
    dialog.takeNotes();
    dialog.click(QDialogButtonBox::Reset);
    QCOMPARE(dialog.takeNotes(), (QStringList{"A revert", "C revert"}));
    dialog.tabs->setCurrentIndex(1);
    dialog.click(QDialogButtonBox::Reset);
    QCOMPARE(dialog.takeNotes(), QStringList{"B revert"});
    QVERIFY(dialog.isVisible());
}

void tst_LvPreferencesDialog::tabCannotBeLeft()
{
    Dialog dialog;
    dialog.show();
    dialog.third->canBeLeft = false;
    dialog.tabs->setCurrentIndex(1);
    QCOMPARE(dialog.tabs->currentIndex(), 0);
    dialog.third->canBeLeft = true;
    dialog.tabs->setCurrentIndex(1);
    QCOMPARE(dialog.tabs->currentIndex(), 1);
    dialog.second->canBeLeft = false;
    dialog.tabs->setCurrentIndex(0);
    QCOMPARE(dialog.tabs->currentIndex(), 1);
}

void tst_LvPreferencesDialog::applyShowsThePageThatCannotBeLeft()
{
    Dialog dialog;
    dialog.show();
    dialog.takeNotes();
    dialog.second->canBeLeft = false; // on the tab that is not shown
    QSignalSpy spy(&dialog, &LvPreferencesDialog::applied);
    dialog.click(QDialogButtonBox::Ok);
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.tabs->currentIndex(), 1);
    QVERIFY(dialog.takeNotes().isEmpty()); // nothing at all is written
    QCOMPARE(spy.size(), 0);
    dialog.second->canBeLeft = true;
    dialog.tabs->setCurrentIndex(0);
    QCOMPARE(dialog.tabs->currentIndex(), 0);
    dialog.click(QDialogButtonBox::Ok);
    QCOMPARE(dialog.takeNotes(), allWritten);
}

void tst_LvPreferencesDialog::standardPages()
{
    LvGeoLocationSettings::instance()->setInstantlyAddLocations(true);
    LvEditorSettings::instance()->setTrackStorage(LvTrackDocumentFile::TrackStorage::Inline);
    LvPreferencesDialog dialog;
    dialog.addStandardPages();
    dialog.show();
    QCOMPARE(dialog.findChild<QTabWidget*>()->count(), 2);
    auto* locations = dialog.findChild<QCheckBox*>(QStringLiteral("myInstantlyAddLocations"));
    auto* separateFiles = dialog.findChild<QRadioButton*>(QStringLiteral("separateFiles"));
    QVERIFY(locations->isChecked());
    locations->click();
    separateFiles->click();
    QVERIFY(LvGeoLocationSettings::instance()->instantlyAddLocations());
    dialog.accept();
    QVERIFY(!LvGeoLocationSettings::instance()->instantlyAddLocations());
    QVERIFY(LvEditorSettings::instance()->trackStorage() == LvTrackDocumentFile::TrackStorage::SeparateFiles);

    dialog.show();
    locations->click();
    dialog.reject();
    QVERIFY(!LvGeoLocationSettings::instance()->instantlyAddLocations());
    QVERIFY(!locations->isChecked());
}

LV_TEST_MAIN(tst_LvPreferencesDialog)
#include "tst_LvPreferencesDialog.moc"
