// Every field getter, the sums and the channel at any position, against the transcription.
#include "fuzz/support/FuzzTarget.h"
#include "mididata/HxMidiData.h"
#include "tests/mididata/transcription/Transcription.h"

#include <cstdlib>
#include <cstring>

namespace {

using namespace hx::fuzz;

void compareNumbers(const HxMidiData& data, int pos, int width, int fallback)
{
    const QByteArray& bytes = data.bytes;
    requireSame(data.get14bit(pos, fallback), transcription::get14bit(bytes, pos, fallback),
                "get14bit");
    requireSame(data.getUtime(pos, fallback), transcription::getUtime(bytes, pos, fallback),
                "getUtime");
    requireSame(data.get32bit(pos, fallback), transcription::get32bit(bytes, pos, fallback),
                "get32bit");
    requireSame(data.get32bitLE(pos, fallback), transcription::get32bitLE(bytes, pos, fallback),
                "get32bitLE");
    requireSame(data.toInt(pos, width, fallback), transcription::toInt(bytes, pos, width, fallback),
                "toInt");
    const float expected = transcription::getFloat32(bytes, pos, static_cast<float>(fallback));
    const float value = data.getFloat32(pos, static_cast<float>(fallback));
    require(std::memcmp(&value, &expected, sizeof(value)) == 0, "getFloat32");
}

// The transcription pads character by character: what runs far out is left to the ordinary tests.
bool isShort(int pos, int len)
{
    return std::abs(qint64(pos)) < 4096 && std::abs(qint64(len)) < 4096;
}

void compareTexts(const HxMidiData& data, int pos, int len)
{
    if (isShort(pos, len))
        requireSame(data.getString(pos, len), transcription::getString(data.bytes, pos, len),
                    "getString");
    requireSame(data.toAsciiString(pos, len), transcription::toAsciiString(data.bytes, pos, len),
                "toAsciiString");
}

void compareSums(const HxMidiData& data, int pos, int len)
{
    requireSame(data.sumOfSection(pos, len), transcription::sumOfSection(data.bytes, pos, len),
                "sumOfSection");
    const auto from = static_cast<unsigned int>(pos);
    requireSame(data.sum32(from, len), transcription::sum32(data.bytes, from, len), "sum32");
}

void compareWriting(HxMidiData data, int pos, int value)
{
    QByteArray expected = data.bytes;
    const bool isInside = transcription::set14bit(expected, pos, value);
    requireSame(data.set14bit(pos, value), isInside, "set14bit's result");
    requireSame(data.bytes, expected, "set14bit");
    if (isInside)
        requireSame(data.get14bit(pos, -1), value & 0x3FFF, "set14bit reads back");
}

void run(FuzzInput& input)
{
    const int pos = input.number();
    const int len = input.number();
    const int fallback = input.number();
    const uint8_t channel = input.byte();
    const QByteArray bytes = input.rest();
    const bool isAdopted = (channel & 1) != 0; // no terminating zero behind it
    HxMidiData data;
    if (isAdopted)
        data.copyFromBuffer(bytes.constData(), static_cast<size_t>(bytes.size()));
    else
        data.bytes = bytes;

    compareNumbers(data, pos, len, fallback);
    compareTexts(data, pos, len);
    compareSums(data, pos, len);
    compareWriting(data, pos, fallback);
    requireSame(HxMidiData::detectMidiCh(data, channel),
                transcription::detectMidiCh(bytes, channel), "detectMidiCh");
    requireSame(data.bytes, bytes, "the getters change nothing");
}

const Target target("fields", run);

} // namespace
