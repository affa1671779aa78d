// Patterns that take too long, tried out first.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include <functional>

namespace hx::midi {

// Whether work with the pattern needs more than a second of processor time, which is reported as an
// error. A copy of this process tries the work out and is ended when it takes longer, so the work
// must not write anything. A pattern without repetitions is quick and not tried out.
bool refusesTime(const SourceText& pattern, const std::function<void()>& work, Findings& findings);

} // namespace hx::midi
