#include "simulator/Crc32.h"

#include <array>

namespace hx::sim {

namespace {

constexpr quint32 reflectedPolynomial = 0xEDB88320; // 04C11DB7 with its bits in reverse order

constexpr quint32 shiftedByte(quint32 value)
{
    for (int bit = 0; bit < 8; ++bit)
        value = value >> 1 ^ ((value & 1u) != 0 ? reflectedPolynomial : 0);
    return value;
}

constexpr std::array<quint32, 256> makeTable()
{
    std::array<quint32, 256> table = {};
    for (quint32 byte = 0; byte < table.size(); ++byte)
        table[byte] = shiftedByte(byte);
    return table;
}

constexpr auto crcTable = makeTable();

} // namespace

quint32 productCrc32(const QByteArray& bytes)
{
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : bytes)
        crc = crc >> 8 ^ crcTable[(crc ^ static_cast<quint8>(byte)) & 0xFF];
    return ~crc;
}

} // namespace hx::sim
