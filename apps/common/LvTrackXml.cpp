#include "LvTrackXml.h"

#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoPosition.h"
#include "LvXMLBuilder.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr int coordinateDecimals = 10;
constexpr double smallestCompactDegrees = 1e-7;
constexpr qint64 millisecondsPerSecond = 1000;
constexpr int firstYear = 1;
constexpr int lastYear = 9999;

bool isWritable(const QDateTime& time)
{
    const int year = time.date().year();
    return year >= firstYear && year <= lastYear;
}

bool hasMilliseconds(const QDateTime& time)
{
    return time.toMSecsSinceEpoch() % millisecondsPerSecond != 0;
}

/// Whether the point is the same when it has been written and read in the compact form.
bool fitsCompactForm(const LvGPXTrackPoint& point)
{
    const QDateTime time = point.timeStamp();
    // The compact form keeps seven digits behind the point, and drops what lies at 0°/0° with them.
    const bool vanishes = std::abs(point.position().latitude().decimalDegrees()) < smallestCompactDegrees
        && std::abs(point.position().longitude().decimalDegrees()) < smallestCompactDegrees;
    return point.description().isEmpty() && !vanishes
        && (!time.isValid() || !hasMilliseconds(time) || !isWritable(time.toUTC()));
}

/// One point in the compact form, with the time in seconds as it is read.
QString compactForm(const LvGPXTrackPoint& point)
{
    QString text = point.toKml();
    if (point.timeStamp().isValid()) {
        text.truncate(text.lastIndexOf(QLatin1Char(',')) + 1);
        text += QString::number(point.timeStamp().toSecsSinceEpoch());
    }
    return text;
}

/// Adds elements of that depth, each with so many other nodes: attributes (two each), a text.
void addElements(LvTrackXmlCost& cost, int depth, qint64 otherNodes, qint64 count = 1)
{
    cost.nodes += count * (1 + otherNodes);
    cost.depthSum += count * 2 * depth; // one for each of its tags
}

bool standsInCompactForm(const QList<LvGPXTrackPoint>& points)
{
    return std::all_of(points.cbegin(), points.cend(), fitsCompactForm);
}

void addSegment(LvTrackXmlCost& cost, const LvGPXTrackSegment& segment, int depth)
{
    addElements(cost, depth, 0);
    const QList<LvGPXTrackPoint> points = segment.trackPoints();
    if (standsInCompactForm(points)) {
        addElements(cost, depth + 1, 1);
        return;
    }
    for (const LvGPXTrackPoint& point : points) {
        const int children = (point.elevation() != 0 ? 1 : 0) + (point.timeStamp().isValid() ? 1 : 0)
            + (point.description().isEmpty() ? 0 : 1);
        addElements(cost, depth + 1, 4); // two attributes
        addElements(cost, depth + 2, 1, children);
    }
}

void writeSegment(const QDomElement& trk, const LvGPXTrackSegment& segment)
{
    const QList<LvGPXTrackPoint> points = segment.trackPoints();
    if (points.isEmpty()) {
        return;
    }
    QDomElement element = LvXMLBuilder::buildDomElement(trk, QStringLiteral("trkseg"));
    if (standsInCompactForm(points)) {
        QStringList tuples;
        tuples.reserve(points.size());
        std::transform(points.cbegin(), points.cend(), std::back_inserter(tuples), compactForm);
        LvXMLBuilder::buildDomElement(element, QStringLiteral("compressedPoints"),
                                      tuples.join(QLatin1Char('\n')));
        return;
    }
    for (const LvGPXTrackPoint& point : points) {
        LvTrackXml::appendPoint(element, point);
    }
}

QString decimal(double degrees)
{
    QString text = QString::number(degrees, 'f', coordinateDecimals);
    while (text.endsWith(QLatin1Char('0'))) {
        text.chop(1);
    }
    return text.endsWith(QLatin1Char('.')) ? text.chopped(1) : text;
}

} // namespace

QString LvTrackXml::trackTag()
{
    return QStringLiteral("trk");
}

void LvTrackXml::writeTrack(const QDomElement& trk, const LvGPXTrack& track)
{
    // A list of what is still to be written instead of recursion, because enclaves may be nested deeply.
    QList<std::pair<QDomElement, LvGPXTrack>> pending{{trk, track}};
    while (!pending.isEmpty()) {
        auto [element, current] = pending.takeLast();
        LvGPXTrack head(current.name(), QString(), {}, current.shape());
        head.setShape(current.shape()); // also an automatic one
        head.buildXmlBody(element);
        if (!current.description().isEmpty()) {
            LvXMLBuilder::buildDomElement(element, QStringLiteral("desc"), current.description());
        }
        const QList<LvGPXTrackSegment> segments = current.segments();
        for (const LvGPXTrackSegment& segment : segments) {
            writeSegment(element, segment);
        }
        const QList<LvGPXTrack> enclaves = current.enclaves();
        if (!enclaves.isEmpty()) {
            const QDomElement list = LvXMLBuilder::buildDomElement(element, QStringLiteral("enclaves"));
            for (const LvGPXTrack& enclave : enclaves) {
                pending.append({LvXMLBuilder::buildDomElement(list, trackTag()), enclave});
            }
        }
    }
}

LvTrackXmlCost LvTrackXml::costOf(const LvGPXTrack& track, int depth)
{
    constexpr int ownTexts = 3; // name, shape, description
    LvTrackXmlCost cost;
    QList<std::pair<LvGPXTrack, int>> pending{{track, depth}};
    while (!pending.isEmpty()) {
        const auto [current, currentDepth] = pending.takeLast();
        addElements(cost, currentDepth, 0);
        addElements(cost, currentDepth + 1, 1, ownTexts);
        const QList<LvGPXTrackSegment> segments = current.segments();
        for (const LvGPXTrackSegment& segment : segments) {
            addSegment(cost, segment, currentDepth + 1);
        }
        addElements(cost, currentDepth + 1, 0); // the list of the enclaves
        const QList<LvGPXTrack> enclaves = current.enclaves();
        for (const LvGPXTrack& enclave : enclaves) {
            pending.append({enclave, currentDepth + 2});
        }
    }
    return cost;
}

QString LvTrackXml::timeText(const QDateTime& time)
{
    const QDateTime universal = time.toUTC();
    if (!universal.isValid() || !isWritable(universal)) {
        return {};
    }
    return universal.toString(hasMilliseconds(universal) ? Qt::ISODateWithMs : Qt::ISODate);
}

void LvTrackXml::appendPoint(QDomElement& segment, const LvGPXTrackPoint& point)
{
    const QString time = timeText(point.timeStamp());
    LvGPXTrackPoint(point.position(), point.elevation(), time.isEmpty() ? QDateTime() : point.timeStamp(),
                    point.description())
        .toXml(segment);
    QDomElement element = segment.lastChildElement();
    // Short numbers may come with an exponent, which the format does not know; nor does it know 180.
    const double latitude = point.position().latitude().decimalDegrees();
    const double longitude = point.position().longitude().decimalDegrees();
    element.setAttribute(QStringLiteral("lat"), decimal(latitude));
    element.setAttribute(QStringLiteral("lon"), decimal(longitude == 180.0 ? -180.0 : longitude));
    if (!time.isEmpty()) {
        element.firstChildElement(QStringLiteral("time")).firstChild().toText().setData(time);
    }
}
