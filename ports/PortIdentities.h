/** @file
 * What the ports of this machine are known by, and how one is found again that moved in the list.
 */
#pragma once

#include "host/base/Result.h"
#include "host/bus/PortIdentity.h"

#include <QList>
#include <QString>

namespace hx {

/** The USB device behind a sound card; both are empty where there is none, or none is known. */
struct UsbDevice {
    QString socket; /**< where it is plugged in, and its maker: "usb 1-2 0d8c" */
    QString serialNumber;
};

/** `system` is where the kernel shows its devices. */
UsbDevice usbDeviceOfCard(int card, const QString& system = QStringLiteral("/sys"));

/**
 * The identity of a port that a backend lists by this name. Only ALSA's names tell the sound card,
 * and by it the USB device.
 */
PortIdentity identityOfPort(const QString& backend, const QString& port,
                            const QString& system = QStringLiteral("/sys"));

/**
 * Which of the ports that are there now is the one known by `wanted`. What identifies it is its
 * serial number, else its stable id, else its name; where several have the same, the rest decides.
 * Its place in the list never does: when two fit alike, or none does, that is the problem.
 */
Result<int> findPort(const PortIdentity& wanted, const QList<PortIdentity>& present);

} // namespace hx
