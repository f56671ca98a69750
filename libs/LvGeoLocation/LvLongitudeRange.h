#pragma once

#include "LvLongitude.h"
#include "LvRange.h"
#include "lvgeolocation_export.h"

#include <QDebug>
#include <QString>

class QUrlQuery;

/// Keys of the URL query items that hold the bounds of a longitude range.
LVGEOLOCATION_EXPORT extern const QString QUERY_ITEM_WEST;
LVGEOLOCATION_EXPORT extern const QString QUERY_ITEM_EAST;

/**
 * A closed interval of longitudes, from west (min) eastwards to east (max).
 *
 * When west is greater than east the range crosses the 180° meridian: it covers [west, 180] and [-180, east].
 * Empty when default-constructed (both bounds 720.0): the first longitude it expands to becomes both bounds.
 * Plain value, reentrant.
 */
class LVGEOLOCATION_EXPORT LvLongitudeRange : public LvRange<LvLongitude>
{
public:
    LvLongitudeRange();
    /// Takes the bounds as they are; in the order (170, -170) the range crosses the 180° meridian.
    LvLongitudeRange(const LvLongitude& west, const LvLongitude& east);
    // NOLINTNEXTLINE(google-explicit-constructor) the same two bounds
    LvLongitudeRange(const LvRange<LvLongitude>& range);
    LvLongitudeRange(const LvLongitudeRange& other);
    LvLongitudeRange(LvLongitudeRange&& other) noexcept;
    LvLongitudeRange& operator=(const LvLongitudeRange& other);
    LvLongitudeRange& operator=(LvLongitudeRange&& other) noexcept;
    ~LvLongitudeRange() override;

    /// The shorter way round between two longitudes, in whatever order they come. Of two that are exactly 180
    /// degrees apart the second becomes west.
    [[nodiscard]] static LvLongitudeRange spawn(const LvLongitude& a, const LvLongitude& b);

    /// Reads the bounds from their query items. A missing or unreadable one is 720.0; validity is not
    /// checked.
    [[nodiscard]] static LvLongitudeRange parse(const QUrlQuery& query);

    /// Reads the bounds from two texts of LvLongitude::parse(), likewise without a check.
    [[nodiscard]] static LvLongitudeRange parse(const QString& west, const QString& east);

    /// Widens the range until it contains the longitude. A crossing range takes it as its western bound when
    /// it is eastern and as its eastern bound when it is western. A range that does not cross never starts
    /// to.
    void expandTo(const LvLongitude& longitude) override;

    /// The middle of the range as it runs, within ±180 degrees for bounds within it.
    [[nodiscard]] LvLongitude center() const override;

    /// Both bounds lie within ±180 degrees; either order of them is a range.
    [[nodiscard]] bool isValid() const override;

    [[nodiscard]] bool contains(const LvLongitude& longitude) const override;

    /// Whether both bounds of the other range lie in this one.
    [[nodiscard]] bool contains(const LvRange<LvLongitude>& other) const override;

    /// Must not be called: ends the process with a fatal message. What it means for crossing ranges is not
    /// settled.
    [[noreturn]] bool intersects(const LvRange<LvLongitude>& other) const override;

    [[nodiscard]] LvLongitude west() const { return min(); }

    [[nodiscard]] LvLongitude east() const { return max(); }

    [[nodiscard]] bool crossesDateLine() const { return myMin > myMax; }

    /// East is no more than half a turn away from west, going east; exactly half a turn is already too much.
    [[nodiscard]] bool coversNoMoreThanHalfOfTheEarth() const;

    /// East minus west, so negative for a range that crosses the 180° meridian.
    [[nodiscard]] LvLongitude width() const;

    /// Moves both bounds outwards, clamped to ±180 degrees and not wrapped.
    void blowUp(const LvLongitude& margin);

    /// West and east in the forms of LvLongitude::toString(), with " - " between.
    [[nodiscard]] QString toString(bool humanReadable) const;

    /// Adds a query item for each bound, east first.
    void writeTo(QUrlQuery& query) const;
};

Q_DECLARE_TYPEINFO(LvLongitudeRange, Q_RELOCATABLE_TYPE);

/// Writes toString(false).
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvLongitudeRange& range);
