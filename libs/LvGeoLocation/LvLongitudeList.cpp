#include "LvLongitudeList.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr double halfTurnDegrees = 180.0;

} // namespace

LvLongitudeList::LvLongitudeList() = default;

LvLongitudeList::LvLongitudeList(std::initializer_list<LvLongitude> elements)
    : QList<LvLongitude>(elements)
{
}

LvLongitudeList::LvLongitudeList(const QList<LvLongitude>& elements)
    : QList<LvLongitude>(elements)
{
}

LvLongitudeList::LvLongitudeList(QList<LvLongitude>&& elements) noexcept
    : QList<LvLongitude>(std::move(elements))
{
}

LvLongitudeList::LvLongitudeList(const LvLongitudeList& other) = default;

LvLongitudeList::LvLongitudeList(LvLongitudeList&& other) noexcept = default;

LvLongitudeList& LvLongitudeList::operator=(const LvLongitudeList& other) = default;

LvLongitudeList& LvLongitudeList::operator=(LvLongitudeList&& other) noexcept = default;

LvLongitudeList::~LvLongitudeList() = default;

LvLongitude LvLongitudeList::average() const
{
    LvLongitude sum = 0.0;
    for (const LvLongitude& longitude : *this) {
        sum += longitude;
    }
    return sum / static_cast<double>(size());
}

LvLongitudeList LvLongitudeList::onlyWesternHemisphere() const
{
    LvLongitudeList result;
    for (const LvLongitude& longitude : *this) {
        if (longitude.isInWesternHemisphere()) {
            result.append(longitude);
        }
    }
    return result;
}

LvLongitudeList LvLongitudeList::onlyEasternHemisphere() const
{
    LvLongitudeList result;
    for (const LvLongitude& longitude : *this) {
        if (longitude.isInEasternHemisphere()) {
            result.append(longitude);
        }
    }
    return result;
}

LvLongitude LvLongitudeList::westernBound() const
{
    const auto smallest = std::min_element(cbegin(), cend());
    return smallest == cend() ? LvLongitude() : *smallest;
}

LvLongitude LvLongitudeList::easternBound() const
{
    const auto largest = std::max_element(cbegin(), cend());
    return largest == cend() ? LvLongitude() : *largest;
}

LvLongitudeRange LvLongitudeList::naiveRange() const
{
    return {westernBound(), easternBound()};
}

LvRange<LvLongitude> LvLongitudeList::effectiveRange() const
{
    const LvLongitudeList western = onlyWesternHemisphere();
    const LvLongitudeList eastern = onlyEasternHemisphere();
    if (western.isEmpty() || eastern.isEmpty()) {
        return {westernBound(), easternBound()};
    }
    // Few degrees apart they lie around 0°, many around 180°.
    if (eastern.average().absDistance(western.average()) <= LvLongitude(halfTurnDegrees)) {
        return {westernBound(), easternBound()};
    }
    return {eastern.westernBound(), western.easternBound()};
}
