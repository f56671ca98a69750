#include "LvFixedSizePool.h"

#include <array>
#include <cstdint>
#include <mutex>
#include <new>
#include <type_traits>
#include <utility>

#ifdef Q_OS_UNIX
#include <pthread.h>
#include <sys/mman.h>
#endif

#if defined(__SANITIZE_ADDRESS__)
#define LV_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LV_ADDRESS_SANITIZER
#endif
#endif

// The variable is read for every object. Libraries are linked, not loaded later by the dozen, so the quickest
// way to it is safe for this one pointer.
#ifdef __ELF__
#define LV_QUICK_THREAD_LOCAL [[gnu::tls_model("initial-exec")]] thread_local
#else
#define LV_QUICK_THREAD_LOCAL thread_local
#endif

namespace
{

/// What stands in the memory of an object that is not in use.
struct LvFreeObject {
    LvFreeObject* myNext;
};

} // namespace

/**
 * The head of a slab; the objects follow it. A slab starts at a multiple of its size, so that the address of
 * an object leads to it.
 *
 * A slab is either held by the one thread that allocates from it, or it stands in the list of its pool's
 * slabs with room, or it is full and nobody knows it but its objects. Any thread may add released objects.
 * Whatever moves a slab from one of these kinds to another happens under the mutex, except that its holder
 * drops a full slab; everything else is one atomic exchange of the state.
 */
struct alignas(64) LvFixedSizePoolSlab {
    static constexpr std::size_t firstOffset = LvFixedSizePool::slabHeaderSize;

    std::atomic<std::uint32_t> myState;
    std::uint32_t myFirstUnused; // offset of what was never used; its end while a thread holds the slab
    LvFixedSizePoolSlab* myPrevious;
    LvFixedSizePoolSlab* myNext;
};

namespace
{

using Slab = LvFixedSizePoolSlab;

static_assert(sizeof(Slab) == Slab::firstOffset);
static_assert(std::is_trivially_destructible_v<LvFixedSizePool>,
              "must stay usable to the end of the process");

// The state of a slab: whether a thread holds it, how many objects are free that the holder does not know,
// and the offset of the first one of those that are chained up (0: none is, the others were never used).
constexpr std::uint32_t heldFlag = 0x80000000U;
constexpr unsigned countShift = 16;
constexpr std::uint32_t countMask = 0x7FFFU;
constexpr std::uint32_t offsetMask = 0xFFFFU;

static_assert(LvFixedSizePool::slabSize == offsetMask + 1);

constexpr std::uint32_t freeCount(std::uint32_t state)
{
    return (state >> countShift) & countMask;
}

constexpr bool isHeld(std::uint32_t state)
{
    return (state & heldFlag) != 0;
}

constexpr std::uint32_t makeState(bool held, std::size_t count, std::size_t offset)
{
    return (held ? heldFlag : 0U) | static_cast<std::uint32_t>(count << countShift)
        | static_cast<std::uint32_t>(offset);
}

std::byte* bytes(Slab* slab)
{
    return reinterpret_cast<std::byte*>(slab);
}

std::size_t offsetOf(void* object)
{
    return reinterpret_cast<std::uintptr_t>(object) & offsetMask;
}

Slab* slabOf(void* object)
{
    return reinterpret_cast<Slab*>(static_cast<std::byte*>(object) - offsetOf(object));
}

LvFreeObject* firstFree(Slab* slab, std::uint32_t state)
{
    const std::size_t offset = state & offsetMask;
    return offset == 0 ? nullptr : std::launder(reinterpret_cast<LvFreeObject*>(bytes(slab) + offset));
}

LvFreeObject* chain(void* memory, LvFreeObject* next)
{
    return new (memory) LvFreeObject{next};
}

/// Where slabs come from and where they go to. Guarded by the mutex of all pools.
class LvSlabSource
{
public:
    /// Memory for one slab, null when there is none.
    void* take();

    /// Takes the memory of a slab; gives it back when there are spare ones enough. That is then to be handed
    /// to the system, without holding the mutex.
    [[nodiscard]] void* put(void* memory);

    /// Keeps a slab that the system did not take back.
    void keep(void* memory);

