#include "apps/hxhost/commands/Options.h"

namespace hx {

namespace {

constexpr char connectionGroup[] = "Connection";
constexpr int longestGapMs = 60000;
constexpr qint64 highestRate = 100000000;

void addVerbosityOptions(CLI::App& command, OutputOptions& options)
{
    command.add_flag("-q,--quiet", options.quiet, "Say nothing on stderr but errors")
        ->group(outputGroup);
    command
        .add_flag("-v,--verbose", options.verbose,
                  "Say what is decided and what the plugin logs; -vv shows every message's bytes")
        ->group(outputGroup);
}

// Empty for a fault that the simulated product knows, else what is wrong with it.
std::string isFault(const std::string& text)
{
    QString error;
    return parseFault(QString::fromStdString(text), &error) ? std::string() : error.toStdString();
}

} // namespace

Verbosity OutputOptions::verbosity() const
{
    if (quiet)
        return Verbosity::Quiet;
    if (verbose == 0)
        return Verbosity::Normal;
    return verbose == 1 ? Verbosity::Detail : Verbosity::Bytes;
}

void addOutputOptions(CLI::App& command, OutputOptions& options)
{
    command.add_flag("--json", options.json, "Print exactly one JSON document, errors included")
        ->group(outputGroup);
    command.add_option("--field", options.field, "Print this one value of the result")
        ->type_name("NAME")
        ->group(outputGroup);
    addWordOption<ProgressMode>(command, "--progress",
                                "How progress is shown on stderr: auto (a bar on a terminal, else "
                                "plain lines), bar, plain, json or none",
                                {{"auto", ProgressMode::Auto},
                                 {"bar", ProgressMode::Bar},
                                 {"plain", ProgressMode::Plain},
                                 {"json", ProgressMode::Json},
                                 {"none", ProgressMode::None}},
                                options.progress)
        ->type_name("MODE")
        ->group(outputGroup);
    addVerbosityOptions(command, options);
    command.add_option("--trace", options.trace, "Write a record of all that happens")
        ->type_name("FILE")
        ->group(outputGroup);
}

void addPluginOptions(CLI::App& command, PluginOptions& options)
{
    command
        .add_option("--plugin", options.plugin,
                    "The device plugin, or the folder that holds it; default: the one "
                    "installed with this program")
        ->type_name("FILE|FOLDER")
        ->group(connectionGroup);
}

void addPaceOptions(CLI::App& command, Pace& pace)
{
    command
        .add_option("--rate", pace.bytesPerSecond,
                    "Bytes a second to send; 3125 is a DIN MIDI wire, 0 as fast as the port "
                    "takes them")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(qint64(0), highestRate).description(""))
        ->group(connectionGroup);
    command
        .add_option_function<int>(
            "--gap", [&pace](int ms) { pace.gap = ms * microsecondsPerMillisecond; },
            "Pause after each message, in milliseconds")
        ->type_name("MS")
        ->default_str("0")
        ->check(CLI::Range(0, longestGapMs).description(""))
        ->group(connectionGroup);
}

void addFaultOption(CLI::App& command, std::vector<std::string>& faults)
{
    command
        .add_option("--fault", faults,
                    "Make the simulated product misbehave; may be given several times; "
                    "'hxhost simulate --help' lists the faults")
        ->type_name("FAULT")
        ->allow_extra_args(false)
        ->check(isFault)
        ->group(connectionGroup);
}

FaultPlan faultPlan(const std::vector<std::string>& faults)
{
    FaultPlan plan;
    QString error;
    for (const std::string& text : faults) {
        if (const auto fault = parseFault(QString::fromStdString(text), &error))
            plan << *fault;
    }
    return plan;
}

void addListenOptions(CLI::App& command, ConnectionOptions& options)
{
    addPluginOptions(command, options.plugin);
    command
        .add_option("--port", options.port,
                    "Port that bytes come from: a name, a part of one, BACKEND:NAME, simulator or "
                    "replay:TRACEFILE; default: the name that the plugin gives")
        ->type_name("NAME")
        ->group(connectionGroup);
    addFaultOption(command, options.faults);
}

void addConnectionOptions(CLI::App& command, ConnectionOptions& options)
{
    addPluginOptions(command, options.plugin);
    command
        .add_option("--port", options.port,
                    "MIDI port: a name, a part of one, BACKEND:NAME, simulator[:STATEFILE] or "
                    "replay:TRACEFILE; default: the name that the plugin gives")
        ->type_name("NAME")
        ->group(connectionGroup);
    command
        .add_option("--in-port", options.inPort,
                    "The port that answers come from, where it cannot be told from --port")
        ->type_name("NAME")
        ->group(connectionGroup);
    addPaceOptions(command, options.pace);
    addFaultOption(command, options.faults);
}

} // namespace hx
