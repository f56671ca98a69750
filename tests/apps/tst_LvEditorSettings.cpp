#include "LvEditorSettings.h"
#include "LvTest.h"

#include <QSettings>
#include <QSignalSpy>

using TrackStorage = LvTrackDocumentFile::TrackStorage;

class tst_LvEditorSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void defaults();
    void savedAtOnce();
    void loadedFromTheStore();
    void unusableValues();
    void changedOnlyWhenChanged();
    void saveWritesAll();

private:
    LvEditorSettings* mySettings = nullptr;
};

void tst_LvEditorSettings::init()
{
    QSettings().clear();
    mySettings = LvEditorSettings::instance();
    mySettings->loadSettings();
}

void tst_LvEditorSettings::defaults()
{
    QCOMPARE(mySettings->mapSource(), QStringLiteral("builtin"));
    QVERIFY(mySettings->attribution().isEmpty());
    QCOMPARE(mySettings->trackStorage(), TrackStorage::Inline);
    QVERIFY(mySettings->windowGeometry().isEmpty());
    QVERIFY(mySettings->windowState().isEmpty());
    QVERIFY(mySettings->lastDirectory().isEmpty());
}

void tst_LvEditorSettings::savedAtOnce()
{
    mySettings->setMapSource(QStringLiteral("none"));
    mySettings->setAttribution(QStringLiteral("© Ämter"));
    mySettings->setTrackStorage(TrackStorage::SeparateFiles);
    mySettings->setWindowGeometry(QByteArray("\0g", 2));
    mySettings->setWindowState(QByteArray("\xffs", 2));
    mySettings->setLastDirectory(QStringLiteral("/somewhere"));
    const QSettings store;
    QCOMPARE(store.value("mapSource").toString(), QStringLiteral("none"));
    QCOMPARE(store.value("mapAttribution").toString(), QStringLiteral("© Ämter"));
    QCOMPARE(store.value("separateTrackFiles").toBool(), true);
    QCOMPARE(store.value("windowGeometry").toByteArray(), QByteArray("\0g", 2));
    QCOMPARE(store.value("windowState").toByteArray(), QByteArray("\xffs", 2));
    QCOMPARE(store.value("lastDirectory").toString(), QStringLiteral("/somewhere"));
}

void tst_LvEditorSettings::loadedFromTheStore()
{
    QSettings store;
    store.setValue("mapSource", "/tiles");
    store.setValue("mapAttribution", "me");
    store.setValue("separateTrackFiles", "true");
    store.setValue("lastDirectory", "/here");
    mySettings->loadSettings();
    QCOMPARE(mySettings->mapSource(), QStringLiteral("/tiles"));
    QCOMPARE(mySettings->attribution(), QStringLiteral("me"));
    QCOMPARE(mySettings->trackStorage(), TrackStorage::SeparateFiles);
    QCOMPARE(mySettings->lastDirectory(), QStringLiteral("/here"));
}

void tst_LvEditorSettings::unusableValues()
{
    QSettings store;
    store.setValue("mapSource", QVariantMap{{"a", 1}});
    store.setValue("separateTrackFiles", QVariantMap{{"a", 1}});
    mySettings->loadSettings();
    QCOMPARE(mySettings->mapSource(), QStringLiteral("builtin"));
    QCOMPARE(mySettings->trackStorage(), TrackStorage::Inline);
}

void tst_LvEditorSettings::changedOnlyWhenChanged()
{
    QSignalSpy spy(mySettings, &LvEditorSettings::changed);
    mySettings->setMapSource(QStringLiteral("builtin"));
    mySettings->setAttribution(QString());
    mySettings->setTrackStorage(TrackStorage::Inline);
    QCOMPARE(spy.count(), 0);
    mySettings->setMapSource(QStringLiteral("none"));
    mySettings->setAttribution(QStringLiteral("me"));
    mySettings->setTrackStorage(TrackStorage::SeparateFiles);
    QCOMPARE(spy.count(), 3);
    mySettings->setWindowGeometry("g");
    mySettings->setLastDirectory(QStringLiteral("/here"));
    QCOMPARE(spy.count(), 3);
}

void tst_LvEditorSettings::saveWritesAll()
{
    mySettings->saveSettings();
    QCOMPARE(QSettings().allKeys().size(), 6);
}

LV_TEST_MAIN(tst_LvEditorSettings)
#include "tst_LvEditorSettings.moc"
