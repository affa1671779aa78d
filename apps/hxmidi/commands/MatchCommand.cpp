// hxmidi match: whether, and where, a pattern fits.
#include "apps/hxmidi/commands/CommandLine.h"
#include "apps/hxmidi/commands/Commands.h"
#include "apps/hxmidi/commands/InputArguments.h"
#include "apps/hxmidi/findings/MatchPlace.h"
#include "apps/hxmidi/findings/PatternFindings.h"
#include "apps/hxmidi/findings/TimeLimit.h"
#include "apps/hxmidi/input/MessageList.h"
#include "qt/Saturated.h"

#include <memory>

namespace hx::midi {

namespace {

struct MatchOptions {
    InputOptions input;
    std::string pattern;
    bool atStart = false;
    bool each = false;
    bool quiet = false;
};

struct Match {
    int at; // index of the piece in the data
    HxMidiData data;
    MatchPlace place;
};

QString bytesOf(const Match& match)
{
    return HxMidiData(match.data.mid(match.place.firstByte(), match.place.byteCount()))
        .toString(' ', -1);
}

void warnOfHalfByte(const Match& match, Findings& findings)
{
    if (match.place.isHalfByteOff())
        findings.warning(QStringLiteral("the match begins in the middle of byte %1")
                             .arg(match.at + match.place.firstByte()),
                         QStringLiteral("give --start to tie the pattern to the first byte"));
}

QList<Match> matchesIn(const QList<PlacedMessage>& pieces, const MatchOptions& options)
{
    const QByteArray pattern = QByteArray::fromStdString(options.pattern);
    QList<Match> matches;
    for (const PlacedMessage& piece : pieces) {
        const auto place = findMatch(piece.data, pattern, options.atStart);
        if (place)
            matches += Match{piece.at, piece.data, *place};
    }
    return matches;
}

void explainFailure(const HxMidiData& data, const MatchOptions& options, Findings& findings)
{
    const SourceText pattern{QString(), QByteArray::fromStdString(options.pattern)};
    const auto word = firstFailingWord(data, pattern.text, options.atStart);
    if (word)
        findings.add({Severity::Note,
                      word->at == 0
                          ? QStringLiteral("the first word of the pattern does not fit")
                          : QStringLiteral("this word does not fit; the pattern before it does"),
                      QString(), QString(), Place{pattern, *word}});
}

QByteArray textOf(const QList<Match>& matches, bool each)
{
    QByteArray text;
    for (const Match& match : matches)
        text += each ? match.data.toString(' ', -1).toLatin1() + '\n'
                     : QStringLiteral("match at byte %1: %2")
                               .arg(QString::number(match.place.firstByte()), bytesOf(match))
                               .trimmed()
                               .toLatin1() +
                           '\n';
    return text;
}

QJsonObject toJson(const QList<Match>& matches)
{
    QJsonArray array;
    for (const Match& match : matches)
        array.append(QJsonObject{{QStringLiteral("at"), match.at + match.place.firstByte()},
                                 {QStringLiteral("halfByte"), match.place.isHalfByteOff()},
                                 {QStringLiteral("matched"), bytesOf(match)},
                                 {QStringLiteral("bytes"), match.data.toString(' ', -1)}});
    return {{QStringLiteral("matches"), array}};
}

void run(const MatchOptions& options, Outcome& outcome)
{
    const SourceText pattern{QString(), QByteArray::fromStdString(options.pattern)};
    const auto check = [&pattern] {
        Findings ignored;
        checkPattern(pattern, ignored);
    };
    const bool usable =
        !refusesTime(pattern, check, outcome.findings) && checkPattern(pattern, outcome.findings);
    const HxMidiData data = readInput(options.input, outcome);
    if (!usable || outcome.findings.hasErrors())
        return;
    const QList<PlacedMessage> pieces =
        options.each ? messagesOf(data) : QList<PlacedMessage>{{0, data, MessageMeaning()}};
    const auto judge = [&] {
        Findings ignored;
        if (matchesIn(pieces, options).isEmpty())
            explainFailure(data, options, ignored);
    };
    if (refusesTime(pattern, judge, outcome.findings))
        return;
    const QList<Match> matches = matchesIn(pieces, options);
    for (const Match& match : matches)
        warnOfHalfByte(match, outcome.findings);
    if (matches.isEmpty() && !options.each && !options.quiet)
        explainFailure(data, options, outcome.findings);
    outcome.code = matches.isEmpty() ? ExitCode::Different : ExitCode::Success;
    if (!options.quiet)
        outcome.text = textOf(matches, options.each);
    outcome.rows = saturated(matches.size());
    outcome.result = [=] { return toJson(matches); };
}

} // namespace

void addMatchCommand(CommandLine& line)
{
    const auto options = std::make_shared<MatchOptions>();
    const Command command =
        line.add("match", "Look for a pattern; exit with 1 when it does not fit");
    command.addOption("PATTERN", options->pattern, "A pattern in one word: 'F0 7E .. 06 02'")
        .required()
        .valueName("");
    addInputOptions(command, options->input);
    command.addFlag("-s,--start", options->atStart, "The pattern must fit from the first byte on");
    command.addFlag("-e,--each", options->each,
                    "Match each message by itself and print those that fit");
    command.addFlag("-q,--quiet", options->quiet,
                    "Print nothing but errors and warnings; exit with 0 or 1");
    line.setRun(command, [options](Outcome& outcome) { run(*options, outcome); });
}

} // namespace hx::midi
