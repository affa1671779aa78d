// hxmidi sum: the checksums of a section.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"
#include "qt/Saturated.h"

#include <algorithm>
#include <map>
#include <memory>

namespace hx::midi {

namespace {

enum class SumKind { SevenBit, Complement, ThirtyTwoBit };

struct SumOptions {
    InputOptions input;
    SumKind kind = SumKind::SevenBit;
    int start = 0;
    int end = 0;
    bool hasEnd = false; // else to the end of the data
};

// The section's end as an index; a negative one counts from the end of the data.
int endOf(const SumOptions& options, int size)
{
    if (!options.hasEnd)
        return size;
    return options.end < 0 ? size + options.end : options.end;
}

bool isInside(const SumOptions& options, int size, Findings& findings)
{
    const int end = endOf(options, size);
    if (options.start <= end && end <= size)
        return true;
    findings.error(
        QStringLiteral("the section from %1 up to %2 is not inside the data of %3 bytes")
            .arg(QString::number(options.start), QString::number(end), QString::number(size)),
        QStringLiteral("a start and an end within the data"),
        QStringLiteral("correct --start or --end; a negative end counts from the end"));
    return false;
}

unsigned int sumOf(const HxMidiData& data, SumKind kind, int start, int end)
{
    if (kind == SumKind::ThirtyTwoBit)
        return data.sum32(static_cast<unsigned int>(start), end);
    const int sum = start < end ? data.sumOfSection(start, end - start) : 0;
    return static_cast<unsigned int>(kind == SumKind::SevenBit ? sum : -sum & 0x7F);
}

void run(const SumOptions& options, Outcome& outcome)
{
    const HxMidiData data = readInput(options.input, outcome);
    const int size = saturated(data.bytes.size());
    if (outcome.findings.hasErrors() || !isInside(options, size, outcome.findings))
        return;
    const int end = endOf(options, size);
    const unsigned int sum = sumOf(data, options.kind, options.start, end);
    const int digits = options.kind == SumKind::ThirtyTwoBit ? 8 : 2;
    outcome.text = QByteArray::number(sum, 16).toUpper().rightJustified(digits, '0') + '\n';
    outcome.result = [=] {
        return QJsonObject{{QStringLiteral("sum"), double(sum)},
                           {QStringLiteral("start"), options.start},
                           {QStringLiteral("end"), end}};
    };
}

void addSectionOptions(const Command& command, SumOptions& options)
{
    command.addOption("--start", options.start, "Index of the section's first byte")
        .valueName("INDEX")
        .showDefault()
        .range(0, mostInputBytes);
    command
        .addNumber(
            "--end",
            [&options](int end) {
                options.end = end;
                options.hasEnd = true;
            },
            "Index after its last byte; a negative one counts from the end of the data")
        .valueName("INDEX")
        .range(-mostInputBytes, mostInputBytes);
}

} // namespace

void addSumCommand(CommandLine& line)
{
    static const std::map<std::string, SumKind> kinds = {{"7bit", SumKind::SevenBit},
                                                         {"complement", SumKind::Complement},
                                                         {"32bit", SumKind::ThirtyTwoBit}};
    const auto options = std::make_shared<SumOptions>();
    const Command command = line.add("sum", "Print a checksum of a section in hexadecimal");
    addInputOptions(command, options->input);
    command.addChoice("--kind", kinds, options->kind,
                      "7bit: the sum modulo 128 (default); complement: what makes it 0 modulo 128; "
                      "32bit: the sum of whole bytes");
    addSectionOptions(command, *options);
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi
