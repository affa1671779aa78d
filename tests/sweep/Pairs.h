// Two faults in one run, drawn from a part of the sweep.
#pragma once

#include "tests/sweep/Trial.h"

namespace sweep {

class Pairs {
public:
    // The same seed draws the same pairs, on every machine.
    Pairs(Laboratory& laboratory, quint64 seed);

    // The pair of this number, from 0 on.
    Scenario pair(quint64 number) const;

    // How many faults there are to draw from.
    std::size_t faultCount() const { return m_faults.size(); }

private:
    std::vector<Fault> m_faults;
    quint64 m_seed;
};

} // namespace sweep
