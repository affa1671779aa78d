// Refuses a run that would write over what it reads, before anything is started.
#pragma once

#include "apps/commandline/Command.h"
#include "host/base/Problem.h"

#include <optional>

namespace hx::host {

// Whether the option (or argument) names a file that the command writes.
bool namesOutput(const GivenOption& option);

// What is wrong with the files that the parsed command writes: one is read too, belongs to this
// program or to a plugin, or is written twice. None when each is a file of its own.
std::optional<Problem> outputProblem(const Command& command);

// The same for a file that standard output is appended to: the problem may not be printed there.
std::optional<Problem> standardOutputProblem(const Command& command);

} // namespace hx::host
