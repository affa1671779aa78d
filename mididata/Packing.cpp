#include "mididata/HxMidiData.h"
#include "mididata/fast/FastPaths.h"
#include "mididata/fast/PackedGroup.h"
#include "qt/Saturated.h"

namespace {

constexpr unsigned int groupSize = 7;

// Writes a group of up to seven bytes after the byte of their top bits.
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

} // namespace

unsigned int HxMidiData::cvt8to7(char* dst, const char* src, unsigned int n)
{
    if (dst == nullptr || src == nullptr)
        return 0;
    const char* const begin = dst;
    for (; n > groupSize; n -= groupSize) {
        if (hx::fastPaths)
            hx::packFullGroup(dst, src);
        else
            packGroup(dst, src, groupSize);
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
    fromRaw8bit(raw.constData(), hx::saturated(raw.size()));
}
