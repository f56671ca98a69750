#include "LvBlinkAnimation.h"

LvBlinkAnimation::LvBlinkAnimation(QObject* parent)
    : QObject(parent)
    , myTimer(this)
{
    myTimer.setInterval(stateDuration);
    connect(&myTimer, &QTimer::timeout, this, &LvBlinkAnimation::nextState);
}

LvBlinkAnimation::~LvBlinkAnimation() = default;

bool LvBlinkAnimation::isRunning() const
{
    return myTimer.isActive();
}

void LvBlinkAnimation::start()
{
    myRemaining = repetitions;
    myTimer.start();
    show(highlightedState);
}

void LvBlinkAnimation::stop()
{
    if (isRunning()) {
        myTimer.stop();
        show(normalState);
    }
}

void LvBlinkAnimation::nextState()
{
    if (myState == normalState) {
        show(highlightedState);
    } else if (--myRemaining > 0) {
        show(normalState);
    } else {
        stop();
    }
}

void LvBlinkAnimation::show(int state)
{
    myState = state;
    Q_EMIT blink(state);
}
