// Tells the thread sanitizer how the toolkit synchronises threads. The toolkit's libraries are not built with
// the sanitizer, which therefore sees what they guard but not the guards, and would report every correct
// program. The test programs of that build define these functions themselves; each calls the toolkit's own
// one and says what order it makes. (The inline part of QMutex says so on its own.)

#include <QMutex>
#include <QReadWriteLock>
#include <QRunnable>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>
#include <QWaitCondition>

#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <future>
#include <memory>
#include <sanitizer/tsan_interface.h>
#include <utility>

namespace
{

template <class Function>
Function original(const char* symbol)
{
    void* address = dlsym(RTLD_NEXT, symbol);
    if (address == nullptr) {
        qFatal("the toolkit has no %s", symbol);
    }
    return reinterpret_cast<Function>(address);
}

// All threads made by QThread::create() share it: a wait for one of them counts as a wait for those that have
// ended before.
char finishedThreads;

/// A function on its way into the pool. The pool's thread reads the object before it can say what order there
/// is, so that part of it is not looked at.
class PoolFunction : public QRunnable
{
public:
    PoolFunction(QThreadPool* pool, std::function<void()> function)
        : myPool(pool)
        , myFunction(std::move(function))
    {
        __tsan_release(myPool);
    }

    __attribute__((no_sanitize("thread"))) void run() override
    {
        __tsan_acquire(myPool);
        callFunction();
    }

private:
    __attribute__((noinline)) void callFunction()
    {
        myFunction();
        __tsan_release(myPool);
    }

    QThreadPool* myPool;
    std::function<void()> myFunction;
};

bool acquireIf(bool isLocked, void* lock)
{
    if (isLocked) {
        __tsan_acquire(lock);
    }
    return isLocked;
}

} // namespace

void QReadWriteLock::lockForRead()
{
    static const auto myOriginal = original<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock11lockForReadEv");
    myOriginal(this);
    __tsan_acquire(this);
}

void QReadWriteLock::lockForWrite()
{
    static const auto myOriginal = original<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock12lockForWriteEv");
    myOriginal(this);
    __tsan_acquire(this);
}

void QReadWriteLock::unlock()
{
    static const auto myOriginal = original<void (*)(QReadWriteLock*)>("_ZN14QReadWriteLock6unlockEv");
    __tsan_release(this);
    myOriginal(this);
}

bool QRecursiveMutex::tryLock(int timeout)
{
    static const auto myOriginal =
        original<bool (*)(QRecursiveMutex*, int)>("_ZN15QRecursiveMutex7tryLockEi");
    return acquireIf(myOriginal(this, timeout), this);
}

void QRecursiveMutex::unlock() noexcept
{
    static const auto myOriginal = original<void (*)(QRecursiveMutex*)>("_ZN15QRecursiveMutex6unlockEv");
    __tsan_release(this);
    myOriginal(this);
}

bool QWaitCondition::wait(QMutex* mutex, QDeadlineTimer deadline)
{
    static const auto myOriginal = original<bool (*)(QWaitCondition*, QMutex*, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    __tsan_mutex_pre_unlock(mutex, 0);
    __tsan_mutex_post_unlock(mutex, 0);
    const bool woken = myOriginal(this, mutex, deadline);
    __tsan_mutex_pre_lock(mutex, 0);
    __tsan_mutex_post_lock(mutex, 0, 0);
    return woken;
}

void QSemaphore::acquire(int n)
{
    static const auto myOriginal = original<void (*)(QSemaphore*, int)>("_ZN10QSemaphore7acquireEi");
    myOriginal(this, n);
    __tsan_acquire(this);
}

bool QSemaphore::tryAcquire(int n)
{
    static const auto myOriginal = original<bool (*)(QSemaphore*, int)>("_ZN10QSemaphore10tryAcquireEi");
    return acquireIf(myOriginal(this, n), this);
}

bool QSemaphore::tryAcquire(int n, int timeout)
{
    static const auto myOriginal =
        original<bool (*)(QSemaphore*, int, int)>("_ZN10QSemaphore10tryAcquireEii");
    return acquireIf(myOriginal(this, n, timeout), this);
}

void QSemaphore::release(int n)
{
    static const auto myOriginal = original<void (*)(QSemaphore*, int)>("_ZN10QSemaphore7releaseEi");
    __tsan_release(this);
    myOriginal(this, n);
}

QThread* QThread::createThreadImpl(std::future<void>&& future)
{
    static const auto myOriginal =
        original<QThread* (*)(std::future<void> &&)>("_ZN7QThread16createThreadImplEOSt6futureIvE");
    return myOriginal(std::async(std::launch::deferred, [work = std::move(future)]() mutable {
        work.get();
        __tsan_release(&finishedThreads);
    }));
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static const auto myOriginal =
        original<bool (*)(QThread*, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    return acquireIf(myOriginal(this, deadline), &finishedThreads);
}

void QThreadPool::start(std::function<void()> functionToRun, int priority)
{
    start(new PoolFunction(this, std::move(functionToRun)), priority);
}

bool QThreadPool::tryStart(std::function<void()> functionToRun)
{
    auto function = std::make_unique<PoolFunction>(this, std::move(functionToRun));
    if (!tryStart(function.get())) {
        return false;
    }
    (void)function.release(); // the pool deletes it
    return true;
}

bool QThreadPool::waitForDone(int msecs)
{
    static const auto myOriginal = original<bool (*)(QThreadPool*, int)>("_ZN11QThreadPool11waitForDoneEi");
    return acquireIf(myOriginal(this, msecs), this);
}
