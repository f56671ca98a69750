#pragma once

#include "LvLatitude.h"
#include "LvLatitudeRange.h"
#include "lvgeolocation_export.h"

#include <QList>

#include <initializer_list>

/**
 * An ordered list of latitudes.
 *
 * Implicitly shared like the list it is; reentrant.
 */
class LVGEOLOCATION_EXPORT LvLatitudeList : public QList<LvLatitude>
{
public:
    LvLatitudeList();
    LvLatitudeList(std::initializer_list<LvLatitude> elements);
    // NOLINTNEXTLINE(google-explicit-constructor) the same elements
    LvLatitudeList(const QList<LvLatitude>& elements);
    // NOLINTNEXTLINE(google-explicit-constructor) the same elements
    LvLatitudeList(QList<LvLatitude>&& elements) noexcept;
    LvLatitudeList(const LvLatitudeList& other);
    LvLatitudeList(LvLatitudeList&& other) noexcept;
    LvLatitudeList& operator=(const LvLatitudeList& other);
    LvLatitudeList& operator=(LvLatitudeList&& other) noexcept;
    virtual ~LvLatitudeList();

    /// The mean; 720.0 for an empty list.
    [[nodiscard]] LvLatitude average() const;

    /// The largest latitude, the first one among equals; 720.0 for an empty list.
    [[nodiscard]] LvLatitude northernBound() const;

    /// The smallest latitude, the first one among equals; 720.0 for an empty list.
    [[nodiscard]] LvLatitude southernBound() const;

    /// From southernBound() to northernBound().
    [[nodiscard]] LvLatitudeRange range() const;
};
