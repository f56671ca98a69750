#pragma once

#include "LvDistance.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackShape.h"
#include "LvPenStyle.h"
#include "lvgeolocation_export.h"

#include <QColor>
#include <QString>

class QDebug;
class QDomElement;

/**
 * The complete drawing style of one track: colours, widths, dash pattern, marker and smoothing.
 *
 * A plain value. Widths are in pixels at a paint factor of 1. Readers never fail: what is missing takes its
 * default, what is unreadable becomes 0, a transparent colour or an unknown shape.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackConfiguration
{
public:
    /// The same as defaultValue().
    LvGPXTrackConfiguration();
    LvGPXTrackConfiguration(const QColor& lineColor, const LvDistance& lineWidth, const QColor& fillColor,
                            const LvDistance& haloWidth, const LvGPXTrackDisplayOptions& displayOptions,
                            const LvGPXMarkerShape& markerShape, const LvGPXTrackShape& trackShape,
                            const LvPenStyle& penStyle, int smoothingStrength, int smoothingSteps);
    LvGPXTrackConfiguration(const LvGPXTrackConfiguration& other);
    LvGPXTrackConfiguration(LvGPXTrackConfiguration&& other) noexcept;
    LvGPXTrackConfiguration& operator=(const LvGPXTrackConfiguration& other);
    LvGPXTrackConfiguration& operator=(LvGPXTrackConfiguration&& other) noexcept;
    virtual ~LvGPXTrackConfiguration();

    /// The built-in style: an orange line without a halo.
    static LvGPXTrackConfiguration defaultValue();

    /// The style that the user has chosen for new tracks, from LvGeoLocationSettings. Safe to call from any
    /// thread.
    static LvGPXTrackConfiguration currentDefaultConfiguration();

    /// Reads what toXml() wrote into the element. Files without "halosize" get a visible halo: as wide as the
    /// line around areas, twice as wide around lines. Files without "fillcolor" get the line colour, half as
    /// opaque.
    static LvGPXTrackConfiguration fromXml(const QDomElement& element);

    /// The style of the text that serialize() made. A text that is no XML document, or one that is nested too
    /// deeply, reads as an empty element.
    static LvGPXTrackConfiguration deserialize(const QString& text);

    /// The style of a KML "Style" element. Lines are drawn six times as wide as KML says, 7.7 wide when it
    /// says nothing or 0. Colours that are missing or fully transparent are derived from each other.
    static LvGPXTrackConfiguration fromKml(const QDomElement& style);

    /// The child "color" of a KML line or area style, its digits taken in the order of "#AARRGGBB".
    /// Fully transparent when missing or unreadable.
    static QColor decodeColor(const QDomElement& element);

    /// The child "width" of a KML line style; 0.0 when missing or unreadable.
    static double decodeWidth(const QDomElement& element);

    /// The colour with its alpha multiplied; the result stays between transparent and opaque.
    static QColor multiplyAlpha(const QColor& color, double factor);

    bool operator==(const LvGPXTrackConfiguration& other) const;
    bool operator!=(const LvGPXTrackConfiguration& other) const;

    /// Whether the display options and the option have a flag in common.
    [[nodiscard]] bool hasDrawOption(const LvGPXTrackDisplayOptions& option) const;

    /// Whether this style shows a halo where the previous one had none.
    [[nodiscard]] bool wouldChangeHaloToVisibleAgainst(const LvGPXTrackConfiguration& previous) const;

    [[nodiscard]] QColor lineColor() const { return myLineColor; }

    [[nodiscard]] LvDistance lineWidth() const { return myLineWidth; }

    [[nodiscard]] LvPenStyle penStyle() const { return myPenStyle; }

    [[nodiscard]] QColor fillColor() const { return myFillColor; }

    [[nodiscard]] LvDistance haloWidth() const { return myHaloWidth; }

    [[nodiscard]] LvGPXTrackDisplayOptions currentDisplayOptions() const { return myDisplayOptions; }

    [[nodiscard]] LvGPXMarkerShape markerShape() const { return myMarkerShape; }

    [[nodiscard]] LvGPXTrackShape trackShape() const { return myTrackShape; }

    [[nodiscard]] int smoothingStrength() const { return mySmoothingStrength; }

    [[nodiscard]] int smoothingSteps() const { return mySmoothingSteps; }

    /// The setters return whether the value changed; callers redraw only then.
    bool setLineColor(const QColor& color);
    bool setLineWidth(const LvDistance& width);
    bool setPenStyle(const LvPenStyle& style);
    bool setFillColor(const QColor& color);
    bool setHaloWidth(const LvDistance& width);
    bool setCurrentDisplayOptions(const LvGPXTrackDisplayOptions& options);
    bool setMarkerShape(const LvGPXMarkerShape& shape);
    bool setTrackShape(const LvGPXTrackShape& shape);
    bool setSmoothingStrength(int strength);
    bool setSmoothingSteps(int steps);

    /// Writes the style into the element, as children and two attributes. The widths lose their fractions.
    void toXml(QDomElement& element) const;

    /// The style as the text of an XML document with the root element "config".
    [[nodiscard]] QString serialize() const;

private:
    QColor myLineColor;
    LvDistance myLineWidth;
    LvPenStyle myPenStyle;
    QColor myFillColor;
    LvDistance myHaloWidth;
    LvGPXTrackDisplayOptions myDisplayOptions;
    LvGPXMarkerShape myMarkerShape;
    LvGPXTrackShape myTrackShape;
    qint32 mySmoothingStrength;
    qint32 mySmoothingSteps;
};

/// Writes colours, widths, display options and shapes in one line.
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvGPXTrackConfiguration& configuration);
