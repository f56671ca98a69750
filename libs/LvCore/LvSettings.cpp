#include "LvSettings.h"

#include <QSettings>

LvSettings::LvSettings(QObject* parent)
    : QObject(parent)
{
}

LvSettings::~LvSettings() = default;

void LvSettings::loadSettings()
{
}

void LvSettings::saveSettings()
{
}

QVariant LvSettings::storedValue(const QString& key)
{
    const QSettings settings;
    return settings.value(key);
}

void LvSettings::storeValue(const QString& key, const QVariant& value)
{
    QSettings settings;
    settings.setValue(key, value);
}
