#pragma once

#include "LvPreferencesBox.h"
#include "lvgeolocation_export.h"

class QCheckBox;

/// The page of the preferences dialog that says whether a clicked search result becomes a place at once.
class LVGEOLOCATION_EXPORT LvPreferencesGeoLocation : public LvPreferencesBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvPreferencesGeoLocation)

public:
    explicit LvPreferencesGeoLocation(QWidget* parent = nullptr);
    ~LvPreferencesGeoLocation() override;

    /// Shows the setting.
    void readFromConfig() override;

    /// Takes the setting over from the page and saves it.
    void writeToConfig() override;

private:
    QCheckBox* myInstantlyAddLocations; // owned by the page
};
