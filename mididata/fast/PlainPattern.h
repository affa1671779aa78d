// Patterns of hex digits and dots alone, compared with a buffer's start sixteen characters at a time.
//
// Equal to comparing one character after the other: each is an item on its own, so they may be looked
// at side by side, and some of them twice. The last block overlaps the one before it.
#pragma once

#include "mididata/fast/FittingCharacters.h"

#include <QByteArray>

namespace hx {

enum class PlainFit { No, Yes, NotPlain };

constexpr std::ptrdiff_t plainBlock = 16; // characters, two for each byte of the buffer

// Sixteen characters and the bytes that belong to them.
struct PatternBlock {
    Bytes16 text;
    quint64 bytes; // as they lie in memory
};

inline PatternBlock blockAt(const char* pattern, const char* bytes, std::ptrdiff_t at)
{
    PatternBlock block = {loadBytes(pattern + at), 0};
    std::memcpy(&block.bytes, bytes + at / 2, sizeof(block.bytes));
    return block;
}

// The first and the last eight characters; some are in both when there are less than sixteen.
inline PatternBlock shortBlock(const char* pattern, const char* bytes, std::ptrdiff_t length)
{
    constexpr std::ptrdiff_t half = plainBlock / 2;
    quint64 text[2];
    quint32 values[2];
    std::memcpy(&text[0], pattern, sizeof(text[0]));
    std::memcpy(&text[1], pattern + length - half, sizeof(text[1]));
    std::memcpy(&values[0], bytes, sizeof(values[0]));
    std::memcpy(&values[1], bytes + (length - half) / 2, sizeof(values[1]));
    PatternBlock block = {};
    std::memcpy(&block.text, text, sizeof(block.text));
    std::memcpy(&block.bytes, values, sizeof(block.bytes));
    return block;
}

inline Bytes16 fitting(const PatternBlock& block)
{
    return fittingCharacters(block.text, block.bytes);
}

// 0xFF for each character that is an item on its own: a dot, a digit, a letter that never fits.
inline Bytes16 plain(Bytes16 text)
{
    const Bytes16 letters = text | 0x20;
    return notAbove(text - '0', 9) | areEqual(text, '.') |
           (notAbove(letters - 'a', 25) & ~areEqual(letters, 'x'));
}

template <typename Test>
bool everyBlock(const char* pattern, std::ptrdiff_t length, const char* bytes, Test test)
{
    for (std::ptrdiff_t at = 0; at < length; at += plainBlock) {
        if (!areAll(test(blockAt(pattern, bytes, qMin(at, length - plainBlock)))))
            return false;
    }
    return true;
}

Q_NEVER_INLINE inline PlainFit fitLong(const char* pattern, std::ptrdiff_t length,
                                       const char* bytes)
{
    if (everyBlock(pattern, length, bytes, fitting))
        return PlainFit::Yes;
    const auto isPlain = [](const PatternBlock& block) { return plain(block.text); };
    return everyBlock(pattern, length, bytes, isPlain) ? PlainFit::No : PlainFit::NotPlain;
}

// Compares a pattern, or a part of one, of `length` characters. NotPlain, too, for an odd number of them,
// for fewer than eight and for more than the buffer has digits.
inline PlainFit fitPlain(const char* pattern, std::ptrdiff_t length, const QByteArray& bytes)
{
    if (length < plainBlock / 2 || length % 2 != 0 || length > 2 * qint64(bytes.size()))
        return PlainFit::NotPlain;
    if (length > 2 * plainBlock)
        return fitLong(pattern, length, bytes.constData());
    if (length < plainBlock) {
        const PatternBlock block = shortBlock(pattern, bytes.constData(), length);
        if (areAll(fitting(block)))
            return PlainFit::Yes;
        return areAll(plain(block.text)) ? PlainFit::No : PlainFit::NotPlain;
    }
    const PatternBlock first = blockAt(pattern, bytes.constData(), 0);
    const PatternBlock last = blockAt(pattern, bytes.constData(), length - plainBlock);
    if (areAll(fitting(first) & fitting(last)))
        return PlainFit::Yes; // what fits is plain
    return areAll(plain(first.text) & plain(last.text)) ? PlainFit::No : PlainFit::NotPlain;
}

} // namespace hx
