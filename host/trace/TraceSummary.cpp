#include "host/trace/TraceSummary.h"

#include "host/base/WirePace.h"

#include <algorithm>

namespace hx {

namespace {

class Summarizer {
public:
    void take(const TraceEvent& event);
    TraceSummary summary() const { return m_summary; }

private:
    void takeSent(const TraceEvent& event);
    void takeReply(const TraceEvent& event);
    void endWait(Microseconds time);

    TraceSummary m_summary;
    QByteArray m_lastMessage;
    Microseconds m_start = 0;    // moment of the first byte sent
    Microseconds m_lastSent = 0; // moment of the last byte of the message before
    bool m_isWaiting = false;
};

void Summarizer::take(const TraceEvent& event)
{
    switch (event.event.kind) {
    case BusEventKind::Sent:
        return takeSent(event);
    case BusEventKind::Received:
        return takeReply(event);
    case BusEventKind::Ignored:
        ++m_summary.ignored;
        return;
    case BusEventKind::Dropped:
        m_summary.droppedBytes += event.event.bytes.size();
        return;
    case BusEventKind::RealTime:
        ++m_summary.realTime;
        return;
    case BusEventKind::TimedOut:
        ++m_summary.timeouts;
        return endWait(event.event.time);
    default:
        return;
    }
}

void Summarizer::takeSent(const TraceEvent& event)
{
    const QByteArray& message = event.event.bytes;
    const Microseconds wire = Pace().wireTime(message.size());
    if (m_summary.sent == 0)
        m_start = std::max<Microseconds>(0, event.event.time - wire);
    m_summary.retries += message == m_lastMessage ? 1 : 0;
    m_summary.wire += wire;
    m_summary.sentBytes += message.size();
    ++m_summary.sent;
    m_lastMessage = message;
    m_lastSent = event.event.time;
    m_isWaiting = true;
}

void Summarizer::takeReply(const TraceEvent& event)
{
    ++m_summary.received;
    m_summary.receivedBytes += event.event.bytes.size();
    const Microseconds reply = event.event.time - m_lastSent;
    if (m_isWaiting && reply > m_summary.slowestReply) {
        m_summary.slowestReply = reply;
        m_summary.slowestLine = event.line;
    }
    endWait(event.event.time);
}

void Summarizer::endWait(Microseconds time)
{
    if (!m_isWaiting)
        return;
    m_summary.waiting += time - m_lastSent;
    m_summary.elapsed = time - m_start;
    m_isWaiting = false;
}

} // namespace

double TraceSummary::wireUse() const
{
    return wire > 0 ? double(elapsed - waiting) / double(wire) : 0;
}

TraceSummary summarize(const TraceEvents& events)
{
    Summarizer summarizer;
    for (const TraceEvent& event : events)
        summarizer.take(event);
    return summarizer.summary();
}

} // namespace hx
