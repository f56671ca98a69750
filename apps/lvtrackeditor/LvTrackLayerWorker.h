#pragma once

#include "LvMapLayerWorker.h"

/// Draws the tracks and, where they fade the map, the veil over it.
class LvTrackLayerWorker : public LvMapLayerWorker
{
    Q_OBJECT

public:
    LvTrackLayerWorker() = default;
    ~LvTrackLayerWorker() override;
    Q_DISABLE_COPY_MOVE(LvTrackLayerWorker)

protected:
    bool draw(QPainter& painter, const LvMapLayerRequest& request) override;
    [[nodiscard]] bool isComplete() const override;
};
