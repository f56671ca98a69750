#pragma once

#include "LvGeoPosition.h"
#include "LvGeoPositionSamplesEnum.h"
#include "lvgeolocation_export.h"

#include <QHash>
#include <QString>

/**
 * Thirteen named places on all continents and on both sides of the 0° and 180° meridians, as home regions and
 * as test positions.
 *
 * Plain value; reading one object from several threads is safe.
 */
class LVGEOLOCATION_EXPORT LvGeoPositionSamples
{
public:
    LvGeoPositionSamples();
    LvGeoPositionSamples(const LvGeoPositionSamples& other);
    LvGeoPositionSamples(LvGeoPositionSamples&& other) noexcept;
    LvGeoPositionSamples& operator=(const LvGeoPositionSamples& other);
    LvGeoPositionSamples& operator=(LvGeoPositionSamples&& other) noexcept;
    virtual ~LvGeoPositionSamples();

    /// The untranslated name of the place; empty for a value that stands for none.
    [[nodiscard]] static QString name(LvGeoPositionSamplesEnum sample);

    /// The invalid default position for a value that stands for no place.
    [[nodiscard]] LvGeoPosition position(LvGeoPositionSamplesEnum sample) const;

    /// 720.0 for a value that stands for no place.
    [[nodiscard]] LvLatitude latitude(LvGeoPositionSamplesEnum sample) const;

    /// 720.0 for a value that stands for no place.
    [[nodiscard]] LvLongitude longitude(LvGeoPositionSamplesEnum sample) const;

private:
    QHash<LvGeoPositionSamplesEnum, LvGeoPosition> myPositions;
};
