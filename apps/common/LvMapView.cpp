#include "LvMapView.h"

#include "LvLatitudeRange.h"
#include "LvLongitude.h"
#include "LvLongitudeRange.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{

constexpr double earthRadiusKm = 6370.0;
constexpr double tileSize = 256.0;
constexpr double maximumZoom = 30.0;
constexpr double marginShare = 0.08;
constexpr double smallestSpanDegrees = 0.002; // some 200 m: more would show nothing but one thick line
constexpr double lonelyPointSpanDegrees = 0.5;
constexpr double pointSpanDegrees = 1e-5;
constexpr double smallestWidthDegrees = 1e-6; // the projection cannot widen a box without any width
constexpr double maximumWorldsOnTop = 2.0; // the polar latitudes beyond differ too little to be computed with
constexpr double maximumWorldsWide = 100.0; // each of them is drawn
constexpr double maximumWorldsHigh = 6.0; // and those beyond this not at all: they would all be the pole

double limitedLatitude(double latitude)
{
    return std::clamp(latitude, -LvMapView::squareLatitude, LvMapView::squareLatitude);
}

/// The box, without what a picture could only show together with more of the world than can be drawn.
LvGeoPositionRect limitedBox(const LvGeoPositionRect& box, const QSize& size)
{
    LvLongitudeRange longitudes = box.longitudeRange();
    const double west = box.west().decimalDegrees();
    double span = box.east().decimalDegrees() - west;
    span += span < 0.0 ? 360.0 : 0.0;
    const double widest = 360.0 * maximumWorldsHigh * size.width() / std::max(1, size.height());
    if (span == 0.0 || span > widest) {
        const double middle = west + (span / 2.0);
        const double half = span == 0.0 ? smallestWidthDegrees : widest / 2.0;
        longitudes = LvLongitudeRange(LvLongitude::safeLongitude(middle - half),
                                      LvLongitude::safeLongitude(middle + half));
    }
    double south = limitedLatitude(box.south().decimalDegrees());
    double north = limitedLatitude(box.north().decimalDegrees());
    const double top = LvMapProjection::latitudeToNormalized(north);
    const double bottom = LvMapProjection::latitudeToNormalized(south);
    const double highest = maximumWorldsWide * size.height() / std::max(1, size.width());
    if (bottom - top > highest) {
        const double middle = (top + bottom) / 2.0;
        north = LvMapProjection::normalizedToLatitude(middle - (highest / 2.0));
        south = LvMapProjection::normalizedToLatitude(middle + (highest / 2.0));
    }
    return {LvLatitudeRange(south, north), longitudes};
}

LvGeoPositionRect wholeWorld()
{
    return {LvLatitudeRange(-LvMapView::squareLatitude, LvMapView::squareLatitude),
            LvLongitudeRange(-180.0, 180.0)};
}

/// The box around normalised coordinates; x may lie outside of 0 ... 1.
LvGeoPositionRect boxOfNormalized(double left, double right, double top, double bottom)
{
    const auto longitude = [](double x) {
        return LvLongitude::safeLongitude(LvMapProjection::normalizedToLongitude(x));
    };
    return {LvLatitudeRange(LvMapProjection::normalizedToLatitude(bottom),
                            LvMapProjection::normalizedToLatitude(top)),
            LvLongitudeRange(longitude(left), longitude(right))};
}

} // namespace

LvMapView::LvMapView(const LvMapProjection& projection, const QSize& size)
    : myProjection(projection)
    , mySize(size)
{
    // The inverse projection knows no rounding, so it tells scale and place exactly. The widened box does
    // not: it is brought back into the usual range of longitudes.
    const int middleRow = size.height() / 2;
    const LvGeoPosition left = myProjection.convert(QPoint(0, middleRow));
    const LvGeoPosition right = myProjection.convert(QPoint(size.width(), middleRow));
    const double west = left.longitude().decimalDegrees();
    myWorldSize = size.width() * 360.0 / (right.longitude().decimalDegrees() - west);
    const double x = LvMapProjection::longitudeToNormalized(west);
    const double y = LvMapProjection::latitudeToNormalized(left.latitude().decimalDegrees());
    myOffset = QPointF(x * myWorldSize, (y * myWorldSize) - middleRow);
}

