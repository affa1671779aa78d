#include "mididata/HxMidiData.h"
#include "mididata/fast/FastPaths.h"
#include "qt/Saturated.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// A run of indexes whose bytes may differ by up to `tolerance`.
struct ComparedRange {
    int begin;
    int end;
    int tolerance;
};

// What is compared. Indexes in no range are not, 632 included.
constexpr ComparedRange comparedRanges[] = {
    {0, 10, 0}, {10, 14, 4}, {17, 26, 4}, {26, 69, 0}, {71, 76, 0}, {633, 648, 0},
};

constexpr int comparedEnd = 648;

bool within(int tolerance, char a, char b)
{
    return std::abs(static_cast<unsigned char>(a) - static_cast<unsigned char>(b)) <= tolerance;
}

bool sameIn(const ComparedRange& range, const QByteArray& a, const QByteArray& b)
{
    for (int i = range.begin; i < std::min(range.end, hx::saturated(a.size())); ++i) {
        if (!within(range.tolerance, a.at(i), b.at(i)))
            return false;
    }
    return true;
}

} // namespace

bool HxMidiData::isSame(const HxMidiData& other) const
{
    const QByteArray& a = bytes;
    const QByteArray& b = other.bytes;
    if (a.size() != b.size())
        return false;
    if (hx::fastPaths) {
        const int compared = std::min(hx::saturated(a.size()), comparedEnd);
        if (std::memcmp(a.constData(), b.constData(), static_cast<size_t>(compared)) == 0)
            return true; // equal bytes are within every tolerance
    }
    return std::all_of(std::begin(comparedRanges), std::end(comparedRanges),
                       [&](const ComparedRange& range) { return sameIn(range, a, b); });
}
