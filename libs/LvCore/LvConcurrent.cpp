#include "LvConcurrent.h"

#include <QCoreApplication>
#include <QMutex>
#include <QMutexLocker>
#include <QThread>
#include <QThreadPool>
#include <QWaitCondition>

#include <algorithm>
#include <atomic>
#include <memory>

int LvConcurrent::maxRunningThreads = 3 * QThread::idealThreadCount();

namespace
{

// More portions than threads, so that none has to wait long for the slowest.
constexpr qsizetype portionsPerThread = 8;

/// One parallel loop. It is shared with its helpers, because one of them may begin after the caller has left:
/// it then finds the loop closed and touches nothing of the caller's.
class LvParallelLoop
{
public:
    LvParallelLoop(qsizetype count, qsizetype portion, const std::function<void(qsizetype)>& work)
        : myCount(count)
        , myPortion(portion)
        , myWork(work)
    {
    }

    void workOff()
    {
        for (;;) {
            const qsizetype first = myNext.fetch_add(myPortion, std::memory_order_relaxed);
            if (first >= myCount) {
                return;
            }
            const qsizetype end = std::min(first + myPortion, myCount);
            for (qsizetype index = first; index < end; ++index) {
                myWork(index);
            }
        }
    }

    void help()
    {
        {
            const QMutexLocker locker(&myMutex);
            if (myIsClosed) {
                return;
            }
            ++myHelpers;
        }
        workOff();
        const QMutexLocker locker(&myMutex);
        --myHelpers;
        myHelperLeft.wakeAll();
    }

    void closeAndWait()
    {
        const QMutexLocker locker(&myMutex);
        myIsClosed = true;
        while (myHelpers > 0) {
            myHelperLeft.wait(&myMutex);
        }
    }

private:
    const qsizetype myCount;
    const qsizetype myPortion;
    const std::function<void(qsizetype)>& myWork; // alive until closeAndWait() returns
    std::atomic<qsizetype> myNext = 0;
    QMutex myMutex;
    QWaitCondition myHelperLeft;
    int myHelpers = 0;
    bool myIsClosed = false;
};

} // namespace

bool LvConcurrent::isMainThread()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application != nullptr && QThread::currentThread() == application->thread();
}

bool LvConcurrent::mayFanOut()
{
    return isMainThread() || QThreadPool::globalInstance()->activeThreadCount() < maxRunningThreads;
}

void LvConcurrent::forEachIndex(qsizetype count, const std::function<void(qsizetype)>& work)
{
    if (count < 2 || !mayFanOut()) {
        for (qsizetype index = 0; index < count; ++index) {
            work(index);
        }
        return;
    }
    QThreadPool* pool = QThreadPool::globalInstance();
    const qsizetype threads = std::min<qsizetype>(count, std::max(1, pool->maxThreadCount()));
    const qsizetype portion = std::max<qsizetype>(1, count / (threads * portionsPerThread));
    const auto loop = std::make_shared<LvParallelLoop>(count, portion, work);
    // The caller is one of the threads. Never queue helpers: waiting for a queued one is what locks up a full
    // pool.
    for (qsizetype helper = 1; helper < count && helper <= threads; ++helper) {
        if (!pool->tryStart([loop] { loop->help(); })) {
            break;
        }
    }
    loop->workOff();
    loop->closeAndWait();
}
