// hxhost check: holds a plugin to the contract, rule by rule.
#include "apps/hxhost/commands/CommandLine.h"
#include "apps/hxhost/commands/Commands.h"
#include "apps/hxhost/commands/ImageReport.h"
#include "apps/hxhost/report/StandardStreams.h"
#include "apps/hxhost/session/PluginPlace.h"
#include "contract/ContractCheck.h"

#include "host/base/FileName.h"
#include "host/image/ImageFile.h"

#include <algorithm>

namespace hx::host {

namespace {

struct CheckOptions {
    PluginOptions plugin;
    std::string image; // empty: one is made up
};

QJsonObject ruleRow(const RuleResult& result)
{
    return {{"rule", result.rule},
            {"state", ruleStateWord(result.state())},
            {"demand", result.demand},
            {"finding", result.finding()}};
}

// People read what was found; of a rule that holds, what it asks.
QJsonObject shownRow(const RuleResult& result)
{
    QJsonObject row = ruleRow(result);
    row["what"] = result.state() == RuleState::Passed ? result.demand : result.finding();
    return row;
}

int countOf(const std::vector<RuleResult>& results, RuleState state)
{
    return int(std::count_if(results.begin(), results.end(), [state](const RuleResult& result) {
        return result.state() == state;
    }));
}

void addResults(Report& report, const std::vector<RuleResult>& results)
{
    QJsonArray rows;
    QJsonArray shown;
    for (const RuleResult& result : results) {
        rows << ruleRow(result);
        shown << shownRow(result);
    }
    report.addTable(QStringLiteral("rules"),
                    {QStringLiteral("state"), QStringLiteral("rule"), QStringLiteral("what")}, rows,
                    shown);
    for (const RuleState state :
         {RuleState::Passed, RuleState::Quirk, RuleState::Failed, RuleState::Skipped})
        report.add(QStringLiteral("summary.") + ruleStateWord(state), countOf(results, state));
}

const QString wholePlugin = QStringLiteral("a plugin that keeps all rules");
const QString whereToRead =
    QStringLiteral("see docs/developer/writing-a-plugin.md for what hosts rely on");

void failOnBrokenRules(CommandContext& context, const ContractFinding& finding)
{
    QStringList broken;
    for (const RuleResult& result : finding.results) {
        if (result.state() == RuleState::Failed)
            broken << result.rule;
    }
    if (broken.isEmpty())
        return;
    const QString crash =
        finding.crash.isEmpty() ? QString() : QStringLiteral("; in the last one ") + finding.crash;
    context.fail(ExitCode::ContractBroken,
                 QStringLiteral("the plugin breaks %1 of %2 rules: %3%4")
                     .arg(broken.size())
                     .arg(finding.results.size())
                     .arg(broken.join(QStringLiteral(", ")), crash),
                 wholePlugin, whereToRead);
}

// False, with the problem in the report, when the file holds no messages that can be read.
bool takeMessages(CommandContext& context, const std::string& path, QList<HxMidiData>* messages)
{
    if (path.empty())
        return true;
    const QString name = fileNameText(path);
    const Result<QByteArray> content = readInput(name, maxImageFileBytes);
    if (!content) {
        context.fail(
            ExitCode::FileError,
            QStringLiteral("the image \"%1\" cannot be read: %2").arg(name, content.problem().what),
            QStringLiteral("whole SysEx messages as raw bytes, hex text or a MIDI file"),
            QStringLiteral("give another file with --image, or none"));
        return false;
    }
    const ImageFile file = parseImageFile(*content);
    for (const FileMessage& message : file.messages)
        messages->append(message.data);
    if (file.problems.empty() && !messages->isEmpty())
        return true;
    if (failForeign(context, name, file.format))
        return false;
    context.fail(ExitCode::ImageRefused,
                 QStringLiteral("the image \"%1\" cannot be used: %2")
                     .arg(name, file.problems.empty() ? QStringLiteral("it holds no SysEx message")
                                                      : imageProblemLine(file.problems.front())),
                 QStringLiteral("whole SysEx messages as raw bytes, hex text or a MIDI file"),
                 QStringLiteral("give another file with --image, or none"));
    return false;
}

void check(CommandContext& context, const CheckOptions& options)
{
    QList<HxMidiData> image;
    if (!takeMessages(context, options.image, &image))
        return;
    const QString place = pluginPlace(options.plugin);
    const ContractFinding finding = checkContract(place, image, [&context](const char* rule) {
        context.console.detail(QStringLiteral("rule ") + QLatin1String(rule));
    });
    if (!finding.loadProblem.what.isEmpty())
        return failWithoutPlugin(context, finding.loadProblem);
    if (!finding.otherHead.isEmpty())
        return context.fail(
            ExitCode::WrongProduct,
            QStringLiteral("the image \"%1\" is for another product: its messages begin with %2")
                .arg(fileNameText(options.image), finding.otherHead),
            QStringLiteral("an update image of the product that the plugin serves"),
            QStringLiteral("give another file with --image, or none"));
    if (finding.results.empty())
        return context.fail(
            ExitCode::ContractBroken,
            QStringLiteral("the plugin at %1 cannot be loaded: %2").arg(place, finding.crash),
            wholePlugin, whereToRead);
    context.report.add(QStringLiteral("plugin.file"), finding.filePath);
    context.report.add(QStringLiteral("plugin.className"), finding.className);
    addResults(context.report, finding.results);
    failOnBrokenRules(context, finding);
}

} // namespace

void addCheckCommand(CommandLine& line)
{
    auto options = std::make_shared<CheckOptions>();
    const Command command =
        line.add("check", "Check that a plugin keeps the contract with its hosts, rule by rule");
    command.addOption("PLUGIN", options->plugin.plugin,
                      "The device plugin, or the folder that holds it; default: the one "
                      "installed with this program");
    command
        .addOption("--image", options->image,
                   "An update image of the product; needed when its images have another form "
                   "than usual")
        .valueName("FILE");
    line.setRun(command, [options](CommandContext& context) { check(context, *options); });
}

} // namespace hx::host
