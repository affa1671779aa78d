#include "ports/ProductServer.h"

#include <algorithm>

namespace hx {

bool ProductServer::serve(Microseconds wait)
{
    scheduleUnasked();
    const MidiChunk chunk = m_port.receive(nextDue(m_port.clock().now() + wait));
    errorText = m_port.errorText;
    if (chunk.lostBefore > 0)
        errorText = QStringLiteral("%1 bytes of input were lost: more waited to be read than the "
                                   "port keeps")
                        .arg(chunk.lostBefore);
    if (!errorText.isEmpty())
        return false;
    if (!chunk.bytes.isEmpty() && !take(chunk))
        return false;
    return sendDue() && !m_product.isGone();
}

bool ProductServer::take(const MidiChunk& chunk)
{
    if (m_watch.heard)
        m_watch.heard(chunk);
    schedule(m_product.receive(chunk.bytes), chunk.time);
    return !m_watch.handled || m_watch.handled();
}

void ProductServer::schedule(const QVector<sim::SimulatedReply>& replies, Microseconds arrival)
{
    for (const sim::SimulatedReply& reply : replies)
        m_due.emplace(arrival + reply.delayUs, reply.bytes);
}

void ProductServer::scheduleUnasked()
{
    const QByteArray bytes = m_product.unaskedBytes();
    const Microseconds now = m_port.clock().now();
    if (bytes.isEmpty() || m_nextUnasked > now)
        return;
    m_due.emplace(now, bytes);
    m_nextUnasked = now + sim::FaultyProduct::noisePeriodUs;
}

bool ProductServer::sendDue()
{
    while (!m_due.empty() && m_due.begin()->first <= m_port.clock().now()) {
        const QByteArray bytes = m_due.begin()->second;
        m_due.erase(m_due.begin());
        if (m_port.send(bytes) < bytes.size()) {
            errorText = m_port.errorText;
            return false;
        }
        if (m_watch.answered)
            m_watch.answered(bytes);
    }
    return true;
}

Microseconds ProductServer::nextDue(Microseconds latest) const
{
    const Microseconds due = m_due.empty() ? latest : std::min(latest, m_due.begin()->first);
    return m_product.unaskedBytes().isEmpty() ? due : std::min(due, m_nextUnasked);
}

} // namespace hx
