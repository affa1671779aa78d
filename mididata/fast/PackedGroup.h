// Seven bytes of 8 bits packed at once.
#pragma once

#include <QtEndian>

namespace hx {

// Equal to gathering the top bits of seven bytes one by one, and writing them before the bytes
// without them. All seven are in one word: the product moves the top bit of byte i from bit 8i to
// bit 54 - i, and no two of its terms meet. Reads the byte after the group.
inline void packFullGroup(char* to, const char* from)
{
    constexpr quint64 gather = Q_UINT64_C(0x0040201008040201); // bits 0, 9, 18, ... 54
    const auto group = qFromLittleEndian<quint64>(from);
    const quint64 topBits = ((group >> 7 & Q_UINT64_C(0x0001010101010101)) * gather) >> 48 & 0x7F;
    const quint64 lowBits = group & Q_UINT64_C(0x007F7F7F7F7F7F7F);
    qToLittleEndian<quint64>(lowBits << 8 | topBits, to);
}

} // namespace hx
