#include "LvGeoArc.h"

#include "LvAngleMath.h"
#include "LvRational.h"
#include "LvRegularExpression.h"

#include <QStringList>
#include <QUrl>
#include <QUrlQuery>
#include <QVariant>

#include <cmath>
#include <limits>

namespace
{

constexpr double degreesPerRadian = 57.29577951308232;
constexpr double minutesPerDegree = 60.0;
constexpr double secondsPerMinute = 60.0;
constexpr double secondsPerDegree = 3600.0;
constexpr int storedDigits = 16;
constexpr qint64 exifSecondParts = 100000;

double degreesOf(double degree, double minute, double second)
{
    return minute / minutesPerDegree + degree + second / secondsPerDegree;
}

// Wider than int: the magnitude of the smallest int is none.
qint64 magnitude(int number)
{
    return qAbs(qint64{number});
}

/// Rounds half away from zero, limited to the largest number where std::llround() promises no result; 0 for
/// what is not a number.
qint64 rounded(double positive)
{
    constexpr auto largest = std::numeric_limits<qint64>::max();
    if (std::isnan(positive)) {
        return 0;
    }
    return positive >= static_cast<double>(largest) ? largest : std::llround(positive);
}

const LvRegularExpression& blanksAndHemisphereLetters()
{
    static const LvRegularExpression myExpression(QStringLiteral("\\s|S|s|N|n|E|e|W|w"));
    return myExpression;
}

bool containsLetter(const QString& text, char letter)
{
    return text.contains(QLatin1Char(letter), Qt::CaseInsensitive);
}

} // namespace

QString LvGeoArc::directionIndicator() const
{
    return {};
}

LvGeoArc LvGeoArc::fromRadians(double radians)
{
    return {radians * degreesPerRadian};
}

LvGeoArc LvGeoArc::fromVariant(const QVariant& variant)
{
    if (variant.isNull()) {
        return {invalidDegrees};
    }
    return {variant.toReal()};
}

LvGeoArc LvGeoArc::fromString(const QString& text)
{
    QString numbers = text;
    numbers.remove(QStringLiteral("°")).remove(QLatin1Char('\'')).remove(QLatin1Char('"'));
    blanksAndHemisphereLetters().removeFrom(numbers);
    const QStringList parts = numbers.split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (parts.size() < 3) {
        return {invalidDegrees};
    }

    double degree = parts.at(0).toInt();
    double minute = parts.at(1).toInt();
    double second = parts.at(2).toDouble();
    // Every letter of the text counts, not only a trailing one, and the positive hemispheres have the last
    // word.
    if (containsLetter(text, 'S') || containsLetter(text, 'W')) {
        degree = -std::abs(degree);
        minute = -std::abs(minute);
        second = -std::abs(second);
    }
    if (containsLetter(text, 'N') || containsLetter(text, 'E')) {
        degree = std::abs(degree);
        minute = std::abs(minute);
        second = std::abs(second);
    }
    return {degreesOf(degree, minute, second)};
}

void LvGeoArc::setDegree(int degree, int minute, double second)
{
    myDegrees = degreesOf(degree, minute, second);
}

int LvGeoArc::degree() const
{
    return LvAngleMath::truncatedToInt(myDegrees);
}

int LvGeoArc::minute() const
{
    return LvAngleMath::truncatedToInt(myDegrees * minutesPerDegree) % 60;
}

double LvGeoArc::secondF() const
{
    return myDegrees * secondsPerDegree - (degree() * minutesPerDegree + minute()) * secondsPerMinute;
}

double LvGeoArc::minuteF() const
{
    return (std::abs(myDegrees) - std::abs(std::trunc(myDegrees))) * minutesPerDegree;
}

QString LvGeoArc::toString() const
{
    return QString::number(myDegrees, 'f', storedDigits);
}

QString LvGeoArc::humanReadable(const QString& format, int precision) const
{
    if (format == QLatin1String("d")) {
        return QStringLiteral("%1° %2").arg(QString::number(std::abs(myDegrees), 'f', precision),
                                            directionIndicator());
    }
    if (format == QLatin1String("dm")) {
        return QStringLiteral("%1° %2' %3")
            .arg(magnitude(degree()))
            .arg(QString::number(minuteF(), 'f', precision), directionIndicator());
    }
    return QStringLiteral("%1° %2' %3\" %4")
        .arg(magnitude(degree()))
        .arg(QString::number(magnitude(minute())), QString::number(std::abs(secondF()), 'f', precision),
             directionIndicator());
}

QString LvGeoArc::toExifRational() const
{
    const qint64 secondParts = rounded(std::abs(secondF()) * exifSecondParts);
    return QStringLiteral("%1/1 %2/1 %3")
        .arg(magnitude(degree()))
        .arg(magnitude(minute()))
        .arg(LvRational(secondParts, exifSecondParts).toString());
}

QVariant LvGeoArc::toVariant() const
{
    return {myDegrees};
}

void LvGeoArc::writeTo(QUrlQuery& query, const QString& key) const
{
    query.addQueryItem(key, QString::fromUtf8(QUrl::toPercentEncoding(toString())));
}

QDebug operator<<(QDebug debug, const LvGeoArc& arc)
{
    debug << arc.toString();
    return debug;
}
