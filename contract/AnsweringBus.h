// A product that has nothing but a plugin's own dictionary: each command is answered with an
// example of the reply that the dictionary, or the command itself, asks for.
#pragma once

#include "deviceinterface/DeviceInterface.h"

#include <QVector>

#include <limits>

namespace hx {

class AnsweringBus final : public Bus {
public:
    struct Exchange {
        QByteArray command;
        QString pattern;
        unsigned timeoutMs = 0;
        QByteArray reply; // all of it, however much was handed over
    };

    // Looks the dictionary up as it answers; `device` must not be gone by then.
    explicit AnsweringBus(const DeviceInterface& device) : m_device(device) {}

    BusData transact(BusData command, QString responsePattern, unsigned timeoutMs) override;
    BusData transactExpect(BusData const& command, ResponceData const& expected,
                           unsigned timeoutMs) override;

    // Of the answer number i the open bytes are those of fills[i], of later ones those of the last.
    QVector<QByteArray> fills = {QByteArray("1")};

    // No answer has more bytes than this: 0 is silence.
    int longest = std::numeric_limits<int>::max();

    // So many commands are answered at most; the others meet silence.
    int answers = std::numeric_limits<int>::max();

    QVector<Exchange> exchanges;

private:
    QByteArray replyTo(const QByteArray& command, const QString& pattern) const;
    QString dictionaryPattern(const QByteArray& command) const;

    const DeviceInterface& m_device;
};

// Lets `device` talk to `bus` as long as this lives; afterwards it has the bus it had before.
class BusOnLoan {
public:
    BusOnLoan(DeviceInterface& device, Bus& bus) : m_device(device), m_before(device.bus)
    {
        device.bus = &bus;
    }
    ~BusOnLoan() { m_device.bus = m_before; }
    BusOnLoan(const BusOnLoan&) = delete;
    BusOnLoan& operator=(const BusOnLoan&) = delete;

private:
    DeviceInterface& m_device;
    Bus* m_before;
};

} // namespace hx
