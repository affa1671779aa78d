/** @file
 * The constants of docs/formats/update-image.md, each once.
 */
#pragma once

#include <QByteArray>

namespace hx {

namespace image {

constexpr int maxCodeBytes = 1048576;
constexpr int codeBytesPerMessage = 112;

/**
 * What makes a data message one. No dictionary names it: it belongs to this format, as the layout
 * version does. The file check and the command before both are the plugin's to name.
 */
constexpr quint8 dataSubCommand = 0x0A;
constexpr quint8 layoutVersion = 0x01;

/** Places in a message, counted from the end of the header that all messages begin with. */
constexpr int commandOffset = 0;
constexpr int subCommandOffset = 1;
constexpr int fieldsOffset = 2; /**< sums run from here up to the sum itself */
constexpr int numberOffset = 2;
constexpr int addressOffset = 4;
constexpr int countOffset = 9;
constexpr int packedOffset = 10;
constexpr int lengthOffset = 2;
constexpr int crcOffset = 7;
constexpr int versionOffset = 12;
constexpr int layoutOffset = 16;
constexpr int fileCheckSize = 19; /**< of all after the header, the F7 too */
constexpr int versionDigits = 4;
constexpr int numberGroups = 5; /**< of an address, a length or a CRC */
constexpr int packedRun = 8;    /**< a byte of top bits and up to seven code bytes */
constexpr int endBytes = 2;     /**< sum and F7 */

/** The header with F7 after it ends every image. */
QByteArray closingMessage(const QByteArray& header);

/** Bytes that `count` code bytes take once they are packed 8 to 7. */
constexpr int packedSize(int count)
{
    return count + (count + packedRun - 2) / (packedRun - 1);
}

} // namespace image

/** CRC-32: polynomial 04C11DB7, reflected, initial value and final XOR FFFFFFFF. */
quint32 crc32(const QByteArray& bytes);

/** The low 7 * `count` bits of `value` in `count` groups, most significant first. */
QByteArray sevenBitGroups(quint32 value, int count);

} // namespace hx
