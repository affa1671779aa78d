// Blocks of bytes in which a run of digits cannot begin.
//
// Leaves out only blocks in which no place fits, so looking at the others finds the same place. Of
// the bytes that the run covers it compares two or three neighbours in which most digits are fixed,
// for runs that begin with a byte and for runs that begin in the middle of one.
#pragma once

#include "mididata/fast/Bytes16.h"
#include "mididata/fast/DigitRun.h"
#include "mididata/fast/WordScan.h"

namespace hx {

class RunFilter {
public:
    static constexpr qint64 blockSize = wordBlock; // bytes

    explicit RunFilter(DigitRun run);

    // How many bytes from the beginning of a block on are looked at.
    qint64 reach() const { return m_hasWords ? blockSize : blockSize + m_greatestOffset + 1; }

    // The first of the blocks at `at`, one block after it and so on, up to `last`, that may not be
    // left out; a place after `last` when there is none.
    qint64 find(const char* data, qint64 at, qint64 last) const;

    // The first digit that the run may begin with when it is found in a block; all before that are
    // out of the question when the blocks before it were left out.
    qint64 firstPlace(qint64 block) const
    {
        return 2 * (m_hasWords ? block - m_greatestOffset - 1 : block);
    }

    // The digit after the last of these.
    qint64 endPlace(qint64 block) const
    {
        return 2 * (m_hasWords ? block + blockSize - m_smallestOffset - 1 : block + blockSize);
    }

private:
    // Some bytes of the run, `offset` bytes after the one it begins in.
    struct Part {
        qint64 offset;
        quint32 values; // the first byte is the highest
        quint32 fixedBits;
    };

    // Two neighbouring bytes of the run.
    struct Neighbours {
        Neighbours() = default;
        explicit Neighbours(const Part& part);

        // Not 0 for each byte in which the run can begin.
        Bytes16 fit(const char* block) const
        {
            const char* const at = block + offset;
            const Bytes16 differences = ((loadBytes(at) & fixedBits[0]) ^ values[0]) |
                                        ((loadBytes(at + 1) & fixedBits[1]) ^ values[1]);
            return reinterpret_cast<Bytes16>(differences == 0);
        }

        // As fit(), when all bits are fixed.
        Bytes16 equal(const char* block) const
        {
            const char* const at = block + offset;
            return reinterpret_cast<Bytes16>((loadBytes(at) == values[0]) &
                                             (loadBytes(at + 1) == values[1]));
        }

        qint64 offset;
        Bytes16 values[2];
        Bytes16 fixedBits[2];
    };

    using Candidates = Bytes16 (Neighbours::*)(const char*) const;

    static Part bestPart(DigitRun run, int firstDigit, int bytes);
    void seekWords(const Part& whole, const Part& half);
    void seekNeighbours(const Part& whole, const Part& half);
    qint64 findNeighbours(const char* data, qint64 at, qint64 last, Candidates candidates) const;

    bool m_hasWords; // three bytes are fixed for runs of both kinds: their words are looked for
    bool m_isWhole;  // all bits of the neighbours are fixed
    SoughtWords m_words;
    Neighbours m_whole; // for a run that begins with a byte
    Neighbours m_half;  // for one that begins with the lower half of a byte
    qint64 m_greatestOffset;
    qint64 m_smallestOffset;
};

} // namespace hx
