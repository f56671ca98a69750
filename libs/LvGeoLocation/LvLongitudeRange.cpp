#include "LvLongitudeRange.h"

#include <QMessageLogger>
#include <QUrlQuery>

namespace
{

constexpr double halfTurnDegrees = 180.0;
constexpr double fullTurnDegrees = 360.0;

} // namespace

const QString QUERY_ITEM_WEST = QStringLiteral("longitude_min");
const QString QUERY_ITEM_EAST = QStringLiteral("longitude_max");

LvLongitudeRange::LvLongitudeRange() = default;

LvLongitudeRange::LvLongitudeRange(const LvLongitude& west, const LvLongitude& east)
    : LvRange<LvLongitude>(west, east)
{
}

LvLongitudeRange::LvLongitudeRange(const LvRange<LvLongitude>& range)
    : LvRange<LvLongitude>(range)
{
}

LvLongitudeRange::LvLongitudeRange(const LvLongitudeRange& other) = default;

LvLongitudeRange::LvLongitudeRange(LvLongitudeRange&& other) noexcept = default;

LvLongitudeRange& LvLongitudeRange::operator=(const LvLongitudeRange& other) = default;

LvLongitudeRange& LvLongitudeRange::operator=(LvLongitudeRange&& other) noexcept = default;

LvLongitudeRange::~LvLongitudeRange() = default;

LvLongitudeRange LvLongitudeRange::spawn(const LvLongitude& a, const LvLongitude& b)
{
    if (a.isWestOf(b)) {
        return {a, b};
    }
    return {b, a};
}

LvLongitudeRange LvLongitudeRange::parse(const QUrlQuery& query)
{
    return parse(query.queryItemValue(QUERY_ITEM_WEST), query.queryItemValue(QUERY_ITEM_EAST));
}

LvLongitudeRange LvLongitudeRange::parse(const QString& west, const QString& east)
{
    return {LvLongitude::parse(west), LvLongitude::parse(east)};
}

void LvLongitudeRange::expandTo(const LvLongitude& longitude)
{
    if (!crossesDateLine()) {
        LvRange<LvLongitude>::expandTo(longitude);
        return;
    }
    if (contains(longitude)) {
        return;
    }
    if (longitude.isInEasternHemisphere()) {
        myMin = longitude;
    } else {
        myMax = longitude;
    }
}

LvLongitude LvLongitudeRange::center() const
{
    if (!crossesDateLine()) {
        return LvRange<LvLongitude>::center();
    }
    LvLongitude middle = (myMin + (myMax + LvLongitude(fullTurnDegrees))) / 2.0;
    if (middle > LvLongitude(halfTurnDegrees)) {
        return middle - LvLongitude(fullTurnDegrees);
    }
    return middle;
}

bool LvLongitudeRange::isValid() const
{
    return myMin.isInValidRange() && myMax.isInValidRange();
}

bool LvLongitudeRange::contains(const LvLongitude& longitude) const
{
    if (!crossesDateLine()) {
        return myMin <= longitude && myMax >= longitude;
    }
    return longitude < myMax || longitude > myMin || longitude == myMin || longitude == myMax;
}

bool LvLongitudeRange::contains(const LvRange<LvLongitude>& other) const
{
    return contains(other.min()) && contains(other.max());
}

bool LvLongitudeRange::intersects(const LvRange<LvLongitude>& /*other*/) const
{
    // File, line, function and text are what users find in reports: they stay as they are wherever the code
    // moves.
    QMessageLogger("libs/LvGeoLocation/LvLongitudeRange", 151,
                   "virtual bool LvLongitudeRange::intersects(const LvRange<LvLongitude> &) const", "default")
        .fatal("Diese Funktion muss erst getestet werden, bevor man sie benutzen kann (implmentierung ist "
               "ungeprüft "
               "und wahrscheinlich falsch!");
}

bool LvLongitudeRange::coversNoMoreThanHalfOfTheEarth() const
{
    return myMax.isEastOf(myMin) || myMax == myMin;
}

LvLongitude LvLongitudeRange::width() const
{
    return myMax - myMin;
}

void LvLongitudeRange::blowUp(const LvLongitude& margin)
{
    myMin = (myMin - margin).bounded();
    myMax = (myMax + margin).bounded();
}

QString LvLongitudeRange::toString(bool humanReadable) const
{
    return myMin.toString(humanReadable) + QStringLiteral(" - ") + myMax.toString(humanReadable);
}

void LvLongitudeRange::writeTo(QUrlQuery& query) const
{
    myMax.writeTo(query, QUERY_ITEM_EAST);
    myMin.writeTo(query, QUERY_ITEM_WEST);
}

QDebug operator<<(QDebug debug, const LvLongitudeRange& range)
{
    debug << QStringLiteral("%1 - %2").arg(range.west().toString(false), range.east().toString(false));
    return debug;
}
