#pragma once

#include "LvEnumWrapper.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackShapeEnum.h"
#include "lvgeolocation_export.h"

#include <QList>
#include <QString>

class QDomElement;

extern template class LvEnumWrapper<LvGPXTrackShapeEnum>;

/// The geometric kind of a track: a point, a flight between two places ("hop"), a line, an area, or to be
/// decided from its points ("auto").
class LVGEOLOCATION_EXPORT LvGPXTrackShape : public LvEnumWrapper<LvGPXTrackShapeEnum>
{
public:
    LvGPXTrackShape();
    // NOLINTNEXTLINE(google-explicit-constructor) a value and its wrapper are the same thing
    LvGPXTrackShape(LvGPXTrackShapeEnum value);
    explicit LvGPXTrackShape(int value);
    explicit LvGPXTrackShape(quint32 value);
    /// From key strings separated by commas; what is no key contributes no flag.
    explicit LvGPXTrackShape(const QString& keys);
    LvGPXTrackShape(const LvGPXTrackShape& other);
    LvGPXTrackShape(LvGPXTrackShape&& other) noexcept;
    LvGPXTrackShape& operator=(const LvGPXTrackShape& other);
    LvGPXTrackShape& operator=(LvGPXTrackShape&& other) noexcept;
    ~LvGPXTrackShape() override;

    /// The kind of a KML placemark: the first of the children "Polygon", "LineString" and "Point" decides,
    /// whatever their order in the document; then the key strings of a child "shape"; otherwise automatic.
    static LvGPXTrackShape decodeKml(const QDomElement& placemark);

    /// Reads the child "trackShape". A missing child means automatic.
    static LvGPXTrackShape fromXml(const QDomElement& parent);

    /// The kinds that a track of this kind may be shown as. Not symmetric on purpose: a polygon may be shown
    /// as a point, but not as a line; a line may be shown as a polygon. Empty for automatic, unknown and
    /// combinations.
    [[nodiscard]] QList<LvGPXTrackShape> possibleShapes() const;

    /// The markers on offer for this kind; only the unknown marker where there is no choice.
    [[nodiscard]] QList<LvGPXMarkerShape> createMarkerShapes() const;

    /// What is drawn unless the user decides otherwise: the outline, for every kind.
    static LvGPXTrackDisplayOptions defaultDisplayOptions();

    /// What the user may choose to draw for this kind. Points and hops include the nameless flag 4.
    [[nodiscard]] LvGPXTrackDisplayOptions availableDisplayOptions() const;

    /// The German label of the kind; a line with an arrow head has one of its own. Empty for combinations.
    [[nodiscard]] QString humanReadable(const LvGPXMarkerShape& marker) const;

    /// The German explanation of the kind. Empty for combinations.
    [[nodiscard]] QString toolTip() const;

    void fillTable(LvEnumToStringTable<LvGPXTrackShapeEnum>* table) const override;

    /// Appends the child "trackShape" with the key strings.
    void toXml(QDomElement& parent) const;
};
