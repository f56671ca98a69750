#include "LvSingleton.h"
#include "LvTest.h"
#include "LvTestService.h"

#include <QSemaphore>

#include <atomic>
#include <thread>
#include <vector>

namespace
{

/// Counts what happens to it; takes its time to be set up.
class SlowService : public LvSingleton<SlowService>
{
public:
    static inline std::atomic<int> myConstructions = 0;

    SlowService() { ++myConstructions; }

    void setupInstance() override
    {
        QThread::msleep(50);
        ++setups;
        isSetUp = true;
    }

    int setups = 0;
    bool isSetUp = false;
};

/// Nobody but the template can make one.
class PrivateService : public LvSingleton<PrivateService>
{
public:
    int answer = 42;

private:
    friend class LvSingleton<PrivateService>;
    PrivateService() = default;
};

} // namespace

class ObjectService : public QObject, public LvSingleton<ObjectService>
{
    Q_OBJECT

public:
    void setupInstance() override
    {
        child = new QObject(this);
        setupThread = QThread::currentThread();
    }

    QObject* child = nullptr;
    QThread* setupThread = nullptr;
};

class tst_LvSingleton : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void sameInstanceEachTime()
    {
        PrivateService* service = PrivateService::instance();
        QVERIFY(service != nullptr);
        QCOMPARE(PrivateService::instance(), service);
        QCOMPARE(LvSingleton<PrivateService>::instance(), service);
        QCOMPARE(service->answer, 42);
    }

    void threadsThatRaceGetOneReadyInstance()
    {
        constexpr int count = 8;
        QSemaphore start;
        std::vector<SlowService*> seen(count, nullptr);
        std::atomic<int> unready = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < count; ++i) {
            threads.emplace_back([&, i] {
                start.acquire();
                SlowService* service = SlowService::instance();
                seen[static_cast<size_t>(i)] = service;
                unready += service->isSetUp ? 0 : 1;
            });
        }
        start.release(count);
        for (std::thread& thread : threads) {
            thread.join();
        }
        QCOMPARE(SlowService::myConstructions.load(), 1);
        QCOMPARE(SlowService::instance()->setups, 1);
        QCOMPARE(unready.load(), 0);
        for (const SlowService* service : seen) {
            QCOMPARE(service, SlowService::instance());
        }
    }

    void objectsBelongToTheApplicationsThread()
    {
        ObjectService* service = nullptr;
        QThread* worker = QThread::create([&service] { service = ObjectService::instance(); });
        worker->start();
        QVERIFY(worker->wait());
        QCOMPARE(service->setupThread, worker);
        QCOMPARE(service->thread(), QCoreApplication::instance()->thread());
        QCOMPARE(service->child->thread(), QCoreApplication::instance()->thread());
        QCOMPARE(ObjectService::instance(), service);
        delete worker;
    }

    void oneInstanceForLibraryAndProgram()
    {
        LvTestService* here = LvTestService::instance();
        LvTestService* there = LvTestService::instanceInsideLibrary();
        QCOMPARE(there, here);
        QCOMPARE(here->setups, 1);
    }

    void metaObjectKnowsTheBase()
    {
        ObjectService* service = ObjectService::instance();
        QCOMPARE(service->qt_metacast("ObjectService"), static_cast<void*>(service));
        QCOMPARE(service->qt_metacast("LvSingleton<ObjectService>"),
                 static_cast<void*>(static_cast<LvSingleton<ObjectService>*>(service)));
    }
};

LV_TEST_MAIN(tst_LvSingleton)
#include "tst_LvSingleton.moc"
