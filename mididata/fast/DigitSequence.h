// A sequence of a text pattern, read into runs of digits.
#pragma once

#include "mididata/fast/DigitRun.h"

namespace hx {

// ".*" ends a run: anything may stand between one run and the next. The earliest place for a run
// leaves the most room to those after it, so looking for one after the other finds what the regular
// expression finds.
//
// The arrays are written before they are read, and too large to be cleared in every call.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
class DigitSequence {
public:
    // Reads up to what ends a sequence and returns that place. Null when the text is outside the
    // grammar, or very long; the sequence is of no use then.
    const char* read(const char* at);

    // Whether the runs are found one after the other, from the digit `pos` on.
    bool isFound(const BufferDigits& digits, qint64 pos) const;

private:
    static constexpr int maxDigits = 512;

    DigitMask m_masks[maxDigits + 1]; // "XX" gives two at once
    DigitRun m_runs[maxDigits + 1];
    int m_runCount = 0;
};

} // namespace hx
