// hxmidi hash: the content hash of the bytes.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"

#include <memory>

namespace hx::midi {

namespace {

void hash(const InputOptions& options, Outcome& outcome)
{
    const HxMidiData data = readInput(options, outcome);
    const QString hash =
        QString::number(data.hash(), 16).rightJustified(16, QLatin1Char('0')).toUpper();
    outcome.text = hash.toLatin1() + '\n';
    outcome.result = [=] {
        return QJsonObject{{QStringLiteral("hash"), hash},
                           {QStringLiteral("size"), data.bytes.size()}};
    };
}

} // namespace

void addHashCommand(CommandLine& line)
{
    const auto options = std::make_shared<InputOptions>();
    const Command command =
        line.add("hash", "Print the 64-bit content hash of the bytes in hexadecimal");
    addInputOptions(command, *options);
    line.setRun(command, [options](Outcome& outcome) { hash(*options, outcome); });
}

} // namespace hx::midi