    [[nodiscard]] qsizetype spareCount() const
    {
        return mySpareCount + (myEnd - myFresh) / static_cast<qsizetype>(LvFixedSizePool::slabSize);
    }

    [[nodiscard]] qsizetype usedCount() const { return myUsedCount; }

private:
    bool mapRegion();

    LvFreeObject* mySpare = nullptr;
    qsizetype mySpareCount = 0;
    std::byte* myFresh = nullptr; // what was never used of the region mapped last
    std::byte* myEnd = nullptr;
    qsizetype myUsedCount = 0;
};

#ifdef Q_OS_UNIX

// The first slabs come in small regions, as many programs need few of them; then in regions of the size of
// large pages, with which points are made and walked through faster.
constexpr std::size_t smallRegionSlabs = 4;
constexpr std::size_t largeRegionSlabs = 32;
constexpr qsizetype slabsBeforeLargeRegions = 64;

/// Memory that starts at a multiple of the alignment, null when there is none.
std::byte* mapAligned(std::size_t size, std::size_t alignment)
{
    const std::size_t mapped = size + alignment;
    void* address = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (address == MAP_FAILED) {
        return nullptr;
    }
    auto* first = static_cast<std::byte*>(address);
    const std::size_t surplusInFront =
        (alignment - reinterpret_cast<std::uintptr_t>(first) % alignment) % alignment;
    if (surplusInFront > 0) {
        munmap(first, surplusInFront);
    }
    munmap(first + surplusInFront + size, alignment - surplusInFront);
    return first + surplusInFront;
}

bool giveToSystem(void* memory)
{
    if (munmap(memory, LvFixedSizePool::slabSize) == 0) {
        return true;
    }
    // A hole more than the system keeps record of: at least the memory is free.
    madvise(memory, LvFixedSizePool::slabSize, MADV_DONTNEED);
    return false;
}

bool LvSlabSource::mapRegion()
{
    const bool isLarge = myUsedCount >= slabsBeforeLargeRegions;
    const std::size_t size = (isLarge ? largeRegionSlabs : smallRegionSlabs) * LvFixedSizePool::slabSize;
    std::byte* region = mapAligned(size, isLarge ? size : LvFixedSizePool::slabSize);
    if (region == nullptr) {
        return false;
    }
#ifdef MADV_HUGEPAGE
    if (isLarge) {
        madvise(region, size, MADV_HUGEPAGE);
    }
#endif
    myFresh = region;
    myEnd = region + size;
    return true;
}

#else

bool giveToSystem(void* memory)
{
    ::operator delete (memory, std::align_val_t{LvFixedSizePool::slabSize});
    return true;
}

bool LvSlabSource::mapRegion()
{
    constexpr std::size_t size = LvFixedSizePool::slabSize;
    myFresh = static_cast<std::byte*>(::operator new (size, std::align_val_t{size}, std::nothrow));
    myEnd = myFresh == nullptr ? nullptr : myFresh + size;
    return myFresh != nullptr;
}

#endif

void* LvSlabSource::take()
{
    if (mySpare != nullptr) {
        --mySpareCount;
        ++myUsedCount;
        return std::exchange(mySpare, mySpare->myNext);
    }
    if (myFresh == myEnd && !mapRegion()) {
        return nullptr;
    }
    ++myUsedCount;
    return std::exchange(myFresh, myFresh + LvFixedSizePool::slabSize);
}

void* LvSlabSource::put(void* memory)
{
    --myUsedCount;
    if (spareCount() >= LvFixedSizePool::maximumSpareSlabs) {
        return memory;
    }
    keep(memory);
    return nullptr;
}

void LvSlabSource::keep(void* memory)
{
    mySpare = chain(memory, mySpare);
    ++mySpareCount;
}

/// What all pools share. Never destroyed.
class LvSharedPools
{
public:
    static LvSharedPools& instance()
    {
        static auto* const myInstance = new LvSharedPools;
        return *myInstance;
    }

