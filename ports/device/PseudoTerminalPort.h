/** @file
 * The product's end of a cable that other programs find as a device: a pseudo terminal.
 */
#pragma once

#include "host/base/Result.h"
#include "host/bus/MidiPort.h"
#include "ports/Pacer.h"
#include "ports/device/DeviceWait.h"

#include <memory>

namespace hx {

/** Nobody need be at the other end: what is sent then is lost, as on a wire. */
class PseudoTerminalPort final : public MidiPort {
public:
    /**
     * Makes a device, and `link`, a symbolic link to it, until the port is closed; an empty one is
     * not made. A link to a device that stands there already is replaced, anything else is not.
     */
    static Result<std::unique_ptr<MidiPort>> open(const QString& link, const Pace& pace);

    ~PseudoTerminalPort() override;

    /** "device:" and the path by which other programs open it. */
    QString name() const override;
    Clock& clock() override { return m_wait.clock(); }
    qint64 send(const QByteArray& message) override;
    MidiChunk receive(Microseconds deadline) override;

private:
    PseudoTerminalPort(int descriptor, const Pace& pace);

    Result<> setUp(const QString& link);
    Result<> makeLink(const QString& link);
    bool isAlone() const;
    void write(const QByteArray& message);

    int m_descriptor;
    RealDeviceWait m_wait;
    Pacer m_pacer;
    QString m_device;
    QString m_link; /**< empty when there is none to take away */
};

} // namespace hx
