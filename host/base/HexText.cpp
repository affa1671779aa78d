#include "host/base/HexText.h"

namespace hx {

namespace {

constexpr int shortBytes = 24;

QString upperHex(quint32 value, int digits)
{
    return QString::number(value, 16).toUpper().rightJustified(digits, QLatin1Char('0'));
}

} // namespace

QString hexText(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

QString hexTextShort(const QByteArray& bytes)
{
    if (bytes.size() <= shortBytes)
        return hexText(bytes);
    return QStringLiteral("%1 ... (%2 bytes)")
        .arg(hexText(bytes.left(shortBytes)))
        .arg(bytes.size());
}

QString hexByte(quint8 byte)
{
    return upperHex(byte, 2);
}

QString identifierText(quint32 identifier)
{
    return QStringLiteral("0x") + upperHex(identifier, 6);
}

} // namespace hx
