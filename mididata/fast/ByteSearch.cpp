#include "mididata/fast/ByteSearch.h"

#include <QtAlgorithms>

#include <cstring>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace hx {

namespace {

struct Sought {
    const char* begin;
    qint64 size;
};

bool containsAnywhere(const char* at, const char* end, Sought part)
{
    return memmem(at, static_cast<size_t>(end - at), part.begin, static_cast<size_t>(part.size)) !=
           nullptr;
}

#ifdef __SSE2__

constexpr qint64 searchBlock = 64; // places

// A bit for each of the 32 places from `at` on that begin and end as the part does.
[[gnu::always_inline, gnu::target("avx2")]] inline quint32 candidatesAt(const char* at, qint64 size,
                                                                        __m256i first, __m256i last)
{
    const auto* const begins = reinterpret_cast<const __m256i*>(at);
    const auto* const ends = reinterpret_cast<const __m256i*>(at + size - 1);
    const __m256i fit = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_loadu_si256(begins), first),
                                         _mm256_cmpeq_epi8(_mm256_loadu_si256(ends), last));
    return static_cast<quint32>(_mm256_movemask_epi8(fit));
}

// Whether the part stands at one of the candidates of a block.
bool isAtOne(const char* block, quint64 candidates, Sought part)
{
    for (; candidates != 0; candidates &= candidates - 1) {
        const char* const at = block + qCountTrailingZeroBits(candidates);
        if (std::memcmp(at, part.begin, static_cast<size_t>(part.size)) == 0)
            return true;
    }
    return false;
}

// The same for two blocks; the first one's are the lower bits.
[[gnu::always_inline, gnu::target("avx2")]] inline quint64
candidatesOfTwo(const char* at, qint64 size, __m256i first, __m256i last)
{
    const quint64 upper = candidatesAt(at + searchBlock / 2, size, first, last);
    return upper << (searchBlock / 2) | candidatesAt(at, size, first, last);
}

// The last block overlaps the one before it.
[[gnu::target("avx2")]] bool containsByBlocks(const char* begin, const char* end, Sought part)
{
    const __m256i first = _mm256_set1_epi8(part.begin[0]);
    const __m256i last = _mm256_set1_epi8(part.begin[part.size - 1]);
    const char* const lastBlock = end - (searchBlock + part.size - 1);
    qint64 toCompare = 1024; // bytes; each that is read allows one more
    for (const char* at = begin; at < lastBlock + searchBlock; at += searchBlock) {
        at = qMin(at, lastBlock);
        const quint64 candidates = candidatesOfTwo(at, part.size, first, last);
        toCompare += searchBlock;
        if (candidates == 0)
            continue;
        if (isAtOne(at, candidates, part))
            return true;
        toCompare -= qint64(qPopulationCount(candidates)) * part.size;
        if (toCompare < 0)
            return containsAnywhere(at, end, part);
    }
    return false;
}

#endif

} // namespace

bool containsBytes(const QByteArray& bytes, const QByteArray& part)
{
    if (part.isEmpty())
        return true;
    const char* const begin = bytes.constData();
    const char* const end = begin + bytes.size();
    const Sought sought = {part.constData(), part.size()};
#ifdef __SSE2__
    if (end - begin >= searchBlock + sought.size - 1 && __builtin_cpu_supports("avx2"))
        return containsByBlocks(begin, end, sought);
#endif
    return containsAnywhere(begin, end, sought);
}

} // namespace hx
