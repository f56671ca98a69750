#include "LvMapLayer.h"

#include "LvGeoPosition.h"

#include <cmath>

LvMapView LvMapLayerRequest::view() const
{
    const LvGeoPosition position(LvMapProjection::normalizedToLatitude(center.y()),
                                 LvMapProjection::normalizedToLongitude(center.x()));
    return LvMapView::aroundCenter(position, zoom + std::log2(pixelRatio), size);
}
