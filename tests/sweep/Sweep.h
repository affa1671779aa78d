// The scenarios of the sweep, one after the other.
#pragma once

#include "tests/sweep/Trial.h"

#include <functional>

namespace sweep {

// Calls `visit` with every scenario: each fault at each byte of each message in both directions,
// striking once and for good.
void forEachScenario(Laboratory& laboratory, const std::function<void(const Scenario&)>& visit);

} // namespace sweep
