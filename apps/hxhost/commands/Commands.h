// The commands of this program; each lives in the file of its name.
#pragma once

namespace hx {
class Command;
}

namespace hx::host {

class CommandLine;
struct CommandContext;
struct ConnectionOptions;
struct PluginOptions;

void addInspectCommand(CommandLine& line);
void addCheckCommand(CommandLine& line);
void addIdentifyCommand(CommandLine& line);
void addInfoCommand(CommandLine& line);
void addUpdateCommand(CommandLine& line);
void addBatchCommand(CommandLine& line);
void addVerifyCommand(CommandLine& line);
void addRecoverCommand(CommandLine& line);
void addImageCommands(CommandLine& line);
void addPortsCommand(CommandLine& line);
void addMonitorCommand(CommandLine& line);
void addSimulateCommand(CommandLine& line);
void addSupportCommand(CommandLine& line);
void addTraceCommand(CommandLine& line);

// `image sign` and `image verify`, in the group of the images.
void addSignatureCommands(CommandLine& line, const Command& group);

void addAllCommands(CommandLine& line);

// What `ports`, `inspect` and `info` say, for a command that collects it.
void reportPorts(CommandContext& context, const PluginOptions& options);
void reportPlugin(CommandContext& context, const PluginOptions& options);
void reportProduct(CommandContext& context, const ConnectionOptions& options);

} // namespace hx::host
