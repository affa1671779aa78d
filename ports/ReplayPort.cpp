#include "ports/ReplayPort.h"

#include "host/base/HexText.h"
#include "qt/Saturated.h"

#include <algorithm>
#include <cstddef>

namespace hx {

namespace {

QString byteText(const QByteArray& message, int position)
{
    return position < message.size() ? hexText(message.mid(position, 1))
                                     : QStringLiteral("nothing");
}

} // namespace

int ReplayDivergence::firstDifference() const
{
    const int shorter = saturated(std::min(recorded.size(), sent.size()));
    for (int i = 0; i < shorter; ++i) {
        if (recorded.at(i) != sent.at(i))
            return i;
    }
    return shorter;
}

QString ReplayDivergence::text() const
{
    if (line == 0)
        return QStringLiteral("message %1 was sent, the trace holds only %2")
            .arg(message)
            .arg(message - 1);
    const int position = firstDifference();
    return QStringLiteral("message %1 (line %2 of the trace) differs at byte %3: recorded %4, "
                          "sent %5")
        .arg(QString::number(message), QString::number(line), QString::number(position),
             byteText(recorded, position), byteText(sent, position));
}

TraceEvents arrivalsOf(const TraceEvents& trace)
{
    TraceEvents arrivals;
    for (const TraceEvent& event : trace) {
        if (isArrival(event.event.kind))
            arrivals.push_back(event);
    }
    return arrivals;
}

ReplayPort::ReplayPort(const QString& path, const TraceEvents& trace,
                       const ReplayHandlers& handlers)
    : m_path(path), m_trace(trace), m_handlers(handlers)
{
}

// The event to be played next; those that did not travel are passed over.
const TraceEvent* ReplayPort::next()
{
    for (; m_next < m_trace.size(); ++m_next) {
        if (concernsWire(m_trace[m_next].event.kind))
            return &m_trace[m_next];
    }
    return nullptr;
}

qint64 ReplayPort::send(const QByteArray& message)
{
    errorText = m_ended;
    if (!m_ended.isEmpty())
        return 0;
    const TraceEvent* event = next();
    while (event != nullptr && event->event.kind != BusEventKind::Sent) {
        ++m_next;
        if (failsToSend(*event, message) || comesBack(*event))
            return 0;
        event = next();
    }
    ++m_sent;
    if (event == nullptr || event->event.bytes != message) {
        diverge(event, message);
        return 0;
    }
    m_clock.sleepUntil(event->event.time);
    ++m_next;
    return message.size();
}

bool ReplayPort::failsToSend(const TraceEvent& event, const QByteArray& message)
{
    if (event.event.kind != BusEventKind::SendFailed || event.event.bytes != message)
        return false;
    m_clock.sleepUntil(event.event.time);
    errorText = event.event.text;
    const TraceEvent* after = next();
    m_isGone = after != nullptr && after->event.kind == BusEventKind::PortLost;
    return true;
}

bool ReplayPort::comesBack(const TraceEvent& event)
{
    if (event.event.kind != BusEventKind::PortBack)
        return false;
    m_clock.sleepUntil(event.event.time);
    ++m_returns;
    errorText = event.event.text;
    return true;
}

void ReplayPort::diverge(const TraceEvent* recorded, const QByteArray& message)
{
    ReplayDivergence divergence;
    divergence.message = m_sent;
    divergence.sent = message;
    if (recorded != nullptr) {
        divergence.line = recorded->line;
        divergence.recorded = recorded->event.bytes;
    }
    m_ended = errorText = QStringLiteral("the replay diverged: ") + divergence.text();
    m_handlers.diverged(divergence);
}

MidiChunk ReplayPort::receive(Microseconds deadline)
{
    errorText = m_ended;
    const TraceEvent* event = next();
    if (!m_ended.isEmpty() || event == nullptr || !isDue(*event, deadline))
        return wait(deadline);
    switch (event->event.kind) {
    case BusEventKind::TimedOut:
        ++m_next;
        return wait(deadline);
    case BusEventKind::PortLost:
        m_isGone = true;
        m_ended = errorText = QStringLiteral("it was lost when the trace was made");
        return {};
    case BusEventKind::PortBack:
        ++m_next;
        comesBack(*event);
        return wait(deadline);
    case BusEventKind::Interrupted:
        raiseInterrupt();
        return {};
    case BusEventKind::Sent:
    case BusEventKind::SendFailed:
        return wait(deadline);
    default:
        return deliver(*event);
    }
}

// A poll, whose deadline is now, also takes what the recorded host took a moment later.
bool ReplayPort::isDue(const TraceEvent& event, Microseconds deadline)
{
    return event.event.time <= std::max(deadline, m_clock.now()) ||
           (event.event.kind == BusEventKind::TimedOut && deadline <= m_clock.now());
}

MidiChunk ReplayPort::deliver(const TraceEvent& event)
{
    m_clock.sleepUntil(event.event.time);
    ++m_next;
    MidiChunk chunk = {event.event.bytes, m_clock.now()};
    const TraceEvent* after = next();
    if (after != nullptr && after->event.kind == BusEventKind::Interrupted)
        raiseInterrupt();
    return chunk;
}

void ReplayPort::raiseInterrupt()
{
    ++m_next;
    m_handlers.interrupted();
}

MidiChunk ReplayPort::wait(Microseconds deadline)
{
    errorText = m_ended;
    m_clock.sleepUntil(deadline);
    return {};
}

bool ReplayPort::atEnd() const
{
    return std::none_of(m_trace.begin() + std::ptrdiff_t(m_next), m_trace.end(),
                        [](const TraceEvent& event) { return concernsWire(event.event.kind); });
}

int ReplayPort::messagesLeft() const
{
    int left = 0;
    for (size_t i = m_next; i < m_trace.size(); ++i)
        left += m_trace[i].event.kind == BusEventKind::Sent ? 1 : 0;
    return left;
}

} // namespace hx
