#include "LvGPXTrackPoint.h"

#include "LvGPXTrackPointImpl.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvKmlTuples.h"
#include "LvLatitude.h"
#include "LvLongitude.h"
#include "LvXMLBuilder.h"
#include "LvXMLParser.h"

#include <QDomElement>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

// A point without coordinates is put where nobody takes it for "not set", as 0/0 would be.
constexpr double missingCoordinateDegrees = 1.0;

constexpr int xmlSignificantDigits = 10;

int wholeMetres(double elevation)
{
    if (std::isnan(elevation)) {
        return 0;
    }
    // Outside the range of an int the conversion would be undefined.
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(elevation, lowest, highest));
}

QString xmlDegrees(const LvGeoArc& angle)
{
    return QString::number(angle.decimalDegrees(), 'g', xmlSignificantDigits);
}

LvGPXTrackPointImpl* readElement(const QDomElement& element)
{
    const double latitude =
        LvXMLParser::doubleAttribute(element, QStringLiteral("lat"), missingCoordinateDegrees);
    const double longitude =
        LvXMLParser::doubleAttribute(element, QStringLiteral("lon"), missingCoordinateDegrees);
    const QDateTime timeStamp =
        LvXMLParser::dateTimeText(element, QStringLiteral("time"), Qt::ISODate, QDateTime());
    const int elevation = wholeMetres(LvXMLParser::doubleText(element, QStringLiteral("ele"), 0.0));
    const QString description = LvXMLParser::text(element, QStringLiteral("desc"), QString());
    return new LvGPXTrackPointImpl(LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude)), elevation,
                                   timeStamp, description);
}

} // namespace

LvGPXTrackPoint::LvGPXTrackPoint()
    : myImpl(new LvGPXTrackPointImpl)
{
}

LvGPXTrackPoint::LvGPXTrackPoint(const LvGeoPosition& position, int elevation, const QDateTime& timeStamp,
                                 const QString& description)
    : myImpl(new LvGPXTrackPointImpl(position, elevation, timeStamp, description))
{
}

LvGPXTrackPoint::LvGPXTrackPoint(const QDomElement& element)
    : myImpl(readElement(element))
{
}

LvGPXTrackPoint::LvGPXTrackPoint(const LvGPXTrackPoint& other) = default;
LvGPXTrackPoint::LvGPXTrackPoint(LvGPXTrackPoint&& other) noexcept = default;
LvGPXTrackPoint& LvGPXTrackPoint::operator=(const LvGPXTrackPoint& other) = default;
LvGPXTrackPoint& LvGPXTrackPoint::operator=(LvGPXTrackPoint&& other) noexcept = default;
LvGPXTrackPoint::~LvGPXTrackPoint() = default;

LvGPXTrackPoint LvGPXTrackPoint::decodeKml(const QString& text)
{
    return LvKmlTuples::decodePoint(text);
}

LvGeoPositionList LvGPXTrackPoint::allPoints() const
{
    return myImpl->allPoints();
}

QList<LvGeoPositionList> LvGPXTrackPoint::chunkedPoints() const
{
    return myImpl->chunkedPoints();
}

bool LvGPXTrackPoint::isSinglePoint() const
{
    return myImpl->isSinglePoint();
}

LvGeoPosition LvGPXTrackPoint::firstPoint() const
{
    return myImpl->firstPoint();
}

LvGeoPosition LvGPXTrackPoint::lastPoint() const
{
    return myImpl->lastPoint();
}

QList<QDateTime> LvGPXTrackPoint::allTimeStamps() const
{
    return myImpl->allTimeStamps();
}

bool LvGPXTrackPoint::isNull() const
{
    const LvGeoPosition& position = myImpl->position();
    return position.latitude().isNull() && position.longitude().isNull();
}

LvGeoPosition LvGPXTrackPoint::position() const
{
    return myImpl->position();
}

int LvGPXTrackPoint::elevation() const
{
    return myImpl->elevation();
}

QDateTime LvGPXTrackPoint::timeStamp() const
{
    return myImpl->timeStamp();
}

QString LvGPXTrackPoint::description() const
{
    return myImpl->description();
}

bool LvGPXTrackPoint::operator==(const LvGPXTrackPoint& other) const
{
    return myImpl == other.myImpl
        || (myImpl->position() == other.myImpl->position() && myImpl->elevation() == other.myImpl->elevation()
            && myImpl->timeStamp() == other.myImpl->timeStamp()
            && myImpl->description() == other.myImpl->description());
}

void LvGPXTrackPoint::toXml(QDomElement& parent) const
{
    QDomElement trkpt = LvXMLBuilder::buildDomElement(parent, QStringLiteral("trkpt"));
    trkpt.setAttribute(QStringLiteral("lat"), xmlDegrees(myImpl->position().latitude()));
    trkpt.setAttribute(QStringLiteral("lon"), xmlDegrees(myImpl->position().longitude()));
    if (elevation() != 0) {
        LvXMLBuilder::buildDomElement(trkpt, QStringLiteral("ele"), QString::number(elevation()));
    }
    if (myImpl->timeStamp().isValid()) {
        LvXMLBuilder::buildDomElement(trkpt, QStringLiteral("time"),
                                      myImpl->timeStamp().toString(Qt::ISODate));
    }
    if (!myImpl->description().isEmpty()) {
        LvXMLBuilder::buildDomElement(trkpt, QStringLiteral("desc"), myImpl->description());
    }
}

QString LvGPXTrackPoint::toKml() const
{
    return LvKmlTuples::encode(*this);
}
