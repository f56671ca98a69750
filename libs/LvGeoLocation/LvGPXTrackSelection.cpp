#include "LvGPXTrackSelection.h"

#include "LvGeoLocationSettings.h"
#include "LvXMLBuilder.h"
#include "LvXMLParser.h"

#include <QDir>
#include <QDomElement>

#include <algorithm>

namespace
{

constexpr int opaque = 255;

// The factor that leaves a colour as it is; also added to the factor of the line width.
constexpr int neutralFactor = 128;
constexpr double widthDivisor = 85.0;

QString croppingOpacityKey()
{
    return QStringLiteral("croppingOpacity");
}

QString gpxTrackTag()
{
    return QStringLiteral("gpxtrack");
}

QString configuredTrackTag()
{
    return QStringLiteral("configuredTrack");
}

qsizetype countPoints(const LvGPXConfiguredTrackList& tracks)
{
    qsizetype count = 0;
    for (const LvGPXConfiguredTrack& track : tracks) {
        count += track.track().countPoints();
    }
    return count;
}

int scaledComponent(int component, int factor)
{
    const qint64 scaled = qint64{component} * factor / neutralFactor; // factors may be large
    return static_cast<int>(std::clamp<qint64>(scaled, 0, 255));
}

QColor scaledColor(const QColor& color, int factor)
{
    QColor result = color;
    result.setRed(scaledComponent(color.red(), factor));
    result.setGreen(scaledComponent(color.green(), factor));
    result.setBlue(scaledComponent(color.blue(), factor));
    return result;
}

} // namespace

LvGPXTrackSelection::LvGPXTrackSelection()
    : myCroppingOpacity(opaque)
{
}

LvGPXTrackSelection::LvGPXTrackSelection(const LvGPXConfiguredTrackList& tracks)
    : myTracks(tracks)
    , myCroppingOpacity(opaque)
{
}

LvGPXTrackSelection::LvGPXTrackSelection(const QDomElement& element, const QDir& dir, const QString& prefix)
    : myCroppingOpacity(LvXMLParser::intAttribute(element, prefix + croppingOpacityKey(), opaque))
{
    const QDomElement gpx = element.firstChildElement(prefix + gpxTrackTag());
    myTracks = LvGPXConfiguredTrackList(gpx, prefix + QStringLiteral("locationTrack"), dir);
    myTracks.append(LvGPXConfiguredTrackList(gpx, prefix + configuredTrackTag(), dir));
}

LvGPXTrackSelection::LvGPXTrackSelection(const LvGPXTrackSelection& other) = default;
LvGPXTrackSelection::LvGPXTrackSelection(LvGPXTrackSelection&& other) noexcept = default;
LvGPXTrackSelection& LvGPXTrackSelection::operator=(const LvGPXTrackSelection& other) = default;
LvGPXTrackSelection& LvGPXTrackSelection::operator=(LvGPXTrackSelection&& other) noexcept = default;
LvGPXTrackSelection::~LvGPXTrackSelection() = default;

LvGeoPositionList LvGPXTrackSelection::allPoints() const
{
    // Not with allPoints() of the tracks, which makes room for a million positions each time.
    LvGeoPositionList positions;
    positions.reserve(countPoints(myTracks));
    visitTrackPoints([&positions](const QList<LvGPXTrackPoint>& points) {
        for (const LvGPXTrackPoint& point : points) {
            positions.append(point.sharedPosition());
        }
    });
    return positions;
}

QList<LvGeoPositionList> LvGPXTrackSelection::chunkedPoints() const
{
    QList<LvGeoPositionList> chunks;
    for (const LvGPXConfiguredTrack& track : myTracks) {
        chunks.append(track.chunkedPoints());
    }
    return chunks;
}

bool LvGPXTrackSelection::isSinglePoint() const
{
    return count() == 1 && myTracks.at(0).isSinglePoint();
}

LvGeoPosition LvGPXTrackSelection::firstPoint() const
{
    return isEmpty() ? LvGeoPosition() : myTracks.at(0).firstPoint();
}

LvGeoPosition LvGPXTrackSelection::lastPoint() const
{
    for (qsizetype row = count() - 1; row >= 0; --row) {
        const LvGeoPosition last = myTracks.at(row).lastPoint();
        if (last.isValid()) {
            return last;
        }
    }
    return {};
}

QList<QDateTime> LvGPXTrackSelection::allTimeStamps() const
{
    QList<QDateTime> timeStamps;
    timeStamps.reserve(countPoints(myTracks));
    visitTrackPoints([&timeStamps](const QList<LvGPXTrackPoint>& points) {
        for (const LvGPXTrackPoint& point : points) {
            timeStamps.append(point.sharedTimeStamp());
        }
    });
    return timeStamps;
}

