#include "bench/Bench.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <cstring>

namespace hxbench {

void addComparison()
{
    constexpr int size = 4096;
    const HxMidiData mine(mixedBytes(size));
    const HxMidiData other(mixedBytes(size)); // equal, but other memory
    add("isSame/4K equal/own", [=] { return mine.isSame(other); });
    add("isSame/4K equal/steps", [=] { return transcription::isSame(mine.bytes, other.bytes); });
    add("diff/4K equal/own", [=] { return mine.diff(other, -1, -1); });
    add("diff/4K equal/steps",
        [=] { return transcription::diff(mine.bytes, other.bytes, -1, -1); });
    add("diff/4K equal/floor", [=] {
        const auto length = static_cast<std::size_t>(mine.bytes.size());
        return std::memcmp(mine.bytes.constData(), other.bytes.constData(), length);
    });
}

} // namespace hxbench
