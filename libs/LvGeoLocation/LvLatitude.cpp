#include "LvLatitude.h"

#include "LvAngleMath.h"

#include <QCoreApplication>
#include <QObject>

namespace
{

constexpr double poleDegrees = 90.0;
constexpr double poleGuardDegrees = 0.01;
constexpr int machineDigits = 8;

} // namespace

QString LvLatitude::directionIndicator() const
{
    if (isInSouthernHemisphere()) {
        return QCoreApplication::translate("LvLatitude", "S", "short for 'south'");
    }
    return QCoreApplication::translate("LvLatitude", "N", "short for 'north'");
}

LvLatitude LvLatitude::parse(const QString& text)
{
    QStringView number = text;
    double sign = 1.0;
    if (number.startsWith(QLatin1Char('N'))) {
        number = number.sliced(1);
    } else if (number.startsWith(QLatin1Char('S'))) {
        number = number.sliced(1);
        sign = -1.0;
    }
    bool readable = false;
    const double degrees = number.toDouble(&readable);
    return {readable ? sign * degrees : invalidDegrees};
}

LvLatitude LvLatitude::safeLatitude(double degrees)
{
    return {LvAngleMath::wrapped(degrees, poleDegrees)};
}

bool LvLatitude::isInValidRange() const
{
    return *this >= LvLatitude(-poleDegrees) && *this <= LvLatitude(poleDegrees);
}

LvLatitude LvLatitude::bounded() const
{
    if (*this < LvLatitude(-poleDegrees)) {
        return {-poleDegrees};
    }
    if (*this > LvLatitude(poleDegrees)) {
        return {poleDegrees};
    }
    return *this;
}

LvLatitude LvLatitude::catchOutOfBound() const
{
    if (*this <= LvLatitude(-poleDegrees)) {
        return {-poleDegrees + poleGuardDegrees};
    }
    if (*this >= LvLatitude(poleDegrees)) {
        return {poleDegrees - poleGuardDegrees};
    }
    return *this;
}

QString LvLatitude::toString(bool humanReadable) const
{
    if (!isValid()) {
        return {};
    }
    if (!humanReadable) {
        return directionIndicator() + QString::number(std::abs(decimalDegrees()), 'f', machineDigits);
    }
    // The disambiguation is the key of existing translations; its wording and its double blanks must not
    // change.
    const QString text = isInSouthernHemisphere()
        ? QObject::tr("%1° %2′ %3″ Süd", "Coordinate / Nautical Bearing  Latitude  Breite")
        : QObject::tr("%1° %2′ %3″ Nord", "Coordinate / Nautical Bearing  Latitude  Breite");
    return text.arg(std::abs(degree())).arg(std::abs(minute())).arg(std::abs(secondF()));
}

QDebug operator<<(QDebug debug, const LvLatitude& latitude)
{
    debug << latitude.toString(false) << QStringLiteral("°");
    return debug;
}
