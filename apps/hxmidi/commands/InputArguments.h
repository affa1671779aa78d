// The words and options with which data is given on the command line.
#pragma once

#include "apps/hxmidi/input/Input.h"

#include <CLI/CLI.hpp>

namespace hx {

// Adds the options without the words, for commands that take these in their own way.
void addInputFormOptions(CLI::App& command, InputOptions& options);

// Adds the words too, as the positional argument DATA.
void addInputOptions(CLI::App& command, InputOptions& options);

} // namespace hx
