#include "plugin/Transport.h"

#include <QDebug>

#include <utility>

namespace {

QString missingBusText(BusData const& command)
{
    return QStringLiteral("The bus() is invalid, command %1 failed").arg(command.toString(-1));
}

} // namespace

BusData hx::writeDataCommand(Bus* bus, BusData command, QString responsePattern, unsigned timeoutMs)
{
    if (!bus) {
        qDebug().noquote() << "IOSUPORT: " << missingBusText(command);
        return {};
    }
    BusData reply = bus->transact(std::move(command), std::move(responsePattern), timeoutMs);
    if (reply.bytes.isEmpty())
        qDebug() << "IOSUPORT: " << bus->errorText;
    return reply;
}

BusData hx::midiOutWithCmdAndResponceStrings(BusData const& command, QString responsePattern,
                                             DeviceInterface* device)
{
    Bus* const bus = device ? device->bus : nullptr;
    if (!bus) {
        qDebug() << "IOSUPORT: " << missingBusText(command);
        return {};
    }
    const unsigned timeoutMs = device->lookup(QStringLiteral("command.timeout.ms")).toUInt();
    BusData reply = bus->transact(command, std::move(responsePattern), timeoutMs);
    if (reply.bytes.isEmpty()) {
        qDebug() << "IOSUPORT: "
                 << QStringLiteral("ERROR %1 %2").arg(command.toString(-1)).arg(bus->errorText);
    }
    return reply;
}
