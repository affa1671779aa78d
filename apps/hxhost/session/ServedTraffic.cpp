#include "apps/hxhost/session/ServedTraffic.h"

namespace hx::host {

namespace {

BusEventKind kindOf(const AssembledEvent& event)
{
    switch (event.kind) {
    case AssembledEvent::Kind::RealTime:
        return BusEventKind::RealTime;
    case AssembledEvent::Kind::Dropped:
        return BusEventKind::Dropped;
    case AssembledEvent::Kind::SysEx:
    case AssembledEvent::Kind::Short:
        break;
    }
    return BusEventKind::Received;
}

} // namespace

void ServedTraffic::heard(const MidiChunk& chunk)
{
    tell(m_assembler.feed(chunk.bytes, chunk.time));
}

void ServedTraffic::answered(const QByteArray& bytes)
{
    ++m_replies;
    m_observer.busEvent({BusEventKind::Sent, m_clock.now(), bytes, QString()});
}

void ServedTraffic::silence()
{
    tell(m_assembler.idle(m_clock.now()));
}

void ServedTraffic::end()
{
    tell(m_assembler.flush());
}

void ServedTraffic::tell(const AssembledEvents& events)
{
    for (const AssembledEvent& event : events)
        m_observer.busEvent(
            {kindOf(event), event.lastByte, event.bytes, dropReasonText(event.reason)});
}

} // namespace hx::host
