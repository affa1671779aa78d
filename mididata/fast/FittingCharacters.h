// Sixteen characters of a pattern beside the eight bytes that belong to them.
#pragma once

#include "mididata/fast/Bytes16.h"

namespace hx {

// The hex digits of eight bytes, in lower case.
inline Bytes16 digitsOf(Bytes8 bytes)
{
    const Words8 words = __builtin_convertvector(bytes, Words8);
    const auto values = reinterpret_cast<Bytes16>((words >> 4 | words << 8) & 0x0F0F);
    const auto isLetter = reinterpret_cast<Bytes16>(values > allBytes(9));
    return values + '0' + (isLetter & ('a' - '9' - 1));
}

// The text with its letters in lower case; some other characters become others that are no digit.
inline Bytes16 lowered(Bytes16 text)
{
    return text | reinterpret_cast<Bytes16>(reinterpret_cast<Words8>(text & 0x40) >> 1);
}

// 0xFF for each character that is a dot or the digit that stands there in the buffer, 0 for the others.
inline Bytes16 fittingCharacters(Bytes16 text, Bytes8 bytes)
{
    return reinterpret_cast<Bytes16>(lowered(text) == digitsOf(bytes)) | areEqual(text, '.');
}

} // namespace hx
