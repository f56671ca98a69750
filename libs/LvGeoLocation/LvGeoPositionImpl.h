#pragma once

#include "LvLatitude.h"
#include "LvLongitude.h"
#include "lvgeolocation_export.h"

#include <QSharedData>

#include <cstddef>

/**
 * What the handles of one LvGeoPosition share: the two angles, counted atomically. Lies in an
 * LvFixedSizePool, because there are millions of them.
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

    // NOLINTNEXTLINE(misc-new-delete-overloads) the sized form is the one that belongs to it
    static void* operator new(std::size_t size);
    static void operator delete(void* object, std::size_t size) noexcept;

    LvLongitude myLongitude;
    LvLatitude myLatitude;
};
