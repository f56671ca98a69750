#include "LvPreferencesGeoLocation.h"

#include "LvGeoLocationSettings.h"

#include <QCheckBox>
#include <QVBoxLayout>

LvPreferencesGeoLocation::LvPreferencesGeoLocation(QWidget* parent)
    : LvPreferencesBox(tr("Landkarten"), 0, parent)
    , myInstantlyAddLocations(new QCheckBox(
          tr("Wenn man ein Suchergebnis anklickt, soll es direkt in die Liste der Orte eingefügt werden.",
             "CHECKBOX"),
          this))
{
    setObjectName(QStringLiteral("GeoLocationGroupBox"));
    auto* layout = new QVBoxLayout(this);
    myInstantlyAddLocations->setToolTip(
        tr("Alternativ wird hierfür ein Knopf angeboten, der explizit benutzt werden muss."));
    myInstantlyAddLocations->setObjectName(QStringLiteral("myInstantlyAddLocations"));
    layout->addWidget(myInstantlyAddLocations);
}

LvPreferencesGeoLocation::~LvPreferencesGeoLocation() = default;

void LvPreferencesGeoLocation::readFromConfig()
{
    myInstantlyAddLocations->setChecked(LvGeoLocationSettings::instance()->instantlyAddLocations());
}

void LvPreferencesGeoLocation::writeToConfig()
{
    auto* settings = LvGeoLocationSettings::instance();
    settings->setInstantlyAddLocations(myInstantlyAddLocations->isChecked());
    settings->saveSettings();
}
