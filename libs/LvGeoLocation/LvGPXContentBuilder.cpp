#include "LvGPXContentBuilder.h"

#include "LvGPXDocumentReader.h"
#include "LvLatitude.h"
#include "LvLongitude.h"
#include "LvOwnDirectory.h"

#include <QDomElement>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

std::optional<QStringView> attributeView(const QDomElement& element, const QString& name, QString& storage)
{
    if (!element.hasAttribute(name)) {
        return std::nullopt;
    }
    storage = element.attribute(name);
    return QStringView(storage);
}

} // namespace

LvGPXContentBuilder::LvGPXContentBuilder(const QDir& dir)
{
    if (!LvOwnDirectory::areEqual(dir, QDir(QString()))) {
        myIncludeDirectory = LvOwnDirectory::copyOf(dir);
    }
}

void LvGPXContentBuilder::end(LvGPXContent content)
{
    switch (content) {
    case LvGPXContent::Point:
        endPoint();
        break;
    case LvGPXContent::Segment:
        endSegment();
        break;
    case LvGPXContent::Track:
    case LvGPXContent::Route:
    case LvGPXContent::GivenTrack:
    case LvGPXContent::Enclave:
        endTrack(content);
        break;
    default:
        break;
    }
}

void LvGPXContentBuilder::addElement(const QDomElement& element, LvGPXContent content)
{
    struct LvOpen {
        QDomElement myNext;
        LvGPXContent myContent;
    };

    std::vector<LvOpen> open;
    const auto enter = [this, &open](const QDomElement& entered, LvGPXContent as) {
        if (as == LvGPXContent::Point) {
            QString latitude;
            QString longitude;
            setCoordinates(attributeView(entered, QStringLiteral("lat"), latitude),
                           attributeView(entered, QStringLiteral("lon"), longitude));
        }
        open.push_back({entered.firstChildElement(), as});
    };

    enter(element, content);
    while (!open.empty()) {
        const QDomElement child = open.back().myNext;
        const LvGPXContent parent = open.back().myContent;
        if (child.isNull()) {
            open.pop_back();
            end(parent);
            continue;
        }
        open.back().myNext = child.nextSiblingElement();
        const QString name = child.tagName();
        const LvGPXContent as = begin(parent, QStringView(name));
        if (hasText(as)) {
            const QString text = child.text();
            setText(as, QStringView(text));
        } else if (as != LvGPXContent::Ignored) {
            enter(child, as);
        }
    }
}

void LvGPXContentBuilder::beginWith(const LvGPXTrack& track)
{
    myDrafts.push_back(
        {track.name(), track.description(), track.shape(), track.segments(), track.enclaves()});
}

LvGPXTrack LvGPXContentBuilder::build(const LvDraft& draft)
{
    LvGPXTrack track(draft.myName, draft.myDescription, draft.mySegments, draft.myShape);
    if (!draft.myEnclaves.isEmpty()) {
        track.setEnclaves(draft.myEnclaves);
    }
    return track;
}

void LvGPXContentBuilder::settleShape(LvDraft& draft)
{
    if (draft.myShape.value() == LvGPXTrackShapeEnum::automatic) {
        draft.myShape = LvGPXTrack::autoDetectShape(draft.mySegments);
    }
}

int LvGPXContentBuilder::wholeMetres(double elevation)
{
    if (std::isnan(elevation)) {
        return 0;
    }
    // Outside the range of an int the conversion would be undefined.
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(elevation, lowest, highest));
}

void LvGPXContentBuilder::beginPoint()
{
    myPoint = LvPointDraft();
}

void LvGPXContentBuilder::endPoint()
{
    myPoints.emplace_back(LvGeoPosition(LvLatitude(myPoint.myLatitude), LvLongitude(myPoint.myLongitude)),
                          myPoint.myElevation, myPoint.myTime, myPoint.myDescription);
}

void LvGPXContentBuilder::endSegment()
{
    if (myDrafts.empty() || myPoints.isEmpty()) {
        return; // a segment that is read for itself, or one that its track leaves out
    }
    QList<LvGPXTrackPoint> points = std::exchange(myPoints, {});
    points.squeeze(); // tracks live long, and growing leaves up to twice the room
    myDrafts.back().mySegments.append(LvGPXTrackSegment(points));
}

void LvGPXContentBuilder::endTrack(LvGPXContent content)
{
    settleShape(myDrafts.back());
    if (content == LvGPXContent::GivenTrack) {
        return;
    }
    LvGPXTrack track = build(myDrafts.back());
    myDrafts.pop_back();
    if (content == LvGPXContent::Enclave) {
        myDrafts.back().myEnclaves.append(std::move(track));
    } else {
        (content == LvGPXContent::Track ? myTracks : myRoutes).append(std::move(track));
    }
}

void LvGPXContentBuilder::include(const QString& fileName)
{
    // Not in enclaves, nor in what is included itself.
    if (!myIncludeDirectory || myDrafts.size() != 1) {
        return;
    }
    LvDraft& draft = myDrafts.front();
    LvGPXContentBuilder included;
    included.myDrafts.push_back(std::move(draft));
    LvGPXDocumentReader::read(QFileInfo(*myIncludeDirectory, fileName), LvGPXContent::IncludedFile, included);
    draft = std::move(included.myDrafts.front());
    settleShape(draft); // even where the file has no track
    myIncludedFileName = fileName;
}
