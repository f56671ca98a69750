#include "LvGPXTrackPoint.h"

#include "LvGPXContentBuilder.h"
#include "LvGPXTrackPointImpl.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvKmlTuples.h"
#include "LvXMLBuilder.h"

#include <QDomElement>

#include <utility>

namespace
{

constexpr int xmlSignificantDigits = 10;

QString xmlDegrees(const LvGeoArc& angle)
{
    return QString::number(angle.decimalDegrees(), 'g', xmlSignificantDigits);
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

LvGPXTrackPoint::LvGPXTrackPoint(LvGeoPosition&& position, int elevation, QDateTime&& timeStamp,
                                 QString&& description)
    : myImpl(
        new LvGPXTrackPointImpl(std::move(position), elevation, std::move(timeStamp), std::move(description)))
{
}

LvGPXTrackPoint::LvGPXTrackPoint(const QDomElement& element)
{
    LvGPXContentBuilder content;
    content.addElement(element, LvGPXContent::Point);
    *this = content.points().first();
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

const LvGeoPosition& LvGPXTrackPoint::sharedPosition() const&
{
    return myImpl->position();
}

const QDateTime& LvGPXTrackPoint::sharedTimeStamp() const&
{
    return myImpl->timeStamp();
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
