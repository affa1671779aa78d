#include "mididata/fast/WideSum.h"

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace hx {

#ifdef __SSE2__

namespace {

// The sums of a vector's quarters, in words of 64 bits.
[[gnu::always_inline, gnu::target("avx2")]] inline __m256i quarterSums(const char* from)
{
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
    return _mm256_sad_epu8(bytes, _mm256_setzero_si256());
}

[[gnu::always_inline, gnu::target("avx2")]] inline __m256i quarterSumsOfTwo(const char* from)
{
    return _mm256_add_epi64(quarterSums(from), quarterSums(from + 32));
}

[[gnu::target("avx2")]] quint32 sumBlocksOf32(const char*& at, const char* end)
{
    __m256i sums = _mm256_setzero_si256();
    __m256i others = _mm256_setzero_si256();
    for (; end - at >= wideSumBlock; at += wideSumBlock) {
        sums = _mm256_add_epi64(sums, quarterSumsOfTwo(at));
        others = _mm256_add_epi64(others, quarterSumsOfTwo(at + wideSumBlock / 2));
    }
    sums = _mm256_add_epi64(sums, others);
    const __m128i halves =
        _mm_add_epi64(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
    return static_cast<quint32>(_mm_cvtsi128_si32(halves)) +
           static_cast<quint32>(_mm_cvtsi128_si32(_mm_unpackhi_epi64(halves, halves)));
}

} // namespace

quint32 sumWideBlocks(const char*& at, const char* end)
{
    if (!__builtin_cpu_supports("avx2"))
        return 0;
    quint32 sum = 0;
    // From here on no load is in two lines of the cache.
    while (reinterpret_cast<quintptr>(at) % sizeof(__m256i) != 0)
        sum += static_cast<unsigned char>(*at++);
    return sum + sumBlocksOf32(at, end);
}

#else

quint32 sumWideBlocks(const char*&, const char*)
{
    return 0;
}

#endif

} // namespace hx
