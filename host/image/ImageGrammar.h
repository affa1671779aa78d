// The constants of docs/formats/update-image.md, each once.
#pragma once

#include <QByteArray>

namespace hx {

namespace image {

constexpr int maxCodeBytes = 1048576;
constexpr int codeBytesPerMessage = 112;
constexpr quint8 fwuCommand = 0x43;
constexpr quint8 fwdCommand = 0x42;
constexpr quint8 dataSubCommand = 0x0A;
constexpr quint8 fileCheckSubCommand = 0x0C;
constexpr quint8 layoutVersion = 0x01;

constexpr int commandPosition = 6;
constexpr int subCommandPosition = 7;
constexpr int sumStart = 8; // sums run from here up to the sum itself
constexpr int numberPosition = 8;
constexpr int addressPosition = 10;
constexpr int countPosition = 15;
constexpr int packedPosition = 16;
constexpr int lengthPosition = 8;
constexpr int crcPosition = 13;
constexpr int versionPosition = 18;
constexpr int layoutPosition = 22;
constexpr int fileCheckBytes = 25;
constexpr int closingBytes = 7;

// F0, manufacturer, family and model: the six bytes every message of an image starts with.
QByteArray prefix();

// F0 00 6B 2D 30 41 F7.
QByteArray closingMessage();

// Bytes that `count` code bytes take once they are packed 8 to 7.
constexpr int packedSize(int count)
{
    return count + (count + 6) / 7;
}

} // namespace image

// CRC-32: polynomial 04C11DB7, reflected, initial value and final XOR FFFFFFFF.
quint32 crc32(const QByteArray& bytes);

// The low 7 * `count` bits of `value` in `count` groups, most significant first.
QByteArray sevenBitGroups(quint32 value, int count);

// The four 7-bit groups in which the product reports the low 28 bits of a CRC-32.
QByteArray reportedChecksum(quint32 crc);

} // namespace hx
