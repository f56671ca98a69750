#include "LvConcurrent.h"
#include "LvTest.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <numeric>
#include <thread>

namespace
{

/// Ends the program when the guarded part does not end: a deadlock shall fail, not hang.
class Watchdog
{
public:
    explicit Watchdog(const char* what)
        : myThread([this, what] {
            std::unique_lock lock(myMutex);
            if (!myDone.wait_for(lock, std::chrono::seconds(60), [this] { return myIsDone; })) {
                qFatal("deadlock in %s", what);
            }
        })
    {
    }
    Q_DISABLE_COPY_MOVE(Watchdog)

    ~Watchdog()
    {
        {
            const std::lock_guard lock(myMutex);
            myIsDone = true;
        }
        myDone.notify_all();
        myThread.join();
    }

private:
    std::mutex myMutex;
    std::condition_variable myDone;
    bool myIsDone = false;
    std::thread myThread;
};

QList<int> numbers(int count)
{
    QList<int> list(count);
    std::iota(list.begin(), list.end(), 0);
    return list;
}

/// Runs the function on a thread outside of the pool.
template <class Function>
void onWorker(Function function)
{
    std::thread thread(function);
    thread.join();
}

struct NoDefault {
    explicit NoDefault(int number)
        : value(number)
    {
    }

    int value;
};

int sumNested(int depth)
{
    if (depth == 0) {
        return 1;
    }
    const QList<int> parts =
        LvConcurrent::blockingMapped(numbers(6), [depth](int) { return sumNested(depth - 1); });
    return std::accumulate(parts.cbegin(), parts.cend(), 0);
}

} // namespace