    std::mutex myMutex;
    LvSlabSource mySlabs;
    std::size_t myPoolCount = 0;

private:
    LvSharedPools()
    {
#ifdef Q_OS_UNIX
        // The child has only the thread that forks: nobody would ever unlock what another one has locked.
        pthread_atfork([] { instance().myMutex.lock(); }, [] { instance().myMutex.unlock(); },
                       [] { instance().myMutex.unlock(); });
#endif
    }
};

/// Holds the mutex; afterwards hands to the system what became superfluous.
class LvPoolGuard
{
    Q_DISABLE_COPY_MOVE(LvPoolGuard)

public:
    LvPoolGuard()
        : myShared(LvSharedPools::instance())
    {
        myShared.myMutex.lock();
    }

    ~LvPoolGuard()
    {
        myShared.myMutex.unlock();
        if (mySurplus != nullptr && !giveToSystem(mySurplus)) {
            const std::lock_guard lock(myShared.myMutex);
            myShared.mySlabs.keep(mySurplus);
        }
    }

    [[nodiscard]] LvSlabSource& slabs() const { return myShared.mySlabs; }

    [[nodiscard]] std::size_t& poolCount() { return myShared.myPoolCount; }

    void put(Slab* slab)
    {
        slab->~Slab();
        mySurplus = myShared.mySlabs.put(slab);
    }

private:
    LvSharedPools& myShared;
    void* mySurplus = nullptr; // no operation empties more than one slab
};

#ifdef LV_ADDRESS_SANITIZER
constexpr bool isReplaced = true;
#else
constexpr bool isReplaced = false;
#endif

} // namespace

/// What a thread keeps of every pool, so that it need not ask others for every object.
class LvFixedSizePoolThread
{
    Q_DISABLE_COPY_MOVE(LvFixedSizePoolThread)

public:
    /// What a thread keeps of one pool.
    struct LvEntry {
        LvFixedSizePool* myPool = nullptr;

        Slab* mySlab = nullptr; // held by this thread
        LvFreeObject* myFree = nullptr;
        std::byte* myUnused = nullptr; // what was never used, up to its end
        std::byte* myUnusedEnd = nullptr;

        Slab* myGatheredSlab = nullptr; // whose released objects are gathered
        LvFreeObject* myGathered = nullptr;
        LvFreeObject* myLastGathered = nullptr;
        std::size_t myGatheredCount = 0;
    };

    LvFixedSizePoolThread() = default;
    ~LvFixedSizePoolThread();

    /// That of the calling thread, made when it is missing; null when the thread ends or there is no memory.
    static LvFixedSizePoolThread* current();

    // A pool that has no entry of its own meets one that stays empty, and so takes the slow way.
    [[nodiscard]] LvEntry& entry(std::size_t index) { return myEntries[index]; }

    /// An object that is at hand, null when none is.
    [[nodiscard]] static void* takeObject(LvEntry& entry, std::size_t spacing)
    {
        if (entry.myFree != nullptr) {
            return std::exchange(entry.myFree, entry.myFree->myNext);
        }
        if (entry.myUnused != entry.myUnusedEnd) {
            return std::exchange(entry.myUnused, entry.myUnused + spacing);
        }
        return nullptr;
    }

    /// Gets objects for takeObject(); false when there is no memory.
    [[nodiscard]] static bool refill(LvFixedSizePool& pool, LvEntry& entry);

    /// An object for a thread that keeps nothing; null when there is no memory.
    [[nodiscard]] static void* takeSingleObject(LvFixedSizePool& pool);

    /// Keeps a released object until it is handed over together with others of the same slab.
    static void gather(LvFixedSizePool& pool, LvEntry& entry, void* object)
    {
        entry.myGathered = chain(object, entry.myGathered);
        ++entry.myGatheredCount;
        // A slab without objects is not held back: others can use it.
        const std::uint32_t state = entry.myGatheredSlab->myState.load(std::memory_order_relaxed);
        if (entry.myGatheredCount + freeCount(state) >= pool.myObjectsPerSlab) {
            handOver(pool, entry);
        }
    }

    static void gatherFirst(LvEntry& entry, Slab* slab, void* object)
    {
        entry.myGatheredSlab = slab;
        entry.myGathered = chain(object, nullptr);
        entry.myLastGathered = entry.myGathered;
        entry.myGatheredCount = 1;
    }

