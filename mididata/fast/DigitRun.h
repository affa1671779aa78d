#pragma once

#include "mididata/fast/PatternItem.h"

#include <QByteArray>

namespace hx {

/** The masks of neighbouring digits of a pattern. */
struct DigitRun {
    const DigitMask* begin;
    const DigitMask* end;

    qint64 size() const { return end - begin; }
};

/** The hex digits of a buffer, two a byte; the digit 2n is the upper half of byte n. */
class BufferDigits {
public:
    explicit BufferDigits(const QByteArray& bytes)
        : data(bytes.constData()), count(2 * qint64(bytes.size()))
    {
    }

    /** Whether there is a digit at `pos` and the mask holds it. */
    bool has(DigitMask mask, qint64 pos) const
    {
        if (pos >= count)
            return false;
        const char byte = data[pos / 2];
        return isIn(mask, pos % 2 == 0 ? highDigit(byte) : lowDigit(byte));
    }

    /**
     * Steps over the plain characters of a pattern that fit whole bytes from the digit `pos` on,
     * which is an even one.
     */
    const char* skipFittingPairs(const char* pattern, qint64& pos) const
    {
        const char* byte = data + pos / 2;
        const char* const end = data + count / 2;
        while (byte != end && isIn(plainMask(pattern[0]), highDigit(*byte)) &&
               isIn(plainMask(pattern[1]), lowDigit(*byte))) {
            pattern += 2;
            ++byte;
        }
        pos = 2 * (byte - data);
        return pattern;
    }

    /** Whether a run fits from the digit `pos` on. */
    bool fit(DigitRun run, qint64 pos) const;

    /** The first place at or behind the digit `pos` where a run fits; -1 for none. */
    qint64 find(DigitRun run, qint64 pos) const;

private:
    qint64 findOneByOne(DigitRun run, qint64 pos, qint64 end) const;

    const char* data;
    qint64 count;
};

} // namespace hx
