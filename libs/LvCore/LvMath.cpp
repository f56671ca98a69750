#include "LvMath.h"

#include <cmath>

bool LvMath::epsilonEqual(double a, double b, double epsilon)
{
    return a == b || std::abs(a - b) <= epsilon;
}
