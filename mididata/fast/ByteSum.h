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
    constexpr quint64 everyOther = Q_UINT64_C(0x0000FFFF0000FFFF);
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
        quint64 halves[2];
        std::memcpy(halves, &sums, sizeof(halves));
        const quint64 fours = (halves[0] & everyOther) + (halves[0] >> 16 & everyOther) +
                              (halves[1] & everyOther) + (halves[1] >> 16 & everyOther);
        sum += static_cast<quint32>(fours) + static_cast<quint32>(fours >> 32);
    }
    return sum;
}

} // namespace hx
