// What the words of one command line may not be, whatever the command.
#pragma once

#include "apps/hxhost/report/Problem.h"

#include <CLI/CLI.hpp>

#include <optional>

namespace hx {

// The problem with the values that `command` was given: an empty one, as an unset variable of a
// script leaves behind, or a trace that would overwrite another file named there.
std::optional<Problem> argumentProblem(const CLI::App& command, const std::string& trace);

} // namespace hx
