// hxmidi diff: where two buffers differ.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"
#include "qt/Saturated.h"

#include <QJsonArray>

#include <algorithm>
#include <memory>

namespace hx::midi {

namespace {

struct DiffOptions {
    InputOptions form;
    std::string first;
    std::string second;
    int offset = 0;
    int count = -1; // all
    bool tolerant = false;
};

HxMidiData readOne(const DiffOptions& options, const std::string& word, Outcome& outcome)
{
    InputOptions input = options.form;
    input.words = {word};
    return readInput(input, outcome);
}

// The range that is asked for, made explicit and inside both buffers.
struct Range {
    int offset;
    int count;
};

Range rangeOf(const DiffOptions& options, int smaller, Findings& findings)
{
    const int rest = smaller - options.offset;
    if (rest >= 0 && options.count <= rest)
        return {options.offset, options.count < 0 ? rest : options.count};
    findings.error(QStringLiteral("the smaller of the two has only %1 bytes").arg(smaller),
                   QStringLiteral("an --offset and a --count within both"),
                   QStringLiteral("correct them"));
    return {0, 0};
}

QStringList linesOf(const HxMidiData& a, const HxMidiData& b, Range range)
{
    QStringList lines;
    if (range.count > 0)
        lines = a.diff(b, range.count, range.offset);
    else if (a.bytes.size() != b.bytes.size())
        lines = a.diff(b, 1, 0).mid(0, 1); // the line about the sizes
    return lines;
}

QJsonArray differencesOf(const HxMidiData& a, const HxMidiData& b, Range range)
{
    QJsonArray array;
    if (range.count == 0)
        return array;
    const QMap<unsigned int, unsigned char> others = a.diffToMap(b, {range.offset, range.count});
    for (auto it = others.begin(); it != others.end(); ++it)
        array.append(QJsonObject{
            {QStringLiteral("at"), int(it.key())},
            {QStringLiteral("first"), static_cast<unsigned char>(a.bytes.at(int(it.key())))},
            {QStringLiteral("second"), it.value()}});
    return array;
}

void run(const DiffOptions& options, Outcome& outcome)
{
    const HxMidiData a = readOne(options, options.first, outcome);
    const HxMidiData b = readOne(options, options.second, outcome);
    const Range range =
        rangeOf(options, saturated(std::min(a.bytes.size(), b.bytes.size())), outcome.findings);
    if (outcome.findings.hasErrors())
        return;
    const QStringList lines = linesOf(a, b, range);
    const bool same = options.tolerant ? a.isSame(b) : lines.isEmpty();
    for (const QString& line : lines)
        outcome.text += line.toLatin1() + '\n';
    outcome.code = same ? ExitCode::Success : ExitCode::Different;
    outcome.rows = saturated(lines.size());
    outcome.result = [=] {
        return QJsonObject{{QStringLiteral("same"), same},
                           {QStringLiteral("firstSize"), a.bytes.size()},
                           {QStringLiteral("secondSize"), b.bytes.size()},
                           {QStringLiteral("differences"), differencesOf(a, b, range)}};
    };
}

void addRangeOptions(const Command& command, DiffOptions& options)
{
    const Option offset =
        command.addOption("--offset", options.offset, "Index of the first byte to compare")
            .valueName("INDEX")
            .showDefault()
            .range(0, mostInputBytes);
    const Option count =
        command.addOption("--count", options.count, "Compare N bytes; default: all that follow")
            .valueName("N")
            .range(1, mostInputBytes);
    command
        .addFlag("--tolerant", options.tolerant,
                 "Compare as the device's data, within its tolerances")
        .excludes(offset)
        .excludes(count);
}

} // namespace

void addDiffCommand(CommandLine& line)
{
    const auto options = std::make_shared<DiffOptions>();
    const Command command = line.add("diff", "List the bytes in which two buffers differ");
    command.addOption("FIRST", options->first, "Hex text in one word, @FILE or @-")
        .required()
        .valueName("");
    command.addOption("SECOND", options->second, "The same").required().valueName("");
    addInputFormOptions(command, options->form);
    addRangeOptions(command, *options);
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi
