#include "LvAxisTicks.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double secondsPerMinute = 60.0;
constexpr double secondsPerHour = 3600.0;
constexpr double secondsPerDay = 86400.0;
// A mark at the very end of the range must not get lost to rounding.
constexpr double roundingShare = 1e-9;

constexpr std::array clockSteps{1.0,   2.0,   5.0,    10.0,   15.0,   30.0,    60.0,    120.0,  300.0,
                                600.0, 900.0, 1800.0, 3600.0, 7200.0, 10800.0, 21600.0, 43200.0};

bool isUsable(double lowest, double highest, int mostTicks)
{
    return std::isfinite(lowest) && std::isfinite(highest) && highest > lowest && mostTicks >= 2;
}

/// The smallest of 1, 2 and 5 times a power of ten that is not below the given step.
double roundStep(double step)
{
    const double power = std::pow(10.0, std::floor(std::log10(step)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= step * (1.0 - roundingShare)) {
            return factor * power;
        }
    }
    return 10.0 * power;
}

double clockStep(double step)
{
    const auto* const found = std::find_if(clockSteps.cbegin(), clockSteps.cend(),
                                           [step](double candidate) { return candidate >= step; });
    return found != clockSteps.cend() ? *found : roundStep(step / secondsPerDay) * secondsPerDay;
}

} // namespace

LvAxisTicks LvAxisTicks::numbers(double lowest, double highest, int mostTicks)
{
    LvAxisTicks ticks;
    if (isUsable(lowest, highest, mostTicks)) {
        ticks.myStep = roundStep((highest - lowest) / (mostTicks - 1));
        ticks.fill(std::ceil(lowest / ticks.myStep - roundingShare), highest);
    }
    return ticks;
}

LvAxisTicks LvAxisTicks::enclosing(double lowest, double highest, int mostTicks)
{
    LvAxisTicks ticks;
    if (isUsable(lowest, highest, mostTicks)) {
        ticks.myStep = roundStep((highest - lowest) / (mostTicks - 1));
        const double last = std::ceil(highest / ticks.myStep - roundingShare);
        ticks.fill(std::floor(lowest / ticks.myStep + roundingShare), last * ticks.myStep);
    }
    return ticks;
}

LvAxisTicks LvAxisTicks::seconds(double lowest, double highest, int mostTicks)
{
    LvAxisTicks ticks;
    if (isUsable(lowest, highest, mostTicks)) {
        ticks.myIsTime = true;
        ticks.myStep = clockStep((highest - lowest) / (mostTicks - 1));
        ticks.fill(std::ceil(lowest / ticks.myStep - roundingShare), highest);
    }
    return ticks;
}

QString LvAxisTicks::label(double value) const
{
    if (myIsTime) {
        const qint64 whole = std::llround(value);
        const auto part = [whole](double unit, double modulus) {
            return QStringLiteral("%1").arg(whole / static_cast<qint64>(unit) % static_cast<qint64>(modulus),
                                            2, 10, QLatin1Char('0'));
        };
        QString text = QStringLiteral("%1:%2").arg(
            QString::number(whole / static_cast<qint64>(secondsPerHour)), part(secondsPerMinute, 60.0));
        if (myStep < secondsPerMinute) {
            text += QLatin1Char(':') + part(1.0, 60.0);
        }
        return text;
    }
    const int decimals =
        myStep > 0.0 ? static_cast<int>(std::max(0.0, -std::floor(std::log10(myStep) + roundingShare))) : 0;
    // Multiplying back may leave a negative zero.
    return QLocale().toString(value == 0.0 ? 0.0 : value, 'f', decimals);
}

void LvAxisTicks::fill(double first, double highest)
{
    // By multiplication: adding up the step would add up its rounding, too.
    for (double i = first; i * myStep <= highest + myStep * roundingShare; ++i) {
        myValues.append(i * myStep);
    }
}
