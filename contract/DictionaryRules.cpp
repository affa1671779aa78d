// The protocol dictionary: which keys there are, and the form of their values.
#include "contract/PatternSample.h"
#include "contract/Rules.h"

#include "host/product/MessageNames.h"
#include "qt/Versions.h"

#include <QRegExp>

#include <algorithm>

namespace hx {

namespace {

bool isReply(const QString& key)
{
    return key.contains(QLatin1String(".response")) || key.endsWith(QLatin1String(".filecheck"));
}

bool isText(const QVariant& value)
{
    return value.userType() == QMetaType::QString;
}

// The texts of the dictionary under the keys that hosts know.
QMap<QString, QString> textsOf(const DeviceInterface& device)
{
    QMap<QString, QString> texts;
    for (const QString& key : knownKeys()) {
        const QVariant value = device.lookup(key);
        if (isText(value))
            texts.insert(key, value.toString());
    }
    return texts;
}

bool hasUpdateKind(const DeviceInterface& device, const QString& tag)
{
    const QString family = QStringLiteral("fwupdate.") + tag;
    for (const char* key :
         {".response.any", ".response.good", ".response.bad", ".response.failed", ".filecheck"}) {
        if (!device.lookup(family + QLatin1String(key)).isValid())
            return false;
    }
    return true;
}

void judgeKeys(const RuleSubject& subject, RuleResult* result)
{
    const DeviceInterface& device = subject.device();
    for (const char* command :
         {"identify", "version.read.user", "version.read.user.crc", "version.calc.user.crc"}) {
        for (const char* end : {"", ".response"}) {
            const QString key = QLatin1String(command) + QLatin1String(end);
            result->require(device.lookup(key).isValid(),
                            QStringLiteral("\"%1\" is missing").arg(key));
        }
    }
    result->require(device.lookup(QStringLiteral("command.timeout.ms")).isValid(),
                    QStringLiteral("\"command.timeout.ms\" is missing"));
    result->require(hasUpdateKind(device, QStringLiteral("fwu")) ||
                        hasUpdateKind(device, QStringLiteral("fwd")),
                    QStringLiteral("neither \"fwupdate.fwu\" nor \"fwupdate.fwd\" has all of any, "
                                   "good, bad, failed and filecheck"));
}

void judgeMissing(const RuleSubject& subject, RuleResult* result)
{
    const DeviceInterface& device = subject.device();
    for (const QString& key : {QStringLiteral("no.such.key"), QStringLiteral("IDENTIFY"),
                               QStringLiteral("identify "), QString()}) {
        result->require(!device.lookup(key).isValid(),
                        QStringLiteral("lookup(\"%1\") gives a value").arg(key));
        result->require(
            device.lookupInt(key) == 0 && device.lookupStr(key).isEmpty(),
            QStringLiteral("for \"%1\" lookupInt() is not 0 or lookupStr() not empty").arg(key));
    }
}

void judgeViews(const RuleSubject& subject, RuleResult* result)
{
    const DeviceInterface& device = subject.device();
    for (const QString& key : knownKeys()) {
        const QVariant value = device.lookup(key);
        if (!value.isValid())
            continue;
        result->require(isText(value) || value.userType() == QMetaType::Int,
                        QStringLiteral("\"%1\" is neither a text nor an integer").arg(key));
        result->require(
            device.lookupStr(key) == value.toString() && device.lookupInt(key) == value.toInt(),
            QStringLiteral("for \"%1\" lookup(), lookupStr() and lookupInt() disagree").arg(key));
    }
}

void judgeCompact(const RuleSubject& subject, RuleResult* result)
{
    const QMap<QString, QString> texts = textsOf(subject.device());
    for (auto it = texts.begin(); it != texts.end(); ++it) {
        result->require(!it.value().isEmpty(), QStringLiteral("\"%1\" is empty").arg(it.key()));
        result->require(QRegExp(QStringLiteral("\\s")).indexIn(it.value()) < 0,
                        QStringLiteral("\"%1\" holds blanks").arg(it.key()));
        result->require(QRegExp(QStringLiteral("[a-f]")).indexIn(it.value()) < 0,
                        QStringLiteral("\"%1\" holds hex digits in lower case").arg(it.key()));
    }
}

// A value of the builder, which is filled in before the command is sent, counts as one byte. Blanks
// and lower case are another rule's.
void judgeCommands(const RuleSubject& subject, RuleResult* result)
{
    const QRegExp message(QStringLiteral("F0([0-7][0-9A-F])*F7"));
    const QMap<QString, QString> texts = textsOf(subject.device());
    for (auto it = texts.begin(); it != texts.end(); ++it) {
        const QString text = replaced(it.value().toUpper().remove(QLatin1Char(' ')),
                                      QRegExp(QStringLiteral("NIB[0-9]+")), QStringLiteral("00"));
        result->require(isReply(it.key()) || message.exactMatch(text),
                        QStringLiteral("\"%1\" is \"%2\", not one SysEx message: F0, bytes below "
                                       "80, F7")
                            .arg(it.key(), it.value()));
    }
}

bool isSysEx(const QByteArray& message)
{
    return message.size() >= 2 && message.startsWith('\xF0') && message.endsWith('\xF7') &&
           std::all_of(message.begin() + 1, message.end() - 1,
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

void judgePatterns(const RuleSubject& subject, RuleResult* result)
{
    const QMap<QString, QString> texts = textsOf(subject.device());
    for (auto it = texts.begin(); it != texts.end(); ++it) {
        if (!isReply(it.key()) || isSysEx(sampleMessage(it.value(), QByteArray(1, '\x31'))))
            continue;
        if (it.key() == QLatin1String("gender.response") &&
            it.value().contains(QLatin1String("vv")))
            result->quirks << QStringLiteral("\"gender.response\" marks value bytes by \"vv\": a "
                                             "note for people, which no message fits; hosts use "
                                             "\"gender.read.response\"");
        else
            result->failures << QStringLiteral("\"%1\" is \"%2\", a pattern that no SysEx message "
                                               "fits")
                                    .arg(it.key(), it.value());
    }
}

void judgePairs(const RuleSubject& subject, RuleResult* result)
{
    const QMap<QString, QString> texts = textsOf(subject.device());
    const QString end = QStringLiteral(".response");
    for (const QString& key : texts.keys()) {
        const QString command = key.left(key.size() - end.size());
        const bool isForSeveral = command.contains(QLatin1Char('*'));
        result->require(!key.endsWith(end) || isForSeveral || texts.contains(command),
                        QStringLiteral("\"%1\" has no command \"%2\"").arg(key, command));
    }
}

void judgeTimeouts(const RuleSubject& subject, RuleResult* result)
{
    constexpr int longestMs = 600000;
    constexpr int msPerSecond = 1000;
    const DeviceInterface& device = subject.device();
    const int ms = device.lookupInt(QStringLiteral("command.timeout.ms"));
    result->require(
        ms > 0 && ms <= longestMs,
        QStringLiteral("\"command.timeout.ms\" is %1; expected 1 to %2").arg(ms).arg(longestMs));
    const QVariant seconds = device.lookup(QStringLiteral("command.timeout.s"));
    result->require(!seconds.isValid() || seconds.toInt() == ms / msPerSecond,
                    QStringLiteral("\"command.timeout.s\" is %1, \"command.timeout.ms\" is %2")
                        .arg(seconds.toString())
                        .arg(ms));
}

} // namespace

std::vector<Rule> dictionaryRules()
{
    return {
        {"dictionary.keys", "the keys that hosts need are there", judgeKeys},
        {"dictionary.missing", "a missing key gives an invalid variant, 0 and an empty text",
         judgeMissing},
        {"dictionary.views", "values are texts or integers, the same through all three lookups",
         judgeViews},
        {"dictionary.compact", "texts are upper-case hex without blanks", judgeCompact},
        {"dictionary.commands", "each command is one SysEx message", judgeCommands},
        {"dictionary.patterns", "each reply pattern fits some SysEx message", judgePatterns},
        {"dictionary.pairs", "each reply has its command", judgePairs},
        {"dictionary.timeouts", "the timeouts are positive and agree", judgeTimeouts},
    };
}

} // namespace hx
