// Passes on what happens to whoever watches: the trace file, and the console at -v and -vv.
#pragma once

#include "apps/hxhost/report/Console.h"
#include "apps/hxhost/session/TraceOutput.h"

#include "host/bus/PortBus.h"
#include "host/trace/Trace.h"

#include <memory>

namespace hx::host {

class Recorder final : public BusObserver {
public:
    explicit Recorder(Console& console);
    ~Recorder() override;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // Records a trace for the file `name`, with `title` as its first comment.
    Result<> openTrace(const QString& name, const QString& title);

    // The trace is worth keeping: from now on it is in its file, and the one that was there is kept
    // beside it. The first event that travels says so too. Good where no trace is recorded.
    Result<> startTrace();

    // From now on times come from the bus's clock, and what happens on the bus is recorded, until
    // `detach`. `nameOf` gives messages their names.
    void attach(PortBus& bus, const NameOfMessage& nameOf);
    void detach();

    // Records what did not travel: a decision, a line of a log.
    void note(BusEventKind kind, const QString& text);

    // False once the trace could not be written.
    bool ok() const { return !m_writer || m_writer->ok(); }

    void busEvent(const BusEvent& event) override;

private:
    void showOnConsole(const BusEvent& event);
    void continueTimeFrom(Clock& clock);

    Console& m_console;
    TraceOutput m_output;
    std::unique_ptr<TraceWriter> m_writer;
    PortBus* m_bus = nullptr;
    NameOfMessage m_nameOf;
    SteadyClock m_clock;          // while there is no bus
    Microseconds m_traceTime = 0; // of the last event; the trace starts at 0
    Microseconds m_shift = 0;     // from the clock in use to the trace's time
};

} // namespace hx::host
