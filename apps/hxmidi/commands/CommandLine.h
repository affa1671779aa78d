// The command line as a whole: the commands it knows, the one that was chosen, what is printed.
#pragma once

#include "apps/commandline/CommandParser.h"
#include "apps/hxmidi/findings/Outcome.h"
#include "apps/hxmidi/input/Streams.h"

#include <functional>
#include <string>
#include <vector>

namespace hx::midi {

enum class JsonForm { Available, None };

class CommandLine {
public:
    using Run = std::function<void(Outcome&)>;

    explicit CommandLine(const Streams& streams);

    // Adds a command with the options that all have.
    Command add(const std::string& name, const std::string& description,
                JsonForm json = JsonForm::Available);

    // What the help of `command` says below its options, before the exit codes.
    void explain(const Command& command, const std::string& text);

    // What to do when `command` was chosen.
    void setRun(const Command& command, const Run& run);

    // Parses, runs, prints, and returns the exit code.
    int run(int argc, const char* const* argv);

private:
    int help(const std::string& text);
    int refuse(const ParseResult& parsed);
    int refuse(const QString& what, const QString& expected);
    int finish(Outcome& outcome);
    bool print(const Outcome& outcome);

    Streams m_streams;
    CommandParser m_parser;
    bool m_json = false;
    bool m_strict = false;
    std::string m_name; // of the command chosen
    std::map<std::string, Run> m_runs;
};

} // namespace hx::midi
