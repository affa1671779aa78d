#include "tests/sweep/Pairs.h"

#include "tests/sweep/Sweep.h"

#include <algorithm>

namespace sweep {

namespace {

// Of kinds with many values a few stand for all: what differs is where they strike.
bool isDrawn(const Fault& fault)
{
    const auto isOneOf = [&fault](std::initializer_list<int> values) {
        return std::find(values.begin(), values.end(), fault.value) != values.end();
    };
    switch (fault.kind) {
    case FaultKind::Flip:
        return isOneOf({0x01, 0x02, 0x40, 0x80});
    case FaultKind::Insert:
        return isOneOf({0xF8, 0xF0, 0xF7, 0x02, 0x46});
    case FaultKind::Delay:
        return isOneOf({1000001, 2190000, 2200001, 4399999});
    case FaultKind::BadCell:
        return fault.value % 10 == 0;
    default:
        return true;
    }
}

// SplitMix64: every number gives another one, and neighbours nothing alike.
quint64 mixed(quint64 number)
{
    number += 0x9E3779B97F4A7C15u;
    number = (number ^ number >> 30) * 0xBF58476D1CE4E5B9u;
    number = (number ^ number >> 27) * 0x94D049BB133111EBu;
    return number ^ number >> 31;
}

} // namespace

Pairs::Pairs(Laboratory& laboratory, quint64 seed) : m_seed(seed)
{
    forEachScenario(laboratory, [this](const Scenario& scenario) {
        const Fault& fault = scenario.faults.front();
        if (isDrawn(fault))
            m_faults.push_back(fault);
    });
}

// Never the same fault twice.
Scenario Pairs::pair(quint64 number) const
{
    const quint64 count = m_faults.size();
    const quint64 random = mixed(mixed(m_seed) ^ number);
    const quint64 first = random % count;
    const quint64 second = (first + 1 + mixed(random) % (count - 1)) % count;
    return {{m_faults[first], m_faults[second]}};
}

} // namespace sweep
