// The command line as a whole: the commands it knows, and the one that was chosen.
#pragma once

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

    // Adds a command under `parent` (or at the top) with the output options of every command.
    CLI::App* add(const std::string& name, const std::string& description);
    CLI::App* addTo(CLI::App* parent, const std::string& name, const std::string& description);

    // A command that only groups others.
    CLI::App* addGroup(const std::string& name, const std::string& description);

    // What to do when `command` was chosen.
    void setRun(CLI::App* command, const Run& run);

    // Parses, runs, prints, and returns the exit code.
    int run(int argc, char** argv);

private:
    int runChosen();
    void runGuarded(CommandContext& context);
    int finish(CommandContext& context);
    int showHelp(const CLI::ParseError& request);
    int refuse(const CLI::ParseError& error, int argc, char** argv);
    void printResult(CommandContext& context);

    CLI::App m_app;
    OutputOptions m_output;
    const CLI::App* m_chosen = nullptr;
    QString m_words; // the whole command line, as it was typed
    Run m_run;
};

} // namespace hx