bool LvGPXTrackSelection::visitTrackPoints(
    const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const
{
    for (const LvGPXConfiguredTrack& track : myTracks) {
        track.visitTrackPoints(visit);
    }
    return true;
}

bool LvGPXTrackSelection::operator==(const LvGPXTrackSelection& other) const
{
    return myCroppingOpacity == other.myCroppingOpacity && myTracks == other.myTracks;
}

bool LvGPXTrackSelection::operator!=(const LvGPXTrackSelection& other) const
{
    return !(*this == other);
}

bool LvGPXTrackSelection::isValid() const
{
    return myTracks.isValid();
}

bool LvGPXTrackSelection::containsAnyMarking() const
{
    return myTracks.isValid();
}

bool LvGPXTrackSelection::isEmpty() const
{
    return myTracks.isEmpty();
}

qsizetype LvGPXTrackSelection::count() const
{
    return myTracks.count();
}

bool LvGPXTrackSelection::isValidRow(int row) const
{
    return myTracks.checkRange(row);
}

bool LvGPXTrackSelection::checkRange(int row) const
{
    return myTracks.checkRange(row);
}

LvGPXConfiguredTrackList LvGPXTrackSelection::tracks() const
{
    return myTracks;
}

LvGPXConfiguredTrack LvGPXTrackSelection::value(int row) const
{
    return checkRange(row) ? myTracks.at(row) : LvGPXConfiguredTrack();
}

LvGPXTrackConfiguration LvGPXTrackSelection::configuration(int row) const
{
    return myTracks.configuration(row);
}

void LvGPXTrackSelection::addTrack(const LvGPXTrack& track)
{
    addTrack(LvGPXConfiguredTrack(track, LvGeoLocationSettings::instance()->defaultTrackConfiguration()));
}

void LvGPXTrackSelection::addTrack(const LvGPXConfiguredTrack& track)
{
    myTracks.append(track);
}

void LvGPXTrackSelection::addTracks(const LvGPXConfiguredTrackList& tracks)
{
    myTracks.append(tracks);
}

void LvGPXTrackSelection::addSelection(const LvGPXTrackSelection& other)
{
    myTracks.append(other.myTracks);
}

void LvGPXTrackSelection::setTracks(const LvGPXConfiguredTrackList& tracks)
{
    myTracks = tracks;
}

void LvGPXTrackSelection::removeAt(int row)
{
    myTracks.removeAt(row);
}

void LvGPXTrackSelection::moveTrack(int from, int to)
{
    if (checkRange(from) && checkRange(to)) {
        myTracks.moveTrack(from, to);
    }
}

bool LvGPXTrackSelection::setConfiguration(int row, const LvGPXTrackConfiguration& configuration)
{
    if (!checkRange(row) || configuration == myTracks.at(row).configuration()) {
        return false;
    }
    myTracks[row].setConfiguration(configuration);
    return true;
}

bool LvGPXTrackSelection::setConfiguration(const LvGPXTrackConfiguration& configuration)
{
    bool changes = false;
    for (int row = 0; row < count(); ++row) {
        changes = setConfiguration(row, configuration) || changes;
    }
    return changes;
}

int LvGPXTrackSelection::nominalCroppingOpacity() const
{
    return myCroppingOpacity;
}

int LvGPXTrackSelection::effectiveCroppingOpacity() const
{
    return isEmpty() ? opaque : myCroppingOpacity;
}

bool LvGPXTrackSelection::setCroppingOpacity(int opacity)
{
    const bool changes = opacity != myCroppingOpacity;
    myCroppingOpacity = opacity;
    return changes;
}

LvGPXTrackSelectionComparisonResult LvGPXTrackSelection::compare(const LvGPXTrackSelection& previous) const
{
    LvGPXTrackSelectionComparisonResult result;
    result.setTrackCountChanges(static_cast<qint32>(count()) != static_cast<qint32>(previous.count()));
    const LvGPXTrackSelectionComparisonResult trackResult = myTracks.compare(previous.myTracks);
    // Added twice on purpose: consumers take the rows as a multiset.
    result += trackResult;
    result += trackResult;
    return result;
}

bool LvGPXTrackSelection::wouldChangeHaloToVisibleAgainst(const LvGPXTrackSelection& previous) const
{
    return myTracks.wouldChangeHaloToVisibleAgainst(previous.myTracks);
}

void LvGPXTrackSelection::overrideColorOfTrack(int row, int factor)
{
    if (!checkRange(row)) {
        return;
    }
    LvGPXConfiguredTrack& track = myTracks[row];
    track.setFillColor(scaledColor(track.fillColor(), factor));
    track.setLineColor(scaledColor(track.lineColor(), factor));
    const LvDistance width = track.lineWidth();
    const LvDistance widened = width * (static_cast<double>(factor) + neutralFactor) / widthDivisor;
    track.setLineWidth(std::max(width, widened));
}

LvGPXTrackSelection LvGPXTrackSelection::reduceToTrackNumber(int row) const
{
    LvGPXTrackSelection reduced(*this);
    if (checkRange(row)) {
        reduced.setTracks(myTracks.at(row));
    }
    return reduced;
}

void LvGPXTrackSelection::toXml(QDomElement& element, const QDir& dir) const
{
    element.setAttribute(croppingOpacityKey(), myCroppingOpacity);
    QDomElement gpx = LvXMLBuilder::buildDomElement(element, gpxTrackTag());
    myTracks.toXml(gpx, configuredTrackTag(), dir);
}
