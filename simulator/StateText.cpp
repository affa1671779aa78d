#include "simulator/StateText.h"

namespace hx::sim {

QByteArray hexNumber(quint32 value, int digits)
{
    return QByteArray::number(value, 16).toUpper().rightJustified(digits, '0');
}

QByteArray versionText(const VersionDigits& version)
{
    QByteArray text;
    for (const quint8 digit : version)
        text.append(static_cast<char>(digit)).append('.');
    text.chop(1);
    return text;
}

VersionDigits versionOf(const QByteArray& text)
{
    VersionDigits version = {};
    int position = 0;
    for (quint8& digit : version) {
        digit = static_cast<quint8>(text.mid(position, 1).toUShort() + '0');
        position += 2;
    }
    return version;
}

QByteArray kindText(quint8 kind)
{
    return kind == kindFwu ? "fwu" : "fwd";
}

} // namespace hx::sim
