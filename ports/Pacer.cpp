#include "ports/Pacer.h"

#include <algorithm>

namespace hx {

Pacer::Pacer(Clock& clock, const Pace& pace, const OutputBuffer& buffer)
    : m_clock(clock), m_pace(pace), m_buffer(buffer)
{
}

void Pacer::waitForTurn(int bytes)
{
    if (m_hasSent)
        m_clock.sleepUntil(m_wireFree + m_pace.gap);
    while (inBuffer() > 0 && inBuffer() + bytes + m_buffer.bytesPerMessage > m_buffer.bytes)
        m_clock.sleepUntil(m_sent.front().leaves);
}

void Pacer::waitForWire(int bytes)
{
    m_lastSent = m_clock.now();
    m_wireFree = m_lastSent + m_pace.wireTime(bytes);
    m_hasSent = true;
    if (m_buffer.bytes > 0)
        m_sent.push_back({m_lastSent + m_buffer.emptying, bytes + m_buffer.bytesPerMessage});
    m_clock.sleepUntil(m_wireFree);
}

bool Pacer::drain(Microseconds deadline)
{
    if (!m_hasSent)
        return true;
    const Microseconds empty = std::max(m_wireFree, m_lastSent + m_buffer.emptying);
    m_clock.sleepUntil(std::min(empty, deadline));
    return empty <= deadline;
}

int Pacer::inBuffer()
{
    const Microseconds now = m_clock.now();
    while (!m_sent.empty() && m_sent.front().leaves <= now)
        m_sent.pop_front();
    int bytes = 0;
    for (const Sent& sent : m_sent)
        bytes += sent.bytes;
    return bytes;
}

} // namespace hx
