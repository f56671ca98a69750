#include "LvTrackLayerWorker.h"

#include "LvMapTrackRenderer.h"

#include <QPainter>

LvTrackLayerWorker::~LvTrackLayerWorker() = default;

bool LvTrackLayerWorker::draw(QPainter& painter, const LvMapLayerRequest& request)
{
    const LvMapTrackRenderer renderer(request.selection, request.view(), request.pixelRatio);
    const QImage veil = renderer.veil(request.paper);
    if (!veil.isNull()) {
        painter.drawImage(0, 0, veil);
    }
    return renderer.drawSelection(painter, [this, &request] { return isObsolete(request); });
}

bool LvTrackLayerWorker::isComplete() const
{
    return true;
}
