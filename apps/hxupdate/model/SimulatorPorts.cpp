#include "apps/hxupdate/model/SimulatorPorts.h"

namespace hxupdate {

namespace {

// The simulated port, whose waits take no time, at the speed of real ones.
class RealTimePort final : public hx::MidiPort {
public:
    explicit RealTimePort(hx::MidiPort& port) : m_port(port) {}

    QString name() const override { return m_port.name(); }
    hx::Clock& clock() override { return m_port.clock(); }

    bool send(const QByteArray& message) override
    {
        const hx::Microseconds start = m_port.clock().now();
        const bool sent = m_port.send(message);
        follow(start);
        return sent;
    }

    hx::MidiChunk receive(hx::Microseconds deadline) override
    {
        const hx::Microseconds start = m_port.clock().now();
        hx::MidiChunk chunk = m_port.receive(deadline);
        follow(start);
        return chunk;
    }

private:
    void follow(hx::Microseconds start)
    {
        errorText = m_port.errorText;
        m_real.sleepUntil(m_real.now() + m_port.clock().now() - start);
    }

    hx::MidiPort& m_port;
    hx::SteadyClock m_real;
};

} // namespace

SimulatorPorts::SimulatorPorts() : m_port(hx::FaultyProduct(), {hx::Pace(), 0}) {}

QStringList SimulatorPorts::list()
{
    return {m_port.name()};
}

std::unique_ptr<hx::MidiPort> SimulatorPorts::open(const QString&, QString*)
{
    return std::make_unique<RealTimePort>(m_port);
}

} // namespace hxupdate
