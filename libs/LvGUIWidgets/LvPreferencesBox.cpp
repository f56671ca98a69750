#include "LvPreferencesBox.h"

LvPreferencesBox::LvPreferencesBox(const QString& title, int type, QWidget* parent)
    : QGroupBox(title, parent)
    , myPreferencesType(type)
{
}

LvPreferencesBox::~LvPreferencesBox() = default;

void LvPreferencesBox::readFromConfig()
{
}

void LvPreferencesBox::writeToConfig()
{
}

void LvPreferencesBox::revertChanges()
{
    readFromConfig();
}

bool LvPreferencesBox::checkLeaveCondition()
{
    return true;
}

int LvPreferencesBox::preferencesType() const
{
    return myPreferencesType;
}