    static void handOver(LvFixedSizePool& pool, LvEntry& entry);

    /// Adds objects, chained up, to what is free in a slab that the calling thread does not hold.
    static void putBack(LvFixedSizePool& pool, Slab* slab, LvFreeObject* first, LvFreeObject* last,
                        std::size_t count);

private:
    // These change what kind a slab is of and so need the mutex.
    static bool hold(LvFixedSizePool& pool, LvEntry& entry, LvPoolGuard& guard);
    static void drop(LvFixedSizePool& pool, LvEntry& entry, LvPoolGuard& guard);
    static void file(LvFixedSizePool& pool, Slab* slab, std::uint32_t before, std::uint32_t after,
                     LvPoolGuard& guard);
    static void insertIntoList(LvFixedSizePool& pool, Slab* slab);
    static void removeFromList(LvFixedSizePool& pool, Slab* slab);

    std::array<LvEntry, LvFixedSizePool::withoutEntry + 1> myEntries;
};

namespace
{

using PoolThread = LvFixedSizePoolThread;

LV_QUICK_THREAD_LOCAL PoolThread* myThread = nullptr;
LV_QUICK_THREAD_LOCAL bool myThreadEnds = false;

/// Takes leave of a thread. It may still allocate and release objects afterwards, in the slow way.
struct LvThreadEnd {
    LvThreadEnd() = default;
    Q_DISABLE_COPY_MOVE(LvThreadEnd)

    ~LvThreadEnd()
    {
        myThreadEnds = true;
        delete std::exchange(myThread, nullptr);
    }
};

} // namespace

LvFixedSizePoolThread* LvFixedSizePoolThread::current()
{
    if (myThread == nullptr && !myThreadEnds) {
        static thread_local const LvThreadEnd myEnd;
        Q_UNUSED(myEnd)
        myThread = new (std::nothrow) LvFixedSizePoolThread;
    }
    return myThread;
}

LvFixedSizePoolThread::~LvFixedSizePoolThread()
{
    for (LvEntry& entry : myEntries) {
        if (entry.myPool == nullptr) {
            continue;
        }
        handOver(*entry.myPool, entry);
        if (entry.mySlab != nullptr) {
            LvPoolGuard guard;
            drop(*entry.myPool, entry, guard);
        }
    }
}

bool LvFixedSizePoolThread::refill(LvFixedSizePool& pool, LvEntry& entry)
{
    entry.myPool = &pool;
    handOver(pool, entry); // it may be what is needed
    if (entry.mySlab != nullptr) {
        std::uint32_t state = entry.mySlab->myState.load(std::memory_order_relaxed);
        while (freeCount(state) == 0) {
            // Full: from now on only its objects know it.
            if (entry.mySlab->myState.compare_exchange_weak(
                    state, makeState(false, 0, 0), std::memory_order_release, std::memory_order_relaxed)) {
                entry.mySlab = nullptr;
                break;
            }
        }
        if (entry.mySlab != nullptr) {
            state = entry.mySlab->myState.exchange(makeState(true, 0, 0), std::memory_order_acquire);
            entry.myFree = firstFree(entry.mySlab, state);
            return true;
        }
    }
    LvPoolGuard guard;
    return hold(pool, entry, guard);
}

void* LvFixedSizePoolThread::takeSingleObject(LvFixedSizePool& pool)
{
    LvEntry entry;
    LvPoolGuard guard;
    if (!hold(pool, entry, guard)) {
        return nullptr;
    }
    void* object = takeObject(entry, pool.mySpacing);
    drop(pool, entry, guard);
    return object;
}

void LvFixedSizePoolThread::handOver(LvFixedSizePool& pool, LvEntry& entry)
{
    if (entry.myGatheredSlab != nullptr) {
        putBack(pool, std::exchange(entry.myGatheredSlab, nullptr), entry.myGathered, entry.myLastGathered,
                entry.myGatheredCount);
    }
}

