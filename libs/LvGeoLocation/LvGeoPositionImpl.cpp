#include "LvGeoPositionImpl.h"

LvGeoPositionImpl::LvGeoPositionImpl(const LvLatitude& latitude, const LvLongitude& longitude)
    : myLongitude(longitude)
    , myLatitude(latitude)
{
}

LvGeoPositionImpl::LvGeoPositionImpl(const LvGeoPositionImpl& other) = default;

LvGeoPositionImpl::~LvGeoPositionImpl() = default;
