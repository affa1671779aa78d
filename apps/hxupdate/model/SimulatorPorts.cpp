#include "apps/hxupdate/model/SimulatorPorts.h"

#include "apps/hxupdate/model/Plugins.h"

#include "ports/SimulatedIdentity.h"

namespace hxupdate {

namespace {

// The simulated port, whose waits take no time, at the speed of real ones.
class RealTimePort final : public hx::MidiPort {
public:
    RealTimePort(hx::MidiPort& port, hx::Clock& real) : m_port(port), m_real(real) {}

    QString name() const override { return m_port.name(); }
    hx::Clock& clock() override { return m_port.clock(); }

    hx::PortIdentity identity() const override { return m_port.identity(); }
    bool isGone() const override { return m_port.isGone(); }

    qint64 send(const QByteArray& message) override
    {
        const hx::Microseconds start = m_port.clock().now();
        const qint64 accepted = m_port.send(message);
        follow(start);
        return accepted;
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
    hx::Clock& m_real;
};

} // namespace

SimulatorPorts::SimulatorPorts(const QString& pluginPlace, std::unique_ptr<hx::Clock> real)
    : m_real(std::move(real))
{
    Plugins plugins;
    plugins.load(pluginPlace);
    if (plugins.isEmpty())
        return;
    if (const auto identity = hx::simulatedIdentity(hx::describeProduct(plugins.device(0))))
        m_port = std::make_unique<hx::SimulatedPort>(
            hx::sim::FaultyProduct(hx::sim::SimulatedProduct(*identity)),
            hx::SimulatedPortOptions{hx::Pace(), 0});
}

QStringList SimulatorPorts::list()
{
    return m_port ? QStringList(m_port->name()) : QStringList();
}

hx::Result<std::unique_ptr<hx::MidiPort>> SimulatorPorts::open(const QString& port,
                                                               DeviceInterface&, const PortMoved&)
{
    if (m_port)
        return std::unique_ptr<hx::MidiPort>(std::make_unique<RealTimePort>(*m_port, *m_real));
    return hx::Problem{
        hx::ExitCode::NoPlugin,
        QStringLiteral("there is no port \"%1\": no plugin says which product to simulate")
            .arg(port),
        {},
        {}};
}

} // namespace hxupdate
