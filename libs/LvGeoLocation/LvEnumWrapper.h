#pragma once

#include "LvEnumToStringTable.h"
#include "lvgeolocation_export.h"

#include <QMutex>
#include <QMutexLocker>

#include <atomic>
#include <memory>

/**
 * What the value classes around the flag enumerations have in common: comparisons, bit operations, and the
 * table of key strings.
 *
 * A concrete wrapper fills the table with its keys and offers the construction from a text, which needs the
 * finished object. The value 0 means that no flag is set and counts as invalid.
 *
 * The table is shared by the whole process. So that no library gets one of its own, a concrete wrapper
 * declares its instantiation `extern template` in its header and instantiates it, exported, in its source.
 */
template <class E>
class LVGEOLOCATION_EXPORT LvEnumWrapper
{
public:
    LvEnumWrapper() = default;

    LvEnumWrapper(E value) // NOLINT(google-explicit-constructor) a value and its wrapper are the same thing
        : myValue(value)
    {
    }

    LvEnumWrapper(const LvEnumWrapper& other) = default;
    LvEnumWrapper(LvEnumWrapper&& other) noexcept = default;
    LvEnumWrapper& operator=(const LvEnumWrapper& other) = default;
    LvEnumWrapper& operator=(LvEnumWrapper&& other) noexcept = default;
    virtual ~LvEnumWrapper() = default;

    /// The order of the raw numbers; it says nothing about the flags.
    virtual bool operator<(const LvEnumWrapper& other) const { return bits() < other.bits(); }

    virtual bool operator<=(const LvEnumWrapper& other) const { return bits() <= other.bits(); }

    virtual bool operator>(const LvEnumWrapper& other) const { return bits() > other.bits(); }

    virtual bool operator==(const LvEnumWrapper& other) const { return myValue == other.myValue; }

    virtual bool operator==(E value) const { return myValue == value; }

    virtual bool operator!=(const LvEnumWrapper& other) const { return myValue != other.myValue; }

    virtual bool operator!=(E value) const { return myValue != value; }

    /// Adds the flags of the other value.
    virtual LvEnumWrapper& operator|=(const LvEnumWrapper& other) { return *this |= other.myValue; }

    virtual LvEnumWrapper& operator|=(E value)
    {
        myValue = static_cast<E>(bits() | static_cast<quint32>(value));
        return *this;
    }

    /// Keeps only the flags that the other value has, too.
    virtual LvEnumWrapper& operator&=(const LvEnumWrapper& other) { return *this &= other.myValue; }

    virtual LvEnumWrapper& operator&=(E value)
    {
        myValue = static_cast<E>(bits() & static_cast<quint32>(value));
        return *this;
    }

    virtual E operator&(const LvEnumWrapper& other) const { return static_cast<E>(bits() & other.bits()); }

    virtual E operator|(const LvEnumWrapper& other) const { return static_cast<E>(bits() | other.bits()); }

    /// The flags of this value that are also in the mask; the object keeps all of them.
    [[nodiscard]] virtual E reducedTo(E mask) const
    {
        return static_cast<E>(bits() & static_cast<quint32>(mask));
    }

    /// Whether any flag is set.
    [[nodiscard]] virtual bool isValid() const { return bits() != 0; }

    /// Inserts the key strings of the enumeration into the empty table.
    virtual void fillTable(LvEnumToStringTable<E>* table) const = 0;

    [[nodiscard]] E value() const { return myValue; }

    /// The key strings of the enumeration: one table per enumeration for the whole process, made by the first
    /// call and never freed, to be read only from then on. Safe to call from any thread. Must not be called
    /// from fillTable().
    [[nodiscard]] LvEnumToStringTable<E>* enumToStringTable() const
    {
        static std::atomic<LvEnumToStringTable<E>*> myTable = nullptr;
        static QMutex
            theMutex; // NOLINT(readability-identifier-naming) guards myTable, it is no part of a state
        if (auto* table = myTable.load(std::memory_order_acquire)) {
            return table;
        }
        const QMutexLocker locker(&theMutex);
        if (auto* table = myTable.load(std::memory_order_relaxed)) {
            return table;
        }
        // Published only when it is complete: an exception out of fillTable() leaves no table behind.
        auto table = std::make_unique<LvEnumToStringTable<E>>();
        fillTable(table.get());
        myTable.store(table.get(), std::memory_order_release);
        return table.release();
    }

private:
    [[nodiscard]] quint32 bits() const { return static_cast<quint32>(myValue); }

    E myValue = static_cast<E>(0);
};
