#include "LvTrackXml.h"

#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoPosition.h"
#include "LvNumberText.h"
#include "LvXMLBuilder.h"
#include "LvXMLWriter.h"

#include <QDateTime>
#include <QList>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{

constexpr int coordinateDecimals = 10;
constexpr double smallestCompactDegrees = 1e-7;
constexpr qint64 millisecondsPerSecond = 1000;
constexpr int firstYear = 1;
constexpr int lastYear = 9999;
constexpr std::size_t longestTuple = 4 * LvNumberText::maximumLength + 4; // with commas and a line feed
constexpr qint64 timeBytes = 20; // "2023-06-01T10:00:00Z"
constexpr qint64 fractionBytes = 4; // ".050"
constexpr qint64 longestShape = 64; // keys of all shapes

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

/// Writes one point in the compact form, with the time in seconds as it is read, and a line feed. Returns the
/// end of the text.
char* writeCompactForm(char* buffer, const LvGPXTrackPoint& point)
{
    char* end = LvNumberText::writeFixed(buffer, point.sharedPosition().longitude().decimalDegrees());
    *end++ = ',';
    end = LvNumberText::writeFixed(end, point.sharedPosition().latitude().decimalDegrees());
    const QDateTime& time = point.sharedTimeStamp();
    if (point.elevation() != 0 || time.isValid()) {
        *end++ = ',';
        end = LvNumberText::writeInteger(end, point.elevation());
    }
    if (time.isValid()) {
        *end++ = ',';
        end = LvNumberText::writeInteger(end, time.toSecsSinceEpoch());
    }
    *end++ = '\n';
    return end;
}

using TupleBuffer = std::array<char, longestTuple>;

qint64 compactBytes(const QList<LvGPXTrackPoint>& points)
{
    TupleBuffer buffer; // written before it is read
    qint64 bytes = 0;
    for (const LvGPXTrackPoint& point : points) {
        bytes += writeCompactForm(buffer.data(), point) - buffer.data();
    }
    return bytes;
}

QString compactText(const QList<LvGPXTrackPoint>& points)
{
    constexpr qsizetype usualTuple = 40;
    TupleBuffer buffer; // written before it is read
    QString text;
    text.reserve(points.size() * usualTuple);
    for (const LvGPXTrackPoint& point : points) {
        const char* const end = writeCompactForm(buffer.data(), point);
        text.append(QLatin1String(buffer.data(), end - buffer.data()));
    }
    text.chop(1); // no line feed behind the last one
    return text;
}

/// At most so many bytes has the text in a file.
qint64 bytesOf(const QString& text)
{
    constexpr qint64 sectionTags = 12;
    // A text of white space only becomes a section, and so does one of which nothing else is legal.
    const bool isSection = std::all_of(text.begin(), text.end(), [](QChar unit) {
        return unit.isSpace() || LvXMLWriter::findSuspect(QStringView(&unit, 1), 0) == 0;
    });
    qint64 bytes = isSection ? sectionTags : 0;
    for (const QChar unit : text) {
        if (unit == u'<' || unit == u'>') {
            bytes += 4; // "&lt;"
        } else if (unit == u'&' || unit == u'\r') {
            bytes += 5; // "&amp;"
        } else if (unit < u'\x80') {
            bytes += 1;
        } else {
            bytes += unit < u'\u0800' || unit.isSurrogate() ? 2 : 3;
        }
    }
    return bytes;
}

qint64 bytesOfAngle(double degrees)
{
    std::array<char, LvNumberText::maximumLength> buffer;
    const char* const end = LvNumberText::writeFixed(buffer.data(), degrees);
    return end - buffer.data() + 1; // 180 is written as -180
}

enum class Content { Text, Elements };

