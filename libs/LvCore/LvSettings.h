#pragma once

#include "LvConfigItem.h"
#include "lvcore_export.h"

#include <QObject>
#include <QVariant>

/**
 * The base of settings services: loads and saves LvConfigItems in the application's settings store.
 *
 * The store is that of a default-constructed QSettings (organization and application name, format and path as
 * the application sets them); the keys stand in it as they are, without a group.
 */
class LVCORE_EXPORT LvSettings : public QObject
{
    Q_OBJECT

public:
    explicit LvSettings(QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(LvSettings)
    ~LvSettings() override;

    /// Reads all settings from the store. The base has none.
    virtual void loadSettings();

    /// Writes all settings to the store. The base has none.
    virtual void saveSettings();

protected:
    /// Takes the value from the store; the default where the store has none or one that does not convert.
    template <class T>
    void load(LvConfigItem<T>& item) const
    {
        QVariant stored = storedValue(item.key());
        const bool isUsable = stored.convert(QMetaType::fromType<T>());
        item.setValue(isUsable ? stored.value<T>() : item.defaultValue());
    }

    /// Puts the value into the store.
    template <class T>
    void save(const LvConfigItem<T>& item) const
    {
        storeValue(item.key(), QVariant::fromValue(item.value()));
    }

private:
    [[nodiscard]] static QVariant storedValue(const QString& key);
    static void storeValue(const QString& key, const QVariant& value);
};
