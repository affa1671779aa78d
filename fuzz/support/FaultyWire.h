// A port with a simulated product at its end, and between them a wire that the input makes do
// anything: lose, change, double, cut, delay or invent bytes, lose power, lose the port.
#pragma once

#include "fuzz/support/FuzzInput.h"
#include "host/bus/MidiPort.h"
#include "simulator/SimulatedProduct.h"

#include <map>

namespace hx {
namespace fuzz {

class FaultyWire final : public MidiPort {
public:
    // With a null input nothing goes wrong.
    FaultyWire(sim::SimulatedProduct& product, FuzzInput* input)
        : m_product(product), m_input(input)
    {
    }

    QString name() const override { return QStringLiteral("faulty"); }
    Clock& clock() override { return m_clock; }
    qint64 send(const QByteArray& message) override;
    MidiChunk receive(Microseconds deadline) override;

    // From now on it is noticed when `proof` arrives although the product did not say it: then the
    // host was told a perfect lie, and what it concludes proves nothing.
    void watchFor(const QByteArray& proof) { m_proof = proof; }
    bool wasForged() const { return m_wasForged; }

    int messagesSent() const { return m_messagesSent; }

private:
    struct Chunk {
        QByteArray bytes;
        bool isGenuine = true;
    };

    int nextFault() { return m_input != nullptr ? m_input->byte() : 0; }
    bool isPresent();
    void hear(const QByteArray& message);
    void answer(QByteArray reply);
    void queue(const QByteArray& bytes, bool isGenuine, Microseconds delay);
    void note(const Chunk& chunk);

    sim::SimulatedProduct& m_product;
    FuzzInput* m_input;
    ManualClock m_clock;
    std::multimap<Microseconds, Chunk> m_arriving;
    bool m_isLost = false;
    int m_messagesSent = 0;
    QByteArray m_proof;
    QByteArray m_heard;      // the last bytes delivered, without real-time bytes
    QByteArray m_provenance; // of each of them: 1 when it is the product's own
    bool m_wasForged = false;
};

} // namespace fuzz
} // namespace hx
