#include "apps/commandline/FileSizeLimit.h"
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"

#include <QCoreApplication>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

// A closed standard stream's number would go to the next file that is opened, a trace or a port,
// and what is meant for the stream would be written into that. Read-only, so that writing fails.
void holdClosedStreams()
{
#ifdef Q_OS_UNIX
    for (int opened = 0; opened >= 0 && opened <= STDERR_FILENO;) {
        opened = open("/dev/null", O_RDONLY);
        if (opened > STDERR_FILENO)
            close(opened);
    }
#endif
}

} // namespace

int main(int argc, char** argv)
{
    holdClosedStreams();
    hx::outliveFileSizeLimit();
    const QCoreApplication application(argc, argv);
    hx::host::CommandLine line;
    hx::host::addAllCommands(line);
    return line.run(argc, argv);
}
