#pragma once

#include <cstdint>

namespace hxbench {

/** Whether allocations are counted on this platform. */
bool countsAllocations();

/** How many times memory was asked for (malloc, calloc, realloc, new) since the program began. */
std::uint64_t allocationCount();

} // namespace hxbench
