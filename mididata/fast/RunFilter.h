// Blocks of bytes in which a run of digits cannot begin.
//
// Says no only where no place of the block fits, so leaving such blocks out finds the same place.
// Of the bytes that the run covers it compares the two neighbours in which most digits are fixed,
// for runs that begin with a byte and for runs that begin in the middle of one.
#pragma once

#include "mididata/fast/Bytes16.h"
#include "mididata/fast/DigitRun.h"

namespace hx {

class RunFilter {
public:
    static constexpr qint64 blockSize = 64; // bytes that a run may begin in

    explicit RunFilter(DigitRun run);

    // How many bytes admits() looks at.
    qint64 reach() const { return blockSize + qMax(m_whole.offset, m_half.offset) + 1; }

    // Whether the run can begin in the block.
    bool admits(const char* block) const
    {
        return m_isWhole ? admitsBy(block, &Neighbours::equal) : admitsBy(block, &Neighbours::fit);
    }

private:
    // Two neighbouring bytes of the run: `offset` bytes after the one it begins in.
    struct Neighbours {
        qint64 offset;
        Bytes16 values[2];
        Bytes16 fixedBits[2];

        bool isWhole() const { return (fixedBits[0][0] & fixedBits[1][0]) == 0xFF; }

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
    };

    using Candidates = Bytes16 (Neighbours::*)(const char*) const;

    bool admitsBy(const char* block, Candidates candidates) const
    {
        Bytes16 found = {};
        for (const char* at = block; at != block + blockSize; at += sizeof(found))
            found |= (m_whole.*candidates)(at) | (m_half.*candidates)(at);
        return hasAny(found);
    }

    static Neighbours fixedNeighbours(DigitRun run, int firstDigit);

    Neighbours m_whole; // for a run that begins with a byte
    Neighbours m_half;  // for one that begins with the lower half of a byte
    bool m_isWhole;     // all bits of these bytes are fixed
};

} // namespace hx
