#include "LvEditorSettings.h"
#include "LvPreferencesDocuments.h"
#include "LvTest.h"

#include <QRadioButton>

class tst_LvPreferencesDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAndWrites_data();
    void readsAndWrites();
    void revert();
};

void tst_LvPreferencesDocuments::readsAndWrites_data()
{
    QTest::addColumn<bool>("isInline");
    QTest::newRow("in the document") << true;
    QTest::newRow("separate files") << false;
}

void tst_LvPreferencesDocuments::readsAndWrites()
{
    QFETCH(bool, isInline);
    using Storage = LvTrackDocumentFile::TrackStorage;
    LvEditorSettings* settings = LvEditorSettings::instance();
    settings->setTrackStorage(isInline ? Storage::Inline : Storage::SeparateFiles);
    LvPreferencesDocuments page;
    page.readFromConfig();
    auto* inlineButton = page.findChild<QRadioButton*>(QStringLiteral("inline"));
    auto* filesButton = page.findChild<QRadioButton*>(QStringLiteral("separateFiles"));
    QCOMPARE(inlineButton->isChecked(), isInline);
    QCOMPARE(filesButton->isChecked(), !isInline);
    (isInline ? filesButton : inlineButton)->click();
    QCOMPARE(settings->trackStorage() == Storage::Inline, isInline); // not before it is written
    page.writeToConfig();
    QCOMPARE(settings->trackStorage() == Storage::Inline, !isInline);
}

void tst_LvPreferencesDocuments::revert()
{
    LvEditorSettings::instance()->setTrackStorage(LvTrackDocumentFile::TrackStorage::Inline);
    LvPreferencesDocuments page;
    page.readFromConfig();
    page.findChild<QRadioButton*>(QStringLiteral("separateFiles"))->click();
    page.revertChanges();
    QVERIFY(page.findChild<QRadioButton*>(QStringLiteral("inline"))->isChecked());
    QVERIFY(page.checkLeaveCondition());
}

LV_TEST_MAIN(tst_LvPreferencesDocuments)
#include "tst_LvPreferencesDocuments.moc"
