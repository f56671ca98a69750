#pragma once

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

/// The state of the processor's vector registers, which costs time but never changes a result; not installed.
namespace LvVectorRegisters
{

#if defined(__x86_64__) && defined(__GNUC__)

// GCC must not inline this into code for processors without AVX; the attribute sees to that.
__attribute__((target("avx"))) inline void clearUpperHalvesWithAvx()
{
    _mm256_zeroupper();
}

#endif

/// Declares the upper halves of the 256 bit registers unused.
///
/// The toolkit's AVX code for reading XML and filling pixels may leave them in use. From then on the
/// processor takes care of them in every instruction of the older SSE set, which the mathematical library and
/// this one are compiled to: sines and logarithms take up to fifteen times as long. So every work item that
/// computes in a loop, and every stroking of a line, begins with this. It takes a few nanoseconds.
inline void clearUpperHalves()
{
#if defined(__x86_64__) && defined(__GNUC__)
    static const bool myHasAvx = __builtin_cpu_supports("avx") != 0;
    if (myHasAvx) {
        clearUpperHalvesWithAvx();
    }
#endif
}

} // namespace LvVectorRegisters
