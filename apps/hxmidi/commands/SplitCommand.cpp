// hxmidi split: messages or equal pieces, one a line.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"
#include "apps/hxmidi/input/MessageList.h"
#include "qt/Saturated.h"

#include <memory>

namespace hx::midi {

namespace {

struct SplitOptions {
    InputOptions input;
    int size = 0; // 0: into messages
};

bool isStatus(const HxMidiData& piece)
{
    return !piece.bytes.isEmpty() && (piece.bytes.at(0) & 0x80) != 0;
}

bool isRealTime(const HxMidiData& piece)
{
    return !piece.bytes.isEmpty() && static_cast<unsigned char>(piece.bytes.at(0)) >= 0xF8;
}

void warnOfPiece(const PlacedMessage& message, Findings& findings)
{
    const QString at = QString::number(message.at);
    if (!isStatus(message.data))
        findings.warning(QStringLiteral("the piece at %1 has no status byte").arg(at),
                         QStringLiteral("look for bytes that were lost, or for a second F7"));
    else if (isRealTime(message.data) && message.data.bytes.size() > 1)
        findings.warning(
            QStringLiteral("a real-time byte cuts the message before %1 in two").arg(at),
            QStringLiteral("take bytes F8 to FF out of the stream first"));
}

QList<PlacedMessage> equalPieces(const HxMidiData& data, int size, Findings& findings)
{
    QList<PlacedMessage> pieces;
    for (const HxMidiData& piece : data.split(size))
        pieces += PlacedMessage{saturated(pieces.size()) * size, piece, MessageMeaning()};
    if (pieces.isEmpty() && !data.bytes.isEmpty())
        findings.warning(
            QStringLiteral("there are no pieces: the data has %1 bytes, no more than one piece")
                .arg(data.bytes.size()),
            QStringLiteral("take the data as it is, or give a smaller --size"));
    return pieces;
}

void run(const SplitOptions& options, Outcome& outcome)
{
    const HxMidiData data = readInput(options.input, outcome);
    if (outcome.findings.hasErrors())
        return;
    const QList<PlacedMessage> pieces =
        options.size > 0 ? equalPieces(data, options.size, outcome.findings) : messagesOf(data);
    for (const PlacedMessage& piece : pieces) {
        if (options.size == 0)
            warnOfPiece(piece, outcome.findings);
        outcome.text += piece.data.toString(' ', -1).toLatin1() + '\n';
    }
    outcome.result = [=] { return QJsonObject{{QStringLiteral("pieces"), toJson(pieces)}}; };
    outcome.rows = saturated(pieces.size());
}

} // namespace

void addSplitCommand(CommandLine& line)
{
    const auto options = std::make_shared<SplitOptions>();
    const Command command = line.add("split", "Cut data into its messages, or into equal pieces");
    addInputOptions(command, options->input);
    const Option size =
        command
            .addOption("--size", options->size,
                       "Cut into pieces of N bytes, of which the last may be shorter")
            .valueName("N")
            .range(1, mostInputBytes);
    command
        .addFlag("--status",
                 "Cut before a status byte, and after an F7 that ends a piece (default)")
        .excludes(size);
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi
