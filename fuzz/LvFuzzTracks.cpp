#include "LvFuzzTracks.h"

#include "LvFuzz.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvXMLBuilder.h"
#include "LvXMLParser.h"

#include <QDateTime>
#include <QDomElement>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

// A KML tuple is written with ten digits after the point and read with seven of them.
constexpr double tupleToleranceDegrees = 1.01e-7;

bool isSameNumber(double a, double b)
{
    return std::bit_cast<quint64>(a) == std::bit_cast<quint64>(b) || (std::isnan(a) && std::isnan(b));
}

bool isSameTime(const QDateTime& a, const QDateTime& b)
{
    return a.isValid() == b.isValid()
        && (!a.isValid()
            || (a.toMSecsSinceEpoch() == b.toMSecsSinceEpoch() && a.timeSpec() == b.timeSpec()
                && a.offsetFromUtc() == b.offsetFromUtc()));
}

QList<QList<LvGPXTrackPoint>> pointsOfSegments(const LvGPXTrack& track)
{
    QList<QList<LvGPXTrackPoint>> result;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        result.append(segment.trackPoints());
    }
    return result;
}

/// The points that the compact form keeps of each segment; a segment without any is not read back.
QList<QList<LvGPXTrackPoint>> keptPointsOfSegments(const LvGPXTrack& track)
{
    QList<QList<LvGPXTrackPoint>> result;
    const QList<QList<LvGPXTrackPoint>> segments = pointsOfSegments(track);
    for (const QList<LvGPXTrackPoint>& points : segments) {
        QList<LvGPXTrackPoint> kept;
        for (const LvGPXTrackPoint& point : points) {
            const LvGPXTrackPoint read = LvGPXTrackPoint::decodeKml(point.toKml());
            if (!read.isNull()) {
                kept.append(read);
            }
        }
        if (!kept.isEmpty()) {
            result.append(kept);
        }
    }
    return result;
}

LvGPXTrackPoint plainPoint(const QDomElement& element)
{
    const double latitude = LvXMLParser::doubleAttribute(element, QStringLiteral("lat"), 1.0);
    const double longitude = LvXMLParser::doubleAttribute(element, QStringLiteral("lon"), 1.0);
    const double elevation = LvXMLParser::doubleText(element, QStringLiteral("ele"), 0.0);
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return {LvGeoPosition(latitude, longitude),
            std::isnan(elevation) ? 0 : static_cast<int>(std::clamp(elevation, lowest, highest)),
            LvXMLParser::dateTimeText(element, QStringLiteral("time"), Qt::ISODate, QDateTime()),
            LvXMLParser::text(element, QStringLiteral("desc"), QString())};
}

QList<LvGPXTrackPoint> plainSegment(const QDomElement& element)
{
    QList<LvGPXTrackPoint> points;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("compressedPoints")) {
            points += LvGPXTrackSegment::decodeTrackPoints(child.text());
        } else if (child.tagName() == QLatin1String("trkpt")) {
            points.append(plainPoint(child));
        } else if (child.tagName() == QLatin1String("extensions")) {
            const QString tag = QStringLiteral("gpxx:rpt");
            const QDomElement extension = child.firstChildElement(QStringLiteral("gpxx:RoutePointExtension"));
            for (QDomElement point = extension.firstChildElement(tag); !point.isNull();
                 point = point.nextSiblingElement(tag)) {
                points.append(plainPoint(point));
            }
        }
    }
    return points;
}

double keptWidth(double width)
{
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return std::isnan(width) ? 0.0 : std::clamp(std::trunc(width), lowest, highest);
}

} // namespace

void LvFuzz::checkElement(const LvGPXTrackElement& element)
{
    const LvGeoPositionList points = element.allPoints();
    LvGeoPositionList joined;
    const QList<LvGeoPositionList> chunks = element.chunkedPoints();
    for (const LvGeoPositionList& chunk : chunks) {
        joined.append(chunk);
    }
    expect(std::equal(points.begin(), points.end(), joined.begin(), joined.end(), isSamePosition),
           "the chunks are the points");
    expect(element.isSinglePoint() ? points.size() == 1 : true, "a single point is one point");
    // Not element.boundingBox(), which is the same: tracks reserve many megabytes for every list of points,
    // and under the address sanitizer that takes longer than all else.
    const LvGeoPositionRect box = points.boundingBox();
    for (const LvGeoPosition& point : points) {
        expect(!point.isValid() || box.contains(point), "the bounding box contains every valid point");
    }
    const QList<QDateTime> stamps = element.allTimeStamps();
    expect(stamps.size() == points.size(), "there is a time stamp per point");
    const bool areAllValid =
        std::all_of(stamps.begin(), stamps.end(), [](const QDateTime& stamp) { return stamp.isValid(); });
    const LvRange<QDateTime> frame = element.timeFrame();
    for (const QDateTime& stamp : stamps) {
        expect(!areAllValid || frame.contains(stamp), "the time frame contains every time stamp");
    }
}

