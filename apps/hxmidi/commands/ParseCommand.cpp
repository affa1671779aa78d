// hxmidi parse: the bytes of hex text, and what is universal about them in words.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"
#include "apps/hxmidi/input/MessageList.h"
#include "qt/Saturated.h"

#include <memory>

namespace hx::midi {

namespace {

QString textOf(const PlacedMessage& message)
{
    if (message.meaning.words.isEmpty())
        return QString();
    QString text =
        QStringLiteral("at %1: %2\n").arg(QString::number(message.at), message.meaning.words);
    for (const QString& part : message.meaning.parts)
        text += QStringLiteral("  ") + part + QLatin1Char('\n');
    return text;
}

void parse(const InputOptions& options, Outcome& outcome)
{
    const HxMidiData data = readInput(options, outcome);
    if (outcome.findings.hasErrors())
        return;
    const QList<PlacedMessage> messages = messagesOf(data);
    outcome.text = data.toString(' ', -1).toLatin1() + '\n';
    for (const PlacedMessage& message : messages)
        outcome.text += textOf(message).toUtf8();
    outcome.result = [=] {
        return QJsonObject{{QStringLiteral("bytes"), data.toString(' ', -1)},
                           {QStringLiteral("size"), data.bytes.size()},
                           {QStringLiteral("messages"), toJson(messages)}};
    };
    outcome.rows = saturated(messages.size());
}

} // namespace

void addParseCommand(CommandLine& line)
{
    const auto options = std::make_shared<InputOptions>();
    const Command command =
        line.add("parse", "Show the bytes of the data, and what its SysEx messages are");
    addInputOptions(command, *options);
    line.setRun(command, [options](Outcome& outcome) { parse(*options, outcome); });
}

} // namespace hx::midi
