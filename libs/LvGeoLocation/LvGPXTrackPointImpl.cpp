#include "LvGPXTrackPointImpl.h"

#include "LvFixedSizePool.h"
#include "LvGeoPositionList.h"

#include <utility>

namespace
{

constinit LvFixedSizePool payloadPool(sizeof(LvGPXTrackPointImpl));

} // namespace

LvGPXTrackPointImpl::LvGPXTrackPointImpl() = default;

LvGPXTrackPointImpl::LvGPXTrackPointImpl(const LvGeoPosition& position, int elevation,
                                         const QDateTime& timeStamp, const QString& description)
    : myPosition(position)
    , myElevation(elevation)
    , myTimeStamp(timeStamp)
    , myDescription(description)
{
}

LvGPXTrackPointImpl::LvGPXTrackPointImpl(LvGeoPosition&& position, int elevation, QDateTime&& timeStamp,
                                         QString&& description) noexcept
    : myPosition(std::move(position))
    , myElevation(elevation)
    , myTimeStamp(std::move(timeStamp))
    , myDescription(std::move(description))
{
}

LvGPXTrackPointImpl::LvGPXTrackPointImpl(const LvGPXTrackPointImpl& other) = default;
LvGPXTrackPointImpl::~LvGPXTrackPointImpl() = default;

// NOLINTNEXTLINE(misc-new-delete-overloads) the sized form is the one that belongs to it
void* LvGPXTrackPointImpl::operator new(std::size_t size)
{
    return payloadPool.allocate(size);
}

void LvGPXTrackPointImpl::operator delete(void* object, std::size_t size) noexcept
{
    payloadPool.release(object, size);
}

LvGeoPositionList LvGPXTrackPointImpl::allPoints() const
{
    return {myPosition};
}

QList<LvGeoPositionList> LvGPXTrackPointImpl::chunkedPoints() const
{
    return {allPoints()};
}

bool LvGPXTrackPointImpl::isSinglePoint() const
{
    return true;
}

LvGeoPosition LvGPXTrackPointImpl::firstPoint() const
{
    return myPosition;
}

LvGeoPosition LvGPXTrackPointImpl::lastPoint() const
{
    return myPosition;
}

QList<QDateTime> LvGPXTrackPointImpl::allTimeStamps() const
{
    return {myTimeStamp};
}
