/** @file
 * A MIDI port that is a device of this machine: /dev/snd/midiC1D0, a serial line, a pseudo
 * terminal, or a FIFO for each direction.
 */
#pragma once

#include "host/base/WirePace.h"
#include "host/bus/MidiPort.h"
#include "ports/device/DeviceFile.h"
#include "ports/device/DeviceWait.h"

namespace hx {

struct DeviceAddress {
    QString output; /**< bytes go there; empty: nothing will be sent */
    QString input;  /**< bytes come from there; empty: from `output` */
};

/** "device:" before the path of one. */
QString deviceName(const QString& path);

/** The path in such a name; null when it is none. */
QString devicePath(const QString& name);

/** What the device at this path is known by; `system` is where the kernel shows its devices. */
PortIdentity identityOfDevice(const QString& path, const QString& system = QStringLiteral("/sys"));

/**
 * What is sent has left: bytes are written a few at a time, no faster than the pace, and send()
 * returns when the kernel has none of them any more. A device that was removed is noticed by the
 * first operation after that.
 */
class DevicePort final : public MidiPort {
public:
    /**
     * Opens the device, or both of them, for this program alone. `wait` is not null. A program that
     * opens a FIFO has to ignore SIGPIPE.
     */
    static Result<std::unique_ptr<MidiPort>>
    open(const DeviceAddress& address, const Pace& pace,
         std::unique_ptr<DeviceWait> wait = std::make_unique<RealDeviceWait>());

    QString name() const override;
    PortIdentity identity() const override;
    Clock& clock() override { return m_wait->clock(); }

    /** Fewer bytes than the message has when the device takes no more for two seconds. */
    qint64 send(const QByteArray& message) override;
    bool drain(Microseconds deadline) override;
    MidiChunk receive(Microseconds deadline) override;
    bool isGone() const override { return m_isGone; }

private:
    using File = std::unique_ptr<DeviceFile>;

    DevicePort(const DeviceAddress& address, const Pace& pace, std::unique_ptr<DeviceWait> wait);

    Result<> openFiles();
    const DeviceFile& input() const { return m_in ? *m_in : *m_out; }
    const QString& inputPath() const;
    bool isUsable();
    qint64 writeSome(const char* bytes, qint64 size);
    qint64 writeAtPace(const QByteArray& message);
    void noteEnd();
    void noteLoss(const QString& path, int error);

    DeviceAddress m_address;
    Pace m_pace;
    std::unique_ptr<DeviceWait> m_wait;
    File m_out; /**< null for a port that only hears */
    File m_in;  /**< null where `m_out` carries both directions */
    bool m_hasSent = false;
    Microseconds m_wireFree = 0; /**< moment at which the last byte was on its way */
    bool m_isGone = false;
    QString m_loss; /**< why it is gone */
};

} // namespace hx
