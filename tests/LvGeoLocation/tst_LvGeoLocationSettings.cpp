#include "LvGeoLocationSettings.h"
#include "LvTest.h"

#include <QSettings>
#include <QSignalSpy>

#include <atomic>
#include <thread>
#include <vector>

namespace
{

const QString instantlyKey = QStringLiteral("instantlyAddLocations");
const QString configurationKey = QStringLiteral("defaultTrackConfiguration");

LvGPXTrackConfiguration configurationOf(int smoothingSteps,
                                        LvGPXTrackShapeEnum shape = LvGPXTrackShapeEnum::automatic)
{
    LvGPXTrackConfiguration configuration;
    configuration.setSmoothingSteps(smoothingSteps);
    configuration.setTrackShape(shape);
    return configuration;
}

LvGPXTrackConfiguration storedConfiguration()
{
    return LvGPXTrackConfiguration::deserialize(QSettings().value(configurationKey).toString());
}

LvGeoLocationSettings* settings()
{
    return LvGeoLocationSettings::instance();
}

} // namespace

class tst_LvGeoLocationSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstUse();
    void init();
    void emptyStore();
    void singleton();
    void signalOnChange();
    void changeIsNotSaved();
    void saveSettings();
    void savesConfigurationAtOnce();
    void equalConfigurationIsNotSaved();
    void restartForgetsTheShape();
    void unreadableStore();
    void loadingSendsNoSignal();
    void receiversMayAsk();
    void threads();
};

// The first test finds the process without an instance, and a store from an earlier process.
void tst_LvGeoLocationSettings::firstUse()
{
    QSettings store;
    store.setValue(instantlyKey, false);
    store.setValue(configurationKey, configurationOf(7, LvGPXTrackShapeEnum::point).serialize());
    store.sync();

    std::thread([] { settings(); }).join(); // first used outside the application's thread
    QCOMPARE(settings()->thread(), qApp->thread());
    QCOMPARE(settings()->instantlyAddLocations(), false);
    QVERIFY(settings()->defaultTrackConfiguration() == configurationOf(7));
    QVERIFY(storedConfiguration() == configurationOf(7)); // the normalised form went into the store
}

void tst_LvGeoLocationSettings::init()
{
    QSettings().clear();
    if (qstrcmp(QTest::currentTestFunction(), "firstUse") != 0) {
        settings()->loadSettings();
    }
}

void tst_LvGeoLocationSettings::emptyStore()
{
    QCOMPARE(settings()->instantlyAddLocations(), true);
    QVERIFY(settings()->defaultTrackConfiguration() == LvGPXTrackConfiguration::defaultValue());
    QVERIFY(QSettings().allKeys().isEmpty()); // the defaults need no place in the store
}

void tst_LvGeoLocationSettings::singleton()
{
    QCOMPARE(LvGeoLocationSettings::instance(), settings());
    QCOMPARE(settings()->metaObject()->className(), "LvGeoLocationSettings");
    QVERIFY(qobject_cast<LvSettings*>(static_cast<QObject*>(settings())) != nullptr);
}

void tst_LvGeoLocationSettings::signalOnChange()
{
    QSignalSpy spy(settings(), &LvGeoLocationSettings::instantlyAddLocationsDisabled);
    settings()->setInstantlyAddLocations(false);
    settings()->setInstantlyAddLocations(false);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.takeFirst(), QVariantList{true});
    settings()->setInstantlyAddLocations(true);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.takeFirst(), QVariantList{false});
    QCOMPARE(settings()->instantlyAddLocations(), true);
}

void tst_LvGeoLocationSettings::changeIsNotSaved()
{
    settings()->setInstantlyAddLocations(false);
    QVERIFY(!QSettings().contains(instantlyKey));
    settings()->loadSettings();
    QCOMPARE(settings()->instantlyAddLocations(), true);
}

void tst_LvGeoLocationSettings::saveSettings()
{
    settings()->setInstantlyAddLocations(false);
    settings()->saveSettings();
    QCOMPARE(QSettings().value(instantlyKey).toBool(), false);
    QVERIFY(QSettings().contains(instantlyKey));
    QVERIFY(storedConfiguration() == LvGPXTrackConfiguration::defaultValue());
    settings()->setInstantlyAddLocations(true);
    settings()->loadSettings();
    QCOMPARE(settings()->instantlyAddLocations(), false);
}

