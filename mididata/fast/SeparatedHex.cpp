#include "mididata/fast/SeparatedHex.h"

#include "mididata/fast/HexBlock.h"

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace hx {

#ifdef __SSE2__

namespace {

constexpr qint64 charactersOfVector = 8;

// What the characters of a block's three vectors are: the place of a digit among the block's sixteen, with its
// upper half of zeros, or the separator.
struct Characters {
    signed char digits[3][2 * charactersOfVector]; // a place below 0 takes none
    quint16 separators[3][charactersOfVector];     // all bits set for a separator
};

constexpr Characters charactersOfVectors()
{
    Characters characters = {};
    for (qint64 i = 0; i < 3 * charactersOfVector; ++i) {
        const qint64 vector = i / charactersOfVector;
        const qint64 at = i % charactersOfVector;
        const bool isSeparator = i % 3 == 2;
        const qint64 digit = 2 * (i / 3) + i % 3;
        characters.digits[vector][2 * at] = static_cast<signed char>(isSeparator ? -1 : digit);
        characters.digits[vector][2 * at + 1] = -1;
        characters.separators[vector][at] = isSeparator ? 0xFFFF : 0;
    }
    return characters;
}

constexpr Characters vectorCharacters = charactersOfVectors();

template <typename Value>
__m128i loadVector(const Value* from)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

[[gnu::target("ssse3")]] qint64 writeBlocks(char16_t* to, const char* from, qint64 bytes,
                                            char16_t separator)
{
    const __m128i separators = _mm_set1_epi16(static_cast<qint16>(separator));
    qint64 written = 0;
    for (; bytes - written > blockBytes; written += blockBytes) {
        const __m128i digits = digitsOfBlock(from + written);
        for (int i = 0; i < 3; ++i, to += charactersOfVector) {
            const __m128i own = _mm_shuffle_epi8(digits, loadVector(vectorCharacters.digits[i]));
            const __m128i between =
                _mm_and_si128(separators, loadVector(vectorCharacters.separators[i]));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_or_si128(own, between));
        }
    }
    return written;
}

} // namespace

qint64 writeSeparatedBlocks(char16_t* to, const char* from, qint64 bytes, char16_t separator)
{
    return __builtin_cpu_supports("ssse3") ? writeBlocks(to, from, bytes, separator) : 0;
}

#else

qint64 writeSeparatedBlocks(char16_t*, const char*, qint64, char16_t)
{
    return 0;
}

#endif

} // namespace hx
