#pragma once

#include <QRgb>
#include <QtGlobal>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// The arithmetic by which maps are faded outside of tracks; not installed.
namespace LvCropFade
{

/// Division by 255, truncating, as a multiplication and a shift: exact for all products of two bytes.
constexpr quint32 inverseOf255 = 0x8081;
constexpr int inverseShift = 23;

/// opacity + ((255 - opacity) * cover) / 255, for bytes.
[[nodiscard]] constexpr quint32 fadedAlpha(quint32 opacity, quint32 cover)
{
    return opacity + (((255U - opacity) * cover * inverseOf255) >> inverseShift);
}

/// Gives each pixel of a row the faded alpha byte for the alpha byte of the mask, and the colour bytes of the
/// source, which may be the row itself.
inline void fadeRow(QRgb* row, const QRgb* source, const QRgb* mask, int count, quint32 opacity)
{
    constexpr QRgb colorBytes = 0x00ffffffU;
    constexpr int alphaShift = 24;
    int column = 0;
#if defined(__SSE2__)
    // Four pixels at once; products of two bytes fill the lower half of a pixel's 32 bits.
    const __m128i colors = _mm_set1_epi32(static_cast<int>(colorBytes));
    const __m128i lowest = _mm_set1_epi32(static_cast<int>(opacity));
    const __m128i range = _mm_set1_epi32(static_cast<int>(255U - opacity));
    const __m128i inverse = _mm_set1_epi32(static_cast<int>(inverseOf255));
    for (; column + 4 <= count; column += 4) {
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + column));
        const __m128i covers =
            _mm_srli_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(mask + column)), alphaShift);
        const __m128i product = _mm_mullo_epi16(covers, range);
        const __m128i share = _mm_srli_epi16(_mm_mulhi_epu16(product, inverse), inverseShift - 16);
        const __m128i alpha = _mm_slli_epi32(_mm_add_epi32(lowest, share), alphaShift);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(row + column),
                         _mm_or_si128(_mm_and_si128(pixels, colors), alpha));
    }
#endif
    for (; column < count; ++column) {
        row[column] =
            (source[column] & colorBytes) | (fadedAlpha(opacity, mask[column] >> alphaShift) << alphaShift);
    }
}

} // namespace LvCropFade
