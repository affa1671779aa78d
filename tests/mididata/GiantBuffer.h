#pragma once

#include "mididata/HxMidiData.h"

#include <cstdlib>
#include <memory>

/**
 * A buffer of more zero bytes than a QString has room for characters. It looks at memory that takes
 * no room as long as nobody touches it. Empty where the system does not give so much.
 */
class GiantBuffer {
public:
    static constexpr int size = 1 << 30;

    GiantBuffer() : memory(std::calloc(size, 1), &std::free)
    {
        data.copyFromBuffer(static_cast<const char*>(memory.get()), size);
    }

private:
    std::unique_ptr<void, decltype(&std::free)> memory;

public:
    HxMidiData data;
};
