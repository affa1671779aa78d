#include "mididata/fast/PatternBlocks.h"

#include "mididata/fast/Bytes16.h"

#include <QtAlgorithms>
#include <QtEndian>

namespace hx {

namespace {

using Bytes8 = unsigned char __attribute__((vector_size(8)));
using Words8 = quint16 __attribute__((vector_size(16)));

constexpr std::ptrdiff_t blockSize = 16;   // characters
constexpr std::ptrdiff_t bytesOfBlock = 8; // that they denote

// What a block of a pattern begins with, in characters.
struct BlockStart {
    std::ptrdiff_t plain;   // hex digits and dots
    std::ptrdiff_t fitting; // whole pairs of them that fit their bytes; of no use beyond `plain`
};

Bytes16 notAbove(Bytes16 values, unsigned char limit)
{
    return reinterpret_cast<Bytes16>(values <= allBytes(limit));
}

Bytes16 areEqual(Bytes16 values, unsigned char value)
{
    return reinterpret_cast<Bytes16>(values == allBytes(value));
}

// The index of the first byte that is not 0; the number of bytes when there is none.
std::ptrdiff_t firstNotZero(Bytes16 bytes)
{
    quint64 halves[2];
    std::memcpy(halves, &bytes, sizeof(halves));
    if (halves[0] != 0)
        return qCountTrailingZeroBits(qFromLittleEndian(halves[0])) / 8;
    return 8 + qCountTrailingZeroBits(qFromLittleEndian(halves[1])) / 8;
}

// Two values of four bits become a byte, in the lower half of a word.
Words8 joined(Bytes16 halves)
{
    const auto words = reinterpret_cast<Words8>(halves);
    return (words << 4 | words >> 8) & 0xFF; // the first half is the word's lower byte
}

BlockStart compareBlock(const char* pattern, const char* bytes)
{
    const Bytes16 text = loadBytes(pattern);
    const Bytes16 number = text - static_cast<unsigned char>('0');
    const Bytes16 letter = (text | 0x20) - static_cast<unsigned char>('a');
    const Bytes16 isNumber = notAbove(number, 9);
    const Bytes16 isLetter = notAbove(letter, 5);
    const Bytes16 isPlain = isNumber | isLetter | areEqual(text, '.');
    const Bytes16 values = (number & isNumber) | ((letter + 10) & isLetter);
    Bytes8 block;
    std::memcpy(&block, bytes, sizeof(block));
    const Words8 differences = (__builtin_convertvector(block, Words8) ^ joined(values)) &
                               joined((isNumber | isLetter) & 0xF);
    return {firstNotZero(~isPlain), firstNotZero(reinterpret_cast<Bytes16>(differences))};
}

// How many characters of the block's beginning are items of the grammar, each on its own.
std::ptrdiff_t plainCharacters(const char* pattern)
{
    const Bytes16 text = loadBytes(pattern);
    const Bytes16 letters = text | 0x20;
    const Bytes16 isLetter = notAbove(letters - static_cast<unsigned char>('a'), 25);
    const Bytes16 isX = areEqual(letters, 'x'); // two of them may be one item
    const Bytes16 isOther = notAbove(text - static_cast<unsigned char>('0'), 9) |
                            areEqual(text, '.') | areEqual(text, ' ');
    return firstNotZero(~((isLetter & ~isX) | isOther));
}

} // namespace

ComparedBlocks compareBlocks(const char* pattern, const char* end, const QByteArray& bytes)
{
    const char* at = pattern;
    const char* byte = bytes.constData();
    const char* const lastByte = byte + bytes.size();
    for (std::ptrdiff_t pairs = blockSize;
         pairs == blockSize && end - at >= blockSize && lastByte - byte >= bytesOfBlock;) {
        const BlockStart start = compareBlock(at, byte);
        pairs = start.plain - start.plain % 2;
        if (start.fitting < pairs)
            return {at + start.fitting + 1, 0, false};
        at += pairs;
        byte += pairs / 2;
    }
    if (at != pattern && *skipBlanks(at) == '*') {
        at -= 2;
        --byte;
    }
    return {at, 2 * (byte - bytes.constData()), true};
}

const char* skipPlainBlocks(const char* pattern, const char* end)
{
    const char* at = pattern;
    std::ptrdiff_t plain = blockSize;
    while (plain == blockSize && end - at >= blockSize) {
        plain = plainCharacters(at);
        at += plain;
    }
    if (at == pattern)
        return at;
    if (plain == blockSize) // the last block overlaps what has been read
        at = end - blockSize + plainCharacters(end - blockSize);
    if (at == end)
        return end;
    do
        --at; // a star may follow, and belongs to this character
    while (*at == ' ');
    return at;
}

} // namespace hx
