#include "LvGPXTrackElement.h"

#include "LvKmlTuples.h"

LvGPXTrackElement::LvGPXTrackElement() = default;
LvGPXTrackElement::LvGPXTrackElement(const LvGPXTrackElement& other) = default;
LvGPXTrackElement::LvGPXTrackElement(LvGPXTrackElement&& other) noexcept = default;
LvGPXTrackElement& LvGPXTrackElement::operator=(const LvGPXTrackElement& other) = default;
LvGPXTrackElement& LvGPXTrackElement::operator=(LvGPXTrackElement&& other) noexcept = default;
LvGPXTrackElement::~LvGPXTrackElement() = default;

bool LvGPXTrackElement::isSinglePoint() const
{
    return allPoints().size() == 1;
}

LvGeoPositionRect LvGPXTrackElement::boundingBox() const
{
    return allPoints().boundingBox();
}

LvRange<QDateTime> LvGPXTrackElement::timeFrame() const
{
    LvRange<QDateTime> frame{QDateTime(), QDateTime()};
    const QList<QDateTime> timeStamps = allTimeStamps();
    for (const QDateTime& timeStamp : timeStamps) {
        frame.expandTo(timeStamp);
    }
    return frame;
}

double LvGPXTrackElement::safeDouble(const QString& text)
{
    return LvKmlTuples::safeDouble(text);
}
