#include "apps/hxhost/commands/Commands.h"

namespace hx::host {

void addAllCommands(CommandLine& line)
{
    addPortsCommand(line);
    addIdentifyCommand(line);
    addInfoCommand(line);
    addUpdateCommand(line);
    addBatchCommand(line);
    addVerifyCommand(line);
    addRecoverCommand(line);
    addImageCommands(line);
    addInspectCommand(line);
    addCheckCommand(line);
    addMonitorCommand(line);
    addTraceCommand(line);
    addSimulateCommand(line);
    addSupportCommand(line);
}

} // namespace hx::host
