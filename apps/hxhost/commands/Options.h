// The options that several commands share.
#pragma once

#include "apps/commandline/Command.h"
#include "apps/hxhost/session/Settings.h"

#include <string>
#include <vector>

namespace hx::host {

// The group of the OutputOptions in each command's help.
constexpr char outputGroup[] = "Output";

void addOutputOptions(const Command& command, OutputOptions& options);
void addPluginOptions(const Command& command, PluginOptions& options);

// The update image that the command is about.
void addImageArgument(const Command& command, std::string& image);

void addPaceOptions(const Command& command, Pace& pace);

// An option for a time in seconds, more than 0; where it is not given `seconds` stays as it is.
void addSecondsOption(const Command& command, double& seconds);

void addSimulationOptions(const Command& command, SimulationOptions& options);

void addSlowHostOption(const Command& command, bool& slowHost);

// The connection options of a command that sends nothing: `port` names the input.
void addListenOptions(const Command& command, ConnectionOptions& options);
void addConnectionOptions(const Command& command, ConnectionOptions& options);

} // namespace hx::host
