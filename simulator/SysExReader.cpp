#include "simulator/SysExReader.h"

namespace hx {

namespace {

constexpr quint8 sysExStart = 0xF0;
constexpr quint8 sysExEnd = 0xF7;
constexpr quint8 firstRealTime = 0xF8;
constexpr quint8 firstStatus = 0x80;

} // namespace

QVector<QByteArray> SysExReader::take(const QByteArray& bytes)
{
    QVector<QByteArray> messages;
    for (const char byte : bytes) {
        const auto value = static_cast<quint8>(byte);
        if (value >= firstRealTime)
            continue;
        if (value < firstStatus) {
            takeData(byte);
            continue;
        }
        if (value == sysExEnd && !m_message.isEmpty())
            messages.append(m_message + byte);
        m_message = value == sysExStart ? QByteArray(1, byte) : QByteArray();
    }
    return messages;
}

void SysExReader::takeData(char byte)
{
    if (m_message.isEmpty())
        return;
    if (m_message.size() + 1 < maxLength) // room for this byte and the F7
        m_message.append(byte);
    else
        m_message.clear();
}

} // namespace hx
