#include "mididata/HxMidiData.h"

namespace {

/** A copy of `size` bytes; empty when the size, taken as an int, is negative. */
QByteArray copyOf(const unsigned char* data, size_t size)
{
    const int length = static_cast<int>(size);
    return length > 0 ? QByteArray(reinterpret_cast<const char*>(data), length) : QByteArray();
}

} // namespace

HxMidiData::HxMidiData(const std::vector<unsigned char>& v, HxMidiIn* in)
    : bytes(copyOf(v.data(), v.size())), source(in)
{
}

HxMidiData::HxMidiData(int value)
{
    appendNum(static_cast<unsigned int>(value));
}

HxMidiData::HxMidiData(const QByteArray& a) : bytes(a) {}

void HxMidiData::clear()
{
    auxA = 0;
    source = nullptr;
    bytes.clear();
}

void HxMidiData::copyFromBuffer(const char* buf, size_t len)
{
    const int length = static_cast<int>(len);
    bytes = buf != nullptr && length >= 0 ? QByteArray::fromRawData(buf, length) : QByteArray();
}
