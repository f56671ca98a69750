#pragma once

#include "LvMapLayer.h"

#include <QMutex>
#include <QObject>

#include <atomic>
#include <optional>

class QPainter;

/**
 * Draws a layer of the map widget in a thread of its own.
 *
 * Only the newest request waits; older ones that were not begun are forgotten, and one that is being drawn
 * may be given up for it. Lives in the thread that draws, needs its event loop, and is handed requests from
 * any other.
 */
class LvMapLayerWorker : public QObject
{
    Q_OBJECT

public:
    enum class Urgency {
        Patient, ///< what is being drawn is still of use
        Superseding ///< what is being drawn shall be given up
    };

    LvMapLayerWorker();
    ~LvMapLayerWorker() override;
    Q_DISABLE_COPY_MOVE(LvMapLayerWorker)

    /// Asks for a layer. Thread-safe. Requests have ascending numbers.
    void request(const LvMapLayerRequest& request, Urgency urgency);

    /// Gives up everything, for good. Thread-safe.
    void cancel();

Q_SIGNALS:
    void drawn(const LvMapLayer& layer);

    /// For this class only: a request waits.
    void requested(QPrivateSignal);

protected:
    /// Draws onto a transparent picture. Returns false when it gave up.
    virtual bool draw(QPainter& painter, const LvMapLayerRequest& request) = 0;

    /// Whether the layer that was drawn last is all there is to come for its request.
    [[nodiscard]] virtual bool isComplete() const = 0;

    /// Whether nobody wants the layer any more.
    [[nodiscard]] bool isObsolete(const LvMapLayerRequest& request) const;

    /// Draws the last request once more.
    void redraw();

private:
    void drawPending();
    void drawLayer();

    QMutex myMutex; // guards the pending request
    std::optional<LvMapLayerRequest> myPending;
    std::atomic<quint64> myOldestUseful = 0;
    LvMapLayerRequest myRequest; // the last one begun
};
