// Coordinate texts: every parse() and fromString(), query items, attributes.

#include "LvFuzz.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvGeoPositionRect.h"
#include "LvLatitude.h"
#include "LvLatitudeList.h"
#include "LvLongitude.h"
#include "LvLongitudeList.h"

#include <QDomDocument>
#include <QDomElement>
#include <QUrlQuery>
#include <QVariant>

#include <cmath>

namespace
{

constexpr double machineTolerance = 1e-8; // texts for machines have eight digits after the point
constexpr double partsTolerance = 1e-9; // degrees, minutes and seconds are doubles
constexpr double circleDegrees = 360.0;
constexpr int mostDigits = 20;
constexpr int secondDecimals = 12;

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

void checkParts(const LvGeoArc& arc)
{
    const double sum = arc.degree() + arc.minute() / 60.0 + arc.secondF() / 3600.0;
    LvFuzz::expect(!arc.isValid() || isNear(sum, arc.decimalDegrees(), partsTolerance),
                   "degrees, minutes and seconds add up");
    LvFuzz::expect(!arc.isValid() || (arc.minuteF() >= 0.0 && arc.minuteF() <= 60.0), "minutes are below 60");
    LvFuzz::expect(!arc.isValid() || std::abs(arc.minute()) < 60, "whole minutes are below 60");
    LvFuzz::expect(!arc.toExifRational().contains(QLatin1Char('-')), "rationals have no sign");
    for (const char* form : {"d", "dm", "dms"}) {
        static_cast<void>(arc.humanReadable(QLatin1String(form), mostDigits));
    }
    const LvGeoArc copy = LvGeoArc::fromVariant(arc.toVariant());
    LvFuzz::expect(std::isnan(arc.decimalDegrees()) || copy.decimalDegrees() == arc.decimalDegrees(),
                   "a variant keeps the angle");
    if (arc.isValid()) {
        LvFuzz::expect(isNear(LvGeoArc::fromRadians(arc.radians()).decimalDegrees(), arc.decimalDegrees(),
                              partsTolerance),
                       "radians keep the angle");
        const QString text = QStringLiteral("%1,%2,%3")
                                 .arg(QString::number(arc.degree()), QString::number(arc.minute()),
                                      QString::number(arc.secondF(), 'f', secondDecimals));
        LvFuzz::expect(
            isNear(LvGeoArc::fromString(text).decimalDegrees(), arc.decimalDegrees(), partsTolerance),
            "degrees, minutes and seconds are read as they were written");
        QUrlQuery query;
        arc.writeTo(query, QStringLiteral("angle"));
        LvFuzz::expect(isNear(query.queryItemValue(QStringLiteral("angle"), QUrl::FullyDecoded).toDouble(),
                              arc.decimalDegrees(), partsTolerance),
                       "a query item keeps the angle");
    }
}

void checkLatitude(const LvLatitude& latitude)
{
    checkParts(latitude);
    static_cast<void>(latitude.toString(true));
    const QString text = latitude.toString(false);
    LvFuzz::expect(latitude.isValid() != text.isEmpty(), "only a valid latitude has a text");
    if (latitude.isValid()) {
        LvFuzz::expect(
            isNear(LvLatitude::parse(text).decimalDegrees(), latitude.decimalDegrees(), machineTolerance),
            "a latitude is read as it was written");
        LvFuzz::expect(latitude.bounded().isInValidRange(), "a bounded latitude is in the range");
        const double safe = LvLatitude::safeLatitude(latitude.decimalDegrees()).decimalDegrees();
        LvFuzz::expect(safe >= -90.0 && safe <= 90.0, "a safe latitude is in the range");
        const LvLatitude caught = latitude.bounded().catchOutOfBound();
        LvFuzz::expect(std::abs(caught.decimalDegrees()) < 90.0, "a caught latitude is off the poles");
    }
}

void checkLongitude(const LvLongitude& longitude)
{
    checkParts(longitude);
    static_cast<void>(longitude.toString(true));
    const QString text = longitude.toString(false);
    LvFuzz::expect(longitude.isValid() != text.isEmpty(), "only a valid longitude has a text");
    if (std::abs(longitude.decimalDegrees()) < 180.0) {
        LvFuzz::expect(
            isNear(LvLongitude::parse(text).decimalDegrees(), longitude.decimalDegrees(), machineTolerance),
            "a longitude is read as it was written");
    }
    if (std::isfinite(longitude.decimalDegrees())) {
        const double normal = longitude.normalized().decimalDegrees();
        LvFuzz::expect(normal >= -180.0 && normal <= 180.0, "a normalized longitude is in the range");
        const double turns = (longitude.decimalDegrees() - normal) / circleDegrees;
        LvFuzz::expect(!longitude.isValid() || isNear(turns, std::round(turns), partsTolerance),
                       "normalizing takes whole turns");
    }
}

void checkPosition(const LvGeoPosition& position)
{
    checkLatitude(position.latitude());
    checkLongitude(position.longitude());
    static_cast<void>(position.toString(true));
    static_cast<void>(position.hashValue());
    const LvGeoPosition elsewhere(53.14, 8.8);
    const double distance = position.distance(elsewhere);
    LvFuzz::expect(distance >= 0.0 && distance <= 6370000.0, "a distance is a number");
    LvFuzz::expect(distance == elsewhere.distance(position), "a distance is the same both ways");
    QUrlQuery query;
    position.writeTo(query);

    QDomDocument document;
    const QDomElement element = document.createElement(QStringLiteral("position"));
    position.writeToXml(element);
    LvFuzz::expect(element.hasAttribute(QStringLiteral("latitude")) == position.isValid(),
                   "only a valid position has attributes");
    const LvGeoPosition read = LvGeoPosition::fromXml(element);
    LvFuzz::expect(
        !position.isValid()
            || (isNear(read.latitude().decimalDegrees(), position.latitude().decimalDegrees(), partsTolerance)
                && isNear(read.longitude().decimalDegrees(), position.longitude().decimalDegrees(),
                          partsTolerance)),
        "attributes keep the position");
    if (position.isValid() && position.latitude().isValid() && position.longitude().isValid()) {
        // Numbers with signs: the letters stand for angles within the range of the axis only.
        const QString text = QStringLiteral("%1 %2").arg(
            QString::number(position.latitude().decimalDegrees(), 'f', mostDigits),
            QString::number(position.longitude().decimalDegrees(), 'f', mostDigits));
        LvFuzz::expect(LvGeoPosition::parse(text) == position, "a position is read as it was written");
    }
}

void checkRect(const LvGeoPositionRect& rect)
{
    static_cast<void>(rect.toString(true));
    static_cast<void>(rect.isNull());
    static_cast<void>(rect.isVerySmall());
    static_cast<void>(rect.estimatedSize());
    static_cast<void>(rect.center());
    if (!rect.isValid()) {
        return;
    }
    LvFuzz::expect(rect.contains(rect), "an area contains itself");
    LvFuzz::expect(rect.center().latitude() >= rect.south() && rect.center().latitude() <= rect.north(),
                   "the centre is inside");
    LvFuzz::expect(rect.toReasonableSize().isValid() && rect.blownUp(1.0).isValid(), "padding stays valid");
    LvFuzz::expect(rect.withPadding(10.0).contains(rect.center()), "padding keeps the centre");
    QUrlQuery query;
    rect.writeTo(query);
    LvFuzz::expect(LvGeoPositionRect::parse(query) == rect, "an area is read as it was written");
}

void checkList(const LvGeoPositionList& positions)
{
    static_cast<void>(positions.average());
    static_cast<void>(positions.center());
    static_cast<void>(positions.toPainterPath());
    static_cast<void>(positions.latitudes().average());
    static_cast<void>(positions.longitudes().naiveRange());
    static_cast<void>(positions.longitudes().effectiveRange());
    const qsizetype near = positions.filterStrayPositions(2.0, false, 1).size();
    const qsizetype stray = positions.filterStrayPositions(2.0, true, 1).size();
    LvFuzz::expect(positions.isEmpty() || near + stray == positions.size(),
                   "every position is near or stray");
    checkRect(positions.boundingBox());
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QString text = QString::fromUtf8(input);
    checkParts(LvGeoArc::fromString(text));
    checkParts(LvGeoArc::fromVariant(text));
    for (const LvLatitude& latitude : {LvLatitude::parse(text), LvLatitude::fromString(text)}) {
        checkLatitude(latitude);
    }
    for (const LvLongitude& longitude : {LvLongitude::parse(text), LvLongitude::fromString(text)}) {
        checkLongitude(longitude);
    }
    const LvGeoPosition parsed = LvGeoPosition::parse(text);
    checkPosition(parsed);
    const LvGeoPosition read = LvGeoPosition::fromString(text);
    checkPosition(read);
    LvGeoPositionList positions;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        positions.append(LvGeoPosition::parse(line));
    }
    checkList(positions);
    checkRect(LvGeoPositionRect::parse(QUrlQuery(text)));
    checkRect(LvGeoPositionRect::spawn(parsed, read));
}
