#include "simulator/SysExReader.h"

#include "qt/Saturated.h"
#include "simulator/MessageForm.h"

namespace hx::sim {

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
        if (byte == sysExEnd && !m_message.isEmpty())
            messages.append(m_message + byte);
        m_message = byte == sysExStart ? QByteArray(1, byte) : QByteArray();
    }
    return messages;
}

int SysExReader::pending() const
{
    return saturated(m_message.size());
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

} // namespace hx::sim
