/** @file
 * What is remembered of a port in use, so that it can be found again under another name or number.
 */
#pragma once

#include "ports/PortIdentities.h"
#include "ports/PortList.h"
#include "ports/RtMidiPort.h"
#include "ports/device/DeviceList.h"

namespace hx {

class PortMemory {
public:
    /** `present` are the ports that are there beside the one at `address`. */
    PortMemory(const PortAddress& address, const QList<MidiBackend>& present);

    /**
     * Where it is among those that are there now. A port that was there beside it is not it, unless
     * a serial number or a socket says so. The problem says that it is not there, or which ones it
     * may be.
     */
    Result<PortAddress> find(const QList<MidiBackend>& present) const;

private:
    struct End {
        PortIdentity identity;
        QStringList others; /**< names of the ports beside it */
    };

    static End endOf(const QString& backend, const QString& port, const QStringList& present);
    static Result<QString> findEnd(const End& end, const QStringList& present);

    PortAddress m_address;
    End m_output;
    End m_input;
};

/** Whether a port is known by more than its name. */
bool isCertain(const PortIdentity& identity);

/** Where in `folder` the raw MIDI device is now that is known by a certain identity. */
Result<QString> findDevice(const PortIdentity& identity, const QString& folder = deviceFolder,
                           const QString& system = QStringLiteral("/sys"));

} // namespace hx
