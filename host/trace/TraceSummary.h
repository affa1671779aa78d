// What a trace amounts to: messages, retries, replies and the use of the wire.
#pragma once

#include "host/trace/Trace.h"

#include <vector>

namespace hx {

struct TraceSummary {
    int sent = 0;
    int retries = 0; // messages that were sent again right after themselves
    int received = 0;
    int ignored = 0;
    int timeouts = 0;
    int realTime = 0;
    qint64 sentBytes = 0;
    qint64 receivedBytes = 0; // of messages that were taken as answers
    qint64 droppedBytes = 0;
    Microseconds elapsed = 0;      // from the first byte sent to the last answer or timeout
    Microseconds wire = 0;         // that the bytes sent take on a DIN MIDI wire
    Microseconds waiting = 0;      // from each message's last byte to its answer or timeout
    Microseconds slowestReply = 0; // of the answers
    int slowestLine = 0;           // of the trace, of that answer

    // Time that was not spent waiting, in parts of the wire time: 1 means that the wire was never
    // idle. 0 when nothing was sent.
    double wireUse() const;
};

TraceSummary summarize(const TraceEvents& events);

} // namespace hx
