// The options that several commands share, and where their values land.
#pragma once

#include "apps/hxhost/report/Progress.h"

#include "ports/Pacer.h"
#include "simulator/FaultPlan.h"

#include <CLI/CLI.hpp>

#include <map>
#include <set>
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

// An option whose value is one of a few words, each standing for a value of `target`.
template <typename Value>
CLI::Option* addWordOption(CLI::App& command, const std::string& name,
                           const std::string& description,
                           const std::map<std::string, Value>& words, Value& target)
{
    std::set<std::string> known;
    for (const auto& word : words)
        known.insert(word.first);
    return command
        .add_option_function<std::string>(
            name, [words, &target](const std::string& word) { target = words.at(word); },
            description)
        ->check(CLI::IsMember(known).description(""));
}

void addOutputOptions(CLI::App& command, OutputOptions& options);
void addPluginOptions(CLI::App& command, PluginOptions& options);
void addPaceOptions(CLI::App& command, Pace& pace);
void addFaultOption(CLI::App& command, std::vector<std::string>& faults);

// The plan that checked texts of --fault amount to.
FaultPlan faultPlan(const std::vector<std::string>& faults);

// The connection options of a command that sends nothing: `port` names the input.
void addListenOptions(CLI::App& command, ConnectionOptions& options);
void addConnectionOptions(CLI::App& command, ConnectionOptions& options);

} // namespace hx
