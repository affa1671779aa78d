#include "mididata/HxMidiData.h"

#include <cstddef>
#include <cstring>

namespace {

/** The byte at `pos`, 0 outside the array. Reads no terminating zero: an adopted buffer has none.
 */
unsigned char byteAt(const QByteArray& bytes, qint64 pos)
{
    const bool inside = pos >= 0 && pos < bytes.size();
    return inside ? static_cast<unsigned char>(bytes.at(static_cast<int>(pos)))
                  : static_cast<unsigned char>(0);
}

/** A byte read as a signed number and extended to 32 bits, ready for shifts that wrap. */
quint32 signExtended(char byte)
{
    return static_cast<quint32>(static_cast<signed char>(byte));
}

bool fits(const QByteArray& bytes, int pos, int width)
{
    return pos >= 0 && qint64(pos) + width <= bytes.size();
}

/** Five 7-bit groups whose most significant one is `b[0]` and whose neighbour is at `b[step]`. */
quint32 signedGroups(const char* b, std::ptrdiff_t step)
{
    quint32 value = static_cast<unsigned char>(b[0]);
    for (std::ptrdiff_t i = 1; i < 5; ++i)
        value = (value << 7) + signExtended(b[i * step]);
    return value;
}

quint32 maskedGroups(const char* b)
{
    quint32 value = static_cast<unsigned char>(b[0]);
    for (int i = 1; i < 5; ++i)
        value = (value << 7) | (static_cast<unsigned char>(b[i]) & 0x7F);
    return value;
}

quint32 number(const char* b, int width)
{
    switch (width) {
    case 1:
        return signExtended(b[0]);
    case 2: // 7-bit groups, unlike the wider ones
        return (signExtended(b[0]) << 7) + signExtended(b[1]);
    case 3:
        return (signExtended(b[0]) << 16) + (signExtended(b[1]) << 8) + signExtended(b[2]);
    default:
        return (signExtended(b[0]) << 24) + (signExtended(b[1]) << 16) + (signExtended(b[2]) << 8) +
               signExtended(b[3]);
    }
}

char sevenBits(int value)
{
    return static_cast<char>(value & 0x7F);
}

} // namespace

int HxMidiData::get14bit(int pos, int fallback) const
{
    if (bytes.size() < pos)
        return fallback;
    const auto high = static_cast<signed char>(byteAt(bytes, pos));
    const auto low = static_cast<signed char>(byteAt(bytes, qint64(pos) + 1));
    return high * 128 + low;
}

unsigned int HxMidiData::getUtime(int pos, int fallback) const
{
    return fits(bytes, pos, 5) ? maskedGroups(bytes.constData() + pos)
                               : static_cast<unsigned int>(fallback);
}

float HxMidiData::getFloat32(int pos, float fallback) const
{
    if (!fits(bytes, pos, 5))
        return fallback;
    const quint32 bits = maskedGroups(bytes.constData() + pos);
    static_assert(sizeof(fallback) == sizeof(bits), "float must be an IEEE 754 single");
    std::memcpy(&fallback, &bits, sizeof(bits));
    return fallback;
}

int HxMidiData::get32bit(int pos, int fallback) const
{
    return fits(bytes, pos, 5) ? static_cast<int>(signedGroups(bytes.constData() + pos, 1))
                               : fallback;
}

int HxMidiData::get32bitLE(int pos, int fallback) const
{
    return fits(bytes, pos, 5) ? static_cast<int>(signedGroups(bytes.constData() + pos + 4, -1))
                               : fallback;
}

int HxMidiData::toInt(int pos, int width, int fallback) const
{
    if (width < 1 || width > 4 || !fits(bytes, pos, width))
        return fallback;
    return static_cast<int>(number(bytes.constData() + pos, width));
}

bool HxMidiData::set14bit(int pos, int value)
{
    if (!fits(bytes, pos, 1))
        return false;
    bytes[pos] = sevenBits(value >> 7);
    if (pos + 1 == bytes.size())
        bytes.append(sevenBits(value));
    else
        bytes[pos + 1] = sevenBits(value);
    return true;
}
