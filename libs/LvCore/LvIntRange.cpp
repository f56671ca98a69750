#include "LvIntRange.h"

#include <QImage>
#include <QThread>

#include <algorithm>
#include <limits>

LvIntRange::LvIntRange() = default;

LvIntRange::LvIntRange(int first, int last)
    : LvRange<int>(first, last)
{
}

LvIntRange::LvIntRange(const LvIntRange& other) = default;
LvIntRange::LvIntRange(LvIntRange&& other) noexcept = default;
LvIntRange& LvIntRange::operator=(const LvIntRange& other) = default;
LvIntRange& LvIntRange::operator=(LvIntRange&& other) noexcept = default;
LvIntRange::~LvIntRange() = default;

LvIntRange LvIntRange::rowsOfImage(const QImage& image)
{
    return {0, image.height() - 1};
}

LvIntRange LvIntRange::columnsOfImage(const QImage& image)
{
    return {0, image.width() - 1};
}

int LvIntRange::lastIndexEvenIfUnvalid() const
{
    return max() == std::numeric_limits<int>::max() ? max() : max() + 1;
}

qint64 LvIntRange::count() const
{
    return std::max<qint64>(0, static_cast<qint64>(max()) - min() + 1);
}

QList<LvIntRange> LvIntRange::splitEvenlyForCpuCores(int minimumPerPiece) const
{
    const qint64 indices = count();
    const qint64 worthwhile = indices / std::max(1, minimumPerPiece);
    const qint64 pieces = std::clamp<qint64>(worthwhile, 1, std::max(1, QThread::idealThreadCount()));
    if (pieces == 1) {
        return {*this};
    }
    QList<LvIntRange> result;
    result.reserve(pieces);
    for (qint64 piece = 0; piece < pieces; ++piece) {
        const qint64 first = min() + indices * piece / pieces;
        const qint64 end = min() + indices * (piece + 1) / pieces;
        result.append(LvIntRange(static_cast<int>(first), static_cast<int>(end - 1)));
    }
    return result;
}
