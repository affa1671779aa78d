// What the words of one command line may not be, whatever the command.
#pragma once

#include "apps/hxhost/commands/Options.h"
#include "host/base/Problem.h"

#include <optional>

namespace hx::host {

// The problem with the values that `command` was given: an empty one, as an unset variable of a
// script leaves over, a "-" that cannot mean a standard stream, or a file that is written
// although it is read as well.
std::optional<Problem> argumentProblem(const Command& command, const OutputOptions& output);

} // namespace hx::host
