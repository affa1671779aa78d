// The commands of this program; each lives in the file of its name.
#pragma once

namespace hx {

class CommandLine;

void addInspectCommand(CommandLine& line);
void addCheckCommand(CommandLine& line);
void addIdentifyCommand(CommandLine& line);
void addInfoCommand(CommandLine& line);
void addUpdateCommand(CommandLine& line);
void addVerifyCommand(CommandLine& line);
void addRecoverCommand(CommandLine& line);
void addImageCommands(CommandLine& line);
void addPortsCommand(CommandLine& line);
void addMonitorCommand(CommandLine& line);
void addSimulateCommand(CommandLine& line);
void addTraceCommand(CommandLine& line);

void addAllCommands(CommandLine& line);

} // namespace hx