void LvFuzz::checkPoint(const LvGPXTrackPoint& point)
{
    const LvGPXTrackPoint read = LvGPXTrackPoint::decodeKml(point.toKml());
    const LvGeoPosition before = point.position();
    const LvGeoPosition after = read.position();
    if (before.latitude().isValid() && before.longitude().isValid()) {
        expect(std::abs(before.latitude().decimalDegrees() - after.latitude().decimalDegrees())
                       < tupleToleranceDegrees
                   && std::abs(before.longitude().decimalDegrees() - after.longitude().decimalDegrees())
                       < tupleToleranceDegrees,
               "a tuple keeps the position to seven digits");
        const LvGPXTrackPoint again = LvGPXTrackPoint::decodeKml(read.toKml());
        // But for the sign of a zero.
        expect(after.latitude().decimalDegrees() == again.position().latitude().decimalDegrees()
                   && after.longitude().decimalDegrees() == again.position().longitude().decimalDegrees(),
               "what a tuple has kept it keeps for ever");
    }
    expect(read.elevation() == point.elevation(), "a tuple keeps the elevation");
    const QDateTime expected = point.timeStamp().isValid()
        ? QDateTime::fromSecsSinceEpoch(point.timeStamp().toMSecsSinceEpoch(), Qt::UTC)
        : QDateTime();
    expect(read.timeStamp() == expected && read.timeStamp().isValid() == expected.isValid(),
           "the milliseconds of a tuple are read as seconds");
}

void LvFuzz::checkTrack(const LvGPXTrack& track)
{
    QList<LvGPXTrack> pending{track};
    while (!pending.isEmpty()) {
        const LvGPXTrack current = pending.takeLast();
        checkElement(current);
        expect(current.countPoints() == current.allTimeStamps().size(), "the points are counted");
        const QList<LvGPXTrackSegment> segments = current.segments();
        for (const LvGPXTrackSegment& segment : segments) {
            expect(segment.isValid(), "no segment is empty");
            const QList<LvGPXTrackPoint> points = segment.trackPoints();
            std::for_each(points.begin(), points.end(), checkPoint);
        }
        expect(current == LvGPXTrack(current), "a copy is equal");
        expect(!(current < current) && !(current > current), "no track is less than itself");
        const QList<LvGPXTrack> enclaves = current.enclaves();
        for (const LvGPXTrack& enclave : enclaves) {
            static_cast<void>(current.isEnclave(enclave));
        }
        pending += enclaves;
    }
}

void LvFuzz::checkTracks(const LvGPXConfiguredTrackList& tracks)
{
    for (const LvGPXConfiguredTrack& track : tracks) {
        checkTrack(track.track());
    }
}

bool LvFuzz::isSamePosition(const LvGeoPosition& a, const LvGeoPosition& b)
{
    return isSameNumber(a.latitude().decimalDegrees(), b.latitude().decimalDegrees())
        && isSameNumber(a.longitude().decimalDegrees(), b.longitude().decimalDegrees());
}

bool LvFuzz::isSamePoint(const LvGPXTrackPoint& a, const LvGPXTrackPoint& b)
{
    return isSamePosition(a.position(), b.position()) && a.elevation() == b.elevation()
        && isSameTime(a.timeStamp(), b.timeStamp()) && a.description() == b.description();
}

bool LvFuzz::isSamePoints(const QList<LvGPXTrackPoint>& a, const QList<LvGPXTrackPoint>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSamePoint);
}

