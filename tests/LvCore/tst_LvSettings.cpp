#include "LvSettings.h"
#include "LvTest.h"

#include <QSettings>

namespace
{

class Settings : public LvSettings
{
public:
    void loadSettings() override
    {
        load(isOn);
        load(text);
        load(count);
    }

    void saveSettings() override
    {
        save(isOn);
        save(text);
        save(count);
    }

    LvConfigItem<bool> isOn{QStringLiteral("isOn"), true};
    LvConfigItem<QString> text{QStringLiteral("text"), QStringLiteral("default")};
    LvConfigItem<int> count{QStringLiteral("count"), 3};
};

} // namespace

class tst_LvSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { QSettings().clear(); }

    void emptyStoreGivesTheDefaults()
    {
        Settings settings;
        settings.isOn.setValue(false);
        settings.text.setValue(QStringLiteral("changed"));
        settings.count.setValue(9);
        settings.loadSettings();
        QCOMPARE(settings.isOn.value(), true);
        QCOMPARE(settings.text.value(), QStringLiteral("default"));
        QCOMPARE(settings.count.value(), 3);
        QVERIFY(QSettings().allKeys().isEmpty()); // reading writes nothing
    }

    void savesUnderTheBareKeys()
    {
        Settings settings;
        settings.isOn.setValue(false);
        settings.count.setValue(9);
        settings.saveSettings();
        const QSettings store;
        QCOMPARE(store.allKeys(), (QStringList{"count", "isOn", "text"}));
        QCOMPARE(store.value(QStringLiteral("isOn")).toBool(), false);
        QCOMPARE(store.value(QStringLiteral("count")).toInt(), 9);
        QCOMPARE(store.value(QStringLiteral("text")).toString(), QStringLiteral("default"));
    }

    void loadsWhatItSaved()
    {
        const QString xml = QStringLiteral("<config a=\"1,2;3\">\n  Größe €, %1 \\ @Invalid()</config>\n");
        {
            Settings settings;
            settings.isOn.setValue(false);
            settings.text.setValue(xml);
            settings.count.setValue(-7);
            settings.saveSettings();
        }
        Settings settings;
        settings.loadSettings();
        QCOMPARE(settings.isOn.value(), false);
        QCOMPARE(settings.text.value(), xml);
        QCOMPARE(settings.count.value(), -7);
    }

    void textsConvert_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QVariant>("loaded");
        QTest::newRow("bool from a text") << "isOn" << QVariant("false") << QVariant(false);
        QTest::newRow("bool from 0") << "isOn" << QVariant(0) << QVariant(false);
        QTest::newRow("int from a text") << "count" << QVariant("12") << QVariant(12);
        QTest::newRow("text from an int") << "text" << QVariant(12) << QVariant("12");
        QTest::newRow("unreadable int") << "count" << QVariant("abc") << QVariant(3);
        QTest::newRow("a list is no bool") << "isOn" << QVariant(QStringList{"a", "b"}) << QVariant(true);
    }

    void textsConvert()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, stored);
        QFETCH(QVariant, loaded);
        QSettings().setValue(key, stored);
        Settings settings;
        settings.loadSettings();
        const QVariantHash values = {{QStringLiteral("isOn"), settings.isOn.value()},
                                     {QStringLiteral("text"), settings.text.value()},
                                     {QStringLiteral("count"), settings.count.value()}};
        QCOMPARE(values.value(key), loaded);
    }

    void baseHasNoSettings()
    {
        LvSettings settings;
        settings.saveSettings();
        settings.loadSettings();
        QVERIFY(QSettings().allKeys().isEmpty());
        QCOMPARE(QByteArray(settings.metaObject()->className()), QByteArray("LvSettings"));
    }
};

LV_TEST_MAIN(tst_LvSettings)
#include "tst_LvSettings.moc"
