#include "mididata/fast/DigitRun.h"

#include <QtAlgorithms>

#include <algorithm>

namespace hx {

namespace {

bool areIn(const DigitMask* masks, int first, int second)
{
    return ((masks[0] >> first) & (masks[1] >> second) & 1) != 0;
}

constexpr qint64 blockSize = 32;

// Says of whole blocks of bytes whether a run can begin in them, judged by its first two digits as
// far as these are single ones. Never says no to a block in which the run does begin.
class BeginFilter {
public:
    explicit BeginFilter(DigitRun run)
    {
        for (qint64 i = 0; i < 2; ++i) {
            const DigitMask digits = i < run.size() ? run.begin[i] & ~noDigit : 0;
            const bool single = digits != 0 && (digits & (digits - 1)) == 0;
            value = static_cast<quint8>(
                value << 4 | (single ? static_cast<int>(qCountTrailingZeroBits(digits)) : 0));
            care = static_cast<quint8>(care << 4 | (single ? 0xF : 0));
        }
    }

    // Looks at the byte behind the block, too.
    bool admits(const char* block) const
    {
        unsigned int admitted = 0;
        for (qint64 i = 0; i < blockSize; ++i) {
            const auto whole = static_cast<quint8>(block[i]);
            const auto next = static_cast<quint8>(block[i + 1]);
            const auto across = static_cast<quint8>(whole << 4 | next >> 4);
            admitted |= unsigned((whole & care) == value) | unsigned((across & care) == value);
        }
        return admitted != 0;
    }

private:
    quint8 value = 0;
    quint8 care = 0;
};

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

qint64 BufferDigits::find(DigitRun run, qint64 pos) const
{
    const qint64 end = count - run.size() + 1;
    if (end - pos <= 2 * blockSize)
        return findOneByOne(run, pos, end);
    const BeginFilter filter(run);
    for (qint64 block = pos / 2; 2 * block < end; block += blockSize) {
        if (block + blockSize < count / 2 && !filter.admits(data + block))
            continue;
        const qint64 found =
            findOneByOne(run, std::max(pos, 2 * block), std::min(2 * (block + blockSize), end));
        if (found >= 0)
            return found;
    }
    return -1;
}

// The first place in [pos, end) where a run fits; -1 for none.
qint64 BufferDigits::findOneByOne(DigitRun run, qint64 pos, qint64 end) const
{
    while (pos < end && !fit(run, pos))
        ++pos;
    return pos < end ? pos : -1;
}

} // namespace hx
