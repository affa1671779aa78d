// Names, identifiers and the bodies that the contract itself supplies.
#include "contract/AnsweringBus.h"
#include "contract/Rules.h"

#include "host/base/HexText.h"

#include <algorithm>

namespace hx {

namespace {

constexpr unsigned identifierBits = 0x7F007F; // family and model are MIDI data bytes

void judgeNames(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    const std::pair<const char*, QString> names[] = {
        {"productName", device.productName()},
        {"nickName", device.nickName()},
        {"classVersion", device.classVersion()},
        {"productPortName", device.productPortName()},
        {"productInPortName", device.productInPortName()},
        {"productOutPortName", device.productOutPortName()},
    };
    for (const auto& name : names)
        result->require(!name.second.trimmed().isEmpty(),
                        QStringLiteral("%1() is empty").arg(QLatin1String(name.first)));
}

void judgeRepeats(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    result->require(device.productName() == device.productName() &&
                        device.nickName() == device.nickName() &&
                        device.classVersion() == device.classVersion() &&
                        device.productPortName() == device.productPortName(),
                    QStringLiteral("a name is another one when it is asked for again"));
    result->require(device.fidpid() == device.fidpid() &&
                        device.getGenderList() == device.getGenderList(),
                    QStringLiteral("an identifier is another one when it is asked for again"));
}

void judgeIdentifier(const RuleSubject& subject, RuleResult* result)
{
    const unsigned identifier = subject.device().fidpid();
    result->require((identifier & ~identifierBits) == 0,
                    QStringLiteral("fidpid() is %1; expected the family byte in bits 16 to 23, the "
                                   "model byte in bits 0 to 7, both below 80 hex, all else 0")
                        .arg(identifierText(identifier)));
    result->require(identifier != 0 && identifier != unknownIdentifier,
                    QStringLiteral("fidpid() is %1, which stands for an unknown product")
                        .arg(identifierText(identifier)));
}

// Words that come about when bytes are swapped, shifted or not masked.
QVector<unsigned> likelyMistakes(unsigned identifier)
{
    const unsigned family = identifier >> 16 & 0xFF;
    const unsigned model = identifier & 0xFF;
    return {0,
            unknownIdentifier,
            family << 8 | model,
            model << 16 | family,
            identifier ^ 1,
            identifier | 0x0100,
            identifier | 0x01000000};
}

void judgeServed(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    QVector<unsigned> served = device.getGenderList();
    result->require(served.contains(device.fidpid()),
                    QStringLiteral("getGenderList() does not hold fidpid(), %1")
                        .arg(identifierText(device.fidpid())));
    for (const unsigned identifier : served)
        result->require(device.canSupport(identifier),
                        QStringLiteral("canSupport(%1) is false, getGenderList() holds it")
                            .arg(identifierText(identifier)));
    for (const unsigned identifier : likelyMistakes(device.fidpid()))
        result->require(served.contains(identifier) || !device.canSupport(identifier),
                        QStringLiteral("canSupport(%1) is true, getGenderList() lacks it")
                            .arg(identifierText(identifier)));
    std::sort(served.begin(), served.end());
    result->require(std::adjacent_find(served.begin(), served.end()) == served.end(),
                    QStringLiteral("getGenderList() holds an identifier twice"));
}

void judgeMaps(const RuleSubject& subject, RuleResult* result)
{
    const QMap<unsigned, QString> names = subject.device().getFidPidNameMap();
    const QMap<QString, unsigned> identifiers = subject.device().getNameFidPidMap();
    for (auto it = names.begin(); it != names.end(); ++it) {
        const bool leadsBack =
            identifiers.contains(it.value()) && identifiers.value(it.value()) == it.key();
        result->require(leadsBack, QStringLiteral("%1 is named \"%2\", but that name does not lead "
                                                  "back to it")
                                       .arg(identifierText(it.key()), it.value()));
        result->require(!it.value().isEmpty(),
                        QStringLiteral("%1 has an empty name").arg(identifierText(it.key())));
    }
    result->require(identifiers.size() == names.size(),
                    QStringLiteral("%1 identifiers have names, but %2 names have identifiers")
                        .arg(names.size())
                        .arg(identifiers.size()));
}

void judgeMapsServed(const RuleSubject& subject, RuleResult* result)
{
    QVector<unsigned> served = subject.device().getGenderList();
    std::sort(served.begin(), served.end());
    result->require(subject.device().getFidPidNameMap().keys().toVector() == served,
                    QStringLiteral("getFidPidNameMap() does not name exactly the identifiers of "
                                   "getGenderList()"));
}

void judgeDefaults(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    AnsweringBus silence(device);
    silence.longest = 0;
    const BusOnLoan loan(device, silence);
    const quint32 raw = device.rawFidpid();
    result->require(raw == device.fidpid() || raw == unknownIdentifier,
                    QStringLiteral("rawFidpid() is %1 without an answer; expected fidpid() or %2")
                        .arg(identifierText(raw), identifierText(unknownIdentifier)));
    result->require(device.hasBootcode() || !device.isBootcode(),
                    QStringLiteral("isBootcode() is true, but hasBootcode() is false"));
    const QByteArray last = device.lastProgrammingMsg().bytes;
    result->require(last.isEmpty() || (last.startsWith('\xF0') && last.endsWith('\xF7')),
                    QStringLiteral("lastProgrammingMsg() is neither empty nor a whole message"));
}

void judgeLastError(const RuleSubject& subject, RuleResult* result)
{
    DeviceInterface& device = subject.device();
    const QString before = device.lastError;
    device.setLastError(QStringLiteral("first"));
    device.setLastError(QStringLiteral("second"));
    result->require(device.lastError.endsWith(QStringLiteral(":322 - second")) &&
                        !device.lastError.contains(QLatin1String("first")),
                    QStringLiteral("after setLastError(\"first\") and (\"second\") lastError is "
                                   "\"%1\"; expected a place, \":322 - second\"")
                        .arg(device.lastError));
    device.lastError = before;
}

} // namespace

std::vector<Rule> identityRules()
{
    return {
        {"names.present", "no name, version or port name is empty", judgeNames},
        {"names.constant", "names and identifiers are the same whenever they are asked for",
         judgeRepeats},
        {"identifier.form", "fidpid() is a family and a model byte in their places",
         judgeIdentifier},
        {"identifier.served", "canSupport() is true for the identifiers of getGenderList() alone",
         judgeServed},
        {"maps.inverse", "the two name maps are each other's inverse", judgeMaps},
        {"maps.served", "the name maps name the identifiers of getGenderList()", judgeMapsServed},
        {"defaults", "rawFidpid(), hasBootcode() and lastProgrammingMsg() fit the rest",
         judgeDefaults},
        {"lasterror", "setLastError() replaces the text, with its place in front", judgeLastError},
    };
}

} // namespace hx
