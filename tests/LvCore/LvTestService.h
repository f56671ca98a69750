#pragma once

#include "LvSingleton.h"

#include <QtGlobal>

#ifdef LV_TEST_SERVICE_LIBRARY
#define LV_TEST_SERVICE_EXPORT Q_DECL_EXPORT
#else
#define LV_TEST_SERVICE_EXPORT Q_DECL_IMPORT
#endif

/// A service of another library than the program that uses it.
class LV_TEST_SERVICE_EXPORT LvTestService : public LvSingleton<LvTestService>
{
public:
    /// The instance as code inside the library finds it.
    static LvTestService* instanceInsideLibrary();

    void setupInstance() override;

    int setups = 0;
};