class tst_LvConcurrent : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        QThreadPool::globalInstance()->setMaxThreadCount(qMax(2, QThread::idealThreadCount()));
        LvConcurrent::maxRunningThreads = 3 * QThread::idealThreadCount();
    }

    void cleanup() { QVERIFY(QThreadPool::globalInstance()->waitForDone(60000)); }

    // Must be the first that looks at it.
    void initTestCase() { QCOMPARE(LvConcurrent::maxRunningThreads, 3 * QThread::idealThreadCount()); }

    void mainThread()
    {
        QVERIFY(LvConcurrent::isMainThread());
        bool elsewhere = true;
        onWorker([&elsewhere] { elsewhere = LvConcurrent::isMainThread(); });
        QVERIFY(!elsewhere);
    }

    void rule()
    {
        LvConcurrent::maxRunningThreads = 0;
        QVERIFY(LvConcurrent::mayFanOut()); // the main thread always
        bool worker = true;
        onWorker([&worker] { worker = LvConcurrent::mayFanOut(); });
        QVERIFY(!worker);

        LvConcurrent::maxRunningThreads =
            1; // below the limit while nothing runs, at the limit in a pool thread
        onWorker([&worker] { worker = LvConcurrent::mayFanOut(); });
        QVERIFY(worker);
        QSemaphore done;
        QThreadPool::globalInstance()->start([&] {
            worker = LvConcurrent::mayFanOut();
            done.release();
        });
        QVERIFY(done.tryAcquire(1, 60000));
        QVERIFY(!worker);
    }

    void mappedInOrder_data()
    {
        QTest::addColumn<int>("count");
        QTest::newRow("nothing") << 0;
        QTest::newRow("one") << 1;
        QTest::newRow("two") << 2;
        QTest::newRow("many") << 1000;
    }

    void mappedInOrder()
    {
        QFETCH(int, count);
        const QList<QString> texts = LvConcurrent::blockingMapped(numbers(count), [](int number) {
            if (number % 97 == 0) {
                QThread::msleep(1); // early items finish late
            }
            return QString::number(number);
        });
        QCOMPARE(texts.size(), count);
        for (int i = 0; i < count; ++i) {
            QCOMPARE(texts.at(i), QString::number(i));
        }
    }

    void mappedWithOtherTypes()
    {
        const std::function<NoDefault(const int&)> function = [](const int& number) {
            return NoDefault(2 * number);
        };
        const QList<NoDefault> results = LvConcurrent::blockingMapped(std::vector<int>{1, 2, 3}, function);
        QCOMPARE(results.size(), 3);
        QCOMPARE(results.at(2).value, 6);
        const QStringList texts = {QStringLiteral("a"), QStringLiteral("bb")};
        QCOMPARE(LvConcurrent::blockingMapped(texts, &QString::size), (QList<qsizetype>{1, 2}));
    }

    void fansOut()
    {
        // Each of the two items waits for the other one: one thread alone would never get both.
        const Watchdog watchdog("fansOut");
        std::atomic<int> arrived = 0;
        const QList<QThread*> threads = LvConcurrent::blockingMapped(numbers(2), [&arrived](int) {
            ++arrived;
            while (arrived < 2) {
                QThread::yieldCurrentThread();
            }
            return QThread::currentThread();
        });
        QVERIFY(threads.at(0) != threads.at(1));
        QVERIFY(threads.contains(QThread::currentThread())); // the caller takes part
    }

    void sequentialWhereTheRuleForbids()
    {
        LvConcurrent::maxRunningThreads = 0;
        QList<int> order;
        bool sameThread = true;
        onWorker([&] {
            QThread* caller = QThread::currentThread();
            LvConcurrent::blockingMap(numbers(100), [&](int number) {
                sameThread = sameThread && QThread::currentThread() == caller;
                order.append(number);
            });
        });
        QVERIFY(sameThread);
        QCOMPARE(order, numbers(100));
    }

    void mapInPlace()
    {
        QList<int> list = numbers(1000);
        const QList<int> copy = list;
        LvConcurrent::blockingMap(list, [](int& number) { number *= 2; });
        for (int i = 0; i < 1000; ++i) {
            QCOMPARE(list.at(i), 2 * i);
            QCOMPARE(copy.at(i), i);
        }
    }

    void mapOverConstantList()
    {
        const QList<int> list = numbers(1000);
        std::vector<int> results(1000);
        LvConcurrent::blockingMap(
            list, [&results](int number) { results[static_cast<size_t>(number)] = number + 1; });
        for (int i = 0; i < 1000; ++i) {
            QCOMPARE(results[static_cast<size_t>(i)], i + 1);
        }
    }

    void eachIndexOnce()
    {
        std::vector<std::atomic<int>> calls(100003);
        LvConcurrent::forEachIndex(100003,
                                   [&calls](qsizetype index) { ++calls[static_cast<size_t>(index)]; });
        for (const std::atomic<int>& count : calls) {
            QCOMPARE(count.load(), 1);
        }
    }

    void nested_data()
    {
        QTest::addColumn<int>("threads");
        QTest::addColumn<int>("limit");
        for (const int threads : {1, 2, 64}) {
            QTest::addRow("pool of %d", threads) << threads << 3 * QThread::idealThreadCount();
            QTest::addRow("pool of %d, no limit", threads) << threads << 1000;
            QTest::addRow("pool of %d, never", threads) << threads << 0;
        }
    }

    void nested()
    {
        QFETCH(int, threads);
        QFETCH(int, limit);
        const Watchdog watchdog(QTest::currentDataTag());
        QThreadPool* pool = QThreadPool::globalInstance();
        pool->setMaxThreadCount(threads);
        LvConcurrent::maxRunningThreads = limit;

        QCOMPARE(sumNested(4), 6 * 6 * 6 * 6); // begun by the main thread

        // Every thread of the pool, and more jobs in its queue, begin such loops at the same time.
        const int jobs = 3 * threads;
        QSemaphore done;
        std::atomic<int> sum = 0;
        for (int job = 0; job < jobs; ++job) {
            pool->start([&] {
                sum += sumNested(3);
                done.release();
            });
        }
        QVERIFY(done.tryAcquire(jobs, 50000));
        QCOMPARE(sum.load(), jobs * 6 * 6 * 6);
        QVERIFY(pool->waitForDone(50000));
    }

    void fullPool()
    {
        // The only thread of the pool is blocked until the loop of the main thread is over.
        const Watchdog watchdog("fullPool");
        QThreadPool* pool = QThreadPool::globalInstance();
        pool->setMaxThreadCount(1);
        QSemaphore loopIsOver;
        QSemaphore isBlocked;
        pool->start([&] {
            isBlocked.release();
            loopIsOver.acquire();
        });
        isBlocked.acquire();
        QCOMPARE(sumNested(2), 36);
        loopIsOver.release();
        QVERIFY(pool->waitForDone(50000));
    }
};

LV_TEST_MAIN(tst_LvConcurrent)
#include "tst_LvConcurrent.moc"
