#pragma once

#include "mididata/HexDigits.h"
#include "mididata/fast/HexBlock.h"

#include <QString>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>

namespace hx {

/** What a QString can hold, with room for its header. */
constexpr qint64 longestText = (std::numeric_limits<int>::max() - 64) / 2;

/**
 * A text of `length` characters that are yet to be written; null for a length below 1 or one that
 * a QString cannot hold.
 */
inline QString unwrittenText(qint64 length)
{
    return length < 1 || length > longestText
               ? QString()
               : QString(static_cast<int>(length), Qt::Uninitialized);
}

/** Where the first character of an unwritten text goes; nobody shares it yet. */
inline char16_t* charactersOf(const QString& unwritten)
{
    return reinterpret_cast<char16_t*>(const_cast<QChar*>(unwritten.constData()));
}

/** Writes the two digits of a byte; returns the place behind them, as all writers here do. */
inline char16_t* writeByte(char16_t* to, char byte)
{
    std::memcpy(to, &hexPairs[static_cast<unsigned char>(byte)], sizeof(HexPair));
    return to + 2;
}

/** Equal to writeByte() for each byte in turn. */
inline char16_t* writeBytes(char16_t* to, const char* from, const char* end)
{
    for (; end - from >= blockBytes; from += blockBytes, to += 2 * blockBytes)
        writeBlock(to, from);
    while (from != end)
        to = writeByte(to, *from++);
    return to;
}

/** Writes 0 to 255 in decimal. */
inline char16_t* writeDecimal(char16_t* to, unsigned int value)
{
    if (value >= 100)
        *to++ = static_cast<char16_t>(u'0' + value / 100);
    if (value >= 10)
        *to++ = static_cast<char16_t>(u'0' + value / 10 % 10);
    *to++ = static_cast<char16_t>(u'0' + value % 10);
    return to;
}

inline char16_t* writeText(char16_t* to, std::u16string_view text)
{
    return std::copy(text.begin(), text.end(), to);
}

} // namespace hx
