#include "LvGPXTrack.h"

#include "LvEnumToStringTable.h"
#include "LvGPXContentBuilder.h"
#include "LvGPXTrackFileRegistry.h"
#include "LvGPXTrackFileRegistryKey.h"
#include "LvGPXTrackImpl.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvKmlTuples.h"
#include "LvOwnDirectory.h"
#include "LvXMLBuilder.h"
#include "LvXMLWriter.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFileInfo>
#include <QPainterPath>

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

bool isEmptyDirectory(const QDir& dir)
{
    return LvOwnDirectory::areEqual(dir, QDir(QString()));
}

/// The first position of a track that has points.
LvGeoPosition firstPosition(const LvGPXTrack& track)
{
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        if (segment.isValid()) {
            return segment.firstPoint();
        }
    }
    return {};
}

} // namespace

LvGPXTrack::LvGPXTrack()
    : myImpl(new LvGPXTrackImpl)
{
}

LvGPXTrack::LvGPXTrack(const QString& name, const QString& description,
                       const QList<LvGPXTrackSegment>& segments, const LvGPXTrackShape& shape)
    : myImpl(new LvGPXTrackImpl(name, description, segments,
                                shape.value() == LvGPXTrackShapeEnum::automatic ? autoDetectShape(segments)
                                                                                : shape))
{
}

LvGPXTrack::LvGPXTrack(const LvGPXTrackPoint& point)
    : myImpl(new LvGPXTrackImpl(point.description(), QString(), {}, LvGPXTrackShapeEnum::point))
{
    if (point.position().isValid()) {
        myImpl->addSegment(LvGPXTrackSegment(point));
    }
}

LvGPXTrack::LvGPXTrack(const QDomElement& element, const QDir& dir)
    : LvGPXTrack()
{
    fromXml(element, dir);
}

LvGPXTrack::LvGPXTrack(const LvGPXTrack& other) = default;
LvGPXTrack::LvGPXTrack(LvGPXTrack&& other) noexcept = default;
LvGPXTrack& LvGPXTrack::operator=(const LvGPXTrack& other) = default;
LvGPXTrack& LvGPXTrack::operator=(LvGPXTrack&& other) noexcept = default;
LvGPXTrack::~LvGPXTrack() = default;

LvGPXTrack LvGPXTrack::decodeKml(const QString& name, const QString& description, const QString& coordinates,
                                 const LvGPXTrackShape& shape)
{
    const LvGPXTrackSegment segment = LvGPXTrackSegment::decodeKml(coordinates.trimmed());
    QList<LvGPXTrackSegment> segments;
    if (segment.isValid()) {
        segments.append(segment);
    }
    return {name, description, segments, shape};
}

LvGPXTrackShape LvGPXTrack::autoDetectShape(const QList<LvGPXTrackSegment>& segments)
{
    if (segments.isEmpty()) {
        return LvGPXTrackShapeEnum::unknown;
    }
    if (segments.size() == 1 && segments.first().isSinglePoint()) {
        return LvGPXTrackShapeEnum::point;
    }
    return segments.first().firstPoint() == segments.last().lastPoint() ? LvGPXTrackShapeEnum::polygon
                                                                        : LvGPXTrackShapeEnum::linestring;
}

LvGeoPositionList LvGPXTrack::allPoints() const
{
    return myImpl->allPoints();
}

QList<LvGeoPositionList> LvGPXTrack::chunkedPoints() const
{
    return myImpl->chunkedPoints();
}

bool LvGPXTrack::isSinglePoint() const
{
    return myImpl->isSinglePoint();
}

LvGeoPosition LvGPXTrack::firstPoint() const
{
    return myImpl->firstPoint();
}

LvGeoPosition LvGPXTrack::lastPoint() const
{
    return myImpl->lastPoint();
}

QList<QDateTime> LvGPXTrack::allTimeStamps() const
{
    return myImpl->allTimeStamps();
}