LvMapView::LvMapView(const LvGeoPositionRect& box, const QSize& size)
    : LvMapView(LvMapProjection(limitedBox(box, size), size), size)
{
}

LvMapView::LvMapView(const QSize& size)
    : LvMapView(wholeWorld(), size)
{
}

LvMapView LvMapView::aroundCenter(const LvGeoPosition& center, double zoom, const QSize& size)
{
    const double world =
        std::max(tileSize * std::exp2(std::min(zoom, maximumZoom)), size.height() / maximumWorldsOnTop);
    const double x = LvMapProjection::longitudeToNormalized(center.longitude().decimalDegrees());
    const double y = normalizedY(center.latitude().decimalDegrees());
    // One direction of the box decides and the projection widens the other one. The width decides where it
    // can: a box cannot be wider than the world, and latitudes far beyond the square map cannot be told
    // apart.
    double halfWidth = size.width() / world / 2.0;
    double halfHeight = size.height() / world / 2.0;
    if (halfWidth < 0.5) {
        halfHeight /= 1024.0;
    } else {
        halfWidth = 1.0 / 1024.0;
    }
    const LvGeoPositionRect box =
        boxOfNormalized(x - halfWidth, x + halfWidth, y - halfHeight, y + halfHeight);
    return {LvMapProjection(box, size), size};
}

LvMapView LvMapView::fittedTo(const LvGeoPositionRect& box, const QSize& size, int reservedHeight)
{
    if (!box.isValid()) {
        return LvMapView(size);
    }
    const double west = box.west().decimalDegrees();
    double east = box.east().decimalDegrees();
    if (east < west) {
        east += 360.0;
    }
    double left = LvMapProjection::longitudeToNormalized(west);
    double right = LvMapProjection::longitudeToNormalized(east);
    double top = normalizedY(box.north().decimalDegrees());
    double bottom = normalizedY(box.south().decimalDegrees());

    const double span = std::max(right - left, bottom - top) * 360.0;
    const double wanted = span < pointSpanDegrees ? lonelyPointSpanDegrees : smallestSpanDegrees;
    const double missing = std::max(0.0, wanted - span) / 360.0 / 2.0;
    const double marginX = missing + ((right - left) * marginShare);
    const double marginY = missing + ((bottom - top) * marginShare);
    left -= marginX;
    right += marginX;
    top = std::max(top - marginY, std::min(top, 0.0));
    bottom = std::min(bottom + marginY, std::max(bottom, 1.0));
    if (right - left >= 1.0) {
        left = 0.0;
        right = 1.0;
    }
    if (reservedHeight > 0 && reservedHeight < size.height()) {
        const double world =
            std::min(size.width() / (right - left), (size.height() - reservedHeight) / (bottom - top));
        bottom += reservedHeight / world;
    }
    return {boxOfNormalized(left, right, top, bottom), size};
}

QRectF LvMapView::normalizedRect() const
{
    return {myOffset / myWorldSize, QSizeF(mySize) / myWorldSize};
}

QPointF LvMapView::pixelOf(double latitude, double longitude) const
{
    return pixelOfNormalized({LvMapProjection::longitudeToNormalized(longitude), normalizedY(latitude)});
}

QPointF LvMapView::pixelOfNormalized(const QPointF& normalized) const
{
    return (normalized * myWorldSize) - myOffset;
}

double LvMapView::middleLatitude() const
{
    return LvMapProjection::normalizedToLatitude((myOffset.y() + (mySize.height() / 2.0)) / myWorldSize);
}

double LvMapView::pixelsPerKilometre() const
{
    const double radians = middleLatitude() * std::numbers::pi / 180.0;
    return myWorldSize / (2.0 * std::numbers::pi * earthRadiusKm * std::cos(radians));
}

double LvMapView::zoom() const
{
    return std::log2(myWorldSize / tileSize);
}

double LvMapView::normalizedY(double latitude)
{
    return LvMapProjection::latitudeToNormalized(limitedLatitude(latitude));
}
