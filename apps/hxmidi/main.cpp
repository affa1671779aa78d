#include "apps/commandline/FileSizeLimit.h"
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"

#include <QFile>

namespace {

// Without a buffer of its own, so that a write that fails is known to have failed.
void openStream(QFile& file, int descriptor, QIODevice::OpenMode mode)
{
    file.open(descriptor, mode | QIODevice::Unbuffered);
}

} // namespace

int main(int argc, char** argv)
{
    hx::outliveFileSizeLimit();
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
