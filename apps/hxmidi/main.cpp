#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"

#include <QFile>

#include <csignal>

namespace {

// Without a buffer of its own, so that a write that fails is known to have failed.
void openStream(QFile& file, int descriptor, QIODevice::OpenMode mode)
{
    file.open(descriptor, mode | QIODevice::Unbuffered);
}

// A file that reaches the limit on its size is a full disk, not the end by a signal.
void outliveFileLimits()
{
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

} // namespace

int main(int argc, char** argv)
{
    outliveFileLimits();
    QFile input;
    QFile output;
    QFile errors;
    openStream(input, 0, QIODevice::ReadOnly);
    openStream(output, 1, QIODevice::WriteOnly);
    openStream(errors, 2, QIODevice::WriteOnly);
    hx::midi::CommandLine line({input, output, errors});
    hx::midi::addAllCommands(line);
    return line.run(argc, argv);
}
