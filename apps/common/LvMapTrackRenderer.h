#pragma once

#include "LvGPXTrackRenderer.h"
#include "LvMapView.h"

/// Draws tracks onto the map of a view.
class LvMapTrackRenderer : public LvGPXTrackRenderer
{
public:
    LvMapTrackRenderer(const LvGPXTrackSelection& selection, const LvMapView& view, double renderingFactor);

    /// Pixel position with fractions, so that thin lines do not tremble. Latitudes beyond the square world
    /// map count as its edge. Thread-safe.
    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override;

private:
    LvMapView myView;
};
