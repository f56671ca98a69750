#include "LvLatitudeList.h"

#include <algorithm>
#include <utility>

LvLatitudeList::LvLatitudeList() = default;

LvLatitudeList::LvLatitudeList(std::initializer_list<LvLatitude> elements)
    : QList<LvLatitude>(elements)
{
}

LvLatitudeList::LvLatitudeList(const QList<LvLatitude>& elements)
    : QList<LvLatitude>(elements)
{
}

LvLatitudeList::LvLatitudeList(QList<LvLatitude>&& elements) noexcept
    : QList<LvLatitude>(std::move(elements))
{
}

LvLatitudeList::LvLatitudeList(const LvLatitudeList& other) = default;

LvLatitudeList::LvLatitudeList(LvLatitudeList&& other) noexcept = default;

LvLatitudeList& LvLatitudeList::operator=(const LvLatitudeList& other) = default;

LvLatitudeList& LvLatitudeList::operator=(LvLatitudeList&& other) noexcept = default;

LvLatitudeList::~LvLatitudeList() = default;

LvLatitude LvLatitudeList::average() const
{
    LvLatitude sum = 0.0;
    for (const LvLatitude& latitude : *this) {
        sum += latitude;
    }
    return sum / static_cast<double>(size());
}

LvLatitude LvLatitudeList::northernBound() const
{
    const auto largest = std::max_element(cbegin(), cend());
    return largest == cend() ? LvLatitude() : *largest;
}

LvLatitude LvLatitudeList::southernBound() const
{
    const auto smallest = std::min_element(cbegin(), cend());
    return smallest == cend() ? LvLatitude() : *smallest;
}

LvLatitudeRange LvLatitudeList::range() const
{
    return {southernBound(), northernBound()};
}
