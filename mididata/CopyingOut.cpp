#include "mididata/HxMidiData.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace {

/** How many bytes a copy of `count` (-1: size) from `start` takes; below 1 for none. */
int copyLength(int size, int start, int count)
{
    return start < 0 ? 0 : std::min(size - start, count == -1 ? size : count);
}

} // namespace

void HxMidiData::copyToStdVec(std::vector<unsigned char>& out, int start, int count) const
{
    out.clear();
    const int n = copyLength(hx::saturated(bytes.size()), start, count);
    if (n < 1)
        return;
    const char* const from = bytes.constData() + start;
    out.assign(from, from + n);
}

std::vector<unsigned char> HxMidiData::toStdVector(int start, int count)
{
    std::vector<unsigned char> out;
    copyToStdVec(out, start, count);
    return out;
}

void HxMidiData::copyToBuffer(char* buf, int start, int count) const
{
    const int n = copyLength(hx::saturated(bytes.size()), start, count);
    if (buf != nullptr && n >= 1)
        std::copy_n(bytes.constData() + start, n, buf + start);
}
