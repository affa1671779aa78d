// A bus on a port that plays a part, asked for a checksum.
#pragma once

#include "host/bus/PortBus.h"
#include "tests/host/Bytes.h"
#include "tests/support/QtPrinting.h"
#include "tests/support/ScriptedPort.h"

#include <gtest/gtest.h>

inline const QByteArray command = hex("F0006B2D304130F7");
inline const QByteArray checksumReply = hex("F0006B2D3041305F507226F7");
inline const QString checksumPattern = QStringLiteral("F0 00 6B 2D 30 41 30 .. .. .. ..");

class EventRecorder : public hx::BusObserver {
public:
    void busEvent(const hx::BusEvent& event) override { events.push_back(event); }

    int count(hx::BusEventKind kind) const
    {
        int found = 0;
        for (const hx::BusEvent& event : events)
            found += event.kind == kind ? 1 : 0;
        return found;
    }

    const hx::BusEvent& first(hx::BusEventKind kind) const
    {
        for (const hx::BusEvent& event : events) {
            if (event.kind == kind)
                return event;
        }
        throw std::runtime_error("no such event");
    }

    std::vector<hx::BusEvent> events;
};

class PortBusTest : public testing::Test {
protected:
    PortBusTest() { bus.addObserver(&recorder); }

    // Lets `bytes` arrive `delay` after each command.
    void answerWith(const QByteArray& bytes, hx::Microseconds delay = 1000)
    {
        port.answer = [=](const QByteArray&, int) { port.arrive(bytes, delay); };
    }

    HxMidiData transact(unsigned timeoutMs = 2200)
    {
        return bus.transact(HxMidiData(command), checksumPattern, timeoutMs);
    }

    ScriptedPort port;
    hx::PortBus bus{port};
    EventRecorder recorder;
};
