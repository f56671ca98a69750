#pragma once

#include "LvGPXTrackConfiguration.h"
#include "lvgeolocation_export.h"

#include <QString>

class QDomElement;

/// A drawing style with the name by which the placemarks of a KML document refer to it.
class LVGEOLOCATION_EXPORT LvGPXTrackStyle
{
public:
    LvGPXTrackStyle(const QString& styleId, const LvGPXTrackConfiguration& values);
    LvGPXTrackStyle(const LvGPXTrackStyle& other);
    LvGPXTrackStyle(LvGPXTrackStyle&& other) noexcept;
    LvGPXTrackStyle& operator=(const LvGPXTrackStyle& other);
    LvGPXTrackStyle& operator=(LvGPXTrackStyle&& other) noexcept;
    virtual ~LvGPXTrackStyle();

    /// The style of a KML "Style" element; its id is empty when the element has none.
    static LvGPXTrackStyle fromKml(const QDomElement& style);

    /// The attribute "id" of the KML element, without "#".
    [[nodiscard]] QString styleId() const { return myStyleId; }

    [[nodiscard]] LvGPXTrackConfiguration styleValues() const { return myStyleValues; }

private:
    QString myStyleId;
    LvGPXTrackConfiguration myStyleValues;
};
