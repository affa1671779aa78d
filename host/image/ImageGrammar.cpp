#include "host/image/ImageGrammar.h"

#include <array>

namespace hx {

namespace {

constexpr quint32 crcPolynomial = 0xEDB88320; // 04C11DB7, bits reversed

constexpr std::array<quint32, 256> makeCrcTable()
{
    std::array<quint32, 256> table = {};
    for (quint32 i = 0; i < 256; ++i) {
        quint32 value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) != 0 ? (value >> 1) ^ crcPolynomial : value >> 1;
        table[i] = value;
    }
    return table;
}

} // namespace

namespace image {

QByteArray closingMessage(const QByteArray& header)
{
    return header + '\xF7';
}

} // namespace image

quint32 crc32(const QByteArray& bytes)
{
    static constexpr std::array<quint32, 256> table = makeCrcTable();
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes)
        crc = (crc >> 8) ^ table[(crc ^ static_cast<quint8>(byte)) & 0xFF];
    return crc ^ 0xFFFFFFFF;
}

QByteArray sevenBitGroups(quint32 value, int count)
{
    QByteArray groups(count, '\0');
    for (int i = count - 1; i >= 0; --i, value >>= 7)
        groups[i] = static_cast<char>(value & 0x7F);
    return groups;
}

} // namespace hx
