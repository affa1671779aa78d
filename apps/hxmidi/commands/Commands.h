// The commands of this program; each lives in the file of its name.
#pragma once

namespace hx::midi {

class CommandLine;

void addParseCommand(CommandLine& line);
void addBuildCommand(CommandLine& line);
void addMatchCommand(CommandLine& line);
void addDiffCommand(CommandLine& line);
void addDumpCommand(CommandLine& line);
void addSplitCommand(CommandLine& line);
void addFieldsCommand(CommandLine& line);
void addSumCommand(CommandLine& line);
void addHashCommand(CommandLine& line);
void addConvertCommand(CommandLine& line);

void addAllCommands(CommandLine& line);

} // namespace hx::midi
