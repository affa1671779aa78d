#include "bench/Inputs.h"

namespace hxbench {

QByteArray mixedBytes(int size)
{
    QByteArray bytes(size, '\0');
    unsigned int state = 12345;
    for (char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

QByteArray messageStream(int size, int length)
{
    QByteArray stream;
    QByteArray body = mixedBytes(length - 2);
    for (char& byte : body)
        byte = static_cast<char>(byte & 0x7F);
    while (stream.size() + length <= size)
        stream += '\xF0' + body + '\xF7';
    return stream;
}

std::string sizeName(int size)
{
    if (size % (1 << 20) == 0)
        return std::to_string(size >> 20) + "M";
    if (size % (1 << 10) == 0)
        return std::to_string(size >> 10) + "K";
    return std::to_string(size);
}

} // namespace hxbench
