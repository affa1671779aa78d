// One item of a text pattern, read as the set of hex digits that it stands for.
#pragma once

#include "mididata/HexDigits.h"

#include <QtGlobal>

#include <array>

namespace hx {

// A set of hex digits: bit n stands for the digit n. Bit 16 is set, so that no set is 0.
using DigitMask = quint32;

constexpr DigitMask noDigit = 0x10000;
constexpr DigitMask anyDigit = 0x1FFFF;

// Instead of the mask of a character that is no item on its own.
constexpr DigitMask notPlain = 0;

constexpr std::array<DigitMask, 256> makePlainMasks()
{
    std::array<DigitMask, 256> masks{};
    for (std::size_t letter = 0; letter < 26; ++letter)
        masks['A' + letter] = masks['a' + letter] = noDigit;
    masks['X'] = masks['x'] = notPlain; // two of them may be a wildcard
    for (std::size_t c = 0; c < masks.size(); ++c) {
        if (hexValues[c] >= 0)
            masks[c] = noDigit | 1u << hexValues[c];
    }
    masks['.'] = anyDigit;
    return masks;
}

// The masks of the characters that are one digit each. A letter is a digit that never fits.
inline constexpr std::array<DigitMask, 256> plainMasks = makePlainMasks();

constexpr DigitMask plainMask(char c)
{
    return plainMasks[static_cast<unsigned char>(c)];
}

constexpr bool isIn(DigitMask mask, int digit)
{
    return ((mask >> digit) & 1) != 0;
}

constexpr int highDigit(char byte)
{
    return static_cast<unsigned char>(byte) >> 4;
}

constexpr int lowDigit(char byte)
{
    return byte & 0xF;
}

// Whether a sequence of a pattern ends at this character.
constexpr bool endsSequence(char c)
{
    return c == '\0' || c == '|' || c == ')';
}

inline const char* skipBlanks(const char* at)
{
    while (*at == ' ')
        ++at;
    return at;
}

struct PatternItem {
    const char* next; // after the item and the blanks that follow; null outside the grammar
    DigitMask mask;   // the digits that fit
    int width;        // how many digits it stands for: 1, 2 for "XX", one less before a gap
    bool hasGap;      // ends in a star: any number of any digits follows
};

inline constexpr PatternItem outsideGrammar = {nullptr, noDigit, 0, false};

// A class, from the character after its bracket on. Holds hex digits, one at least.
inline PatternItem readClass(const char* at)
{
    DigitMask mask = noDigit;
    for (at = skipBlanks(at); *at != ']'; at = skipBlanks(at + 1)) {
        if (hexValue(*at) < 0)
            return outsideGrammar;
        mask |= plainMask(*at);
    }
    return mask != noDigit ? PatternItem{at + 1, mask, 1, false} : outsideGrammar;
}

constexpr bool isX(char c)
{
    return c == 'X' || c == 'x';
}

inline PatternItem readWithoutStar(const char* at)
{
    const DigitMask mask = plainMask(*at);
    if (mask != notPlain)
        return {at + 1, mask, 1, false};
    if (*at == '[')
        return readClass(at + 1);
    if (!isX(*at))
        return outsideGrammar;
    const char* const second = skipBlanks(at + 1);
    return isX(*second) ? PatternItem{second + 1, anyDigit, 2, false}
                        : PatternItem{at + 1, noDigit, 1, false};
}

// Reads the item that begins here, which is neither a blank nor the end of the sequence. A star
// belongs to the item before it, whatever blanks stand between.
inline PatternItem readItem(const char* at)
{
    PatternItem item = readWithoutStar(at);
    if (item.next == nullptr)
        return item;
    item.next = skipBlanks(item.next);
    if (*item.next != '*')
        return item;
    if (item.mask != anyDigit)
        return outsideGrammar;
    return {skipBlanks(item.next + 1), anyDigit, item.width - 1, true};
}

} // namespace hx
