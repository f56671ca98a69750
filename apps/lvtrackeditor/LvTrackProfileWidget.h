#pragma once

#include "LvGeoPosition.h"
#include "LvTrackProfilePlot.h"

#include <QWidget>

class LvElidedLabel;
class LvGPXTrack;
class QComboBox;

/**
 * The profile of a track: elevation and speed over distance or time, and a cursor that is the link to a map.
 */
class LvTrackProfileWidget : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackProfileWidget)

public:
    explicit LvTrackProfileWidget(QWidget* parent = nullptr);
    ~LvTrackProfileWidget() override;

    /// Shows the track. The chosen axis stays, also past a track that has no times.
    void setTrack(const LvGPXTrack& track);
    /// As setTrack(), for a caller that has the statistics already.
    void setStatistics(const LvTrackStatistics& statistics);
    void clear();

    /// Puts the cursor on the point of the track that is nearest to the position, without a signal. An
    /// invalid position removes it.
    void setMarkedPosition(const LvGeoPosition& position);

Q_SIGNALS:
    /// The user has moved the cursor to a point of the track; invalid when the cursor has gone away.
    void positionHovered(const LvGeoPosition& position);

private:
    void onAxisChosen(int row);
    void onCursorMoved(qsizetype index);
    void updateReadout();
    [[nodiscard]] qsizetype nearestIndex(const LvGeoPosition& position) const;

    QComboBox* myAxis;
    LvElidedLabel* myReadout;
    LvTrackProfilePlot* myPlot;
    bool myPrefersTime = false;
};
