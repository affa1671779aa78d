// Bytes added up sixteen at a time.
#pragma once

#include "mididata/fast/WideSum.h"

#include <QtGlobal>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace hx {

#ifdef __SSE2__

inline constexpr std::ptrdiff_t sumBlock = 16; // bytes

// The sums of a block's halves, in words of 64 bits.
inline __m128i halfSums(const char* block)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
    return _mm_sad_epu8(bytes, _mm_setzero_si128());
}

#endif

// Equal to adding up the bytes one by one, modulo 2^32: words of 64 bits do not overflow. Two blocks
// at once, which do not wait for each other; long runs in wider ones. Stops before the last bytes that
// are no whole block; where the processor has no such sums, at once: compilers make the plain loop as
// fast there.
inline quint32 sumBlocks(const char*& at, const char* end)
{
    constexpr std::ptrdiff_t longRun = 8 * wideSumBlock;
    quint32 sum = end - at >= longRun ? sumWideBlocks(at, end) : 0;
#ifdef __SSE2__
    __m128i sums = _mm_setzero_si128();
    __m128i others = _mm_setzero_si128();
    for (; end - at >= 2 * sumBlock; at += 2 * sumBlock) {
        sums = _mm_add_epi64(sums, halfSums(at));
        others = _mm_add_epi64(others, halfSums(at + sumBlock));
    }
    if (end - at >= sumBlock) {
        sums = _mm_add_epi64(sums, halfSums(at));
        at += sumBlock;
    }
    sums = _mm_add_epi64(sums, others);
    sum += static_cast<quint32>(_mm_cvtsi128_si32(sums)) +
           static_cast<quint32>(_mm_cvtsi128_si32(_mm_unpackhi_epi64(sums, sums)));
#else
    Q_UNUSED(at)
    Q_UNUSED(end)
#endif
    return sum;
}

} // namespace hx
