#include "ports/ReturningPort.h"

#include <algorithm>
#include <utility>

namespace hx {

namespace {

constexpr Microseconds returnInterval = 250 * microsecondsPerMillisecond; // between two looks

} // namespace

ReturningPort::ReturningPort(std::unique_ptr<MidiPort> port, Clock& clock, const Ways& ways,
                             Microseconds patience)
    : m_port(std::move(port)), m_clock(clock), m_ways(ways), m_patience(patience),
      m_name(m_port->name()), m_identity(m_port->identity())
{
}

qint64 ReturningPort::send(const QByteArray& message)
{
    qint64 accepted = 0;
    if (m_port) {
        accepted = m_port->send(message);
        errorText = m_port->errorText;
    }
    if (!hasGone())
        return accepted;
    while (!isBack() && !m_isGivenUp)
        m_clock.sleepUntil(m_nextLook);
    if (m_port)
        errorText = QStringLiteral("the port %1 was away and is back").arg(m_name);
    return 0;
}

bool ReturningPort::drain(Microseconds deadline)
{
    const bool isEmpty = m_port && m_port->drain(deadline);
    errorText = m_port ? m_port->errorText : m_loss;
    return isEmpty;
}

MidiChunk ReturningPort::receive(Microseconds deadline)
{
    errorText.clear();
    MidiChunk chunk;
    if (m_port) {
        chunk = m_port->receive(deadline);
        errorText = m_port->errorText;
    }
    if (!chunk.bytes.isEmpty()) {
        if (std::exchange(m_hasReturned, false))
            chunk.lostBefore = std::max<qint64>(chunk.lostBefore, 1);
        return chunk;
    }
    if (hasGone() && !isBack() && !m_isGivenUp)
        m_clock.sleepUntil(std::min(deadline, m_nextLook));
    return {};
}

// Whether it is away. From the moment on at which that is noticed it is waited for.
bool ReturningPort::hasGone()
{
    if (!m_port)
        return true;
    if (!m_port->isGone())
        return false;
    m_loss = m_port->errorText;
    m_port.reset();
    m_lostAt = m_clock.now();
    m_nextLook = m_lostAt;
    m_isGivenUp = !m_ways.mayReturn();
    if (m_isGivenUp)
        return true;
    m_ways.tell(BusEventKind::Decided, QStringLiteral("%1; it is waited for %2 seconds")
                                           .arg(m_loss)
                                           .arg(m_patience / microsecondsPerSecond));
    return true;
}

bool ReturningPort::isBack()
{
    errorText.clear();
    const Microseconds now = m_clock.now();
    if (!m_isGivenUp && now >= m_nextLook) {
        m_nextLook = now + returnInterval;
        auto port = m_ways.reopen();
        if (port) {
            m_port = std::move(*port);
            m_hasReturned = true;
            ++m_returns;
            m_ways.tell(BusEventKind::PortBack,
                        QStringLiteral("the port %1 is back, as %2").arg(m_name, m_port->name()));
            return true;
        }
        m_isGivenUp = now - m_lostAt >= m_patience;
    }
    if (m_isGivenUp)
        errorText = m_loss;
    return false;
}

} // namespace hx
