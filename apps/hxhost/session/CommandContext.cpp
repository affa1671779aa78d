#include "apps/hxhost/session/CommandContext.h"

#include "host/base/FileName.h"

namespace hx::host {

QString CommandContext::traceName() const
{
    return fileNameText(output.trace);
}

bool CommandContext::openTrace(const QString& title)
{
    return output.trace.empty() || isTraceGood(recorder.openTrace(traceName(), title));
}

bool CommandContext::startTrace()
{
    return isTraceGood(recorder.startTrace());
}

bool CommandContext::isTraceGood(const Result<>& result)
{
    if (!result)
        fail(ExitCode::FileError,
             QStringLiteral("the trace \"%1\" cannot be written: %2")
                 .arg(traceName(), result.problem().what),
             QStringLiteral("a file name in a folder that may be written to"),
             QStringLiteral("give another name with --trace"));
    return bool(result);
}

} // namespace hx::host
