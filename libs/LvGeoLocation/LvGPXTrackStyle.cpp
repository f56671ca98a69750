#include "LvGPXTrackStyle.h"

#include <QDomElement>

LvGPXTrackStyle::LvGPXTrackStyle(const QString& styleId, const LvGPXTrackConfiguration& values)
    : myStyleId(styleId)
    , myStyleValues(values)
{
}

LvGPXTrackStyle::LvGPXTrackStyle(const LvGPXTrackStyle& other) = default;
LvGPXTrackStyle::LvGPXTrackStyle(LvGPXTrackStyle&& other) noexcept = default;
LvGPXTrackStyle& LvGPXTrackStyle::operator=(const LvGPXTrackStyle& other) = default;
LvGPXTrackStyle& LvGPXTrackStyle::operator=(LvGPXTrackStyle&& other) noexcept = default;
LvGPXTrackStyle::~LvGPXTrackStyle() = default;

LvGPXTrackStyle LvGPXTrackStyle::fromKml(const QDomElement& style)
{
    return {style.attribute(QStringLiteral("id")), LvGPXTrackConfiguration::fromKml(style)};
}
