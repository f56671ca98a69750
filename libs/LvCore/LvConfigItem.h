#pragma once

#include "lvcore_export.h"

#include <QString>

#include <utility>

/**
 * One typed setting: a key, the present value and the default.
 *
 * LvSettings loads and saves it. The type needs "==" and a QVariant form.
 */
template <class T>
class LVCORE_EXPORT LvConfigItem
{
public:
    /// A setting that starts with the default.
    LvConfigItem(const QString& key, const T& defaultValue)
        : LvConfigItem(key, defaultValue, defaultValue)
    {
    }

    LvConfigItem(QString key, T value, T defaultValue)
        : myKey(std::move(key))
        , myValue(std::move(value))
        , myDefaultValue(std::move(defaultValue))
    {
    }

    [[nodiscard]] const QString& key() const { return myKey; }

    [[nodiscard]] const T& value() const { return myValue; }

    /// Stores a new value. Returns whether it differs from the one before. Saves nothing.
    bool setValue(const T& value)
    {
        if (value == myValue) {
            return false;
        }
        myValue = value;
        return true;
    }

    [[nodiscard]] const T& defaultValue() const { return myDefaultValue; }

    /// Goes back to the default. Returns whether the value differed from it.
    bool reset() { return setValue(myDefaultValue); }

private:
    QString myKey;
    T myValue;
    T myDefaultValue;
};
