// Equal bytes skipped a block at a time.
#pragma once

#include <cstring>

namespace hx {

// Equal to stepping over equal bytes one by one, but may stop up to a block before the first that
// differs: the caller goes on from there by single bytes.
inline int skipEqualBlocks(const char* mine, const char* other, int from, int end)
{
    constexpr int block = 64;
    while (end - from >= block && std::memcmp(mine + from, other + from, block) == 0)
        from += block;
    return from;
}

} // namespace hx
