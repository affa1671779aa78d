// Text written into memory that is taken once.
//
// Equal to appending to an empty QString piece by piece. The length is known before, or a bound of
// it, so the text never grows; nobody shares it yet, so it may be written through a pointer.
#pragma once

#include "mididata/HexDigits.h"
#include "mididata/TextLength.h"
#include "mididata/fast/HexBlock.h"

#include <QString>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace hx {

// A text of `length` characters that are yet to be written; empty for 0, null for a length that a
// QString cannot hold.
inline QString unwrittenText(qint64 length)
{
    return fitsText(length) ? QString(static_cast<int>(length), Qt::Uninitialized) : QString();
}

// Where the first character of an unwritten text goes.
inline char16_t* charactersOf(const QString& unwritten)
{
    return reinterpret_cast<char16_t*>(const_cast<QChar*>(unwritten.constData()));
}

// Writes the two digits of a byte; returns the place after them, as all writers here do.
inline char16_t* writeByte(char16_t* to, char byte)
{
    std::memcpy(to, &hexPairs[static_cast<unsigned char>(byte)], sizeof(HexPair));
    return to + 2;
}

// Equal to writeByte() for each byte in turn.
inline char16_t* writeBytes(char16_t* to, const char* from, const char* end)
{
    for (; end - from >= blockBytes; from += blockBytes, to += 2 * blockBytes)
        writeBlock(to, from);
    while (from != end)
        to = writeByte(to, *from++);
    return to;
}

// Equal to writeByte() for each byte with the separator between neighbours.
inline char16_t* writeSeparated(char16_t* to, const char* from, const char* end, char16_t separator)
{
    if (from == end)
        return to;
    to = writeByte(to, *from);
    while (++from != end) {
        *to = separator;
        to = writeByte(to + 1, *from);
    }
    return to;
}

// Writes 0 to 255 in decimal.
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
