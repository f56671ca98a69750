#include "LvGPXTrackSmoothing.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

LvGPXTrackSmoothing::LvGPXTrackSmoothing(QPointF* points, int count, double weight, int steps)
    : myPoints(points)
    , myCount(count)
    , myWeight(weight)
    , myFixPoints(estimateFixPoints(count, steps))
{
}

LvGPXTrackSmoothing::LvGPXTrackSmoothing(const LvGPXTrackSmoothing& other) = default;
LvGPXTrackSmoothing::LvGPXTrackSmoothing(LvGPXTrackSmoothing&& other) noexcept = default;
LvGPXTrackSmoothing& LvGPXTrackSmoothing::operator=(const LvGPXTrackSmoothing& other) = default;
LvGPXTrackSmoothing& LvGPXTrackSmoothing::operator=(LvGPXTrackSmoothing&& other) noexcept = default;
LvGPXTrackSmoothing::~LvGPXTrackSmoothing() = default;

int LvGPXTrackSmoothing::estimateFixPoints(int count, int steps)
{
    return std::max(1, std::min(count, steps));
}

void LvGPXTrackSmoothing::run()
{
    const int sectionLength = myCount / myFixPoints;
    if (sectionLength == 1 || myCount < 3) {
        return;
    }
    int before = 0;
    int section = 1;
    int after = fixPointIndex(section);
    for (int index = 1; index < myCount - 1; ++index) {
        if (index == after) {
            ++section;
            before = after;
            after = fixPointIndex(section);
        } else {
            smoothPoint(index, before, after);
        }
    }
}

void LvGPXTrackSmoothing::smoothPoint(int index, int before, int after)
{
    const QPointF start = myPoints[before];
    const QPointF end = myPoints[after];
    const QPointF point = myPoints[index];
    const double nearness = partOf(delta(end, point), delta(start, point));
    myPoints[index] = mix(point, mix(start, end, nearness), myWeight);
}

double LvGPXTrackSmoothing::delta(const QPointF& a, const QPointF& b)
{
    const double dx = a.x() - b.x();
    const double dy = a.y() - b.y();
    return std::sqrt(dx * dx + dy * dy);
}

double LvGPXTrackSmoothing::partOf(double a, double b)
{
    return a / (b + a);
}

QPointF LvGPXTrackSmoothing::mix(const QPointF& p, const QPointF& q, double t)
{
    return t * p + (1 - t) * q;
}

int LvGPXTrackSmoothing::fixPointIndex(int section) const
{
    // The product leaves the range of an int with some ten thousand points and as many steps.
    return static_cast<int>(qint64(myCount) * section / myFixPoints) - 1;
}
