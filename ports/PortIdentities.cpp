#include "ports/PortIdentities.h"

#include "ports/PortList.h"
#include "qt/Saturated.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace hx {

namespace {

// ALSA numbers the clients of its sound cards from here on, so many to a card; programs come after.
constexpr int firstCardClient = 16;
constexpr int clientsPerCard = 4;
constexpr int firstProgramClient = 128;

using Detail = QString PortIdentity::*;

QString firstLineOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed()
                                          : QString();
}

// The sound card of ALSA's port "Valdrin Update:Valdrin Update MIDI 1 20:0"; -1: of none.
int cardOfAlsaPort(const QString& port)
{
    static const QRegularExpression numbers(QStringLiteral(" (\\d+):\\d+$"));
    const QRegularExpressionMatch match = numbers.match(port);
    const int client = match.hasMatch() ? match.captured(1).toInt() : 0;
    if (client < firstCardClient || client >= firstProgramClient)
        return -1;
    return (client - firstCardClient) / clientsPerCard;
}

QList<int> allIndexes(const QList<PortIdentity>& ports)
{
    QList<int> indexes;
    for (int i = 0; i < ports.size(); ++i)
        indexes << i;
    return indexes;
}

QList<int> agreeing(const QList<int>& among, const QList<PortIdentity>& ports,
                    const PortIdentity& wanted, Detail detail)
{
    QList<int> indexes;
    for (const int index : among) {
        if (ports.at(index).*detail == wanted.*detail)
            indexes << index;
    }
    return indexes;
}

Detail identifying(const PortIdentity& wanted)
{
    if (!wanted.serialNumber.isEmpty())
        return &PortIdentity::serialNumber;
    return wanted.stableId.isEmpty() ? &PortIdentity::name : &PortIdentity::stableId;
}

QString textOf(const PortIdentity& port)
{
    QString text = port.backend + QLatin1Char(':') + port.name;
    if (!port.serialNumber.isEmpty())
        text += QStringLiteral(", serial number ") + port.serialNumber;
    return text;
}

} // namespace

UsbDevice usbDeviceOfCard(int card, const QString& system)
{
    QDir folder(
        QDir(QStringLiteral("%1/class/sound/card%2/device").arg(system).arg(card)).canonicalPath());
    while (!folder.path().isEmpty() && !folder.exists(QStringLiteral("idVendor"))) {
        if (folder.isRoot() || !folder.cdUp())
            return {};
    }
    if (folder.path().isEmpty() || folder.path() == QLatin1String("."))
        return {};
    const QString maker = firstLineOf(folder.filePath(QStringLiteral("idVendor")));
    return {QStringLiteral("usb %1 %2").arg(folder.dirName(), maker),
            firstLineOf(folder.filePath(QStringLiteral("serial")))};
}

PortIdentity identityOfPort(const QString& backend, const QString& port, const QString& system)
{
    PortIdentity identity = {backend, QString(), stablePortName(port), QString()};
    const int card = backend == QLatin1String("alsa") ? cardOfAlsaPort(port) : -1;
    if (card < 0)
        return identity;
    const UsbDevice usb = usbDeviceOfCard(card, system);
    identity.stableId = usb.socket;
    identity.serialNumber = usb.serialNumber;
    return identity;
}

Result<int> findPort(const PortIdentity& wanted, const QList<PortIdentity>& present)
{
    QList<int> fitting = allIndexes(present);
    for (const Detail detail : {&PortIdentity::backend, identifying(wanted)})
        fitting = agreeing(fitting, present, wanted, detail);
    for (const Detail detail : {&PortIdentity::stableId, &PortIdentity::name}) {
        const QList<int> closer = agreeing(fitting, present, wanted, detail);
        if (!closer.isEmpty())
            fitting = closer;
    }
    if (fitting.size() == 1)
        return fitting.first();
    QStringList found;
    for (const int index : fitting)
        found << textOf(present.at(index));
    const QString why = found.isEmpty()
                            ? QStringLiteral("the port %1 is not there").arg(textOf(wanted))
                            : QStringLiteral("several ports may be %1, and none is chosen by "
                                             "guess: %2")
                                  .arg(textOf(wanted), found.join(QLatin1String("; ")));
    return Problem{ExitCode::NoPort, why, QString(), QString()};
}

} // namespace hx
