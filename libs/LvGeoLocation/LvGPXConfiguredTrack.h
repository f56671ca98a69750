#pragma once

#include "LvDistance.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackAspect.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackElement.h"
#include "LvGPXTrackShape.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvPenStyle.h"
#include "lvgeolocation_export.h"

#include <QColor>
#include <QDateTime>
#include <QList>
#include <QString>

class LvGPXTrackDisplayOptions;
class LvGPXTrackPoint;
class QDir;
class QDomElement;

/**
 * A track together with the configuration it is drawn with. It decides as which shape the track is really
 * drawn and which positions are drawn.
 *
 * A plain value; copies share the track's payload. Setters of single drawing properties return whether the
 * value changed, so that the caller can decide on redrawing.
 */
class LVGEOLOCATION_EXPORT LvGPXConfiguredTrack : public LvGPXTrackElement
{
public:
    /// An empty track with the user's default configuration.
    LvGPXConfiguredTrack();
    /// Pairs the two and replaces an unknown or automatic track shape (autoConfigureTrackShape()).
    LvGPXConfiguredTrack(const LvGPXTrack& track, const LvGPXTrackConfiguration& configuration);
    /// A track of one point; an unknown or automatic track shape becomes point.
    LvGPXConfiguredTrack(const LvGPXTrackPoint& point, const LvGPXTrackConfiguration& configuration);
    /// Reads the track from the first child "trk" and the configuration from the element itself. The track
    /// shape stays as it was written, an automatic one included.
    /// @param dir the directory that names of included files are relative to
    LvGPXConfiguredTrack(const QDomElement& element, const QDir& dir);
    LvGPXConfiguredTrack(const LvGPXConfiguredTrack& other);
    LvGPXConfiguredTrack(LvGPXConfiguredTrack&& other) noexcept;
    LvGPXConfiguredTrack& operator=(const LvGPXConfiguredTrack& other);
    LvGPXConfiguredTrack& operator=(LvGPXConfiguredTrack&& other) noexcept;
    ~LvGPXConfiguredTrack() override;

    [[nodiscard]] LvGeoPositionList allPoints() const override;
    [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override;
    [[nodiscard]] bool isSinglePoint() const override;
    [[nodiscard]] LvGeoPosition firstPoint() const override;
    [[nodiscard]] LvGeoPosition lastPoint() const override;
    [[nodiscard]] QList<QDateTime> allTimeStamps() const override;
    bool
    visitTrackPoints(const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const override;

    bool operator==(const LvGPXConfiguredTrack& other) const;

    [[nodiscard]] LvGPXTrack track() const;
    /// Replaces the track only; the configuration stays as it is.
    void setTrack(const LvGPXTrack& track);
    /// Name of the track.
    [[nodiscard]] QString name() const;
    /// Description of the track.
    [[nodiscard]] QString description() const;
    /// The shape that the points of the track suggest.
    [[nodiscard]] LvGPXTrackShape naturalShape() const;

    [[nodiscard]] LvGPXTrackConfiguration configuration() const;
    /// Replaces the configuration; returns whether it changed. A single point stays a point, and an unknown
    /// marker keeps the current one (circle if that is unknown, too). On other tracks an unknown track shape
    /// keeps the current one.
    bool setConfiguration(const LvGPXTrackConfiguration& configuration);
    /// Replaces a configured track shape that is unknown or has the automatic bit by naturalShape().
    void autoConfigureTrackShape();

    [[nodiscard]] QColor lineColor() const;
    bool setLineColor(const QColor& color);
    [[nodiscard]] QColor fillColor() const;
    bool setFillColor(const QColor& color);
    [[nodiscard]] LvDistance lineWidth() const;
    bool setLineWidth(const LvDistance& width);
    [[nodiscard]] LvDistance haloWidth() const;
    [[nodiscard]] LvPenStyle penStyle() const;
    bool setPenStyle(const LvPenStyle& style);
    [[nodiscard]] int smoothingStrength() const;
    bool setSmoothingStrength(int strength);
    [[nodiscard]] int smoothingSteps() const;
    bool setSmoothingSteps(int steps);
    /// Whether the configuration shares a display option with the given ones.
    [[nodiscard]] bool hasDrawOption(const LvGPXTrackDisplayOptions& option) const;

    /// The shape the track is drawn as: a single position always as a point; otherwise the configured shape,
    /// or, when that is automatic, the shape the track itself declares.
    [[nodiscard]] LvGPXTrackShape effectiveShape() const;
    /// The positions that are drawn: all points, or the one position that stands for a longer track shown as
    /// a point: the centre of a polygon, the middle point of every other track.
    [[nodiscard]] LvGeoPositionList drawingPoints() const;
    /// The point at a fraction of the way, counted in points: index (count - 1) × fraction, rounded half away
    /// from zero. A hop or polygon gives the centre of its bounding box whatever the fraction. The default
    /// position when the index lies outside the points on either side, as in an empty track.
    [[nodiscard]] LvGeoPosition positionRelativeFromStart(double fraction) const;

    /// What a redrawing has to look at when this track takes the place of the other.
    [[nodiscard]] LvGPXTrackAspect differentAspects(const LvGPXConfiguredTrack& other) const;
    /// Whether this track has a halo and the previous one had none.
    [[nodiscard]] bool wouldChangeHaloToVisibleAgainst(const LvGPXConfiguredTrack& previous) const;

    /// Appends a child of the given name that holds the track as "trk" and beside it the configuration.
    /// @param dir an existing directory makes the track a file of its own in it, see LvGPXTrack::toXml()
    void toXml(QDomElement& parent, const QString& tagName, const QDir& dir) const;

private:
    LvGPXTrack myTrack;
    LvGPXTrackConfiguration myConfiguration;
};
