#include "mididata/fast/RunFilter.h"

#include <QtAlgorithms>

namespace hx {

namespace {

// The fixed digits of one or more bytes, and which bits they fix.
struct FixedDigits {
    unsigned int values = 0;
    unsigned int bits = 0;

    void append(DigitMask mask)
    {
        const DigitMask digits = mask & ~noDigit;
        const bool isFixed = digits != 0 && (digits & (digits - 1)) == 0;
        values = values << 4 | (isFixed ? qCountTrailingZeroBits(digits) : 0);
        bits = bits << 4 | (isFixed ? 0xF : 0);
    }
};

// The two bytes from the digit `at` of the run on; digits outside of it are not fixed.
FixedDigits twoBytes(DigitRun run, qint64 at)
{
    FixedDigits fixed;
    for (qint64 i = at; i < at + 4; ++i)
        fixed.append(i >= 0 && i < run.size() ? run.begin[i] : anyDigit);
    return fixed;
}

Bytes16 lowByte(unsigned int value)
{
    return allBytes(static_cast<unsigned char>(value));
}

} // namespace

RunFilter::RunFilter(DigitRun run)
    : m_whole(fixedNeighbours(run, 0)), m_half(fixedNeighbours(run, -1)),
      m_isWhole(m_whole.isWhole() && m_half.isWhole())
{
}

// `firstDigit` is the digit of the run that is the upper half of the byte it begins in.
RunFilter::Neighbours RunFilter::fixedNeighbours(DigitRun run, int firstDigit)
{
    FixedDigits best = twoBytes(run, firstDigit);
    qint64 offset = 0;
    for (qint64 i = 1; firstDigit + 2 * i + 2 < run.size(); ++i) {
        const FixedDigits fixed = twoBytes(run, firstDigit + 2 * i);
        if (qPopulationCount(fixed.bits) > qPopulationCount(best.bits)) {
            best = fixed;
            offset = i;
        }
    }
    return {offset,
            {lowByte(best.values >> 8), lowByte(best.values)},
            {lowByte(best.bits >> 8), lowByte(best.bits)}};
}

} // namespace hx
