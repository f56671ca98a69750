#pragma once

#include "lvcore_export.h"

/// Small helpers for real numbers.
class LVCORE_EXPORT LvMath
{
public:
    LvMath() = delete;

    /// Whether two numbers differ by no more than epsilon (absolute, the bound included). Equal infinities
    /// do; a number that is none never does.
    [[nodiscard]] static bool epsilonEqual(double a, double b, double epsilon);
};
