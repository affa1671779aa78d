#include "mididata/HxMidiData.h"
#include "mididata/Section.h"

namespace {

unsigned int sumOf(const QByteArray& bytes, hx::Section section)
{
    unsigned int sum = 0;
    for (const char* at = bytes.constData() + section.begin; at != bytes.constData() + section.end;
         ++at)
        sum += static_cast<unsigned char>(*at);
    return sum;
}

} // namespace

int HxMidiData::sumOfSection(int pos, int len) const
{
    return static_cast<int>(sumOf(bytes, hx::clippedSection(pos, len, bytes.size())) & 0x7F);
}

unsigned int HxMidiData::sum32(unsigned int pos, int end) const
{
    const int size = bytes.size();
    const int begin = static_cast<int>(pos);
    const int stop = end < 0 ? size + end : end;
    if (stop <= begin)
        return 0;
    return sumOf(bytes, hx::clippedSection(begin, qint64(stop) - begin, size));
}
