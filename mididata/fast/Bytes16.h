// Sixteen bytes side by side, in the compiler's vector types: SSE2, NEON or what the processor has.
#pragma once

#include <QtGlobal>

#include <cstring>

namespace hx {

using Bytes16 = unsigned char __attribute__((vector_size(16)));

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

// Whether any of the bytes is not 0.
inline bool hasAny(Bytes16 bytes)
{
    quint64 halves[2];
    std::memcpy(halves, &bytes, sizeof(halves));
    return (halves[0] | halves[1]) != 0;
}

} // namespace hx
