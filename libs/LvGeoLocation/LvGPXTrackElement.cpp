#include "LvGPXTrackElement.h"

#include "LvGPXTrackPoint.h"
#include "LvKmlTuples.h"
#include "LvPositionBounds.h"

LvGPXTrackElement::LvGPXTrackElement() = default;
LvGPXTrackElement::LvGPXTrackElement(const LvGPXTrackElement& /*other*/) = default;
LvGPXTrackElement::LvGPXTrackElement(LvGPXTrackElement&& other) noexcept = default;
LvGPXTrackElement& LvGPXTrackElement::operator=(const LvGPXTrackElement& /*other*/) = default;
LvGPXTrackElement& LvGPXTrackElement::operator=(LvGPXTrackElement&& other) noexcept = default;
LvGPXTrackElement::~LvGPXTrackElement() = default;

bool LvGPXTrackElement::isSinglePoint() const
{
    return allPoints().size() == 1;
}

bool LvGPXTrackElement::visitTrackPoints(
    const std::function<void(const QList<LvGPXTrackPoint>& points)>& /*visit*/) const
{
    return false;
}

LvGeoPositionRect LvGPXTrackElement::boundingBox() const
{
    LvPositionBounds bounds;
    const bool isVisited = visitTrackPoints([&bounds](const QList<LvGPXTrackPoint>& points) {
        for (const LvGPXTrackPoint& point : points) {
            bounds.add(point.sharedPosition());
        }
    });
    return isVisited ? bounds.rect() : allPoints().boundingBox();
}

LvRange<QDateTime> LvGPXTrackElement::timeFrame() const
{
    LvRange<QDateTime> frame{QDateTime(), QDateTime()};
    const bool isVisited = visitTrackPoints([&frame](const QList<LvGPXTrackPoint>& points) {
        for (const LvGPXTrackPoint& point : points) {
            frame.expandTo(point.sharedTimeStamp());
        }
    });
    if (!isVisited) {
        const QList<QDateTime> timeStamps = allTimeStamps();
        for (const QDateTime& timeStamp : timeStamps) {
            frame.expandTo(timeStamp);
        }
    }
    return frame;
}

double LvGPXTrackElement::safeDouble(const QString& text)
{
    return LvKmlTuples::safeDouble(text);
}
