#pragma once

#include "LvMapSource.h"

/**
 * The built-in map of the world: land, coasts and borders of Natural Earth at 1:50 million, public domain.
 *
 * Always valid and without attribution; needs neither network nor files.
 */
class LvWorldMapSource : public LvMapSource
{
public:
    LvWorldMapSource() = default;

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QString errorText() const override;
    [[nodiscard]] QString attribution() const override;
    void draw(QPainter& painter, const LvMapView& view, double paintFactor) override;
};
