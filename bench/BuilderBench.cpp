#include "bench/Bench.h"
#include "mididata/HexDigits.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

namespace hxbench {

namespace {

constexpr const char* rawIdentifier = "F0 00 6B 2D 30 41 42 0D 0F NIB24 F7";
constexpr const char* mixed = "F0 V14 UT V8 F7";

// Reads the pairs that the text begins with, and allocates once: what remains without any field.
QByteArray pairsAlone(const char* text)
{
    benchmark::DoNotOptimize(text); // or it is read while this is compiled
    char read[16] = {};
    for (char& byte : read) {
        if (hx::hexByte(text[0], text[1]) < 0)
            break;
        byte = static_cast<char>(hx::hexByte(text[0], text[1]));
        text += 3;
    }
    return QByteArray(read, sizeof(read));
}

} // namespace

void addBuilder()
{
    add("setData/raw identifier/own", [] {
        HxMidiData data;
        data.setData(rawIdentifier, 0x123456u);
        return data.bytes;
    });
    add("setData/raw identifier/steps",
        [] { return transcription::setData(rawIdentifier, 0x123456u); });
    add("setData/raw identifier/pairs alone", [] { return pairsAlone(rawIdentifier); });
    add("setData/raw identifier/floor", [] { return QByteArray(16, 'F'); });
    add("setData/fields/own", [] {
        HxMidiData data;
        data.setData(mixed, 0x2345u, 0x12345678u, 5);
        return data.bytes;
    });
    add("setData/fields/steps",
        [] { return transcription::setData(mixed, 0x2345u, 0x12345678u, 5); });
}

} // namespace hxbench
