// The command line as a whole: the commands it knows, and the one that was chosen.
#pragma once

#include "apps/commandline/CommandParser.h"
#include "apps/hxhost/commands/Options.h"
#include "apps/hxhost/session/CommandContext.h"

#include <functional>

namespace hx::host {

class CommandLine {
public:
    using Run = std::function<void(CommandContext&)>;

    CommandLine();

    // Adds a command at the top or under `parent`, with the output options of every command.
    Command add(const std::string& name, const std::string& description);
    Command addTo(const Command& parent, const std::string& name, const std::string& description);

    // A command that only groups others.
    Command addGroup(const std::string& name, const std::string& description);

    // What to do when `command` was chosen.
    void setRun(const Command& command, const Run& run);

    // Parses, runs, prints, and returns the exit code.
    int run(int argc, char** argv);

private:
    int runChosen(const Command& command);
    void runGuarded(const Command& command, CommandContext& context);
    int finish(const Command& command, CommandContext& context);
    int showHelp(const std::string& text);
    int refuse(const ParseResult& parsed, int argc, char** argv);
    QString chosenName() const;
    Problem usageProblem(const ParseResult& parsed) const;
    void printResult(const Command& command, CommandContext& context);

    CommandParser m_parser;
    OutputOptions m_output;
    std::map<std::string, Run> m_runs; // by the full name of the command
    QString m_words;                   // the whole command line, as it was typed
};

} // namespace hx::host
