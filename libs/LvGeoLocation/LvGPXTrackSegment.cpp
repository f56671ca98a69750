#include "LvGPXTrackSegment.h"

#include "LvConcurrent.h"
#include "LvGPXContentBuilder.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvIntRange.h"
#include "LvKmlTuples.h"
#include "LvXMLBuilder.h"

#include <QDomElement>

#include <algorithm>
#include <functional>

namespace
{

// Copying a position takes some nanoseconds, handing a block to another thread some microseconds.
constexpr int minimumPositionsPerBlock = 1024;

} // namespace

LvGPXTrackSegment::LvGPXTrackSegment() = default;

LvGPXTrackSegment::LvGPXTrackSegment(const QList<LvGPXTrackPoint>& points)
    : myTrackPoints(points)
{
}

LvGPXTrackSegment::LvGPXTrackSegment(const LvGPXTrackPoint& point)
    : myTrackPoints{point}
{
}

LvGPXTrackSegment::LvGPXTrackSegment(const QDomElement& element)
{
    LvGPXContentBuilder content;
    content.addElement(element, LvGPXContent::Segment);
    myTrackPoints = content.points();
}

LvGPXTrackSegment::LvGPXTrackSegment(const LvGPXTrackSegment& other) = default;
LvGPXTrackSegment::LvGPXTrackSegment(LvGPXTrackSegment&& other) noexcept = default;
LvGPXTrackSegment& LvGPXTrackSegment::operator=(const LvGPXTrackSegment& other) = default;
LvGPXTrackSegment& LvGPXTrackSegment::operator=(LvGPXTrackSegment&& other) noexcept = default;
LvGPXTrackSegment::~LvGPXTrackSegment() = default;

LvGPXTrackSegment LvGPXTrackSegment::decodeKml(const QString& text)
{
    return decodeTrackPoints(text);
}

QList<LvGPXTrackPoint> LvGPXTrackSegment::decodeTrackPoints(const QString& text)
{
    return LvKmlTuples::decodePoints(text);
}

bool LvGPXTrackSegment::weAreaRunningInMainThread()
{
    return LvConcurrent::isMainThread();
}

LvGeoPositionList LvGPXTrackSegment::allPoints() const
{
    LvGeoPositionList positions;
    positions.reserve(myTrackPoints.size());
    for (const LvGPXTrackPoint& point : myTrackPoints) {
        positions.append(point.sharedPosition());
    }
    return positions;
}

QList<LvGeoPositionList> LvGPXTrackSegment::chunkedPoints() const
{
    const LvIntRange range(0, count() - 1);
    // The first question is the cheaper one: tracks may have very many short segments.
    if (count() < 2 * minimumPositionsPerBlock || !weAreaRunningInMainThread()) {
        return {collectBlock(range)};
    }
    // The workers read a copy of their own, so that they stay clear of whatever happens to this object.
    const LvGPXTrackSegment segment(*this);
    const std::function<LvGeoPositionList(const LvIntRange&)> collect = [&segment](const LvIntRange& block) {
        return segment.collectBlock(block);
    };
    return LvConcurrent::blockingMapped(range.splitEvenlyForCpuCores(minimumPositionsPerBlock), collect);
}

bool LvGPXTrackSegment::isSinglePoint() const
{
    return myTrackPoints.size() == 1;
}

LvGeoPosition LvGPXTrackSegment::firstPoint() const
{
    return myTrackPoints.isEmpty() ? LvGPXTrackPoint().position() : myTrackPoints.first().firstPoint();
}

LvGeoPosition LvGPXTrackSegment::lastPoint() const
{
    return myTrackPoints.isEmpty() ? LvGeoPosition() : myTrackPoints.last().lastPoint();
}

QList<QDateTime> LvGPXTrackSegment::allTimeStamps() const
{
    QList<QDateTime> timeStamps;
    timeStamps.reserve(myTrackPoints.size());
    for (const LvGPXTrackPoint& point : myTrackPoints) {
        timeStamps.append(point.sharedTimeStamp());
    }
    return timeStamps;
}

bool LvGPXTrackSegment::visitTrackPoints(
    const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const
{
    visit(myTrackPoints);
    return true;
}

bool LvGPXTrackSegment::isValid() const
{
    return !myTrackPoints.isEmpty();
}

QList<LvGPXTrackPoint> LvGPXTrackSegment::trackPoints() const
{
    return myTrackPoints;
}

int LvGPXTrackSegment::count() const
{
    return static_cast<int>(myTrackPoints.size());
}

LvGeoPositionList LvGPXTrackSegment::collectBlock(const LvIntRange& block) const
{
    const int first = std::max(0, block.firstIndex());
    const int end = std::min(count(), block.lastIndexEvenIfUnvalid());
    LvGeoPositionList positions;
    positions.reserve(std::max(0, end - first));
    for (int index = first; index < end; ++index) {
        positions.append(myTrackPoints.at(index).sharedPosition());
    }
    return positions;
}

bool LvGPXTrackSegment::operator==(const LvGPXTrackSegment& other) const
{
    return myTrackPoints == other.myTrackPoints;
}

void LvGPXTrackSegment::decodeGarminGPX(
    QDomElement extensions) // NOLINT(performance-unnecessary-value-param) see header
{
    LvGPXContentBuilder content;
    content.addElement(extensions, LvGPXContent::Extensions);
    myTrackPoints += content.points();
}

void LvGPXTrackSegment::toXml(QDomElement& parent) const
{
    QDomElement trkseg = LvXMLBuilder::buildDomElement(parent, QStringLiteral("trkseg"));
    LvXMLBuilder::buildDomElement(trkseg, QStringLiteral("compressedPoints"), toKml());
}

QString LvGPXTrackSegment::toKml() const
{
    return LvKmlTuples::encode(myTrackPoints);
}
