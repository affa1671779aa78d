// Numbers as they are typed: decimal, or hexadecimal after 0x, with a sign if wanted.
#pragma once

#include "apps/hxmidi/findings/Finding.h"

#include <optional>

namespace hx::midi {

struct NumberRange {
    qint64 least;
    qint64 greatest;
};

// Reads the piece of `place` as one number. Without one in the range there is an error that says
// what the number was for, and no value.
std::optional<qint64> readNumber(const Place& place, NumberRange range, const QString& purpose,
                                 Findings& findings);

} // namespace hx::midi
