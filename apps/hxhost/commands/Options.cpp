#include "apps/hxhost/commands/Options.h"

#include <algorithm>

namespace hx::host {

namespace {

constexpr char connectionGroup[] = "Connection";
constexpr int longestGapMs = 60000;
constexpr qint64 highestRate = 100000000;
constexpr int mostSeconds = 1000000000; // 31 years

void addVerbosityOptions(const Command& command, OutputOptions& options)
{
    command.addFlag("-q,--quiet", options.quiet, "Say nothing on stderr but errors")
        .group(outputGroup);
    command
        .addCount("-v,--verbose", options.verbose,
                  "Say what is decided and what the plugin logs; -vv shows every message's bytes")
        .group(outputGroup);
}

// Empty for a time that a command can run for, else what is wrong with it.
std::string isDuration(const std::string& text)
{
    bool isNumber = false;
    const double seconds = QString::fromStdString(text).toDouble(&isNumber);
    return isNumber && seconds > 0 && seconds <= mostSeconds
               ? std::string()
               : "\"" + text + "\" is not a time; expected seconds, more than 0, at most " +
                     std::to_string(mostSeconds);
}

// Empty for a fault that the simulated product knows, else what is wrong with it.
std::string isFault(const std::string& text)
{
    QString error;
    return sim::parseFault(QString::fromStdString(text), &error) ? std::string()
                                                                 : error.toStdString();
}

// Empty for a serial number of the simulated product, else what is wrong with it.
std::string isSerialNumber(const std::string& text)
{
    constexpr size_t length = 8;
    const bool isGood = text.size() == length && std::all_of(text.begin(), text.end(), [](char c) {
                            return c > ' ' && c < 0x7F;
                        });
    return isGood ? std::string()
                  : "\"" + text +
                        "\" is not a serial number; expected eight ASCII characters, no blanks";
}

} // namespace

void addOutputOptions(const Command& command, OutputOptions& options)
{
    command.addFlag("--json", options.json, "Print exactly one JSON document, errors included")
        .group(outputGroup);
    command
        .addOption("--field", options.field,
                   "Print only this value of the result; an empty line when the result lacks it")
        .valueName("NAME")
        .group(outputGroup);
    static const std::map<std::string, ProgressMode> modes = {{"auto", ProgressMode::Auto},
                                                              {"bar", ProgressMode::Bar},
                                                              {"plain", ProgressMode::Plain},
                                                              {"json", ProgressMode::Json},
                                                              {"none", ProgressMode::None}};
    command
        .addChoice("--progress", modes, options.progress,
                   "How progress is shown on stderr: auto (a bar on a terminal, else "
                   "plain lines), bar, plain, json or none")
        .group(outputGroup);
    addVerbosityOptions(command, options);
    command.addOption("--trace", options.trace, "Write a record of the session")
        .valueName("FILE")
        .group(outputGroup);
}

void addPluginOptions(const Command& command, PluginOptions& options)
{
    command
        .addOption("--plugin", options.plugin,
                   "The device plugin, or the folder that holds it; default: the one "
                   "installed with this program")
        .valueName("FILE|FOLDER")
        .group(connectionGroup);
}

void addImageArgument(const Command& command, std::string& image)
{
    command.addOption("IMAGE", image, "Update image: .syx, hex text or Standard MIDI File")
        .required();
}

void addPaceOptions(const Command& command, Pace& pace)
{
    command
        .addOption("--rate", pace.bytesPerSecond,
                   "Bytes a second to send; 3125 is a DIN MIDI wire, 0 as fast as the port "
                   "takes them")
        .valueName("N")
        .showDefault()
        .range(0, highestRate)
        .group(connectionGroup);
    command
        .addNumber(
            "--gap", [&pace](int ms) { pace.gap = ms * microsecondsPerMillisecond; },
            "Pause after each message, in milliseconds")
        .valueName("MS")
        .showDefault("0")
        .range(0, longestGapMs)
        .group(connectionGroup);
}

void addSecondsOption(const Command& command, double& seconds)
{
    command.addOption("--seconds", seconds, "Stop after this time; more than 0")
        .valueName("SECONDS")
        .check(isDuration);
}

void addSimulationOptions(const Command& command, SimulationOptions& options)
{
    command
        .addRepeated("--fault", options.faults,
                     "Make the simulated product misbehave; may be given several times; "
                     "'hxhost simulate --help' lists the faults")
        .valueName("FAULT")
        .check(isFault)
        .group(connectionGroup);
    command.addOption("--serial", options.serial, "Serial number of a new simulated product")
        .valueName("TEXT")
        .check(isSerialNumber)
        .group(connectionGroup);
}

void addListenOptions(const Command& command, ConnectionOptions& options)
{
    addPluginOptions(command, options.plugin);
    command
        .addOption("--port", options.port,
                   "Port that bytes come from: a name, a part of one, BACKEND:NAME, device:FILE, "
                   "simulator or replay:TRACEFILE; default: the name that the plugin gives")
        .valueName("NAME")
        .group(connectionGroup);
    addSimulationOptions(command, options.simulation);
}

void addSlowHostOption(const Command& command, bool& slowHost)
{
    command
        .addFlag("--slow-host", slowHost,
                 "Wait four times as long, and rest before asking again: for an operating system "
                 "or a driver that delivers late")
        .group(connectionGroup);
}

void addConnectionOptions(const Command& command, ConnectionOptions& options)
{
    addPluginOptions(command, options.plugin);
    command
        .addOption("--port", options.port,
                   "MIDI port: a name, a part of one, BACKEND:NAME, device:FILE, "
                   "simulator[:STATEFILE] or replay:TRACEFILE; default: the name that the plugin "
                   "gives")
        .valueName("NAME")
        .group(connectionGroup);
    command
        .addOption("--in-port", options.inPort,
                   "The port that answers come from; default: the one that belongs to --port; "
                   "if several could be it, each is asked")
        .valueName("NAME")
        .group(connectionGroup);
    addPaceOptions(command, options.pace);
    addSlowHostOption(command, options.slowHost);
    addSimulationOptions(command, options.simulation);
    command
        .addFlag("--stop-at-eof", options.stopsAtEof,
                 "Stop, as at Ctrl-C, when standard input ends: for a program that starts this one")
        .group(connectionGroup);
}

} // namespace hx::host
