#pragma once

#include "LvDistance.h"
#include "lvgeolocation_export.h"

#include <QColor>
#include <QRectF>
#include <QSize>
#include <QString>

class QFont;
class QImage;
class QPainter;
class QRect;

/**
 * Draws a scale bar with a rounded translucent backdrop into the lower left of a finished map image.
 *
 * All sizes are in pixels at paint factor 1 and grow with the factor (device pixel ratio or print scale).
 * Below a factor of 0.1 the text would be unreadable: a plain box with a dash-dot line takes its place.
 * Immutable; texts are measured, so it needs a QGuiApplication. Several threads may draw, each on its own
 * image.
 */
class LVGEOLOCATION_EXPORT LvOsmScaleRenderer
{
public:
    /// Longest bar, in pixels.
    static const LvDistance theMaximumWidth;
    /// Outline and filling of the backdrop.
    static const QColor semiOpaqueWhite;
    /// Text, bar and placeholder line.
    static const QColor semiOpaqueBlack;

    /// @param pixelsPerKilometre image pixels that one kilometre of ground takes, above 0
    /// @param mapSize size of the map image in pixels at factor 1
    LvOsmScaleRenderer(const LvDistance& pixelsPerKilometre, const QSize& mapSize);
    LvOsmScaleRenderer(const LvOsmScaleRenderer& other);
    LvOsmScaleRenderer(LvOsmScaleRenderer&& other) noexcept;
    LvOsmScaleRenderer& operator=(const LvOsmScaleRenderer& other);
    LvOsmScaleRenderer& operator=(LvOsmScaleRenderer&& other) noexcept;
    virtual ~LvOsmScaleRenderer();

    /// Length of the bar in kilometres: the largest of 0.001, 0.0025, 0.005, 0.01 ... 25000, 50000 strictly
    /// below the longest length that fits (maximumPaintFactor()). At least 0.001; above 100000 that length
    /// itself, unrounded.
    [[nodiscard]] double shownKilometers() const;

    /// Length of the bar as text: whole metres below one kilometre ("500 m"), else kilometres ("2.5 km").
    [[nodiscard]] QString scaleText() const;

    /// Arial with a point size of 24 times the factor.
    [[nodiscard]] static QFont textFont(double factor);

    /// Room for scaleText() with its margins, measured at factor 1 and multiplied, so that layouts of
    /// different factors are similar.
    [[nodiscard]] QSizeF textSize(double factor) const;

    /// Length of the bar in whole pixels, truncated towards zero.
    [[nodiscard]] double strokeLength(double factor) const;

    /// Where the text stands in an image of the given rectangle: to the right of the bar.
    [[nodiscard]] QRectF textRect(const QRect& imageRect, double factor) const;

    /// Where the bar stands in an image of the given rectangle. Its lower edge lies one pixel below that of
    /// textRect(): QRect::bottom() is the last row, QRectF::bottom() the end of it.
    [[nodiscard]] QRectF strokeRect(const QRectF& imageRect, double factor) const;

    /// Draws the scale. A bar that would reach into the attribution's two thirds of the width is drawn
    /// higher. Draws nothing when the pixels per kilometre are 0 or not a number.
    void renderScale(QImage* image, double factor) const;

    /// The same with a painter on any device, for an image rectangle in the painter's coordinates; its
    /// state stays as it was.
    void renderScale(QPainter& painter, const QRect& imageRect, double factor) const;

    /// The length limit of the bar, min(theMaximumWidth, two thirds of the map's width), divided by the
    /// pixels per kilometre: how often a bar of one kilometre fits. Infinite or NaN when the pixels per
    /// kilometre are 0.
    [[nodiscard]] double maximumPaintFactor() const;

private:
    LvDistance myPixelsPerKilometre;
    QSize myMapSize;
};
