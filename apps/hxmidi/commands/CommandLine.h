// The command line as a whole: the commands it knows, the one that was chosen, what is printed.
#pragma once

#include "apps/hxmidi/findings/Outcome.h"
#include "apps/hxmidi/input/Streams.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace hx {

enum class JsonForm { Available, None };

class CommandLine {
public:
    using Run = std::function<void(Outcome&)>;

    explicit CommandLine(const Streams& streams);

    // Adds a command with the options that all have.
    CLI::App* add(const std::string& name, const std::string& description,
                  JsonForm json = JsonForm::Available);

    // What the help of `command` says below its options, before the exit codes.
    void explain(CLI::App* command, const std::string& text);

    // What to do when `command` was chosen.
    void setRun(CLI::App* command, const Run& run);

    // Parses, runs, prints, and returns the exit code.
    int run(int argc, const char* const* argv);

private:
    int help(const CLI::Success& request);
    int refuse(const QString& what, const QString& expected);
    int finish(Outcome& outcome);
    bool print(const Outcome& outcome);

    Streams m_streams;
    CLI::App m_app;
    bool m_json = false;
    bool m_strict = false;
    std::string m_name; // of the command chosen
    Run m_run;
};

// Adds a positional argument that takes any number of words exactly as they are typed.
CLI::Option* addWords(CLI::App& command, const std::string& name, std::vector<std::string>& words,
                      const std::string& description);

// Adds a positional argument of one word, which must be there and may be empty.
CLI::Option* addWord(CLI::App& command, const std::string& name, std::string& word,
                     const std::string& description);

} // namespace hx
