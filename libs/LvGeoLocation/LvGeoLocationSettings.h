#pragma once

#include "LvConfigItem.h"
#include "LvGPXTrackConfiguration.h"
#include "LvSettings.h"
#include "LvSingleton.h"
#include "lvgeolocation_export.h"

#include <QReadWriteLock>
#include <QString>

/**
 * The two persistent settings of the library: whether a clicked search result becomes a place at once, and
 * the drawing style of new tracks.
 *
 * Made and loaded on first use, never destroyed. The style is kept as text and read anew by every caller. All
 * functions may be called from any thread; the signal is sent in the thread of the caller.
 */
class LVGEOLOCATION_EXPORT LvGeoLocationSettings : public LvSettings,
                                                   public LvSingleton<LvGeoLocationSettings>
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvGeoLocationSettings)

public:
    ~LvGeoLocationSettings() override;

    /// Loads the settings. Runs while the instance is being made: nothing in it may ask for instance().
    void setupInstance() override;

    /// Reads both settings from the store. The style of new tracks never keeps a fixed track shape: it is set
    /// back to automatic, here and in the store.
    void loadSettings() override;
    void saveSettings() override;

    [[nodiscard]] bool instantlyAddLocations() const;

    /// Sends instantlyAddLocationsDisabled() when the value changes. Does not save.
    void setInstantlyAddLocations(bool on);

    [[nodiscard]] LvGPXTrackConfiguration defaultTrackConfiguration() const;

    /// Saves both settings at once when the style differs from the stored one.
    void setDefaultTrackConfiguration(const LvGPXTrackConfiguration& configuration);

Q_SIGNALS:
    void instantlyAddLocationsDisabled(bool disabled);

private:
    friend class LvSingleton<LvGeoLocationSettings>;
    LvGeoLocationSettings();

    LvConfigItem<bool> myInstantlyAddLocations;
    LvConfigItem<QString> myDefaultTrackConfiguration;
    mutable QReadWriteLock
        myLock; // guards both items: tracks are made, and ask for their style, in any thread
};
