#include "LvFixedSizePool.h"
#include "LvTest.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <barrier>
#include <cstdint>
#include <cstring>
#include <memory>
#include <mutex>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace
{

constexpr std::size_t smallSize = 48;
constexpr std::size_t middleSize = 72;

// Every test function that counts slabs has a pool of its own, as threads hold a part of a pool back.
constinit LvFixedSizePool smallPool(smallSize);
constinit LvFixedSizePool middlePool(middleSize);
constinit LvFixedSizePool threadPool(middleSize);
constinit LvFixedSizePool classPool(40);
constinit LvFixedSizePool lifeTimePool(56);
constinit LvFixedSizePool hugePool(LvFixedSizePool::largestObjectSize + 1);

/// An object that knows what it holds, so that overlapping objects show.
struct Object {
    unsigned char* memory;
    unsigned char mark;
};

class Objects
{
    Q_DISABLE_COPY_MOVE(Objects)

public:
    explicit Objects(LvFixedSizePool& pool)
        : myPool(pool)
    {
    }

    ~Objects() { releaseAll(); }

    void allocate(std::size_t count)
    {
        for (std::size_t index = 0; index < count; ++index) {
            const auto mark = static_cast<unsigned char>(myObjects.size() * 31 + 7);
            auto* memory = static_cast<unsigned char*>(myPool.allocate(myPool.objectSize()));
            std::memset(memory, mark, myPool.objectSize());
            myObjects.push_back({memory, mark});
        }
    }

    [[nodiscard]] bool isIntact() const
    {
        return std::all_of(myObjects.begin(), myObjects.end(), [this](const Object& object) {
            return std::all_of(object.memory, object.memory + myPool.objectSize(),
                               [&object](unsigned char byte) { return byte == object.mark; });
        });
    }

    void shuffle(std::mt19937& random) { std::shuffle(myObjects.begin(), myObjects.end(), random); }

    void release(std::size_t count)
    {
        for (std::size_t index = 0; index < count; ++index) {
            myPool.release(myObjects.back().memory, myPool.objectSize());
            myObjects.pop_back();
        }
    }

    void releaseAll() { release(myObjects.size()); }

    [[nodiscard]] std::size_t count() const { return myObjects.size(); }

    [[nodiscard]] const std::vector<Object>& list() const { return myObjects; }

    [[nodiscard]] std::vector<Object> takeAll() { return std::exchange(myObjects, {}); }

private:
    LvFixedSizePool& myPool;
    std::vector<Object> myObjects;
};

/// Runs the function on a thread of its own and waits for its end.
template <class Function>
void onThread(Function function)
{
    std::thread thread(std::move(function));
    thread.join();
}

struct Payload {
    static void* operator new(std::size_t size) { return classPool.allocate(size); }

    static void operator delete(void* object, std::size_t size) { classPool.release(object, size); }

    virtual ~Payload() = default;

    std::array<double, 4> values{};
};

struct LargerPayload : Payload {
    std::array<double, 4> moreValues{};
};

/// Releases its objects when everything else of the program has ended.
struct StaticHolder {
    std::unique_ptr<Payload> payload;
    std::vector<std::unique_ptr<Payload>> more;
};

StaticHolder staticHolder;

/// Lives longer than what the pool keeps of the thread, as its destructor runs after that one.
struct LateUser {
    LateUser() = default;
    Q_DISABLE_COPY_MOVE(LateUser)

    ~LateUser()
    {
        for (void* object : objects) {
            lifeTimePool.release(object, lifeTimePool.objectSize());
        }
        Objects late(lifeTimePool);
        late.allocate(lifeTimePool.objectsPerSlab() + 10);
        isIntact = late.isIntact();
    }

    std::vector<void*> objects;
    inline static std::atomic<bool> isIntact = false;
};

} // namespace

#if defined(__SANITIZE_ADDRESS__)
#define LV_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LV_ADDRESS_SANITIZER
#endif
#endif

#ifdef LV_ADDRESS_SANITIZER
#define LV_SKIP_WITHOUT_SLABS(pool) QSKIP("the address sanitizer replaces the slabs")
#else
#define LV_SKIP_WITHOUT_SLABS(pool) QVERIFY((pool).usesSlabs())
#endif

class tst_LvFixedSizePool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizes_data();
    void sizes();
    void alignment();
    void objectsDoNotOverlap();
    void overheadIsSmall();
    void anotherSizeIsServedByTheGeneralAllocator();
    void largeObjectsAreServedByTheGeneralAllocator();
    void nullIsNothingToRelease();
    void classWithOperators();
    void memoryIsReused();
    void memoryIsGivenBack();
    void fewSpareSlabsAreKept();
    void releasedObjectsMakeRoomInTheirSlabs();
    void anotherThreadReleases();
    void idleThreadHoldsLittleBack();
    void endedThreadLeavesItsObjects();
    void threadEndsBeforeItsObjects();
    void threadsExchangeObjects();
    void forkedProcess();
};

