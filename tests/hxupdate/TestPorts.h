// Ports with simulated products at their ends, which a test plugs in, holds back and pulls out.
#pragma once

#include "apps/hxupdate/model/PortSource.h"
#include "ports/SimulatedPort.h"
#include "tests/support/Valdrin.h"

#include <QMap>
#include <QSemaphore>

#include <atomic>
#include <memory>
#include <mutex>

// On which threads the ports are used.
struct ThreadLog {
    std::atomic<int> onMain{0};
    std::atomic<int> elsewhere{0};

    void note();
};

// A place at which a transfer waits until the test lets it go on.
struct Gate {
    std::atomic<int> messages{-1}; // that pass before it closes; negative: it is open
    QSemaphore reached;            // released when somebody waits
    QSemaphore opened;
};

// One port with a product. Used by the window's thread of work and by the test at the same time.
class TestProduct {
public:
    explicit TestProduct(const hx::sim::FaultyProduct& product) : m_port(product, {{0, 0}, 0}) {}

    qint64 send(const QByteArray& message, QString* error);
    hx::MidiChunk receive(hx::Microseconds deadline, QString* error);
    hx::Clock& clock() { return m_port.clock(); }

    hx::sim::SimulatedProduct& product() { return m_port.product(); }
    void setFaults(const hx::sim::FaultPlan& plan);

    std::atomic<int> messages{0};        // that were sent to it
    std::atomic<bool> isPluggedIn{true}; // false: whoever uses the port loses it
    std::atomic<bool> isHeld{false};     // it cannot be opened
    std::atomic<bool> isDeadEnd{false};  // what is sent is lost, as after the death of the sender
    Gate gate;
    ThreadLog threads;

private:
    hx::SimulatedPort m_port;
};

// One with this serial number, of eight characters.
hx::sim::FaultyProduct unit(const char* serial);

class TestPorts final : public hxupdate::PortSource {
public:
    QStringList list() override;
    hx::Result<std::unique_ptr<hx::MidiPort>> open(const QString& port, DeviceInterface& device,
                                                   const hxupdate::PortMoved& moved) override;

    // Plugs a product in, and takes it away again.
    std::shared_ptr<TestProduct>
    plug(const QString& port, const hx::sim::FaultyProduct& product = hx::sim::FaultyProduct(
                                  hx::sim::SimulatedProduct(hx::sim::valdrin())));
    void plug(const QString& port, const std::shared_ptr<TestProduct>& product);
    void unplug(const QString& port);

    ThreadLog threads;

private:
    std::mutex m_mutex;
    QMap<QString, std::shared_ptr<TestProduct>> m_products;
};
