// Status bytes looked for eight bytes at a time.
#pragma once

#include <QtAlgorithms>
#include <QtEndian>

namespace hx {

// The top bits of eight bytes in one word, in which the first byte is the lowest.
inline quint64 topBits(const char* at)
{
    return qFromLittleEndian<quint64>(at) & Q_UINT64_C(0x8080808080808080);
}

// Equal to looking at each byte's top bit in turn. Words without one are skipped whole, four at once
// while there are as many. May stop before the last seven bytes: the caller goes on from there by
// single bytes.
inline const char* skipDataBytes(const char* at, const char* end)
{
    while (end - at >= 32 &&
           (topBits(at) | topBits(at + 8) | topBits(at + 16) | topBits(at + 24)) == 0)
        at += 32;
    for (; end - at >= 8; at += 8) {
        const quint64 found = topBits(at);
        if (found != 0)
            return at + qCountTrailingZeroBits(found) / 8;
    }
    return at;
}

} // namespace hx
