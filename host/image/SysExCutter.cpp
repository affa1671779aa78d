#include "host/image/SysExCutter.h"

#include "host/base/HexText.h"
#include "host/base/StatusByte.h"

#include <utility>

namespace hx {

void SysExCutter::add(quint8 byte, qint64 offset)
{
    if (byte == sysExStart) {
        begin(offset);
    } else if (!m_inMessage) {
        addStray(byte, offset);
    } else if (byte >= firstStatus && byte != sysExEnd) {
        cutOff(QStringLiteral("is cut off by the byte %1; expected data bytes below 80 up to F7")
                   .arg(hexByte(byte)),
               offset);
        m_inStray = true;
    } else {
        m_message.data.bytes.append(static_cast<char>(byte));
        m_message.offsets.push_back(offset);
        if (byte == sysExEnd)
            complete();
    }
}

void SysExCutter::finish()
{
    if (m_inMessage)
        cutOff(QStringLiteral("is cut off by the end of the file, after %1 bytes; expected F7")
                   .arg(m_message.data.bytes.size()),
               m_message.offsets.back());
}

void SysExCutter::begin(qint64 offset)
{
    if (m_inMessage)
        cutOff(QStringLiteral("is cut off by the F0 of the next; expected F7"), offset);
    m_inMessage = true;
    m_inStray = false;
    m_message = FileMessage();
    m_message.number = m_number;
    m_message.data.bytes.append(static_cast<char>(sysExStart));
    m_message.offsets.push_back(offset);
}

void SysExCutter::complete()
{
    if (m_file.messages.size() < maxImageFileMessages)
        m_file.messages.push_back(std::move(m_message));
    else if (!std::exchange(m_isFull, true))
        problem(m_message.offsets.front(),
                QStringLiteral("the file holds more than %1 messages, which no image does.")
                    .arg(maxImageFileMessages));
    ++m_number;
    m_inMessage = false;
}

void SysExCutter::cutOff(const QString& what, qint64 offset)
{
    m_inMessage = false;
    problem(offset, QStringLiteral("the message %1.").arg(what));
    ++m_number;
}

void SysExCutter::addStray(quint8 byte, qint64 offset)
{
    if (!m_inStray)
        problem(offset,
                QStringLiteral("byte %1 belongs to no message; expected F0.").arg(hexByte(byte)));
    m_inStray = true;
}

void SysExCutter::problem(qint64 offset, const QString& text)
{
    addProblem(m_file.problems, {m_number, offset}, text,
               QStringLiteral("The file is damaged: get the update image again."));
}

} // namespace hx
