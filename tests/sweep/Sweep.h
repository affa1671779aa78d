// The scenarios of the sweep, one after the other.
#pragma once

#include "tests/sweep/Trial.h"

#include <functional>

namespace sweep {

// Calls `visit` with every scenario: each fault at each byte of each message in both directions,
// striking once and for good.
void forEachScenario(Laboratory& laboratory, const std::function<void(const Scenario&)>& visit);

// Each of these faults as it would be if it never healed: on every message about the same thing as
// the one it strikes, in one direction, while all else is healthy. Of masks those of one bit.
void forEachPermanentFault(Laboratory& laboratory,
                           const std::function<void(const Scenario&)>& visit);

// What slow operating systems and drivers were seen to do to SysEx messages: hand them over in six
// bytes at a time, cut them at a limit, give one up, and damage what comes in at first.
void forEachPortFault(Laboratory& laboratory, const std::function<void(const Scenario&)>& visit);

} // namespace sweep
