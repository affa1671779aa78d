// Sixteen characters of a pattern beside the eight bytes that belong to them.
#pragma once

#include "mididata/fast/Bytes16.h"

namespace hx {

// The values of the hex digits of eight bytes as they lie in memory.
inline Bytes16 digitValues(quint64 bytes)
{
    const Words8 words = wordsOf(bytes);
    return reinterpret_cast<Bytes16>((words >> 4 | words << 8) & 0x0F0F);
}

// 0xFF for each character that is a dot or the digit that stands there in the buffer, 0 for the others.
// Where that is a letter, the character is compared in lower case.
inline Bytes16 fittingCharacters(Bytes16 text, quint64 bytes)
{
    const Bytes16 values = digitValues(bytes);
    const auto isLetter =
        reinterpret_cast<Bytes16>(reinterpret_cast<SignedBytes16>(values) > SignedBytes16{} + 9);
    const Bytes16 digits = values + '0' + (isLetter & ('a' - '9' - 1));
    const Bytes16 lowered = text | (isLetter & 0x20);
    return reinterpret_cast<Bytes16>(lowered == digits) | areEqual(text, '.');
}

} // namespace hx
