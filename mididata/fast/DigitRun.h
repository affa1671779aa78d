// The hex digits of a buffer, and runs of digits of a pattern looked for in them.
#pragma once

#include "mididata/fast/PatternItem.h"

#include <QByteArray>

namespace hx {

// The masks of neighbouring digits of a pattern.
struct DigitRun {
    const DigitMask* begin;
    const DigitMask* end;

    qint64 size() const { return end - begin; }
};

// The hex digits of a buffer, two a byte; the digit 2n is the upper half of byte n.
class BufferDigits {
public:
    explicit BufferDigits(const QByteArray& bytes)
        : data(bytes.constData()), count(2 * qint64(bytes.size()))
    {
    }

    // Whether there are `width` digits from `pos` on, at most two, all in the mask.
    bool haveAll(DigitMask mask, qint64 pos, int width) const
    {
        return pos + width <= count && (width < 1 || isIn(mask, at(pos))) &&
               (width < 2 || isIn(mask, at(pos + 1)));
    }

    // Steps over the plain characters of a pattern, and the blanks among them, that fit whole bytes
    // from the digit `pos` on; none when that is in the middle of a byte. Leaves the pattern where
    // readItem() may go on: not at a star, which belongs to the character before it.
    const char* skipFittingPairs(const char* pattern, qint64& pos) const
    {
        if (pos % 2 != 0)
            return pattern;
        const char* last = pattern;
        const char* byte = data + pos / 2;
        const char* const end = data + count / 2;
        while (byte != end && isIn(plainMask(pattern[0]), highDigit(*byte)) &&
               isIn(plainMask(pattern[1]), lowDigit(*byte))) {
            last = pattern;
            pattern = skipBlanks(pattern + 2);
            ++byte;
        }
        if (*pattern == '*' && pattern != last) {
            pattern = last;
            --byte;
        }
        pos = 2 * (byte - data);
        return pattern;
    }

    // Where the bytes of `digits` digits from the digit `pos` on are, when these are whole bytes and eight bytes or
    // more lie before their end; null otherwise.
    const char* wholeBytes(qint64 pos, qint64 digits) const
    {
        constexpr qint64 block = 16;
        const qint64 stop = pos + digits;
        const bool areWhole = (pos | digits) % 2 == 0;
        return areWhole && stop >= block && stop <= count ? data + pos / 2 : nullptr;
    }

    // Whether a run fits from the digit `pos` on.
    bool fit(DigitRun run, qint64 pos) const;

    // The first place at or after the digit `pos` where a run fits; -1 for none.
    qint64 find(DigitRun run, qint64 pos) const;

private:
    int at(qint64 pos) const
    {
        const char byte = data[pos / 2];
        return pos % 2 == 0 ? highDigit(byte) : lowDigit(byte);
    }

    qint64 findByBlocks(DigitRun run, qint64 pos, qint64 end) const;
    qint64 findOneByOne(DigitRun run, qint64 pos, qint64 end) const;

    const char* data;
    qint64 count;
};

} // namespace hx
