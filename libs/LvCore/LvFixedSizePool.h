#pragma once

#include "lvcore_export.h"

#include <QtGlobal>

#include <atomic>
#include <cstddef>

struct LvFixedSizePoolSlab;

/**
 * Memory for very many objects of one class: the payloads of track points and their positions, of which a
 * document has millions. Made for the allocation functions of such a class:
 *
 * @code
 * constinit LvFixedSizePool payloadPool(sizeof(Payload));
 * void* Payload::operator new(std::size_t size) { return payloadPool.allocate(size); }
 * void Payload::operator delete(void* object, std::size_t size) { payloadPool.release(object, size); }
 * @endcode
 *
 * Why not the general allocator: that one adds up to 16 bytes to every object, scatters what is read one
 * after the other, and takes several times as long. Here objects lie side by side in slabs of 64 KiB, which
 * cost 64 bytes each.
 *
 * Threads: all functions may be called from any thread at any time, also while a thread or the process ends,
 * and an object may be released on another thread than that which allocated it. A thread takes objects from a
 * slab of its own, without locks or atomic operations; released objects of other slabs are gathered and
 * handed back together. A mutex is locked about twice per slab. A child process made by fork() may go on
 * using the pool.
 *
 * Memory: a slab without objects leaves the pool at once and goes back to the system, except for
 * maximumSpareSlabs that all pools of the process share. What a thread holds back while it does nothing is
 * bounded by two slabs per pool: the one it allocates from and the one whose objects it released last; both
 * are handed over when the thread ends.
 *
 * Under the address sanitizer every object comes from the general allocator instead, so that the sanitizer
 * still finds uses after release.
 *
 * A pool is a constant-initialised global that is never destroyed; positions in static objects may outlive
 * everything else. The library that defines it must not be unloaded.
 */
class LVCORE_EXPORT LvFixedSizePool
{
    Q_DISABLE_COPY_MOVE(LvFixedSizePool)

public:
    static constexpr std::size_t slabSize = std::size_t{64} * 1024;
    static constexpr qsizetype maximumSpareSlabs = 32;

    /// Larger objects come from the general allocator: a slab would hold too few of them.
    static constexpr std::size_t largestObjectSize = 1024;

    /// @param objectSize bytes; rounded up to a multiple of 8, which is also how objects are aligned. Sizes
    ///        that are multiples of 16 are aligned to 16.
    constexpr explicit LvFixedSizePool(std::size_t objectSize) noexcept
        : mySize(objectSize)
        , mySpacing(objectSize == 0 ? alignment : (objectSize + alignment - 1) / alignment * alignment)
        , myObjectsPerSlab((slabSize - slabHeaderSize) / mySpacing)
        , myThreadEntry(objectSize > largestObjectSize ? withoutEntry : notEnrolled)
    {
    }

    ~LvFixedSizePool() = default;

    /// Memory for one object. Any other size than that of the pool comes from the general allocator: derived
    /// classes inherit the allocation functions of their base. When there is no memory, it does what a plain
    /// `new` does.
    [[nodiscard]] void* allocate(std::size_t size);

    /// Takes the memory back. The size is that given to allocate(); nothing happens for a null pointer.
    void release(void* object, std::size_t size) noexcept;

    /// Whether objects come from slabs at all: not under the address sanitizer, for large objects or for
    /// those pools of a process that exceed the first few.
    [[nodiscard]] bool usesSlabs() const;

    [[nodiscard]] std::size_t objectSize() const { return mySize; }

    [[nodiscard]] std::size_t objectsPerSlab() const { return myObjectsPerSlab; }

    /// The slabs that hold objects of this pool, including those that threads hold back; times slabSize, the
    /// bytes in use. A snapshot when other threads are at work.
    [[nodiscard]] qsizetype slabCount() const { return mySlabCount.load(std::memory_order_relaxed); }

    /// The slabs that hold objects of any pool of the process.
    [[nodiscard]] static qsizetype usedSlabCount();

    /// The slabs without objects that the process keeps for all pools.
    [[nodiscard]] static qsizetype spareSlabCount();

private:
    friend class LvFixedSizePoolThread;
    friend struct LvFixedSizePoolSlab;

    static constexpr std::size_t slabHeaderSize = 64;
    static constexpr std::size_t alignment = 8;
    static constexpr std::size_t maximumPools = 8;

    // Where each thread keeps what belongs to this pool: its number, or one of these two.
    static constexpr std::size_t notEnrolled = 0;
    static constexpr std::size_t withoutEntry = maximumPools + 1;

    [[nodiscard]] std::size_t enroll();
    [[nodiscard]] void* allocateSlowly();
    void releaseSlowly(LvFixedSizePoolSlab* slab, void* object) noexcept;

    const std::size_t mySize;
    const std::size_t mySpacing; // from object to object
    const std::size_t myObjectsPerSlab;
    std::atomic<std::size_t> myThreadEntry;
    std::atomic<qsizetype> mySlabCount{0};
    LvFixedSizePoolSlab* myFirstWithRoom = nullptr; // guarded by the mutex of all pools
};
