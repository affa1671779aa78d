// The options that several commands share, and where their values land.
#pragma once

#include "apps/commandline/Command.h"
#include "apps/hxhost/report/Progress.h"

#include "ports/Pacer.h"
#include "simulator/FaultPlan.h"

#include <string>
#include <vector>

namespace hx {

// The group of the OutputOptions in each command's help.
constexpr char outputGroup[] = "Output";

// How results and progress are shown; every command has these.
struct OutputOptions {
    bool json = false;
    std::string field; // empty: all of the result
    ProgressMode progress = ProgressMode::Auto;
    bool quiet = false;
    int verbose = 0;
    std::string trace; // empty: no record is written

    Verbosity verbosity() const;

    // Whether warnings and the error are in the JSON document alone, because standard error carries
    // progress for a program.
    bool isDocumentEnough() const { return json && progress == ProgressMode::Json; }
};

struct PluginOptions {
    std::string plugin; // empty: the default places
};

// How the product is reached.
struct ConnectionOptions {
    PluginOptions plugin;
    std::string port;                // empty: the name that the plugin gives
    std::string inPort;              // empty: the input that belongs to `port`
    std::vector<std::string> faults; // of the simulated product
    Pace pace;
};

void addOutputOptions(const Command& command, OutputOptions& options);
void addPluginOptions(const Command& command, PluginOptions& options);
void addPaceOptions(const Command& command, Pace& pace);

// An option for a time in seconds, more than 0; where it is not given `seconds` stays as it is.
void addSecondsOption(const Command& command, double& seconds);

void addFaultOption(const Command& command, std::vector<std::string>& faults);

// The plan that checked texts of --fault amount to.
sim::FaultPlan faultPlan(const std::vector<std::string>& faults);

// The connection options of a command that sends nothing: `port` names the input.
void addListenOptions(const Command& command, ConnectionOptions& options);
void addConnectionOptions(const Command& command, ConnectionOptions& options);

} // namespace hx