void LvFixedSizePoolThread::putBack(LvFixedSizePool& pool, Slab* slab, LvFreeObject* first,
                                    LvFreeObject* last, std::size_t count)
{
    // Until the exchange, the slab cannot go away, because these objects count as used; afterwards it may.
    const auto tryToAdd = [&](std::uint32_t& before, std::uint32_t& after) {
        last->myNext = firstFree(slab, before);
        after = makeState(isHeld(before), freeCount(before) + count, offsetOf(first));
        return slab->myState.compare_exchange_weak(before, after, std::memory_order_acq_rel,
                                                   std::memory_order_relaxed);
    };
    const auto changesKind = [&](std::uint32_t before) {
        return !isHeld(before)
            && (freeCount(before) == 0 || freeCount(before) + count == pool.myObjectsPerSlab);
    };

    std::uint32_t before = slab->myState.load(std::memory_order_relaxed);
    std::uint32_t after = 0;
    while (!changesKind(before)) {
        if (tryToAdd(before, after)) {
            return;
        }
    }
    LvPoolGuard guard;
    before = slab->myState.load(std::memory_order_relaxed);
    while (!tryToAdd(before, after)) { }
    file(pool, slab, before, after, guard);
}

bool LvFixedSizePoolThread::hold(LvFixedSizePool& pool, LvEntry& entry, LvPoolGuard& guard)
{
    Slab* slab = pool.myFirstWithRoom;
    if (slab != nullptr) {
        removeFromList(pool, slab);
    } else {
        void* memory = guard.slabs().take();
        if (memory == nullptr) {
            return false;
        }
        // cppcheck-suppress unreadVariable ; it does not follow the pointer out of the branch
        slab = new (memory) Slab{{0}, Slab::firstOffset, nullptr, nullptr};
        pool.mySlabCount.fetch_add(1, std::memory_order_relaxed);
    }
    const std::uint32_t state = slab->myState.exchange(makeState(true, 0, 0), std::memory_order_acquire);
    const std::size_t end = Slab::firstOffset + pool.myObjectsPerSlab * pool.mySpacing;
    entry.mySlab = slab;
    entry.myFree = firstFree(slab, state);
    entry.myUnused = bytes(slab) + std::exchange(slab->myFirstUnused, static_cast<std::uint32_t>(end));
    entry.myUnusedEnd = bytes(slab) + end;
    return true;
}

void LvFixedSizePoolThread::drop(LvFixedSizePool& pool, LvEntry& entry, LvPoolGuard& guard)
{
    Slab* slab = std::exchange(entry.mySlab, nullptr);
    slab->myFirstUnused = static_cast<std::uint32_t>(entry.myUnused - bytes(slab));
    std::size_t count = static_cast<std::size_t>(entry.myUnusedEnd - entry.myUnused) / pool.mySpacing;
    LvFreeObject* last = entry.myFree;
    if (last != nullptr) {
        ++count;
        for (; last->myNext != nullptr; last = last->myNext) {
            ++count;
        }
    }
    std::uint32_t before = slab->myState.load(std::memory_order_relaxed);
    std::uint32_t after = 0;
    do {
        std::size_t first = before & offsetMask;
        if (last != nullptr) {
            last->myNext = firstFree(slab, before);
            first = offsetOf(entry.myFree);
        }
        after = makeState(false, freeCount(before) + count, first);
    } while (!slab->myState.compare_exchange_weak(before, after, std::memory_order_acq_rel,
                                                  std::memory_order_relaxed));
    entry.myFree = nullptr;
    entry.myUnused = nullptr;
    entry.myUnusedEnd = nullptr;
    file(pool, slab, makeState(false, 0, 0), after, guard);
}

void LvFixedSizePoolThread::file(LvFixedSizePool& pool, Slab* slab, std::uint32_t before, std::uint32_t after,
                                 LvPoolGuard& guard)
{
    if (isHeld(after)) {
        return;
    }
    const bool isListed = freeCount(before) > 0;
    if (freeCount(after) == pool.myObjectsPerSlab) {
        if (isListed) {
            removeFromList(pool, slab);
        }
        pool.mySlabCount.fetch_sub(1, std::memory_order_relaxed);
        guard.put(slab);
    } else if (!isListed && freeCount(after) > 0) {
        insertIntoList(pool, slab);
    }
}

