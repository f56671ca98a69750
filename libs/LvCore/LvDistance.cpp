#include "LvDistance.h"

namespace
{

QString signOf(LvDistanceUnit unit)
{
    switch (unit) {
    case LvDistanceUnit::Pixel:
        return QStringLiteral("px");
    case LvDistanceUnit::Metre:
        return QStringLiteral("m");
    case LvDistanceUnit::Kilometre:
        return QStringLiteral("km");
    case LvDistanceUnit::None:
        break;
    }
    return {};
}

} // namespace

QString LvDistance::describe(LvDistanceUnit unit, int precision, bool withUnit) const
{
    const QString number = QString::number(myValue, 'f', precision);
    const QString sign = withUnit ? signOf(unit) : QString();
    return sign.isEmpty() ? number : number + QLatin1Char(' ') + sign;
}
