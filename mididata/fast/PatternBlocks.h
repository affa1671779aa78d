// Text patterns compared, and read over, sixteen characters at a time.
//
// Equal to reading the characters one by one, for hex digits and dots (and, when they are only read
// over, letters and blanks): each is an item on its own, so they may be looked at side by side. A
// star belongs to the character before it, so a block never ends just before one.
#pragma once

#include "mididata/fast/DigitRun.h"

namespace hx {

// How far the whole blocks at the beginning of a sequence have been compared with the buffer's start.
struct ComparedBlocks {
    const char* next; // where the reading of items goes on
    qint64 digit;     // the buffer's digit that belongs to it
    bool fit;         // false when one of them does not fit; only the grammar matters then
};

// The first character at or after `at` that ends a sequence; `end` is the pattern's closing zero.
const char* sequenceEnd(const char* at, const char* end);

// Compares the blocks of hex digits and dots that the pattern begins with. `end` is its closing zero.
ComparedBlocks compareBlocks(const char* pattern, const char* end, const QByteArray& bytes);

// Whether the rest of a pattern, an even number of hex digits and dots from `at` to `end`, fits the bytes from
// `bytes` on. The buffer has as many, and eight before the last one's end. False, too, when the rest is longer than
// a block or the pattern shorter.
bool fitsRest(const char* begin, const char* at, const char* end, const char* bytes);

// Skips characters from `at` on that are items of the grammar, each on its own, in a pattern of at
// least sixteen characters from `begin` to `end`. What it returns is not a blank or a star, as
// readItem() wants it.
const char* skipPlainBlocks(const char* begin, const char* at, const char* end);

} // namespace hx
