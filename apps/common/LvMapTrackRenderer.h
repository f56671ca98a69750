#pragma once

#include "LvGPXTrackRenderer.h"
#include "LvMapView.h"

#include <functional>

/**
 * Draws tracks onto the map of a view.
 *
 * Tracks with a halo get a light seam of its width. Where the selection fades the map (cropping opacity below
 * 255) the halo shows the map instead.
 */
class LvMapTrackRenderer : public LvGPXTrackRenderer
{
public:
    /// Neither of the two options that have a name: as wide as the line with its halo, but in the colour of
    /// the configuration.
    static constexpr auto haloOption = static_cast<TrackRenderOption>(2);

    LvMapTrackRenderer(const LvGPXTrackSelection& selection, const LvMapView& view, double renderingFactor);

    /// Pixel position with fractions, so that thin lines do not tremble. Latitudes beyond the square world
    /// map count as its edge. Thread-safe.
    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override;

    /// Draws all tracks in list order, with their seams below them. Asks between two tracks whether to stop;
    /// returns false when it was stopped.
    bool drawSelection(QPainter& painter, const std::function<bool()>& isCancelled) const;

    /// What lies over an opaque map to fade it as crop() does, in the colour of the paper below the map: the
    /// paper, transparent where the map is to be seen. A null image at cropping opacity 255.
    [[nodiscard]] QImage veil(const QColor& paper) const;

private:
    LvMapView myView;
};
