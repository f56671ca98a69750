#include "LvBlinkAnimation.h"
#include "LvTest.h"

#include <QElapsedTimer>
#include <QSignalSpy>

namespace
{

QList<int> statesOf(const QSignalSpy& spy)
{
    QList<int> states;
    for (const QList<QVariant>& arguments : spy) {
        states.append(arguments.at(0).toInt());
    }
    return states;
}

QList<int> wholeRun()
{
    QList<int> states;
    for (int i = 0; i < LvBlinkAnimation::repetitions; ++i) {
        states << LvBlinkAnimation::highlightedState << LvBlinkAnimation::normalState;
    }
    return states;
}

constexpr int runDuration = 2 * LvBlinkAnimation::repetitions * LvBlinkAnimation::stateDuration;

} // namespace

class tst_LvBlinkAnimation : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void restsAtFirst()
    {
        LvBlinkAnimation animation;
        QSignalSpy spy(&animation, &LvBlinkAnimation::blink);
        QVERIFY(!animation.isRunning());
        animation.stop();
        QTest::qWait(2 * LvBlinkAnimation::stateDuration);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(animation.state(), LvBlinkAnimation::normalState);
    }

    void beginsAtOnceAndEndsByItself()
    {
        LvBlinkAnimation animation;
        QSignalSpy spy(&animation, &LvBlinkAnimation::blink);
        QElapsedTimer timer;
        timer.start();
        animation.start();
        QVERIFY(animation.isRunning());
        QCOMPARE(statesOf(spy), QList<int>{LvBlinkAnimation::highlightedState});
        QTRY_VERIFY_WITH_TIMEOUT(!animation.isRunning(), 10 * runDuration);
        QVERIFY(timer.elapsed() > runDuration / 2);
        QCOMPARE(statesOf(spy), wholeRun());
        QTest::qWait(2 * LvBlinkAnimation::stateDuration);
        QCOMPARE(statesOf(spy), wholeRun());
    }

    void stopEndsWithTheNormalState()
    {
        LvBlinkAnimation animation;
        QSignalSpy spy(&animation, &LvBlinkAnimation::blink);
        animation.start();
        animation.stop();
        QVERIFY(!animation.isRunning());
        QCOMPARE(statesOf(spy), (QList<int>{1, 0}));
        animation.stop();
        QCOMPARE(spy.count(), 2);
    }

    void startAgainBeginsAnew()
    {
        LvBlinkAnimation animation;
        animation.start();
        QTest::qWait(3 * LvBlinkAnimation::stateDuration);
        QSignalSpy spy(&animation, &LvBlinkAnimation::blink);
        animation.start();
        QTRY_VERIFY_WITH_TIMEOUT(!animation.isRunning(), 10 * runDuration);
        QCOMPARE(statesOf(spy), wholeRun());
    }

    void receiverMayDeleteIt()
    {
        auto* animation = new LvBlinkAnimation;
        connect(animation, &LvBlinkAnimation::blink, animation, [animation](int state) {
            if (state == LvBlinkAnimation::normalState) {
                animation->deleteLater();
            }
        });
        const QPointer<LvBlinkAnimation> alive = animation;
        animation->start();
        QTRY_VERIFY(alive.isNull());
    }

    void belongsToItsParent()
    {
        const QPointer<LvBlinkAnimation> animation = [] {
            QObject parent;
            return QPointer<LvBlinkAnimation>(new LvBlinkAnimation(&parent));
        }();
        QVERIFY(animation.isNull());
    }
};

LV_TEST_MAIN(tst_LvBlinkAnimation)
#include "tst_LvBlinkAnimation.moc"
