#pragma once

#include "LvLatitude.h"
#include "LvLongitude.h"
#include "lvgeolocation_export.h"

#include <QSharedData>

/**
 * What the handles of one LvGeoPosition share: the two angles, counted atomically.
 */
class LVGEOLOCATION_EXPORT LvGeoPositionImpl : public QSharedData
{
public:
    LvGeoPositionImpl(const LvLatitude& latitude, const LvLongitude& longitude);
    LvGeoPositionImpl(const LvGeoPositionImpl& other);
    LvGeoPositionImpl(LvGeoPositionImpl&& other) = delete;
    LvGeoPositionImpl& operator=(const LvGeoPositionImpl& other) = delete;
    LvGeoPositionImpl& operator=(LvGeoPositionImpl&& other) = delete;
    virtual ~LvGeoPositionImpl();

    LvLongitude myLongitude;
    LvLatitude myLatitude;
};
