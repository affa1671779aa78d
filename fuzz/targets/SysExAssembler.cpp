// The assembler over any stream, cut anywhere, with pauses anywhere: every byte accounted for once,
// chunks of no consequence, memory bounded, and the messages those of a plain scan.
#include "host/bus/SysExAssembler.h"

#include "fuzz/support/FuzzTarget.h"

#include <QList>

#include <algorithm>

namespace {

using namespace hx;
using namespace hx::fuzz;

using Kind = AssembledEvent::Kind;

struct Chunk {
    QByteArray bytes;
    Microseconds time = 0;
    bool isAfterLoss = false;
};

struct Stream {
    AssemblerLimits limits;
    std::vector<Chunk> chunks;
};

Stream streamOf(FuzzInput& input)
{
    Stream stream;
    stream.limits.maxBytes = input.byte() % 24; // 0 and 1 count as 2
    stream.limits.idle = 100;
    Microseconds time = 0;
    while (!input.atEnd()) {
        const int head = input.byte();
        time += head >= 0xF0 ? 99 + head % 4 : head >> 6; // just within the limit, or beyond it
        stream.chunks.push_back({input.take(1 + head % 16), time, (head & 0x3F) == 0x3F});
    }
    return stream;
}

// The chunks as they came, or byte by byte.
AssembledEvents assembled(const Stream& stream, bool byteByByte, Microseconds end)
{
    SysExAssembler assembler(stream.limits);
    const int bound = qMax(stream.limits.maxBytes, 2);
    AssembledEvents events;
    const auto feed = [&](const QByteArray& bytes, Microseconds time) {
        const AssembledEvents some = assembler.feed(bytes, time);
        events.insert(events.end(), some.begin(), some.end());
        require(assembler.pending().size() <= bound, "memory stays within the bound");
    };
    for (const Chunk& chunk : stream.chunks) {
        if (chunk.isAfterLoss) {
            const AssembledEvents some = assembler.lose(chunk.time);
            events.insert(events.end(), some.begin(), some.end());
        }
        if (!byteByByte)
            feed(chunk.bytes, chunk.time);
        for (int i = 0; byteByByte && i < chunk.bytes.size(); ++i)
            feed(chunk.bytes.mid(i, 1), chunk.time);
    }
    for (const AssembledEvents& some : {assembler.idle(end), assembler.flush()})
        events.insert(events.end(), some.begin(), some.end());
    require(assembler.pending().isEmpty(), "nothing is left after a flush");
    return events;
}

bool isSame(const AssembledEvent& a, const AssembledEvent& b)
{
    return a.kind == b.kind && a.bytes == b.bytes && a.runningStatus == b.runningStatus &&
           a.reason == b.reason && a.firstByte == b.firstByte && a.lastByte == b.lastByte;
}

bool isRealTime(char byte)
{
    return static_cast<quint8>(byte) >= 0xF8;
}

bool isData(char byte)
{
    return static_cast<quint8>(byte) < 0x80;
}

// Real-time bytes and the rest stand each in their order of arrival.
void requireAccounted(const Stream& stream, const AssembledEvents& events)
{
    QByteArray realTime;
    QByteArray others;
    for (const Chunk& chunk : stream.chunks) {
        for (const char byte : chunk.bytes)
            (isRealTime(byte) ? realTime : others) += byte;
    }
    QByteArray realTimeFound;
    QByteArray othersFound;
    for (const AssembledEvent& event : events)
        (event.kind == Kind::RealTime ? realTimeFound : othersFound) += event.bytes;
    requireSame(realTimeFound, realTime, "every real-time byte once");
    requireSame(othersFound, others, "every other byte once");
}

int shortSize(quint8 status)
{
    if (status >= 0xF0)
        return status == 0xF2 ? 3 : status == 0xF6 ? 1 : 2;
    return (status & 0xE0) == 0xC0 ? 2 : 3;
}

void requireWellFormed(const AssembledEvent& event, const AssemblerLimits& limits)
{
    require(event.firstByte <= event.lastByte, "the first byte comes first");
    require((event.kind == Kind::Dropped) == (event.reason != DropReason::None),
            "what is dropped has a reason");
    require(event.bytes.size() <= qMax(limits.maxBytes, 3), "an event is bounded");
    if (event.bytes.isEmpty()) {
        require(event.reason == DropReason::InputLost, "only the mark of a loss has no bytes");
        return;
    }
    require((event.runningStatus == 0) || event.kind == Kind::Short,
            "running status belongs to short messages");
    const QByteArray message = event.message();
    const auto status = static_cast<quint8>(message.at(0));
    if (event.kind == Kind::RealTime)
        require(event.bytes.size() == 1 && status >= 0xF8, "a real-time event");
    if (event.kind != Kind::Short)
        return;
    require(status >= 0x80 && status != 0xF0 && status < 0xF7 && status != 0xF4 && status != 0xF5,
            "a short message's status");
    requireSame(message.size(), shortSize(status), "a short message's size");
    require(std::all_of(message.begin() + 1, message.end(), isData), "a short message's data");
}

// Every run F0, data, F7 within bound and pause, without a loss, is a message, and there is no
// other.
QList<QByteArray> scanned(const Stream& stream)
{
    QList<QByteArray> messages;
    QByteArray current;
    Microseconds last = 0;
    for (const Chunk& chunk : stream.chunks) {
        if (chunk.isAfterLoss)
            current.clear();
        for (const char byte : chunk.bytes) {
            if (chunk.time - last > stream.limits.idle)
                current.clear();
            if (isRealTime(byte))
                continue;
            if (byte == '\xF0')
                current.clear();
            const bool belongs = byte == '\xF0' || !current.isEmpty();
            if (belongs)
                current += byte;
            last = belongs ? chunk.time : last;
            if (byte == '\xF7' && !current.isEmpty())
                messages += current.size() <= qMax(stream.limits.maxBytes, 2)
                                ? QList<QByteArray>{current}
                                : QList<QByteArray>();
            if (!isData(byte) && byte != '\xF0')
                current.clear();
        }
    }
    return messages;
}

void run(FuzzInput& input)
{
    Stream stream = streamOf(input);
    const Microseconds end = stream.chunks.empty() ? 0 : stream.chunks.back().time;
    const QByteArray probe("\xF0\xF7", 2); // arrives whatever came before it
    stream.chunks.push_back({probe, end, false});

    const AssembledEvents events = assembled(stream, false, end);
    const AssembledEvents others = assembled(stream, true, end);
    require(std::equal(events.begin(), events.end(), others.begin(), others.end(), isSame),
            "chunks are of no consequence");
    requireAccounted(stream, events);
    QList<QByteArray> messages;
    for (const AssembledEvent& event : events) {
        requireWellFormed(event, stream.limits);
        if (event.kind == Kind::SysEx)
            messages += event.bytes;
    }
    requireSame(messages, scanned(stream), "the SysEx messages");
    require(!messages.isEmpty() && messages.last() == probe, "the next whole message arrives");
}

const Target target("sysex_assembler", run);

} // namespace
