#pragma once

#include "LvEnumWrapper.h"
#include "LvGPXMarkerShapeEnum.h"
#include "lvgeolocation_export.h"

#include <QIcon>
#include <QImage>
#include <QList>
#include <QRectF>

class QColor;
class QDomElement;
class QPainter;
class QPointF;
class QSize;
class QString;

extern template class LvEnumWrapper<LvGPXMarkerShapeEnum>;

/**
 * The figure that marks a point, or whether a line ends in an arrow head; paints the figure.
 *
 * Drawing is safe in any thread that owns its painter.
 */
class LVGEOLOCATION_EXPORT LvGPXMarkerShape : public LvEnumWrapper<LvGPXMarkerShapeEnum>
{
public:
    LvGPXMarkerShape();
    // NOLINTNEXTLINE(google-explicit-constructor) a value and its wrapper are the same thing
    LvGPXMarkerShape(LvGPXMarkerShapeEnum value);
    explicit LvGPXMarkerShape(int value);
    explicit LvGPXMarkerShape(quint32 value);
    /// From key strings separated by commas; what is no key contributes no flag.
    explicit LvGPXMarkerShape(const QString& keys);
    LvGPXMarkerShape(const LvGPXMarkerShape& other);
    LvGPXMarkerShape(LvGPXMarkerShape&& other) noexcept;
    LvGPXMarkerShape& operator=(const LvGPXMarkerShape& other);
    LvGPXMarkerShape& operator=(LvGPXMarkerShape&& other) noexcept;
    ~LvGPXMarkerShape() override;

    /// The nine markers for points, in the order in which they are offered. Built once and shared.
    static const QList<LvGPXMarkerShape>& allPointShapes();

    /// The choice for lines: no arrow head, arrow head. Built once and shared.
    static const QList<LvGPXMarkerShape>& allLineStringShapes();

    /// Reads the child "markerShape". A missing child means disk.
    static LvGPXMarkerShape fromXml(const QDomElement& parent);

    /// The rectangle around the centre with twice the radii as sides, without the allowance that draw() adds
    /// for the pen.
    static QRectF targetRect(const QPointF& center, double radiusX, double radiusY);

    /// Paints the marker with the painter's pen and brush and restores the painter's state. Disk and block
    /// are outlined with the painter's pen; the others grow by 0.4 of the pen width in each radius and get a
    /// thin outline. A value without a figure of its own is an ellipse.
    void draw(QPainter* painter, const QPointF& center, double radiusX, double radiusY) const;

    /// A preview with the marker in its middle, on a transparent ground. The picture is larger than the size
    /// by the margin, so that outlines find room: half of the margin on each side.
    [[nodiscard]] QImage createImage(const QSize& size, int margin, const QColor& lineColor,
                                     const QColor& fillColor) const;

    /// A preview of 32 by 32 pixels; a null icon for the unknown marker and for the arrow.
    [[nodiscard]] QIcon createIcon(const QColor& lineColor, const QColor& fillColor) const;

    void fillTable(LvEnumToStringTable<LvGPXMarkerShapeEnum>* table) const override;

    /// Appends the child "markerShape" with the key strings.
    void toXml(QDomElement& parent) const;

    /// The steps of draw(): antialiasing and the thin pen, then the figure that fills the rectangle. They
    /// leave the painter's state changed.
    void configurePainter(QPainter* painter) const;
    void drawShape(QPainter* painter, const QRectF& rect) const;

    /// A diagonal cross. Its outer notches lie at whole numbers of pixels, its inner corners do not.
    static void drawX(QPainter* painter, const QRectF& rect);
    static void drawBlock(QPainter* painter, const QRectF& rect);
    static void drawRhombus(QPainter* painter, const QRectF& rect);

    /// A star whose first inner corner lies straight below the centre. The inner factor is the share of the
    /// radii at which the inner corners lie. Fewer than one ray gives a polygon of a single point.
    static void drawStar(QPainter* painter, const QRectF& rect, int rays, double innerFactor);

private:
    [[nodiscard]] bool hasCallersPen() const;
};
