// What a simulated product hears and answers, told to an observer as a host's own traffic is.
#pragma once

#include "host/bus/BusEvent.h"
#include "host/bus/MidiPort.h"
#include "host/bus/SysExAssembler.h"

namespace hx::host {

// Whole messages that come are "received", replies that leave "sent".
class ServedTraffic {
public:
    ServedTraffic(BusObserver& observer, Clock& clock) : m_observer(observer), m_clock(clock) {}

    void heard(const MidiChunk& chunk);
    void answered(const QByteArray& bytes);

    // To be called now and then, so that a message that is never finished is reported too.
    void silence();
    void end();

    // Replies that left.
    int replies() const { return m_replies; }

private:
    void tell(const AssembledEvents& events);

    BusObserver& m_observer;
    Clock& m_clock;
    SysExAssembler m_assembler;
    int m_replies = 0;
};

} // namespace hx::host