void tst_LvFixedSizePool::sizes_data()
{
    QTest::addColumn<std::size_t>("size");
    QTest::addColumn<std::size_t>("perSlab");
    QTest::newRow("nothing") << std::size_t{0} << std::size_t{(65536 - 64) / 8};
    QTest::newRow("one byte") << std::size_t{1} << std::size_t{(65536 - 64) / 8};
    QTest::newRow("a multiple of 8") << std::size_t{72} << std::size_t{(65536 - 64) / 72};
    QTest::newRow("rounded up") << std::size_t{73} << std::size_t{(65536 - 64) / 80};
    QTest::newRow("largest") << LvFixedSizePool::largestObjectSize << std::size_t{(65536 - 64) / 1024};
}

void tst_LvFixedSizePool::sizes()
{
    QFETCH(std::size_t, size);
    QFETCH(std::size_t, perSlab);
    const LvFixedSizePool pool(size);
    QCOMPARE(pool.objectSize(), size);
    QCOMPARE(pool.objectsPerSlab(), perSlab);
    QCOMPARE(pool.slabCount(), 0);
}

void tst_LvFixedSizePool::alignment()
{
    const auto isAligned = [](const Objects& objects, std::uintptr_t alignment) {
        return std::all_of(objects.list().begin(), objects.list().end(), [alignment](const Object& object) {
            return reinterpret_cast<std::uintptr_t>(object.memory) % alignment == 0;
        });
    };
    Objects small(smallPool);
    small.allocate(3 * smallPool.objectsPerSlab());
    QVERIFY(isAligned(small, 16));
    Objects middle(middlePool);
    middle.allocate(3 * middlePool.objectsPerSlab());
    QVERIFY(isAligned(middle, 8));
}

void tst_LvFixedSizePool::objectsDoNotOverlap()
{
    std::mt19937 random(1);
    Objects small(smallPool);
    Objects middle(middlePool);
    for (int round = 0; round < 50; ++round) {
        small.allocate(random() % 3000);
        middle.allocate(random() % 3000);
        small.shuffle(random);
        middle.shuffle(random);
        QVERIFY(small.isIntact());
        QVERIFY(middle.isIntact());
        small.release(random() % (small.count() + 1));
        middle.release(random() % (middle.count() + 1));
    }
}

void tst_LvFixedSizePool::overheadIsSmall()
{
    LV_SKIP_WITHOUT_SLABS(middlePool);
    constexpr std::size_t count = 100000;
    const qsizetype before = middlePool.slabCount();
    Objects objects(middlePool);
    objects.allocate(count);
    const auto bytes =
        static_cast<double>(middlePool.slabCount() - before) * static_cast<double>(LvFixedSizePool::slabSize);
    QVERIFY(bytes / static_cast<double>(count) < 1.01 * static_cast<double>(middleSize));
}

void tst_LvFixedSizePool::anotherSizeIsServedByTheGeneralAllocator()
{
    const qsizetype before = smallPool.slabCount();
    std::vector<void*> objects;
    for (std::size_t index = 0; index < 5 * smallPool.objectsPerSlab(); ++index) {
        objects.push_back(smallPool.allocate(smallSize + 8));
        std::memset(objects.back(), 1, smallSize + 8);
    }
    QCOMPARE(smallPool.slabCount(), before);
    for (void* object : objects) {
        smallPool.release(object, smallSize + 8);
    }
}

void tst_LvFixedSizePool::largeObjectsAreServedByTheGeneralAllocator()
{
    QVERIFY(!hugePool.usesSlabs());
    Objects objects(hugePool);
    objects.allocate(100);
    QVERIFY(objects.isIntact());
    QCOMPARE(hugePool.slabCount(), 0);
}

void tst_LvFixedSizePool::nullIsNothingToRelease()
{
    smallPool.release(nullptr, smallSize);
    smallPool.release(nullptr, smallSize + 1);
}

void tst_LvFixedSizePool::classWithOperators()
{
    LV_SKIP_WITHOUT_SLABS(classPool);
    const qsizetype before = classPool.slabCount();
    std::vector<std::unique_ptr<Payload>> payloads;
    for (std::size_t index = 0; index < 3 * classPool.objectsPerSlab(); ++index) {
        payloads.push_back(std::make_unique<Payload>());
    }
    const qsizetype used = classPool.slabCount();
    QVERIFY(used >= before + 3);
    // A derived class inherits the operators, but it is larger.
    for (std::size_t index = 0; index < 3 * classPool.objectsPerSlab(); ++index) {
        payloads.push_back(std::make_unique<LargerPayload>());
    }
    QCOMPARE(classPool.slabCount(), used);
    payloads.clear();
    QVERIFY(classPool.slabCount() <= before + 2);
    // Released after main() has returned.
    staticHolder.payload = std::make_unique<Payload>();
    for (std::size_t index = 0; index < 2 * classPool.objectsPerSlab(); ++index) {
        staticHolder.more.push_back(std::make_unique<Payload>());
    }
}

