// What a command works with, and where it puts what it has to say.
#pragma once

#include "apps/hxhost/report/Report.h"
#include "apps/hxhost/session/Recorder.h"
#include "apps/hxhost/session/Settings.h"

#include <optional>

namespace hx::host {

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

    // Records a trace, if one is asked for; false, with the problem in the report, when it cannot
    // be written.
    bool openTrace(const QString& title);

    // Puts the trace into its file, if one is recorded; false, with the problem in the report, when
    // that cannot be done.
    bool startTrace();

    bool isTraceGood(const Result<>& result);

    // Warns on stderr and in the JSON document.
    void warn(const QString& text)
    {
        report.warn(text);
        if (!output.isDocumentEnough())
            console.warning(text);
    }
};

} // namespace hx::host
