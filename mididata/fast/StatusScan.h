// Status bytes looked for sixteen bytes at a time.
#pragma once

#include <QtAlgorithms>
#include <QtEndian>

namespace hx {

// Equal to looking at each byte's top bit in turn. The top bits of eight bytes are looked at in one
// word, in which the first byte is the lowest; sixteen bytes without one are skipped whole. May stop
// before the last fifteen bytes: the caller goes on from there by single bytes.
inline const char* skipDataBytes(const char* at, const char* end)
{
    constexpr quint64 topBits = Q_UINT64_C(0x8080808080808080);
    for (; end - at >= 16; at += 16) {
        const quint64 first = qFromLittleEndian<quint64>(at) & topBits;
        const quint64 second = qFromLittleEndian<quint64>(at + 8) & topBits;
        if (first != 0)
            return at + qCountTrailingZeroBits(first) / 8;
        if (second != 0)
            return at + 8 + qCountTrailingZeroBits(second) / 8;
    }
    return at;
}

} // namespace hx