void tst_LvFixedSizePool::memoryIsReused()
{
    LV_SKIP_WITHOUT_SLABS(smallPool);
    Objects objects(smallPool);
    objects.allocate(10 * smallPool.objectsPerSlab());
    const qsizetype used = smallPool.slabCount();
    for (int round = 0; round < 20; ++round) {
        objects.release(5 * smallPool.objectsPerSlab());
        objects.allocate(5 * smallPool.objectsPerSlab());
        QVERIFY(smallPool.slabCount() <= used + 1);
    }
    // A temporary object takes the place of the one before.
    void* first = smallPool.allocate(smallSize);
    smallPool.release(first, smallSize);
    void* second = smallPool.allocate(smallSize);
    QCOMPARE(second, first);
    smallPool.release(second, smallSize);
}

void tst_LvFixedSizePool::memoryIsGivenBack()
{
    LV_SKIP_WITHOUT_SLABS(middlePool);
    std::mt19937 random(2);
    const qsizetype before = middlePool.slabCount();
    for (const bool isShuffled : {false, true}) {
        Objects objects(middlePool);
        objects.allocate(100 * middlePool.objectsPerSlab());
        QVERIFY(middlePool.slabCount() >= before + 99);
        QVERIFY(LvFixedSizePool::usedSlabCount() >= middlePool.slabCount());
        if (isShuffled) {
            objects.shuffle(random);
        }
        objects.releaseAll();
        // The one in use, and one whose objects are still gathered.
        QVERIFY(middlePool.slabCount() <= before + 2);
    }
}

void tst_LvFixedSizePool::fewSpareSlabsAreKept()
{
    LV_SKIP_WITHOUT_SLABS(middlePool);
    Objects objects(middlePool);
    objects.allocate(200 * middlePool.objectsPerSlab());
    objects.releaseAll();
    QVERIFY(LvFixedSizePool::spareSlabCount() <= LvFixedSizePool::maximumSpareSlabs);
    QVERIFY(LvFixedSizePool::spareSlabCount() > 0);
}

void tst_LvFixedSizePool::releasedObjectsMakeRoomInTheirSlabs()
{
    LV_SKIP_WITHOUT_SLABS(middlePool);
    constexpr std::size_t slabs = 40;
    Objects objects(middlePool);
    objects.allocate(slabs * middlePool.objectsPerSlab());
    // Every second object, so that no slab becomes empty.
    const std::vector<Object> all = objects.takeAll();
    for (std::size_t index = 0; index < all.size(); index += 2) {
        middlePool.release(all[index].memory, middleSize);
    }
    const qsizetype used = middlePool.slabCount();
    objects.allocate(slabs * middlePool.objectsPerSlab() / 2);
    QVERIFY(middlePool.slabCount() <= used + 1);
    QVERIFY(objects.isIntact());
    for (std::size_t index = 1; index < all.size(); index += 2) {
        QCOMPARE(all[index].memory[middleSize - 1], all[index].mark);
        middlePool.release(all[index].memory, middleSize);
    }
}

void tst_LvFixedSizePool::anotherThreadReleases()
{
    LV_SKIP_WITHOUT_SLABS(threadPool);
    const qsizetype before = threadPool.slabCount();
    Objects objects(threadPool);
    objects.allocate(50 * threadPool.objectsPerSlab());
    onThread([&objects] {
        if (objects.isIntact()) {
            objects.releaseAll();
        }
    });
    QCOMPARE(objects.count(), std::size_t{0});
    // The one that this thread allocates from.
    QVERIFY(threadPool.slabCount() <= before + 1);
    // What the other thread released in it can be used again.
    objects.allocate(threadPool.objectsPerSlab());
    QVERIFY(threadPool.slabCount() <= before + 2);
}

void tst_LvFixedSizePool::idleThreadHoldsLittleBack()
{
    LV_SKIP_WITHOUT_SLABS(threadPool);
    const qsizetype before = threadPool.slabCount();
    Objects objects(threadPool);
    std::barrier meeting(2);
    std::thread reader([&] {
        objects.allocate(50 * threadPool.objectsPerSlab());
        meeting.arrive_and_wait();
        meeting.arrive_and_wait();
    });
    meeting.arrive_and_wait();
    objects.releaseAll();
    // The thread is alive, but does nothing.
    const qsizetype meanwhile = threadPool.slabCount();
    meeting.arrive_and_wait();
    reader.join();
    QVERIFY(meanwhile <= before + 3);
    QVERIFY(threadPool.slabCount() <= before + 1);
}

