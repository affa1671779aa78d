/** @file
 * A port with a simulated product at its end, in this process and on a clock of its own: waiting
 * takes no time.
 */
#pragma once

#include "host/bus/MidiPort.h"
#include "ports/Pacer.h"
#include "simulator/FaultyProduct.h"

#include <map>

namespace hx {

struct SimulatedPortOptions {
    Pace pace = {0, 0}; /**< how fast bytes travel, both ways */
    int chunkSize = 0;  /**< longest chunk that arrives in one piece; 0: replies are not cut */
};

class SimulatedPort final : public MidiPort {
public:
    /** Chunks that wait to be received; what comes when there are as many is lost. */
    static constexpr int queueLimit = 4096;

    explicit SimulatedPort(const sim::FaultyProduct& product,
                           const SimulatedPortOptions& options = {});

    QString name() const override { return QStringLiteral("simulator"); }
    Clock& clock() override { return m_clock; }

    PortIdentity identity() const override { return {name(), QString(), name(), QString()}; }

    /** Moves the clock by the time that the bytes take on the wire. */
    qint64 send(const QByteArray& message) override;

    /** Moves the clock to the chunk that arrives next, or to the deadline. */
    MidiChunk receive(Microseconds deadline) override;

    bool isGone() const override { return m_device.isGone(); }

    /** What is plugged in, to look at or to change. */
    sim::FaultyProduct& device() { return m_device; }
    sim::SimulatedProduct& product() { return m_device.product(); }

private:
    bool isPresent();
    void queueReply(const sim::SimulatedReply& reply);
    void queueUnasked();

    ManualClock m_clock;
    SimulatedPortOptions m_options;
    Pacer m_pacer;
    sim::FaultyProduct m_device;
    std::multimap<Microseconds, QByteArray> m_arriving; /**< by the moment of arrival */
    Microseconds m_nextUnasked = 0;
};

} // namespace hx
