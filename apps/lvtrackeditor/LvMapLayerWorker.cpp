#include "LvMapLayerWorker.h"

#include <QMutexLocker>
#include <QPainter>

#include <limits>
#include <utility>

LvMapLayerWorker::LvMapLayerWorker()
{
    connect(this, &LvMapLayerWorker::requested, this, &LvMapLayerWorker::drawPending, Qt::QueuedConnection);
}

LvMapLayerWorker::~LvMapLayerWorker() = default;

void LvMapLayerWorker::request(const LvMapLayerRequest& request, Urgency urgency)
{
    const QMutexLocker locker(&myMutex);
    const bool isAwake = myPending.has_value();
    myPending = request;
    if (urgency == Urgency::Superseding && myOldestUseful < request.number) {
        myOldestUseful = request.number;
    }
    if (!isAwake) {
        Q_EMIT requested({});
    }
}

void LvMapLayerWorker::cancel()
{
    myOldestUseful = std::numeric_limits<quint64>::max();
}

bool LvMapLayerWorker::isObsolete(const LvMapLayerRequest& request) const
{
    return request.number < myOldestUseful;
}

void LvMapLayerWorker::redraw()
{
    if (myRequest.number > 0) {
        drawLayer();
    }
}

void LvMapLayerWorker::drawPending()
{
    {
        const QMutexLocker locker(&myMutex);
        if (!myPending) {
            return;
        }
        myRequest = *std::exchange(myPending, std::nullopt);
    }
    drawLayer();
}

void LvMapLayerWorker::drawLayer()
{
    if (isObsolete(myRequest)) {
        return;
    }
    LvMapLayer layer;
    layer.request = myRequest;
    layer.image = QImage(myRequest.size, QImage::Format_ARGB32_Premultiplied);
    if (!layer.image.isNull()) {
        layer.image.fill(Qt::transparent);
        QPainter painter(&layer.image);
        painter.setRenderHint(QPainter::Antialiasing);
        if (!draw(painter, myRequest)) {
            return;
        }
    }
    layer.isComplete = isComplete();
    Q_EMIT drawn(layer);
}