void tst_LvFixedSizePool::endedThreadLeavesItsObjects()
{
    LV_SKIP_WITHOUT_SLABS(threadPool);
    const qsizetype before = threadPool.slabCount();
    Objects objects(threadPool);
    const std::size_t count = 3 * threadPool.objectsPerSlab() + 5;
    onThread([&objects, count] { objects.allocate(count); });
    QVERIFY(objects.isIntact());
    const qsizetype used = threadPool.slabCount();
    // The room in the last slab of the thread is not lost.
    Objects others(threadPool);
    others.allocate(2 * threadPool.objectsPerSlab() - 10);
    QVERIFY(threadPool.slabCount() <= used + 1);
    QVERIFY(others.isIntact());
    QVERIFY(objects.isIntact());
    objects.releaseAll();
    others.releaseAll();
    QVERIFY(threadPool.slabCount() <= before + 2);
}

void tst_LvFixedSizePool::threadEndsBeforeItsObjects()
{
    LateUser::isIntact = false;
    onThread([] {
        // Made before the pool is used, so destroyed after the pool has taken leave of the thread.
        static thread_local LateUser myUser;
        for (std::size_t index = 0; index < 2 * lifeTimePool.objectsPerSlab(); ++index) {
            myUser.objects.push_back(lifeTimePool.allocate(lifeTimePool.objectSize()));
        }
    });
    QVERIFY(LateUser::isIntact);
    QCOMPARE(lifeTimePool.slabCount(), 0);
}

void tst_LvFixedSizePool::threadsExchangeObjects()
{
    constexpr int threadCount = 6;
    constexpr int rounds = 40;

    struct Exchange {
        std::mutex mutex;
        std::vector<Object> objects;
    };

    std::array<Exchange, threadCount> exchanges;
    std::atomic<int> damaged = 0;
    const qsizetype before = threadPool.slabCount();
    const auto work = [&](unsigned seed) {
        std::mt19937 random(seed);
        for (int round = 0; round < rounds; ++round) {
            Objects own(threadPool);
            own.allocate(random() % 2500);
            own.shuffle(random);
            own.release(own.count() / 3);
            Exchange& exchange = exchanges[random() % threadCount];
            std::vector<Object> taken = own.takeAll();
            {
                const std::lock_guard lock(exchange.mutex);
                std::swap(taken, exchange.objects);
            }
            for (const Object& object : taken) {
                damaged +=
                    object.memory[0] == object.mark && object.memory[middleSize - 1] == object.mark ? 0 : 1;
                threadPool.release(object.memory, middleSize);
            }
        }
    };
    // Some of the threads end early and others begin late.
    for (unsigned generation = 0; generation < 3; ++generation) {
        std::vector<std::thread> threads;
        for (unsigned index = 0; index < threadCount; ++index) {
            threads.emplace_back(work, generation * 100 + index);
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    for (const Exchange& exchange : exchanges) {
        for (const Object& object : exchange.objects) {
            threadPool.release(object.memory, middleSize);
        }
    }
    QCOMPARE(damaged.load(), 0);
    if (threadPool.usesSlabs()) {
        QVERIFY(threadPool.slabCount() <= before + 2);
    }
}

void tst_LvFixedSizePool::forkedProcess()
{
#if defined(Q_OS_UNIX) && !defined(__SANITIZE_THREAD__)
    // The sanitizer's own allocator does not care whether a thread has it locked when the process is copied.
    LV_SKIP_WITHOUT_SLABS(threadPool);
    // A thread that is at work in the pool, mostly with the mutex locked, when the process is copied.
    std::atomic<bool> isDone = false;
    std::thread busy([&isDone] {
        while (!isDone) {
            Objects objects(threadPool);
            objects.allocate(2 * threadPool.objectsPerSlab());
        }
    });
    bool allEnded = true;
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(20); // a deadlock shall fail, not hang
            Objects objects(threadPool);
            objects.allocate(3 * threadPool.objectsPerSlab());
            const bool intact = objects.isIntact();
            objects.releaseAll();
            _exit(intact ? 0 : 1);
        }
        int status = 0;
        allEnded = child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)
            && WEXITSTATUS(status) == 0 && allEnded;
    }
    isDone = true;
    busy.join();
    QVERIFY(allEnded);
#else
    QSKIP("no fork, or none that the sanitizer allows beside threads");
#endif
}

LV_TEST_MAIN(tst_LvFixedSizePool)
#include "tst_LvFixedSizePool.moc"
