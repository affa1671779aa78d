#include "mididata/fast/PatternBlocks.h"

#include "mididata/fast/FittingCharacters.h"

namespace hx {

namespace {

constexpr std::ptrdiff_t blockSize = 16;   // characters
constexpr std::ptrdiff_t bytesOfBlock = 8; // that they denote

// What a block of a pattern begins with, in characters.
struct BlockStart {
    std::ptrdiff_t plain;   // hex digits and dots
    std::ptrdiff_t fitting; // those that fit the buffer's digits
};

BlockStart compareBlock(const char* pattern, const char* bytes)
{
    const Bytes16 text = loadBytes(pattern);
    const Bytes16 isPlain =
        notAbove(text - '0', 9) | notAbove((text | 0x20) - 'a', 5) | areEqual(text, '.');
    quint64 block = 0;
    std::memcpy(&block, bytes, sizeof(block));
    return {firstNotZero(~isPlain), firstNotZero(~fittingCharacters(text, block))};
}

// 0xFF for the first `count` bytes, 0 for the others.
Bytes16 isBefore(std::ptrdiff_t count)
{
    constexpr Bytes16 index = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    return reinterpret_cast<Bytes16>(index < allBytes(static_cast<unsigned char>(count)));
}

// How many characters of the block's beginning are items of the grammar, each on its own. The first
// `given` are taken as such.
std::ptrdiff_t plainCharacters(const char* pattern, std::ptrdiff_t given)
{
    const Bytes16 text = loadBytes(pattern);
    const Bytes16 letters = text | 0x20;
    const Bytes16 isLetter = notAbove(letters - static_cast<unsigned char>('a'), 25);
    const Bytes16 isX = areEqual(letters, 'x'); // two of them may be one item
    const Bytes16 isOther = notAbove(text - static_cast<unsigned char>('0'), 9) |
                            areEqual(text, '.') | areEqual(text, ' ');
    return firstNotZero(~((isLetter & ~isX) | isOther | isBefore(given)));
}

} // namespace

const char* sequenceEnd(const char* at, const char* end)
{
    for (; end - at >= blockSize; at += blockSize) {
        const Bytes16 text = loadBytes(at);
        const std::ptrdiff_t place = firstNotZero(areEqual(text, '|') | areEqual(text, ')'));
        if (place < blockSize)
            return at + place;
    }
    while (!endsSequence(*at))
        ++at;
    return at;
}

ComparedBlocks compareBlocks(const char* pattern, const char* end, const QByteArray& bytes)
{
    const char* at = pattern;
    const char* byte = bytes.constData();
    const char* const lastByte = byte + bytes.size();
    for (std::ptrdiff_t plain = blockSize;
         plain == blockSize && end - at >= blockSize && lastByte - byte >= bytesOfBlock;) {
        const BlockStart start = compareBlock(at, byte);
        plain = start.plain;
        if (start.fitting < plain)
            return {at + start.fitting, 0, false};
        at += plain;
        byte += bytesOfBlock;
    }
    if (at != pattern && *skipBlanks(at) == '*')
        --at;
    return {at, at - pattern, true};
}

bool fitsRest(const char* begin, const char* at, const char* end, const char* bytes)
{
    const std::ptrdiff_t rest = end - at;
    if (rest > blockSize || end - begin < blockSize)
        return false;
    quint64 block = 0;
    std::memcpy(&block, bytes + rest / 2 - bytesOfBlock, sizeof(block));
    return areAll(fittingCharacters(loadBytes(end - blockSize), block) |
                  isBefore(blockSize - rest));
}

const char* skipPlainBlocks(const char* begin, const char* at, const char* end)
{
    const char* const first = at;
    std::ptrdiff_t plain = blockSize;
    while (plain == blockSize && end - at >= blockSize) {
        plain = plainCharacters(at, 0);
        at += plain;
    }
    if (plain == blockSize && at != end &&
        end - begin >= blockSize) { // a block that overlaps what has been read
        const char* const last = end - blockSize;
        at = last + plainCharacters(last, at - last);
    }
    if (at == first || at == end)
        return at;
    do
        --at; // a star may follow, and belongs to this character
    while (*at == ' ');
    return at;
}

} // namespace hx
