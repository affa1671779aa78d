// The words and options with which data is given on the command line.
#pragma once

#include "apps/commandline/Command.h"
#include "apps/hxmidi/input/Input.h"

namespace hx::midi {

// Adds the options without the words, for commands that take these in their own way.
void addInputFormOptions(const Command& command, InputOptions& options);

// Adds the words too, as the positional argument DATA.
void addInputOptions(const Command& command, InputOptions& options);

} // namespace hx::midi
