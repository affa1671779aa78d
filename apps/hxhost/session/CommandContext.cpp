#include "apps/hxhost/session/CommandContext.h"

#include "host/base/FileName.h"

namespace hx::host {

QString CommandContext::traceName() const
{
    return fileNameText(output.trace);
}

void CommandContext::failTrace(const QString& error)
{
    fail(ExitCode::FileError,
         QStringLiteral("the trace \"%1\" cannot be written: %2").arg(traceName(), error),
         QStringLiteral("a file name in a folder that may be written to"),
         QStringLiteral("give another name with --trace"));
}

bool CommandContext::startTrace()
{
    QString error;
    const bool isStarted = recorder.startTrace(&error);
    if (!isStarted)
        failTrace(error);
    return isStarted;
}

} // namespace hx::host
