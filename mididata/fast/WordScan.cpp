#include "mididata/fast/WordScan.h"

#include "mididata/fast/Bytes16.h"

namespace hx {

namespace {

// Whether any of the words is not 0.
template <typename Words>
[[gnu::always_inline]] inline bool hasAnyWord(const Words& words)
{
    constexpr std::size_t count = sizeof(Words) / sizeof(Bytes16);
    Bytes16 parts[count];
    std::memcpy(parts, &words, sizeof(parts));
    for (std::size_t i = 1; i < count; ++i)
        parts[0] |= parts[i];
    return hasAny(parts[0]);
}

// Inline in functions for several kinds of processor.
template <typename Words>
[[gnu::always_inline]] inline qint64 findBlock(const SoughtWords& sought, const char* data,
                                               qint64 at, qint64 last)
{
    const Words words[4] = {Words{} + sought[0], Words{} + sought[1], Words{} + sought[2],
                            Words{} + sought[3]};
    for (; at <= last; at += wordBlock) {
        Words found = {};
        for (qint64 i = 0; i < wordBlock; i += qint64(sizeof(Words))) {
            Words here;
            std::memcpy(&here, data + at + i, sizeof(here));
            found |= reinterpret_cast<Words>((here == words[0]) | (here == words[1]) |
                                             (here == words[2]) | (here == words[3]));
        }
        if (hasAnyWord(found))
            break;
    }
    return at;
}

#ifdef __SSE2__

using Words16 = quint16 __attribute__((vector_size(32)));

[[gnu::target("avx2")]] qint64 findWordsWide(const SoughtWords& sought, const char* data, qint64 at,
                                             qint64 last)
{
    return findBlock<Words16>(sought, data, at, last);
}

#endif

} // namespace

qint64 findWordsAnywhere(const SoughtWords& sought, const char* data, qint64 at, qint64 last)
{
    return findBlock<Words8>(sought, data, at, last);
}

qint64 findWords(const SoughtWords& sought, const char* data, qint64 at, qint64 last)
{
#ifdef __SSE2__
    if (__builtin_cpu_supports("avx2"))
        return findWordsWide(sought, data, at, last);
#endif
    return findWordsAnywhere(sought, data, at, last);
}

} // namespace hx
