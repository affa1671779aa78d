// What the library says of a pattern, in words.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

namespace hx::midi {

// Reports what makes a pattern unusable as an error, and what can never fit hex text, such as VV,
// as a warning. Returns whether it can be used. A pattern that repetitions blow up beyond what
// QRegExp can hold is refused too.
bool checkPattern(const SourceText& pattern, Findings& findings);

} // namespace hx::midi
