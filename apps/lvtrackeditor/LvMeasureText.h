#pragma once

#include <QString>

#include <optional>

class LvGeoPosition;
class QDateTime;

/**
 * Measures as texts for people, with numbers as the default locale writes them. What is missing gives
 * missing().
 */
namespace LvMeasureText
{

/// What stands where there is no value: a dash.
QString missing();

/// Below a kilometre in whole metres; else with as many decimals as make sense: "12.34 km", "6385 km".
QString distance(double kilometres);

/// Whole metres: "1141 m".
QString metres(const std::optional<double>& metres);

/// One decimal: "5.4 km/h".
QString speed(const std::optional<double>& kmh);

/// Hours, minutes, seconds: "27:04:05 h"; below an hour "4:05 min".
QString duration(const std::optional<double>& seconds);

/// Date and time to the second in the time zone of the user.
QString dateTime(const QDateTime& time);

/// Decimal degrees to about a metre, latitude first: "53.14000° N, 8.80000° E".
QString position(const LvGeoPosition& position);

} // namespace LvMeasureText
