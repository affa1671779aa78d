// The integers at which sums of positions and lengths overflow.
#pragma once

#include <limits>

constexpr int greatest = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
