#include "mididata/HxMidiData.h"

#include <QtEndian>

namespace {

constexpr unsigned int groupSize = 7;

/** Writes a group of up to seven bytes behind the byte of their top bits. */
void packGroup(char* dst, const char* src, unsigned int count)
{
    unsigned int topBits = 0;
    for (unsigned int i = 0; i < count; ++i) {
        const unsigned int byte = static_cast<unsigned char>(src[i]);
        topBits |= (byte >> 7) << (groupSize - 1 - i);
        dst[i + 1] = static_cast<char>(byte & 0x7F);
    }
    dst[0] = static_cast<char>(topBits);
}

/**
 * Equal to packGroup() of seven bytes, with all of them in one word. The product moves the top bit
 * of byte i from bit 8i to bit 54 - i, and no two of its terms meet. Reads the byte behind the
 * group.
 */
void packFullGroup(char* dst, const char* src)
{
    constexpr quint64 gather = Q_UINT64_C(0x0040201008040201); // bits 0, 9, 18, ... 54
    const auto group = qFromLittleEndian<quint64>(src);
    const quint64 topBits = ((group >> 7 & Q_UINT64_C(0x0001010101010101)) * gather) >> 48 & 0x7F;
    const quint64 lowBits = group & Q_UINT64_C(0x007F7F7F7F7F7F7F);
    qToLittleEndian<quint64>(lowBits << 8 | topBits, dst);
}

} // namespace

unsigned int HxMidiData::cvt8to7(char* dst, const char* src, unsigned int n)
{
    if (dst == nullptr || src == nullptr)
        return 0;
    const char* const begin = dst;
    for (; n > groupSize; n -= groupSize) {
        packFullGroup(dst, src);
        src += groupSize;
        dst += groupSize + 1;
    }
    if (n > 0) {
        packGroup(dst, src, n);
        dst += n + 1;
    }
    return static_cast<unsigned int>(dst - begin);
}

void HxMidiData::fromRaw8bit(const char* /*src*/, int /*n*/)
{
    clear();
    bytes = QByteArray("", 0); // empty but not null, as the stream form shows
}

void HxMidiData::fromRaw8bit(const QByteArray& raw)
{
    fromRaw8bit(raw.constData(), raw.size());
}