void tst_LvGeoLocationSettings::savesConfigurationAtOnce()
{
    settings()->setInstantlyAddLocations(false); // not saved until now
    settings()->setDefaultTrackConfiguration(configurationOf(3));
    QVERIFY(storedConfiguration() == configurationOf(3));
    QVERIFY(QSettings().value(configurationKey).toString().contains("<config"));
    QVERIFY(QSettings().contains(instantlyKey)); // both are saved
    QCOMPARE(QSettings().value(instantlyKey).toBool(), false);
    QVERIFY(settings()->defaultTrackConfiguration() == configurationOf(3));
}

void tst_LvGeoLocationSettings::equalConfigurationIsNotSaved()
{
    settings()->setDefaultTrackConfiguration(configurationOf(3));
    QSettings().clear();
    settings()->setDefaultTrackConfiguration(configurationOf(3));
    QVERIFY(QSettings().allKeys().isEmpty());
    LvGPXTrackConfiguration sameText = configurationOf(3);
    sameText.setLineWidth(10.5); // is written as 10
    settings()->setDefaultTrackConfiguration(sameText);
    QVERIFY(QSettings().allKeys().isEmpty());
    QCOMPARE(settings()->defaultTrackConfiguration().lineWidth().value(), 10.0);
}

void tst_LvGeoLocationSettings::restartForgetsTheShape()
{
    settings()->setDefaultTrackConfiguration(configurationOf(4, LvGPXTrackShapeEnum::point));
    QVERIFY(settings()->defaultTrackConfiguration().trackShape() == LvGPXTrackShapeEnum::point);
    QVERIFY(storedConfiguration().trackShape() == LvGPXTrackShapeEnum::point);
    settings()->loadSettings();
    QVERIFY(settings()->defaultTrackConfiguration() == configurationOf(4));
    QVERIFY(storedConfiguration() == configurationOf(4));
}

void tst_LvGeoLocationSettings::unreadableStore()
{
    QSettings().setValue(configurationKey, QStringLiteral("<config><pensize>"));
    settings()->loadSettings();
    const LvGPXTrackConfiguration read = settings()->defaultTrackConfiguration();
    QCOMPARE(read.lineWidth().value(), 10.0);
    QCOMPARE(read.haloWidth().value(), 20.0); // as an empty element reads, not the built-in default
    QVERIFY(storedConfiguration() == read);
}

void tst_LvGeoLocationSettings::loadingSendsNoSignal()
{
    QSettings().setValue(instantlyKey, false);
    QSignalSpy spy(settings(), &LvGeoLocationSettings::instantlyAddLocationsDisabled);
    settings()->loadSettings();
    QCOMPARE(settings()->instantlyAddLocations(), false);
    QCOMPARE(spy.size(), 0);
}

void tst_LvGeoLocationSettings::receiversMayAsk()
{
    bool seen = true;
    const auto connection =
        connect(settings(), &LvGeoLocationSettings::instantlyAddLocationsDisabled, this, [&seen] {
            seen = settings()->instantlyAddLocations();
            settings()->saveSettings();
        });
    settings()->setInstantlyAddLocations(false);
    disconnect(connection);
    QCOMPARE(seen, false);
}

void tst_LvGeoLocationSettings::threads()
{
    const LvGPXTrackConfiguration one = configurationOf(11);
    const LvGPXTrackConfiguration two = configurationOf(22);
    settings()->setDefaultTrackConfiguration(one);
    std::atomic<int> torn = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 4; ++i) {
        readers.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                const auto read = LvGPXTrackConfiguration::currentDefaultConfiguration();
                torn += read == one || read == two ? 0 : 1;
            }
        });
    }
    for (int round = 0; round < 20; ++round) {
        settings()->setDefaultTrackConfiguration(round % 2 == 0 ? two : one);
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
    QCOMPARE(torn.load(), 0);
}

LV_TEST_MAIN(tst_LvGeoLocationSettings)
#include "tst_LvGeoLocationSettings.moc"
