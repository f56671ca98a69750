#include "LvGPXTrackImpl.h"

#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"

#include <utility>
#include <vector>

namespace
{

// Room for any track at once: growing step by step would copy the positions of long tracks again and again.
constexpr qsizetype reservedPositions = 1000000;

} // namespace

LvGPXTrackImpl::LvGPXTrackImpl()
    : myShape(LvGPXTrackShapeEnum::linestring)
{
}

// NOLINTBEGIN(modernize-pass-by-value) copies of texts and lists are as cheap
LvGPXTrackImpl::LvGPXTrackImpl(const QString& name, const QString& description,
                               const QList<LvGPXTrackSegment>& segments, const LvGPXTrackShape& shape)
    : myName(name)
    , myDescription(description)
    , myShape(shape)
    , mySegments(segments)
{
}

// NOLINTEND(modernize-pass-by-value)

LvGPXTrackImpl::LvGPXTrackImpl(const LvGPXTrackImpl& other) = default;

LvGPXTrackImpl::~LvGPXTrackImpl()
{
    // One after the other instead of one inside the other: deeply nested enclaves must not exhaust the stack.
    QList<LvGPXTrack> doomed = std::move(myEnclaves);
    while (!doomed.isEmpty()) {
        LvGPXTrack track = doomed.takeLast();
        const LvGPXTrackImpl* impl = track.myImpl.constData();
        const bool isLastOwner = impl != nullptr && impl->ref.loadAcquire() == 1;
        if (isLastOwner && !impl->myEnclaves.isEmpty()) {
            doomed.append(std::exchange(track.myImpl->myEnclaves, {}));
        }
    }
}

LvGeoPositionList LvGPXTrackImpl::allPoints() const
{
    LvGeoPositionList positions;
    positions.reserve(reservedPositions);
    visitTrackPoints([&positions](const QList<LvGPXTrackPoint>& points) {
        for (const LvGPXTrackPoint& point : points) {
            positions.append(point.sharedPosition());
        }
    });
    return positions;
}

QList<LvGeoPositionList> LvGPXTrackImpl::chunkedPoints() const
{
    QList<LvGeoPositionList> chunks;
    for (const LvGPXTrackSegment& segment : mySegments) {
        chunks.append(segment.chunkedPoints());
    }
    return chunks;
}

bool LvGPXTrackImpl::isSinglePoint() const
{
    return mySegments.size() == 1 && mySegments.first().isSinglePoint();
}

LvGeoPosition LvGPXTrackImpl::firstPoint() const
{
    return mySegments.isEmpty() ? LvGPXTrackSegment().firstPoint() : mySegments.first().firstPoint();
}

LvGeoPosition LvGPXTrackImpl::lastPoint() const
{
    return mySegments.isEmpty() ? LvGeoPosition() : mySegments.last().lastPoint();
}

QList<QDateTime> LvGPXTrackImpl::allTimeStamps() const
{
    QList<QDateTime> timeStamps;
    timeStamps.reserve(countPoints());
    visitTrackPoints([&timeStamps](const QList<LvGPXTrackPoint>& points) {
        for (const LvGPXTrackPoint& point : points) {
            timeStamps.append(point.sharedTimeStamp());
        }
    });
    return timeStamps;
}

bool LvGPXTrackImpl::visitTrackPoints(
    const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const
{
    for (const LvGPXTrackSegment& segment : mySegments) {
        segment.visitTrackPoints(visit);
    }
    return true;
}

int LvGPXTrackImpl::countPoints() const
{
    // The same number as that of allPoints(), without gathering them.
    int count = 0;
    for (const LvGPXTrackSegment& segment : mySegments) {
        count += segment.count();
    }
    return count;
}

void LvGPXTrackImpl::addSegment(const LvGPXTrackSegment& segment)
{
    if (segment.isValid()) {
        mySegments.append(segment);
    }
}

bool LvGPXTrackImpl::operator==(const LvGPXTrackImpl& other) const
{
    // A list of what is still to be compared instead of recursion, because enclaves may be nested deeply.
    std::vector<std::pair<const LvGPXTrackImpl*, const LvGPXTrackImpl*>> pending{{this, &other}};
    while (!pending.empty()) {
        const auto [left, right] = pending.back();
        pending.pop_back();
        if (left == right) {
            continue;
        }
        if (!left->equalsWithoutEnclaves(*right)) {
            return false;
        }
        for (qsizetype index = 0; index < left->myEnclaves.size(); ++index) {
            pending.emplace_back(left->myEnclaves.at(index).myImpl.constData(),
                                 right->myEnclaves.at(index).myImpl.constData());
        }
    }
    return true;
}

bool LvGPXTrackImpl::equalsWithoutEnclaves(const LvGPXTrackImpl& other) const
{
    return myName == other.myName && myDescription == other.myDescription && myShape == other.myShape
        && myEnclaves.size() == other.myEnclaves.size() && mySegments == other.mySegments;
}
