#include "tests/sweep/Sweep.h"

#include <set>

namespace sweep {

namespace {

using Visit = std::function<void(const Scenario&)>;

constexpr int microsecondsPerMillisecond = 1000;

// Real-time bytes, the ends and the start of a SysEx, other status bytes, and data.
const std::vector<int> inserted = {0xF8, 0xFE, 0xF0, 0xF7, 0xFA, 0xFF, 0x80, 0x90, 0xB0,
                                   0xC0, 0xF1, 0xF2, 0xF4, 0xF6, 0x00, 0x02, 0x46, 0x7F};

// Just before and after the longest pause in a message, the timeout, the time that an answer is
// waited for after a silence, and the timeouts of the retries. The early ones before the timeout
// leave a command time to be answered, or not.
const std::vector<int> delays = {999999,  1000001, 2190000, 2199999, 2200001,
                                 2749999, 2750001, 4399999, 4400001, 6600001};

const std::vector<int> deafness = {100 * microsecondsPerMillisecond,
                                   2500 * microsecondsPerMillisecond,
                                   30000 * microsecondsPerMillisecond};

constexpr int packetSize = 6;
const std::vector<int> packetGaps = {1000, 20000, 80000, 200000, 340000, 900000, 1100000};
const std::vector<int> caps = {2048, 100, 16, 9};
constexpr int longestIdentity = 17;

// The places and the lengths of one fault.
class Places {
public:
    Places(Direction direction, int message, int byte, const Visit& visit) : m_visit(visit)
    {
        m_fault.direction = direction;
        m_fault.message = message;
        m_fault.byte = byte;
    }

    void once(FaultKind kind, int value = 0) { visit(kind, value, 1); }

    void forGood(FaultKind kind, int value) { visit(kind, value, 0); }

    void onceAndForGood(FaultKind kind, int value = 0)
    {
        visit(kind, value, 1);
        visit(kind, value, 0);
    }

    void onceTwiceAndForGood(FaultKind kind, int value = 0)
    {
        onceAndForGood(kind, value);
        visit(kind, value, 2);
    }

private:
    void visit(FaultKind kind, int value, int strikes)
    {
        m_fault.kind = kind;
        m_fault.value = value;
        m_fault.strikes = strikes;
        m_visit({{m_fault}});
    }

    Fault m_fault;
    const Visit& m_visit;
};

bool isOneBit(int mask)
{
    return (mask & (mask - 1)) == 0;
}

void visitFlips(Places places)
{
    for (int mask = 1; mask <= 0xFF; ++mask) {
        if (isOneBit(mask))
            places.onceAndForGood(FaultKind::Flip, mask);
        else
            places.once(FaultKind::Flip, mask);
    }
}

void visitByte(Direction direction, int message, int byte, const Visit& visit)
{
    Places places(direction, message, byte, visit);
    for (const FaultKind fault : {FaultKind::Drop, FaultKind::Duplicate, FaultKind::Truncate,
                                  FaultKind::Split, FaultKind::Reorder, FaultKind::Merge,
                                  FaultKind::Splice, FaultKind::PowerOff, FaultKind::Refuse})
        places.onceTwiceAndForGood(fault);
    visitFlips(places);
    for (const int value : inserted)
        places.onceAndForGood(FaultKind::Insert, value);
    for (const int delay : delays)
        places.onceTwiceAndForGood(FaultKind::Delay, delay);
    for (const int duration : deafness)
        places.once(FaultKind::Deaf, duration);
    for (const int status : {0, 1, 2, 3})
        places.onceAndForGood(FaultKind::Answer, status);
    for (int old = 1; old < message; ++old)
        places.once(FaultKind::Old, old);
    places.once(FaultKind::Vanish);
}

// Nothing comes behind the last command: an old message that reaches the product there undoes what
// the product has just reported, and no question that was asked before can tell.
void visitMessage(Direction direction, int message, int size, bool isLast, const Visit& visit)
{
    for (int byte = 0; byte < size; ++byte)
        visitByte(direction, message, byte, visit);
    Places(direction, message, 0, visit).onceTwiceAndForGood(FaultKind::OtherModel);
    Places behind(direction, message, size, visit);
    for (int old = 1; old < message && !isLast; ++old)
        behind.once(FaultKind::Old, old);
    behind.onceAndForGood(FaultKind::Merge);
    behind.once(FaultKind::PowerOff);
    behind.once(FaultKind::Vanish);
}

} // namespace

void forEachScenario(Laboratory& laboratory, const Visit& visit)
{
    for (const Direction direction : {Direction::Out, Direction::In}) {
        const std::vector<int> sizes = laboratory.messageSizes(direction);
        const int last = static_cast<int>(sizes.size());
        for (int message = 1; message <= last; ++message)
            visitMessage(direction, message, sizes[static_cast<std::size_t>(message - 1)],
                         message == last, visit);
    }
    int message = 0;
    for (const int writes : laboratory.memoryWrites()) {
        ++message;
        for (int cell = 0; cell < codeSize && writes > 0; ++cell)
            Places(Direction::Out, message, 0, visit).once(FaultKind::BadCell, cell);
        for (int done = 0; done <= writes; ++done)
            Places(Direction::Out, message, 0, visit)
                .onceTwiceAndForGood(FaultKind::PowerCut, done);
        for (int done = 0; done < writes; ++done) {
            Places place(Direction::Out, message, 0, visit);
            place.onceTwiceAndForGood(FaultKind::HalfWrite, done);
            place.onceTwiceAndForGood(FaultKind::UnsteadyWrite, done);
        }
    }
}

void forEachPermanentFault(Laboratory& laboratory, const Visit& visit)
{
    const std::vector<Topic> topics = laboratory.topics();
    std::set<QString> seen;
    forEachScenario(laboratory, [&](const Scenario& scenario) {
        Fault fault = scenario.faults.front();
        if (fault.kind == FaultKind::Flip && !isOneBit(fault.value))
            return;
        fault.topic = topics[static_cast<std::size_t>(fault.message - 1)];
        fault.strikes = 0;
        if (seen.insert(faultText(fault)).second)
            visit({{fault}});
    });
}

void forEachPortFault(Laboratory& laboratory, const Visit& visit)
{
    for (const Direction direction : {Direction::Out, Direction::In}) {
        const std::vector<int> sizes = laboratory.messageSizes(direction);
        for (int message = 1; message <= static_cast<int>(sizes.size()); ++message) {
            const int size = sizes[static_cast<std::size_t>(message - 1)];
            Places whole(direction, message, packetSize, visit);
            for (const int gap : packetGaps)
                whole.onceAndForGood(FaultKind::Packets, gap);
            for (const int cap : caps)
                whole.onceAndForGood(FaultKind::Cap, cap);
            for (int byte = 0; byte < size && direction == Direction::Out; ++byte)
                Places(direction, message, byte, visit).onceTwiceAndForGood(FaultKind::Abort);
        }
    }
    for (int byte = 0; byte < longestIdentity; ++byte) {
        for (const int until : {500 * microsecondsPerMillisecond, 2000 * microsecondsPerMillisecond,
                                5000 * microsecondsPerMillisecond})
            Places(Direction::In, 1, byte, visit).forGood(FaultKind::Garble, until);
    }
}

} // namespace sweep
