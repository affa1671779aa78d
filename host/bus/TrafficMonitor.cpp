#include "host/bus/TrafficMonitor.h"

namespace hx {

namespace {

constexpr quint8 timingClock = 0xF8;
constexpr quint8 activeSensing = 0xFE;

} // namespace

void TrafficReport::add(const AssembledEvent& event)
{
    switch (event.kind) {
    case AssembledEvent::Kind::RealTime: {
        const auto byte = static_cast<quint8>(event.bytes.at(0));
        ++(byte == timingClock     ? clockBytes
           : byte == activeSensing ? activeSensingBytes
                                   : otherRealTime);
        break;
    }
    case AssembledEvent::Kind::SysEx:
        ++sysExMessages;
        break;
    case AssembledEvent::Kind::Short:
        ++shortMessages;
        break;
    case AssembledEvent::Kind::Dropped:
        droppedBytes += event.bytes.size();
    }
}

bool TrafficReport::quiet() const
{
    return clockBytes == 0 && activeSensingBytes == 0 && otherRealTime == 0 && sysExMessages == 0 &&
           shortMessages == 0 && droppedBytes == 0;
}

QStringList TrafficReport::warnings() const
{
    QStringList lines;
    if (clockBytes > 0)
        lines << QStringLiteral("MIDI clock is running (%1 ticks heard); stop the sequencer that "
                                "sends it.")
                     .arg(clockBytes);
    if (activeSensingBytes > 0)
        lines << QStringLiteral("An instrument sends active sensing (%1 times heard); disconnect "
                                "it, unless it is the product itself.")
                     .arg(activeSensingBytes);
    if (otherRealTime > 0)
        lines << QStringLiteral("%1 other real-time messages were heard; stop whatever sends them.")
                     .arg(otherRealTime);
    if (sysExMessages > 0 || shortMessages > 0)
        lines << QStringLiteral("Another sender is active (%1 SysEx and %2 other messages heard); "
                                "disconnect it or stop it.")
                     .arg(sysExMessages)
                     .arg(shortMessages);
    if (droppedBytes > 0)
        lines << QStringLiteral("%1 bytes were heard that form no message; check the cable and the "
                                "interface.")
                     .arg(droppedBytes);
    return lines;
}

TrafficReport listenForTraffic(PortBus& bus, Microseconds duration,
                               const ReplyTest& isAcknowledgement)
{
    TrafficReport report;
    for (const AssembledEvent& event : bus.listen(duration)) {
        report.add(event);
        if (isAcknowledgement && event.kind == AssembledEvent::Kind::SysEx &&
            isAcknowledgement(HxMidiData(event.bytes)))
            ++report.acknowledgements;
    }
    report.portError = bus.errorText;
    return report;
}

} // namespace hx
