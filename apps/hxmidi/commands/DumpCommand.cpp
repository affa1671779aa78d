// hxmidi dump: a table of the bytes with their offsets.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"

#include <memory>

namespace hx::midi {

namespace {

struct DumpOptions {
    InputOptions input;
    int columns = 16;
    int length = -1;
};

void run(const DumpOptions& options, Outcome& outcome)
{
    const HxMidiData data = readInput(options.input, outcome);
    outcome.text = data.toStringTable(options.length, options.columns).toLatin1() + '\n';
}

} // namespace

void addDumpCommand(CommandLine& line)
{
    const auto options = std::make_shared<DumpOptions>();
    const Command command =
        line.add("dump", "Show the bytes as a table with offsets", JsonForm::None);
    addInputOptions(command, options->input);
    command.addOption("--columns", options->columns, "Bytes to a row")
        .valueName("N")
        .showDefault()
        .range(1, mostInputBytes);
    command.addOption("--length", options->length, "Show only the first N bytes")
        .valueName("N")
        .range(0, mostInputBytes);
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi
