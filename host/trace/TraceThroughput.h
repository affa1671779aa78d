// How many bytes a second a trace sent, over its time.
#pragma once

#include "host/trace/Trace.h"

#include <vector>

namespace hx {

struct Throughput {
    Microseconds start = 0; // of the first bin
    Microseconds binWidth = 0;
    std::vector<double> sent;         // bytes a second in each bin, all of them
    std::vector<double> again;        // the part of it that went out once more
    std::vector<Microseconds> faults; // moments of timeouts, refusals and losses

    double highest() const;
    Microseconds end() const { return start + binWidth * Microseconds(sent.size()); }
};

// Each message's bytes are spread over the time that they were on the wire. No bins without a
// message.
Throughput throughputOf(const TraceEvents& events);

} // namespace hx
