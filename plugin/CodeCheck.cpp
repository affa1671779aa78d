// Refusals, and whether the code in the product is intact.
#include "plugin/Transport.h"
#include "plugin/ValdrinBootInterface.h"

namespace {

constexpr int refusalPosition = 7;
constexpr unsigned char refusalByte = 0x46;

// What the two checksum requests are made of. The protocol table holds the same messages; this
// check does not read them there, so that a changed table leaves it as it is.
constexpr auto manufacturer = "00 6B 2D";
constexpr auto readStoredChecksum = "30";
constexpr auto calculateChecksum = "31";

// A checksum reply: F0, three manufacturer bytes, family, model, command, four bytes, F7.
constexpr int checksumReplySize = 12;
constexpr int checksumPosition = 6; // the command byte's own place, see isCodeValid

qint32 checksumValue(const BusData& reply, qint32 missing)
{
    return reply.bytes.size() == checksumReplySize ? reply.get32bit(checksumPosition, missing)
                                                   : missing;
}

} // namespace

bool ValdrinBootInterface::isNak(BusData reply)
{
    return reply.bytes.size() <= refusalPosition ||
           static_cast<unsigned char>(reply.bytes.at(refusalPosition)) == refusalByte;
}

bool ValdrinBootInterface::isCodeValid(CodeType type)
{
    const auto timeoutMs = static_cast<unsigned>(lookupInt(QStringLiteral("command.timeout.ms")));
    if (type != CodeType::Fwu)
        return false;

    const auto hexByte = [](quint32 value) {
        return QStringLiteral("%1").arg(value & 0xFF, 2, 16, QLatin1Char('0'));
    };
    const QString prefix =
        QStringLiteral("F0 %1 %2 %3")
            .arg(QLatin1String(manufacturer), hexByte(fidpid() >> 16), hexByte(fidpid()));
    const auto checksumReply = [&](const char* command) {
        HxMidiData request(prefix);
        request.append(HxMidiData(QLatin1String(command) + QStringLiteral(" F7")));
        const QString pattern = QStringLiteral("%1 %2").arg(prefix, QLatin1String(command));
        return hx::writeDataCommand(bus, request, pattern, timeoutMs);
    };
    // Different values for the two sides, so that two failed exchanges never compare equal.
    const qint32 stored = checksumValue(checksumReply(readStoredChecksum), 0);
    const qint32 calculated = checksumValue(checksumReply(calculateChecksum), 1);
    return stored == calculated;
}
