#pragma once

#include "lvcore_export.h"

#include <QDateTime>

#include <type_traits>
#include <utility>

/**
 * A closed interval of a type with an order: both ends belong to it.
 *
 * The comparisons are those of the type itself. Angles for example compare "==", "<=" and ">=" with a
 * tolerance, but "<" and ">" exactly; each operation says by which it decides.
 *
 * A range is empty when both ends stand at the neutral value of the type: the invalid marker of an angle, 0
 * of an int, a null date-time. A default-constructed range is empty. That [0, 0] of integers counts as empty
 * too is intended; only expandTo() looks at it.
 *
 * A plain value. The macro exports the class, so that all libraries share one type.
 */
template <class T>
class LVCORE_EXPORT LvRange
{
public:
    LvRange();
    LvRange(T min, T max);
    LvRange(const LvRange& other) = default;
    LvRange(LvRange&& other) noexcept = default;
    LvRange& operator=(const LvRange& other) = default;
    LvRange& operator=(LvRange&& other) noexcept = default;
    virtual ~LvRange();

    /// Whether both ends are equal by the comparison of the type.
    virtual bool operator==(const LvRange<T>& other) const;
    virtual bool operator!=(const LvRange<T>& other) const;

    /// Orders valid ranges by their lower ends, those with equal lower ends by their upper ends. A valid
    /// range comes before an invalid one; of two invalid ranges neither is less.
    virtual bool operator<(const LvRange<T>& other) const;

    /// Widens the range until it contains the value. An empty range becomes the value alone.
    virtual void expandTo(const T& value);

    /// The middle of the range: half the sum of the ends. Of integers it is truncated toward zero; of
    /// date-times it is the midpoint in milliseconds with the time zone of the lower end, null when one of
    /// the ends is invalid.
    [[nodiscard]] virtual T center() const;

    /// Whether the upper end is not below the lower one.
    [[nodiscard]] virtual bool isValid() const;

    /// Whether the value lies between the ends or on one of them.
    [[nodiscard]] virtual bool contains(const T& value) const;

    /// Whether both ends of the other range lie in this one.
    [[nodiscard]] virtual bool contains(const LvRange<T>& other) const;

    /// Whether one of the ranges contains an end of the other.
    [[nodiscard]] virtual bool intersects(const LvRange<T>& other) const;

    [[nodiscard]] const T& min() const { return myMin; }

    [[nodiscard]] const T& max() const { return myMax; }

    void setMin(const T& min) { myMin = min; }

    void setMax(const T& max) { myMax = max; }

    /// Whether both ends stand at the neutral value of the type, see above.
    [[nodiscard]] bool isEmpty() const;

protected:
    T myMin;
    T myMax;
};

template <class T>
LvRange<T>::LvRange()
    : myMin()
    , myMax()
{
}

template <class T>
LvRange<T>::LvRange(T min, T max)
    : myMin(std::move(min))
    , myMax(std::move(max))
{
}

template <class T>
LvRange<T>::~LvRange() = default;

template <class T>
bool LvRange<T>::operator==(const LvRange<T>& other) const
{
    return myMin == other.myMin && myMax == other.myMax;
}

template <class T>
bool LvRange<T>::operator!=(const LvRange<T>& other) const
{
    return !(*this == other);
}

template <class T>
bool LvRange<T>::operator<(const LvRange<T>& other) const
{
    const bool valid = isValid();
    if (!valid || !other.isValid()) {
        return valid;
    }
    return myMin == other.myMin ? myMax < other.myMax : myMin < other.myMin;
}

template <class T>
void LvRange<T>::expandTo(const T& value)
{
    if (isEmpty()) {
        myMin = value;
        myMax = value;
    } else if (value > myMax) {
        myMax = value;
    } else if (value < myMin) {
        myMin = value;
    }
}

template <class T>
T LvRange<T>::center() const
{
    if constexpr (std::is_same_v<T, QDateTime>) {
        return myMin.isValid() && myMax.isValid() ? myMin.addMSecs(myMin.msecsTo(myMax) / 2) : QDateTime();
    } else if constexpr (std::is_integral_v<T>) {
        // The sum of two integers may overflow, that of two doubles does not.
        return static_cast<T>((static_cast<double>(myMin) + static_cast<double>(myMax)) / 2.0);
    } else {
        return (myMin + myMax) / 2.0;
    }
}

template <class T>
bool LvRange<T>::isValid() const
{
    return myMax >= myMin;
}

template <class T>
bool LvRange<T>::contains(const T& value) const
{
    return myMin <= value && myMax >= value;
}

template <class T>
bool LvRange<T>::contains(const LvRange<T>& other) const
{
    return contains(other.myMin) && contains(other.myMax);
}

template <class T>
bool LvRange<T>::intersects(const LvRange<T>& other) const
{
    return contains(other.myMin) || contains(other.myMax) || other.contains(myMin) || other.contains(myMax);
}

template <class T>
bool LvRange<T>::isEmpty() const
{
    if constexpr (std::is_same_v<T, QDateTime>) {
        // A null date-time compares equal to the start of the epoch, which is a time like any other.
        return myMin.isNull() && myMax.isNull();
    } else {
        return myMin == T() && myMax == T();
    }
}
