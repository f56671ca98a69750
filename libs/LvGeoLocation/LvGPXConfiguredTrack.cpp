#include "LvGPXConfiguredTrack.h"

#include "LvGPXMarkerShape.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackPoint.h"
#include "LvGeoLocationSettings.h"
#include "LvGeoPositionRect.h"
#include "LvXMLBuilder.h"

#include <QDir>
#include <QDomElement>

#include <cmath>

namespace
{

/// The position at a valid index, counted over all segments.
LvGeoPosition pointAt(const LvGPXTrack& track, qsizetype index)
{
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        if (index < segment.count()) {
            return segment.trackPoints().at(index).position();
        }
        index -= segment.count();
    }
    return {};
}

} // namespace

LvGPXConfiguredTrack::LvGPXConfiguredTrack()
    : myConfiguration(LvGeoLocationSettings::instance()->defaultTrackConfiguration())
{
}

LvGPXConfiguredTrack::LvGPXConfiguredTrack(const LvGPXTrack& track,
                                           const LvGPXTrackConfiguration& configuration)
    : myTrack(track)
    , myConfiguration(configuration)
{
    autoConfigureTrackShape();
}

LvGPXConfiguredTrack::LvGPXConfiguredTrack(const LvGPXTrackPoint& point,
                                           const LvGPXTrackConfiguration& configuration)
    : LvGPXConfiguredTrack(LvGPXTrack(point), configuration)
{
}

LvGPXConfiguredTrack::LvGPXConfiguredTrack(const QDomElement& element, const QDir& dir)
    : myTrack(element.firstChildElement(QStringLiteral("trk")), dir)
    , myConfiguration(LvGPXTrackConfiguration::fromXml(element))
{
}

LvGPXConfiguredTrack::LvGPXConfiguredTrack(const LvGPXConfiguredTrack& other) = default;
LvGPXConfiguredTrack::LvGPXConfiguredTrack(LvGPXConfiguredTrack&& other) noexcept = default;
LvGPXConfiguredTrack& LvGPXConfiguredTrack::operator=(const LvGPXConfiguredTrack& other) = default;
LvGPXConfiguredTrack& LvGPXConfiguredTrack::operator=(LvGPXConfiguredTrack&& other) noexcept = default;
LvGPXConfiguredTrack::~LvGPXConfiguredTrack() = default;

LvGeoPositionList LvGPXConfiguredTrack::allPoints() const
{
    return myTrack.allPoints();
}

QList<LvGeoPositionList> LvGPXConfiguredTrack::chunkedPoints() const
{
    return myTrack.chunkedPoints();
}

bool LvGPXConfiguredTrack::isSinglePoint() const
{
    return myTrack.isSinglePoint();
}

LvGeoPosition LvGPXConfiguredTrack::firstPoint() const
{
    return myTrack.firstPoint();
}

LvGeoPosition LvGPXConfiguredTrack::lastPoint() const
{
    return myTrack.lastPoint();
}

QList<QDateTime> LvGPXConfiguredTrack::allTimeStamps() const
{
    return myTrack.allTimeStamps();
}

