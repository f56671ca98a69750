#include "LvPreferencesItem.h"

LvPreferencesItem::LvPreferencesItem() = default;
LvPreferencesItem::~LvPreferencesItem() = default;
