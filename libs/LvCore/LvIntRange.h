#pragma once

#include "LvRange.h"
#include "lvcore_export.h"

#include <QList>

class QImage;

/**
 * A range of indices, both ends included: LvIntRange(0, count - 1) stands for all indices of a list.
 *
 * Loops run from firstIndex() up to, but not including, lastIndexEvenIfUnvalid(), so LvIntRange(0, 0) is one
 * index and LvIntRange(0, -1) is none, with nothing to test beforehand.
 */
class LVCORE_EXPORT LvIntRange : public LvRange<int>
{
public:
    /// Fewer indices than this are not worth a thread: handing work over takes as long as some dozens of
    /// short steps. It fits the rows of an image; lists of points, whose steps are shorter, ask for more per
    /// piece.
    static constexpr int minimumIndicesPerPiece = 32;

    LvIntRange();
    LvIntRange(int first, int last);
    LvIntRange(const LvIntRange& other);
    LvIntRange(LvIntRange&& other) noexcept;
    LvIntRange& operator=(const LvIntRange& other);
    LvIntRange& operator=(LvIntRange&& other) noexcept;
    ~LvIntRange() override;

    /// The indices of the rows of a picture; none for a null picture.
    static LvIntRange rowsOfImage(const QImage& image);

    /// The indices of the columns of a picture; none for a null picture.
    static LvIntRange columnsOfImage(const QImage& image);

    [[nodiscard]] int firstIndex() const { return min(); }

    /// The last index that belongs to the range.
    [[nodiscard]] int lastIndex() const { return max(); }

    /// The end of a loop, one past the last index. It is no index of the range; that of LvIntRange(0, -1) is
    /// 0. Limited to the largest int.
    [[nodiscard]] int lastIndexEvenIfUnvalid() const;

    /// The number of indices: 0 when the last one is below the first.
    [[nodiscard]] qint64 count() const;

    /// Cuts the range into contiguous pieces in ascending order, about one per processor core, whose sizes
    /// differ by no more than one. A piece has at least the given number of indices, so a short range gives
    /// few pieces or one, and a range without indices exactly one: itself.
    [[nodiscard]] QList<LvIntRange>
    splitEvenlyForCpuCores(int minimumPerPiece = minimumIndicesPerPiece) const;
};
