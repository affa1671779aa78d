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
    Bytes8 block;
    std::memcpy(&block, bytes, sizeof(block));
    return {firstNotZero(~isPlain), firstNotZero(~fittingCharacters(text, block))};
}

// How many characters of the block's beginning are items of the grammar, each on its own. The first
// `given` are taken as such.
std::ptrdiff_t plainCharacters(const char* pattern, std::ptrdiff_t given)
{
    constexpr Bytes16 index = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    const Bytes16 text = loadBytes(pattern);
    const Bytes16 letters = text | 0x20;
    const Bytes16 isLetter = notAbove(letters - static_cast<unsigned char>('a'), 25);
    const Bytes16 isX = areEqual(letters, 'x'); // two of them may be one item
    const Bytes16 isOther = notAbove(text - static_cast<unsigned char>('0'), 9) |
                            areEqual(text, '.') | areEqual(text, ' ');
    const auto isGiven =
        reinterpret_cast<Bytes16>(index < allBytes(static_cast<unsigned char>(given)));
    return firstNotZero(~((isLetter & ~isX) | isOther | isGiven));
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
            return {at + start.fitting, 0, false};
        at += pairs;
        byte += pairs / 2;
    }
    if (at != pattern && *skipBlanks(at) == '*') {
        at -= 2;
        --byte;
    }
    return {at, 2 * (byte - bytes.constData()), true};
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
