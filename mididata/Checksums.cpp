#include "mididata/HxMidiData.h"
#include "mididata/Section.h"
#include "mididata/fast/ByteSum.h"
#include "mididata/fast/FastPaths.h"
#include "qt/Saturated.h"

namespace {

unsigned int sumOf(const QByteArray& bytes, hx::Section section)
{
    const char* at = bytes.constData() + section.begin;
    const char* const end = bytes.constData() + section.end;
    unsigned int sum = hx::fastPaths ? hx::sumBlocks(at, end) : 0;
    while (at != end)
        sum += static_cast<unsigned char>(*at++);
    return sum;
}

} // namespace

int HxMidiData::sumOfSection(int pos, int len) const
{
    return static_cast<int>(
        sumOf(bytes, hx::clippedSection(pos, len, hx::saturated(bytes.size()))) & 0x7F);
}

unsigned int HxMidiData::sum32(unsigned int pos, int end) const
{
    const int size = hx::saturated(bytes.size());
    const int begin = static_cast<int>(pos);
    const int stop = end < 0 ? size + end : end;
    if (stop <= begin)
        return 0;
    return sumOf(bytes, hx::clippedSection(begin, qint64(stop) - begin, size));
}
