// The command line as a whole: the commands it knows, and the one that was chosen.
#pragma once

#include "apps/commandline/CommandParser.h"
#include "apps/hxhost/commands/Options.h"
#include "apps/hxhost/report/Report.h"
#include "apps/hxhost/session/Recorder.h"

#include <functional>

namespace hx {

// What a command works with. Results and the problem go to `report`; what happens meanwhile to
// `console` and `recorder`.
struct CommandContext {
    const OutputOptions& output;
    Report& report;
    Console& console;
    Recorder& recorder;

    // What was done, when all was done, for a problem that concerns its record alone.
    QString success;

    // Set when a replayed trace was left: whatever the command made of that, this is its problem.
    std::optional<Problem> replayProblem;

    // Set when the command has written a file to standard output: nothing else may go there.
    bool isOutputTaken = false;

    void fail(ExitCode code, const QString& what, const QString& expected, const QString& next)
    {
        report.fail({code, what, expected, next});
    }

    QString traceName() const;
    void failTrace(const QString& error);

    // Puts the trace into its file, if one is recorded; false, with the problem in the report, when
    // that cannot be done.
    bool startTrace();

    // Warns on stderr and in the JSON document.
    void warn(const QString& text)
    {
        report.warn(text);
        if (!output.isDocumentEnough())
            console.warning(text);
    }
};

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
    Problem usageProblem(const ParseResult& parsed) const;
    void printResult(const Command& command, CommandContext& context);

    CommandParser m_parser;
    OutputOptions m_output;
    std::map<std::string, Run> m_runs; // by the full name of the command
    QString m_words;                   // the whole command line, as it was typed
};

} // namespace hx
