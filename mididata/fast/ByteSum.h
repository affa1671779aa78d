// Bytes added up sixteen at a time.
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cstring>

namespace hx {

// Equal to adding up the bytes one by one, modulo 2^32. Two words hold eight sums of 16 bits, which
// cannot overflow within a run of 128 blocks: each of these adds 2 times 255 at most.
inline quint32 sumBlocks(const char*& at, const char* end)
{
    constexpr std::ptrdiff_t blockSize = 16;
    constexpr std::ptrdiff_t longestRun = 128;
    using Sums = quint16 __attribute__((vector_size(blockSize)));
    quint32 sum = 0;
    while (end - at >= blockSize) {
        Sums sums = {};
        const char* const stop = at + blockSize * std::min((end - at) / blockSize, longestRun);
        for (; at != stop; at += blockSize) {
            Sums pairs;
            std::memcpy(&pairs, at, sizeof(pairs));
            sums += (pairs & 0xFF) + (pairs >> 8);
        }
        for (int i = 0; i < 8; ++i)
            sum += sums[i];
    }
    return sum;
}

} // namespace hx
