#include "host/trace/TraceThroughput.h"

#include "host/base/WirePace.h"
#include "host/trace/TraceSequence.h"
#include "qt/Saturated.h"

#include <algorithm>

namespace hx {

namespace {

constexpr int mostBins = 100;

// One message on the wire.
struct Transmission {
    Microseconds from;
    Microseconds to;
    int bytes;
    bool isAgain;
};

bool isFault(const TraceEvent& event)
{
    const BusEventKind kind = event.event.kind;
    return kind == BusEventKind::TimedOut || kind == BusEventKind::PortLost ||
           kind == BusEventKind::SendFailed ||
           (kind == BusEventKind::Received && isRefusalName(event.name));
}

// The wire was free at the event before; a message took no longer than at MIDI's own rate.
std::vector<Transmission> transmissionsOf(const TraceEvents& events)
{
    std::vector<Transmission> all;
    QByteArray last;
    Microseconds free = 0;
    for (const TraceEvent& event : events) {
        const Microseconds time = event.event.time;
        if (event.event.kind == BusEventKind::Sent) {
            const QByteArray& message = event.event.bytes;
            const int size = saturated(message.size());
            const Microseconds from = std::max(free, time - Pace().wireTime(size));
            all.push_back({std::min(from, time), time, size, message == last});
            last = message;
        }
        free = time;
    }
    return all;
}

// 1, 2 or 5 times a power of ten.
Microseconds roundWidth(Microseconds least)
{
    for (Microseconds power = 1;; power *= 10) {
        for (const Microseconds width : {power, 2 * power, 5 * power}) {
            if (width >= least)
                return width;
        }
    }
}

void spread(const Transmission& sent, Throughput* result)
{
    const Microseconds width = result->binWidth;
    const double seconds = double(width) / microsecondsPerSecond;
    const Microseconds last = std::max(sent.to, sent.from + 1);
    for (Microseconds from = sent.from; from < last;) {
        const size_t bin =
            std::min(size_t((from - result->start) / width), result->sent.size() - 1);
        const Microseconds binEnd = result->start + Microseconds(bin + 1) * width;
        const Microseconds to = bin + 1 == result->sent.size() ? last : std::min(last, binEnd);
        const double rate = sent.bytes * double(to - from) / double(last - sent.from) / seconds;
        result->sent[bin] += rate;
        result->again[bin] += sent.isAgain ? rate : 0;
        from = to;
    }
}

} // namespace

double Throughput::highest() const
{
    return sent.empty() ? 0 : *std::max_element(sent.begin(), sent.end());
}

Throughput throughputOf(const TraceEvents& events)
{
    Throughput result;
    const std::vector<Transmission> all = transmissionsOf(events);
    if (all.empty())
        return result;
    result.start = all.front().from;
    const Microseconds duration =
        std::max<Microseconds>(1, events.back().event.time - result.start);
    result.binWidth = roundWidth((duration + mostBins - 1) / mostBins);
    const auto bins = size_t((duration + result.binWidth - 1) / result.binWidth);
    result.sent.resize(bins);
    result.again.resize(bins);
    for (const Transmission& sent : all)
        spread(sent, &result);
    for (const TraceEvent& event : events) {
        if (isFault(event) && event.event.time >= result.start)
            result.faults.push_back(event.event.time);
    }
    return result;
}

} // namespace hx
