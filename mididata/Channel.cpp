#include "mididata/HxMidiData.h"

namespace {

constexpr char universalNonRealTime = 0x7E;

unsigned char lowNibble(char byte)
{
    return static_cast<unsigned char>(byte & 0x0F);
}

} // namespace

unsigned char HxMidiData::detectMidiCh(const HxMidiData& msg, unsigned char fallback)
{
    const QByteArray& bytes = msg.bytes;
    if (bytes.size() >= 3)
        return bytes.at(1) == universalNonRealTime ? lowNibble(bytes.at(2)) : fallback;
    return bytes.isEmpty() ? static_cast<unsigned char>(0) : lowNibble(bytes.at(0));
}
