#include "LvLongitude.h"

#include "LvAngleMath.h"

#include <QCoreApplication>
#include <QObject>

namespace
{

constexpr double halfTurnDegrees = 180.0;
constexpr int machineDigits = 8;

} // namespace

QString LvLongitude::directionIndicator() const
{
    if (isInWesternHemisphere()) {
        return QCoreApplication::translate("LvLongitude", "W", "short for 'west'");
    }
    return QCoreApplication::translate("LvLongitude", "E", "short for 'east'");
}

LvLongitude LvLongitude::parse(const QString& text)
{
    QStringView number = text;
    double sign = 1.0;
    if (number.startsWith(QLatin1Char('E'))) {
        number = number.sliced(1);
    } else if (number.startsWith(QLatin1Char('W'))) {
        number = number.sliced(1);
        sign = -1.0;
    }
    bool readable = false;
    const double degrees = number.toDouble(&readable);
    return {readable ? sign * degrees : invalidDegrees};
}

LvLongitude LvLongitude::safeLongitude(double degrees)
{
    return {LvAngleMath::wrapped(degrees, halfTurnDegrees)};
}

bool LvLongitude::isEastOf(const LvLongitude& other) const
{
    return isShortWay(decimalDegrees() - other.decimalDegrees());
}

bool LvLongitude::isWestOf(const LvLongitude& other) const
{
    return isShortWay(other.decimalDegrees() - decimalDegrees());
}

bool LvLongitude::isInValidRange() const
{
    return *this >= LvLongitude(-halfTurnDegrees) && *this <= LvLongitude(halfTurnDegrees);
}

LvLongitude LvLongitude::bounded() const
{
    if (*this < LvLongitude(-halfTurnDegrees)) {
        return {-halfTurnDegrees};
    }
    if (*this > LvLongitude(halfTurnDegrees)) {
        return {halfTurnDegrees};
    }
    return *this;
}

LvLongitude LvLongitude::normalized() const
{
    return safeLongitude(decimalDegrees());
}

QString LvLongitude::toString(bool humanReadable) const
{
    if (!isValid()) {
        return {};
    }
    if (!humanReadable) {
        return directionIndicator() + QString::number(std::abs(decimalDegrees()), 'f', machineDigits);
    }
    // The disambiguation is the key of existing translations; its spelling and its three blanks must not
    // change.
    const QString text = isInWesternHemisphere()
        ? QObject::tr("%1° %2′ %3″ West", "Coordinate / Nautilal Bearing   Longitude/Länge")
        : QObject::tr("%1° %2′ %3″ Ost", "Coordinate / Nautilal Bearing   Longitude/Länge");
    return text.arg(std::abs(degree())).arg(std::abs(minute())).arg(std::abs(secondF()));
}

QDebug operator<<(QDebug debug, const LvLongitude& longitude)
{
    debug << longitude.toString(false);
    return debug;
}
