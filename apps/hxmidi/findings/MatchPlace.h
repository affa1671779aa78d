// Where a pattern fits, and how far one fits that does not.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include "mididata/HxMidiData.h"

#include <optional>

namespace hx::midi {

// A match in digits of the compact hex text, two to the byte.
struct MatchPlace {
    int digit;
    int digits;

    int firstByte() const { return digit / 2; }
    // Bytes that the match has digits of.
    int byteCount() const { return digits == 0 ? 0 : (digit + digits + 1) / 2 - firstByte(); }
    bool isHalfByteOff() const { return digit % 2 != 0; }
};

// The first place where the pattern fits, by HxMidiData's own judgement.
std::optional<MatchPlace> findMatch(const HxMidiData& data, const QByteArray& pattern,
                                    bool atStart);

// For a pattern that does not fit: the first of its words, between blanks, with which it ceases
// to. None for data or patterns so large that finding it would take long.
std::optional<Span> firstFailingWord(const HxMidiData& data, const QByteArray& pattern,
                                     bool atStart);

} // namespace hx::midi
