#include "apps/hxhost/CommandLine.h"
#include "apps/hxhost/Commands.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    hx::CommandLine line;
    hx::addAllCommands(line);
    return line.run(argc, argv);
}
