#include "host/product/ProductReadings.h"

namespace hx {

namespace {

// Where the fields of an identity reply are; a manufacturer that begins with 00 has three bytes,
// and everything after it moves on by two.
constexpr int manufacturerPosition = 5;
constexpr int shortReplyBytes = 15;
constexpr int moveOfLongManufacturer = 2;
constexpr int versionBytesCount = 4;

// Family and model are two 7-bit groups each, least significant first.
quint32 twoGroups(const QByteArray& bytes, int position)
{
    return static_cast<quint32>(bytes.at(position) | bytes.at(position + 1) << 7);
}

bool isPrintable(char byte)
{
    return byte >= 0x20 && byte < 0x7F;
}

} // namespace

QString versionTextOf(const QByteArray& versionBytes)
{
    QStringList parts;
    bool printable = true;
    for (const char byte : versionBytes) {
        parts << QString(QLatin1Char(byte));
        printable = printable && isPrintable(byte);
    }
    return printable ? parts.join(QLatin1Char('.'))
                     : QString::fromLatin1(versionBytes.toHex(' ').toUpper());
}

IdentityReading parseIdentity(const HxMidiData& reply)
{
    IdentityReading identity;
    identity.key = QStringLiteral("identify");
    identity.raw = reply;
    identity.state = ReadingState::Malformed;
    const QByteArray& bytes = reply.bytes;
    const bool isLong = bytes.size() > manufacturerPosition && bytes.at(manufacturerPosition) == 0;
    const int move = isLong ? moveOfLongManufacturer : 0;
    if (!reply.match("F0 7E .. 06 02", true) || bytes.size() != shortReplyBytes + move) {
        identity.reason = QStringLiteral("the reply is not an identity reply");
        return identity;
    }
    identity.state = ReadingState::Good;
    identity.manufacturer = bytes.mid(manufacturerPosition, isLong ? 3 : 1);
    const int familyPosition = manufacturerPosition + 1 + move;
    identity.fidpid = twoGroups(bytes, familyPosition) << 16 | twoGroups(bytes, familyPosition + 2);
    identity.versionBytes = bytes.mid(familyPosition + 4, versionBytesCount);
    identity.version = versionTextOf(identity.versionBytes);
    return identity;
}

} // namespace hx
