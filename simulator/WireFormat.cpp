#include "simulator/WireFormat.h"

#include "qt/Saturated.h"

namespace hx::sim {

quint64 readGroups(const QByteArray& message, int position, int count)
{
    quint64 value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 7 | (static_cast<quint8>(message.at(position + i)) & 0x7Fu);
    return value;
}

QByteArray writeGroups(quint64 value, int count)
{
    QByteArray groups(count, '\0');
    for (int i = count - 1; i >= 0; --i, value >>= 7)
        groups[i] = static_cast<char>(value & 0x7Fu);
    return groups;
}

quint8 sum7(const QByteArray& message, int position, int end)
{
    unsigned sum = 0;
    for (int i = position; i < end; ++i)
        sum += static_cast<quint8>(message.at(i));
    return static_cast<quint8>(sum & 0x7Fu);
}

bool unpack(const QByteArray& packed, QByteArray* code)
{
    constexpr int run = 8;
    for (int start = 0; start < packed.size(); start += run) {
        unsigned header = static_cast<quint8>(packed.at(start));
        const int end = qMin(start + run, saturated(packed.size()));
        for (int i = start + 1; i < end; ++i, header <<= 1)
            code->append(
                static_cast<char>(static_cast<quint8>(packed.at(i)) | (header & 0x40u) << 1));
        if ((header & 0x7Fu) != 0)
            return false;
    }
    return true;
}

} // namespace hx::sim
