#pragma once

#include "LvGeoArc.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"
#include "lvgeolocation_export.h"

#include <QPoint>
#include <QPointF>
#include <QSize>

class LvMercatorTable;

/**
 * Maps positions to pixels of one image and back, with the spherical Mercator projection of web map tiles.
 *
 * In normalized coordinates the world is a square of size 1: x grows eastwards from the 180° meridian, y
 * grows southwards from the top at about 85.0511° N. A projection is made for an area and an image size; it
 * widens the area in one direction until it has the aspect ratio of the image, so that the whole area is
 * visible at one scale. An area that crosses the 180° meridian continues east of 180°: points with negative
 * longitudes lie one world width to the left, and callers shift them.
 *
 * Poles lie at infinity and are not guarded against; an empty image is an error of the caller, and so is an
 * area without width. The results are then meaningless, but defined. Immutable, so one object may serve
 * several threads.
 */
class LVGEOLOCATION_EXPORT LvMapProjection
{
public:
    LvMapProjection(const LvGeoPositionRect& box, const QSize& imageSize);
    LvMapProjection(const LvMapProjection& other);
    LvMapProjection(LvMapProjection&& other) noexcept;
    LvMapProjection& operator=(const LvMapProjection& other);
    LvMapProjection& operator=(LvMapProjection&& other) noexcept;
    virtual ~LvMapProjection();

    /// (longitude + 180) / 360.
    [[nodiscard]] static double longitudeToNormalized(double longitude);

    /// ln(tan((90 - latitude) * pi / 360)) / (2 pi) + 0.5: 0.5 at the equator, 0 in the north and 1 in the
    /// south at about 85.0511 degrees, minus and plus infinity at the poles.
    [[nodiscard]] static double latitudeToNormalized(double latitude);

    /// x * 360 - 180, rounded once.
    [[nodiscard]] static double normalizedToLongitude(double x);

    /// 90 - 360 * atan(exp(2 pi * (y - 0.5))) / pi.
    [[nodiscard]] static double normalizedToLatitude(double y);

    /// The decimal degrees differ by no more than epsilon.
    [[nodiscard]] static bool epsilonEqual(const LvGeoArc& a, const LvGeoArc& b, double epsilon);

    /// Both angles differ by no more than epsilon degrees.
    [[nodiscard]] static bool epsilonEqual(const LvGeoPosition& a, const LvGeoPosition& b, double epsilon);

    /// The pixel of a position: whole numbers, truncated toward zero and limited to the range of an int.
    [[nodiscard]] QPointF projectate(const LvGeoPosition& position) const;

    /// The same for decimal degrees.
    [[nodiscard]] QPointF getPixelCoordinateByMapCoordinate(double latitude, double longitude) const;

    /// The position of a pixel of the image, not rounded. East of 180° its longitude exceeds 180.
    [[nodiscard]] LvGeoPosition convert(const QPoint& pixel) const;

    /// The area that fills the image, its bounds brought back to ±90 and ±180 degrees.
    [[nodiscard]] LvGeoPositionRect resultBoundingBox() const;

private:
    void adjustMapData(const LvGeoPositionRect& box);
    [[nodiscard]] inline QPointF pixelOf(double latitude, double longitude) const;

    QSize myImageSize;
    double mySouth = 0.0;
    double myNorth = 0.0;
    double myWest = 0.0;
    double myEast = 0.0;
    double myOffsetX = 0.0;
    double myOffsetY = 0.0;
    double myWorldSize = 0.0;
    double myEstimateError = 0.0; // in pixels
    const LvMercatorTable* myTable = nullptr; // none where estimates tell nothing
};
