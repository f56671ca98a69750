#include "LvMeasureText.h"

#include "LvGeoPosition.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cmath>

namespace
{

constexpr double metresPerKm = 1000.0;
constexpr qint64 secondsPerMinute = 60;
constexpr qint64 minutesPerHour = 60;
constexpr int coordinateDecimals = 5;

QString number(double value, int decimals)
{
    return QLocale().toString(value, 'f', decimals);
}

QString twoDigits(qint64 value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

} // namespace

QString LvMeasureText::missing()
{
    return QStringLiteral("–");
}

QString LvMeasureText::distance(double kilometres)
{
    // By what the rounded number would be: 999.6 m are 1.00 km.
    if (std::round(kilometres * metresPerKm) < metresPerKm) {
        return metres(kilometres * metresPerKm);
    }
    const int decimals = kilometres < 100.0 ? 2 : kilometres < 1000.0 ? 1 : 0;
    return QCoreApplication::translate("LvMeasureText", "%1 km").arg(number(kilometres, decimals));
}

QString LvMeasureText::metres(const std::optional<double>& metres)
{
    return metres ? QCoreApplication::translate("LvMeasureText", "%1 m").arg(number(*metres, 0)) : missing();
}

QString LvMeasureText::speed(const std::optional<double>& kmh)
{
    return kmh ? QCoreApplication::translate("LvMeasureText", "%1 km/h").arg(number(*kmh, 1)) : missing();
}

QString LvMeasureText::duration(const std::optional<double>& seconds)
{
    if (!seconds) {
        return missing();
    }
    const qint64 whole = std::llround(*seconds);
    const qint64 minutes = whole / secondsPerMinute;
    const QString rest = twoDigits(whole % secondsPerMinute);
    if (minutes < minutesPerHour) {
        return QCoreApplication::translate("LvMeasureText", "%1:%2 min").arg(QString::number(minutes), rest);
    }
    return QCoreApplication::translate("LvMeasureText", "%1:%2:%3 h")
        .arg(QString::number(minutes / minutesPerHour), twoDigits(minutes % minutesPerHour), rest);
}

QString LvMeasureText::dateTime(const QDateTime& time)
{
    if (!time.isValid()) {
        return missing();
    }
    const QDateTime local = time.toLocalTime();
    return QCoreApplication::translate("LvMeasureText", "%1, %2", "date, time")
        .arg(QLocale().toString(local.date(), QLocale::ShortFormat),
             QLocale().toString(local.time(), QStringLiteral("HH:mm:ss")));
}

QString LvMeasureText::position(const LvGeoPosition& position)
{
    if (!position.isValid()) {
        return missing();
    }
    // A line may break between the two angles, not inside one.
    const auto text = [](const LvGeoArc& angle) {
        return angle.humanReadable(QStringLiteral("d"), coordinateDecimals)
            .replace(QLatin1Char(' '), QChar(QChar::Nbsp));
    };
    return QStringLiteral("%1, %2").arg(text(position.latitude()), text(position.longitude()));
}
