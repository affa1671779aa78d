// What of a trace is drawn, row by row: exchanges that are all alike are drawn once, not a thousand
// times.
#pragma once

#include "host/trace/Trace.h"

#include <QStringList>

#include <vector>

namespace hx {

struct SequenceRow {
    enum class Kind {
        Message,  // went out
        Retry,    // went out again, right after itself
        Reply,    // was taken as the answer
        Refusal,  // the same, and it says that something went wrong
        Ignored,  // came and was not taken
        Dropped,  // bytes that form no message
        Failure,  // no answer in time, port lost, not sent, interrupted
        Note,     // what the host made of it
        Omission, // takes the place of `events` of the trace
    };

    Kind kind = Kind::Note;
    Microseconds time = 0;
    QString text;
    QStringList notes; // beside the row: what the host made of it
    int events = 1;
};

// The rows, never more than maxSequenceRows, whatever the length of the trace. Real-time bytes and
// log lines have none.
std::vector<SequenceRow> sequenceRows(const TraceEvents& events);

constexpr int maxSequenceRows = 160;

// Whether an answer of this name says that something went wrong.
bool isRefusalName(const QString& name);

} // namespace hx