bool LvGPXConfiguredTrack::visitTrackPoints(
    const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const
{
    return myTrack.visitTrackPoints(visit);
}

bool LvGPXConfiguredTrack::operator==(const LvGPXConfiguredTrack& other) const
{
    // The configuration first: it takes the same short time for every track.
    return myConfiguration == other.myConfiguration && myTrack == other.myTrack;
}

LvGPXTrack LvGPXConfiguredTrack::track() const
{
    return myTrack;
}

void LvGPXConfiguredTrack::setTrack(const LvGPXTrack& track)
{
    myTrack = track;
}

QString LvGPXConfiguredTrack::name() const
{
    return myTrack.name();
}

QString LvGPXConfiguredTrack::description() const
{
    return myTrack.description();
}

LvGPXTrackShape LvGPXConfiguredTrack::naturalShape() const
{
    return myTrack.naturalShape();
}

LvGPXTrackConfiguration LvGPXConfiguredTrack::configuration() const
{
    return myConfiguration;
}

bool LvGPXConfiguredTrack::setConfiguration(const LvGPXTrackConfiguration& configuration)
{
    LvGPXTrackConfiguration adapted = configuration;
    if (naturalShape() == LvGPXTrackShapeEnum::point) {
        adapted.setTrackShape(LvGPXTrackShapeEnum::point);
        if (!adapted.markerShape().isValid()) {
            const LvGPXMarkerShape current = myConfiguration.markerShape();
            adapted.setMarkerShape(current.isValid() ? current
                                                     : LvGPXMarkerShape(LvGPXMarkerShapeEnum::circle));
        }
    } else if (!adapted.trackShape().isValid()) {
        adapted.setTrackShape(myConfiguration.trackShape());
    }
    const bool changes = adapted != myConfiguration;
    myConfiguration = adapted;
    return changes;
}

void LvGPXConfiguredTrack::autoConfigureTrackShape()
{
    const LvGPXTrackShape configured = myConfiguration.trackShape();
    const bool isAutomatic =
        configured.reducedTo(LvGPXTrackShapeEnum::automatic) == LvGPXTrackShapeEnum::automatic;
    if (!configured.isValid() || isAutomatic) {
        myConfiguration.setTrackShape(naturalShape());
    }
}

QColor LvGPXConfiguredTrack::lineColor() const
{
    return myConfiguration.lineColor();
}

bool LvGPXConfiguredTrack::setLineColor(const QColor& color)
{
    return myConfiguration.setLineColor(color);
}

QColor LvGPXConfiguredTrack::fillColor() const
{
    return myConfiguration.fillColor();
}

bool LvGPXConfiguredTrack::setFillColor(const QColor& color)
{
    return myConfiguration.setFillColor(color);
}

LvDistance LvGPXConfiguredTrack::lineWidth() const
{
    return myConfiguration.lineWidth();
}

bool LvGPXConfiguredTrack::setLineWidth(const LvDistance& width)
{
    return myConfiguration.setLineWidth(width);
}

LvDistance LvGPXConfiguredTrack::haloWidth() const
{
    return myConfiguration.haloWidth();
}

LvPenStyle LvGPXConfiguredTrack::penStyle() const
{
    return myConfiguration.penStyle();
}

bool LvGPXConfiguredTrack::setPenStyle(const LvPenStyle& style)
{
    return myConfiguration.setPenStyle(style);
}

int LvGPXConfiguredTrack::smoothingStrength() const
{
    return myConfiguration.smoothingStrength();
}

bool LvGPXConfiguredTrack::setSmoothingStrength(int strength)
{
    return myConfiguration.setSmoothingStrength(strength);
}

int LvGPXConfiguredTrack::smoothingSteps() const
{
    return myConfiguration.smoothingSteps();
}

bool LvGPXConfiguredTrack::setSmoothingSteps(int steps)
{
    return myConfiguration.setSmoothingSteps(steps);
}

bool LvGPXConfiguredTrack::hasDrawOption(const LvGPXTrackDisplayOptions& option) const
{
    return myConfiguration.hasDrawOption(option);
}

LvGPXTrackShape LvGPXConfiguredTrack::effectiveShape() const
{
    if (naturalShape() == LvGPXTrackShapeEnum::point) {
        return LvGPXTrackShapeEnum::point;
    }
    const LvGPXTrackShape configured = myConfiguration.trackShape();
    return configured == LvGPXTrackShapeEnum::automatic ? myTrack.shape() : configured;
}

LvGeoPositionList LvGPXConfiguredTrack::drawingPoints() const
{
    const LvGPXTrackShape natural = naturalShape();
    const LvGPXTrackShape effective = effectiveShape();
    if (effective == natural || effective != LvGPXTrackShapeEnum::point) {
        return allPoints();
    }
    LvGeoPositionList points;
    points.append(natural == LvGPXTrackShapeEnum::polygon ? boundingBox().center()
                                                          : positionRelativeFromStart(0.5));
    return points;
}

LvGeoPosition LvGPXConfiguredTrack::positionRelativeFromStart(double fraction) const
{
    const LvGPXTrackShape effective = effectiveShape();
    if (naturalShape() != LvGPXTrackShapeEnum::point
        && (effective == LvGPXTrackShapeEnum::hop || effective == LvGPXTrackShapeEnum::polygon)) {
        return boundingBox().center();
    }
    const auto count = static_cast<double>(myTrack.countPoints());
    const double index = std::round((count - 1.0) * fraction); // half away from zero
    if (index >= 0.0 && index < count) { // false for an index that is no number
        return pointAt(myTrack, static_cast<qsizetype>(index));
    }
    return {};
}

LvGPXTrackAspect LvGPXConfiguredTrack::differentAspects(const LvGPXConfiguredTrack& other) const
{
    LvGPXTrackAspect aspects;
    aspects.setFlag(LvGPXTrackAspectFlag::LineWidth, lineWidth() != other.lineWidth());
    aspects.setFlag(LvGPXTrackAspectFlag::LineColor, lineColor() != other.lineColor());
    aspects.setFlag(LvGPXTrackAspectFlag::Track, myTrack != other.myTrack);
    return aspects;
}

bool LvGPXConfiguredTrack::wouldChangeHaloToVisibleAgainst(const LvGPXConfiguredTrack& previous) const
{
    return myConfiguration.wouldChangeHaloToVisibleAgainst(previous.myConfiguration);
}

void LvGPXConfiguredTrack::toXml(QDomElement& parent, const QString& tagName, const QDir& dir) const
{
    QDomElement element = LvXMLBuilder::buildDomElement(parent, tagName);
    myTrack.toXml(element, dir);
    myConfiguration.toXml(element);
}
