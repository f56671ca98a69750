// The texts of "compressedPoints" and of KML coordinates, compared with the plainest way to read them.

#include "LvDateTimeText.h"
#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackShape.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvNumberText.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

namespace
{

constexpr qsizetype keptBehindPoint = 8; // the point and seven digits

double plainDouble(const QString& text)
{
    return text.left(text.indexOf(QLatin1Char('.')) + keptBehindPoint).toDouble();
}

LvGPXTrackPoint plainPoint(const QString& tuple)
{
    const QStringList fields = tuple.split(QLatin1Char(','));
    const double longitude = plainDouble(fields.value(0));
    const double latitude = plainDouble(fields.value(1));
    const QDateTime time =
        fields.size() > 3 ? QDateTime::fromSecsSinceEpoch(fields.at(3).toLongLong(), Qt::UTC) : QDateTime();
    return {LvGeoPosition(latitude, longitude), fields.value(2).toInt(), time, QString()};
}

QList<LvGPXTrackPoint> plainPoints(const QString& text)
{
    static const QRegularExpression myWhiteSpace(QStringLiteral("\\s+"));
    QList<LvGPXTrackPoint> points;
    const QStringList tuples = text.split(myWhiteSpace);
    for (const QString& tuple : tuples) {
        const LvGPXTrackPoint point = plainPoint(tuple);
        if (point.position().latitude().decimalDegrees() != 0.0
            || point.position().longitude().decimalDegrees() != 0.0) {
            points.append(point);
        }
    }
    return points;
}

/// The form of one angle, with all digits first.
QString plainDegrees(double degrees)
{
    QString text = QString::number(degrees, 'f', 10);
    while (text.endsWith(QLatin1Char('0'))) {
        text.chop(1);
    }
    return text;
}

QString plainTuple(const LvGPXTrackPoint& point)
{
    QStringList fields{plainDegrees(point.position().longitude().decimalDegrees()),
                       plainDegrees(point.position().latitude().decimalDegrees())};
    if (point.elevation() != 0 || point.timeStamp().isValid()) {
        fields.append(QString::number(point.elevation()));
    }
    if (point.timeStamp().isValid()) {
        fields.append(QString::number(point.timeStamp().toMSecsSinceEpoch()));
    }
    return fields.join(QLatin1Char(','));
}

bool haveNoTime(const QList<LvGPXTrackPoint>& points)
{
    return std::none_of(points.begin(), points.end(),
                        [](const LvGPXTrackPoint& point) { return point.timeStamp().isValid(); });
}

bool isSame(double a, double b)
{
    return std::bit_cast<quint64>(a) == std::bit_cast<quint64>(b);
}

/// The short ways of reading and writing against the toolkit's.
void checkNumberText(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    LvFuzz::expect(isSame(LvNumberText::toDouble(text), text.toDouble())
                       && isSame(LvNumberText::toDouble(view), text.toDouble()),
                   "a number is read as the toolkit reads it");
    const QDateTime time = QDateTime::fromString(text.trimmed(), Qt::ISODate);
    const QDateTime read = LvDateTimeText::fromIso(text);
    LvFuzz::expect(read.isValid() == time.isValid() && read == time && read.timeSpec() == time.timeSpec()
                       && LvDateTimeText::fromIso(view) == read,
                   "a time is read as the toolkit reads it");
    LvFuzz::expect(LvNumberText::toInt(text) == text.toInt() && LvNumberText::toInt(view) == text.toInt()
                       && LvNumberText::toLongLong(text) == text.toLongLong()
                       && LvNumberText::toLongLong(view) == text.toLongLong(),
                   "an integer is read as the toolkit reads it");
}

void checkWrittenNumber(quint64 bits)
{
    const auto number = std::bit_cast<double>(bits);
    const auto integer = std::bit_cast<qint64>(bits);
    for (const double any :
         {number, static_cast<double>(integer) / 1e7, static_cast<double>(integer) / 1e11}) {
        QString text;
        LvNumberText::appendFixed(text, any);
        QByteArray bytes;
        LvNumberText::appendFixed(bytes, any);
        LvFuzz::expect(text == plainDegrees(any) && QString::fromLatin1(bytes) == text
                           && text.size() <= LvNumberText::maximumLength,
                       "a number is written as the toolkit writes it");
    }
    QString text;
    LvNumberText::appendInteger(text, integer);
    LvFuzz::expect(text == QString::number(integer), "an integer is written as the toolkit writes it");
}

void checkNumber(const QString& text)
{
    checkNumberText(text);
    LvFuzz::expect(isSame(LvGPXTrackElement::safeDouble(text), plainDouble(text)),
                   "a number is read as the toolkit reads it, with seven digits behind the point");
}

/// Text to points to text to points: what stays, and what does not.
void checkRoundTrip(const QList<LvGPXTrackPoint>& points)
{
    const LvGPXTrackSegment segment(points);
    const QString text = segment.toKml();
    QStringList tuples;
    for (const LvGPXTrackPoint& point : points) {
        tuples.append(plainTuple(point));
    }
    LvFuzz::expect(text == tuples.join(QLatin1Char('\n')), "a segment is written tuple by tuple");

    // A position below the last digit that is read comes back as 0/0, which no text can hold.
    QList<LvGPXTrackPoint> kept;
    for (const LvGPXTrackPoint& point : points) {
        const LvGPXTrackPoint read = plainPoint(point.toKml());
        if (!read.isNull()) {
            kept.append(read);
        }
    }
    const LvGPXTrackSegment again = LvGPXTrackSegment::decodeKml(text);
    LvFuzz::expect(LvFuzz::isSamePoints(again.trackPoints(), kept),
                   "all points that a tuple can keep are read back");
    // Times do not stay: they are written in milliseconds and read in seconds.
    if (haveNoTime(points)) {
        const QString shortText = again.toKml();
        LvFuzz::expect(LvGPXTrackSegment::decodeKml(shortText).toKml() == shortText,
                       "what a text without times has kept it keeps for ever");
    }
}

void checkPlacemark(const QString& text, const QList<LvGPXTrackPoint>& points)
{
    const LvGPXTrack track =
        LvGPXTrack::decodeKml(QStringLiteral("name"), QString(), text, LvGPXTrackShapeEnum::automatic);
    LvFuzz::expect(track.countPoints() == points.size(), "a placemark has the points of its coordinates");
    LvFuzz::expect(track.isValid() == !points.isEmpty(), "a track is valid with its first point");
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QString text = QString::fromUtf8(input);
    checkNumber(text);
    const QStringList fields = text.split(QLatin1Char(','));
    std::for_each(fields.begin(), fields.end(), checkNumber);
    quint64 bits = 0;
    std::memcpy(&bits, input.constData(),
                std::min<std::size_t>(sizeof bits, static_cast<std::size_t>(input.size())));
    checkWrittenNumber(bits);

    expect(isSamePoint(LvGPXTrackPoint::decodeKml(text), plainPoint(text)),
           "a tuple is read as the plainest way reads it");
    checkPoint(LvGPXTrackPoint::decodeKml(text));

    const QList<LvGPXTrackPoint> points = LvGPXTrackSegment::decodeTrackPoints(text);
    expect(isSamePoints(points, plainPoints(text)), "tuples are read as the plainest way reads them");
    for (const LvGPXTrackPoint& point : points) {
        expect(!point.isNull(), "no point lies at 0/0");
        checkPoint(point);
    }
    checkElement(LvGPXTrackSegment(points));
    checkRoundTrip(points);
    checkPlacemark(text, points);
}
