#include "LvGeoLocationSettings.h"

#include <QReadLocker>
#include <QWriteLocker>

LvGeoLocationSettings::LvGeoLocationSettings()
    : myInstantlyAddLocations(QStringLiteral("instantlyAddLocations"), true, true)
    , myDefaultTrackConfiguration(QStringLiteral("defaultTrackConfiguration"),
                                  LvGPXTrackConfiguration::defaultValue().serialize(),
                                  LvGPXTrackConfiguration::defaultValue().serialize())
{
}

LvGeoLocationSettings::~LvGeoLocationSettings() = default;

void LvGeoLocationSettings::setupInstance()
{
    loadSettings();
}

void LvGeoLocationSettings::loadSettings()
{
    {
        const QWriteLocker locker(&myLock);
        load(myInstantlyAddLocations);
        load(myDefaultTrackConfiguration);
    }
    LvGPXTrackConfiguration configuration = defaultTrackConfiguration();
    configuration.setTrackShape(LvGPXTrackShapeEnum::automatic);
    setDefaultTrackConfiguration(configuration);
}

void LvGeoLocationSettings::saveSettings()
{
    const QReadLocker locker(&myLock);
    save(myInstantlyAddLocations);
    save(myDefaultTrackConfiguration);
}

bool LvGeoLocationSettings::instantlyAddLocations() const
{
    const QReadLocker locker(&myLock);
    return myInstantlyAddLocations.value();
}

void LvGeoLocationSettings::setInstantlyAddLocations(bool on)
{
    {
        const QWriteLocker locker(&myLock);
        if (!myInstantlyAddLocations.setValue(on)) {
            return;
        }
    }
    // Without the lock: receivers may ask for the settings.
    Q_EMIT instantlyAddLocationsDisabled(!on);
}

LvGPXTrackConfiguration LvGeoLocationSettings::defaultTrackConfiguration() const
{
    QString text;
    {
        const QReadLocker locker(&myLock);
        text = myDefaultTrackConfiguration.value();
    }
    return LvGPXTrackConfiguration::deserialize(text);
}

void LvGeoLocationSettings::setDefaultTrackConfiguration(const LvGPXTrackConfiguration& configuration)
{
    const QString text = configuration.serialize();
    {
        const QWriteLocker locker(&myLock);
        if (!myDefaultTrackConfiguration.setValue(text)) {
            return;
        }
    }
    saveSettings();
}
