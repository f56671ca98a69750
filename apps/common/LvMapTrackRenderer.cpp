#include "LvMapTrackRenderer.h"

LvMapTrackRenderer::LvMapTrackRenderer(const LvGPXTrackSelection& selection, const LvMapView& view,
                                       double renderingFactor)
    : LvGPXTrackRenderer(selection, view.size(), renderingFactor)
    , myView(view)
{
}

QPointF LvMapTrackRenderer::project(const LvGeoPosition& position) const
{
    return myView.pixelOf(position.latitude().decimalDegrees(), position.longitude().decimalDegrees());
}
