#include "LvGPXTrackPointImpl.h"

#include "LvGeoPositionList.h"

LvGPXTrackPointImpl::LvGPXTrackPointImpl() = default;

LvGPXTrackPointImpl::LvGPXTrackPointImpl(const LvGeoPosition& position, int elevation,
                                         const QDateTime& timeStamp, const QString& description)
    : myPosition(position)
    , myElevation(elevation)
    , myTimeStamp(timeStamp)
    , myDescription(description)
{
}

LvGPXTrackPointImpl::LvGPXTrackPointImpl(const LvGPXTrackPointImpl& other) = default;
LvGPXTrackPointImpl::~LvGPXTrackPointImpl() = default;

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
