#pragma once

#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"
#include "LvMapProjection.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

/**
 * What a picture shows of the globe: a map projection, the size of the picture, and the numbers that drawing
 * a map needs of both.
 *
 * Pixel positions of this class have fractions, in contrast to those of LvMapProjection; they belong to one
 * copy of the world, whose copies to the left and right lie worldSize() pixels apart. Normalised positions
 * have x = 0 at 180° west and x = 1 at 180° east, y = 0 and y = 1 at the northern and southern edge of the
 * square that web maps show.
 *
 * Immutable; may be read from several threads.
 */
class LvMapView
{
public:
    /// Latitude of the upper edge of the square world map, in degrees; the lower edge lies as far south.
    static constexpr double squareLatitude = 85.0511287798066;

    /// Shows at least the box. Latitudes beyond the square world map count as its edge. A picture so narrow
    /// that it would be more than six worlds high, or so low that it would be more than a hundred worlds
    /// wide, shows the middle of the box only.
    LvMapView(const LvGeoPositionRect& box, const QSize& size);

    /// The whole world.
    explicit LvMapView(const QSize& size);

    /// The picture with the position in its middle at a zoom level of web maps: the world is 256 · 2^zoom
    /// pixels wide. The zoom level may have a fraction; it is raised where the picture would be higher than
    /// two worlds.
    static LvMapView aroundCenter(const LvGeoPosition& center, double zoom, const QSize& size);

    /// The box with some air around it; a box without extent gets a surrounding of half a degree. An invalid
    /// box gives the whole world. The box keeps out of so many pixels at the lower edge of the picture, which
    /// have to be fewer than its height.
    static LvMapView fittedTo(const LvGeoPositionRect& box, const QSize& size, int reservedHeight = 0);

    [[nodiscard]] const LvMapProjection& projection() const { return myProjection; }

    [[nodiscard]] QSize size() const { return mySize; }

    /// Width of the world in pixels.
    [[nodiscard]] double worldSize() const { return myWorldSize; }

    /// The part of the world that the picture shows, in normalised coordinates. It may reach beyond 0 ... 1.
    [[nodiscard]] QRectF normalizedRect() const;

    /// Pixel position of a latitude and longitude in degrees. Latitudes are limited to those of the square
    /// world map.
    [[nodiscard]] QPointF pixelOf(double latitude, double longitude) const;
    [[nodiscard]] QPointF pixelOfNormalized(const QPointF& normalized) const;

    /// Latitude of the middle row of the picture, in degrees.
    [[nodiscard]] double middleLatitude() const;

    /// Pixels for one kilometre from west to east in the middle row, on a sphere of radius 6370 km.
    [[nodiscard]] double pixelsPerKilometre() const;

    /// Zoom level of web maps with this scale, usually with a fraction.
    [[nodiscard]] double zoom() const;

    /// Normalised y of a latitude that is limited to the square world map first.
    static double normalizedY(double latitude);

private:
    LvMapView(const LvMapProjection& projection, const QSize& size);

    LvMapProjection myProjection;
    QSize mySize;
    double myWorldSize;
    QPointF myOffset; // pixel position of the upper left corner of the picture in the world
};