bool LvFuzz::isSameTrack(const LvGPXTrack& a, const LvGPXTrack& b)
{
    QList<std::pair<LvGPXTrack, LvGPXTrack>> pending{{a, b}};
    while (!pending.isEmpty()) {
        const auto [left, right] = pending.takeLast();
        const QList<QList<LvGPXTrackPoint>> leftPoints = pointsOfSegments(left);
        const QList<QList<LvGPXTrackPoint>> rightPoints = pointsOfSegments(right);
        const QList<LvGPXTrack> leftEnclaves = left.enclaves();
        const QList<LvGPXTrack> rightEnclaves = right.enclaves();
        if (left.name() != right.name() || left.description() != right.description()
            || left.shape() != right.shape() || leftEnclaves.size() != rightEnclaves.size()
            || !std::equal(leftPoints.begin(), leftPoints.end(), rightPoints.begin(), rightPoints.end(),
                           isSamePoints)) {
            return false;
        }
        for (qsizetype index = 0; index < leftEnclaves.size(); ++index) {
            pending.append({leftEnclaves.at(index), rightEnclaves.at(index)});
        }
    }
    return true;
}

bool LvFuzz::isSameTracks(const QList<LvGPXTrack>& a, const QList<LvGPXTrack>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSameTrack);
}

bool LvFuzz::isSame(const LvGPXTrackConfiguration& a, const LvGPXTrackConfiguration& b)
{
    if (!isSameNumber(a.lineWidth().value(), b.lineWidth().value())
        || !isSameNumber(a.haloWidth().value(), b.haloWidth().value())) {
        return false;
    }
    LvGPXTrackConfiguration left = a;
    left.setLineWidth(1.0);
    left.setHaloWidth(1.0);
    LvGPXTrackConfiguration right = b;
    right.setLineWidth(1.0);
    right.setHaloWidth(1.0);
    return left == right;
}

LvGPXTrack LvFuzz::plainTrack(const QDomElement& trk)
{
    QString name;
    QString description;
    LvGPXTrackShape shape = LvGPXTrackShapeEnum::linestring;
    QList<LvGPXTrackSegment> segments;
    QList<LvGPXTrack> enclaves;
    for (QDomElement child = trk.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString tag = child.tagName();
        if (tag == QLatin1String("name")) {
            name = child.text();
        } else if (tag == QLatin1String("desc")) {
            description = child.text();
        } else if (tag == QLatin1String("shape")) {
            shape = LvGPXTrackShape(child.text());
        } else if (tag == QLatin1String("trkseg") || tag == QLatin1String("rtept")) {
            const QList<LvGPXTrackPoint> points = plainSegment(child);
            if (!points.isEmpty()) {
                segments.append(LvGPXTrackSegment(points));
            }
        } else if (tag == QLatin1String("enclaves")) {
            for (QDomElement enclave = child.firstChildElement(); !enclave.isNull();
                 enclave = enclave.nextSiblingElement()) {
                enclaves.append(plainTrack(enclave));
            }
        }
    }
    LvGPXTrack track(name, description, segments, shape); // decides on the kind where it is to be decided
    track.setEnclaves(enclaves);
    return track;
}

bool LvFuzz::isWhatWasWritten(const LvGPXTrack& read, const LvGPXTrack& written)
{
    QList<std::pair<LvGPXTrack, LvGPXTrack>> pending{{read, written}};
    while (!pending.isEmpty()) {
        const auto [after, before] = pending.takeLast();
        const QList<QList<LvGPXTrackPoint>> found = pointsOfSegments(after);
        const QList<QList<LvGPXTrackPoint>> kept = keptPointsOfSegments(before);
        const QList<LvGPXTrack> enclaves = after.enclaves();
        const QList<LvGPXTrack> expectedEnclaves = before.enclaves();
        if (after.name() != LvXMLBuilder::legalText(before.name()) || !after.description().isEmpty()
            || after.shape() != before.shape() || enclaves.size() != expectedEnclaves.size()
            || !std::equal(found.begin(), found.end(), kept.begin(), kept.end(), LvFuzz::isSamePoints)) {
            return false;
        }
        for (qsizetype index = 0; index < enclaves.size(); ++index) {
            pending.append({enclaves.at(index), expectedEnclaves.at(index)});
        }
    }
    return true;
}

bool LvFuzz::isWhatWasWritten(const LvGPXTrackConfiguration& read, const LvGPXTrackConfiguration& written)
{
    LvGPXTrackConfiguration expected = written;
    expected.setLineWidth(keptWidth(written.lineWidth().value()));
    expected.setHaloWidth(keptWidth(written.haloWidth().value()));
    // Half of an odd alpha value lies between those that eight digits can name.
    expected.setLineColor(QColor::fromRgba(written.lineColor().rgba()));
    expected.setFillColor(QColor::fromRgba(written.fillColor().rgba()));
    return read == expected;
}
