// Hex text of pairs alone read at once.
//
// Equal to cutting the text into tokens and converting each, for a text of two-digit tokens with one
// separator between each or none at all: such a token is one byte, whatever follows it, and nothing
// is logged. All other texts are left to the general way.
#pragma once

#include "mididata/HexDigits.h"
#include "mididata/fast/HexBlock.h"

#include <QByteArray>
#include <QChar>

#include <algorithm>
#include <limits>

namespace hx {

inline int hexValue(QChar c)
{
    return c.unicode() < hexValues.size() ? hexValues[c.unicode()] : -1;
}

// Reads bytes of two digits each, `Stride` characters apart, and the separator after each but the
// last. False when something else is there. Looks at whole runs before it decides, as a jump for
// each token costs more than the reading.
template <int Stride, typename Char, typename IsSeparator>
bool readTokens(const Char* at, const Char* end, char* to, IsSeparator isSeparator)
{
    constexpr std::ptrdiff_t run = 64;
    while (end - at > Stride) {
        const Char* const stop =
            at + Stride * std::min<std::ptrdiff_t>((end - at - 1) / Stride, run);
        int allDigits = 0;
        bool allSeparated = true;
        for (; at != stop; at += Stride) {
            const int byte = hexValue(at[0]) * 16 | hexValue(at[1]);
            allDigits |= byte;
            allSeparated = allSeparated & (Stride == 2 || isSeparator(at[2]));
            *to++ = static_cast<char>(byte);
        }
        if (allDigits < 0 || !allSeparated)
            return false;
    }
    const int byte = hexValue(at[0]) * 16 | hexValue(at[1]);
    *to = static_cast<char>(byte);
    return byte >= 0;
}

// Equal to readTokens<2>(); takes a block of digits at once.
template <typename IsSeparator>
bool readPairs(const char* at, const char* end, char* to, IsSeparator isSeparator)
{
    for (; end - at > 2 * blockBytes; at += 2 * blockBytes, to += blockBytes) {
        if (!readBlock(at, to))
            return false;
    }
    return readTokens<2>(at, end, to, isSeparator);
}

template <typename IsSeparator>
bool readPairs(const QChar* at, const QChar* end, char* to, IsSeparator isSeparator)
{
    return readTokens<2>(at, end, to, isSeparator);
}

// Reads the whole text. False when it is not of pairs alone; `bytes` is of no use then.
template <typename Char, typename IsSeparator>
bool readPlainHex(const Char* text, qint64 length, QByteArray& bytes, IsSeparator isSeparator)
{
    const bool separated = length > 2 && isSeparator(text[2]);
    const qint64 characters = separated ? length + 1 : length;
    const int stride = separated ? 3 : 2;
    if (length < 2 || length > std::numeric_limits<int>::max() || characters % stride != 0)
        return false;
    bytes = QByteArray(static_cast<int>(characters / stride), Qt::Uninitialized);
    const Char* const end = text + characters;
    return separated ? readTokens<3>(text, end, bytes.data(), isSeparator)
                     : readPairs(text, end, bytes.data(), isSeparator);
}

} // namespace hx