void LvFixedSizePoolThread::insertIntoList(LvFixedSizePool& pool, Slab* slab)
{
    slab->myPrevious = nullptr;
    slab->myNext = pool.myFirstWithRoom;
    if (slab->myNext != nullptr) {
        slab->myNext->myPrevious = slab;
    }
    pool.myFirstWithRoom = slab;
}

void LvFixedSizePoolThread::removeFromList(LvFixedSizePool& pool, Slab* slab)
{
    (slab->myPrevious == nullptr ? pool.myFirstWithRoom : slab->myPrevious->myNext) = slab->myNext;
    if (slab->myNext != nullptr) {
        slab->myNext->myPrevious = slab->myPrevious;
    }
}

void* LvFixedSizePool::allocate(std::size_t size)
{
    if (isReplaced || size != mySize) {
        return ::operator new(size);
    }
    if (myThread != nullptr) {
        PoolThread::LvEntry& entry = myThread->entry(myThreadEntry.load(std::memory_order_relaxed));
        if (void* object = PoolThread::takeObject(entry, mySpacing)) {
            return object;
        }
    }
    return allocateSlowly();
}

void LvFixedSizePool::release(void* object, std::size_t size) noexcept
{
    if (object == nullptr) {
        return;
    }
    if (isReplaced || size != mySize) {
        ::operator delete(object);
        return;
    }
    Slab* slab = slabOf(object);
    if (myThread != nullptr) {
        PoolThread::LvEntry& entry = myThread->entry(myThreadEntry.load(std::memory_order_relaxed));
        if (slab == entry.mySlab) {
            entry.myFree = chain(object, entry.myFree);
            return;
        }
        if (slab == entry.myGatheredSlab) {
            PoolThread::gather(*this, entry, object);
            return;
        }
    }
    releaseSlowly(slab, object);
}

bool LvFixedSizePool::usesSlabs() const
{
    return !isReplaced && myThreadEntry.load(std::memory_order_relaxed) != withoutEntry;
}

qsizetype LvFixedSizePool::usedSlabCount()
{
    const LvPoolGuard guard;
    return guard.slabs().usedCount();
}

qsizetype LvFixedSizePool::spareSlabCount()
{
    const LvPoolGuard guard;
    return guard.slabs().spareCount();
}

std::size_t LvFixedSizePool::enroll()
{
    LvPoolGuard guard;
    std::size_t index = myThreadEntry.load(std::memory_order_relaxed);
    if (index == notEnrolled) {
        index = guard.poolCount() < maximumPools ? ++guard.poolCount() : withoutEntry;
        myThreadEntry.store(index, std::memory_order_relaxed);
    }
    return index;
}

void* LvFixedSizePool::allocateSlowly()
{
    std::size_t index = myThreadEntry.load(std::memory_order_relaxed);
    if (index == notEnrolled) {
        index = enroll();
    }
    if (index == withoutEntry) {
        return ::operator new(mySize);
    }
    for (;;) {
        void* object = nullptr;
        if (PoolThread* thread = PoolThread::current()) {
            PoolThread::LvEntry& entry = thread->entry(index);
            if (PoolThread::refill(*this, entry)) {
                object = PoolThread::takeObject(entry, mySpacing);
            }
        } else {
            object = PoolThread::takeSingleObject(*this);
        }
        if (object != nullptr) {
            return object;
        }
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr) {
            throw std::bad_alloc();
        }
        handler();
    }
}

void LvFixedSizePool::releaseSlowly(LvFixedSizePoolSlab* slab, void* object) noexcept
{
    const std::size_t index = myThreadEntry.load(std::memory_order_relaxed);
    if (index == withoutEntry) {
        ::operator delete(object);
        return;
    }
    PoolThread* thread = PoolThread::current();
    if (thread == nullptr) {
        LvFreeObject* free = chain(object, nullptr);
        PoolThread::putBack(*this, slab, free, free, 1);
        return;
    }
    PoolThread::LvEntry& entry = thread->entry(index);
    entry.myPool = this;
    PoolThread::handOver(*this, entry);
    PoolThread::gatherFirst(entry, slab, object);
}
