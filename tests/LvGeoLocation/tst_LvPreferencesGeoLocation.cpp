#include "LvGeoLocationSettings.h"
#include "LvPreferencesGeoLocation.h"
#include "LvTest.h"

#include <QCheckBox>
#include <QSettings>
#include <QSignalSpy>
#include <QTranslator>
#include <QVBoxLayout>

namespace
{

// Marks the texts of the page that are looked up as agreed.
class Marker : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int /*count*/) const override
    {
        if (qstrcmp(context, "LvPreferencesGeoLocation") != 0) {
            return {};
        }
        return QStringLiteral("%1|%2").arg(QString::fromUtf8(source).left(10),
                                           QString::fromUtf8(disambiguation));
    }
};

QCheckBox* checkBox(const QWidget& page)
{
    return page.findChild<QCheckBox*>(QStringLiteral("myInstantlyAddLocations"));
}

LvGeoLocationSettings* settings()
{
    return LvGeoLocationSettings::instance();
}

} // namespace

class tst_LvPreferencesGeoLocation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layout();
    void translation();
    void readFromConfig();
    void writeToConfig();
    void revertChanges();
};

void tst_LvPreferencesGeoLocation::layout()
{
    QWidget parent;
    auto* page = new LvPreferencesGeoLocation(&parent);
    QCOMPARE(page->parentWidget(), &parent);
    QCOMPARE(page->title(), QStringLiteral("Landkarten"));
    QCOMPARE(page->preferencesType(), 0);
    QCOMPARE(page->objectName(), QStringLiteral("GeoLocationGroupBox"));
    QVERIFY(qobject_cast<QVBoxLayout*>(page->layout()) != nullptr);
    QCOMPARE(page->layout()->count(), 1);
    QVERIFY(checkBox(*page) != nullptr);
    QCOMPARE(page->layout()->itemAt(0)->widget(), checkBox(*page));
    QCOMPARE(
        checkBox(*page)->text(),
        QStringLiteral(
            "Wenn man ein Suchergebnis anklickt, soll es direkt in die Liste der Orte eingefügt werden."));
    QCOMPARE(
        checkBox(*page)->toolTip(),
        QStringLiteral("Alternativ wird hierfür ein Knopf angeboten, der explizit benutzt werden muss."));
}

void tst_LvPreferencesGeoLocation::translation()
{
    Marker translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const LvPreferencesGeoLocation page(nullptr);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(page.title(), QStringLiteral("Landkarten|"));
    QCOMPARE(checkBox(page)->text(), QStringLiteral("Wenn man e|CHECKBOX"));
    QCOMPARE(checkBox(page)->toolTip(), QStringLiteral("Alternativ|"));
}

void tst_LvPreferencesGeoLocation::readFromConfig()
{
    LvPreferencesGeoLocation page(nullptr);
    LvPreferencesItem& item = page;
    settings()->setInstantlyAddLocations(true);
    item.readFromConfig();
    QVERIFY(checkBox(page)->isChecked());
    settings()->setInstantlyAddLocations(false);
    QVERIFY(checkBox(page)->isChecked()); // the page shows what it has read
    item.readFromConfig();
    QVERIFY(!checkBox(page)->isChecked());
}

void tst_LvPreferencesGeoLocation::writeToConfig()
{
    settings()->setInstantlyAddLocations(true);
    QSettings().clear();
    LvPreferencesGeoLocation page(nullptr);
    LvPreferencesItem& item = page;
    item.readFromConfig();
    QSignalSpy spy(settings(), &LvGeoLocationSettings::instantlyAddLocationsDisabled);
    checkBox(page)->setChecked(false);
    QCOMPARE(settings()->instantlyAddLocations(), true);
    item.writeToConfig();
    QCOMPARE(settings()->instantlyAddLocations(), false);
    QCOMPARE(spy.size(), 1);
    QVERIFY(QSettings().contains("instantlyAddLocations"));
    QCOMPARE(QSettings().value("instantlyAddLocations").toBool(), false);
    QVERIFY(QSettings().contains("defaultTrackConfiguration"));

    QSettings().clear();
    item.writeToConfig(); // saves also when nothing changes
    QVERIFY(QSettings().contains("instantlyAddLocations"));
    QCOMPARE(spy.size(), 1);
}

void tst_LvPreferencesGeoLocation::revertChanges()
{
    settings()->setInstantlyAddLocations(true);
    LvPreferencesGeoLocation page(nullptr);
    page.readFromConfig();
    checkBox(page)->setChecked(false);
    page.revertChanges();
    QVERIFY(checkBox(page)->isChecked());
    QVERIFY(page.checkLeaveCondition());
}

LV_TEST_MAIN(tst_LvPreferencesGeoLocation)
#include "tst_LvPreferencesGeoLocation.moc"
