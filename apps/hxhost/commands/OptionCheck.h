// What is asked of the options of one command line before the command begins.
#pragma once

#include "apps/commandline/Command.h"
#include "host/base/Problem.h"

#include <optional>

namespace hx::host {

// The problem with options that would turn out to be wrong only once the product has been spoken
// to: a --field that no result of the command has, a --fault for a port that no simulated product
// is behind, an --in-port that would not be used.
std::optional<Problem> optionProblem(const Command& command);

} // namespace hx::host
