#include "tests/hxupdate/TestPorts.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <array>

namespace {

class TestPort final : public hx::MidiPort {
public:
    TestPort(const QString& name, const std::shared_ptr<TestProduct>& product)
        : m_name(name), m_product(product)
    {
    }

    QString name() const override { return m_name; }
    hx::Clock& clock() override { return m_product->clock(); }
    qint64 send(const QByteArray& message) override { return m_product->send(message, &errorText); }
    hx::MidiChunk receive(hx::Microseconds deadline) override
    {
        return m_product->receive(deadline, &errorText);
    }

private:
    QString m_name;
    std::shared_ptr<TestProduct> m_product;
};

const QString portIsGone = QStringLiteral("the port is gone");

} // namespace

void ThreadLog::note()
{
    const bool isMain = QThread::currentThread() == QCoreApplication::instance()->thread();
    ++(isMain ? onMain : elsewhere);
}

hx::sim::FaultyProduct unit(const char* serial)
{
    hx::sim::SimulatedProductSettings settings;
    std::array<quint8, 8> number = {};
    std::copy_n(serial, number.size(), number.begin());
    settings.serialNumber = number;
    return hx::sim::FaultyProduct(hx::sim::SimulatedProduct(hx::sim::valdrin(), settings));
}

qint64 TestProduct::send(const QByteArray& message, QString* error)
{
    threads.note();
    if (gate.messages == 0) {
        gate.reached.release();
        gate.opened.acquire();
    }
    if (gate.messages >= 0)
        --gate.messages;
    if (isDeadEnd)
        return message.size();
    if (!isPluggedIn) {
        *error = portIsGone;
        return 0;
    }
    ++messages;
    const qint64 accepted = m_port.send(message);
    *error = m_port.errorText;
    return accepted;
}

hx::MidiChunk TestProduct::receive(hx::Microseconds deadline, QString* error)
{
    threads.note();
    hx::MidiChunk chunk = isPluggedIn ? m_port.receive(deadline) : hx::MidiChunk();
    *error = isPluggedIn ? m_port.errorText : portIsGone;
    return isDeadEnd ? hx::MidiChunk() : chunk;
}

void TestProduct::setFaults(const hx::sim::FaultPlan& plan)
{
    m_port.device() = hx::sim::FaultyProduct(m_port.product(), plan);
}

QStringList TestPorts::list()
{
    threads.note();
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_products.keys();
}

hx::Result<std::unique_ptr<hx::MidiPort>> TestPorts::open(const QString& port, DeviceInterface&,
                                                          const hxupdate::PortMoved&)
{
    threads.note();
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::shared_ptr<TestProduct> product = m_products.value(port);
    if (product && !product->isHeld)
        return std::unique_ptr<hx::MidiPort>(std::make_unique<TestPort>(port, product));
    const QString what = product ? QStringLiteral("another program holds it") : portIsGone;
    return hx::Problem{hx::ExitCode::NoPort, what, {}, {}};
}

std::shared_ptr<TestProduct> TestPorts::plug(const QString& port,
                                             const hx::sim::FaultyProduct& product)
{
    const auto plugged = std::make_shared<TestProduct>(product);
    plug(port, plugged);
    return plugged;
}

void TestPorts::plug(const QString& port, const std::shared_ptr<TestProduct>& product)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    product->isPluggedIn = true;
    m_products.insert(port, product);
}

void TestPorts::unplug(const QString& port)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::shared_ptr<TestProduct> product = m_products.take(port);
    if (product)
        product->isPluggedIn = false;
}
