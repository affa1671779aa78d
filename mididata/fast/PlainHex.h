// Hex text of pairs alone read at once.
//
// Equal to cutting the text into tokens and converting each, for a text of two-digit tokens with one
// separator between each or none at all: such a token is one byte, whatever follows it, and nothing
// is logged. All other texts are left to the general way.
#pragma once

#include "mididata/HexDigits.h"
#include "mididata/fast/HexBlock.h"
#include "mididata/fast/SpacedHex.h"

#include <QByteArray>
#include <QChar>

#include <limits>

namespace hx {

// Reads a token and, but for the last one, the separator after it. Negative for anything else.
template <int Stride, typename Char>
int readToken(const Char* at, bool isLast, Separators separators)
{
    const bool separated = Stride == 2 || isLast || separators(at[2]);
    return separated ? hexValue(at[0]) * 16 | hexValue(at[1]) : -1;
}

// Reads bytes of two digits each, `Stride` characters apart. False when something else is there.
template <int Stride, typename Char>
bool readTokens(const Char* at, const Char* end, char* to, Separators separators)
{
    for (; at != end; at += Stride) {
        const int byte = readToken<Stride>(at, at + Stride == end, separators);
        if (byte < 0)
            return false;
        *to++ = static_cast<char>(byte);
    }
    return true;
}

// Equal to readTokens<2>(); takes a block of digits at once.
template <typename Char>
bool readPairs(const Char* at, const Char* end, char* to, Separators separators)
{
    for (; end - at >= 2 * blockBytes; at += 2 * blockBytes, to += blockBytes) {
        if (!readBlock(at, to))
            return false;
    }
    return readTokens<2>(at, end, to, separators);
}

// Equal to readTokens<3>(); takes blocks of pairs at once.
template <typename Char>
bool readSpaced(const Char* at, const Char* end, char* to, Separators separators)
{
    const qint64 length = end - at - 1; // the last pair has no separator after it
    const qint64 pairs = readSpacedPairs(at, length, to, separators);
    return readTokens<3>(at + 3 * pairs, end, to + pairs, separators);
}

// Reads the whole text. False when it is not of pairs alone; `bytes` is of no use then. Inline, for the separators
// are constants to its callers.
template <typename Char>
[[gnu::always_inline]] inline bool readPlainHex(const Char* text, qint64 length, QByteArray& bytes,
                                                Separators separators)
{
    const bool separated = length > 2 && separators(text[2]);
    const qint64 characters = separated ? length + 1 : length;
    const int stride = separated ? 3 : 2;
    if (length < 2 || length > std::numeric_limits<int>::max() || characters % stride != 0)
        return false;
    bytes = QByteArray(static_cast<int>(characters / stride), Qt::Uninitialized);
    const Char* const end = text + characters;
    return separated ? readSpaced(text, end, bytes.data(), separators)
                     : readPairs(text, end, bytes.data(), separators);
}

} // namespace hx
