// What the plugin makes of replies: whole ones, short ones and none. Silence is tried first, while
// nothing read before can be remembered.
#include "contract/AnsweringBus.h"
#include "contract/Rules.h"

#include "host/base/HexText.h"
#include "qt/Saturated.h"

#include <QRegExp>

#include <algorithm>

namespace hx {

namespace {

constexpr int longestCut = 64; // no reply of a dictionary is longer
constexpr unsigned noTimeout = 0xFFFFFFFF;
constexpr unsigned longestTimeoutMs = 600000;

// All that is read from the product, once.
struct Readings {
    qint32 version = 0;
    QString serialNumber;
    bool codeValid = false;
};

Readings readAll(DeviceInterface& device, AnsweringBus& bus)
{
    const BusOnLoan loan(device, bus);
    return {device.versionNumber(), device.esn(), device.isCodeValid(CodeType::Fwu)};
}

void judgeSilence(const RuleSubject& subject, RuleResult* result)
{
    AnsweringBus silence(subject.device());
    silence.longest = 0;
    const Readings read = readAll(subject.device(), silence);
    result->require(read.version == 0,
                    QStringLiteral("versionNumber() is %1 without an answer").arg(read.version));
    result->require(read.serialNumber.isEmpty(),
                    QStringLiteral("esn() is \"%1\" without an answer").arg(read.serialNumber));
    result->require(!read.codeValid, QStringLiteral("isCodeValid() is true without an answer"));
}

// Bytes of the shorter one of the two replies that tell whether the code is valid.
int checksumReplyBytes(DeviceInterface& device)
{
    AnsweringBus bus(device);
    const BusOnLoan loan(device, bus);
    device.isCodeValid(CodeType::Fwu);
    int shortest = longestCut;
    for (const AnsweringBus::Exchange& exchange : bus.exchanges)
        shortest = std::min(shortest, saturated(exchange.reply.size()));
    return shortest;
}

// A reply that lacks bytes gives what it gives whole, or nothing. One that lacks only its F7 has
// all that is to be read.
void judgeShortReplies(const RuleSubject& subject, RuleResult* result)
{
    AnsweringBus whole(subject.device());
    const Readings good = readAll(subject.device(), whole);
    const int lacksOnlyItsEnd = checksumReplyBytes(subject.device()) - 1;
    for (int length = 1; length < longestCut; ++length) {
        AnsweringBus cut(subject.device());
        cut.longest = length;
        const Readings read = readAll(subject.device(), cut);
        const QString bytes = QStringLiteral("of a reply cut to %1 bytes").arg(length);
        result->require(read.version == 0 || read.version == good.version,
                        QStringLiteral("versionNumber() %1 is %2").arg(bytes).arg(read.version));
        result->require(read.serialNumber.isEmpty() || read.serialNumber == good.serialNumber,
                        QStringLiteral("esn() %1 is \"%2\"").arg(bytes, read.serialNumber));
        result->require(!read.codeValid || length >= lacksOnlyItsEnd,
                        QStringLiteral("isCodeValid() %1 is true").arg(bytes));
    }
}

void judgeVersion(const RuleSubject& subject, RuleResult* result)
{
    AnsweringBus bus(subject.device());
    const BusOnLoan loan(subject.device(), bus);
    const qint32 version = subject.device().versionNumber();
    result->require(!bus.exchanges.isEmpty(), QStringLiteral("versionNumber() asks nothing"));
    result->require(version > 0,
                    QStringLiteral("versionNumber() is %1 although the product said \"1\" in each "
                                   "place")
                        .arg(version));
}

bool isEmptyExchange(const QVector<AnsweringBus::Exchange>& exchanges)
{
    return exchanges.size() == 1 && exchanges.first().command.isEmpty() &&
           exchanges.first().pattern.isEmpty() && exchanges.first().timeoutMs == noTimeout;
}

void judgeSerialNumber(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    AnsweringBus bus(device);
    const BusOnLoan loan(device, bus);
    const QString number = device.esn();
    const bool isListed = device.lookup(QStringLiteral("get.esn.cmd")).isValid();
    if (number.isEmpty() && isEmptyExchange(bus.exchanges) && !isListed) {
        result->quirks << QStringLiteral(
            "esn() asks by \"get.esn.cmd\" and its offset, keys that the dictionary lacks, so it "
            "sends nothing and is always empty; hosts read the number by \"esn.read\"");
        return;
    }
    const QRegExp hex(QStringLiteral("([0-9A-F]{2})+"));
    result->require(
        hex.exactMatch(number),
        QStringLiteral("esn() is \"%1\"; expected pairs of upper-case hex digits").arg(number));
}

// What isCodeValid() makes of the two checksums; fewer answers leave the last ones out.
bool codeValid(DeviceInterface& device, const QVector<QByteArray>& checksums, int* asked)
{
    AnsweringBus bus(device);
    bus.fills = checksums;
    bus.answers = saturated(checksums.size());
    const BusOnLoan loan(device, bus);
    const bool valid = device.isCodeValid(CodeType::Fwu);
    *asked = saturated(bus.exchanges.size());
    return valid;
}

void judgeCodeCheck(const RuleSubject& subject, RuleResult* result)
{
    const QByteArray one("\0\0\0\1", 4);
    int asked = 0;
    const bool equal = codeValid(subject.device(), {"1234", "1234"}, &asked);
    if (asked != 2) {
        result->skipped = QStringLiteral("isCodeValid() does not compare two answers");
        return;
    }
    const bool different = codeValid(subject.device(), {"1234", "1235"}, &asked);
    const bool missing = codeValid(subject.device(), {one}, &asked);
    result->require(!different,
                    QStringLiteral("two different checksums are taken for intact code"));
    result->require(!subject.device().isCodeValid(CodeType::Unknown),
                    QStringLiteral("code of unknown kind is taken for intact"));
    if (!equal && missing) {
        result->quirks << QStringLiteral(
            "isCodeValid() counts the echoed command byte in: equal checksums are never equal, and "
            "a stored 00 00 00 01 equals an answer that did not come; hosts compare the checksums "
            "themselves, by \"version.read.user.crc\" and \"version.calc.user.crc\"");
        return;
    }
    result->require(equal, QStringLiteral("two equal checksums are not taken for intact code"));
    result->require(!missing,
                    QStringLiteral("a checksum that did not come is taken for an equal one"));
}

bool isWholeMessage(const QByteArray& message)
{
    return message.size() >= 2 && message.startsWith('\xF0') && message.endsWith('\xF7');
}

bool changesTheProduct(const DeviceInterface& device, const QByteArray& command)
{
    const QString hex = QString::fromLatin1(command.toHex().toUpper());
    for (const char* key : {"reset", "loader.set.dfu", "loader.set.user", "loader.set.boot"}) {
        const QString listed = device.lookupStr(QString::fromLatin1(key));
        if (!listed.isEmpty() && listed == hex)
            return true;
    }
    return false;
}

void judgeCommandsSent(const RuleSubject& subject, RuleResult* result)
{
    AnsweringBus bus(subject.device());
    readAll(subject.device(), bus);
    for (const AnsweringBus::Exchange& exchange : bus.exchanges) {
        if (isEmptyExchange({exchange})) {
            result->quirks << QStringLiteral("the serial-number read sends an empty command and "
                                             "would wait without end; hosts do not send it");
            continue;
        }
        const QString shown = hexText(exchange.command);
        result->require(isWholeMessage(exchange.command),
                        QStringLiteral("\"%1\" is sent, not a whole SysEx message").arg(shown));
        result->require(
            !changesTheProduct(subject.device(), exchange.command),
            QStringLiteral("%1 is sent to read something; it changes the product").arg(shown));
        result->require(
            exchange.timeoutMs > 0 && exchange.timeoutMs <= longestTimeoutMs,
            QStringLiteral("%1 is waited for %2 ms").arg(shown).arg(exchange.timeoutMs));
        result->require(!exchange.reply.isEmpty(),
                        QStringLiteral("no reply can fit \"%1\", which %2 is waited for by")
                            .arg(exchange.pattern, shown));
    }
}

} // namespace

std::vector<Rule> replyRules()
{
    return {
        {"replies.none", "no answer gives version 0, no serial number and no intact code",
         judgeSilence},
        {"replies.short", "a reply that is cut off gives no made-up value", judgeShortReplies},
        {"version", "versionNumber() is read from the product's answer", judgeVersion},
        {"serial-number", "esn() is the product's number as hex", judgeSerialNumber},
        {"code-check", "isCodeValid() is true for two equal checksums alone", judgeCodeCheck},
        {"commands", "what is sent is whole messages that change nothing, with sane timeouts",
         judgeCommandsSent},
    };
}

} // namespace hx
