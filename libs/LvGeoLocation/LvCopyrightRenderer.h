#pragma once

#include "lvgeolocation_export.h"

#include <QColor>
#include <QRectF>
#include <QString>

class QFont;
class QImage;
class QPainter;
class QRect;

/**
 * Draws the attribution of the map's provider with a rounded translucent backdrop into the lower right of a
 * finished map image, matching the scale bar of LvOsmScaleRenderer.
 *
 * All sizes are in pixels at paint factor 1 and grow with the factor (device pixel ratio or print scale).
 * Below a factor of 0.1 a plain box with a dash-dot line takes the place of the text. Stateless; the text is
 * one for the whole process. Texts are measured, so it needs a QGuiApplication. Several threads may draw,
 * each on its own image.
 */
class LVGEOLOCATION_EXPORT LvCopyrightRenderer
{
public:
    /// Outline and filling of the backdrop.
    static const QColor semiOpaqueWhite;
    /// Text and placeholder line.
    static const QColor semiOpaqueBlack;

    LvCopyrightRenderer();
    LvCopyrightRenderer(const LvCopyrightRenderer& other);
    LvCopyrightRenderer(LvCopyrightRenderer&& other) noexcept;
    LvCopyrightRenderer& operator=(const LvCopyrightRenderer& other);
    LvCopyrightRenderer& operator=(LvCopyrightRenderer&& other) noexcept;
    virtual ~LvCopyrightRenderer();

    /// The notice that is drawn; by default that of the OpenStreetMap project: "© openstreetmap.org".
    /// Safe to call from any thread.
    [[nodiscard]] static QString copyrightText();

    /// Sets the notice for the whole process, for maps of another provider; an empty text brings back the
    /// default. Safe to call from any thread; set it before drawing, as an image under way may still show the
    /// old text.
    static void setCopyrightText(const QString& text);

    /// Arial with a point size of 24 times the factor.
    [[nodiscard]] static QFont copyrightFont(double factor);

    /// Room for copyrightText() with its margins, measured at factor 1 and multiplied.
    [[nodiscard]] static QSizeF copyrightTextSize(double factor);

    /// Where the attribution stands in an image of the given rectangle: its bottom right corner lies 10 ×
    /// factor left of and above that of the image.
    [[nodiscard]] static QRectF copyrightRect(const QRect& imageRect, double factor);

    /// Draws the attribution.
    static void renderCopyRight(QImage* image, double factor);

    /// The same with a painter on any device, for an image rectangle in the painter's coordinates; its
    /// state stays as it was.
    static void renderCopyRight(QPainter& painter, const QRect& imageRect, double factor);
};
