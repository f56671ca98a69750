#pragma once

#include "lvguiwidgets_export.h"

/**
 * What a preferences dialog asks of everything that shows settings, be it a page or a part of one.
 *
 * The dialog calls readFromConfig() before it shows the item, checkLeaveCondition() before the user leaves
 * it, and then writeToConfig() when the changes are accepted or revertChanges() when they are dropped.
 * User-interface thread only.
 */
class LVGUIWIDGETS_EXPORT LvPreferencesItem
{
public:
    LvPreferencesItem();
    LvPreferencesItem(const LvPreferencesItem&) = delete;
    LvPreferencesItem& operator=(const LvPreferencesItem&) = delete;
    virtual ~LvPreferencesItem();

    /// Shows the values that the configuration holds.
    virtual void readFromConfig() = 0;

    /// Stores the shown values in the configuration.
    virtual void writeToConfig() = 0;

    /// Drops what the user has changed since the values were read.
    virtual void revertChanges() = 0;

    /// Whether the shown values may be left as they are; false keeps the user on the item, which tells why.
    virtual bool checkLeaveCondition() = 0;

    /// The kind of the item, by which the dialog groups its pages; the numbers are the application's own.
    [[nodiscard]] virtual int preferencesType() const = 0;
};
