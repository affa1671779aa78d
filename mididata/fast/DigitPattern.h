#pragma once

#include "mididata/fast/DigitRun.h"

#include <QByteArray>

/**
 * Most patterns are matched on the bytes themselves, without a text and a regular expression:
 *
 *     pattern  = sequence | "(" sequence { "|" sequence } ")"
 *     sequence = { digit | letter | "." | ".*" | "XX" | "[" digit { digit } "]" }
 *
 * Blanks may stand anywhere, lower case counts as upper case. A letter that is no hex digit fits
 * nothing. A sequence in parentheses is not empty. Nothing is allocated, and nothing is kept from
 * one call to the next.
 */
namespace hx {

/**
 * A sequence read into runs of masks. ".*" ends a run: anything may stand between one run and the
 * next. The earliest place for a run leaves the most room to those behind it, so looking for
 * one after the other is equal to the regular expression's search.
 */
// The arrays are written before they are read, and too large to be cleared in every call.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
class DigitSequence {
public:
    /**
     * Reads up to what ends a sequence and returns that place. Null when the text is outside
     * the grammar, or very long; the sequence is of no use then.
     */
    const char* read(const char* at);

    /** Whether the runs are found one behind the other, from the digit `pos` on. */
    bool isFound(const BufferDigits& digits, qint64 pos) const;

    /** isFound() anywhere or, with `atStart`, with the first run at the first digit. */
    bool fits(const BufferDigits& digits, bool atStart) const
    {
        return (!atStart || digits.fit(runs[0], 0)) && isFound(digits, 0);
    }

private:
    static constexpr int maxDigits = 512;

    DigitMask masks[maxDigits + 1]; // "XX" gives two at once
    DigitRun runs[maxDigits + 1];
    int runCount = 0;
};

enum class Fit { No, Yes, OutsideGrammar };

/** Whether the pattern fits anywhere, in the middle of a byte too, or at the start. */
Fit fit(const char* pattern, const QByteArray& bytes, bool atStart);

/**
 * Equal to fit() at the start, but compares while it reads; says OutsideGrammar of some patterns
 * that fit() does read.
 */
Fit fitAtStart(const char* pattern, const QByteArray& bytes);

} // namespace hx