bool LvGPXTrack::visitTrackPoints(
    const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const
{
    return myImpl->visitTrackPoints(visit);
}

bool LvGPXTrack::isValid() const
{
    return myImpl->isValid();
}

bool LvGPXTrack::hasShape(const LvGPXTrackShape& shape) const
{
    return myImpl->shape() == shape;
}

bool LvGPXTrack::isEnclave(const LvGPXTrack& other) const
{
    return hasShape(LvGPXTrackShapeEnum::polygon) && other.hasShape(LvGPXTrackShapeEnum::polygon)
        && allPoints().toPainterPath().contains(other.allPoints().toPainterPath());
}

QString LvGPXTrack::name() const
{
    return myImpl->name();
}

QString LvGPXTrack::description() const
{
    return myImpl->description();
}

LvGPXTrackShape LvGPXTrack::shape() const
{
    return myImpl->shape();
}

LvGPXTrackShape LvGPXTrack::naturalShape() const
{
    return autoDetectShape(myImpl->segments());
}

QList<LvGPXTrackSegment> LvGPXTrack::segments() const
{
    return myImpl->segments();
}

QList<LvGPXTrack> LvGPXTrack::enclaves() const
{
    return myImpl->enclaves();
}

int LvGPXTrack::countPoints() const
{
    return myImpl->countPoints();
}

void LvGPXTrack::setName(const QString& name)
{
    if (this->name() != name) {
        myImpl->setName(name);
    }
}

void LvGPXTrack::setShape(const LvGPXTrackShape& shape)
{
    if (!hasShape(shape)) {
        myImpl->setShape(shape);
    }
}

void LvGPXTrack::setEnclaves(const QList<LvGPXTrack>& enclaves)
{
    myImpl->setEnclaves(enclaves);
}

void LvGPXTrack::addEnclave(const LvGPXTrack& enclave)
{
    // The copy makes the change detach when the enclave is this very track; otherwise its payload would come
    // to contain itself.
    const LvGPXTrack copy(enclave); // NOLINT(performance-unnecessary-copy-initialization) see above
    myImpl->addEnclave(copy);
}

bool LvGPXTrack::operator==(const LvGPXTrack& other) const
{
    return myImpl == other.myImpl || *myImpl == *other.myImpl;
}

bool LvGPXTrack::operator!=(const LvGPXTrack& other) const
{
    return !(*this == other);
}

bool LvGPXTrack::operator<(const LvGPXTrack& other) const
{
    const int count = countPoints();
    const int otherCount = other.countPoints();
    if (count == 0 || count != otherCount) {
        return count < otherCount;
    }
    return firstPosition(*this) < firstPosition(other);
}

bool LvGPXTrack::operator>(const LvGPXTrack& other) const
{
    const int count = countPoints();
    const int otherCount = other.countPoints();
    if (count == 0 || count != otherCount) {
        return count > otherCount;
    }
    return firstPosition(*this) > firstPosition(other);
}

void LvGPXTrack::fromXml(const QDomElement& element, const QDir& dir)
{
    LvGPXContentBuilder content(dir);
    content.beginWith(*this);
    content.addElement(element, LvGPXContent::GivenTrack);
    *this = content.track();
    if (!content.includedFileName().isEmpty()) {
        LvGPXTrackFileRegistry::instance()->registerFile(LvGPXTrackFileRegistryKey(*this, dir),
                                                         content.includedFileName());
    }
}

void LvGPXTrack::toXml(QDomElement& parent, const QDir& dir) const
{
    QDomElement trk = buildTrackElement(parent);
    if (isEmptyDirectory(dir) || !LvOwnDirectory::copyOf(dir).exists()) {
        buildXmlBody(trk);
        return;
    }
    const QString fileName =
        LvGPXTrackFileRegistry::instance()->createAssignedFile(LvGPXTrackFileRegistryKey(*this, dir));
    LvXMLBuilder::buildDomElement(trk, QStringLiteral("include"), fileName);
}

QDomElement LvGPXTrack::buildTrackElement(QDomElement& parent)
{
    return LvXMLBuilder::buildDomElement(parent, QStringLiteral("trk"));
}

void LvGPXTrack::buildXmlBody(QDomElement& trk) const
{
    buildXmlBody(trk, *this,
                 [](QDomElement& parent, const LvGPXTrackSegment& segment) { segment.toXml(parent); });
}

template <class BuildSegment>
void LvGPXTrack::buildXmlBody(const QDomElement& trk, const LvGPXTrack& body,
                              const BuildSegment& buildSegment)
{
    // A list of what is still to be written instead of recursion, because enclaves may be nested deeply.
    QList<std::pair<QDomElement, LvGPXTrack>> pending{{trk, body}};
    while (!pending.isEmpty()) {
        auto [element, track] = pending.takeLast();
        LvXMLBuilder::buildDomElement(element, QStringLiteral("name"), track.name());
        const LvGPXTrackShape shape = track.shape();
        LvXMLBuilder::buildDomElement(element, QStringLiteral("shape"),
                                      shape.enumToStringTable()->encodeCSV(shape.value()));
        const QList<LvGPXTrackSegment> segments = track.segments();
        for (const LvGPXTrackSegment& segment : segments) {
            buildSegment(element, segment);
        }
        const QList<LvGPXTrack> enclaves = track.enclaves();
        if (!enclaves.isEmpty()) {
            QDomElement list = LvXMLBuilder::buildDomElement(element, QStringLiteral("enclaves"));
            const qsizetype first = pending.size();
            for (const LvGPXTrack& enclave : enclaves) {
                pending.append({buildTrackElement(list), enclave});
            }
            std::reverse(pending.begin() + first, pending.end()); // the first one next: in document order
        }
    }
}

void LvGPXTrack::saveAsGpxFile(const QFileInfo& file) const
{
    saveBelow(QStringLiteral("gpx"), file);
}

void LvGPXTrack::saveBelow(const QString& rootName, const QFileInfo& file) const
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, rootName);
    // The points go straight into the file: as a text in the tree they would take several times the room.
    std::vector<LvXMLLateText> lateTexts;
    buildXmlBody(
        buildTrackElement(root), *this, [&lateTexts](QDomElement& trk, const LvGPXTrackSegment& segment) {
            if (!segment.isValid()) {
                segment.toXml(trk);
                return;
            }
            const QDomElement trkseg = LvXMLBuilder::buildDomElement(trk, QStringLiteral("trkseg"));
            lateTexts.push_back({LvXMLBuilder::buildDomElement(trkseg, QStringLiteral("compressedPoints")),
                                 [points = segment.trackPoints()](const auto& write) {
                                     LvKmlTuples::encode(points, write);
                                 }});
        });
    LvXMLBuilder::saveUTF8(document, lateTexts, file);
}
