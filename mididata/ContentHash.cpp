#include "mididata/HxMidiData.h"

quint64 HxMidiData::hash() const
{
    quint64 accumulator = 0;
    quint32 multiplier = 63689;
    for (const char byte : bytes) {
        // The hash is defined over signed characters. NOLINTNEXTLINE(bugprone-signed-char-misuse)
        const int value = static_cast<signed char>(byte);
        accumulator = accumulator * multiplier + static_cast<quint64>(value);
        multiplier *= 378551;
    }
    return accumulator;
}
