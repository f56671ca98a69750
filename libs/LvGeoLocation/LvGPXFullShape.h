#pragma once

#include "LvGPXMarkerShape.h"
#include "LvGPXTrackShape.h"
#include "lvgeolocation_export.h"

#include <QIcon>
#include <QString>

class QColor;

/// A track shape and a marker shape that belong together. Both are unknown by default.
class LVGEOLOCATION_EXPORT LvGPXFullShape
{
public:
    LvGPXFullShape();
    LvGPXFullShape(const LvGPXTrackShape& trackShape, const LvGPXMarkerShape& markerShape);
    LvGPXFullShape(const LvGPXFullShape& other);
    LvGPXFullShape(LvGPXFullShape&& other) noexcept;
    LvGPXFullShape& operator=(const LvGPXFullShape& other);
    LvGPXFullShape& operator=(LvGPXFullShape&& other) noexcept;
    virtual ~LvGPXFullShape();

    bool operator==(const LvGPXFullShape& other) const;
    bool operator!=(const LvGPXFullShape& other) const;

    [[nodiscard]] LvGPXTrackShape trackShape() const { return myTrackShape; }

    void setTrackShape(const LvGPXTrackShape& trackShape);

    [[nodiscard]] LvGPXMarkerShape markerShape() const { return myMarkerShape; }

    void setMarkerShape(const LvGPXMarkerShape& markerShape);

    /// Takes away what makes no sense for the track shape: a point keeps the figures, a line keeps the arrow
    /// head, everything else has no marker.
    void normalize();
    [[nodiscard]] LvGPXFullShape normalized() const;

    /// The German label of the track shape with this marker.
    [[nodiscard]] QString describe() const;

    /// The German explanation of the track shape.
    [[nodiscard]] QString toolTip() const;

    /// The icon of the marker; null for the unknown marker and for the arrow.
    [[nodiscard]] QIcon createIcon(const QColor& lineColor, const QColor& fillColor) const;

private:
    LvGPXTrackShape myTrackShape;
    LvGPXMarkerShape myMarkerShape;
};
