#include "LvGeoPositionList.h"

#include "LvPositionBounds.h"

#include <utility>

LvGeoPositionList::LvGeoPositionList() = default;

LvGeoPositionList::LvGeoPositionList(std::initializer_list<LvGeoPosition> elements)
    : QList<LvGeoPosition>(elements)
{
}

LvGeoPositionList::LvGeoPositionList(const QList<LvGeoPosition>& elements)
    : QList<LvGeoPosition>(elements)
{
}

LvGeoPositionList::LvGeoPositionList(QList<LvGeoPosition>&& elements) noexcept
    : QList<LvGeoPosition>(std::move(elements))
{
}

LvGeoPositionList::LvGeoPositionList(const LvGeoPositionList& other) = default;

LvGeoPositionList::LvGeoPositionList(LvGeoPositionList&& other) noexcept = default;

LvGeoPositionList& LvGeoPositionList::operator=(const LvGeoPositionList& other) = default;

LvGeoPositionList& LvGeoPositionList::operator=(LvGeoPositionList&& other) noexcept = default;

LvGeoPositionList::~LvGeoPositionList() = default;

LvGeoPosition LvGeoPositionList::average() const
{
    // Sums of angles instead of sums of positions: the same numbers without a new payload for every step.
    LvLatitude latitude = 0.0;
    LvLongitude longitude = 0.0;
    for (const LvGeoPosition& position : *this) {
        latitude += position.latitude();
        longitude += position.longitude();
    }
    const auto count = static_cast<double>(size());
    return {latitude / count, longitude / count};
}

LvGeoPositionRect LvGeoPositionList::boundingBox() const
{
    LvPositionBounds bounds;
    for (const LvGeoPosition& position : *this) {
        bounds.add(position);
    }
    return bounds.rect();
}

LvGeoPosition LvGeoPositionList::center() const
{
    return boundingBox().center();
}

LvLatitudeList LvGeoPositionList::latitudes() const
{
    LvLatitudeList result;
    result.reserve(size());
    for (const LvGeoPosition& position : *this) {
        result.append(position.latitude());
    }
    return result;
}

LvLongitudeList LvGeoPositionList::longitudes() const
{
    LvLongitudeList result;
    result.reserve(size());
    for (const LvGeoPosition& position : *this) {
        result.append(position.longitude());
    }
    return result;
}

QPainterPath LvGeoPositionList::toPainterPath() const
{
    QPainterPath path;
    if (isEmpty()) {
        return path;
    }
    path.reserve(static_cast<int>(size()));
    path.moveTo(first().toPointF());
    for (qsizetype i = 1; i < size(); ++i) {
        path.lineTo(at(i).toPointF());
    }
    return path;
}

LvGeoPositionList LvGeoPositionList::filterStrayPositions(double factor, bool inverted,
                                                          int minimumCount) const
{
    if (size() < minimumCount) {
        return *this;
    }
    const LvGeoPosition mean = average();
    const LvGeoPosition middle = center();
    LvGeoPositionList result;
    for (const LvGeoPosition& position : *this) {
        const bool isNear = position.distance(mean) <= position.distance(middle) * factor;
        if (isNear != inverted) {
            result.append(position);
        }
    }
    return result;
}
