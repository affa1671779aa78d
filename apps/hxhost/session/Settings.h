// What the options that several commands share amount to.
#pragma once

#include "apps/hxhost/report/Progress.h"

#include "ports/Pacer.h"
#include "simulator/FaultPlan.h"
#include "simulator/SimulatedProduct.h"

#include <string>
#include <vector>

namespace hx::host {

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

// What the simulated product is like.
struct SimulationOptions {
    std::vector<std::string> faults;
    std::string serial; // empty: the one that its family and model give it

    // As the product takes them; checked texts alone.
    sim::FaultPlan faultPlan() const;
    sim::SimulatedProductSettings settings() const;
};

// How the product is reached.
struct ConnectionOptions {
    PluginOptions plugin;
    std::string port;   // empty: the name that the plugin gives
    std::string inPort; // empty: the input that belongs to `port`
    SimulationOptions simulation;
    Pace pace;
    bool slowHost = false;   // waits are longer
    bool stopsAtEof = false; // when standard input ends
};

} // namespace hx::host
