// hxmidi dump: a table of the bytes with their offsets.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"

#include <memory>

namespace hx {

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
    CLI::App* command = line.add("dump", "Show the bytes as a table with offsets", JsonForm::None);
    addInputOptions(*command, options->input);
    command->add_option("--columns", options->columns, "Bytes to a row")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(1, mostInputBytes).description(""));
    command->add_option("--length", options->length, "Show only the first N bytes")
        ->type_name("N")
        ->check(CLI::Range(0, mostInputBytes).description(""));
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx
