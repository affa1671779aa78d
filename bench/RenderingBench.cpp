#include "bench/Bench.h"
#include "bench/HexPeers.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <QString>

namespace hxbench {

namespace {

constexpr int mebi = 1 << 20;

/** Beyond this many bytes the steps, which insert in place, take seconds. */
constexpr int longestForSteps = 1 << 16;

void addCompact(int size)
{
    const std::string name = "toString/" + sizeName(size) + "/";
    const HxMidiData data(mixedBytes(size));
    add(name + "own", [=] { return data.toString(-1); });
    add(name + "steps", [=] { return transcription::toString(data.bytes, -1); });
    add(name + "toHex", [=] { return data.bytes.toHex(); });
    add(name + "floor", [=] { return QString(2 * size, QLatin1Char('F')); });
#ifdef HXBENCH_ABSL
    add(name + "absl", [=] { return abslWritten(data.bytes); });
#endif
#ifdef HXBENCH_SODIUM
    add(name + "sodium", [=] { return sodiumWritten(data.bytes); });
#endif
}

void addSeparated(int size)
{
    const std::string name = "toString separated/" + sizeName(size) + "/";
    const HxMidiData data(mixedBytes(size));
    add(name + "own", [=] { return data.toString(' ', -1); });
    if (size <= longestForSteps)
        add(name + "steps", [=] { return transcription::toString(data.bytes, ' ', -1); });
    add(name + "toHex", [=] { return data.bytes.toHex(' '); });
    add(name + "floor", [=] { return QString(3 * size - 1, QLatin1Char('F')); });
}

void addTable(int size)
{
    const std::string name = "toStringTable/" + sizeName(size) + "/";
    const HxMidiData data(mixedBytes(size));
    const auto length = data.toStringTable(-1, 16).size();
    add(name + "own", [=] { return data.toStringTable(-1, 16); });
    if (size < longestForSteps)
        add(name + "steps", [=] { return transcription::toStringTable(data.bytes, -1, 16); });
    add(name + "floor", [=] { return QString(length, QLatin1Char('F')); });
}

void addDecimal(int size)
{
    const std::string name = "toStringDec/" + sizeName(size) + "/";
    const HxMidiData data(mixedBytes(size));
    add(name + "own", [=] { return data.toStringDec(); });
    add(name + "steps", [=] { return transcription::toStringDec(data.bytes); });
}

} // namespace

void addRendering()
{
    for (const int size : {6, 48, mebi})
        addCompact(size);
    for (const int size : {48, 1 << 16, 1 << 17, 1 << 18})
        addSeparated(size);
    for (const int size : {64, 4096, 8192, 16384, 1 << 16, mebi})
        addTable(size);
    addDecimal(48);
}

} // namespace hxbench