/// Adds an element of that depth with so many other nodes (attributes are two each, a text is one) of so many
/// bytes.
void addElement(LvTrackXmlCost& cost, int depth, QLatin1String tag, Content content, qint64 otherNodes = 0,
                qint64 bytes = 0)
{
    constexpr qint64 brackets = 5; // "<></>"
    constexpr qint64 lineFeed = 1;
    const qint64 lines = content == Content::Text ? 1 : 2;
    const qint64 indentation = std::min<qint64>(depth - 1, LvXMLWriter::maximumIndentation);
    cost.nodes += 1 + otherNodes;
    cost.depthSum += 2 * depth; // one for each of its tags
    cost.bytes += 2 * tag.size() + brackets + lines * (indentation + lineFeed) + bytes;
}

void addPoint(LvTrackXmlCost& cost, const LvGPXTrackPoint& point, int depth)
{
    constexpr qint64 attributeNames = 14; // ' lat=""' and ' lon=""'
    const LvGeoPosition& position = point.sharedPosition();
    const bool isEmpty =
        point.elevation() == 0 && !point.sharedTimeStamp().isValid() && point.description().isEmpty();
    addElement(cost, depth, QLatin1String("trkpt"), isEmpty ? Content::Text : Content::Elements, 4,
               attributeNames + bytesOfAngle(position.latitude().decimalDegrees())
                   + bytesOfAngle(position.longitude().decimalDegrees()));
    if (point.elevation() != 0) {
        std::array<char, LvNumberText::maximumLength> buffer;
        const qint64 digits = LvNumberText::writeInteger(buffer.data(), point.elevation()) - buffer.data();
        addElement(cost, depth + 1, QLatin1String("ele"), Content::Text, 1, digits);
    }
    if (point.sharedTimeStamp().isValid()) {
        addElement(cost, depth + 1, QLatin1String("time"), Content::Text, 1,
                   timeBytes + (hasMilliseconds(point.sharedTimeStamp()) ? fractionBytes : 0));
    }
    if (!point.description().isEmpty()) {
        addElement(cost, depth + 1, QLatin1String("desc"), Content::Text, 1, bytesOf(point.description()));
    }
}

bool standsInCompactForm(const QList<LvGPXTrackPoint>& points)
{
    return std::all_of(points.cbegin(), points.cend(), fitsCompactForm);
}

void addSegment(LvTrackXmlCost& cost, const LvGPXTrackSegment& segment, int depth, LvTrackXml::PointForm form)
{
    addElement(cost, depth, QLatin1String("trkseg"), Content::Elements);
    const QList<LvGPXTrackPoint> points = segment.trackPoints();
    if (form == LvTrackXml::PointForm::ShortestThatKeepsAll && standsInCompactForm(points)) {
        addElement(cost, depth + 1, QLatin1String("compressedPoints"), Content::Text, 1,
                   compactBytes(points));
        return;
    }
    for (const LvGPXTrackPoint& point : points) {
        addPoint(cost, point, depth + 1);
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
        LvXMLBuilder::buildDomElement(element, QStringLiteral("compressedPoints"), compactText(points));
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

LvTrackXmlCost LvTrackXml::costOf(const LvGPXTrack& track, int depth, PointForm form)
{
    LvTrackXmlCost cost;
    QList<std::pair<LvGPXTrack, int>> pending{{track, depth}};
    while (!pending.isEmpty()) {
        const auto [current, currentDepth] = pending.takeLast();
        addElement(cost, currentDepth, QLatin1String("trk"), Content::Elements);
        addElement(cost, currentDepth + 1, QLatin1String("name"), Content::Text, 1, bytesOf(current.name()));
        addElement(cost, currentDepth + 1, QLatin1String("shape"), Content::Text, 1, longestShape);
        addElement(cost, currentDepth + 1, QLatin1String("desc"), Content::Text, 1,
                   bytesOf(current.description()));
        const QList<LvGPXTrackSegment> segments = current.segments();
        for (const LvGPXTrackSegment& segment : segments) {
            addSegment(cost, segment, currentDepth + 1, form);
        }
        addElement(cost, currentDepth + 1, QLatin1String("enclaves"), Content::Elements);
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
