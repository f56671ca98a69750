#pragma once

#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackStyle.h"
#include "lvgeolocation_export.h"

#include <QHash>
#include <QString>

class QDomElement;

/// The styles of one KML document, found by what the placemarks of that document refer to them with.
class LVGEOLOCATION_EXPORT LvGPXTrackStyleList
{
public:
    LvGPXTrackStyleList();
    LvGPXTrackStyleList(const LvGPXTrackStyleList& other);
    LvGPXTrackStyleList(LvGPXTrackStyleList&& other) noexcept;
    LvGPXTrackStyleList& operator=(const LvGPXTrackStyleList& other);
    LvGPXTrackStyleList& operator=(LvGPXTrackStyleList&& other) noexcept;
    virtual ~LvGPXTrackStyleList();

    /// The styles of all direct children "Style"; of several with the same id the last one counts.
    static LvGPXTrackStyleList fromKml(const QDomElement& parent);

    [[nodiscard]] bool isEmpty() const { return myStyles.isEmpty(); }

    [[nodiscard]] int count() const { return static_cast<int>(myStyles.count()); }

    /// Adds the style or puts it in the place of an earlier one with the same id.
    void add(const LvGPXTrackStyle& style);

    /// The values of the style with exactly this reference, "#" and the id.
    /// LvGPXTrackConfiguration::defaultValue() when there is none: the look of an imported document does not
    /// depend on the settings of the user.
    [[nodiscard]] LvGPXTrackConfiguration findStyling(const QString& styleUrl) const;

private:
    QHash<QString, LvGPXTrackStyle> myStyles; // by "#" and the id
};
