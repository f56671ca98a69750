#include "LvGPXTrackStyleList.h"

#include <QDomElement>

LvGPXTrackStyleList::LvGPXTrackStyleList() = default;
LvGPXTrackStyleList::LvGPXTrackStyleList(const LvGPXTrackStyleList& other) = default;
LvGPXTrackStyleList::LvGPXTrackStyleList(LvGPXTrackStyleList&& other) noexcept = default;
LvGPXTrackStyleList& LvGPXTrackStyleList::operator=(const LvGPXTrackStyleList& other) = default;
LvGPXTrackStyleList& LvGPXTrackStyleList::operator=(LvGPXTrackStyleList&& other) noexcept = default;
LvGPXTrackStyleList::~LvGPXTrackStyleList() = default;

LvGPXTrackStyleList LvGPXTrackStyleList::fromKml(const QDomElement& parent)
{
    const QString tagName = QStringLiteral("Style");
    LvGPXTrackStyleList styles;
    for (QDomElement style = parent.firstChildElement(tagName); !style.isNull();
         style = style.nextSiblingElement(tagName)) {
        styles.add(LvGPXTrackStyle::fromKml(style));
    }
    return styles;
}

void LvGPXTrackStyleList::add(const LvGPXTrackStyle& style)
{
    myStyles.insert(QLatin1Char('#') + style.styleId(), style);
}

LvGPXTrackConfiguration LvGPXTrackStyleList::findStyling(const QString& styleUrl) const
{
    const auto found = myStyles.constFind(styleUrl);
    return found == myStyles.cend() ? LvGPXTrackConfiguration::defaultValue() : found->styleValues();
}
