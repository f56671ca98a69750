#include "LvMapTrackRenderer.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackConfiguration.h"

#include <QPainter>

namespace
{

constexpr QColor haloColor(255, 255, 255, 180);
constexpr int opaqueMap = 255; // the cropping opacity that leaves the map as it is

bool isFilledArea(const LvGPXConfiguredTrack& track)
{
    return track.effectiveShape() == LvGPXTrackShapeEnum::polygon
        && track.hasDrawOption(LvGPXTrackDisplayOptionsEnum::fill);
}

/// The track as the light seam below itself.
LvGPXConfiguredTrack haloOf(const LvGPXConfiguredTrack& track)
{
    LvGPXTrackConfiguration configuration = track.configuration();
    configuration.setLineColor(haloColor);
    configuration.setCurrentDisplayOptions(LvGPXTrackDisplayOptionsEnum::stroke);
    LvGPXConfiguredTrack halo = track;
    halo.setConfiguration(configuration);
    return halo;
}

} // namespace

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

bool LvMapTrackRenderer::drawSelection(QPainter& painter, const std::function<bool()>& isCancelled) const
{
    const LvGPXConfiguredTrackList tracks = selection().tracks();
    const bool hasSeams = selection().effectiveCroppingOpacity() == opaqueMap;
    qsizetype first = 0;
    while (first < tracks.count()) {
        // Neighbouring lines share one layer of halos, so that no halo cuts into a line beside it. A filled
        // area would hide that layer; it starts a new one.
        qsizetype end = first + 1;
        if (!isFilledArea(tracks.at(first))) {
            while (end < tracks.count() && !isFilledArea(tracks.at(end))) {
                ++end;
            }
        }
        for (qsizetype i = first; i < end && hasSeams; ++i) {
            if (isCancelled()) {
                return false;
            }
            if (!tracks.at(i).haloWidth().isNull()) {
                drawTrack(&painter, haloOf(tracks.at(i)), haloOption);
            }
        }
        for (qsizetype i = first; i < end; ++i) {
            if (isCancelled()) {
                return false;
            }
            drawTrack(&painter, tracks.at(i), TrackRenderOption::Normal);
        }
        first = end;
    }
    return true;
}

QImage LvMapTrackRenderer::veil(const QColor& paper) const
{
    if (selection().effectiveCroppingOpacity() >= opaqueMap) {
        return {};
    }
    // Fading gives a picture its opacity; inverted, that is the opacity of what hides it. The colour is
    // inverted beforehand to come out right.
    const QRgb rgb = paper.rgb();
    QImage inverted(targetImageSize(), QImage::Format_ARGB32);
    if (inverted.isNull()) {
        return {};
    }
    inverted.fill(QColor::fromRgb(~rgb));
    QImage result = crop(inverted);
    result.invertPixels(QImage::InvertRgba);
    return result;
}
