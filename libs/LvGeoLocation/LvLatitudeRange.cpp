#include "LvLatitudeRange.h"

#include <QUrlQuery>

const QString QUERY_ITEM_SOUTH = QStringLiteral("latitude_min");
const QString QUERY_ITEM_NORTH = QStringLiteral("latitude_max");

LvLatitudeRange::LvLatitudeRange() = default;

LvLatitudeRange::LvLatitudeRange(const LvLatitude& south, const LvLatitude& north)
    : LvRange<LvLatitude>(south, north)
{
}

LvLatitudeRange::LvLatitudeRange(const LvRange<LvLatitude>& range)
    : LvRange<LvLatitude>(range)
{
}

LvLatitudeRange::LvLatitudeRange(const LvLatitudeRange& other) = default;

LvLatitudeRange::LvLatitudeRange(LvLatitudeRange&& other) noexcept = default;

LvLatitudeRange& LvLatitudeRange::operator=(const LvLatitudeRange& other) = default;

LvLatitudeRange& LvLatitudeRange::operator=(LvLatitudeRange&& other) noexcept = default;

LvLatitudeRange::~LvLatitudeRange() = default;

LvLatitudeRange LvLatitudeRange::spawn(const LvLatitude& a, const LvLatitude& b)
{
    if (a > b) {
        return {b, a};
    }
    return {a, b};
}

LvLatitudeRange LvLatitudeRange::parse(const QUrlQuery& query)
{
    return parse(query.queryItemValue(QUERY_ITEM_SOUTH), query.queryItemValue(QUERY_ITEM_NORTH));
}

LvLatitudeRange LvLatitudeRange::parse(const QString& south, const QString& north)
{
    return {LvLatitude::parse(south), LvLatitude::parse(north)};
}

bool LvLatitudeRange::isValid() const
{
    return myMax >= myMin && myMin.isInValidRange() && myMax.isInValidRange();
}

LvLatitude LvLatitudeRange::height() const
{
    return myMax - myMin;
}

void LvLatitudeRange::blowUp(const LvLatitude& margin)
{
    myMin = (myMin - margin).bounded();
    myMax = (myMax + margin).bounded();
}

QString LvLatitudeRange::toString(bool humanReadable) const
{
    return myMin.toString(humanReadable) + QStringLiteral(" - ") + myMax.toString(humanReadable);
}

void LvLatitudeRange::writeTo(QUrlQuery& query) const
{
    myMax.writeTo(query, QUERY_ITEM_NORTH);
    myMin.writeTo(query, QUERY_ITEM_SOUTH);
}

QDebug operator<<(QDebug debug, const LvLatitudeRange& range)
{
    debug << QStringLiteral("%1 - %2").arg(range.south().toString(false), range.north().toString(false));
    return debug;
}
