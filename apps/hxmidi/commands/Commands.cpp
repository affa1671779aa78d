#include "apps/hxmidi/commands/Commands.h"

namespace hx::midi {

void addAllCommands(CommandLine& line)
{
    addParseCommand(line);
    addBuildCommand(line);
    addMatchCommand(line);
    addDiffCommand(line);
    addDumpCommand(line);
    addSplitCommand(line);
    addFieldsCommand(line);
    addSumCommand(line);
    addHashCommand(line);
    addConvertCommand(line);
}

} // namespace hx::midi
