// Plays the product's side of a trace back to whoever sends what the trace's host sent.
#pragma once

#include "host/bus/MidiPort.h"
#include "host/trace/Trace.h"

#include <functional>

namespace hx {

// The first message that is not the one recorded.
struct ReplayDivergence {
    int message = 0;     // which of the messages sent, from 1
    int line = 0;        // of the trace; 0 when it holds no further message
    QByteArray recorded; // empty when it holds no further message
    QByteArray sent;

    // Position of the first byte that differs; that behind the shorter message when one begins with
    // the other.
    int firstDifference() const;
    // "message 3 (line 12 of the trace) differs at byte 6: recorded 30, sent 31".
    QString text() const;
};

struct ReplayHandlers {
    std::function<void(const ReplayDivergence&)> diverged;
    std::function<void()> interrupted; // somebody pressed Ctrl-C here when the trace was made
};

// What arrived in a session, for a port that is only listened to: all else is left out.
TraceEvents arrivalsOf(const TraceEvents& trace);

// Time moves only as the trace and the waits say: a reply comes when the message before
// it has been sent, at its recorded time. What the trace's host met, a lost port, one that came
// back, a message that could not be sent, an interrupt, is met again. After a divergence nothing can be sent any more.
class ReplayPort final : public MidiPort {
public:
    ReplayPort(const QString& path, const TraceEvents& trace, const ReplayHandlers& handlers);

    QString name() const override { return QStringLiteral("replay:") + m_path; }
    Clock& clock() override { return m_clock; }
    PortIdentity identity() const override
    {
        return {QStringLiteral("replay"), QString(), m_path, QString()};
    }
    qint64 send(const QByteArray& message) override;
    MidiChunk receive(Microseconds deadline) override;
    bool isGone() const override { return m_isGone; }
    int returns() const override { return m_returns; }
    bool atEnd() const override;

    // Messages of the trace that were not sent.
    int messagesLeft() const;

private:
    const TraceEvent* next();
    bool isDue(const TraceEvent& event, Microseconds deadline);
    bool failsToSend(const TraceEvent& event, const QByteArray& message);
    bool comesBack(const TraceEvent& event);
    void diverge(const TraceEvent* recorded, const QByteArray& message);
    MidiChunk deliver(const TraceEvent& event);
    MidiChunk wait(Microseconds deadline);
    void raiseInterrupt();

    QString m_path;
    TraceEvents m_trace;
    ReplayHandlers m_handlers;
    ManualClock m_clock;
    size_t m_next = 0; // event that was not played yet
    int m_sent = 0;
    int m_returns = 0;
    bool m_isGone = false;
    QString m_ended; // why nothing travels any more; empty while it does
};

} // namespace hx
