// Sixteen bytes side by side, in the compiler's vector types: SSE2, NEON or what the processor has.
#pragma once

#include <QtAlgorithms>
#include <QtEndian>

#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace hx {

using Bytes8 = unsigned char __attribute__((vector_size(8)));
using Bytes16 = unsigned char __attribute__((vector_size(16)));
using SignedBytes16 = signed char __attribute__((vector_size(16)));
using Words8 = quint16 __attribute__((vector_size(16)));

inline Bytes16 loadBytes(const char* from)
{
    Bytes16 bytes;
    std::memcpy(&bytes, from, sizeof(bytes));
    return bytes;
}

// The same byte sixteen times.
inline Bytes16 allBytes(unsigned char byte)
{
    return Bytes16{} + byte;
}

// 0xFF for each byte that is the value, 0 for the others.
inline Bytes16 areEqual(Bytes16 bytes, unsigned char value)
{
    return reinterpret_cast<Bytes16>(bytes == allBytes(value));
}

// 0xFF for each byte that is not above the limit, 0 for the others.
inline Bytes16 notAbove(Bytes16 bytes, unsigned char limit)
{
    return reinterpret_cast<Bytes16>(bytes <= allBytes(limit));
}

// Eight bytes, as they lie in memory, as words of 16 bits.
inline Words8 wordsOf(quint64 bytes)
{
#ifdef __SSE2__
    const __m128i all = _mm_set_epi64x(0, static_cast<qint64>(bytes));
    return reinterpret_cast<Words8>(_mm_unpacklo_epi8(all, _mm_setzero_si128()));
#else
    Bytes8 all;
    std::memcpy(&all, &bytes, sizeof(all));
    return __builtin_convertvector(all, Words8);
#endif
}

// Whether any of the bytes is not 0.
inline bool hasAny(Bytes16 bytes)
{
    quint64 halves[2];
    std::memcpy(halves, &bytes, sizeof(halves));
    return (halves[0] | halves[1]) != 0;
}

// Whether all of the bytes are 0xFF. Each is that or 0.
inline bool areAll(Bytes16 flags)
{
#ifdef __SSE2__
    return _mm_movemask_epi8(reinterpret_cast<__m128i>(flags)) == 0xFFFF;
#else
    return !hasAny(~flags);
#endif
}

// The index of the first byte that is not 0; the number of bytes when there is none. Each is 0 or has
// its top bit set.
inline std::ptrdiff_t firstNotZero(Bytes16 bytes)
{
#ifdef __SSE2__
    const int found = _mm_movemask_epi8(reinterpret_cast<__m128i>(bytes));
    return qCountTrailingZeroBits(static_cast<quint32>(found) | 0x10000U);
#else
    quint64 halves[2];
    std::memcpy(halves, &bytes, sizeof(halves));
    if (halves[0] != 0)
        return qCountTrailingZeroBits(qFromLittleEndian(halves[0])) / 8;
    return 8 + qCountTrailingZeroBits(qFromLittleEndian(halves[1])) / 8;
#endif
}

} // namespace hx
