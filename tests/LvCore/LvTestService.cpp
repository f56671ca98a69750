#include "LvTestService.h"

LvTestService* LvTestService::instanceInsideLibrary()
{
    return instance();
}

void LvTestService::setupInstance()
{
    ++setups;
}
