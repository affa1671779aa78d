#include "mididata/fast/RunFilter.h"

#include <QtAlgorithms>

namespace hx {

namespace {

// The fixed digits of some bytes, and which bits they fix.
struct FixedDigits {
    quint32 values = 0;
    quint32 bits = 0;

    void append(DigitMask mask)
    {
        const DigitMask digits = mask & ~noDigit;
        const bool isFixed = digits != 0 && (digits & (digits - 1)) == 0;
        values = values << 4 | (isFixed ? qCountTrailingZeroBits(digits) : 0);
        bits = bits << 4 | (isFixed ? 0xF : 0);
    }
};

// So many digits of the run from `at` on; digits outside of it are not fixed.
FixedDigits digitsAt(DigitRun run, qint64 at, int digits)
{
    FixedDigits fixed;
    for (qint64 i = at; i < at + digits; ++i)
        fixed.append(i >= 0 && i < run.size() ? run.begin[i] : anyDigit);
    return fixed;
}

Bytes16 lowByte(quint32 value)
{
    return allBytes(static_cast<unsigned char>(value));
}

// Two bytes as they lie in memory.
quint16 wordOf(quint32 bytes)
{
    return qToBigEndian(static_cast<quint16>(bytes));
}

constexpr quint32 twoBytes = 0xFFFF;
constexpr quint32 threeBytes = 0xFFFFFF;

} // namespace

RunFilter::Neighbours::Neighbours(const Part& part)
    : offset(part.offset), values{lowByte(part.values >> 8), lowByte(part.values)},
      fixedBits{lowByte(part.fixedBits >> 8), lowByte(part.fixedBits)}
{
}

// What is not looked for is not set.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
RunFilter::RunFilter(DigitRun run)
{
    const Part whole = bestPart(run, 0, 3);
    const Part half = bestPart(run, -1, 3);
    m_hasWords = (whole.fixedBits & half.fixedBits) == threeBytes;
    if (m_hasWords)
        seekWords(whole, half);
    else
        seekNeighbours(bestPart(run, 0, 2), bestPart(run, -1, 2));
}

void RunFilter::seekWords(const Part& whole, const Part& half)
{
    m_words[0] = wordOf(whole.values >> 8);
    m_words[1] = wordOf(whole.values);
    m_words[2] = wordOf(half.values >> 8);
    m_words[3] = wordOf(half.values);
    m_greatestOffset = qMax(whole.offset, half.offset);
    m_smallestOffset = qMin(whole.offset, half.offset);
}

void RunFilter::seekNeighbours(const Part& whole, const Part& half)
{
    m_whole = Neighbours(whole);
    m_half = Neighbours(half);
    m_isWhole = (whole.fixedBits & half.fixedBits) == twoBytes;
    m_greatestOffset = qMax(whole.offset, half.offset);
}

// The first of the parts of so many bytes in which most is fixed. `firstDigit` is the digit of the run
// that is the upper half of the byte it begins in.
RunFilter::Part RunFilter::bestPart(DigitRun run, int firstDigit, int bytes)
{
    Part best = {0, 0, 0};
    for (qint64 i = 0; i == 0 || firstDigit + 2 * (i + bytes - 1) < run.size(); ++i) {
        const FixedDigits fixed = digitsAt(run, firstDigit + 2 * i, 2 * bytes);
        if (i == 0 || qPopulationCount(fixed.bits) > qPopulationCount(best.fixedBits))
            best = {i, fixed.values, fixed.bits};
        if (best.fixedBits == (quint64(1) << 8 * bytes) - 1)
            break;
    }
    return best;
}

// Inline, so that what tells the candidates is so too.
inline qint64 RunFilter::findNeighbours(const char* data, qint64 at, qint64 last,
                                        Candidates candidates) const
{
    for (; at <= last; at += blockSize) {
        Bytes16 found = {};
        for (qint64 i = 0; i < blockSize; i += qint64(sizeof(found)))
            found |= (m_whole.*candidates)(data + at + i) | (m_half.*candidates)(data + at + i);
        if (hasAny(found))
            break;
    }
    return at;
}

qint64 RunFilter::find(const char* data, qint64 at, qint64 last) const
{
    if (m_hasWords)
        return findWords(m_words, data, at, last);
    return m_isWhole ? findNeighbours(data, at, last, &Neighbours::equal)
                     : findNeighbours(data, at, last, &Neighbours::fit);
}

} // namespace hx
