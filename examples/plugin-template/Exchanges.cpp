// Everything for which the product is asked. The bus is the host's: it finds the port, writes the
// command, and waits for the first reply that fits.
#include "BootInterface.h"

namespace {

// Replies: F0, three bytes of the maker's identifier, family, model, command, data, F7.
constexpr int dataPosition = 7;
constexpr char refusal = 0x46; // in place of data

// In the identity reply: four characters, "1023" for the version 1.0.2.3.
constexpr int versionPosition = 12;
constexpr int versionLength = 4;

} // namespace

// The reply to the command `key` of the dictionary; empty when none came or there is no bus.
BusData ExampleBootInterface::exchange(const QString& key) const
{
    if (!bus)
        return {};
    return bus->transact(HxMidiData(lookupStr(key)), lookupStr(key + QStringLiteral(".response")),
                         static_cast<unsigned>(lookupInt(QStringLiteral("command.timeout.ms"))));
}

// 0 when the product does not answer, or not with digits.
qint32 ExampleBootInterface::versionNumber()
{
    const BusData reply = exchange(QStringLiteral("identify"));
    if (reply.bytes.size() <= versionPosition + versionLength)
        return 0; // the first digits of a version are another version
    return reply.bytes.mid(versionPosition, versionLength).toInt();
}

QString ExampleBootInterface::esn()
{
    constexpr int length = 8;
    const BusData reply = exchange(QStringLiteral("esn.read"));
    if (reply.bytes.size() != dataPosition + length + 1)
        return {};
    return QString::fromLatin1(reply.bytes.mid(dataPosition, length).toHex().toUpper());
}

bool ExampleBootInterface::isCodeValid(CodeType code)
{
    if (code != CodeType::Fwu)
        return false;
    constexpr int length = 4;
    const BusData stored = exchange(QStringLiteral("version.read.user.crc"));
    const BusData calculated = exchange(QStringLiteral("version.calc.user.crc"));
    const int complete = dataPosition + length + 1;
    if (stored.bytes.size() != complete || calculated.bytes.size() != complete)
        return false; // two answers that did not come are not two equal checksums
    return stored.mid(dataPosition, length) == calculated.mid(dataPosition, length);
}

// Too short to be an answer counts as a refusal.
bool ExampleBootInterface::isNak(BusData reply)
{
    return reply.bytes.size() <= dataPosition || reply.bytes.at(dataPosition) == refusal;
}
