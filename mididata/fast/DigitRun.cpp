#include "mididata/fast/DigitRun.h"

#include "mididata/fast/RunFilter.h"

#include <algorithm>

namespace hx {

namespace {

bool areIn(const DigitMask* masks, int first, int second)
{
    return ((masks[0] >> first) & (masks[1] >> second) & 1) != 0;
}

} // namespace

bool BufferDigits::fit(DigitRun run, qint64 pos) const
{
    if (run.size() > count - pos)
        return false;
    const DigitMask* mask = run.begin;
    const char* byte = data + pos / 2;
    if (pos % 2 != 0 && mask != run.end && !isIn(*mask++, lowDigit(*byte++)))
        return false;
    for (; run.end - mask >= 2; mask += 2, ++byte) {
        if (!areIn(mask, highDigit(*byte), lowDigit(*byte)))
            return false;
    }
    return mask == run.end || isIn(*mask, highDigit(*byte));
}

// Tries a few places first, which is all that most searches need.
qint64 BufferDigits::find(DigitRun run, qint64 pos) const
{
    constexpr qint64 few = 32;
    const qint64 end = count - run.size() + 1;
    const qint64 near = std::min(end, pos / 2 * 2 + few);
    const qint64 found = findOneByOne(run, pos, near);
    return found >= 0 || near >= end ? found : findByBlocks(run, near, end);
}

// The first place in [pos, end) where a run fits, which is found in blocks; -1 for none. The last block
// that the filter can look at overlaps the one before it.
qint64 BufferDigits::findByBlocks(DigitRun run, qint64 pos, qint64 end) const
{
    const RunFilter filter(run);
    const qint64 last = count / 2 - filter.reach();
    qint64 at = pos / 2;
    while (at <= last) {
        const qint64 block = filter.find(data, at, last);
        at = std::min(block, last);
        if (block <= last || filter.find(data, last, last) == last) {
            const qint64 first = std::max(pos, filter.firstPlace(at));
            const qint64 place = findOneByOne(run, first, std::min(filter.endPlace(at), end));
            if (place >= 0)
                return place;
        }
        at += RunFilter::blockSize;
    }
    return findOneByOne(run, std::max(pos, filter.firstPlace(at)), end);
}

// The first place in [pos, end) where a run fits; -1 for none.
qint64 BufferDigits::findOneByOne(DigitRun run, qint64 pos, qint64 end) const
{
    if (run.size() == 0)
        return pos < end ? pos : -1;
    while (pos < end && !(isIn(*run.begin, at(pos)) && fit(run, pos)))
        ++pos;
    return pos < end ? pos : -1;
}

} // namespace hx
