#pragma once

#include "LvLatitude.h"
#include "LvRange.h"
#include "lvgeolocation_export.h"

#include <QDebug>
#include <QString>

class QUrlQuery;

/// Keys of the URL query items that hold the bounds of a latitude range.
LVGEOLOCATION_EXPORT extern const QString QUERY_ITEM_SOUTH;
LVGEOLOCATION_EXPORT extern const QString QUERY_ITEM_NORTH;

/**
 * A closed interval of latitudes, from south (min) to north (max).
 *
 * Empty when default-constructed (both bounds 720.0): the first latitude it expands to becomes both bounds.
 * Plain value, reentrant.
 */
class LVGEOLOCATION_EXPORT LvLatitudeRange : public LvRange<LvLatitude>
{
public:
    LvLatitudeRange();
    /// Takes the bounds as they are, in whatever order.
    LvLatitudeRange(const LvLatitude& south, const LvLatitude& north);
    // NOLINTNEXTLINE(google-explicit-constructor) the same two bounds
    LvLatitudeRange(const LvRange<LvLatitude>& range);
    LvLatitudeRange(const LvLatitudeRange& other);
    LvLatitudeRange(LvLatitudeRange&& other) noexcept;
    LvLatitudeRange& operator=(const LvLatitudeRange& other);
    LvLatitudeRange& operator=(LvLatitudeRange&& other) noexcept;
    ~LvLatitudeRange() override;

    /// Within both latitudes, in whatever order they come.
    [[nodiscard]] static LvLatitudeRange spawn(const LvLatitude& a, const LvLatitude& b);

    /// Reads the bounds from their query items. A missing or unreadable one is 720.0; order and validity are
    /// not checked.
    [[nodiscard]] static LvLatitudeRange parse(const QUrlQuery& query);

    /// Reads the bounds from two texts of LvLatitude::parse(), likewise without a check.
    [[nodiscard]] static LvLatitudeRange parse(const QString& south, const QString& north);

    /// South is not above north, and both lie between the poles.
    [[nodiscard]] bool isValid() const override;

    [[nodiscard]] LvLatitude north() const { return max(); }

    [[nodiscard]] LvLatitude south() const { return min(); }

    /// North minus south.
    [[nodiscard]] LvLatitude height() const;

    /// Moves both bounds outwards, clamped to ±90 degrees.
    void blowUp(const LvLatitude& margin);

    /// South and north in the forms of LvLatitude::toString(), with " - " between.
    [[nodiscard]] QString toString(bool humanReadable) const;

    /// Adds a query item for each bound, north first.
    void writeTo(QUrlQuery& query) const;
};

Q_DECLARE_TYPEINFO(LvLatitudeRange, Q_RELOCATABLE_TYPE);

/// Writes toString(false).
LVGEOLOCATION_EXPORT QDebug operator<<(QDebug debug, const LvLatitudeRange& range);
