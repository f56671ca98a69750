#include "LvGPXFullShape.h"

namespace
{

// All figures for points: every marker but the arrow. The nameless flag 4 is not among them.
constexpr auto pointMarkers = static_cast<LvGPXMarkerShapeEnum>(0x3FB);

} // namespace

LvGPXFullShape::LvGPXFullShape() = default;

LvGPXFullShape::LvGPXFullShape(const LvGPXTrackShape& trackShape, const LvGPXMarkerShape& markerShape)
    : myTrackShape(trackShape)
    , myMarkerShape(markerShape)
{
}

LvGPXFullShape::LvGPXFullShape(const LvGPXFullShape& other) = default;
LvGPXFullShape::LvGPXFullShape(LvGPXFullShape&& other) noexcept = default;
LvGPXFullShape& LvGPXFullShape::operator=(const LvGPXFullShape& other) = default;
LvGPXFullShape& LvGPXFullShape::operator=(LvGPXFullShape&& other) noexcept = default;
LvGPXFullShape::~LvGPXFullShape() = default;

bool LvGPXFullShape::operator==(const LvGPXFullShape& other) const
{
    return myTrackShape == other.myTrackShape && myMarkerShape == other.myMarkerShape;
}

bool LvGPXFullShape::operator!=(const LvGPXFullShape& other) const
{
    return !(*this == other);
}

void LvGPXFullShape::setTrackShape(const LvGPXTrackShape& trackShape)
{
    myTrackShape = trackShape;
}

void LvGPXFullShape::setMarkerShape(const LvGPXMarkerShape& markerShape)
{
    myMarkerShape = markerShape;
}

void LvGPXFullShape::normalize()
{
    switch (myTrackShape.value()) {
    case LvGPXTrackShapeEnum::point:
        myMarkerShape &= pointMarkers;
        break;
    case LvGPXTrackShapeEnum::linestring:
        myMarkerShape &= LvGPXMarkerShapeEnum::arrow;
        break;
    default:
        myMarkerShape = LvGPXMarkerShapeEnum::unknown;
        break;
    }
}

LvGPXFullShape LvGPXFullShape::normalized() const
{
    LvGPXFullShape result(*this);
    result.normalize();
    return result;
}

QString LvGPXFullShape::describe() const
{
    return myTrackShape.humanReadable(myMarkerShape);
}

QString LvGPXFullShape::toolTip() const
{
    return myTrackShape.toolTip();
}

QIcon LvGPXFullShape::createIcon(const QColor& lineColor, const QColor& fillColor) const
{
    return myMarkerShape.createIcon(lineColor, fillColor);
}
