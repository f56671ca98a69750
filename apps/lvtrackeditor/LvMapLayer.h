#pragma once

#include "LvGPXTrackSelection.h"
#include "LvMapView.h"

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSize>

/// What a layer of the map widget shall show.
struct LvMapLayerRequest {
    quint64 number = 0; ///< counts up from 1; 0 is no request
    QPointF center; ///< normalised, see LvMapView
    double zoom =
        0.0; ///< level of web maps at 96 dots per inch: the world is 256 · 2^zoom logical pixels wide
    QSize size; ///< in device pixels
    double pixelRatio = 1.0; ///< device pixels per logical pixel
    LvGPXTrackSelection selection; ///< only for layers of tracks
    QColor paper; ///< the colour below the map, into which it is faded; only for layers of tracks

    /// The part of the world, in device pixels.
    [[nodiscard]] LvMapView view() const;
};

/// A finished layer.
struct LvMapLayer {
    LvMapLayerRequest request;
    QImage image; ///< null when nothing was drawn yet
    bool isComplete = false; ///< false while parts of it are still on their way
};
