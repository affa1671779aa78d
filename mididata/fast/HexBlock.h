// Eight bytes turned into hex digits, and back, at once.
//
// Equal to taking each byte's two digits from the tables of HexDigits.h. The digits of a block do not
// depend on each other, so they are calculated side by side where the processor can.
#pragma once

#include "mididata/HexDigits.h"

#include <QChar>

#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#else
#include <cstring>
#endif

namespace hx {

// How many bytes readBlock() and writeBlock() take at once, in two digits each.
constexpr std::ptrdiff_t blockBytes = 8;

inline int hexValue(QChar c)
{
    return c.unicode() < hexValues.size() ? hexValues[c.unicode()] : -1;
}

#ifdef __SSE2__

inline __m128i loadCharacters(const char* text)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
}

// Characters that are no Latin-1 become others that are no digits either.
inline __m128i loadCharacters(const QChar* text)
{
    const auto* const from = reinterpret_cast<const __m128i*>(text);
    return _mm_packus_epi16(_mm_loadu_si128(from), _mm_loadu_si128(from + 1));
}

// Equal to hexByte() for each pair of digits in turn. False when one of them is no pair.
template <typename Char>
bool readBlock(const Char* digits, char* to)
{
    const __m128i text = loadCharacters(digits);
    const __m128i number = _mm_sub_epi8(text, _mm_set1_epi8('0'));
    const __m128i letter =
        _mm_sub_epi8(_mm_or_si128(text, _mm_set1_epi8('a' - 'A')), _mm_set1_epi8('a'));
    const __m128i isNumber = _mm_cmpeq_epi8(_mm_min_epu8(number, _mm_set1_epi8(9)), number);
    const __m128i isLetter = _mm_cmpeq_epi8(_mm_min_epu8(letter, _mm_set1_epi8(5)), letter);
    const __m128i values =
        _mm_or_si128(_mm_and_si128(isNumber, number),
                     _mm_and_si128(isLetter, _mm_add_epi8(letter, _mm_set1_epi8(10))));
    const __m128i pairs = _mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8));
    const __m128i bytes = _mm_and_si128(pairs, _mm_set1_epi16(0xFF));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(bytes, bytes));
    return _mm_movemask_epi8(_mm_or_si128(isNumber, isLetter)) == 0xFFFF;
}

// The digits of eight bytes, a byte each.
inline __m128i digitsOfBlock(const char* from)
{
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    const __m128i low = _mm_and_si128(bytes, _mm_set1_epi8(0xF));
    const __m128i high = _mm_and_si128(_mm_srli_epi16(bytes, 4), _mm_set1_epi8(0xF));
    const __m128i values = _mm_unpacklo_epi8(high, low);
    const __m128i isLetter = _mm_cmpgt_epi8(values, _mm_set1_epi8(9));
    const __m128i lift = _mm_and_si128(isLetter, _mm_set1_epi8('A' - '0' - 10));
    return _mm_add_epi8(_mm_add_epi8(values, _mm_set1_epi8('0')), lift);
}

// Equal to hexPairs[] for each byte in turn.
inline void writeBlock(char16_t* to, const char* from)
{
    const __m128i digits = digitsOfBlock(from);
    auto* const target = reinterpret_cast<__m128i*>(to);
    _mm_storeu_si128(target, _mm_unpacklo_epi8(digits, _mm_setzero_si128()));
    _mm_storeu_si128(target + 1, _mm_unpackhi_epi8(digits, _mm_setzero_si128()));
}

#else

template <typename Char>
bool readBlock(const Char* digits, char* to)
{
    int allDigits = 0;
    for (int i = 0; i < blockBytes; ++i) {
        const int byte = hexValue(digits[2 * i]) * 16 | hexValue(digits[2 * i + 1]);
        allDigits |= byte;
        to[i] = static_cast<char>(byte);
    }
    return allDigits >= 0;
}

inline void writeBlock(char16_t* to, const char* from)
{
    for (int i = 0; i < blockBytes; ++i)
        std::memcpy(to + 2 * i, &hexPairs[static_cast<unsigned char>(from[i])], sizeof(HexPair));
}

#endif

} // namespace hx
