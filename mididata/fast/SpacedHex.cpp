#include "mididata/fast/SpacedHex.h"

#include "mididata/fast/Bytes16.h"

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace hx {

#ifdef __SSE2__

namespace {

constexpr qint64 pairsOfBlock = 16;
constexpr qint64 charactersOfBlock = 3 * pairsOfBlock;

// For each of three vectors, the places of the characters that are the pairs' first ones, second ones
// (one further on) or separators (two further on). A place above 127 takes none.
struct Places {
    signed char of[3][16];
};

constexpr Places placesOf(int column)
{
    Places places = {};
    for (int pair = 0; pair < 16; ++pair) {
        for (int vector = 0; vector < 3; ++vector) {
            const int place = 3 * pair + column - 16 * vector;
            places.of[vector][pair] =
                static_cast<signed char>(place >= 0 && place < 16 ? place : -1);
        }
    }
    return places;
}

constexpr Places firstDigits = placesOf(0);
constexpr Places secondDigits = placesOf(1);
constexpr Places separatorPlaces = placesOf(2);

struct TextBlock {
    __m128i parts[3];
};

[[gnu::always_inline, gnu::target("avx2")]] inline TextBlock loadText(const char* text)
{
    const auto* const from = reinterpret_cast<const __m128i*>(text);
    return {{_mm_loadu_si128(from), _mm_loadu_si128(from + 1), _mm_loadu_si128(from + 2)}};
}

// Characters that are no Latin-1 become others that are neither digit nor separator.
[[gnu::always_inline, gnu::target("avx2")]] inline __m128i narrowed(const __m128i* from)
{
    return _mm_packus_epi16(_mm_loadu_si128(from), _mm_loadu_si128(from + 1));
}

[[gnu::always_inline, gnu::target("avx2")]] inline TextBlock loadText(const QChar* text)
{
    const auto* const from = reinterpret_cast<const __m128i*>(text);
    return {{narrowed(from), narrowed(from + 2), narrowed(from + 4)}};
}

[[gnu::always_inline, gnu::target("avx2")]] inline Bytes16 gathered(const TextBlock& block,
                                                                    const Places& places)
{
    __m128i all = _mm_setzero_si128();
    for (int i = 0; i < 3; ++i) {
        const __m128i from = _mm_loadu_si128(reinterpret_cast<const __m128i*>(places.of[i]));
        all = _mm_or_si128(all, _mm_shuffle_epi8(block.parts[i], from));
    }
    return reinterpret_cast<Bytes16>(all);
}

// The values of digits; `areDigits` loses the bits of those that are none.
[[gnu::always_inline, gnu::target("avx2")]] inline Bytes16 valuesOf(Bytes16 digits,
                                                                    Bytes16& areDigits)
{
    const Bytes16 number = digits - '0';
    const Bytes16 letter = (digits | 0x20) - 'a';
    const Bytes16 isNumber = notAbove(number, 9);
    const Bytes16 isLetter = notAbove(letter, 5);
    areDigits &= isNumber | isLetter;
    return (number & isNumber) | ((letter + 10) & isLetter);
}

template <typename Char>
[[gnu::target("avx2")]] qint64 readBlocks(const Char* text, qint64 length, char* to,
                                          Separators separators)
{
    qint64 pairs = 0;
    for (; length - 3 * pairs >= charactersOfBlock; pairs += pairsOfBlock) {
        const TextBlock block = loadText(text + 3 * pairs);
        const Bytes16 between = gathered(block, separatorPlaces);
        Bytes16 areFine = areEqual(between, static_cast<unsigned char>(separators.first)) |
                          areEqual(between, static_cast<unsigned char>(separators.second));
        const Bytes16 high = valuesOf(gathered(block, firstDigits), areFine);
        const Bytes16 bytes = high * 16 | valuesOf(gathered(block, secondDigits), areFine);
        if (!areAll(areFine))
            break;
        std::memcpy(to + pairs, &bytes, sizeof(bytes));
    }
    return pairs;
}

template <typename Char>
qint64 readWhereGathered(const Char* text, qint64 length, char* to, Separators separators)
{
    return __builtin_cpu_supports("avx2") ? readBlocks(text, length, to, separators) : 0;
}

} // namespace

#else

namespace {

template <typename Char>
qint64 readWhereGathered(const Char*, qint64, char*, Separators)
{
    return 0;
}

} // namespace

#endif

qint64 readSpacedPairs(const char* text, qint64 length, char* to, Separators separators)
{
    return readWhereGathered(text, length, to, separators);
}

qint64 readSpacedPairs(const QChar* text, qint64 length, char* to, Separators separators)
{
    return readWhereGathered(text, length, to, separators);
}

} // namespace hx
