// The electronic serial number.
#include "plugin/ValdrinBootInterface.h"

#include "plugin/HexTextField.h"

QString ValdrinBootInterface::esn()
{
    Q_ASSERT(bus);
    constexpr unsigned noTimeout = 0xFFFFFFFF;
    const QString command = lookup(QStringLiteral("get.esn.cmd")).toString();
    const QString pattern = lookup(QStringLiteral("get.esn.rtval.response")).toString();
    const BusData reply = bus->transact(HxMidiData(command), pattern, noTimeout);
    const int offset = lookup(QStringLiteral("get.esn.rtval.offset")).toInt();
    if (reply.bytes.isEmpty())
        return {};

    const HxMidiData number = hx::hexTextField(reply, offset);
    if (number.bytes.size() != 8)
        return {};
    getValueWithTypeAndOffset(number, 6, 0);
    return number.toString(-1);
}
