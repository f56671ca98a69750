#pragma once

#include "LvPreferencesItem.h"
#include "lvguiwidgets_export.h"

#include <QGroupBox>

/**
 * The frame of a page in a preferences dialog: a group box with the page's title, around the editors that a
 * derived class puts into it.
 *
 * A derived page overrides readFromConfig() and writeToConfig(). The frame by itself has nothing to read or
 * write, reverts by reading anew, and can always be left.
 */
class LVGUIWIDGETS_EXPORT LvPreferencesBox : public QGroupBox, public LvPreferencesItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvPreferencesBox)

public:
    /// The type is what preferencesType() returns.
    LvPreferencesBox(const QString& title, int type, QWidget* parent = nullptr);
    ~LvPreferencesBox() override;

    /// Does nothing: a page without settings.
    void readFromConfig() override;

    /// Does nothing: a page without settings.
    void writeToConfig() override;

    /// Calls readFromConfig(): the configuration still holds the values from before the change.
    void revertChanges() override;

    /// True: nothing keeps the user on the page.
    bool checkLeaveCondition() override;

    [[nodiscard]] int preferencesType() const override;

private:
    int myPreferencesType;
};
