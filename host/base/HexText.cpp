#include "host/base/HexText.h"

namespace hx {

namespace {

constexpr int shortBytes = 24;

}

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

} // namespace hx
