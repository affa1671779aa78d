#include "contract/ContractCheck.h"

#include "contract/SeparateProcess.h"
#include "host/base/HexText.h"
#include "host/image/UpdateImage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace hx {

namespace {

// A rule takes milliseconds.
constexpr unsigned secondsForARule = 5;

std::vector<Rule> contractRules()
{
    std::vector<Rule> rules;
    for (const auto& family : {metadataRules(), identityRules(), dictionaryRules(), updateRules(),
                               replyRules(), destructionRules()})
        rules.insert(rules.end(), family.begin(), family.end());
    return rules;
}

RuleResult emptyResult(const Rule& rule)
{
    RuleResult result;
    result.rule = QString::fromLatin1(rule.name);
    result.demand = QString::fromLatin1(rule.demand);
    return result;
}

QByteArray packed(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray packedResult(const RuleResult& result)
{
    return packed({{"failures", QJsonArray::fromStringList(result.failures)},
                   {"quirks", QJsonArray::fromStringList(result.quirks)},
                   {"skipped", result.skipped}});
}

RuleResult unpackedResult(const Rule& rule, const QJsonObject& object)
{
    RuleResult result = emptyResult(rule);
    result.failures = object.value("failures").toVariant().toStringList();
    result.quirks = object.value("quirks").toVariant().toStringList();
    result.skipped = object.value("skipped").toString();
    return result;
}

// How the messages of the image begin, when all of them begin otherwise than the plugin's do.
QString otherHead(DeviceInterface& device, const QList<HxMidiData>& image)
{
    if (image.isEmpty())
        return QString();
    const ProductDescription product = describeProduct(device);
    if (!parseUpdateImage(imageFileOf(image), product).isForOtherProduct)
        return QString();
    return QStringLiteral("%1, not with %2")
        .arg(hexText(image.first().bytes.left(product.header.size())), hexText(product.header));
}

// Runs in the process of its own: sends what was loaded, then a line for each rule.
void examine(const QString& path, const QList<HxMidiData>& image, const RuleStart& start,
             const SendLine& send)
{
    const PluginLoadResult loaded = loadPlugin(path, PluginCare::Untried);
    if (!loaded.ok()) {
        send(packed({{"what", loaded.problem.what},
                     {"expected", loaded.problem.expected},
                     {"next", loaded.problem.next}}));
        return;
    }
    const QString head = otherHead(loaded.plugin->device(), image);
    send(packed({{"filePath", loaded.plugin->filePath()},
                 {"className", loaded.plugin->className()},
                 {"otherHead", head}}));
    if (!head.isEmpty())
        return;
    const RuleSubject subject{*loaded.plugin, image};
    for (const Rule& rule : contractRules()) {
        start(rule.name);
        RuleResult result = emptyResult(rule);
        rule.judge(subject, &result);
        send(packedResult(result));
    }
}

void takeLoaded(const QJsonObject& object, ContractFinding* finding)
{
    finding->filePath = object.value("filePath").toString();
    finding->className = object.value("className").toString();
    finding->loadProblem.what = object.value("what").toString();
    finding->loadProblem.expected = object.value("expected").toString();
    finding->loadProblem.next = object.value("next").toString();
    finding->otherHead = object.value("otherHead").toString();
}

// The last rule is kept only when the plugin can also be unloaded.
void addCrash(const std::vector<Rule>& rules, ContractFinding* finding)
{
    std::vector<RuleResult>& results = finding->results;
    if (results.size() == rules.size()) {
        results.back().failures << QStringLiteral("after it, ") + finding->crash;
        return;
    }
    results.push_back(emptyResult(rules[results.size()]));
    results.back().failures << finding->crash;
    const QString reason =
        QStringLiteral("%1 was the last rule that could be run").arg(results.back().rule);
    while (results.size() < rules.size()) {
        results.push_back(emptyResult(rules[results.size()]));
        results.back().skipped = reason;
    }
}

} // namespace

ContractFinding checkContract(const QString& path, const QList<HxMidiData>& image,
                              const RuleStart& start)
{
    const std::vector<Rule> rules = contractRules();
    ContractFinding finding;
    bool isLoaded = false;
    const auto work = [&](const SendLine& send) { examine(path, image, start, send); };
    const auto receive = [&](const QByteArray& line) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (isLoaded)
            finding.results.push_back(unpackedResult(rules[finding.results.size()], object));
        else
            takeLoaded(object, &finding);
        isLoaded = true;
    };
    finding.crash = runSeparately(work, receive, secondsForARule);
    const bool isJudged = finding.loadProblem.what.isEmpty() && finding.otherHead.isEmpty();
    if (isLoaded && isJudged && !finding.crash.isEmpty())
        addCrash(rules, &finding);
    return finding;
}

} // namespace hx
