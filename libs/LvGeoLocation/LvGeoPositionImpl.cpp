#include "LvGeoPositionImpl.h"

#include "LvFixedSizePool.h"

namespace
{

constinit LvFixedSizePool payloadPool(sizeof(LvGeoPositionImpl));

} // namespace

LvGeoPositionImpl::LvGeoPositionImpl(const LvLatitude& latitude, const LvLongitude& longitude)
    : myLongitude(longitude)
    , myLatitude(latitude)
{
}

LvGeoPositionImpl::LvGeoPositionImpl(const LvGeoPositionImpl& other) = default;

LvGeoPositionImpl::~LvGeoPositionImpl() = default;

// NOLINTNEXTLINE(misc-new-delete-overloads) the sized form is the one that belongs to it
void* LvGeoPositionImpl::operator new(std::size_t size)
{
    return payloadPool.allocate(size);
}

void LvGeoPositionImpl::operator delete(void* object, std::size_t size) noexcept
{
    payloadPool.release(object, size);
}
