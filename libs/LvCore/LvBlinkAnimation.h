#pragma once

#include "lvcore_export.h"

#include <QObject>
#include <QTimer>

/**
 * Makes something blink a few times to draw the eye to it.
 *
 * It only counts the time; whoever receives blink() changes its look. Used in the thread it belongs to, which
 * needs an event loop.
 */
class LVCORE_EXPORT LvBlinkAnimation : public QObject
{
    Q_OBJECT

public:
    /// The states that blink() carries.
    static constexpr int normalState = 0;
    static constexpr int highlightedState = 1;

    /// How long each state lasts, in milliseconds, and how often the highlighted one comes.
    static constexpr int stateDuration = 250;
    static constexpr int repetitions = 4;

    explicit LvBlinkAnimation(QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(LvBlinkAnimation)
    ~LvBlinkAnimation() override;

    [[nodiscard]] bool isRunning() const;

    /// The state that was announced last.
    [[nodiscard]] int state() const { return myState; }

public Q_SLOTS:
    /// Begins with the highlighted state at once and ends by itself. A running animation starts anew.
    void start();

    /// Ends a running animation with the normal state; does nothing otherwise.
    void stop();

Q_SIGNALS:
    /// The state to show from now on; the last one of each run is the normal one.
    void blink(int state);

private:
    void nextState();
    void show(int state);

    QTimer myTimer;
    int myState = normalState;
    int myRemaining = 0;
};
