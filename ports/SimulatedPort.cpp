#include "ports/SimulatedPort.h"

#include "qt/Saturated.h"

namespace hx {

SimulatedPort::SimulatedPort(const sim::FaultyProduct& product, const SimulatedPortOptions& options)
    : m_options(options), m_pacer(m_clock, options.pace), m_device(product)
{
}

bool SimulatedPort::isPresent()
{
    errorText.clear();
    if (m_device.isGone())
        errorText = QStringLiteral("the port \"%1\" is gone: the simulated product was unplugged; "
                                   "plug it in again and start over")
                        .arg(name());
    return !m_device.isGone();
}

qint64 SimulatedPort::send(const QByteArray& message)
{
    if (!isPresent())
        return 0;
    const int size = saturated(message.size());
    m_pacer.waitForTurn(size);
    m_pacer.waitForWire(size);
    const QVector<sim::SimulatedReply> replies = m_device.receive(message);
    for (const sim::SimulatedReply& reply : replies)
        queueReply(reply);
    return isPresent() ? size : 0;
}

void SimulatedPort::queueReply(const sim::SimulatedReply& reply)
{
    const int size = saturated(reply.bytes.size());
    const int piece = m_options.chunkSize > 0 ? m_options.chunkSize : size;
    for (int start = 0; start < size; start += piece) {
        if (m_arriving.size() >= queueLimit)
            return;
        const int end = qMin(size, start + piece);
        const Microseconds arrival = m_clock.now() + reply.delayUs + m_options.pace.wireTime(end);
        m_arriving.emplace(arrival, reply.bytes.mid(start, end - start));
    }
}

// Only one chunk at a time, however long nobody listened.
void SimulatedPort::queueUnasked()
{
    const QByteArray bytes = m_device.unaskedBytes();
    if (bytes.isEmpty() || m_nextUnasked > m_clock.now() + sim::FaultyProduct::noisePeriodUs)
        return;
    const Microseconds arrival = qMax(m_nextUnasked, m_clock.now());
    m_arriving.emplace(arrival, bytes);
    m_nextUnasked = arrival + sim::FaultyProduct::noisePeriodUs;
}

MidiChunk SimulatedPort::receive(Microseconds deadline)
{
    if (!isPresent())
        return {};
    queueUnasked();
    const auto next = m_arriving.begin();
    const bool comesInTime =
        next != m_arriving.end() && (next->first <= deadline || next->first <= m_clock.now());
    m_clock.sleepUntil(comesInTime ? next->first : deadline);
    MidiChunk chunk;
    chunk.time = m_clock.now();
    if (comesInTime) {
        chunk.time = next->first;
        chunk.bytes = next->second;
        m_arriving.erase(next);
    }
    return chunk;
}

} // namespace hx
